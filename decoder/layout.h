// The frame layout of one read: codes, classes and marks codon step by codon step.
#pragma once

#include <vector>

#include "model/window_vote.h"

namespace velto {

// Codes held in the per-step vectors beside kCodingWindow (-10) and kNonCodingWindow (-1).
constexpr int kAtgCodon = -21;        // met
constexpr int kOtherCodon = -14;      // met; no known error (errMark)
constexpr int kKnownError = -15;      // errMark: a known sequencing error in this codon
constexpr int kPathStart = -22;       // class the decoder assumes where a path begins
constexpr int kEvaluationMark = -23;  // used by the evaluation tools
constexpr int kStopCodon = -100;      // cls: stop codon at the window's centre codon
constexpr int kNoWindow = -1000;      // cls: the window runs past the end of the read
constexpr int kLeadingFiller = -20;   // cls: step before the first full window
constexpr int kOffPath = -1;          // decoded path: no frame at this step

// Score that stands for every window that was not scored.
constexpr double kNoWindowScore = -10.0;

// Step k of frame f is the codon that begins at base 3k + f, bases numbered from 0; every vector is
// indexed by step. The names, in this order, are fixed.
struct layout {
  std::vector<int> met[3];   // [frame]: kAtgCodon or kOtherCodon, one per complete codon
  std::vector<int> crr[3];   // [frame]: correction marks of the evaluation tools
  std::vector<int> cls[3];   // [frame]: class of the window centred on the step
  std::vector<int> errMark;  // known sequencing errors: kKnownError or kOtherCodon
  std::vector<int> rfm;      // known or decoded frame, 0 to 2; kOffPath elsewhere
  int start = 0;             // first base of the coding region, 0-based; -1 when nothing found
  int stop = 0;              // last base of the coding region, 0-based; -1 when nothing found
};

// The character under which a code is shown; '?' for a value that is no code.
char layoutSymbol(int code);

// Decoding state of a class code: coding 0, non-coding 1, path start 2, stop codon 3, others -1.
constexpr int decodingState(int code) {
  switch (code) {
    case kCodingWindow:
      return 0;
    case kNonCodingWindow:
      return 1;
    case kPathStart:
      return 2;
    case kStopCodon:
      return 3;
    default:
      return -1;
  }
}

}  // namespace velto
