#include "predict/decoder_table.h"

#include <algorithm>

#include "decoder/frame_decoder.h"
#include "hmm/hmm_decoder.h"
#include "hmm/hmm_model_file.h"
#include "predict/model_card.h"
#include "velto/velto.h"

namespace velto {
namespace {

template <typename Kind>
std::shared_ptr<const Decoder> load(const FileSource& files) {
  return std::make_shared<const Kind>(files);
}

constexpr DecoderEntry kDecoders[] = {
    {"vote", "paramater32/paramL0G0-ex0.txt", load<FrameDecoder>},
    {"hmm", kHmmModelFile, load<HmmDecoder>},
};

using Entries = std::vector<const DecoderEntry*>;

const DecoderEntry& entryNamed(const std::string& name, const FileSource& files) {
  for (const DecoderEntry& entry : kDecoders) {
    if (name == entry.name) return entry;
  }
  throw ModelError(files.path(kModelCardFile), 0, 0, "there is no decoder '" + name + "'");
}

Entries entriesWithFiles(const FileSource& files) {
  Entries entries;
  for (const DecoderEntry& entry : kDecoders) {
    if (files.has(entry.file)) entries.push_back(&entry);
  }
  if (entries.empty()) {
    throw ModelError(files.path(kDecoders[0].file), 0, 0,
                     "cannot be opened, and no decoder has files there: is it a model directory?");
  }
  return entries;
}

}  // namespace

std::span<const DecoderEntry> decoderTable() { return kDecoders; }

std::vector<const DecoderEntry*> decodersOf(const FileSource& files) {
  const CardDecoders card = readCardDecoders(files);
  Entries entries;
  for (const std::string& name : card.names) entries.push_back(&entryNamed(name, files));
  if (entries.empty()) entries = entriesWithFiles(files);
  if (card.defaultName.empty()) return entries;
  const DecoderEntry* const chosen = &entryNamed(card.defaultName, files);
  const auto place = std::find(entries.begin(), entries.end(), chosen);
  if (place == entries.end()) {
    throw ModelError(files.path(kModelCardFile), 0, 0,
                     "the default decoder '" + card.defaultName + "' is not one of the model's");
  }
  std::rotate(entries.begin(), place, place + 1);
  return entries;
}

}  // namespace velto
