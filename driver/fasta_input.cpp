// The input readers of the predictor: a FASTA file of one record, and standard input.
#include <algorithm>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iostream>
#include <new>

#include "driver/web_predict.h"
#include "model/base_code.h"

namespace velto {
namespace {

constexpr int kLeastBases = 30;

// Appends the header line's text behind '>' up to its line feed or the end of the file.
void readHeader(std::istream& in, std::string& header) {
  std::string line;
  std::getline(in, line);
  header += line;
}

// Appends the base codes of the rest of the file; lines are joined.
void readBases(std::istream& in, std::vector<short>& codes) {
  char block[1 << 16];
  do {
    in.read(block, sizeof block);
    for (const char* c = block; c != block + in.gcount(); ++c) {
      if (*c != '\r' && *c != '\n') codes.push_back(baseCode(*c));
    }
  } while (in);
}

bool isGOrC(short code) { return code == baseCode('G') || code == baseCode('C'); }

[[noreturn]] void refuseShortRead() {
  std::cout << "VELTO DOES NOT SUPPORT SEQUENCES SHORTER THAN 30 BASES.\n";
  std::exit(1);
}

}  // namespace

void WebPredict::keepSequence(const std::vector<short>& codes) {
  if (codes.size() > INT_MAX) throw std::bad_alloc();
  delete[] seqArray;
  arrayLen = static_cast<int>(codes.size());
  seqArray = new short[codes.size()];
  std::copy(codes.begin(), codes.end(), seqArray);
}

int WebPredict::GetArrayFromFile(char* fileName) {
  std::ifstream in(fileName);
  if (!in) {
    std::cerr << "CAN NOT FIND FILE: " << fileName << "\n";
    std::exit(1);
  }
  std::vector<short> codes;
  const int first = in.get();
  if (first == '>') {
    readHeader(in, fastaHeader);
  } else if (in) {
    codes.push_back(baseCode(static_cast<char>(first)));  // kept even if it is a line break
  }
  readBases(in, codes);
  keepSequence(codes);
  if (arrayLen < kLeastBases) refuseShortRead();
  seqLength = arrayLen;
  gcPressure =
      static_cast<double>(std::count_if(codes.begin(), codes.end(), isGOrC)) * 100.0 / arrayLen;
  return 0;
}

int WebPredict::GetArrayFromCin() {
  char line[256];
  std::cin.getline(line, sizeof line);
  std::cin.getline(line, sizeof line);
  std::cin.getline(line, sizeof line);
  const long announced = std::strtol(line, nullptr, 10);
  const size_t length = announced > 0 && announced <= INT_MAX ? static_cast<size_t>(announced) : 0;
  std::vector<short> codes;
  while (std::cin.getline(line, sizeof line) && std::strncmp(line, "exit", 4) != 0) {
    for (const char* c = line; *c != '\0' && codes.size() < length; ++c) {
      codes.push_back(baseCode(*c));
    }
  }
  const auto gcBases = std::count_if(codes.begin(), codes.end(), isGOrC);
  codes.resize(length, kUnknownBase);
  keepSequence(codes);
  seqLength = arrayLen;
  gcPressure = length == 0 ? 0.0 : static_cast<double>(gcBases) * 100.0 / arrayLen;
  return 0;
}

}  // namespace velto
