#include "workbench/simulate.h"

#include <cstdint>
#include <memory>

#include "seqio/output_set.h"
#include "simulation/truth_table.h"
#include "workbench/file_options.h"
#include "workbench/sampling_options.h"

namespace velto {
namespace {

std::string fastaRecord(const SimulatedRead& read, const std::string& name) {
  return ">" + name + " " + read.source->name + "\n" + baseLetters(read.bases) + "\n";
}

// The options as they are written on the command line.
struct CommandLine {
  SimulateOptions options;
  SamplingLine sampling;
};

void run(const CLI::App& command, CommandLine& line) {
  SimulateOptions& options = line.options;
  if (options.codingFiles.empty() && options.noncodingFiles.empty()) {
    throw CLI::RequiredError("FILE or --noncoding");
  }
  std::vector<std::string> inputs = options.codingFiles;
  inputs.insert(inputs.end(), options.noncodingFiles.begin(), options.noncodingFiles.end());
  requireDistinctFiles(inputs, {options.fastaPath, options.truthPath});
  options.sampling = parseSampling(command, line.sampling);
  simulate(options);
}

}  // namespace

void simulate(const SimulateOptions& options) {
  OutputSet outputs;
  OutputFile& fasta = outputs.add(options.fastaPath);
  OutputFile* truth = options.truthPath.empty() ? nullptr : &outputs.add(options.truthPath);
  const std::vector<Transcript> transcripts =
      loadSources(options.codingFiles, options.noncodingFiles);
  if (truth != nullptr) truth->write(truthHeader());
  const std::uint64_t count = readCount(options.sampling, transcripts.size());
  for (std::uint64_t index = 0; index < count; ++index) {
    const SimulatedRead read = sampleRead(options.sampling, transcripts, index);
    const std::string name = sampledReadName(index);
    fasta.write(fastaRecord(read, name));
    if (truth != nullptr) truth->write(truthLine(truthOf(read, name)));
  }
  outputs.commit();
}

void addSimulateCommand(CLI::App& app) {
  CLI::App* command =
      app.add_subcommand("simulate", "Make labelled error-prone reads from transcripts");
  const auto line = std::make_shared<CommandLine>();
  SimulateOptions& options = line->options;
  command->add_option("FILE", options.codingFiles,
                      "FASTA files of coding transcripts (CDS=a-b or |CDS:a-b| in the header)");
  command->add_option("--noncoding", options.noncodingFiles,
                      "FASTA files of non-coding transcripts");
  addSamplingOptions(*command, line->sampling);
  command->add_option("-o,--output", options.fastaPath, "Reads as FASTA [standard output]")
      ->check(fileName());
  command->add_option("--truth", options.truthPath, "Truth table, tab-separated")
      ->check(fileName());
  command->callback([command, line] { run(*command, *line); });
}

}  // namespace velto
