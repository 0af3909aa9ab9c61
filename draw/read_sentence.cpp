#include "draw/read_sentence.h"

#include <algorithm>
#include <cmath>

#include "draw/markup.h"

namespace velto {
namespace {

constexpr std::size_t kMostListed = 6;  // positions; more make no sentence

// Small numbers in words, others in digits.
std::string numberWord(std::size_t count) {
  constexpr const char* kWords[] = {"no", "one", "two", "three", "four", "five", "six"};
  return count < std::size(kWords) ? kWords[count] : std::to_string(count);
}

std::string plural(std::size_t count, const std::string& noun) {
  return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

// The 1-based positions of the frameshifts of one kind.
std::vector<int> positionsOf(const Prediction& prediction, Frameshift::Kind kind) {
  std::vector<int> positions;
  for (const Frameshift& shift : prediction.frameshifts) {
    if (shift.kind == kind) positions.push_back(shift.position + 1);
  }
  return positions;
}

// " before 1, 2 and 3"; nothing if there are too many to be listed.
std::string placesText(const char* preposition, const std::vector<int>& positions) {
  if (positions.size() > kMostListed) return "";
  std::string text = std::string(" ") + preposition + " ";
  for (std::size_t i = 0; i < positions.size(); ++i) {
    if (i > 0) text += i + 1 == positions.size() ? " and " : ", ";
    text += std::to_string(positions[i]);
  }
  return text;
}

std::string shiftsText(const Prediction& prediction) {
  const std::vector<int> lost = positionsOf(prediction, Frameshift::Kind::kDeletion);
  const std::vector<int> extra = positionsOf(prediction, Frameshift::Kind::kInsertion);
  if (lost.empty() && extra.empty()) return "no base is missing or extra";
  std::string text;
  if (!lost.empty()) {
    text = numberWord(lost.size()) + (lost.size() == 1 ? " base is" : " bases are") + " missing" +
           placesText("before", lost);
  }
  if (extra.empty()) return text;
  const std::string noun = extra.size() == 1 ? " base" : " bases";
  if (!lost.empty()) text += lost.size() + extra.size() > 2 ? ", and " : " and ";
  text += numberWord(extra.size()) + (lost.empty() ? noun : "") +
          (extra.size() == 1 ? " is" : " are") + " extra" + placesText("at", extra);
  return text;
}

std::string codingText(const DrawnRead& read) {
  const Prediction& p = read.prediction;
  return "Bases " + std::to_string(p.start + 1) + " to " +
         std::to_string(std::min(p.stop + 1, p.length)) + " code for a protein of " +
         plural(aminoAcids(read.protein), "amino acid") + "; " + shiftsText(p) + ".";
}

}  // namespace

std::size_t aminoAcids(std::string_view protein) {
  return protein.size() - (!protein.empty() && protein.back() == '*' ? 1 : 0);
}

std::string percentText(double share) {
  if (share < 0.01) return "under 1\xC2\xA0%";
  if (share > 0.99) return "over 99\xC2\xA0%";
  return decimal(share * 100.0, 0) + "\xC2\xA0%";
}

std::string callSentence(const DrawnRead& read) {
  const auto length = static_cast<std::size_t>(read.prediction.length);
  switch (read.prediction.status) {
    case Prediction::Status::kCoding:
      return codingText(read);
    case Prediction::Status::kNoncoding:
      return "No coding region was found in the read's " + plural(length, "base") + ".";
    case Prediction::Status::kShort:
      return "The read has " + plural(length, "base") + "; reads of fewer than " +
             std::to_string(kLeastReadBases) + " are not predicted.";
    default:
      return "The read has no bases.";
  }
}

std::vector<std::string> furtherSentences(const DrawnRead& read) {
  const Prediction& p = read.prediction;
  std::vector<std::string> sentences;
  if (!p.isPredicted()) return sentences;
  if (p.isCoding() && p.strand == Strand::kMinus) {
    sentences.push_back("It lies on the reverse strand, along which all positions count.");
  }
  if (!std::isnan(p.probability)) {
    sentences.push_back("The probability that the read codes is " + percentText(p.probability) +
                        ".");
  }
  const std::string_view inner = read.protein.substr(0, aminoAcids(read.protein));
  const auto stops = static_cast<std::size_t>(std::count(inner.begin(), inner.end(), '*'));
  if (stops > 0) {
    sentences.push_back("The protein has " + plural(stops, "stop codon") + " inside.");
  }
  return sentences;
}

std::string shiftSentence(const Frameshift& shift) {
  const std::string place = std::to_string(shift.position + 1);
  const std::string confidence =
      std::isnan(shift.confidence) ? "" : ", confidence " + percentText(shift.confidence);
  return (shift.kind == Frameshift::Kind::kDeletion ? "One base is missing before "
                                                    : "One base is extra at ") +
         place + confidence + ".";
}

}  // namespace velto
