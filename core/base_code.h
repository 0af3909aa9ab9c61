// The base codes: how one nucleotide of a read is stored.
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

}  // namespace velto
