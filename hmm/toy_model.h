// A small model for tests: coding bases are mostly A, T, G in phase 0, 1, 2, other bases are even,
// and the network says nothing.
#pragma once

#include <string_view>
#include <vector>

#include "core/base_code.h"
#include "hmm/hmm_model.h"

namespace velto {

inline std::vector<short> codesOf(std::string_view letters) {
  std::vector<short> codes;
  for (const char letter : letters) codes.push_back(baseCode(letter));
  return codes;
}

// The network's factors are all 1.
inline WindowNetwork neutralNetwork() {
  WindowNetwork network;
  network.letters = 1;
  network.units = 16;
  network.offsets = {0};
  network.clearRows();
  network.bias.assign(kHmmGcClasses * 16, 0);
  network.dinucleotide.assign(kDinucleotides * 16, 0);
  network.output.assign(kEmissionKinds * 16, 0);
  network.outputScale = 0.001f;
  return network;
}

inline HmmModel toyModel() {
  constexpr int kPreferred[3] = {0, 1, 2};
  HmmModel model;
  model.emissions.assign(kHmmGcClasses * kFiveMers, EmissionRow{});
  for (std::size_t k = 0; k < model.emissions.size(); ++k) {
    EmissionRow& row = model.emissions[k];
    const int base = static_cast<int>(k % 4);
    for (std::size_t phase = 0; phase < 3; ++phase) {
      row[phase] = roundedToFile(base == kPreferred[phase] ? 0.7f : 0.1f);
    }
    row[kUtr5] = row[kUtr3] = row[kNoncodingRead] = 0.25f;
  }
  for (auto& place : model.kozak) place.fill(1.0f);
  model.stopShare = {0.25f, 0.25f, 0.5f};
  model.weights = {{0.05f, 0.06f, 0.01f}, 0.02f, 0.995f, 0.2f, 0.3f, 0.3f, 0.1f, 0.1f};
  model.network = neutralNetwork();
  model.decision = {-1.5, 0.4, 0.6, 0.5};
  model.strand = {0.4, 0.5};
  return model;
}

}  // namespace velto
