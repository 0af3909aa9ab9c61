#include "workbench/sampling_options.h"

#include <iostream>
#include <iterator>
#include <optional>
#include <string_view>

#include "simulation/transcript_file.h"
#include "velto/velto.h"
#include "workbench/decimal_numbers.h"
#include "workbench/parse_number.h"
#include "workbench/prediction_options.h"

namespace velto {
namespace {

void reportRefused(const RefusalCounts& counts) {
  if (counts.refused() == 0) return;
  std::cerr << "velto: " << counts.refused() << " of " << counts.refused() + counts.accepted()
            << " records refused:\n"
            << counts.text();
}

void append(const std::vector<std::string>& files, TranscriptKind kind, const GeneticCode& code,
            std::vector<Transcript>& transcripts) {
  TranscriptSet set = loadTranscripts(files, kind, code);
  reportRefused(set.counts);
  transcripts.insert(transcripts.end(), std::make_move_iterator(set.transcripts.begin()),
                     std::make_move_iterator(set.transcripts.end()));
}

ErrorModel parseRates(const std::string& text) {
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
  return {rates};
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

}  // namespace

std::vector<Transcript> loadSources(const std::vector<std::string>& codingFiles,
                                    const std::vector<std::string>& noncodingFiles,
                                    int codeNumber) {
  const GeneticCode& code = *geneticCode(codeNumber);
  std::vector<Transcript> transcripts;
  append(codingFiles, TranscriptKind::kCoding, code, transcripts);
  append(noncodingFiles, TranscriptKind::kNoncoding, code, transcripts);
  if (transcripts.empty()) throw Error("no usable transcript in the input");
  return transcripts;
}

void addSamplingOptions(CLI::App& command, SamplingLine& line) {
  auto* preset = command.add_option("--preset", line.preset, "Kind of reads, by their errors")
                     ->check(CLI::IsMember(presetNames()))
                     ->capture_default_str();
  command
      .add_option("--rates", line.rates,
                  "Substitutions, insertions, deletions and unknown bases per base, as 0.01,0,0,0")
      ->type_name("S,I,D,N")
      ->excludes(preset);
  auto* lengths = command
                      .add_option("--length", line.lengths,
                                  "Fragment length in template bases, MIN-MAX (default: 300-800)")
                      ->type_name("MIN-MAX");
  command.add_flag("--full-length", line.fullLength, "Whole transcripts")->excludes(lengths);
  auto* reads =
      command
          .add_option("--read-count", line.reads, "Number of reads, each from a random transcript")
          ->check(atLeast(0));
  command
      .add_option("--per-transcript", line.perTranscript, "Reads of each transcript (default: 1)")
      ->check(atLeast(1))
      ->excludes(reads);
  command.add_option("--seed", line.seed, "The same seed gives the same bytes (default: 1)")
      ->check(atLeast(0));
  addGeneticCodeOption(command, line.geneticCode);
}

ReadSampling parseSampling(const CLI::App& command, const SamplingLine& line) {
  ReadSampling sampling;
  sampling.errors = line.rates.empty() ? *presetErrors(line.preset) : parseRates(line.rates);
  if (!line.fullLength) sampling.lengths = parseLengths(line.lengths);
  if (command.count("--read-count") > 0) sampling.reads = line.reads;
  sampling.perTranscript = line.perTranscript;
  sampling.seed = line.seed;
  return sampling;
}

}  // namespace velto
