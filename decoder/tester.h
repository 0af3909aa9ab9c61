// The class that carries the named scoring, decoding, training and evaluation operations.
#pragma once

#include <string>
#include <vector>

#include "decoder/frame_path.h"
#include "decoder/layout.h"
#include "model/window_sample.h"

namespace velto {

// A sequencing error of a test sequence. The names are fixed.
struct err {
  int pos;   // base position, 0-based
  int kind;  // 0: an extra base is inserted at pos; any other value: the base at pos is removed
};

// Order of an error list: by position only.
bool errComp(err a, err b);

// The operations work on the process-wide model at the present WINDOW_WIDTH and hold no science of
// their own: each hands its arguments to the free function that does the step. The names, odd
// spellings included, are fixed. Not for use from several threads at once.
class Test {
 public:
  Test();
  ~Test();
  Test(const Test&) = delete;
  Test& operator=(const Test&) = delete;

  // The vote over one sample: kCodingWindow or kNonCodingWindow, and the vote sum in `score`.
  int CHKSmpl(const smplTestData& sample, double& score);
  int CHKSmpl(const smplTestData& sample);
  int CHKSmpl(const smplData& sample, double& score);

  // Rewrites the leading classes of `lay` and fills the cells, see fillFramePaths.
  void MakeDPMatrix(dpNode* nodes, layout& lay);
  // Appends n entries to `path`, stores endStep and returns the path's score, see traceFramePath.
  double TraceBack(dpNode* nodes, int n, std::vector<int>& path);
  // Moves the inner frame changes of `path`, which ends at endStep, see placeShifts.
  void FocusErrPlace(short* seq, int len, std::vector<int>& path);

  char ConvertLayout(int code);
  int ChkState(int code);

  std::vector<smplData>* smplList;           // owned; filled by no operation of a run
  std::vector<layout>* layoutList;           // owned; reads with known and predicted layouts
  std::vector<std::vector<short>>* seqList;  // owned; base codes of test sequences
  int endStep;                               // codon step; written by TraceBack
};

}  // namespace velto
