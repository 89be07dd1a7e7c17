// TCurveFit: cubic splines, rank correlations, moments, order statistics and angle means,
// against scipy reference values (tests/data/curvefit_reference.txt).
#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "math2/curvefit_test_util.h"

namespace quv {
namespace {

using test::CurveFitReference;

TEST(CurveFitSpline, InterpolatingSplinesMatchTheReference) {
  const CurveFitReference& ref = CurveFitReference::Get();
  TCurveFit fit;
  ref.Enter("spline", fit);
  const auto& at = ref.Values("spline_at");
  const auto& natural = ref.Values("spline_natural");
  const auto& clamped = ref.Values("spline_clamped");
  for (std::size_t i = 0; i < at.size(); ++i)
    EXPECT_NEAR(fit.CubicSpline(at[i]), natural[i], 1e-13) << at[i];
  fit.SetNatural1(false);
  fit.SetNaturalN(false);
  fit.SetY1Dash(0.5);
  fit.SetYNDash(-1.0);
  for (std::size_t i = 0; i < at.size(); ++i)
    EXPECT_NEAR(fit.CubicSpline(at[i]), clamped[i], 1e-13) << at[i];
  // Adding a point makes the spline stale: it is rebuilt through the new knot.
  fit.EnterStatValue(7.0, 0.0);
  EXPECT_NEAR(fit.CubicSpline(7.0), 0.0, 1e-14);
}

TEST(CurveFitSpline, InterpolatesItsKnotsWithContinuousDerivatives) {
  TCurveFit fit;
  const double xs[] = {0.0, 0.7, 1.1, 2.0, 3.5, 4.0};
  for (const double x : xs)
    fit.EnterStatValue(x, std::sin(x));
  fit.SetNatural1(false);
  fit.SetY1Dash(1.0);
  for (const double x : xs)
    EXPECT_NEAR(fit.CubicSpline(x), std::sin(x), 1e-14) << x;
  const double h = 1e-4;
  for (std::size_t k = 1; k + 1 < std::size(xs); ++k) {
    const double x = xs[k];
    const double left = (fit.CubicSpline(x) - fit.CubicSpline(x - h)) / h;
    const double right = (fit.CubicSpline(x + h) - fit.CubicSpline(x)) / h;
    EXPECT_NEAR(left, right, 1e-3) << "first derivative at " << x;
    const double second_left =
        (fit.CubicSpline(x) - 2 * fit.CubicSpline(x - h) + fit.CubicSpline(x - 2 * h)) / (h * h);
    const double second_right =
        (fit.CubicSpline(x + 2 * h) - 2 * fit.CubicSpline(x + h) + fit.CubicSpline(x)) / (h * h);
    EXPECT_NEAR(second_left, second_right, 2e-3) << "second derivative at " << x;
  }
  // Prescribed slope at the first point, natural (zero curvature) at the last.
  EXPECT_NEAR((fit.CubicSpline(h) - fit.CubicSpline(0.0)) / h, 1.0, 1e-3);
  const double e = xs[5];
  EXPECT_NEAR(
      (fit.CubicSpline(e) - 2 * fit.CubicSpline(e - h) + fit.CubicSpline(e - 2 * h)) / (h * h), 0.0,
      1e-3);
  // Degenerate stores.
  fit.Init();
  EXPECT_EQ(fit.CubicSpline(1.0), 0.0);
  fit.EnterStatValue(2.0, 3.0);
  fit.EnterStatValue(2.0, 5.0);
  EXPECT_EQ(fit.CubicSpline(10.0), 4.0);  // one distinct x: the mean y
  fit.EnterStatValue(4.0, 6.0);
  EXPECT_NEAR(fit.CubicSpline(3.0), 5.0, 1e-15);  // two knots, natural: the chord
}

TEST(CurveFitSpline, SmoothingSplineMatchesThePenalisedLeastSquares) {
  const CurveFitReference& ref = CurveFitReference::Get();
  TCurveFit fit;
  ref.Enter("spline", fit);
  const auto& at = ref.Values("spline_at");
  double y = 0;
  bool ok = false;
  for (const double factor : {0.3, 0.9}) {
    fit.SetSplineSmoothing(factor);
    const auto& expected = ref.Values(factor == 0.3 ? "spline_smooth_0.3" : "spline_smooth_0.9");
    for (std::size_t i = 0; i < expected.size(); ++i) {
      fit.SmoothedSpline(at[i + 1], y, ok);
      ASSERT_TRUE(ok);
      EXPECT_NEAR(y, expected[i], 1e-9) << factor << " at " << at[i + 1];
    }
  }
  // Factor 0 interpolates; factor 1 is the least-squares line through all points.
  fit.SetSplineSmoothing(0.0);
  for (const double x : at) {
    fit.SmoothedSpline(x, y, ok);
    EXPECT_NEAR(y, fit.CubicSpline(x), 1e-12) << x;
  }
  fit.SetSplineSmoothing(7.0);  // clamped to 1
  EXPECT_EQ(fit.SplineSmoothing(), 1.0);
  double k = 0, d = 0, q = 0;
  fit.CalcLinFit(k, d, q);
  fit.SmoothedSpline(2.2, y, ok);
  EXPECT_NEAR(y, d + k * 2.2, 1e-12);
  fit.Init();
  fit.EnterStatValue(1, 1);
  fit.EnterStatValue(2, 2);
  fit.SmoothedSpline(1.5, y, ok);
  EXPECT_FALSE(ok);
  EXPECT_EQ(y, 0.0);
}

TEST(CurveFitRanks, RankCorrelationsWithTiesMatchTheReference) {
  const CurveFitReference& ref = CurveFitReference::Get();
  TCurveFit fit;
  ref.Enter("ranks", fit);
  std::int64_t c = 0, d = 0, tx = 0, ty = 0, txy = 0;
  fit.BasicRankCounts(c, d, tx, ty, txy);
  const auto& counts = ref.Values("ranks_counts");
  EXPECT_EQ(c, static_cast<std::int64_t>(counts[0]));
  EXPECT_EQ(d, static_cast<std::int64_t>(counts[1]));
  EXPECT_EQ(tx, static_cast<std::int64_t>(counts[2]));
  EXPECT_EQ(ty, static_cast<std::int64_t>(counts[3]));
  EXPECT_EQ(txy, static_cast<std::int64_t>(counts[4]));
  double tau = 0, z = 0;
  ASSERT_TRUE(fit.KendallsTau(tau, z));
  EXPECT_NEAR(tau, ref.Values("ranks_kendall")[0], 1e-14);
  EXPECT_NEAR(z, ref.Values("ranks_kendall")[1], 1e-9);
  EXPECT_NEAR(fit.GetSpearman(), ref.Values("ranks_spearman")[0], 1e-14);
  EXPECT_NEAR(fit.GetKruskalGamma(), ref.Values("ranks_gamma")[0], 1e-15);
  // Reversing y reverses every sign.
  TCurveFit reversed;
  const auto& [x, y] = ref.data.at("ranks");
  for (std::size_t i = 0; i < x.size(); ++i)
    reversed.EnterStatValue(x[i], -y[i]);
  EXPECT_NEAR(reversed.GetSpearman(), -fit.GetSpearman(), 1e-15);
  EXPECT_NEAR(reversed.GetKruskalGamma(), -fit.GetKruskalGamma(), 1e-15);
}

TEST(CurveFitRanks, DegenerateSamples) {
  TCurveFit fit;
  double tau = 1, z = 1;
  EXPECT_FALSE(fit.KendallsTau(tau, z));
  EXPECT_EQ(tau, 0.0);
  EXPECT_EQ(fit.GetSpearman(), 0.0);
  EXPECT_EQ(fit.GetKruskalGamma(), 0.0);
  for (int i = 0; i < 4; ++i)
    fit.EnterStatValue(3.0, i);  // constant x
  EXPECT_FALSE(fit.KendallsTau(tau, z));
  EXPECT_EQ(fit.GetSpearman(), 0.0);
  EXPECT_EQ(fit.GetKruskalGamma(), 0.0);
  fit.Init();
  for (int i = 0; i < 5; ++i)
    fit.EnterStatValue(i, i * i);  // perfectly monotone
  ASSERT_TRUE(fit.KendallsTau(tau, z));
  EXPECT_EQ(tau, 1.0);
  EXPECT_EQ(fit.GetSpearman(), 1.0);
  EXPECT_EQ(fit.GetKruskalGamma(), 1.0);
}

TEST(CurveFitStats, MomentsOrderStatisticsAndAngles) {
  const CurveFitReference& ref = CurveFitReference::Get();
  TCurveFit fit;
  EXPECT_EQ(fit.PercentileX(50), 0.0);
  EXPECT_EQ(fit.GetSkewnessX(), 0.0);
  EXPECT_EQ(fit.GetMeanXDegrees(), 0.0);
  ref.Enter("moments", fit);
  EXPECT_NEAR(fit.GetSkewnessX(), ref.Values("moments_skew")[0], 1e-12);
  EXPECT_NEAR(fit.GetSkewnessY(), ref.Values("moments_skew")[1], 1e-12);
  EXPECT_NEAR(fit.GetKurtosisX(), ref.Values("moments_kurt")[0], 1e-12);
  EXPECT_NEAR(fit.GetKurtosisY(), ref.Values("moments_kurt")[1], 1e-12);
  const double ps[] = {0, 10, 25, 50, 75, 90, 100};
  const auto& pv = ref.Values("moments_percentiles");
  for (std::size_t i = 0; i < std::size(ps); ++i)
    EXPECT_NEAR(fit.PercentileX(ps[i]), pv[i], 1e-14) << ps[i];
  double q1 = 0, q2 = 0, q3 = 0;
  fit.QuartilesX(q1, q2, q3);
  EXPECT_NEAR(q1, pv[2], 1e-14);
  EXPECT_NEAR(q2, pv[3], 1e-14);
  EXPECT_NEAR(q3, pv[4], 1e-14);
  fit.QuartilesY(q1, q2, q3);
  EXPECT_EQ(q2, fit.PercentileY(50));
  EXPECT_NEAR(fit.GetMeanXDegrees(), ref.Values("moments_circmean")[0], 1e-11);
  EXPECT_NEAR(fit.GetMeanYDegrees(), ref.Values("moments_circmean")[1], 1e-11);
  EXPECT_EQ(fit.CalcMeanDegrees(3), 0.0);
  fit.Init();
  fit.EnterStatValue(90, 0);
  fit.EnterStatValue(270, 0);
  EXPECT_EQ(fit.GetMeanXDegrees(), 0.0);  // opposite angles cancel
  fit.EnterStatValue(0, 350);
  const double rad = std::acos(-1.0) / 180.0;  // y = 0, 0, 350: just below 360, not near 117
  EXPECT_NEAR(fit.GetMeanYDegrees(),
              360.0 + std::atan2(-std::sin(10 * rad), 2 + std::cos(10 * rad)) / rad, 1e-12);
}

}  // namespace
}  // namespace quv
