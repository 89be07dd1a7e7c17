// Statistics, histograms, normalisations and integration of the vectors.
//
// Reference values were computed once with Python 3.11, NumPy 1.24 and SciPy 1.10 and are
// kept here as literals (17 significant digits): mean and var(ddof=1); the population forms
// from scipy.stats.skew/kurtosis(bias=True) rescaled to the n - 1 standard deviation that
// SkewKurt uses (skew * ((n-1)/n)^1.5, kurtosis(fisher=False) * ((n-1)/n)^2 - 3); the sample
// forms from skew/kurtosis(bias=False); gmean, hmean; numpy.percentile (linear); mode.
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "quv/vector/vector.h"
#include "vector/vector_test_util.h"

namespace quv::test {
namespace {

const std::vector<double> kSample = {4.2, 1.7, 9.3, 4.2, 6.1, 2.8, 4.2, 7.7, 3.3, 5.0,
                                     1.7, 8.4, 6.1, 2.2, 5.9, 1.7, 4.2, 3.9, 7.1, 0.6};

class VectorStats : public ::testing::Test {
 protected:
  void SetUp() override {
    v.SetName("Vec1");
    Set(v, kSample);
  }
  TVector v;
};

TEST_F(VectorStats, MeansMomentsAndTheirErrors) {
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
  EXPECT_EQ(std::tuple(mn, mnIx, mx, mxIx), std::tuple(0.6, 20, 9.3, 3));
  v.MinMax(19, 1, mnIx, mxIx, mn, mx);  // 1.7 at 2, 11 and 16: the first counts
  EXPECT_EQ(std::tuple(mn, mnIx, mx, mxIx), std::tuple(1.7, 2, 9.3, 3));

  Set(v, {2, 0, 8});
  EXPECT_EQ(v.GeometricMean(0, 0), 0.0);
  EXPECT_EQ(MessageOf([&] { v.HarmonicMean(0, 0); }),
            "Component \"Vec1\": negative or zero argument passed to HarmonicMean");
  EXPECT_DOUBLE_EQ(v.HarmonicMean(3, 3), 8.0);
  Set(v, {2, -1});
  EXPECT_EQ(MessageOf([&] { v.GeometricMean(0, 0); }),
            "Component \"Vec1\": negative argument passed to GeometricMean");
}

TEST(VectorSmallCounts, KeepTheirDefaults) {
  TVector two, three, flat, single;
  Set(two, {3.0, 8.0});
  Set(three, {1, 2, 9});
  Set(flat, {2, 2, 2, 2, 2});
  double mean = 0, var = 0;
  two.MeanVar(0, 0, mean, var);
  EXPECT_EQ(std::pair(mean, var), std::pair(5.5, 1.0));  // 1.0 on purpose below 3 elements
  flat.MeanVar(0, 0, mean, var);
  EXPECT_EQ(var, 0.0);
  const auto moments = [](const TVector& x, bool sample) {
    double skew = 7, kurt = 7;
    sample ? x.SkewKurtSample(0, 0, skew, kurt) : x.SkewKurt(0, 0, skew, kurt);
    return std::pair(skew, kurt);
  };
  for (const TVector* x : {&three, &flat})  // too few elements, constant data
    EXPECT_EQ(moments(*x, false), std::pair(0.0, 0.0));
  EXPECT_EQ(moments(three, true), std::pair(0.0, 0.0));
  single.SetVal(1, 4.5);
  EXPECT_EQ(std::pair(single.Mode(0, 0), single.Percentile(37, 0, 0)), std::pair(4.5, 4.5));
}

TEST_F(VectorStats, PercentilesQuartilesAndMode) {
  // numpy.percentile; P is clamped into 0..100.
  const double p[] = {0, 10, 25, 33.3, 50, 75, 90, 99, 100, -5, 150};
  const double ref[] = {0.59999999999999998, 1.7000000000000000, 2.6499999999999999,
                        3.4961999999999991,  4.2000000000000002, 6.0999999999999996,
                        7.7700000000000014,  9.1289999999999996, 9.3000000000000007,
                        0.59999999999999998, 9.3000000000000007};
  for (std::size_t k = 0; k < std::size(p); ++k)
    EXPECT_NEAR(v.Percentile(p[k], 0, 0), ref[k], 1e-14) << p[k];
  // Quartiles sorts where Percentile selects: both must give the same numbers.
  double q1 = 0, q2 = 0, q3 = 0;
  v.Quartiles(0, 0, q1, q2, q3);
  EXPECT_EQ(std::tuple(q1, q2, q3),
            std::tuple(v.Percentile(25, 0, 0), v.Percentile(50, 0, 0), v.Percentile(75, 0, 0)));
  v.Quartiles(15, 5, q1, q2, q3);
  EXPECT_NEAR(q1, 3.05, 1e-14);
  EXPECT_NEAR(q2, 5.0, 1e-14);
  EXPECT_NEAR(q3, 6.1, 1e-14);
  EXPECT_EQ(v.Storage(), kSample);  // the work arrays leave the data alone

  TVector w;
  Set(w, {5, 3, 5, 3, 9});
  EXPECT_EQ(w.Mode(0, 0), 3.0);  // equal runs: the smallest value
  Set(w, {8, 6, 7});
  EXPECT_EQ(w.Mode(0, 0), 6.0);  // all differ: the smallest value
  Set(w, {2, NAN, 1, NAN, 3});   // NaNs sort last
  EXPECT_EQ(std::tuple(w.Percentile(0, 0, 0), w.Percentile(25, 0, 0), w.Mode(0, 0)),
            std::tuple(1.0, 2.0, 1.0));
}

TEST(IntVectorStats, IntegerValuesAgreeWithReference) {
  TIntVector v;
  Set(v, {3, -1, 7, 3, 12, 0, 5, 3, 8, -4, 7, 2});
  double mean = 0, var = 0, skew = 0, kurt = 0, q1 = 0, q2 = 0, q3 = 0;
  v.MeanVar(0, 0, mean, var);
  EXPECT_DOUBLE_EQ(mean, 3.75);
  EXPECT_NEAR(var, 19.113636363636363, 1e-13);
  v.SkewKurtSample(0, 0, skew, kurt);
  EXPECT_NEAR(skew, 0.10035955124368713, 1e-14);
  EXPECT_NEAR(kurt, 0.068111731169554712, 1e-14);
  v.Quartiles(0, 0, q1, q2, q3);
  EXPECT_EQ(std::tuple(q1, q2, q3), std::tuple(1.5, 3.0, 7.0));
  std::int32_t mn = 0, mx = 0;
  v.MinMax(0, 0, mn, mx);
  EXPECT_EQ(std::tuple(v.Mode(0, 0), v.Sum(0, 0), mn, mx), std::tuple(3, 45.0, -4, 12));
  EXPECT_THROW(v.GeometricMean(0, 0), EQUVVectorError);
  EXPECT_NEAR(v.GeometricMean(3, 5), std::cbrt(7.0 * 3 * 12), 1e-13);
}

// (result, counts, underflow, overflow, largest count) of one histogram call.
using H = std::tuple<bool, TIntArray, std::int32_t, std::int32_t, std::int32_t>;

template <class V, class B>
H Histogram(const V& v, std::int32_t first, std::int32_t last, B low, B high, B width) {
  H h{false, {7, 7}, -1, -1, -1};
  auto& [ok, counts, under, over, maxCount] = h;
  ok = v.Histogram(first, last, low, high, width, counts, under, over, maxCount);
  return h;
}

TEST_F(VectorStats, HistogramsOfBothClasses) {
  EXPECT_EQ(Histogram(v, 1, 20, 0.0, 9.0, 1.0),  // numpy.histogram
            (H{true, {1, 3, 2, 2, 4, 2, 2, 2, 1, 1}, 0, 0, 4}));
  // [2,4) [4,6) [6,8); below: 1.7 x3, 0.6; above: 9.3, 8.4 (at or above 6 + 2).
  EXPECT_EQ(Histogram(v, 1, 20, 2.0, 6.0, 2.0), (H{true, {4, 6, 4}, 4, 2, 6}));
  // The range is used as given: (0, 0) holds no element.
  EXPECT_EQ(Histogram(v, 0, 0, 0.0, 9.0, 1.0), (H{true, I(10), 0, 0, 0}));
  // 501 bins or no width: false, nothing changes; 500 bins are allowed.
  EXPECT_EQ(Histogram(v, 1, 20, 0.0, 500.0, 1.0), (H{false, {7, 7}, -1, -1, -1}));
  EXPECT_EQ(Histogram(v, 1, 20, 0.0, 9.0, 0.0), (H{false, {7, 7}, -1, -1, -1}));
  EXPECT_EQ(std::get<1>(Histogram(v, 1, 20, 0.0, 499.0, 1.0)).size(), 500u);

  TIntVector counts;
  EventLog log(counts);
  std::int32_t under = -1, over = -1, maxCount = -1;
  ASSERT_TRUE(v.Histogram(1, 20, 0.0, 9.0, 1.0, counts, under, over, maxCount));
  EXPECT_EQ(counts.Storage(), std::get<1>(Histogram(v, 1, 20, 0.0, 9.0, 1.0)));
  EXPECT_EQ(log.order, "CRC");  // Resize, then CopyFrom

  // Integer histograms raise instead of returning false.
  TIntVector iv;
  iv.SetName("IV");
  Set(iv, {0, 1, 1, 5, 9, 10, -3});
  EXPECT_EQ(Histogram(iv, 1, 7, 0, 8, 2), (H{true, {3, 0, 1, 0, 1}, 1, 1, 3}));  // 10 >= 8 + 2
  // 3.5 widths round to 5 bins, but 9 = 7 + 2 already overflows although bin 5 would hold it.
  EXPECT_EQ(Histogram(iv, 1, 7, 0, 7, 2), (H{true, {3, 0, 1, 0, 0}, 1, 2, 3}));
  const std::string bins = "Component \"IV.Histogram\": invalid number of bins";
  EXPECT_EQ(MessageOf([&] { Histogram(iv, 1, 7, 0, 1000, 1); }), bins);
  EXPECT_EQ(MessageOf([&] { Histogram(iv, 1, 7, 0, 10, 0); }), bins);
  ASSERT_TRUE(iv.Histogram(1, 7, 0, 8, 2, counts, under, over, maxCount));
  EXPECT_EQ(counts.Storage(), (I{3, 0, 1, 0, 1}));
}

TEST(VectorNormalise, SilentRewritesAndTheirResults) {
  TVector v, q, two;
  Set(v, kSample);
  Set(q, kSample);
  EventLog log(v), qlog(q);
  double mean = 1, var = 0, sd = 0, median = 0, spread = 0;
  EXPECT_NEAR(v.MeanCenter(), 4.515, 1e-15);
  v.Standardize(mean, sd);  // of the centred data
  EXPECT_NEAR(mean, 0.0, 1e-15);
  EXPECT_NEAR(sd, std::sqrt(5.8760789473684216), 1e-14);
  v.MeanVar(0, 0, mean, var);
  EXPECT_NEAR(var, 1.0, 1e-14);
  q.QNormalize(25, median, spread);
  EXPECT_NEAR(median, 4.2, 1e-15);
  EXPECT_NEAR(spread, 4.2 - 2.65, 1e-14);
  EXPECT_NEAR(q.Percentile(50, 0, 0), 0.0, 1e-15);
  EXPECT_EQ(log.order + qlog.order, "");  // all three rewrite silently

  Set(two, {1, 3});
  two.Standardize(mean, sd);  // variance 1.0 for two elements: sd 1
  EXPECT_EQ(std::pair(sd, two.Storage()), std::pair(1.0, D{-1, 1}));
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
    EXPECT_NEAR(v.Integrate(1, n, imSimpson), primitive(n) - primitive(1), 1e-9) << n;
  }
  // Boole's rule on 4 intervals is exact up to degree 5 (composite Simpson is not):
  // the integral of x^4 over [1, 5] is (5^5 - 1) / 5.
  TVector q, lin, single;
  Set(q, {1, 16, 81, 256, 625});
  EXPECT_NEAR(q.Integrate(1, 5, imSimpson), 624.8, 1e-9);
  // Linear data: the trapezoid rule is exact, also over partial intervals at both ends.
  lin.Resize(8);
  lin.FillSerial(2.0, 0.5);  // y = 1.5 + 0.5 x
  const auto linPrim = [](double x) { return 1.5 * x + 0.25 * x * x; };
  EXPECT_NEAR(lin.Integrate(1.25, 6.6, imTrapezoidal), linPrim(6.6) - linPrim(1.25), 1e-12);
  EXPECT_NEAR(lin.Integrate(6.6, 1.25, imSimpson), linPrim(6.6) - linPrim(1.25), 1e-12);
  EXPECT_NEAR(lin.Integrate(2.2, 2.7, imSimple), linPrim(2.7) - linPrim(2.2), 1e-12);
  EXPECT_NEAR(lin.Integrate(-5, 100, imTrapezoidal), linPrim(8) - linPrim(1), 1e-12);
  // The rectangle rule takes the left value of each whole interval: 2 + 2.5 + 3.
  EXPECT_NEAR(lin.Integrate(1, 4, imSimple), 7.5, 1e-12);
  EXPECT_EQ(single.Integrate(1, 1, imSimpson), 0.0);
}

}  // namespace
}  // namespace quv::test
