// The posterior decoder: a hidden Markov model of single bases, read by forward and backward sums.
#pragma once

#include <memory>
#include <vector>

#include "core/decoder.h"
#include "core/file_source.h"
#include "hmm/base_rates.h"
#include "hmm/hmm_model.h"
#include "hmm/read_decision.h"

namespace velto {

// Score of a call: natural logarithm of the odds that the read codes, as the model itself sees
// them; the higher one of two strands is right. Probability: calibrated, and for the file's share
// of coding reads; where both strands are looked at, that of coding on this one. Scores: posterior
// of each frame times that probability. Confidence of a frameshift: posterior of such a shift
// within eight bases, given that the read codes.
class HmmDecoder : public Decoder {
 public:
  // Reads kHmmModelFile. Throws ModelError naming file, line and reason.
  explicit HmmDecoder(const FileSource& files);

  explicit HmmDecoder(std::shared_ptr<const HmmModel> model);

  std::unique_ptr<Scratch> scratch() const override;

  // Poly-A tails.
  void hideMisleading(std::span<short> codes) const override;

  void decode(const ReadView& read, const Wishes& wishes, Scratch& scratch,
              Call& call) const override;

  // Decodes reads of like length together where the build has vectors for it.
  void decodeAll(std::span<const ReadView> reads, const Wishes& wishes, Scratch& scratch,
                 std::span<Call> calls) const override;

  void weighOtherStrand(double otherStrandScore, const Wishes& wishes, Call& call) const override;

  std::vector<std::size_t> readsLearntFrom(std::size_t sampleSize) const override;

  // Learns error rates from up to 300 reads and the share of coding reads from up to 1000; too
  // few reads leave them unknown.
  Calibration learn(std::span<const ReadView> sample, const Calibration& known,
                    const ParallelFor& parallel) const override;

  // What is unknown has default values: those of a single read.
  std::shared_ptr<const Decoder> calibrated(const Calibration& calibration) const override;

 private:
  HmmDecoder fittedTo(const Calibration& calibration) const;

  // Learns the unknown shares of the calibration whose rates this decoder has.
  void learnShares(std::span<const ReadView> sample, Calibration& learnt,
                   const ParallelFor& parallel) const;

  // Sets all of the call but path and scores.
  void decide(const ReadEvidence& evidence, const Wishes& wishes, Call& call) const;

  // Fills the calls of a group of reads that were run in lanes.
  void callLanes(std::span<const std::size_t> group, const Wishes& wishes, Scratch& scratch,
                 std::span<Call> calls) const;

  // Of reads of one base or more, in their order.
  std::vector<ReadEvidence> evidenceOfAll(std::span<const ReadView> reads,
                                          const ParallelFor& parallel) const;

  std::shared_ptr<const HmmModel> trained_;
  std::shared_ptr<const HmmModel> model_;  // the trained one, its weights for the file's reads
  FileRates rates_;
  double codingShare_;
};

}  // namespace velto
