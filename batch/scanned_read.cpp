#include "batch/scanned_read.h"

#include <cmath>

#include "core/plain_real.h"

namespace velto {

char symbolOf(Strand strand) { return strand == Strand::kMinus ? '-' : '+'; }

std::string positionList(const Prediction& prediction, Frameshift::Kind kind) {
  std::string list;
  for (const Frameshift& shift : prediction.frameshifts) {
    if (shift.kind != kind) continue;
    if (!list.empty()) list += ',';
    list += std::to_string(shift.position + 1);
  }
  return list;
}

std::string confidenceList(const Prediction& prediction, Frameshift::Kind kind) {
  std::string list;
  for (const Frameshift& shift : prediction.frameshifts) {
    if (shift.kind != kind || std::isnan(shift.confidence)) continue;
    if (!list.empty()) list += ',';
    list += numberText(shift.confidence, 3);
  }
  return list;
}

std::string numberText(double number, int digits) {
  std::string text;
  appendRounded(text, number, digits);
  return text;
}

std::string scoreText(double score) { return numberText(score, 5); }

std::string probabilityText(double probability) {
  return std::isnan(probability) ? "" : numberText(probability, 6);
}

}  // namespace velto
