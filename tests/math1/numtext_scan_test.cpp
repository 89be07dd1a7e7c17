#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <limits>
#include <sstream>
#include <string>

#include "quv/math1/math1.h"

namespace quv {
namespace {

struct TScanCase {
  std::string kind;
  bool valid = false;
  double value = 0;
  std::string text;
};

std::string Unescape(const std::string& text) {
  std::string out;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\\' && i + 1 < text.size() && text[i + 1] == 't') {
      out.push_back('\t');
      ++i;
    } else {
      out.push_back(text[i]);
    }
  }
  return out;
}

std::vector<TScanCase> LoadCases() {
  std::ifstream file(QUV_TEST_DATA_DIR "/numtext_scan_cases.txt");
  std::vector<TScanCase> cases;
  std::string line;
  while (ReadTextLine(file, line)) {
    if (line.empty() || line[0] == '#') continue;
    std::istringstream fields(line);
    TScanCase c;
    std::string value;
    int valid = 0;
    fields >> c.kind >> valid >> value;
    c.valid = valid != 0;
    c.value = std::strtod(value.c_str(), nullptr);
    std::size_t pos = line.find('"');
    std::string text;
    if (!ParseQuotedName(line, pos, text)) ADD_FAILURE() << "bad line: " << line;
    c.text = Unescape(text);
    cases.push_back(c);
  }
  return cases;
}

// Runs validator and scanner of one kind on a text; returns whether the scanner read it all.
bool ValidateAndScan(const TScanCase& c, bool& accepted, double& value) {
  std::int32_t pos = 1;
  const std::string& s = c.text;
  if (c.kind == "hex") {
    accepted = IsValidHex(s);
    value = ScanHex(s, pos);
  } else if (c.kind == "oct") {
    accepted = IsValidOct(s);
    value = ScanOctal(s, pos);
  } else if (c.kind == "bin") {
    accepted = IsValidBin(s);
    value = ScanBin(s, pos);
  } else if (c.kind == "dec") {
    accepted = IsValidDecInt(s);
    value = ScanDecimal(s, pos);
  } else if (c.kind == "fp") {
    accepted = IsValidFPNum(s, dsPoint);
    EXPECT_EQ(accepted, IsValidDouble(s, true, dsPoint)) << s;
    value = ScanFPNum(s, true, dsPoint, pos);
  } else if (c.kind == "fpnoexp") {
    accepted = IsValidDouble(s, false, dsPoint);
    value = ScanFPNum(s, false, dsPoint, pos);
  } else if (c.kind == "fpcomma") {
    accepted = IsValidDouble(s, true, dsComma);
    value = ScanFPNum(s, true, dsComma, pos);
  } else {
    accepted = IsValidDouble(s, true, dsBoth);
    value = ScanFPNum(s, true, dsBoth, pos);
  }
  return pos > 1 && pos == static_cast<std::int32_t>(s.size()) + 1;
}

TEST(NumTextScan, ValidatorAndScannerAgreeOnTable) {
  const auto cases = LoadCases();
  ASSERT_GT(cases.size(), 80u);
  for (const TScanCase& c : cases) {
    bool accepted = false;
    double value = 0;
    const bool readAll = ValidateAndScan(c, accepted, value);
    EXPECT_EQ(accepted, c.valid) << c.kind << " \"" << c.text << "\"";
    EXPECT_EQ(readAll, accepted) << c.kind << " \"" << c.text << "\"";
    if (c.valid) {
      EXPECT_EQ(value, c.value) << c.kind << " \"" << c.text << "\"";
    }
  }
}

TEST(NumTextScan, ValidatorAndScannerAgreeOnRandomTexts) {
  // Short texts over the characters that the grammars care about, from a fixed seed.
  constexpr std::string_view kAlphabet = " \t+-.,eE0123456789afFx'\"";
  std::uint32_t state = 12345;
  auto next = [&state] { return state = state * 1664525u + 1013904223u; };
  for (int i = 0; i < 20000; ++i) {
    std::string text(next() >> 29, ' ');
    for (char& c : text)
      c = kAlphabet[(next() >> 16) % kAlphabet.size()];
    for (const char* kind : {"hex", "oct", "bin", "dec", "fp", "fpnoexp", "fpcomma", "fpboth"}) {
      const TScanCase c{kind, false, 0, text};
      bool accepted = false;
      double value = 0;
      ASSERT_EQ(ValidateAndScan(c, accepted, value), accepted) << kind << " \"" << text << "\"";
    }
    std::int32_t pos = 1;
    std::int32_t format = 0;
    ScanDegrees(text, pos, true, format);
    ASSERT_GE(pos, 1);
    ASSERT_LE(pos, static_cast<std::int32_t>(text.size()) + 1);
  }
}

TEST(NumTextScan, HugeDigitRunsAreHandled) {
  const std::string manyDigits(100000, '7');
  EXPECT_FALSE(IsValidDecInt(manyDigits));
  EXPECT_FALSE(IsValidHex(manyDigits));
  EXPECT_FALSE(IsValidFPNum(manyDigits, dsPoint));  // 7.7e99999 overflows
  std::int32_t pos = 1;
  EXPECT_EQ(ScanDecimal(manyDigits, pos), 0);
  EXPECT_EQ(pos, 1);

  const std::string tiny = "0." + std::string(100000, '0') + "1";
  EXPECT_TRUE(IsValidFPNum(tiny, dsPoint));
  pos = 1;
  EXPECT_EQ(ScanFPNum(tiny, true, dsPoint, pos), 0.0);
  EXPECT_EQ(pos, static_cast<std::int32_t>(tiny.size()) + 1);

  const std::string zeros = std::string(5000, '0') + "42";
  EXPECT_EQ(StrToIntDefault(zeros, -1), 42);
  EXPECT_TRUE(IsValidFPNum(zeros + "e-1", dsPoint));
}

TEST(NumTextScan, SequencesAndPositions) {
  const std::string s = "12 -7\t+3x";
  std::int32_t pos = 1;
  EXPECT_EQ(ScanDecimal(s, pos), 12);
  EXPECT_EQ(pos, 4);
  EXPECT_EQ(ScanDecimal(s, pos), -7);
  EXPECT_EQ(pos, 7);
  EXPECT_EQ(ScanDecimal(s, pos), 3);
  EXPECT_EQ(pos, 9);
  EXPECT_EQ(ScanDecimal(s, pos), 0);  // "x" is no number: Pos stays
  EXPECT_EQ(pos, 9);

  for (std::int32_t bad : {0, -5, 10, 11, std::numeric_limits<std::int32_t>::max(),
                           std::numeric_limits<std::int32_t>::min()}) {
    std::int32_t p = bad;
    EXPECT_EQ(ScanDecimal(s, p), 0);
    EXPECT_EQ(ScanHex(s, p), 0);
    EXPECT_EQ(ScanFPNum(s, true, dsBoth, p), 0.0);
    std::int32_t format = 0;
    EXPECT_EQ(ScanDegrees(s, p, true, format), 0.0);
    EXPECT_EQ(format, kScanDegreesNone);
    EXPECT_EQ(ScanDateTime(s, "yyyy", lanEnglish, p), 0.0);
    EXPECT_EQ(p, bad);
  }
  std::int32_t p = 1;
  EXPECT_EQ(ScanDecimal("", p), 0);
  EXPECT_EQ(p, 1);

  // A scanner stops before an incomplete exponent and at a foreign separator.
  pos = 1;
  EXPECT_EQ(ScanFPNum("2e+x", true, dsPoint, pos), 2.0);
  EXPECT_EQ(pos, 2);
  pos = 1;
  EXPECT_EQ(ScanFPNum("2.5,7", true, dsPoint, pos), 2.5);
  EXPECT_EQ(pos, 4);
  pos = 1;
  EXPECT_EQ(ScanFPNum("1e5", false, dsPoint, pos), 1.0);
  EXPECT_EQ(pos, 2);
  // Any ordinal beyond the three separators reads as point.
  pos = 1;
  EXPECT_EQ(ScanFPNum("1.5", true, 77, pos), 1.5);
  EXPECT_EQ(pos, 4);
  // Hex scanning inverts Hex for every pattern, negative ones included.
  for (std::int32_t v : {0, 1, 255, -1, std::numeric_limits<std::int32_t>::min(), 0x7ABCDEF0}) {
    pos = 1;
    EXPECT_EQ(ScanHex(Hex(v, 8), pos), v);
    pos = 1;
    EXPECT_EQ(ScanOctal(Octal(v, 11), pos), v);
    pos = 1;
    EXPECT_EQ(ScanBin(Bin(v, 32), pos), v);
  }
}

TEST(NumTextScan, StrToIntDefault) {
  EXPECT_EQ(StrToIntDefault("123", -1), 123);
  EXPECT_EQ(StrToIntDefault(" -5 ", 9), -5);
  EXPECT_EQ(StrToIntDefault("", 9), 9);
  EXPECT_EQ(StrToIntDefault("12.0", 9), 9);
  EXPECT_EQ(StrToIntDefault("2147483648", 9), 9);
  EXPECT_EQ(StrToIntDefault("-2147483648", 9), std::numeric_limits<std::int32_t>::min());
}

TEST(NumTextScan, DegreesInAllThreeForms) {
  std::int32_t pos = 1;
  std::int32_t format = kScanDegreesNone;
  EXPECT_DOUBLE_EQ(ScanDegrees("12.5", pos, true, format), 12.5);
  EXPECT_EQ(format, dfDecDegrees);
  pos = 1;
  EXPECT_DOUBLE_EQ(ScanDegrees("12 30.5'", pos, true, format), 12.0 + 30.5 / 60);
  EXPECT_EQ(format, dfDegMin);
  EXPECT_EQ(pos, 9);
  pos = 1;
  EXPECT_DOUBLE_EQ(ScanDegrees(" -12 30' 36\" N", pos, true, format), -(12.0 + 0.5 + 0.01));
  EXPECT_EQ(format, dfDegMinSec);
  EXPECT_EQ(pos, 14);
  // Minutes without their mark are not part of the angle.
  pos = 1;
  EXPECT_DOUBLE_EQ(ScanDegrees("12 30", pos, true, format), 12.0);
  EXPECT_EQ(format, dfDecDegrees);
  EXPECT_EQ(pos, 4);
  // Range checking of minutes and seconds, and the same texts without it.
  pos = 1;
  EXPECT_EQ(ScanDegrees("12 60'", pos, true, format), 0.0);
  EXPECT_EQ(format, kScanDegreesNone);
  EXPECT_EQ(pos, 1);
  EXPECT_DOUBLE_EQ(ScanDegrees("12 60'", pos, false, format), 13.0);
  pos = 1;
  EXPECT_EQ(ScanDegrees("1 2' 60.5\"", pos, true, format), 0.0);
  EXPECT_EQ(pos, 1);
  pos = 1;
  EXPECT_EQ(ScanDegrees("'", pos, true, format), 0.0);
  EXPECT_EQ(format, kScanDegreesNone);
}

TEST(NumTextScan, DateTimeFieldsAndLanguages) {
  // Serial dates from Python's datetime: days since 1899-12-30.
  std::int32_t pos = 1;
  const std::string iso = "2024-02-29 13:45:30";
  EXPECT_DOUBLE_EQ(ScanDateTime(iso, "yyyy-mm-dd hh:nn:ss", lanEnglish, pos),
                   45351 + (13 * 3600 + 45 * 60 + 30) / 86400.0);
  EXPECT_EQ(pos, static_cast<std::int32_t>(iso.size()) + 1);
  pos = 1;
  EXPECT_EQ(ScanDateTime("29. februar 2024", "d. mmmm yyyy", lanGerman, pos), 45351);
  pos = 1;
  EXPECT_EQ(ScanDateTime("1 M\xC3\xA4r 2000", "d mmm yyyy", lanGerman, pos), 36586);
  pos = 1;
  EXPECT_EQ(ScanDateTime("1 Mrz 2000", "d mmm yyyy", lanGerman, pos), 36586);
  pos = 1;
  EXPECT_EQ(ScanDateTime("01-MAR-00", "dd-mmm-yy", lanEnglish, pos), 36586);
  pos = 1;
  EXPECT_EQ(ScanDateTime("1.5.2024", "d.m.yyyy", lanEnglish, pos), 45413);
  pos = 1;
  EXPECT_EQ(ScanDateTime("1900-01-01", "yyyy-mm-dd", lanEnglish, pos), 2);
  pos = 1;
  EXPECT_EQ(ScanDateTime("1850-07-04", "yyyy-mm-dd", lanEnglish, pos), -18076);
  pos = 1;
  EXPECT_EQ(ScanDateTime("9999-12-31", "yyyy-mm-dd", lanEnglish, pos), 2958465);
  pos = 1;
  EXPECT_DOUBLE_EQ(ScanDateTime("12:30:00.500", "hh:nn:ss.zzz", lanEnglish, pos),
                   (12.5 * 3600 + 0.5) / 86400);
  pos = 7;
  EXPECT_EQ(ScanDateTime("Date: 2024-01-01 rest", "yyyy-mm-dd", lanEnglish, pos), 45292);
  EXPECT_EQ(pos, 17);

  // Impossible dates and mismatches read nothing.
  for (const char* bad : {"2023-02-29", "2024-13-01", "2024-00-10", "2024-04-31", "0000-01-01",
                          "2024-1-01", "2024/01/01", "2024-01-0"}) {
    pos = 1;
    EXPECT_EQ(ScanDateTime(bad, "yyyy-mm-dd", lanEnglish, pos), 0.0) << bad;
    EXPECT_EQ(pos, 1) << bad;
  }
  for (const char* bad : {"24:00", "12:60", "1:", ""}) {
    pos = 1;
    EXPECT_EQ(ScanDateTime(bad, "hh:nn", lanEnglish, pos), 0.0) << bad;
    EXPECT_EQ(pos, 1) << bad;
  }
  // Weekday names must name the weekday of the date; without a date they are only read.
  pos = 1;
  EXPECT_EQ(ScanDateTime("Thursday, 29 Feb 2024", "dddd, d mmm yyyy", lanEnglish, pos), 45351);
  pos = 1;
  EXPECT_EQ(ScanDateTime("do, 29.02.2024", "ddd, dd.mm.yyyy", lanGerman, pos), 45351);
  pos = 1;
  EXPECT_EQ(ScanDateTime("Fri, 29.02.2024", "ddd, dd.mm.yyyy", lanEnglish, pos), 0.0);
  EXPECT_EQ(pos, 1);
  pos = 1;
  EXPECT_EQ(ScanDateTime("Mon 12:00", "ddd hh:nn", lanEnglish, pos), 0.5);
  pos = 1;
  EXPECT_EQ(ScanDateTime("1 Mai 2000", "d mmmm yyyy", lanEnglish, pos), 0.0);
  pos = 1;
  EXPECT_EQ(ScanDateTime("1 May 2000", "d mmmm yyyy", lanEnglish, pos), 36647);
}

}  // namespace
}  // namespace quv
