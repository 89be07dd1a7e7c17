#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <tuple>

#include "quv/statis/statis.h"
#include "reference_table.h"

namespace quv {
namespace {

using test::MessageOf;
using test::ReadReferenceTable;
using test::RelErr;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

TEST(HyperGeoDistriDensity, MessagesInOrderOfChecks) {
  // Each case also breaks every later check, so that the order shows.
  const std::string head = "HyperGeoDistriDensity: ";
  const std::string p = "probability p must be between 0.0 and 1.0";
  const std::tuple<double, std::int32_t, std::int32_t, std::string> kCases[] = {
      {1.5, 0, 5, p},
      {kNaN, 0, 0, p},
      {-0.1, 10, 5, p},
      {0.5, 0, 5, "npop must be greater than 0"},
      {0.5, 10, 11, "nsample must not be greater than npop"},
      {0.5, 10, 0, "nsample must not be less than 1"},
      {0.5, 10, -3, "nsample must not be less than 1"}};
  for (const auto& [prob, npop, nsample, text] : kCases) {
    EXPECT_EQ(MessageOf([&] { HyperGeoDistriDensity(prob, npop, nsample, 1); }), head + text)
        << prob << " " << npop << " " << nsample;
  }
}

TEST(HyperGeoDistriDensity, ProbabilitiesAndInfeasibleCounts) {
  // K = 5 successes in 10: C(5,2) C(5,2) / C(10,4) = 100/210.
  EXPECT_NEAR(HyperGeoDistriDensity(0.5, 10, 4, 2), 100.0 / 210, 1e-8);
  // K = round(20 * 0.3) = 6: C(6,1) C(14,4) / C(20,5) = 6 * 1001 / 15504.
  EXPECT_NEAR(HyperGeoDistriDensity(0.3, 20, 5, 1), 6.0 * 1001 / 15504, 1e-8);
  double sum = 0;
  for (int x = 0; x <= 5; ++x)
    sum += HyperGeoDistriDensity(0.3, 20, 5, x);
  EXPECT_NEAR(sum, 1, 1e-8);
  // 5 * 0.5 = 2.5 rounds to the even 2: C(2,2) C(3,0) / C(5,2).
  EXPECT_NEAR(HyperGeoDistriDensity(0.5, 5, 2, 2), 0.1, 1e-9);
  // More than drawn, negative, more failures than exist (8), more successes than exist (1).
  EXPECT_EQ(HyperGeoDistriDensity(0.5, 10, 4, 5), 0);
  EXPECT_EQ(HyperGeoDistriDensity(0.5, 10, 4, -1), 0);
  EXPECT_EQ(HyperGeoDistriDensity(0.2, 10, 9, 0), 0);
  EXPECT_EQ(HyperGeoDistriDensity(0.1, 10, 4, 2), 0);
}

TEST(BinomDistri, ReferenceTableSumsMarkersAndEdges) {
  const auto rows = ReadReferenceTable("statis_binom.txt");
  ASSERT_GT(rows.size(), 100u);
  for (const auto& r : rows) {
    const auto n = static_cast<std::int32_t>(r[0]);
    const auto k = static_cast<std::int32_t>(r[2]);
    EXPECT_LT(RelErr(BinomDistriDensity(k, r[1], n), r[3]), 1e-10) << n << " " << r[1] << " " << k;
    EXPECT_LT(RelErr(BinomDistriIntegral(k, r[1], n), r[4]), 1e-10) << n << " " << r[1] << " " << k;
  }
  double sum = 0;
  for (int k = 0; k <= 12; ++k) {
    sum += BinomDistriDensity(k, 0.37, 30);
    EXPECT_NEAR(BinomDistriIntegral(k, 0.37, 30), sum, 1e-15) << k;
  }
  // (k, p, n, P(X = k) or NaN where not checked here, P(X <= k)).
  const std::tuple<std::int32_t, double, std::int32_t, double, double> kEdges[] = {
      {0, 0, 5, 1, 1},      {5, 1, 5, 1, 1},   {3, 0, 5, 0, 1},   {-1, 0.3, 5, 0, 0},
      {5, 0.3, 5, kNaN, 1}, {9, 0.3, 5, 0, 1}, {6, 0.3, 5, 0, 1}, {2, 1.5, 5, 0, 0},
      {2, kNaN, 5, 0, 0},   {2, 0.5, -5, 0, 0}};
  for (const auto& [k, p, n, density, integral] : kEdges) {
    if (!std::isnan(density)) {
      EXPECT_EQ(BinomDistriDensity(k, p, n), density) << k << " " << p << " " << n;
    }
    EXPECT_EQ(BinomDistriIntegral(k, p, n), integral) << k << " " << p << " " << n;
  }
}

TEST(BinomDistriQuantile, SmallestCountReachingAlpha) {
  for (std::int32_t n : {1, 10, 1000, 1000000}) {
    for (double p : {0.001, 0.3, 0.5, 0.99}) {
      for (double alpha : {1e-12, 0.05, 0.5, 0.95, 1 - 1e-12}) {
        double cum = -1;
        const std::int32_t k = BinomDistriQuantile(n, p, alpha, cum);
        ASSERT_GE(k, 0);
        ASSERT_LE(k, n);
        EXPECT_EQ(cum, BinomDistriIntegral(k, p, n));
        EXPECT_GE(cum, alpha);
        if (k > 0) {
          EXPECT_LT(BinomDistriIntegral(k - 1, p, n), alpha) << n << " " << p;
        }
      }
    }
  }
  double cum = 42;
  EXPECT_EQ(BinomDistriQuantile(10, 1.5, 0.5, cum), -1);
  EXPECT_EQ(BinomDistriQuantile(10, 0.5, kNaN, cum), -1);
  EXPECT_EQ(BinomDistriQuantile(-1, 0.5, 0.5, cum), -1);
  EXPECT_EQ(cum, 42);
  EXPECT_EQ(BinomDistriQuantile(10, 0.5, 1, cum), 10);
  EXPECT_EQ(cum, 1);
}

TEST(UDistri, MatchesExactReferenceTables) {
  const auto rows = ReadReferenceTable("statis_mwu.txt");
  const auto quantiles = ReadReferenceTable("statis_mwu_quantile.txt");
  ASSERT_GT(rows.size(), 40u);
  ASSERT_GT(quantiles.size(), 40u);
  for (const auto& r : rows) {
    const auto n1 = static_cast<std::int32_t>(r[0]);
    const auto n2 = static_cast<std::int32_t>(r[1]);
    const auto u = static_cast<std::int32_t>(r[2]);
    EXPECT_LT(RelErr(UDistriDensity(n1, n2, u), r[3]), 1e-12) << n1 << " " << n2 << " " << u;
    EXPECT_LT(RelErr(UDistriIntegral(n1, n2, u), r[4]), 1e-12) << n1 << " " << n2 << " " << u;
    // The distribution does not depend on which sample is called first.
    EXPECT_EQ(UDistriIntegral(n2, n1, u), UDistriIntegral(n1, n2, u));
  }
  for (const auto& r : quantiles) {
    const auto n1 = static_cast<std::int32_t>(r[0]);
    const auto n2 = static_cast<std::int32_t>(r[1]);
    EXPECT_EQ(UDistriQuantile(n1, n2, r[2]), r[3]) << n1 << " " << n2 << " " << r[2];
  }
}

TEST(UDistri, MarkersAndLargeSamples) {
  EXPECT_EQ(UDistriDensity(0, 5, 1), 0);
  EXPECT_EQ(UDistriDensity(3, 4, -1), 0);
  EXPECT_EQ(UDistriDensity(3, 4, 13), 0);
  EXPECT_EQ(UDistriIntegral(3, 4, -1), 0);
  EXPECT_EQ(UDistriIntegral(3, 4, 12), 1);
  EXPECT_EQ(UDistriIntegral(3, -4, 2), 0);
  for (double alpha : {1.5, -0.1, kNaN})
    EXPECT_EQ(UDistriQuantile(3, 4, alpha), -1) << alpha;
  EXPECT_EQ(UDistriQuantile(3, 0, 0.5), -1);
  // Beyond the exact range the normal approximation answers, quickly and sensibly.
  const std::int32_t big = 40000;
  EXPECT_NEAR(UDistriIntegral(big, big, 800000000), 0.5, 1e-6);
  const double sd = std::sqrt(1.6e9 * (8e4 + 1) / 12);
  EXPECT_NEAR(UDistriQuantile(big, big, 0.05), 8e8 - 1.6448536269514722 * sd, 2);
}

}  // namespace
}  // namespace quv
