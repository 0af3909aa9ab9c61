#include "training/frames/class_reads.h"

#include "core/letter_codes.h"

namespace velto {
namespace {

constexpr int kShortestRead = 240;      // bases; shorter ones hardly hold a path
constexpr int kLongestFragment = 6000;  // bases
constexpr int kLongestWhole = 20000;    // bases of a transcript that is read as a whole
constexpr double kWholeTranscripts = 0.7;

}  // namespace

FragmentLengths readLengths(const ReadClass& readClass) {
  if (readClass.windowWidth == 96) return {kShortestRead, 599};
  if (readClass.lengthId == 0) return {600, 999};
  if (readClass.lengthId == 1) return {1000, 3000};
  return {3001, kLongestFragment};
}

bool isOfLengthClass(const SimulatedRead& read, const ReadClass& readClass) {
  const ReadClass own = classifyRead(read.length(), 50.0);
  return own.lengthId == readClass.lengthId && own.windowWidth == readClass.windowWidth;
}

int gcClassOf(const SimulatedRead& read) {
  return classifyRead(read.length(), gcPercent(read.bases)).gcId;
}

SimulatedRead drawRead(const Transcript& transcript, const ReadClass& readClass,
                       const ErrorRates& rates, Random& random) {
  const FragmentLengths lengths = readLengths(readClass);
  const int longest = readClass.lengthId == 2 ? kLongestWhole : lengths.longest;
  const bool fits = transcript.length() >= lengths.shortest && transcript.length() <= longest;
  const bool whole = fits && readClass.windowWidth != 96 && random.real() < kWholeTranscripts;
  const Fragment fragment =
      whole ? wholeTranscript(transcript) : sampleFragment(transcript, lengths, random);
  return simulateRead(transcript, fragment, {rates}, random);
}

const ErrorRates& drawRates(const RateMixture& mixture, Random& random) {
  double draw = random.real();
  for (const WeightedRates& part : mixture) {
    if (draw < part.fraction) return part.rates;
    draw -= part.fraction;
  }
  return mixture.back().rates;
}

}  // namespace velto
