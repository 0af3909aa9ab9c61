// Fuzz target: the bytes of a truth table through its reader; what is accepted must come back whole
// when it is written and read again.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>
#include <vector>

#include "simulation/truth_table.h"
#include "velto/velto.h"

namespace {

// Longer rows only cost time when their frames are laid out.
constexpr int kMostBases = 10'000;

std::string written(const std::vector<velto::TruthRow>& rows) {
  std::string text = velto::truthHeader(velto::Strands::kNamed);
  for (const velto::TruthRow& row : rows) text += velto::truthLine(row, velto::Strands::kNamed);
  return text;
}

std::vector<velto::TruthRow> readBack(const std::string& text) {
  std::istringstream in(text);
  return velto::readTruthTable(in, "truth");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  std::vector<velto::TruthRow> rows;
  try {
    rows = readBack(std::string(reinterpret_cast<const char*>(data), size));
  } catch (const velto::Error&) {
    return 0;
  }
  for (const velto::TruthRow& row : rows) {
    if (row.length <= kMostBases && row.frames().size() != static_cast<std::size_t>(row.length)) {
      std::abort();
    }
  }
  const std::string text = written(rows);
  if (written(readBack(text)) != text) std::abort();
  return 0;
}
