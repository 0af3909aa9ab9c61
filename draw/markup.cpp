#include "draw/markup.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>

namespace velto {
namespace {

constexpr char kReplacement[] = "\xEF\xBF\xBD";  // U+FFFD
constexpr std::uint32_t kInvalid = 0xFFFFFFFF;

bool isContinuation(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; }

// Bytes of the character that begins with this byte, 0 if none does.
std::size_t lengthOf(unsigned char first) {
  if (first < 0x80) return 1;
  if (first >= 0xC2 && first <= 0xDF) return 2;
  if (first >= 0xE0 && first <= 0xEF) return 3;
  return first >= 0xF0 && first <= 0xF4 ? 4 : 0;
}

// The character that `bytes` begin with, which are not empty; kInvalid if they are not UTF-8.
std::uint32_t characterOf(std::string_view bytes) {
  constexpr std::uint32_t kLeast[] = {0, 0, 0x80, 0x800, 0x10000};  // by length; shorter is invalid
  const auto first = static_cast<unsigned char>(bytes[0]);
  const std::size_t length = lengthOf(first);
  if (length == 0 || length > bytes.size()) return kInvalid;
  std::uint32_t character = length == 1 ? first : first & (0x7FU >> length);
  for (std::size_t i = 1; i < length; ++i) {
    if (!isContinuation(bytes[i])) return kInvalid;
    character = character << 6 | (static_cast<unsigned char>(bytes[i]) & 0x3FU);
  }
  const bool surrogate = character >= 0xD800 && character <= 0xDFFF;
  return character < kLeast[length] || character > 0x10FFFF || surrogate ? kInvalid : character;
}

bool isShown(std::uint32_t c) {
  const bool control = c < 0x20 || (c >= 0x7F && c <= 0x9F);
  const bool turnsText = (c >= 0x202A && c <= 0x202E) || (c >= 0x2066 && c <= 0x2069) ||
                         c == 0x200E || c == 0x200F || c == 0x061C;
  const bool breaksLine = c == 0x2028 || c == 0x2029;
  return c != kInvalid && !control && !turnsText && !breaksLine && (c & 0xFFFE) != 0xFFFE;
}

// What stands for a character of one byte that is markup, else null.
const char* entityOf(char c) {
  switch (c) {
    case '&':
      return "&amp;";
    case '<':
      return "&lt;";
    case '>':
      return "&gt;";
    case '"':
      return "&quot;";
    case '\'':
      return "&#39;";
    default:
      return nullptr;
  }
}

}  // namespace

std::string printable(std::string_view bytes) {
  std::string text;
  while (!bytes.empty()) {
    const std::uint32_t character = characterOf(bytes);
    const std::size_t length =
        character == kInvalid ? 1 : lengthOf(static_cast<unsigned char>(bytes[0]));
    text += isShown(character) ? bytes.substr(0, length) : std::string_view(kReplacement);
    bytes.remove_prefix(length);
  }
  return text;
}

std::string escaped(std::string_view bytes) {
  std::string text;
  for (const char c : printable(bytes)) {
    const char* entity = entityOf(c);
    if (entity != nullptr) {
      text += entity;
    } else {
      text += c;
    }
  }
  return text;
}

std::size_t charactersOf(std::string_view text) {
  return static_cast<std::size_t>(
      std::count_if(text.begin(), text.end(), [](char c) { return !isContinuation(c); }));
}

std::string decimal(double number, int decimals) {
  if (!(std::abs(number) <= 1e12)) return "0";
  double scale = 1.0;
  for (int i = 0; i < decimals; ++i) scale *= 10.0;
  const long long units = std::llround(number * scale);
  std::string digits = std::to_string(std::abs(units));
  const auto places = static_cast<std::size_t>(decimals);
  if (digits.size() <= places) digits.insert(0, places + 1 - digits.size(), '0');
  std::string fraction = digits.substr(digits.size() - places);
  digits.resize(digits.size() - places);
  fraction.erase(fraction.find_last_not_of('0') + 1);
  return (units < 0 ? "-" : "") + digits + (fraction.empty() ? "" : "." + fraction);
}

std::string grouped(long long count) {
  std::string digits = std::to_string(count);
  const std::size_t first = count < 0 ? 1 : 0;
  for (std::size_t i = digits.size(); i > first + 3;) digits.insert(i -= 3, "\xE2\x80\xAF");
  return digits;
}

std::string attribute(std::string_view name, std::string_view value) {
  return " " + std::string(name) + "=\"" + escaped(value) + "\"";
}

std::string attribute(std::string_view name, double value) {
  return " " + std::string(name) + "=\"" + decimal(value) + "\"";
}

}  // namespace velto
