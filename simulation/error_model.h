// How sequencing errors fall upon reads: rates, their spread over reads and stretches, qualities.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velto {

// Probabilities of each kind of error per template base; at most one error befalls a base, so the
// sum must not exceed 1.
struct ErrorRates {
  double substitution = 0.0;  // replaced by one of the other three bases
  double insertion = 0.0;     // one or more bases are added before it
  double deletion = 0.0;      // dropped, alone or as the first of several
  double unknown = 0.0;       // replaced by an unknown base

  double sum() const { return substitution + insertion + deletion + unknown; }
  bool valid() const;
};

// The same rates with insertions and deletions times `factor`, as "a third of the indel rates".
ErrorRates scaleIndels(ErrorRates rates, double factor);

// Stretches of a read in which errors crowd together. Their lengths, and those of the stretches
// between them, are uniform from 1 to twice their mean less 1.
struct ErrorStretches {
  double share = 0.0;   // of the template bases, below 1; 0: there are none
  int meanLength = 1;   // template bases, at least 1
  double factor = 1.0;  // error rates inside, relative to those outside; at least 1
};

// Quality values of the bases of a read. A base that is wrong, or next to a lost one, is expected
// below the mean by `information` times three standard deviations; its neighbours by half of that,
// theirs by a quarter, and so on.
struct QualityModel {
  int mean = 0;              // Phred value of bases far from errors; 0: reads have no qualities
  double deviation = 0.0;    // standard deviation of the noise, in Phred
  double information = 0.0;  // 0: all values are `mean`; up to 1: errors nearly stand out
};

// Errors of reads of one kind. As initialised, they fall evenly and one base at a time: every
// member behind `rates` then leaves the random draws as if it did not exist.
// Formulas: docs/simulate.md.
struct ErrorModel {
  ErrorRates rates{};               // means over reads and places
  double insertionExtension = 0.0;  // probability of one more base behind each inserted one
  double deletionExtension = 0.0;   // probability of one more lost base behind each lost one
  double insertionCopies = 0.0;     // share of inserted bases that repeat the base behind them
  double homopolymerSlope = 0.0;    // growth of the deletion rate per further base of a run
  int readSpread = 0;               // rates of a read: (readSpread + 1) u^readSpread, u uniform
  double endRise = 0.0;             // rates at the last base over those at the first, less 1
  ErrorStretches stretches{};
  QualityModel quality{};

  // Every member in its range, so that reads can be drawn.
  bool valid() const;
};

// The error model of a kind of reads; nothing for an unknown name.
std::optional<ErrorModel> presetErrors(std::string_view name);

// The qualities of reads whose preset has none: their mean tells the sum of the rates.
QualityModel qualitiesOf(const ErrorRates& rates);

// Names of all presets, the even ones first.
std::vector<std::string> presetNames();

}  // namespace velto
