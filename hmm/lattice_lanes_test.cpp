#include "hmm/lattice_lanes.h"

#include <gtest/gtest.h>
#include <hwy/targets.h>

#include "core/random.h"
#include "hmm/toy_model.h"

namespace velto {
namespace {

std::vector<BaseEmission> randomEmissions(int length, Random& random) {
  const auto upTo = [&random](double most) { return static_cast<float>(most * random.real()); };
  std::vector<BaseEmission> emissions(static_cast<std::size_t>(length));
  for (BaseEmission& e : emissions) {
    for (float& kind : e.kind) kind = upTo(0.8);
    e.start = random.below(10) == 0 ? upTo(0.1) : 0.0f;
    e.stop = random.below(10) == 0 ? upTo(0.1) : 0.0f;
    e.insertion = upTo(0.02);
    e.deletion = upTo(0.02);
    e.stay = 1.0f - e.insertion - e.deletion;
  }
  return emissions;
}

void expectSame(const FramePosterior& a, const FramePosterior& b) {
  EXPECT_EQ(a.frame, b.frame);
  EXPECT_EQ(a.inserted, b.inserted);
  EXPECT_EQ(a.deleted, b.deleted);
  EXPECT_EQ(a.start, b.start);
  EXPECT_EQ(a.stop, b.stop);
}

void expectSamePath(const std::vector<FramePosterior>& frames, const LatticeLanes& lanes,
                    std::size_t lane) {
  Call plain, fast;
  PathTrace trace;
  findCodingPath(frames, trace, plain);
  lanes.takePathOf(lane, fast);
  EXPECT_EQ(plain.start, fast.start);
  EXPECT_EQ(plain.stop, fast.stop);
  EXPECT_EQ(plain.frame, fast.frame);
  ASSERT_EQ(plain.frameshifts.size(), fast.frameshifts.size());
  for (std::size_t k = 0; k < plain.frameshifts.size(); ++k) {
    EXPECT_EQ(plain.frameshifts[k].kind, fast.frameshifts[k].kind);
    EXPECT_EQ(plain.frameshifts[k].position, fast.frameshifts[k].position);
    EXPECT_EQ(plain.frameshifts[k].confidence, fast.frameshifts[k].confidence);
  }
}

void expectPlain(const PathWeights& weights, const std::vector<BaseEmission>& emissions,
                 const LatticeLanes& lanes, std::size_t lane, float factor) {
  ForwardRows forward;
  std::vector<StatePosterior> posteriors;
  runForward({weights, emissions}, forward);
  runBackward({weights, emissions}, forward, posteriors);
  const ReadEvidence plain = evidenceOf(forward, posteriors), fast = lanes.evidence(lane);
  EXPECT_EQ(plain.logOdds, fast.logOdds);
  EXPECT_EQ(plain.logOdds, lanes.logOdds(lane));
  EXPECT_EQ(plain.logLikelihood, fast.logLikelihood);
  EXPECT_EQ(plain.codingBases, fast.codingBases);
  EXPECT_EQ(plain.truncated, fast.truncated);
  for (std::size_t i = 0; i < posteriors.size(); ++i) {
    const ErrorPosterior one = errorPosteriorOf(posteriors[i]),
                         other = lanes.errorPosterior(lane, i);
    EXPECT_EQ(one.coding, other.coding) << i;
    EXPECT_EQ(one.inserted, other.inserted) << i;
    EXPECT_EQ(one.deleted, other.deleted) << i;
  }
  std::vector<FramePosterior> plainFrames, fastFrames;
  framePosteriors(posteriors, factor, plainFrames);
  lanes.framePosteriors(lane, factor, fastFrames);
  ASSERT_EQ(plainFrames.size(), fastFrames.size());
  for (std::size_t i = 0; i < plainFrames.size(); ++i) {
    SCOPED_TRACE(i);
    expectSame(plainFrames[i], fastFrames[i]);
  }
  expectSamePath(plainFrames, lanes, lane);
}

LaneEmissions inLanes(const std::vector<std::vector<BaseEmission>>& reads) {
  LaneEmissions lanes;
  std::vector<std::size_t> lengths;
  for (const auto& read : reads) lengths.push_back(read.size());
  lanes.arrange(lengths);
  for (std::size_t lane = 0; lane < reads.size(); ++lane) {
    LaneRow* row = lanes.rows.data() + lanes.begin[lane] * kLaneEmissions;
    for (const BaseEmission& e : reads[lane]) {
      for (std::size_t k = 0; k < kEmissionKinds; ++k) row[kLaneKind + k][lane] = e.kind[k];
      row[kLaneStart][lane] = e.start;
      row[kLaneStop][lane] = e.stop;
      row[kLaneInsertion][lane] = e.insertion;
      row[kLaneDeletion][lane] = e.deletion;
      row[kLaneStay][lane] = e.stay;
      row += kLaneEmissions;
    }
  }
  return lanes;
}

// The lanes of one object after another, so that rows of an earlier group are met.
void expectPlainOnThisTarget(std::uint64_t seed) {
  Random random(seed);
  const PathWeights weights = toyModel().weights;
  LatticeLanes lanes;
  for (const std::vector<int>& lengths :
       {std::vector<int>{200, 199, 198, 180, 64, 5, 2, 1}, {1}, {7, 7, 7}, {90, 3, 90, 1, 90}}) {
    std::vector<std::vector<BaseEmission>> reads;
    for (const int length : lengths) reads.push_back(randomEmissions(length, random));
    const LaneEmissions emissions = inLanes(reads);
    lanes.runForward(weights, emissions);
    lanes.runBackward();
    LaneRow factors;
    for (std::size_t lane = 0; lane < kLanes; ++lane) {
      factors[lane] = 1.0f + 0.1f * static_cast<float>(lane);
    }
    lanes.scorePaths(factors);
    for (std::size_t lane = 0; lane < reads.size(); ++lane) {
      SCOPED_TRACE(lane);
      expectPlain(weights, reads[lane], lanes, lane, factors[lane]);
    }
  }
}

TEST(LatticeLanes, EqualThePlainSumsOnEverySetOfInstructions) {
  for (const std::int64_t target : hwy::SupportedAndGeneratedTargets()) {
    SCOPED_TRACE(hwy::TargetName(target));
    hwy::SetSupportedTargetsForTest(target);
    expectPlainOnThisTarget(23);
  }
  hwy::SetSupportedTargetsForTest(0);
}

TEST(LatticeLanes, ReadWithoutAnyPathHasNoPosteriors) {
  std::vector<std::vector<BaseEmission>> reads(2, std::vector<BaseEmission>(9));
  LatticeLanes lanes;
  const LaneEmissions emissions = inLanes(reads);
  const PathWeights weights = toyModel().weights;
  lanes.runForward(weights, emissions);
  lanes.runBackward();
  lanes.scorePaths(LaneRow{});
  expectPlain(weights, reads[1], lanes, 1, 0.0f);
  EXPECT_EQ(lanes.evidence(1).codingBases, 0.0);
  EXPECT_EQ(lanes.evidence(1).truncated, 0.0);
}

}  // namespace
}  // namespace velto
