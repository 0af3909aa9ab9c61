#include "training/layout_printer.h"

#include <iostream>
#include <string>

#include "decoder/tester.h"

namespace velto {
namespace {

void printRow(std::ostream& out, const std::string& label, const std::vector<int>& codes) {
  out << label;
  for (const int code : codes) out << layoutSymbol(code);
  out << "\n";
}

}  // namespace

void printLayout(std::ostream& out, const layout& lay) {
  out << "start/stop: " << lay.start << "/" << lay.stop << "-----------------\n";
  printRow(out, "err : ", lay.errMark);
  for (const std::vector<int>& known : lay.crr) printRow(out, "crr : ", known);
  out << "-\n";
  for (const std::vector<int>& marks : lay.met) printRow(out, "met : ", marks);
  printRow(out, "rfm : ", lay.rfm);
  out << "--\n";
  for (int f = 0; f < 3; ++f) printRow(out, std::to_string(f) + "   : ", lay.cls[f]);
  out << "\n";
}

int Test::PrintLayout() {
  for (const layout& lay : *layoutList) printLayout(std::cout, lay);
  return 0;
}

}  // namespace velto
