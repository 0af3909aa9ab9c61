// Finds the first read name that was seen before, in bounded memory.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace velto {

// Looks at the first four million names and compares 64 bits of each. For one thread at a time.
class RepeatedNames {
 public:
  // True once, for the first name that was seen before.
  bool isFirstRepeat(std::string_view name);

 private:
  bool insert(std::uint64_t key);
  void grow();

  std::vector<std::uint64_t> table_;  // open addressing, 0 where free
  size_t used_ = 0;
  bool done_ = false;  // a repeat was found, or the bound was reached
};

}  // namespace velto
