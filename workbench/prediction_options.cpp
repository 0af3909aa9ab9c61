#include "workbench/prediction_options.h"

#include <set>
#include <vector>

#include "core/genetic_code.h"
#include "predict/decoder_table.h"
#include "workbench/installed_models.h"

namespace velto {

void addModelOption(CLI::App& command, std::string& directory) {
  directory = defaultModelDirectory();
  command
      .add_option(
          "-d,--model", directory,
          "Model directory, or name of an installed model (default: ./param-human, then the "
          "installed one)")
      ->type_name("DIR|NAME")
      ->transform(modelDirectory());
}

void addDecoderOption(CLI::App& command, std::string& decoder) {
  std::vector<std::string> names;
  for (const DecoderEntry& entry : decoderTable()) names.push_back(entry.name);
  command.add_option("--decoder", decoder, "Decoder (default: the model's)")
      ->check(CLI::IsMember(names));
}

void addStrandOption(CLI::App& command, std::string& strand) {
  command.add_option("--strand", strand, "Strand to predict on")
      ->check(CLI::IsMember({"plus", "minus", "both"}))
      ->capture_default_str();
}

Strand strandNamed(const std::string& name) {
  if (name == "both") return Strand::kBoth;
  return name == "minus" ? Strand::kMinus : Strand::kPlus;
}

void addGeneticCodeOption(CLI::App& command, int& number) {
  std::set<int> numbers;
  for (const GeneticCode& code : geneticCodes()) numbers.insert(code.number);
  command.add_option("--code", number, "Genetic code, its number in the NCBI list")
      ->check(CLI::IsMember(numbers))
      ->capture_default_str();
}

}  // namespace velto
