#include "simulation/labelled_read.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

#include "core/letter_codes.h"
#include "seqio/record_reader.h"
#include "seqio/text_input.h"

namespace velto {

ReadClass LabelledRead::readClass() const {
  std::vector<short> codes;
  codeLetters(bases, Letters::kFolded, codes);
  return classifyRead(static_cast<int>(codes.size()), gcPercent(codes));
}

std::vector<LabelledRead> simulateLabelled(const ReadSampling& sampling,
                                           const std::vector<Transcript>& transcripts) {
  std::vector<LabelledRead> reads;
  const std::uint64_t count = readCount(sampling, transcripts.size());
  for (std::uint64_t index = 0; index < count; ++index) {
    SimulatedRead read = sampleRead(sampling, transcripts, index);
    TruthRow truth = truthOf(read, sampledReadName(index));
    reads.push_back({std::move(truth), baseLetters(read.bases), {}});
  }
  return reads;
}

namespace {

// To the other strand.
void turn(LabelledRead& read) {
  read.bases = predictedLetters(read.bases, Strand::kMinus, Letters::kFolded);
  std::reverse(read.qualities.begin(), read.qualities.end());
}

std::vector<TruthRow> loadTruth(const std::string& path) {
  TextInput input(path);
  return readTruthTable(input.stream(), path);
}

// Rows of a truth table, each to be taken once by the name of its read.
class TruthRows {
 public:
  explicit TruthRows(const std::string& path) : path_(path), rows_(loadTruth(path)) {
    for (std::size_t i = 0; i < rows_.size(); ++i) {
      const bool isNew = byName_.emplace(rows_[i].read, i).second;
      if (!isNew) throw InputError(path, 0, 0, "two rows for read '" + rows_[i].read + "'");
    }
  }

  // Throws InputError naming the record of `file`.
  TruthRow take(const Record& record, const std::string& file) {
    const auto found = byName_.find(record.name);
    if (found == byName_.end()) {
      throw InputError(file, record.number, record.line,
                       "no row, or no further one, for read '" + record.name + "' in " + path_);
    }
    TruthRow row = std::move(rows_[found->second]);
    byName_.erase(found);
    if (static_cast<std::size_t>(row.length) != record.bases.size()) {
      throw InputError(file, record.number, record.line,
                       "read '" + record.name + "' has " + std::to_string(record.bases.size()) +
                           " bases, " + std::to_string(row.length) + " in " + path_);
    }
    return row;
  }

  // Throws InputError unless every row was taken.
  void checkAllTaken(const std::string& file) const {
    if (byName_.empty()) return;
    throw InputError(path_, 0, 0,
                     std::to_string(byName_.size()) + " of " + std::to_string(rows_.size()) +
                         " rows have no read in " + file);
  }

 private:
  const std::string& path_;
  std::vector<TruthRow> rows_;
  std::unordered_map<std::string, std::size_t> byName_;  // rows not yet taken
};

}  // namespace

std::vector<LabelledRead> loadLabelled(const std::string& readsPath, const std::string& truthPath) {
  TruthRows rows(truthPath);
  RecordReader records(readsPath);
  std::vector<LabelledRead> reads;
  Record record;
  while (records.next(record)) {
    TruthRow row = rows.take(record, readsPath);
    reads.push_back({std::move(row), std::move(record.bases), std::move(record.qualities)});
    if (reads.back().truth.reversed) turn(reads.back());
  }
  rows.checkAllTaken(readsPath);
  return reads;
}

}  // namespace velto
