// The scores of codon steps as they are shown base by base.
#pragma once

#include <vector>

namespace velto {

// For each base of a read of `length` bases the score of the codon that covers it in `frame`, from
// the scores of the frame's codon steps; 0 where there is none. The first three bases show the
// first codons as they begin; from the last whole frame-0 codon on each base shows one codon
// further back, so that the last scores are repeated.
std::vector<double> baseScores(const std::vector<double>& stepScores, int frame, int length);

}  // namespace velto
