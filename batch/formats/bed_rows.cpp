#include "batch/formats/bed_rows.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "batch/formats/read_name.h"

namespace velto {
namespace {

constexpr double kMostScore = 1000.0;

// From 0 to kMostScore: the probability where there is one, else the score.
double scoreOf(const Prediction& prediction) {
  const bool hasProbability = !std::isnan(prediction.probability);
  const double score = hasProbability ? kMostScore * prediction.probability : prediction.score;
  return std::clamp(std::round(score), 0.0, kMostScore);
}

// The parts in ascending order of the bases of the read as given.
std::vector<CodingPart> ascendingParts(const ScannedRead& read) {
  std::vector<CodingPart> parts = read.coding.kept;
  if (read.prediction.strand == Strand::kPlus) return parts;
  std::reverse(parts.begin(), parts.end());
  const int length = read.prediction.length;
  for (CodingPart& part : parts) part = {length - part.end, length - part.begin, part.phase};
  return parts;
}

}  // namespace

void appendBedRow(const ScannedRead& read, std::string& text) {
  const std::vector<CodingPart> parts = ascendingParts(read);
  if (parts.empty()) return;
  std::string sizes;
  std::string starts;
  for (const CodingPart& part : parts) {
    sizes += std::to_string(part.end - part.begin) + ',';
    starts += std::to_string(part.begin - parts.front().begin) + ',';
  }
  const std::string name = bedName(read);
  const std::string begin = std::to_string(parts.front().begin);
  const std::string end = std::to_string(parts.back().end);
  text += name + '\t' + begin + '\t' + end + '\t' + name + '\t' +
          numberText(scoreOf(read.prediction), 4) + '\t' + symbolOf(read.prediction.strand) + '\t' +
          begin + '\t' + end + "\t0\t" + std::to_string(parts.size()) + '\t' + sizes + '\t' +
          starts + '\n';
}

}  // namespace velto
