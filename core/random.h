// A small random generator whose numbers depend on its seed alone, not on compiler or library.
#pragma once

#include <array>
#include <cstdint>

namespace velto {

// Generator xoshiro256++ seeded through SplitMix64, with distributions of its own: those of the
// standard library differ between implementations. Not for use by several threads at once.
class Random {
 public:
  explicit Random(std::uint64_t seed) {
    for (std::uint64_t& word : state_) word = splitMix(seed);
  }

  // The generator of item `index` under `seed`. Items drawn this way are the same whatever the
  // order or the thread in which they are made.
  static Random split(std::uint64_t seed, std::uint64_t index) {
    std::uint64_t mixed = index;
    return Random(seed ^ splitMix(mixed));
  }

  // Uniform over all 64-bit numbers.
  std::uint64_t next() {
    const std::uint64_t result = rotate(state_[0] + state_[3], 23) + state_[0];
    const std::uint64_t shifted = state_[1] << 17;
    state_[2] ^= state_[0];
    state_[3] ^= state_[1];
    state_[1] ^= state_[2];
    state_[0] ^= state_[3];
    state_[2] ^= shifted;
    state_[3] = rotate(state_[3], 45);
    return result;
  }

  // Uniform over 0 to bound - 1; `bound` is at least 1.
  std::uint32_t below(std::uint32_t bound) {
    // The high half of (32 random bits) x bound is uniform once the low halves under
    // 2^32 mod bound, of which some results have one more than others, are drawn again.
    const std::uint32_t biased = (0U - bound) % bound;
    for (;;) {
      const std::uint64_t product = (next() >> 32) * bound;
      if (static_cast<std::uint32_t>(product) >= biased) {
        return static_cast<std::uint32_t>(product >> 32);
      }
    }
  }

  // Uniform over the multiples of 2^-53 in [0, 1).
  double real() { return static_cast<double>(next() >> 11) * 0x1.0p-53; }

 private:
  static std::uint64_t rotate(std::uint64_t value, int bits) {
    return (value << bits) | (value >> (64 - bits));
  }

  // Advances the SplitMix64 state and returns its next number.
  static std::uint64_t splitMix(std::uint64_t& state) {
    std::uint64_t z = (state += 0x9e3779b97f4a7c15U);
    z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9U;
    z = (z ^ (z >> 27)) * 0x94d049bb133111ebU;
    return z ^ (z >> 31);
  }

  std::array<std::uint64_t, 4> state_{};
};

}  // namespace velto
