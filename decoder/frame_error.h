// The one rule that turns a frame path into the insertions and deletions that are reported.
#pragma once

namespace velto {

enum class FrameError { kNone, kInsertion, kDeletion };

// Error at a base, from the decoded frame of the codon step before (previous), of the base's own
// step (current), and the base's position modulo 3. An insertion is the base itself; a deletion is
// a base lost just before it. A frame change is reported at one base only, and never at the first
// three bases of a read: their step has no step before it (previous is -1).
FrameError frameErrorAt(int previous, int current, int residue);

}  // namespace velto
