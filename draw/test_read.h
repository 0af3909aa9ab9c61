// Reads with known predictions, for the tests of drawings.
#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "draw/drawn_read.h"

namespace velto::test {

struct KnownRead {
  std::string name;
  Prediction prediction;
  std::string letters;
  std::string protein;

  DrawnRead drawn() const { return {name, prediction, letters, protein, *geneticCode(1)}; }
};

// 60 bases of 'C' without scores; bases 6 to 50 code: in frame 0, from a lost base before base 20
// on in frame 2, from the inserted base 35 on in frame 0 again. The 45 bases make 45 - 1 + 1 of the
// corrected sequence, 15 codons, of which the fifth lost a base.
inline KnownRead codingRead() {
  KnownRead read{"known", {}, std::string(60, 'C'), "MPPPXPPPPPPPPP*"};
  Prediction& p = read.prediction;
  p.status = Prediction::Status::kCoding;
  p.length = 60;
  p.start = 6;
  p.stop = 50;
  p.frameshifts = {{Frameshift::Kind::kDeletion, 20, 0.934},
                   {Frameshift::Kind::kInsertion, 35, 0.2}};
  p.frame.assign(60, -1);
  std::fill(p.frame.begin() + 6, p.frame.begin() + 20, 0);
  std::fill(p.frame.begin() + 20, p.frame.begin() + 35, 2);
  std::fill(p.frame.begin() + 36, p.frame.begin() + 51, 0);
  return read;
}

inline KnownRead otherRead(Prediction::Status status, int length) {
  KnownRead read{"known", {}, std::string(static_cast<std::size_t>(length), 'C'), ""};
  read.prediction.status = status;
  read.prediction.length = length;
  return read;
}

// A coding read in frame 0 from end to end, with this score on all its bases.
inline KnownRead longRead(int length, double score, double probability) {
  KnownRead read = otherRead(Prediction::Status::kCoding, length);
  Prediction& p = read.prediction;
  p.probability = probability;
  p.start = 0;
  p.stop = length - 1;
  p.frame.assign(static_cast<std::size_t>(length), 0);
  for (auto& scores : p.scores) scores.assign(static_cast<std::size_t>(length), score);
  read.protein = std::string(static_cast<std::size_t>(length) / 3, 'P');
  return read;
}

}  // namespace velto::test
