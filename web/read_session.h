// The reads that a page was given and what a model says of them, as texts for the page.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "batch/repeated_names.h"
#include "batch/run_figures.h"
#include "batch/scan_counts.h"
#include "core/genetic_code.h"
#include "seqio/record.h"
#include "velto/velto.h"

namespace velto {

struct SessionChoices {
  std::string model;                       // as the report names it
  std::string decoder;                     // empty: the model's default one
  Strand strand = Strand::kBoth;           // to predict on
  int geneticCode = 1;                     // its number in the NCBI list
  std::optional<Calibration> calibration;  // of the reads; empty: learnt from them
};

// All texts are those that `velto scan` writes of a file with the same bytes. JSON is UTF-8, names
// in it are printable. For one thread at a time.
class ReadSession {
 public:
  // Reads the records of the text. Throws ModelError for a model that cannot be used, InputError
  // for a text that cannot be read or has no records, Error for a genetic code that is not known.
  ReadSession(const Model& model, const SessionChoices& choices, const std::string& name,
              std::string bytes);

  std::size_t reads() const { return records_.size(); }
  std::size_t predicted() const { return predicted_; }

  // Learns what is to be known of the reads, unless it was told. To be called once, first.
  void learn();

  // Predicts the next reads, at least one, unless all are. A JSON list of listEntryJson for each.
  std::string predictNext();

  // Of the reads predicted so far: counts, the warning of unknown bases, and what was learnt, in
  // words and as calibrationJson; a JSON object.
  std::string summary() const;

  // The drawingJson of a read by its place, from 0.
  std::string drawing(std::size_t place) const;

  // The file of a format of rowFormats() that needs no scores, for the reads predicted so far.
  std::string table(std::size_t format) const;

  // The report of the reads predicted so far, an HTML page. `seconds` were spent on them.
  std::string report(double seconds) const;

 private:
  std::string take(const Prediction& prediction);
  std::string unknownBasesText() const;

  // Constant after construction.
  SessionChoices choices_;
  std::string name_;
  const GeneticCode* code_ = nullptr;
  PredictOptions options_;
  std::vector<Record> records_;
  std::size_t sampleReads_ = 0;  // records that the file is learnt from

  Predictor predictor_;  // constant once learnt
  Calibration calibration_;
  Workspace workspace_;
  RepeatedNames names_;
  std::size_t predicted_ = 0;
  std::vector<std::string> tables_;     // [format] the file; empty if the format needs scores
  std::vector<std::size_t> gallery_;    // places of the first coding reads
  std::optional<std::size_t> unknown_;  // place of the first read that is mostly unknown bases
  ScanCounts counts_;
  RunFigures figures_;
};

}  // namespace velto
