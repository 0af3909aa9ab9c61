// Vectors whose first element begins a cache line, so that no load of a row is split.
#pragma once

#include <cstddef>
#include <new>
#include <vector>

namespace velto {

constexpr std::align_val_t kCacheLine{64};  // bytes

template <class T>
struct CacheLineAllocator {
  using value_type = T;

  CacheLineAllocator() = default;
  template <class U>
  explicit CacheLineAllocator(const CacheLineAllocator<U>&) {}

  T* allocate(std::size_t count) {
    return static_cast<T*>(::operator new(count * sizeof(T), kCacheLine));
  }
  void deallocate(T* memory, std::size_t) { ::operator delete(memory, kCacheLine); }

  bool operator==(const CacheLineAllocator&) const = default;
};

template <class T>
using AlignedVector = std::vector<T, CacheLineAllocator<T>>;

}  // namespace velto
