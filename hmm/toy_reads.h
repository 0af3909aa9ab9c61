// Reads drawn from the toy model for tests.
#pragma once

#include <cstdint>
#include <vector>

#include "core/random.h"
#include "core/read_view.h"
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
  };

  void addCoding(int codons, const Errors& errors) {
    begin();
    for (int i = 0; i < 3 * codons; ++i) {
      const bool doubtful = random_.real() < errors.doubtful;
      const std::uint8_t quality = doubtful ? errors.low : errors.high;
      const double scale = doubtful ? 1.0 / errors.doubtful : 0.0;
      if (random_.real() < scale * errors.deletion) ++i;
      if (random_.real() < scale * errors.insertion)
        add(static_cast<short>(random_.below(4)), quality);
      add(preferred(i % 3), quality);
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

  short preferred(int phase) {
    if (random_.real() < 0.6) return static_cast<short>(phase);  // and 0.1 of the even ones
    return static_cast<short>(random_.below(4));
  }

  Random random_;
  std::vector<std::vector<short>> codes_;
  std::vector<std::vector<std::uint8_t>> phred_;
};

}  // namespace velto
