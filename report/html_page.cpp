// 1. Summary  2. Coloured sequence  3. Frame layout  4. Page
#include "report/html_page.h"

#include <algorithm>
#include <fstream>
#include <iostream>
#include <string>

#include "decoder/frame_error.h"
#include "model/read_data.h"

namespace velto {
namespace {

constexpr int kDefaultWidth = 60;  // bases

// ---- 1. Summary

void writeSummary(std::ostream& out, const WebPredict& result) {
  out << "FASTA HEADER: " << result.fastaHeader << "<BR>\n";
  out << "SEQ LENGTH: " << result.arrayLen << "<BR>\n";
  out << "GC PRESSURE: " << result.gcPressure << "%<BR>\n";
  out << "DP SCORE: " << result.dpScore << "<BR>\n";
  out << "START: " << result.lay.start + 1 << " STOP: " << result.lay.stop + 1 << "<BR>\n";
  out << "<HR>";
}

// ---- 2. Coloured sequence

// Writes the error lines to `out` and returns the sequence with its markup. Quoted and unquoted
// colours are the page's fixed form.
std::string colourSequence(std::ostream& out, const WebPredict& result, int width) {
  std::string text;
  long shown = 0;  // display characters: bases and deletion marks
  for (int i = 0; i < result.arrayLen; ++i) {
    const char base = ReadData::outPutBase(result.seqArray[i]);
    const FrameError error = frameErrorAt(result.frameAt(i / 3 - 1), result.frameAt(i / 3), i % 3);
    if (shown % width == 0) text += "<BR>";
    if (i == result.lay.start) text += "<font color=\"red\">";
    if (error == FrameError::kInsertion) {
      text += "</font><font color=\"blue\"><S>";
      out << "INSERTION_ERR: " << base << "@" << i + 1 << "<BR>\n";
    } else if (error == FrameError::kDeletion) {
      text += "</font><font color=blue>X</font><font color=red>";
      ++shown;
      out << "DELETION_ERR: " << i + 1 << "<BR>\n";
    }
    text += base;
    ++shown;
    if (error == FrameError::kInsertion) text += "</S></font><font color=red>";
    if (i == result.lay.stop) text += "</font><font color=\"black\">";
  }
  return text;
}

// ---- 3. Frame layout

// '*' where base i is read in frame f on the coding path, else '-'. A codon of frame f begins at a
// base with i mod 3 = f: on entering the frame the step's first f bases are left out, and behind
// the path's end f bases of its last codon lie in the next step.
char frameSymbol(const WebPredict& result, int i, int f) {
  const int current = result.frameAt(i / 3);
  const int previous = result.frameAt(i / 3 - 1);
  const int residue = i % 3;
  if (previous == f && current == f) return '*';
  if (current == f) return residue >= f ? '*' : '-';
  const bool leaves = previous == f && (current == kOffPath || i > result.arrayLen - 3);
  return leaves && residue < f ? '*' : '-';
}

void writeBlock(std::ostream& out, const WebPredict& result, int begin, int end) {
  out << begin + 1 << "<BR>\n";
  for (int i = begin; i < end; ++i) out << ReadData::outPutBase(result.seqArray[i]);
  out << "<BR>\n";
  for (int f = 0; f < 3; ++f) {
    for (int i = begin; i < end; ++i) out << frameSymbol(result, i, f);
    out << "<BR>\n";
  }
}

}  // namespace

// ---- 4. Page

void writeHtmlPage(std::ostream& out, const WebPredict& result, int width) {
  if (width < 1) width = kDefaultWidth;
  out << "<html>\n<body><font face=\"Courier\"><HR>";
  writeSummary(out, result);
  if (result.lay.start == -1 && result.lay.stop == -1) {
    out << "\nNO CODING REGION WAS FOUND IN THIS SEQUENCE.\n";
    return;
  }
  const std::string text = colourSequence(out, result, width);
  out << "<BR>\n<BR>\n" << text << "<BR>\n<BR>\n<HR>";
  const int length = result.arrayLen;
  for (int b = 0; b <= length / width; ++b) {
    const int begin = b * width;
    writeBlock(out, result, begin, begin + std::min(width, length - begin));
  }
  out << "<BR>\n";
}

int WebPredict::OutHtmlLayout(int width, char* fileName) {
  std::ofstream out(fileName, std::ios::trunc);
  std::cout.precision(3);  // the console keeps this precision
  writeHtmlPage(out, *this, width);
  return 0;
}

}  // namespace velto
