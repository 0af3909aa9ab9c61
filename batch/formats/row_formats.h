// The table of the formats that a scan writes row by row.
#pragma once

#include <span>
#include <string>

#include "batch/scanned_read.h"
#include "predict/coding_sequence.h"

namespace velto {

// What some formats depend on beside the read.
struct FormatChoices {
  Letters letters = Letters::kFolded;
  InnerStops innerStops = InnerStops::kX;  // in proteins
};

struct RowFormat {
  const char* option;   // its names on the command line
  const char* meaning;  // for the help
  std::string header;   // text before the first row; may be empty
  bool needsScores;     // PredictOptions::wantScores must be set
  // Appends what the format says of a read, perhaps nothing. Any thread may call it.
  void (*append)(const ScannedRead& read, const FormatChoices& choices, std::string& text);
};

// The table of all reads first.
std::span<const RowFormat> rowFormats();

}  // namespace velto
