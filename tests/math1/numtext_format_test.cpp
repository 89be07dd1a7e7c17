#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <string>

#include "quv/math1/math1.h"

namespace quv {
namespace {

TEST(NumTextEEngStr, PrefixLettersDigitsAndLetterForPoint) {
  EXPECT_EQ(EEngStr(4700, 1), "4.7k");
  EXPECT_EQ(EEngStr(4700, -1), "4k7");
  EXPECT_EQ(EEngStr(47000, 1), "47k");
  EXPECT_EQ(EEngStr(47000, -1), "47k");
  EXPECT_EQ(EEngStr(0.0047, 1), "4.7m");
  EXPECT_EQ(EEngStr(-4.7e-9, 2), "-4.70n");
  EXPECT_EQ(EEngStr(2.2e6, -1), "2M2");
  EXPECT_EQ(EEngStr(3.3e-12, -2), "3p30");
  EXPECT_EQ(EEngStr(1.5, 2), "1.50");
  EXPECT_EQ(EEngStr(1.5, -2), "1.50");  // no letter to replace the point
  EXPECT_EQ(EEngStr(0, 3), "0.000");
  EXPECT_EQ(EEngStr(-0.0, -3), "0.000");
  // The prefix range ends at T and a: larger and smaller values keep more digits.
  EXPECT_EQ(EEngStr(1e15, 1), "1000T");
  EXPECT_EQ(EEngStr(1e-25, 1), "0.00000010a");
  // Digits is limited to 9.
  EXPECT_EQ(EEngStr(12345, 9), "12.34500000k");
  EXPECT_EQ(EEngStr(12345, 40), "12.34500000k");
  // Rounding does not move the value to the next prefix.
  EXPECT_EQ(EEngStr(999.96, 1), "1000");
  EXPECT_EQ(EEngStr(std::nan(""), 2), "NAN");
  EXPECT_EQ(EEngStr(-std::numeric_limits<double>::infinity(), 2), "-INF");
  EXPECT_EQ(EEngStr(std::numeric_limits<double>::denorm_min(), 1).back(), 'a');
}

TEST(NumTextFormat, FixedAndExponentForms) {
  EXPECT_EQ(strf(3.14159, 8, 2), "    3.14");
  EXPECT_EQ(strf(-2.5, 0, 0), "-2");  // round half to even, as printf does
  EXPECT_EQ(strf(1.25, 1, -3), "1");
  EXPECT_EQ(MakeEFormat(1500, 0, 2), "1.50E+03");
  EXPECT_EQ(MakeEFormat(-1.5e-300, 12, 1), "   -1.5E-300");
  EXPECT_EQ(MakeEFormat(0, 0, 0), "0E+00");
  EXPECT_EQ(MakeEFormat(1, 0, 100), "1." + std::string(30, '0') + "E+00");
  EXPECT_EQ(MakeEFormat(std::numeric_limits<double>::infinity(), 5, 2), "  INF");
}

TEST(NumTextDegrees, TextsRoundAndScanBack) {
  EXPECT_EQ(DegreeToStr(12.5083, dfDecDegrees, 4), "12.5083");
  EXPECT_EQ(DegreeToStr(12 + 30.5 / 60, dfDegMin, 1), "12 30.5'");
  EXPECT_EQ(DegreeToStr(12 + 30.5 / 60, dfDegMinSec, 0), "12 30' 30\"");
  EXPECT_EQ(DegreeToStr(12.9999999, dfDegMin, 1), "13 0.0'");  // carried, never 60.0
  EXPECT_EQ(DegreeToStr(12.9999999, dfDegMinSec, 2), "13 0' 0.00\"");
  EXPECT_EQ(DegreeToStr(-0.5, dfDegMin, 0), "-0 30'");
  EXPECT_EQ(DegreeToStr(-1e-9, dfDegMin, 1), "0 0.0'");
  EXPECT_EQ(DegreeToStr(std::nan(""), dfDegMin, 1), "NAN");

  for (double angle : {0.0, 12.5083, -47.123456, 359.99999, 1e6 + 1.0 / 7}) {
    for (TDegreeFormat format : {dfDecDegrees, dfDegMin, dfDegMinSec}) {
      const std::string text = DegreeToStr(angle, format, 3);
      std::int32_t pos = 1;
      std::int32_t found = kScanDegreesNone;
      const double back = ScanDegrees(text, pos, true, found);
      EXPECT_EQ(pos, static_cast<std::int32_t>(text.size()) + 1) << text;
      EXPECT_EQ(found, format) << text;
      // Half a step of the last part: 1e-3 degrees, minutes or seconds.
      const double step = format == dfDecDegrees ? 1e-3
                          : format == dfDegMin   ? 1e-3 / 60
                                                 : 1e-3 / 3600;
      EXPECT_NEAR(back, angle, step / 2 + 1e-9) << text;
    }
  }
}

template <class Call>
std::string Math1MessageOf(Call&& call) {
  try {
    call();
  } catch (const EQUVMath1Error& e) {
    return e.what();
  }
  return "(nothing raised)";
}

TEST(NumTextDegrees, ConvertBetweenFormats) {
  double a = 12 + 30.5 / 60, b = 99, c = 99;
  ConvertDegrees(a, b, c, dfDecDegrees, dfDegMinSec);
  EXPECT_EQ(a, 12);
  EXPECT_EQ(b, 30);
  EXPECT_NEAR(c, 30, 1e-9);
  ConvertDegrees(a, b, c, dfDegMinSec, dfDegMin);
  EXPECT_EQ(a, 12);
  EXPECT_NEAR(b, 30.5, 1e-12);
  EXPECT_EQ(c, 0);
  ConvertDegrees(a, b, c, dfDegMin, dfDecDegrees);
  EXPECT_NEAR(a, 12 + 30.5 / 60, 1e-14);
  EXPECT_EQ(b, 0);

  // The sign rides on A, a negative zero included.
  a = -0.0, b = 30, c = 0;
  ConvertDegrees(a, b, c, dfDegMin, dfDecDegrees);
  EXPECT_EQ(a, -0.5);
  ConvertDegrees(a, b, c, dfDecDegrees, dfDegMin);
  EXPECT_TRUE(a == 0 && std::signbit(a));
  EXPECT_EQ(b, 30);

  // A part that rounds to 60 as a double is carried, so the result converts back.
  // (0.75 degrees and just under 15 minutes are just under one degree in extended precision.)
  a = 0.75, b = std::nextafter(15.0, 0.0), c = 0;
  ConvertDegrees(a, b, c, dfDegMin, dfDegMin);
  EXPECT_EQ(a, 1);
  EXPECT_EQ(b, 0);

  // Decimal degrees ignore B and C.
  a = 1, b = 600, c = -5;
  ConvertDegrees(a, b, c, dfDecDegrees, dfDecDegrees);
  EXPECT_EQ(a, 1);
}

TEST(NumTextDegrees, ConvertRejectsMinutesAndSecondsOutOfRange) {
  const std::string minutes = "ConvertDegrees: invalid range of minutes";
  const std::string seconds = "ConvertDegrees: invalid range of seconds";
  double a = 5, b = 60, c = 0;
  EXPECT_EQ(Math1MessageOf([&] { ConvertDegrees(a, b, c, dfDegMin, dfDecDegrees); }), minutes);
  EXPECT_EQ(a, 5);  // nothing changed
  EXPECT_EQ(b, 60);
  b = -0.5;
  EXPECT_EQ(Math1MessageOf([&] { ConvertDegrees(a, b, c, dfDegMinSec, dfDecDegrees); }), minutes);
  b = std::nan("");
  EXPECT_EQ(Math1MessageOf([&] { ConvertDegrees(a, b, c, dfDegMin, dfDegMin); }), minutes);
  b = 59.999, c = 60;
  EXPECT_EQ(Math1MessageOf([&] { ConvertDegrees(a, b, c, dfDegMinSec, dfDegMin); }), seconds);
  EXPECT_EQ(c, 60);
  c = -1e-300;
  EXPECT_EQ(Math1MessageOf([&] { ConvertDegrees(a, b, c, dfDegMinSec, dfDegMin); }), seconds);
  // Seconds are not looked at when the angle has none.
  c = 60;
  EXPECT_EQ(Math1MessageOf([&] { ConvertDegrees(a, b, c, dfDegMin, dfDegMinSec); }),
            "(nothing raised)");
  EXPECT_EQ(a, 5);
  EXPECT_EQ(b, 59);
  EXPECT_NEAR(c, 59.94, 1e-9);
}

}  // namespace
}  // namespace quv
