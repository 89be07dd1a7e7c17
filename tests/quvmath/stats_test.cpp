// quvmath stats: the moments against exact references (NIST StRD NumAcc3/4, data with large
// offsets), undefined shape statistics of constant data, the NaN and infinity policy and
// the layout of the tables.
#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "quvmath_run.h"

namespace {

using quvmath::test::Cell;
using quvmath::test::CellValue;
using quvmath::test::DataFile;
using quvmath::test::Quvmath;

struct TReference {
  std::string name;
  double mean = 0, sd = 0, skewness = 0, kurtosis = 0;
};

std::vector<TReference> ReadReferences() {
  std::ifstream in(DataFile("quvmath_stats_reference.txt"));
  std::vector<TReference> refs;
  std::string line;
  while (std::getline(in, line)) {
    if (line.empty() || line[0] == '#') continue;
    std::istringstream fields(line);
    TReference r;
    fields >> r.name >> r.mean >> r.sd >> r.skewness >> r.kurtosis;
    refs.push_back(r);
  }
  return refs;
}

// One-column data on standard input.
std::string Column(const std::vector<std::string>& values) {
  std::string text =
      "piped\n1\n" + std::to_string(values.size()) + "\nFALSE TRUE FALSE FALSE\n\"x\"\n";
  for (const std::string& v : values)
    text += v + "\n";
  return text;
}

TEST(StatsCommand, MomentsMatchExactReferences) {
  const std::vector<TReference> refs = ReadReferences();
  ASSERT_EQ(refs.size(), 5u);
  for (const TReference& r : refs) {
    const auto run =
        Quvmath("stats --precision 17 '" + DataFile("quvmath_stats_" + r.name + ".asc") + "'");
    ASSERT_EQ(run.status, 0) << run.err;
    EXPECT_NEAR(CellValue(run.out, r.name, "mean"), r.mean, 1e-16 * std::fabs(r.mean)) << r.name;
    EXPECT_NEAR(CellValue(run.out, r.name, "std dev"), r.sd, 1e-14 * r.sd) << r.name;
    // Skewness is near 0 for the symmetric sets: there its error counts against 1.
    EXPECT_NEAR(CellValue(run.out, r.name, "skewness"), r.skewness,
                1e-14 * std::max(1.0, std::fabs(r.skewness)))
        << r.name;
    EXPECT_NEAR(CellValue(run.out, r.name, "kurtosis"), r.kurtosis, 1e-14 * std::fabs(r.kurtosis))
        << r.name;
  }
  // The certified values of NIST, which hold for the decimal data: the double input allows
  // about 9 (NumAcc3) and 8 (NumAcc4) digits of the standard deviation.
  const auto n3 = Quvmath("stats --precision 17 '" + DataFile("quvmath_stats_numacc3.asc") + "'");
  const auto n4 = Quvmath("stats --precision 17 '" + DataFile("quvmath_stats_numacc4.asc") + "'");
  EXPECT_NEAR(CellValue(n3.out, "numacc3", "std dev"), 0.1, 1e-10);
  EXPECT_NEAR(CellValue(n4.out, "numacc4", "std dev"), 0.1, 1e-9);
  EXPECT_EQ(Cell(n3.out, "numacc3", "mean"), "1000000.2");
}

TEST(StatsCommand, DefaultDigitsTellLargeValuesApart) {
  const auto run = Quvmath("stats '" + DataFile("quvmath_stats_unixms.asc") + "'");
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(Cell(run.out, "unixms", "min"), "1.712345679e+12");
  EXPECT_EQ(Cell(run.out, "unixms", "std dev"), "647808.9353");
  const auto seconds = Quvmath("stats -", Column({"1712345678", "1712345978", "1712346278"}));
  EXPECT_EQ(Cell(seconds.out, "x", "min"), "1712345678");
  EXPECT_EQ(Cell(seconds.out, "x", "median"), "1712345978");
  EXPECT_EQ(Cell(Quvmath("stats --precision 3 -", Column({"1", "2", "4"})).out, "x", "std dev"),
            "1.53");
}

TEST(StatsCommand, ConstantDataHasNoSkewnessOrKurtosis) {
  for (const auto& values :
       {std::vector<std::string>(5, "0.1"), std::vector<std::string>(4, "1e308"),
        std::vector<std::string>(3, "-7")}) {
    const auto run = Quvmath("stats -", Column(values));
    ASSERT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(Cell(run.out, "x", "std dev"), "0") << values[0];
    EXPECT_EQ(Cell(run.out, "x", "skewness"), "-") << values[0];
    EXPECT_EQ(Cell(run.out, "x", "kurtosis"), "-") << values[0];
    EXPECT_EQ(Cell(run.out, "x", "mean"), values[0] == "1e308" ? "1e+308" : values[0]);
  }
  // Too few values: the standard deviation needs 2, skewness 3, kurtosis 4.
  const auto two = Quvmath("stats -", Column({"1", "2"}));
  EXPECT_EQ(Cell(two.out, "x", "std dev"), "0.7071067812");
  EXPECT_EQ(Cell(two.out, "x", "skewness"), "-");
  const auto three = Quvmath("stats -", Column({"1", "2", "4"}));
  EXPECT_EQ(Cell(three.out, "x", "skewness"), "0.9352195296");
  EXPECT_EQ(Cell(three.out, "x", "kurtosis"), "-");
  EXPECT_EQ(Cell(Quvmath("stats -", Column({"5"})).out, "x", "std dev"), "-");
}

TEST(StatsCommand, NaNIsMissingAndInfinityFollowsIEEE) {
  // NaN is left out of every statistic, also the order statistics.
  const auto nan = Quvmath("stats -", Column({"4", "nan", "1", "3", "2"}));
  ASSERT_EQ(nan.status, 0) << nan.err;
  EXPECT_EQ(Cell(nan.out, "x", "n"), "4");
  EXPECT_EQ(Cell(nan.out, "x", "empty"), "1");
  EXPECT_EQ(Cell(nan.out, "x", "mean"), "2.5");
  EXPECT_EQ(Cell(nan.out, "x", "Q1"), "1.75");
  EXPECT_EQ(Cell(nan.out, "x", "median"), "2.5");
  EXPECT_EQ(Cell(nan.out, "x", "max"), "4");
  EXPECT_EQ(Cell(nan.out, "x", "std dev"), "1.290994449");
  EXPECT_EQ(Cell(nan.out, "x", "geo mean"), "2.213363839");

  const auto inf = Quvmath("stats -", Column({"1", "inf", "2", "3"}));
  ASSERT_EQ(inf.status, 0) << inf.err;
  EXPECT_EQ(Cell(inf.out, "x", "mean"), "inf");
  EXPECT_EQ(Cell(inf.out, "x", "std dev"), "nan");
  EXPECT_EQ(Cell(inf.out, "x", "median"), "2.5");
  EXPECT_EQ(Cell(inf.out, "x", "Q1"), "1.75");
  EXPECT_EQ(Cell(inf.out, "x", "max"), "inf");
  EXPECT_EQ(Cell(inf.out, "x", "harm mean"), "2.181818182");
  // Order statistics between equal infinities are that infinity, not inf - inf.
  const auto both = Quvmath("stats -", Column({"-inf", "-inf", "5", "inf", "inf"}));
  EXPECT_EQ(Cell(both.out, "x", "Q1"), "-inf");
  EXPECT_EQ(Cell(both.out, "x", "Q3"), "inf");
  EXPECT_EQ(Cell(both.out, "x", "mean"), "nan");
  EXPECT_EQ(Cell(both.out, "x", "geo mean"), "-");
  EXPECT_EQ(both.status, 0);
  const auto allNaN = Quvmath("stats -", Column({"nan", "nan"}));
  EXPECT_EQ(Cell(allNaN.out, "x", "n"), "0");
  EXPECT_EQ(Cell(allNaN.out, "x", "mean"), "-");
  EXPECT_EQ(Cell(allNaN.out, "x", "median"), "-");
  EXPECT_EQ(allNaN.out.find("-nan"), std::string::npos);
}

TEST(StatsCommand, SampleTablesAreOneRowPerColumnAndReadable) {
  const auto run = Quvmath("stats");
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_TRUE(run.err.empty()) << run.err;
  std::istringstream lines(run.out);
  std::string line;
  std::size_t longest = 0;
  while (std::getline(lines, line))
    longest = std::max(longest, line.size());
  EXPECT_LE(longest, 100u);
  for (const char* column : {"Temperature_C", "pH", "Conductivity_uS", "DissolvedO2_mgL"}) {
    EXPECT_EQ(Cell(run.out, column, "n"), "240") << column;
    EXPECT_FALSE(Cell(run.out, column, "harm mean").empty()) << column;
  }
}

}  // namespace

namespace {

TEST(StatsCommand, CSVWithEmptyCellsAndNominalColumns) {
  const std::string csv =
      "site,depth,species\n"
      "A,1.5,Trout\n"
      "B,,trout\n"
      "A,NA,Perch\n"
      "C,2.5,\n"
      "A,3.5,trout\n";
  const auto run = Quvmath("stats --csv -", csv);
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(Cell(run.out, "depth", "n"), "3");
  EXPECT_EQ(Cell(run.out, "depth", "empty"), "2");
  EXPECT_EQ(Cell(run.out, "depth", "mean"), "2.5");
  // Columns of texts are frequency tables; identifiers ignore letter case.
  EXPECT_EQ(Cell(run.out, "A", "count"), "3");
  EXPECT_EQ(Cell(run.out, "A", "percent"), "60");
  EXPECT_EQ(Cell(run.out, "Trout", "count"), "3");
  EXPECT_EQ(Cell(run.out, "Perch", "percent"), "25");
  EXPECT_EQ(Cell(run.out, "(empty)", "count"), "1");
  EXPECT_EQ(Cell(run.out, "site", "n"), "");  // not among the numeric columns
  EXPECT_TRUE(run.err.empty()) << run.err;

  // Decimal comma with its semicolon separator.
  const auto comma = Quvmath("stats --decimal-comma -", "x;y\n1,5;2\n2,5;4\n");
  ASSERT_EQ(comma.status, 0) << comma.err;
  EXPECT_EQ(Cell(comma.out, "x", "mean"), "2");
  EXPECT_EQ(Cell(comma.out, "y", "max"), "4");
}

TEST(StatsCommand, CSVTextsAmongNumbersAreNamedAndFailUnlessLenient) {
  const std::string csv = "x,y\n1,2\n2,oops\n3\n";
  const auto run = Quvmath("stats --csv -", csv);
  EXPECT_EQ(run.status, 1);
  EXPECT_NE(run.err.find("standard input:3: warning: 1 text where numbers were expected"),
            std::string::npos)
      << run.err;
  EXPECT_NE(run.err.find("standard input:4: warning: 1 record has fewer fields"), std::string::npos)
      << run.err;
  EXPECT_EQ(Cell(run.out, "y", "n"), "1");
  EXPECT_EQ(Quvmath("stats --csv --lenient -", csv).status, 0);
  const auto bad = Quvmath("stats --csv -", "x\n\"open\n");
  EXPECT_EQ(bad.status, 1);
  EXPECT_NE(bad.err.find("standard input:2: a quoted field is not closed"), std::string::npos)
      << bad.err;
}

}  // namespace
