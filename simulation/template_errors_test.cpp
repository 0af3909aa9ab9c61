#include "simulation/template_errors.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

namespace velto {
namespace {

using Error = TemplateError;

constexpr std::uint64_t kSeed = 20240611;

// A transcript of random bases.
Transcript randomTranscript(int length) {
  Random random(kSeed);
  Transcript t;
  for (int i = 0; i < length; ++i) t.bases.push_back(static_cast<short>(random.below(4)));
  return t;
}

Fragment whole(const Transcript& t) { return {0, t.length()}; }

// Share of `count` in `n` draws lies within four standard deviations of `rate`.
void expectRate(double rate, long count, long n) {
  const double mean = rate * static_cast<double>(n);
  const double sigma = std::sqrt(mean * (1.0 - rate));
  EXPECT_NEAR(static_cast<double>(count), mean, 4.0 * sigma) << "rate " << rate;
}

TEST(TemplateErrors, EachKindOccursAtItsRate) {
  SCOPED_TRACE(testing::Message() << "seed " << kSeed);
  Random random(kSeed);
  const Transcript t = randomTranscript(2000000);
  for (const char* preset : {"est", "mild", "nanopore"}) {
    SCOPED_TRACE(preset);
    const ErrorRates rates = presetErrors(preset)->rates;
    long count[4] = {};
    long added[4] = {};
    for (const Error& e : drawErrors(t, whole(t), {rates}, random)) {
      ++count[e.kind];
      if (e.kind == Error::kInsertion) ++added[e.base];
      if (e.kind == Error::kSubstitution) {
        ASSERT_NE(e.base, t.bases[static_cast<std::size_t>(e.offset)]);
      }
    }
    expectRate(rates.substitution, count[Error::kSubstitution], t.length());
    expectRate(rates.insertion, count[Error::kInsertion], t.length());
    expectRate(rates.deletion, count[Error::kDeletion], t.length());
    expectRate(rates.unknown, count[Error::kUnknown], t.length());
    for (const long of : added) expectRate(0.25, of, count[Error::kInsertion]);
  }
}

// Substitutions of many reads of one fragment, by read and by place.
struct Substitutions {
  std::vector<int> perRead;
  std::vector<int> perPlace;  // of the fragment
  long next = 0;              // substitutions followed by another one in the read
  long near = 0;              // of these at most ten bases further on

  double mean() const {
    double sum = 0.0;
    for (const int n : perRead) sum += n;
    return sum / static_cast<double>(perRead.size());
  }
};

constexpr int kReads = 20000;
constexpr int kLength = 500;

Substitutions substitutions(ErrorModel model) {
  const Transcript t = randomTranscript(kLength);
  Substitutions found;
  found.perPlace.resize(kLength);
  model.rates = {.substitution = 0.02};
  for (int read = 0; read < kReads; ++read) {
    Random random = Random::split(kSeed, static_cast<std::uint64_t>(read));
    const std::vector<Error> errors = drawErrors(t, whole(t), model, random);
    found.perRead.push_back(static_cast<int>(errors.size()));
    for (std::size_t i = 0; i < errors.size(); ++i) {
      ++found.perPlace[static_cast<std::size_t>(errors[i].offset)];
      if (i == 0) continue;
      ++found.next;
      found.near += errors[i].offset - errors[i - 1].offset <= 10;
    }
  }
  return found;
}

TEST(TemplateErrors, RatesOfReadsSpreadAboutTheirMean) {
  const Substitutions found = substitutions({.readSpread = 3});
  const double mean = found.mean();
  EXPECT_NEAR(mean, 0.02 * kLength, 0.25);
  // Poisson counts whose mean has the variance 3^2 / 7 times its square: 10 + 100 * 9 / 7.
  double variance = 0.0;
  for (const int n : found.perRead) variance += (n - mean) * (n - mean) / kReads;
  EXPECT_NEAR(variance, 10.0 + 900.0 / 7.0, 5.0);
}

TEST(TemplateErrors, ErrorsCrowdInStretchesAtTheSameMean) {
  const Substitutions even = substitutions({});
  const Substitutions crowded =
      substitutions({.stretches = {.share = 0.1, .meanLength = 20, .factor = 9.0}});
  EXPECT_NEAR(crowded.mean(), 0.02 * kLength, 0.15);
  // Outside 1 / 1.8 of the mean rate, inside five times the mean: half of the errors each.
  const double evenShare = static_cast<double>(even.near) / static_cast<double>(even.next);
  const double share = static_cast<double>(crowded.near) / static_cast<double>(crowded.next);
  EXPECT_NEAR(evenShare, 1.0 - std::pow(0.98, 10), 0.02);
  EXPECT_GT(share, 1.7 * evenShare);
  // Stretches have no favourite place, the first base included.
  EXPECT_NEAR(crowded.perPlace[0], 0.02 * kReads, 100.0);
  EXPECT_NEAR(crowded.perPlace[kLength - 1], 0.02 * kReads, 100.0);
}

TEST(TemplateErrors, RatesRiseTowardsTheEndAtTheSameMean) {
  const Substitutions found = substitutions({.endRise = 18.0});
  EXPECT_NEAR(found.mean(), 0.02 * kLength, 0.15);
  // (1 + 18 u^8) / 3 of the mean: a third in the first half, 6.3 at the last base.
  long firstHalf = 0;
  for (int i = 0; i < kLength / 2; ++i) firstHalf += found.perPlace[static_cast<std::size_t>(i)];
  EXPECT_NEAR(static_cast<double>(firstHalf), 0.02 * kReads * kLength / 2 / 3.0, 1000.0);
  EXPECT_NEAR(found.perPlace[kLength - 1], 0.02 * kReads * 19.0 / 3.0, 200.0);
}

TEST(TemplateErrors, LongRunsLoseMoreBases) {
  Transcript t;  // G, then five A, again and again
  for (int i = 0; i < 600000; ++i) t.bases.push_back(static_cast<short>(i % 6 == 0 ? 2 : 0));
  Random random(kSeed);
  const ErrorModel model{.rates = {.deletion = 0.02}, .homopolymerSlope = 1.5};
  long single = 0, inRuns = 0;
  for (const Error& e : drawErrors(t, whole(t), model, random)) {
    (e.offset % 6 == 0 ? single : inRuns) += 1;
  }
  // 1 + 1.5 * 4 = 7 times the rate of a single base, which is half the mean: 1 + 1.5 * 2 / 3 = 2.
  expectRate(0.01, single, 100000);
  expectRate(0.07, inRuns, 500000);
}

TEST(TemplateErrors, IndelsGoOnAtTheirExtensions) {
  const Transcript t = randomTranscript(1000000);
  Random random(kSeed);
  const ErrorModel model{.rates = {.insertion = 0.001, .deletion = 0.001},
                         .insertionExtension = 0.5,
                         .deletionExtension = 0.75};
  long inserted = 0, lost = 0, insertions = 0, deletions = 0;
  const Error* before = nullptr;
  const std::vector<Error> errors = drawErrors(t, whole(t), model, random);
  for (const Error& e : errors) {
    const bool sameKind = before != nullptr && before->kind == e.kind;
    if (e.kind == Error::kInsertion) {
      ++inserted;
      insertions += !(sameKind && before->offset == e.offset);
    } else {
      ++lost;
      deletions += !(sameKind && before->offset == e.offset - 1);
    }
    before = &e;
  }
  EXPECT_NEAR(static_cast<double>(inserted) / static_cast<double>(insertions), 2.0, 0.2);
  EXPECT_NEAR(static_cast<double>(lost) / static_cast<double>(deletions), 4.0, 0.4);
}

TEST(TemplateErrors, CopiesRepeatTheBaseBehindThem) {
  const Transcript t = randomTranscript(50000);
  Random random(kSeed);
  const ErrorModel model{.rates = {.insertion = 0.1}, .insertionCopies = 1.0};
  const std::vector<Error> errors = drawErrors(t, whole(t), model, random);
  EXPECT_GT(errors.size(), 4000U);
  for (const Error& e : errors) {
    ASSERT_EQ(e.base, t.bases[static_cast<std::size_t>(e.offset)]) << e.offset;
  }
}

TEST(TemplateErrors, NothingButInsertionsSharesAPlaceHoweverHighTheRates) {
  const Transcript t = randomTranscript(300);
  const ErrorModel model{.rates = {0.2, 0.3, 0.3, 0.2},
                         .insertionExtension = 0.5,
                         .deletionExtension = 0.5,
                         .homopolymerSlope = 5.0,
                         .readSpread = 2,
                         .endRise = 10.0,
                         .stretches = {.share = 0.5, .meanLength = 1, .factor = 100.0}};
  const Fragment fragment{50, 200};
  for (std::uint64_t index = 0; index < 200; ++index) {
    Random random = Random::split(kSeed, index);
    int last = -1;  // place of the last error that was no insertion
    for (const Error& e : drawErrors(t, fragment, model, random)) {
      ASSERT_GT(e.offset, last);
      ASSERT_LT(e.offset, fragment.length);
      if (e.kind != Error::kInsertion) last = e.offset;
    }
  }
}

TEST(TemplateErrors, NoRatesGiveNoErrors) {
  const Transcript t = randomTranscript(300);
  Random random(kSeed);
  EXPECT_TRUE(drawErrors(t, whole(t), {.readSpread = 3}, random).empty());
}

}  // namespace
}  // namespace velto
