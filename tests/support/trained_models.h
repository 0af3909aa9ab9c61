// A made-up species: reads with coding regions and errors, and models that tell coding from not.
#pragma once

#include <array>
#include <string>

#include "model/model_tables.h"
#include "tests/support/models.h"

namespace velto::test {

// How the priors of a model are written: with rates of the two amino acids of a pair that follow
// their counts in the window, or that hardly move with them.
enum class PriorForm { kFollowCounts, kNearlyConstant };

// Codon usage drawn at random; the reads and models of one object belong together.
class MadeUpSpecies {
 public:
  explicit MadeUpSpecies(Random& random);

  // A read of about `length` letters: untranslated ends, a coding region from ATG to a stop codon,
  // and lost, inserted and unknown bases at these rates per base.
  std::string read(Random& random, int length, double indels, double unknown = 0.002) const;

  // 500 hypotheses (40 % codons, 15 % single amino acids, 45 % pairs), their cuts and directions
  // taken from windows of coding and other sequence; weights are whole millionths, or one of
  // `weights` tenths if that is above 0, so that many sums are equal; a matrix that finds coding
  // regions.
  ModelTables model(Random& random, PriorForm form, int windowWidth, int weights = 0) const;

  // Writes a model of its own for each of the sixteen read classes.
  void writeModels(Random& random, PriorForm form, const std::string& directory,
                   int weights = 0) const;

 private:
  std::string codon(Random& random) const;

  std::array<double, 64> upTo_;  // cumulated usage of the codons that are no stop
};

}  // namespace velto::test
