// Tests each set of instructions that there are versions for.
#pragma once

#include "hmm/vector_choice.h"

namespace velto {

// Calls check(name) with the versions of each one in turn that this processor has.
template <class Check>
void onEveryTarget(Check check) {
  for (std::int64_t rest = vectorTargets() & HWY_TARGETS; rest != 0; rest &= rest - 1) {
    const std::int64_t target = rest & -rest;
    chosenTarget().Update(target);
    check(hwy::TargetName(target));
  }
  chosenTarget().Update(vectorTargets());
}

}  // namespace velto
