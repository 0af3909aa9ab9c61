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

// Tallies of one test sequence, see Test::CountTestElements.
struct TestElements {
  double acidPairs[kAminoAcids][kAminoAcids] = {};  // [first][second] amino acid of a pair
  double basePairs[4][4] = {};  // [first][second] base code of neighbours inside a codon
};

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

  // Log ratios of the class transitions of layoutList, into malkovChain and the file, see
  // training/markov_chain.h. A file that cannot be opened ends the process with status 1.
  void MakeMalkovChain(std::string path);
  // Agreement of the predicted classes of layoutList with the known ones, one line to standard
  // output, see training/layout_accuracy.h.
  void CHKLayout();
  // Every layout of layoutList to standard output. Returns 0.
  int PrintLayout();
  // Smooths the predicted classes of layoutList, see training/layout_smoothing.h.
  void ModefyLayout();
  // Applies `errors` in their order to `seq`, appends the marks of the changed sequence to
  // layoutList and returns its tallies, see training/test_elements.h. The coding region is given in
  // bases of the unchanged sequence; `gap` (0 to 3) is the class of the pairs tallied; `frame` (0
  // to 2) the frame tallied, or -1 for the codons of the coding region.
  TestElements CountTestElements(std::vector<short>& seq, int codingStart, int codingStop, int gap,
                                 int frame, std::vector<err> errors);

  char ConvertLayout(int code);
  int ChkState(int code);

  std::vector<smplData>* smplList;           // owned; filled by no operation of a run
  std::vector<layout>* layoutList;           // owned; reads with known and predicted layouts
  std::vector<std::vector<short>>* seqList;  // owned; base codes of test sequences
  int endStep;                               // codon step; written by TraceBack
};

}  // namespace velto
