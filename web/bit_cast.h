// std::bit_cast, which the standard library of Emscripten 3.1.6 lacks; included before every
// source.
#pragma once

#include <version>

#ifndef __cpp_lib_bit_cast
namespace std {

template <typename To, typename From>
constexpr To bit_cast(const From& from) noexcept {
  static_assert(sizeof(To) == sizeof(From));
  return __builtin_bit_cast(To, from);
}

}  // namespace std
#endif
