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

// Correlation, right-frame share and frame F1 in each class with reads.
std::string classPlot(const EvaluationReport& report);

struct Plot {
  const char* fileName;
  std::string (*draw)(const EvaluationReport&);
};

constexpr Plot kPlots[] = {{"score-by-error-rate.svg", ratePlot},
                           {"shift-distance.svg", distancePlot},
                           {"accuracy-by-class.svg", classPlot}};

}  // namespace velto
