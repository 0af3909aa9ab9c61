// 1. How error-prone a place is  2. Errors
#include "simulation/template_errors.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <optional>

#include "core/base_code.h"

namespace velto {
namespace {

// ---- 1. How error-prone a place is

// (p + 1) u^p with u uniform in [0, 1): mean 1, largest p + 1. No draw for p = 0.
double readFactor(int p, Random& random) {
  if (p == 0) return 1.0;
  const double u = random.real();
  double factor = p + 1;
  for (int i = 0; i < p; ++i) factor *= u;
  return factor;
}

// Factors of the stretches in which errors crowd and of those between, template base by template
// base; their mean is 1.
class StretchFactors {
 public:
  StretchFactors(const ErrorStretches& stretches, Random& random)
      : random_(random), stretches_(stretches) {
    if (stretches.share <= 0.0) return;
    outside_ = 1.0 / (1.0 - stretches.share + stretches.share * stretches.factor);
    crowded_ = random.real() < stretches.share;
    // What is left of a stretch of uniform length, seen from a uniform place inside stretches, is
    // distributed as the lesser of two uniform draws.
    const double left = std::min(random.real(), random.real());
    left_ = 1 + static_cast<int>(left * (2.0 * meanLength() - 1.0));
  }

  double next() {
    if (left_ == 0) {
      crowded_ = !crowded_;
      left_ = 1 + static_cast<int>(random_.real() * (2.0 * meanLength() - 1.0));
    }
    --left_;
    return crowded_ ? outside_ * stretches_.factor : outside_;
  }

 private:
  double meanLength() const {
    if (crowded_) return stretches_.meanLength;
    return std::clamp(stretches_.meanLength * (1.0 - stretches_.share) / stretches_.share, 1.0,
                      kLongest);
  }

  static constexpr double kLongest = 1e9;  // so that twice as much is an int

  Random& random_;
  const ErrorStretches& stretches_;
  double outside_ = 1.0;
  bool crowded_ = false;
  int left_ = std::numeric_limits<int>::max();  // template bases of the stretch still to come
};

// (1 + r u^8) / (1 + r / 9) at the share u of a fragment: mean 1, flat for r = 0.
double endFactor(double rise, double u) {
  if (rise <= 0.0) return 1.0;
  const double u2 = u * u, u4 = u2 * u2;
  return (1.0 + rise * u4 * u4) / (1.0 + rise / 9.0);
}

// Factors of the deletion rate in homopolymer runs, template base by template base: 1 + slope per
// further base of the run, over the mean in a sequence of equal and independent bases, in which a
// base has 2/3 like neighbours in its run.
class RunFactors {
 public:
  RunFactors(const Transcript& transcript, Fragment fragment, double slope)
      : bases_(transcript.bases),
        next_(static_cast<std::size_t>(fragment.start)),
        end_(next_ + static_cast<std::size_t>(fragment.length)),
        runEnd_(next_),
        slope_(slope) {}

  double next() {
    if (slope_ <= 0.0) return 1.0;
    if (next_ == runEnd_) findRun();
    ++next_;
    return factor_;
  }

 private:
  static constexpr std::size_t kLongestRun = 8;  // longer ones are no worse

  void findRun() {
    while (runEnd_ < end_ && bases_[runEnd_] == bases_[next_]) ++runEnd_;
    const std::size_t length = std::min(runEnd_ - next_, kLongestRun);
    factor_ = (1.0 + slope_ * static_cast<double>(length - 1)) / (1.0 + slope_ * 2.0 / 3.0);
  }

  const std::vector<short>& bases_;
  std::size_t next_;    // template base whose factor comes next
  std::size_t end_;     // of the fragment
  std::size_t runEnd_;  // of the run that next_ is in, once found
  double slope_;
  double factor_ = 1.0;
};

// ---- 2. Errors

bool happens(double probability, Random& random) {
  return probability > 0.0 && random.real() < probability;
}

short randomBase(Random& random) { return static_cast<short>(random.below(4)); }

// Any base but `base`, which may be unknown.
short otherBase(short base, Random& random) {
  if (!isKnownBase(base)) return randomBase(random);
  return static_cast<short>((base + 1 + static_cast<int>(random.below(3))) % 4);
}

// A base to be inserted before the template base `behind`.
short insertedBase(short behind, double copies, Random& random) {
  if (isKnownBase(behind) && happens(copies, random)) return behind;
  return randomBase(random);
}

// The kind of error that befalls a template base, if any. What goes beyond a sum of 1 is cut off.
std::optional<TemplateError::Kind> drawKind(const ErrorRates& rates, double factor,
                                            double runFactor, Random& random) {
  const double substituted = rates.substitution * factor;
  const double inserted = substituted + rates.insertion * factor;
  const double deleted = inserted + rates.deletion * factor * runFactor;
  const double unknown = deleted + rates.unknown * factor;
  const double draw = random.real();
  if (draw >= unknown) return std::nullopt;
  if (draw < substituted) return TemplateError::kSubstitution;
  if (draw < inserted) return TemplateError::kInsertion;
  return draw < deleted ? TemplateError::kDeletion : TemplateError::kUnknown;
}

// Appends an error of this kind at a template base; an insertion may be of several bases.
void append(TemplateError::Kind kind, int offset, short base, const ErrorModel& model,
            Random& random, std::vector<TemplateError>& errors) {
  if (kind == TemplateError::kSubstitution) {
    errors.push_back({offset, kind, otherBase(base, random)});
  } else if (kind == TemplateError::kInsertion) {
    do {
      errors.push_back({offset, kind, insertedBase(base, model.insertionCopies, random)});
    } while (happens(model.insertionExtension, random));
  } else {
    errors.push_back({offset, kind, kUnknownBase});
  }
}

}  // namespace

std::vector<TemplateError> drawErrors(const Transcript& transcript, Fragment fragment,
                                      const ErrorModel& model, Random& random) {
  std::vector<TemplateError> errors;
  if (model.rates.sum() <= 0.0) return errors;
  const double ofRead = readFactor(model.readSpread, random);
  StretchFactors stretches(model.stretches, random);
  RunFactors runs(transcript, fragment, model.homopolymerSlope);
  std::optional<TemplateError::Kind> kind;
  for (int offset = 0; offset < fragment.length; ++offset) {
    const double share = (offset + 0.5) / fragment.length;
    const double factor = ofRead * stretches.next() * endFactor(model.endRise, share);
    const double runFactor = runs.next();
    const bool goesOn =
        kind == TemplateError::kDeletion && happens(model.deletionExtension, random);
    if (!goesOn) kind = drawKind(model.rates, factor, runFactor, random);
    if (!kind) continue;
    const short base = transcript.bases[static_cast<std::size_t>(fragment.start + offset)];
    append(*kind, offset, base, model, random, errors);
  }
  return errors;
}

}  // namespace velto
