// A prediction in plain words.
#pragma once

#include <string>
#include <vector>

#include "draw/drawn_read.h"

namespace velto {

// What was found, in one sentence: "Bases 91 to 702 code for a protein of 203 amino acids; one base
// is missing before 297 and one is extra at 522." Positions count from 1.
std::string callSentence(const DrawnRead& read);

// What else is to be known of the call: strand, probability, stop codons inside the protein. One
// sentence each, perhaps none.
std::vector<std::string> furtherSentences(const DrawnRead& read);

// "One base is missing before 297, confidence 93 %."
std::string shiftSentence(const Frameshift& shift);

// 0 to 1 in percent: "93 %"; "under 1 %" and "over 99 %" instead of a rounded 0 and 100.
std::string percentText(double share);

// Amino acids of the protein, without the stop at its end.
std::size_t aminoAcids(std::string_view protein);

}  // namespace velto
