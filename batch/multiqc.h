// A run as custom content of MultiQC, which puts many runs into one report.
#pragma once

#include <string>

#include "batch/run_figures.h"
#include "batch/scan_counts.h"

namespace velto {

// The end of the file names that MultiQC looks for.
constexpr char kMultiqcEnd[] = "_mqc.json";

// The text of such a file: one row of the general statistics. `sample` is any bytes.
std::string multiqcJson(const std::string& sample, const ScanCounts& counts,
                        const RunFigures& figures);

// The name of the sample in a file name: without folders and kMultiqcEnd.
std::string multiqcSample(const std::string& path);

}  // namespace velto
