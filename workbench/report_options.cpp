#include "workbench/report_options.h"

#include "batch/multiqc.h"
#include "workbench/file_options.h"

namespace velto {
namespace {

constexpr std::size_t kMostReads = 50;

CLI::Validator multiqcName() {
  const auto check = [](const std::string& path) -> std::string {
    return path.ends_with(kMultiqcEnd) ? "" : "the name must end in " + std::string(kMultiqcEnd);
  };
  return CLI::Validator(check, "");
}

}  // namespace

void addReportOptions(CLI::App& command, ReportLine& line) {
  command.add_option("--report", line.page, "Report of the run as HTML")
      ->type_name("FILE")
      ->check(fileName());
  command.add_option("--report-reads", line.reads, "Coding reads that the report draws")
      ->check(CLI::Range(std::size_t{0}, kMostReads))
      ->capture_default_str();
  command.add_option("--multiqc", line.multiqc, "Figures for MultiQC; the name ends in _mqc.json")
      ->type_name("FILE")
      ->check(multiqcName());
}

}  // namespace velto
