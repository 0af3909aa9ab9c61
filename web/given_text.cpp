#include "web/given_text.h"

#include <string_view>
#include <utility>

#include "seqio/foreign_format.h"
#include "seqio/input_error.h"
#include "seqio/memory_bytes.h"
#include "seqio/text_records.h"

namespace velto {
namespace {

constexpr std::string_view kBamStart = "BAM\1";
constexpr std::string_view kEmptyHeader = ">\n";

std::string foreignFormatOf(std::string_view bytes) {
  if (bytes.substr(0, kBamStart.size()) == kBamStart) {
    return "BAM is not read here; convert it, as in: samtools fastq FILE > FILE.fastq";
  }
  return foreignFormat(bytes);
}

bool hasHeader(std::string_view bytes) {
  const std::size_t first = bytes.find_first_not_of(" \t\r\n");
  return first == bytes.npos || bytes[first] == '>' || bytes[first] == '@';
}

}  // namespace

std::unique_ptr<RecordSource> recordsOfText(const std::string& name, std::string bytes) {
  const std::string foreign = foreignFormatOf(bytes);
  if (!foreign.empty()) throw InputError(name, 1, 1, foreign);
  const bool headed = hasHeader(bytes);
  if (!headed) bytes.insert(0, kEmptyHeader);
  return std::make_unique<TextRecords>(name, std::make_unique<MemoryBytes>(std::move(bytes)),
                                       kMaxRecordBases, headed ? 1 : 0);
}

}  // namespace velto
