#include "bench/reads.h"

#include <cstdlib>

#include "seqio/record_reader.h"
#include "tests/support/temp_dir.h"
#include "tests/support/trained_models.h"

namespace velto::bench {
namespace {

constexpr size_t kReads = 400;

struct MadeUp {
  test::Random random{20261121};
  test::MadeUpSpecies species{random};
};

MadeUp& madeUp() {
  static MadeUp data;
  return data;
}

std::vector<std::string> readsOfFile(const std::string& path) {
  RecordReader reader(path);
  std::vector<std::string> bases;
  Record record;
  while (bases.size() < kReads && reader.next(record)) bases.push_back(record.bases);
  return bases;
}

std::vector<std::string> madeUpReads() {
  std::vector<std::string> bases;
  while (bases.size() < kReads) {
    const int length = test::randomInt(madeUp().random, 300, 800);
    bases.push_back(madeUp().species.read(madeUp().random, length, 0.012));
  }
  return bases;
}

}  // namespace

const std::string& modelDirectory() {
  static const test::TempDir made;
  static const std::string directory = [] {
    const char* named = std::getenv("VELTO_BENCH_MODEL");
    if (named != nullptr) return std::string(named);
    madeUp().species.writeModels(madeUp().random, test::PriorForm::kNearlyConstant, made.path());
    return made.path();
  }();
  return directory;
}

const std::vector<std::string>& reads() {
  static const std::vector<std::string> bases = [] {
    modelDirectory();  // drawn first, so that the reads do not depend on the order of the
                       // benchmarks
    const char* named = std::getenv("VELTO_BENCH_READS");
    return named != nullptr ? readsOfFile(named) : madeUpReads();
  }();
  return bases;
}

}  // namespace velto::bench
