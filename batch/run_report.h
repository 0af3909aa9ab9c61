// The report of a run for people: one HTML page.
#pragma once

#include <string>
#include <vector>

#include "batch/drawable_read.h"
#include "batch/run_figures.h"
#include "batch/scan_counts.h"

namespace velto {

// A whole document: counts, distributions, frameshifts, what was learnt of the reads' errors, and
// the drawings, each markup of galleryCard(). The same for every number of threads, and of a size
// that does not grow with the reads.
std::string runReport(const ScanRun& run, const ScanCounts& counts, const RunFigures& figures,
                      const std::vector<std::string>& gallery);

// The drawing of a read in the gallery; `place` counts from 1.
std::string galleryCard(const DrawableRead& read, int place);

}  // namespace velto
