#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <string>

#include "quv/base/errors.h"
#include "quv/statis/statis.h"
#include "reference_table.h"

namespace quv {
namespace {

using test::ReadReferenceTable;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

TEST(DeanDixonCriticalValues, BlocksAndMarkers) {
  EXPECT_EQ(DeanDixonCriticalValues(3, Dot001), 0.999);
  EXPECT_EQ(DeanDixonCriticalValues(7, Dot500), 0.184);
  EXPECT_EQ(DeanDixonCriticalValues(8, Dot001), 0.799);
  EXPECT_EQ(DeanDixonCriticalValues(10, Dot050), 0.477);
  EXPECT_EQ(DeanDixonCriticalValues(11, Dot001), 0.77);
  EXPECT_EQ(DeanDixonCriticalValues(13, Dot500), 0.269);
  EXPECT_EQ(DeanDixonCriticalValues(14, Dot001), 0.732);
  EXPECT_EQ(DeanDixonCriticalValues(60, Dot050), 0.294);
  EXPECT_EQ(DeanDixonCriticalValues(100, Dot500), 0.111);
  EXPECT_EQ(DeanDixonCriticalValues(101, Dot050), -1);
  EXPECT_EQ(DeanDixonCriticalValues(2, Dot050), -1);
  EXPECT_EQ(DeanDixonCriticalValues(50, static_cast<TSignifLevelEx>(9)), -1);
}

std::string DixonMessage(std::size_t n) {
  double stat = 7;
  try {
    DeanDixonTest(TDoubleArray(n, 1.0), Dot050, stat);
  } catch (const EQUVStatisError& e) {
    return std::string(e.what()) + (stat == 7 ? "" : " (changed)");
  }
  return "no error";
}

TEST(DeanDixonTest, RatiosSuspectsAndErrors) {
  double stat = 0;
  double suspect = 0;
  // n = 5: r10 at the high end, (100 - 4)/(100 - 1).
  EXPECT_TRUE(DeanDixonTest({4, 100, 2, 1, 3}, Dot050, stat, suspect));
  EXPECT_DOUBLE_EQ(stat, 96.0 / 99);
  EXPECT_EQ(suspect, 100);
  // n = 9: r11 at the low end, (x2 - x1)/(x(n-1) - x1) = 9/15.
  EXPECT_TRUE(DeanDixonTest({10, 11, 12, 13, 14, 15, 16, 1, 17}, Dot050, stat, suspect));
  EXPECT_DOUBLE_EQ(stat, 9.0 / 15);
  EXPECT_EQ(suspect, 1);
  // n = 12: r21 at the high end, (xn - x(n-2))/(xn - x2) = (30 - 10)/(30 - 2) above 0.546,
  // but below 0.739 at 0.1 %.
  EXPECT_TRUE(DeanDixonTest({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 30}, Dot050, stat));
  EXPECT_DOUBLE_EQ(stat, 20.0 / 28);
  EXPECT_FALSE(DeanDixonTest({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 30}, Dot001, stat));
  // n = 16: r22 at the low end, (x3 - x1)/(x(n-2) - x1) = 13/24 above 0.505.
  EXPECT_TRUE(DeanDixonTest({-10, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16}, Dot050, stat,
                            suspect));
  EXPECT_DOUBLE_EQ(stat, 13.0 / 24);
  EXPECT_EQ(suspect, -10);
  // A tie between the ends suspects the low end; equal data give zero denominators.
  EXPECT_FALSE(DeanDixonTest({1, 2, 3}, Dot050, stat, suspect));
  EXPECT_DOUBLE_EQ(stat, 0.5);
  EXPECT_EQ(suspect, 1);
  EXPECT_FALSE(DeanDixonTest(TDoubleArray(20, 3.0), Dot001, stat));
  EXPECT_EQ(stat, 0);
  // NaN data neither crash nor count as an outlier.
  EXPECT_FALSE(DeanDixonTest({1, kNaN, 2, 3, 4, kNaN, 5}, Dot050, stat));
  EXPECT_EQ(DixonMessage(2), "DeanDixonTest: number of data points is too low");
  EXPECT_EQ(DixonMessage(101), "DeanDixonTest: number of data points is too high");
  EXPECT_EQ(DixonMessage(100), "no error");
}

TEST(GrubbsCriticalValues, AgainstPublishedTable) {
  // Grubbs (1969) / ASTM E178: two-sided 5 % n = 3: 1.155, n = 10: 2.290, n = 20: 2.709;
  // one-sided 5 % n = 10: 2.176.
  EXPECT_NEAR(GrubbsCriticalValues(3, 0.05, true), 1.155, 1e-3);
  EXPECT_NEAR(GrubbsCriticalValues(10, 0.05, true), 2.290, 1e-3);
  EXPECT_NEAR(GrubbsCriticalValues(20, 0.05, true), 2.709, 1e-3);
  EXPECT_NEAR(GrubbsCriticalValues(10, 0.05, false), 2.176, 1e-3);
  EXPECT_EQ(GrubbsCriticalValues(2, 0.05, true), -1);
  EXPECT_EQ(GrubbsCriticalValues(10, 0, true), -1);
  EXPECT_EQ(GrubbsCriticalValues(10, kNaN, true), -1);
}

TEST(ShapiroWilkIntegral, AgreesWithRoystonReference) {
  const auto rows = ReadReferenceTable("statis_shapiro.txt");
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
