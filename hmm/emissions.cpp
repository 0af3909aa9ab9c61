#include "hmm/emissions.h"

#include <algorithm>

#include "core/base_code.h"

namespace velto {
namespace {

constexpr short kStartCodon[3] = {0, 1, 2};
constexpr short kStops[kStopCodons][3] = {{1, 0, 0}, {1, 0, 2}, {1, 2, 0}};

// Bases i to i + 2 lie in the read and are known.
bool isCodon(std::span<const short> codes, int i) {
  if (i + 3 > static_cast<int>(codes.size())) return false;
  const short* codon = codes.data() + i;
  return isKnownBase(codon[0]) && isKnownBase(codon[1]) && isKnownBase(codon[2]);
}

int mismatches(const short* codon, const short (&expected)[3]) {
  return (codon[0] != expected[0]) + (codon[1] != expected[1]) + (codon[2] != expected[2]);
}

// Probability of a codon that was read with so many wrong bases.
float codonProbability(int wrong, float substitution) {
  const float right = 1.0f - substitution, other = substitution / 3.0f;
  float product = 1.0f;
  for (int j = 0; j < 3; ++j) product *= j < wrong ? other : right;
  return product;
}

float kozakRatio(const HmmModel& model, std::span<const short> codes, int i) {
  const int first = std::max(0, kKozakLeft - i);
  const int last = std::min(kKozakPlaces, static_cast<int>(codes.size()) - i + kKozakLeft - 3);
  float product = 1.0f;
  for (int place = first; place < last; ++place) {
    const int code = codes[static_cast<std::size_t>(i + kozakOffset(place))];
    if (!isKnownBase(code)) continue;
    product *= model.kozak[static_cast<std::size_t>(place)][static_cast<std::size_t>(code)];
  }
  return product;
}

constexpr int kFirstKozakPlaces = 5;  // as many as the bases of a 5-mer

// Probability that a start codon is read as this one; 0 for two wrong bases or more.
float codonStartProbability(const short* codon, float substitution) {
  const int wrong = mismatches(codon, kStartCodon);
  return wrong > 1 ? 0.0f : codonProbability(wrong, substitution);
}

// A substitution is a mixture, not a state: a base that does not fit may be a wrong one. The base
// of a kind with probability p and factor f is emitted with right p f + (1 - p) wrong.
struct Mixture {
  EmissionRow right, wrong;  // [EmissionKind]; of kinds that do not code 1 and 0

  explicit Mixture(float substitution) {
    right.fill(1.0f);
    wrong.fill(0.0f);
    for (std::size_t phase = 0; phase < 3; ++phase) {
      right[phase] = 1.0f - substitution;
      wrong[phase] = substitution / 3.0f;
    }
  }
};

EmissionRow mixed(const EmissionRow& probability, const Factors& factor, const Mixture& mixture) {
  EmissionRow kinds;
  for (std::size_t k = 0; k < kinds.size(); ++k) {
    kinds[k] =
        mixture.right[k] * probability[k] * factor[k] + (1.0f - probability[k]) * mixture.wrong[k];
  }
  return kinds;
}

}  // namespace

float errorFreeShare(const EmissionRow& row, int phase, float factor, float substitution) {
  const float probability = row[static_cast<std::size_t>(phase)];
  const float right = (1.0f - substitution) * probability * factor;
  return right / (right + (1.0f - probability) * (substitution / 3.0f));
}

CodonWeights::CodonWeights(const HmmModel& model, const PathWeights& weights, const BaseRates& mean)
    : model_(model), weights_(weights), contextShare_{1.0f, 1.0f, afterStartShare(mean)} {
  for (std::size_t c = 0; c < kCodons; ++c) {
    const short codon[] = {static_cast<short>(c / 16), static_cast<short>(c / 4 % 4),
                           static_cast<short>(c % 4)};
    start_[c] = codonStartProbability(codon, mean.substitution);
    stop_[c] = stopWeight(model, weights, codon, 0, mean.substitution);
  }
  for (std::size_t fiveMer = 0; fiveMer < firstKozak_.size(); ++fiveMer) {
    float product = 1.0f;
    for (std::size_t place = 0; place < kFirstKozakPlaces; ++place) {
      product *= model.kozak[place][fiveMer >> (2 * (kFirstKozakPlaces - 1 - place)) & 3];
    }
    firstKozak_[fiveMer] = product;
  }
}

// kozakRatio, with the first places at once where all bases are known.
float CodonWeights::kozakRatioAt(std::span<const short> codes, const ReadContext& context,
                                 std::size_t i) const {
  const auto& run = context.knownRun;
  const bool inside = i >= kKozakLeft && i + 3 + kKozakRight <= codes.size();
  if (!inside || run[i - 5] < 5 || run[i - 1] < 4 || run[i + 5] < 3) {
    return kozakRatio(model_, codes, static_cast<int>(i));
  }
  float product = firstKozak_[context.fiveMers[i - 5]];
  for (int place = kFirstKozakPlaces; place < kKozakPlaces; ++place) {
    const int code = codes[i + static_cast<std::size_t>(kozakOffset(place))];
    product *= model_.kozak[static_cast<std::size_t>(place)][static_cast<std::size_t>(code)];
  }
  return product;
}

float CodonWeights::startWithKozak(std::span<const short> codes, const ReadContext& context,
                                   std::size_t i, float probability) const {
  const StartContext before = context.starts[i];
  return weights_.start[before] * probability * kozakRatioAt(codes, context, i) *
         contextShare_[before];
}

float afterStartShare(const BaseRates& rates) {
  // One in 100 human coding regions begins behind an ATG of its frame, but there are several such
  // places, and the learnt weight is some three times that of other start codons.
  constexpr float kErrorFree = 0.001f;
  constexpr float kOtherFrame = 0.25f;   // in another frame of a 5' UTR
  constexpr float kOpenStretch = 40.0f;  // bases between start codon and the stop codon before it
  const float shifts = kOpenStretch * (rates.insertion + rates.deletion);
  return kErrorFree + kOtherFrame * (shifts / (1.0f + shifts));
}

float startWeight(const HmmModel& model, const PathWeights& weights, std::span<const short> codes,
                  int i, StartContext context, float substitution) {
  if (!isCodon(codes, i)) return 0.0f;
  return weights.start[context] * codonStartProbability(codes.data() + i, substitution) *
         kozakRatio(model, codes, i);
}

float stopWeight(const HmmModel& model, const PathWeights& weights, std::span<const short> codes,
                 int i, float substitution) {
  if (!isCodon(codes, i)) return 0.0f;
  float sum = 0.0f;
  for (std::size_t stop = 0; stop < kStopCodons; ++stop) {
    const int wrong = mismatches(codes.data() + i, kStops[stop]);
    sum += model.stopShare[stop] * codonProbability(wrong, substitution);
  }
  return weights.stop * sum;
}

void emit(const HmmModel& model, const PathWeights& weights, const ReadView& read,
          const FileRates& rates, const ReadContext& context, std::span<const Factors> factors,
          std::vector<BaseEmission>& emissions) {
  constexpr Factors kNeutral = {1, 1, 1, 1, 1, 1, 1, 1};
  const std::size_t length = read.codes.size();
  emissions.resize(length);
  const CodonWeights codons(model, weights, rates.mean);
  Mixture mixture(rates.mean.substitution);
  int gcClass = 0;
  for (std::size_t i = 0; i < length; ++i) {
    if (i % kCompositionBlock == 0) gcClass = context.blocks[i / kCompositionBlock].gcClass();
    const Factors& factor = factors.empty() ? kNeutral : factors[i];
    const BaseRates base = rates.at(read.phred, i);
    if (rates.byQuality) mixture = Mixture(base.substitution);
    BaseEmission& out = emissions[i];
    const bool known = isKnownBase(read.codes[i]);
    if (known) {
      out.kind = mixed(model.emission(gcClass, context.fiveMers[i]), factor, mixture);
    } else {
      out.kind = context.isInGap(i) ? kNeutral : factor;
    }
    out.start = codons.start(read.codes, context, i);
    out.stop = codons.stop(context, i);
    out.insertion = known ? 0.25f * base.insertion : base.insertion;
    out.deletion = base.deletion;
    out.stay = 1.0f - base.insertion - base.deletion;
  }
}

}  // namespace velto
