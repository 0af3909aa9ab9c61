#include "workbench/simulate.h"

#include <charconv>
#include <iostream>
#include <iterator>
#include <memory>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "seqio/output_file.h"
#include "training/transcript_file.h"
#include "training/truth_table.h"

namespace velto {
namespace {

// ---- Input

void reportRefused(const RefusalCounts& counts) {
  if (counts.refused() == 0) return;
  std::cerr << "velto: " << counts.refused() << " of " << counts.refused() + counts.accepted()
            << " records refused:\n"
            << counts.text();
}

void append(const std::vector<std::string>& files, TranscriptKind kind,
            std::vector<Transcript>& transcripts) {
  TranscriptSet set = loadTranscripts(files, kind);
  reportRefused(set.counts);
  transcripts.insert(transcripts.end(), std::make_move_iterator(set.transcripts.begin()),
                     std::make_move_iterator(set.transcripts.end()));
}

std::vector<Transcript> load(const SimulateOptions& options) {
  std::vector<Transcript> transcripts;
  append(options.codingFiles, TranscriptKind::kCoding, transcripts);
  append(options.noncodingFiles, TranscriptKind::kNoncoding, transcripts);
  if (transcripts.empty()) throw std::runtime_error("no usable transcript in the input");
  return transcripts;
}

// ---- Reads

std::uint64_t readCount(const SimulateOptions& options, std::size_t transcripts) {
  return options.reads ? *options.reads : options.perTranscript * transcripts;
}

SimulatedRead makeRead(const SimulateOptions& options, const std::vector<Transcript>& transcripts,
                       std::uint64_t index) {
  Random random = Random::split(options.seed, index);
  const std::size_t chosen = options.reads
                                 ? random.below(static_cast<std::uint32_t>(transcripts.size()))
                                 : index / options.perTranscript;
  const Transcript& transcript = transcripts[chosen];
  const Fragment fragment = options.lengths ? sampleFragment(transcript, *options.lengths, random)
                                            : wholeTranscript(transcript);
  return simulateRead(transcript, fragment, options.rates, random);
}

std::string fastaRecord(const SimulatedRead& read, const std::string& name) {
  std::string text = ">" + name + " " + read.source->name + "\n";
  text.reserve(text.size() + read.bases.size() + 1);
  for (const short base : read.bases) text += base < 0 ? 'N' : "ATGC"[base];
  return text + "\n";
}

// ---- Options

template <typename Number>
Number parseNumber(std::string_view text, const std::string& option) {
  Number value{};
  const char* end = text.data() + text.size();
  const auto result = std::from_chars(text.data(), end, value);
  if (result.ec != std::errc() || result.ptr != end) {
    throw CLI::ValidationError(option, "'" + std::string(text) + "' is not a number");
  }
  return value;
}

ErrorRates parseRates(const std::string& text) {
  const std::string option = "--rates";
  std::vector<double> shares;
  for (const std::string& part : CLI::detail::split(text, ',')) {
    shares.push_back(parseNumber<double>(part, option));
  }
  if (shares.size() != 4) throw CLI::ValidationError(option, "four rates are needed");
  const ErrorRates rates{shares[0], shares[1], shares[2], shares[3]};
  if (!rates.valid()) {
    throw CLI::ValidationError(option, "rates must be at least 0 and sum up to at most 1");
  }
  return rates;
}

ErrorRates ratesOfPreset(const std::string& name) {
  const std::optional<ErrorRates> rates = presetRates(name);
  if (!rates) throw CLI::ValidationError("--preset", "there is no preset '" + name + "'");
  return *rates;
}

FragmentLengths parseLengths(const std::string& text) {
  const std::string option = "--length";
  const std::size_t dash = text.find('-');
  if (dash == std::string::npos) throw CLI::ValidationError(option, "expected MIN-MAX");
  const std::string_view view = text;
  const FragmentLengths lengths{parseNumber<int>(view.substr(0, dash), option),
                                parseNumber<int>(view.substr(dash + 1), option)};
  if (lengths.shortest < 1 || lengths.longest < lengths.shortest) {
    throw CLI::ValidationError(option, "expected 1 <= MIN <= MAX");
  }
  return lengths;
}

// The options as they are written on the command line.
struct CommandLine {
  SimulateOptions options;
  std::string preset = "est";
  std::string rates;
  std::string lengths = "300-800";
  bool fullLength = false;
  std::uint64_t reads = 0;
};

void run(CLI::App& command, CommandLine& line) {
  SimulateOptions& options = line.options;
  if (options.codingFiles.empty() && options.noncodingFiles.empty()) {
    throw CLI::RequiredError("FILE or --noncoding");
  }
  if (options.truthPath == options.fastaPath) {
    throw CLI::ValidationError("--truth", "the reads go to the same file");
  }
  options.rates = line.rates.empty() ? ratesOfPreset(line.preset) : parseRates(line.rates);
  if (!line.fullLength) options.lengths = parseLengths(line.lengths);
  if (command.count("--reads") > 0) options.reads = line.reads;
  simulate(options);
}

}  // namespace

void simulate(const SimulateOptions& options) {
  const std::vector<Transcript> transcripts = load(options);
  OutputFile fasta(options.fastaPath);
  std::optional<OutputFile> truth;
  if (!options.truthPath.empty()) {
    truth.emplace(options.truthPath);
    truth->write(truthHeader());
  }
  const std::uint64_t count = readCount(options, transcripts.size());
  for (std::uint64_t index = 0; index < count; ++index) {
    const SimulatedRead read = makeRead(options, transcripts, index);
    const std::string name = "r" + std::to_string(index + 1);
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
  auto* preset = command->add_option("--preset", line->preset,
                                     "Error rates: clean, est, mild or nanopore [est]");
  command
      ->add_option("--rates", line->rates,
                   "Substitutions, insertions, deletions and unknown bases per base, as 0.01,0,0,0")
      ->excludes(preset);
  auto* lengths = command->add_option("--length", line->lengths,
                                      "Fragment length in template bases, MIN-MAX [300-800]");
  command->add_flag("--full-length", line->fullLength, "Whole transcripts")->excludes(lengths);
  auto* reads =
      command->add_option("--reads", line->reads, "Number of reads, each from a random transcript")
          ->check(CLI::NonNegativeNumber);
  command->add_option("--per-transcript", options.perTranscript, "Reads of each transcript [1]")
      ->check(CLI::PositiveNumber)
      ->excludes(reads);
  command->add_option("--seed", options.seed, "The same seed gives the same bytes [1]")
      ->check(CLI::NonNegativeNumber);
  command->add_option("-o,--output", options.fastaPath, "Reads as FASTA [standard output]");
  command->add_option("--truth", options.truthPath, "Truth table, tab-separated");
  command->callback([command, line] { run(*command, *line); });
}

}  // namespace velto
