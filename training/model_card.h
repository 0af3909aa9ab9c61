// The card of a trained model: where it comes from and how well it does, as JSON.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "training/held_back_accuracy.h"
#include "training/trainer.h"

namespace velto {

// What of a training run the trainers do not tell.
struct CardFacts {
  std::string version;  // of the program
  std::string command;  // as typed, without the options that leave the model unchanged
  std::uint64_t seed = 1;
  std::vector<std::string> codingFiles;
  std::vector<std::string> noncodingFiles;
  RefusalCounts codingCounts;
  RefusalCounts noncodingCounts;
  std::vector<HeldBackAccuracy> accuracy;  // [decoder]
};

// The text of `model.json`: the facts, then the members of each decoder's card. Reads the input
// files again for their checksums; throws Error when that fails. Standard input has no checksum.
std::string modelCardText(const CardFacts& facts, std::span<const TrainedDecoder> decoders);

// What a card tells about one decoder, on reads of held-back transcripts; empty where it does not.
struct DecoderSummary {
  long coding = -1;     // transcripts it was trained on; -1: not told
  long noncoding = -1;  // likewise
  std::array<std::optional<double>, kJudgedPresets.size()> frameF1;  // [preset]
  std::optional<double> noncodingCalled;                             // of the est reads
};

// Reads `model.json` of a model that has the decoder, as modelCardText wrote it. Members of other
// types tell nothing, and so does a directory without a readable card.
DecoderSummary readDecoderSummary(const std::string& directory, const std::string& decoder);

// CRC-32 of a file's bytes as eight hexadecimal digits.
std::string fileChecksum(const std::string& path);

}  // namespace velto
