#include "workbench/simulate.h"

#include <cstdint>
#include <memory>
#include <optional>

#include "seqio/output_file.h"
#include "simulation/truth_table.h"
#include "workbench/sampling_options.h"

namespace velto {
namespace {

std::string fastaRecord(const SimulatedRead& read, const std::string& name) {
  return ">" + name + " " + read.source->name + "\n" + baseLetters(read.bases) + "\n";
}

constexpr char kReadsOption[] = "--reads";

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
  if (options.truthPath == options.fastaPath) {
    throw CLI::ValidationError("--truth", "the reads go to the same file");
  }
  options.sampling = parseSampling(command, line.sampling, kReadsOption);
  simulate(options);
}

}  // namespace

void simulate(const SimulateOptions& options) {
  const std::vector<Transcript> transcripts =
      loadSources(options.codingFiles, options.noncodingFiles);
  OutputFile fasta(options.fastaPath);
  std::optional<OutputFile> truth;
  if (!options.truthPath.empty()) {
    truth.emplace(options.truthPath);
    truth->write(truthHeader());
  }
  const std::uint64_t count = readCount(options.sampling, transcripts.size());
  for (std::uint64_t index = 0; index < count; ++index) {
    const SimulatedRead read = sampleRead(options.sampling, transcripts, index);
    const std::string name = sampledReadName(index);
    fasta.write(fastaRecord(read, name));
    if (truth) truth->write(truthLine(truthOf(read, name)));
  }
  fasta.commit();
  if (truth) truth->commit();
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
  addSamplingOptions(*command, line->sampling, kReadsOption);
  command->add_option("-o,--output", options.fastaPath, "Reads as FASTA [standard output]");
  command->add_option("--truth", options.truthPath, "Truth table, tab-separated");
  command->callback([command, line] { run(*command, *line); });
}

}  // namespace velto
