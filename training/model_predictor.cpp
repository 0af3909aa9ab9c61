#include "training/model_predictor.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <stdexcept>
#include <utility>

#include "decoder/frame_path.h"
#include "decoder/frame_scores.h"
#include "decoder/shift_placement.h"
#include "model/model_file.h"

namespace velto {
namespace {

constexpr int kLeastBases = 30;

std::ifstream openFile(const std::string& path) {
  std::ifstream in(path);
  if (!in) throw std::runtime_error(path + ": " + std::strerror(errno));
  return in;
}

void requireRegular(const ModelFileStatus& status, const std::string& path) {
  if (status.regular()) return;
  throw std::runtime_error(path + ": line " + std::to_string(status.line) + ": " + status.reason);
}

std::unique_ptr<const ModelTables> loadTables(const std::string& directory,
                                              const ReadClass& readClass) {
  auto tables = std::make_unique<ModelTables>();
  const std::string parameters = readClass.parameterPath(directory);
  std::ifstream parameterFile = openFile(parameters);
  requireRegular(readParameterFile(parameterFile, kModelHypotheses, *tables), parameters);
  const std::string matrix = readClass.matrixPath(directory);
  std::ifstream matrixFile = openFile(matrix);
  requireRegular(readMatrixFile(matrixFile, tables->malkovChain), matrix);
  return tables;
}

}  // namespace

CalledRead predictRead(const ModelView& model, const std::vector<short>& bases) {
  const auto length = static_cast<int>(bases.size());
  if (length < kLeastBases) return calledRead({}, kShortPathScore, length);
  layout lay;
  std::vector<double> frameScore[3];
  const WindowScores scores = scoreWindows(model, bases.data(), length);
  layOutFrames(model, bases.data(), length, scores, lay, frameScore);
  fillLeadingClasses(lay, model.windowWidth);
  const std::size_t steps = lay.cls[0].size();
  std::vector<dpNode> nodes(3 * steps);
  fillFramePaths(model.tables.malkovChain, lay, nodes.data());
  std::vector<int> path;
  const TracedPath traced = traceFramePath(nodes.data(), static_cast<int>(steps), path);
  placeShifts(model, bases.data(), length, traced.endStep, path);
  return calledRead(path, traced.score, length);
}

ModelPredictor::ModelPredictor(const std::string& directory) {
  for (int i = 0; i < kReadClasses; ++i) {
    tables_[static_cast<std::size_t>(i)] = loadTables(directory, readClassAt(i));
  }
}

CalledRead ModelPredictor::predict(const ReadClass& readClass,
                                   const std::vector<short>& bases) const {
  const auto index = static_cast<std::size_t>(readClassIndex(readClass));
  return predictRead({*tables_[index], readClass.windowWidth}, bases);
}

}  // namespace velto
