// A decoder: a read in, a call out.
#pragma once

#include <memory>
#include <span>

#include "core/call.h"
#include "core/read_view.h"

namespace velto {

// What is wanted of a decoding beside the call itself.
struct Wishes {
  bool scores = false;  // scores per base and frame
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

  // Scratch for this decoder and those it calibrates.
  virtual std::unique_ptr<Scratch> scratch() const = 0;

  // Overwrites `call`. The read has at least one base.
  virtual void decode(const ReadView& read, const Wishes& wishes, Scratch& scratch,
                      Call& call) const = 0;

  // Decodes calls.size() reads; the calls are those of decode, one by one.
  virtual void decodeAll(std::span<const ReadView> reads, const Wishes& wishes, Scratch& scratch,
                         std::span<Call> calls) const {
    for (std::size_t i = 0; i < reads.size(); ++i) decode(reads[i], wishes, scratch, calls[i]);
  }

  // This decoder fitted to the file that the reads are a sample of; null: nothing to fit.
  virtual std::shared_ptr<const Decoder> calibrated(std::span<const ReadView> sample) const {
    static_cast<void>(sample);
    return nullptr;
  }
};

}  // namespace velto
