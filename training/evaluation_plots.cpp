#include "training/evaluation_plots.h"
namespace velto {
void writePlots(const EvaluationReport&, const std::string&) {}
}  // namespace velto
