#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "quv/statis/statis.h"
#include "reference_table.h"

namespace quv {
namespace {

using test::ReadReferenceTable;
using test::RelErr;

constexpr double kValueTol = 1e-10;     // distribution functions and densities
constexpr double kQuantileTol = 1e-10;  // quantiles (the guarantee is 1e-8)
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

// Compares relatively where the reference value is a finite number above 1e-300 (the table
// cannot resolve smaller ones).
void ExpectClose(double actual, double expected, double tol, const std::string& where) {
  if (!(std::isfinite(expected) && expected > 1e-300)) return;
  EXPECT_LT(RelErr(actual, expected), tol) << where << ": " << actual << " vs " << expected;
}

std::string Where(const std::vector<double>& row) {
  std::string s;
  for (double v : row)
    s += std::to_string(v) + " ";
  return s;
}

TEST(Chi2Distri, MatchesReferenceTable) {
  const auto rows = ReadReferenceTable("statis_chi2.txt");
  ASSERT_GT(rows.size(), 60u);
  for (const auto& r : rows) {
    const auto df = static_cast<std::int32_t>(r[0]);
    ExpectClose(chi2DistriIntegral(r[1], df), r[2], kValueTol, Where(r));
    ExpectClose(Chi2DistriDensity(r[1], df), r[3], kValueTol, Where(r));
  }
}

TEST(Chi2Distri, QuantilesMatchReferenceTable) {
  const auto rows = ReadReferenceTable("statis_chi2_quantile.txt");
  ASSERT_GT(rows.size(), 60u);
  for (const auto& r : rows) {
    const auto df = static_cast<std::int32_t>(r[0]);
    ExpectClose(chi2DistriQuantile(r[1], df), r[2], kQuantileTol, Where(r));
  }
}

TEST(TDistri, MatchesReferenceTable) {
  const auto rows = ReadReferenceTable("statis_t.txt");
  ASSERT_GT(rows.size(), 100u);
  for (const auto& r : rows) {
    const auto df = static_cast<std::int32_t>(r[0]);
    ExpectClose(tDistriIntegral(r[1], df), r[2], kValueTol, Where(r));
    ExpectClose(tDistriDensity(r[1], df), r[3], kValueTol, Where(r));
  }
}

TEST(TDistri, QuantilesMatchReferenceTable) {
  const auto rows = ReadReferenceTable("statis_t_quantile.txt");
  ASSERT_GT(rows.size(), 90u);
  for (const auto& r : rows) {
    const auto df = static_cast<std::int32_t>(r[0]);
    ExpectClose(tDistriQuantile(r[1], df), r[2], kQuantileTol, Where(r));
  }
}

TEST(FDistri, MatchesReferenceTable) {
  const auto rows = ReadReferenceTable("statis_f.txt");
  ASSERT_GT(rows.size(), 60u);
  for (const auto& r : rows) {
    const auto m = static_cast<std::int32_t>(r[0]);
    const auto n = static_cast<std::int32_t>(r[1]);
    ExpectClose(FDistriIntegral(r[2], m, n), r[3], kValueTol, Where(r));
    ExpectClose(FDistriDensity(r[2], m, n), r[4], kValueTol, Where(r));
  }
}

TEST(FDistri, QuantilesMatchReferenceTable) {
  const auto rows = ReadReferenceTable("statis_f_quantile.txt");
  ASSERT_GT(rows.size(), 60u);
  for (const auto& r : rows) {
    const auto m = static_cast<std::int32_t>(r[0]);
    const auto n = static_cast<std::int32_t>(r[1]);
    ExpectClose(FDistriQuantile(r[2], m, n), r[3], kQuantileTol, Where(r));
  }
}

TEST(ContinuousDistri, QuantileOfIntegralRoundTrips) {
  for (std::int32_t df : {1, 2, 7, 40, 1000, 1000000}) {
    for (double p : {1e-300, 1e-12, 0.01, 0.3, 0.5, 0.8, 0.999, 1 - 1e-12, 1 - 1e-16}) {
      const double c = chi2DistriQuantile(p, df);
      if (c > 1e-300 && p <= 0.99) {
        EXPECT_LT(RelErr(chi2DistriIntegral(c, df), p), 1e-10) << df << " " << p;
      }
      const double t = tDistriQuantile(p, df);
      if (p <= 0.5 && std::isfinite(t)) {
        EXPECT_LT(RelErr(tDistriIntegral(t, df), p), 1e-10) << df << " " << p;
      }
      EXPECT_EQ(t > 0, p > 0.5) << df << " " << p;
      const double f = FDistriQuantile(p, df, 12);
      if (f > 1e-300 && p <= 0.99) {
        EXPECT_LT(RelErr(FDistriIntegral(f, df, 12), p), 1e-10) << df << " " << p;
      }
    }
  }
  // 1 - 1e-16 rounds to 1 - 2^-53: the upper tails are 1.1e-16.
  EXPECT_NEAR(tDistriQuantile(1 - 1e-16, 1), 1 / (M_PI * 1.1102230246251565e-16), 1e3);
  EXPECT_NEAR(chi2DistriQuantile(1 - 1e-16, 2), -2 * std::log(1.1102230246251565e-16), 1e-12);
  // Closed forms: chi-square with 2 degrees is exponential, t with 1 is Cauchy.
  EXPECT_NEAR(chi2DistriQuantile(1e-300, 2), 2e-300, 1e-312);
  EXPECT_NEAR(tDistriQuantile(1e-300, 1), -1 / (M_PI * 1e-300), 1e288);
  EXPECT_EQ(chi2DistriQuantile(1e-300, 1), 0);  // the true value, 1.6e-600, underflows
}

TEST(ContinuousDistri, IntegralOfQuantileRoundTrips) {
  for (std::int32_t df : {1, 3, 30, 100000}) {
    for (double x : {0.05, 0.7, 2.0, 9.0}) {
      const double c = chi2DistriIntegral(x * df, df);
      if (c > 1e-300 && c < 0.99) {
        EXPECT_LT(RelErr(chi2DistriQuantile(c, df), x * df), 1e-9) << df << " " << x;
      }
      const double t = tDistriIntegral(-x, df);
      EXPECT_LT(RelErr(tDistriQuantile(t, df), -x), 1e-9) << df << " " << x;
      const double f = FDistriIntegral(x, df, 7);
      if (f < 0.99) {
        EXPECT_LT(RelErr(FDistriQuantile(f, df, 7), x), 1e-9) << df << " " << x;
      }
    }
  }
}

TEST(ContinuousDistri, MarkersAndNaN) {
  for (double p : {0.0, 1.0, -0.5, 2.0, kNaN}) {
    EXPECT_EQ(chi2DistriQuantile(p, 5), 0) << p;
    EXPECT_EQ(tDistriQuantile(p, 5), 0) << p;
    EXPECT_EQ(FDistriQuantile(p, 5, 3), 0) << p;
  }
  EXPECT_EQ(chi2DistriQuantile(0.5, 0), 0);
  EXPECT_EQ(tDistriQuantile(0.9, -1), 0);
  EXPECT_EQ(FDistriQuantile(0.5, 3, 0), 0);
  EXPECT_EQ(chi2DistriIntegral(3, 0), 0);
  EXPECT_EQ(Chi2DistriDensity(3, 0), 0);
  EXPECT_EQ(tDistriIntegral(3, 0), 0);
  EXPECT_EQ(tDistriDensity(3, 0), 0);
  EXPECT_EQ(FDistriIntegral(3, 0, 4), 0);
  EXPECT_EQ(FDistriDensity(3, 4, 0), 0);
  EXPECT_TRUE(std::isnan(chi2DistriIntegral(kNaN, 3)));
  EXPECT_TRUE(std::isnan(Chi2DistriDensity(kNaN, 3)));
  EXPECT_TRUE(std::isnan(tDistriIntegral(kNaN, 3)));
  EXPECT_TRUE(std::isnan(tDistriDensity(kNaN, 3)));
  EXPECT_TRUE(std::isnan(FDistriIntegral(kNaN, 3, 4)));
  EXPECT_TRUE(std::isnan(FDistriDensity(kNaN, 3, 4)));
  // Edges of the support.
  const double inf = std::numeric_limits<double>::infinity();
  EXPECT_EQ(chi2DistriIntegral(-1, 3), 0);
  EXPECT_EQ(chi2DistriIntegral(inf, 3), 1);
  EXPECT_EQ(Chi2DistriDensity(-1, 3), 0);
  EXPECT_EQ(Chi2DistriDensity(0, 2), 0.5);
  EXPECT_EQ(Chi2DistriDensity(0, 1), inf);
  EXPECT_EQ(Chi2DistriDensity(0, 3), 0);
  EXPECT_EQ(tDistriIntegral(-inf, 3), 0);
  EXPECT_EQ(tDistriIntegral(inf, 3), 1);
  EXPECT_EQ(tDistriIntegral(0, 3), 0.5);
  EXPECT_EQ(tDistriQuantile(0.5, 3), 0);
  EXPECT_EQ(FDistriIntegral(0, 3, 4), 0);
  EXPECT_EQ(FDistriIntegral(inf, 3, 4), 1);
  EXPECT_EQ(FDistriDensity(0, 2, 4), 1);
  EXPECT_EQ(FDistriDensity(0, 1, 4), inf);
  EXPECT_EQ(FDistriDensity(0, 3, 4), 0);
}

}  // namespace
}  // namespace quv
