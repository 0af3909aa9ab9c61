#include "core/corrected_positions.h"

#include <algorithm>
#include <numeric>

namespace velto {
namespace {

// Bases [begin, end), none if they are in the wrong order.
void appendBases(int begin, int end, std::vector<int>& positions) {
  if (begin >= end) return;
  const std::size_t old = positions.size();
  positions.resize(old + static_cast<std::size_t>(end - begin));
  std::iota(positions.begin() + static_cast<std::ptrdiff_t>(old), positions.end(), begin);
}

}  // namespace

std::vector<int> correctedPositions(const Prediction& prediction) {
  std::vector<int> positions;
  if (prediction.status != Prediction::Status::kCoding) return positions;
  const int end = std::min(prediction.stop + 1, prediction.length);
  const auto most =
      static_cast<std::size_t>(std::max(0, end - prediction.start)) + prediction.frameshifts.size();
  positions.reserve(most);
  int next = prediction.start;  // base
  for (const Frameshift& shift : prediction.frameshifts) {
    if (shift.position >= end) break;
    if (shift.position < next) continue;
    appendBases(next, shift.position, positions);
    next = shift.position + 1;
    if (shift.kind == Frameshift::Kind::kInsertion) continue;
    positions.push_back(kLostBase);
    positions.push_back(shift.position);
  }
  appendBases(next, end, positions);
  positions.resize(positions.size() - positions.size() % 3);
  return positions;
}

}  // namespace velto
