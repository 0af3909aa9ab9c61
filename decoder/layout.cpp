#include "decoder/layout.h"

namespace velto {

char layoutSymbol(int code) {
  switch (code) {
    case kAtgCodon:
      return 'M';
    case kOtherCodon:
      return '.';
    case kCodingWindow:
      return '*';
    case kNonCodingWindow:
      return '-';
    case kPathStart:
      return '<';
    case kStopCodon:
      return 'S';
    case kNoWindow:
      return '=';
    case kLeadingFiller:
      return 'F';
    case kKnownError:
      return '!';
    case kEvaluationMark:
      return '>';
    case 0:
    case 1:
    case 2:
      return static_cast<char>('0' + code);
    default:
      return '?';
  }
}

}  // namespace velto
