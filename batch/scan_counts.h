// The counts of a scan, and how they are told.
#pragma once

#include <string>
#include <vector>

#include "batch/run_figures.h"
#include "velto/velto.h"

namespace velto {

// reads = coding + noncoding + shortReads + emptyReads.
struct ScanCounts {
  long reads = 0;
  long coding = 0;
  long codingMinus = 0;  // of these: on the minus strand
  long noncoding = 0;
  long shortReads = 0;  // refused: 1 to 29 bases
  long emptyReads = 0;  // refused: no bases
  long long bases = 0;  // of all reads
  long long unknownBases = 0;
  long mostlyUnknown = 0;  // reads with more unknown than known bases

  void add(const Prediction& prediction, long long unknownBasesOfRead);
  void add(const ScanCounts& other);
};

// One line for people.
std::string countsText(const ScanCounts& counts, double seconds);

// A line that tells of reads whose bases are mostly unknown, as those of protein and of masked
// sequence are; "" if there are none.
std::string unknownBasesWarning(const ScanCounts& counts);

// The run as JSON: version, model directory, decoder, inputs, genetic code, calibration, threads,
// counts, figures, seconds.
struct ScanRun {
  std::string version;
  std::string modelDirectory;
  std::string decoder;
  std::vector<std::string> inputs;
  int geneticCode;  // its number
  Calibration calibration;
  int threads;
  double seconds;
};
std::string summaryJson(const ScanRun& run, const ScanCounts& counts, const RunFigures& figures);

}  // namespace velto
