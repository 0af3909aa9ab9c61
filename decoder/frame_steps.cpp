#include "decoder/frame_steps.h"

#include <algorithm>

#include "decoder/window_layout.h"

namespace velto {
namespace {

constexpr FrameStep kNoStep = {{-1, -1, -1}, {false, false, false}};

void markAtg(const CodedRead& codons, int length, size_t frame, std::vector<FrameStep>& steps) {
  int p = static_cast<int>(frame);
  for (size_t k = 0; p + 2 < length; ++k, p += 3) {
    steps[k].atg[frame] = codons.acid(p) == kMethionine;
  }
}

}  // namespace

void layOutSteps(const CodedRead& codons, int length, int windowWidth, const WindowClasses& classes,
                 std::vector<FrameStep>& steps) {
  const int half = windowWidth / 6;
  const auto isStop = [&](int p) { return p < length && codons.acid(p) == kStopSignal; };
  const int laidOut = half + FrameWindows{length, half, 0}.whole() + 1;
  steps.assign(static_cast<size_t>(std::max(laidOut, length / 3)), kNoStep);
  signed char last = kNonCodingWindow;
  for (size_t f = 0; f < 3; ++f) {
    markAtg(codons, length, f, steps);
    FrameStep* const centred = steps.data() + half;
    FrameStep* next = centred;
    layOutWindows({length, half, static_cast<int>(f)}, classes.frame[f], isStop, last,
                  [&](int code, signed char) {
                    next++->state[f] = static_cast<std::int8_t>(decodingState(code));
                  });
    for (FrameStep* step = steps.data(); step != centred; ++step) {
      step->state[f] = centred->state[f];
    }
  }
}

}  // namespace velto
