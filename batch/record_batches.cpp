#include "batch/record_batches.h"

#include <utility>

#include "seqio/input_error.h"

namespace velto {
namespace {

// Large enough that handing a batch over costs nothing, small enough for many batches in memory.
constexpr size_t kBatchRecords = 128;
constexpr size_t kBatchBases = 1 << 16;

}  // namespace

bool RecordBatches::nextRecord(Record& record) {
  for (;;) {
    if (source_ == nullptr) source_ = sources_();
    if (source_ == nullptr) return false;
    if (source_->next(record)) return true;
    source_.reset();
  }
}

const std::deque<RecordBatch>& RecordBatches::readAhead(size_t records, size_t bases) {
  for (size_t keptRecords = 0, keptBases = 0; keptRecords < records && keptBases < bases;) {
    RecordBatch batch = read();
    if (batch.records.empty()) break;
    keptRecords += batch.records.size();
    for (const Record& record : batch.records) keptBases += record.bases.size();
    ahead_.push_back(std::move(batch));
  }
  return ahead_;
}

RecordBatch RecordBatches::next() {
  if (ahead_.empty()) return read();
  RecordBatch batch = std::move(ahead_.front());
  ahead_.pop_front();
  return batch;
}

RecordBatch RecordBatches::read() {
  RecordBatch batch;
  batch.firstOrdinal = ordinal_ + 1;
  size_t bases = 0;
  try {
    Record record;
    while (error_ == nullptr && batch.records.size() < kBatchRecords && bases < kBatchBases &&
           nextRecord(record)) {
      bases += record.bases.size();
      batch.records.push_back(std::move(record));
      record = Record();
    }
  } catch (const InputError&) {
    error_ = std::current_exception();
  }
  ordinal_ += static_cast<long>(batch.records.size());
  return batch;
}

}  // namespace velto
