// Reads as JSON for the page: UTF-8, in which names are printable.
#pragma once

#include <cstddef>
#include <string>

#include "batch/drawable_read.h"
#include "batch/scanned_read.h"

namespace velto {

// What a list of reads says of one: name, length, status, strand, start, stop, insertions,
// deletions, acids, probability, score. Positions count from 1 along the strand; null is what the
// table of `velto scan` leaves empty.
std::string listEntryJson(const ScannedRead& read);

// What is shown of a chosen one: name, lead, sentences, figure (markup), shifts, facts, protein,
// cds (the corrected coding sequence) and record, the read as FASTA or, with qualities, FASTQ.
std::string drawingJson(const Record& record, const DrawableRead& read);

}  // namespace velto
