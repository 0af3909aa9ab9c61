// The plots of an evaluation.
#pragma once

#include <string>

#include "training/evaluation_report.h"

namespace velto {

// Writes "score-by-error-rate.svg", "shift-distance.svg" and "accuracy-by-class.svg" into the
// folder, which is made if it does not exist. Throws OutputError.
void writePlots(const EvaluationReport& report, const std::string& directory);

}  // namespace velto
