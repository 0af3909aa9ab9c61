// BAM files made through htslib for the tests of this folder.
#pragma once

#include <htslib/sam.h>

#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

namespace velto {

struct TestRead {
  std::string name;
  std::uint16_t flag;
  std::string bases;
  std::string qualities = {};  // phred values as bytes; empty: none
};

// Reads are placed on one reference unless unmapped.
inline std::string storeBam(const std::string& path, const std::vector<TestRead>& reads) {
  samFile* file = sam_open(path.c_str(), "wb");
  sam_hdr_t* header = sam_hdr_parse(0, "");
  bam1_t* alignment = bam_init1();
  bool good =
      file != nullptr && sam_hdr_add_line(header, "SQ", "SN", "chr1", "LN", "1000", nullptr) == 0;
  good = good && sam_hdr_write(file, header) == 0;
  for (const TestRead& read : reads) {
    const bool mapped = (read.flag & BAM_FUNMAP) == 0;
    const std::uint32_t cigar =
        bam_cigar_gen(static_cast<std::uint32_t>(read.bases.size()), BAM_CMATCH);
    good = good && bam_set1(alignment, read.name.size(), read.name.c_str(), read.flag,
                            mapped ? 0 : -1, mapped ? 10 : -1, 60, mapped ? 1 : 0, &cigar, -1, -1,
                            0, read.bases.size(), read.bases.c_str(),
                            read.qualities.empty() ? nullptr : read.qualities.data(), 0) >= 0;
    good = good && sam_write1(file, header, alignment) >= 0;
  }
  bam_destroy1(alignment);
  sam_hdr_destroy(header);
  if (file == nullptr || sam_close(file) < 0 || !good) throw std::runtime_error("BAM not written");
  return path;
}

}  // namespace velto
