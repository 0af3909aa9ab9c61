// Reads and layouts made for tests.
#pragma once

#include <string>
#include <vector>

#include "decoder/layout.h"
#include "driver/web_predict.h"
#include "tests/support/models.h"

namespace velto::test {

// Base codes of letters.
std::vector<short> baseCodes(const std::string& letters);

// `text` written `count` times.
std::string repeated(const std::string& text, int count);

// Random letters A, T, G and C, each replaced by N with the given probability.
std::string randomLetters(Random& random, int length, double unknown = 0.0);

// A layout of n steps in every frame (frames 1 and 2 one less at times) with random classes.
layout randomLayout(Random& random, int steps);

// A predicted object made by hand: reports see this read, path, region and score.
struct HandMade {
  std::string letters;
  std::string header;
  std::vector<int> path;
  int start;
  int stop;
  double score;
};
void fill(WebPredict& result, const HandMade& values);

}  // namespace velto::test
