#include "draw/read_page.h"

#include <cmath>

#include "draw/markup.h"
#include "draw/read_sentence.h"
#include "draw/read_svg.h"

namespace velto {
namespace {

constexpr int kWide = 960;  // pixels
constexpr int kNarrow = 358;
constexpr std::size_t kGroup = 10;  // amino acids set apart

std::string shiftTable(const Prediction& prediction) {
  if (prediction.frameshifts.empty()) return "";
  std::string rows =
      "<tr><th scope=\"col\">Base</th><th scope=\"col\">Frameshift</th>"
      "<th scope=\"col\">Confidence</th></tr>\n";
  for (const Frameshift& shift : prediction.frameshifts) {
    const bool extra = shift.kind == Frameshift::Kind::kInsertion;
    rows += "<tr><td>" + std::to_string(shift.position + 1) + "</td><td>" +
            (extra ? "this base is extra" : "a base is missing before this one") + "</td><td>" +
            (std::isnan(shift.confidence) ? "not given" : percentText(shift.confidence)) +
            "</td></tr>\n";
  }
  return "<h2>Frameshifts</h2>\n<table>\n" + rows + "</table>\n";
}

std::string proteinSection(std::string_view protein) {
  if (protein.empty()) return "";
  std::string groups;
  for (std::size_t i = 0; i < protein.size(); i += kGroup) {
    groups += (i > 0 ? " " : "") + escaped(protein.substr(i, kGroup));
  }
  return "<h2>Protein</h2>\n<p class=\"soft\">" + std::to_string(aminoAcids(protein)) +
         " amino acids in groups of ten; * is a stop codon, X a codon with a missing base.</p>\n"
         "<pre>" +
         groups + "</pre>\n";
}

}  // namespace

std::string readFigure(const DrawnRead& read, const std::string& id, bool legend) {
  return "<figure>\n" +
         wideOrNarrow(readSvg(read, {kWide, id + "w", legend}),
                      readSvg(read, {kNarrow, id + "n", legend})) +
         "</figure>\n";
}

std::string readPage(const DrawnRead& read, const Facts& facts) {
  std::string body = "<h1>" + escaped(read.name) + "</h1>\n<p class=\"lead\">" +
                     escaped(callSentence(read)) + "</p>\n";
  for (const std::string& sentence : furtherSentences(read)) {
    body += "<p>" + escaped(sentence) + "</p>\n";
  }
  body += readFigure(read, "read-", true) + shiftTable(read.prediction) +
          proteinSection(read.protein) + "<h2>The read</h2>\n" + factTable(facts);
  return htmlPage(read.name, body);
}

}  // namespace velto
