// 1. Reads  2. Models  3. Output  4. Options
#include "workbench/evaluate.h"

#include <filesystem>
#include <memory>
#include <sstream>
#include <system_error>

#include "evaluation/evaluation_plots.h"
#include "evaluation/evaluation_report.h"
#include "evaluation/model_evaluation.h"
#include "evaluation/rate_series.h"
#include "seqio/output_set.h"
#include "workbench/decimal_numbers.h"
#include "workbench/file_options.h"
#include "workbench/installed_models.h"
#include "workbench/sampling_options.h"
#include "workbench/threads.h"

namespace velto {
namespace {

// ---- 1. Reads

std::vector<ReadSet> simulatedSets(const EvaluateOptions& options) {
  const std::vector<Transcript> transcripts =
      loadSources(options.codingFiles, options.noncodingFiles, options.geneticCode);
  std::vector<ReadSet> sets;
  for (const double share : indelShares(options.sampling.errors.rates)) {
    const bool isWhole = share == 1.0;
    if (!isWhole && options.plotsPath.empty()) continue;
    ReadSampling sampling = options.sampling;
    sampling.errors.rates = scaleIndels(sampling.errors.rates, share);
    sets.push_back({simulateLabelled(sampling, transcripts), isWhole});
  }
  return sets;
}

std::vector<ReadSet> readSets(const EvaluateOptions& options) {
  if (options.readsPath.empty()) return simulatedSets(options);
  return {{loadLabelled(options.readsPath, options.truthPath), true}};
}

// ---- 2. Models

JudgedModel judge(const std::string& directory, const std::string& decoder,
                  const std::vector<ReadSet>& sets, const EvaluateOptions& options) {
  RateSeries series = {RatePoints::kNone, options.sampling.seed};
  if (!options.plotsPath.empty()) {
    series.points = options.readsPath.empty() ? RatePoints::kSets : RatePoints::kReads;
  }
  const Predictor predictor(directory, decoder);
  JudgedModel judged =
      withThreads(options.threads, [&] { return judgeModel(predictor, sets, series); });
  judged.evaluation.directory = directory;
  judged.evaluation.decoder = predictor.decoder();
  return judged;
}

bool comparesTwo(const EvaluateOptions& options) {
  return !options.compareDirectory.empty() || !options.compareDecoder.empty();
}

const std::string& secondDirectory(const EvaluateOptions& options) {
  return options.compareDirectory.empty() ? options.modelDirectory : options.compareDirectory;
}

// ---- 3. Output

std::string joined(const std::vector<std::string>& parts) {
  std::string text;
  for (const std::string& part : parts) text += (text.empty() ? "" : " ") + part;
  return text;
}

std::string ratesText(const ErrorRates& rates) {
  std::ostringstream text;
  text << "substitution " << rates.substitution << ", insertion " << rates.insertion
       << ", deletion " << rates.deletion << ", unknown " << rates.unknown;
  return text.str();
}

std::string lengthsText(const ReadSampling& sampling) {
  if (!sampling.lengths) return "full";
  return std::to_string(sampling.lengths->shortest) + "-" +
         std::to_string(sampling.lengths->longest);
}

std::vector<std::pair<std::string, std::string>> inputOf(const std::vector<ModelEvaluation>& models,
                                                         const EvaluateOptions& options) {
  std::vector<std::pair<std::string, std::string>> input;
  for (std::size_t m = 0; m < models.size(); ++m) {
    const std::string which = models.size() == 1 ? "" : (m == 0 ? "first " : "second ");
    input.emplace_back(which + "model", models[m].directory);
    input.emplace_back(which + "decoder", models[m].decoder);
  }
  if (!options.readsPath.empty()) {
    input.emplace_back("reads file", options.readsPath);
    input.emplace_back("truth file", options.truthPath);
  } else {
    if (!options.codingFiles.empty()) input.emplace_back("coding", joined(options.codingFiles));
    if (!options.noncodingFiles.empty()) {
      input.emplace_back("non-coding", joined(options.noncodingFiles));
    }
    if (options.geneticCode != 1) {
      input.emplace_back("genetic code", std::to_string(options.geneticCode));
    }
    input.emplace_back("error rates", ratesText(options.sampling.errors.rates));
    input.emplace_back("lengths", lengthsText(options.sampling));
  }
  input.emplace_back("seed", std::to_string(options.sampling.seed));
  return input;
}

std::string plotPath(const EvaluateOptions& options, const Plot& plot) {
  return options.plotsPath + "/" + plot.fileName;
}

// A folder, made if it is not there. What was made and is still empty goes away with the object.
class Folder {
 public:
  Folder() = default;
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;
  ~Folder() {
    std::error_code ignored;  // a folder that holds files stays
    for (const std::filesystem::path& path : made_) std::filesystem::remove(path, ignored);
  }

  void make(const std::filesystem::path& path) {
    std::error_code error;
    for (std::filesystem::path p = path; !p.empty() && !std::filesystem::exists(p, error);
         p = p.parent_path()) {
      made_.push_back(p);
    }
    std::filesystem::create_directories(path, error);
    if (error) throw OutputError(path.string(), "cannot make the folder", error.value());
  }

 private:
  std::vector<std::filesystem::path> made_;  // innermost first
};

// What is asked for, opened before the work, which may take long.
struct Outputs {
  Folder plotsFolder;
  OutputSet files;
  OutputFile* tables = nullptr;  // null: not wanted
  OutputFile* json = nullptr;
  std::vector<OutputFile*> plots;  // by kPlots; empty: not wanted
};

void openOutputs(const EvaluateOptions& options, Outputs& outputs) {
  if (options.jsonPath != "-") outputs.tables = &outputs.files.add("-");
  if (!options.jsonPath.empty()) outputs.json = &outputs.files.add(options.jsonPath);
  if (options.plotsPath.empty()) return;
  outputs.plotsFolder.make(options.plotsPath);
  for (const Plot& plot : kPlots) {
    outputs.plots.push_back(&outputs.files.add(plotPath(options, plot)));
  }
}

void writeReport(const EvaluationReport& report, Outputs& outputs) {
  if (outputs.tables != nullptr) outputs.tables->write(reportText(report));
  if (outputs.json != nullptr) outputs.json->write(reportJson(report));
  for (std::size_t i = 0; i < outputs.plots.size(); ++i) {
    outputs.plots[i]->write(kPlots[i].draw(report));
  }
  outputs.files.commit();
}

// ---- 4. Options

// The options as they are written on the command line.
struct CommandLine {
  EvaluateOptions options;
  SamplingLine sampling;
  double indelScale = 1.0;
};

void checkSources(const EvaluateOptions& options) {
  const bool hasTranscripts = !options.codingFiles.empty() || !options.noncodingFiles.empty();
  if (options.readsPath.empty() != options.truthPath.empty()) {
    throw CLI::ValidationError("--reads", "reads and truth table belong together");
  }
  if (options.readsPath.empty() != hasTranscripts) {
    throw CLI::ValidationError(
        "--reads", "either --reads with --truth, or --coding or --noncoding transcripts");
  }
}

// Options of the simulation mean nothing for reads that are given.
void checkGivenReads(const CLI::App& command) {
  for (const char* option : {"--preset", "--rates", "--length", "--full-length", "--per-transcript",
                             "--read-count", "--indel-scale", "--code"}) {
    if (command.count(option) > 0) throw CLI::ExcludesError("--reads", option);
  }
}

void checkFiles(const EvaluateOptions& options) {
  std::vector<std::string> inputs = {options.readsPath, options.truthPath};
  inputs.insert(inputs.end(), options.codingFiles.begin(), options.codingFiles.end());
  inputs.insert(inputs.end(), options.noncodingFiles.begin(), options.noncodingFiles.end());
  std::vector<std::string> outputs = {options.jsonPath == "-" ? "" : "-", options.jsonPath};
  if (!options.plotsPath.empty()) {
    for (const Plot& plot : kPlots) outputs.push_back(plotPath(options, plot));
  }
  requireDistinctFiles(inputs, outputs);
}

void run(const CLI::App& command, CommandLine& line) {
  EvaluateOptions& options = line.options;
  checkSources(options);
  checkFiles(options);
  if (!options.readsPath.empty()) checkGivenReads(command);
  options.sampling = parseSampling(command, line.sampling);
  options.geneticCode = line.sampling.geneticCode;
  options.sampling.errors.rates = scaleIndels(options.sampling.errors.rates, line.indelScale);
  if (!options.sampling.errors.rates.valid()) {
    throw CLI::ValidationError("--indel-scale", "the error rates would sum up to more than 1");
  }
  evaluate(options);
}

}  // namespace

void evaluate(const EvaluateOptions& options) {
  Outputs outputs;
  openOutputs(options, outputs);
  const std::vector<ReadSet> sets = readSets(options);
  EvaluationReport report;
  const JudgedModel first = judge(options.modelDirectory, options.decoder, sets, options);
  report.transcripts = static_cast<long>(first.byTranscript.size());
  report.models.push_back(first.evaluation);
  if (comparesTwo(options)) {
    const JudgedModel second =
        judge(secondDirectory(options), options.compareDecoder, sets, options);
    report.models.push_back(second.evaluation);
    report.differences =
        pairedBootstrap(first.byTranscript, second.byTranscript, options.sampling.seed);
  }
  report.input = inputOf(report.models, options);
  writeReport(report, outputs);
}

void addEvaluateCommand(CLI::App& app) {
  CLI::App* command = app.add_subcommand("evaluate", "Judge a model directory by labelled reads");
  const auto line = std::make_shared<CommandLine>();
  EvaluateOptions& options = line->options;
  command
      ->add_option("-d,--model", options.modelDirectory,
                   "Model directory, or name of an installed model")
      ->type_name("DIR|NAME")
      ->required()
      ->transform(modelDirectory());
  command->add_option("--decoder", options.decoder, "Decoder (default: the model's)");
  command
      ->add_option("--compare", options.compareDirectory, "Second model, judged by the same reads")
      ->type_name("DIR|NAME")
      ->transform(modelDirectory());
  command->add_option("--compare-decoder", options.compareDecoder,
                      "Decoder of the second model, which is the first one without --compare "
                      "(default: the model's)");
  command->add_option("--reads", options.readsPath, "Labelled reads; needs --truth")
      ->type_name("FILE")
      ->check(fileName());
  command->add_option("--truth", options.truthPath, "Their truth table, from velto simulate")
      ->type_name("FILE")
      ->check(fileName());
  command
      ->add_option("--coding", options.codingFiles,
                   "Simulate reads from these coding transcripts (FASTA)")
      ->type_name("FILE");
  command
      ->add_option("--noncoding", options.noncodingFiles,
                   "Simulate reads from these non-coding transcripts (FASTA)")
      ->type_name("FILE");
  addSamplingOptions(*command, line->sampling);
  command->add_option("--indel-scale", line->indelScale, "Factor of both indel rates (default: 1)")
      ->check(atLeast(0));
  command->add_option("--json", options.jsonPath, "JSON file; - for standard output, no tables")
      ->type_name("FILE")
      ->check(fileName());
  command->add_option("--plots", options.plotsPath, "Folder for plots as SVG")
      ->type_name("DIR")
      ->check(fileName());
  addThreadsOption(*command, options.threads);
  command->callback([command, line] { run(*command, *line); });
}

}  // namespace velto
