// Labelled error-prone reads: a fragment of a transcript, sequencing errors, and the truth.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "core/random.h"
#include "simulation/transcript.h"

namespace velto {

// Probabilities of each kind of error per template base; at most one error befalls a base, so the
// sum must not exceed 1.
struct ErrorRates {
  double substitution = 0.0;  // replaced by one of the other three bases
  double insertion = 0.0;     // a random base is added before it
  double deletion = 0.0;      // dropped
  double unknown = 0.0;       // replaced by an unknown base

  bool valid() const;
};

// Rates of the presets "clean", "est", "mild" and "nanopore"; nothing for another name.
std::optional<ErrorRates> presetRates(std::string_view name);

// The same rates with insertions and deletions times `factor`, as "a third of the indel rates".
ErrorRates scaleIndels(ErrorRates rates, double factor);

// One error to apply to a fragment.
struct TemplateError {
  enum Kind { kSubstitution, kInsertion, kDeletion, kUnknown };
  int offset;  // 0-based template base in the fragment
  Kind kind;
  short base;  // base code put in by a substitution or insertion; not read otherwise
};

// A place where the reading frame shifts inside the coding region of a read.
struct FrameShift {
  int position;    // 0-based in the read: the inserted base, or the base after the gap
  bool insertion;  // false: a lost base
  bool operator==(const FrameShift& other) const {
    return position == other.position && insertion == other.insertion;
  }
};

// A part of a transcript.
struct Fragment {
  int start;   // 0-based first template base
  int length;  // template bases
};

// A read with its truth. The coding region is that of the transcript as far as the fragment covers
// it, start and stop codon included. A shift counts only with coding bases of the read on both
// sides; neighbouring lost bases give one shift each, at the same position.
struct SimulatedRead {
  std::vector<short> bases;        // base codes as in Transcript
  std::vector<signed char> frame;  // per base; -1: outside the coding region or an inserted base;
                                   // else (position in the read - position in its codon) mod 3
  int start = -1;                  // 0-based first coding base in the read; -1 when there is none
  int stop = -1;                   // 0-based last coding base in the read; -1 when there is none
  bool startInside = false;        // the three bases of the start codon stand together in the read
  bool stopInside = false;         // the three bases of the stop codon stand together in the read
  std::vector<FrameShift> shifts;  // in order of position
  const Transcript* source = nullptr;  // not owned; the transcript must outlive the read
  Fragment fragment{0, 0};

  int length() const { return static_cast<int>(bases.size()); }
  bool isCoding() const { return start >= 0; }
};

// Draws the errors of a fragment, in order of offset. Substitutions leave no base as it was; an
// unknown template base gets any of the four.
std::vector<TemplateError> drawErrors(const Transcript& transcript, Fragment fragment,
                                      const ErrorRates& rates, Random& random);

// The read of a fragment with these errors, which are in order of offset, one per base at most.
// The fragment must lie inside the transcript. Pure; any thread may call it.
SimulatedRead applyErrors(const Transcript& transcript, Fragment fragment,
                          const std::vector<TemplateError>& errors);

// drawErrors, then applyErrors.
SimulatedRead simulateRead(const Transcript& transcript, Fragment fragment, const ErrorRates& rates,
                           Random& random);

// Range of fragment lengths in template bases, 1 <= shortest <= longest.
struct FragmentLengths {
  int shortest;
  int longest;
};

// A fragment of uniform length in the range, cut to the transcript, at a uniform place. The
// transcript is not empty.
Fragment sampleFragment(const Transcript& transcript, FragmentLengths lengths, Random& random);

// The whole transcript.
inline Fragment wholeTranscript(const Transcript& transcript) { return {0, transcript.length()}; }

}  // namespace velto
