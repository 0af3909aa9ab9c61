// The card of a trained model: where it comes from and how well it does, as JSON.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

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
};

// The text of `model.json`: the facts, then the members of each decoder's card. Reads the input
// files again for their checksums; throws Error when that fails. Standard input has no checksum.
std::string modelCardText(const CardFacts& facts, std::span<const TrainedDecoder> decoders);

// CRC-32 of a file's bytes as eight hexadecimal digits.
std::string fileChecksum(const std::string& path);

}  // namespace velto
