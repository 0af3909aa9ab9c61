// The groups of transcripts that a training run keeps in one part.
#pragma once

#include <string>
#include <vector>

#include "simulation/transcript.h"

namespace velto {

// Gives transcripts that no header word grouped the group of those they share sequence with; where
// no word named any two transcripts together, all of them. Returns what decided, for the user: the
// words with the numbers of their groups.
std::string groupTranscripts(std::vector<Transcript>& coding, std::vector<Transcript>& noncoding);

// Says how many transcripts have the sequence of an earlier one, and names the first two that are
// alike; empty when all differ.
std::string duplicatesText(const std::vector<Transcript>& coding,
                           const std::vector<Transcript>& noncoding);

}  // namespace velto
