#include "predict/model_card.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <optional>
#include <utility>

#include "core/bounded_text.h"
#include "velto/velto.h"

namespace velto {
namespace {

using Json = nlohmann::json;

// Of a card, which has some 20,000; JSON may take a hundred times the memory of its text.
constexpr std::size_t kMostBytes = 1 << 20;

std::string readText(const FileSource& files) {
  const auto in = files.open(kModelCardFile);
  std::optional<std::string> text = textUpTo(*in, kMostBytes);
  if (!text) throw ModelError(files.path(kModelCardFile), 0, 0, "is larger than 1 MB");
  return *std::move(text);
}

Json parse(const std::string& text, const std::string& path) {
  try {
    return Json::parse(text);
  } catch (const Json::parse_error& error) {
    const auto end = text.begin() + static_cast<std::ptrdiff_t>(std::min(error.byte, text.size()));
    throw ModelError(path, 0, 1 + std::count(text.begin(), end, '\n'), "is not JSON");
  } catch (const Json::out_of_range&) {
    throw ModelError(path, 0, 0, "holds a number that is too large");
  }
}

[[noreturn]] void throwWrongType(const char* name, const std::string& path) {
  throw ModelError(path, 0, 0, std::string("the member '") + name + "' is of a wrong type");
}

// The member as a T, or an empty T for none.
template <typename T>
T member(const Json& card, const char* name, const std::string& path) {
  const auto found = card.find(name);
  if (found == card.end()) return T();
  try {
    return found->get<T>();
  } catch (const Json::type_error&) {
    throwWrongType(name, path);
  }
}

// Not by a conversion to int, which takes 4294967297 and true for 1.
void requireKnownFormat(const Json& card, const std::string& path) {
  const auto format = card.find("format");
  if (format == card.end()) return;
  if (!format->is_number_integer()) throwWrongType("format", path);
  if (format->get<double>() <= kModelFormat) return;
  throw ModelError(
      path, 0, 0, "is of a newer model format than this program's " + std::to_string(kModelFormat));
}

}  // namespace

CardDecoders readCardDecoders(const FileSource& files) {
  if (!files.has(kModelCardFile)) return {};
  const std::string path = files.path(kModelCardFile);
  const Json card = parse(readText(files), path);
  if (!card.is_object()) throw ModelError(path, 0, 0, "is not a JSON object");
  requireKnownFormat(card, path);
  return {member<std::vector<std::string>>(card, "decoders", path),
          member<std::string>(card, "default", path)};
}

}  // namespace velto
