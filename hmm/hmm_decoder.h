// The posterior decoder: a hidden Markov model of single bases, read by forward and backward sums.
#pragma once

#include <memory>
#include <optional>

#include "core/decoder.h"
#include "hmm/base_rates.h"
#include "hmm/hmm_model.h"
#include "hmm/read_decision.h"

namespace velto {

// What a user may set.
struct HmmOptions {
  double minProbability = kMinProbability;  // of a read that is called coding
  std::optional<BaseRates> errorRates;      // mean rates; nothing: learnt from the file
  std::optional<double> codingShare;        // share of coding reads; nothing: learnt from the file
  bool useQualities = true;
};

// Score of a call: natural logarithm of the odds that the read codes, as the model itself sees
// them; the higher one of two strands is right. Probability: calibrated, and for this file's share
// of coding reads. Confidence of a frameshift: posterior of such a shift within eight bases, given
// that the read codes.
class HmmDecoder : public Decoder {
 public:
  explicit HmmDecoder(std::shared_ptr<const HmmModel> model, HmmOptions options = {});

  std::unique_ptr<Scratch> scratch() const override;
  void decode(const ReadView& read, const Wishes& wishes, Scratch& scratch,
              Call& call) const override;

  // Decodes reads of like length together where the build has vectors for it.
  void decodeAll(std::span<const ReadView> reads, const Wishes& wishes, Scratch& scratch,
                 std::span<Call> calls) const override;

  // This decoder with error rates learnt from the sample, and from up to 1000 reads the share of
  // coding reads.
  std::shared_ptr<const Decoder> fitted(std::span<const ReadView> sample) const;

  const FileRates& rates() const { return rates_; }
  double codingShare() const { return codingShare_; }

 private:
  double learnShare(std::span<const ReadView> sample) const;

  // Sets all of the call but the path; true if a path is wanted.
  bool decide(const ReadEvidence& evidence, Call& call) const;

  std::shared_ptr<const HmmModel> model_;
  HmmOptions options_;
  FileRates rates_;
  double codingShare_;
};

}  // namespace velto
