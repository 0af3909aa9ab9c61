#include "hmm/quality_scale.h"

#include <gtest/gtest.h>

#include <vector>

namespace velto {
namespace {

// A hundred bases with qualities 1 to 100.
struct Hundred {
  Hundred() {
    for (int q = 1; q <= 100; ++q) phred.push_back(static_cast<std::uint8_t>(q));
  }
  std::vector<ReadView> views() const { return {{codes, phred}}; }
  std::vector<short> codes = std::vector<short>(100, 0);
  std::vector<std::uint8_t> phred;
};

TEST(QualityScale, BinsHoldTheirShares) {
  const Hundred reads;
  EXPECT_EQ(QualityScale(reads.views()).bins(),
            (std::vector<std::uint8_t>{2, 5, 10, 20, 35, 50, 75, 255}));
}

TEST(QualityScale, FewValuesLeaveNoBinEmpty) {
  const std::vector<short> codes(10, 0);
  const std::vector<std::uint8_t> phred = {2, 30, 30, 30, 30, 30, 30, 30, 30, 40};
  EXPECT_EQ(QualityScale(std::vector<ReadView>{{codes, phred}}).bins(),
            (std::vector<std::uint8_t>{2, 30, 255}));
}

TEST(QualityScale, EqualOrNoQualitiesTellNothing) {
  const std::vector<short> codes(5, 0);
  const std::vector<std::uint8_t> equal(5, 30);
  EXPECT_TRUE(QualityScale(std::vector<ReadView>{{codes, equal}}).bins().empty());
  EXPECT_TRUE(QualityScale(std::vector<ReadView>{{codes, {}}}).bins().empty());
  EXPECT_TRUE(QualityScale({}).bins().empty());
}

// Half the bases err in one of ten, half in one of a thousand: roots .316 and .0316 by the mean.
TEST(QualityScale, FirstGuessIsTheRootOfWhatTheQualitiesSay) {
  const std::vector<short> codes(4, 0);
  const std::vector<std::uint8_t> phred = {10, 10, 30, 30};
  const QualityScale scale(std::vector<ReadView>{{codes, phred}});
  const BinMultipliers m = scale.statedMultipliers();
  EXPECT_NEAR(m[0] / m[1], 10.0, 1e-3);
  EXPECT_NEAR(m[0] + m[1], 2.0, 1e-6);
}

TEST(QualityScale, RefiningComparesShares) {
  const std::vector<short> codes(4, 0);
  const std::vector<std::uint8_t> phred = {10, 10, 30, 30};
  const QualityScale scale(std::vector<ReadView>{{codes, phred}});
  constexpr std::size_t low = 0, high = 1;
  BinMultipliers m = scale.statedMultipliers();
  const BinMultipliers before = m;
  BinSums expected{}, modelled{};
  expected[low] = 900.0, expected[high] = 100.0;
  modelled[low] = 90.0, modelled[high] = 10.0;  // the same shares of a lower rate
  scale.refine(expected, modelled, m);
  EXPECT_NEAR(m[low], before[low], 1e-9);
  modelled[low] = modelled[high] = 50.0;
  scale.refine(expected, modelled, m);
  // Times (900 + 50) / (500 + 50) and (100 + 50) / (500 + 50).
  EXPECT_NEAR(m[low] / m[high], before[low] / before[high] * 950.0 / 150.0, 1e-6);
  EXPECT_NEAR(m[low] + m[high], 2.0, 1e-9);
}

TEST(QualityScale, NothingModelledChangesNothing) {
  const Hundred reads;
  const QualityScale scale(reads.views());
  BinMultipliers m = scale.statedMultipliers();
  const BinMultipliers before = m;
  scale.refine({}, {}, m);
  EXPECT_EQ(m, before);
}

}  // namespace
}  // namespace velto
