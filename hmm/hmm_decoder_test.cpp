#include "hmm/hmm_decoder.h"

#include <gtest/gtest.h>

#include "hmm/toy_reads.h"

namespace velto {
namespace {

std::shared_ptr<const HmmModel> sharedToy() { return std::make_shared<HmmModel>(toyModel()); }

Call decoded(const Decoder& decoder, const ReadView& read) {
  Call call;
  decoder.decode(read, {}, *decoder.scratch(), call);
  return call;
}

void expectSame(const Call& a, const Call& b) {
  EXPECT_EQ(a.coding, b.coding);
  EXPECT_EQ(a.score, b.score);
  EXPECT_EQ(a.probability, b.probability);
  EXPECT_EQ(a.start, b.start);
  EXPECT_EQ(a.stop, b.stop);
  EXPECT_EQ(a.frame, b.frame);
  ASSERT_EQ(a.frameshifts.size(), b.frameshifts.size());
}

TEST(HmmDecoder, CallsACodingRead) {
  ToyReads reads(5);
  reads.addCoding(100, {});
  const Call call = decoded(HmmDecoder(sharedToy()), reads.views()[0]);
  EXPECT_TRUE(call.coding);
  EXPECT_GT(call.probability, 0.95);
  EXPECT_GT(call.score, 10.0);
  EXPECT_LT(call.start, 6);
  EXPECT_GT(call.stop, 294);
  EXPECT_EQ(call.frame[150], 0);
  EXPECT_TRUE(call.frameshifts.empty());
}

TEST(HmmDecoder, LeavesAnEvenReadAlone) {
  ToyReads reads(5);
  reads.addEven(300);
  const Call call = decoded(HmmDecoder(sharedToy()), reads.views()[0]);
  EXPECT_FALSE(call.coding);
  EXPECT_LT(call.score, 0.0);
  EXPECT_EQ(call.start, -1);
  EXPECT_TRUE(call.frame.empty());
}

TEST(HmmDecoder, FindsALostBase) {
  std::vector<short> codes;
  for (int i = 0; i < 300; ++i) codes.push_back(static_cast<short>(i % 3));
  codes.erase(codes.begin() + 150);
  const Call call = decoded(HmmDecoder(sharedToy()), {codes, {}});
  ASSERT_EQ(call.frameshifts.size(), 1U);
  EXPECT_EQ(call.frameshifts[0].kind, Frameshift::Kind::kDeletion);
  EXPECT_EQ(call.frameshifts[0].position, 150);
  EXPECT_GT(call.frameshifts[0].confidence, 0.9);
  EXPECT_EQ(call.frame[149], 0);
  EXPECT_EQ(call.frame[150], 2);
}

TEST(HmmDecoder, FindsAnExtraBase) {
  std::vector<short> codes;
  for (int i = 0; i < 300; ++i) codes.push_back(static_cast<short>(i % 3));
  codes.insert(codes.begin() + 150, short{3});
  const Call call = decoded(HmmDecoder(sharedToy()), {codes, {}});
  ASSERT_EQ(call.frameshifts.size(), 1U);
  EXPECT_EQ(call.frameshifts[0].kind, Frameshift::Kind::kInsertion);
  EXPECT_EQ(call.frameshifts[0].position, 150);
  EXPECT_EQ(call.frame[150], -1);
  EXPECT_EQ(call.frame[151], 1);
}

TEST(HmmDecoder, ThresholdDecides) {
  ToyReads reads(5);
  reads.addEven(300);
  HmmOptions options;
  options.minProbability = 0.0;
  const Call call = decoded(HmmDecoder(sharedToy(), options), reads.views()[0]);
  EXPECT_TRUE(call.coding);
  EXPECT_GE(call.start, 0);
  options.minProbability = 1.1;
  reads.addCoding(100, {});
  EXPECT_FALSE(decoded(HmmDecoder(sharedToy(), options), reads.views()[1]).coding);
}

TEST(HmmDecoder, ReadsOfAnyLengthAndOfUnknownBasesAreDecoded) {
  HmmOptions options;
  options.minProbability = 0.0;
  const HmmDecoder decoder(sharedToy(), options);
  for (int length = 1; length <= 40; ++length) {
    for (const short code : {kUnknownBase, short{0}, short{3}}) {
      const std::vector<short> codes(static_cast<std::size_t>(length), code);
      const Call call = decoded(decoder, {codes, {}});
      EXPECT_TRUE(call.coding);
      EXPECT_GE(call.probability, 0.0);
      EXPECT_LE(call.probability, 1.0);
      EXPECT_GE(call.start, 0);
      EXPECT_LE(call.start, call.stop);
      EXPECT_LT(call.stop, length);
    }
  }
}

TEST(HmmDecoder, ScratchCarriesNothingOver) {
  ToyReads reads(6);
  reads.addCoding(200, {0.01, 0.01});
  reads.addEven(77);
  reads.addCoding(5, {});
  const HmmDecoder decoder(sharedToy());
  const auto scratch = decoder.scratch();
  Call call;
  for (const ReadView& read : reads.views()) {
    decoder.decode(read, {}, *scratch, call);
    expectSame(call, decoded(decoder, read));
  }
}

TEST(HmmDecoder, CalibrationLearnsRatesAndShare) {
  ToyReads reads(7);
  for (int i = 0; i < 100; ++i) reads.addCoding(150, {0.01, 0.02});
  const HmmDecoder plain(sharedToy());
  const auto fitted = std::dynamic_pointer_cast<const HmmDecoder>(plain.fitted(reads.views()));
  ASSERT_NE(fitted, nullptr);
  EXPECT_GT(fitted->rates().mean.deletion, 0.01f);
  EXPECT_GT(fitted->codingShare(), 0.85);
  EXPECT_EQ(plain.rates().mean.deletion, kDefaultRates.deletion);
}

TEST(HmmDecoder, TinyFilesKeepTheDefaults) {
  for (const int count : {0, 1, 10}) {
    ToyReads reads(7);
    for (int i = 0; i < count; ++i) reads.addCoding(150, {});
    const HmmDecoder plain(sharedToy());
    const auto fitted =
        std::dynamic_pointer_cast<const HmmDecoder>(plain.fitted(reads.views()));
    ASSERT_NE(fitted, nullptr);
    EXPECT_EQ(fitted->rates().mean.insertion, kDefaultRates.insertion);
    EXPECT_EQ(fitted->codingShare(), plain.codingShare());
  }
}

TEST(HmmDecoder, GivenRatesAndShareStay) {
  ToyReads reads(7);
  for (int i = 0; i < 100; ++i) reads.addCoding(150, {0.01, 0.02});
  HmmOptions options;
  options.errorRates = BaseRates{0.001f, 0.002f, 0.003f};
  options.codingShare = 0.3;
  const HmmDecoder plain(sharedToy(), options);
  const auto fitted = std::dynamic_pointer_cast<const HmmDecoder>(plain.fitted(reads.views()));
  EXPECT_EQ(fitted->rates().mean.insertion, 0.001f);
  EXPECT_EQ(fitted->codingShare(), 0.3);
}

TEST(HmmDecoder, QualitiesCanBeLeftOut) {
  ToyReads reads(8);
  for (int i = 0; i < 100; ++i) reads.addCoding(150, {0.01, 0.01, 0.1, 5, 40});
  HmmOptions options;
  const auto with = std::dynamic_pointer_cast<const HmmDecoder>(
      HmmDecoder(sharedToy(), options).fitted(reads.views(true)));
  EXPECT_TRUE(with->rates().byQuality);
  options.useQualities = false;
  const auto without = std::dynamic_pointer_cast<const HmmDecoder>(
      HmmDecoder(sharedToy(), options).fitted(reads.views(true)));
  EXPECT_FALSE(without->rates().byQuality);
}

// Reads in lanes, in an order that is not that of their lengths, too long ones among them.
TEST(HmmDecoder, ManyReadsAtOnceAreCalledAsOneByOne) {
  ToyReads reads(9);
  for (const int codons : {40, 300, 1, 40, 7000, 90, 33, 150, 8, 61, 2}) {
    reads.addCoding(codons, {0.01, 0.01});
    reads.addEven(2 * codons + 1);
  }
  const std::vector<ReadView> views = reads.views();
  const HmmDecoder decoder(sharedToy());
  std::vector<Call> calls(views.size());
  const auto scratch = decoder.scratch();
  decoder.decodeAll(views, {}, *scratch, calls);
  for (std::size_t i = 0; i < views.size(); ++i) {
    SCOPED_TRACE(i);
    expectSame(calls[i], decoded(decoder, views[i]));
  }
}

}  // namespace
}  // namespace velto
