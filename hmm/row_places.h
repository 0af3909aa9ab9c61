// Where in the window network the rows of a read's k-mers begin.
#pragma once

#include <vector>

#include "hmm/read_context.h"

namespace velto {

// Room for the farthest offsets stands on either side, all unknown k-mers.
class RowPlaces {
 public:
  // Of the k-mers of a read, behind `before` bases that are unknown as well.
  void fill(const WindowNetwork& network, const ReadContext& context, std::size_t before) {
    const int stride = static_cast<int>(network.rowStride());
    const int unknown = network.unknownKmer() * stride;
    places_.assign(before + context.length() + 2 * kMostOffset, unknown);
    int* out = places_.data() + kMostOffset + before;
    for (std::size_t i = 0; i < context.length(); ++i) {
      const int kmer = context.kmer(i, network.letters);
      out[i] = kmer < 0 ? unknown : kmer * stride;
    }
  }

  // Of base i, counted from the first of those before: [offset] place in the rows of that offset.
  const int* at(std::size_t i) const { return places_.data() + kMostOffset + i; }

 private:
  std::vector<int> places_;
};

}  // namespace velto
