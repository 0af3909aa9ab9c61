// Says where a new model does worse than another one.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "training/fold_split.h"
#include "velto/velto.h"

namespace velto {

// Judges both by the same est reads of the transcripts, whole ones and fragments. Lines for the
// user: frame F1 and non-coding reads called over all reads, then each class of at least 20 reads
// in which frame F1 of `made` lies below that of `other` by 0.02 or more. Uses all threads of the
// calling arena.
std::vector<std::string> comparison(const Predictor& made, const Predictor& other,
                                    const std::string& otherName, const TranscriptPool& transcripts,
                                    std::uint64_t seed);

}  // namespace velto
