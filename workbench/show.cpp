// 1. The read  2. The terminal  3. Options
#include "workbench/show.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

#include "batch/drawable_read.h"
#include "core/genetic_code.h"
#include "draw/markup.h"
#include "draw/read_page.h"
#include "draw/read_text.h"
#include "seqio/input_error.h"
#include "seqio/output_file.h"
#include "seqio/record_reader.h"
#include "velto/velto.h"
#include "workbench/calibration_options.h"
#include "workbench/decimal_numbers.h"
#include "workbench/file_options.h"
#include "workbench/prediction_options.h"

namespace velto {
namespace {

// The options as they are written on the command line.
struct CommandLine {
  std::string input;
  std::string name;  // empty: the read is taken by its number
  long number = 1;
  std::string modelDirectory;
  std::string decoder;  // empty: the model's default
  std::string strand = "both";
  int geneticCode = 1;
  std::string calibration;  // file; empty: the read is predicted alone
  bool exactCase = false;
  std::string output;  // of the page; empty: text
  std::string colour = "auto";
  int columns = 0;  // 0: those of the terminal
};

// ---- 1. The read

Record wantedRecord(const CommandLine& line) {
  RecordReader reader(line.input);
  Record record;
  for (long number = 1; reader.next(record); ++number) {
    if (line.name.empty() ? number == line.number : record.name == line.name) return record;
  }
  throw Error(line.input + ": there is no read " +
              (line.name.empty() ? "number " + std::to_string(line.number)
                                 : "named '" + printable(line.name) + "'"));
}

// ---- 2. The terminal

constexpr int kDefaultColumns = 100;
constexpr int kFewestColumns = 40;
constexpr int kMostColumns = 400;

int terminalColumns() {
  winsize size = {};
  const bool known = ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
  return known ? std::clamp<int>(size.ws_col, kFewestColumns, kMostColumns) : kDefaultColumns;
}

// As https://no-color.org asks.
bool wantsColours(const std::string& choice) {
  if (choice != "auto") return choice == "always";
  const char* refusal = std::getenv("NO_COLOR");
  const char* terminal = std::getenv("TERM");
  return isatty(STDOUT_FILENO) == 1 && (refusal == nullptr || *refusal == '\0') &&
         terminal != nullptr && std::string_view(terminal) != "dumb";
}

void show(const CommandLine& line) {
  const Record record = wantedRecord(line);
  Predictor predictor(line.modelDirectory, line.decoder);
  if (!line.calibration.empty()) predictor = predictor.calibrated(calibrationIn(line.calibration));
  PredictOptions options;
  options.letters = line.exactCase ? Letters::kExact : Letters::kFolded;
  options.strand = strandNamed(line.strand);
  const DrawableRead read =
      drawableRead(predictor, record, options, *geneticCode(line.geneticCode), true);

  OutputFile output(line.output.empty() ? "-" : line.output);
  if (line.output.empty()) {
    const int columns = line.columns > 0 ? line.columns : terminalColumns();
    output.write(readText(read.drawn(), {columns, wantsColours(line.colour)}));
  } else {
    output.write(readPage(read.drawn(), factsOf(record, read)));
  }
  output.commit();
}

// ---- 3. Options

void addDrawingOptions(CLI::App& command, CommandLine& line) {
  command.add_option("-o,--output", line.output, "Page of the read as HTML; else text is shown")
      ->type_name("FILE")
      ->check(fileName());
  command.add_option("--colour", line.colour, "Colours of the text: auto, always or never")
      ->check(CLI::IsMember({"auto", "always", "never"}))
      ->capture_default_str();
  command.add_option("--columns", line.columns, "Width of the text (default: of the terminal)")
      ->check(CLI::Range(kFewestColumns, kMostColumns));
}

}  // namespace

void addShowCommand(CLI::App& app) {
  CLI::App* command = app.add_subcommand("show", "Draw one read with its coding region");
  const auto line = std::make_shared<CommandLine>();
  command->add_option("FILE", line->input, "FASTA, FASTQ (gz too) or BAM; '-': standard input")
      ->type_name("")
      ->required();
  CLI::Option* name =
      command->add_option("-r,--read", line->name, "Name of the read")->type_name("NAME");
  command->add_option("-n,--number", line->number, "Place of the read in the file, from 1")
      ->check(atLeast(1))
      ->excludes(name)
      ->capture_default_str();
  addModelOption(*command, line->modelDirectory);
  addDecoderOption(*command, line->decoder);
  addStrandOption(*command, line->strand);
  addGeneticCodeOption(*command, line->geneticCode);
  command
      ->add_option("--calibration", line->calibration,
                   "Summary of a run of velto scan over the read's file: what that learnt is taken")
      ->type_name("FILE")
      ->check(fileName());
  command->add_flag("--exact-case", line->exactCase, "Only upper-case A, C, G, T are bases");
  command->set_version_flag("--version", std::string("velto ") + VELTO_VERSION);
  addDrawingOptions(*command, *line);
  command->callback([line] {
    requireDistinctFiles({line->input, line->calibration},
                         {line->output.empty() ? "-" : line->output});
    show(*line);
  });
}

}  // namespace velto
