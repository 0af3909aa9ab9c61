// The input readers of the predictor: a FASTA file of one record, and standard input.
#include "driver/fasta_input.h"

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iostream>
#include <new>

#include "core/base_code.h"
#include "core/letter_codes.h"
#include "driver/web_predict.h"

namespace velto {
namespace {

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

FastaRead readFasta(std::istream& in) {
  FastaRead read;
  const int first = in.get();
  if (first == '>') {
    std::getline(in, read.header);
  } else if (in) {
    read.codes.push_back(baseCode(static_cast<char>(first)));
  }
  readBases(in, read.codes);
  return read;
}

void WebPredict::setRead(const std::vector<short>& codes) {
  if (codes.size() > INT_MAX) throw std::bad_alloc();
  delete[] seqArray;
  seqArray = nullptr;
  seqArray = new short[codes.size()];
  std::copy(codes.begin(), codes.end(), seqArray);
  arrayLen = static_cast<int>(codes.size());
  seqLength = arrayLen;
  gcPressure = gcPercent(codes);
}

int WebPredict::GetArrayFromFile(char* fileName) {
  std::ifstream in(fileName);
  if (!in) {
    std::cerr << "CAN NOT FIND FILE: " << fileName << "\n";
    std::exit(1);
  }
  const FastaRead read = readFasta(in);
  fastaHeader += read.header;
  setRead(read.codes);
  if (arrayLen < kLeastBases) refuseShortRead();
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
  double gcBases = 0.0;
  while (std::cin.getline(line, sizeof line) && std::strncmp(line, "exit", 4) != 0) {
    for (const char* c = line; *c != '\0'; ++c) {
      const short code = baseCode(*c);
      if (isGOrC(code)) ++gcBases;
      if (codes.size() < length) codes.push_back(code);
    }
  }
  codes.resize(length, kUnknownBase);
  setRead(codes);
  if (arrayLen > 0) gcPressure = gcBases * 100.0 / arrayLen;
  return 0;
}

}  // namespace velto
