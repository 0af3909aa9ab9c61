// What is known of the reads of a run: learnt from those at its beginning, told, kept.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "seqio/record.h"
#include "velto/velto.h"

namespace velto {

// The records as reads, without qualities if these are not to be used.
std::vector<Read> readsOf(std::span<const Record> records, bool useQualities);

// One line for people: the rates in percent; empty if nothing is known.
std::string calibrationText(const Calibration& calibration);

// As JSON, and back from such a text or from an object that holds it as "calibration", as the
// summary of a run does. The text makes the same calibration again, to the last bit. The file is
// named in the Error that is thrown for any other text.
std::string calibrationJson(const Calibration& calibration);
Calibration parseCalibration(const std::string& text, const std::string& file);

}  // namespace velto
