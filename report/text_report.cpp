#include "report/text_report.h"

#include <iostream>
#include <string>

#include "decoder/frame_error.h"
#include "model/read_data.h"

namespace velto {
namespace {

constexpr unsigned kDefaultWidth = 60;  // display characters

void writeSummary(std::ostream& out, const WebPredict& result) {
  out << "FASTA HEADER: " << result.fastaHeader << "\n";
  out << "SEQ LENGTH: " << result.arrayLen << "\n";
  out.precision(3);
  out << "GC PRESSURE: " << result.gcPressure << "%\n";
  out.precision(5);
  out << "DP SCORE: " << result.dpScore << "\n";
  out << "START: " << result.lay.start + 1 << " STOP: " << result.lay.stop + 1 << "\n";
}

// Writes the error lines to `out` and returns the sequence with its marks.
std::string markSequence(std::ostream& out, const WebPredict& result) {
  std::string display;
  for (int i = 0; i < result.arrayLen; ++i) {
    const char base = ReadData::outPutBase(result.seqArray[i]);
    const FrameError error = frameErrorAt(result.frameAt(i / 3 - 1), result.frameAt(i / 3), i % 3);
    if (i == result.lay.start) display += '{';
    if (error == FrameError::kInsertion) {
      display += '(';
      out << "INSERTION_ERR: " << base << "@" << i + 1 << "\n";
    } else if (error == FrameError::kDeletion) {
      display += 'X';
      out << "DELETION_ERR: " << i + 1 << "\n";
    }
    display += base;
    if (error == FrameError::kInsertion) display += ')';
    if (i == result.lay.stop) display += '}';
  }
  return display;
}

void writeWrapped(std::ostream& out, const std::string& display, size_t width) {
  size_t begin = 0;
  for (; display.size() - begin > width; begin += width) {
    out.write(display.data() + begin, static_cast<std::streamsize>(width)) << "\n";
  }
  out << display.substr(begin) << "\n";
}

}  // namespace

void writeTextReport(std::ostream& out, const WebPredict& result, unsigned width) {
  writeSummary(out, result);
  if (result.lay.start == -1 && result.lay.stop == -1) {
    out << "\nNO CODING REGION WAS FOUND IN THIS SEQUENCE.\n";
    return;
  }
  const std::string display = markSequence(out, result);
  out << "\n";
  writeWrapped(out, display, width == 0 ? kDefaultWidth : width);
}

// A negative width, taken as an unsigned count, is longer than any display.
int WebPredict::OutNormLayout(int width) {
  writeTextReport(std::cout, *this, static_cast<unsigned>(width));
  return 0;
}

}  // namespace velto
