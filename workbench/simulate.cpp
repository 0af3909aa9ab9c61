#include "workbench/simulate.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "core/letter_codes.h"
#include "seqio/output_set.h"
#include "simulation/truth_table.h"
#include "workbench/file_options.h"
#include "workbench/sampling_options.h"

namespace velto {
namespace {

// Letters of a read as its file has it.
std::string lettersOf(const SimulatedRead& read) {
  if (!read.reversed) return baseLetters(read.bases);
  std::vector<short> codes = read.bases;
  reverseComplement(codes);
  return baseLetters(codes);
}

std::string fastaRecord(const SimulatedRead& read, const std::string& name) {
  return ">" + name + " " + read.source->name + "\n" + lettersOf(read) + "\n";
}

std::string fastqRecord(const SimulatedRead& read, const std::string& name) {
  std::string qualities;
  for (const std::uint8_t phred : read.phred) qualities += static_cast<char>(phred + 33);
  if (read.reversed) std::reverse(qualities.begin(), qualities.end());
  return "@" + name + " " + read.source->name + "\n" + lettersOf(read) + "\n+\n" + qualities + "\n";
}

constexpr char kPlus[] = "plus";
constexpr char kBoth[] = "both";
constexpr char kInformationOption[] = "--quality-information";

// The options as they are written on the command line.
struct CommandLine {
  SimulateOptions options;
  SamplingLine sampling;
  double information = 0.0;
  std::string strand = kPlus;
};

bool isFastqName(std::string_view path) {
  if (path.ends_with(".gz")) path.remove_suffix(3);
  return path.ends_with(".fastq") || path.ends_with(".fq");
}

// Gives the errors the qualities that FASTQ wants, or takes away those that FASTA has no use for.
void chooseQualities(const CLI::App& command, const CommandLine& line, ErrorModel& errors) {
  const bool informed = command.count(kInformationOption) > 0;
  if (!line.options.fastq) {
    if (informed) throw CLI::ValidationError(kInformationOption, "FASTA has no qualities");
    errors.quality = {};
    return;
  }
  if (errors.quality.mean == 0) errors.quality = qualitiesOf(errors.rates);
  if (!informed) return;
  errors.quality.information = line.information;
  if (!errors.valid()) throw CLI::ValidationError(kInformationOption, "not a number from 0 to 1");
}

void run(const CLI::App& command, CommandLine& line) {
  SimulateOptions& options = line.options;
  if (options.codingFiles.empty() && options.noncodingFiles.empty()) {
    throw CLI::RequiredError("FILE or --noncoding");
  }
  std::vector<std::string> inputs = options.codingFiles;
  inputs.insert(inputs.end(), options.noncodingFiles.begin(), options.noncodingFiles.end());
  requireDistinctFiles(inputs, {options.readsPath, options.truthPath});
  options.fastq = options.fastq || isFastqName(options.readsPath);
  options.sampling = parseSampling(command, line.sampling);
  options.geneticCode = line.sampling.geneticCode;
  options.sampling.bothStrands = line.strand == kBoth;
  chooseQualities(command, line, options.sampling.errors);
  simulate(options);
}

}  // namespace

void simulate(const SimulateOptions& options) {
  OutputSet outputs;
  OutputFile& reads = outputs.add(options.readsPath);
  OutputFile* truth = options.truthPath.empty() ? nullptr : &outputs.add(options.truthPath);
  const std::vector<Transcript> transcripts =
      loadSources(options.codingFiles, options.noncodingFiles, options.geneticCode);
  const Strands strands = options.sampling.bothStrands ? Strands::kNamed : Strands::kAllPlus;
  if (truth != nullptr) truth->write(truthHeader(strands));
  const std::uint64_t count = readCount(options.sampling, transcripts.size());
  for (std::uint64_t index = 0; index < count; ++index) {
    const SimulatedRead read = sampleRead(options.sampling, transcripts, index);
    const std::string name = sampledReadName(index);
    reads.write(options.fastq ? fastqRecord(read, name) : fastaRecord(read, name));
    if (truth != nullptr) truth->write(truthLine(truthOf(read, name), strands));
  }
  outputs.commit();
}

void addSimulateCommand(CLI::App& app) {
  CLI::App* command =
      app.add_subcommand("simulate", "Make labelled error-prone reads from transcripts");
  const auto line = std::make_shared<CommandLine>();
  SimulateOptions& options = line->options;
  command
      ->add_option("FILE", options.codingFiles,
                   "FASTA files of coding transcripts (CDS=a-b or |CDS:a-b| in the header)")
      ->type_name("");
  command
      ->add_option("--noncoding", options.noncodingFiles, "FASTA files of non-coding transcripts")
      ->type_name("FILE");
  addSamplingOptions(*command, line->sampling);
  command
      ->add_option("-o,--output", options.readsPath,
                   "Reads, as FASTQ if it ends in .fastq, .fq, .fastq.gz or .fq.gz (default: "
                   "standard output)")
      ->type_name("FILE")
      ->check(fileName());
  command->add_flag("--fastq", options.fastq, "Reads as FASTQ whatever their file is called");
  command
      ->add_option(
          kInformationOption, line->information,
          "How much qualities tell about errors, 0 (all equal) to 1 (default: the preset's)")
      ->check(CLI::Range(0.0, 1.0));
  command
      ->add_option("--strand", line->strand,
                   "both: the reverse complement of every other read, at random")
      ->check(CLI::IsMember({kPlus, kBoth}))
      ->capture_default_str();
  command->add_option("--truth", options.truthPath, "Truth table, tab-separated")
      ->type_name("FILE")
      ->check(fileName());
  command->callback([command, line] { run(*command, *line); });
}

}  // namespace velto
