#include "batch/repeated_names.h"

#include <utility>

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

bool RepeatedNames::insert(std::uint64_t key) {
  size_t at = key & (table_.size() - 1);
  while (table_[at] != 0) {
    if (table_[at] == key) return false;
    at = (at + 1) & (table_.size() - 1);
  }
  table_[at] = key;
  return true;
}

void RepeatedNames::grow() {
  std::vector<std::uint64_t> old(table_.empty() ? kFirstSize : 2 * table_.size());
  old.swap(table_);
  for (const std::uint64_t key : old) {
    if (key != 0) insert(key);
  }
}

bool RepeatedNames::isFirstRepeat(std::string_view name) {
  if (done_) return false;
  if (2 * used_ >= table_.size()) grow();
  const bool isNew = insert(keyOf(name));
  ++used_;
  if (isNew && used_ < kMostNames) return false;
  done_ = true;
  table_ = std::vector<std::uint64_t>();
  return !isNew;
}

}  // namespace velto
