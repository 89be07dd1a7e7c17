#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "quv/statis/statis.h"

namespace quv {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

// Phi by the library's erfc: an independent reference.
double Phi(double x) {
  return 0.5 * std::erfc(-x / std::sqrt(2.0));
}

TEST(NormalDistri, DensityAndIntegral) {
  EXPECT_DOUBLE_EQ(nDistriDensity(0), 0.3989422804014327);
  EXPECT_NEAR(nDistriDensity(1.5), std::exp(-1.125) / std::sqrt(2 * M_PI), 1e-16);
  EXPECT_EQ(nDistriIntegral(0), 0.5);
  for (double x : {-5.0, -2.0, -0.5, 0.1, 1.0, 1.96, 3.0})
    EXPECT_NEAR(nDistriIntegral(x), Phi(x), 1e-8 * Phi(x) + 1e-12) << x;
}

TEST(NormalDistri, QuantileMeetsItsCriterionAndEndsInFarTails) {
  for (double p : {1e-6, 0.001, 0.025, 0.2, 0.5, 0.8, 0.975, 0.999}) {
    const double z = nDistriQuantile(p);
    EXPECT_LT(std::fabs(nDistriIntegral(z) - p) / p, 1e-8) << p;
    EXPECT_NEAR(Phi(z), p, 2e-8 * p) << p;
  }
  EXPECT_NEAR(nDistriQuantile(0.975), 1.959963984540054, 1e-7);
  EXPECT_LT(std::fabs(nDistriQuantile(0.5)), 1e-7);
  for (double p : {0.0, 1.0, -0.5, kNaN})
    EXPECT_EQ(nDistriQuantile(p), 0) << p;
  // Below about 1e-9 Phi is too coarse for the criterion; the search ends when the bracket
  // cannot shrink. The results stay finite, on the right side, and close where Phi still has
  // digits.
  EXPECT_NEAR(nDistriQuantile(1e-12), -7.034484346, 1e-3);
  const double z300 = nDistriQuantile(1e-300);
  EXPECT_TRUE(std::isfinite(z300));
  EXPECT_LT(z300, -30);
  const double zHigh = nDistriQuantile(1 - 1e-16);
  EXPECT_GT(zHigh, 7.5);
  EXPECT_LT(zHigh, 9.0);
}

TEST(NormalDistri, ConfidenceIntervalAndWeibullDensity) {
  EXPECT_NEAR(ConfidenceInterval(0.05, 2, 16), 1.959963984540054 * 2 / 4, 1e-7);
  EXPECT_NEAR(ConfidenceInterval(0.01, 1, 1), 2.5758293035489, 1e-7);
  // Weibull shape 1 is the exponential density; shape 2 the Rayleigh density.
  EXPECT_NEAR(WeibullDensity(2, 1, 4), std::exp(-0.5) / 4, 1e-15);
  EXPECT_NEAR(WeibullDensity(1.5, 2, 1), 3 * std::exp(-2.25), 1e-15);
  EXPECT_EQ(WeibullDensity(0, 2, 1), 0);
  EXPECT_EQ(WeibullDensity(-1, 2, 1), 0);
  EXPECT_EQ(WeibullDensity(1, 2, 0), 0);
  EXPECT_EQ(WeibullDensity(kNaN, 2, 1), 0);
}

}  // namespace
}  // namespace quv
