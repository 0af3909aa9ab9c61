// Options for the report of a whole run.
#pragma once

#include <CLI/CLI.hpp>
#include <cstddef>
#include <string>

namespace velto {

// As they are written on the command line; a path left empty is not written.
struct ReportLine {
  std::string page;
  std::size_t reads = 12;  // drawn
  std::string multiqc;
};

// --report FILE, --report-reads N, --multiqc FILE.
void addReportOptions(CLI::App& command, ReportLine& line);

}  // namespace velto
