#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "array_test_util.h"
#include "quv/openarrays/openarrays.h"

namespace quv {
namespace {

using testing_util::BoundsTuple;
using testing_util::Build;
using testing_util::ForBox;
using testing_util::Index;

// Element value used by the rank-generic tests: distinct in every position.
template <int R>
double Value(const Index<R>& ix) {
  double v = 0.5;
  for (int d = 0; d < R; ++d)
    v = v * 7.0 + ix[d] * (d + 1.5);
  return v;
}

// Calls MeanArray / StdDevArray / MeanVarArray of rank R with the bounds unpacked.
template <int R, class A>
std::int32_t Mean(const A& a, const Index<R>& lo, const Index<R>& hi, double& m) {
  return std::apply([&](auto... b) { return MeanArray(a, b..., m); }, BoundsTuple<R>(lo, hi));
}
template <int R, class A>
std::int32_t StdDev(const A& a, const Index<R>& lo, const Index<R>& hi, double& s) {
  return std::apply([&](auto... b) { return StdDevArray(a, b..., s); }, BoundsTuple<R>(lo, hi));
}

template <class T, int R>
void CheckCodesAndSubRanges() {
  SCOPED_TRACE(testing::Message() << "rank " << R);
  Index<R> ext{};
  for (int d = 0; d < R; ++d)
    ext[d] = 3 + d;
  const auto value = [](const Index<R>& ix) { return static_cast<T>(Value<R>(ix)); };
  const auto a = Build<T, R>(ext, value);
  Index<R> lo{};
  Index<R> hi{};
  for (int d = 0; d < R; ++d) {
    lo[d] = d % 2;
    hi[d] = ext[d] - 1 - (d + 1) % 2;
  }
  // Brute force over the sub-range.
  long double sum = 0;
  long double n = 0;
  ForBox<R>(lo, hi, [&](const Index<R>& ix) {
    sum += value(ix);
    n += 1;
  });
  const long double mean = sum / n;
  long double sq = 0;
  ForBox<R>(lo, hi, [&](const Index<R>& ix) { sq += (value(ix) - mean) * (value(ix) - mean); });
  double m = 99;
  double s = 99;
  EXPECT_EQ(Mean<R>(a, lo, hi, m), kOAOk);
  EXPECT_NEAR(m, static_cast<double>(mean), 1e-12 * std::fabs(static_cast<double>(mean)));
  EXPECT_EQ(StdDev<R>(a, lo, hi, s), kOAOk);
  EXPECT_NEAR(s, std::sqrt(static_cast<double>(sq / (n - 1))), 1e-9);
  // A single element: mean is the element, deviation 0.
  EXPECT_EQ(StdDev<R>(a, hi, hi, s), kOAOk);
  EXPECT_EQ(s, 0.0);
  EXPECT_EQ(Mean<R>(a, hi, hi, m), kOAOk);
  EXPECT_DOUBLE_EQ(m, static_cast<double>(value(hi)));

  // Every bad bound in every dimension gives -2 and a zero result.
  for (int d = 0; d < R; ++d) {
    for (int kind = 0; kind < 4; ++kind) {
      Index<R> l = lo;
      Index<R> h = hi;
      if (kind == 0) l[d] = -1;              // negative low bound
      if (kind == 1) h[d] = -1;              // negative high bound
      if (kind == 2) h[d] = ext[d];          // past the end
      if (kind == 3) std::swap(l[d], h[d]);  // high below low
      m = s = 99;
      EXPECT_EQ(Mean<R>(a, l, h, m), kOABadBounds) << "dim " << d << " kind " << kind;
      EXPECT_EQ(m, 0.0);
      EXPECT_EQ(StdDev<R>(a, l, h, s), kOABadBounds);
      EXPECT_EQ(s, 0.0);
    }
  }
  // Empty outer array, and (rank > 1) an empty first inner array: -1 even with bad bounds.
  decltype(a) empty;
  m = 99;
  EXPECT_EQ(Mean<R>(empty, lo, hi, m), kOAEmpty);
  EXPECT_EQ(m, 0.0);
  if constexpr (R > 1) {
    decltype(a) hollow(2);
    Index<R> neg{};
    neg.fill(-1);
    EXPECT_EQ(Mean<R>(hollow, neg, neg, m), kOAEmpty);
    EXPECT_EQ(StdDev<R>(hollow, lo, hi, s), kOAEmpty);
  }
}

TEST(OpenArrayStatsFamily, CodesAndSubRangesForEveryRankAndType) {
  CheckCodesAndSubRanges<double, 1>();
  CheckCodesAndSubRanges<double, 2>();
  CheckCodesAndSubRanges<double, 3>();
  CheckCodesAndSubRanges<double, 4>();
  CheckCodesAndSubRanges<std::int32_t, 1>();
  CheckCodesAndSubRanges<std::int32_t, 2>();
  CheckCodesAndSubRanges<std::int32_t, 3>();
  CheckCodesAndSubRanges<std::int32_t, 4>();
}

TEST(OpenArrayStatsFamily, DocumentedCases) {
  double m = -1;
  EXPECT_EQ(MeanArray(TDoubleArray{1, 2, 3}, 2, 2, m), 0);
  EXPECT_EQ(m, 3.0);
  EXPECT_EQ(MeanArray(TDoubleArray{1, 2, 3}, 2, 1, m), -2);
  EXPECT_EQ(MeanArray(TDouble2DArray{{1, 2}, {3, 4}}, 0, 1, 1, 1, m), 0);
  EXPECT_EQ(m, 3.0);
  double s = -1;
  EXPECT_EQ(StdDevArray(TIntArray{1, 2, 3}, 0, 2, s), 0);
  EXPECT_DOUBLE_EQ(s, 1.0);
  double v = -1;
  EXPECT_EQ(MeanVarArray(TIntArray{2, 4, 4, 4, 5, 5, 7, 9}, 0, 7, m, v), 0);
  EXPECT_DOUBLE_EQ(m, 5.0);
  EXPECT_DOUBLE_EQ(v, 32.0 / 7.0);
  EXPECT_EQ(MeanVarArray(TDouble2DArray{{1, 2}, {3}}, 0, 0, 1, 1, m, v), -2);  // ragged
  EXPECT_EQ(m, 0.0);
  EXPECT_EQ(v, 0.0);
  EXPECT_EQ(MeanVarArray(TDouble2DArray{{1, 2}, {3}}, 0, 0, 1, 0, m, v), 0);
  EXPECT_DOUBLE_EQ(v, 2.0);
  // Extended accumulation: 1e20 + 1 - 1e20 does not lose the 1 in the mean.
  EXPECT_EQ(MeanArray(TDoubleArray{1e16, 1, -1e16, 1}, 0, 3, m), 0);
  EXPECT_DOUBLE_EQ(m, 0.5);
  EXPECT_EQ(MeanAbsDev(TDoubleArray{1, 2, 3, 4, 100}, 4, m), 0);
  EXPECT_DOUBLE_EQ(m, 1.0);
  EXPECT_EQ(MeanAbsDev(TIntArray{1, 2}, 3, m), -2);
  EXPECT_EQ(MeanAbsDev(TIntArray{}, 1, m), -1);
}

TEST(OpenArrayStatsFamily, RaggedRowsAreCheckedAgainstTheirOwnLength) {
  const TInt2DArray ragged{{1, 2, 3}, {4}, {5, 6, 7}};
  double m = 7;
  EXPECT_EQ(MeanArray(ragged, 0, 0, 2, 0, m), 0);  // first column exists everywhere
  EXPECT_DOUBLE_EQ(m, 10.0 / 3.0);
  EXPECT_EQ(MeanArray(ragged, 0, 1, 2, 2, m), -2);  // row 1 is too short
  EXPECT_EQ(m, 0.0);
  EXPECT_EQ(MeanArray(ragged, 2, 1, 2, 2, m), 0);  // only row 2 touched
  EXPECT_DOUBLE_EQ(m, 6.5);
}

TEST(OpenArrayExtremes, FirstOfEqualsSentinelsAndIndices) {
  std::int32_t ix = 42;
  EXPECT_EQ(MaxArray(TDoubleArray{5, 7, 7}, ix), 7.0);
  EXPECT_EQ(ix, 1);
  EXPECT_EQ(MinArray(TIntArray{3, 1, 1, 2}, ix), 1);
  EXPECT_EQ(ix, 1);
  ix = 42;
  EXPECT_EQ(MaxArray(TDoubleArray{}, ix), -2147483648.0);
  EXPECT_EQ(ix, 42);
  EXPECT_EQ(MinArray(TDoubleArray{}, ix), 2147483647.0);
  EXPECT_EQ(MaxArray(TInt3DArray{}), -2147483647 - 1);
  std::int32_t i1 = 9;
  std::int32_t i2 = 9;
  EXPECT_EQ(MaxArray(TDouble2DArray{{}, {1, 8}, {8, 2}}, i1, i2), 8.0);
  EXPECT_EQ(i1, 1);
  EXPECT_EQ(i2, 1);
  EXPECT_EQ(MinArray(TInt2DArray{{4}, {-3, 0, -3}}, i1, i2), -3);
  EXPECT_EQ(i1, 1);
  EXPECT_EQ(i2, 0);
  EXPECT_EQ(MaxArray(TDouble4DArray{{{{1, 9}}}, {{{9, 3}}}}), 9.0);
  EXPECT_EQ(MinArray(TInt4DArray{{{{1, -9}}}, {{{9, 3}}}}), -9);

  float fmin = 1;
  float fmax = 1;
  EXPECT_EQ(MinMaxArray(TSingleArray{2.5f, -1.0f, 4.0f}, fmin, fmax), 0);
  EXPECT_EQ(fmin, -1.0f);
  EXPECT_EQ(fmax, 4.0f);
  double dmin = 1;
  double dmax = 1;
  EXPECT_EQ(MinMaxArray(TDouble3DArray{{{}}}, dmin, dmax), -1);
  std::int32_t lo_ix = 5;
  std::int32_t hi_ix = 5;
  EXPECT_EQ(MinMaxArray(TDoubleArray{9, 2, 5, 2, 5, 0}, 1, 4, dmin, dmax, lo_ix, hi_ix), 0);
  EXPECT_EQ(dmin, 2.0);
  EXPECT_EQ(lo_ix, 1);
  EXPECT_EQ(dmax, 5.0);
  EXPECT_EQ(hi_ix, 2);
  std::int32_t a = 1, b = 1, c = 1, d = 1, imin = 1, imax = 1;
  const TInt2DArray grid{{7, 1, 3}, {0, 9, 9}, {0, 8, 2}};
  EXPECT_EQ(MinMaxArray(grid, 1, 1, 2, 2, imin, imax, a, b, c, d), 0);
  EXPECT_EQ(imin, 2);
  EXPECT_EQ(a, 2);
  EXPECT_EQ(b, 2);
  EXPECT_EQ(imax, 9);
  EXPECT_EQ(c, 1);
  EXPECT_EQ(d, 1);
  EXPECT_EQ(MinMaxArray(grid, 1, 1, 3, 2, imin, imax, a, b, c, d), -2);
  EXPECT_EQ(imin, 0);
  EXPECT_EQ(c, 0);
}

}  // namespace
}  // namespace quv
