// The public predictor: the steps of one prediction, the votes by the integer tables.
#include <algorithm>
#include <array>
#include <climits>
#include <mutex>
#include <utility>

#include "decoder/integer_scores.h"
#include "core/letter_codes.h"
#include "model/model_set.h"
#include "model/vote_tables.h"
#include "decoder/coding_region.h"
#include "decoder/frame_path.h"
#include "decoder/frame_scores.h"
#include "decoder/shift_placement.h"
#include "core/base_code.h"
#include "decoder/frame_error.h"
#include "velto/velto.h"

namespace velto {
namespace {

ModelSet loadModels(const std::string& directory) {
  try {
    return ModelSet(directory);
  } catch (const ModelFileError& error) {
    throw ModelError(error.what());
  }
}

double gcPercent(const std::vector<short>& codes) {
  const auto gc = std::count_if(codes.begin(), codes.end(), [](short code) {
    return code == baseCode('G') || code == baseCode('C');
  });
  return static_cast<double>(gc) * 100.0 / static_cast<double>(codes.size());
}

// The errors along a path, of a read of `length` bases.
std::vector<Frameshift> frameshifts(const std::vector<int>& path, int length) {
  std::vector<Frameshift> found;
  for (size_t k = 1; k < path.size(); ++k) {
    if (path[k] == path[k - 1]) continue;
    for (int residue = 0; residue < 3; ++residue) {
      const int position = 3 * static_cast<int>(k) + residue;
      const FrameError error = frameErrorAt(path[k - 1], path[k], residue);
      if (error == FrameError::kNone || position >= length) continue;
      found.push_back({error == FrameError::kInsertion ? Frameshift::Kind::kInsertion
                                                       : Frameshift::Kind::kDeletion,
                       position});
    }
  }
  return found;
}

}  // namespace

struct Workspace::Impl {
  std::vector<short> codes;
  CodedRead codons;
  IntegerVote vote;
  WindowScores scores;
  layout lay;
  std::vector<double> frameScore[3];
  std::vector<dpNode> cells;
  std::vector<int> path;
};

Workspace::Workspace() : impl_(std::make_unique<Impl>()) {}
Workspace::~Workspace() = default;
Workspace::Workspace(Workspace&&) noexcept = default;
Workspace& Workspace::operator=(Workspace&&) noexcept = default;

struct Predictor::Impl {
  explicit Impl(const std::string& directory) : models(loadModels(directory)) {}

  // The tables of a class, made when its first read comes.
  const VoteTables& tablesOf(const ReadClass& readClass) const {
    LazyTables& lazy = tables[static_cast<size_t>(readClassIndex(readClass))];
    std::call_once(lazy.once, [&] {
      lazy.tables = std::make_unique<const VoteTables>(models.model(readClass).view());
    });
    return *lazy.tables;
  }

  // Predicts the read in space.codes.
  void predict(const ReadClass& readClass, const PredictOptions& options, Workspace::Impl& space,
               Prediction& result) const;

  ModelSet models;

  struct LazyTables {
    std::once_flag once;
    std::unique_ptr<const VoteTables> tables;
  };
  mutable std::array<LazyTables, kReadClasses> tables;  // [readClassIndex]
};

namespace {

// Window scores of the read, or numbers of their signs where that is enough.
void fillScores(const VotingRead& read, bool wantScores, IntegerVote& vote, WindowScores& scores) {
  if (wantScores || !read.tables.usable()) {
    scores = scoreWindows(read.model, read.seq, read.length);
  } else {
    scoreSigns(read, vote, scores);
  }
}

void placeFrameChanges(const VotingRead& read, IntegerVote& vote, int endStep,
                       std::vector<int>& path) {
  if (read.tables.usable()) {
    IntegerJudge judge(read, vote);
    placeShifts(judge, read.model.windowWidth, endStep, path);
  } else {
    placeShifts(read.model, read.seq, read.length, endStep, path);
  }
}

}  // namespace

void Predictor::Impl::predict(const ReadClass& readClass, const PredictOptions& options,
                              Workspace::Impl& space, Prediction& result) const {
  const ModelView model = models.model(readClass).view();
  const VoteTables& votes = tablesOf(readClass);
  const int length = static_cast<int>(space.codes.size());
  space.codons.assign(space.codes.data(), length);
  const VotingRead read{model, votes, space.codes.data(), length, space.codons};

  fillScores(read, options.wantScores, space.vote, space.scores);
  layOutFrames(model, read.seq, length, space.scores, space.lay, space.frameScore);
  fillLeadingClasses(space.lay, model.windowWidth);
  const size_t steps = space.lay.cls[0].size();
  space.cells.assign(3 * steps, dpNode());
  fillFramePaths(model.tables.malkovChain, space.lay, space.cells.data());
  space.path.clear();
  const TracedPath traced = traceFramePath(space.cells.data(), static_cast<int>(steps), space.path);
  if (traced.score > kLeastCodingScore) {
    placeFrameChanges(read, space.vote, traced.endStep, space.path);
  }
  const CodingRegion region = codingRegion(space.path, traced.score);

  result.score = traced.score;
  result.start = region.start;
  result.stop = region.stop;
  const bool isCoding = region.start != -1;
  result.status = isCoding ? Prediction::Status::kCoding : Prediction::Status::kNoncoding;
  if (isCoding) {
    result.frameshifts = frameshifts(space.path, length);
    result.frames = space.path;
  }
  if (options.wantScores) std::copy_n(space.frameScore, 3, result.scores);
}

Predictor::Predictor(const std::string& modelDirectory)
    : impl_(std::make_shared<const Impl>(modelDirectory)) {}

Prediction Predictor::predict(std::string_view bases, Workspace& workspace,
                              const PredictOptions& options) const {
  if (bases.size() > INT_MAX) throw std::length_error("a read of more than 2147483647 bases");
  Prediction result;
  result.length = static_cast<int>(bases.size());
  result.strand = options.strand == Strand::kMinus ? Strand::kMinus : Strand::kPlus;
  if (bases.empty()) return result;
  Workspace::Impl& space = *workspace.impl_;
  codeLetters(bases, options.letters, space.codes);
  result.gcPercent = gcPercent(space.codes);
  if (result.length < kLeastReadBases) {
    result.status = Prediction::Status::kShort;
    return result;
  }
  const ReadClass readClass = classifyRead(result.length, result.gcPercent);
  result.model = readClass.name();
  if (options.strand == Strand::kMinus) reverseComplement(space.codes);
  Prediction other = result;
  impl_->predict(readClass, options, space, result);
  if (options.strand == Strand::kBoth) {
    reverseComplement(space.codes);
    other.strand = Strand::kMinus;
    impl_->predict(readClass, options, space, other);
    if (other.score > result.score) return other;
  }
  return result;
}

}  // namespace velto
