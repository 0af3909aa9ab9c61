// The prediction of one read: from its file to the finished result.
#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <new>

#include "decoder/coding_region.h"
#include "decoder/frame_scores.h"
#include "driver/web_predict.h"
#include "model/read_class.h"
#include "model/shortcut.h"
#include "model/sliding_engine.h"

namespace velto {
namespace {

// Classifies the read, sets the run globals and loads the model of its class.
void loadModel(const WebPredict& read) {
  const ReadClass readClass = classifyRead(read.seqLength, read.gcPressure);
  GCID = readClass.gcId;
  LENGTHID = readClass.lengthId;
  WINDOW_WIDTH = readClass.windowWidth;
  READ_ROUND = kModelHypotheses;
  Shortcut loader;
  loader.GetParamater(readClass.parameterPath(read.paramDir));
  loader.GetDPMatrix(readClass.matrixPath(read.paramDir));
}

std::unique_ptr<dpNode[]> allocateCells(int steps) {
  std::unique_ptr<dpNode[]> cells(new (std::nothrow) dpNode[3 * static_cast<size_t>(steps)]);
  if (cells == nullptr) {
    std::cout << "exit\n";
    std::exit(1);
  }
  return cells;
}

}  // namespace

int WebPredict::GetSmplsFromArray() {
  const ModelView model = processModelView();
  const WindowScores scores = SlidingEngine(model, seqArray, seqLength).scores();
  layOutFrames(model, seqArray, seqLength, scores, lay, frameScore);
  return 0;
}

int WebPredict::GetResult() {
  GetArrayFromFile(inputFile);
  std::cerr << "Now Calculating...\n\n";
  loadModel(*this);
  predictRead();
  return 0;
}

void WebPredict::predictRead() {
  GetSmplsFromArray();
  const int steps = static_cast<int>(lay.cls[0].size());
  std::vector<int> path;
  {
    const std::unique_ptr<dpNode[]> cells = allocateCells(steps);
    MakeDPMatrix(cells.get(), lay);
    dpScore = TraceBack(cells.get(), steps, path);
  }
  FocusErrPlace(seqArray, arrayLen, path);

  setPath(path);
  const CodingRegion region = codingRegion(path, dpScore);
  lay.start = region.start;
  lay.stop = region.stop;
}

// frameArray also covers the steps of the read that the path lacks.
void WebPredict::setPath(const std::vector<int>& path) {
  const size_t steps = std::max(path.size(), static_cast<size_t>(arrayLen) / 3 + 1);
  std::free(frameArray);
  frameArray = static_cast<int*>(std::malloc(steps * sizeof(int)));
  if (frameArray == nullptr) throw std::bad_alloc();
  frameSteps_ = static_cast<int>(steps);
  std::fill_n(frameArray, steps, kOffPath);
  if (dpScore > kLeastCodingScore) std::copy(path.begin(), path.end(), frameArray);
}

}  // namespace velto
