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

constexpr double kTol = 1e-10;  // values, densities and quantiles (the guarantee is 1e-8)
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();

// The three families behind one signature; b is the second degree of freedom of F only.
using TDistFn = double (*)(double, std::int32_t, std::int32_t);
struct TFamily {
  const char* name;
  int dfColumns;
  TDistFn integral, density, quantile;
};
const TFamily kFamilies[] = {
    {"chi2", 1, [](double x, std::int32_t a, std::int32_t) { return chi2DistriIntegral(x, a); },
     [](double x, std::int32_t a, std::int32_t) { return Chi2DistriDensity(x, a); },
     [](double p, std::int32_t a, std::int32_t) { return chi2DistriQuantile(p, a); }},
    {"t", 1, [](double x, std::int32_t a, std::int32_t) { return tDistriIntegral(x, a); },
     [](double x, std::int32_t a, std::int32_t) { return tDistriDensity(x, a); },
     [](double p, std::int32_t a, std::int32_t) { return tDistriQuantile(p, a); }},
    {"f", 2, FDistriIntegral, FDistriDensity, FDistriQuantile},
};

// Compares relatively where the reference value is a finite number above 1e-300 (the table
// cannot resolve smaller ones).
void ExpectClose(double actual, double expected, const std::vector<double>& row) {
  if (!(std::isfinite(expected) && expected > 1e-300)) return;
  std::string where;
  for (double v : row)
    where += std::to_string(v) + " ";
  EXPECT_LT(RelErr(actual, expected), kTol) << where << ": " << actual << " vs " << expected;
}

TEST(ContinuousDistri, MatchReferenceTables) {
  for (const TFamily& f : kFamilies) {
    std::string stem = "statis_";
    stem += f.name;
    const int c = f.dfColumns;
    const auto values = ReadReferenceTable(stem + ".txt");
    const auto quantiles = ReadReferenceTable(stem + "_quantile.txt");
    ASSERT_GT(values.size(), 60u) << stem;
    ASSERT_GT(quantiles.size(), 60u) << stem;
    for (const auto& r : values) {
      const auto a = static_cast<std::int32_t>(r[0]);
      const auto b = static_cast<std::int32_t>(r[c - 1]);
      ExpectClose(f.integral(r[c], a, b), r[c + 1], r);
      ExpectClose(f.density(r[c], a, b), r[c + 2], r);
    }
    for (const auto& r : quantiles) {
      const auto a = static_cast<std::int32_t>(r[0]);
      const auto b = static_cast<std::int32_t>(r[c - 1]);
      ExpectClose(f.quantile(r[c], a, b), r[c + 1], r);
    }
  }
}

TEST(ContinuousDistri, QuantileAndIntegralRoundTrips) {
  for (const TFamily& f : kFamilies) {
    for (std::int32_t df : {1, 2, 7, 40, 1000, 1000000}) {
      for (double p : {1e-300, 1e-12, 0.01, 0.3, 0.5, 0.8, 0.999, 1 - 1e-12, 1 - 1e-16}) {
        const double q = f.quantile(p, df, 12);
        if (std::fabs(q) > 1e-300 && p <= 0.99) {
          EXPECT_LT(RelErr(f.integral(q, df, 12), p), kTol) << f.name << df << " " << p;
        }
      }
    }
  }
  for (std::int32_t df : {1, 2, 7, 40, 1000, 1000000}) {
    for (double p : {1e-300, 1e-12, 0.3, 0.8, 1 - 1e-16})
      EXPECT_EQ(tDistriQuantile(p, df) > 0, p > 0.5) << df << " " << p;
  }
  for (std::int32_t df : {1, 3, 30, 100000}) {
    for (double x : {0.05, 0.7, 2.0, 9.0}) {
      const double c = chi2DistriIntegral(x * df, df);
      if (c > 1e-300 && c < 0.99) {
        EXPECT_LT(RelErr(chi2DistriQuantile(c, df), x * df), 1e-9) << df << " " << x;
      }
      EXPECT_LT(RelErr(tDistriQuantile(tDistriIntegral(-x, df), df), -x), 1e-9) << df << " " << x;
      const double f = FDistriIntegral(x, df, 7);
      if (f < 0.99) {
        EXPECT_LT(RelErr(FDistriQuantile(f, df, 7), x), 1e-9) << df << " " << x;
      }
    }
  }
  // 1 - 1e-16 rounds to 1 - 2^-53: the upper tails are 1.1e-16. Closed forms: chi-square with
  // 2 degrees is exponential, t with 1 is Cauchy.
  EXPECT_NEAR(tDistriQuantile(1 - 1e-16, 1), 1 / (M_PI * 1.1102230246251565e-16), 1e3);
  EXPECT_NEAR(chi2DistriQuantile(1 - 1e-16, 2), -2 * std::log(1.1102230246251565e-16), 1e-12);
  EXPECT_NEAR(chi2DistriQuantile(1e-300, 2), 2e-300, 1e-312);
  EXPECT_NEAR(tDistriQuantile(1e-300, 1), -1 / (M_PI * 1e-300), 1e288);
  EXPECT_EQ(chi2DistriQuantile(1e-300, 1), 0);  // the true value, 1.6e-600, underflows
}

TEST(ContinuousDistri, MarkersNaNAndSupportEdges) {
  for (const TFamily& f : kFamilies) {
    for (double p : {0.0, 1.0, -0.5, 2.0, kNaN})
      EXPECT_EQ(f.quantile(p, 5, 3), 0) << f.name << p;
    for (std::int32_t bad : {0, -1}) {
      EXPECT_EQ(f.quantile(0.9, bad, 4), 0) << f.name;
      EXPECT_EQ(f.integral(3, bad, 4), 0) << f.name;
      EXPECT_EQ(f.density(3, bad, 4), 0) << f.name;
    }
    EXPECT_TRUE(std::isnan(f.integral(kNaN, 3, 4))) << f.name;
    EXPECT_TRUE(std::isnan(f.density(kNaN, 3, 4))) << f.name;
    EXPECT_EQ(f.integral(kInf, 3, 4), 1) << f.name;
  }
  EXPECT_EQ(FDistriQuantile(0.5, 3, 0), 0);
  EXPECT_EQ(FDistriIntegral(3, 4, 0), 0);
  EXPECT_EQ(FDistriDensity(3, 4, 0), 0);
  EXPECT_EQ(chi2DistriIntegral(-1, 3), 0);
  EXPECT_EQ(Chi2DistriDensity(-1, 3), 0);
  EXPECT_EQ(Chi2DistriDensity(0, 2), 0.5);
  EXPECT_EQ(Chi2DistriDensity(0, 1), kInf);
  EXPECT_EQ(Chi2DistriDensity(0, 3), 0);
  EXPECT_EQ(tDistriIntegral(-kInf, 3), 0);
  EXPECT_EQ(tDistriIntegral(0, 3), 0.5);
  EXPECT_EQ(tDistriQuantile(0.5, 3), 0);
  EXPECT_EQ(FDistriIntegral(0, 3, 4), 0);
  EXPECT_EQ(FDistriDensity(0, 2, 4), 1);
  EXPECT_EQ(FDistriDensity(0, 1, 4), kInf);
  EXPECT_EQ(FDistriDensity(0, 3, 4), 0);
}

}  // namespace
}  // namespace quv
