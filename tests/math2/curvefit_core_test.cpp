// TCurveFit: data entry, running sums and flags, FlipXY, removal, statistics, the fixed fits,
// the dispatcher and the model table, the ASC files.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <fstream>
#include <string>

#include "common/raised_message.h"
#include "math2/curvefit_test_util.h"

namespace quv {
namespace {

using test::RaisedMessage;

void Enter(TCurveFit& fit, std::initializer_list<std::pair<double, double>> points) {
  for (const auto& [x, y] : points)
    fit.EnterStatValue(x, y);
}

TEST(CurveFitCore, LinearFitOfExactLineReportsQualityOnlyThroughItsArgument) {
  TCurveFit fit;
  Enter(fit, {{0, 1}, {1, 3}, {2, 5}});
  double k = 0, d = 0, q = 0;
  fit.CalcLinFit(k, d, q);
  EXPECT_DOUBLE_EQ(k, 2.0);
  EXPECT_DOUBLE_EQ(d, 1.0);
  EXPECT_DOUBLE_EQ(q, 1.0);
  EXPECT_EQ(fit.CurrentModel(), rmLinear);
  EXPECT_EQ(fit.GetFitQual(), 0.0);
  EXPECT_EQ(fit.NrOfResiduals(), 0);  // only CalcRegModel fills them
  fit.EnterStatValue(3, 7);           // clears the model, so the dispatcher fits again
  EXPECT_EQ(fit.CalcRegModel(rmLinear, 0), kCurveFitOk);
  EXPECT_EQ(fit.GetFitQual(), 0.0);
  EXPECT_EQ(fit.NrOfResiduals(), 4);
  EXPECT_DOUBLE_EQ(fit.GetModelPar(1, 0), 1.0);
  EXPECT_DOUBLE_EQ(fit.GetModelPar(1, 1), 2.0);
  EXPECT_NEAR(fit.GetResidual(4), 0.0, 1e-15);
  EXPECT_EQ(fit.GetModelPar(2, 1), 0.0);  // exact data: no scatter
}

TEST(CurveFitCore, RefusedFitsRaiseTheirMessageAndLeaveNoModel) {
  struct Case {
    const char* name;
    std::initializer_list<std::pair<double, double>> points;
    int fit;  // 0 line, 1 origin, 2 parabola, 3 circle, 4 poly, 5 centred poly
    const char* message;
  };
  const Case cases[] = {
      {"one point", {{1, 1}}, 0, "CalcLinFit: not enough data points"},
      {"equal x", {{2, 1}, {2, 3}}, 0, "CalcLinFit: slope is infinite"},
      {"origin one point", {{1, 1}}, 1, "CalcLinFitThroughOrigin: not enough data points"},
      {"origin x zero", {{0, 1}, {0, 3}}, 1, "CalcLinFitThroughOrigin: slope is infinite"},
      {"origin y zero", {{1, 0}, {2, 0}}, 1, "CalcLinFitThroughOrigin: slope is undefined"},
      {"parabola", {{1, 1}, {2, 2}}, 2, "CalcParabolFit: not enough data points"},
      {"circle", {{1, 1}, {2, 2}}, 3, "CalcCircleFit: not enough data points"},
      {"collinear circle", {{1, 1}, {2, 2}, {3, 3}}, 3, "CalcCircleFit: radius is infinite"},
      {"poly", {{1, 1}, {2, 2}}, 4, "CalcPolyFit: not enough data points"},
      {"centred poly", {{1, 1}, {2, 2}}, 5, "CalcCenteredPolyFit: not enough data points"},
  };
  for (const Case& c : cases) {
    TCurveFit fit;
    Enter(fit, {{0, 0}, {1, 1}, {2, 4}});
    double a = 0, b = 0, q = 0;
    fit.CalcParabolFit(a, b, q, q);
    ASSERT_EQ(fit.CurrentModel(), rmParabolic);
    fit.Init();
    Enter(fit, c.points);
    TDoubleArray p;
    double shift = 0;
    bool ok = true;
    const std::string message = RaisedMessage<EQUVMath2Error>([&] {
      switch (c.fit) {
        case 0:
          fit.CalcLinFit(a, b, q);
          break;
        case 1:
          fit.CalcLinFitThroughOrigin(a, q);
          break;
        case 2:
          fit.CalcParabolFit(a, b, q, q);
          break;
        case 3:
          fit.CalcCircleFit(a, b, q);
          break;
        case 4:
          fit.CalcPolyFit(3, p, q, ok);
          break;
        default:
          fit.CalcCenteredPolyFit(3, p, shift, q, ok);
          break;
      }
    });
    EXPECT_EQ(message, c.message) << c.name;
    EXPECT_EQ(fit.CurrentModel(), rmNone) << c.name;
    EXPECT_EQ(a, 0.0) << c.name;
  }
}

TEST(CurveFitCore, DispatcherResults) {
  TCurveFit fit;
  EXPECT_EQ(fit.CalcRegModel(rmNone, 0), kCurveFitNoModel);
  Enter(fit, {{1, 2}, {2, 3}});
  EXPECT_EQ(fit.CalcRegModel(rmParabolic, 0), kCurveFitTooFewPoints);
  EXPECT_EQ(fit.CalcRegModel(rmGaussian, 0), kCurveFitTooFewPoints);
  EXPECT_EQ(fit.CalcRegModel(static_cast<TRegModel>(16), 0), kCurveFitTooFewPoints);
  EXPECT_EQ(fit.NrOfResiduals(), 0);
  EXPECT_EQ(fit.CalcRegModel(rmNone, 0), kCurveFitNoModel);
  // A polynomial that is not ok: residuals against the empty model.
  EXPECT_EQ(fit.CalcRegModel(rmPolynomial, 11), kCurveFitNotOk);
  EXPECT_EQ(fit.CurrentModel(), rmNone);
  EXPECT_EQ(fit.NrOfResiduals(), 2);
  EXPECT_EQ(fit.GetResidual(1), 0.0);  // no model current: accessors give 0
  // The circle and the line through the origin are not fitted by the dispatcher: the residuals
  // are y minus the current model, whatever it is.
  fit.EnterStatValue(3, 5);
  EXPECT_EQ(fit.CalcRegModel(rmCircle, 0), kCurveFitOk);
  EXPECT_EQ(fit.CurrentModel(), rmNone);
  double k = 0, q = 0;
  fit.CalcLinFitThroughOrigin(k, q);
  EXPECT_EQ(fit.CalcRegModel(rmLinearOrigin, 0), kCurveFitOk);
  EXPECT_EQ(fit.GetResidual(3), 5.0);  // the model evaluates to 0
}

TEST(CurveFitCore, FlagsRecordWhichSumsBecameUnusable) {
  struct Case {
    double x, y;
    std::uint8_t flags;
  };
  const Case cases[] = {
      {1.0, 0.0, (1 << cfeYLE0) | (1 << cfeYEQ0)},
      {-1.0, 2.0, 1 << cfeXLE0},
      {0.0, 2.0, (1 << cfeXLE0) | (1 << cfeXEQ0)},
      {2.0, -3.0, 1 << cfeYLE0},
      {1e-31, 1.0, 1 << cfeXEQ0},  // |x| <= 1e-30 counts as zero for the reciprocals only
      {2.0, 3.0, 0},
  };
  for (const Case& c : cases) {
    TCurveFit fit;
    fit.EnterStatValue(c.x, c.y);
    EXPECT_EQ(fit.CurveFitErrors(), c.flags) << c.x << ' ' << c.y;
    fit.EnterStatValue(5.0, 5.0);  // a later good point does not clear a flag
    EXPECT_EQ(fit.CurveFitErrors(), c.flags);
    fit.Init();
    EXPECT_EQ(fit.CurveFitErrors(), 0);
  }
}

TEST(CurveFitCore, NonFiniteInputIsRefusedWithoutChange) {
  TCurveFit fit;
  Enter(fit, {{1, 2}, {2, 3}});
  const auto before = TCurveFitAccess::Sums(fit);
  for (const double bad : {NAN, INFINITY, -INFINITY}) {
    EXPECT_EQ(RaisedMessage<EQUVMath2Error>([&] { fit.EnterStatValue(bad, 1.0); }),
              "EnterStatValue: x and y must be finite numbers");
    EXPECT_EQ(RaisedMessage<EQUVMath2Error>([&] { fit.AdjustSums(1.0, bad); }),
              "EnterStatValue: x and y must be finite numbers");
  }
  EXPECT_EQ(fit.NrOfPoints(), 2);
  EXPECT_EQ(TCurveFitAccess::Sums(fit), before);
  EXPECT_EQ(fit.MaxX(), 2.0);
}

TEST(CurveFitCore, FlipXYTwiceRestoresEverythingAndKeepsTheAsymmetry) {
  TCurveFit fit;
  Enter(fit, {{1, 2}, {2, 0.5}, {3, 7}, {0.5, 0.25}, {-1, 3}});
  const auto sums = TCurveFitAccess::Sums(fit);
  const std::uint8_t flags = fit.CurveFitErrors();
  const long double x2lny = TCurveFitAccess::Sum(fit, "x2lny");
  const long double y2lnx = TCurveFitAccess::Sum(fit, "y2lnx");
  fit.FlipXY();
  EXPECT_EQ(fit.CurveFitErrors(), flags);
  EXPECT_EQ(fit.GetDataX(2), 0.5);
  EXPECT_EQ(fit.GetDataY(2), 2.0);
  EXPECT_EQ(fit.MinX(), 0.25);
  EXPECT_EQ(fit.MaxY(), 3.0);
  EXPECT_EQ(TCurveFitAccess::Sum(fit, "x"), sums[1]);  // Σx now holds the old Σy
  EXPECT_EQ(TCurveFitAccess::Sum(fit, "x2lny"), x2lny);
  EXPECT_EQ(TCurveFitAccess::Sum(fit, "y2lnx"), y2lnx);
  EXPECT_DOUBLE_EQ(fit.GetMeanDiff(), -(1 + 2 + 3 + 0.5 - 1 - 2 - 0.5 - 7 - 0.25 - 3) / 5.0);
  fit.FlipXY();
  EXPECT_EQ(TCurveFitAccess::Sums(fit), sums);
  EXPECT_EQ(fit.GetDataX(2), 2.0);
  EXPECT_EQ(fit.MinX(), -1.0);
  EXPECT_EQ(fit.CurveFitErrors(), flags);
}

TEST(CurveFitCore, RemoveStatValueTakesThePointOutOfEverything) {
  TCurveFit fit, reference;
  Enter(fit, {{1, 2}, {9, 4}, {3, 7}, {4, 5}});
  Enter(reference, {{1, 2}, {3, 7}, {4, 5}});
  for (const int ix : {0, -1, 5})
    fit.RemoveStatValue(ix);  // ignored
  EXPECT_EQ(fit.NrOfPoints(), 4);
  fit.RemoveStatValue(2);
  EXPECT_EQ(fit.NrOfPoints(), 3);
  EXPECT_EQ(fit.GetDataX(2), 3.0);
  EXPECT_EQ(fit.GetDataX(4), 0.0);
  EXPECT_EQ(fit.MaxX(), 4.0);
  const auto a = TCurveFitAccess::Sums(fit), b = TCurveFitAccess::Sums(reference);
  for (std::size_t i = 0; i < a.size(); ++i)
    EXPECT_NEAR(static_cast<double>(a[i]), static_cast<double>(b[i]),
                1e-12 * (1 + std::fabs(static_cast<double>(b[i]))))
        << "sum " << i;
}

TEST(CurveFitCore, StoreGrowsInStepsAndKeepsEveryPoint) {
  TCurveFit fit;
  for (int i = 1; i <= 2500; ++i)
    EXPECT_EQ(fit.EnterStatValue(i, 2.0 * i), i);
  EXPECT_EQ(fit.GetDataX(1001), 1001.0);
  EXPECT_EQ(fit.GetDataY(2500), 5000.0);
  EXPECT_EQ(fit.GetDataY(2501), 0.0);
  EXPECT_DOUBLE_EQ(fit.GetMeanX(), 1250.5);
}

TEST(CurveFitCore, StatisticsFromTheRunningSums) {
  TCurveFit fit;
  EXPECT_EQ(fit.GetMeanX(), 0.0);
  EXPECT_EQ(fit.GetRMSDiff(), 0.0);
  Enter(fit, {{1, 2}, {3, 1}});
  EXPECT_EQ(fit.GetStdDevX(), 0.0);  // fewer than three points
  EXPECT_EQ(fit.GetRxy(), 0.0);
  fit.EnterStatValue(5, 6);
  EXPECT_DOUBLE_EQ(fit.GetMeanX(), 3.0);
  EXPECT_DOUBLE_EQ(fit.GetMeanY(), 3.0);
  EXPECT_DOUBLE_EQ(fit.GetStdDevX(), 2.0);
  EXPECT_DOUBLE_EQ(fit.GetStdDevY(), std::sqrt(7.0));
  EXPECT_DOUBLE_EQ(fit.GetMeanDiff(), 0.0);
  EXPECT_DOUBLE_EQ(fit.GetRMSDiff(), std::sqrt(6.0 / 3.0));
  EXPECT_DOUBLE_EQ(fit.GetStdDevDiff(), std::sqrt(3.0));
  EXPECT_DOUBLE_EQ(fit.GetRxy(), 8.0 / std::sqrt(8.0 * 14.0));
  std::int32_t n = 0;
  double v[7];
  fit.CalcStatistics(n, v[0], v[1], v[2], v[3], v[4], v[5], v[6]);
  EXPECT_EQ(n, 3);
  EXPECT_EQ(v[4], fit.GetRxy());
  fit.Init();
  Enter(fit, {{1, 5}, {2, 5}, {3, 5}});
  EXPECT_EQ(fit.GetRxy(), 0.0);  // constant y
}

TEST(CurveFitCore, ModelTableValuesAndSpecialValues) {
  struct Case {
    TRegModel model;
    double a, b, x, expected;
  };
  // Each model is fitted to its own exact values at three points, then evaluated.
  const Case cases[] = {
      {rmReciLin, 1, 1, 1, 0.5},
      {rmHyperbolic, 1, 2, 4, 1.5},
      {rmReciHyperbolic, 1, 2, 2, 0.5},
      {rmLog, 1, 2, 1, 1.0},
      {rmReciLog, 1, 1, 1, 1.0},
      {rmPower, 2, 3, 2, 16},
      {rmExpo, 2, 0.5, 2, 2 * std::exp(1.0)},
  };
  const auto model = [](const Case& c, double x) {
    switch (c.model) {
      case rmReciLin:
        return 1.0 / (c.a + c.b * x);
      case rmHyperbolic:
        return c.a + c.b / x;
      case rmReciHyperbolic:
        return x / (c.a * x + c.b);
      case rmLog:
        return c.a + c.b * std::log(x);
      case rmReciLog:
        return 1.0 / (c.a + c.b * std::log(x));
      case rmPower:
        return c.a * std::pow(x, c.b);
      default:
        return c.a * std::exp(c.b * x);
    }
  };
  for (const Case& c : cases) {
    TCurveFit fit;
    for (const double x : {1.0, 2.0, 4.0})
      fit.EnterStatValue(x, model(c, x));
    ASSERT_EQ(fit.CalcRegModel(c.model, 0), kCurveFitOk) << int(c.model);
    EXPECT_NEAR(fit.GetModelPar(1, 0), c.a, 1e-12) << int(c.model);
    EXPECT_NEAR(fit.GetModelPar(1, 1), c.b, 1e-12) << int(c.model);
    EXPECT_NEAR(fit.Evaluate(c.x), c.expected, 1e-12) << int(c.model);
    EXPECT_NEAR(fit.GetFitQual(), 1.0, 1e-12);
  }
  // Special values, with the parameters of no fit (all 0).
  TCurveFit fit;
  EXPECT_EQ(fit.EvaluateIntern(static_cast<TRegModel>(15), 3.0), 0.0);
  EXPECT_EQ(fit.EvaluateIntern(static_cast<TRegModel>(200), 3.0), 0.0);
  EXPECT_EQ(fit.EvaluateIntern(rmLog, -1.0), -uc_MaxDouble);
  EXPECT_EQ(fit.EvaluateIntern(rmLog, 0.0), -uc_MaxDouble);
  EXPECT_EQ(fit.EvaluateIntern(rmReciLog, 0.0), -uc_MaxDouble);
  EXPECT_EQ(fit.EvaluateIntern(rmReciLog, 2.0), uc_MaxDouble);
  EXPECT_EQ(fit.EvaluateIntern(rmHyperbolic, 0.0), uc_MaxDouble);
  EXPECT_EQ(fit.EvaluateIntern(rmReciLin, 5.0), uc_MaxDouble);
  EXPECT_EQ(fit.EvaluateIntern(rmReciHyperbolic, 5.0), uc_MaxDouble);
  EXPECT_EQ(fit.EvaluateIntern(rmCircle, 5.0), 0.0);
  EXPECT_EQ(fit.EvaluateIntern(rmNone, 5.0), 0.0);
}

TEST(CurveFitCore, ModelParameterAccess) {
  TCurveFit fit;
  EXPECT_EQ(fit.GetModelPar(1, 0), 0.0);
  EXPECT_EQ(fit.GetModelPar(2, 0), -1.0);
  Enter(fit, {{0, 1}, {1, 3.1}, {2, 4.9}, {3, 7.2}});
  fit.CalcRegModel(rmLinear, 0);
  EXPECT_NE(fit.GetModelPar(1, 1), 0.0);
  EXPECT_GT(fit.GetModelPar(2, 1), 0.0);
  EXPECT_EQ(fit.GetModelPar(2, 2), -1.0);
  for (const int ix : {-1, 11}) {
    EXPECT_EQ(fit.GetModelPar(1, ix), 0.0);
    EXPECT_EQ(fit.GetModelPar(2, ix), -1.0);
  }
  EXPECT_EQ(fit.GetModelPar(3, 0), -1.0);
  EXPECT_EQ(fit.GetModelPar(0, 0), -1.0);
  EXPECT_EQ(fit.GetXShift(), 0.0);
  EXPECT_EQ(fit.GetResidual(0), 0.0);
  EXPECT_EQ(fit.GetResidual(5), 0.0);
  EXPECT_GT(fit.GetStdDevResidual(), 0.0);
  fit.ClearModelParams();
  EXPECT_EQ(fit.GetStdDevResidual(), 0.0);
}

TEST(CurveFitCore, ParabolaAndCircleFromExactData) {
  TCurveFit fit;
  for (const double x : {-2.0, -1.0, 0.5, 3.0, 4.0})
    fit.EnterStatValue(x, 1.5 - 2.0 * x + 0.25 * x * x);
  double a = 0, b = 0, c = 0, q = 0;
  fit.CalcParabolFit(a, b, c, q);
  EXPECT_NEAR(a, 1.5, 1e-13);
  EXPECT_NEAR(b, -2.0, 1e-13);
  EXPECT_NEAR(c, 0.25, 1e-14);
  EXPECT_NEAR(q, 1.0, 1e-14);
  EXPECT_EQ(fit.GetFitQual(), q);
  EXPECT_NEAR(fit.GetModelPar(2, 2), 0.0, 1e-12);

  fit.Init();
  for (const double t : {0.1, 1.0, 2.5, 4.0, 5.5})
    fit.EnterStatValue(3.0 + 2.0 * std::cos(t), -1.0 + 2.0 * std::sin(t));
  double r = 0, xc = 0, yc = 0;
  fit.CalcCircleFit(r, xc, yc);
  EXPECT_NEAR(r, 2.0, 1e-12);
  EXPECT_NEAR(xc, 3.0, 1e-12);
  EXPECT_NEAR(yc, -1.0, 1e-12);
  EXPECT_EQ(fit.CurrentModel(), rmCircle);
  EXPECT_EQ(fit.GetModelPar(1, 2), r);
  EXPECT_EQ(fit.Evaluate(3.0), 0.0);
}

TEST(CurveFitCore, AscRoundTripAndRefusals) {
  const std::string path = ::testing::TempDir() + "curvefit_roundtrip.asc";
  TCurveFit fit, back;
  Enter(fit, {{1.25, -2.5}, {3, 4}, {1e3, 0.001}});
  fit.ExportAsASC(path, "", 4);
  std::ifstream in(path);
  std::string l1, l2, l3, l4, l5, l6;
  std::getline(in, l1);
  std::getline(in, l2);
  std::getline(in, l3);
  std::getline(in, l4);
  std::getline(in, l5);
  std::getline(in, l6);
  EXPECT_EQ(l1, "Exported by QUV TCurveFit component:" + path + "\r");
  EXPECT_EQ(l2, "2\t;nr. of columns\r");
  EXPECT_EQ(l3, "3\t;nr. of rows\r");
  EXPECT_EQ(l4, "FALSE TRUE FALSE\t;row attributes, column names, row names\r");
  EXPECT_EQ(l5, "\"x\" \"y\"\r");
  EXPECT_NE(l6.find("1.2500"), std::string::npos);
  EXPECT_EQ(back.ImportASC(path), 0);
  EXPECT_EQ(back.NrOfPoints(), 3);
  EXPECT_EQ(back.GetDataY(3), 0.001);
  EXPECT_DOUBLE_EQ(back.GetMeanX(), fit.GetMeanX());

  EXPECT_EQ(back.ImportASC(std::string(QUV_TEST_DATA_DIR) + "/asc_curvefit.asc"), 0);
  EXPECT_EQ(back.NrOfPoints(), 3);
  EXPECT_EQ(back.GetDataY(2), 3.9);
  EXPECT_EQ(back.ImportASC(path + ".missing"), kAscFileNotFound);
  EXPECT_EQ(back.NrOfPoints(), 3);
  EXPECT_EQ(RaisedMessage<EQUVMath2Error>(
                [&] { back.ImportASC(std::string(QUV_TEST_DATA_DIR) + "/vector_export.asc"); }),
            "TCurveFit.ImportASC: number of columns must be 2 (is actually 1)");
  EXPECT_EQ(back.NrOfPoints(), 3);
  std::remove(path.c_str());
}

}  // namespace
}  // namespace quv
