#include "batch/formats/read_name.h"

#include <gtest/gtest.h>

namespace velto {
namespace {

// A read of this name, the seventh of its run.
struct NamedRead {
  explicit NamedRead(const std::string& name) : record{name, "", "ACGT", 1, 1} {}

  ScannedRead read() const { return {record, 7, prediction, coding}; }

  Record record;
  Prediction prediction;
  CodingSequence coding;
};

std::string inTsv(const std::string& name) { return tsvName(NamedRead(name).read()); }
std::string inFasta(const std::string& name) { return fastaName(NamedRead(name).read()); }
std::string inBed(const std::string& name) { return bedName(NamedRead(name).read()); }
std::string inGff3(const std::string& name) { return gff3Name(NamedRead(name).read()); }

TEST(ReadName, OfUsualLettersIsTheSameInEveryFormat) {
  const std::string name = "SRR1_a.7:x|y-2";
  for (const auto& shown : {inTsv(name), inFasta(name), inBed(name), inGff3(name)}) {
    EXPECT_EQ(shown, name);
  }
}

TEST(ReadName, NeverBreaksALine) {
  const std::string name = std::string("a\tb\nc\rd\0e\x1B\x7F", 11);
  for (const auto& shown : {inTsv(name), inFasta(name), inBed(name), inGff3(name)}) {
    EXPECT_EQ(shown, "a%09b%0Ac%0Dd%00e%1B%7F");
  }
}

TEST(ReadName, KeepsBlanksInTheTableOnly) {
  EXPECT_EQ(inTsv("a b"), "a b");
  for (const auto& shown : {inFasta("a b"), inBed("a b"), inGff3("a b")}) {
    EXPECT_EQ(shown, "a%20b");
  }
}

TEST(ReadName, KeepsOtherMarksAndBytesButInGff3) {
  const std::string name = ">r;1%\xC3\xA9";
  for (const auto& shown : {inTsv(name), inFasta(name), inBed(name)}) EXPECT_EQ(shown, name);
  EXPECT_EQ(inGff3(name), "%3Er%3B1%25%C3%A9");
}

TEST(ReadName, NeverMakesABedLineAComment) {
  EXPECT_EQ(inBed("#1"), "%231");
  EXPECT_EQ(inBed("track"), "%74rack");
  EXPECT_EQ(inBed("tracks2"), "%74racks2");
  EXPECT_EQ(inBed("browser_x"), "%62rowser_x");
  for (const char* name : {"trac", "a#", "atrack", "Track", "xbrowser"}) {
    EXPECT_EQ(inBed(name), name);
  }
  for (const char* name : {"#1", "track", "browser"}) {
    EXPECT_EQ(inTsv(name), name);
    EXPECT_EQ(inFasta(name), name);
  }
  EXPECT_EQ(inGff3("#1"), "%231");
}

TEST(ReadName, IsUniqueInGff3WhereItIsRepeated) {
  const NamedRead repeated("a b");
  ScannedRead read = repeated.read();
  read.nameIsRepeat = true;
  EXPECT_EQ(gff3Name(read), "a%20b%207");
  EXPECT_EQ(bedName(read), "a%20b");
  const NamedRead nameless("");
  const ScannedRead second{nameless.record, 8, nameless.prediction, nameless.coding, true};
  EXPECT_EQ(gff3Name(second), "record8");
}

TEST(ReadName, OfANamelessRecordIsItsPlaceButInTheTable) {
  EXPECT_EQ(inTsv(""), "");
  for (const auto& shown : {inFasta(""), inBed(""), inGff3("")}) EXPECT_EQ(shown, "record7");
}

}  // namespace
}  // namespace velto
