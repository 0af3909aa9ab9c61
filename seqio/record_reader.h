// Reads sequence records from FASTA, FASTQ (plain, gzip or BGZF) or BAM, told apart by content.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "seqio/input_error.h"
#include "seqio/record.h"
#include "seqio/record_source.h"

namespace velto {

// FASTQ may spread sequence and quality over several lines. In BAM, secondary and supplementary
// records are skipped and reversed reads are turned back to the sequenced strand. A file without
// any byte has no records, which is no error here. For one thread at a time.
class RecordReader : public RecordSource {
 public:
  // Opens `path`, "-" being standard input. Throws InputError if it cannot be read.
  explicit RecordReader(const std::string& path, std::size_t maxBases = kMaxRecordBases);

  // Overwrites `record` with the next one; false at the end. Throws InputError if the file is
  // damaged, truncated or of another format; no further record is to be asked for after that.
  bool next(Record& record) override { return source_->next(record); }

 private:
  std::unique_ptr<RecordSource> source_;
};

// The readers of the files, each opened when it is asked for.
RecordSources filesInOrder(std::vector<std::string> paths);

}  // namespace velto
