// Round numbers for axes.
#pragma once

namespace velto {

// 1, 2 or 5 times a power of ten that is at least `least`, which is at most 10^9.
int roundStep(double least);

}  // namespace velto
