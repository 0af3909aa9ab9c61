#include "draw/label_rows.h"

#include <algorithm>

namespace velto {
namespace {

bool stands(const Label& pole, const Label& label) {
  return pole.pole > label.left() && pole.pole < label.right();
}

bool overlap(const Label& a, const Label& b) {
  return a.left() < b.right() && b.left() < a.right();
}

// Two labels in their rows: the pole of one must not reach the row of a label that lies over it.
bool collide(const Label& a, const Label& b) {
  return (a.row == b.row && overlap(a, b)) || (a.row >= b.row && stands(a, b)) ||
         (b.row >= a.row && stands(b, a));
}

bool isFree(const Label& wanted, const std::vector<const Label*>& placed) {
  return std::none_of(placed.begin(), placed.end(),
                      [&](const Label* other) { return collide(wanted, *other); });
}

}  // namespace

int placeLabels(std::vector<Label>& labels) {
  std::vector<const Label*> placed;  // few, however many labels there are
  int rows = 0;
  for (Label& label : labels) {
    for (label.row = 0; label.row < label.mostRows && !isFree(label, placed);) ++label.row;
    if (label.row == label.mostRows) {
      label.row = -1;
    } else {
      placed.push_back(&label);
      rows = std::max(rows, label.row + 1);
    }
  }
  return rows;
}

}  // namespace velto
