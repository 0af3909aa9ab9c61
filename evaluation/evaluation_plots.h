// The plots of an evaluation as SVG.
#pragma once

#include <string>

#include "evaluation/evaluation_report.h"

namespace velto {

// Correlation, right-frame share and frame F1 of each model against the frameshifts per 100 coding
// bases.
std::string ratePlot(const EvaluationReport& report);

// How many called frameshifts lie how far from their true one.
std::string distancePlot(const EvaluationReport& report);

// Correlation and right-frame share in each class with reads.
std::string classPlot(const EvaluationReport& report);

// Writes "score-by-error-rate.svg", "shift-distance.svg" and "accuracy-by-class.svg" into the
// folder, which is made if it does not exist. Throws OutputError.
void writePlots(const EvaluationReport& report, const std::string& directory);

}  // namespace velto
