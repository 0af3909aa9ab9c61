// 1. Parts  2. Counts  3. Distributions  4. Frameshifts and errors  5. Gallery  6. The page
#include "batch/run_report.h"

#include <span>
#include <utility>

#include "draw/bar_chart.h"
#include "draw/markup.h"
#include "draw/page.h"
#include "draw/read_page.h"
#include "draw/read_sentence.h"
#include "predict/coding_sequence.h"

namespace velto {
namespace {

// ---- 1. Parts

std::string section(const std::string& title, const std::string& body) {
  return "<section>\n<h2>" + escaped(title) + "</h2>\n" + body + "</section>\n";
}

std::string paragraph(const std::string& words, const char* style = "") {
  return "<p" + (*style == '\0' ? "" : attribute("class", style)) + ">" + escaped(words) + "</p>\n";
}

std::string percent(long part, long whole) {
  const double share = whole > 0 ? static_cast<double>(part) / static_cast<double>(whole) : 0.0;
  return decimal(100 * share) + "\u00A0%";
}

std::string tile(const std::string& number, const std::string& words) {
  return "<div class=\"tile\"><b>" + escaped(number) + "</b><span>" + escaped(words) +
         "</span></div>\n";
}

// Counts with their shares of `whole` as numbers and as bars.
using NamedCounts = std::vector<std::pair<std::string, long>>;
std::string shareTable(const NamedCounts& counts, long whole) {
  std::string rows;
  for (const auto& [name, count] : counts) {
    const double width =
        whole > 0 ? 100.0 * static_cast<double>(count) / static_cast<double>(whole) : 0.0;
    rows += "<tr><th scope=\"row\">" + escaped(name) + "</th><td class=\"number\">" +
            grouped(count) + "</td><td class=\"number\">" + percent(count, whole) +
            "</td><td class=\"share\"><div" + attribute("style", "width:" + decimal(width) + "%") +
            "></div></td></tr>\n";
  }
  return "<table class=\"shares\">\n" + rows + "</table>\n";
}

// ---- 2. Counts

std::string leadText(const ScanCounts& counts) {
  if (counts.reads == 0) return "There were no reads.";
  return "Of " + grouped(counts.reads) + (counts.reads == 1 ? " read, " : " reads, ") +
         grouped(counts.coding) + " (" + percent(counts.coding, counts.reads) +
         ") have a coding region: " + grouped(counts.coding - counts.codingMinus) +
         " on the strand that was read and " + grouped(counts.codingMinus) + " on the reverse one.";
}

std::string tiles(const ScanCounts& counts, const RunFigures& figures) {
  return "<div class=\"tiles\">\n" + tile(grouped(counts.reads), "reads") +
         tile(grouped(counts.bases), "bases") +
         tile(percent(counts.coding, counts.reads), "of the reads coding") +
         tile(decimal(figures.perKilobase(figures.insertions())),
              "extra bases per 1000 coding bases") +
         tile(decimal(figures.perKilobase(figures.deletions())),
              "missing bases per 1000 coding bases") +
         "</div>\n";
}

std::string statusSection(const ScanCounts& counts) {
  return section("Reads",
                 shareTable({{"coding, strand as read", counts.coding - counts.codingMinus},
                             {"coding, reverse strand", counts.codingMinus},
                             {"no coding region", counts.noncoding},
                             {"refused: fewer than 30 bases", counts.shortReads},
                             {"refused: no bases", counts.emptyReads}},
                            counts.reads));
}

std::string typeSection(const ScanCounts& counts, const RunFigures& figures) {
  NamedCounts types;
  for (int i = 0; i < kCodingTypes; ++i) {
    const auto type = static_cast<CodingType>(i);
    types.emplace_back(meaningOf(type), figures.readsOf(type));
  }
  return section(
      "Coding regions",
      shareTable(types, counts.coding) +
          paragraph("Stop codons inside coding regions: " + grouped(figures.innerStops()) + ".",
                    "soft"));
}

// ---- 3. Distributions

std::string chartOf(const Histogram& histogram, const std::string& title, const std::string& axis,
                    const std::string& id) {
  const BinCounts bins = histogram.occupied();
  if (bins.coding.empty()) return "";
  return barChartFigure({title, axis, bins.edges, bins.coding, bins.others, "coding", "not coding"},
                        id);
}

std::string distributionSection(const RunFigures& figures) {
  const std::string key =
      "<p class=\"soft\"><span class=\"swatch lower\"></span> coding reads, <span class=\"swatch "
      "upper\"></span> reads without a coding region, on top of them.</p>\n";
  std::string charts =
      chartOf(figures.lengths(), "Length", "bases, round numbers at equal distances", "length") +
      chartOf(figures.gcPercents(), "G and C", "percent of the read's bases", "gc") +
      chartOf(figures.probabilities(), "Probability of coding", "probability", "probability") +
      chartOf(figures.scores(), "Score", "score of the decoder, round numbers at equal distances",
              "score");
  return charts.empty()
             ? ""
             : section("Distributions", key + "<div class=\"charts\">\n" + charts + "</div>\n");
}

// ---- 4. Frameshifts and errors

std::string shiftSection(const RunFigures& figures) {
  if (figures.codingBases() == 0) return "";
  const auto row = [&](const char* name, long count) {
    return "<tr><th scope=\"row\">" + std::string(name) + "</th><td class=\"number\">" +
           grouped(count) + "</td><td class=\"number\">" + decimal(figures.perKilobase(count), 2) +
           "</td></tr>\n";
  };
  const std::string table =
      "<table>\n<tr><th scope=\"col\">Frameshifts</th><th scope=\"col\" class=\"number\">found</th>"
      "<th scope=\"col\" class=\"number\">per 1000 coding bases</th></tr>\n" +
      row("extra base", figures.insertions()) + row("missing base", figures.deletions()) +
      "</table>\n";
  const BinCounts bins = figures.shiftsPerRead().occupied();
  const bool isCut = !bins.coding.empty() && bins.edges.back() > kMostShifts;
  const std::string most = std::to_string(kMostShifts);
  return section(
      "Frameshifts",
      "<div class=\"charts\">\n<div>" + table + "</div>\n" +
          barChartFigure({"Frameshifts of a coding read",
                          isCut ? "frameshifts; " + most + ": so many or more" : "frameshifts",
                          bins.edges,
                          bins.coding,
                          {},
                          "coding reads",
                          "",
                          true},
                         "shifts") +
          "</div>\n");
}

std::string rateCells(const BaseErrorRates& rates, double scale) {
  std::string cells;
  for (const double rate : {rates.insertion, rates.deletion, rates.substitution}) {
    cells += "<td class=\"number\">" + decimal(rate * scale, 2) + "</td>";
  }
  return cells;
}

constexpr char kRateHead[] =
    "<th scope=\"col\" class=\"number\">extra bases</th><th scope=\"col\" class=\"number\">missing "
    "bases</th><th scope=\"col\" class=\"number\">wrong bases</th></tr>\n";

std::string qualityTable(std::span<const QualityBin> bins) {
  if (bins.empty()) return paragraph("Base qualities were not used.", "soft");
  std::string rows = std::string("<tr><th scope=\"col\">Quality (Phred)</th>") + kRateHead;
  int first = 0;
  for (const QualityBin& bin : bins) {
    rows += "<tr><th scope=\"row\">" + std::to_string(first) + " to " + std::to_string(bin.most) +
            "</th>" + rateCells(bin.factors, 1) + "</tr>\n";
    first = bin.most + 1;
  }
  return paragraph(
             "What base qualities say: the rates of bases of a quality, as multiples of those "
             "of the file.") +
         "<table>\n" + rows + "</table>\n";
}

std::string errorSection(const Calibration& calibration) {
  if (!calibration.errorRates && !calibration.codingShare && !calibration.truncatedShare) return "";
  std::string body;
  if (calibration.reads > 0) {
    body += paragraph("Learnt from the first " + grouped(calibration.reads) +
                      " reads, per 100 coding bases.");
  } else {
    body += paragraph("As told, per 100 coding bases.");
  }
  if (calibration.errorRates) {
    body += "<table>\n<tr><td></td>" + std::string(kRateHead) +
            "<tr><th scope=\"row\">Errors of the file</th>" +
            rateCells(*calibration.errorRates, 100) + "</tr>\n</table>\n";
  }
  if (calibration.codingShare) {
    body +=
        paragraph("Share of coding reads: " + decimal(100 * *calibration.codingShare) + "\u00A0%.");
  }
  if (calibration.truncatedShare) {
    body += paragraph("Share of coding reads that begin inside their coding region: " +
                      decimal(100 * *calibration.truncatedShare) + "\u00A0%.");
  }
  return section("Errors of the reads", body + qualityTable(calibration.qualities));
}

// ---- 5. Gallery

std::string gallerySection(const std::vector<std::string>& cards) {
  if (cards.empty()) return "";
  std::string body = paragraph("The first reads with a coding region, in the order of the input.");
  for (const std::string& card : cards) body += card;
  return section("Reads drawn", body);
}

// ---- 6. The page

std::string runSection(const ScanRun& run) {
  Facts facts;
  for (const std::string& input : run.inputs) {
    facts.emplace_back("Input", input == "-" ? "standard input" : input);
  }
  facts.emplace_back("Model", run.modelDirectory);
  facts.emplace_back("Decoder", run.decoder);
  facts.emplace_back("Genetic code", std::to_string(run.geneticCode));
  facts.emplace_back("Program", "velto " + run.version);
  return section("The run", factTable(facts));
}

}  // namespace

std::string galleryCard(const DrawableRead& read, int place) {
  const DrawnRead drawn = read.drawn();
  return "<article class=\"card\">\n<h3>" + escaped(read.name) + "</h3>\n" +
         paragraph(callSentence(drawn)) +
         readFigure(drawn, "read" + std::to_string(place) + "-", place == 1) + "</article>\n";
}

std::string runReport(const ScanRun& run, const ScanCounts& counts, const RunFigures& figures,
                      const std::vector<std::string>& gallery) {
  return htmlPage("Coding regions of " + grouped(counts.reads) + " reads",
                  "<h1>Coding regions found by velto scan</h1>\n" +
                      paragraph(leadText(counts), "lead") + tiles(counts, figures) +
                      statusSection(counts) + typeSection(counts, figures) +
                      distributionSection(figures) + shiftSection(figures) +
                      errorSection(run.calibration) + gallerySection(gallery) + runSection(run));
}

}  // namespace velto
