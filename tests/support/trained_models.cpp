#include "tests/support/trained_models.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "model/model_file.h"
#include "model/read_class.h"
#include "model/read_data.h"
#include "model/window_sample.h"
#include "model/window_vote.h"
#include "tests/support/reads.h"
#include "tests/support/temp_dir.h"

namespace velto::test {
namespace {

constexpr int kWindows = 60;  // sampled of either kind

std::string letters(int codon) {
  return {"ATGC"[codon / 16], "ATGC"[codon / 4 % 4], "ATGC"[codon % 4]};
}

bool isStop(int codon) {
  return ReadData::CodonTable(codon / 16, codon / 4 % 4, codon % 4) == kStopSignal;
}

smplTestData countWindow(const std::string& window) {
  const std::vector<short> codes = baseCodes(window);
  smplTestData sample;
  for (int p = 0; p + 2 < static_cast<int>(codes.size()); p += 3) {
    countCodon(sample, codes.data(), static_cast<int>(codes.size()), p);
  }
  sample.end = static_cast<int>(codes.size()) - 1;
  return sample;
}

double feature(const ModelTables& tables, const fnlHypo& h, const smplTestData& s) {
  if (h.kind == kSingleAcidKind) return s.snglAcidCnt[h.elem1];
  if (h.kind == kCodonKind) {
    const int acid = ReadData::CodonTable(h.elem1, h.elem2, h.elem3);
    return codonFeature(h, s.codonCnt[h.elem1][h.elem2][h.elem3], s.snglAcidCnt[acid]);
  }
  return pairFeature(tables, h, s.pairAcidCnt[h.gap][h.elem1][h.elem2],
                     s.pairAcidSnglCnt[h.gap][0][h.elem1], s.pairAcidSnglCnt[h.gap][1][h.elem2],
                     s.end - s.start);
}

fnlHypo randomHypothesis(Random& random) {
  const double kind = randomReal(random, 0.0, 1.0);
  const auto base = [&] { return randomInt(random, 0, 3); };
  const auto acid = [&] { return randomInt(random, 0, kAminoAcids - 1); };
  if (kind < 0.40) return {kCodonKind, 0.0, base(), base(), base(), 0};
  if (kind < 0.55) return {kSingleAcidKind, 0.0, acid(), 0, 0, 0};
  return {kPairKind, 0.0, acid(), acid(), 0, randomInt(random, 0, kPairGaps - 1)};
}

void fillPriors(ModelTables& tables, PriorForm form, int windowWidth) {
  const bool follow = form == PriorForm::kFollowCounts;
  for (auto& prior : tables.snglAcidPriproTable) {
    prior[0] = follow ? 4.5 : 1e6;
    prior[1] = follow ? 96.0 : 1e6;
  }
  for (auto& ofGap : tables.pairAcidPriproTable) {
    for (auto& ofFirst : ofGap) {
      for (auto& prior : ofFirst) {
        prior[0] = follow ? 0.225 : 0.0;
        prior[1] = follow ? 96.0 : 3.0 - windowWidth;
      }
    }
  }
}

void setMatrix(double (&matrix)[16]) {
  constexpr double kMatrix[16] = {0.8,   -2.0,  10.0, -30.0,  //
                                  -2.0,  -1.0,  10.0, -30.0,  //
                                  0.0,   0.0,   0.0,  0.0,    //
                                  -75.0, -75.0, 30.0, -30.0};
  std::copy(std::begin(kMatrix), std::end(kMatrix), matrix);
}

}  // namespace

MadeUpSpecies::MadeUpSpecies(Random& random) {
  double total = 0.0;
  for (size_t codon = 0; codon < upTo_.size(); ++codon) {
    if (!isStop(static_cast<int>(codon))) total += std::exp(randomReal(random, -1.5, 1.5));
    upTo_[codon] = total;
  }
}

std::string MadeUpSpecies::codon(Random& random) const {
  const double at = randomReal(random, 0.0, upTo_.back());
  return letters(
      static_cast<int>(std::lower_bound(upTo_.begin(), upTo_.end(), at) - upTo_.begin()));
}

std::string MadeUpSpecies::read(Random& random, int length, double indels, double unknown) const {
  std::string perfect = randomLetters(random, length / 8) + "ATG";
  while (static_cast<int>(perfect.size()) < length * 7 / 8) perfect += codon(random);
  perfect += "TAA" + randomLetters(random, length / 8);
  std::string read;
  for (const char letter : perfect) {
    if (chance(random, indels / 2)) continue;
    read += chance(random, unknown) ? 'N' : letter;
    if (chance(random, indels / 2)) read += randomLetters(random, 1);
  }
  return read;
}

ModelTables MadeUpSpecies::model(Random& random, PriorForm form, int windowWidth,
                                 int weights) const {
  ModelTables tables;
  fillPriors(tables, form, windowWidth);
  setMatrix(tables.malkovChain);
  std::vector<smplTestData> coding;
  std::vector<smplTestData> other;
  for (int i = 0; i < kWindows; ++i) {
    std::string window;
    for (int j = 0; j < windowWidth / 3; ++j) window += codon(random);
    coding.push_back(countWindow(window));
    other.push_back(countWindow(randomLetters(random, 3 * (windowWidth / 3))));
  }
  while (tables.fh.size() < kModelHypotheses) {
    fnlHypo h = randomHypothesis(random);
    const auto mean = [&](const std::vector<smplTestData>& samples) {
      double sum = 0.0;
      for (const smplTestData& sample : samples) sum += feature(tables, h, sample);
      return sum / kWindows;
    };
    const double inCoding = mean(coding);
    const double inOther = mean(other);
    const double cut = (inCoding + inOther) / 2;
    const int polarity = inCoding > inOther;
    h.alpha =
        weights > 0 ? randomInt(random, 1, weights) / 10.0 : randomInt(random, 20000, 500000) / 1e6;
    const size_t i = tables.fh.size();
    tables.codonTrsld[i] = {polarity, cut};
    tables.pairAcidTrsld[i] = {polarity, cut};
    tables.snglAcidTrsld[i] = {polarity, static_cast<int>(cut)};
    tables.fh.push_back(h);
  }
  return tables;
}

void MadeUpSpecies::writeModels(Random& random, PriorForm form, const std::string& directory,
                                int weights) const {
  for (int i = 0; i < kReadClasses; ++i) {
    const ReadClass readClass = readClassAt(i);
    const ModelTables tables = model(random, form, readClass.windowWidth, weights);
    writeFile(readClass.parameterPath(directory), parameterFileText(tables));
    writeFile(readClass.matrixPath(directory), matrixFileText(tables.malkovChain));
  }
}

}  // namespace velto::test
