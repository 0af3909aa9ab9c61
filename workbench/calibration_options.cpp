#include "workbench/calibration_options.h"

#include <cmath>
#include <fstream>
#include <utility>
#include <vector>

#include "batch/file_calibration.h"
#include "core/bounded_text.h"
#include "simulation/error_model.h"
#include "workbench/file_options.h"
#include "workbench/parse_number.h"

namespace velto {
namespace {

BaseErrorRates parseErrorRates(const std::string& text) {
  const std::string option = "--error-rates";
  if (const auto preset = presetErrors(text)) {
    const ErrorRates& rates = preset->rates;
    return {rates.insertion, rates.deletion, rates.substitution};
  }
  const std::vector<std::string> parts = CLI::detail::split(text, ',');
  if (parts.size() != 3) {
    throw CLI::ValidationError(
        option, "'" + text + "' is neither a preset of velto simulate nor three rates I,D,S");
  }
  std::vector<double> rates;
  for (const std::string& part : parts) {
    rates.push_back(parseNumber<double>(part, option));
    if (!(rates.back() >= 0.0 && rates.back() <= 0.5)) {
      throw CLI::ValidationError(option, "rates must be from 0 to 0.5");
    }
  }
  return {rates[0], rates[1], rates[2]};
}

// Of a summary, whose inputs may be many; JSON may take a hundred times the memory of its text.
constexpr std::size_t kMostBytes = std::size_t{1} << 22;

std::string textOf(const std::string& file) {
  std::ifstream in(file, std::ios::binary);
  std::optional<std::string> text = textUpTo(in, kMostBytes);
  if (!in.is_open() || in.bad()) throw Error(file, 0, 0, "cannot be read");
  if (!text) throw Error(file, 0, 0, "is larger than 4 MB");
  return *std::move(text);
}

}  // namespace

void addCalibrationOptions(CLI::App& command, CalibrationLine& line) {
  auto* file = command.add_option("--calibration", line.file,
                                  "Summary of a run; what that learnt is taken, nothing learnt");
  file->type_name("FILE")->check(fileName());
  command
      .add_option("--error-rates", line.errorRates,
                  "Insertions, deletions and substitutions per base, as 0.005,0.007,0.012, or a "
                  "preset of velto simulate (default: learnt)")
      ->type_name("I,D,S")
      ->excludes(file);
  command.add_option("--coding-share", line.codingShare, "Share of coding reads (default: learnt)")
      ->check(CLI::Range(0.0, 1.0))
      ->excludes(file);
  command
      .add_option("--truncated-share", line.truncatedShare,
                  "Share of coding reads that begin inside their coding region (default: learnt)")
      ->check(CLI::Range(0.0, 1.0))
      ->excludes(file);
  command.add_flag("--ignore-qualities", line.ignoreQualities, "Make no use of base qualities");
}

Calibration calibrationIn(const std::string& summary) {
  return parseCalibration(textOf(summary), summary);
}

Calibration knownCalibration(const CalibrationLine& line) {
  if (!line.file.empty()) return calibrationIn(line.file);
  Calibration known;
  if (!line.errorRates.empty()) known.errorRates = parseErrorRates(line.errorRates);
  known.codingShare = line.codingShare;
  known.truncatedShare = line.truncatedShare;
  return known;
}

}  // namespace velto
