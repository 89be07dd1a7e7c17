// quvmath dist and encode: upper tails and normal values to the digits printed, checked
// arguments, refused table sizes, -0, and extended images of numbers beyond double range.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <string>

#include "quv/base/base.h"
#include "quvmath_run.h"

namespace {

using quvmath::test::Cell;
using quvmath::test::CellValue;
using quvmath::test::Quvmath;

double Rel(double a, double b) {
  return std::fabs(a - b) / std::fabs(b);
}

TEST(DistCommand, TailsKeepTheirDigits) {
  // References from mpmath at 60 digits (see tests/data/statis_tails_reference.py).
  struct Case {
    const char* args;
    const char* row;
    const char* heading;
    double expected;
  };
  const Case cases[] = {
      {"dist chi2 3 100", "100", "P(X>x)", 1.5541594313896049e-21},
      {"dist normal 8", "8", "P(X>x)", 6.2209605742717841e-16},
      {"dist normal -9", "-9", "P(X<=x)", 1.1285884059538407e-19},
      {"dist normal 37", "37", "P(X>x)", 5.7255712225245768e-300},
      {"dist t 100 8", "8", "P(X>x)", 1.1364324038640403e-12},
      {"dist f 100 100 5", "5", "P(X>x)", 1.0165268915392896e-14},
      {"dist binom 100 0.1 60", "60", "P(X>k)", 1.5912509968544521e-35},
      {"dist u 10 12 110", "110", "P(U>u)", 1.5000479396764226e-4},
      {"dist quantile normal 1e-300", "1e-300", "quantile", -37.047096299361199},
      {"dist quantile normal 0.9999999999999998", "0.9999999999999998", "quantile",
       8.1258906647019069},
      {"dist quantile chi2 3 0.95", "0.95", "quantile", 7.8147279032511800},
  };
  for (const Case& c : cases) {
    const auto run = Quvmath(c.args);
    ASSERT_EQ(run.status, 0) << c.args << ": " << run.err;
    const std::string cell = Cell(run.out, c.row, c.heading);
    EXPECT_LT(Rel(CellValue(run.out, c.row, c.heading), c.expected), 6e-12)
        << c.args << ": " << cell;
    // 12 significant digits, all of them right.
    char expected[40];
    std::snprintf(expected, sizeof expected, "%.12g", c.expected);
    EXPECT_EQ(cell, expected) << c.args;
  }
}

TEST(DistCommand, ArgumentsAreCheckedBeforeUse) {
  struct Case {
    const char* args;
    const char* message;
  };
  const Case cases[] = {
      {"dist binom 10 0.5 2.5", "K must be a whole number between 0 and 10, not \"2.5\""},
      {"dist binom 10 0.5 1e20", "K must be a whole number between 0 and 10, not \"1e20\""},
      {"dist binom 10 0.5 nan", "K must be a whole number between 0 and 10, not \"nan\""},
      {"dist binom 10 0.5 inf", "K must be a whole number between 0 and 10, not \"inf\""},
      {"dist binom 10 0.5 -1", "K must be a whole number between 0 and 10, not \"-1\""},
      {"dist binom 10 1.5", "P must lie between 0 and 1, not \"1.5\""},
      {"dist binom 1e10 0.5", "N must be a whole number between 0 and 2147483647, not \"1e10\""},
      {"dist chi2 0.5 1", "DF must be a whole number between 1 and 2147483647, not \"0.5\""},
      {"dist f 2 -3", "DF2 must be a whole number between 1 and 2147483647, not \"-3\""},
      {"dist normal nan", "not a number: \"nan\""},
      {"dist normal 1e400", "number out of the range of double precision: \"1e400\""},
      {"dist normal 1x", "not a number: \"1x\""},
      {"dist quantile normal 1", "probabilities must lie strictly between 0 and 1"},
      {"dist u 70000 2", "N1 must be a whole number between 1 and 65535, not \"70000\""},
      {"dist u 60000 60000", "N1 times N2 must not exceed 2147483647"},
      {"dist critical lilliefors 1", "the Lilliefors approximation covers N >= 4"},
      {"dist critical lilliefors 3", "the Lilliefors approximation covers N >= 4"},
      {"dist critical dixon 2", "Dixon's table covers 3 <= N <= 100"},
      {"dist --upper normal 1", "unknown option \"--upper\""},
      {"encode 1e5000", "number out of the range of extended precision: \"1e5000\""},
  };
  for (const Case& c : cases) {
    const auto run = Quvmath(c.args);
    EXPECT_EQ(run.status, 2) << c.args;
    const std::string command = std::string(c.args).substr(0, std::string(c.args).find(' '));
    EXPECT_EQ(run.err, "quvmath " + command + ": " + c.message + "\nRun 'quvmath " + command +
                           " --help' for usage.\n")
        << c.args;
  }
  EXPECT_EQ(Quvmath("dist critical lilliefors 4").status, 0);
  EXPECT_EQ(Cell(Quvmath("dist binom 10 0.5 10").out, "10", "P(X>k)"), "0");
}

TEST(DistCommand, NegativeZeroPrintsAsZero) {
  const auto t = Quvmath("dist t 5 -0");
  EXPECT_EQ(Cell(t.out, "0", "P(X<=x)"), "0.5");
  EXPECT_EQ(t.out.find("-0 "), std::string::npos);
  const auto q = Quvmath("dist quantile t 7 0.5");
  EXPECT_EQ(Cell(q.out, "0.5", "quantile"), "0");
  EXPECT_EQ(q.out.find("-0\n"), std::string::npos);
}

TEST(EncodeCommand, ParsesExtendedNumbers) {
  const auto run = Quvmath("encode 1e4932 -1e-4940 0.1");
  ASSERT_EQ(run.status, 0) << run.err;
  for (const char* text : {"1e4932", "-1e-4940", "0.1"}) {
    const quv::TExtendedBytes bytes = quv::EncodeExtended(std::strtold(text, nullptr));
    std::string hex;
    char buf[4];
    for (std::size_t i = 0; i < bytes.size(); ++i) {
      std::snprintf(buf, sizeof buf, i == 0 ? "%02X" : " %02X", bytes[i]);
      hex += buf;
    }
    EXPECT_EQ(Cell(run.out, text, "extended bytes"), hex) << text;
  }
  // Not the image of infinity.
  EXPECT_NE(Cell(run.out, "1e4932", "extended bytes"), "00 00 00 00 00 00 00 80 FF 7F");
}

}  // namespace
