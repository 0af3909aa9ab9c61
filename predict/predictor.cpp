// Reads, any decoder: letters, strands and refusals.
#include <algorithm>
#include <climits>
#include <utility>

#include "core/decoder.h"
#include "core/in_turn.h"
#include "core/letter_codes.h"
#include "predict/decoder_table.h"
#include "velto/velto.h"

namespace velto {
namespace {

// One strand of a read as decoders take it.
struct CodedStrand {
  std::vector<short> codes;
  std::vector<std::uint8_t> phred;  // empty: none

  ReadView view() const { return {codes, phred}; }

  void code(const Read& read, Letters letters) {
    codeLetters(read.bases, letters, codes);
    phred.assign(read.qualities.begin(), read.qualities.end());
  }

  void turn() {
    reverseComplement(codes);
    std::reverse(phred.begin(), phred.end());
  }
};

void requireContract(const Read& read) {
  if (read.bases.size() > INT_MAX) throw Error("a read of more than 2147483647 bases");
  if (!read.qualities.empty() && read.qualities.size() != read.bases.size()) {
    throw std::invalid_argument("as many qualities as bases are needed");
  }
}

// Those of the reads that are predicted.
std::vector<Read> predictedOf(std::span<const Read> reads) {
  std::vector<Read> predicted;
  for (const Read& read : reads) {
    requireContract(read);
    if (read.bases.size() >= kLeastReadBases) predicted.push_back(read);
  }
  return predicted;
}

// One strand of each of some reads; reusable, so that memory is kept.
class StrandBatch {
 public:
  void clear() { used_ = 0; }

  // Adds the plus strand of a read for a decoder and fills what is known of the read without one.
  // False for a read that is not predicted, whose strand is left out.
  bool add(const Read& read, Letters letters, const Decoder& decoder, Prediction& prediction) {
    requireContract(read);
    prediction.length = static_cast<int>(read.bases.size());
    if (read.bases.empty()) return false;
    if (used_ == strands_.size()) strands_.emplace_back();
    CodedStrand& strand = strands_[used_];
    strand.code(read, letters);
    prediction.gcPercent = gcPercent(strand.codes);
    if (prediction.length < kLeastReadBases) {
      prediction.status = Prediction::Status::kShort;
      return false;
    }
    decoder.hideMisleading(strand.codes);
    ++used_;
    return true;
  }

  // Turns the strand added last, or all, into the other one.
  void turnLast() { strands_[used_ - 1].turn(); }
  void turn() {
    for (std::size_t i = 0; i < used_; ++i) strands_[i].turn();
  }

  // Decodes all strands; the calls are in the order of adding.
  void decode(const Decoder& decoder, const Wishes& wishes, Decoder::Scratch& scratch,
              std::vector<Call>& calls) const {
    calls.resize(used_);
    decoder.decodeAll(views(), wishes, scratch, calls);
  }

  std::vector<ReadView> views() const {
    std::vector<ReadView> views;
    for (std::size_t i = 0; i < used_; ++i) views.push_back(strands_[i].view());
    return views;
  }

 private:
  std::vector<CodedStrand> strands_;
  std::size_t used_ = 0;  // strands
};

void takeCall(Call& call, Prediction& prediction) {
  prediction.status = call.coding ? Prediction::Status::kCoding : Prediction::Status::kNoncoding;
  prediction.model = std::move(call.model);
  prediction.score = call.score;
  prediction.probability = call.probability;
  prediction.start = call.start;
  prediction.stop = call.stop;
  prediction.frameshifts = std::move(call.frameshifts);
  prediction.frame = std::move(call.frame);
  std::move(std::begin(call.scores), std::end(call.scores), prediction.scores);
}

// The decoder of this name, or the default one for an empty name.
const DecoderEntry& entryFor(const FileSource& files, const std::string& name) {
  const std::vector<const DecoderEntry*> entries = decodersOf(files);
  for (const DecoderEntry* entry : entries) {
    if (name.empty() || name == entry->name) return *entry;
  }
  throw ModelError("the model has no decoder '" + name + "'");
}

}  // namespace

const char* nameOf(Prediction::Status status) {
  switch (status) {
    case Prediction::Status::kCoding:
      return "coding";
    case Prediction::Status::kNoncoding:
      return "noncoding";
    case Prediction::Status::kShort:
      return "short";
    default:
      return "empty";
  }
}

struct Workspace::Impl {
  // Scratch for this decoder, made anew when another one comes.
  Decoder::Scratch& scratchFor(const std::shared_ptr<const Decoder>& decoder) {
    const bool isOwner = !owner.owner_before(decoder) && !decoder.owner_before(owner);
    if (scratch == nullptr || !isOwner) {
      scratch = decoder->scratch();
      owner = decoder;
    }
    return *scratch;
  }

  std::weak_ptr<const Decoder> owner;  // of the scratch
  std::unique_ptr<Decoder::Scratch> scratch;
  StrandBatch strands;
  std::vector<Call> calls, otherCalls;  // of the first strand and of the other one
};

Workspace::Workspace() : impl_(std::make_unique<Impl>()) {}
Workspace::~Workspace() = default;
Workspace::Workspace(Workspace&&) noexcept = default;
Workspace& Workspace::operator=(Workspace&&) noexcept = default;

struct Predictor::Impl {
  // Predicts as many reads as there are predictions, which are as constructed.
  void predict(std::span<const Read> reads, const PredictOptions& options, Workspace::Impl& space,
               std::span<Prediction> predictions) const;

  // Makes the calls those of the likelier strand of each read.
  void takeBetterStrands(Wishes wishes, Workspace::Impl& space,
                         std::span<Prediction* const> predicted) const;

  // Codes the strand asked for of reads that are predicted, the better one where both are; the
  // batches are in their order.
  std::vector<StrandBatch> strandsOf(std::span<const Read> predicted, const PredictOptions& options,
                                     const ParallelFor& parallel) const;
  void addStrands(std::span<const Read> predicted, const PredictOptions& options,
                  StrandBatch& batch) const;

  std::string name;  // of the decoder
  std::shared_ptr<const Decoder> decoder;
};

void Predictor::Impl::predict(std::span<const Read> reads, const PredictOptions& options,
                              Workspace::Impl& space, std::span<Prediction> predictions) const {
  const Strand first = options.strand == Strand::kMinus ? Strand::kMinus : Strand::kPlus;
  const Wishes wishes{options.wantScores, options.minProbability, {}};
  StrandBatch& strands = space.strands;
  strands.clear();
  std::vector<Prediction*> predicted;  // [strand]
  for (std::size_t i = 0; i < reads.size(); ++i) {
    predictions[i].strand = first;
    if (!strands.add(reads[i], options.letters, *decoder, predictions[i])) continue;
    predictions[i].decoder = name;
    predicted.push_back(&predictions[i]);
  }
  if (first == Strand::kMinus) strands.turn();
  strands.decode(*decoder, wishes, space.scratchFor(decoder), space.calls);
  if (options.strand == Strand::kBoth) takeBetterStrands(wishes, space, predicted);
  for (std::size_t i = 0; i < predicted.size(); ++i) takeCall(space.calls[i], *predicted[i]);
}

// One strand after the other, so that long reads need the memory of one.
void Predictor::Impl::takeBetterStrands(Wishes wishes, Workspace::Impl& space,
                                        std::span<Prediction* const> predicted) const {
  std::vector<double> scores;
  for (const Call& call : space.calls) scores.push_back(call.strandScore);
  wishes.strandScoresToBeat = scores;
  space.strands.turn();
  space.strands.decode(*decoder, wishes, space.scratchFor(decoder), space.otherCalls);
  for (std::size_t i = 0; i < predicted.size(); ++i) {
    Call &better = space.calls[i], &other = space.otherCalls[i];
    if (other.strandScore > better.strandScore) {
      predicted[i]->strand = Strand::kMinus;
      std::swap(better, other);
    }
    decoder->weighOtherStrand(other.strandScore, wishes, better);
  }
}

Predictor::Predictor(const Model& model, const std::string& decoder) {
  const DecoderEntry& entry = entryFor(*model.files_, decoder);
  impl_ = std::make_shared<const Impl>(Impl{entry.name, entry.load(*model.files_)});
}

Predictor::Predictor(const std::string& folder, const std::string& decoder)
    : Predictor(Model(folder), decoder) {}

Predictor::Predictor(std::shared_ptr<const Impl> impl) : impl_(std::move(impl)) {}

const std::string& Predictor::decoder() const { return impl_->name; }

Prediction Predictor::predict(std::string_view bases, Workspace& workspace,
                              const PredictOptions& options) const {
  return predict(bases, {}, workspace, options);
}

Prediction Predictor::predict(std::string_view bases, std::span<const std::uint8_t> qualities,
                              Workspace& workspace, const PredictOptions& options) const {
  const Read read{bases, qualities};
  Prediction prediction;
  impl_->predict({&read, 1}, options, *workspace.impl_, {&prediction, 1});
  return prediction;
}

std::vector<Prediction> Predictor::predictAll(std::span<const Read> reads, Workspace& workspace,
                                              const PredictOptions& options) const {
  std::vector<Prediction> predictions(reads.size());
  impl_->predict(reads, options, *workspace.impl_, predictions);
  return predictions;
}

bool Predictor::usesCalibration() const { return impl_->decoder->calibrated({}) != nullptr; }

std::vector<StrandBatch> Predictor::Impl::strandsOf(std::span<const Read> predicted,
                                                    const PredictOptions& options,
                                                    const ParallelFor& parallel) const {
  constexpr std::size_t kReadsAtOnce = 128;
  std::vector<StrandBatch> batches((predicted.size() + kReadsAtOnce - 1) / kReadsAtOnce);
  parallel(batches.size(), [&](std::size_t task) {
    const std::size_t first = task * kReadsAtOnce;
    const std::size_t count = std::min(kReadsAtOnce, predicted.size() - first);
    addStrands(predicted.subspan(first, count), options, batches[task]);
  });
  return batches;
}

void Predictor::Impl::addStrands(std::span<const Read> predicted, const PredictOptions& options,
                                 StrandBatch& batch) const {
  std::vector<Prediction> predictions(predicted.size());
  for (Prediction& prediction : predictions) prediction.strand = options.strand;
  if (options.strand == Strand::kBoth) {
    PredictOptions own = options;
    own.wantScores = false;
    Workspace::Impl space;
    predict(predicted, own, space, predictions);
  }
  for (std::size_t i = 0; i < predicted.size(); ++i) {
    batch.add(predicted[i], options.letters, *decoder, predictions[i]);
    if (predictions[i].strand == Strand::kMinus) batch.turnLast();
  }
}

// A read whose strand is not known is taken on the better one.
Calibration Predictor::learn(std::span<const Read> sample, const PredictOptions& options,
                             const Calibration& known, const ParallelFor& parallel) const {
  if (!usesCalibration()) return known;
  const ParallelFor run = parallel ? parallel : inTurn;
  const std::vector<Read> predicted = predictedOf(sample);
  const std::vector<std::size_t> chosen = impl_->decoder->readsLearntFrom(predicted.size());
  std::vector<Read> reads;
  for (const std::size_t i : chosen) reads.push_back(predicted[i]);
  std::vector<ReadView> views;
  for (const Read& read : predicted) views.push_back({{}, read.qualities});
  const std::vector<StrandBatch> batches = impl_->strandsOf(reads, options, run);
  auto next = chosen.begin();
  for (const StrandBatch& batch : batches) {
    for (const ReadView& view : batch.views()) views[*next++] = view;
  }
  return impl_->decoder->learn(views, known, run);
}

Predictor Predictor::calibrated(const Calibration& calibration) const {
  std::shared_ptr<const Decoder> decoder = impl_->decoder->calibrated(calibration);
  if (decoder == nullptr) return *this;
  return Predictor(std::make_shared<const Impl>(Impl{impl_->name, std::move(decoder)}));
}

}  // namespace velto
