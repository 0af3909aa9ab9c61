#include "core/bounded_text.h"

#include <algorithm>
#include <utility>

namespace velto {

std::optional<std::string> textUpTo(std::istream& in, std::size_t most) {
  constexpr std::size_t kBlock = 1 << 16;
  std::string text;
  while (in && text.size() <= most) {
    const std::size_t before = text.size();
    text.resize(before + std::min(kBlock, most + 1 - before));
    in.read(text.data() + before, static_cast<std::streamsize>(text.size() - before));
    text.resize(before + static_cast<std::size_t>(in.gcount()));
  }
  return text.size() <= most ? std::optional(std::move(text)) : std::nullopt;
}

}  // namespace velto
