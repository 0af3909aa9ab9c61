// The decoders there are: the only place that names them.
#pragma once

#include <memory>
#include <span>

#include "core/decoder.h"
#include "core/file_source.h"

namespace velto {

struct DecoderEntry {
  const char* name;  // as users and model.json write it
  const char* file;  // one that every model with this decoder has
  // Reads the decoder's files. Throws ModelError.
  std::shared_ptr<const Decoder> (*load)(const FileSource& files);
};

// All decoders, the one that is the default of a model that names none first.
std::span<const DecoderEntry> decoderTable();

}  // namespace velto
