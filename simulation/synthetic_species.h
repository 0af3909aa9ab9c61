// Transcripts of an invented species for tests: coding regions without the base C in third places.
#pragma once

#include <string>
#include <vector>

#include "core/random.h"
#include "model/read_data.h"
#include "simulation/transcript.h"

namespace velto {

class SyntheticSpecies {
 public:
  // `count` coding and as many non-coding transcripts of `length` bases and of `gcPercent` roughly.
  void add(int count, int length, int gcPercent) {
    for (int i = 0; i < count; ++i) {
      coding.push_back(transcript(length, gcPercent, true));
      noncoding.push_back(transcript(length, gcPercent, false));
    }
  }

  std::vector<Transcript> coding;
  std::vector<Transcript> noncoding;

 private:
  short drawBase(int gcPercent) {
    const bool gc = static_cast<int>(random_.below(100)) < gcPercent;
    return static_cast<short>((gc ? 2 : 0) + static_cast<int>(random_.below(2)));
  }

  Transcript transcript(int length, int gcPercent, bool withRegion) {
    Transcript t;
    t.name = "t" + std::to_string(next_);
    t.group = "chr" + std::to_string(next_++ % 15);
    for (int i = 0; i < length; ++i) t.bases.push_back(drawBase(gcPercent));
    if (withRegion) placeRegion(t, gcPercent);
    return t;
  }

  // The middle half becomes a coding region.
  void placeRegion(Transcript& t, int gcPercent) {
    const int codons = t.length() / 6;
    t.cdsStart = t.length() / 4;
    t.cdsStop = t.cdsStart + 3 * codons - 1;
    const short start[] = {0, 1, 2}, stop[] = {1, 0, 0};
    for (int k = 0; k < codons; ++k) {
      short* codon = t.bases.data() + t.cdsStart + 3 * k;
      do {
        for (int j = 0; j < 3; ++j) codon[j] = drawBase(gcPercent);
        if (codon[2] == 3) codon[2] = 2;
      } while (ReadData::CodonTable(codon[0], codon[1], codon[2]) == kStopSignal);
      for (int j = 0; j < 3 && k == 0; ++j) codon[j] = start[j];
      for (int j = 0; j < 3 && k == codons - 1; ++j) codon[j] = stop[j];
    }
  }

  Random random_{20240611};
  int next_ = 0;
};

}  // namespace velto
