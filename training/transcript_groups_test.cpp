#include "training/transcript_groups.h"

#include <gtest/gtest.h>

#include "core/random.h"
#include "training/shared_sequence.h"

namespace velto {
namespace {

std::vector<short> randomBases(int length, Random& random) {
  std::vector<short> bases;
  for (int i = 0; i < length; ++i) bases.push_back(static_cast<short>(random.below(4)));
  return bases;
}

Transcript transcript(const std::string& name, std::vector<short> bases) {
  Transcript t;
  t.name = t.group = name;
  t.bases = std::move(bases);
  return t;
}

// `t` with the `count` bases of `from` at its end.
void share(const Transcript& from, int count, Transcript& t) {
  t.bases.insert(t.bases.end(), from.bases.end() - count, from.bases.end());
}

TEST(SharedSequence, JoinsTranscriptsWithACommonExonDirectlyOrByOthers) {
  Random random(3);
  Transcript a = transcript("a", randomBases(300, random));
  Transcript b = transcript("b", randomBases(200, random));
  Transcript c = transcript("c", randomBases(200, random));
  const Transcript alone = transcript("d", randomBases(300, random));
  share(a, 90, b);
  c.bases.insert(c.bases.begin(), b.bases.begin(), b.bases.begin() + 90);
  EXPECT_EQ(sharedSequenceGroups({&a, &alone, &b, &c}), (std::vector<std::size_t>{0, 1, 0, 0}));
}

TEST(SharedSequence, ThirtyBasesOrAnUnknownBaseAmongThemJoinNothing) {
  Random random(3);
  const Transcript a = transcript("a", randomBases(300, random));
  Transcript b = transcript("b", randomBases(200, random));
  share(a, 30, b);
  Transcript c = transcript("c", randomBases(200, random));
  share(a, 61, c);
  c.bases[200 + 30] = -1;
  EXPECT_EQ(sharedSequenceGroups({&a, &b, &c}), (std::vector<std::size_t>{0, 1, 2}));
}

TEST(SharedSequence, RepeatsOfManyTranscriptsJoinNothing) {
  Random random(3);
  const Transcript repeat = transcript("r", randomBases(100, random));
  std::vector<Transcript> list;
  for (int i = 0; i < 21; ++i) {
    list.push_back(transcript("t" + std::to_string(i), randomBases(100, random)));
    share(repeat, 100, list.back());
  }
  std::vector<const Transcript*> all;
  for (const Transcript& t : list) all.push_back(&t);
  EXPECT_EQ(sharedSequenceGroups(all)[20], 20U);
  all.pop_back();
  EXPECT_EQ(sharedSequenceGroups(all)[19], 0U);
}

TEST(TranscriptGroups, HeaderWordsDecideWhereThereAreSome) {
  Random random(5);
  std::vector<Transcript> coding, noncoding;
  for (int i = 0; i < 6; ++i) {
    coding.push_back(transcript("t" + std::to_string(i), randomBases(100, random)));
    coding.back().group = i < 4 ? "g1" : "g2";
    coding.back().groupWord = "gene=";
  }
  noncoding.push_back(transcript("n", randomBases(100, random)));
  EXPECT_EQ(groupTranscripts(coding, noncoding),
            "held-back parts keep groups together: by the header word 'gene=' 2 groups of 6 "
            "transcripts, by shared sequence (no header word joins any) 1 groups of 1 transcripts");
  EXPECT_EQ(coding[3].group, "g1");
}

TEST(TranscriptGroups, WordsThatNameNoTwoTogetherGiveWayToSharedSequence) {
  Random random(5);
  std::vector<Transcript> coding = {transcript("a", randomBases(200, random)),
                                    transcript("b", randomBases(100, random))};
  share(coding[0], 100, coding[1]);
  for (Transcript& t : coding) t.groupWord = "gene=";
  std::vector<Transcript> noncoding = {transcript("c", randomBases(200, random))};
  EXPECT_EQ(groupTranscripts(coding, noncoding),
            "held-back parts keep groups together: by shared sequence (no header word joins any) 2 "
            "groups of "
            "3 transcripts");
  EXPECT_EQ(coding[0].group, coding[1].group);
  EXPECT_NE(coding[0].group, noncoding[0].group);
}

TEST(TranscriptGroups, TranscriptsOfOneSequenceAreCountedAndNamed) {
  const std::vector<Transcript> coding = {transcript("a", {0, 1}), transcript("b", {0, 2})};
  const std::vector<Transcript> noncoding = {transcript("c", {0, 2}), transcript("d", {0, 2})};
  EXPECT_EQ(duplicatesText(coding, {}), "");
  EXPECT_EQ(duplicatesText(coding, noncoding),
            "2 transcripts have the sequence of an earlier one, for example b and c");
}

}  // namespace
}  // namespace velto
