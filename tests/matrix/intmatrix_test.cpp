#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <random>
#include <utility>
#include <vector>

#include "common/raised_message.h"
#include "quv/matrix/matrix.h"

namespace quv::test {
namespace {

using TCells = std::vector<TIntTriplet>;

TCells ListOf(const TIntMatrix& m) {
  return TCells(m.Triplets().begin(), m.Triplets().end());
}

struct IntEvents {
  int changes = 0;
  int resizes = 0;
  explicit IntEvents(TIntMatrix& m) {
    m.OnChange = [this](TComponent*) { ++changes; };
    m.OnResize = [this](TComponent*) { ++resizes; };
  }
};

TEST(IntMatrixSparse, NewMatrixFirstWriteAndBoundingBox) {
  TIntMatrix m(nullptr, 4);
  IntEvents ev(m);
  EXPECT_TRUE(m.Sparse());
  EXPECT_EQ(std::pair(m.NrOfColumns(), m.NrOfRows()), std::pair(0, 0));
  EXPECT_EQ(std::tuple(m.SparseCount(), m.SparseCapacity(), m.AllocIncrement()),
            std::tuple(0, 4, 4));
  std::int32_t lc = 0, hc = 0, lr = 0, hr = 0;
  m.BoundingBox(lc, hc, lr, hr);
  EXPECT_EQ(std::tuple(lc, hc, lr, hr), std::tuple(uc_MaxInt, 1, uc_MaxInt, 1));
  EXPECT_EQ(m.GetVal(1, 1), 0);

  m.SetVal(5, 3, 7);
  EXPECT_EQ(std::pair(m.NrOfColumns(), m.NrOfRows()), std::pair(5, 3));
  EXPECT_EQ(m.GetVal(5, 3), 7);
  EXPECT_EQ(m.GetVal(1, 1), 0);
  EXPECT_EQ(ev.changes, 1);

  // Below 1 is dropped without an event; there is no upper limit.
  m.SetVal(0, 2, 9);
  m.SetVal(2, -1, 9);
  EXPECT_EQ(ev.changes, 1);
  m.SetVal(2, 4, 8);
  m.BoundingBox(lc, hc, lr, hr);
  EXPECT_EQ(std::tuple(lc, hc, lr, hr), std::tuple(2, 5, 3, 4));
  EXPECT_EQ(std::pair(m.NrOfColumns(), m.NrOfRows()), std::pair(5, 4));
  // Reads outside the box answer 0 without a search; inside it a missing cell is 0 too.
  EXPECT_EQ(m.GetVal(1, 3), 0);
  EXPECT_EQ(m.GetVal(3, 3), 0);
  EXPECT_EQ(m.GetVal(2, 4), 8);
}

TEST(IntMatrixSparse, OrderCountIncrementAndZeros) {
  const std::vector<std::pair<int, int>> cells = {{1, 1}, {1, 3}, {2, 2}, {3, 1}, {3, 5}};
  TIntMatrix up(nullptr, 2), down(nullptr, 2);
  for (const auto& [c, r] : cells)
    up.SetVal(c, r, 10 * c + r);
  for (auto it = cells.rbegin(); it != cells.rend(); ++it)
    down.SetVal(it->first, it->second, 10 * it->first + it->second);
  EXPECT_EQ(ListOf(up), ListOf(down));
  EXPECT_EQ(ListOf(up), (TCells{{1, 1, 11}, {1, 3, 13}, {2, 2, 22}, {3, 1, 31}, {3, 5, 35}}));
  EXPECT_EQ(up.SparseCapacity(), 6);

  up.SetVal(2, 2, -1);  // overwrite keeps the count
  EXPECT_EQ(up.SparseCount(), 5);
  EXPECT_EQ(up.GetVal(2, 2), -1);
  up.SetVal(4, 4, 0);  // a 0 is stored like any value
  EXPECT_EQ(up.SparseCount(), 6);
  EXPECT_EQ(up.NrOfColumns(), 4);

  for (const std::int32_t inc : {1, 0, -3}) {
    TIntMatrix one(nullptr, inc);
    EXPECT_EQ(one.AllocIncrement(), 1);
    for (int k = 1; k <= 4; ++k) {
      one.SetVal(k, 1, k);
      EXPECT_EQ(one.SparseCapacity(), k);
    }
  }
}

// Dense and sparse give the same answers for the same random writes.
TEST(IntMatrixSparse, AgreesWithDenseOnRandomWrites) {
  std::mt19937 gen(12345);
  std::uniform_int_distribution<int> idx(1, 12), val(-50, 50);
  TIntMatrix dense, sparse(nullptr, 3);
  dense.Resize(12, 12);
  std::map<std::pair<int, int>, int> reference;
  for (int k = 0; k < 400; ++k) {
    const int c = idx(gen), r = idx(gen), v = val(gen);
    dense.SetVal(c, r, v);
    sparse.SetVal(c, r, v);
    reference[{c, r}] = v;
  }
  EXPECT_EQ(sparse.SparseCount(), static_cast<std::int32_t>(reference.size()));
  sparse.Resize(12, 12);
  for (int c = 1; c <= 12; ++c) {
    for (int r = 1; r <= 12; ++r)
      ASSERT_EQ(sparse.GetVal(c, r), dense.GetVal(c, r)) << c << "," << r;
  }
  EXPECT_EQ(sparse.CRCofData(), dense.CRCofData());
  std::int32_t mn1 = 0, mx1 = 0, mn2 = 0, mx2 = 0;
  dense.MinMax(2, 3, 9, 11, mn1, mx1);
  sparse.MinMax(2, 3, 9, 11, mn2, mx2);
  EXPECT_EQ(std::pair(mn1, mx1), std::pair(mn2, mx2));
  EXPECT_EQ(dense.CountValues(0, 0, 0, 0, -10, 10), sparse.CountValues(0, 0, 0, 0, -10, 10));
  EXPECT_EQ(dense.CountMaskedZeros(0, 0, 0, 0, 3u), sparse.CountMaskedZeros(0, 0, 0, 0, 3u));
  TBool2DArray d1, d2;
  dense.Dichotomize(5, d1);
  sparse.Dichotomize(5, d2);
  EXPECT_EQ(d1, d2);
  TVector m1, m2;
  dense.MeanVec(dimRows, &m1);
  sparse.MeanVec(dimRows, &m2);
  EXPECT_EQ(m1.NrOfElem(), 12);
  for (int i = 1; i <= 12; ++i)
    EXPECT_EQ(m1.GetVal(i), m2.GetVal(i));

  // Structure changes and sorts keep the two in step.
  for (auto* m : {&dense, &sparse}) {
    m->SortRows(3, true, 0, 0, 0, 0);
    m->ExchangeColumns(1, 12);
    m->MirrorRows();
    m->RemoveColumn(5);
    m->RemoveRow(2);
    m->FillDiag(2, 2, 6, 6, 77);
    m->SortCols(1, false, 0, 0, 0, 0);
    m->Resize(9, 10);
  }
  EXPECT_EQ(std::pair(sparse.NrOfColumns(), sparse.NrOfRows()), std::pair(9, 10));
  for (int c = 1; c <= 9; ++c) {
    for (int r = 1; r <= 10; ++r)
      ASSERT_EQ(sparse.GetVal(c, r), dense.GetVal(c, r)) << c << "," << r;
  }
  std::int32_t fc1 = 0, fr1 = 0, fc2 = 0, fr2 = 0;
  dense.Find(0, 0, 0, 0, 13, fc1, fr1);
  sparse.Find(0, 0, 0, 0, 13, fc2, fr2);
  EXPECT_EQ(std::pair(fc1, fr1), std::pair(fc2, fr2));
  // The triplet list stays sorted and free of duplicates.
  const TCells list = ListOf(sparse);
  for (std::size_t k = 1; k < list.size(); ++k) {
    EXPECT_TRUE(std::pair(list[k - 1].Col, list[k - 1].Row) < std::pair(list[k].Col, list[k].Row));
  }
}

TEST(IntMatrixSparse, ResizeRemoveAndClear) {
  TIntMatrix m(nullptr, 8);
  IntEvents ev(m);
  m.SetVal(1, 1, 1);
  m.SetVal(2, 3, 23);
  m.SetVal(4, 2, 42);
  ev.changes = 0;
  EXPECT_TRUE(m.Resize(3, 3));  // cuts (4, 2) away
  EXPECT_EQ(ListOf(m), (TCells{{1, 1, 1}, {2, 3, 23}}));
  EXPECT_EQ(std::pair(ev.changes, ev.resizes), std::pair(1, 1));
  EXPECT_FALSE(m.Resize(3, 3));
  EXPECT_FALSE(m.RemoveColumn(4));
  EXPECT_TRUE(m.RemoveColumn(1));
  EXPECT_EQ(ListOf(m), (TCells{{1, 3, 23}}));
  EXPECT_EQ(m.NrOfColumns(), 2);
  EXPECT_TRUE(m.RemoveRow(1));
  EXPECT_EQ(ListOf(m), (TCells{{1, 2, 23}}));
  EXPECT_TRUE(m.ResizeAndClear(5, 5));
  EXPECT_EQ(m.SparseCount(), 0);
  EXPECT_EQ(m.GetVal(1, 2), 0);
  // Fills do not store zeros in cells never written.
  m.Fill(0);
  EXPECT_EQ(m.SparseCount(), 0);
  m.FillSerial(1, 1, 2, 2, 5, 1);
  EXPECT_EQ(ListOf(m), (TCells{{1, 1, 5}, {1, 2, 6}, {2, 1, 7}, {2, 2, 8}}));
  m.Resize(2, 2);
  EXPECT_EQ(m.FindInSortedColumn(1, true, 6), 2);
  EXPECT_EQ(m.FindInSortedColumn(2, true, 9), 2);
}

TEST(IntMatrix, DenseOperationsAndCRCRule) {
  TIntMatrix m;
  EXPECT_FALSE(m.Sparse());
  EXPECT_EQ(std::pair(m.NrOfColumns(), m.NrOfRows()), std::pair(1, 1));
  m.Resize(3, 2);
  m.FillSerial(1, 1);  // 1 2 | 3 4 | 5 6 column by column
  EXPECT_EQ(m.GetVal(3, 2), 6);
  m.SetVal(4, 1, 99);  // dense: outside is dropped
  EXPECT_EQ(m.NrOfColumns(), 3);
  EXPECT_EQ(m.CountValues(0, 0, 0, 0, 2, 4), 3);
  EXPECT_EQ(m.CountMaskedZeros(0, 0, 0, 0, 1u), 3);  // the even ones
  TBool2DArray d;
  m.Dichotomize(4, d);
  EXPECT_EQ(d, (TBool2DArray{{0, 0}, {0, 1}, {1, 1}}));
  TVector means;
  m.MeanVec(dimColumns, &means);
  EXPECT_EQ(means.NrOfElem(), 3);
  EXPECT_EQ(means.GetVal(2), 3.5);

  // One checksum rule for the integer containers: the vector of the same elements in the
  // same order gives the same 64 digits, the last 32 of them zero.
  TIntVector v;
  v.SetIntVecSize(6);
  v.FillSerial(1, 1);
  EXPECT_EQ(m.CRCofData(), v.CRCofData());
  EXPECT_EQ(m.CRCofData().size(), 64u);
  EXPECT_EQ(m.CRCofData().substr(32), std::string(32, '0'));
  m.SetVal(2, 2, 4 ^ (1 << 30));
  EXPECT_NE(m.CRCofData(), v.CRCofData());
}

TEST(IntMatrix, CopyBetweenElementTypes) {
  TIntMatrix im(nullptr, 1);
  im.SetVal(2, 2, 7);
  im.SetVal(1, 2, -3);
  TMatrix dm;
  dm.Resize(3, 3);
  dm.CopyFrom(&im, 1, 1, 2, 2, 2, 2);
  EXPECT_EQ(dm.GetVal(3, 3), 7.0);
  EXPECT_EQ(dm.GetVal(2, 3), -3.0);
  EXPECT_EQ(dm.GetVal(2, 2), 0.0);

  dm.SetVal(1, 1, 2.5);
  dm.SetVal(2, 1, -1e300);
  TIntMatrix back;
  back.Resize(3, 3);
  back.CopyFrom(&dm, 1, 1, 2, 1, 1, 1);
  EXPECT_EQ(back.GetVal(1, 1), 3);  // rounded to the nearest (half away from zero)
  EXPECT_EQ(back.GetVal(2, 1), uc_MinInt);
  TIntMatrix sparseCopy(nullptr, 2);
  sparseCopy.CopyFrom(&im, 1, 1, 9, 9, 1, 1);  // bounds clamped to the source
  EXPECT_EQ(ListOf(sparseCopy), ListOf(im));
}

}  // namespace
}  // namespace quv::test
