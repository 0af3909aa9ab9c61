#include "training/hmm/training_reads.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "core/base_code.h"
#include "core/letter_codes.h"

namespace velto {
namespace {

constexpr int kLeastCodingBases = 60;
constexpr int kLeastUtr3 = 150;       // bases behind a coding region that reads are drawn from
constexpr int kLeastNoncoding = 120;  // bases of a non-coding transcript
constexpr int kFreeReach = 12;        // bases on either side of a frameshift

// Rates below which the model is not told that a read has so few errors.
constexpr double kLeastIndels = 5e-5;
constexpr double kLeastSubstitutions = 0.001;

constexpr StateMask bit(int state) { return static_cast<StateMask>(1U << state); }

void freeAround(int position, std::vector<StateMask>& masks) {
  const int first = std::max(0, position - kFreeReach);
  const int last = std::min(static_cast<int>(masks.size()) - 1, position + kFreeReach);
  for (int i = first; i <= last; ++i) masks[static_cast<std::size_t>(i)] = kAnyState;
}

// Gives the three bases of a codon their own states.
void markCodon(int first, int firstState, std::vector<StateMask>& masks) {
  for (int j = 0; j < 3; ++j) {
    masks[static_cast<std::size_t>(first + j)] = bit(firstState + j);
  }
}

// Whether the codon is known, with so many bases other than these at most.
bool reads(const SimulatedRead& read, int first, const short (&codon)[3], int most) {
  int wrong = 0;
  for (int j = 0; j < 3; ++j) {
    const short code = read.bases[static_cast<std::size_t>(first + j)];
    if (!isKnownBase(code)) return false;
    wrong += code != codon[j];
  }
  return wrong <= most;
}

void markStart(const SimulatedRead& read, std::vector<StateMask>& masks) {
  if (read.startInside && reads(read, read.start, {0, 1, 2}, 1)) {
    markCodon(read.start, kS0, masks);
  } else {
    freeAround(read.start, masks);
  }
}

void markStop(const SimulatedRead& read, std::vector<StateMask>& masks) {
  if (read.stopInside && reads(read, read.stop - 2, {1, 0, 0}, 3)) {
    markCodon(read.stop - 2, kE0, masks);
  } else {
    freeAround(read.stop, masks);
  }
}

// Errors per base of the reads of a model, as the decoder counts them.
BaseErrorRates ratesOf(const ErrorModel& errors) {
  const double inserted = errors.rates.insertion / (1.0 - errors.insertionExtension);
  const double deleted = errors.rates.deletion / (1.0 - errors.deletionExtension);
  return {std::clamp(inserted, kLeastIndels, 0.04), std::clamp(deleted, kLeastIndels, 0.06),
          std::clamp(errors.rates.substitution, kLeastSubstitutions, 0.02)};
}

}  // namespace

ReadMixture standardMixture() {
  constexpr std::pair<const char*, double> kPresets[] = {
      {"est", 0.38},        {"mild", 0.17},        {"clean", 0.05},      {"nanopore", 0.12},
      {"sanger-est", 0.08}, {"nanopore-r9", 0.05}, {"direct-rna", 0.04}, {"hifi", 0.03}};
  ReadMixture mixture;
  for (const auto& [name, share] : kPresets) {
    mixture.profiles.push_back({presetErrors(name).value(), share});
  }
  ErrorModel few;
  few.rates = {0.004, 0.0005, 0.0005, 0.0};
  mixture.profiles.push_back({few, 0.08});
  return mixture;
}

ReadDrawer::ReadDrawer(const std::vector<const TranscriptPool*>& folds, ReadMixture mixture)
    : mixture_(std::move(mixture)) {
  for (std::size_t fold = 0; fold < folds.size(); ++fold) {
    for (const Transcript* t : folds[fold]->coding) {
      coding_.push_back({t, fold});
      if (t->length() - t->cdsStop > kLeastUtr3) utr3_.push_back({t, fold});
    }
    for (const Transcript* t : folds[fold]->noncoding) {
      if (t->length() >= kLeastNoncoding) noncoding_.push_back({t, fold});
    }
  }
}

TrainingRead ReadDrawer::draw(std::uint64_t seed, std::uint64_t k) const {
  Random random = Random::split(seed, k);
  const double kind = random.real();
  const bool isUtr3 = kind < mixture_.utr3 && !utr3_.empty();
  const double coding = mixture_.coding + mixture_.antisense;
  const bool isCoding = kind < mixture_.utr3 + coding || noncoding_.empty();
  const Source& source = drawSource(isUtr3 ? utr3_ : isCoding ? coding_ : noncoding_, random);
  const Transcript& transcript = *source.transcript;
  const Fragment fragment = isUtr3     ? drawUtr3(transcript, random)
                            : isCoding ? drawCoding(transcript, random)
                                       : sampleFragment(transcript, mixture_.lengths, random);
  const ErrorModel& errors = drawErrorModel(random);
  TrainingRead drawn;
  drawn.read = simulateRead(transcript, fragment, errors, random);
  drawn.fold = source.fold;
  drawn.rates = ratesOf(errors);
  drawn.antisense = !isUtr3 && kind < mixture_.utr3 + mixture_.antisense;
  if (drawn.antisense) reverseComplement(drawn.read.bases);
  return drawn;
}

double ReadDrawer::truncatedShare(std::uint64_t seed, std::uint64_t count) const {
  double coding = 0.0, truncated = 0.0;
  for (std::uint64_t k = 0; k < count; ++k) {
    const TrainingRead drawn = draw(seed, k);
    const SimulatedRead& read = drawn.read;
    if (drawn.antisense || !read.isCoding()) continue;
    coding += 1.0;
    truncated += read.fragment.start > read.source->cdsStart ? 1.0 : 0.0;
  }
  return std::clamp(std::round(1e4 * truncated / std::max(1.0, coding)) / 1e4, 0.01, 0.99);
}

const ErrorModel& ReadDrawer::drawErrorModel(Random& random) const {
  double left = random.real();
  for (const ReadProfile& profile : mixture_.profiles) {
    if (left < profile.share) return profile.errors;
    left -= profile.share;
  }
  return mixture_.profiles.back().errors;
}

const ReadDrawer::Source& ReadDrawer::drawSource(const std::vector<Source>& sources,
                                                 Random& random) const {
  return sources[random.below(static_cast<std::uint32_t>(sources.size()))];
}

// Some fragments of a transcript hold few coding bases or none; others are drawn then.
Fragment ReadDrawer::drawCoding(const Transcript& transcript, Random& random) const {
  constexpr int kDraws = 20;
  if (random.real() < mixture_.wholeShare && transcript.length() <= mixture_.longestWhole) {
    return wholeTranscript(transcript);
  }
  for (int draw = 0; draw < kDraws; ++draw) {
    const Fragment fragment = sampleFragment(transcript, mixture_.lengths, random);
    const int first = std::max(fragment.start, transcript.cdsStart);
    const int last = std::min(fragment.start + fragment.length - 1, transcript.cdsStop);
    if (last - first + 1 >= kLeastCodingBases) return fragment;
  }
  return {transcript.cdsStart,
          std::min(mixture_.lengths.longest, transcript.cdsStop - transcript.cdsStart + 1)};
}

Fragment ReadDrawer::drawUtr3(const Transcript& transcript, Random& random) const {
  const int room = transcript.length() - transcript.cdsStop - 1;
  const int span = mixture_.lengths.longest - mixture_.lengths.shortest + 1;
  const int drawn =
      mixture_.lengths.shortest + static_cast<int>(random.below(static_cast<std::uint32_t>(span)));
  const int length = std::min(drawn, room);
  const auto places = static_cast<std::uint32_t>(room - length + 1);
  return {transcript.cdsStop + 1 + static_cast<int>(random.below(places)), length};
}

void trueStates(const SimulatedRead& read, std::vector<StateMask>& masks) {
  const bool isUtr3 = !read.isCoding() && read.source->isCoding();
  const StateMask outside = isUtr3 ? bit(kUn) : bit(kNC);
  masks.assign(read.bases.size(), outside);
  if (!read.isCoding()) return;
  for (int i = 0; i < read.length(); ++i) {
    const int frame = read.frame[static_cast<std::size_t>(i)];
    masks[static_cast<std::size_t>(i)] = i < read.start  ? bit(kU5)
                                         : i > read.stop ? bit(kU3)
                                         : frame < 0     ? kAnyState
                                                         : bit(kC0 + (i + 3 - frame) % 3);
  }
  // A region cut by the read's ends begins and ends in a phase.
  const Fragment& fragment = read.fragment;
  if (fragment.start <= read.source->cdsStart) markStart(read, masks);
  if (fragment.start + fragment.length > read.source->cdsStop) markStop(read, masks);
  for (const Frameshift& shift : read.shifts) freeAround(shift.position, masks);
}

void trueStates(const TrainingRead& drawn, std::vector<StateMask>& masks) {
  if (drawn.antisense) {
    masks.assign(drawn.read.bases.size(), bit(kNC));
  } else {
    trueStates(drawn.read, masks);
  }
}

}  // namespace velto
