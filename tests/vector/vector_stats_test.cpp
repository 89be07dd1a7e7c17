// Statistics, histograms, normalisations and integration of the vectors.
//
// Reference values were computed once with Python 3.11, NumPy 1.24 and SciPy 1.10 and are
// kept here as literals (17 significant digits): mean and var(ddof=1); the population forms
// from scipy.stats.skew/kurtosis(bias=True) rescaled to the n - 1 standard deviation that
// SkewKurt uses (skew * ((n-1)/n)^1.5, kurtosis(fisher=False) * ((n-1)/n)^2 - 3); the sample
// forms from skew/kurtosis(bias=False); gmean, hmean; numpy.percentile (linear); mode.
#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "quv/math1/math1.h"
#include "quv/vector/vector.h"

namespace {

using quv::TIntVector;
using quv::TVector;

const std::vector<double> kSample = {4.2, 1.7, 9.3, 4.2, 6.1, 2.8, 4.2, 7.7, 3.3, 5.0,
                                     1.7, 8.4, 6.1, 2.2, 5.9, 1.7, 4.2, 3.9, 7.1, 0.6};

template <class V>
void Set(V& v, const std::vector<typename V::value_type>& values) {
  v.Resize(static_cast<std::int32_t>(values.size()));
  v.CopyFrom(values, 0, 0, 1);
}

class VectorStats : public ::testing::Test {
 protected:
  void SetUp() override {
    v.SetName("Vec1");
    Set(v, kSample);
  }
  TVector v;
};

TEST_F(VectorStats, MeanVarianceAndMoments) {
  double mean = 0, var = 0;
  v.MeanVar(0, 0, mean, var);
  EXPECT_NEAR(mean, 4.5149999999999997, 1e-15);
  EXPECT_NEAR(var, 5.8760789473684216, 1e-14);
  v.MeanVar(5, 15, mean, var);  // elements 5..15
  EXPECT_NEAR(mean, 4.8545454545454545, 1e-15);
  EXPECT_NEAR(var, 4.8947272727272724, 1e-14);
  EXPECT_DOUBLE_EQ(v.Sum(0, 0), 90.3);

  double skew = 0, kurt = 0;
  v.SkewKurt(0, 0, skew, kurt);
  EXPECT_NEAR(skew, 0.28778778928018944, 1e-14);
  EXPECT_NEAR(kurt, -1.0030946602219435, 1e-14);
  v.SkewKurtSample(0, 0, skew, kurt);
  EXPECT_NEAR(skew, 0.33659390559086483, 1e-14);
  EXPECT_NEAR(kurt, -0.65410993220920588, 1e-14);

  EXPECT_NEAR(v.GeometricMean(0, 0), 3.7725271283626434, 1e-14);
  EXPECT_NEAR(v.HarmonicMean(0, 0), 2.8778914466053296, 1e-14);
  EXPECT_DOUBLE_EQ(v.Mode(0, 0), 4.2);

  double mn = 0, mx = 0;
  std::int32_t mnIx = 0, mxIx = 0;
  v.MinMax(0, 0, mnIx, mxIx, mn, mx);
  EXPECT_EQ(mn, 0.6);
  EXPECT_EQ(mnIx, 20);
  EXPECT_EQ(mx, 9.3);
  EXPECT_EQ(mxIx, 3);
  v.MinMax(1, 4, mnIx, mxIx, mn, mx);
  EXPECT_EQ(mnIx, 2);  // 1.7
  EXPECT_EQ(mxIx, 3);
}

TEST_F(VectorStats, SmallCountsKeepTheirDefaults) {
  TVector two;
  Set(two, {3.0, 8.0});
  double mean = 0, var = 0;
  two.MeanVar(0, 0, mean, var);
  EXPECT_EQ(mean, 5.5);
  EXPECT_EQ(var, 1.0);  // the deliberate default for fewer than three elements
  TIntVector itwo;
  Set(itwo, {1, 2});
  itwo.MeanVar(0, 0, mean, var);
  EXPECT_EQ(mean, 1.5);
  EXPECT_EQ(var, 1.0);

  double skew = 7, kurt = 7;
  TVector three;
  Set(three, {1, 2, 9});
  three.SkewKurt(0, 0, skew, kurt);
  EXPECT_EQ(skew, 0.0);
  EXPECT_EQ(kurt, 0.0);
  TVector flat;
  Set(flat, {2, 2, 2, 2, 2});
  flat.SkewKurt(0, 0, skew, kurt);
  EXPECT_EQ(skew, 0.0);
  flat.MeanVar(0, 0, mean, var);
  EXPECT_EQ(var, 0.0);
  TVector single;
  single.SetVal(1, 4.5);
  EXPECT_EQ(single.Mode(0, 0), 4.5);
  EXPECT_EQ(single.Percentile(37, 0, 0), 4.5);
}

TEST_F(VectorStats, PercentilesAndQuartilesAgree) {
  const double p[] = {0, 10, 25, 33.3, 50, 75, 90, 99, 100};
  const double ref[] = {0.59999999999999998, 1.7,
                        2.6499999999999999,  3.4961999999999991,
                        4.2000000000000002,  6.0999999999999996,
                        7.7700000000000014,  9.1289999999999996,
                        9.3000000000000007};
  for (std::size_t k = 0; k < std::size(p); ++k)
    EXPECT_NEAR(v.Percentile(p[k], 0, 0), ref[k], 1e-14);
  EXPECT_EQ(v.Percentile(150, 0, 0), 9.3);
  EXPECT_EQ(v.Percentile(-5, 0, 0), 0.6);
  double q1 = 0, q2 = 0, q3 = 0;
  v.Quartiles(0, 0, q1, q2, q3);
  EXPECT_EQ(q1, v.Percentile(25, 0, 0));
  EXPECT_EQ(q2, v.Percentile(50, 0, 0));
  EXPECT_EQ(q3, v.Percentile(75, 0, 0));
  v.Quartiles(15, 5, q1, q2, q3);
  EXPECT_NEAR(q1, 3.05, 1e-14);
  EXPECT_NEAR(q2, 5.0, 1e-14);
  EXPECT_NEAR(q3, 6.1, 1e-14);
  EXPECT_EQ(v.Storage(), kSample);  // the work arrays leave the data alone
}

TEST_F(VectorStats, ModeTiesAndNaNsDoNotBreakTheSorts) {
  TVector w;
  Set(w, {5, 3, 5, 3, 9});
  EXPECT_EQ(w.Mode(0, 0), 3.0);  // equal runs: the smallest value
  Set(w, {8, 6, 7});
  EXPECT_EQ(w.Mode(0, 0), 6.0);  // all differ: the smallest value
  Set(w, {2, NAN, 1, NAN, 3});
  EXPECT_EQ(w.Percentile(0, 0, 0), 1.0);
  EXPECT_EQ(w.Percentile(25, 0, 0), 2.0);  // NaNs sort last
  EXPECT_EQ(w.Mode(0, 0), 1.0);
}

TEST_F(VectorStats, MeanErrorsUseTheComponentForm) {
  TVector w;
  w.SetName("Vec1");
  Set(w, {2, 0, 8});
  EXPECT_EQ(w.GeometricMean(0, 0), 0.0);
  Set(w, {2, -1});
  try {
    w.GeometricMean(0, 0);
    FAIL();
  } catch (const quv::EQUVVectorError& e) {
    EXPECT_STREQ(e.what(), "Component \"Vec1\": negative argument passed to GeometricMean");
  }
  Set(w, {2, 0, 8});
  try {
    w.HarmonicMean(0, 0);
    FAIL();
  } catch (const quv::EQUVVectorError& e) {
    EXPECT_STREQ(e.what(), "Component \"Vec1\": negative or zero argument passed to HarmonicMean");
  }
  EXPECT_DOUBLE_EQ(w.HarmonicMean(3, 3), 8.0);
}

TEST(IntVectorStats, IntegerValuesAgreeWithReference) {
  TIntVector v;
  Set(v, {3, -1, 7, 3, 12, 0, 5, 3, 8, -4, 7, 2});
  double mean = 0, var = 0;
  v.MeanVar(0, 0, mean, var);
  EXPECT_DOUBLE_EQ(mean, 3.75);
  EXPECT_NEAR(var, 19.113636363636363, 1e-13);
  double skew = 0, kurt = 0;
  v.SkewKurtSample(0, 0, skew, kurt);
  EXPECT_NEAR(skew, 0.10035955124368713, 1e-14);
  EXPECT_NEAR(kurt, 0.068111731169554712, 1e-14);
  double q1 = 0, q2 = 0, q3 = 0;
  v.Quartiles(0, 0, q1, q2, q3);
  EXPECT_EQ(q1, 1.5);
  EXPECT_EQ(q2, 3.0);
  EXPECT_EQ(q3, 7.0);
  EXPECT_EQ(v.Mode(0, 0), 3);
  EXPECT_EQ(v.Sum(0, 0), 45.0);
  std::int32_t mn = 0, mx = 0;
  v.MinMax(0, 0, mn, mx);
  EXPECT_EQ(mn, -4);
  EXPECT_EQ(mx, 12);
  EXPECT_THROW(v.GeometricMean(0, 0), quv::EQUVVectorError);
  EXPECT_NEAR(v.GeometricMean(3, 5), std::cbrt(7.0 * 3 * 12), 1e-13);
}

TEST_F(VectorStats, HistogramCountsBoundsAndLimit) {
  quv::TIntArray hist = {42};
  std::int32_t under = -1, over = -1, maxCount = -1;
  ASSERT_TRUE(v.Histogram(1, 20, 0.0, 9.0, 1.0, hist, under, over, maxCount));
  EXPECT_EQ(hist, (quv::TIntArray{1, 3, 2, 2, 4, 2, 2, 2, 1, 1}));  // numpy.histogram
  EXPECT_EQ(under, 0);
  EXPECT_EQ(over, 0);
  EXPECT_EQ(maxCount, 4);

  ASSERT_TRUE(v.Histogram(1, 20, 2.0, 6.0, 2.0, hist, under, over, maxCount));
  EXPECT_EQ(hist, (quv::TIntArray{4, 6, 4}));  // [2,4) [4,6) [6,8)
  EXPECT_EQ(under, 4);                         // 1.7 x3, 0.6
  EXPECT_EQ(over, 2);                          // 9.3, 8.4: at or above 6 + 2
  EXPECT_EQ(maxCount, 6);

  ASSERT_TRUE(v.Histogram(0, 0, 0.0, 9.0, 1.0, hist, under, over, maxCount));
  EXPECT_EQ(hist.size(), 10u);  // the range is used as given: (0, 0) holds no element
  EXPECT_EQ(maxCount, 0);

  hist = {7, 7};
  EXPECT_FALSE(v.Histogram(1, 20, 0.0, 500.0, 1.0, hist, under, over, maxCount));  // 501 bins
  EXPECT_EQ(hist, (quv::TIntArray{7, 7}));
  EXPECT_TRUE(v.Histogram(1, 20, 0.0, 499.0, 1.0, hist, under, over, maxCount));  // 500 bins
  EXPECT_FALSE(v.Histogram(1, 20, 0.0, 9.0, 0.0, hist, under, over, maxCount));

  TIntVector counts;
  int resized = 0;
  counts.OnResize = [&resized](quv::TComponent*) { ++resized; };
  ASSERT_TRUE(v.Histogram(1, 20, 0.0, 9.0, 1.0, counts, under, over, maxCount));
  EXPECT_EQ(counts.NrOfElem(), 10);
  EXPECT_EQ(counts.GetVal(5), 4);
  EXPECT_EQ(resized, 1);
}

TEST(IntVectorHistogram, RaisesOnInvalidBinCount) {
  TIntVector v;
  v.SetName("IV");
  Set(v, {0, 1, 1, 5, 9, 10, -3});
  try {
    quv::TIntArray hist;
    std::int32_t u = 0, o = 0, m = 0;
    v.Histogram(1, 7, 0, 1000, 1, hist, u, o, m);
    FAIL();
  } catch (const quv::EQUVVectorError& e) {
    EXPECT_STREQ(e.what(), "Component \"IV.Histogram\": invalid number of bins");
  }
  quv::TIntArray hist;
  std::int32_t u = 0, o = 0, m = 0;
  EXPECT_THROW(v.Histogram(1, 7, 0, 10, 0, hist, u, o, m), quv::EQUVVectorError);
  TIntVector counts;
  ASSERT_TRUE(v.Histogram(1, 7, 0, 8, 2, counts, u, o, m));
  EXPECT_EQ(counts.Storage(), (quv::TIntArray{3, 0, 1, 0, 1}));
  EXPECT_EQ(u, 1);
  EXPECT_EQ(o, 1);  // 10 >= 8 + 2
  EXPECT_EQ(m, 3);
}

TEST(VectorNormalise, SilentRewritesAndTheirResults) {
  TVector v;
  Set(v, kSample);
  int events = 0;
  v.OnChange = [&events](quv::TComponent*) { ++events; };
  v.OnResize = v.OnChange;
  EXPECT_NEAR(v.MeanCenter(), 4.515, 1e-15);
  double mean = 1, var = 0;
  v.MeanVar(0, 0, mean, var);
  EXPECT_NEAR(mean, 0.0, 1e-15);
  double m = 0, sd = 0;
  v.Standardize(m, sd);
  EXPECT_NEAR(sd, std::sqrt(5.8760789473684216), 1e-14);
  v.MeanVar(0, 0, mean, var);
  EXPECT_NEAR(var, 1.0, 1e-14);
  TVector q;
  Set(q, kSample);
  q.OnChange = v.OnChange;
  double median = 0, spread = 0;
  q.QNormalize(25, median, spread);
  EXPECT_NEAR(median, 4.2, 1e-15);
  EXPECT_NEAR(spread, 4.2 - 2.65, 1e-14);
  EXPECT_NEAR(q.Percentile(50, 0, 0), 0.0, 1e-15);
  EXPECT_EQ(events, 0);  // all three rewrite silently

  TVector two;
  Set(two, {1, 3});
  two.Standardize(m, sd);  // variance 1.0 for two elements: sd 1
  EXPECT_EQ(sd, 1.0);
  EXPECT_EQ(two.Storage(), (std::vector<double>{-1, 1}));
}

TEST(VectorIntegrate, RulesAreExactWhereTheyShouldBe) {
  // Cubic y = x^3 - 2x^2 + 3 sampled at x = 1..n: every Simpson variant is exact for cubics.
  const auto cubic = [](double x) { return x * x * x - 2 * x * x + 3; };
  const auto primitive = [](double x) { return x * x * x * x / 4 - 2 * x * x * x / 3 + 3 * x; };
  for (std::int32_t n = 3; n <= 12; ++n) {
    TVector v;
    v.Resize(n);
    for (std::int32_t i = 1; i <= n; ++i)
      v.SetVal(i, cubic(i));
    EXPECT_NEAR(v.Integrate(1, n, quv::imSimpson), primitive(n) - primitive(1), 1e-9) << n;
  }
  // Linear data: the trapezoid rule is exact, also over partial intervals at both ends.
  TVector lin;
  lin.Resize(8);
  lin.FillSerial(2.0, 0.5);  // y = 1.5 + 0.5 x
  const auto linPrim = [](double x) { return 1.5 * x + 0.25 * x * x; };
  EXPECT_NEAR(lin.Integrate(1.25, 6.6, quv::imTrapezoidal), linPrim(6.6) - linPrim(1.25), 1e-12);
  EXPECT_NEAR(lin.Integrate(6.6, 1.25, quv::imSimpson), linPrim(6.6) - linPrim(1.25), 1e-12);
  EXPECT_NEAR(lin.Integrate(2.2, 2.7, quv::imSimple), linPrim(2.7) - linPrim(2.2), 1e-12);
  EXPECT_NEAR(lin.Integrate(-5, 100, quv::imTrapezoidal), linPrim(8) - linPrim(1), 1e-12);
  // The rectangle rule takes the left value of each whole interval: 2 + 2.5 + 3.
  EXPECT_NEAR(lin.Integrate(1, 4, quv::imSimple), 7.5, 1e-12);
  // Boole's rule on 4 intervals differs from composite Simpson on a quartic: check the
  // weights (7, 32, 12, 32, 7) * 2/45 directly.
  TVector q;
  q.Resize(5);
  for (std::int32_t i = 1; i <= 5; ++i)
    q.SetVal(i, std::pow(i, 4.0));
  const double boole = 2.0 / 45 * (7 * 1 + 32 * 16 + 12 * 81 + 32 * 256 + 7 * 625);
  EXPECT_NEAR(q.Integrate(1, 5, quv::imSimpson), boole, 1e-9);
  TVector single;
  EXPECT_EQ(single.Integrate(1, 1, quv::imSimpson), 0.0);
}

TEST(VectorRandom, GaussFillHasItsMoments) {
  quv::SetRandSeed(12345);
  quv::ResetGRandom();
  TVector v;
  v.Resize(20000);
  int changes = 0;
  v.OnChange = [&changes](quv::TComponent*) { ++changes; };
  v.FillRandomGauss(10.0, 2.0);
  EXPECT_EQ(changes, 1);
  EXPECT_FALSE(v.Cleared());
  double mean = 0, var = 0;
  v.MeanVar(0, 0, mean, var);
  EXPECT_NEAR(mean, 10.0, 0.05);  // 4 standard errors
  EXPECT_NEAR(var, 4.0, 0.16);
}

}  // namespace
