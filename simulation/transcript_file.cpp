#include "simulation/transcript_file.h"

#include <utility>

#include "seqio/record_reader.h"

namespace velto {

TranscriptSet loadTranscripts(const std::vector<std::string>& paths, TranscriptKind kind,
                              const GeneticCode& code) {
  TranscriptSet set;
  for (const std::string& path : paths) {
    RecordReader reader(path);
    for (Record record; reader.next(record);) {
      ParsedTranscript parsed =
          parseTranscript(record.name, record.description, record.bases, kind, code);
      set.counts.add(parsed.refusal);
      if (parsed.refusal == Refusal::kNone) {
        set.transcripts.push_back(std::move(parsed.transcript));
      }
    }
  }
  return set;
}

std::string fastaRecord(const Transcript& transcript) {
  std::string record = ">" + transcript.name;
  if (transcript.isCoding()) {
    record += " CDS=" + std::to_string(transcript.cdsStart + 1) + "-" +
              std::to_string(transcript.cdsStop + 1);
  }
  return record + "\n" + baseLetters(transcript.bases) + "\n";
}

}  // namespace velto
