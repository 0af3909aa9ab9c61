// The loaders and the writer of the one-read program's process-wide model.
#pragma once

#include <string>

namespace velto {

// Holds no data. The names, odd spellings included, are fixed.
class Shortcut {
 public:
  // Appends READ_ROUND hypotheses to fh, fills fh[0] on and the other tables of processModel from
  // the parameter file. Returns 0. A file that cannot be opened is reported on standard output and
  // ends the process with status 1. What a second call appends stays zero and never votes.
  int GetParamater(std::string path);

  // Fills malkovChain from the matrix file. Returns 0; failure as in GetParamater.
  int GetDPMatrix(std::string path);

  // Writes the process-wide tables as a parameter file of 500 hypotheses. Returns 0, or 1 after a
  // message on standard output when the file cannot be created.
  int OutputParamater(std::string path);
};

}  // namespace velto
