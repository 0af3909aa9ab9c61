// Counts of 5-mers, start and stop codons of known transcripts, and the tables made of them.
#pragma once

#include <array>
#include <vector>

#include "hmm/hmm_model.h"
#include "simulation/transcript.h"

namespace velto {

// Shares of G and C in steps of 2 % from 24 %, of the composition around each base.
constexpr int kGcBins = 26;

// Counts of transcripts. Bases with an unknown base among the four before them, and those of start
// and stop codons, are left out of the 5-mers.
class TranscriptCounts {
 public:
  TranscriptCounts();
  void add(const Transcript& transcript);
  TranscriptCounts& operator+=(const TranscriptCounts& other);

  // Sets emissions, kozak and stopShare of the model. Depends on the counts alone.
  void fillTables(HmmModel& model) const;

 private:
  void addEnds(const Transcript& transcript);
  void fillEmissions(HmmModel& model) const;
  void fillKozak(HmmModel& model) const;
  std::vector<double> pooled(int kind) const;
  std::vector<double> ofGcClass(int kind, int gcClass) const;

  std::vector<double> fiveMers_;  // [EmissionKind][bin of G and C][5-mer]
  std::array<std::array<double, 4>, kKozakPlaces> kozak_{};  // [place][base code]
  std::array<double, kStopCodons> stops_{};                  // TAA, TAG, TGA
};

// What kind of base stands at a place outside start and stop codon; -1 inside them.
int emissionKindAt(const Transcript& transcript, int place);

}  // namespace velto
