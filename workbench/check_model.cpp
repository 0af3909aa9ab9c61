#include "workbench/check_model.h"

#include <memory>
#include <string>

#include "seqio/output_file.h"
#include "velto/velto.h"
#include "workbench/installed_models.h"

namespace velto {

void addCheckModelCommand(CLI::App& app) {
  CLI::App* command = app.add_subcommand("check-model", "Check all files of a model directory");
  const auto directory = std::make_shared<std::string>();
  command->add_option("DIR", *directory, "Model directory, or name of an installed model")
      ->type_name("")
      ->required()
      ->transform(modelDirectory());
  command->callback([directory] {
    const Model model(*directory);
    std::string names;
    for (const std::string& decoder : model.decoders()) {
      names += ' ' + Predictor(model, decoder).decoder();
    }
    OutputFile report("-");
    report.write(*directory + ": all files are whole and regular; decoders:" + names + '\n');
    report.commit();
  });
}

}  // namespace velto
