#include "hmm/vector_choice.h"

namespace velto {

std::int64_t vectorTargets() {
  std::int64_t targets = HWY_STATIC_TARGET;
#if HWY_ARCH_X86
  // What the compiler may use in each version beyond those before.
  __builtin_cpu_init();
  if (__builtin_cpu_supports("ssse3") == 0) return targets;
  targets |= HWY_SSSE3;
  if (__builtin_cpu_supports("sse4.2") == 0 || __builtin_cpu_supports("aes") == 0 ||
      __builtin_cpu_supports("pclmul") == 0) {
    return targets;
  }
  targets |= HWY_SSE4;
  // All with these have F16C.
  if (__builtin_cpu_supports("avx2") == 0 || __builtin_cpu_supports("bmi") == 0 ||
      __builtin_cpu_supports("bmi2") == 0 || __builtin_cpu_supports("fma") == 0) {
    return targets;
  }
  targets |= HWY_AVX2;
  if (__builtin_cpu_supports("avx512f") == 0 || __builtin_cpu_supports("avx512vl") == 0 ||
      __builtin_cpu_supports("avx512dq") == 0 || __builtin_cpu_supports("avx512bw") == 0) {
    return targets;
  }
  targets |= HWY_AVX3;
#endif
  return targets;
}

hwy::ChosenTarget& chosenTarget() {
  static hwy::ChosenTarget chosen;
  if (!chosen.IsInitialized()) chosen.Update(vectorTargets());
  return chosen;
}

}  // namespace velto
