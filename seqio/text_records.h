// Splits FASTA and FASTQ text into records.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "seqio/byte_stream.h"
#include "seqio/line_splitter.h"
#include "seqio/record_source.h"

namespace velto {

// The first record's '>' or '@' decides the format of the whole file.
class TextRecords : public RecordSource {
 public:
  // `path` serves messages only. A sequence longer than `maxBases` is an error. The first line has
  // the number `firstLine`.
  TextRecords(std::string path, std::unique_ptr<ByteStream> bytes, std::size_t maxBases,
              long firstLine = 1);

  bool next(Record& record) override;

 private:
  bool parseNext(Record& record);
  bool skipBlankLines();
  void readHeader(Record& record);
  void readFastaBases(Record& record);
  void readFastqBases(Record& record);
  void readFastqQualities(Record& record);
  void appendBases(std::string& bases);
  void checkLetters(std::string_view bases, long line) const;
  std::size_t appendQualities(std::vector<std::uint8_t>& qualities, std::size_t most);
  template <typename Use>
  void eachPiece(Use use);
  [[noreturn]] void throwNoHeader(long line) const;
  [[noreturn]] void throwAt(long line, const std::string& reason) const;

  const std::string path_;
  const std::size_t maxBases_;
  LineSplitter lines_;
  std::string header_;      // scratch
  int marker_ = 0;          // '>' or '@' once a record began, else 0
  long number_ = 0;         // of the record being read
  long sequenceLines_ = 0;  // of the record being read
};

}  // namespace velto
