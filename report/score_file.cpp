#include "report/score_file.h"

#include <fstream>

#include "core/score_rows.h"
#include "decoder/base_scores.h"

namespace velto {

void writeScoreFile(std::ostream& out, const WebPredict& result) {
  std::vector<double> scores[3];
  for (int f = 0; f < 3; ++f) scores[f] = baseScores(result.frameScore[f], f, result.arrayLen);
  std::string rows;
  appendScoreRows(result.seqArray, result.arrayLen, scores, rows);
  out << rows;
}

int WebPredict::OutValLayout(int /*width*/, char* fileName) {
  std::ofstream out(fileName, std::ios::trunc);
  writeScoreFile(out, *this);
  return 0;
}

}  // namespace velto
