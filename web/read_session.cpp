// 1. Opening  2. Predicting  3. What is shown  4. Files
#include "web/read_session.h"

#include <exception>
#include <iterator>
#include <memory>
#include <nlohmann/json.hpp>
#include <span>
#include <utility>

#include "batch/drawable_read.h"
#include "batch/file_calibration.h"
#include "batch/formats/row_formats.h"
#include "batch/record_batches.h"
#include "batch/run_report.h"
#include "batch/scanned_read.h"
#include "core/letter_codes.h"
#include "predict/coding_sequence.h"
#include "predict/learning_sample.h"
#include "seqio/input_error.h"
#include "web/given_text.h"
#include "web/read_json.h"

namespace velto {
namespace {

using Json = nlohmann::ordered_json;

constexpr std::size_t kStepBases = 40'000;  // so that a page hears of progress, and can stop
constexpr std::size_t kGalleryReads = 10;

RecordSources onlySource(std::unique_ptr<RecordSource> source) {
  return [held = std::make_shared<std::unique_ptr<RecordSource>>(std::move(source))] {
    return std::move(*held);
  };
}

}  // namespace

// ---- 1. Opening

ReadSession::ReadSession(const Model& model, const SessionChoices& choices, const std::string& name,
                         std::string bytes)
    : choices_(choices),
      name_(name),
      code_(geneticCode(choices.geneticCode)),
      predictor_(model, choices.decoder) {
  if (code_ == nullptr) throw Error("there is no such genetic code");
  options_.strand = choices.strand;
  for (const RowFormat& format : rowFormats()) tables_.push_back(format.header);
  RecordBatches batches(onlySource(recordsOfText(name, std::move(bytes))));
  for (const RecordBatch& batch : batches.readAhead(kSampleReads, kSampleBases)) {
    sampleReads_ += batch.records.size();
  }
  for (RecordBatch batch = batches.next(); !batch.records.empty(); batch = batches.next()) {
    std::move(batch.records.begin(), batch.records.end(), std::back_inserter(records_));
  }
  if (batches.error() != nullptr) std::rethrow_exception(batches.error());
  if (records_.empty()) throw InputError(name, 0, 0, "there is no read in it");
}

// ---- 2. Predicting

void ReadSession::learn() {
  if (choices_.calibration) {
    calibration_ = *choices_.calibration;
  } else {
    const std::span<const Record> sample = std::span(records_).first(sampleReads_);
    calibration_ = predictor_.learn(readsOf(sample, true), options_);
  }
  predictor_ = predictor_.calibrated(calibration_);
}

std::string ReadSession::predictNext() {
  std::size_t end = predicted_;
  for (std::size_t bases = 0; end < records_.size() && bases < kStepBases; ++end) {
    bases += records_[end].bases.size();
  }
  const std::span<const Record> next = std::span(records_).subspan(predicted_, end - predicted_);
  std::string list;
  for (const Prediction& prediction :
       predictor_.predictAll(readsOf(next, true), workspace_, options_)) {
    list += (list.empty() ? "" : ",") + take(prediction);
  }
  return '[' + list + ']';
}

// Notes the prediction of the next record for files and figures, and returns its entry of the list.
std::string ReadSession::take(const Prediction& prediction) {
  const std::size_t place = predicted_++;
  const Record& record = records_[place];
  CodingSequence coding;
  if (prediction.isCoding()) {
    coding = codingSequence(
        prediction, predictedLetters(record.bases, prediction.strand, options_.letters), *code_);
    const bool drawable = record.bases.size() <= kMostDrawnBases;
    if (drawable && gallery_.size() < kGalleryReads) gallery_.push_back(place);
  }
  const long long unknown = countUnknown(record.bases, options_.letters);
  if (!unknown_ && 2 * unknown > prediction.length) unknown_ = place;
  counts_.add(prediction, unknown);
  const bool isRepeat = names_.isRepeat(record.name);
  const ScannedRead read{record, static_cast<long>(place) + 1, prediction, coding, isRepeat};
  figures_.add(read);
  for (std::size_t i = 0; i < tables_.size(); ++i) {
    const RowFormat& format = rowFormats()[i];
    if (!format.needsScores) format.append(read, {}, tables_[i]);
  }
  return listEntryJson(read);
}

// ---- 3. What is shown

std::string ReadSession::unknownBasesText() const {
  if (!unknown_) return "";
  const Record& record = records_[*unknown_];
  const std::string line = record.line > 0 ? ", line " + std::to_string(record.line) : "";
  return unknownBasesWarning(counts_) + " The first one is record " +
         std::to_string(record.number) + line + ".";
}

std::string ReadSession::summary() const {
  Json json;
  json["reads"] = counts_.reads;
  json["coding"] = counts_.coding;
  json["codingMinus"] = counts_.codingMinus;
  json["noncoding"] = counts_.noncoding;
  json["refused"] = counts_.shortReads + counts_.emptyReads;
  json["decoder"] = predictor_.decoder();
  json["learnt"] = calibrationText(calibration_);
  json["calibration"] = Json::parse(calibrationJson(calibration_));
  json["warning"] = unknownBasesText();
  return json.dump();
}

std::string ReadSession::drawing(std::size_t place) const {
  const Record& record = records_.at(place);
  return drawingJson(record, drawableRead(predictor_, record, options_, *code_, true));
}

// ---- 4. Files

std::string ReadSession::table(std::size_t format) const { return tables_.at(format); }

std::string ReadSession::report(double seconds) const {
  std::vector<std::string> cards;
  for (const std::size_t place : gallery_) {
    cards.push_back(galleryCard(drawableRead(predictor_, records_[place], options_, *code_, true),
                                static_cast<int>(cards.size()) + 1));
  }
  const ScanRun run{
      VELTO_VERSION, choices_.model, predictor_.decoder(), {name_}, code_->number, calibration_, 1,
      seconds};
  return runReport(run, counts_, figures_, cards);
}

}  // namespace velto
