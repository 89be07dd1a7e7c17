// Storage, access, range normalisation, events, arithmetic, searching, sorting, copying and
// filling of TVector and TIntVector.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "quv/math1/math1.h"
#include "quv/vector/vector.h"
#include "vector/vector_test_util.h"

namespace quv::test {
namespace {

TEST(VectorStorage, SizeAccessAndEvents) {
  TVector v;
  EXPECT_EQ(std::tuple(v.Storage(), v.Cleared()), std::tuple(D{0}, true));
  EventLog log(v);
  EXPECT_TRUE(v.Resize(1));  // same size: true
  EXPECT_FALSE(v.Resize(0) || v.Resize(-4));
  EXPECT_EQ(log.order, "");  // none of them fires
  v.SetVecSize(3);
  v.SetVal(1, 7.5);
  v.SetVal(3, -1.0);
  EXPECT_FALSE(v.Cleared());
  EXPECT_TRUE(v.Resize(5));  // kept elements, new ones zero
  EXPECT_EQ(v.Storage(), (D{7.5, 0, -1, 0, 0}));
  EXPECT_TRUE(v.Resize(2));
  EXPECT_EQ(v.Storage(), (D{7.5, 0}));
  // Outside 1..NrOfElem reads give 0 and writes are ignored without events.
  for (const std::int32_t i : {0, 3, -100}) {
    EXPECT_EQ(std::pair(v.GetVal(i), v.Elem(i)), std::pair(0.0, 0.0)) << i;
    v.SetVal(i, 9.0);
  }
  EXPECT_EQ(v.Storage(), (D{7.5, 0}));
  EXPECT_EQ(log.order, "CRCCCRCR");
  v.Clear();
  EXPECT_EQ(std::tuple(v.Storage(), v.Cleared()), std::tuple(D{0, 0}, true));
  EXPECT_EQ(log.order, "CRCCCRCRC");

  TIntVector iv;
  iv.SetIntVecSize(4);
  EXPECT_EQ(iv.Storage(), (I{0, 0, 0, 0}));
}

TEST(VectorRange, MakeValidElemRangeNormalises) {
  TVector v;
  v.Resize(10);
  // First, Last given; the result, First and Last returned.
  const std::int32_t cases[][5] = {{0, 0, kRangeValid, 1, 10},    {1, 10, kRangeValid, 1, 10},
                                   {8, 3, kRangeValid, 3, 8},     {-2, 4, kRangeClamped, 1, 4},
                                   {1, 11, kRangeClamped, 1, 10}, {12, 0, kRangeClamped, 1, 10},
                                   {0, 5, kRangeClamped, 1, 5}};  // a single 0 is clamped
  for (const auto& c : cases) {
    std::int32_t first = c[0], last = c[1];
    const std::int32_t result = v.MakeValidElemRange(first, last);
    EXPECT_EQ(std::tuple(result, first, last), std::tuple(c[2], c[3], c[4])) << c[0] << c[1];
  }
}

TEST(VectorAssign, CopiesElementsFlagAndHandlersWithoutEvents) {
  TVector a, b;
  Set(a, {1, 2, 3});
  int fired = 0;
  a.OnChange = [&fired](TComponent*) { ++fired; };
  b.OnResize = [&fired](TComponent*) { fired += 100; };
  a.AssignTo(b);
  EXPECT_EQ(fired, 0);
  // Handlers are copied, empty ones included.
  EXPECT_EQ(std::tuple(b.Storage(), b.Cleared(), static_cast<bool>(b.OnResize)),
            std::tuple(a.Storage(), false, false));
  b.SetVal(1, 5);
  EXPECT_EQ(fired, 1);  // a's handler now also serves b
}

TEST(VectorSort, CombSortExchangesAndSingleChange) {
  TVector v;
  Set(v, {3, 1, 2});
  EventLog log(v);
  v.SortElems(true, 0, 0);
  EXPECT_EQ(v.Storage(), (D{1, 2, 3}));
  v.SortElems(true, 0, 0);   // already sorted: OnChange, no exchange
  v.SortElems(true, 2, 2);   // fewer than two elements: nothing at all
  v.SortElems(false, 3, 2);  // descending over elements 2..3 only
  EXPECT_EQ(v.Storage(), (D{1, 3, 2}));
  // The gap shrinks from 2 to 1 before the first pass, which swaps 1-2 then 2-3; OnChange
  // follows once per sort.
  EXPECT_EQ(log.order, "(1,2)(2,3)CC(2,3)C");

  // Replaying the reported exchanges on the original data reproduces the sort.
  const I data = {5, -3, 9, 9, 0, 12, -7, 4, 4, 1, 8, 2};
  TIntVector iv;
  Set(iv, data);
  EventLog ilog(iv);
  iv.SortElems(false, 0, 0);
  EXPECT_EQ(ilog.order.find('C'), ilog.order.size() - 1);  // one OnChange, at the end
  I replay = data;
  for (const auto& [i, j] : ilog.exchanges)
    std::swap(replay.at(static_cast<std::size_t>(i - 1)),
              replay.at(static_cast<std::size_t>(j - 1)));
  EXPECT_EQ(iv.Storage(), replay);
  EXPECT_TRUE(std::is_sorted(replay.rbegin(), replay.rend()));
}

TEST(VectorCopy, CopyFromStatusCodes) {
  TVector src, dest;
  Set(src, {1, 2, 3, 4});
  Set(dest, {0, 0, 0});
  EventLog log(dest);
  // The status and the elements after one copy.
  const auto copied = [&dest](std::int32_t status) { return std::pair(status, dest.Storage()); };
  EXPECT_EQ(copied(dest.CopyFrom(nullptr, 0, 0, 1)), std::pair(kCopyNoSource, D{0, 0, 0}));
  const std::int32_t refused[][4] = {{0, 2, 1, kCopySourceOutOfRange},
                                     {1, 5, 1, kCopySourceOutOfRange},
                                     {1, 2, 0, kCopyDestOutOfRange},
                                     {1, 2, 4, kCopyDestOutOfRange}};
  for (const auto& r : refused)
    EXPECT_EQ(copied(dest.CopyFrom(&src, r[0], r[1], r[2])), std::pair(r[3], D{0, 0, 0}))
        << r[0] << r[1] << r[2];
  EXPECT_EQ(log.order, "");
  // Bounds ordered; writes beyond the end dropped; an overlapping copy within one vector.
  EXPECT_EQ(copied(dest.CopyFrom(&src, 4, 3, 2)), std::pair(kCopyOk, D{0, 3, 4}));
  EXPECT_EQ(copied(dest.CopyFrom(&src, 0, 0, 2)), std::pair(kCopyOk, D{0, 1, 2}));
  EXPECT_EQ(copied(dest.CopyFrom(&dest, 1, 2, 2)), std::pair(kCopyOk, D{0, 0, 1}));
  EXPECT_EQ(log.order, "CCC");

  // Arrays are zero-based; a ragged row refuses a column before anything is copied.
  const TDoubleArray arr = {10, 20, 30};
  const TDouble2DArray grid = {{1, 2, 3}, {4, 5}, {7, 8, 9}};
  EXPECT_EQ(copied(dest.CopyFrom(arr, 1, 2, 1)), std::pair(kCopyOk, D{20, 30, 1}));
  EXPECT_EQ(dest.CopyFrom(arr, 0, 3, 1), kCopySourceOutOfRange);
  EXPECT_EQ(dest.CopyFrom(TDoubleArray{}, 0, 0, 1), kCopySourceOutOfRange);
  EXPECT_EQ(copied(dest.CopyFrom2DArrayRow(grid, 2, 0, 0, 1)), std::pair(kCopyOk, D{7, 8, 9}));
  EXPECT_EQ(dest.CopyFrom2DArrayRow(grid, 3, 0, 0, 1), kCopySourceOutOfRange);
  EXPECT_EQ(copied(dest.CopyFrom2DArrayColumn(grid, 2, 0, 0, 1)),
            std::pair(kCopySourceOutOfRange, D{7, 8, 9}));
  EXPECT_EQ(copied(dest.CopyFrom2DArrayColumn(grid, 1, 0, 0, 1)), std::pair(kCopyOk, D{2, 5, 8}));
}

TEST(VectorCopy, CloneAndCopyToArray) {
  TIntVector a, b;
  Set(a, {4, 5, 6, 7});
  EventLog log(b);
  b.Clone(a);
  b.Clone(a);
  EXPECT_EQ(std::tuple(b.Storage(), b.Cleared()), std::tuple(a.Storage(), false));
  EXPECT_EQ(log.order, "CRC");  // same size the second time: no OnResize

  I arr = {-1};
  a.CopyToArray(arr, 3, 2, 2);  // grows the array
  EXPECT_EQ(arr, (I{-1, 0, 5, 6}));
  TInt2DArray grid;
  a.CopyToArray(grid, 0, 0, 1, 0, true);
  a.CopyToArray(grid, 1, 2, 0, 1, false);
  EXPECT_EQ(grid, (TInt2DArray{{0, 4, 5}, {0, 5}, {0, 6}, {0, 7}}));
}

TEST(VectorArith, DimensionsMessagesAndResults) {
  TVector a, b, c;
  a.SetName("Vec1");
  Set(a, {1, 2, 3});
  Set(b, {4, 2, 5});
  c.Resize(2);
  EXPECT_DOUBLE_EQ(a.DotProduct(b), 4 + 4 + 15);
  EXPECT_DOUBLE_EQ(a.EuclideanDistance(b), 2.0);  // only the last elements count
  const std::string dims = "Component \"Vec1\": vectors have different dimensions";
  EXPECT_EQ(MessageOf([&] { a.DotProduct(c); }), dims);
  EXPECT_EQ(MessageOf([&] { a.Add(c); }), dims);
  EXPECT_EQ(MessageOf([&] { a.Subtract(c); }), dims);
  EXPECT_EQ(MessageOf([&] { a.EuclideanDistance(c); }),
            "EuclideanDistance: dimensions of vectors do not match");
  EXPECT_EQ(a.Storage(), (D{1, 2, 3}));

  EventLog log(a);
  a.Add(b);
  EXPECT_EQ(a.Storage(), (D{5, 4, 8}));
  a.Subtract(b);
  a.SMult(-2);
  EXPECT_EQ(a.Storage(), (D{-2, -4, -6}));
  a.AbsVal();
  a.Mirror();
  EXPECT_EQ(a.Storage(), (D{6, 4, 2}));
  EXPECT_DOUBLE_EQ(a.CalcVecLeng(), std::sqrt(56.0));
  a.SetVecLeng(2.0);
  EXPECT_NEAR(a.CalcVecLeng(), 2.0, 1e-15);
  a.Clear();
  a.SetVecLeng(3.0);  // zero length: nothing, no event
  EXPECT_EQ(log.order, "CCCCCCC");

  // Integers wrap like 32-bit hardware; the most negative one has no positive twin.
  TIntVector big;
  Set(big, {2147483647, -2147483647 - 1});
  big.AbsVal();
  EXPECT_EQ(big.Storage(), (I{2147483647, -2147483647 - 1}));
  big.SMult(2);
  EXPECT_EQ(big.Storage(), (I{-2, 0}));
}

TEST(VectorArith, PearsonAndCorrelate) {
  TVector x, y, z, shortV;
  Set(x, {1, 2, 3, 4, 5});
  Set(y, {2, 4, 5, 4, 5});
  Set(z, {3, 3, 3, 3, 3});
  // scipy.stats.pearsonr([1,2,3,4,5],[2,4,5,4,5]) = 0.7745966692414834
  EXPECT_NEAR(x.PearsonCorrCoeff(y), 0.7745966692414834, 1e-14);
  EXPECT_EQ(x.PearsonCorrCoeff(z), 0.0);  // constant variable
  EXPECT_EQ(x.PearsonCorrCoeff(shortV), 0.0);
  // Lag 1: sum over i = 2..5 of x_i * y_(i-1) = 2*2 + 3*4 + 4*5 + 5*4 = 56.
  EXPECT_DOUBLE_EQ(x.Correlate(y, 1), 56.0);
  EXPECT_DOUBLE_EQ(x.Correlate(y, 0), x.DotProduct(y));
  EXPECT_DOUBLE_EQ(x.Correlate(y, -3), 1 * 4 + 2 * 5);  // i = 1..2 with y_(i+3)
  EXPECT_EQ(x.Correlate(y, 4), 0.0);                    // a single index: 0
}

TEST(VectorSearch, FindBinarySearchAndDichotomy) {
  TVector v;
  Set(v, {1, 3, 3, 7, 10});
  // Closest element, the first on ties (1 and 3 for 2; both 3s for 100 in 2..3).
  EXPECT_EQ(std::tuple(v.Find(0, 0, 2.0), v.Find(0, 0, 6.0), v.Find(2, 3, 100.0)),
            std::tuple(1, 4, 2));
  EXPECT_EQ(std::tuple(v.FindExact(0, 0, 3.0), v.FindExact(3, 5, 3.0), v.FindExact(0, 0, 4.0)),
            std::tuple(2, 3, 0));
  // An equal element, else the closer neighbour (the upper one on ties), else an end.
  for (const auto& [x, ix] : {std::pair{7.0, 4}, {8.4, 4}, {8.5, 5}, {-5.0, 1}, {50.0, 5}})
    EXPECT_EQ(v.FindInSortedVector(true, x), ix) << x;
  v.Mirror();
  for (const auto& [x, ix] : {std::pair{9.0, 1}, {8.4, 2}, {8.5, 2}, {2.1, 4}})
    EXPECT_EQ(v.FindInSortedVector(false, x), ix) << x;

  const auto dichotomy = [](const TIntVector& x) {
    std::int32_t v1 = -1, v2 = -1;
    const bool result = x.IsDichotomous(v1, v2);
    return std::tuple(result, v1, v2);
  };
  TIntVector iv, one;
  Set(iv, {4, 4, 9, 4});
  EXPECT_EQ(dichotomy(iv), std::tuple(true, 4, 9));
  EXPECT_EQ(dichotomy(one), std::tuple(false, 0, 0));
  iv.SetVal(2, 1);
  EXPECT_FALSE(std::get<0>(dichotomy(iv)));
  iv.Fill(2);
  EXPECT_EQ(dichotomy(iv), std::tuple(true, 2, 2));
}

TEST(VectorFill, SerialRandomAndShuffle) {
  TVector v;
  v.Resize(4);
  EventLog log(v);
  v.FillSerial(0.5, 0.25);
  EXPECT_EQ(v.Storage(), (D{0.5, 0.75, 1.0, 1.25}));
  EXPECT_FALSE(v.Cleared());
  v.FillRandomUniform(-2, 3);
  EXPECT_EQ(log.order, "CC");
  for (const double x : v.Storage())
    EXPECT_TRUE(x >= -2.0 && x < 3.0) << x;

  TIntVector iv;
  iv.Resize(50);
  iv.FillSerial(1, 1);
  const I serial = iv.Storage();
  EXPECT_EQ(std::pair(serial.front(), serial.back()), std::pair(1, 50));
  EventLog ilog(iv);
  iv.ShuffleElems();
  EXPECT_EQ(ilog.order, "");  // shuffling fires nothing
  I sorted = iv.Storage();
  std::sort(sorted.begin(), sorted.end());
  EXPECT_EQ(sorted, serial);

  SetRandSeed(12345);
  ResetGRandom();
  TVector g;
  g.Resize(20000);
  EventLog glog(g);
  g.FillRandomGauss(10.0, 2.0);
  EXPECT_EQ(glog.order, "C");
  EXPECT_FALSE(g.Cleared());
  double mean = 0, var = 0;
  g.MeanVar(0, 0, mean, var);
  EXPECT_NEAR(mean, 10.0, 0.05);  // 4 standard errors
  EXPECT_NEAR(var, 4.0, 0.16);
}

}  // namespace
}  // namespace quv::test
