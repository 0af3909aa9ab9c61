// The files of a model, and the decoders that have some among them.
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
  for (const DecoderEntry& entry : decoderTable()) {
    if (files_->has(entry.file)) names.emplace_back(entry.name);
  }
  if (names.empty()) {
    throw ModelError(files_->path(decoderTable().front().file), 0, 0, "cannot be opened");
  }
  return names;
}

}  // namespace velto
