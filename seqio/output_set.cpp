#include "seqio/output_set.h"

namespace velto {

OutputFile& OutputSet::add(const std::string& path, OutputFile::Format format) {
  files_.push_back(std::make_unique<OutputFile>(path, format));
  return *files_.back();
}

void OutputSet::commit() {
  for (const auto& file : files_) file->finish();
  std::size_t named = 0;
  try {
    for (; named < files_.size(); ++named) files_[named]->commit();
  } catch (const OutputError&) {
    while (named > 0) files_[--named]->takeBack();
    throw;
  }
}

void OutputSet::finishStreams() {
  for (const auto& file : files_) {
    if (file->isDirect()) file->finish();
  }
}

}  // namespace velto
