// The parts of a prediction, each by its definition and the fast way, over the same reads.
#include <benchmark/benchmark.h>

#include <memory>

#include "bench/reads.h"
#include "core/letter_codes.h"
#include "decoder/coding_region.h"
#include "decoder/decode_frames.h"
#include "decoder/frame_path.h"
#include "decoder/frame_scores.h"
#include "decoder/shift_placement.h"
#include "model/integer_engine.h"
#include "model/model_set.h"
#include "model/plain_engine.h"
#include "model/sliding_engine.h"
#include "velto/velto.h"

namespace velto {
namespace {

// One read as the steps of its prediction leave it.
struct PreparedRead {
  std::vector<short> codes;
  ReadClass readClass;
  CodedRead codons;
  WindowScores scores;
  layout lay;
  std::vector<double> frameScore[3];
  std::vector<int> path;
  TracedPath traced;

  int length() const { return static_cast<int>(codes.size()); }
};

struct Prepared {
  Prepared();

  VotingRead voting(const PreparedRead& read) const {
    const size_t index = static_cast<size_t>(readClassIndex(read.readClass));
    return {views[index], *tables[index], read.codes.data(), read.length(), read.codons};
  }

  ModelSet models{FolderSource(bench::modelDirectory())};
  std::vector<ModelView> views;                     // [readClassIndex]
  std::vector<std::unique_ptr<VoteTables>> tables;  // [readClassIndex]
  std::vector<PreparedRead> reads;
};

Prepared::Prepared() {
  for (int i = 0; i < kReadClasses; ++i) {
    views.push_back(models.model(readClassAt(i)).view());
    tables.push_back(std::make_unique<VoteTables>(views.back()));
  }
  for (const std::string& bases : bench::reads()) {
    PreparedRead& read = reads.emplace_back();
    codeLetters(bases, Letters::kFolded, read.codes);
    double gc = 0;
    for (const short code : read.codes) gc += code >= 2;
    read.readClass = classifyRead(read.length(), 100.0 * gc / read.length());
    read.codons.assign(read.codes.data(), read.length());
    const ModelView& model = voting(read).model;
    read.scores = SlidingEngine(model, read.codes.data(), read.length()).scores();
    layOutFrames(model, read.codes.data(), read.length(), read.scores, read.lay, read.frameScore);
    fillLeadingClasses(read.lay, model.windowWidth);
    std::vector<dpNode> cells(3 * read.lay.cls[0].size());
    fillFramePaths(model.tables.malkovChain, read.lay, cells.data());
    read.traced = traceFramePath(cells.data(), static_cast<int>(read.lay.cls[0].size()), read.path);
  }
}

const Prepared& prepared() {
  static const Prepared data;
  return data;
}

// Runs `step` on every read and reports reads a second.
template <typename Step>
void overReads(benchmark::State& state, Step step) {
  const Prepared& data = prepared();
  for (auto _ : state) {
    for (const PreparedRead& read : data.reads) step(data.voting(read), read);
  }
  state.SetItemsProcessed(state.iterations() * static_cast<long>(data.reads.size()));
}

PlainEngine plainEngine(const VotingRead& read) {
  return PlainEngine(read.model, read.seq, read.length);
}

void scorePlain(benchmark::State& state) {
  overReads(state, [](const VotingRead& voting, const PreparedRead&) {
    benchmark::DoNotOptimize(plainEngine(voting).scores());
  });
}

void scoreSliding(benchmark::State& state) {
  overReads(state, [](const VotingRead& voting, const PreparedRead&) {
    SlidingEngine votes(voting.model, voting.seq, voting.length);
    benchmark::DoNotOptimize(votes.scores());
  });
}

void scoreInteger(benchmark::State& state) {
  IntegerVote vote;
  WindowClasses classes;
  overReads(state, [&](const VotingRead& voting, const PreparedRead&) {
    IntegerEngine(voting, vote).classify(classes);
    benchmark::DoNotOptimize(classes);
  });
}

void layOut(benchmark::State& state) {
  layout lay;
  std::vector<double> frameScore[3];
  overReads(state, [&](const VotingRead& voting, const PreparedRead& read) {
    layOutFrames(voting.model, read.codes.data(), read.length(), read.scores, lay, frameScore);
    fillLeadingClasses(lay, voting.model.windowWidth);
    benchmark::DoNotOptimize(lay);
  });
}

void fillPaths(benchmark::State& state) {
  std::vector<dpNode> cells;
  overReads(state, [&](const VotingRead& voting, const PreparedRead& read) {
    cells.assign(3 * read.lay.cls[0].size(), dpNode());
    fillFramePaths(voting.model.tables.malkovChain, read.lay, cells.data());
    benchmark::DoNotOptimize(cells.data());
  });
}

void placePlain(benchmark::State& state) {
  overReads(state, [](const VotingRead& voting, const PreparedRead& read) {
    if (read.traced.score <= kLeastCodingScore) return;
    std::vector<int> path = read.path;
    PlainEngine votes = plainEngine(voting);
    placeShifts(votes, voting.model.windowWidth, read.traced.endStep, path);
    benchmark::DoNotOptimize(path.data());
  });
}

void placeInteger(benchmark::State& state) {
  IntegerVote vote;
  overReads(state, [&](const VotingRead& voting, const PreparedRead& read) {
    if (read.traced.score <= kLeastCodingScore) return;
    std::vector<int> path = read.path;
    IntegerEngine votes(voting, vote);
    placeShifts(votes, voting.model.windowWidth, read.traced.endStep, path);
    benchmark::DoNotOptimize(path.data());
  });
}

void predictPlain(benchmark::State& state) {
  FrameScratch scratch;
  overReads(state, [&](const VotingRead& voting, const PreparedRead& read) {
    const FrameModel model{voting.model.tables.malkovChain, voting.model.windowWidth};
    PlainEngine votes = plainEngine(voting);
    const TracedPath traced =
        decodeFrames(model, read.codons, read.length(), votes, false, scratch);
    benchmark::DoNotOptimize(codingRegion(scratch.path, traced.score));
  });
}

void predictFast(benchmark::State& state) {
  const Predictor predictor(bench::modelDirectory());
  Workspace workspace;
  PredictOptions options;
  options.wantScores = state.range(0) != 0;
  long coding = 0;
  long shifts = 0;
  for (auto _ : state) {
    for (const std::string& bases : bench::reads()) {
      const Prediction result = predictor.predict(bases, workspace, options);
      coding += result.status == Prediction::Status::kCoding;
      shifts += static_cast<long>(result.frameshifts.size());
    }
  }
  const double reads =
      static_cast<double>(state.iterations()) * static_cast<double>(bench::reads().size());
  state.SetItemsProcessed(static_cast<long>(reads));
  state.counters["coding"] = static_cast<double>(coding) / reads;
  state.counters["shifts"] = static_cast<double>(shifts) / reads;
}

void loadModels(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(Predictor(bench::modelDirectory()));
}

BENCHMARK(scorePlain)->Unit(benchmark::kMillisecond);
BENCHMARK(scoreSliding)->Unit(benchmark::kMillisecond);
BENCHMARK(scoreInteger)->Unit(benchmark::kMillisecond);
BENCHMARK(layOut)->Unit(benchmark::kMillisecond);
BENCHMARK(fillPaths)->Unit(benchmark::kMillisecond);
BENCHMARK(placePlain)->Unit(benchmark::kMillisecond);
BENCHMARK(placeInteger)->Unit(benchmark::kMillisecond);
BENCHMARK(predictPlain)->Unit(benchmark::kMillisecond);
BENCHMARK(predictFast)->Arg(0)->Arg(1)->ArgName("scores")->Unit(benchmark::kMillisecond);
BENCHMARK(loadModels)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace velto
