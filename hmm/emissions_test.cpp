#include "hmm/emissions.h"

#include <gtest/gtest.h>

#include "core/random.h"
#include "hmm/toy_model.h"

namespace velto {
namespace {

std::vector<BaseEmission> emissionsOf(const ReadView& read, const FileRates& rates,
                                      const std::vector<Factors>& factors = {}) {
  const HmmModel model = toyModel();
  ReadContext context;
  std::vector<BaseEmission> emissions;
  context.index(read.codes);
  emit(model, model.weights, read, rates, context, factors, emissions);
  return emissions;
}

FileRates ratesOf(double insertion, double deletion, double substitution) {
  return FileRates({insertion, deletion, substitution}, {});
}

TEST(Emissions, SubstitutionIsAMixture) {
  const auto codes = codesOf("AT");
  const auto e = emissionsOf({codes, {}}, ratesOf(0.01, 0.02, 0.03));
  EXPECT_NEAR(e[0].kind[kPhase0], 0.97 * 0.7 + 0.3 * 0.01, 1e-6);
  EXPECT_NEAR(e[0].kind[kPhase1], 0.97 * 0.1 + 0.9 * 0.01, 1e-6);
  EXPECT_NEAR(e[0].kind[kUtr5], 0.25, 1e-6);
  EXPECT_NEAR(e[1].insertion, 0.01 / 4, 1e-8);
  EXPECT_NEAR(e[1].deletion, 0.02, 1e-8);
  EXPECT_NEAR(e[1].stay, 0.97, 1e-6);
}

TEST(Emissions, FactorsWeighErrorFreeBasesOnly) {
  const auto codes = codesOf("A");
  const auto e = emissionsOf({codes, {}}, ratesOf(0, 0, 0.03), {{2, 3, 4, 5, 6, 7}});
  EXPECT_NEAR(e[0].kind[kPhase0], 2 * 0.97 * 0.7 + 0.3 * 0.01, 1e-6);
  EXPECT_NEAR(e[0].kind[kUtr5], 5 * 0.25, 1e-6);
  EXPECT_NEAR(e[0].kind[kNoncodingRead], 7 * 0.25, 1e-6);
}

TEST(Emissions, BaseAmongUnknownOnesSaysNothing) {
  const Factors factors = {2, 3, 4, 5, 6, 7};
  const auto codes = codesOf("NNNANNNNNA");
  const std::vector<Factors> all(codes.size(), factors);
  const auto e = emissionsOf({codes, {}}, ratesOf(0.01, 0.02, 0.03), all);
  for (std::size_t kind = 0; kind < kEmissionKinds; ++kind) {
    EXPECT_EQ(e[0].kind[kind], 1.0f);
    EXPECT_EQ(e[1].kind[kind], factors[kind]);
    EXPECT_EQ(e[5].kind[kind], factors[kind]);
    EXPECT_EQ(e[6].kind[kind], 1.0f);
    EXPECT_EQ(e[7].kind[kind], factors[kind]);
  }
}

TEST(Emissions, UnknownBaseIsAnyBase) {
  const auto codes = codesOf("AN");
  const auto e =
      emissionsOf({codes, {}}, ratesOf(0.01, 0.02, 0.03), {{1, 1, 1, 1, 1, 1}, {2, 3, 4, 5, 6, 7}});
  for (std::size_t kind = 0; kind < kEmissionKinds; ++kind) {
    EXPECT_EQ(e[1].kind[kind], static_cast<float>(kind + 2));
  }
  EXPECT_EQ(e[1].insertion, 0.01f);
}

TEST(Emissions, StartWeightAllowsOneWrongBase) {
  const HmmModel model = toyModel();
  const auto weight = [&](const char* letters) {
    return startWeight(model, model.weights, codesOf(letters), 0, kOpenFrame, 0.03f);
  };
  EXPECT_NEAR(weight("ATG"), 0.05 * 0.97 * 0.97 * 0.97, 1e-7);
  EXPECT_NEAR(weight("CTG"), 0.05 * 0.97 * 0.97 * 0.01, 1e-8);
  EXPECT_EQ(weight("CTC"), 0.0f);
  EXPECT_EQ(weight("ATN"), 0.0f);
  EXPECT_EQ(weight("AT"), 0.0f);
}

TEST(Emissions, StartsBehindAnotherAreRareWhereErrorsAre) {
  EXPECT_FLOAT_EQ(afterStartShare({0.0f, 0.0f, 0.1f}), 0.001f);
  EXPECT_FLOAT_EQ(afterStartShare({0.01f, 0.015f, 0.0f}), 0.001f + 0.125f);
  const auto codes = codesOf("ATGATG");
  const auto e = emissionsOf({codes, {}}, ratesOf(0.01, 0.015, 0.0));
  EXPECT_NEAR(e[0].start, 0.05, 1e-5);
  EXPECT_NEAR(e[3].start, 0.01 * 0.126, 1e-6);
}

TEST(Emissions, StartWeightCountsTheBasesAround) {
  HmmModel model = toyModel();
  model.kozak[6][0] = 3.0f;  // A at -3
  model.kozak[9][2] = 2.0f;  // G at +4
  const auto codes = codesOf("AccATGG");
  EXPECT_NEAR(startWeight(model, model.weights, codes, 3, kOpenFrame, 0.0f), 0.05 * 3 * 2, 1e-6);
  EXPECT_NEAR(startWeight(model, model.weights, codes, 3, kAfterStart, 0.0f), 0.01 * 3 * 2, 1e-6);
}

TEST(Emissions, CodonWeightsAreThoseOfEveryCodonOfARead) {
  Random random(4);
  HmmModel model = toyModel();
  for (auto& place : model.kozak) {
    for (float& ratio : place) ratio = 0.5f + static_cast<float>(random.real());
  }
  std::vector<short> codes;
  for (int i = 0; i < 2000; ++i) codes.push_back(static_cast<short>(random.below(41)) / 10);
  for (short& code : codes) code = code == 4 ? kUnknownBase : code;
  const BaseRates rates{0.01f, 0.02f, 0.03f};
  const CodonWeights codons(model, model.weights, rates);
  ReadContext context;
  context.index(codes);
  for (std::size_t i = 0; i < codes.size(); ++i) {
    const int at = static_cast<int>(i);
    const StartContext before = context.starts[i];
    const float share = before == kAfterStart ? afterStartShare(rates) : 1.0f;
    EXPECT_EQ(codons.start(codes, context, i),
              startWeight(model, model.weights, codes, at, before, 0.03f) * share);
    EXPECT_EQ(codons.stop(context, i), stopWeight(model, model.weights, codes, at, 0.03f));
  }
}

TEST(Emissions, StopWeightIsASumOverTheStops) {
  const HmmModel model = toyModel();
  const auto weight = [&](const char* letters) {
    return stopWeight(model, model.weights, codesOf(letters), 0, 0.03f);
  };
  // TAA is one base away from TAG (1/4) and TGA (1/2).
  EXPECT_NEAR(weight("TAA"), 0.02 * (0.25 * 0.912673 + 0.75 * 0.97 * 0.97 * 0.01), 1e-7);
  EXPECT_NEAR(weight("CCC"), 0.02 * 1e-6, 1e-10);
  EXPECT_EQ(weight("TNA"), 0.0f);
}

TEST(Emissions, QualitiesChooseTheRates) {
  const QualityBin bins[] = {{20, {4, 5, 6}}, {255, {0.1, 0.2, 0.3}}};
  const FileRates rates({0.01, 0.01, 0.01}, bins);
  const auto codes = codesOf("AAA");
  const std::vector<std::uint8_t> phred = {30, 2, 30};
  const auto e = emissionsOf({codes, phred}, rates);
  EXPECT_FLOAT_EQ(e[0].insertion, 0.001f / 4);
  EXPECT_FLOAT_EQ(e[0].deletion, 0.002f);
  EXPECT_FLOAT_EQ(e[1].insertion, 0.04f / 4);
  EXPECT_FLOAT_EQ(e[1].deletion, 0.05f);
  EXPECT_FLOAT_EQ(e[2].insertion, 0.001f / 4);
  EXPECT_FLOAT_EQ(e[2].deletion, 0.05f) << "the lower of the bases beside the gap";
  EXPECT_NEAR(e[1].kind[kPhase0], 0.94 * 0.7 + 0.3 * 0.02, 1e-6);
  EXPECT_FLOAT_EQ(emissionsOf({codes, {}}, rates)[1].deletion, 0.01f) << "a read without qualities";
}

}  // namespace
}  // namespace velto
