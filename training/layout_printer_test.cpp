#include "training/layout_printer.h"

#include <gtest/gtest.h>

#include <sstream>

#include "decoder/tester.h"

namespace velto {
namespace {

TEST(PrintLayout, ShowsEveryRowUnderItsLabel) {
  layout lay;
  lay.start = 3;
  lay.stop = 8;
  lay.errMark = {-14, -15};
  lay.crr[0] = {-1, -10};
  lay.crr[1] = {-23, -22};
  lay.met[0] = {-21, -14};
  lay.met[2] = {-14, -100};
  lay.rfm = {-1, 0};
  lay.cls[0] = {-10, -100};
  lay.cls[1] = {-1000, -20};
  lay.cls[2] = {7, 2};
  std::ostringstream out;
  printLayout(out, lay);
  EXPECT_EQ(out.str(),
            "start/stop: 3/8-----------------\n"
            "err : .!\n"
            "crr : -*\ncrr : ><\ncrr : \n"
            "-\n"
            "met : M.\nmet : \nmet : .S\n"
            "rfm : -0\n"
            "--\n"
            "0   : *S\n1   : =F\n2   : ?2\n"
            "\n");
}

TEST(PrintLayout, WithoutErrorMarksHasABareRow) {
  velto::Test tester;
  tester.layoutList->push_back(layout());
  testing::internal::CaptureStdout();
  EXPECT_EQ(tester.PrintLayout(), 0);
  EXPECT_EQ(testing::internal::GetCapturedStdout(),
            "start/stop: 0/0-----------------\nerr : \ncrr : \ncrr : \ncrr : \n-\nmet : \nmet : \n"
            "met : \nrfm : \n--\n0   : \n1   : \n2   : \n\n");
}

}  // namespace
}  // namespace velto
