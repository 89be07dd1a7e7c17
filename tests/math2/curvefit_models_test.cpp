// TCurveFit: the linearised fits, the polynomial fits, ANOVA and prediction against
// independent least-squares computations (tests/data/curvefit_reference.txt).
#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "common/raised_message.h"
#include "math2/curvefit_test_util.h"

namespace quv {
namespace {

using test::CurveFitReference;
using test::RaisedMessage;

struct LinearisedCase {
  const char* name;
  TRegModel model;
  int params;
};

const LinearisedCase kLinearised[] = {
    {"ReciLin", rmReciLin, 2},
    {"Hyperbolic", rmHyperbolic, 2},
    {"ReciHyperbolic", rmReciHyperbolic, 2},
    {"Log", rmLog, 2},
    {"ReciLog", rmReciLog, 2},
    {"Power", rmPower, 2},
    {"Expo", rmExpo, 2},
    {"Hoerl", rmHoerl, 3},
    {"Gauss", rmGaussian, 3},
};

TEST(CurveFitModels, LinearisedFitsMatchTheLeastSquaresOfTheirLinearForms) {
  const CurveFitReference& ref = CurveFitReference::Get();
  TCurveFit fit;
  for (const LinearisedCase& c : kLinearised) {
    ref.Enter(std::string("noisy_") + c.name, fit);
    ASSERT_EQ(fit.CalcRegModel(c.model, 0), kCurveFitOk) << c.name;
    const std::vector<double>& expected = ref.Values(std::string("params_") + c.name);
    for (int k = 0; k < c.params; ++k)
      EXPECT_NEAR(fit.GetModelPar(1, k), expected[static_cast<std::size_t>(k)],
                  1e-10 * std::fabs(expected[static_cast<std::size_t>(k)]))
          << c.name << " parameter " << k;
    EXPECT_EQ(fit.GetModelPar(2, 0), -1.0);  // no standard errors for these fits
    EXPECT_GT(fit.GetFitQual(), 0.9) << c.name;
    EXPECT_LE(fit.GetFitQual(), 1.0) << c.name;
    // Residuals are y minus the model at every point.
    const auto& [x, y] = ref.data.at(std::string("noisy_") + c.name);
    EXPECT_DOUBLE_EQ(fit.GetResidual(7), y[6] - fit.Evaluate(x[6])) << c.name;
  }
}

TEST(CurveFitModels, LinearisedFitsRefuseWhenAFlagMarksANeededSum) {
  struct Case {
    TRegModel model;
    double x, y;  // the offending point, entered among good ones
    const char* message;
  };
  const Case cases[] = {
      {rmReciLin, 2, 0, "CalcReciLinFit: data contain y = 0"},
      {rmHyperbolic, 0, 2, "CalcHyperbolFit: data contain x = 0"},
      {rmReciHyperbolic, 2, 0, "CalcReciHyperbolFit: data contain y = 0"},
      {rmReciHyperbolic, 0, 2, "CalcReciHyperbolFit: data contain x = 0"},
      {rmLog, -1, 2, "CalcLogFit: data contain x <= 0"},
      {rmReciLog, 2, 0, "CalcReciLogFit: data contain y = 0"},
      {rmReciLog, -2, 1, "CalcReciLogFit: data contain x <= 0"},
      {rmPower, 2, -1, "CalcPowerFit: data contain y <= 0"},
      {rmPower, 0, 1, "CalcPowerFit: data contain x <= 0"},
      {rmExpo, 2, 0, "CalcExponentialFit: data contain y <= 0"},
      {rmHoerl, 2, -3, "CalcHoerlFit: data contain y <= 0"},
      {rmGaussian, 2, 0, "CalcGaussFit: data contain y <= 0"},
  };
  for (const Case& c : cases) {
    TCurveFit fit;
    for (const double x : {1.0, 2.0, 3.0})
      fit.EnterStatValue(x, x + 1.0);
    fit.CalcRegModel(rmLinear, 0);
    fit.EnterStatValue(c.x, c.y);
    EXPECT_EQ(RaisedMessage<EQUVMath2Error>([&] { fit.CalcRegModel(c.model, 0); }), c.message);
    EXPECT_EQ(fit.CurrentModel(), rmNone) << c.message;
  }
  // Models that do not need the flagged sums still fit.
  TCurveFit fit;
  for (const double x : {-1.0, 1.0, 2.0, 3.0})
    fit.EnterStatValue(x, std::exp(0.5 * x));
  EXPECT_EQ(fit.CalcRegModel(rmExpo, 0), kCurveFitOk);
  EXPECT_NEAR(fit.GetModelPar(1, 1), 0.5, 1e-13);
  // Too few points and equal x.
  fit.Init();
  fit.EnterStatValue(1, 1);
  fit.EnterStatValue(2, 2);
  double a = 0, b = 0, q = 0;
  EXPECT_EQ(RaisedMessage<EQUVMath2Error>([&] { fit.CalcPowerFit(a, b, q); }),
            "CalcPowerFit: not enough data points");
  fit.Init();
  for (int i = 0; i < 3; ++i)
    fit.EnterStatValue(2, i + 1.0);
  EXPECT_EQ(RaisedMessage<EQUVMath2Error>([&] { fit.CalcExponentialFit(a, b, q); }),
            "CalcExponentialFit: slope is infinite");
  EXPECT_EQ(RaisedMessage<EQUVMath2Error>([&] { fit.CalcHoerlFit(a, b, q, q); }),
            "CalcHoerlFit: slope is infinite");
  fit.Init();
  for (const double x : {1.0, 2.0, 3.0, 4.0})
    fit.EnterStatValue(x, std::exp(1.0 + 0.5 * x));  // ln y linear: no curvature
  EXPECT_EQ(RaisedMessage<EQUVMath2Error>([&] { fit.CalcGaussFit(a, b, q, q); }),
            "CalcGaussFit: width is infinite");
}

TEST(CurveFitModels, PolynomialFitsMatchTheReferenceCubic) {
  const CurveFitReference& ref = CurveFitReference::Get();
  TCurveFit fit;
  ref.Enter("noisy_cubic", fit);
  TDoubleArray p, se;
  double q = 0;
  bool ok = false;
  fit.CalcPolyFit(3, p, se, q, ok);
  ASSERT_TRUE(ok);
  ASSERT_EQ(p.size(), 11u);
  const auto& coef = ref.Values("cubic_coef");
  const auto& stdErr = ref.Values("cubic_se");
  for (std::size_t k = 0; k < 4; ++k) {
    EXPECT_NEAR(p[k], coef[k], 1e-11 * std::fabs(coef[k])) << k;
    EXPECT_NEAR(se[k], stdErr[k], 1e-9 * stdErr[k]) << k;
  }
  EXPECT_EQ(p[4], 0.0);
  EXPECT_EQ(se[4], -1.0);
  EXPECT_NEAR(q, ref.Values("cubic_r2")[0], 1e-13);
  EXPECT_EQ(fit.GetFitQual(), q);
  EXPECT_EQ(fit.CurrentDegree(), 3);

  // The centred form is the same curve in powers of (x - mean x).
  double shift = 0;
  TDoubleArray pc, sec;
  fit.CalcCenteredPolyFit(3, pc, sec, shift, q, ok);
  ASSERT_TRUE(ok);
  EXPECT_EQ(fit.CurrentModel(), rmCenteredPoly);
  EXPECT_DOUBLE_EQ(fit.GetXShift(), shift);
  EXPECT_NEAR(shift, 1.5, 1e-14);
  for (const double x : {-2.0, 0.0, 1.7, 5.0})
    EXPECT_NEAR(fit.Evaluate(x), Polynomial(p, 3, x), 1e-12);
  EXPECT_NEAR(sec[3], stdErr[3], 1e-9 * stdErr[3]);  // the leading coefficient is unchanged

  // CalcRegModel refits only when the degree changes.
  EXPECT_EQ(fit.CalcRegModel(rmCenteredPoly, 3), kCurveFitOk);
  EXPECT_EQ(fit.GetXShift(), shift);
  EXPECT_EQ(fit.CalcRegModel(rmPolynomial, 2), kCurveFitOk);
  EXPECT_EQ(fit.CurrentDegree(), 2);
}

TEST(CurveFitModels, PolynomialFitsOfExactDataAndTheirRefusals) {
  TCurveFit fit;
  const double truth[] = {2.0, -1.0, 0.5, 0.25, -0.125};
  for (int i = 0; i < 9; ++i) {
    const double x = 1000.0 + i;  // far from the origin: the centring matters
    fit.EnterStatValue(x, CenteredPolynomial(truth, 4, x, 1000.0));
  }
  TDoubleArray p, se;
  double shift = 0, q = 0;
  bool ok = false;
  fit.CalcCenteredPolyFit(4, p, se, shift, q, ok);
  ASSERT_TRUE(ok);
  for (int k = 0; k <= 4; ++k)
    EXPECT_NEAR(CenteredPolynomial(p, 4, 1000.0 + k, shift),
                CenteredPolynomial(truth, 4, 1000.0 + k, 1000.0), 1e-9);
  EXPECT_NEAR(q, 1.0, 1e-15);
  // Degree 0 is the mean.
  fit.CalcPolyFit(0, p, q, ok);
  ASSERT_TRUE(ok);
  EXPECT_NEAR(p[0], fit.GetMeanY(), 1e-12);
  // Not ok: degree out of range, too few distinct x.
  for (const int degree : {-1, 11}) {
    fit.CalcPolyFit(degree, p, q, ok);
    EXPECT_FALSE(ok);
    EXPECT_EQ(fit.CurrentModel(), rmNone);
  }
  fit.Init();
  for (const double x : {1.0, 1.0, 2.0, 2.0, 3.0})
    fit.EnterStatValue(x, x);
  fit.CalcPolyFit(3, p, q, ok);
  EXPECT_FALSE(ok);
  EXPECT_EQ(p[0], 0.0);
  fit.CalcPolyFit(2, p, se, q, ok);
  EXPECT_TRUE(ok);
  EXPECT_NEAR(p[1], 1.0, 1e-13);
  EXPECT_GE(se[2], 0.0);
}

TEST(CurveFitModels, AnovaMatchesTheCertifiedAndReferenceTables) {
  // NIST Norris: certified regression and residual sums of squares and F.
  const CurveFitReference& ref = CurveFitReference::Get();
  TCurveFit fit;
  TAnovaTable t;
  EXPECT_FALSE(fit.CalcAnovaReg(t));
  ref.Enter("noisy_cubic", fit);
  ASSERT_EQ(fit.CalcRegModel(rmPolynomial, 3), kCurveFitOk);
  ASSERT_TRUE(fit.CalcAnovaReg(t));
  const auto& a = ref.Values("cubic_anova");
  EXPECT_NEAR(t.SSReg, a[0], 1e-11 * a[0]);
  EXPECT_NEAR(t.SSRes, a[1], 1e-11 * a[1]);
  EXPECT_NEAR(t.SSTot, a[2], 1e-11 * a[2]);
  EXPECT_NEAR(t.F, a[3], 1e-9 * a[3]);
  EXPECT_LT(t.PValue, 1e-20);
  EXPECT_EQ(t.DFReg, 3);
  EXPECT_EQ(t.DFRes, 26);
  EXPECT_EQ(t.DFTot, 29);
  EXPECT_DOUBLE_EQ(t.MSRes, t.SSRes / 26);

  // A line on noisy data: the p-value of its F.
  fit.Init();
  for (int i = 0; i < 6; ++i)
    fit.EnterStatValue(i, (i % 2 == 0 ? 1.0 : -1.0) + 0.1 * i);
  fit.CalcRegModel(rmLinear, 0);
  ASSERT_TRUE(fit.CalcAnovaReg(t));
  EXPECT_EQ(t.DFReg, 1);
  EXPECT_NEAR(t.PValue, 1.0 - FDistriIntegral(t.F, 1, 4), 1e-15);
  EXPECT_GT(t.PValue, 0.5);
  // Through the origin (NIST NoInt2): sums of squares about 0, from y - b x.
  fit.Init();
  for (const auto& [x, y] : {std::pair{4.0, 3.0}, {5.0, 4.0}, {6.0, 4.0}})
    fit.EnterStatValue(x, y);
  double k = 0, q = 0;
  fit.CalcLinFitThroughOrigin(k, q);
  ASSERT_TRUE(fit.CalcAnovaReg(t));
  EXPECT_EQ(t.DFReg, 1);
  EXPECT_EQ(t.DFRes, 2);
  EXPECT_NEAR(t.SSReg, 40.7272727272727, 1e-12);  // certified
  EXPECT_NEAR(t.SSRes, 0.272727272727273, 1e-14);
  EXPECT_NEAR(t.F, 298.666666666667, 1e-10);
  // No ANOVA for the circle, nor without residual degrees of freedom.
  fit.Init();
  for (const double x : {1.0, 2.0})
    fit.EnterStatValue(x, x);
  fit.CalcRegModel(rmLinear, 0);
  EXPECT_FALSE(fit.CalcAnovaReg(t));
}

TEST(CurveFitModels, PredictGivesTheConfidenceAndPredictionHalfWidths) {
  const CurveFitReference& ref = CurveFitReference::Get();
  TCurveFit fit;
  ref.Enter("noisy_cubic", fit);
  const auto& p = ref.Values("cubic_predict");
  double y = 0, ci = 0, pi = 0;
  ASSERT_EQ(fit.Predict(rmPolynomial, p[0], 0.95, 3, y, ci, pi), kCurveFitOk);
  EXPECT_NEAR(y, p[1], 1e-12);
  EXPECT_NEAR(ci, p[2], 1e-6 * p[2]);  // t quantile of the statistics unit
  EXPECT_NEAR(pi, p[3], 1e-6 * p[3]);
  ASSERT_EQ(fit.Predict(rmCenteredPoly, p[0], 0.95, 3, y, ci, pi), kCurveFitOk);
  EXPECT_NEAR(ci, p[2], 1e-6 * p[2]);
  // Models without intervals, a level outside (0, 1), and the dispatcher's refusals.
  ASSERT_EQ(fit.Predict(rmPolynomial, p[0], 1.5, 3, y, ci, pi), kCurveFitOk);
  EXPECT_EQ(ci, -1.0);
  EXPECT_EQ(fit.Predict(rmNone, 1.0, 0.95, 0, y, ci, pi), kCurveFitNoModel);
  EXPECT_EQ(fit.Predict(rmLinearOrigin, 1.0, 0.95, 0, y, ci, pi), kCurveFitNoModel);
  fit.Init();
  for (const double x : {1.0, 2.0, 3.0, 4.0})
    fit.EnterStatValue(x, std::exp(x) * (x == 2.0 ? 1.1 : 1.0));
  ASSERT_EQ(fit.Predict(rmExpo, 2.5, 0.9, 0, y, ci, pi), kCurveFitOk);
  EXPECT_EQ(ci, -1.0);
  EXPECT_EQ(pi, -1.0);
  // Through the origin: t(0.975, 2) sqrt(s² x²/Σx²) with s² = SSE / (n - 1).
  fit.Init();
  for (const auto& [x, yy] : {std::pair{4.0, 3.0}, {5.0, 4.0}, {6.0, 4.0}})
    fit.EnterStatValue(x, yy);
  double k = 0, q = 0;
  fit.CalcLinFitThroughOrigin(k, q);
  ASSERT_EQ(fit.Predict(rmLinearOrigin, 5.0, 0.95, 0, y, ci, pi), kCurveFitOk);
  EXPECT_DOUBLE_EQ(y, 5.0 * 56.0 / 77.0);  // b x, though the model evaluates to 0
  const double s2 = ((1.0 / 11) * (1.0 / 11) + 2 * (4.0 / 11) * (4.0 / 11)) / 2;
  EXPECT_NEAR(ci, tDistriQuantile(0.975, 2) * std::sqrt(s2 * 25.0 / 77.0), 1e-6);
}

}  // namespace
}  // namespace quv
