// Numbers of the posterior decoder: count tables, start and stop codons, network, read decision.
#pragma once

#include <array>
#include <cmath>
#include <cstdint>
#include <span>
#include <vector>

#include "hmm/aligned_vector.h"
#include "hmm/hmm_states.h"

namespace velto {

constexpr int kHmmGcClasses = 4;
constexpr double kGcCentres[kHmmGcClasses] = {0.35, 0.44, 0.53, 0.62};
constexpr int kFiveMers = 1024;     // index: base codes in base 4, the last base lowest
constexpr int kDinucleotides = 16;  // likewise
constexpr int kKozakLeft = 9;       // positions -9 to -1 before the start codon
constexpr int kKozakRight = 3;      // and +4 to +6 behind it
constexpr int kKozakPlaces = kKozakLeft + kKozakRight;
constexpr int kStopCodons = 3;

// Place of a Kozak position from the first base of the start codon: -9 to -1, then 3 to 5.
constexpr int kozakOffset(int place) {
  return place < kKozakLeft ? place - kKozakLeft : place - kKozakLeft + 3;
}

// Probability of a base after the four before it, by kind.
using EmissionRow = std::array<float, kEmissionPlaces>;  // [EmissionKind]

// Windows of bases to factors of the emissions. All sums are of whole numbers, hence the same in
// any order. Hidden unit u of base i is max(0, base part + sum over offsets o of
// rows[o][k-mer that ends at base i + offset o][u]), with the base part of its composition block:
// bias[class of G and C] + sum of dinucleotide d of x_d (composition.h), cut to +-kMostBasePart.
// Output k is outputBias[k] + outputScale * sum of output[k][u] * unit u, the base-2 logarithm of
// the factor of emission kind k, cut to +-kMostLogFactor.
struct WindowNetwork {
  int letters = 0;                         // k of the k-mers, 1 to 5
  int units = 0;                           // a multiple of 16, at most kMostUnits
  std::vector<int> offsets;                // of a k-mer's last base from the base that is judged
  AlignedVector<std::int8_t> rows;         // [offset][k-mer, then unknownKmer()][unit], rows
                                           // rowStride() apart; sum over offsets of the largest
                                           // absolute value of a unit: at most kMostRowSum
  std::vector<std::int16_t> bias;          // [class of G and C][unit]
  std::vector<std::int16_t> dinucleotide;  // [dinucleotide][unit]
  std::vector<std::int16_t> output;  // [EmissionKind][unit]; sum of absolute values of a kind:
                                     // at most kMostOutputSum
  std::array<float, kEmissionKinds> outputBias{};
  float outputScale = 0.0f;

  int kmers() const { return 1 << (2 * letters); }
  // Stands for k-mers with an unknown base or beyond the read; its rows are zeros.
  int unknownKmer() const { return kmers(); }
  std::size_t rowsOfOffset() const { return static_cast<std::size_t>(kmers()) + 1; }
  // Units of a row and the zeros behind them, so that each row begins a cache line; at most
  // kMostUnits.
  std::size_t rowStride() const {
    constexpr std::size_t kLine = static_cast<std::size_t>(kCacheLine);
    return (static_cast<std::size_t>(units) + kLine - 1) / kLine * kLine;
  }

  // Numbers from the rows of an offset to those of the next.
  std::size_t rowsSize() const { return rowsOfOffset() * rowStride(); }

  // Makes room for the rows of the letters, units and offsets, all zeros.
  void clearRows() { rows.assign(offsets.size() * rowsSize(), 0); }
  const std::int8_t* row(std::size_t offset, int kmer) const {
    return rows.data() + rowBegin(offset, kmer);
  }
  std::span<std::int8_t> row(std::size_t offset, int kmer) {
    return std::span(rows).subspan(rowBegin(offset, kmer), static_cast<std::size_t>(units));
  }

 private:
  std::size_t rowBegin(std::size_t offset, int kmer) const {
    return offset * rowsSize() + static_cast<std::size_t>(kmer) * rowStride();
  }
};
constexpr int kMostUnits = 128;
constexpr int kMostOffsets = 40;
constexpr int kMostOffset = 60;
constexpr int kMostRowSum = 127;
constexpr int kMostBasePart = 12000;
constexpr int kMostOutputSum = 65000;
constexpr float kMostLogFactor = 14.0f;

// What stands before a codon in its frame: the last start or stop codon, read letter by letter.
// Nearly every coding region begins with the first ATG of its open frame.
enum StartContext : std::uint8_t {
  kOpenFrame,   // neither, up to the read's beginning
  kAfterStop,   // a stop codon
  kAfterStart,  // an ATG
};
constexpr int kStartContexts = 3;

// Weights of the paths beside rates and emissions, each the product of a fixed share and a learned
// factor.
struct PathWeights {
  std::array<float, kStartContexts> start{};  // of entering a start codon at a base, Kozak factors
                                              // apart, [StartContext]
  float stop = 0.0f;                          // of entering a stop codon
  float stayUtr5 = 0.0f;                      // of a base before the start codon
  float beginCoding = 0.0f;                   // of a read that begins in a phase, each of the three
  float beginUtr5 = 0.0f;
  float beginNoncoding = 0.0f;
  float beginUtr3 = 0.0f;
  float beginStart = 0.0f;  // of a read that begins with the start codon, times its weight
};

// Reads that begin before a start codon are preferred in decoding, which finds more start codons
// exactly: their weight holds this factor beyond what their share is.
constexpr float kUtr5Preference = 3.3333333f;

// The weights for reads of which `share` of the coding ones begin inside their coding region, from
// those for reads of which `modelShare` do. Both lie between 0 and 1.
inline PathWeights withTruncatedShare(PathWeights weights, double modelShare, double share) {
  const auto whole = static_cast<float>((1.0 - share) / (1.0 - modelShare));
  weights.beginCoding *= static_cast<float>(share / modelShare);
  weights.beginUtr5 *= whole;
  weights.beginStart *= whole;
  return weights;
}

// P(coding) of a read under the calibration's share of coding reads: logistic of
// constant + logOdds * (its log odds, cut) + codingBases * min(6, expected coding bases / 100).
struct ReadDecision {
  double constant = 0.0;
  double logOdds = 0.0;
  double codingBases = 0.0;
  double codingShare = 0.5;  // of the calibration's reads
};

// On which strand a coding read codes. A strand's score is logOdds * (its log odds of coding) +
// logLikelihood * (the natural logarithm of the sum of all its paths). The strand with the higher
// score is the right one with a probability that is the logistic of the difference of the scores +
// constant + calledLogOdds * (its log odds, cut) + calledCodingBases * min(6, its expected coding
// bases / 100), and one half or more.
struct StrandDecision {
  double logOdds = 1.0;
  double logLikelihood = 0.0;
  double constant = 0.0;
  double calledLogOdds = 0.0;
  double calledCodingBases = 0.0;
};

// Nearest number that the model file holds: all but the weights of paths and the decision are
// whole millionths there.
inline float roundedToFile(float x) { return std::round(x * 1e6f) * 1e-6f; }

struct HmmModel {
  std::vector<EmissionRow> emissions;                      // [class of G and C][5-mer]
  std::array<std::array<float, 4>, kKozakPlaces> kozak{};  // [place][base code] likelihood ratio
  std::array<float, kStopCodons> stopShare{};              // TAA, TAG, TGA
  PathWeights weights;
  double truncatedShare = 0.5;  // of the coding reads that the weights are for: those that begin
                                // inside their coding region
  WindowNetwork network;
  ReadDecision decision;
  StrandDecision strand;

  const EmissionRow& emission(int gcClass, int fiveMer) const {
    return emissions[static_cast<std::size_t>(gcClass * kFiveMers + fiveMer)];
  }
};

}  // namespace velto
