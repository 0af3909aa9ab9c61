#include "hmm/lane_emissions.h"

#include <gtest/gtest.h>
#include <hwy/targets.h>

#include "core/random.h"
#include "hmm/read_lattice.h"
#include "hmm/toy_model.h"

namespace velto {
namespace {

// A model of which every number counts.
HmmModel variedModel() {
  Random random(5);
  HmmModel model = toyModel();
  for (EmissionRow& row : model.emissions) {
    for (float& p : row) p = static_cast<float>(random.real());
  }
  for (auto& place : model.kozak) {
    for (float& ratio : place) ratio = 0.5f + static_cast<float>(random.real());
  }
  WindowNetwork& network = model.network;
  const auto draw = [&](unsigned most) {
    return static_cast<std::int16_t>(static_cast<int>(random.below(most + 1)) -
                                     static_cast<int>(most / 2));
  };
  network.letters = 2;
  network.offsets = {-3, 0, 5};
  network.clearRows();
  for (std::size_t o = 0; o < network.offsets.size(); ++o) {
    for (int kmer = 0; kmer < network.kmers(); ++kmer) {
      for (auto& x : network.row(o, kmer)) x = static_cast<std::int8_t>(draw(80));
    }
  }
  for (auto& x : network.bias) x = draw(1000);
  for (auto& x : network.dinucleotide) x = draw(1000);
  for (auto& x : network.output) x = draw(2000);
  network.outputScale = 3e-7f;
  return model;
}

// Codes of reads with unknown bases among them, ten of them in a row, and qualities.
struct Reads {
  std::vector<std::vector<short>> codes;
  std::vector<std::vector<std::uint8_t>> phred;

  Reads(const std::vector<int>& lengths, Random& random) {
    for (const int length : lengths) {
      codes.emplace_back();
      phred.emplace_back();
      for (int i = 0; i < length; ++i) {
        const auto code = static_cast<short>(random.below(33) / 8);
        const bool isUnknown = code == 4 || (i >= 20 && i < 30);
        codes.back().push_back(isUnknown ? kUnknownBase : code);
        phred.back().push_back(static_cast<std::uint8_t>(random.below(40)));
      }
    }
  }

  std::vector<ReadView> views(bool withQualities) const {
    std::vector<ReadView> views;
    for (std::size_t r = 0; r < codes.size(); ++r) {
      views.push_back({codes[r], {}});
      if (withQualities) views.back().phred = phred[r];
    }
    return views;
  }
};

void expectSame(const BaseEmission& a, const BaseEmission& b) {
  for (std::size_t k = 0; k < kEmissionKinds; ++k) EXPECT_EQ(a.kind[k], b.kind[k]) << k;
  EXPECT_EQ(a.start, b.start);
  EXPECT_EQ(a.stop, b.stop);
  EXPECT_EQ(a.insertion, b.insertion);
  EXPECT_EQ(a.deletion, b.deletion);
  EXPECT_EQ(a.stay, b.stay);
}

void expectEmitted(const HmmModel& model, const FileRates& rates,
                   const std::vector<ReadView>& reads, EmissionLanes& lanes,
                   LaneEmissions& emissions, bool useNetwork = true) {
  lanes.fill(reads, emissions);
  for (std::size_t lane = 0; lane < reads.size(); ++lane) {
    ReadLattice lattice;
    lattice.prepare(model, rates, reads[lane], useNetwork);
    ASSERT_EQ(emissions.positions - emissions.begin[lane], lattice.emissions.size());
    for (std::size_t i = 0; i < lattice.emissions.size(); ++i) {
      SCOPED_TRACE(testing::Message() << "lane " << lane << " base " << i);
      expectSame(emissions.at(emissions.begin[lane] + i, lane), lattice.emissions[i]);
    }
  }
}

TEST(LaneEmissions, EqualThePlainOnesOnEverySetOfInstructions) {
  const HmmModel model = variedModel();
  const QualityBin bins[] = {{12, {3, 4, 5}}, {255, {0.2, 0.3, 0.4}}};
  const FileRates even({0.01, 0.02, 0.03}, {}), byQuality({0.01, 0.02, 0.03}, bins);
  for (const std::int64_t target : hwy::SupportedAndGeneratedTargets()) {
    SCOPED_TRACE(hwy::TargetName(target));
    hwy::SetSupportedTargetsForTest(target);
    Random random(3);
    // Rows of earlier groups are met.
    EmissionLanes evenLanes(model, even, true), lanes(model, byQuality, true);
    EmissionLanes tablesAlone(model, even, false);
    LaneEmissions emissions;
    for (const std::vector<int>& lengths :
         {std::vector<int>{100, 99, 98, 64, 33, 32, 2, 1}, {1}, {70, 3, 70}}) {
      const Reads reads(lengths, random);
      expectEmitted(model, even, reads.views(false), evenLanes, emissions);
      expectEmitted(model, even, reads.views(false), tablesAlone, emissions, false);
      expectEmitted(model, byQuality, reads.views(true), lanes, emissions);
      expectEmitted(model, byQuality, reads.views(false), lanes, emissions);
    }
  }
  hwy::SetSupportedTargetsForTest(0);
}

}  // namespace
}  // namespace velto
