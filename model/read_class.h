// The class of a read by GC content and length, which names its model files and window width.
#pragma once

#include <string>

namespace velto {

// One class of reads. readClassAt lists the sixteen classes of a model directory.
struct ReadClass {
  int gcId;         // 0 to 3, see classifyRead
  int lengthId;     // 0: up to 999 bases, 1: 1000 to 3000, 2: 3001 and more
  int windowWidth;  // bases; 96 for reads of up to 599 bases, 196 for longer ones

  // Names of the two model files within the model directory.
  std::string parameterFile() const;
  std::string matrixFile() const;

  // Their paths, by plain concatenation to the directory's name.
  std::string parameterPath(const std::string& directory) const;
  std::string matrixPath(const std::string& directory) const;

  // Short name, for example "96L0G1": window width, length class, GC class.
  std::string name() const;
};

// Class of a read of `length` bases with `gcPercent` (0 to 100) G and C.
ReadClass classifyRead(int length, double gcPercent);

// Number of classes with model files, and the index of a class among them: window 96 first, then
// window 196 by length class; the GC class runs fastest.
constexpr int kReadClasses = 16;
int readClassIndex(const ReadClass& readClass);
ReadClass readClassAt(int index);

}  // namespace velto
