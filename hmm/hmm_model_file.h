// The posterior decoder's model as text: written, and read back strictly.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "hmm/hmm_model.h"

namespace velto {

// Name of the file within a model directory.
constexpr const char* kHmmModelFile = "hmm/posterior.txt";

// No file has more: the rows of the largest network take 26 MB.
constexpr std::size_t kMostHmmModelBytes = std::size_t{1} << 25;

// What is wrong with a model file: the first such line.
struct HmmFileStatus {
  int line = 0;        // 1-based; 0 when the file is regular
  std::string reason;  // empty when the file is regular

  bool regular() const { return line == 0; }
};

// Reads a whole file. Every line, word and whole number must be as hmmModelText writes them, real
// numbers may have more digits, and all must lie within the bounds that decoding relies on; `model`
// is to be used only when the file is regular.
HmmFileStatus readHmmModel(std::string_view text, HmmModel& model);

// The text of a model. Numbers are separated by single blanks, lines end with a line feed:
//
//   VELTO posterior model 4
//   weights START-OPEN START-AFTER-STOP START-AFTER-START STOP STAY-UTR5 BEGIN-CODING BEGIN-UTR5
//   BEGIN-NONCODING BEGIN-UTR3 BEGIN-START
//   truncated-share SHARE                  of the coding reads that the weights are for
//   decision CONSTANT LOG-ODDS CODING-BASES CODING-SHARE
//   strand LOG-ODDS LOG-LIKELIHOOD CONSTANT CALLED-LOG-ODDS CALLED-CODING-BASES
//   stops TAA TAG TGA                      shares in millionths, as all numbers up to the network's
//   kozak                                  twelve lines: ratios of A T G C at -9 to -1, +4 to +6
//   emissions                              4 classes of G and C x 1024 5-mers, the last base
//                                          fastest, in the order A T G C: probabilities of the last
//                                          base behind the four before it, in codon phase 0, 1, 2,
//                                          5' UTR, 3' UTR and non-coding transcript
//   network LETTERS UNITS OFFSETS          sizes
//   offsets O...                           of the k-mers' last bases
//   scale S                                of the outputs, in binary logarithms a step
//   output-bias B0 ... B5                  in binary logarithms
//   bias                                   4 lines, one a class of G and C; a column a unit
//   dinucleotides                          16 lines
//   outputs                                6 lines, kinds of bases as above
//   rows                                   a line for each offset and k-mer, the last base fastest
//   end
std::string hmmModelText(const HmmModel& model);

}  // namespace velto
