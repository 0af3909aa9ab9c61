// The sequencing errors of one fragment of a transcript, drawn from an error model.
#pragma once

#include <vector>

#include "core/random.h"
#include "simulation/error_model.h"
#include "simulation/transcript.h"

namespace velto {

// A part of a transcript.
struct Fragment {
  int start;   // 0-based first template base
  int length;  // template bases
};

// One error to apply to a fragment.
struct TemplateError {
  enum Kind { kSubstitution, kInsertion, kDeletion, kUnknown };
  int offset;  // 0-based template base in the fragment; an inserted base comes before it
  Kind kind;
  short base;  // base code put in by a substitution or insertion; not read otherwise
};

// Draws the errors of a fragment from a valid model, in order of offset: at one offset any number
// of inserted bases in their order, then at most one error of another kind. Substitutions leave no
// base as it was; an unknown template base gets any of the four.
std::vector<TemplateError> drawErrors(const Transcript& transcript, Fragment fragment,
                                      const ErrorModel& model, Random& random);

}  // namespace velto
