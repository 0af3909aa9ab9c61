// The states of the posterior decoder's hidden Markov model, one base of the read in each.
#pragma once

namespace velto {

//            .-- I0 I1 I2 (an inserted base after phase k)
//            v
//   U5 --> S0 S1 S2 --> C0 C1 C2 (and round again) --> E0 E1 E2 --> U3
//
//   NC, Un: the whole read. A read may begin in S0, C0 to C2, U5, NC and Un, and end anywhere.
//   A lost base is a step from phase k to phase k + 2 without a state of its own.
enum HmmState {
  kC0,  // coding base, first of its codon
  kC1,
  kC2,
  kI0,  // one inserted base after a coding base of phase 0
  kI1,
  kI2,
  kS0,  // start codon
  kS1,
  kS2,
  kE0,  // stop codon
  kE1,
  kE2,
  kU5,  // before the start codon
  kU3,  // behind the stop codon
  kNC,  // read of a non-coding transcript
  kUn,  // read that lies wholly behind the stop codon
};
constexpr int kHmmStates = 16;

// States of a read that has coding bases. E2 and U3 are: the path went through the stop codon.
constexpr bool isOfCodingRead(int state) { return state <= kE2 || state == kU3; }

// Position of a coding base of each phase in the emission tables and network outputs, then the
// kinds of other bases.
enum EmissionKind { kPhase0, kPhase1, kPhase2, kUtr5, kUtr3, kNoncodingRead };
constexpr int kEmissionKinds = 6;
// Places of a row of them, two of which stay empty so that a row fills 32 bytes.
constexpr int kEmissionPlaces = 8;

}  // namespace velto
