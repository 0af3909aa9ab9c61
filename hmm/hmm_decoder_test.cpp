#include "hmm/hmm_decoder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "core/in_turn.h"
#include "hmm/hmm_model_file.h"
#include "hmm/toy_reads.h"

namespace velto {
namespace {

std::shared_ptr<const HmmModel> sharedToy() { return std::make_shared<HmmModel>(toyModel()); }

Call decoded(const Decoder& decoder, const ReadView& read, const Wishes& wishes = {}) {
  Call call;
  decoder.decode(read, wishes, *decoder.scratch(), call);
  return call;
}

void expectSame(const Call& a, const Call& b) {
  EXPECT_EQ(a.coding, b.coding);
  EXPECT_EQ(a.score, b.score);
  EXPECT_EQ(a.probability, b.probability);
  EXPECT_EQ(a.start, b.start);
  EXPECT_EQ(a.stop, b.stop);
  EXPECT_EQ(a.frame, b.frame);
  EXPECT_TRUE(std::ranges::equal(a.scores, b.scores));
  ASSERT_EQ(a.frameshifts.size(), b.frameshifts.size());
}

TEST(HmmDecoder, CallsACodingRead) {
  ToyReads reads(5);
  reads.addCoding(100, {});
  const Call call = decoded(HmmDecoder(sharedToy()), reads.views()[0]);
  EXPECT_TRUE(call.coding);
  EXPECT_GT(call.probability, 0.95);
  EXPECT_GT(call.score, 10.0);
  EXPECT_LT(call.start, 6);
  EXPECT_GT(call.stop, 294);
  EXPECT_EQ(call.frame[150], 0);
  EXPECT_TRUE(call.frameshifts.empty());
}

TEST(HmmDecoder, LeavesAnEvenReadAlone) {
  ToyReads reads(5);
  reads.addEven(300);
  const Call call = decoded(HmmDecoder(sharedToy()), reads.views()[0]);
  EXPECT_FALSE(call.coding);
  EXPECT_LT(call.score, 0.0);
  EXPECT_EQ(call.start, -1);
  EXPECT_TRUE(call.frame.empty());
}

TEST(HmmDecoder, FindsALostBase) {
  std::vector<short> codes;
  for (int i = 0; i < 300; ++i) codes.push_back(static_cast<short>(i % 3));
  codes.erase(codes.begin() + 150);
  const Call call = decoded(HmmDecoder(sharedToy()), {codes, {}});
  ASSERT_EQ(call.frameshifts.size(), 1U);
  EXPECT_EQ(call.frameshifts[0].kind, Frameshift::Kind::kDeletion);
  EXPECT_EQ(call.frameshifts[0].position, 150);
  EXPECT_GT(call.frameshifts[0].confidence, 0.9);
  EXPECT_EQ(call.frame[149], 0);
  EXPECT_EQ(call.frame[150], 2);
}

TEST(HmmDecoder, FindsAnExtraBase) {
  std::vector<short> codes;
  for (int i = 0; i < 300; ++i) codes.push_back(static_cast<short>(i % 3));
  codes.insert(codes.begin() + 150, short{3});
  const Call call = decoded(HmmDecoder(sharedToy()), {codes, {}});
  ASSERT_EQ(call.frameshifts.size(), 1U);
  EXPECT_EQ(call.frameshifts[0].kind, Frameshift::Kind::kInsertion);
  EXPECT_EQ(call.frameshifts[0].position, 150);
  EXPECT_EQ(call.frame[150], -1);
  EXPECT_EQ(call.frame[151], 1);
}

TEST(HmmDecoder, ThresholdDecides) {
  ToyReads reads(5);
  reads.addEven(300);
  reads.addCoding(100, {});
  const HmmDecoder decoder(sharedToy());
  Wishes wishes;
  wishes.minProbability = 0.0;
  const Call call = decoded(decoder, reads.views()[0], wishes);
  EXPECT_TRUE(call.coding);
  EXPECT_GE(call.start, 0);
  wishes.minProbability = 1.1;
  EXPECT_FALSE(decoded(decoder, reads.views()[1], wishes).coding);
}

TEST(HmmDecoder, ScoresArePosteriorsOfTheFrames) {
  ToyReads reads(5);
  reads.addCoding(100, {});
  reads.addEven(300);
  Wishes wishes;
  wishes.scores = true;
  for (const ReadView& read : reads.views()) {
    const Call call = decoded(HmmDecoder(sharedToy()), read, wishes);
    ASSERT_EQ(call.scores[2].size(), 300U);
    for (std::size_t i = 0; i < 300; ++i) {
      const double sum = call.scores[0][i] + call.scores[1][i] + call.scores[2][i];
      EXPECT_GE(sum, 0.0);
      EXPECT_LE(sum, call.probability + 1e-4);
    }
    if (call.coding) {
      EXPECT_GT(call.scores[0][150], 0.9);
    }
  }
}

TEST(HmmDecoder, ReadsOfAnyLengthAndOfUnknownBasesAreDecoded) {
  Wishes wishes;
  wishes.minProbability = 0.0;
  wishes.scores = true;
  const HmmDecoder decoder(sharedToy());
  for (int length = 1; length <= 40; ++length) {
    for (const short code : {kUnknownBase, short{0}, short{3}}) {
      const std::vector<short> codes(static_cast<std::size_t>(length), code);
      const Call call = decoded(decoder, {codes, {}}, wishes);
      EXPECT_GE(call.probability, 0.0);
      EXPECT_LE(call.probability, 1.0);
      if (!call.coding) continue;
      EXPECT_GE(call.start, 0);
      EXPECT_LE(call.start + 2, call.stop);
      EXPECT_LT(call.stop, length);
    }
  }
}

TEST(HmmDecoder, ARegionWithoutACodonIsNotCalled) {
  Wishes wishes;
  wishes.minProbability = 0.0;
  const HmmDecoder decoder(sharedToy());
  const auto scratch = decoder.scratch();
  for (const std::size_t length : {2U, 30U}) {
    std::vector<short> codes;
    for (std::size_t i = 0; i < length; ++i) codes.push_back(static_cast<short>(i % 3));
    const std::vector<ReadView> reads(8, ReadView{codes, {}});
    std::vector<Call> calls(reads.size());
    decoder.decodeAll(reads, wishes, *scratch, calls);
    calls.push_back(decoded(decoder, reads[0], wishes));
    for (const Call& call : calls) {
      EXPECT_EQ(call.coding, length == 30);
      EXPECT_EQ(call.start, length == 30 ? 0 : -1);
      EXPECT_EQ(call.frame.size(), length == 30 ? 30U : 0U);
    }
  }
}

TEST(HmmDecoder, ScratchCarriesNothingOver) {
  ToyReads reads(6);
  reads.addCoding(200, {0.01, 0.01});
  reads.addEven(77);
  reads.addCoding(5, {});
  const HmmDecoder decoder(sharedToy());
  const auto scratch = decoder.scratch();
  Call call;
  for (const ReadView& read : reads.views()) {
    decoder.decode(read, {}, *scratch, call);
    expectSame(call, decoded(decoder, read));
  }
}

TEST(HmmDecoder, CalibrationLearnsRatesAndShare) {
  ToyReads reads(7);
  for (int i = 0; i < 100; ++i) reads.addCoding(150, {0.01, 0.02});
  const HmmDecoder decoder(sharedToy());
  const Calibration learnt = decoder.learn(reads.views(), {}, inTurn);
  EXPECT_EQ(learnt.reads, 100);
  ASSERT_TRUE(learnt.errorRates.has_value());
  EXPECT_GT(learnt.errorRates->deletion, 0.01);
  ASSERT_TRUE(learnt.codingShare.has_value());
  EXPECT_GT(*learnt.codingShare, 0.85);
  ASSERT_TRUE(learnt.truncatedShare.has_value());
  EXPECT_GT(*learnt.truncatedShare, 0.8);
  EXPECT_TRUE(learnt.qualities.empty());
}

// The last task first.
void backwards(std::size_t count, const std::function<void(std::size_t)>& task) {
  while (count-- > 0) task(count);
}

void expectSame(const Calibration& one, const Calibration& other) {
  EXPECT_EQ(one.reads, other.reads);
  EXPECT_EQ(one.errorRates->insertion, other.errorRates->insertion);
  EXPECT_EQ(one.errorRates->deletion, other.errorRates->deletion);
  EXPECT_EQ(one.codingShare, other.codingShare);
  EXPECT_EQ(one.truncatedShare, other.truncatedShare);
  ASSERT_EQ(one.qualities.size(), 2U);
  EXPECT_EQ(one.qualities[0].factors.deletion, other.qualities[0].factors.deletion);
}

TEST(HmmDecoder, WhatIsLearntDoesNotDependOnTheOrderOfTasks) {
  ToyReads reads(7);
  for (int i = 0; i < 403; ++i) reads.addCoding(20 + i % 50, {0.01, 0.02, 0.1, 5, 40});
  const HmmDecoder decoder(sharedToy());
  expectSame(decoder.learn(reads.views(true), {}, inTurn),
             decoder.learn(reads.views(true), {}, backwards));
}

TEST(HmmDecoder, OnlyTheBasesOfSomeReadsAreLearntFrom) {
  constexpr std::size_t kReads = 1501;
  ToyReads reads(7);
  for (std::size_t i = 0; i < kReads; ++i) reads.addCoding(20, {0.01, 0.02, 0.1, 5, 40});
  const HmmDecoder decoder(sharedToy());
  const std::vector<std::size_t> looked = decoder.readsLearntFrom(kReads);
  EXPECT_LT(looked.size(), kReads);
  const std::vector<ReadView> whole = reads.views(true);
  std::vector<ReadView> blank = whole;
  for (ReadView& read : blank) read.codes = {};
  for (const std::size_t i : looked) blank[i] = whole[i];
  expectSame(decoder.learn(whole, {}, inTurn), decoder.learn(blank, {}, inTurn));
}

TEST(HmmDecoder, CalibratedDecodingDiffers) {
  ToyReads reads(7);
  reads.addCoding(20, {});
  const HmmDecoder decoder(sharedToy());
  Calibration calibration;
  const double plain = decoded(decoder, reads.views()[0]).probability;
  EXPECT_EQ(decoded(*decoder.calibrated(calibration), reads.views()[0]).probability, plain);
  calibration.codingShare = 0.1;
  EXPECT_LT(decoded(*decoder.calibrated(calibration), reads.views()[0]).probability, plain);
  calibration.codingShare.reset();
  calibration.truncatedShare = 0.1;
  const auto whole = decoder.calibrated(calibration);
  EXPECT_LT(decoded(*whole, reads.views()[0]).score, decoded(decoder, reads.views()[0]).score);
  EXPECT_EQ(decoded(*whole->calibrated({}), reads.views()[0]).probability, plain);
  calibration.truncatedShare.reset();
  calibration.errorRates = BaseErrorRates{0.05, 0.05, 0.05};
  EXPECT_NE(decoded(*decoder.calibrated(calibration), reads.views()[0]).probability, plain);
}

TEST(HmmDecoder, TinyFilesLearnNothing) {
  for (const int count : {0, 1, 10, 19}) {
    ToyReads reads(7);
    for (int i = 0; i < count; ++i) reads.addCoding(50, {});
    const Calibration learnt = HmmDecoder(sharedToy()).learn(reads.views(), {}, inTurn);
    EXPECT_FALSE(learnt.errorRates.has_value()) << count;
    EXPECT_FALSE(learnt.codingShare.has_value()) << count;
    EXPECT_FALSE(learnt.truncatedShare.has_value()) << count;
  }
}

TEST(HmmDecoder, FiftyReadsTellRatesAndShare) {
  ToyReads reads(7);
  for (int i = 0; i < 50; ++i) reads.addCoding(50, {});
  const Calibration learnt = HmmDecoder(sharedToy()).learn(reads.views(), {}, inTurn);
  EXPECT_TRUE(learnt.errorRates.has_value());
  EXPECT_TRUE(learnt.codingShare.has_value());
  EXPECT_TRUE(learnt.truncatedShare.has_value());
}

TEST(HmmDecoder, WhatIsKnownStays) {
  ToyReads reads(7);
  for (int i = 0; i < 100; ++i) reads.addCoding(150, {0.01, 0.02, 0.1, 5, 40});
  Calibration known;
  known.errorRates = BaseErrorRates{0.001, 0.002, 0.003};
  known.codingShare = 0.3;
  const HmmDecoder decoder(sharedToy());
  EXPECT_GT(*decoder.learn(reads.views(true), known, inTurn).truncatedShare, 0.8);
  known.truncatedShare = 0.4;
  const Calibration learnt = decoder.learn(reads.views(true), known, inTurn);
  EXPECT_EQ(learnt.errorRates->insertion, 0.001);
  EXPECT_EQ(learnt.codingShare, 0.3);
  EXPECT_EQ(learnt.truncatedShare, 0.4);
  EXPECT_EQ(learnt.qualities.size(), 2U);
}

MemorySource sourceOf(const std::string& text) {
  return MemorySource(std::map<std::string, std::string>{{kHmmModelFile, text}});
}

TEST(HmmDecoder, ModelsAreReadFromTheirFile) {
  const HmmDecoder decoder(sourceOf(hmmModelText(toyModel())));
  ToyReads reads(5);
  reads.addCoding(100, {});
  expectSame(decoded(decoder, reads.views()[0]),
             decoded(HmmDecoder(sharedToy()), reads.views()[0]));
}

std::string loadingError(const std::string& text) {
  try {
    HmmDecoder damaged(sourceOf(text));
    return "";
  } catch (const ModelError& error) {
    return error.what();
  }
}

TEST(HmmDecoder, DamagedModelFilesAreNamed) {
  EXPECT_EQ(loadingError("VELTO posterior model 4\n\n"),
            "hmm/posterior.txt: line 2: missing number");
  EXPECT_EQ(loadingError(std::string(kMostHmmModelBytes + 1, ' ')),
            "hmm/posterior.txt: is larger than 32 MB");
}

// Reads in lanes, in an order that is not that of their lengths, too long ones among them.
TEST(HmmDecoder, ManyReadsAtOnceAreCalledAsOneByOne) {
  ToyReads reads(9);
  for (const int codons : {40, 300, 1, 40, 7000, 90, 33, 150, 8, 61, 2}) {
    reads.addCoding(codons, {0.01, 0.01});
    reads.addEven(2 * codons + 1);
  }
  const std::vector<ReadView> views = reads.views();
  const HmmDecoder decoder(sharedToy());
  std::vector<Call> calls(views.size());
  const auto scratch = decoder.scratch();
  for (const bool scores : {false, true}) {
    const Wishes wishes{scores};
    decoder.decodeAll(views, wishes, *scratch, calls);
    for (std::size_t i = 0; i < views.size(); ++i) {
      SCOPED_TRACE(i);
      expectSame(calls[i], decoded(decoder, views[i], wishes));
    }
  }
}

TEST(HmmDecoder, AReadThatMayCodeOnEitherStrandIsNotCalled) {
  ToyReads reads(5);
  reads.addCoding(100, {});
  Wishes wishes;
  wishes.scores = true;
  const HmmDecoder decoder(sharedToy());
  const Call alone = decoded(decoder, reads.views()[0], wishes);
  Call either = alone;
  decoder.weighOtherStrand(alone.strandScore, wishes, either);
  EXPECT_EQ(either.probability, 0.5 * alone.probability);
  EXPECT_EQ(either.scores[0][150], 0.5 * alone.scores[0][150]);
  EXPECT_FALSE(either.coding);
  EXPECT_EQ(either.start, -1);
  EXPECT_EQ(either.stop, -1);
  EXPECT_TRUE(either.frame.empty());
  Call called = alone;
  wishes.minProbability = 0.4;
  decoder.weighOtherStrand(alone.strandScore, wishes, called);
  EXPECT_TRUE(called.coding);
  EXPECT_EQ(called.frame, alone.frame);
}

TEST(HmmDecoder, AStrandOfMuchHigherScoreIsAsGoodAsAlone) {
  ToyReads reads(5);
  reads.addCoding(100, {});
  const HmmDecoder decoder(sharedToy());
  const Call alone = decoded(decoder, reads.views()[0]);
  Call call = alone;
  decoder.weighOtherStrand(alone.strandScore - 80.0, {}, call);
  EXPECT_NEAR(call.probability, alone.probability, 1e-3);
  EXPECT_TRUE(call.coding);
}

TEST(HmmDecoder, TrustInTheCalledStrandCountsAsItsLead) {
  ToyReads reads(5);
  reads.addCoding(100, {});
  const auto model = std::make_shared<HmmModel>(toyModel());
  model->strand.constant = 2.0;
  const HmmDecoder decoder(model);
  const Call alone = decoded(decoder, reads.views()[0]);
  Call call = alone;
  decoder.weighOtherStrand(alone.strandScore - 1.0, {}, call);
  EXPECT_NEAR(call.probability, alone.probability / (1.0 + std::exp(-3.0)), 1e-6);
}

// Groups of all sizes: one where no read beats its score, one where some do, reads decoded alone.
TEST(HmmDecoder, ReadsThatBeatTheirScoreAreCalledInFull) {
  ToyReads reads(12);
  for (int i = 0; i < 21; ++i) reads.addCoding(60 + i, {0.01, 0.01});
  const std::vector<ReadView> views = reads.views();
  const auto model = std::make_shared<HmmModel>(toyModel());
  model->strand = {3.0, 0.0, 0.0, 0.0, 0.0};
  const HmmDecoder decoder(model);
  const auto scratch = decoder.scratch();
  std::vector<Call> plain(views.size()), calls(views.size());
  decoder.decodeAll(views, {}, *scratch, plain);
  std::vector<double> scores;
  for (std::size_t i = 0; i < views.size(); ++i) {
    scores.push_back(i > 12 || i % 2 == 0 ? plain[i].strandScore : plain[i].strandScore - 1e-9);
  }
  Wishes wishes;
  wishes.strandScoresToBeat = scores;
  decoder.decodeAll(views, wishes, *scratch, calls);
  for (std::size_t i = 0; i < views.size(); ++i) {
    SCOPED_TRACE(i);
    EXPECT_EQ(calls[i].strandScore, plain[i].strandScore);
    if (calls[i].strandScore > scores[i]) expectSame(calls[i], plain[i]);
  }
}

}  // namespace
}  // namespace velto
