// What the reader of one input format offers.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>

#include "seqio/record.h"

namespace velto {

// Longest sequence of one record, in bases; a longer one is taken for a damaged file.
constexpr std::size_t kMaxRecordBases = 100'000'000;

class RecordSource {
 public:
  virtual ~RecordSource() = default;

  // Overwrites `record` with the next one; false at the end of a complete file.
  // Throws InputError; the source is then not to be asked again.
  virtual bool next(Record& record) = 0;
};

// Hands out one source after another, null after the last one. Throws InputError for a source that
// cannot be had.
using RecordSources = std::function<std::unique_ptr<RecordSource>()>;

}  // namespace velto
