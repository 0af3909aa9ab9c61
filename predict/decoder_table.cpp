#include "predict/decoder_table.h"

#include "decoder/frame_decoder.h"

namespace velto {
namespace {

template <typename Kind>
std::shared_ptr<const Decoder> load(const FileSource& files) {
  return std::make_shared<const Kind>(files);
}

constexpr DecoderEntry kDecoders[] = {
    {"vote", "paramater32/paramL0G0-ex0.txt", load<FrameDecoder>},
};

}  // namespace

std::span<const DecoderEntry> decoderTable() { return kDecoders; }

}  // namespace velto
