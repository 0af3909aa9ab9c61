// Fuzz target: the bytes of a FASTA file through the whole prediction to every report.
#include <cstddef>
#include <cstdint>
#include <sstream>

#include "driver/fasta_input.h"
#include "model/read_class.h"
#include "report/html_page.h"
#include "report/score_file.h"
#include "report/text_report.h"
#include "report/web_listing.h"
#include "tests/support/models.h"

namespace {

// Long reads only cost time.
constexpr size_t kMostBytes = 4000;

// A model under which runs of Ala codons are coding, with some hypotheses of every kind.
velto::ModelTables fuzzModel() {
  velto::ModelTables tables;
  velto::test::Random random(1);
  tables = velto::test::usualRandomModel(random);
  tables.fh.resize(40);
  velto::test::addAcid(tables, 0, 12.0, 1, 8);
  velto::test::setCodingMatrix(tables);
  return tables;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const velto::ModelTables model = fuzzModel();
  if (size > kMostBytes) return 0;
  std::istringstream in(std::string(reinterpret_cast<const char*>(data), size));
  const velto::FastaRead read = velto::readFasta(in);
  if (read.codes.size() < velto::kLeastBases) return 0;
  velto::WebPredict result;
  result.fastaHeader = read.header;
  result.setRead(read.codes);
  velto::test::useAsProcessModel(
      model, velto::classifyRead(result.seqLength, result.gcPressure).windowWidth);
  result.predictRead();
  std::ostringstream out;
  velto::writeTextReport(out, result, 60);
  velto::writeHtmlPage(out, result, 1 + result.arrayLen % 70);
  velto::writeScoreFile(out, result);
  velto::writeWebListing(out, result);
  return 0;
}
