#include "quv/math2/filters.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <fstream>
#include <numbers>
#include <sstream>
#include <string>
#include <vector>

#include "common/raised_message.h"
#include "quv/math2/math2.h"

namespace {

using quv::EQUVMath2Error;
using quv::TDouble2DArray;
using quv::TDoubleArray;
using quv::TVector;
using quv::test::RaisedMessage;

// |H(f)| of a kernel or of a recursive filter a / (1 - b), f a fraction of the sampling rate.
double Gain(const TDoubleArray& a, const TDoubleArray& b, double f) {
  std::complex<double> num = 0, den = 1;
  for (std::size_t k = 0; k < a.size(); ++k) {
    const std::complex<double> z = std::polar(1.0, -2 * std::numbers::pi * f * double(k));
    num += a[k] * z;
    if (k > 0 && k < b.size()) den -= b[k] * z;
  }
  return std::abs(num / den);
}

double Gain(const TDoubleArray& kernel, double f) {
  return Gain(kernel, {}, f);
}

TEST(SincKernels, PassAndStopBands) {
  const int len = 101;  // transition band about 4 / 101 = 0.04 wide
  TDoubleArray lp, hp, bp, bs;
  quv::CalcSincLPKernel(0.1, len, lp);
  quv::CalcSincHPKernel(0.1, len, hp);
  quv::CalcSincBPKernel(0.15, 0.3, len, bp);
  quv::CalcSincBSKernel(0.15, 0.3, len, bs);
  for (const auto* k : {&lp, &hp, &bp, &bs}) {
    ASSERT_EQ(k->size(), static_cast<std::size_t>(len));
    for (int i = 0; i < len; ++i)  // symmetric: linear phase
      EXPECT_DOUBLE_EQ((*k)[static_cast<std::size_t>(i)],
                       (*k)[static_cast<std::size_t>(len - 1 - i)]);
  }
  EXPECT_NEAR(Gain(lp, 0.0), 1.0, 1e-14);
  EXPECT_NEAR(Gain(hp, 0.5), 1.0, 2e-5);
  EXPECT_NEAR(Gain(hp, 0.0), 0.0, 1e-14);
  EXPECT_NEAR(Gain(bs, 0.0), 1.0, 1e-14);
  EXPECT_NEAR(Gain(bs, 0.5), 1.0, 2e-5);
  // Pass bands within 0.2 %, stop bands below -70 dB, away from the transition bands.
  for (double f = 0.0; f <= 0.5; f += 0.0025) {
    SCOPED_TRACE(f);
    const double stop = 3.2e-4;
    if (f < 0.07) {
      EXPECT_NEAR(Gain(lp, f), 1.0, 2e-3);
    }
    if (f > 0.13) {
      EXPECT_LT(Gain(lp, f), stop);
    }
    if (f > 0.13) {
      EXPECT_NEAR(Gain(hp, f), 1.0, 2e-3);
    }
    if (f < 0.07) {
      EXPECT_LT(Gain(hp, f), stop);
    }
    if (f > 0.18 && f < 0.27) {
      EXPECT_NEAR(Gain(bp, f), 1.0, 2e-3);
    }
    if (f < 0.12 || f > 0.33) {
      EXPECT_LT(Gain(bp, f), stop);
    }
    if (f > 0.18 && f < 0.27) {
      EXPECT_LT(Gain(bs, f), stop);
    }
    if (f < 0.12 || f > 0.33) {
      EXPECT_NEAR(Gain(bs, f), 1.0, 2e-3);
    }
  }
  // The cutoff lies half way down.
  EXPECT_NEAR(Gain(lp, 0.1), 0.5, 1e-3);
}

TEST(SincKernels, VectorFormSizesTheVectorAndChecksInOrder) {
  TVector k;
  k.Resize(500);
  int changes = 0;
  k.OnChange = [&](quv::TComponent*) { ++changes; };
  quv::CalcSincLPKernel(0.2, 21, &k);
  EXPECT_EQ(k.NrOfElem(), 21);
  EXPECT_EQ(changes, 1);
  TDoubleArray a;
  quv::CalcSincLPKernel(0.2, 21, a);
  EXPECT_EQ(k.Storage(), a);

  auto lp = [](TVector* v, int len, double fc) {
    return RaisedMessage<EQUVMath2Error>([&] { quv::CalcSincLPKernel(fc, len, v); });
  };
  EXPECT_EQ(lp(nullptr, 21, 0.2), "CalcSincLPKernel: Kernel is undefined");
  EXPECT_EQ(lp(&k, 1, 0.2), "CalcSincLPKernel: length of kernel is out of range");
  EXPECT_EQ(lp(&k, 22, 0.7), "CalcSincLPKernel: length of kernel must be odd");
  EXPECT_EQ(lp(&k, 21, 0.5), "CalcSincLPKernel: cutoff frequency is out of range");
  EXPECT_EQ(lp(&k, 21, std::nan("")), "CalcSincLPKernel: cutoff frequency is out of range");
  EXPECT_EQ(k.NrOfElem(), 21);  // refused calls leave it alone
  EXPECT_EQ(RaisedMessage<EQUVMath2Error>([&] { quv::CalcSincHPKernel(0.0, 21, a); }),
            "CalcSincHPKernel: cutoff frequency is out of range");
  EXPECT_EQ(RaisedMessage<EQUVMath2Error>([&] { quv::CalcSincBPKernel(0.3, 0.2, 21, a); }),
            "CalcSincBPKernel: cutoff frequencies are out of range");
  EXPECT_EQ(RaisedMessage<EQUVMath2Error>([&] { quv::CalcSincBSKernel(0.1, 0.5, 21, &k); }),
            "CalcSincBSKernel: cutoff frequencies are out of range");
}

TEST(SincKernels, LowPassThroughTheKernelFilterKeepsSlowSignals) {
  TVector src, kernel, dst;
  const int n = 400;
  src.Resize(n);
  for (int i = 1; i <= n; ++i)
    src.SetVal(
        i, std::sin(2 * std::numbers::pi * 0.01 * i) + std::sin(2 * std::numbers::pi * 0.3 * i));
  quv::CalcSincLPKernel(0.1, 61, &kernel);
  quv::MovingKernelFilter(&src, 1, n, &kernel, &dst);
  for (int i = 31; i <= n - 30; ++i)
    EXPECT_NEAR(dst.GetVal(i), std::sin(2 * std::numbers::pi * 0.01 * i), 2e-3) << i;
}

struct ChebCase {
  int poles;
  bool highPass;
  double cutoff, ripple;
  TDoubleArray a, b;
};

std::vector<ChebCase> LoadChebCases() {
  std::ifstream in(std::string(QUV_TEST_DATA_DIR) + "/math2_chebyshev.txt");
  std::vector<ChebCase> cases;
  std::string line;
  while (std::getline(in, line)) {
    if (line.empty() || line[0] == '#') continue;
    std::istringstream f(line);
    ChebCase c;
    int hp = 0;
    f >> c.poles >> hp >> c.cutoff >> c.ripple;
    c.highPass = hp != 0;
    c.a.resize(static_cast<std::size_t>(c.poles + 1));
    c.b.resize(c.a.size());
    for (double& v : c.a)
      f >> v;
    for (double& v : c.b)
      f >> v;
    cases.push_back(c);
  }
  return cases;
}

TEST(ChebychevFilter, CoefficientsAgreeWithTheReferenceDesign) {
  const std::vector<ChebCase> cases = LoadChebCases();
  ASSERT_EQ(cases.size(), 10u);
  for (const ChebCase& c : cases) {
    SCOPED_TRACE(testing::Message()
                 << c.poles << (c.highPass ? " HP " : " LP ") << c.cutoff << " " << c.ripple);
    TDouble2DArray coeffs;
    quv::CalcChebFilterCoeffs(c.poles, c.highPass, c.cutoff, c.ripple, coeffs);
    ASSERT_EQ(coeffs.size(), 2u);
    double scale = 1;
    for (double v : c.b)
      scale = std::max(scale, std::fabs(v));
    for (std::size_t k = 0; k < c.a.size(); ++k) {
      EXPECT_NEAR(coeffs[0][k], c.a[k], 1e-10 * scale) << "a" << k;
      EXPECT_NEAR(coeffs[1][k], c.b[k], 1e-10 * scale) << "b" << k;
    }
    // Gain 1 at the band's end, where the ripple has a trough; at the cutoff -3 dB below that
    // trough's level relative to the peaks, sqrt(1/2) / (1 - ripple).
    EXPECT_NEAR(Gain(coeffs[0], coeffs[1], c.highPass ? 0.5 : 0.0), 1.0, 1e-8);
    EXPECT_NEAR(Gain(coeffs[0], coeffs[1], c.cutoff), std::sqrt(0.5) / (1 - c.ripple / 100), 1e-8);
  }
}

TEST(ChebychevFilter, MessagesInTheirOrder) {
  TDouble2DArray coeffs{{1.0}, {0.0}};
  auto calc = [&](int poles, double fc, double ripple) {
    return RaisedMessage<EQUVMath2Error>(
        [&] { quv::CalcChebFilterCoeffs(poles, false, fc, ripple, coeffs); });
  };
  EXPECT_EQ(calc(3, 0.7, 50), "CalcChebFilterCoeffs: NPoles must be even");
  EXPECT_EQ(calc(0, 0.7, 50), "CalcChebFilterCoeffs: NPoles is out of range");
  EXPECT_EQ(calc(22, 0.1, 0.5), "CalcChebFilterCoeffs: NPoles is out of range");
  EXPECT_EQ(calc(4, 0.7, 30), "CalcChebFilterCoeffs: invalid Ripple value");
  EXPECT_EQ(calc(4, 0.7, -1), "CalcChebFilterCoeffs: invalid Ripple value");
  EXPECT_EQ(calc(4, 0.5, 0.5), "CalcChebFilterCoeffs: invalid cutoff frequency");
  EXPECT_EQ(calc(4, 0.0, 0.5), "CalcChebFilterCoeffs: invalid cutoff frequency");
  EXPECT_EQ(coeffs, (TDouble2DArray{{1.0}, {0.0}}));  // untouched by refused calls

  TVector src, dst;
  src.Resize(10);
  auto run = [&](const TDouble2DArray& c, TVector* d) {
    return RaisedMessage<EQUVMath2Error>([&] { quv::ChebychevFilter(&src, 1, 10, c, d); });
  };
  EXPECT_EQ(run(coeffs, nullptr), "ChebychevFilter: either SourceVec or DestVec is undefined");
  for (const TDouble2DArray& bad :
       {TDouble2DArray{}, TDouble2DArray{{1.0}}, TDouble2DArray{{1.0, 2.0}, {0.0}},
        TDouble2DArray{{std::nan("")}, {0.0}}})
    EXPECT_EQ(run(bad, &dst), "ChebychevFilter: coefficient matrix is invalid");
}

TEST(ChebychevFilter, StartsSteadyAndMatchesTheRecursion) {
  TDouble2DArray lp, hp;
  quv::CalcChebFilterCoeffs(4, false, 0.1, 0.5, lp);
  quv::CalcChebFilterCoeffs(4, true, 0.1, 0.5, hp);
  TVector src, low, high;
  const int n = 200;
  src.Resize(n);
  src.Fill(5.0);
  quv::ChebychevFilter(&src, 1, n, lp, &low);
  quv::ChebychevFilter(&src, 1, n, hp, &high);
  for (int i = 1; i <= n; ++i) {
    EXPECT_NEAR(low.GetVal(i), 5.0, 1e-12);
    EXPECT_NEAR(high.GetVal(i), 0.0, 1e-12);
  }
  // After a step the output follows y[n] = sum a x + sum b y, with the steady past.
  for (int i = 101; i <= n; ++i)
    src.SetVal(i, 1.0);
  quv::ChebychevFilter(&src, 1, n, lp, &low);
  for (int i = 101; i <= n; ++i) {
    double y = 0;
    for (int k = 0; k <= 4; ++k) {
      y += lp[0][static_cast<std::size_t>(k)] * src.GetVal(i - k);
      if (k > 0) y += lp[1][static_cast<std::size_t>(k)] * low.GetVal(i - k);
    }
    EXPECT_NEAR(low.GetVal(i), y, 1e-12) << i;
  }
  EXPECT_NEAR(low.GetVal(n), 1.0, 1e-6);  // settled on the new level
}

}  // namespace
