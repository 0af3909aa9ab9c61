#include "seqio/output_set.h"

namespace velto {

OutputFile& OutputSet::add(const std::string& path, OutputFile::Format format) {
  files_.push_back(std::make_unique<OutputFile>(path, format));
  return *files_.back();
}

void OutputSet::commit() {
  for (const auto& file : files_) file->finish();
  for (const auto& file : files_) file->commit();
}

void OutputSet::finishStreams() {
  for (const auto& file : files_) {
    if (file->isDirect()) file->finish();
  }
}

}  // namespace velto
