// Transcripts read from FASTA files.
#pragma once

#include <string>
#include <vector>

#include "simulation/transcript.h"

namespace velto {

struct TranscriptSet {
  std::vector<Transcript> transcripts;  // the accepted records, in the order of files and records
  RefusalCounts counts;                 // all records
};

// Reads every record of the files (plain or gzip, "-" for standard input). A record that
// parseTranscript refuses is counted and left out. Throws InputError when a file cannot be read.
TranscriptSet loadTranscripts(const std::vector<std::string>& paths, TranscriptKind kind,
                              const GeneticCode& code = standardCode());

// The FASTA record of a transcript, as loadTranscripts reads it but for the group.
std::string fastaRecord(const Transcript& transcript);

}  // namespace velto
