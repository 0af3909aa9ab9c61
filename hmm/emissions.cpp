#include "hmm/emissions.h"

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
  float product = 1.0f;
  for (int place = 0; place < kKozakPlaces; ++place) {
    const int at = i + kozakOffset(place);
    if (at < 0 || at >= static_cast<int>(codes.size())) continue;
    const int code = codes[static_cast<std::size_t>(at)];
    if (!isKnownBase(code)) continue;
    product *= model.kozak[static_cast<std::size_t>(place)][static_cast<std::size_t>(code)];
  }
  return product;
}

// Probability that a start codon is read as this one; 0 for two wrong bases or more.
float codonStartProbability(const short* codon, float substitution) {
  const int wrong = mismatches(codon, kStartCodon);
  return wrong > 1 ? 0.0f : codonProbability(wrong, substitution);
}

// What a start or stop codon that is read as a given one weighs.
struct CodonWeights {
  std::array<float, 64> start, stop;  // [16 x first + 4 x second + third base code]; start:
                                      // probability, stop: weight
};

CodonWeights weighCodons(const HmmModel& model, const PathWeights& weights, float substitution) {
  CodonWeights codons;
  for (std::size_t c = 0; c < codons.start.size(); ++c) {
    const short codon[] = {static_cast<short>(c / 16), static_cast<short>(c / 4 % 4),
                           static_cast<short>(c % 4)};
    codons.start[c] = codonStartProbability(codon, substitution);
    codons.stop[c] = stopWeight(model, weights, codon, 0, substitution);
  }
  return codons;
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

void indexContexts(std::span<const short> codes, std::vector<int>& fiveMers) {
  fiveMers.resize(codes.size());
  int fiveMer = 0;
  for (std::size_t i = 0; i < codes.size(); ++i) {
    const int code = isKnownBase(codes[i]) ? codes[i] : static_cast<int>((7 * i + 3) % 4);
    fiveMer = ((fiveMer << 2) | code) & (kFiveMers - 1);
    fiveMers[i] = fiveMer;
  }
}

void indexStartContexts(std::span<const short> codes, std::vector<StartContext>& contexts) {
  contexts.resize(codes.size());
  for (std::size_t i = 0; i < codes.size(); ++i) {
    contexts[i] = i < 3 ? kOpenFrame : contexts[i - 3];
    if (i < 3 || !isCodon(codes, static_cast<int>(i) - 3)) continue;
    const short* before = codes.data() + i - 3;
    if (mismatches(before, kStartCodon) == 0) contexts[i] = kAfterStart;
    for (const auto& stop : kStops) {
      if (mismatches(before, stop) == 0) contexts[i] = kAfterStop;
    }
  }
}

float afterStartShare(const BaseRates& rates) {
  constexpr float kErrorFree = 0.01f;    // in mRNAs
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
          const FileRates& rates, std::span<const int> fiveMers,
          std::span<const StartContext> contexts, std::span<const Composition> blocks,
          std::span<const Factors> factors, std::vector<BaseEmission>& emissions) {
  constexpr Factors kNeutral = {1, 1, 1, 1, 1, 1, 1, 1};
  const std::size_t length = read.codes.size();
  emissions.resize(length);
  const CodonWeights codons = weighCodons(model, weights, rates.mean.substitution);
  const std::array<float, kStartContexts> contextShare = {1.0f, 1.0f, afterStartShare(rates.mean)};
  Mixture mixture(rates.mean.substitution);
  int gcClass = 0;
  for (std::size_t i = 0; i < length; ++i) {
    if (i % kCompositionBlock == 0) gcClass = blocks[i / kCompositionBlock].gcClass();
    const Factors& factor = factors.empty() ? kNeutral : factors[i];
    const BaseRates base = rates.at(read.phred, i);
    if (rates.byQuality) mixture = Mixture(base.substitution);
    BaseEmission& out = emissions[i];
    const bool known = isKnownBase(read.codes[i]);
    out.kind = known ? mixed(model.emission(gcClass, fiveMers[i]), factor, mixture) : factor;
    out.start = out.stop = 0.0f;
    if (isCodon(read.codes, static_cast<int>(i))) {
      const auto codon = static_cast<std::size_t>(fiveMers[i + 2] % 64);
      out.stop = codons.stop[codon];
      if (codons.start[codon] > 0.0f) {
        out.start = weights.start[contexts[i]] * codons.start[codon] *
                    kozakRatio(model, read.codes, static_cast<int>(i)) * contextShare[contexts[i]];
      }
    }
    out.insertion = known ? 0.25f * base.insertion : base.insertion;
    out.deletion = base.deletion;
    out.stay = 1.0f - base.insertion - base.deletion;
  }
}

}  // namespace velto
