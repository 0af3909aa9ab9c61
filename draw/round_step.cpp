#include "draw/round_step.h"

#include <initializer_list>

namespace velto {

int roundStep(double least) {
  for (int power = 1; power < 1000000000; power *= 10) {
    for (const int times : {1, 2, 5}) {
      if (times * power >= least) return times * power;
    }
  }
  return 1000000000;
}

}  // namespace velto
