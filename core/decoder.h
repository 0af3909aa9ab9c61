// A decoder: a read in, a call out.
#pragma once

#include <memory>
#include <span>
#include <vector>

#include "core/call.h"
#include "core/read_view.h"
#include "velto/velto.h"

namespace velto {

// What is wanted of a decoding.
struct Wishes {
  bool scores = false;  // fill Call::scores
  // Least probability of a read that is called coding; NaN: the decoder's own threshold.
  double minProbability = std::numeric_limits<double>::quiet_NaN();
  // [read] of decodeAll: of a read whose strand score is not above this one nothing but that score
  // matters. Empty: all of every call is wanted.
  std::span<const double> strandScoresToBeat{};
};

// Constant after construction; any number of threads may use one, each with scratch of its own.
class Decoder {
 public:
  // Memory kept from read to read, for one thread at a time.
  class Scratch {
   public:
    virtual ~Scratch() = default;
  };

  virtual ~Decoder() = default;

  // Scratch for this decoder.
  virtual std::unique_ptr<Scratch> scratch() const = 0;

  // Makes those bases of a read unknown that would mislead this decoder, the same ones on either
  // strand. Whoever has reads decoded, or learnt from, calls it first.
  virtual void hideMisleading(std::span<short> codes) const { static_cast<void>(codes); }

  // Overwrites `call`. The read has at least one base.
  virtual void decode(const ReadView& read, const Wishes& wishes, Scratch& scratch,
                      Call& call) const = 0;

  // Decodes calls.size() reads; the calls are those of decode, one by one.
  virtual void decodeAll(std::span<const ReadView> reads, const Wishes& wishes, Scratch& scratch,
                         std::span<Call> calls) const {
    for (std::size_t i = 0; i < reads.size(); ++i) decode(reads[i], wishes, scratch, calls[i]);
  }

  // Turns the call of the strand with the higher strand score, decoded with these wishes, into that
  // of a read of which the other strand was decoded too and has this strand score: a read that may
  // as well code on the other strand codes on this one with a smaller probability.
  virtual void weighOtherStrand(double otherStrandScore, const Wishes& wishes, Call& call) const {
    static_cast<void>(otherStrandScore);
    static_cast<void>(wishes);
    static_cast<void>(call);
  }

  // Ascending indexes of the reads that learn() looks at, of a sample of so many. Of others it
  // takes no more than how many they are and their qualities, in whatever direction.
  virtual std::vector<std::size_t> readsLearntFrom(std::size_t sampleSize) const {
    static_cast<void>(sampleSize);
    return {};
  }

  // What this decoder learns of the file that the reads are a sample of; what is known is kept.
  // The result is the same however its parts are run.
  virtual Calibration learn(std::span<const ReadView> sample, const Calibration& known,
                            const ParallelFor& parallel) const {
    static_cast<void>(sample);
    static_cast<void>(parallel);
    return known;
  }

  // This decoder for reads of a file of which this is known; null: it makes no use of it.
  virtual std::shared_ptr<const Decoder> calibrated(const Calibration& calibration) const {
    static_cast<void>(calibration);
    return nullptr;
  }
};

}  // namespace velto
