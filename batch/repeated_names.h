// Finds read names that were seen before, in bounded memory.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace velto {

// Keeps the first four million different names, 64 bits of each. For one thread at a time.
class RepeatedNames {
 public:
  // True if the name was given before and is one of those kept.
  bool isRepeat(std::string_view name);

 private:
  // The place of the key, or the free one for it.
  size_t placeOf(std::uint64_t key) const;
  void grow();

  std::vector<std::uint64_t> table_;  // open addressing, 0 where free
  size_t used_ = 0;                   // names kept
};

}  // namespace velto
