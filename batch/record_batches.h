// Cuts the records of several sources into batches of about equal work.
#pragma once

#include <deque>
#include <exception>
#include <memory>
#include <utility>
#include <vector>

#include "seqio/record_source.h"

namespace velto {

struct RecordBatch {
  long firstOrdinal = 1;  // 1-based place of the first record among all
  std::vector<Record> records;
};

// For one thread at a time.
class RecordBatches {
 public:
  explicit RecordBatches(RecordSources sources) : sources_(std::move(sources)) {}

  // Reads on until this many records or bases, or 64 MB of headers, are read and not handed out, or
  // the input ends, and returns what is; next() hands it out first.
  const std::deque<RecordBatch>& readAhead(size_t records, size_t bases);

  // The next batch, empty at the end. A file that cannot be read ends the batches after the records
  // before the damage; error() then holds why.
  RecordBatch next();

  // The InputError that ended the batches, or null.
  std::exception_ptr error() const { return error_; }

 private:
  RecordBatch read();
  bool nextRecord(Record& record);

  RecordSources sources_;
  std::unique_ptr<RecordSource> source_;  // null before the first record of a source
  long ordinal_ = 0;                      // records read
  std::deque<RecordBatch> ahead_;         // read and not handed out
  std::exception_ptr error_;
};

}  // namespace velto
