// The window network of one read: factors by which it raises or lowers the emissions.
#pragma once

#include <array>
#include <span>
#include <vector>

#include "hmm/composition.h"
#include "hmm/hmm_model.h"

namespace velto {

// [EmissionKind]; the places behind hold 1.
using Factors = std::array<float, kEmissionPlaces>;

// The k-mer that ends at each base, base codes in base 4 with the last base lowest; -1 where one of
// its bases is unknown or before the read.
void indexKmers(std::span<const short> codes, int letters, std::vector<int>& kmers);

// Base part of the hidden units of a block.
void basePart(const WindowNetwork& network, const Composition& composition,
              std::span<std::int16_t> units);

// Factors of every base. `kmers` are those of the network's letters, `blocks` those of compose.
void networkFactors(const WindowNetwork& network, std::span<const int> kmers,
                    std::span<const Composition> blocks, std::vector<Factors>& factors);

}  // namespace velto
