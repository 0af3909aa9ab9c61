// Models made for tests: hypotheses written by hand and random tables.
#pragma once

#include <random>

#include "model/model_tables.h"

namespace velto::test {

using Random = std::mt19937_64;

// Seed of a random test; the environment variable VELTO_TEST_SEED replaces the usual one. It is
// printed when the test fails, see SCOPED_TRACE at the callers.
unsigned long long testSeed();

// A whole number from least to most, and a real one between them.
int randomInt(Random& random, int least, int most);
double randomReal(Random& random, double least, double most);
bool chance(Random& random, double probability);

// Append one hypothesis with its threshold.
void addCodon(ModelTables& tables, int first, int second, int third, double alpha, int polarity,
              double threshold);
void addAcid(ModelTables& tables, int acid, double alpha, int polarity, int threshold);
void addPair(ModelTables& tables, int gap, int first, int second, double alpha, int polarity,
             double threshold);

// A hypothesis that adds alpha to every sum: the stop signal is never counted below zero times.
void addConstant(ModelTables& tables, double alpha);

// All 500 hypotheses of known kinds with values as a trained model has them.
ModelTables usualRandomModel(Random& random);

// A model that need not make sense: up to 500 hypotheses, indices out of range, unknown kinds,
// thresholds and priors of any size, zero, negative, infinite and not a number.
ModelTables wildRandomModel(Random& random);

// A matrix that keeps a read coding as long as its windows are: 1 from coding to coding, 40 from
// path start to coding and from coding to stop, -40 otherwise.
void setCodingMatrix(ModelTables& tables);

// Makes the model the process-wide one, as the loaders would, with this window width in bases.
void useAsProcessModel(const ModelTables& tables, int windowWidth);

}  // namespace velto::test
