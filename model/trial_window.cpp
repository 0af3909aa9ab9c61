#include "model/trial_window.h"

#include <algorithm>

namespace velto {

TrialCodons::TrialCodons(const short* seq, int length, const TrialWindow& window)
    : window_(window),
      length_(length),
      end_(std::min(length, window.end + 1 + 3 * kPairGaps)),
      first_(std::min(std::max(0, window.start), end_)),
      bases_(seq + first_, end_ - first_) {}

}  // namespace velto
