#include "hmm/forward_backward.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numeric>

#include "core/random.h"
#include "hmm/read_lattice.h"
#include "hmm/toy_model.h"

namespace velto {
namespace {

FileRates testRates() { return FileRates({0.03, 0.05, 0.04}, {}); }

// Kind that a state emits; -1 for the states that emit any base alike.
int emissionKindOf(int state) {
  if (state <= kC2) return state;
  if (state == kU5) return kUtr5;
  if (state == kU3 || state == kUn) return kUtr3;
  return state == kNC ? kNoncodingRead : -1;
}

// Every path of a read, one state after the other, straight from the drawing of the states.
class AllPaths {
 public:
  AllPaths(const PathWeights& weights, const std::vector<BaseEmission>& emissions)
      : weights_(weights),
        emissions_(emissions),
        state_(emissions.size()),
        deletion_(state_.size()) {
    for (auto& row : state_) row.fill(0.0);
    for (int s = 0; s < kHmmStates; ++s) follow(0, s, begin(s));
  }

  double total() const { return total_; }
  double coding() const { return coding_; }
  double state(std::size_t i, std::size_t s) const { return state_[i][s] / total_; }
  double deletion(std::size_t i, std::size_t k) const { return deletion_[i][k] / total_; }

 private:
  double emission(std::size_t i, int s) const {
    const int kind = emissionKindOf(s);
    return kind < 0 ? 1.0 : static_cast<double>(emissions_[i].kind[static_cast<std::size_t>(kind)]);
  }

  double begin(int s) const {
    const double e = emission(0, s);
    switch (s) {
      case kC0:
      case kC1:
      case kC2:
        return weights_.beginCoding * e;
      case kS0:
        return weights_.beginStart * emissions_[0].start;
      case kU5:
        return weights_.beginUtr5 * e;
      case kNC:
        return weights_.beginNoncoding * e;
      case kUn:
        return weights_.beginUtr3 * e;
      default:
        return 0.0;
    }
  }

  // Weight of base i in state `to` behind one in state `from`.
  double step(std::size_t i, int from, int to) const {
    const BaseEmission& b = emissions_[i];
    const double e = emission(i, to);
    if (from <= kC2 && to <= kC2) {
      return e * (to == (from + 1) % 3 ? b.stay : to == (from + 2) % 3 ? b.deletion : 0.0);
    }
    if (from <= kC2 && to == kI0 + from) return b.insertion;
    if (from >= kI0 && from <= kI2 && to == (from - kI0 + 1) % 3) return e;
    if (from == kS2 && to == kC0) return e * b.stay;
    if ((from == kC2 || from == kS2) && to == kE0) return b.stop;
    if (from == kU5 && to == kS0) return b.start;
    if (from == kU5 && to == kU5) return weights_.stayUtr5 * e;
    if ((from == kS0 || from == kS1 || from == kE0 || from == kE1) && to == from + 1) return 1.0;
    if ((from == kE2 || from == kU3) && to == kU3) return e;
    return from == to && (to == kNC || to == kUn) ? e : 0.0;
  }

  void follow(std::size_t i, int s, double weight) {
    if (weight == 0.0) return;
    path_.push_back(s);
    if (i + 1 == state_.size()) {
      add(weight);
    } else {
      for (int to = 0; to < kHmmStates; ++to) follow(i + 1, to, weight * step(i + 1, s, to));
    }
    path_.pop_back();
  }

  void add(double weight) {
    total_ += weight;
    if (isOfCodingRead(path_.back())) coding_ += weight;
    for (std::size_t i = 0; i < path_.size(); ++i) {
      state_[i][static_cast<std::size_t>(path_[i])] += weight;
      if (i > 0 && path_[i] <= kC2 && path_[i - 1] <= kC2 && path_[i] == (path_[i - 1] + 2) % 3) {
        deletion_[i][static_cast<std::size_t>(path_[i])] += weight;
      }
    }
  }

  const PathWeights& weights_;
  const std::vector<BaseEmission>& emissions_;
  std::vector<int> path_;
  double total_ = 0.0, coding_ = 0.0;
  std::vector<std::array<double, kHmmStates>> state_;
  std::vector<std::array<double, 3>> deletion_;
};

class EveryPath : public testing::TestWithParam<const char*> {};

TEST_P(EveryPath, SumsUpToTheSameAsForwardAndBackward) {
  HmmModel model = toyModel();
  model.weights.start.fill(0.9f);  // so that short paths through the codons count
  model.weights.stop = 0.8f;
  const auto codes = codesOf(GetParam());
  ReadLattice lattice;
  lattice.run(model, testRates(), {codes, {}}, true);
  const AllPaths paths(model.weights, lattice.emissions);
  EXPECT_NEAR(logLikelihood(lattice.forward), std::log(paths.total()), 1e-5);
  EXPECT_NEAR(logOddsOfCoding(lattice.forward.state.back()),
              std::log(paths.coding() / (paths.total() - paths.coding())), 1e-5);
  for (std::size_t i = 0; i < codes.size(); ++i) {
    for (std::size_t s = 0; s < kHmmStates; ++s) {
      EXPECT_NEAR(lattice.posteriors[i].state[s], paths.state(i, s), 2e-6) << i << " " << s;
    }
    for (std::size_t k = 0; k < 3; ++k) {
      EXPECT_NEAR(lattice.posteriors[i].deletion[k], paths.deletion(i, k), 2e-6) << i << " " << k;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(TinyReads, EveryPath,
                         testing::Values("A", "AT", "ATG", "ATGT", "TATGA", "ATGTAA", "CATGTGA",
                                         "CATGTAGC", "NNNN", "ANGATG", "CATGATTGAC"));

std::vector<short> randomCodes(int length, std::uint64_t seed) {
  Random random(seed);
  std::vector<short> codes;
  for (int i = 0; i < length; ++i) codes.push_back(static_cast<short>(random.below(4)));
  return codes;
}

TEST(ForwardBackward, PosteriorsSumUpToOne) {
  const HmmModel model = toyModel();
  ReadLattice lattice;
  for (const int length : {1, 2, 3, 4, 5, 7, 8, 100, 3001}) {
    const auto codes = randomCodes(length, 3);
    lattice.run(model, testRates(), {codes, {}}, true);
    for (const StatePosterior& p : lattice.posteriors) EXPECT_NEAR(sumOf(p.state), 1.0f, 1e-5f);
  }
}

TEST(ForwardBackward, UnknownBasesLeaveTheOddsOfTheBeginning) {
  const HmmModel model = toyModel();
  ReadLattice lattice;
  const std::vector<short> codes(500, kUnknownBase);
  lattice.run(model, testRates(), {codes, {}}, true);
  const double coding = 0.6, other = 0.3 * std::pow(0.995, 499) + 0.3 + 0.1;
  EXPECT_NEAR(logOddsOfCoding(lattice.forward.state.back()), std::log(coding / other), 1e-3);
}

// The scale of each row is a power of two, so it changes no digit.
TEST(ForwardBackward, ScalesArePowersOfTwoAtFixedDistancesFromTheEnd) {
  const HmmModel model = toyModel();
  ReadLattice lattice;
  const auto codes = randomCodes(103, 4);
  lattice.run(model, testRates(), {codes, {}}, true);
  for (std::size_t i = 0; i < codes.size(); ++i) {
    int exponent = 0;
    EXPECT_EQ(std::frexp(lattice.forward.scale[i], &exponent), 0.5f);
    if ((102 - i) % 4 != 0) {
      EXPECT_EQ(lattice.forward.scale[i], 1.0f);
    }
  }
  EXPECT_NE(lattice.forward.scale[50], 1.0f);
}

TEST(ForwardBackward, MasksLeaveTheirPathsOnly) {
  const HmmModel model = toyModel();
  const auto codes = codesOf("ATGATG");
  ReadLattice lattice;
  lattice.run(model, testRates(), {codes, {}}, true);
  const std::vector<StateMask> masks(6, 1U << kNC);
  const LatticeView onlyNoncoding{model.weights, lattice.emissions, masks};
  runForward(onlyNoncoding, lattice.forward);
  runBackward(onlyNoncoding, lattice.forward, lattice.posteriors);
  EXPECT_NEAR(logLikelihood(lattice.forward), std::log(0.3) + 6 * std::log(0.25), 1e-5);
  for (const StatePosterior& p : lattice.posteriors) EXPECT_EQ(p.state[kNC], 1.0f);
}

TEST(ForwardBackward, NoPathLeftIsMinusInfinityAndZero) {
  const HmmModel model = toyModel();
  const auto codes = codesOf("ATGATG");
  ReadLattice lattice;
  lattice.run(model, testRates(), {codes, {}}, true);
  const std::vector<StateMask> masks(6, StateMask{0});
  const LatticeView none{model.weights, lattice.emissions, masks};
  runForward(none, lattice.forward);
  runBackward(none, lattice.forward, lattice.posteriors);
  EXPECT_EQ(logLikelihood(lattice.forward), -std::numeric_limits<double>::infinity());
  for (const StatePosterior& p : lattice.posteriors) EXPECT_EQ(sumOf(p.state), 0.0f);
}

// Until the middle all speaks for a non-coding read, from there on for a coding one, whose forward
// sums have vanished by then: the total at the middle is near the least float.
TEST(ForwardBackward, ReadsOfTwoKindsHaveFinitePosteriors) {
  constexpr std::size_t kLength = 60;
  for (float against = 0.5f; against > 1e-3f; against *= 0.8f) {
    std::vector<BaseEmission> emissions(kLength);
    for (std::size_t i = 0; i < kLength; ++i) {
      BaseEmission& e = emissions[i];
      const bool first = i < kLength / 2;
      e.kind.fill(1e-4f * against);
      e.kind[kNoncodingRead] = 1e-4f * (first ? 1.0f : against);
      for (std::size_t k = 0; k < 3; ++k) e.kind[k] = 1e-4f * (first ? against * against : 1.0f);
      e.deletion = 0.01f;
      e.stay = 0.99f;
    }
    ForwardRows forward;
    std::vector<StatePosterior> posteriors;
    const PathWeights weights = toyModel().weights;
    runForward({weights, emissions}, forward);
    runBackward({weights, emissions}, forward, posteriors);
    for (const StatePosterior& p : posteriors) {
      for (const float lost : p.deletion) ASSERT_TRUE(lost >= 0.0f && lost <= 1.001f) << against;
    }
  }
}

TEST(ForwardBackward, CertainReadsHaveFiniteOdds) {
  StateRow row{};
  row[kC0] = 1.0f;
  EXPECT_EQ(logOddsOfCoding(row), 80.0);
  row.fill(0.0f);
  row[kNC] = 1.0f;
  EXPECT_EQ(logOddsOfCoding(row), -80.0);
}

}  // namespace
}  // namespace velto
