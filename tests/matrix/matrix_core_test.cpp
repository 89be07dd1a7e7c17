#include <gtest/gtest.h>

#include <cstring>
#include <tuple>
#include <vector>

#include "quv/matrix/matrix.h"

namespace quv {
namespace {

// Counts the events of a matrix and records the sort exchanges.
struct EventLog {
  int changes = 0;
  int resizes = 0;
  std::vector<std::tuple<int, int, int, int, int>> exchanges;

  void Attach(TMatrix& m) {
    m.OnChange = [this](TComponent*) { ++changes; };
    m.OnResize = [this](TComponent*) { ++resizes; };
    m.OnSortExchange = [this](TComponent*, std::uint8_t what, std::int32_t a, std::int32_t b,
                              std::int32_t c,
                              std::int32_t d) { exchanges.emplace_back(what, a, b, c, d); };
  }
};

// Fills m (nc x nr) with 10 * col + row.
void FillPattern(TMatrix& m, int nc, int nr) {
  m.Resize(nc, nr);
  for (int c = 1; c <= nc; ++c) {
    for (int r = 1; r <= nr; ++r)
      m.SetVal(c, r, 10.0 * c + r);
  }
}

TEST(MatrixStorage, NewMatrixAndSilentOutOfRangeAccess) {
  TMatrix m;
  EventLog log;
  log.Attach(m);
  EXPECT_EQ(m.NrOfColumns(), 1);
  EXPECT_EQ(m.NrOfRows(), 1);
  EXPECT_EQ(m.GetVal(1, 1), 0.0);
  EXPECT_EQ(m.GetFPrecis(0), 15);
  EXPECT_EQ(m.GetFPrecis(1), 15);
  EXPECT_EQ(m.GetFPrecis(2), -1);
  m.SetFPrecis(7, 4);
  EXPECT_EQ(m.GetFPrecis(-3), 15);
  EXPECT_EQ(m.GetFPrecis(2), 4);

  m.SetVal(1, 1, 2.5);
  EXPECT_EQ(log.changes, 1);
  for (auto [c, r] : {std::pair{0, 1}, {2, 1}, {1, 0}, {1, 2}, {-1, -1}}) {
    EXPECT_EQ(m.GetVal(c, r), 0.0);
    m.SetVal(c, r, 9.0);
  }
  EXPECT_EQ(log.changes, 1);  // out-of-range writes fire nothing
  EXPECT_EQ(m.Elem(1, 1), 2.5);
  EXPECT_EQ(log.resizes, 0);
}

TEST(MatrixStorage, ResizeKeepsTheOverlapAndIgnoresBadSizes) {
  TMatrix m;
  EventLog log;
  FillPattern(m, 2, 2);
  log.Attach(m);
  EXPECT_TRUE(m.Resize(3, 4));
  EXPECT_EQ(log.changes, 1);
  EXPECT_EQ(log.resizes, 1);
  EXPECT_EQ(m.GetVal(2, 2), 22.0);
  EXPECT_EQ(m.GetVal(1, 2), 12.0);
  EXPECT_EQ(m.GetVal(3, 1), 0.0);
  EXPECT_EQ(m.GetVal(1, 4), 0.0);
  EXPECT_TRUE(m.Resize(1, 2));
  EXPECT_EQ(m.GetVal(1, 2), 12.0);
  EXPECT_EQ(m.GetVal(2, 2), 0.0);

  log = EventLog{};
  log.Attach(m);
  EXPECT_FALSE(m.Resize(1, 2));  // same size
  EXPECT_FALSE(m.Resize(0, 5));
  EXPECT_FALSE(m.Resize(5, -1));
  m.SetNCols(0);
  m.SetNCols(-5);
  m.SetNRows(0);
  EXPECT_EQ(log.changes + log.resizes, 0);
  EXPECT_EQ(m.NrOfColumns(), 1);
  EXPECT_EQ(m.NrOfRows(), 2);
  m.SetNCols(3);
  m.SetNRows(5);
  EXPECT_EQ(m.NrOfColumns(), 3);
  EXPECT_EQ(m.NrOfRows(), 5);
  EXPECT_EQ(log.resizes, 2);
}

TEST(MatrixStorage, ResizeAndClearOnlyClearsWhenTheSizeChanges) {
  TMatrix m;
  FillPattern(m, 2, 2);
  EventLog log;
  log.Attach(m);
  EXPECT_FALSE(m.ResizeAndClear(2, 2));
  EXPECT_EQ(m.GetVal(2, 2), 22.0);  // deliberately not cleared
  EXPECT_EQ(log.changes, 0);
  EXPECT_TRUE(m.ResizeAndClear(3, 2));
  EXPECT_EQ(m.GetVal(2, 2), 0.0);
  EXPECT_EQ(log.changes, 2);
  EXPECT_EQ(log.resizes, 2);
}

TEST(MatrixStorage, HugeResizeRaisesAndKeepsTheMatrix) {
#if defined(__SANITIZE_ADDRESS__)
  GTEST_SKIP() << "AddressSanitizer aborts on an impossible allocation instead of throwing";
#endif
  TMatrix m;
  m.SetName("Big");
  FillPattern(m, 2, 3);
  try {
    m.Resize(uc_MaxInt, uc_MaxInt);
    FAIL() << "no exception";
  } catch (const EQUVMatrixError& e) {
    EXPECT_STREQ(e.what(), "Component \"Big\": not enough memory on heap");
  }
  EXPECT_EQ(m.NrOfColumns(), 2);
  EXPECT_EQ(m.NrOfRows(), 3);
  EXPECT_EQ(m.GetVal(2, 3), 23.0);
}

TEST(MatrixCopy, AssignTakesEverythingSilentlyCloneFiresPerElement) {
  TMatrix src;
  FillPattern(src, 3, 2);
  src.SetDataID("set-7");
  src.SetFPrecis(0, 6);
  src.SetFPrecis(5, 3);
  int srcChanges = 0;
  src.OnChange = [&](TComponent*) { ++srcChanges; };
  src.OnCalcDistance = [](TComponent*, std::int32_t, std::int32_t, double& d) { d = 42.0; };

  TMatrix assigned;
  EventLog log;
  log.Attach(assigned);
  assigned.Assign(src);
  EXPECT_EQ(log.changes + log.resizes, 0);
  EXPECT_EQ(assigned.NrOfColumns(), 3);
  EXPECT_EQ(assigned.GetVal(3, 2), 32.0);
  EXPECT_EQ(assigned.DataID(), "set-7");
  EXPECT_EQ(assigned.GetFPrecis(0), 6);
  EXPECT_EQ(assigned.GetFPrecis(2), 3);
  assigned.SetVal(1, 1, 0.0);  // the handler came along with the data
  EXPECT_EQ(srcChanges, 1);
  EXPECT_EQ(assigned.DistanceOfObjects(dmUser, 1, 2), 42.0);

  TMatrix cloned;
  cloned.Resize(3, 2);
  EventLog clog;
  clog.Attach(cloned);
  cloned.Clone(&src);
  EXPECT_EQ(clog.changes, 6 + 1);  // once per element, once at the end; no resize needed
  EXPECT_EQ(clog.resizes, 1);
  EXPECT_EQ(cloned.GetVal(2, 2), 22.0);
  EXPECT_EQ(cloned.DataID(), "");
  EXPECT_EQ(cloned.GetFPrecis(0), 15);
  EXPECT_FALSE(cloned.OnCalcDistance);

  TMatrix grown;
  EventLog glog;
  glog.Attach(grown);
  grown.Clone(&src);
  EXPECT_EQ(glog.changes, 1 + 6 + 1);
  EXPECT_EQ(glog.resizes, 2);
  grown.Clone(nullptr);
  EXPECT_EQ(glog.changes, 8);
}

TEST(MatrixCopy, CopyFromClampsOrdersAndDropsOutsideTargets) {
  TMatrix src;
  FillPattern(src, 4, 4);
  TMatrix dst;
  dst.Resize(3, 3);
  EventLog log;
  log.Attach(dst);
  // Bounds beyond the source are clamped, exchanged ones put in order: columns 3..4, rows 2..4.
  dst.CopyFrom(&src, 9, 4, 3, 2, 2, 1);
  EXPECT_EQ(dst.GetVal(2, 1), 32.0);
  EXPECT_EQ(dst.GetVal(3, 3), 44.0);
  EXPECT_EQ(dst.GetVal(1, 1), 0.0);
  EXPECT_EQ(log.changes, 6 + 1);  // six targets inside, then the final OnChange
  dst.CopyFrom(static_cast<const TMatrix*>(nullptr), 1, 1, 1, 1, 1, 1);
  EXPECT_EQ(log.changes, 7);
  // Copying a matrix onto itself, overlapping, reads the original values.
  src.CopyFrom(&src, 1, 1, 2, 4, 2, 1);
  EXPECT_EQ(src.GetVal(2, 1), 11.0);
  EXPECT_EQ(src.GetVal(3, 4), 24.0);
}

TEST(MatrixCopy, ArrayCopies) {
  TMatrix m;
  FillPattern(m, 3, 4);
  TDoubleArray line(5, 7.0);
  m.CopyColTo1DArray(line, 2, 2, 3, 1);
  EXPECT_EQ(line, (TDoubleArray{0, 22, 23, 0, 0}));
  m.CopyRowTo1DArray(line, 1, 0, 0, -1);  // whole row, first element lands before the start
  EXPECT_EQ(line, (TDoubleArray{21, 31, 0, 0, 0}));
  line.assign(3, 7.0);
  m.CopyRowTo1DArray(line, 1, 0, 0, 3);  // nothing lands inside: untouched
  EXPECT_EQ(line, (TDoubleArray{7, 7, 7}));

  TDouble2DArray whole;
  m.DuplicateDataAsArray(whole);
  ASSERT_EQ(whole.size(), 3u);
  EXPECT_EQ(whole[2][3], 34.0);

  TDouble2DArray part(2, TDoubleArray(2, -1.0));
  m.CopyToArray(part, 2, 3, 3, 4, 1, 0);  // (2..3, 3..4) to [1][0]: only column 2 fits
  EXPECT_EQ(part, (TDouble2DArray{{-1, -1}, {23, 24}}));
  TInt2DArray ints(1, TIntArray(1, 0));
  m.SetVal(1, 1, 2.6);
  m.CopyToArray(ints, 1, 1, 1, 1, 0, 0);
  EXPECT_EQ(ints[0][0], 3);

  TMatrix target;
  target.Resize(2, 2);
  EventLog log;
  log.Attach(target);
  target.CopyFromArray(TDouble2DArray{{1, 2, 3}, {4, 5, 6}}, 0, 1, 9, 2, 1, 1);
  EXPECT_EQ(target.GetVal(1, 1), 2.0);
  EXPECT_EQ(target.GetVal(2, 2), 6.0);
  EXPECT_EQ(log.changes, 1);
  target.CopyFromArray(TIntArray{7, 8, 9}, 1, 2, 1, 2, false);
  EXPECT_EQ(target.GetVal(1, 2), 8.0);
  EXPECT_EQ(target.GetVal(2, 2), 9.0);
  target.CopyFromArray(TDoubleArray{}, 0, 0, 1, 1, true);
  EXPECT_EQ(log.changes, 2);
}

TEST(MatrixRange, MakeValidRanges) {
  TMatrix m;
  m.Resize(5, 3);
  std::int32_t lo = 0, hi = 0;
  EXPECT_FALSE(m.MakeValidColRange(lo, hi));
  EXPECT_EQ(lo, 1);
  EXPECT_EQ(hi, 5);
  lo = 2, hi = 4;
  EXPECT_FALSE(m.MakeValidColRange(lo, hi));
  lo = 4, hi = 2;
  EXPECT_TRUE(m.MakeValidColRange(lo, hi));
  EXPECT_EQ(lo, 2);
  EXPECT_EQ(hi, 4);
  lo = -1, hi = 9;
  EXPECT_TRUE(m.MakeValidRowRange(lo, hi));
  EXPECT_EQ(lo, 1);
  EXPECT_EQ(hi, 3);
  lo = 0, hi = 2;
  EXPECT_TRUE(m.MakeValidRowRange(lo, hi));
  EXPECT_EQ(lo, 1);
}

TEST(MatrixFill, RangedFillTakesBothColumnBoundsFirst) {
  TMatrix m;
  m.Resize(4, 4);
  EventLog log;
  log.Attach(m);
  m.Fill(2, 3, 1, 2, 5.0);  // columns 2..3, rows 1..2
  EXPECT_EQ(m.GetVal(2, 1), 5.0);
  EXPECT_EQ(m.GetVal(3, 2), 5.0);
  EXPECT_EQ(m.GetVal(1, 1), 0.0);
  EXPECT_EQ(m.GetVal(2, 3), 0.0);
  EXPECT_EQ(m.Sum(0, 0, 0, 0), 20.0);
  m.Fill(1.5);
  EXPECT_EQ(m.Sum(0, 0, 0, 0), 24.0);
  m.FillDiag(-1.0);
  EXPECT_EQ(m.Trace(), -4.0);
  EXPECT_EQ(m.GetVal(2, 1), 1.5);
  m.FillSerial(2, 1, 3, 2, 10.0, 0.5);  // columns 2..3, rows 1..2, column by column
  EXPECT_EQ(m.GetVal(2, 1), 10.0);
  EXPECT_EQ(m.GetVal(2, 2), 10.5);
  EXPECT_EQ(m.GetVal(3, 1), 11.0);
  EXPECT_EQ(log.changes, 4);

  SetRandSeed(3);
  m.FillRandomUniform(-2.0, 3.0);
  double mn = 0, mx = 0;
  m.MinMax(0, 0, 0, 0, mn, mx);
  EXPECT_GE(mn, -2.0);
  EXPECT_LT(mx, 3.0);
  TMatrix g;
  g.Resize(100, 100);
  g.FillRandomGauss(5.0, 2.0);
  double mean = 0, var = 0;
  g.MeanVar(0, 0, 0, 0, mean, var);
  EXPECT_NEAR(mean, 5.0, 0.1);        // 4 standard errors of the mean of 10000 draws
  EXPECT_NEAR(var, 4.0, 4.0 * 0.06);  // about 4 standard errors of the variance
}

TEST(MatrixSearch, MinMaxFindAndSortedColumn) {
  TMatrix m;
  double mn = 0, mx = 0;
  m.SetVal(1, 1, -3.5);
  m.MinMax(0, 0, 0, 0, mn, mx);
  EXPECT_EQ(mn, -3.5);
  EXPECT_EQ(mx, -3.5);

  m.Resize(3, 3);
  m.CopyFromArray(TDouble2DArray{{1, 5, 9}, {4, 2, 8}, {6, 3, 7}}, 0, 0, 2, 2, 1, 1);
  m.MinMax(2, 1, 3, 2, mn, mx);  // columns 2..3, rows 1..2
  EXPECT_EQ(mn, 2.0);
  EXPECT_EQ(mx, 6.0);
  std::int32_t col = -1, row = -1;
  m.Find(0, 0, 0, 0, 4.5, col, row);  // 5 at (1, 2) and 4 at (2, 1) are equally near
  EXPECT_EQ(col, 1);
  EXPECT_EQ(row, 2);
  m.Find(2, 2, 3, 3, 100.0, col, row);
  EXPECT_EQ(col, 2);
  EXPECT_EQ(row, 3);

  TMatrix s;
  s.CopyFromArray(TDoubleArray{}, 0, 0, 1, 1, true);
  s.Resize(2, 6);
  s.CopyFromArray(TDoubleArray{1, 3, 5, 7, 9, 11}, 0, 5, 1, 1, true);
  s.CopyFromArray(TDoubleArray{11, 9, 7, 5, 3, 1}, 0, 5, 2, 1, true);
  EXPECT_EQ(s.FindInSortedColumn(1, true, 7.0), 4);
  EXPECT_EQ(s.FindInSortedColumn(1, true, 7.9), 4);
  EXPECT_EQ(s.FindInSortedColumn(1, true, 8.0), 5);  // tie: the higher row
  EXPECT_EQ(s.FindInSortedColumn(1, true, -50.0), 1);
  EXPECT_EQ(s.FindInSortedColumn(1, true, 50.0), 6);
  EXPECT_EQ(s.FindInSortedColumn(2, false, 4.2), 4);
  EXPECT_EQ(s.FindInSortedColumn(2, false, 3.9), 5);
  EXPECT_EQ(s.FindInSortedColumn(3, true, 1.0), 0);
}

TEST(MatrixStructure, RemoveExchangeMirror) {
  TMatrix m;
  FillPattern(m, 3, 3);
  EventLog log;
  log.Attach(m);
  EXPECT_FALSE(m.RemoveColumn(0));
  EXPECT_FALSE(m.RemoveColumn(4));
  EXPECT_TRUE(m.RemoveColumn(2));
  EXPECT_EQ(m.NrOfColumns(), 2);
  EXPECT_EQ(m.GetVal(2, 3), 33.0);
  EXPECT_EQ(log.resizes, 1);
  EXPECT_TRUE(m.RemoveRow(1));
  EXPECT_EQ(m.NrOfRows(), 2);
  EXPECT_EQ(m.GetVal(1, 1), 12.0);
  EXPECT_EQ(m.GetVal(2, 2), 33.0);
  EXPECT_TRUE(m.RemoveColumn(1));
  EXPECT_FALSE(m.RemoveColumn(1));  // one column left
  EXPECT_TRUE(m.RemoveRow(2));
  EXPECT_FALSE(m.RemoveRow(1));

  FillPattern(m, 3, 2);
  m.ExchangeColumns(1, 3);
  EXPECT_EQ(m.GetVal(1, 2), 32.0);
  m.ExchangeRows(1, 2);
  EXPECT_EQ(m.GetVal(1, 1), 32.0);
  const int before = log.changes;
  m.ExchangeRows(1, 3);  // out of range: ignored
  EXPECT_EQ(log.changes, before);
  m.MirrorColumns();
  EXPECT_EQ(m.GetVal(1, 1), 12.0);
  m.MirrorRows();
  EXPECT_EQ(m.GetVal(1, 1), 11.0);
}

TEST(MatrixSort, RowSortExchangesRowsAndReportsEachExchange) {
  TMatrix m;
  m.Resize(3, 4);
  // Keys in column 2: 4, 1, 3, 1; column 1 follows the rows, column 3 is outside the range.
  m.CopyFromArray(TDoubleArray{10, 20, 30, 40}, 0, 3, 1, 1, true);
  m.CopyFromArray(TDoubleArray{4, 1, 3, 1}, 0, 3, 2, 1, true);
  m.CopyFromArray(TDoubleArray{7, 7, 7, 8}, 0, 3, 3, 1, true);
  EventLog log;
  log.Attach(m);
  m.SortRows(2, true, 1, 0, 1, 0);  // sort by column 2, move column 1 along, all rows
  TDoubleArray keys(4), first(4), third(4);
  m.CopyColTo1DArray(keys, 2, 0, 0, 0);
  m.CopyColTo1DArray(first, 1, 0, 0, 0);
  m.CopyColTo1DArray(third, 3, 0, 0, 0);
  EXPECT_EQ(keys, (TDoubleArray{1, 1, 3, 4}));
  EXPECT_EQ(first[2], 30.0);
  EXPECT_EQ(first[3], 10.0);
  EXPECT_EQ(third, (TDoubleArray{7, 7, 7, 8}));  // outside the column range: untouched
  EXPECT_EQ(log.changes, 1);
  ASSERT_FALSE(log.exchanges.empty());
  for (auto [what, a, b, lo, hi] : log.exchanges) {
    EXPECT_EQ(what, 2);
    EXPECT_LT(a, b);
    EXPECT_EQ(lo, 1);
    EXPECT_EQ(hi, 1);
  }
  // Comb sort of 4, 1, 3, 1: gap 2 swaps (1,3); gap 1 swaps (1,2), (3,4) then (2,3).
  EXPECT_EQ(log.exchanges.size(), 4u);
  EXPECT_EQ(std::get<1>(log.exchanges[0]), 1);
  EXPECT_EQ(std::get<2>(log.exchanges[0]), 3);

  EventLog again;
  again.Attach(m);
  m.SortRows(2, true, 0, 0, 0, 0);  // already sorted, equal keys: no exchange
  EXPECT_TRUE(again.exchanges.empty());
  EXPECT_EQ(again.changes, 1);
  m.SortRows(2, false, 0, 3, 0, 3);  // a single row: nothing at all
  EXPECT_EQ(again.changes, 1);
  m.SortRows(2, false, 0, 0, 0, 0);
  m.CopyColTo1DArray(keys, 2, 0, 0, 0);
  EXPECT_EQ(keys, (TDoubleArray{4, 3, 1, 1}));
}

TEST(MatrixSort, ColumnSortCarriesWholeColumns) {
  TMatrix m;
  m.Resize(4, 2);
  m.CopyFromArray(TDoubleArray{3, 1, 4, 2}, 0, 3, 1, 1, false);
  m.CopyFromArray(TDoubleArray{30, 10, 40, 20}, 0, 3, 1, 2, false);
  EventLog log;
  log.Attach(m);
  m.SortCols(1, true, 0, 0, 0, 0);
  TDoubleArray r1(4), r2(4);
  m.CopyRowTo1DArray(r1, 1, 0, 0, 0);
  m.CopyRowTo1DArray(r2, 2, 0, 0, 0);
  EXPECT_EQ(r1, (TDoubleArray{1, 2, 3, 4}));
  EXPECT_EQ(r2, (TDoubleArray{10, 20, 30, 40}));
  EXPECT_EQ(log.changes, 1);
  for (auto [what, a, b, lo, hi] : log.exchanges) {
    EXPECT_EQ(what, 1);
    EXPECT_EQ(lo, 1);
    EXPECT_EQ(hi, 2);
  }
  // Only row 2 moves with the key row 1 when the row range is 2..2.
  m.SortCols(1, false, 0, 2, 0, 2);
  m.CopyRowTo1DArray(r1, 1, 0, 0, 0);
  m.CopyRowTo1DArray(r2, 2, 0, 0, 0);
  EXPECT_EQ(r1, (TDoubleArray{4, 3, 2, 1}));
  EXPECT_EQ(r2, (TDoubleArray{40, 30, 20, 10}));
}

TEST(MatrixChecksum, CRCofDataFollowsEveryBit) {
  TMatrix a, b;
  FillPattern(a, 3, 2);
  FillPattern(b, 3, 2);
  const std::string crc = a.CRCofData();
  EXPECT_EQ(crc.size(), 64u);
  EXPECT_EQ(crc, b.CRCofData());
  for (int bit = 0; bit < 64; bit += 7) {
    double x = a.GetVal(2, 2);
    std::uint64_t bits;
    std::memcpy(&bits, &x, 8);
    bits ^= std::uint64_t{1} << bit;
    std::memcpy(&x, &bits, 8);
    b.SetVal(2, 2, x);
    EXPECT_NE(b.CRCofData(), crc) << bit;
    b.SetVal(2, 2, a.GetVal(2, 2));
  }
  // A single zero element: each register has seen one zero byte.
  TMatrix z;
  const std::string zeroByte = Hex(static_cast<std::int32_t>(~CalcNextCRC32(0, 0xFFFFFFFFu)), 8);
  std::string expected;
  for (int k = 0; k < 8; ++k)
    expected += zeroByte;
  EXPECT_EQ(z.CRCofData(), expected);
}

}  // namespace
}  // namespace quv
