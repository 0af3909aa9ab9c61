#include "batch/record_batches.h"

#include <utility>

#include "seqio/input_error.h"

namespace velto {
namespace {

// Large enough that handing a batch over costs nothing, small enough for many batches in memory.
constexpr size_t kBatchRecords = 128;
constexpr size_t kBatchBases = 1 << 16;

// Headers are short as a rule; these bounds keep those of an odd file from filling the memory.
constexpr size_t kBatchHeaderBytes = 1 << 20;
constexpr size_t kAheadHeaderBytes = 1 << 26;

struct Amount {
  size_t records = 0;
  size_t bases = 0;
  size_t headerBytes = 0;

  void add(const Record& record) {
    ++records;
    bases += record.bases.size();
    headerBytes += record.name.size() + record.description.size();
  }

  bool isBelow(const Amount& most) const {
    return records < most.records && bases < most.bases && headerBytes < most.headerBytes;
  }
};

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
  for (Amount kept; kept.isBelow({records, bases, kAheadHeaderBytes});) {
    RecordBatch batch = read();
    if (batch.records.empty()) break;
    for (const Record& record : batch.records) kept.add(record);
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
  Amount amount;
  try {
    Record record;
    while (error_ == nullptr && amount.isBelow({kBatchRecords, kBatchBases, kBatchHeaderBytes}) &&
           nextRecord(record)) {
      amount.add(record);
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
