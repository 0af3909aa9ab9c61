// The window network of one read: factors by which it raises or lowers the emissions.
#pragma once

#include <array>
#include <span>
#include <vector>

#include "hmm/hmm_model.h"
#include "hmm/read_context.h"

namespace velto {

// [EmissionKind]; the places behind hold 1.
using Factors = std::array<float, kEmissionPlaces>;

// Base part of the hidden units of a block.
void basePart(const WindowNetwork& network, const Composition& composition,
              std::span<std::int16_t> units);

// Factors of every base.
void networkFactors(const WindowNetwork& network, const ReadContext& context,
                    std::vector<Factors>& factors);

}  // namespace velto
