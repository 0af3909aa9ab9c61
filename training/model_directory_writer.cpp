#include "training/model_directory_writer.h"

#include <filesystem>

#include "seqio/output_file.h"

namespace velto {
namespace {

void writeFile(const std::string& path, const std::string& bytes) {
  std::filesystem::create_directories(std::filesystem::path(path).parent_path());
  OutputFile file(path, OutputFile::Format::kPlain);
  file.write(bytes);
  file.commit();
}

}  // namespace

void writeModelDirectory(const CardFacts& facts, std::span<const TrainedDecoder> decoders,
                         const std::string& directory) {
  for (const TrainedDecoder& decoder : decoders) {
    for (const ModelFile& file : decoder.files) {
      writeFile(directory + "/" + file.path, file.bytes);
    }
  }
  writeFile(directory + "/model.json", modelCardText(facts, decoders));
}

}  // namespace velto
