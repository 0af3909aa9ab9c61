#include "batch/scan_pipeline.h"

#include <oneapi/tbb/enumerable_thread_specific.h>
#include <oneapi/tbb/global_control.h>
#include <oneapi/tbb/parallel_for.h>
#include <oneapi/tbb/parallel_pipeline.h>
#include <oneapi/tbb/task_arena.h>

#include <atomic>
#include <cmath>
#include <deque>
#include <utility>

#include "batch/drawable_read.h"
#include "batch/file_calibration.h"
#include "batch/record_batches.h"
#include "batch/repeated_names.h"
#include "core/letter_codes.h"
#include "predict/coding_sequence.h"
#include "predict/learning_sample.h"
#include "seqio/record_reader.h"

namespace velto {
namespace {

namespace tbb = oneapi::tbb;

// A batch read, and what has to be written for it.
struct Work {
  RecordBatch batch;
  std::vector<bool> nameIsRepeat;  // [record] an earlier record has the same name
  std::vector<std::string> texts;  // [output]
  ScanCounts counts;
  RunFigures figures;
  std::vector<Record> gallery;
};

// A region that is not to be reported, which leaves its score only.
void dropRegion(Prediction& prediction) {
  prediction.status = Prediction::Status::kNoncoding;
  prediction.start = -1;
  prediction.stop = -1;
  prediction.frameshifts.clear();
  prediction.frame.clear();
}

// The sample of the run's reads.
std::vector<Read> sampleOf(const std::deque<RecordBatch>& beginning, bool useQualities) {
  std::vector<Read> sample;
  for (const RecordBatch& batch : beginning) {
    const std::vector<Read> reads = readsOf(batch.records, useQualities);
    sample.insert(sample.end(), reads.begin(), reads.end());
  }
  return sample;
}

void inParallel(size_t count, const std::function<void(size_t)>& task) {
  tbb::parallel_for(size_t{0}, count, task);
}

class Scan {
 public:
  Scan(const Predictor& predictor, const ScanOptions& options, std::vector<ScanOutput>& outputs)
      : predictor_(predictor),
        options_(options),
        calibration_(options.known),
        outputs_(outputs),
        batches_(filesInOrder(options.inputs)) {}

  ScanResult run() {
    const auto threads = static_cast<size_t>(options_.threads);
    const tbb::global_control most(tbb::global_control::max_allowed_parallelism, threads);
    tbb::task_arena arena(options_.threads);
    arena.execute([this] { calibrate(); });
    works_.resize(kBatchesPerThread * threads);
    arena.execute([this] { runPipeline(); });
    if (batches_.error() != nullptr) std::rethrow_exception(batches_.error());
    return {counts_, figures_, std::move(gallery_), calibration_};
  }

 private:
  static constexpr size_t kBatchesPerThread = 3;

  void calibrate() {
    if (options_.learn && predictor_.usesCalibration()) {
      const auto& beginning = batches_.readAhead(kSampleReads, kSampleBases);
      calibration_ = predictor_.learn(sampleOf(beginning, options_.useQualities), options_.predict,
                                      options_.known, inParallel);
    }
    predictor_ = predictor_.calibrated(calibration_);
  }

  void runPipeline() {
    const auto read = [this](tbb::flow_control& flow) { return readBatch(flow); };
    const auto predict = [this](Work* work) { return predictBatch(work); };
    const auto write = [this](Work* work) { writeBatch(*work); };
    tbb::parallel_pipeline(
        works_.size(), tbb::make_filter<void, Work*>(tbb::filter_mode::serial_in_order, read) &
                           tbb::make_filter<Work*, Work*>(tbb::filter_mode::parallel, predict) &
                           tbb::make_filter<Work*, void>(tbb::filter_mode::serial_in_order, write));
  }

  // Batches are written in order, so that the oldest of a full ring is always the next one free.
  Work* readBatch(tbb::flow_control& flow) {
    Work& work = works_[nextWork_++ % works_.size()];
    work.batch = batches_.next();
    if (work.batch.records.empty()) {
      flow.stop();
      return nullptr;
    }
    lookForRepeatedNames(work);
    return &work;
  }

  void lookForRepeatedNames(Work& work) {
    work.nameIsRepeat.clear();
    for (const Record& record : work.batch.records) {
      work.nameIsRepeat.push_back(names_.isRepeat(record.name));
      if (!work.nameIsRepeat.back() || warnedOfName_) continue;
      warnedOfName_ = true;
      options_.warnOfRepeatedName(record.name);
    }
  }

  Work* predictBatch(Work* work) {
    work->texts.assign(outputs_.size(), "");
    work->counts = ScanCounts();
    work->figures = RunFigures();
    work->gallery.clear();
    Workspace& workspace = workspaces_.local();
    std::vector<Prediction> predictions = predictor_.predictAll(
        readsOf(work->batch.records, options_.useQualities), workspace, options_.predict);
    for (size_t i = 0; i < predictions.size(); ++i) {
      Prediction& prediction = predictions[i];
      requireProbability(prediction);
      const bool coding = prediction.status == Prediction::Status::kCoding;
      if (coding && prediction.score < options_.minScore.value_or(prediction.score)) {
        dropRegion(prediction);
      }
      const std::string& bases = work->batch.records[i].bases;
      work->counts.add(prediction, countUnknown(bases, options_.predict.letters));
      appendRead(*work, i, prediction);
      if (prediction.isCoding()) keepForGallery(*work, i);
    }
    work->batch.records.clear();
    return work;
  }

  // A least probability must not be passed over.
  void requireProbability(const Prediction& prediction) const {
    const bool wanted = !std::isnan(options_.predict.minProbability);
    if (wanted && prediction.isPredicted() && std::isnan(prediction.probability)) {
      throw Error("the decoder '" + prediction.decoder +
                  "' gives no probabilities, so that no least one can be asked for");
    }
  }

  // Appends what the outputs say of the batch's record i.
  void appendRead(Work& work, size_t i, const Prediction& prediction) const {
    const Record& record = work.batch.records[i];
    CodingSequence coding;
    if (prediction.status == Prediction::Status::kCoding) {
      coding = codingSequence(
          prediction, predictedLetters(record.bases, prediction.strand, options_.predict.letters),
          *options_.code);
    }
    const long ordinal = work.batch.firstOrdinal + static_cast<long>(i);
    const ScannedRead read{record, ordinal, prediction, coding, work.nameIsRepeat[i]};
    work.figures.add(read);
    for (size_t k = 0; k < outputs_.size(); ++k) outputs_[k].append(read, work.texts[k]);
  }

  // Takes the batch's record i, of which nothing else is wanted any more.
  void keepForGallery(Work& work, size_t i) const {
    Record& record = work.batch.records[i];
    const bool wanted = !galleryIsFull_ && work.gallery.size() < options_.galleryReads;
    if (wanted && record.bases.size() <= kMostDrawnBases) work.gallery.push_back(std::move(record));
  }

  void writeBatch(Work& work) {
    for (size_t i = 0; i < outputs_.size(); ++i) outputs_[i].file.write(work.texts[i]);
    counts_.add(work.counts);
    figures_.add(work.figures);
    for (Record& record : work.gallery) {
      if (gallery_.size() < options_.galleryReads) gallery_.push_back(std::move(record));
    }
    galleryIsFull_ = gallery_.size() >= options_.galleryReads;
    if (options_.progress) options_.progress(counts_);
  }

  Predictor predictor_;  // constant once calibrated
  const ScanOptions& options_;
  Calibration calibration_;
  std::vector<ScanOutput>& outputs_;
  std::vector<Work> works_;    // ring of the batches in memory
  RecordBatches batches_;      // used by the reading stage only
  RepeatedNames names_;        // likewise
  bool warnedOfName_ = false;  // likewise
  size_t nextWork_ = 0;        // likewise
  tbb::enumerable_thread_specific<Workspace> workspaces_;
  ScanCounts counts_;            // used by the writing stage only
  RunFigures figures_;           // likewise
  std::vector<Record> gallery_;  // likewise
  std::atomic<bool> galleryIsFull_ = false;
};

}  // namespace

ScanResult scanReads(const Predictor& predictor, const ScanOptions& options,
                     std::vector<ScanOutput>& outputs) {
  return Scan(predictor, options, outputs).run();
}

}  // namespace velto
