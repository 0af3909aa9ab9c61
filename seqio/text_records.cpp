#include "seqio/text_records.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "seqio/input_error.h"

namespace velto {
namespace {

// Keeps a file without line feeds from filling the memory.
constexpr std::size_t kMaxHeaderBytes = 100'000'000;

// Keeps outputs in bounds, some of which have the name thrice in every row.
constexpr std::size_t kMaxNameBytes = 10'000;

constexpr char kPhredZero = '!';

bool isBlank(std::string_view text) { return text.find_first_not_of(" \t\r") == text.npos; }

bool holds(std::string_view text, char byte) {
  return !text.empty() && std::memchr(text.data(), byte, text.size()) != nullptr;
}

// Any letter: those that are no base count as unknown bases. Without a branch, so that compilers
// check many bytes at once.
bool isSequenceLetter(char byte) {
  const auto placeInAlphabet = static_cast<std::uint8_t>((byte | 0x20) - 'a');
  return (int{placeInAlphabet < 26} | int{byte == '-'} | int{byte == '*'}) != 0;
}

bool areSequenceLetters(std::string_view bases) {
  std::uint8_t all = 1;
  for (const char byte : bases) all &= static_cast<std::uint8_t>(isSequenceLetter(byte));
  return all != 0;
}

bool isSpace(char byte) { return byte == ' ' || byte == '\t'; }

void appendWithoutSpaces(std::string& bases, std::string_view text) {
  const std::size_t old = bases.size();
  bases.append(text);
  if (!holds(text, ' ') && !holds(text, '\t')) return;
  const auto from = bases.begin() + static_cast<std::ptrdiff_t>(old);
  bases.erase(std::remove_if(from, bases.end(), isSpace), bases.end());
}

}  // namespace

TextRecords::TextRecords(std::string path, std::unique_ptr<ByteStream> bytes, std::size_t maxBases,
                         long firstLine)
    : path_(std::move(path)), maxBases_(maxBases), lines_(std::move(bytes), firstLine) {}

// Hands the current line to `use`, one piece at a time.
template <typename Use>
void TextRecords::eachPiece(Use use) {
  for (bool ended = false; !ended;) {
    const LineSplitter::Piece piece = lines_.take();
    use(piece.text);
    ended = piece.endsLine;
  }
}

bool TextRecords::next(Record& record) try {
  return parseNext(record);
} catch (const ByteError& error) {
  throwAt(lines_.line(), error.what());
}

bool TextRecords::parseNext(Record& record) {
  ++number_;
  if (!skipBlankLines()) return false;
  const int marker = lines_.peek();
  if (marker_ == 0 && (marker == '>' || marker == '@')) marker_ = marker;
  record.number = number_;
  record.line = lines_.line();
  if (marker != marker_) throwNoHeader(record.line);
  readHeader(record);
  record.qualities.clear();
  if (marker_ == '>') {
    readFastaBases(record);
  } else {
    readFastqBases(record);
    readFastqQualities(record);
  }
  return true;
}

// False at the end of the file.
bool TextRecords::skipBlankLines() {
  for (int byte; (byte = lines_.peek()) != LineSplitter::kEnd;) {
    if (byte != '\n' && byte != '\r' && byte != ' ' && byte != '\t') return true;
    const long line = lines_.line();
    const std::string_view text = lines_.take().text;
    if (!isBlank(text)) throwNoHeader(line);
  }
  return false;
}

void TextRecords::readHeader(Record& record) {
  header_.clear();
  eachPiece([&](std::string_view text) {
    if (header_.size() + text.size() > kMaxHeaderBytes) throwAt(record.line, "header too long");
    header_.append(text);
  });
  if (holds(header_, '\r') || holds(header_, '\n')) {
    throwAt(record.line, "header with the line end of another system inside");
  }
  const std::size_t blank = header_.find_first_of(" \t", 1);
  record.name = header_.substr(1, blank == header_.npos ? blank : blank - 1);
  if (record.name.size() > kMaxNameBytes) {
    throwAt(record.line, "name longer than " + std::to_string(kMaxNameBytes) + " bytes");
  }
  record.description = blank == header_.npos ? std::string() : header_.substr(blank + 1);
}

void TextRecords::readFastaBases(Record& record) {
  record.bases.clear();
  while (lines_.peek() != LineSplitter::kEnd && lines_.peek() != '>') {
    appendBases(record.bases);
  }
}

void TextRecords::readFastqBases(Record& record) {
  record.bases.clear();
  sequenceLines_ = 0;
  for (int byte; (byte = lines_.peek()) != '+'; ++sequenceLines_) {
    if (byte == LineSplitter::kEnd || byte == '@' || byte == '>') {
      throwAt(lines_.line(), "FASTQ record without its '+' line");
    }
    appendBases(record.bases);
  }
  eachPiece([](std::string_view) {});  // the '+' and what is repeated behind it
}

// A sequence on one line has its quality on one line; otherwise quality runs on until it is as
// long as the sequence, since '@' and '+' may start a line of it.
void TextRecords::readFastqQualities(Record& record) {
  const std::size_t bases = record.bases.size();
  std::size_t count = 0;
  const long first = lines_.line();
  while (count < bases) {
    if (lines_.peek() == LineSplitter::kEnd) {
      throwAt(lines_.line(), "FASTQ record ends within its quality");
    }
    count += appendQualities(record.qualities, bases);
    if (sequenceLines_ == 1) break;
  }
  if (count != bases) {
    throwAt(first, "FASTQ quality of length " + std::to_string(count) + " for " +
                       std::to_string(bases) + " bases");
  }
}

// Takes one line.
void TextRecords::appendBases(std::string& bases) {
  const long line = lines_.line();
  eachPiece([&](std::string_view text) {
    const std::size_t old = bases.size();
    appendWithoutSpaces(bases, text);
    checkLetters(std::string_view(bases).substr(old), line);
    if (bases.size() > maxBases_) {
      throwAt(line, "sequence longer than " + std::to_string(maxBases_) + " bases");
    }
  });
}

// Takes one line and tells how many values it has; keeps no more than `most` in all.
std::size_t TextRecords::appendQualities(std::vector<std::uint8_t>& qualities, std::size_t most) {
  const long line = lines_.line();
  std::size_t count = 0;
  eachPiece([&](std::string_view text) {
    for (const char letter : text) {
      if (isSpace(letter)) continue;
      const int phred = letter - kPhredZero;
      if (phred < 0 || phred > kMaxPhred) throwAt(line, "FASTQ quality outside '!' to '~'");
      if (qualities.size() < most) qualities.push_back(static_cast<std::uint8_t>(phred));
      ++count;
    }
  });
  return count;
}

void TextRecords::checkLetters(std::string_view bases, long line) const {
  if (areSequenceLetters(bases)) return;
  const auto odd = std::find_if_not(bases.begin(), bases.end(), isSequenceLetter);
  const auto code = static_cast<unsigned char>(*odd);
  const bool isPrintable = code > ' ' && code < 0x7f;
  const std::string what =
      isPrintable ? "'" + std::string(1, *odd) + "'" : "byte " + std::to_string(code);
  throwAt(line, what + " within a sequence, where only letters, '-' and '*' may stand");
}

void TextRecords::throwNoHeader(long line) const {
  if (marker_ == '@') throwAt(line, "FASTQ record does not start with '@'");
  throwAt(line, "neither FASTA ('>'), FASTQ ('@') nor BAM");
}

void TextRecords::throwAt(long line, const std::string& reason) const {
  throw InputError(path_, number_, line, reason);
}

}  // namespace velto
