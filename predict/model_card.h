// What model.json says about the decoders of a model.
#pragma once

#include <string>
#include <vector>

#include "core/file_source.h"

namespace velto {

// Name of the card within a model directory. A model needs none.
constexpr const char* kModelCardFile = "model.json";

// Version of the card and of the files that it speaks of, its member "format".
constexpr int kModelFormat = 1;

struct CardDecoders {
  std::vector<std::string> names;  // member "decoders"; empty if there is none
  std::string defaultName;         // member "default"; empty if there is none
};

// Nothing for a model without a card. Throws ModelError for a card that is no JSON object or whose
// members are of other types or whose format is newer; other members are passed over.
CardDecoders readCardDecoders(const FileSource& files);

}  // namespace velto
