#include "training/frames/window_sampling.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>

#include "model/window_width.h"

namespace velto {
namespace {

enum WindowKind { kInFrame, kOutOfFrame, kOutside };

class Sampler {
 public:
  Sampler(const ReadClass& readClass, const SamplingPlan& plan, WindowSet& windows)
      : class_(readClass), plan_(plan), windows_(windows) {}

  bool wants(int gcId) const {
    if (gcId == class_.gcId) return !counts_.lackedReads && own_ < plan_.windows;
    if (counts_.lackedReads) return !done();
    return static_cast<double>(borrowed_) < plan_.maxBorrowed * static_cast<double>(own_);
  }

  bool done() const { return (counts_.lackedReads ? own_ + borrowed_ : own_) >= plan_.windows; }

  // From now on neighbours make up for what the class itself did not give.
  void borrowTheRest() { counts_.lackedReads = true; }

  void take(const SimulatedRead& read, int gcId, Random& random) {
    const int room = read.length() - class_.windowWidth;
    if (room < 1) return;
    const bool isOwn = gcId == class_.gcId;
    for (int k = 0; k < plan_.windowsPerRead; ++k) {
      takeWindow(read, static_cast<int>(random.below(static_cast<std::uint32_t>(room))), random,
                 weightOf(gcId));
    }
    const auto taken = static_cast<std::size_t>(plan_.windowsPerRead);
    (isOwn ? own_ : borrowed_) += taken;
    ++(isOwn ? counts_.reads : counts_.borrowedReads);
  }

  // Reads count less the further their GC class is away.
  float weightOf(int gcId) const {
    double weight = 1.0;
    for (int away = std::abs(gcId - class_.gcId); away > 0; --away) weight *= plan_.borrowedWeight;
    return static_cast<float>(weight);
  }

  // Weighs the three kinds of windows to their fractions of the loss.
  SampleCounts finish() {
    double sums[3] = {};
    for (std::size_t i = 0; i < kinds_.size(); ++i) {
      sums[kinds_[i]] += static_cast<double>(windows_.weight(i));
    }
    const double all = sums[0] + sums[1] + sums[2];
    for (std::size_t i = 0; i < kinds_.size(); ++i) {
      windows_.scaleWeight(
          i, static_cast<float>(plan_.lossFractions[kinds_[i]] * all / sums[kinds_[i]]));
    }
    windows_.finish();
    return counts_;
  }

 private:
  // Takes a window near base `start`, in frame or out of frame as likely where the read is coding.
  void takeWindow(const SimulatedRead& read, int start, Random& random, float weight) {
    const int half = halfWindow(class_.windowWidth);
    const auto middle = static_cast<std::size_t>(start + 3 * half + 1);
    const int frame = read.frame[middle];
    WindowKind kind = kOutside;
    if (frame >= 0) {
      const bool wantFrame = random.below(2) == 0;
      const int turn = wantFrame ? 0 : 1 + static_cast<int>(random.below(2));
      // The window is moved rather than the label: its middle base may then bear another mark.
      const int moved = start + ((frame + turn - start) % 3 + 3) % 3;
      if (moved >= read.length() - class_.windowWidth) return;
      start = moved;
      const int there = read.frame[static_cast<std::size_t>(start + 3 * half + 1)];
      kind = there < 0 ? kOutside : (there == start % 3 ? kInFrame : kOutOfFrame);
    }
    add(read, start, kind, weight);
  }

  void add(const SimulatedRead& read, int start, WindowKind kind, float weight) {
    smplTestData counts;
    for (int j = 0; j < windowCodons(class_.windowWidth); ++j) {
      countCodon(counts, read.bases.data(), read.length(), start + 3 * j);
    }
    windows_.add(counts, kind == kInFrame, weight);
    kinds_.push_back(kind);
    ++counts_.windows[kind];
  }

  const ReadClass class_;
  const SamplingPlan& plan_;
  WindowSet& windows_;
  std::vector<WindowKind> kinds_;
  SampleCounts counts_;
  std::size_t own_ = 0;       // windows asked of reads of the class itself
  std::size_t borrowed_ = 0;  // windows asked of others
};

const Transcript& drawTranscript(const TranscriptPool& pool, double noncodingFraction,
                                 Random& random) {
  const bool noncoding = random.real() < noncodingFraction;
  const bool useNoncoding = pool.coding.empty() || (noncoding && !pool.noncoding.empty());
  const auto& from = useNoncoding ? pool.noncoding : pool.coding;
  return *from[random.below(static_cast<std::uint32_t>(from.size()))];
}

// The transcripts that can give reads of at least `shortest` bases; insertions may add some.
TranscriptPool withoutShort(const TranscriptPool& pool, int shortest) {
  const auto isLong = [shortest](const Transcript* t) { return 20 * t->length() >= 19 * shortest; };
  TranscriptPool kept;
  std::copy_if(pool.coding.begin(), pool.coding.end(), std::back_inserter(kept.coding), isLong);
  std::copy_if(pool.noncoding.begin(), pool.noncoding.end(), std::back_inserter(kept.noncoding),
               isLong);
  return kept;
}

}  // namespace

SampleCounts sampleWindows(const TranscriptPool& pool, const ReadClass& readClass,
                           const SamplingPlan& plan, std::uint64_t seed, WindowSet& windows) {
  Sampler sampler(readClass, plan, windows);
  const TranscriptPool longEnough = withoutShort(pool, readLengths(readClass).shortest);
  const bool any = !longEnough.coding.empty() || !longEnough.noncoding.empty();
  for (std::size_t k = 0; any && k < 2 * plan.maxDraws && !sampler.done(); ++k) {
    if (k == plan.maxDraws) sampler.borrowTheRest();
    Random random = Random::split(seed, k);
    const Transcript& transcript = drawTranscript(longEnough, plan.noncodingFraction, random);
    const ErrorRates& rates = drawRates(plan.mixture, random);
    const SimulatedRead read = drawRead(transcript, readClass, rates, random);
    if (!isOfLengthClass(read, readClass)) continue;
    const int gcId = gcClassOf(read);
    if (sampler.wants(gcId)) sampler.take(read, gcId, random);
  }
  return sampler.finish();
}

}  // namespace velto
