// What a page was given, as a source of records.
#pragma once

#include <memory>
#include <string>

#include "seqio/record_source.h"

namespace velto {

// The records of FASTA or FASTQ text. Text without a header is one read without a name. `name`
// serves messages only. Throws InputError for what is neither; the source throws InputError too.
std::unique_ptr<RecordSource> recordsOfText(const std::string& name, std::string bytes);

}  // namespace velto
