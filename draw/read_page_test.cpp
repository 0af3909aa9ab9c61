#include "draw/read_page.h"

#include <gtest/gtest.h>

#include <string>

#include "draw/test_read.h"

namespace velto {
namespace {

using test::KnownRead;

bool holds(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

TEST(ReadPage, ForbidsScriptsAndWhateverIsElsewhere) {
  const std::string page = readPage(test::codingRead().drawn(), {});
  EXPECT_TRUE(holds(page,
                    "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; "
                    "style-src 'unsafe-inline'; base-uri 'none'; form-action 'none'\"/>"));
  EXPECT_FALSE(holds(page, "<script"));
  EXPECT_FALSE(holds(page, "src="));
  EXPECT_FALSE(holds(page, "url("));
}

TEST(ReadPage, TellsFrameshiftsProteinAndFacts) {
  const std::string page = readPage(test::codingRead().drawn(), {{"Length", "60 bases"}});
  EXPECT_TRUE(holds(page, "<tr><td>21</td><td>a base is missing before this one</td><td>93"));
  EXPECT_TRUE(holds(page, "<pre>MPPPXPPPPP PPPP*</pre>"));
  EXPECT_TRUE(holds(page, "<th scope=\"row\">Length</th><td>60 bases</td>"));
}

TEST(ReadPage, EveryTextOfAFileIsEscaped) {
  KnownRead read = test::codingRead();
  read.name = "<img/src=x onerror=alert(1)>";
  const std::string page = readPage(read.drawn(), {{"<b>", "&\x01"}});
  EXPECT_FALSE(holds(page, "<img"));
  EXPECT_FALSE(holds(page, "<b>"));
  EXPECT_TRUE(holds(page, "<th scope=\"row\">&lt;b&gt;</th><td>&amp;\uFFFD</td>"));
}

TEST(ReadPage, BothDrawingsHaveIdsOfTheirOwn) {
  const std::string figure = readFigure(test::codingRead().drawn(), "one-", true);
  EXPECT_TRUE(holds(figure, "id=\"one-w-title\""));
  EXPECT_TRUE(holds(figure, "id=\"one-n-title\""));
  EXPECT_TRUE(holds(figure, "viewBox=\"0 0 960 "));
  EXPECT_TRUE(holds(figure, "viewBox=\"0 0 358 "));
}

}  // namespace
}  // namespace velto
