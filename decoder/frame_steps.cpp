#include "decoder/frame_steps.h"

#include <algorithm>

#include "decoder/window_layout.h"
#include "model/window_width.h"

namespace velto {
namespace {

constexpr FrameStep kNoStep = {{-1, -1, -1}, {false, false, false}};

void markAtg(const CodedRead& codons, int length, size_t frame, std::vector<FrameStep>& steps) {
  int p = static_cast<int>(frame);
  for (size_t k = 0; p + 2 < length; ++k, p += 3) {
    steps[k].atg[frame] = codons.acid(p) == kMethionine;
  }
}

size_t stepsOf(const FrameWindows& windows) {
  return static_cast<size_t>(
      std::max(windows.half + windows.whole() + 1, (windows.length - windows.frame) / 3));
}

// Whether a stop codon begins at base p.
class StopAt {
 public:
  StopAt(const CodedRead& codons, int length) : codons_(codons), length_(length) {}

  bool operator()(int p) const { return p < length_ && codons_.acid(p) == kStopSignal; }

 private:
  const CodedRead& codons_;
  int length_;  // bases
};

}  // namespace

void layOutSteps(const CodedRead& codons, int length, int windowWidth, const WindowClasses& classes,
                 std::vector<FrameStep>& steps) {
  const int half = halfWindow(windowWidth);
  steps.assign(stepsOf({length, half, 0}), kNoStep);
  signed char last = kNonCodingWindow;
  for (size_t f = 0; f < 3; ++f) {
    markAtg(codons, length, f, steps);
    FrameStep* const centred = steps.data() + half;
    FrameStep* next = centred;
    layOutWindows({length, half, static_cast<int>(f)}, classes.frame[f], StopAt(codons, length),
                  last, [&](int code, signed char) {
                    next++->state[f] = static_cast<std::int8_t>(decodingState(code));
                  });
    for (FrameStep* step = steps.data(); step != centred; ++step) {
      step->state[f] = centred->state[f];
    }
  }
}

void layOutScores(const CodedRead& codons, int length, int windowWidth, const WindowScores& scores,
                  std::vector<double> (&stepScores)[3]) {
  const int half = halfWindow(windowWidth);
  double last = 0.0;
  for (int f = 0; f < 3; ++f) {
    stepScores[f].assign(stepsOf({length, half, f}), kNoWindowScore);
    double* const centred = stepScores[f].data() + half;
    double* next = centred;
    layOutWindows({length, half, f}, scores.frame[f], StopAt(codons, length), last,
                  [&](int, double score) { *next++ = score; });
    std::fill(stepScores[f].data(), centred, *centred);
  }
}

}  // namespace velto
