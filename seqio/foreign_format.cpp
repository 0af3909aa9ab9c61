#include "seqio/foreign_format.h"

#include <algorithm>

namespace velto {
namespace {

struct Signature {
  std::string_view bytes;  // that the file begins with
  const char* what;
};

using namespace std::string_view_literals;

constexpr Signature kSignatures[] = {
    {"\xef\xbb\xbf"sv,
     "a byte-order mark before the text; cut it off, as in: tail -c +4 FILE | velto scan -"},
    {"\xff\xfe"sv, "UTF-16 text; convert it, as in: iconv -f UTF-16 -t UTF-8 FILE | velto scan -"},
    {"\xfe\xff"sv, "UTF-16 text; convert it, as in: iconv -f UTF-16 -t UTF-8 FILE | velto scan -"},
    {"BZh"sv, "bzip2 is not read; unpack it, as in: bzip2 -dc FILE | velto scan -"},
    {"\xfd"
     "7zXZ\0"sv,
     "xz is not read; unpack it, as in: xz -dc FILE | velto scan -"},
    {"\x28\xb5\x2f\xfd"sv, "zstd is not read; unpack it, as in: zstd -dc FILE | velto scan -"},
    {"PK\x03\x04"sv, "zip is not read; unpack it, as in: unzip -p FILE | velto scan -"},
    {"PK\x05\x06"sv, "an empty zip file"},
    {"CRAM"sv, "CRAM is not read; convert it, as in: samtools fastq FILE | velto scan -"},
    {"\x1f\x8b"sv, "gzip header truncated"},
};

bool isBetween(char byte, char first, char last) { return byte >= first && byte <= last; }

// "@HD<tab>VN:", "@SQ<tab>SN:" and so on: header line types of two letters, then a tagged field.
bool isSamHeader(std::string_view start) {
  return start.size() > 6 && start[0] == '@' && isBetween(start[1], 'A', 'Z') &&
         isBetween(start[2], 'A', 'Z') && start[3] == '\t' && isBetween(start[4], 'A', 'Z') &&
         start[6] == ':';
}

// Eleven fields, the second one a number.
bool isSamRecord(std::string_view start) {
  const std::string_view line = start.substr(0, start.find('\n'));
  const std::size_t flag = line.find('\t') + 1;  // 0: there is none
  return flag > 0 && std::count(line.begin(), line.end(), '\t') >= 10 &&
         line.find_first_not_of("0123456789", flag) == line.find('\t', flag);
}

}  // namespace

std::string foreignFormat(std::string_view start) {
  for (const Signature& signature : kSignatures) {
    if (start.substr(0, signature.bytes.size()) == signature.bytes) return signature.what;
  }
  const bool headed = !start.empty() && (start[0] == '>' || start[0] == '@');
  if (isSamHeader(start) || (!headed && isSamRecord(start))) {
    return "SAM text is not read; convert it, as in: samtools fastq FILE | velto scan -";
  }
  return "";
}

}  // namespace velto
