#include <cstdlib>
#include <cstring>
#include <fstream>
#include <sstream>

#include "math1/test_helpers.h"

namespace quv {
namespace {

struct TScanCase {
  std::string kind;
  bool valid = false;
  double value = 0;
  std::string text;
};

std::vector<TScanCase> LoadCases() {
  std::ifstream file(QUV_TEST_DATA_DIR "/numtext_scan_cases.txt");
  std::vector<TScanCase> cases;
  std::string line;
  while (ReadTextLine(file, line)) {
    if (line.empty() || line[0] == '#') continue;
    std::istringstream fields(line);
    TScanCase c;
    std::string value, text;
    fields >> c.kind >> c.valid >> value;
    c.value = std::strtod(value.c_str(), nullptr);
    std::size_t pos = line.find('"');
    if (!ParseQuotedName(line, pos, text)) ADD_FAILURE() << "bad line: " << line;
    // "\t" in the file stands for a tab character.
    for (std::size_t k = 0; k < text.size(); ++k) {
      const bool tab = text.compare(k, 2, "\\t") == 0;
      c.text += tab ? '\t' : text[k];
      k += tab ? 1 : 0;
    }
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
  } else {
    const bool exponent = c.kind != "fpnoexp";
    const TDecPSep sep = c.kind == "fpcomma" ? dsComma : c.kind == "fpboth" ? dsBoth : dsPoint;
    accepted = IsValidDouble(s, exponent, sep);
    EXPECT_TRUE(!exponent || accepted == IsValidFPNum(s, sep)) << s;
    value = ScanFPNum(s, exponent, sep, pos);
  }
  return pos > 1 && pos == static_cast<std::int32_t>(s.size()) + 1;
}

TEST(NumTextScan, ValidatorAndScannerAgreeOnTableAndRandomTexts) {
  const auto cases = LoadCases();
  ASSERT_GT(cases.size(), 80u);
  for (const TScanCase& c : cases) {
    bool accepted = false;
    double value = 0;
    const bool readAll = ValidateAndScan(c, accepted, value);
    EXPECT_EQ(accepted, c.valid) << c.kind << " \"" << c.text << "\"";
    EXPECT_EQ(readAll, accepted) << c.kind << " \"" << c.text << "\"";
    EXPECT_TRUE(!c.valid || value == c.value) << c.kind << " \"" << c.text << "\" " << value;
  }
  // Short texts over the characters that the grammars care about, from a fixed seed.
  constexpr std::string_view kAlphabet = " \t+-.,eE0123456789afFx'\"";
  std::uint32_t state = 12345;
  auto next = [&state] { return state = state * 1664525u + 1013904223u; };
  for (int i = 0; i < 20000; ++i) {
    std::string text(next() >> 29, ' ');
    for (char& c : text)
      c = kAlphabet[(next() >> 16) % kAlphabet.size()];
    for (const char* kind : {"hex", "oct", "bin", "dec", "fp", "fpnoexp", "fpcomma", "fpboth"}) {
      bool accepted = false;
      double value = 0;
      ASSERT_EQ(ValidateAndScan({kind, false, 0, text}, accepted, value), accepted)
          << kind << " \"" << text << "\"";
    }
    std::int32_t pos = 1, format = 0;
    ScanDegrees(text, pos, true, format);
    ASSERT_TRUE(pos >= 1 && pos <= static_cast<std::int32_t>(text.size()) + 1) << text;
  }
}

TEST(NumTextScan, HugeDigitRunsAndStrToIntDefault) {
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

  const std::pair<const char*, std::int32_t> toInt[] = {
      {"123", 123}, {" -5 ", -5},      {"", 9},
      {"12.0", 9},  {"2147483648", 9}, {"-2147483648", uc_MinInt},
  };
  for (const auto& [text, value] : toInt)
    EXPECT_EQ(StrToIntDefault(text, 9), value) << text;
}

TEST(NumTextScan, SequencesAndPositions) {
  const std::string s = "12 -7\t+3x";
  std::int32_t pos = 1;
  // "x" is no number: the last call leaves Pos where it was.
  for (const auto& [value, after] : {std::pair{12, 4}, {-7, 7}, {3, 9}, {0, 9}}) {
    EXPECT_EQ(ScanDecimal(s, pos), value);
    EXPECT_EQ(pos, after);
  }
  for (std::int32_t bad : {0, -5, 10, 11, uc_MaxInt, uc_MinInt}) {
    std::int32_t p = bad, format = 0;
    EXPECT_EQ(ScanDecimal(s, p), 0);
    EXPECT_EQ(ScanHex(s, p), 0);
    EXPECT_EQ(ScanFPNum(s, true, dsBoth, p), 0.0);
    EXPECT_EQ(ScanDegrees(s, p, true, format), 0.0);
    EXPECT_EQ(format, kScanDegreesNone);
    EXPECT_EQ(ScanDateTime(s, "yyyy", lanEnglish, p), 0.0);
    EXPECT_EQ(p, bad);
  }
  pos = 1;
  EXPECT_EQ(ScanDecimal("", pos), 0);
  EXPECT_EQ(pos, 1);
  // A scanner stops before an incomplete exponent and at a foreign separator; any separator
  // ordinal beyond the three reads as point.
  const std::tuple<const char*, bool, std::int32_t, double, std::int32_t> fp[] = {
      {"2e+x", true, dsPoint, 2.0, 2},
      {"2.5,7", true, dsPoint, 2.5, 4},
      {"1e5", false, dsPoint, 1.0, 2},
      {"1.5", true, 77, 1.5, 4},
  };
  for (const auto& [text, exponent, sep, value, after] : fp) {
    pos = 1;
    EXPECT_EQ(ScanFPNum(text, exponent, sep, pos), value) << text;
    EXPECT_EQ(pos, after) << text;
  }
  // Scanning inverts Hex, Octal and Bin for every pattern, negative ones included.
  for (std::int32_t v : {0, 1, 255, -1, uc_MinInt, 0x7ABCDEF0}) {
    std::int32_t p1 = 1, p2 = 1, p3 = 1;
    EXPECT_EQ(ScanHex(Hex(v, 8), p1), v);
    EXPECT_EQ(ScanOctal(Octal(v, 11), p2), v);
    EXPECT_EQ(ScanBin(Bin(v, 32), p3), v);
  }
}

TEST(NumTextScan, DegreesInAllThreeFormsWithAndWithoutRangeChecks) {
  // Text, CheckRanges, angle, format, Pos after. Minutes without their mark are not read.
  const std::int32_t none = kScanDegreesNone;
  const std::tuple<const char*, bool, double, std::int32_t, std::int32_t> cases[] = {
      {"12.5", true, 12.5, dfDecDegrees, 5},
      {"12 30.5'", true, 12.0 + 30.5 / 60, dfDegMin, 9},
      {" -12 30' 36\" N", true, -(12.0 + 0.5 + 0.01), dfDegMinSec, 14},
      {"12 30", true, 12.0, dfDecDegrees, 4},
      {"12 60'", true, 0.0, none, 1},
      {"12 60'", false, 13.0, dfDegMin, 7},
      {"1 2' 60.5\"", true, 0.0, none, 1},
      {"'", true, 0.0, none, 1},
  };
  for (const auto& [text, check, angle, format, after] : cases) {
    std::int32_t pos = 1, found = 99;
    EXPECT_DOUBLE_EQ(ScanDegrees(text, pos, check, found), angle) << text;
    EXPECT_TRUE(found == format && pos == after) << text << " " << found << " " << pos;
  }
}

TEST(NumTextScan, DateTimeFieldsLanguagesAndMismatches) {
  // Serial dates from Python's datetime: days since 1899-12-30. The whole text is read.
  const std::tuple<const char*, const char*, TLanguage, double> cases[] = {
      {"2024-02-29 13:45:30", "yyyy-mm-dd hh:nn:ss", lanEnglish, 45351 + 49530 / 86400.0},
      {"12:30:00.500", "hh:nn:ss.zzz", lanEnglish, (12.5 * 3600 + 0.5) / 86400},
      {"29. februar 2024", "d. mmmm yyyy", lanGerman, 45351},
      {"1 M\xC3\xA4r 2000", "d mmm yyyy", lanGerman, 36586},
      {"1 Mrz 2000", "d mmm yyyy", lanGerman, 36586},
      {"01-MAR-00", "dd-mmm-yy", lanEnglish, 36586},
      {"1.5.2024", "d.m.yyyy", lanEnglish, 45413},
      {"1 May 2000", "d mmmm yyyy", lanEnglish, 36647},
      {"1900-01-01", "yyyy-mm-dd", lanEnglish, 2},
      {"1850-07-04", "yyyy-mm-dd", lanEnglish, -18076},
      {"9999-12-31", "yyyy-mm-dd", lanEnglish, 2958465},
      // A weekday name must name the weekday of the date; without a date it is only read.
      {"Thursday, 29 Feb 2024", "dddd, d mmm yyyy", lanEnglish, 45351},
      {"do, 29.02.2024", "ddd, dd.mm.yyyy", lanGerman, 45351},
      {"Mon 12:00", "ddd hh:nn", lanEnglish, 0.5},
  };
  for (const auto& [text, format, language, serial] : cases) {
    std::int32_t pos = 1;
    const double result = ScanDateTime(text, format, language, pos);
    EXPECT_DOUBLE_EQ(result, serial) << text;
    EXPECT_TRUE(serial != std::floor(serial) || result == serial) << text;  // whole days: exact
    EXPECT_EQ(pos, static_cast<std::int32_t>(std::strlen(text)) + 1) << text;
  }
  // Impossible dates, fields out of range and mismatches read nothing.
  auto readsNothing = [](const char* text, const char* format, TLanguage language) {
    std::int32_t pos = 1;
    EXPECT_EQ(ScanDateTime(text, format, language, pos), 0.0) << text;
    EXPECT_EQ(pos, 1) << text;
  };
  for (const char* text : {"2023-02-29", "2024-13-01", "2024-00-10", "2024-04-31", "0000-01-01",
                           "2024-1-01", "2024/01/01", "2024-01-0"})
    readsNothing(text, "yyyy-mm-dd", lanEnglish);
  for (const char* text : {"24:00", "12:60", "1:", ""})
    readsNothing(text, "hh:nn", lanEnglish);
  readsNothing("Fri, 29.02.2024", "ddd, dd.mm.yyyy", lanEnglish);
  readsNothing("1 Mai 2000", "d mmmm yyyy", lanEnglish);
  std::int32_t pos = 7;
  EXPECT_EQ(ScanDateTime("Date: 2024-01-01 rest", "yyyy-mm-dd", lanEnglish, pos), 45292);
  EXPECT_EQ(pos, 17);
}

}  // namespace
}  // namespace quv
