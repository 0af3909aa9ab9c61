#include "predict/model_card.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "velto/velto.h"

namespace velto {
namespace {

using Json = nlohmann::json;

// Bounds the memory that a file which is no card can take.
constexpr std::size_t kMostBytes = 1 << 24;

std::string readText(const FileSource& files) {
  const auto in = files.open(kModelCardFile);
  std::string text;
  for (char byte; text.size() <= kMostBytes && in->get(byte);) text += byte;
  if (text.size() <= kMostBytes) return text;
  throw ModelError(files.path(kModelCardFile), 0, 0, "is larger than 16 MB");
}

Json parse(const std::string& text, const std::string& path) {
  try {
    return Json::parse(text);
  } catch (const Json::parse_error& error) {
    const auto end = text.begin() + static_cast<std::ptrdiff_t>(std::min(error.byte, text.size()));
    throw ModelError(path, 0, 1 + std::count(text.begin(), end, '\n'), "is not JSON");
  }
}

// The member as a T, or an empty T for none.
template <typename T>
T member(const Json& card, const char* name, const std::string& path) {
  const auto found = card.find(name);
  if (found == card.end()) return T();
  try {
    return found->get<T>();
  } catch (const Json::type_error&) {
    throw ModelError(path, 0, 0, std::string("the member '") + name + "' is of a wrong type");
  }
}

}  // namespace

CardDecoders readCardDecoders(const FileSource& files) {
  if (!files.has(kModelCardFile)) return {};
  const std::string path = files.path(kModelCardFile);
  const Json card = parse(readText(files), path);
  if (!card.is_object()) throw ModelError(path, 0, 0, "is not a JSON object");
  if (member<int>(card, "format", path) > kModelFormat) {
    throw ModelError(
        path, 0, 0,
        "is of a newer model format than this program's " + std::to_string(kModelFormat));
  }
  return {member<std::vector<std::string>>(card, "decoders", path),
          member<std::string>(card, "default", path)};
}

}  // namespace velto
