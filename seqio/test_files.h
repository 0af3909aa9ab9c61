// Files that the tests of this folder make and read back.
#pragma once

#include <htslib/bgzf.h>
#include <zlib.h>

#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "seqio/byte_source.h"
#include "seqio/record_reader.h"

namespace velto {

inline std::string store(const std::string& path, const std::string& bytes) {
  std::ofstream(path, std::ios::binary) << bytes;
  return path;
}

// One gzip member.
inline std::string gzip(const std::string& text) {
  z_stream stream{};
  deflateInit2(&stream, Z_DEFAULT_COMPRESSION, Z_DEFLATED, 15 + 16, 8, Z_DEFAULT_STRATEGY);
  std::string packed(deflateBound(&stream, text.size()) + 32, '\0');
  stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(text.data()));
  stream.avail_in = static_cast<uInt>(text.size());
  stream.next_out = reinterpret_cast<Bytef*>(packed.data());
  stream.avail_out = static_cast<uInt>(packed.size());
  deflate(&stream, Z_FINISH);
  packed.resize(stream.total_out);
  deflateEnd(&stream);
  return packed;
}

// One BGZF block of at most BGZF_BLOCK_SIZE bytes; of no bytes: the end-of-file block.
inline std::string bgzfBlock(const std::string& text) {
  std::string packed(BGZF_MAX_BLOCK_SIZE, '\0');
  std::size_t size = packed.size();
  if (bgzf_compress(packed.data(), &size, text.data(), text.size(), -1) != 0) {
    throw std::runtime_error("bgzf_compress failed");
  }
  packed.resize(size);
  return packed;
}

// The decompressed bytes of a file.
inline std::string unpacked(const std::string& path) {
  ByteSource bytes(path);
  std::string text;
  char part[4096];
  while (const std::size_t count = bytes.read(part, sizeof part)) text.append(part, count);
  return text;
}

// The records before the end or the error, and the error's message ("" if there was none).
struct Outcome {
  std::vector<Record> records;
  std::string error;
};

inline Outcome readAll(const std::string& path, std::size_t maxBases = kMaxRecordBases) {
  Outcome outcome;
  try {
    RecordReader reader(path, maxBases);
    for (Record record; reader.next(record);) outcome.records.push_back(record);
  } catch (const InputError& error) {
    outcome.error = error.what();
  }
  return outcome;
}

// Each record as "number:line name|description|bases".
inline std::vector<std::string> describe(const std::vector<Record>& records) {
  std::vector<std::string> lines;
  for (const Record& record : records) {
    lines.push_back(std::to_string(record.number) + ":" + std::to_string(record.line) + " " +
                    record.name + "|" + record.description + "|" + record.bases);
  }
  return lines;
}

}  // namespace velto
