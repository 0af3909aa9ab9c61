// The predictor object of the one-read program: one read, every result, and the named operations.
#pragma once

#include <string>
#include <vector>

#include "decoder/layout.h"
#include "decoder/tester.h"

namespace velto {

// Constructed, then predicted by GetResult, then reported: the report operations need a predicted
// object. The names are fixed. One object per process, for it fills the process-wide model.
class WebPredict : public Test {
 public:
  WebPredict();
  ~WebPredict();

  // Reads the one sequence of a FASTA file. Returns 0; a file that cannot be opened (standard
  // error) or a read of fewer than 30 bases (standard output) ends the process with status 1.
  int GetArrayFromFile(char* fileName);
  // Reads a sequence of announced length from standard input up to a line "exit": two lines of no
  // use, the length, the bases. Never stores more than the announced length, but counts G and C of
  // all characters, so that gcPressure may exceed 100. Returns 0.
  int GetArrayFromCin();
  // The whole prediction of inputFile with the models of paramDir. Returns 0.
  int GetResult();
  // Classes and scores of all windows of the read, into lay and frameScore. Returns 0.
  int GetSmplsFromArray();

  // The steps that the named operations share.
  // Takes over a read: seqArray, its lengths and gcPressure.
  void setRead(const std::vector<short>& codes);
  // GetResult behind its loading: from the read and the process-wide model to the whole result.
  void predictRead();
  // Copies a decoded path into frameArray; all off the path unless dpScore is above -9.0.
  void setPath(const std::vector<int>& path);

  // Text report to standard output, `width` display characters a line. Returns 0.
  int OutNormLayout(int width);
  // Per-base score file; the width is not used. Returns 0, also when the file cannot be written.
  int OutValLayout(int width, char* fileName);
  // HTML page, `width` bases a block. Returns 0, also when the file cannot be written.
  int OutHtmlLayout(int width, char* fileName);
  // Plain rows of marks, path and scores to standard output; marks stop codons in lay.met.
  int OutWebResult();

  // Written by the input readers.
  short* seqArray;  // [arrayLen] base codes, owned
  int arrayLen;     // bases

  // Written by GetSmplsFromArray; start and stop by GetResult.
  layout lay;
  std::vector<double> frameScore[3];  // [frame][codon step] window score

  // Written by GetResult.
  int* frameArray;  // [codon step] frame 0 to 2, or -1 off the coding path; owned, from malloc

  // Written by the input readers.
  int seqLength;            // bases
  double gcPressure;        // GC content in percent, 0 to 100
  std::string fastaHeader;  // header line without '>'

  // Written by GetResult.
  double dpScore;  // score of the best frame path; above -9.0 a coding region was found

  // Written by main; not owned.
  char* inputFile;  // FASTA file
  char* paramDir;   // model directory

  // Decoded frame at a codon step; -1 where frameArray has no entry.
  int frameAt(int step) const {
    return step >= 0 && step < frameSteps_ ? frameArray[step] : kOffPath;
  }

 private:
  int frameSteps_;  // entries of frameArray
};

}  // namespace velto
