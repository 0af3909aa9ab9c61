#include "tests/support/models.h"

#include <cstdlib>
#include <limits>

namespace velto::test {

unsigned long long testSeed() {
  const char* text = std::getenv("VELTO_TEST_SEED");
  return text == nullptr ? 20261121ULL : std::strtoull(text, nullptr, 10);
}

int randomInt(Random& random, int least, int most) {
  const auto values = static_cast<unsigned long long>(static_cast<long long>(most) - least + 1);
  return static_cast<int>(least + static_cast<long long>(random() % values));
}

double randomReal(Random& random, double least, double most) {
  return least + (most - least) * (static_cast<double>(random() >> 11) / 9007199254740992.0);
}

bool chance(Random& random, double probability) {
  return randomReal(random, 0.0, 1.0) < probability;
}

void addCodon(ModelTables& tables, int first, int second, int third, double alpha, int polarity,
              double threshold) {
  tables.codonTrsld[tables.fh.size()] = {polarity, threshold};
  tables.fh.push_back({kCodonKind, alpha, first, second, third, 0});
}

void addAcid(ModelTables& tables, int acid, double alpha, int polarity, int threshold) {
  tables.snglAcidTrsld[tables.fh.size()] = {polarity, threshold};
  tables.fh.push_back({kSingleAcidKind, alpha, acid, 0, 0, 0});
}

void addPair(ModelTables& tables, int gap, int first, int second, double alpha, int polarity,
             double threshold) {
  tables.pairAcidTrsld[tables.fh.size()] = {polarity, threshold};
  tables.fh.push_back({kPairKind, alpha, first, second, 0, gap});
}

void addConstant(ModelTables& tables, double alpha) { addAcid(tables, kStopSignal, alpha, 1, -1); }

namespace {

int randomBase(Random& random) { return randomInt(random, 0, 3); }
int randomAcid(Random& random) { return randomInt(random, 0, kAminoAcids - 1); }

void addUsual(Random& random, ModelTables& tables) {
  const double alpha = randomReal(random, 0.05, 1.0);
  const int polarity = randomInt(random, 0, 1);
  const int first = randomAcid(random);
  switch (randomInt(random, 0, 2)) {
    case 0:
      addCodon(tables, randomBase(random), randomBase(random), randomBase(random), alpha, polarity,
               randomReal(random, 0.0, 0.8));
      break;
    case 1:
      addAcid(tables, first, alpha, polarity, randomInt(random, 0, 8));
      break;
    default:
      addPair(tables, randomInt(random, 0, 3), first, randomAcid(random), alpha, polarity,
              randomReal(random, 0.0, 3.0));
  }
}

void fillUsualPriors(Random& random, ModelTables& tables) {
  const auto fill = [&random](double(&prior)[2]) {
    prior[0] = randomReal(random, 0.1, 2.0);
    prior[1] = randomReal(random, 10.0, 60.0);
  };
  for (auto& prior : tables.snglAcidPriproTable) fill(prior);
  for (auto& ofGap : tables.pairAcidPriproTable) {
    for (auto& ofFirst : ofGap) {
      for (auto& prior : ofFirst) fill(prior);
    }
  }
}

double wildReal(Random& random) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  switch (randomInt(random, 0, 11)) {
    case 0:
      return 0.0;
    case 1:
      return randomReal(random, -200.0, 200.0);
    case 2:
      return chance(random, 0.5) ? kInfinity : -kInfinity;
    case 3:
      return std::numeric_limits<double>::quiet_NaN();
    case 4:
      return chance(random, 0.5) ? 1e300 : -1e300;
    case 5:
      return randomInt(random, -5, 5);
    default:
      return randomReal(random, -1.0, 3.0);
  }
}

int wildIndex(Random& random) {
  if (chance(random, 0.03)) return randomInt(random, -2147483647, 2147483647);
  return chance(random, 0.6) ? randomInt(random, 0, 3) : randomInt(random, -2, 22);
}

}  // namespace

ModelTables usualRandomModel(Random& random) {
  ModelTables tables;
  while (tables.fh.size() < kModelHypotheses) addUsual(random, tables);
  fillUsualPriors(random, tables);
  for (double& entry : tables.malkovChain) entry = randomReal(random, -3.0, 1.0);
  return tables;
}

ModelTables wildRandomModel(Random& random) {
  ModelTables tables;
  const int count = chance(random, 0.3) ? randomInt(random, 0, 5) : randomInt(random, 0, 500);
  for (int i = 0; i < count; ++i) {
    const int kind = chance(random, 0.9) ? randomInt(random, 0, 3) : wildIndex(random);
    const double alpha = chance(random, 0.95) ? randomReal(random, -1.0, 1.0) : wildReal(random);
    tables.fh.push_back({kind, alpha, wildIndex(random), wildIndex(random), wildIndex(random),
                         chance(random, 0.9) ? randomInt(random, 0, 3) : wildIndex(random)});
  }
  for (int i = 0; i < kModelHypotheses; ++i) {
    tables.codonTrsld[i] = {randomInt(random, -1, 1), wildReal(random)};
    tables.pairAcidTrsld[i] = {randomInt(random, -1, 1), wildReal(random)};
    tables.snglAcidTrsld[i] = {randomInt(random, -1, 1), wildIndex(random)};
  }
  fillUsualPriors(random, tables);
  const double wildPriors = randomReal(random, 0.0, 1.0);
  const auto spoil = [&](double(&prior)[2]) {
    if (!chance(random, wildPriors)) return;
    prior[0] = wildReal(random);
    prior[1] = chance(random, 0.3) ? -95.0 : wildReal(random);  // -95 makes the length zero
  };
  for (auto& prior : tables.snglAcidPriproTable) spoil(prior);
  for (auto& ofGap : tables.pairAcidPriproTable) {
    for (auto& ofFirst : ofGap) {
      for (auto& prior : ofFirst) spoil(prior);
    }
  }
  for (double& entry : tables.malkovChain) entry = wildReal(random);
  return tables;
}

void setCodingMatrix(ModelTables& tables) {
  for (double& entry : tables.malkovChain) entry = -40.0;
  tables.malkovChain[0] = 1.0;    // coding after coding
  tables.malkovChain[2] = 40.0;   // coding after path start
  tables.malkovChain[12] = 40.0;  // stop after coding
}

void useAsProcessModel(const ModelTables& tables, int windowWidth) {
  processModel = tables;
  WINDOW_WIDTH = windowWidth;
}

}  // namespace velto::test
