// The base codes: how one nucleotide of a read is stored, and the number of a codon.
#pragma once

namespace velto {

// Code of a letter that is none of A, T, G, C.
constexpr short kUnknownBase = -1;

// Base code of an upper-case letter: A 0, T 1, G 2, C 3 (in this order, not alphabetical);
// every other character, lower case included, is kUnknownBase.
constexpr short baseCode(char letter) {
  switch (letter) {
    case 'A':
      return 0;
    case 'T':
      return 1;
    case 'G':
      return 2;
    case 'C':
      return 3;
    default:
      return kUnknownBase;
  }
}

constexpr bool isKnownBase(int code) { return code >= 0 && code <= 3; }

// Upper case; 'n' for every unknown base.
constexpr char baseLetter(int code) { return isKnownBase(code) ? "ATGC"[code] : 'n'; }

constexpr int kCodons = 64;
constexpr int kNoCodon = -1;

// Number of the codon with these base codes in reading order, 0 to 63; kNoCodon if one is unknown.
constexpr int codonIndex(int first, int second, int third) {
  if (!isKnownBase(first) || !isKnownBase(second) || !isKnownBase(third)) return kNoCodon;
  return 16 * first + 4 * second + third;
}

}  // namespace velto
