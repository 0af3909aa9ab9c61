// Labelled error-prone reads: a fragment of a transcript, sequencing errors, and the truth.
#pragma once

#include <cstdint>
#include <vector>

#include "core/random.h"
#include "simulation/error_model.h"
#include "simulation/template_errors.h"
#include "simulation/transcript.h"
#include "velto/velto.h"

namespace velto {

// A read with its truth. The coding region is that of the transcript as far as the fragment covers
// it, start and stop codon included. A shift counts only with coding bases of the read on both
// sides; neighbouring lost bases give one shift each, at the same position.
struct SimulatedRead {
  std::vector<short> bases;         // base codes as in Transcript
  std::vector<std::uint8_t> phred;  // quality value per base; empty when the errors' model has none
  std::vector<signed char> frame;   // per base; -1: outside the coding region or an inserted base;
                                    // else (position in the read - position in its codon) mod 3
  int start = -1;                   // 0-based first coding base in the read; -1 when there is none
  int stop = -1;                    // 0-based last coding base in the read; -1 when there is none
  bool startInside = false;         // the three bases of the start codon stand together in the read
  bool stopInside = false;          // the three bases of the stop codon stand together in the read
  std::vector<Frameshift> shifts;   // in order of position
  bool reversed = false;            // to be written as its reverse complement; all else here is not
  const Transcript* source = nullptr;  // not owned; the transcript must outlive the read
  Fragment fragment{0, 0};

  int length() const { return static_cast<int>(bases.size()); }
  bool isCoding() const { return start >= 0; }
};

// The read of a fragment with these errors, in the order of drawErrors(), without qualities. The
// fragment must lie inside the transcript. Pure; any thread may call it.
SimulatedRead applyErrors(const Transcript& transcript, Fragment fragment,
                          const std::vector<TemplateError>& errors);

// A read of a fragment with errors, and qualities if the model has them, drawn from a valid model.
SimulatedRead simulateRead(const Transcript& transcript, Fragment fragment, const ErrorModel& model,
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
