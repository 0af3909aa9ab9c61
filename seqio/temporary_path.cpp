#include "seqio/temporary_path.h"

#include <filesystem>
#include <random>
#include <system_error>

namespace velto {
namespace {

namespace fs = std::filesystem;

constexpr int kRandomLetters = 12;  // of 32: 60 bits, which no two processes draw alike

std::string randomNameBeside(const std::string& target) {
  constexpr char kLetters[] = "abcdefghijklmnopqrstuvwxyz234567";
  std::random_device random;
  std::string name = "velto-";
  for (int i = 0; i < kRandomLetters; ++i) name += kLetters[random() % 32];
  return (fs::path(target).parent_path() / (name + ".tmp")).string();
}

}  // namespace

TemporaryPath::TemporaryPath(const std::string& target)
    : name_(randomNameBeside(target)), removal_(name_) {}

TemporaryPath::~TemporaryPath() {
  std::error_code ignored;
  fs::remove_all(name_, ignored);
}

}  // namespace velto
