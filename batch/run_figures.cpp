#include "batch/run_figures.h"

#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>

namespace velto {
namespace {

// Bins of scores: round numbers on both sides, one bin from -10 to 0 and one from 0 to 10.
std::vector<double> scoreEdges() {
  const std::vector<double> above = powerEdges(false);
  std::vector<double> edges;
  for (auto edge = above.rbegin(); edge != above.rend(); ++edge) edges.push_back(-*edge);
  edges.push_back(0.0);
  edges.insert(edges.end(), above.begin(), above.end());
  return edges;
}

std::vector<double> lengthEdges() {
  std::vector<double> edges = powerEdges(true);
  edges.insert(edges.begin(), 1.0);
  return edges;
}

std::span<const double> edgesOfLengths() {
  static const std::vector<double> edges = lengthEdges();
  return edges;
}

std::span<const double> edgesOfPercents() {
  static const std::vector<double> edges = evenEdges(50, 100);
  return edges;
}

std::span<const double> edgesOfScores() {
  static const std::vector<double> edges = scoreEdges();
  return edges;
}

std::span<const double> edgesOfProbabilities() {
  static const std::vector<double> edges = evenEdges(50, 1);
  return edges;
}

std::span<const double> edgesOfShifts() {
  static const std::vector<double> edges = evenEdges(kMostShifts + 1, kMostShifts + 1);
  return edges;
}

using Json = nlohmann::ordered_json;

Json histogramJson(const Histogram& histogram) {
  const BinCounts bins = histogram.occupied();
  return {{"edges", bins.edges}, {"coding", bins.coding}, {"others", bins.others}};
}

}  // namespace

RunFigures::RunFigures()
    : lengths_(edgesOfLengths()),
      gcPercents_(edgesOfPercents()),
      scores_(edgesOfScores()),
      probabilities_(edgesOfProbabilities()),
      shiftsPerRead_(edgesOfShifts()) {}

void RunFigures::add(const ScannedRead& read) {
  const Prediction& p = read.prediction;
  if (p.length == 0) return;
  lengths_.add(p.length, p.isCoding());
  gcPercents_.add(p.gcPercent, p.isCoding());
  if (!p.isPredicted()) return;
  scores_.add(p.score, p.isCoding());
  if (!std::isnan(p.probability)) probabilities_.add(p.probability, p.isCoding());
  if (p.isCoding()) addCoding(read);
}

void RunFigures::addCoding(const ScannedRead& read) {
  const Prediction& p = read.prediction;
  shiftsPerRead_.add(static_cast<double>(p.frameshifts.size()), true);
  codingBases_ += std::min(p.stop + 1, p.length) - p.start;
  for (const Frameshift& shift : p.frameshifts) {
    ++(shift.kind == Frameshift::Kind::kInsertion ? insertions_ : deletions_);
  }
  innerStops_ += read.coding.innerStops;
  ++types_[static_cast<size_t>(read.coding.type)];
}

void RunFigures::add(const RunFigures& other) {
  lengths_.add(other.lengths_);
  gcPercents_.add(other.gcPercents_);
  scores_.add(other.scores_);
  probabilities_.add(other.probabilities_);
  shiftsPerRead_.add(other.shiftsPerRead_);
  codingBases_ += other.codingBases_;
  insertions_ += other.insertions_;
  deletions_ += other.deletions_;
  innerStops_ += other.innerStops_;
  for (size_t i = 0; i < types_.size(); ++i) types_[i] += other.types_[i];
}

double RunFigures::perKilobase(long shifts) const {
  if (codingBases_ == 0) return 0.0;
  return 1000.0 * static_cast<double>(shifts) / static_cast<double>(codingBases_);
}

std::string figuresJson(const RunFigures& figures) {
  Json json;
  json["coding_bases"] = figures.codingBases();
  json["insertions"] = figures.insertions();
  json["deletions"] = figures.deletions();
  json["insertions_per_kilobase"] = figures.perKilobase(figures.insertions());
  json["deletions_per_kilobase"] = figures.perKilobase(figures.deletions());
  json["inner_stops"] = figures.innerStops();
  for (int i = 0; i < kCodingTypes; ++i) {
    const auto type = static_cast<CodingType>(i);
    json["types"][nameOf(type)] = figures.readsOf(type);
  }
  json["length"] = histogramJson(figures.lengths());
  json["gc"] = histogramJson(figures.gcPercents());
  json["score"] = histogramJson(figures.scores());
  if (figures.probabilities().reads() > 0) {
    json["probability"] = histogramJson(figures.probabilities());
  }
  json["frameshifts_per_read"] = histogramJson(figures.shiftsPerRead());
  return json.dump();
}

}  // namespace velto
