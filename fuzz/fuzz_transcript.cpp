// Fuzz target: name, description and letters of a transcript, zero bytes between them, through the
// parser of headers.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "simulation/transcript.h"

namespace {

// Cuts off and returns what stands before the first zero byte.
std::string_view cut(std::string_view& rest) {
  const std::size_t end = std::min(rest.find('\0'), rest.size());
  const std::string_view part = rest.substr(0, end);
  rest.remove_prefix(std::min(end + 1, rest.size()));
  return part;
}

void expect(bool holds) {
  if (!holds) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  std::string_view rest(reinterpret_cast<const char*>(data), size);
  const std::string_view name = cut(rest);
  const std::string_view description = cut(rest);
  for (const auto kind : {velto::TranscriptKind::kCoding, velto::TranscriptKind::kNoncoding}) {
    const velto::ParsedTranscript parsed = velto::parseTranscript(name, description, rest, kind);
    if (parsed.refusal != velto::Refusal::kNone) continue;
    const velto::Transcript& t = parsed.transcript;
    expect(t.isCoding() == (kind == velto::TranscriptKind::kCoding));
    expect(t.bases.size() == rest.size());
    if (!t.isCoding()) continue;
    expect(t.cdsStart < t.cdsStop && t.cdsStop < t.length());
    expect((t.cdsStop - t.cdsStart + 1) % 3 == 0);
  }
  return 0;
}
