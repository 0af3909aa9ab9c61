// What the model says about each base of a read before any path is looked at.
#pragma once

#include <array>
#include <span>
#include <vector>

#include "core/read_view.h"
#include "hmm/base_rates.h"
#include "hmm/hmm_model.h"
#include "hmm/read_context.h"
#include "hmm/window_network.h"

namespace velto {

// Probabilities at one base that no path changes.
struct BaseEmission {
  EmissionRow kind;  // [EmissionKind] of the base, times its factor
  float start;       // of entering a start codon that begins here
  float stop;        // of entering a stop codon that begins here
  float insertion;   // of being an inserted base, its emission included
  float deletion;    // of a lost base before this one
  float stay;        // of neither
};

// Share of the emission of a phase that is due to an error-free base: (1 - s) T f / e.
float errorFreeShare(const EmissionRow& row, int phase, float factor, float substitution);

// How often a start codon stands behind another ATG of its frame, with these error rates: hardly
// ever, but for a shift in between that moved other bases into the frame.
float afterStartShare(const BaseRates& rates);

// Start and stop weights of the codon that begins at base i, 0 unless it lies in the read, has no
// unknown base, and for a start codon differs in one base at most from ATG. The share of the
// context is left to the caller.
float startWeight(const HmmModel& model, const PathWeights& weights, std::span<const short> codes,
                  int i, StartContext context, float substitution);
float stopWeight(const HmmModel& model, const PathWeights& weights, std::span<const short> codes,
                 int i, float substitution);

// The weights of all codons with the mean rates of a file.
class CodonWeights {
 public:
  CodonWeights(const HmmModel& model, const PathWeights& weights, const BaseRates& mean);

  // Of entering a start or stop codon at base i.
  float start(std::span<const short> codes, const ReadContext& context, std::size_t i) const {
    const float probability = start_[context.codons[i]];
    return probability == 0.0f ? 0.0f : startWithKozak(codes, context, i, probability);
  }
  float stop(const ReadContext& context, std::size_t i) const { return stop_[context.codons[i]]; }

  // Whether a codon is ever entered as a start codon.
  bool mayStart(CodonIndex codon) const { return start_[codon] > 0.0f; }
  // [codon] of entering it as a stop codon.
  std::span<const float, kUnreadCodon + 1> stops() const { return stop_; }

 private:
  float startWithKozak(std::span<const short> codes, const ReadContext& context, std::size_t i,
                       float probability) const;
  float kozakRatioAt(std::span<const short> codes, const ReadContext& context, std::size_t i) const;

  const HmmModel& model_;
  const PathWeights& weights_;
  std::array<float, kUnreadCodon + 1> start_{};  // [codon] probability of reading ATG as this one
  std::array<float, kUnreadCodon + 1> stop_{};   // [codon] weight
  std::array<float, kStartContexts> contextShare_;
  std::array<float, kFiveMers> firstKozak_;  // [5-mer] product of the ratios of the first places
};

// Emissions of every base with the model's tables. `factors` are the network's, one per base, or
// empty: all 1. An unknown base emits them alone, and 1 in a gap.
void emit(const HmmModel& model, const PathWeights& weights, const ReadView& read,
          const FileRates& rates, const ReadContext& context, std::span<const Factors> factors,
          std::vector<BaseEmission>& emissions);

}  // namespace velto
