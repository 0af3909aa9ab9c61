// Calls that version of a function which was compiled for the widest vectors of the processor, as
// Highway's HWY_EXPORT and HWY_DYNAMIC_DISPATCH do. Theirs is in its library, which measures the
// clock for 3 ms whenever a program starts.
#pragma once

#include <hwy/targets.h>

#include <cstdint>

namespace velto {

// The HWY_TARGETs that the processor runs, as bits.
std::int64_t vectorTargets();

// What is chosen from: vectorTargets(), unless a test updates it.
hwy::ChosenTarget& chosenTarget();

}  // namespace velto

#if (HWY_TARGETS & (HWY_TARGETS - 1)) == 0
#define VELTO_VERSIONS(FUNCTION) static_assert(true)
#define VELTO_CHOOSE(FUNCTION) HWY_STATIC_DISPATCH(FUNCTION)
#else
// Lists the versions of a function; at the end of a file, once.
#define VELTO_VERSIONS(FUNCTION)                                              \
  constexpr decltype(&HWY_STATIC_DISPATCH(FUNCTION)) FUNCTION##Versions[] = { \
      nullptr, HWY_CHOOSE_TARGET_LIST(FUNCTION), HWY_CHOOSE_FALLBACK(FUNCTION)}
// The version to call.
#define VELTO_CHOOSE(FUNCTION) (*FUNCTION##Versions[chosenTarget().GetIndex()])
#endif
