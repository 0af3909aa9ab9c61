// Reads drawn from the toy model for tests.
#pragma once

#include <cstdint>
#include <vector>

#include "core/random.h"
#include "core/read_view.h"
#include "hmm/read_context.h"
#include "hmm/toy_model.h"

namespace velto {

// Reads with qualities; views() holds as long as the object does.
class ToyReads {
 public:
  explicit ToyReads(std::uint64_t seed) : random_(seed) {}

  // A read of coding bases; a share `doubtful` of its bases has quality `low`, the others `high`,
  // and only the doubtful ones are inserted or follow a lost base, `factor` times as often.
  struct Errors {
    double insertion = 0.0, deletion = 0.0;  // mean rates
    double doubtful = 1.0;
    std::uint8_t low = 10, high = 10;
    double substitution = 0.0;  // of all bases alike
  };

  void addCoding(int codons, const Errors& errors) {
    begin();
    std::vector<short> region;
    for (int codon = 0; codon < codons; ++codon) addCodon(region);
    for (std::size_t i = 0; i < region.size(); ++i) {
      const bool doubtful = random_.real() < errors.doubtful;
      const std::uint8_t quality = doubtful ? errors.low : errors.high;
      const double scale = doubtful ? 1.0 / errors.doubtful : 0.0;
      if (random_.real() < scale * errors.deletion && i + 1 < region.size()) ++i;
      if (random_.real() < scale * errors.insertion)
        add(static_cast<short>(random_.below(4)), quality);
      const bool wrong = random_.real() < errors.substitution;
      add(wrong ? static_cast<short>((region[i] + 1 + static_cast<int>(random_.below(3))) % 4)
                : region[i],
          quality);
    }
  }

  void addEven(int bases) {
    begin();
    for (int i = 0; i < bases; ++i) add(static_cast<short>(random_.below(4)), 10);
  }

  std::vector<ReadView> views(bool withQualities = false) const {
    std::vector<ReadView> views;
    for (std::size_t r = 0; r < codes_.size(); ++r) {
      views.push_back({codes_[r], {}});
      if (withQualities) views.back().phred = phred_[r];
    }
    return views;
  }

 private:
  void begin() {
    codes_.emplace_back();
    phred_.emplace_back();
  }

  void add(short code, std::uint8_t quality) {
    codes_.back().push_back(code);
    phred_.back().push_back(quality);
  }

  // Any but a stop codon.
  void addCodon(std::vector<short>& region) {
    short codon[3];
    do {
      for (int phase = 0; phase < 3; ++phase) codon[phase] = preferred(phase);
    } while (isStopCodon(static_cast<CodonIndex>(codonIndex(codon[0], codon[1], codon[2]))));
    region.insert(region.end(), codon, codon + 3);
  }

  short preferred(int phase) {
    if (random_.real() < 0.6) return static_cast<short>(phase);  // and 0.1 of the even ones
    return static_cast<short>(random_.below(4));
  }

  Random random_;
  std::vector<std::vector<short>> codes_;
  std::vector<std::vector<std::uint8_t>> phred_;
};

}  // namespace velto
