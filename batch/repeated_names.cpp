#include "batch/repeated_names.h"

namespace velto {
namespace {

constexpr size_t kFirstSize = 1 << 12;  // a power of two
constexpr size_t kMostNames = 1 << 22;

// FNV-1a with a final mix; never 0.
std::uint64_t keyOf(std::string_view name) {
  std::uint64_t hash = 14695981039346656037ULL;
  for (const char c : name) hash = (hash ^ static_cast<unsigned char>(c)) * 1099511628211ULL;
  hash = (hash ^ (hash >> 32)) * 0x9E3779B97F4A7C15ULL;
  hash ^= hash >> 29;
  return hash == 0 ? 1 : hash;
}

}  // namespace

size_t RepeatedNames::placeOf(std::uint64_t key) const {
  size_t at = key & (table_.size() - 1);
  while (table_[at] != 0 && table_[at] != key) at = (at + 1) & (table_.size() - 1);
  return at;
}

void RepeatedNames::grow() {
  std::vector<std::uint64_t> old(table_.empty() ? kFirstSize : 2 * table_.size());
  old.swap(table_);
  for (const std::uint64_t key : old) {
    if (key != 0) table_[placeOf(key)] = key;
  }
}

bool RepeatedNames::isRepeat(std::string_view name) {
  if (2 * used_ >= table_.size() && used_ < kMostNames) grow();
  const std::uint64_t key = keyOf(name);
  const size_t at = placeOf(key);
  if (table_[at] == key) return true;
  if (used_ < kMostNames) {
    table_[at] = key;
    ++used_;
  }
  return false;
}

}  // namespace velto
