// The accurate upper tails of the chi-square, t, F, binomial and Mann-Whitney distributions
// and the accurate normal tails and quantile, against mpmath references (statis_tails.txt,
// statis_normal_tails.txt).
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <fstream>
#include <limits>
#include <sstream>
#include <string>
#include <vector>

#include "quv/statis/statis.h"
#include "reference_table.h"

namespace quv {
namespace {

using test::RelErr;

struct TRow {
  std::string kind;
  std::vector<double> v;  // the parameters, then the reference value last
};

std::vector<TRow> ReadKindTable(const std::string& name) {
  std::ifstream in(std::string(QUV_TEST_DATA_DIR) + "/" + name);
  std::vector<TRow> rows;
  std::string line;
  while (std::getline(in, line)) {
    if (line.empty() || line[0] == '#') continue;
    std::istringstream fields(line);
    TRow r;
    fields >> r.kind;
    std::string f;
    while (fields >> f)
      r.v.push_back(std::stod(f));
    rows.push_back(r);
  }
  return rows;
}

std::int32_t I(double v) {
  return static_cast<std::int32_t>(v);
}

TEST(UpperTails, MatchReferenceToFullRelativeAccuracy) {
  const std::vector<TRow> rows = ReadKindTable("statis_tails.txt");
  ASSERT_EQ(rows.size(), 34u);
  for (const TRow& r : rows) {
    const auto& v = r.v;
    double got = std::numeric_limits<double>::quiet_NaN();
    if (r.kind == "chi2") got = chi2DistriUpperTail(v[1], I(v[0]));
    if (r.kind == "t") got = tDistriUpperTail(v[1], I(v[0]));
    if (r.kind == "f") got = FDistriUpperTail(v[2], I(v[0]), I(v[1]));
    if (r.kind == "binom") got = BinomDistriUpperTail(I(v[2]), v[1], I(v[0]));
    if (r.kind == "u") got = UDistriUpperTail(I(v[0]), I(v[1]), I(v[2]));
    EXPECT_LT(RelErr(got, v.back()), 1e-13)
        << r.kind << " " << v[0] << " " << v[1] << ": " << got << " vs " << v.back();
  }
  // What 1 - P(X <= x) makes of the first case: every digit lost.
  EXPECT_EQ(1 - chi2DistriIntegral(100, 3), 0.0);
}

TEST(UpperTails, EdgesAndMarkers) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const double inf = std::numeric_limits<double>::infinity();
  struct Case {
    const char* what;
    double got, expected;
  };
  const Case cases[] = {
      {"chi2 x <= 0", chi2DistriUpperTail(-1, 3), 1},
      {"chi2 inf", chi2DistriUpperTail(inf, 3), 0},
      {"chi2 df 0", chi2DistriUpperTail(1, 0), 0},
      {"t 0", tDistriUpperTail(0, 7), 0.5},
      {"t -inf", tDistriUpperTail(-inf, 7), 1},
      {"t symmetric", tDistriUpperTail(-2.5, 4), tDistriIntegral(2.5, 4)},
      {"f x <= 0", FDistriUpperTail(0, 2, 3), 1},
      {"f df 0", FDistriUpperTail(1, 2, 0), 0},
      {"binom k < 0", BinomDistriUpperTail(-1, 0.3, 10), 1},
      {"binom k >= n", BinomDistriUpperTail(10, 0.3, 10), 0},
      {"binom p 1", BinomDistriUpperTail(9, 1.0, 10), 1},
      {"binom p 0", BinomDistriUpperTail(0, 0.0, 10), 0},
      {"binom bad p", BinomDistriUpperTail(3, 1.5, 10), 0},
      {"u u < 0", UDistriUpperTail(3, 4, -1), 1},
      {"u u >= mn", UDistriUpperTail(3, 4, 12), 0},
      {"u n1 0", UDistriUpperTail(0, 4, 1), 0},
      {"u sum", UDistriUpperTail(6, 7, 20) + UDistriIntegral(6, 7, 20), 1},
  };
  for (const Case& c : cases)
    EXPECT_NEAR(c.got, c.expected, 1e-15) << c.what;
  EXPECT_TRUE(std::isnan(chi2DistriUpperTail(nan, 3)));
  EXPECT_TRUE(std::isnan(tDistriUpperTail(nan, 3)));
  EXPECT_TRUE(std::isnan(FDistriUpperTail(nan, 3, 4)));
}

TEST(NormalTails, TailsAndQuantileMatchReference) {
  const std::vector<TRow> rows = ReadKindTable("statis_normal_tails.txt");
  ASSERT_EQ(rows.size(), 62u);
  for (const TRow& r : rows) {
    const double x = r.v[0];
    const double expected = r.v[1];
    if (r.kind == "lower" || r.kind == "upper") {
      const double got = r.kind == "lower" ? nDistriLowerTail(x) : nDistriUpperTail(x);
      // Below the normal doubles the result keeps only the digits a subnormal holds.
      const double tol = expected < 1e-300 ? 1e-6 : 1e-15;
      EXPECT_LT(RelErr(got, expected), tol) << r.kind << " " << x << ": " << got;
    } else {
      EXPECT_LT(RelErr(nDistriLowerTailQuantile(x), expected), 1e-14) << "p = " << x;
      EXPECT_LT(RelErr(nDistriUpperTailQuantile(x), -expected), 1e-14) << "q = " << x;
    }
  }
  // The fixed formulas, for comparison: 4 % off at -9, and the quantile stops near -33.3.
  EXPECT_GT(RelErr(nDistriIntegral(-9), nDistriLowerTail(-9)), 0.01);
  EXPECT_GT(std::fabs(nDistriQuantile(1e-300) - nDistriLowerTailQuantile(1e-300)), 1.0);
}

TEST(NormalTails, Edges) {
  const double inf = std::numeric_limits<double>::infinity();
  EXPECT_EQ(nDistriLowerTail(-inf), 0.0);
  EXPECT_EQ(nDistriLowerTail(inf), 1.0);
  EXPECT_EQ(nDistriUpperTail(-inf), 1.0);
  EXPECT_EQ(nDistriLowerTail(0), 0.5);
  EXPECT_EQ(nDistriLowerTailQuantile(0.5), 0.0);
  EXPECT_EQ(nDistriLowerTailQuantile(0), -inf);
  EXPECT_EQ(nDistriLowerTailQuantile(1), inf);
  EXPECT_EQ(nDistriUpperTailQuantile(0), inf);
  EXPECT_TRUE(std::isnan(nDistriLowerTailQuantile(-0.1)));
  EXPECT_TRUE(std::isnan(nDistriLowerTailQuantile(std::nan(""))));
  EXPECT_TRUE(std::isnan(nDistriLowerTail(std::nan(""))));
  // The smallest subnormal still has a finite quantile.
  const double tiny = std::numeric_limits<double>::denorm_min();
  EXPECT_NEAR(nDistriLowerTailQuantile(tiny), -38.4674, 1e-4);
  // Round trips over the whole range. Rounding x to a double moves Phi(x) by about
  // x^2 times the rounding error of x: that bounds what a round trip can keep.
  for (double p = 1e-300; p < 0.5; p *= 1e7) {
    const double x = nDistriLowerTailQuantile(p);
    EXPECT_LT(RelErr(nDistriLowerTail(x), p), 1e-15 + x * x * 2.3e-16) << p;
  }
}

}  // namespace
}  // namespace quv
