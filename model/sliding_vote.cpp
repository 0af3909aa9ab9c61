// 1. Codons of a read  2. What touches a hypothesis  3. Changes and sums
#include "model/sliding_vote.h"

#include "model/base_code.h"
#include "model/window_vote.h"

namespace velto {

// ---- 1. Codons of a read

namespace {

constexpr int kFarthestPartner = 3 * kPairGaps;  // bases from a codon to its last pair partner

}  // namespace

ReadCodons::ReadCodons(const short* seq, int length)
    : length_(length),
      acids_(index(length) + kFarthestPartner, kNoAminoAcid),
      codons_(index(length), -1) {
  for (int p = 0; p + 2 < length; ++p) {
    const int acid = acidAt(seq, length, p);
    if (acid == kNoAminoAcid) continue;
    acids_[index(p)] = static_cast<signed char>(acid);
    codons_[index(p)] = static_cast<signed char>(16 * seq[p] + 4 * seq[p + 1] + seq[p + 2]);
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

// ---- 2. What touches a hypothesis

namespace {

// Elements of a sample that a codon changes: an amino acid with its codons, or an amino acid as
// the first (member 0) or second (member 1) of the pairs of one gap.
constexpr size_t kElements = kAminoAcids + kPairGaps * 2 * kAminoAcids;

size_t acidElement(int acid) { return static_cast<size_t>(acid); }

size_t memberElement(int gap, int member, int acid) {
  return static_cast<size_t>(kAminoAcids + (2 * gap + member) * kAminoAcids + acid);
}

}  // namespace

SlidingVote::SlidingVote(const ModelTables& tables, int windowLength, int mostCodons)
    : tables_(tables),
      windowLength_(windowLength),
      touchedBy_(kElements),
      rateColumns_(static_cast<size_t>(mostCodons) + 1) {
  for (const auto& prior : tables.snglAcidPriproTable) {
    for (size_t count = 0; count < rateColumns_; ++count) {
      rate_.push_back((3.0 * static_cast<double>(count) + prior[0]) / (windowLength_ + prior[1]));
    }
  }
  listTouchedBy();
  votes_.resize(kLanes * counted_.size());
  for (int lane = 0; lane < kLanes; ++lane) {
    isPending_[lane].assign(kElements, 0);
    for (size_t position = 0; position < counted_.size(); ++position) revote(position, lane);
  }
}

void SlidingVote::listTouchedBy() {
  for (size_t i = 0; i < tables_.fh.size(); ++i) {
    if (!isCounted(tables_, i)) continue;
    const fnlHypo& h = tables_.fh[i];
    const size_t position = counted_.size();
    counted_.push_back({i, h.elem1});
    if (h.kind == kPairKind) {
      touchedBy_[memberElement(h.gap, 0, h.elem1)].push_back(position);
      touchedBy_[memberElement(h.gap, 1, h.elem2)].push_back(position);
    } else {
      int& acid = counted_.back().acid;
      if (h.kind == kCodonKind) acid = ReadData::CodonTable(h.elem1, h.elem2, h.elem3);
      touchedBy_[acidElement(acid)].push_back(position);
    }
  }
}

bool SlidingVote::isAbove(const Hypothesis& hypothesis, const Counts& counts) const {
  const fnlHypo& h = tables_.fh[hypothesis.index];
  if (h.kind == kSingleAcidKind) {
    return counts.acid[h.elem1] > tables_.snglAcidTrsld[hypothesis.index].trsld;
  }
  if (h.kind == kCodonKind) {
    const short codon = counts.codon[16 * h.elem1 + 4 * h.elem2 + h.elem3];
    const double share = codonFeature(h, codon, counts.acid[hypothesis.acid]);
    return share > tables_.codonTrsld[hypothesis.index].trsld;
  }
  // The same operations as pairFeature, with both member frequencies looked up.
  const double(&prior)[2] = tables_.pairAcidPriproTable[h.gap][h.elem1][h.elem2];
  const double fp =
      (3.0 * counts.pair[h.gap][h.elem1][h.elem2] + prior[0]) / (windowLength_ + prior[1]);
  const auto rate = [&](int member, int acid) {
    const size_t row = static_cast<size_t>(acid) * rateColumns_;
    return rate_[row + static_cast<size_t>(counts.member[h.gap][member][acid])];
  };
  return fp / rate(0, h.elem1) / rate(1, h.elem2) > tables_.pairAcidTrsld[hypothesis.index].trsld;
}

bool SlidingVote::isPolar(const Hypothesis& hypothesis) const {
  const size_t i = hypothesis.index;
  switch (tables_.fh[i].kind) {
    case kCodonKind:
      return tables_.codonTrsld[i].polarity != 0;
    case kSingleAcidKind:
      return tables_.snglAcidTrsld[i].polarity != 0;
    default:
      return tables_.pairAcidTrsld[i].polarity != 0;
  }
}

// ---- 3. Changes and sums

void SlidingVote::change(int lane, const CodonContext& codon, short by) {
  if (codon.acid == kNoAminoAcid) return;
  const auto add = [by](short& count) { count = static_cast<short>(count + by); };
  Counts& counts = counts_[lane];
  add(counts.acid[codon.acid]);
  add(counts.codon[codon.codon]);
  touch(lane, acidElement(codon.acid));
  for (int gap = 0; gap < kPairGaps; ++gap) {
    const int partner = codon.partner[gap];
    if (partner == kNoAminoAcid) continue;
    add(counts.pair[gap][codon.acid][partner]);
    add(counts.member[gap][0][codon.acid]);
    add(counts.member[gap][1][partner]);
    touch(lane, memberElement(gap, 0, codon.acid));
    touch(lane, memberElement(gap, 1, partner));
  }
}

void SlidingVote::touch(int lane, size_t element) {
  if (isPending_[lane][element] || touchedBy_[element].empty()) return;
  isPending_[lane][element] = 1;
  pending_[lane].push_back(element);
}

void SlidingVote::revote(size_t position, int lane) {
  const Hypothesis& hypothesis = counted_[position];
  const double alpha = tables_.fh[hypothesis.index].alpha;
  const bool inFavour = isAbove(hypothesis, counts_[lane]) == isPolar(hypothesis);
  votes_[kLanes * position + static_cast<size_t>(lane)] = inFavour ? alpha : -alpha;
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
