#include "training/frames/boosting.h"

#include <algorithm>
#include <cmath>

namespace velto {
namespace {

using Index = WindowSet::Index;

// First and second derivative of the loss by the log odds of one window, as a Newton step needs
// them: weight x (label - p) and weight x p (1 - p).
struct Slope {
  float gradient;
  float curvature;
};

struct SlopeSum {
  double gradient = 0.0;
  double curvature = 0.0;
  void add(Slope slope) {
    gradient += static_cast<double>(slope.gradient);
    curvature += static_cast<double>(slope.curvature);
  }
  SlopeSum operator-(const SlopeSum& other) const {
    return {gradient - other.gradient, curvature - other.curvature};
  }
};

// A chosen stump and the windows of its rarer answer.
struct Member {
  Stump stump;
  double weight = 0.0;
  bool listsYes = true;  // false: the windows of the answer no
  std::vector<Index> windows;

  // What the stump adds to the listed windows over the others.
  double offset() const { return listsYes ? weight : -weight; }
};

struct Candidate {
  Stump stump{0, 0};
  double gain = 0.0;
};

class Booster {
 public:
  Booster(const WindowSet& windows, double ridge)
      : windows_(windows), ridge_(ridge), logOdds_(windows.size()), slopes_(windows.size()) {
    refreshAll();
  }

  std::size_t size() const { return members_.size(); }

  // Adds the `count` best stumps of different features; false when none promises anything.
  bool choose(std::size_t count);
  void sweep();
  Vote vote() const;

 private:
  void refreshAll();
  SlopeSum total() const;
  double gainOf(const SlopeSum& yes, const SlopeSum& all) const;
  Candidate bestOfBins(int feature, const SlopeSum& all) const;
  Candidate bestOfPair(int pair, const SlopeSum& all) const;
  std::vector<Candidate> bestPerFeature() const;
  // The pairs are so many that each look at the gains but the first sees every kPairTurns-th only,
  // in turn.
  static constexpr int kPairTurns = 4;

  bool isChosen(Stump stump) const;
  void addMember(Stump stump);
  void adjust(Member& member);
  void move(Member& member, double step);
  void adjustBias();

  const WindowSet& windows_;
  const double ridge_;
  double bias_ = 0.0;
  std::vector<float> logOdds_;
  std::vector<Slope> slopes_;
  std::vector<Member> members_;
  int looks_ = 0;
};

Slope slopeOf(float p, bool coding, float weight) {
  const float label = coding ? 1.0F : 0.0F;
  return {weight * (label - p), weight * p * (1.0F - p)};
}

void Booster::refreshAll() {
  for (std::size_t i = 0; i < windows_.size(); ++i) {
    slopes_[i] = slopeOf(logistic(logOdds_[i]), windows_.coding(i), windows_.weight(i));
  }
}

SlopeSum Booster::total() const {
  SlopeSum sum;
  for (const Slope& slope : slopes_) sum.add(slope);
  return sum;
}

// Decrease of the loss, in second order, when the windows of both answers move by a step of their
// own, over that of one common step.
double Booster::gainOf(const SlopeSum& yes, const SlopeSum& all) const {
  const SlopeSum no = all - yes;
  const auto part = [this](const SlopeSum& s) {
    return s.gradient * s.gradient / (s.curvature + ridge_);
  };
  return part(yes) + part(no) - part(all);
}

Candidate Booster::bestOfBins(int feature, const SlopeSum& all) const {
  SlopeSum ofBin[256];
  const std::uint8_t* bin = windows_.bins(feature);
  for (std::size_t i = 0; i < windows_.size(); ++i) ofBin[bin[i]].add(slopes_[i]);
  Candidate best;
  SlopeSum above;
  for (int threshold = 254; threshold >= 0; --threshold) {
    const SlopeSum& entering = ofBin[threshold + 1];
    above.gradient += entering.gradient;
    above.curvature += entering.curvature;
    const Stump stump{feature, threshold};
    const double gain = gainOf(above, all);
    if (gain > best.gain && !isChosen(stump)) best = {stump, gain};
  }
  return best;
}

Candidate Booster::bestOfPair(int pair, const SlopeSum& all) const {
  Candidate best;
  for (int threshold = 0; threshold < WindowSet::kPairThresholds; ++threshold) {
    SlopeSum above;
    for (const Index i : windows_.pairWindows(pair, threshold)) above.add(slopes_[i]);
    const Stump stump{kFirstPairFeature + pair, threshold};
    const double gain = gainOf(above, all);
    if (gain > best.gain && !isChosen(stump)) best = {stump, gain};
  }
  return best;
}

std::vector<Candidate> Booster::bestPerFeature() const {
  const SlopeSum all = total();
  std::vector<Candidate> best;
  for (int feature = 0; feature < kFirstPairFeature; ++feature) {
    best.push_back(bestOfBins(feature, all));
  }
  const int turns = looks_ == 0 ? 1 : kPairTurns;
  for (int pair = looks_ % turns; pair < kPairCodes; pair += turns) {
    best.push_back(bestOfPair(pair, all));
  }
  return best;
}

bool Booster::isChosen(Stump stump) const {
  return std::any_of(members_.begin(), members_.end(),
                     [stump](const Member& m) { return m.stump == stump; });
}

bool Booster::choose(std::size_t count) {
  std::vector<Candidate> best = bestPerFeature();
  ++looks_;
  std::stable_sort(best.begin(), best.end(),
                   [](const Candidate& a, const Candidate& b) { return a.gain > b.gain; });
  const std::size_t before = size();
  for (std::size_t k = 0; k < best.size() && k < count && best[k].gain > 0.0; ++k) {
    addMember(best[k].stump);
  }
  return size() > before;
}

void Booster::addMember(Stump stump) {
  Member member;
  member.stump = stump;
  member.windows = windows_.yes(stump);
  if (2 * member.windows.size() > windows_.size()) {
    std::vector<Index> others;
    others.reserve(windows_.size() - member.windows.size());
    auto yes = member.windows.begin();
    for (std::size_t i = 0; i < windows_.size(); ++i) {
      if (yes != member.windows.end() && *yes == i) {
        ++yes;
      } else {
        others.push_back(static_cast<Index>(i));
      }
    }
    member.listsYes = false;
    member.windows.swap(others);
  }
  member.windows.shrink_to_fit();
  adjust(member);
  members_.push_back(std::move(member));
}

// One Newton step of the listed windows.
void Booster::adjust(Member& member) {
  SlopeSum sum;
  for (const Index i : member.windows) sum.add(slopes_[i]);
  move(member, (sum.gradient - ridge_ * member.offset()) / (sum.curvature + ridge_));
}

// Moves the listed windows. To move those of the answer no is to move all and those of the answer
// yes back. Goes by blocks: the compiler takes the logistic function of several neighbours at once.
void Booster::move(Member& member, double step) {
  constexpr std::size_t kBlock = 256;
  member.weight += member.listsYes ? step : -step;
  if (!member.listsYes) bias_ += step;
  const auto by = static_cast<float>(step);
  float p[kBlock];
  for (std::size_t first = 0; first < member.windows.size(); first += kBlock) {
    const std::size_t count = std::min(kBlock, member.windows.size() - first);
    const Index* const listed = member.windows.data() + first;
    for (std::size_t k = 0; k < count; ++k) p[k] = logOdds_[listed[k]] += by;
    for (std::size_t k = 0; k < count; ++k) p[k] = logistic(p[k]);
    for (std::size_t k = 0; k < count; ++k) {
      const Index i = listed[k];
      slopes_[i] = slopeOf(p[k], windows_.coding(i), windows_.weight(i));
    }
  }
}

void Booster::adjustBias() {
  const SlopeSum all = total();
  if (all.curvature <= 0.0) return;
  const double step = all.gradient / all.curvature;
  bias_ += step;
  for (float& x : logOdds_) x += static_cast<float>(step);
  refreshAll();
}

void Booster::sweep() {
  adjustBias();
  for (Member& member : members_) adjust(member);
}

Vote Booster::vote() const {
  Vote vote;
  vote.bias = bias_;
  for (const Member& member : members_) vote.stumps.push_back({member.stump, member.weight});
  return vote;
}

void fill(Booster& booster, const BoostingPlan& plan) {
  for (int batch = 1; booster.size() < plan.stumps; ++batch) {
    if (!booster.choose(std::min(plan.batch, plan.stumps - booster.size()))) return;
    if (batch % plan.batchesPerSweep == 0) booster.sweep();
  }
}

}  // namespace

Vote boostVote(const WindowSet& windows, const BoostingPlan& plan) {
  Booster booster(windows, plan.ridge);
  booster.sweep();
  fill(booster, plan);
  for (int sweep = 0; sweep < plan.finalSweeps; ++sweep) booster.sweep();
  return booster.vote();
}

}  // namespace velto
