// 1. Codons of a read  2. Hypotheses and the counts they wait for  3. Changes and sums
#include "model/sliding_vote.h"

#include "core/base_code.h"
#include "model/window_vote.h"

namespace velto {

// ---- 1. Codons of a read

namespace {

constexpr int kFarthestPartner = 3 * kPairGaps;  // bases from a codon to its last pair partner

size_t index(int i) { return static_cast<size_t>(i); }

}  // namespace

ReadCodons::ReadCodons(const short* seq, int length)
    : length_(length),
      acids_(index(length) + kFarthestPartner, kNoAminoAcid),
      codons_(index(length), -1) {
  for (int p = 0; p + 2 < length; ++p) {
    const int acid = acidAt(seq, length, p);
    if (acid == kNoAminoAcid) continue;
    acids_[index(p)] = static_cast<signed char>(acid);
    codons_[index(p)] = static_cast<signed char>(codonIndex(seq[p], seq[p + 1], seq[p + 2]));
  }
}

CodonContext ReadCodons::at(int p) const {
  CodonContext context{acid(p), -1, {-1, -1, -1, -1}};
  if (context.acid == kNoAminoAcid) return context;
  context.codon = codons_[index(p)];
  for (int gap = 0; gap < kPairGaps; ++gap) {
    context.partner[gap] = acids_[index(p + 3 + 3 * gap)];
  }
  return context;
}

// ---- 2. Hypotheses and the counts they wait for

namespace {

size_t acidCount(int acid) { return index(acid); }

// Amino acid as the first (member 0) or second (member 1) of the pairs of one gap.
size_t memberCount(int gap, int member, int acid) {
  return index(kAminoAcids + (2 * gap + member) * kAminoAcids + acid);
}

constexpr int kFirstCodonCount = kAminoAcids + kPairGaps * 2 * kAminoAcids;

size_t codonCount(int codon) { return index(kFirstCodonCount + codon); }

size_t pairCount(int gap, int first, int second) {
  return index(kFirstCodonCount + kCodons + (gap * kAminoAcids + first) * kAminoAcids + second);
}

double voteAbove(double alpha, int polarity) { return polarity != 0 ? alpha : -alpha; }

}  // namespace

SlidingVote::SlidingVote(const ModelTables& tables, int windowLength, int mostCodons)
    : rateColumns_(index(mostCodons) + 1), touchedBy_(kElements) {
  const double length = windowLength;
  for (const auto& prior : tables.snglAcidPriproTable) {
    for (size_t count = 0; count < rateColumns_; ++count) {
      rate_.push_back((kBasesPerCodon * static_cast<double>(count) + prior[0]) /
                      (length + prior[1]));
    }
  }
  for (size_t i = 0; i < tables.fh.size(); ++i) {
    if (!isCounted(tables, i)) continue;
    const Hypothesis hypothesis = compile(tables, i, length);
    touchedBy_[hypothesis.first].push_back(counted_.size());
    if (hypothesis.kind == kPairKind) touchedBy_[hypothesis.second].push_back(counted_.size());
    counted_.push_back(hypothesis);
  }
  votes_.resize(kLanes * counted_.size());
  for (int lane = 0; lane < kLanes; ++lane) {
    isPending_[lane].assign(kElements, 0);
    for (size_t position = 0; position < counted_.size(); ++position) revote(position, lane);
  }
}

SlidingVote::Hypothesis SlidingVote::compile(const ModelTables& tables, size_t i,
                                             double windowLength) const {
  const fnlHypo& h = tables.fh[i];
  Hypothesis compiled{};
  compiled.kind = h.kind;
  if (h.kind == kSingleAcidKind) {
    const CountThreshold& t = tables.snglAcidTrsld[i];
    compiled.count = compiled.first = acidCount(h.elem1);
    compiled.threshold = t.trsld;
    compiled.above = voteAbove(h.alpha, t.polarity);
  } else if (h.kind == kCodonKind) {
    const RealThreshold& t = tables.codonTrsld[i];
    compiled.count = codonCount(codonIndex(h.elem1, h.elem2, h.elem3));
    compiled.first = acidCount(ReadData::CodonTable(h.elem1, h.elem2, h.elem3));
    compiled.absent = ReadData::BasicCodonRate(h.elem1, h.elem2, h.elem3);
    compiled.threshold = t.trsld;
    compiled.above = voteAbove(h.alpha, t.polarity);
  } else {
    const RealThreshold& t = tables.pairAcidTrsld[i];
    const double(&prior)[2] = tables.pairAcidPriproTable[h.gap][h.elem1][h.elem2];
    compiled.count = pairCount(h.gap, h.elem1, h.elem2);
    compiled.first = memberCount(h.gap, 0, h.elem1);
    compiled.second = memberCount(h.gap, 1, h.elem2);
    compiled.firstRate = rate_.data() + index(h.elem1) * rateColumns_;
    compiled.secondRate = rate_.data() + index(h.elem2) * rateColumns_;
    compiled.prior = prior[0];
    compiled.length = windowLength + prior[1];
    compiled.threshold = t.trsld;
    compiled.above = voteAbove(h.alpha, t.polarity);
  }
  return compiled;
}

// The same operations as codonFeature and pairFeature, with both member frequencies looked up.
bool SlidingVote::isAbove(const Hypothesis& h, const Counts& counts) {
  switch (h.kind) {
    case kSingleAcidKind:
      return counts[h.count] > h.threshold;
    case kCodonKind: {
      const short acids = counts[h.first];
      const double share = acids == 0 ? h.absent : static_cast<double>(counts[h.count]) / acids;
      return share > h.threshold;
    }
    default: {
      const double fp = (kBasesPerCodon * counts[h.count] + h.prior) / h.length;
      const double f1 = h.firstRate[counts[h.first]];
      const double f2 = h.secondRate[counts[h.second]];
      return fp / f1 / f2 > h.threshold;
    }
  }
}

// ---- 3. Changes and sums

void SlidingVote::change(int lane, const CodonContext& codon, short by) {
  if (codon.acid == kNoAminoAcid) return;
  Counts& counts = counts_[lane];
  const auto add = [&](size_t i) { counts[i] = static_cast<short>(counts[i] + by); };
  add(codonCount(codon.codon));
  add(acidCount(codon.acid));
  touch(lane, acidCount(codon.acid));
  for (int gap = 0; gap < kPairGaps; ++gap) {
    const int partner = codon.partner[gap];
    if (partner == kNoAminoAcid) continue;
    const size_t first = memberCount(gap, 0, codon.acid);
    const size_t second = memberCount(gap, 1, partner);
    add(pairCount(gap, codon.acid, partner));
    add(first);
    add(second);
    touch(lane, first);
    touch(lane, second);
  }
}

void SlidingVote::touch(int lane, size_t element) {
  if (isPending_[lane][element] || touchedBy_[element].empty()) return;
  isPending_[lane][element] = 1;
  pending_[lane].push_back(element);
}

void SlidingVote::revote(size_t position, int lane) {
  const Hypothesis& hypothesis = counted_[position];
  const double above = hypothesis.above;
  votes_[kLanes * position + index(lane)] = isAbove(hypothesis, counts_[lane]) ? above : -above;
}

void SlidingVote::sums(double (&sum)[kLanes]) {
  for (int lane = 0; lane < kLanes; ++lane) {
    for (const size_t element : pending_[lane]) {
      for (const size_t position : touchedBy_[element]) revote(position, lane);
      isPending_[lane][element] = 0;
    }
    pending_[lane].clear();
  }
  // The lanes are independent sums; each keeps the order of its terms.
  double total[kLanes] = {};
  for (size_t i = 0; i < votes_.size(); i += kLanes) {
    for (size_t lane = 0; lane < kLanes; ++lane) total[lane] += votes_[i + lane];
  }
  for (size_t lane = 0; lane < kLanes; ++lane) sum[lane] = total[lane];
}

}  // namespace velto
