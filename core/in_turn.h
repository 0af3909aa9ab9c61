// A ParallelFor without threads.
#pragma once

#include <cstddef>
#include <functional>

namespace velto {

inline void inTurn(std::size_t count, const std::function<void(std::size_t)>& task) {
  for (std::size_t i = 0; i < count; ++i) task(i);
}

}  // namespace velto
