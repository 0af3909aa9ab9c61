// Reads the reads of a BAM file, aligned or not, as records.
#pragma once

#include <cstddef>
#include <memory>
#include <string>

#include "seqio/byte_source.h"
#include "seqio/record_source.h"

struct bam1_t;

namespace velto {

class BamRecords : public RecordSource {
 public:
  // Skips the header. `path` serves messages only. Throws InputError.
  BamRecords(std::string path, ByteSource bytes, std::size_t maxBases);

  bool next(Record& record) override;

 private:
  void skipHeader();
  void skip(std::size_t size);
  std::size_t readCount();
  void readExactly(char* into, std::size_t size);
  bool readAlignment();
  [[noreturn]] void throwHere(const std::string& reason) const;

  struct Destroy {
    void operator()(bam1_t* alignment) const;
  };
  const std::string path_;
  const std::size_t maxBases_;
  ByteSource bytes_;
  std::unique_ptr<bam1_t, Destroy> alignment_;  // scratch
  long number_ = 0;                             // of the record being read, 0 in the header
};

}  // namespace velto
