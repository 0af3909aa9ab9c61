// Reading and writing the text of the two model files: parameter file and frame-transition matrix.
#pragma once

#include <istream>
#include <string>

#include "model/model_tables.h"

namespace velto {

// What was irregular in a model file. Reading never fails: a malformed number reads as 0 (or as its
// valid prefix), an integer beyond int wraps, a missing line reads as zeros; the status names the
// first such place.
struct ModelFileStatus {
  int line = 0;        // 1-based; 0 when the file is regular
  std::string reason;  // empty when the file is regular

  bool regular() const { return line == 0; }
};

constexpr int kMatrixFileLines = 4;

// Appends `rounds` hypotheses to tables.fh, reads the file's first ones into tables.fh[0] on, and
// reads all other sections: in tables that were loaded before, the appended hypotheses stay zero.
// Lines are cut at 255 characters; a longer line ends the readable part of the file.
ModelFileStatus readParameterFile(std::istream& in, int rounds, ModelTables& tables);

// Reads the four lines of a matrix file: line = current state, field = previous state.
ModelFileStatus readMatrixFile(std::istream& in, double (&matrix)[16]);

// The text of a parameter file with exactly 500 hypotheses; missing ones are written as zeros.
std::string parameterFileText(const ModelTables& tables);

// The text of a matrix file that readMatrixFile turns into `matrix` (up to six decimals).
std::string matrixFileText(const double (&matrix)[16]);

// True if every index of the hypothesis lies inside its tables; a hypothesis outside them is kept
// but never counted by the vote.
bool indicesInRange(const fnlHypo& hypothesis);

}  // namespace velto
