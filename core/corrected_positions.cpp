#include "core/corrected_positions.h"

#include <algorithm>

namespace velto {

std::vector<int> correctedPositions(const Prediction& prediction) {
  std::vector<int> positions;
  if (prediction.status != Prediction::Status::kCoding) return positions;
  const int end = std::min(prediction.stop + 1, prediction.length);
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
