#include "batch/formats/read_name.h"

#include <cctype>
#include <cstring>

namespace velto {
namespace {

bool isNoControl(char c) { return std::iscntrl(static_cast<unsigned char>(c)) == 0; }

bool isNoControlOrBlank(char c) { return c != ' ' && isNoControl(c); }

// A name must not begin with '>' either.
bool isPlainInGff3(char c) {
  const bool alphanumeric = std::isalnum(static_cast<unsigned char>(c)) != 0;
  return c != '\0' && (alphanumeric || std::strchr(".:^*$@!+_?-|", c) != nullptr);
}

std::string percentCode(char c) {
  constexpr char kDigits[] = "0123456789ABCDEF";
  const auto byte = static_cast<unsigned char>(c);
  return {'%', kDigits[byte / 16], kDigits[byte % 16]};
}

std::string percentEscaped(std::string_view text, bool (*isPlain)(char)) {
  std::string escaped;
  for (const char c : text) {
    if (isPlain(c)) {
      escaped += c;
    } else {
      escaped += percentCode(c);
    }
  }
  return escaped;
}

// The name, or "record" with the ordinal, for formats that need one.
std::string nameFor(const ScannedRead& read) {
  return read.record.name.empty() ? "record" + std::to_string(read.ordinal) : read.record.name;
}

// Readers of BED pass over a line that begins so.
bool beginsAPassedOverLine(std::string_view name) {
  for (const std::string_view word : {"#", "track", "browser"}) {
    if (name.substr(0, word.size()) == word) return true;
  }
  return false;
}

}  // namespace

std::string withoutControlCharacters(std::string_view text) {
  return percentEscaped(text, isNoControl);
}

std::string tsvName(const ScannedRead& read) { return withoutControlCharacters(read.record.name); }

std::string fastaName(const ScannedRead& read) {
  return percentEscaped(nameFor(read), isNoControlOrBlank);
}

std::string bedName(const ScannedRead& read) {
  const std::string name = fastaName(read);
  return beginsAPassedOverLine(name) ? percentCode(name[0]) + name.substr(1) : name;
}

std::string gff3Name(const ScannedRead& read) {
  const bool named = !read.record.name.empty();
  const std::string place = named && read.nameIsRepeat ? ' ' + std::to_string(read.ordinal) : "";
  return percentEscaped(nameFor(read) + place, isPlainInGff3);
}

}  // namespace velto
