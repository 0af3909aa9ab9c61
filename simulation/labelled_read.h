// Reads with known truth: simulated, or read from a FASTA file and its truth table.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "model/read_class.h"
#include "simulation/read_sampling.h"
#include "simulation/truth_table.h"

namespace velto {

struct LabelledRead {
  TruthRow truth;
  std::string bases;  // letters, truth.length of them, along the transcript's strand
  std::vector<std::uint8_t> qualities;  // Phred value per base; empty: not known

  // Class by length and share of G and C, as the predictor sees it. Class of an empty read: 0 % GC.
  ReadClass readClass() const;
};

// All reads of the plan, in its order.
std::vector<LabelledRead> simulateLabelled(const ReadSampling& sampling,
                                           const std::vector<Transcript>& transcripts);

// The reads of a sequence file in its order, each with the row of its name. Throws InputError when
// a file cannot be read, a name stands twice, a read and a row do not belong together, or one is
// without the other.
std::vector<LabelledRead> loadLabelled(const std::string& readsPath, const std::string& truthPath);

}  // namespace velto
