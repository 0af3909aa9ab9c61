// Benchmarks of the core: sliding against plain scoring, loading a model, growth with the read.
#include <benchmark/benchmark.h>

#include <sstream>

#include "model/model_file.h"
#include "model/plain_engine.h"
#include "model/read_class.h"
#include "model/shortcut.h"
#include "model/sliding_engine.h"
#include "tests/support/reads.h"

namespace velto {
namespace {

std::vector<short> randomRead(int length) {
  test::Random random(test::testSeed());
  return test::baseCodes(test::randomLetters(random, length));
}

// A random model of 500 hypotheses.
const ModelTables& fullModel() {
  static const ModelTables tables = [] {
    test::Random random(test::testSeed());
    return test::usualRandomModel(random);
  }();
  return tables;
}

template <typename Engine>
void scoreRead(benchmark::State& state) {
  const auto length = static_cast<int>(state.range(0));
  const std::vector<short> read = randomRead(length);
  const ModelView model{fullModel(), 196};
  for (auto _ : state) {
    benchmark::DoNotOptimize(Engine(model, read.data(), length).scores());
  }
  state.SetItemsProcessed(state.iterations() * length);
}
BENCHMARK(scoreRead<PlainEngine>)->Arg(800)->Arg(5000);
BENCHMARK(scoreRead<SlidingEngine>)->Arg(800)->Arg(5000);

// Both model files of one class, from memory.
void loadModelText(benchmark::State& state) {
  const std::string parameters = parameterFileText(fullModel());
  const std::string matrix = matrixFileText(fullModel().malkovChain);
  for (auto _ : state) {
    std::istringstream parameterFile(parameters);
    std::istringstream matrixFile(matrix);
    ModelTables tables;
    readParameterFile(parameterFile, kModelHypotheses, tables);
    readMatrixFile(matrixFile, tables.malkovChain);
    benchmark::DoNotOptimize(tables);
  }
}
BENCHMARK(loadModelText)->Unit(benchmark::kMillisecond);

// From the read to the finished result, without files.
void predictRead(benchmark::State& state) {
  const std::vector<short> read = randomRead(static_cast<int>(state.range(0)));
  test::useAsProcessModel(fullModel(), 196);
  for (auto _ : state) {
    WebPredict predictor;
    predictor.setRead(read);
    predictor.predictRead();
    benchmark::DoNotOptimize(predictor.dpScore);
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(predictRead)->Arg(800)->Arg(10000)->Arg(1000000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace velto

BENCHMARK_MAIN();
