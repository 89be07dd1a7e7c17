#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <tuple>

#include "quv/statis/statis.h"
#include "reference_table.h"

namespace quv {
namespace {

using test::MessageOf;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

TEST(DeanDixonCriticalValues, BlocksAndMarkers) {
  // The first and last entries of each block of the table, and the markers around it.
  const std::tuple<std::int32_t, int, double> kCases[] = {
      {3, Dot001, 0.999},   {7, Dot500, 0.184},  {8, Dot001, 0.799},  {10, Dot050, 0.477},
      {11, Dot001, 0.77},   {13, Dot500, 0.269}, {14, Dot001, 0.732}, {60, Dot050, 0.294},
      {100, Dot500, 0.111}, {101, Dot050, -1},   {2, Dot050, -1},     {50, 9, -1}};
  for (const auto& [n, level, value] : kCases)
    EXPECT_EQ(DeanDixonCriticalValues(n, static_cast<TSignifLevelEx>(level)), value) << n << level;
}

TEST(DeanDixonTest, RatiosSuspectsAndErrors) {
  const TDoubleArray twelve = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 30};
  const struct {
    TDoubleArray data;
    TSignifLevelEx level;
    bool outlier;
    double statistic, suspect;
  } kCases[] = {
      // n = 5: r10 at the high end, (100 - 4)/(100 - 1).
      {{4, 100, 2, 1, 3}, Dot050, true, 96.0 / 99, 100},
      // n = 9: r11 at the low end, (x2 - x1)/(x(n-1) - x1) = 9/15.
      {{10, 11, 12, 13, 14, 15, 16, 1, 17}, Dot050, true, 9.0 / 15, 1},
      // n = 12: r21 at the high end, (xn - x(n-2))/(xn - x2) = 20/28, above 0.546 at 5 % but
      // below 0.739 at 0.1 %.
      {twelve, Dot050, true, 20.0 / 28, 30},
      {twelve, Dot001, false, 20.0 / 28, 30},
      // n = 16: r22 at the low end, (x3 - x1)/(x(n-2) - x1) = 13/24 above 0.505.
      {{-10, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16}, Dot050, true, 13.0 / 24, -10},
      // A tie between the ends suspects the low end; equal data give zero denominators.
      {{1, 2, 3}, Dot050, false, 0.5, 1},
      {TDoubleArray(20, 3.0), Dot001, false, 0, 3},
  };
  for (const auto& c : kCases) {
    double stat = -1;
    double suspect = -1;
    EXPECT_EQ(DeanDixonTest(c.data, c.level, stat, suspect), c.outlier) << c.data.size();
    EXPECT_DOUBLE_EQ(stat, c.statistic) << c.data.size();
    EXPECT_EQ(suspect, c.suspect) << c.data.size();
  }
  // NaN data neither crash nor count as an outlier.
  double stat = 7;
  EXPECT_FALSE(DeanDixonTest({1, kNaN, 2, 3, 4, kNaN, 5}, Dot050, stat));
  // Refused sizes leave the statistic alone.
  stat = 7;
  EXPECT_EQ(MessageOf([&] { DeanDixonTest(TDoubleArray(2, 1.0), Dot050, stat); }),
            "DeanDixonTest: number of data points is too low");
  EXPECT_EQ(MessageOf([&] { DeanDixonTest(TDoubleArray(101, 1.0), Dot050, stat); }),
            "DeanDixonTest: number of data points is too high");
  EXPECT_EQ(stat, 7);
  EXPECT_EQ(MessageOf([&] { DeanDixonTest(TDoubleArray(100, 1.0), Dot050, stat); }),
            test::kNothingRaised);
}

TEST(GrubbsCriticalValues, AgainstPublishedTable) {
  // Grubbs (1969) / ASTM E178 at 5 %: two-sided n = 3, 10, 20; one-sided n = 10.
  const std::tuple<std::int32_t, bool, double> kTable[] = {
      {3, true, 1.155}, {10, true, 2.290}, {20, true, 2.709}, {10, false, 2.176}};
  for (const auto& [n, twoSided, value] : kTable)
    EXPECT_NEAR(GrubbsCriticalValues(n, 0.05, twoSided), value, 1e-3) << n;
  for (double alpha : {0.0, 1.0, kNaN})
    EXPECT_EQ(GrubbsCriticalValues(10, alpha, true), -1) << alpha;
  EXPECT_EQ(GrubbsCriticalValues(2, 0.05, true), -1);
}

TEST(ShapiroWilkIntegral, AgreesWithRoystonReference) {
  const auto rows = test::ReadReferenceTable("statis_shapiro.txt");
  ASSERT_GT(rows.size(), 25u);
  for (const auto& r : rows) {
    const auto n = static_cast<std::int32_t>(r[0]);
    // The reference ran in single precision: W carries an error of up to 6e-8, which moves
    // ln(1 - W), and so the normal deviate, by up to 6e-8/(1 - W).
    const double tol = 1e-6 + 1.5e-7 / (1 - r[1]);
    EXPECT_NEAR(ShapiroWilkIntegral(r[1], n, 0), r[2], tol) << n << " " << r[1];
    EXPECT_NEAR(ShapiroWilkIntegral(r[1], n, 1), 1 - r[2], tol) << n << " " << r[1];
  }
  EXPECT_EQ(ShapiroWilkIntegral(0.9, 2, 0), -1);
  EXPECT_EQ(ShapiroWilkIntegral(0.9, 5001, 0), -1);
  EXPECT_EQ(ShapiroWilkIntegral(1.0, 30, 0), 1);
  EXPECT_EQ(ShapiroWilkIntegral(0.0, 30, 0), 0);
  EXPECT_TRUE(std::isnan(ShapiroWilkIntegral(kNaN, 30, 0)));
  EXPECT_NEAR(ShapiroWilkIntegral(0.75, 3, 0), 0, 1e-15);
}

}  // namespace
}  // namespace quv
