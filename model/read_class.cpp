#include "model/read_class.h"

namespace velto {
namespace {

constexpr int kShortWindow = 96;     // bases
constexpr int kLongWindow = 196;     // bases
constexpr int kShortReadMost = 599;  // bases; longest read of the short window

// The bound 0.57 belongs to the class below it, the bounds 0.43 and 0.51 to the class above them.
int gcClass(double fraction) {
  if (fraction < 0.43) return 0;
  if (fraction < 0.51) return 1;
  return fraction <= 0.57 ? 2 : 3;
}

int lengthClass(int length) {
  if (length <= 999) return 0;
  return length <= 3000 ? 1 : 2;
}

std::string fileName(const ReadClass& c, const char* stem) {
  return (c.windowWidth == kShortWindow ? "paramater32/" : "paramater/") +
         (stem + std::to_string(c.lengthId)) + "G" + std::to_string(c.gcId) + "-ex0.txt";
}

}  // namespace

std::string ReadClass::parameterFile() const { return fileName(*this, "paramL"); }

std::string ReadClass::matrixFile() const { return fileName(*this, "matrixL"); }

std::string ReadClass::parameterPath(const std::string& directory) const {
  return directory + '/' + parameterFile();
}

std::string ReadClass::matrixPath(const std::string& directory) const {
  return directory + '/' + matrixFile();
}

std::string ReadClass::name() const {
  return std::to_string(windowWidth) + "L" + std::to_string(lengthId) + "G" + std::to_string(gcId);
}

ReadClass classifyRead(int length, double gcPercent) {
  return {gcClass(gcPercent / 100.0), lengthClass(length),
          length <= kShortReadMost ? kShortWindow : kLongWindow};
}

int readClassIndex(const ReadClass& c) {
  return (c.windowWidth == kShortWindow ? 0 : 4 + 4 * c.lengthId) + c.gcId;
}

ReadClass readClassAt(int index) {
  if (index < 4) return {index, 0, kShortWindow};
  return {index % 4, index / 4 - 1, kLongWindow};
}

}  // namespace velto
