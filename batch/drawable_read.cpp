#include "batch/drawable_read.h"

#include <cmath>
#include <utility>

#include "batch/file_calibration.h"
#include "batch/scanned_read.h"
#include "draw/markup.h"
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

Facts factsOf(const Record& record, const DrawableRead& read) {
  const Prediction& p = read.prediction;
  Facts facts;
  if (!record.description.empty()) facts.emplace_back("Description", record.description);
  facts.emplace_back("Length", std::to_string(p.length) + " bases");
  if (p.length > 0) facts.emplace_back("G and C", decimal(p.gcPercent) + "\u00A0%");
  if (!p.isPredicted()) return facts;
  facts.emplace_back("Strand", p.strand == Strand::kMinus ? "\u2212, the reverse complement"
                                                          : "+, as the read is given");
  if (p.isCoding()) facts.emplace_back("Coding region", meaningOf(read.coding.type));
  if (!std::isnan(p.probability)) facts.emplace_back("Probability", decimal(p.probability, 4));
  facts.emplace_back("Score", scoreText(p.score));
  facts.emplace_back("Decoder", p.decoder);
  if (!p.model.empty()) facts.emplace_back("Model class", p.model);
  return facts;
}

}  // namespace velto
