#include "model/shortcut.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>

#include "model/model_file.h"
#include "model/model_tables.h"

namespace velto {

ModelTables processModel;
std::vector<fnlHypo>& fh = processModel.fh;
RealThreshold (&codonTrsld)[kModelHypotheses] = processModel.codonTrsld;
RealThreshold (&pairAcidTrsld)[kModelHypotheses] = processModel.pairAcidTrsld;
CountThreshold (&snglAcidTrsld)[kModelHypotheses] = processModel.snglAcidTrsld;
double (&snglAcidPriproTable)[kAminoAcids][2] = processModel.snglAcidPriproTable;
double (&pairAcidPriproTable)[kPairGaps][kAminoAcids][kAminoAcids][2] =
    processModel.pairAcidPriproTable;
double (&malkovChain)[16] = processModel.malkovChain;
double average[4][kAminoAcids][kAminoAcids];

int GCID = 0;
int LENGTHID = 0;
int WINDOW_WIDTH = 0;
int READ_ROUND = 0;

ModelView processModelView() { return {processModel, WINDOW_WIDTH}; }

namespace {

void reportUnopened(const std::string& path) { std::cout << "ioerr:can not open " << path << "\n"; }

std::ifstream openOrExit(const std::string& path) {
  std::ifstream in(path);
  if (!in) {
    reportUnopened(path);
    std::exit(1);
  }
  return in;
}

}  // namespace

int Shortcut::GetParamater(std::string path) {
  std::ifstream in = openOrExit(path);
  readParameterFile(in, READ_ROUND, processModel);
  return 0;
}

int Shortcut::GetDPMatrix(std::string path) {
  std::ifstream in = openOrExit(path);
  readMatrixFile(in, malkovChain);
  return 0;
}

int Shortcut::OutputParamater(std::string path) {
  std::FILE* out = std::fopen(path.c_str(), "w");
  if (out == nullptr) {
    reportUnopened(path);
    return 1;
  }
  const std::string text = parameterFileText(processModel);
  std::fwrite(text.data(), 1, text.size(), out);
  std::fclose(out);
  return 0;
}

}  // namespace velto
