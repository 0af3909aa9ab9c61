// The public predictor against the definitions of its steps, and its own rules.
#include <gtest/gtest.h>

#include <algorithm>
#include <thread>

#include "core/six_digits.h"
#include "decoder/base_scores.h"
#include "decoder/placed_call.h"
#include "hmm/hmm_model_file.h"
#include "hmm/toy_model.h"
#include "model/model_set.h"
#include "tests/support/reads.h"
#include "tests/support/temp_dir.h"
#include "tests/support/trained_models.h"
#include "velto/velto.h"

namespace velto {
namespace {

using test::PriorForm;
using test::Random;
using Status = Prediction::Status;

// The prediction of one read by the named operations of the one-read program, with scores.
Prediction definition(const ModelSet& models, const std::string& letters) {
  WebPredict one;
  one.setRead(test::baseCodes(letters));
  Prediction result;
  result.length = one.seqLength;
  result.gcPercent = one.gcPressure;
  const ReadClass readClass = classifyRead(result.length, result.gcPercent);
  result.model = readClass.name();
  const ModelView model = models.model(readClass).view();
  test::useAsProcessModel(model.tables, model.windowWidth);
  one.predictRead();
  std::vector<int> path;
  for (int step = 0; 3 * step < result.length; ++step) path.push_back(one.frameAt(step));
  Call call;
  callPath(path, one.dpScore, result.length, call);
  result.score = one.dpScore;
  result.start = one.lay.start;
  result.stop = one.lay.stop;
  result.status = result.start >= 0 ? Status::kCoding : Status::kNoncoding;
  result.frame = call.frame;
  result.frameshifts = call.frameshifts;
  for (int f = 0; f < 3; ++f) {
    result.scores[f] = baseScores(one.frameScore[f], f, result.length);
  }
  return result;
}

void expectEqual(const Prediction& found, const Prediction& wanted) {
  EXPECT_EQ(found.status, wanted.status);
  EXPECT_EQ(found.length, wanted.length);
  EXPECT_EQ(found.gcPercent, wanted.gcPercent);
  EXPECT_EQ(found.model, wanted.model);
  EXPECT_EQ(found.score, wanted.score);
  EXPECT_EQ(found.start, wanted.start);
  EXPECT_EQ(found.stop, wanted.stop);
  EXPECT_EQ(found.frame, wanted.frame);
  ASSERT_EQ(found.frameshifts.size(), wanted.frameshifts.size());
  for (size_t i = 0; i < found.frameshifts.size(); ++i) {
    EXPECT_EQ(found.frameshifts[i].kind, wanted.frameshifts[i].kind);
    EXPECT_EQ(found.frameshifts[i].position, wanted.frameshifts[i].position);
  }
}

// The scores as they are printed.
std::string digits(const std::vector<double>& scores) {
  std::string text;
  for (const double score : scores) {
    appendSixDigits(text, score);
    text += ' ';
  }
  return text;
}

class PredictorTest : public ::testing::Test {
 protected:
  void makeModels(PriorForm form, int weights = 0) {
    species.writeModels(random, form, directory.path(), weights);
  }

  std::string randomRead() {
    const int length = test::chance(random, 0.1) ? test::randomInt(random, 30, 300)
                                                 : test::randomInt(random, 300, 900);
    return species.read(random, length, 0.012);
  }

  // Predicts `count` reads, with and without scores. One in ten must be coding, with at least as
  // many frameshifts.
  void compareWithDefinition(int count) {
    const ModelSet models{FolderSource(directory.path())};
    const Predictor predictor(directory.path());
    Workspace workspace;
    int coding = 0;
    size_t shifts = 0;
    for (int i = 0; i < count; ++i) {
      const std::string read = randomRead();
      SCOPED_TRACE(read);
      if (read.size() < kLeastReadBases) continue;
      const Prediction wanted = definition(models, read);
      ASSERT_NO_FATAL_FAILURE(expectEqual(predictor.predict(read, workspace), wanted));
      PredictOptions options;
      options.wantScores = true;
      const Prediction scored = predictor.predict(read, workspace, options);
      ASSERT_NO_FATAL_FAILURE(expectEqual(scored, wanted));
      for (int f = 0; f < 3; ++f) ASSERT_EQ(digits(scored.scores[f]), digits(wanted.scores[f]));
      if (::testing::Test::HasFailure()) return;
      coding += wanted.status == Status::kCoding;
      shifts += wanted.frameshifts.size();
    }
    EXPECT_GT(coding, count / 10);
    EXPECT_GT(shifts, static_cast<size_t>(count) / 10);
  }

  Random random{test::testSeed()};
  test::MadeUpSpecies species{random};
  test::TempDir directory;
  const ::testing::ScopedTrace seed{__FILE__, __LINE__, test::testSeed()};
};

TEST_F(PredictorTest, EqualsTheDefinitionWithNearlyConstantPriors) {
  makeModels(PriorForm::kNearlyConstant);
  compareWithDefinition(1000);
}

TEST_F(PredictorTest, EqualsTheDefinitionWithPriorsThatFollowTheCounts) {
  makeModels(PriorForm::kFollowCounts);
  compareWithDefinition(600);
}

TEST_F(PredictorTest, EqualsTheDefinitionWhereManySumsAreEqual) {
  makeModels(PriorForm::kNearlyConstant, 1);
  compareWithDefinition(400);
}

TEST_F(PredictorTest, EqualsTheDefinitionWithWeightsThatAreNoWholeMillionths) {
  makeModels(PriorForm::kNearlyConstant);
  for (int i = 0; i < kReadClasses; ++i) {
    const std::string file = readClassAt(i).parameterPath(directory.path());
    std::string text = test::readFile(file);
    text.insert(text.find('\n'), "5");  // a seventh decimal in the first weight
    test::writeFile(file, text);
  }
  compareWithDefinition(300);
}

TEST_F(PredictorTest, FoldsLowerCaseAndUracilUnlessToldNotTo) {
  makeModels(PriorForm::kNearlyConstant);
  const Predictor predictor(directory.path());
  Workspace workspace;
  const std::string upper = species.read(random, 700, 0.0);
  std::string lower = upper;
  for (char& letter : lower) letter = letter == 'T' ? 'u' : static_cast<char>(letter | 0x20);
  expectEqual(predictor.predict(lower, workspace), predictor.predict(upper, workspace));
  PredictOptions exact;
  exact.letters = Letters::kExact;
  EXPECT_EQ(predictor.predict(lower, workspace, exact).gcPercent, 0.0);
  expectEqual(predictor.predict(upper, workspace, exact), predictor.predict(upper, workspace));
}

TEST_F(PredictorTest, MinusStrandIsThatOfTheReverseComplement) {
  makeModels(PriorForm::kNearlyConstant);
  const Predictor predictor(directory.path());
  Workspace workspace;
  PredictOptions minus;
  minus.strand = Strand::kMinus;
  PredictOptions both;
  both.strand = Strand::kBoth;
  int onMinus = 0;
  for (int i = 0; i < 100; ++i) {
    const std::string read = randomRead();
    const std::string other = predictedLetters(read, Strand::kMinus, Letters::kFolded);
    if (read.size() < kLeastReadBases) continue;
    const Prediction plusFound = predictor.predict(read, workspace);
    const Prediction minusFound = predictor.predict(other, workspace, minus);
    EXPECT_EQ(minusFound.strand, Strand::kMinus);
    expectEqual(minusFound, plusFound);
    const Prediction best = predictor.predict(other, workspace, both);
    const Prediction otherFound = predictor.predict(other, workspace);
    const bool minusIsBetter = minusFound.score > otherFound.score;
    EXPECT_EQ(best.strand, minusIsBetter ? Strand::kMinus : Strand::kPlus);
    expectEqual(best, minusIsBetter ? minusFound : otherFound);
    onMinus += minusIsBetter;
  }
  EXPECT_GT(onMinus, 20);
}

// What codes on one strand, followed by its reverse complement, is the same on both.
TEST_F(PredictorTest, PosteriorsOfAReadThatIsTheSameOnBothStrandsAreHalved) {
  const Predictor predictor(Model({{kHmmModelFile, hmmModelText(toyModel())}}));
  Workspace workspace;
  PredictOptions plus;
  plus.strand = Strand::kPlus;
  PredictOptions both;
  both.strand = Strand::kBoth;
  std::string read;
  for (int i = 0; i < 60; ++i) read += "ATG";
  const Prediction turned =
      predictor.predict(predictedLetters(read, Strand::kMinus, Letters::kFolded), workspace, both);
  EXPECT_EQ(turned.strand, Strand::kMinus);
  EXPECT_EQ(turned.status, Status::kCoding);
  EXPECT_NEAR(turned.probability, predictor.predict(read, workspace, plus).probability, 0.01);
  for (int i = 0; i < 60; ++i) read += "CAT";
  const Prediction alone = predictor.predict(read, workspace, plus);
  const Prediction either = predictor.predict(read, workspace, both);
  EXPECT_EQ(alone.status, Status::kCoding);
  EXPECT_EQ(either.status, Status::kNoncoding);
  EXPECT_EQ(either.probability, 0.5 * alone.probability);
}

TEST_F(PredictorTest, StrandOfTheHigherStrandScoreIsCalledWhateverItsLogOdds) {
  std::string read;
  for (int i = 0; i < 60; ++i) read += "ATG";
  const std::vector<Read> reads(12, Read{read, {}});
  PredictOptions both;
  both.strand = Strand::kBoth;
  Workspace workspace;
  for (const double weight : {1.0, -1.0}) {
    HmmModel model = toyModel();
    model.strand = {weight, 0.0, 0.0, 0.0, 0.0};
    const Predictor predictor(Model({{kHmmModelFile, hmmModelText(model)}}));
    for (const Prediction& found : predictor.predictAll(reads, workspace, both)) {
      EXPECT_EQ(found.strand, weight > 0.0 ? Strand::kPlus : Strand::kMinus);
      EXPECT_GT(found.probability, 0.0);
    }
  }
}

TEST_F(PredictorTest, PolyATailsAreUnknownToThePosteriorDecoder) {
  const Predictor predictor(Model({{kHmmModelFile, hmmModelText(toyModel())}}));
  Workspace workspace;
  std::string transcript;
  for (int i = 0; i < 60; ++i) transcript += "ATG";
  const std::string tailed = transcript + "CGCGC" + std::string(100, 'A');
  std::string masked = tailed;
  masked.replace(transcript.size() + 10, 85, 85, 'N');
  expectEqual(predictor.predict(tailed, workspace), predictor.predict(masked, workspace));

  const std::vector<Read> tails(60, Read{tailed, {}}), masks(60, Read{masked, {}});
  const Calibration ofTails = predictor.learn(tails), ofMasks = predictor.learn(masks);
  EXPECT_EQ(ofTails.errorRates->insertion, ofMasks.errorRates->insertion);
  EXPECT_EQ(ofTails.codingShare, ofMasks.codingShare);
}

TEST_F(PredictorTest, PolyATailsAreKnownToTheVote) {
  makeModels(PriorForm::kNearlyConstant);
  const ModelSet models{FolderSource(directory.path())};
  const Predictor predictor(directory.path());
  Workspace workspace;
  for (int i = 0; i < 20; ++i) {
    const std::string read = randomRead() + std::string(200, 'A');
    expectEqual(predictor.predict(read, workspace), definition(models, read));
  }
}

TEST_F(PredictorTest, ReadsOf29BasesAreShortAndOf30Predicted) {
  makeModels(PriorForm::kNearlyConstant);
  const Predictor predictor(directory.path());
  Workspace workspace;
  EXPECT_EQ(predictor.predict("", workspace).status, Status::kEmpty);
  const Prediction tooShort = predictor.predict(std::string(29, 'G'), workspace);
  EXPECT_EQ(tooShort.status, Status::kShort);
  EXPECT_EQ(tooShort.gcPercent, 100.0);
  EXPECT_EQ(tooShort.model, "");
  const Prediction shortest = predictor.predict(std::string(30, 'G'), workspace);
  EXPECT_EQ(shortest.status, Status::kNoncoding);
  EXPECT_EQ(shortest.model, "96L0G3");
  EXPECT_EQ(shortest.score, -10.0);
}

TEST_F(PredictorTest, ThreadsWithTheirOwnWorkspacesFindTheSame) {
  makeModels(PriorForm::kFollowCounts);
  const Predictor predictor(directory.path());
  std::vector<std::string> reads;
  for (int i = 0; i < 100; ++i) reads.push_back(randomRead());
  std::vector<Prediction> found[4];
  std::vector<std::thread> threads;
  for (auto& mine : found) {
    threads.emplace_back([&reads, &predictor, &mine] {
      Workspace workspace;
      for (const std::string& read : reads) mine.push_back(predictor.predict(read, workspace));
    });
  }
  for (std::thread& thread : threads) thread.join();
  for (size_t i = 0; i < reads.size(); ++i) {
    for (const auto& mine : found) expectEqual(mine[i], found[0][i]);
  }
}

TEST_F(PredictorTest, PredictsManyReadsAsOneByOne) {
  makeModels(PriorForm::kFollowCounts);
  const Predictor predictor(directory.path());
  PredictOptions options;
  options.strand = Strand::kBoth;
  options.wantScores = true;
  std::vector<std::string> bases = {"", "ACGT"};
  for (int i = 0; i < 40; ++i) {
    bases.push_back(predictedLetters(randomRead(), i % 2 == 0 ? Strand::kPlus : Strand::kMinus,
                                     Letters::kFolded));
  }
  std::vector<Read> reads;
  for (const std::string& read : bases) reads.push_back({read, {}});
  Workspace workspace;
  const std::vector<Prediction> found = predictor.predictAll(reads, workspace, options);
  ASSERT_EQ(found.size(), reads.size());
  int onMinus = 0;
  for (size_t i = 0; i < reads.size(); ++i) {
    const Prediction wanted = predictor.predict(bases[i], workspace, options);
    expectEqual(found[i], wanted);
    EXPECT_EQ(found[i].strand, wanted.strand);
    EXPECT_EQ(found[i].decoder, i < 2 ? "" : "vote");
    for (int f = 0; f < 3; ++f) EXPECT_EQ(found[i].scores[f], wanted.scores[f]);
    onMinus += wanted.strand == Strand::kMinus;
  }
  EXPECT_GT(onMinus, 5);
}

TEST_F(PredictorTest, QualitiesAreAsManyAsBasesAndChangeNoVote) {
  makeModels(PriorForm::kNearlyConstant);
  const Predictor predictor(directory.path());
  Workspace workspace;
  const std::string read = species.read(random, 700, 0.0);
  std::vector<std::uint8_t> qualities(read.size(), 20);
  expectEqual(predictor.predict(read, qualities, workspace), predictor.predict(read, workspace));
  qualities.pop_back();
  EXPECT_THROW(predictor.predict(read, qualities, workspace), std::invalid_argument);
}

TEST_F(PredictorTest, VoteLearnsNothingFromAFile) {
  makeModels(PriorForm::kNearlyConstant);
  const Predictor predictor(directory.path());
  const std::string bases = species.read(random, 700, 0.0);
  const std::vector<Read> sample(30, Read{bases, {}});
  Calibration known;
  known.codingShare = 0.25;
  const Calibration learnt = predictor.learn(sample, {}, known);
  EXPECT_EQ(learnt.codingShare, 0.25);
  EXPECT_FALSE(learnt.errorRates.has_value());
  Workspace workspace;
  expectEqual(predictor.calibrated(learnt).predict(bases, workspace),
              predictor.predict(bases, workspace));
}

std::string sampleBases() {
  const std::string text = test::readFile("sample.txt");
  std::string bases = text.substr(text.find('\n'));
  std::erase_if(bases, [](char letter) { return letter < 'A'; });
  return bases;
}

TEST(PosteriorPredictor, LearnsTheSameFromReadsOfEitherStrand) {
  const std::string bases = sampleBases();
  std::vector<std::string> plus, minus;
  for (std::size_t i = 0; i < 20; ++i) {
    plus.push_back(bases.substr(10 * i, 600));
    minus.push_back(predictedLetters(plus.back(), Strand::kMinus, Letters::kFolded));
  }
  const auto learnt = [](const std::vector<std::string>& reads, Strand strand) {
    std::vector<Read> sample;
    for (const std::string& read : reads) sample.push_back({read, {}});
    PredictOptions options;
    options.strand = strand;
    return *Predictor("param-human", "hmm").learn(sample, options).errorRates;
  };
  const double deletions = learnt(plus, Strand::kBoth).deletion;
  EXPECT_EQ(learnt(minus, Strand::kBoth).deletion, deletions);
  EXPECT_EQ(learnt(plus, Strand::kPlus).deletion, deletions);
  EXPECT_NE(learnt(minus, Strand::kPlus).deletion, deletions);
  std::reverse(plus.begin(), plus.end());  // all of them count
  EXPECT_NEAR(learnt(plus, Strand::kBoth).deletion, deletions, 1e-8);
}

TEST(PosteriorPredictor, PredictsByWhatIsKnownOfTheFile) {
  const Predictor predictor("param-human", "hmm");
  const std::string bases = sampleBases();
  Calibration clean;
  clean.errorRates = BaseErrorRates{1e-6, 1e-6, 1e-3};
  Workspace first;
  Workspace moved = std::move(first);
  // Its two frameshifts are dear in reads without any.
  const double score = predictor.predict(bases, moved).score;
  EXPECT_LT(predictor.calibrated(clean).predict(bases, moved).score, score - 10.0);
}

TEST_F(PredictorTest, ModelErrorNamesFileAndLine) {
  makeModels(PriorForm::kNearlyConstant);
  const std::string file = readClassAt(5).parameterPath(directory.path());
  std::string text = test::readFile(file);
  text.replace(0, 1, "x");
  test::writeFile(file, text);
  try {
    const Predictor predictor(directory.path());
    FAIL() << "no error";
  } catch (const ModelError& error) {
    EXPECT_EQ(std::string(error.what()), file + ": line 1: a field is not a number");
  }
}

TEST_F(PredictorTest, ModelErrorNamesAMissingFile) {
  EXPECT_THROW(Predictor(directory.path()), ModelError);
}

TEST(PredictedLetters, AreThoseOfTheStrand) {
  EXPECT_EQ(predictedLetters("AcgUNx", Strand::kPlus, Letters::kFolded), "ACGTNN");
  EXPECT_EQ(predictedLetters("AcgUNx", Strand::kMinus, Letters::kFolded), "NNACGT");
  EXPECT_EQ(predictedLetters("AcgUNT", Strand::kMinus, Letters::kExact), "ANNNNT");
}

}  // namespace
}  // namespace velto
