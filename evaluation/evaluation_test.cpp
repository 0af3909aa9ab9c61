#include "evaluation/evaluation.h"

#include <gtest/gtest.h>
#include <tbb/global_control.h>
#include <tbb/task_arena.h>

namespace velto {
namespace {

// Reads of `length` coding bases in frame 0 from the named transcripts.
std::vector<LabelledRead> codingReads(const std::vector<std::string>& transcripts, int length) {
  std::vector<LabelledRead> reads;
  for (const std::string& transcript : transcripts) {
    LabelledRead read;
    read.truth.transcript = transcript;
    read.truth.length = length;
    read.truth.coding = {{0, length - 1, 0}};
    read.truth.start = 0;
    read.truth.stop = length - 1;
    read.bases.assign(static_cast<std::size_t>(length), 'G');
    reads.push_back(read);
  }
  return reads;
}

// Calls as many bases, in the right frame, as the transcript's name has letters.
Prediction callNameLength(const LabelledRead& read) {
  Prediction called;
  called.frame.assign(read.bases.size(), -1);
  for (std::size_t p = 0; p < read.truth.transcript.size(); ++p) called.frame[p] = 0;
  called.start = 0;
  called.stop = static_cast<int>(read.truth.transcript.size()) - 1;
  return called;
}

TEST(Evaluation, ResultsStandInTheOrderOfTheReadsAtAnyNumberOfThreads) {
  std::vector<std::string> names;
  for (int i = 0; i < 200; ++i) names.push_back(std::string(static_cast<std::size_t>(i % 7), 'x'));
  const std::vector<LabelledRead> reads = codingReads(names, 9);
  for (const int threads : {1, 2, 8}) {
    const tbb::global_control most(tbb::global_control::max_allowed_parallelism,
                                   static_cast<std::size_t>(threads));
    const auto evaluations =
        tbb::task_arena(threads).execute([&] { return evaluateReads(reads, callNameLength); });
    ASSERT_EQ(evaluations.size(), reads.size());
    for (std::size_t i = 0; i < reads.size(); ++i) {
      EXPECT_EQ(evaluations[i].counts.inFrame, static_cast<long>(i % 7));
    }
  }
}

TEST(Evaluation, TotalsAreSumsOverAllReadsOverTranscriptsAndOverClasses) {
  std::vector<LabelledRead> reads = codingReads({"bb", "a", "bb"}, 9);
  const std::vector<LabelledRead> longReads = codingReads({"a"}, 600);
  reads.insert(reads.end(), longReads.begin(), longReads.end());
  const auto evaluations = evaluateReads(reads, callNameLength);
  const auto byTranscript = totalsByTranscript(reads, evaluations, allPlaces(reads));
  EXPECT_EQ(totalOf(byTranscript).reads, 4);
  EXPECT_EQ(totalOf(byTranscript).inFrame, 2 + 1 + 2 + 1);
  ASSERT_EQ(byTranscript.size(), 2U);
  EXPECT_EQ(byTranscript[0].inFrame, 4);
  EXPECT_EQ(byTranscript[1].inFrame, 2);
  const std::vector<ReadPlaces> byClass = placesByClass(reads);
  EXPECT_EQ(byClass[static_cast<std::size_t>(readClassIndex({3, 0, 96}))], (ReadPlaces{0, 1, 2}));
  const ReadPlaces& longer = byClass[static_cast<std::size_t>(readClassIndex({3, 0, 196}))];
  EXPECT_EQ(longer, ReadPlaces{3});
  EXPECT_EQ(totalOf(totalsByTranscript(reads, evaluations, longer)).inFrame, 1);
}

}  // namespace
}  // namespace velto
