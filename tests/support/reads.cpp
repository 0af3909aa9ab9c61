#include "tests/support/reads.h"

#include "core/base_code.h"

namespace velto::test {

std::vector<short> baseCodes(const std::string& letters) {
  std::vector<short> codes;
  for (const char letter : letters) codes.push_back(baseCode(letter));
  return codes;
}

std::string repeated(const std::string& text, int count) {
  std::string all;
  for (int i = 0; i < count; ++i) all += text;
  return all;
}

std::string randomLetters(Random& random, int length, double unknown) {
  std::string letters;
  for (int i = 0; i < length; ++i) {
    letters += chance(random, unknown) ? 'N' : "ATGC"[randomInt(random, 0, 3)];
  }
  return letters;
}

layout randomLayout(Random& random, int steps) {
  static constexpr int kClasses[] = {kCodingWindow, kNonCodingWindow, kStopCodon, kNoWindow,
                                     kLeadingFiller};
  layout lay;
  // Runs of one class, so that long paths come about too.
  const int longestRun = chance(random, 0.5) ? 3 : 40;
  const int codes = randomInt(random, 2, 5);
  for (int f = 0; f < 3; ++f) {
    const int n = f > 0 && chance(random, 0.3) ? steps - 1 : steps;
    while (static_cast<int>(lay.cls[f].size()) < n) {
      const int code = kClasses[randomInt(random, 0, codes - 1)];
      const int run = code == kStopCodon ? 1 : randomInt(random, 1, longestRun);
      for (int i = 0; i < run && static_cast<int>(lay.cls[f].size()) < n; ++i) {
        lay.cls[f].push_back(code);
      }
    }
    const int marks = chance(random, 0.2) ? n / 2 : n;
    for (int i = 0; i < marks; ++i) {
      lay.met[f].push_back(chance(random, 0.1) ? kAtgCodon : kOtherCodon);
    }
  }
  return lay;
}

void fill(WebPredict& result, const HandMade& values) {
  result.setRead(baseCodes(values.letters));
  result.fastaHeader = values.header;
  result.dpScore = values.score;
  result.setPath(values.path);
  result.lay.start = values.start;
  result.lay.stop = values.stop;
}

}  // namespace velto::test
