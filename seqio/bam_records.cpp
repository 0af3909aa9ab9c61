#include "seqio/bam_records.h"

#include <htslib/bgzf.h>
#include <htslib/sam.h>

#include <algorithm>
#include <cstdint>
#include <new>
#include <string_view>
#include <utility>
#include <vector>

#include "seqio/input_error.h"

namespace velto {
namespace {

// By BAM's four-bit code, one bit each for A, C, G and T.
constexpr char kLetters[] = "=ACMGRSVTWYHKDBN";
constexpr char kComplements[] = "=TGKCYSBAWRDMHVN";

// The read as sequenced.
void copyBases(const bam1_t& alignment, std::string& bases) {
  const bool reversed = (alignment.core.flag & BAM_FREVERSE) != 0;
  const char* letters = reversed ? kComplements : kLetters;
  const std::uint8_t* codes = bam_get_seq(&alignment);
  bases.resize(static_cast<std::size_t>(alignment.core.l_qseq));
  for (std::size_t i = 0; i < bases.size(); ++i) bases[i] = letters[bam_seqi(codes, i)];
  if (reversed) std::reverse(bases.begin(), bases.end());
}

// In the order of copyBases(); none if the record has none, which BAM marks by 255. False if a
// value is out of range.
bool copyQualities(const bam1_t& alignment, std::vector<std::uint8_t>& qualities) {
  constexpr std::uint8_t kMissing = 255;
  const std::uint8_t* values = bam_get_qual(&alignment);
  qualities.assign(values, values + alignment.core.l_qseq);
  if (qualities.empty() || qualities.front() == kMissing) {
    qualities.clear();
    return true;
  }
  if ((alignment.core.flag & BAM_FREVERSE) != 0) std::reverse(qualities.begin(), qualities.end());
  return *std::max_element(qualities.begin(), qualities.end()) <= kMaxPhred;
}

}  // namespace

BamRecords::BamRecords(std::string path, ByteSource bytes, std::size_t maxBases)
    : path_(std::move(path)),
      maxBases_(maxBases),
      bytes_(std::move(bytes)),
      alignment_(bam_init1()) {
  if (!alignment_) throw std::bad_alloc();
  try {
    skipHeader();
  } catch (const ByteError& error) {
    throwHere(error.what());
  }
}

bool BamRecords::next(Record& record) try {
  constexpr int kSkipped = BAM_FSECONDARY | BAM_FSUPPLEMENTARY;
  do {
    ++number_;
    if (!readAlignment()) return false;
  } while ((alignment_->core.flag & kSkipped) != 0);
  if (static_cast<std::size_t>(alignment_->core.l_qseq) > maxBases_) {
    throwHere("longer than " + std::to_string(maxBases_) + " bases");
  }
  record.name = bam_get_qname(alignment_);
  record.description.clear();
  copyBases(*alignment_, record.bases);
  if (!copyQualities(*alignment_, record.qualities)) throwHere("quality above 93");
  record.number = number_;
  record.line = 0;
  return true;
} catch (const ByteError& error) {
  throwHere(error.what());
}

// Not by htslib's header reader, which allocates by the lengths given before it has the bytes.
void BamRecords::skipHeader() {
  char magic[4];
  readExactly(magic, sizeof magic);
  if (std::string_view(magic, sizeof magic) != std::string_view("BAM\1", 4)) {
    throw InputError(path_, 1, 1, "neither FASTA ('>'), FASTQ ('@') nor BAM");
  }
  skip(readCount());  // text
  for (std::size_t references = readCount(); references > 0; --references) {
    skip(readCount());  // name
    readCount();        // length
  }
}

void BamRecords::skip(std::size_t size) {
  char scratch[4096];
  while (size > 0) {
    const std::size_t part = std::min(size, sizeof scratch);
    readExactly(scratch, part);
    size -= part;
  }
}

// A 32-bit number, low byte first.
std::size_t BamRecords::readCount() {
  unsigned char bytes[4];
  readExactly(reinterpret_cast<char*>(bytes), sizeof bytes);
  return bytes[0] | std::size_t{bytes[1]} << 8 | std::size_t{bytes[2]} << 16 |
         std::size_t{bytes[3]} << 24;
}

void BamRecords::readExactly(char* into, std::size_t size) {
  while (size > 0) {
    const std::size_t count = bytes_.read(into, size);
    if (count == 0) throwHere("BAM header truncated");
    into += count;
    size -= count;
  }
}

// False at the end of a complete file.
bool BamRecords::readAlignment() {
  if (bytes_.peek() == ByteSource::kEnd) return false;
  if (bam_read1(bytes_.handle(), alignment_.get()) < 0)
    throwHere("BAM record truncated or corrupt");
  return true;
}

void BamRecords::throwHere(const std::string& reason) const {
  throw InputError(path_, std::max(number_, 1L), 0, reason);
}

void BamRecords::Destroy::operator()(bam1_t* alignment) const { bam_destroy1(alignment); }

}  // namespace velto
