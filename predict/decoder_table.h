// The decoders there are: the only place that names them.
#pragma once

#include <memory>
#include <span>
#include <string>
#include <vector>

#include "core/decoder.h"
#include "core/file_source.h"

namespace velto {

struct DecoderEntry {
  const char* name;  // as users and model.json write it
  const char* file;  // one that every model with this decoder has
  // Reads the decoder's files. Throws ModelError.
  std::shared_ptr<const Decoder> (*load)(const FileSource& files);
};

// All decoders.
std::span<const DecoderEntry> decoderTable();

// The decoders of a model, its default one first: those that its card names, or all that it has
// files for, of which the first one in the table is the default if the card names none. At least
// one. Throws ModelError for a model without any, and for a card that is damaged or names a decoder
// that there is not.
std::vector<const DecoderEntry*> decodersOf(const FileSource& files);

}  // namespace velto
