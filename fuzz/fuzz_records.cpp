// Fuzz target: the bytes of a file of reads through the reader of FASTA, FASTQ and BAM. If the
// first byte is odd, the others are put into BGZF, so that damage reaches the records behind the
// checksum.
#include <htslib/bgzf.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>

#include "seqio/record_reader.h"

namespace {

constexpr std::size_t kMostBases = 100'000;

// A file in memory that can be opened by its path.
class MemoryFile {
 public:
  MemoryFile() : descriptor_(memfd_create("records", 0)) {
    if (descriptor_ < 0) std::abort();
  }
  ~MemoryFile() { close(descriptor_); }
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;

  std::string path() const { return "/proc/self/fd/" + std::to_string(descriptor_); }

 private:
  int descriptor_;
};

void writeFile(const std::string& path, const uint8_t* data, size_t size, bool compressed) {
  BGZF* file = bgzf_open(path.c_str(), compressed ? "w" : "wu");
  if (!file || bgzf_write(file, data, size) < 0 || bgzf_close(file) < 0) std::abort();
}

void expect(bool holds) {
  if (!holds) std::abort();
}

void readAll(const std::string& path) {
  velto::RecordReader reader(path, kMostBases);
  velto::Record record;
  long number = 0;
  while (reader.next(record)) {
    expect(record.number > number);
    number = record.number;
    expect(record.bases.size() <= kMostBases);
    expect(record.qualities.empty() || record.qualities.size() == record.bases.size());
    for (const std::uint8_t quality : record.qualities) expect(quality <= velto::kMaxPhred);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size == 0) return 0;
  const MemoryFile file;
  writeFile(file.path(), data + 1, size - 1, data[0] % 2 == 1);
  try {
    readAll(file.path());
  } catch (const velto::Error&) {
  }
  return 0;
}
