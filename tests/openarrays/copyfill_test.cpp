#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "array_test_util.h"
#include "quv/openarrays/openarrays.h"

namespace quv {
namespace {

using testing_util::BoundsTuple;
using testing_util::Build;
using testing_util::ForBox;
using testing_util::Index;

// Reads the element at an index of a nested array.
template <int R, class A>
auto Get(const A& a, const Index<R>& ix) {
  if constexpr (R == 1) {
    return a[static_cast<std::size_t>(ix[0])];
  } else {
    Index<R - 1> rest{};
    for (int d = 1; d < R; ++d)
      rest[d - 1] = ix[d];
    return Get<R - 1>(a[static_cast<std::size_t>(ix[0])], rest);
  }
}

template <int R, class A>
std::int32_t CopyRanged(const A& src, const Index<R>& lo, const Index<R>& hi, const Index<R>& at,
                        A& dst) {
  return std::apply([&](auto... b) { return CopyArray(src, b..., dst); },
                    std::tuple_cat(BoundsTuple<R>(lo, hi), std::tuple_cat(at)));
}
template <int R, class A>
std::int32_t CopyWhole(const A& src, const Index<R>& at, A& dst) {
  return std::apply([&](auto... b) { return CopyArray(src, b..., dst); }, std::tuple_cat(at));
}
template <int R, class A, class T>
std::int32_t FillRanged(A& a, T value, const Index<R>& lo, const Index<R>& hi) {
  return std::apply([&](auto... b) { return FillArray(a, value, b...); }, BoundsTuple<R>(lo, hi));
}

template <class T, int R>
void CheckCopyAndFill() {
  SCOPED_TRACE(testing::Message() << "rank " << R);
  Index<R> src_ext{};
  Index<R> dst_ext{};
  for (int d = 0; d < R; ++d) {
    src_ext[d] = 3;
    dst_ext[d] = 5;
  }
  const auto src = Build<T, R>(src_ext, [](const Index<R>& ix) {
    T v = 1;
    for (int d = 0; d < R; ++d)
      v = static_cast<T>(v * 10 + ix[d]);
    return v;
  });
  const auto blank = Build<T, R>(dst_ext, [](const Index<R>&) { return T{-1}; });
  Index<R> lo{};
  Index<R> hi{};
  Index<R> at{};
  lo.fill(1);
  hi.fill(2);
  at.fill(3);
  auto dst = blank;
  ASSERT_EQ(CopyRanged<R>(src, lo, hi, at, dst), kOAOk);
  // Every destination cell holds either the shifted source or is untouched.
  Index<R> zero{};
  Index<R> top{};
  top.fill(4);
  ForBox<R>(zero, top, [&](const Index<R>& ix) {
    bool inside = true;
    Index<R> s{};
    for (int d = 0; d < R; ++d) {
      inside = inside && ix[d] >= 3;
      s[d] = ix[d] - 3 + 1;
    }
    EXPECT_EQ(Get<R>(dst, ix), inside ? Get<R>(src, s) : T{-1});
  });
  // The whole source at position 2 in every dimension fits exactly; at 3 it does not.
  dst = blank;
  at.fill(2);
  EXPECT_EQ(CopyWhole<R>(src, at, dst), kOAOk);
  EXPECT_EQ(Get<R>(dst, top), Get<R>(src, hi));

  // Failures in every dimension leave the destination untouched.
  for (int d = 0; d < R; ++d) {
    for (int kind = 0; kind < 6; ++kind) {
      Index<R> l = lo;
      Index<R> h = hi;
      Index<R> a{};
      a.fill(0);
      if (kind == 0) l[d] = -1;
      if (kind == 1) h[d] = 3;  // past the end of the source
      if (kind == 2) std::swap(l[d], h[d]);
      if (kind == 3) a[d] = -1;
      if (kind == 4) a[d] = 5;  // at the end of the destination
      if (kind == 5) a[d] = 4;  // two elements do not fit behind position 4
      dst = blank;
      EXPECT_EQ(CopyRanged<R>(src, l, h, a, dst), kOABadBounds) << "dim " << d << " kind " << kind;
      EXPECT_EQ(dst, blank);
      auto filled = blank;
      if (kind == 0 || kind == 2) {  // the fill target is longer than the source
        EXPECT_EQ(FillRanged<R>(filled, T{7}, l, h), kOABadBounds);
        EXPECT_EQ(filled, blank);
      }
    }
    Index<R> a{};
    a[d] = 3;  // the whole source (3 long) does not fit behind position 3
    dst = blank;
    EXPECT_EQ(CopyWhole<R>(src, a, dst), kOABadBounds);
    EXPECT_EQ(dst, blank);
  }
  // Empty source or destination: -1, even when the other is fine.
  std::remove_cvref_t<decltype(src)> empty;
  dst = blank;
  EXPECT_EQ(CopyRanged<R>(src, lo, hi, zero, empty), kOAEmpty);
  EXPECT_EQ(CopyWhole<R>(empty, zero, dst), kOAEmpty);
  EXPECT_EQ(dst, blank);
  EXPECT_EQ(FillRanged<R>(empty, T{1}, lo, hi), kOAEmpty);

  // Fill over a sub-range against a brute-force count.
  auto filled = blank;
  EXPECT_EQ(FillRanged<R>(filled, T{7}, lo, hi), kOAOk);
  std::int32_t sevens = 0;
  ForBox<R>(zero, top, [&](const Index<R>& ix) { sevens += Get<R>(filled, ix) == T{7} ? 1 : 0; });
  EXPECT_EQ(sevens, 1 << R);
  EXPECT_EQ(FillArray(filled, T{2}), kOAOk);
  EXPECT_EQ(Get<R>(filled, zero), T{2});
}

TEST(CopyAndFillFamily, CodesAndUntouchedDestinationForEveryRankAndType) {
  CheckCopyAndFill<double, 1>();
  CheckCopyAndFill<double, 2>();
  CheckCopyAndFill<double, 3>();
  CheckCopyAndFill<double, 4>();
  CheckCopyAndFill<std::int32_t, 1>();
  CheckCopyAndFill<std::int32_t, 2>();
  CheckCopyAndFill<std::int32_t, 3>();
  CheckCopyAndFill<std::int32_t, 4>();
}

TEST(CopyAndFillFamily, DocumentedCasesRaggedAndOverlap) {
  TDoubleArray dest(5, 0.0);
  EXPECT_EQ(CopyArray(TDoubleArray{1, 2, 3}, 1, 2, 3, dest), 0);
  EXPECT_EQ(dest, (TDoubleArray{0, 0, 0, 2, 3}));
  EXPECT_EQ(CopyArray(TDoubleArray{1, 2, 3}, 1, 2, 4, dest), -2);
  EXPECT_EQ(dest, (TDoubleArray{0, 0, 0, 2, 3}));
  TDoubleArray none;
  EXPECT_EQ(CopyArray(TDoubleArray{1}, 0, none), -1);
  TDoubleArray fill{1, 2, 3};
  EXPECT_EQ(FillArray(fill, 9.0, 2, 1), -2);
  EXPECT_EQ(fill, (TDoubleArray{1, 2, 3}));

  // Ragged destination: the second row is too short for the copy.
  TInt2DArray ragged{{0, 0, 0}, {0}};
  const TInt2DArray src{{1, 2}, {3, 4}};
  EXPECT_EQ(CopyArray(src, 0, 1, ragged), -2);
  EXPECT_EQ(ragged, (TInt2DArray{{0, 0, 0}, {0}}));
  EXPECT_EQ(CopyArray(src, 0, 0, 0, 1, 0, 1, ragged), 0);  // first row only
  EXPECT_EQ(ragged, (TInt2DArray{{0, 1, 2}, {0}}));

  // Copy within one array, both directions.
  TIntArray self{1, 2, 3, 4, 5};
  EXPECT_EQ(CopyArray(self, 0, 2, 2, self), 0);
  EXPECT_EQ(self, (TIntArray{1, 2, 1, 2, 3}));
  EXPECT_EQ(CopyArray(self, 2, 4, 0, self), 0);
  EXPECT_EQ(self, (TIntArray{1, 2, 3, 2, 3}));

  TBool2DArray mask(2, TBoolArray(2, 0));
  EXPECT_EQ(CopyArray(TBool2DArray{{1}}, 1, 1, mask), 0);
  EXPECT_EQ(mask, (TBool2DArray{{0, 0}, {0, 1}}));
  EXPECT_EQ(FillArray(mask, true), 0);
  EXPECT_EQ(mask, (TBool2DArray{{1, 1}, {1, 1}}));
}

TEST(CloneFamily, ClonesRangesAndReverses) {
  const TInt3DArray cube{{{1, 2}, {3, 4}}, {{5, 6}, {7, 8}}};
  TInt3DArray part{{{42}}};
  EXPECT_EQ(CloneArray(cube, 1, 0, 1, 1, 1, 1, part), 0);
  EXPECT_EQ(part, (TInt3DArray{{{6}, {8}}}));
  EXPECT_EQ(CloneArray(cube, 1, 0, 1, 2, 1, 1, part), -2);
  EXPECT_EQ(part, (TInt3DArray{{{6}, {8}}}));
  EXPECT_EQ(CloneArray(cube), cube);
  EXPECT_EQ(CloneArray(TStrArray{"a", "b"}), (TStrArray{"a", "b"}));
  EXPECT_EQ(CloneAndReverseArray(TDoubleArray{1, 2, 3}), (TDoubleArray{3, 2, 1}));
  EXPECT_EQ(CloneAndReverseArray(TInt2DArray{{1, 2}, {3}}), (TInt2DArray{{3}, {2, 1}}));
  EXPECT_EQ(CloneAndReverseArray(TStrArray{"x", "y"}), (TStrArray{"y", "x"}));
}

TEST(FillFamily, SeriesMaskDiagonalAndRandom) {
  TInt2DArray grid(2, TIntArray(3, 0));
  EXPECT_EQ(FillArraySerial(grid, 10, -2), 0);
  EXPECT_EQ(grid, (TInt2DArray{{10, 8, 6}, {4, 2, 0}}));
  EXPECT_EQ(FillArraySerial(grid, 1, 1, 0, 1, 1, 2), 0);
  EXPECT_EQ(grid, (TInt2DArray{{10, 1, 2}, {4, 3, 4}}));
  EXPECT_EQ(FillArraySerial(grid, 1, 1, 0, 1, 1, 3), -2);
  TDoubleArray series(1'000'001);
  EXPECT_EQ(FillArraySerial(series, 0.0, 0.1), 0);
  EXPECT_DOUBLE_EQ(series.back(), 100000.0);  // no drift over a long series
  TSingleArray floats(3);
  EXPECT_EQ(FillArraySerial(floats, 0.5f, 0.25f), 0);
  EXPECT_EQ(floats[2], 1.0f);

  TDouble2DArray data{{1, 2}, {3, 4}};
  EXPECT_EQ(FillArrayMasked(data, {{0, 1}, {1, 0}}, 0.0), 0);
  EXPECT_EQ(data, (TDouble2DArray{{1, 0}, {0, 4}}));
  EXPECT_EQ(FillArrayMasked(data, {{1, 1}}, 9.0), -2);
  EXPECT_EQ(data, (TDouble2DArray{{1, 0}, {0, 4}}));

  TInt3DArray cube(3, TInt2DArray(2, TIntArray(3, 0)));
  EXPECT_EQ(FillDiagArray(cube, 5), 0);
  EXPECT_EQ(cube[0][0][0] + cube[1][1][1], 10);
  EXPECT_EQ(cube[2][1][2], 0);  // index 2 is past the second dimension
  TDouble2DArray empty;
  EXPECT_EQ(FillDiagArray(empty, 1.0), -1);

  SetRandSeed(12345);
  TInt2DArray dice(100, TIntArray(100, 0));
  EXPECT_EQ(FillRandomUniform(dice, 6, 1), 0);
  std::int32_t low = 99, high = -99;
  EXPECT_EQ(MinMaxArray(dice, low, high), 0);
  EXPECT_EQ(low, 1);
  EXPECT_EQ(high, 6);
  TDoubleArray u(20000);
  EXPECT_EQ(FillRandomUniform(u, 2.0, 4.0), 0);
  double mean = 0;
  EXPECT_EQ(MeanArray(u, 0, 19999, mean), 0);
  EXPECT_NEAR(mean, 3.0, 0.03);  // standard error 0.008
  EXPECT_EQ(FillRandomUniform(u, 0.0, 1.0, 5, 20000), -2);
  TDouble3DArray g(10, TDouble2DArray(10, TDoubleArray(100)));
  EXPECT_EQ(FillRandomNormal(g, 5.0, 2.0), 0);
  double sd = 0;
  EXPECT_EQ(StdDevArray(g, 0, 0, 0, 9, 9, 99, sd), 0);
  EXPECT_NEAR(sd, 2.0, 0.06);  // standard error about 0.014
}

}  // namespace
}  // namespace quv
