// Options about what is known of the reads before they are predicted.
#pragma once

#include <CLI/CLI.hpp>
#include <optional>
#include <string>

#include "velto/velto.h"

namespace velto {

// The options as they are written on the command line. Must outlive the parsing.
struct CalibrationLine {
  std::string errorRates;  // three numbers or a preset; empty: not known
  std::optional<double> codingShare, truncatedShare;
  std::string file;  // the summary of a run that learnt; empty: none
  bool ignoreQualities = false;
};

// Adds --error-rates, --coding-share, --truncated-share, --calibration and --ignore-qualities.
void addCalibrationOptions(CLI::App& command, CalibrationLine& line);

// What the summary of a run tells that it learnt. Throws Error for a file that cannot be read.
Calibration calibrationIn(const std::string& summary);

// What these options tell. Throws CLI::ValidationError for error rates that are none, and Error for
// a file that cannot be read.
Calibration knownCalibration(const CalibrationLine& line);

}  // namespace velto
