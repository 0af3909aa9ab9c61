// The counts of one window in one reading frame, and the counting of a codon into them.
#pragma once

#include "model/model_tables.h"
#include "model/read_data.h"

namespace velto {

// Sample of one window on the prediction path. The names and the order of the fields are fixed.
struct smplTestData {
  int label = -1;                // class if known; -1 unknown; not read by the vote
  int start = 0;                 // first base of the window, 0-based
  int end = 0;                   // end - start is the window length in bases that the vote uses
  short codonCnt[4][4][4] = {};  // codons, [first][second][third] base code
  short pairAcidCnt[kPairGaps][kAminoAcids][kAminoAcids] = {};  // pairs, [gap][first][second]
  short snglAcidCnt[kAminoAcids] = {};                          // codons of each amino acid
  short pairAcidSnglCnt[kPairGaps][2][kAminoAcids] = {};  // [gap][0 first, 1 second member][acid]
  short mark1 = -1;                                       // not read by the vote
  short mark2 = -1;                                       // not read by the vote
};

// Sample of one window on the training side: the same counts in another order.
struct smplData {
  int label = -1;
  int start = 0;
  int end = 0;
  short codonCnt[4][4][4] = {};
  short pairAcidCnt[kPairGaps][kAminoAcids][kAminoAcids] = {};
  short pairAcidSnglCnt[kPairGaps][2][kAminoAcids] = {};
  short snglAcidCnt[kAminoAcids] = {};
};

// Amino acid of the codon that begins at base p of a read of `length` base codes; -1 if a base is
// unknown or the codon does not lie inside the read.
inline int acidAt(const short* seq, int length, int p) {
  if (p < 0 || p + 2 >= length) return kNoAminoAcid;
  return ReadData::CodonTable(seq[p], seq[p + 1], seq[p + 2]);
}

// Counts the codon at base p: the codon, its amino acid, and its pairs with the amino acids 1 to 4
// codons further on, which may lie behind the window. A codon with an unknown base counts nothing.
// Returns its amino acid or -1.
template <typename Sample>
int countCodon(Sample& sample, const short* seq, int length, int p) {
  const int acid = acidAt(seq, length, p);
  if (acid == kNoAminoAcid) return acid;
  ++sample.snglAcidCnt[acid];
  ++sample.codonCnt[seq[p]][seq[p + 1]][seq[p + 2]];
  for (int gap = 0; gap < kPairGaps; ++gap) {
    const int partner = acidAt(seq, length, p + 3 + 3 * gap);
    if (partner == kNoAminoAcid) continue;
    ++sample.pairAcidSnglCnt[gap][0][acid];
    ++sample.pairAcidCnt[gap][acid][partner];
    ++sample.pairAcidSnglCnt[gap][1][partner];
  }
  return acid;
}

}  // namespace velto
