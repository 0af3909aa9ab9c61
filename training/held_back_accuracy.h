// How well a model does on transcripts that were held back, alone and beside another model.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "evaluation/model_evaluation.h"
#include "training/fold_split.h"
#include "velto/velto.h"

namespace velto {

// Kinds of reads, by their presets.
constexpr std::array<const char*, 3> kJudgedPresets = {"est", "mild", "clean"};

// Two reads of each held-back transcript per preset, the whole of it and a fragment of 300 to 800
// bases; [preset].
using HeldBackReads = std::array<ReadSet, kJudgedPresets.size()>;
HeldBackReads heldBackReads(const TranscriptPool& transcripts, std::uint64_t seed);

// What a decoder made of these reads; [preset].
using HeldBackAccuracy = std::array<ModelEvaluation, kJudgedPresets.size()>;

// Judges the reads of each preset as a file of their own. Uses all threads of the calling arena;
// the result does not depend on their number.
HeldBackAccuracy accuracyOn(const HeldBackReads& reads, const Predictor& predictor);

// Lines for the user: frame F1 and non-coding reads called of both over the reads of each preset,
// then each class of at least 20 est reads in which frame F1 of `made` lies below that of `other`
// by 0.02 or more.
std::vector<std::string> comparison(const HeldBackAccuracy& made, const HeldBackAccuracy& other,
                                    const std::string& otherName);

}  // namespace velto
