// What the reader of one input format offers.
#pragma once

#include "seqio/record.h"

namespace velto {

class RecordSource {
 public:
  virtual ~RecordSource() = default;

  // Overwrites `record` with the next one; false at the end of a complete file.
  // Throws InputError; the source is then not to be asked again.
  virtual bool next(Record& record) = 0;
};

}  // namespace velto
