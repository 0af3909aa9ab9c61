#include "driver/web_predict.h"

#include <cstdlib>

namespace velto {

WebPredict::WebPredict()
    : seqArray(nullptr),
      arrayLen(0),
      frameArray(nullptr),
      seqLength(0),
      gcPressure(0.0),
      dpScore(0.0),
      inputFile(nullptr),
      paramDir(nullptr),
      frameSteps_(0) {}

WebPredict::~WebPredict() {
  delete[] seqArray;
  std::free(frameArray);
}

}  // namespace velto
