// 1. Outputs  2. Progress  3. The run  4. Options
#include "workbench/scan.h"

#include <unistd.h>

#include <chrono>
#include <functional>
#include <iostream>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "batch/file_calibration.h"
#include "batch/formats/read_name.h"
#include "batch/formats/row_formats.h"
#include "batch/multiqc.h"
#include "batch/run_report.h"
#include "batch/scan_pipeline.h"
#include "core/genetic_code.h"
#include "seqio/input_error.h"
#include "seqio/output_set.h"
#include "velto/velto.h"
#include "workbench/calibration_options.h"
#include "workbench/file_options.h"
#include "workbench/prediction_options.h"
#include "workbench/report_options.h"
#include "workbench/threads.h"

namespace velto {
namespace {

using Clock = std::chrono::steady_clock;

// The choices of --stops.
const std::map<std::string, InnerStops> kInnerStops = {
    {"keep", InnerStops::kKeep}, {"x", InnerStops::kX}, {"split", InnerStops::kSplit}};

// The options as they are written on the command line; a path left empty is not written.
struct CommandLine {
  std::vector<std::string> inputs;
  std::string modelDirectory;
  std::string decoder;  // empty: the model's default one
  int threads = 0;      // 0: all
  // By format, as in rowFormats(); the first one is the table of all reads.
  std::vector<std::string> rowFiles = std::vector<std::string>(rowFormats().size());
  std::string summary;
  ReportLine report;
  std::string strand = "both";
  std::string stops = "x";
  int geneticCode = 1;
  std::optional<double> minScore;
  std::optional<double> minProbability;
  CalibrationLine calibration;
  bool exactCase = false;
  bool quiet = false;
  bool progress = false;
};

// ---- 1. Outputs

struct Outputs {
  OutputSet files;
  std::vector<ScanOutput> rows;
  // Of the whole run; null: not wanted.
  OutputFile* summary = nullptr;
  OutputFile* report = nullptr;
  OutputFile* multiqc = nullptr;
};

// Throws OutputError.
void openOutputs(const CommandLine& line, const FormatChoices& choices, Outputs& outputs) {
  for (size_t i = 0; i < line.rowFiles.size(); ++i) {
    if (line.rowFiles[i].empty()) continue;
    const RowFormat& format = rowFormats()[i];
    OutputFile& file = outputs.files.add(line.rowFiles[i]);
    file.write(format.header);
    outputs.rows.push_back({file, [&format, choices](const ScannedRead& read, std::string& text) {
                              format.append(read, choices, text);
                            }});
  }
  const auto addIfNamed = [&outputs](const std::string& path) {
    return path.empty() ? nullptr : &outputs.files.add(path);
  };
  outputs.summary = addIfNamed(line.summary);
  outputs.report = addIfNamed(line.report.page);
  outputs.multiqc = addIfNamed(line.report.multiqc);
}

// ---- 2. Progress

// Rewrites one line of the terminal twice a second.
class ProgressLine {
 public:
  void operator()(const ScanCounts& counts) {
    const Clock::time_point now = Clock::now();
    if (now < next_) return;
    next_ = now + std::chrono::milliseconds(500);
    std::cerr << "\rvelto scan: " << counts.reads << " reads, " << counts.coding << " coding"
              << std::flush;
  }

  static void clear() { std::cerr << "\r\033[K" << std::flush; }

 private:
  Clock::time_point next_ = Clock::now();
};

// ---- 3. The run

bool wantScores(const CommandLine& line) {
  for (size_t i = 0; i < line.rowFiles.size(); ++i) {
    if (rowFormats()[i].needsScores && !line.rowFiles[i].empty()) return true;
  }
  return false;
}

ScanOptions scanOptions(const CommandLine& line) {
  ScanOptions options;
  options.inputs = line.inputs;
  options.predict.letters = line.exactCase ? Letters::kExact : Letters::kFolded;
  options.predict.strand = strandNamed(line.strand);
  options.predict.wantScores = wantScores(line);
  options.code = geneticCode(line.geneticCode);
  options.useQualities = !line.calibration.ignoreQualities;
  options.known = knownCalibration(line.calibration);
  options.learn = line.calibration.file.empty();
  options.minScore = line.minScore;
  if (line.minProbability) options.predict.minProbability = *line.minProbability;
  if (!line.report.page.empty()) options.galleryReads = line.report.reads;
  options.threads = threadCount(line.threads);
  if (line.progress) options.progress = ProgressLine();
  options.warnOfRepeatedName = [](const std::string& name) {
    std::cerr << "velto: warning: the name '" << withoutControlCharacters(name)
              << "' occurs more than once; other repeated names are not reported\n";
  };
  return options;
}

// What is told of the reads must not be passed over.
void requireUseOf(const Calibration& known, const Predictor& predictor) {
  const bool isTold = known.errorRates || known.codingShare || known.truncatedShare;
  if (!isTold || predictor.usesCalibration()) return;
  throw Error("the decoder '" + predictor.decoder() + "' makes no use of error rates and shares");
}

ScanResult scanInto(const Predictor& predictor, const ScanOptions& options, Outputs& outputs) {
  try {
    return scanReads(predictor, options, outputs.rows);
  } catch (const InputError&) {
    outputs.files.finishStreams();
    throw;
  }
}

std::vector<std::string> galleryOf(const Predictor& predictor, const ScanOptions& options,
                                   const ScanResult& result) {
  const Predictor calibrated = predictor.calibrated(result.calibration);
  std::vector<std::string> cards;
  for (const Record& record : result.gallery) {
    const DrawableRead read =
        drawableRead(calibrated, record, options.predict, *options.code, options.useQualities);
    cards.push_back(galleryCard(read, static_cast<int>(cards.size()) + 1));
  }
  return cards;
}

void writeRunFiles(const CommandLine& line, const ScanRun& run, const ScanResult& result,
                   const std::vector<std::string>& gallery, Outputs& outputs) {
  if (outputs.summary != nullptr) {
    outputs.summary->write(summaryJson(run, result.counts, result.figures));
  }
  if (outputs.report != nullptr) {
    outputs.report->write(runReport(run, result.counts, result.figures, gallery));
  }
  if (outputs.multiqc != nullptr) {
    const std::string sample = multiqcSample(line.report.multiqc);
    outputs.multiqc->write(multiqcJson(sample, result.counts, result.figures));
  }
}

void tell(const ScanResult& result, double seconds) {
  std::cerr << "velto scan: " << countsText(result.counts, seconds) << "\n";
  const std::string learnt = calibrationText(result.calibration);
  if (!learnt.empty()) std::cerr << "velto scan: " << learnt << "\n";
}

void scan(const CommandLine& line) {
  const Clock::time_point begin = Clock::now();
  const Predictor predictor(line.modelDirectory, line.decoder);
  const ScanOptions options = scanOptions(line);
  requireUseOf(options.known, predictor);
  Outputs outputs;
  openOutputs(line, {options.predict.letters, kInnerStops.at(line.stops)}, outputs);
  const ScanResult result = scanInto(predictor, options, outputs);
  const double seconds = std::chrono::duration<double>(Clock::now() - begin).count();
  const ScanRun run{VELTO_VERSION,    line.modelDirectory, predictor.decoder(), line.inputs,
                    line.geneticCode, result.calibration,  options.threads,     seconds};
  writeRunFiles(line, run, result, galleryOf(predictor, options, result), outputs);
  outputs.files.commit();
  if (line.progress) ProgressLine::clear();
  const std::string warning = unknownBasesWarning(result.counts);
  if (!warning.empty()) std::cerr << "velto: warning: " << warning << "\n";
  if (!line.quiet) tell(result, seconds);
}

// ---- 4. Options

void addOutputOptions(CLI::App& command, CommandLine& line) {
  for (size_t i = 0; i < line.rowFiles.size(); ++i) {
    const RowFormat& format = rowFormats()[i];
    command.add_option(format.option, line.rowFiles[i], format.meaning)
        ->type_name("FILE")
        ->check(fileName());
  }
  line.rowFiles.front() = "-";
  command.add_option("--summary", line.summary, "Counts of the run as JSON")
      ->type_name("FILE")
      ->check(fileName());
  command.add_option("--stops", line.stops, "Inner stops of proteins: '*', 'X' or split there")
      ->check(CLI::IsMember(kInnerStops))
      ->capture_default_str();
  addGeneticCodeOption(command, line.geneticCode);
}

}  // namespace

void addScanCommand(CLI::App& app) {
  CLI::App* command = app.add_subcommand("scan", "Find the coding regions of many reads");
  const auto line = std::make_shared<CommandLine>();
  command->add_option("FILE", line->inputs, "FASTA, FASTQ (gz too) or BAM; '-': standard input")
      ->type_name("")
      ->required();
  addModelOption(*command, line->modelDirectory);
  addDecoderOption(*command, line->decoder);
  addThreadsOption(*command, line->threads);
  command->set_version_flag("--version", std::string("velto ") + VELTO_VERSION);
  addOutputOptions(*command, *line);
  addStrandOption(*command, line->strand);
  command->add_option("--min-score", line->minScore, "Report no coding region below this score");
  command
      ->add_option("--min-probability", line->minProbability,
                   "Report no coding region below this probability")
      ->check(CLI::Range(0.0, 1.0));
  addReportOptions(*command, line->report);
  addCalibrationOptions(*command, line->calibration);
  command->add_flag("--exact-case", line->exactCase, "Only upper-case A, C, G, T are bases");
  command->add_flag("-q,--quiet", line->quiet, "No counts at the end");
  command->add_flag("--progress", line->progress, "Show the progress on standard error");
  command->callback([line] {
    std::vector<std::string> inputs = line->inputs;
    inputs.push_back(line->calibration.file);
    std::vector<std::string> outputs = line->rowFiles;
    outputs.insert(outputs.end(), {line->summary, line->report.page, line->report.multiqc});
    requireDistinctFiles(inputs, outputs);
    scan(*line);
  });
}

}  // namespace velto
