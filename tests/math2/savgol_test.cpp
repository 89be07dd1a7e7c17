#include "quv/math2/savgol.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "common/raised_message.h"
#include "quv/math2/math2.h"

namespace {

using quv::EQUVMath2Error;
using quv::TVector;
using quv::test::RaisedMessage;

struct Reference {
  std::string source;  // "scipy" or "exact"
  int window, order, deriv, pos;
  std::vector<double> coeffs;
};

std::vector<Reference> LoadReference() {
  std::ifstream in(std::string(QUV_TEST_DATA_DIR) + "/math2_savgol.txt");
  std::vector<Reference> cases;
  std::string line;
  while (std::getline(in, line)) {
    if (line.empty() || line[0] == '#') continue;
    std::istringstream fields(line);
    Reference r;
    fields >> r.source >> r.window >> r.order >> r.deriv >> r.pos;
    double c = 0;
    while (fields >> c)
      r.coeffs.push_back(c);
    cases.push_back(r);
  }
  return cases;
}

double Coefficient(const quv::TGolayTable& t, std::size_t k) {
  return static_cast<double>(t.Weights[k]) / static_cast<double>(t.Norm);
}

TEST(SavitzkyGolay, CoefficientsAgreeWithTheReference) {
  const std::vector<Reference> cases = LoadReference();
  ASSERT_EQ(cases.size(), 93u);
  for (const Reference& r : cases) {
    SCOPED_TRACE(testing::Message() << r.source << " " << r.window << " " << r.order << " "
                                    << r.deriv << " " << r.pos);
    // The exact values are rounded once; scipy's carry a few more rounding errors.
    const double tolerance = r.source == "exact" ? 1e-13 : 1e-12;
    ASSERT_EQ(r.coeffs.size(), static_cast<std::size_t>(r.window));
    const quv::TDoubleArray c = quv::SavitzkyGolayCoeffs(r.window, r.order, r.deriv, r.pos);
    double scale = 1.0;
    for (double x : r.coeffs)
      scale = std::max(scale, std::fabs(x));
    for (std::size_t k = 0; k < c.size(); ++k)
      EXPECT_NEAR(c[k], r.coeffs[k], tolerance * scale) << k;
    // The centred quadratic cases are the integer tables.
    if (r.order != 2 || r.pos != r.window / 2) continue;
    const quv::TGolayTable t = r.deriv == 0   ? quv::GolayPoly(r.window)
                               : r.deriv == 1 ? quv::Golay1stDeriv(r.window)
                                              : quv::Golay2ndDeriv(r.window);
    for (std::size_t k = 0; k < c.size(); ++k)
      EXPECT_NEAR(Coefficient(t, k), r.coeffs[k], tolerance) << k;
  }
}

TEST(SavitzkyGolay, IntegerTablesInLowestTerms) {
  const quv::TGolayTable p5 = quv::GolayPoly(5);
  EXPECT_EQ(p5.Weights, (std::vector<std::int64_t>{-3, 12, 17, 12, -3}));
  EXPECT_EQ(p5.Norm, 35);
  const quv::TGolayTable p7 = quv::GolayPoly(7);
  EXPECT_EQ(p7.Weights, (std::vector<std::int64_t>{-2, 3, 6, 7, 6, 3, -2}));
  EXPECT_EQ(p7.Norm, 21);
  const quv::TGolayTable d5 = quv::Golay2ndDeriv(5);
  EXPECT_EQ(d5.Weights, (std::vector<std::int64_t>{2, -1, -2, -1, 2}));
  EXPECT_EQ(d5.Norm, 7);
  const quv::TGolayTable f5 = quv::Golay1stDeriv(5);
  EXPECT_EQ(f5.Weights, (std::vector<std::int64_t>{-2, -1, 0, 1, 2}));
  EXPECT_EQ(f5.Norm, 10);
  // Every window of the table sums to 1 (smoothing) or 0 (derivatives).
  for (int len = 3; len <= quv::kMaxGolayLen; len += 2) {
    std::int64_t s = 0, d = 0;
    for (auto w : quv::GolayPoly(len).Weights)
      s += w;
    for (auto w : quv::Golay2ndDeriv(len).Weights)
      d += w;
    EXPECT_EQ(s, quv::GolayPoly(len).Norm) << len;
    EXPECT_EQ(d, 0) << len;
  }
  EXPECT_EQ(RaisedMessage<EQUVMath2Error>([] { quv::GolayPoly(103); }),
            "GolayPoly: length of polynomial is out of range");
  EXPECT_EQ(RaisedMessage<EQUVMath2Error>([] { quv::Golay2ndDeriv(6); }),
            "Golay2ndDeriv: length of polynomial must be odd");
}

TEST(SavitzkyGolay, RuleChecksInOrder) {
  auto coeffs = [](int w, int p, int d, int pos) {
    return RaisedMessage<EQUVMath2Error>([&] { quv::SavitzkyGolayCoeffs(w, p, d, pos); });
  };
  const std::string c = "SavitzkyGolayCoeffs: ";
  EXPECT_EQ(coeffs(0, 0, 0, 0), c + "length of window is out of range");
  EXPECT_EQ(coeffs(1003, 2, 0, 0), c + "length of window is out of range");
  EXPECT_EQ(coeffs(8, 2, 0, 0), c + "length of window must be odd");
  EXPECT_EQ(coeffs(7, 7, 0, 0), c + std::string(quv::savgolmsg::kOrderOutOfRange));
  EXPECT_EQ(coeffs(101, 51, 0, 0), c + std::string(quv::savgolmsg::kOrderOutOfRange));
  EXPECT_EQ(coeffs(7, -1, 0, 0), c + std::string(quv::savgolmsg::kOrderOutOfRange));
  EXPECT_EQ(coeffs(7, 2, 3, 0), c + std::string(quv::savgolmsg::kDerivOutOfRange));
  EXPECT_EQ(coeffs(7, 2, 2, 7), c + "evaluation point lies outside the window");

  TVector src, dst;
  src.Resize(10);
  auto filter = [&](const TVector* s, int w, double delta, TVector* d) {
    return RaisedMessage<EQUVMath2Error>(
        [&] { quv::SavitzkyGolayFilter(s, 1, 10, w, 2, 1, quv::sgeInterp, delta, d); });
  };
  const std::string f = "SavitzkyGolayFilter: ";
  EXPECT_EQ(filter(nullptr, 5, 1.0, &dst), f + "either SourceVec or DestVec is undefined");
  EXPECT_EQ(filter(&src, 4, 1.0, &dst), f + "length of window must be odd");
  EXPECT_EQ(filter(&src, 5, 0.0, &dst), f + "spacing of the samples must be positive");
  EXPECT_EQ(filter(&src, 5, std::nan(""), &dst), f + "spacing of the samples must be positive");
  EXPECT_EQ(filter(&src, 11, 1.0, &dst),
            f + "specified range is shorter than the length of the window");
  EXPECT_EQ(filter(&src, 9, 1.0, &dst), quv::test::kNothingRaised);
}

// With fitted ends every element of a polynomial of the filter's order comes back exactly, and
// its derivatives too; nearest-value padding repeats the last centred result instead.
TEST(SavitzkyGolayFilter, InterpModeIsExactForPolynomialsToTheEnds) {
  const int n = 40;
  const double dx = 0.25;
  std::vector<double> y;
  for (int i = 0; i < n; ++i) {
    const double x = i * dx;
    y.push_back(1.0 - 2.0 * x + 0.5 * x * x - 0.1 * x * x * x + 0.01 * x * x * x * x);
  }
  TVector src;
  src.Resize(n);
  src.CopyFrom(y, 0, 0, 1);
  for (int deriv = 0; deriv <= 3; ++deriv) {
    SCOPED_TRACE(deriv);
    TVector out;
    quv::SavitzkyGolayFilter(&src, 1, n, 11, 4, deriv, quv::sgeInterp, dx, &out);
    ASSERT_EQ(out.NrOfElem(), n);
    for (int i = 0; i < n; ++i) {
      const double x = i * dx;
      const double expect[] = {y[static_cast<std::size_t>(i)],
                               -2.0 + x - 0.3 * x * x + 0.04 * x * x * x,
                               1.0 - 0.6 * x + 0.12 * x * x, -0.6 + 0.24 * x};
      EXPECT_NEAR(out.GetVal(i + 1), expect[deriv], 1e-10) << i;
    }
  }
  TVector nearest;
  quv::SavitzkyGolayFilter(&src, 1, n, 11, 4, 0, quv::sgeNearest, dx, &nearest);
  EXPECT_EQ(nearest.GetVal(1), nearest.GetVal(6));
  EXPECT_EQ(nearest.GetVal(n), nearest.GetVal(n - 5));
  // The nearest mode with the quadratic rule is PolynomialSmooth.
  TVector poly;
  quv::PolynomialSmooth(&src, 1, n, 11, &poly);
  quv::SavitzkyGolayFilter(&src, 1, n, 11, 2, 0, quv::sgeNearest, 1.0, &nearest);
  for (int i = 1; i <= n; ++i)
    EXPECT_NEAR(nearest.GetVal(i), poly.GetVal(i), 1e-13);
}

}  // namespace
