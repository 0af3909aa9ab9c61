#include "workbench/models.h"

#include <algorithm>
#include <cstdio>
#include <iostream>
#include <optional>
#include <string>
#include <vector>

#include "seqio/output_file.h"
#include "training/model_card.h"
#include "velto/velto.h"
#include "workbench/installed_models.h"

namespace velto {
namespace {

using Row = std::vector<std::string>;

std::string shown(const std::optional<double>& figure) {
  if (!figure) return "-";
  char text[16];
  std::snprintf(text, sizeof text, "%.3f", *figure);
  return text;
}

std::string shown(long count) { return count < 0 ? "-" : std::to_string(count); }

// A row for each decoder, the default one first. Throws ModelError for a card that is damaged.
void addRows(const InstalledModel& model, std::vector<Row>& rows) {
  const std::vector<std::string> decoders = Model(model.directory).decoders();
  for (const std::string& decoder : decoders) {
    const DecoderSummary figures = readDecoderSummary(model.directory, decoder);
    Row row{model.name, decoder, shown(figures.coding), shown(figures.noncoding)};
    for (const std::optional<double>& f1 : figures.frameF1) row.push_back(shown(f1));
    row.push_back(shown(figures.noncodingCalled));
    row.push_back(model.directory);
    rows.push_back(row);
  }
}

// Columns of equal width; the last one ends where its text does.
std::string aligned(const std::vector<Row>& rows) {
  std::vector<std::size_t> widths(rows.front().size(), 0);
  for (const Row& row : rows) {
    for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], row[i].size());
  }
  std::string text;
  for (const Row& row : rows) {
    for (std::size_t i = 0; i + 1 < row.size(); ++i) {
      text += row[i] + std::string(widths[i] + 2 - row[i].size(), ' ');
    }
    text += row.back() + "\n";
  }
  return text;
}

}  // namespace

void addModelsCommand(CLI::App& app) {
  CLI::App* command =
      app.add_subcommand("models", "List the models that come with the program, for -d NAME");
  command->callback([] {
    std::vector<Row> rows{{"model", "decoder", "coding", "noncoding", "f1_est", "f1_mild",
                           "f1_clean", "nc_called", "directory"}};
    for (const InstalledModel& model : installedModels()) addRows(model, rows);
    if (rows.size() == 1) std::cerr << "velto: no model is installed; -d takes a directory too\n";
    OutputFile output("-");
    output.write(aligned(rows));
    output.commit();
  });
}

}  // namespace velto
