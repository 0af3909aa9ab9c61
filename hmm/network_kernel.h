// The window network with the widest vectors of the processor it runs on.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "hmm/window_network.h"

namespace velto {

// networkFactors, equal to it to the last bit.
void networkFactorsInVectors(const WindowNetwork& network, const ReadContext& context,
                             std::vector<Factors>& factors);

// basePart of each of the blocks into `parts`, [block][unit], rowStride() apart, equal to it to
// the last bit.
void basePartsInVectors(const WindowNetwork& network, std::span<const Composition> blocks,
                        std::int16_t* parts);

}  // namespace velto
