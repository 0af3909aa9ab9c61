#include "training/test_elements.h"

#include "decoder/frame_scores.h"
#include "model/window_sample.h"

namespace velto {
namespace {

// A base of the changed sequence.
struct ChangedBase {
  short code;
  int origin;     // position in the sequence without errors; -1 for an inserted base
  bool isMarked;  // inserted, or behind a removed base
};

std::vector<ChangedBase> changedBases(const std::vector<short>& seq,
                                      const std::vector<err>& errors) {
  std::vector<ChangedBase> bases;
  for (size_t i = 0; i < seq.size(); ++i) bases.push_back({seq[i], static_cast<int>(i), false});
  for (const err& error : errors) {
    const auto size = static_cast<int>(bases.size());
    const bool inserts = error.kind == 0;
    if (error.pos < 0 || error.pos >= size + (inserts ? 1 : 0) || size == 0) continue;
    const auto place = bases.begin() + error.pos;
    if (inserts) {
      const short code = error.pos < size ? place->code : bases.back().code;
      bases.insert(place, {code, -1, true});
    } else {
      const auto behind = bases.erase(place);
      if (behind != bases.end()) behind->isMarked = true;
    }
  }
  return bases;
}

void markErrors(const std::vector<ChangedBase>& bases, layout& lay) {
  lay.errMark.assign(lay.met[0].size(), kOtherCodon);
  for (size_t p = 0; p < bases.size(); ++p) {
    if (bases[p].isMarked && p / 3 < lay.errMark.size()) lay.errMark[p / 3] = kKnownError;
  }
}

void markRegion(const std::vector<ChangedBase>& bases, const KnownRegion& region, layout& lay) {
  lay.start = -1;
  lay.stop = -1;
  for (size_t p = 0; p < bases.size(); ++p) {
    const int origin = bases[p].origin;
    if (origin < region.start || origin > region.stop || origin < 0) continue;
    if (lay.start < 0) lay.start = static_cast<int>(p);
    lay.stop = static_cast<int>(p);
  }
}

// The frame in which each codon of the region begins, then that frame for the steps in between.
void markPath(const std::vector<ChangedBase>& bases, const KnownRegion& region, layout& lay) {
  lay.rfm.assign(lay.met[0].size(), kOffPath);
  size_t lastStep = 0;
  for (size_t p = 0; p < bases.size(); ++p) {
    const int origin = bases[p].origin;
    const bool begins = origin >= region.start && origin >= 0 && origin + 2 <= region.stop &&
                        (origin - region.start) % 3 == 0;
    const size_t step = p / 3;
    if (!begins || step >= lay.rfm.size() || lay.rfm[step] != kOffPath) continue;
    lay.rfm[step] = static_cast<int>(p % 3);
    lastStep = step;
  }
  for (size_t step = 1; step < lastStep; ++step) {
    if (lay.rfm[step] == kOffPath) lay.rfm[step] = lay.rfm[step - 1];
  }
}

void markKnownClasses(layout& lay) {
  for (int f = 0; f < 3; ++f) {
    for (size_t k = 0; k < lay.met[f].size(); ++k) {
      const bool codes = k < lay.rfm.size() && lay.rfm[k] == f;
      lay.crr[f].push_back(codes ? kCodingWindow : kNonCodingWindow);
    }
  }
}

void tallyCodon(const std::vector<short>& seq, int p, int gap, TestElements& elements) {
  const auto length = static_cast<int>(seq.size());
  const int acid = acidAt(seq.data(), length, p);
  if (acid == kNoAminoAcid) return;
  const size_t first = static_cast<size_t>(p);
  ++elements.basePairs[seq[first]][seq[first + 1]];
  ++elements.basePairs[seq[first + 1]][seq[first + 2]];
  const int partner = acidAt(seq.data(), length, p + 3 * (gap + 1));
  if (partner != kNoAminoAcid) ++elements.acidPairs[acid][partner];
}

}  // namespace

layout applyErrors(std::vector<short>& seq, const KnownRegion& region,
                   const std::vector<err>& errors) {
  const std::vector<ChangedBase> bases = changedBases(seq, errors);
  seq.clear();
  for (const ChangedBase& base : bases) seq.push_back(base.code);
  layout lay;
  markAtg(seq.data(), static_cast<int>(seq.size()), lay);
  markErrors(bases, lay);
  markRegion(bases, region, lay);
  markPath(bases, region, lay);
  markKnownClasses(lay);
  return lay;
}

TestElements tallyElements(const std::vector<short>& seq, const layout& lay, int gap, int frame) {
  TestElements elements;
  if (gap < 0 || gap >= kPairGaps) return elements;
  for (size_t k = 0; 3 * k + 2 < seq.size(); ++k) {
    int f = frame;
    if (frame == kOffPath) f = k < lay.rfm.size() ? lay.rfm[k] : kOffPath;
    if (f >= 0 && f <= 2) tallyCodon(seq, static_cast<int>(3 * k) + f, gap, elements);
  }
  return elements;
}

TestElements Test::CountTestElements(std::vector<short>& seq, int codingStart, int codingStop,
                                     int gap, int frame, std::vector<err> errors) {
  layoutList->push_back(applyErrors(seq, {codingStart, codingStop}, errors));
  return tallyElements(seq, layoutList->back(), gap, frame);
}

}  // namespace velto
