// The files of a model.
#include <utility>

#include "core/file_source.h"
#include "predict/decoder_table.h"
#include "velto/velto.h"

namespace velto {

Model::Model(const std::string& folder) : files_(std::make_shared<const FolderSource>(folder)) {}

Model::Model(std::map<std::string, std::string> texts)
    : files_(std::make_shared<const MemorySource>(std::move(texts))) {}

std::vector<std::string> Model::decoders() const {
  std::vector<std::string> names;
  for (const DecoderEntry* entry : decodersOf(*files_)) names.emplace_back(entry->name);
  return names;
}

}  // namespace velto
