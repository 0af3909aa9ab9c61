// One read as a decoder sees it.
#pragma once

#include <cstdint>
#include <span>

namespace velto {

// A view of one read, in reading direction; the memory it points to must outlive it.
struct ReadView {
  std::span<const short> codes;           // base codes (core/base_code.h), one per base
  std::span<const std::uint8_t> phred{};  // quality value per base; empty if there are none

  int length() const { return static_cast<int>(codes.size()); }  // bases
};

}  // namespace velto
