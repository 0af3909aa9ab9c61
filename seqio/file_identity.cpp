#include "seqio/file_identity.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <map>
#include <system_error>
#include <tuple>

namespace velto {
namespace {

namespace fs = std::filesystem;

constexpr int kMostLinks = 40;  // in one path, as the kernel has it

struct Identity {
  bool exists = false;
  bool isRegular = false;
  bool isNull = false;
  // Device, inode and, of a file that is not there yet, its resolved path.
  std::tuple<dev_t, ino_t, std::string> key;
};

bool isNullDevice(const struct stat& status) {
  struct stat null;
  return S_ISCHR(status.st_mode) && stat("/dev/null", &null) == 0 && status.st_rdev == null.st_rdev;
}

Identity identityOf(const std::string& path, int descriptor) {
  struct stat status;
  const int failed = descriptor >= 0 ? fstat(descriptor, &status) : stat(path.c_str(), &status);
  Identity identity;
  if (failed != 0) {
    identity.key = {0, 0, resolvedPath(path)};
    return identity;
  }
  identity.exists = true;
  identity.isRegular = S_ISREG(status.st_mode);
  identity.isNull = isNullDevice(status);
  identity.key = {status.st_dev, status.st_ino, ""};
  return identity;
}

Identity inputIdentity(const std::string& path) {
  return identityOf(path, path == "-" ? STDIN_FILENO : -1);
}

Identity outputIdentity(const std::string& path) {
  return identityOf(path, outputDescriptor(path));
}

using Files = std::map<decltype(Identity::key), std::string>;  // their names as given

std::string inputName(const std::string& path) {
  return path == "-" ? "standard input" : "'" + path + "'";
}

std::string outputName(const std::string& path) {
  return path == "-" ? "standard output" : "'" + path + "'";
}

}  // namespace

int outputDescriptor(const std::string& path) {
  if (path == "-" || path == "/dev/stdout") return STDOUT_FILENO;
  if (path == "/dev/stderr") return STDERR_FILENO;
  for (const std::string folder : {"/dev/fd/", "/proc/self/fd/"}) {
    const std::string number =
        path.substr(0, folder.size()) == folder ? path.substr(folder.size()) : std::string();
    const bool digits = number.find_first_not_of("0123456789") == number.npos;
    if (!number.empty() && number.size() < 6 && digits) return std::stoi(number);
  }
  return -1;
}

std::string resolvedPath(const std::string& path) {
  std::error_code error;
  fs::path file = path;
  for (int links = 0; links < kMostLinks && fs::is_symlink(file, error); ++links) {
    file = file.parent_path() / fs::read_symlink(file, error);
  }
  const fs::path folder = file.has_parent_path() ? file.parent_path() : ".";
  const fs::path realFolder = fs::canonical(folder, error);
  return error ? path : (realFolder / file.filename()).string();
}

std::string clashOf(const std::vector<std::string>& inputs,
                    const std::vector<std::string>& outputs) {
  Files read;
  for (const std::string& path : inputs) {
    const Identity input = inputIdentity(path);
    if (!input.exists || (input.isNull && path != "-")) continue;
    const bool isNew = read.emplace(input.key, path).second;
    const bool isStream = path == "-" || !input.isRegular;  // at its end when read again
    if (!isNew && isStream) return inputName(path) + " can be read only once";
  }
  Files written;
  for (const std::string& path : outputs) {
    const Identity output = outputIdentity(path);
    if (output.isNull) continue;
    const auto same = read.find(output.key);
    if (output.isRegular && same != read.end()) {
      return "the output " + outputName(path) + " would overwrite the input " +
             inputName(same->second);
    }
    const bool isNew = written.emplace(output.key, path).second;
    if (!isNew) return "two outputs go to " + outputName(path);
  }
  return "";
}

}  // namespace velto
