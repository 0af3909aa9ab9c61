// What the model says about each base of a read before any path is looked at.
#pragma once

#include <span>
#include <vector>

#include "core/read_view.h"
#include "hmm/base_rates.h"
#include "hmm/composition.h"
#include "hmm/hmm_model.h"
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

// The 5-mer that ends at base i: bases before the read count as code 0, an unknown base j as code
// (7 j + 3) mod 4.
void indexContexts(std::span<const short> codes, std::vector<int>& fiveMers);

// What stands before the codon that begins at each base.
void indexStartContexts(std::span<const short> codes, std::vector<StartContext>& contexts);

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

// Emissions of every base with the model's tables. `factors` are the network's, one per base, or
// empty: all 1.
void emit(const HmmModel& model, const PathWeights& weights, const ReadView& read,
          const FileRates& rates, std::span<const int> fiveMers,
          std::span<const StartContext> contexts, std::span<const Composition> blocks,
          std::span<const Factors> factors, std::vector<BaseEmission>& emissions);

}  // namespace velto
