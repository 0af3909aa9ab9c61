// 1. Working copy  2. Runs of both passes  3. First pass  4. Second pass
#include "training/layout_smoothing.h"

#include "decoder/tester.h"

namespace velto {
namespace {

// ---- 1. Working copy

constexpr int kFirstStep = 5;     // first step that is examined
constexpr int kLookAhead = 6;     // steps behind the last one examined in the first pass
constexpr int kStopContext = 12;  // steps before a gap that must all be coding

// The layout as it stood at the start of a pass and what the pass makes of it. Steps set to coding
// are seen by the pass, steps set to non-coding are not.
class SmoothedFrame {
 public:
  SmoothedFrame(layout& seen, layout& result, int frame)
      : seen_(seen), result_(result), frame_(frame) {}

  int size() const { return static_cast<int>(seen_.cls[frame_].size()); }
  int at(int step) const { return codeAt(frame_, step); }
  bool isCoding(int step) const { return at(step) == kCodingWindow; }
  int codingSteps(int first, int last) const;
  bool otherFrameCodes(int step) const;
  void setCodingBefore(int step, int count);
  void setNonCodingBefore(int step, int count);

 private:
  int codeAt(int frame, int step) const {
    const std::vector<int>& codes = seen_.cls[frame];
    const bool inside = step >= 0 && step < static_cast<int>(codes.size());
    return inside ? codes[static_cast<size_t>(step)] : kNoWindow;
  }
  static void setBefore(std::vector<int>& codes, int step, int count, int code) {
    for (int k = step - count; k < step; ++k) codes[static_cast<size_t>(k)] = code;
  }

  layout& seen_;
  layout& result_;
  int frame_;
};

int SmoothedFrame::codingSteps(int first, int last) const {
  int count = 0;
  for (int step = first; step <= last; ++step) count += isCoding(step);
  return count;
}

bool SmoothedFrame::otherFrameCodes(int step) const {
  return codeAt((frame_ + 1) % 3, step) == kCodingWindow ||
         codeAt((frame_ + 2) % 3, step) == kCodingWindow;
}

void SmoothedFrame::setCodingBefore(int step, int count) {
  setBefore(seen_.cls[frame_], step, count, kCodingWindow);
  setBefore(result_.cls[frame_], step, count, kCodingWindow);
}

void SmoothedFrame::setNonCodingBefore(int step, int count) {
  setBefore(result_.cls[frame_], step, count, kNonCodingWindow);
}

// ---- 2. Runs of both passes

// True if the gap of `gap` non-coding steps before the stop at `stop` is to be filled.
bool fillsGapBeforeStop(const SmoothedFrame& frame, int stop, int gap) {
  constexpr int kLongestGap = 9;
  if (gap < 1 || gap > kLongestGap) return false;
  for (int k = 1; k <= gap; ++k) {
    if (frame.otherFrameCodes(stop - k)) return false;
  }
  const int last = stop - gap - 1;
  return frame.codingSteps(last - kStopContext + 1, last) == kStopContext;
}

// ---- 3. First pass

class FirstPass {
 public:
  explicit FirstPass(SmoothedFrame frame)
      : frame_(frame), before_(frame.codingSteps(0, 4)), ahead_(frame.codingSteps(6, 10)) {}

  void run() {
    for (int j = kFirstStep; j < frame_.size() - kLookAhead; ++j) {
      examine(j);
      before_ += frame_.isCoding(j) - frame_.isCoding(j - 5);
      if (gap_ == 0) beforeGap_ = before_;
      if (run_ == 0) beforeRun_ = before_;
      ahead_ += frame_.isCoding(j + 6) - frame_.isCoding(j + 1);
    }
  }

 private:
  void examine(int j) {
    switch (frame_.at(j)) {
      case kStopCodon:
        dropShortRun(j);
        if (fillsGapBeforeStop(frame_, j, gap_)) fillGap(j);
        run_ = 0;
        gap_ = 0;
        break;
      case kNonCodingWindow:
        ++gap_;
        dropShortRun(j);
        run_ = 0;
        break;
      case kCodingWindow:
        ++run_;
        if (gap_ >= 1 && gap_ <= kLongestGap && ahead_ + beforeGap_ >= kLeastAround) fillGap(j);
        gap_ = 0;
        break;
      default:
        break;
    }
  }

  void dropShortRun(int j) {
    if (run_ >= 1 && run_ <= kShortRun && beforeRun_ + ahead_ == 0) {
      frame_.setNonCodingBefore(j, run_);
    }
  }

  void fillGap(int j) {
    frame_.setCodingBefore(j, gap_);
    before_ += gap_;
  }

  static constexpr int kShortRun = 3;
  static constexpr int kLongestGap = 6;
  static constexpr int kLeastAround = 7;

  SmoothedFrame frame_;
  int before_;         // coding steps among the five before the present one
  int ahead_;          // coding steps among the five behind the present one
  int run_ = 0;        // coding steps of the present run
  int gap_ = 0;        // non-coding steps of the present gap
  int beforeGap_ = 0;  // before_ when the present gap began
  int beforeRun_ = 0;  // before_ when the present run began
};

// ---- 4. Second pass

void fillGapsBeforeStops(SmoothedFrame frame) {
  int gap = 0;
  for (int j = kFirstStep; j < frame.size(); ++j) {
    switch (frame.at(j)) {
      case kStopCodon:
        if (fillsGapBeforeStop(frame, j, gap)) frame.setCodingBefore(j, gap);
        gap = 0;
        break;
      case kNonCodingWindow:
        ++gap;
        break;
      case kCodingWindow:
        gap = 0;
        break;
      default:
        break;
    }
  }
}

}  // namespace

void smoothLayout(layout& lay) {
  layout seen = lay;
  for (int f = 0; f < 3; ++f) FirstPass(SmoothedFrame(seen, lay, f)).run();
  seen = lay;
  for (int f = 0; f < 3; ++f) fillGapsBeforeStops(SmoothedFrame(seen, lay, f));
}

void Test::ModefyLayout() {
  for (layout& lay : *layoutList) smoothLayout(lay);
}

}  // namespace velto
