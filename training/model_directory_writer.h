// Writes the files of a trained model directory.
#pragma once

#include <span>

#include "seqio/output_directory.h"
#include "training/model_card.h"
#include "training/trainer.h"

namespace velto {

// Writes the files of all decoders and `model.json`. Throws OutputError;
// Error when an input file cannot be read again for its checksum.
void writeModelDirectory(const CardFacts& facts, std::span<const TrainedDecoder> decoders,
                         OutputDirectory& output);

}  // namespace velto
