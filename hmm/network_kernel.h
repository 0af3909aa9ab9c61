// The window network with the widest vectors of the processor it runs on.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "hmm/window_network.h"

namespace velto {

// networkFactors, equal to it to the last bit.
void networkFactorsInVectors(const WindowNetwork& network, std::span<const int> kmers,
                             std::span<const Composition> blocks, std::vector<Factors>& factors);

}  // namespace velto
