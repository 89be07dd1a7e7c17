// Storage, access, range normalisation, events and copying of TVector and TIntVector.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "quv/vector/vector.h"

namespace {

using quv::TIntVector;
using quv::TVector;

// Records the order in which a container's events fire.
struct EventLog {
  std::string order;
  std::vector<std::pair<int, int>> exchanges;
  template <class V>
  void Attach(V& v) {
    v.OnChange = [this](quv::TComponent*) { order += 'C'; };
    v.OnResize = [this](quv::TComponent*) { order += 'R'; };
    v.OnSortExchange = [this](quv::TComponent*, std::uint8_t what, std::int32_t a, std::int32_t b,
                              std::int32_t c, std::int32_t d) {
      EXPECT_EQ(what, 0);
      EXPECT_EQ(c, 0);
      EXPECT_EQ(d, 0);
      exchanges.emplace_back(a, b);
    };
  }
};

template <class V>
void Set(V& v, const std::vector<typename V::value_type>& values) {
  v.Resize(static_cast<std::int32_t>(values.size()));
  v.CopyFrom(values, 0, 0, 1);
}

TEST(VectorCreate, OneZeroElementClearedAndNoEvents) {
  TVector v;
  EXPECT_EQ(v.NrOfElem(), 1);
  EXPECT_EQ(v.GetVal(1), 0.0);
  EXPECT_TRUE(v.Cleared());
  EventLog log;
  log.Attach(v);
  v.SetVecSize(0);
  v.SetVecSize(1);
  EXPECT_EQ(log.order, "");
  EXPECT_EQ(v.NrOfElem(), 1);

  TIntVector iv;
  EXPECT_EQ(iv.NrOfElem(), 1);
  EXPECT_EQ(iv.Elem(1), 0);
}

TEST(VectorResize, ResultsEventsAndKeptElements) {
  TVector v;
  EventLog log;
  log.Attach(v);
  EXPECT_TRUE(v.Resize(3));
  EXPECT_EQ(log.order, "CR");
  v.SetVal(1, 7.5);
  v.SetVal(3, -1.0);
  EXPECT_EQ(log.order, "CRCC");
  EXPECT_FALSE(v.Cleared());
  log.order.clear();
  EXPECT_TRUE(v.Resize(3));  // same size: true, no events
  EXPECT_FALSE(v.Resize(0));
  EXPECT_FALSE(v.Resize(-4));
  EXPECT_EQ(log.order, "");
  EXPECT_TRUE(v.Resize(5));
  EXPECT_EQ(log.order, "CR");
  EXPECT_EQ(v.GetVal(1), 7.5);
  EXPECT_EQ(v.GetVal(3), -1.0);
  EXPECT_EQ(v.GetVal(5), 0.0);
  EXPECT_TRUE(v.Resize(2));
  EXPECT_EQ(v.NrOfElem(), 2);
  EXPECT_EQ(v.GetVal(1), 7.5);

  TIntVector iv;
  iv.SetIntVecSize(4);
  EXPECT_EQ(iv.NrOfElem(), 4);
}

TEST(VectorAccess, OutOfRangeReadsZeroAndIgnoresWrites) {
  TVector v;
  v.Resize(2);
  v.Fill(3.0);
  EventLog log;
  log.Attach(v);
  EXPECT_EQ(v.GetVal(0), 0.0);
  EXPECT_EQ(v.GetVal(3), 0.0);
  EXPECT_EQ(v.Elem(-100), 0.0);
  v.SetVal(0, 9.0);
  v.SetVal(3, 9.0);
  EXPECT_EQ(log.order, "");
  EXPECT_EQ(v.Storage(), (std::vector<double>{3.0, 3.0}));
  v.Clear();
  EXPECT_TRUE(v.Cleared());
  EXPECT_EQ(log.order, "C");
}

TEST(VectorRange, MakeValidElemRangeNormalises) {
  TVector v;
  v.Resize(10);
  std::int32_t f = 0, l = 0;
  EXPECT_EQ(v.MakeValidElemRange(f, l), quv::kRangeValid);
  EXPECT_EQ(f, 1);
  EXPECT_EQ(l, 10);
  f = 8, l = 3;  // swapped, no clamping
  EXPECT_EQ(v.MakeValidElemRange(f, l), quv::kRangeValid);
  EXPECT_EQ(f, 3);
  EXPECT_EQ(l, 8);
  f = -2, l = 4;
  EXPECT_EQ(v.MakeValidElemRange(f, l), quv::kRangeClamped);
  EXPECT_EQ(f, 1);
  EXPECT_EQ(l, 4);
  f = 12, l = 0;  // both clamped, then swapped
  EXPECT_EQ(v.MakeValidElemRange(f, l), quv::kRangeClamped);
  EXPECT_EQ(f, 1);
  EXPECT_EQ(l, 10);
  f = 0, l = 5;  // only one of them zero: 0 is clamped
  EXPECT_EQ(v.MakeValidElemRange(f, l), quv::kRangeClamped);
  EXPECT_EQ(f, 1);
  EXPECT_EQ(l, 5);
}

TEST(VectorAssign, CopiesElementsFlagAndHandlersWithoutEvents) {
  TVector a, b;
  Set(a, {1, 2, 3});
  int fired = 0;
  a.OnChange = [&fired](quv::TComponent*) { ++fired; };
  b.OnResize = [&fired](quv::TComponent*) { fired += 100; };
  b.Assign(a);
  EXPECT_EQ(fired, 0);
  EXPECT_EQ(b.Storage(), a.Storage());
  EXPECT_FALSE(b.Cleared());
  EXPECT_FALSE(b.OnResize);  // handlers are copied, including empty ones
  b.SetVal(1, 5);
  EXPECT_EQ(fired, 1);  // a's handler now also serves b
  TVector c;
  a.AssignTo(c);
  EXPECT_EQ(c.NrOfElem(), 3);
}

TEST(VectorSort, CombSortExchangesAndSingleChange) {
  TVector v;
  Set(v, {3, 1, 2});
  EventLog log;
  log.Attach(v);
  v.SortElems(true, 0, 0);
  EXPECT_EQ(v.Storage(), (std::vector<double>{1, 2, 3}));
  // gap 2 -> 1: (3,1,2): pass gap 1 swaps 1-2 (1,3,2), then 2-3 (1,2,3); the next pass is
  // clean.
  EXPECT_EQ(log.exchanges, (std::vector<std::pair<int, int>>{{1, 2}, {2, 3}}));
  EXPECT_EQ(log.order, "C");

  log = EventLog();
  log.Attach(v);
  v.SortElems(true, 0, 0);  // already sorted: one OnChange, no exchange
  EXPECT_TRUE(log.exchanges.empty());
  EXPECT_EQ(log.order, "C");

  v.SortElems(false, 3, 2);  // descending over elements 2..3 only
  EXPECT_EQ(v.Storage(), (std::vector<double>{1, 3, 2}));
  EXPECT_EQ(log.exchanges, (std::vector<std::pair<int, int>>{{2, 3}}));

  log = EventLog();
  log.Attach(v);
  v.SortElems(true, 2, 2);  // fewer than two elements: nothing at all
  EXPECT_EQ(log.order, "");
}

TEST(VectorSort, ExchangeEventsReplayTheSort) {
  // Mirroring each exchange in parallel data must reproduce the permutation.
  TIntVector v;
  std::vector<std::int32_t> data = {5, -3, 9, 9, 0, 12, -7, 4, 4, 1, 8, 2};
  Set(v, data);
  std::vector<int> tags(data.size());
  for (std::size_t i = 0; i < tags.size(); ++i)
    tags[i] = static_cast<int>(i);
  int changes = 0;
  v.OnChange = [&changes](quv::TComponent*) { ++changes; };
  v.OnSortExchange = [&tags](quv::TComponent*, std::uint8_t, std::int32_t a, std::int32_t b,
                             std::int32_t, std::int32_t) {
    std::swap(tags[static_cast<std::size_t>(a - 1)], tags[static_cast<std::size_t>(b - 1)]);
  };
  v.SortElems(false, 0, 0);
  EXPECT_EQ(changes, 1);
  for (std::size_t i = 0; i < tags.size(); ++i) {
    EXPECT_EQ(v.Storage()[i], data[static_cast<std::size_t>(tags[i])]);
    if (i > 0) {
      EXPECT_GE(v.Storage()[i - 1], v.Storage()[i]);
    }
  }
}

TEST(VectorCopy, CopyFromStatusCodes) {
  TVector src, dest;
  Set(src, {1, 2, 3, 4});
  Set(dest, {0, 0, 0});
  int changes = 0;
  dest.OnChange = [&changes](quv::TComponent*) { ++changes; };
  EXPECT_EQ(dest.CopyFrom(nullptr, 0, 0, 1), quv::kCopyNoSource);
  EXPECT_EQ(dest.CopyFrom(&src, 0, 5, 1), quv::kCopySourceOutOfRange);
  EXPECT_EQ(dest.CopyFrom(&src, 0, 2, 1), quv::kCopySourceOutOfRange);
  EXPECT_EQ(dest.CopyFrom(&src, 1, 2, 0), quv::kCopyDestOutOfRange);
  EXPECT_EQ(dest.CopyFrom(&src, 1, 2, 4), quv::kCopyDestOutOfRange);
  EXPECT_EQ(changes, 0);
  EXPECT_EQ(dest.Storage(), (std::vector<double>{0, 0, 0}));

  EXPECT_EQ(dest.CopyFrom(&src, 4, 3, 2), quv::kCopyOk);  // bounds ordered
  EXPECT_EQ(dest.Storage(), (std::vector<double>{0, 3, 4}));
  EXPECT_EQ(dest.CopyFrom(&src, 0, 0, 2), quv::kCopyOk);  // writes beyond the end dropped
  EXPECT_EQ(dest.Storage(), (std::vector<double>{0, 1, 2}));
  EXPECT_EQ(changes, 2);

  EXPECT_EQ(dest.CopyFrom(&dest, 1, 2, 2), quv::kCopyOk);  // overlapping self copy
  EXPECT_EQ(dest.Storage(), (std::vector<double>{0, 0, 1}));

  const quv::TDoubleArray arr = {10, 20, 30};
  EXPECT_EQ(dest.CopyFrom(arr, 1, 2, 1), quv::kCopyOk);  // zero-based source bounds
  EXPECT_EQ(dest.Storage(), (std::vector<double>{20, 30, 1}));
  EXPECT_EQ(dest.CopyFrom(arr, 0, 3, 1), quv::kCopySourceOutOfRange);
  EXPECT_EQ(dest.CopyFrom(quv::TDoubleArray{}, 0, 0, 1), quv::kCopySourceOutOfRange);

  const quv::TDouble2DArray grid = {{1, 2, 3}, {4, 5}, {7, 8, 9}};
  EXPECT_EQ(dest.CopyFrom2DArrayRow(grid, 2, 0, 0, 1), quv::kCopyOk);
  EXPECT_EQ(dest.Storage(), (std::vector<double>{7, 8, 9}));
  EXPECT_EQ(dest.CopyFrom2DArrayRow(grid, 3, 0, 0, 1), quv::kCopySourceOutOfRange);
  EXPECT_EQ(dest.CopyFrom2DArrayColumn(grid, 2, 0, 0, 1), quv::kCopySourceOutOfRange);
  EXPECT_EQ(dest.Storage(), (std::vector<double>{7, 8, 9}));  // ragged row: nothing copied
  EXPECT_EQ(dest.CopyFrom2DArrayColumn(grid, 1, 0, 0, 1), quv::kCopyOk);
  EXPECT_EQ(dest.Storage(), (std::vector<double>{2, 5, 8}));
}

TEST(VectorCopy, CloneAndCopyToArray) {
  TIntVector a, b;
  Set(a, {4, 5, 6, 7});
  EventLog log;
  log.Attach(b);
  b.Clone(a);
  EXPECT_EQ(b.Storage(), a.Storage());
  EXPECT_EQ(log.order, "CR");
  b.Clone(a);
  EXPECT_EQ(log.order, "CRC");  // same size: no OnResize

  quv::TIntArray arr = {-1};
  a.CopyToArray(arr, 3, 2, 2);
  EXPECT_EQ(arr, (quv::TIntArray{-1, 0, 5, 6}));
  quv::TInt2DArray grid;
  a.CopyToArray(grid, 0, 0, 1, 0, true);
  ASSERT_EQ(grid.size(), 4u);
  EXPECT_EQ(grid[3], (quv::TIntArray{0, 7}));
  a.CopyToArray(grid, 1, 2, 0, 1, false);
  EXPECT_EQ(grid[0], (quv::TIntArray{0, 4, 5}));
}

TEST(VectorArith, DimensionsMessagesAndResults) {
  TVector a, b;
  a.SetName("Vec1");
  Set(a, {1, 2, 3});
  Set(b, {4, 2, 5});
  EXPECT_DOUBLE_EQ(a.DotProduct(b), 4 + 4 + 15);
  EXPECT_DOUBLE_EQ(a.EuclideanDistance(b), 2.0);  // only the last elements count
  TIntVector ia, ib;
  Set(ia, {1, 2, 3});
  Set(ib, {4, 2, 5});
  EXPECT_DOUBLE_EQ(ia.EuclideanDistance(ib), 2.0);
  TVector c;
  c.Resize(2);
  try {
    a.DotProduct(c);
    FAIL();
  } catch (const quv::EQUVVectorError& e) {
    EXPECT_STREQ(e.what(), "Component \"Vec1\": vectors have different dimensions");
  }
  try {
    a.EuclideanDistance(c);
    FAIL();
  } catch (const quv::EQUVVectorError& e) {
    EXPECT_STREQ(e.what(), "EuclideanDistance: dimensions of vectors do not match");
  }
  EXPECT_THROW(a.Add(c), quv::EQUVVectorError);
  EXPECT_EQ(a.Storage(), (std::vector<double>{1, 2, 3}));

  int changes = 0;
  a.OnChange = [&changes](quv::TComponent*) { ++changes; };
  a.Add(b);
  EXPECT_EQ(a.Storage(), (std::vector<double>{5, 4, 8}));
  a.Subtract(b);
  a.SMult(-2);
  EXPECT_EQ(a.Storage(), (std::vector<double>{-2, -4, -6}));
  a.AbsVal();
  a.Mirror();
  EXPECT_EQ(a.Storage(), (std::vector<double>{6, 4, 2}));
  EXPECT_EQ(changes, 5);
  EXPECT_DOUBLE_EQ(a.CalcVecLeng(), std::sqrt(56.0));
  a.SetVecLeng(2.0);
  EXPECT_NEAR(a.CalcVecLeng(), 2.0, 1e-15);
  EXPECT_EQ(changes, 6);
  a.Clear();
  changes = 0;
  a.SetVecLeng(3.0);  // zero length: nothing, no event
  EXPECT_EQ(changes, 0);

  TIntVector big;
  Set(big, {2147483647, -2147483647 - 1});
  big.AbsVal();  // the most negative Integer has no positive twin: it stays
  EXPECT_EQ(big.Storage(), (quv::TIntArray{2147483647, -2147483647 - 1}));
}

TEST(VectorArith, PearsonAndCorrelate) {
  TVector x, y;
  Set(x, {1, 2, 3, 4, 5});
  Set(y, {2, 4, 5, 4, 5});
  // scipy.stats.pearsonr([1,2,3,4,5],[2,4,5,4,5]) = 0.7745966692414834
  EXPECT_NEAR(x.PearsonCorrCoeff(y), 0.7745966692414834, 1e-14);
  TVector z;
  Set(z, {3, 3, 3, 3, 3});
  EXPECT_EQ(x.PearsonCorrCoeff(z), 0.0);  // constant variable
  TVector shortV;
  EXPECT_EQ(x.PearsonCorrCoeff(shortV), 0.0);
  // Lag 1: sum over i = 2..5 of x_i * y_(i-1) = 2*2 + 3*4 + 4*5 + 5*4 = 56.
  EXPECT_DOUBLE_EQ(x.Correlate(y, 1), 56.0);
  EXPECT_DOUBLE_EQ(x.Correlate(y, 0), x.DotProduct(y));
  EXPECT_DOUBLE_EQ(x.Correlate(y, -3), 1 * 4 + 2 * 5);  // i = 1..2 with y_(i+3)
  EXPECT_EQ(x.Correlate(y, 4), 0.0);                    // a single index: 0
}

TEST(VectorSearch, FindFindExactAndBinarySearch) {
  TVector v;
  Set(v, {1, 3, 3, 7, 10});
  EXPECT_EQ(v.Find(0, 0, 2.0), 1);  // tie between 1 and 3: the first
  EXPECT_EQ(v.Find(0, 0, 6.0), 4);
  EXPECT_EQ(v.Find(2, 3, 100.0), 2);
  EXPECT_EQ(v.FindExact(0, 0, 3.0), 2);
  EXPECT_EQ(v.FindExact(3, 5, 3.0), 3);
  EXPECT_EQ(v.FindExact(0, 0, 4.0), 0);
  EXPECT_EQ(v.FindInSortedVector(true, 7.0), 4);
  EXPECT_EQ(v.FindInSortedVector(true, 8.4), 4);
  EXPECT_EQ(v.FindInSortedVector(true, 8.5), 5);  // tie: the upper neighbour
  EXPECT_EQ(v.FindInSortedVector(true, -5.0), 1);
  EXPECT_EQ(v.FindInSortedVector(true, 50.0), 5);
  v.Mirror();
  EXPECT_EQ(v.FindInSortedVector(false, 9.0), 1);
  EXPECT_EQ(v.FindInSortedVector(false, 8.4), 2);
  EXPECT_EQ(v.FindInSortedVector(false, 2.1), 4);

  quv::TIntVector iv;
  Set(iv, {4, 4, 9, 4});
  std::int32_t v1 = -1, v2 = -1;
  EXPECT_TRUE(iv.IsDichotomous(v1, v2));
  EXPECT_EQ(v1, 4);
  EXPECT_EQ(v2, 9);
  iv.SetVal(2, 1);
  EXPECT_FALSE(iv.IsDichotomous(v1, v2));
  iv.Fill(2);
  EXPECT_TRUE(iv.IsDichotomous(v1, v2));
  EXPECT_EQ(v2, 2);
  quv::TIntVector one;
  EXPECT_FALSE(one.IsDichotomous(v1, v2));
  EXPECT_EQ(v1, 0);
}

TEST(VectorFill, SerialRandomAndShuffleEvents) {
  TVector v;
  v.Resize(4);
  EventLog log;
  log.Attach(v);
  v.FillSerial(0.5, 0.25);
  EXPECT_EQ(v.Storage(), (std::vector<double>{0.5, 0.75, 1.0, 1.25}));
  EXPECT_FALSE(v.Cleared());
  v.FillRandomUniform(-2, 3);
  EXPECT_EQ(log.order, "CC");
  for (const double x : v.Storage()) {
    EXPECT_GE(x, -2.0);
    EXPECT_LT(x, 3.0);
  }
  TIntVector iv;
  iv.Resize(50);
  iv.FillSerial(1, 1);
  EventLog ilog;
  ilog.Attach(iv);
  iv.ShuffleElems();
  EXPECT_EQ(ilog.order, "");  // shuffling fires nothing
  EXPECT_TRUE(ilog.exchanges.empty());
  std::vector<std::int32_t> sorted = iv.Storage();
  std::sort(sorted.begin(), sorted.end());
  for (std::int32_t i = 0; i < 50; ++i)
    EXPECT_EQ(sorted[static_cast<std::size_t>(i)], i + 1);
}

}  // namespace
