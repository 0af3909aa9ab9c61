#include "core/corrected_positions.h"

#include <algorithm>

namespace velto {

std::vector<int> correctedPositions(const Prediction& prediction) {
  std::vector<int> positions;
  if (prediction.status != Prediction::Status::kCoding) return positions;
  const int end = std::min(prediction.stop + 1, prediction.length);
  const auto most =
      static_cast<std::size_t>(std::max(0, end - prediction.start)) + prediction.frameshifts.size();
  positions.reserve(most);
  auto shift = prediction.frameshifts.begin();
  for (int p = prediction.start; p < end; ++p) {
    while (shift != prediction.frameshifts.end() && shift->position < p) ++shift;
    const bool isShift = shift != prediction.frameshifts.end() && shift->position == p;
    if (isShift && shift->kind == Frameshift::Kind::kInsertion) continue;
    if (isShift) positions.push_back(kLostBase);
    positions.push_back(p);
  }
  positions.resize(positions.size() - positions.size() % 3);
  return positions;
}

}  // namespace velto
