#include "training/model_directory_writer.h"

namespace velto {

void writeModelDirectory(const CardFacts& facts, std::span<const TrainedDecoder> decoders,
                         OutputDirectory& output) {
  for (const TrainedDecoder& decoder : decoders) {
    for (const ModelFile& file : decoder.files) output.write(file.path, file.bytes);
  }
  output.write("model.json", modelCardText(facts, decoders));
}

}  // namespace velto
