#include "workbench/train.h"

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <functional>
#include <iostream>
#include <map>
#include <memory>
#include <system_error>

#include "seqio/output_directory.h"
#include "seqio/output_set.h"
#include "simulation/transcript_file.h"
#include "training/fold_split.h"
#include "training/held_back_accuracy.h"
#include "training/model_directory_writer.h"
#include "training/trainer.h"
#include "training/transcript_groups.h"
#include "workbench/file_options.h"
#include "workbench/installed_models.h"
#include "workbench/prediction_options.h"
#include "workbench/threads.h"

namespace velto {
namespace {

// ---- Input

struct Hint {
  Refusal reason;
  const char* text;
};

// What most often makes records of one kind fall.
constexpr Hint kHints[] = {
    {Refusal::kNoRegion,
     "headers need CDS=a-b, as gffread -w writes it, or |CDS:a-b|, as in GENCODE's "
     "pc_transcripts.fa (its transcripts.fa has no regions)"},
    {Refusal::kNoStopCodon,
     "the CDS of some GTF files leave out the stop codon: gffread --adj-stop adds it"},
    {Refusal::kOutOfRange, "positions count from 1, along the transcript"},
    {Refusal::kNoStartCodon, "positions count from 1 and include the start codon"},
    {Refusal::kBrokenCodon, "positions count from 1, and both ends belong to the region"},
    {Refusal::kUnexpectedRegion,
     "records with a coding region belong to --coding; one file may serve both lists"},
};

// Hints for the reasons that at least a tenth of the records fell for.
void hint(const RefusalCounts& counts) {
  for (const Hint& hint : kHints) {
    if (10 * counts.of(hint.reason) >= counts.refused() + counts.accepted()) {
      std::cerr << "velto: hint: " << hint.text << "\n";
    }
  }
}

TranscriptSet load(const std::vector<std::string>& files, TranscriptKind kind,
                   const GeneticCode& code, const char* what) {
  TranscriptSet set = loadTranscripts(files, kind, code);
  if (set.counts.refused() > 0) {
    std::cerr << "velto: " << set.counts.refused() << " of "
              << set.counts.refused() + set.counts.accepted() << " " << what
              << " records refused:\n"
              << set.counts.text();
    hint(set.counts);
  }
  if (set.transcripts.empty()) {
    throw TooLittleData(std::string("no usable ") + what + " transcript in the input");
  }
  return set;
}

// ---- Command

std::string joined(const std::vector<std::string>& files) {
  std::string text;
  for (const std::string& file : files) text += " " + file;
  return text;
}

// Writes every line on a terminal, one a minute into a log.
std::function<void(const std::string&)> progressLines() {
  using Clock = std::chrono::steady_clock;
  const bool onTerminal = isatty(STDERR_FILENO) != 0;
  return [onTerminal, last = Clock::now()](const std::string& line) mutable {
    const Clock::time_point now = Clock::now();
    if (!onTerminal && now - last < std::chrono::minutes(1)) return;
    last = now;
    std::cerr << "velto: " << line << "\n";
  };
}

std::vector<std::string> trainerNames() {
  std::vector<std::string> names;
  for (const Trainer& trainer : trainers()) names.emplace_back(trainer.decoder);
  return names;
}

// True if the three stop codons of the standard code do nothing but end proteins, and no others do.
bool hasStandardStops(const GeneticCode& code) {
  const std::vector<std::string> stops = code.stops();
  return stops == standardCode().stops() &&
         std::all_of(stops.begin(), stops.end(),
                     [&code](const std::string& stop) { return code.acidOf(stop) == '*'; });
}

bool isNamed(const Trainer& trainer, const std::vector<std::string>& names) {
  return std::find(names.begin(), names.end(), trainer.decoder) != names.end();
}

bool isSuited(const Trainer& trainer, int code) {
  return !trainer.needsStandardStops || hasStandardStops(*geneticCode(code));
}

// The trainers asked for; for no name all that the genetic code suits.
std::vector<Trainer> chosenTrainers(const TrainOptions& options) {
  std::vector<Trainer> chosen;
  for (const Trainer& trainer : trainers()) {
    const bool isWanted = options.decoders.empty() ? isSuited(trainer, options.geneticCode)
                                                   : isNamed(trainer, options.decoders);
    if (isWanted) chosen.push_back(trainer);
  }
  return chosen;
}

void checkCode(const TrainOptions& options) {
  const std::vector<std::string> known = standardCode().stops();
  for (const std::string& stop : geneticCode(options.geneticCode)->stops()) {
    if (std::find(known.begin(), known.end(), stop) != known.end()) continue;
    throw CLI::ValidationError(
        "--code", "has the stop codon " + stop + ", but decoders know TAA, TAG and TGA only");
  }
  for (const Trainer& trainer : trainers()) {
    if (!isNamed(trainer, options.decoders) || isSuited(trainer, options.geneticCode)) continue;
    throw CLI::ValidationError("--code", std::string("the decoder ") + trainer.decoder +
                                             " takes TAA, TAG and TGA for stop codons");
  }
}

std::vector<TrainedDecoder> trainAll(const std::vector<Trainer>& trainers, const TrainingJob& job) {
  for (const Trainer& trainer : trainers) trainer.check(job);
  std::vector<TrainedDecoder> decoders;
  for (const Trainer& trainer : trainers) decoders.push_back(trainer.train(job));
  return decoders;
}

void remark(const std::vector<TrainedDecoder>& decoders) {
  for (const TrainedDecoder& decoder : decoders) {
    for (const std::string& line : decoder.remarks) std::cerr << "velto: " << line << "\n";
  }
}

Model inMemory(const std::vector<TrainedDecoder>& decoders) {
  std::map<std::string, std::string> texts;
  for (const TrainedDecoder& decoder : decoders) {
    for (const ModelFile& file : decoder.files) texts[file.path] = file.bytes;
  }
  return Model(std::move(texts));
}

std::vector<HeldBackAccuracy> judge(const std::vector<TrainedDecoder>& decoders,
                                    const HeldBackReads& reads) {
  const Model made = inMemory(decoders);
  std::vector<HeldBackAccuracy> accuracy;
  for (const TrainedDecoder& decoder : decoders) {
    accuracy.push_back(accuracyOn(reads, Predictor(made, decoder.name)));
  }
  return accuracy;
}

// Says where the new decoders do worse than those of the model that scan takes by default, if there
// is one. One that cannot be used costs the comparison, not what was trained.
void compareWithDefault(const std::vector<HeldBackAccuracy>& accuracy,
                        const HeldBackReads& reads) try {
  const std::string directory = defaultModelDirectory();
  std::error_code unreadable;
  if (!std::filesystem::exists(directory, unreadable)) return;
  const Model other(directory);
  const std::vector<std::string> has = other.decoders();
  for (const HeldBackAccuracy& made : accuracy) {
    const std::string& decoder = made.front().decoder;
    if (std::find(has.begin(), has.end(), decoder) == has.end()) continue;
    const HeldBackAccuracy theirs = accuracyOn(reads, Predictor(other, decoder));
    for (const std::string& line : comparison(made, theirs, directory)) {
      std::cerr << "velto: " << line << "\n";
    }
  }
} catch (const ModelError& error) {
  std::cerr << "velto: the new model is not compared with the default one: " << error.what()
            << "\n";
}

std::string heldBackText(const TranscriptPool& pool) {
  std::string text;
  for (const auto* list : {&pool.coding, &pool.noncoding}) {
    for (const Transcript* transcript : *list) text += fastaRecord(*transcript);
  }
  return text;
}

// The output's place is left out: the same model may be made anywhere.
std::string commandText(const TrainOptions& options) {
  return "velto train --coding" + joined(options.codingFiles) + " --noncoding" +
         joined(options.noncodingFiles) +
         (options.decoders.empty() ? "" : " --decoder" + joined(options.decoders)) + " --seed " +
         std::to_string(options.seed) +
         (options.geneticCode == 1 ? "" : " --code " + std::to_string(options.geneticCode)) +
         (options.quick ? " --quick" : "");
}

struct Transcripts {
  TranscriptSet coding;
  TranscriptSet noncoding;
};

Transcripts loadAll(const TrainOptions& options) {
  const GeneticCode& code = *geneticCode(options.geneticCode);
  Transcripts all{load(options.codingFiles, TranscriptKind::kCoding, code, "coding"),
                  load(options.noncodingFiles, TranscriptKind::kNoncoding, code, "non-coding")};
  const std::string groups = groupTranscripts(all.coding.transcripts, all.noncoding.transcripts);
  if (options.quiet) return all;
  std::cerr << "velto: " << groups << "\n";
  const std::string duplicates = duplicatesText(all.coding.transcripts, all.noncoding.transcripts);
  if (!duplicates.empty()) std::cerr << "velto: " << duplicates << "\n";
  return all;
}

// Trains, judges and writes a model.
void makeModel(const TrainOptions& options, const Transcripts& all, const TranscriptPool& heldBack,
               OutputDirectory& output) {
  TrainingJob job{all.coding.transcripts, all.noncoding.transcripts};
  job.seed = options.seed;
  job.quick = options.quick;
  if (!options.quiet) job.progress = progressLines();
  const std::vector<TrainedDecoder> decoders = trainAll(chosenTrainers(options), job);
  const HeldBackReads reads = heldBackReads(heldBack, job.seed);
  const std::vector<HeldBackAccuracy> accuracy = judge(decoders, reads);
  if (!options.quiet) {
    remark(decoders);
    compareWithDefault(accuracy, reads);
  }
  const CardFacts facts{
      VELTO_VERSION,          commandText(options), options.seed,         options.codingFiles,
      options.noncodingFiles, all.coding.counts,    all.noncoding.counts, accuracy};
  writeModelDirectory(facts, decoders, output);
}

}  // namespace

void train(const TrainOptions& options) {
  const Transcripts all = loadAll(options);
  const TranscriptPool heldBack =
      splitFolds(all.coding.transcripts, all.noncoding.transcripts).heldBack;
  OutputDirectory output(options.outputPath);
  OutputSet files;
  if (!options.heldBackPath.empty()) files.add(options.heldBackPath).write(heldBackText(heldBack));
  withThreads(options.threads, [&] { makeModel(options, all, heldBack, output); });
  files.commit();
  output.commit();
}

void addTrainCommand(CLI::App& app) {
  CLI::App* command = app.add_subcommand("train", "Train a model directory from transcripts");
  const auto options = std::make_shared<TrainOptions>();
  command
      ->add_option("--coding", options->codingFiles,
                   "FASTA files of coding transcripts (CDS=a-b or |CDS:a-b| in the header)")
      ->type_name("FILE")
      ->required();
  command
      ->add_option("--noncoding", options->noncodingFiles,
                   "FASTA files of non-coding transcripts, for example lncRNAs; may be the same")
      ->type_name("FILE");
  command->add_option("-o,--output", options->outputPath, "Model directory to make")
      ->required()
      ->type_name("DIR")
      ->check(fileName());
  command->add_option("--decoder", options->decoders, "Decoders to train (default: all)")
      ->check(CLI::IsMember(trainerNames()));
  command
      ->add_option("--held-back", options->heldBackPath,
                   "FASTA file for the fifth of the transcripts that was held back to judge by")
      ->type_name("FILE")
      ->check(fileName());
  command->add_option("--seed", options->seed, "The same seed gives the same model (default: 1)");
  addThreadsOption(*command, options->threads);
  addGeneticCodeOption(*command, options->geneticCode);
  command->add_flag("--quick", options->quick, "A first try in less time, somewhat less accurate");
  command->add_flag("-q,--quiet", options->quiet, "No progress and no remarks");
  command->callback([options] {
    if (options->noncodingFiles.empty()) {
      throw CLI::ValidationError(
          "--noncoding",
          "non-coding transcripts are needed: the species' long non-coding RNAs, as Ensembl "
          "(ncrna), GENCODE (lncRNA_transcripts) or gffread -w of its annotation have them; "
          "shuffled sequences are no stand-in");
    }
    checkCode(*options);
    std::vector<std::string> inputs = options->codingFiles;
    inputs.insert(inputs.end(), options->noncodingFiles.begin(), options->noncodingFiles.end());
    requireDistinctFiles(inputs, {options->heldBackPath});
    train(*options);
  });
}

}  // namespace velto
