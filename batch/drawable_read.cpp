#include "batch/drawable_read.h"

#include <utility>

#include "batch/file_calibration.h"
#include "predict/coding_sequence.h"

namespace velto {

DrawableRead drawableRead(const Predictor& predictor, const Record& record, PredictOptions options,
                          const GeneticCode& code, bool useQualities) {
  options.wantScores = true;
  Workspace workspace;
  const Read read = readsOf({&record, 1}, useQualities).front();
  Prediction prediction = predictor.predict(read.bases, read.qualities, workspace, options);
  std::string letters = predictedLetters(record.bases, prediction.strand, options.letters);
  CodingSequence coding = codingSequence(prediction, letters, code);
  return {record.name.empty() ? "unnamed read" : record.name, std::move(prediction),
          std::move(letters), std::move(coding), code};
}

}  // namespace velto
