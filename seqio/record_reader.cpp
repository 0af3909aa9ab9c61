#include "seqio/record_reader.h"

#include <utility>

#include "seqio/bam_records.h"
#include "seqio/byte_source.h"
#include "seqio/foreign_format.h"
#include "seqio/text_records.h"

namespace velto {
namespace {

// 'B' starts neither FASTA nor FASTQ, so that this byte alone tells "BAM\1" from text.
constexpr int kFirstByteOfBam = 'B';

ByteSource openBytes(const std::string& path) try {
  return ByteSource(path);
} catch (const ByteError& error) {
  throw InputError(path, 0, 0, error.what());
}

int firstByte(const std::string& path, ByteSource& bytes) try {
  return bytes.peek();
} catch (const ByteError& error) {
  throw InputError(path, 1, 1, error.what());
}

std::unique_ptr<RecordSource> openSource(const std::string& path, std::size_t maxBases) {
  ByteSource bytes = openBytes(path);
  const int first = firstByte(path, bytes);
  const std::string foreign = foreignFormat(bytes.held());
  if (!foreign.empty()) throw InputError(path, 1, 1, foreign);
  if (first == kFirstByteOfBam) {
    return std::make_unique<BamRecords>(path, std::move(bytes), maxBases);
  }
  return std::make_unique<TextRecords>(path, std::make_unique<ByteSource>(std::move(bytes)),
                                       maxBases);
}

}  // namespace

RecordReader::RecordReader(const std::string& path, std::size_t maxBases)
    : source_(openSource(path, maxBases)) {}

RecordSources filesInOrder(std::vector<std::string> paths) {
  return [paths = std::move(paths), next = std::size_t{0}]() mutable {
    return next < paths.size() ? std::make_unique<RecordReader>(paths[next++]) : nullptr;
  };
}

}  // namespace velto
