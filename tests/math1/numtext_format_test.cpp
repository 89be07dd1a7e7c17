#include <bit>
#include <cstdlib>
#include <fstream>
#include <span>
#include <sstream>
#include <typeinfo>

#include "math1/test_helpers.h"

namespace quv {
namespace {

using namespace test;

TEST(NumTextDigits, ExactLengthWithClampedDigitsInEveryBase) {
  // Negative values show their 32-bit two's complement; digits above the pattern are zeros.
  using Case = std::tuple<std::int32_t, std::uint8_t, std::string>;
  auto check = [](std::string (*write)(std::int32_t, std::uint8_t), std::span<const Case> cases) {
    for (const auto& [value, digits, text] : cases)
      EXPECT_EQ(write(value, digits), text) << value << " " << int{digits};
  };
  const std::int32_t crc = static_cast<std::int32_t>(0xCBF43926u), abcd = 0x1234ABCD;
  const std::int32_t min = uc_MinInt, max = uc_MaxInt;
  const std::string f16 = "00000000FFFFFFFF", o16 = "0000037777777777";
  const Case hex[] = {
      {255, 4, "00FF"},     {255, 0, "F"},          {abcd, 8, "1234ABCD"}, {abcd, 3, "BCD"},
      {-1, 8, "FFFFFFFF"},  {-1, 10, "00FFFFFFFF"}, {-1, 16, f16},         {-1, 255, f16},
      {min, 8, "80000000"}, {crc, 8, "CBF43926"},
  };
  const Case octal[] = {{8, 3, "010"}, {511, 0, "7"}, {-1, 11, "37777777777"}, {-1, 200, o16}};
  const Case bin[] = {{5, 8, "00000101"}, {5, 0, "1"}, {6, 2, "10"}};
  const Case decimal[] = {
      {-42, 4, "-0042"},
      {12345, 3, "345"},
      {7, 0, "7"},
      {0, 3, "000"},
      {-12345, 2, "-45"},
      {min, 10, "-2147483648"},
      {max, 12, "002147483647"},
  };
  check(Hex, hex);
  check(Octal, octal);
  check(Bin, bin);
  check(Decimal, decimal);
  EXPECT_EQ(Bin(-1, 32), std::string(32, '1'));
  EXPECT_EQ(Bin(min, 40), "1" + std::string(31, '0'));
  EXPECT_EQ(Decimal(1, 255), std::string(254, '0') + "1");
}

// The same digits with the byte order reversed (pairs of digits stay as they are).
std::string ReverseBytes(const std::string& hex) {
  std::string out;
  for (std::size_t i = hex.size(); i >= 2; i -= 2)
    out.append(hex, i - 2, 2);
  return out;
}

TEST(NumTextFPImage, MatchesReferenceImagesInBothByteOrders) {
  std::ifstream file(QUV_TEST_DATA_DIR "/numtext_fpimages.txt");
  std::string line;
  int rows = 0;
  while (ReadTextLine(file, line)) {
    if (line.empty() || line[0] == '#') continue;
    std::istringstream fields(line);
    std::string valueText, d, f, x;
    fields >> valueText >> d >> f >> x;
    const double value = std::strtod(valueText.c_str(), nullptr);
    ++rows;
    SCOPED_TRACE(valueText);
    EXPECT_EQ(FPNumToHex(value), d);
    for (const double back : {HexToDouble(d), HexToDouble(ReverseBytes(d), false)})
      EXPECT_EQ(std::bit_cast<std::uint64_t>(back), std::bit_cast<std::uint64_t>(value));
    const auto single = static_cast<float>(value);
    EXPECT_EQ(FPNumToHex(single), f);
    for (const float back : {HexToSingle(f), HexToSingle(ReverseBytes(f), false)})
      EXPECT_EQ(std::bit_cast<std::uint32_t>(back), std::bit_cast<std::uint32_t>(single));
    const Extended extended = value;
    EXPECT_EQ(FPNumToHex(extended), x);
    for (const Extended back : {HexToExtended(x), HexToExtended(ReverseBytes(x), false)})
      EXPECT_TRUE(std::isnan(value)
                      ? std::isnan(back)
                      : back == extended && std::signbit(back) == std::signbit(value));
  }
  EXPECT_EQ(rows, 16);
  // Either case is read. Beyond the double range and below its subnormals only the extended
  // image holds a value.
  EXPECT_EQ(HexToDouble("3ff0000000000000"), 1.0);
  EXPECT_EQ(HexToDouble("000000000000f03f", false), 1.0);
  EXPECT_EQ(HexToSingle("3f800000"), 1.0f);
  EXPECT_EQ(HexToExtended(FPNumToHex(1e4000L)), 1e4000L);
  const Extended smallest = std::numeric_limits<Extended>::denorm_min();
  EXPECT_EQ(FPNumToHex(smallest), "00000000000000000001");
  EXPECT_EQ(HexToExtended("00000000000000000001"), smallest);
  EXPECT_EQ(FPNumToHex(-std::numeric_limits<Extended>::max()), "FFFEFFFFFFFFFFFFFFFF");
}

TEST(NumTextFPImage, BadTextsRaiseTheBaseErrorWithTheText) {
  for (const std::string bad : {"3FF000000000000", "3FF000000000000G", "3FF00000000000000", ""})
    for (bool mostSignificantFirst : {true, false})
      EXPECT_EQ(MessageOf<EQUVError>([&] { HexToDouble(bad, mostSignificantFirst); }),
                "HexToDouble: invalid hex string \"" + bad + "\"");
  for (const std::string bad : {"3FFF80000000000000 0", "3FF0000000000000"})
    EXPECT_EQ(MessageOf<EQUVError>([&] { HexToExtended(bad); }),
              "HexToExtended: invalid hex string \"" + bad + "\"");
  EXPECT_EQ(MessageOf<EQUVError>([] { HexToSingle("-3F80000"); }),
            "HexToSingle: invalid hex string \"-3F80000\"");
  EXPECT_EQ(MessageOf<EQUVError>([] { HexToSingle("3F800000", false); }), "nothing raised");
  EXPECT_EQ(MessageOf<EQUVError>([] { HexToSingle(std::string(100000, 'F')); }).size(),
            100000u + 34u);
  try {  // the base class itself, not a unit's class derived from it
    HexToSingle("xx");
    ADD_FAILURE() << "nothing raised";
  } catch (const EQUVError& e) {
    EXPECT_EQ(typeid(e), typeid(EQUVError));
  }
}

TEST(NumTextFormat, EngineeringFixedAndExponentForms) {
  // A negative Digits puts the letter in place of the point, where there is a letter. The
  // prefixes end at T and a: values beyond keep more digits. Digits is limited to 9. Rounding
  // does not move the value to the next prefix.
  const std::tuple<double, std::int32_t, std::string> eng[] = {
      {4700, 1, "4.7k"},           {4700, -1, "4k7"},         {47000, 1, "47k"},
      {47000, -1, "47k"},          {0.0047, 1, "4.7m"},       {-4.7e-9, 2, "-4.70n"},
      {2.2e6, -1, "2M2"},          {3.3e-12, -2, "3p30"},     {1.5, 2, "1.50"},
      {1.5, -2, "1.50"},           {0, 3, "0.000"},           {-0.0, -3, "0.000"},
      {1e15, 1, "1000T"},          {999.96, 1, "1000"},       {kNaN, 2, "NAN"},
      {-kInf, 2, "-INF"},          {1e-25, 1, "0.00000010a"}, {12345, 9, "12.34500000k"},
      {12345, 40, "12.34500000k"},
  };
  for (const auto& [x, digits, text] : eng)
    EXPECT_EQ(EEngStr(x, digits), text) << x << " " << digits;
  EXPECT_EQ(EEngStr(std::numeric_limits<double>::denorm_min(), 1).back(), 'a');
  EXPECT_EQ(strf(3.14159, 8, 2), "    3.14");
  EXPECT_EQ(strf(-2.5, 0, 0), "-2");  // round half to even, as printf does
  EXPECT_EQ(strf(1.25, 1, -3), "1");
  EXPECT_EQ(MakeEFormat(1500, 0, 2), "1.50E+03");
  EXPECT_EQ(MakeEFormat(-1.5e-300, 12, 1), "   -1.5E-300");
  EXPECT_EQ(MakeEFormat(0, 0, 0), "0E+00");
  EXPECT_EQ(MakeEFormat(1, 0, 100), "1." + std::string(30, '0') + "E+00");
  EXPECT_EQ(MakeEFormat(kInf, 5, 2), "  INF");
}

TEST(NumTextDegrees, TextsRoundCarryAndScanBack) {
  // Rounding carries into the next part, so that a part never reads 60.
  const std::tuple<double, TDegreeFormat, std::int32_t, std::string> cases[] = {
      {12.5083, dfDecDegrees, 4, "12.5083"},
      {12 + 30.5 / 60, dfDegMin, 1, "12 30.5'"},
      {12 + 30.5 / 60, dfDegMinSec, 0, "12 30' 30\""},
      {12.9999999, dfDegMin, 1, "13 0.0'"},
      {12.9999999, dfDegMinSec, 2, "13 0' 0.00\""},
      {-0.5, dfDegMin, 0, "-0 30'"},
      {-1e-9, dfDegMin, 1, "0 0.0'"},
      {kNaN, dfDegMin, 1, "NAN"},
  };
  for (const auto& [angle, format, decimals, text] : cases)
    EXPECT_EQ(DegreeToStr(angle, format, decimals), text) << angle;
  for (double angle : {0.0, 12.5083, -47.123456, 359.99999, 1e6 + 1.0 / 7}) {
    for (TDegreeFormat format : {dfDecDegrees, dfDegMin, dfDegMinSec}) {
      const std::string text = DegreeToStr(angle, format, 3);
      std::int32_t pos = 1, found = kScanDegreesNone;
      const double back = ScanDegrees(text, pos, true, found);
      EXPECT_EQ(pos, static_cast<std::int32_t>(text.size()) + 1) << text;
      EXPECT_EQ(found, format) << text;
      // Half a step of the last part: 1e-3 degrees, minutes or seconds.
      const double step = 1e-3 / (format == dfDecDegrees ? 1 : format == dfDegMin ? 60 : 3600);
      EXPECT_NEAR(back, angle, step / 2 + 1e-9) << text;
    }
  }
}

TEST(NumTextDegrees, ConvertBetweenFormats) {
  auto convert = [](std::array<double, 3> p, TDegreeFormat from, TDegreeFormat to) {
    ConvertDegrees(p[0], p[1], p[2], from, to);
    return p;
  };
  auto p = convert({12 + 30.5 / 60, 99, 99}, dfDecDegrees, dfDegMinSec);
  EXPECT_TRUE(p[0] == 12 && p[1] == 30);
  EXPECT_NEAR(p[2], 30, 1e-9);
  p = convert(p, dfDegMinSec, dfDegMin);
  EXPECT_TRUE(p[0] == 12 && p[2] == 0);
  EXPECT_NEAR(p[1], 30.5, 1e-12);
  p = convert(p, dfDegMin, dfDecDegrees);
  EXPECT_NEAR(p[0], 12 + 30.5 / 60, 1e-14);
  EXPECT_EQ(p[1], 0);
  // The sign rides on A, a negative zero included.
  p = convert({-0.0, 30, 0}, dfDegMin, dfDecDegrees);
  EXPECT_EQ(p[0], -0.5);
  p = convert(p, dfDecDegrees, dfDegMin);
  EXPECT_TRUE(p[0] == 0 && std::signbit(p[0]) && p[1] == 30);
  // A part that rounds to 60 as a double is carried, so the result converts back.
  // (0.75 degrees and just under 15 minutes are just under one degree in extended precision.)
  p = convert({0.75, std::nextafter(15.0, 0.0), 0}, dfDegMin, dfDegMin);
  EXPECT_TRUE(p[0] == 1 && p[1] == 0);
  EXPECT_EQ(convert({1, 600, -5}, dfDecDegrees, dfDecDegrees)[0], 1);  // B and C are ignored
  // Seconds are not looked at when the angle has none.
  p = convert({5, 59.999, 60}, dfDegMin, dfDegMinSec);
  EXPECT_TRUE(p[0] == 5 && p[1] == 59);
  EXPECT_NEAR(p[2], 59.94, 1e-9);
}

TEST(NumTextDegrees, ConvertRejectsMinutesAndSecondsOutOfRangeAndChangesNothing) {
  const std::string minutes = "ConvertDegrees: invalid range of minutes";
  const std::string seconds = "ConvertDegrees: invalid range of seconds";
  const std::tuple<double, double, TDegreeFormat, TDegreeFormat, std::string> cases[] = {
      {60, 0, dfDegMin, dfDecDegrees, minutes},
      {-0.5, 0, dfDegMinSec, dfDecDegrees, minutes},
      {kNaN, 0, dfDegMin, dfDegMin, minutes},
      {59.999, 60, dfDegMinSec, dfDegMin, seconds},
      {59.999, -1e-300, dfDegMinSec, dfDegMin, seconds},
  };
  for (const auto& [b0, c0, from, to, message] : cases) {
    double a = 5, b = b0, c = c0;
    EXPECT_EQ(MessageOf([&] { ConvertDegrees(a, b, c, from, to); }), message);
    EXPECT_TRUE(a == 5 && (b == b0 || std::isnan(b)) && c == c0) << b0 << " " << c0;
  }
}

}  // namespace
}  // namespace quv
