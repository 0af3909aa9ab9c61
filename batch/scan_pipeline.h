// The threaded pipeline of a scan: read, predict and format, write in the order of the input.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "batch/run_figures.h"
#include "batch/scan_counts.h"
#include "batch/scanned_read.h"
#include "core/genetic_code.h"
#include "seqio/output_file.h"
#include "velto/velto.h"

namespace velto {

// One output of a scan.
struct ScanOutput {
  OutputFile& file;
  // Appends what the output says of a read; called by several threads at once.
  std::function<void(const ScannedRead&, std::string&)> append;
};

struct ScanOptions {
  std::vector<std::string> inputs;  // "-" is standard input
  PredictOptions predict;
  const GeneticCode* code = geneticCode(1);  // of proteins, start and stop codons; never null
  bool useQualities = true;                  // those of the records, where they have some
  Calibration known;                         // of the reads
  bool learn = true;  // the rest, from the reads at the beginning of the run, where the decoder can
  std::optional<double> minScore;  // a coding region that scores lower is not reported
  std::size_t galleryReads = 0;    // coding reads that are kept for drawings
  int threads = 1;
  // Called now and then from one thread at a time; may be empty.
  std::function<void(const ScanCounts&)> progress;
  // Called for the first record whose name an earlier one has.
  std::function<void(const std::string& name)> warnOfRepeatedName;
};

struct ScanResult {
  ScanCounts counts;
  RunFigures figures;
  std::vector<Record> gallery;  // the first coding reads
  Calibration calibration;      // what was known and learnt
};

// Predicts all reads and writes them to the outputs, which are the same bytes for every number of
// threads. Throws InputError for an input that cannot be read, after everything before the damage
// was written, OutputError, and Error if a least probability is asked of a decoder that gives none;
// no output is committed here.
ScanResult scanReads(const Predictor& predictor, const ScanOptions& options,
                     std::vector<ScanOutput>& outputs);

}  // namespace velto
