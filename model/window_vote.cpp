#include "model/window_vote.h"

#include "model/model_file.h"

namespace velto {

bool isCounted(const ModelTables& tables, size_t i) {
  const fnlHypo& h = tables.fh[i];
  const bool known = h.kind == kCodonKind || h.kind == kSingleAcidKind || h.kind == kPairKind;
  return known && i < kModelHypotheses && indicesInRange(h);
}

double codonFeature(const fnlHypo& h, short codonCount, short acidCount) {
  if (acidCount == 0) return ReadData::BasicCodonRate(h.elem1, h.elem2, h.elem3);
  return static_cast<double>(codonCount) / acidCount;
}

double pairFeature(const ModelTables& tables, const fnlHypo& h, short pairCount, short firstCount,
                   short secondCount, int windowLength) {
  const double length = windowLength;
  const double(&pair)[2] = tables.pairAcidPriproTable[h.gap][h.elem1][h.elem2];
  const double(&first)[2] = tables.snglAcidPriproTable[h.elem1];
  const double(&second)[2] = tables.snglAcidPriproTable[h.elem2];
  const double fp = (kBasesPerCodon * pairCount + pair[0]) / (length + pair[1]);
  const double f1 = (kBasesPerCodon * firstCount + first[0]) / (length + first[1]);
  const double f2 = (kBasesPerCodon * secondCount + second[0]) / (length + second[1]);
  return fp / f1 / f2;
}

namespace {

double signedVote(double alpha, int polarity, bool above) {
  return above == (polarity != 0) ? alpha : -alpha;
}

template <typename Sample>
double hypothesisVote(const ModelTables& tables, size_t i, const Sample& s) {
  const fnlHypo& h = tables.fh[i];
  if (h.kind == kSingleAcidKind) {
    const CountThreshold& t = tables.snglAcidTrsld[i];
    return signedVote(h.alpha, t.polarity, s.snglAcidCnt[h.elem1] > t.trsld);
  }
  if (h.kind == kCodonKind) {
    const RealThreshold& t = tables.codonTrsld[i];
    const int acid = ReadData::CodonTable(h.elem1, h.elem2, h.elem3);
    const double v = codonFeature(h, s.codonCnt[h.elem1][h.elem2][h.elem3], s.snglAcidCnt[acid]);
    return signedVote(h.alpha, t.polarity, v > t.trsld);
  }
  const RealThreshold& t = tables.pairAcidTrsld[i];
  const double v = pairFeature(tables, h, s.pairAcidCnt[h.gap][h.elem1][h.elem2],
                               s.pairAcidSnglCnt[h.gap][0][h.elem1],
                               s.pairAcidSnglCnt[h.gap][1][h.elem2], s.end - s.start);
  return signedVote(h.alpha, t.polarity, v > t.trsld);
}

template <typename Sample>
double sumOfVotes(const ModelTables& tables, const Sample& sample) {
  double sum = 0.0;
  for (size_t i = 0; i < tables.fh.size(); ++i) {
    if (isCounted(tables, i)) sum += hypothesisVote(tables, i, sample);
  }
  return sum;
}

}  // namespace

double voteSum(const ModelTables& tables, const smplTestData& sample) {
  return sumOfVotes(tables, sample);
}

double voteSum(const ModelTables& tables, const smplData& sample) {
  return sumOfVotes(tables, sample);
}

}  // namespace velto
