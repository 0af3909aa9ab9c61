// Places labels on poles in rows, so that no label covers another label or pole.
#pragma once

#include <vector>

namespace velto {

// A label beside the upper end of its pole, which stands below row 0.
struct Label {
  double pole;  // where the pole stands
  double width;
  bool leftward = false;  // the label lies on the left of its pole
  int mostRows = 1;       // rows that it may lie in, from the lowest one
  int row = -1;           // 0 is the lowest; -1: no room, neither label nor pole are drawn

  double left() const { return leftward ? pole - width : pole; }
  double right() const { return left() + width; }
};

// Gives each label in the order of the list the lowest row with room for it, whatever comes later.
// Returns the number of rows in use.
int placeLabels(std::vector<Label>& labels);

}  // namespace velto
