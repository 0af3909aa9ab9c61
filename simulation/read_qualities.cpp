#include "simulation/read_qualities.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace velto {
namespace {

constexpr double kSeparation = 3.0;  // standard deviations between right and wrong bases at most
constexpr double kLeast = 2.0;       // quality values written: customary least one,
constexpr double kMost = 93.0;       // and the last that FASTQ has a letter for

// 1 at the wrong bases of a read and on either side of lost ones, 0 elsewhere.
std::vector<double> wrongBases(int readLength, const std::vector<TemplateError>& errors) {
  std::vector<double> wrong(static_cast<std::size_t>(readLength), 0.0);
  int shift = 0;  // read position less template offset
  const auto mark = [&](int position) {
    if (position >= 0 && position < readLength) wrong[static_cast<std::size_t>(position)] = 1.0;
  };
  for (const TemplateError& error : errors) {
    const int position = error.offset + shift;
    mark(position);
    if (error.kind == TemplateError::kInsertion) ++shift;
    if (error.kind == TemplateError::kDeletion) {
      mark(position - 1);
      --shift;
    }
  }
  return wrong;
}

// Every base has at least half of what its neighbours have.
void spread(std::vector<double>& drop) {
  for (std::size_t i = 1; i < drop.size(); ++i) drop[i] = std::max(drop[i], drop[i - 1] / 2);
  for (std::size_t i = drop.size(); i-- > 1;) drop[i - 1] = std::max(drop[i - 1], drop[i] / 2);
}

// Nearly normal, mean 0 and variance 1: twice the sum of three uniform draws of variance 1/12,
// taken from one number.
double noise(Random& random) {
  constexpr std::uint64_t kMask = (1U << 21) - 1;
  const std::uint64_t bits = random.next();
  const std::uint64_t sum = (bits & kMask) + (bits >> 21 & kMask) + (bits >> 42 & kMask);
  return 2.0 * (static_cast<double>(sum) * 0x1.0p-21 - 1.5);
}

}  // namespace

std::vector<std::uint8_t> drawQualities(int readLength, const std::vector<TemplateError>& errors,
                                        const QualityModel& model, Random& random) {
  std::vector<std::uint8_t> phred(static_cast<std::size_t>(readLength),
                                  static_cast<std::uint8_t>(model.mean));
  if (model.information <= 0.0) return phred;
  std::vector<double> drop = wrongBases(readLength, errors);
  spread(drop);
  for (std::size_t i = 0; i < phred.size(); ++i) {
    const double deviations = noise(random) - model.information * kSeparation * drop[i];
    const double value = std::clamp(model.mean + model.deviation * deviations, kLeast, kMost);
    phred[i] = static_cast<std::uint8_t>(std::lround(value));
  }
  return phred;
}

}  // namespace velto
