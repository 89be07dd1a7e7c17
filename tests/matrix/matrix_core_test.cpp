#include <gtest/gtest.h>

#include "matrix/matrix_test_util.h"

namespace quv::test {
namespace {

TEST(MatrixStorage, NewMatrixOutOfRangeAccessAndResize) {
  TMatrix m;
  EventLog log(m);
  EXPECT_EQ(RowsOf(m), (TRows{{0}}));
  // Index 1 still selects the first precision, 2 the second.
  EXPECT_EQ(std::pair(m.GetFPrecis(1), m.GetFPrecis(2)), std::pair(15, -1));
  m.SetFPrecis(7, 4);
  EXPECT_EQ(std::pair(m.GetFPrecis(-3), m.GetFPrecis(2)), std::pair(15, 4));
  m.SetVal(1, 1, 2.5);
  for (auto [c, r] : {std::pair{0, 1}, {2, 1}, {1, 0}, {1, 2}, {-1, -1}}) {
    EXPECT_EQ(m.GetVal(c, r), 0.0);
    m.SetVal(c, r, 9.0);
  }
  EXPECT_EQ(m.Elem(1, 1), 2.5);
  EXPECT_EQ(log.Counts(), std::pair(1, 0));  // out-of-range writes fire nothing

  FillPattern(m, 2, 2);
  log.Reset();
  EXPECT_TRUE(m.Resize(3, 4));
  EXPECT_EQ(RowsOf(m), (TRows{{11, 21, 0}, {12, 22, 0}, {0, 0, 0}, {0, 0, 0}}));
  EXPECT_EQ(log.Counts(), std::pair(1, 1));
  EXPECT_TRUE(m.Resize(1, 2));
  EXPECT_EQ(RowsOf(m), (TRows{{11}, {12}}));
  log.Reset();
  EXPECT_FALSE(m.Resize(1, 2));  // same size
  EXPECT_FALSE(m.Resize(0, 5));
  EXPECT_FALSE(m.Resize(5, -1));
  m.SetNCols(0);
  m.SetNRows(-5);
  EXPECT_EQ(log.Counts(), std::pair(0, 0));
  EXPECT_EQ(Dims(m), std::pair(1, 2));
  m.SetNCols(3);
  m.SetNRows(5);
  EXPECT_EQ(Dims(m), std::pair(3, 5));
  EXPECT_EQ(log.resizes, 2);

  FillPattern(m, 2, 2);
  log.Reset();
  EXPECT_FALSE(m.ResizeAndClear(2, 2));
  EXPECT_EQ(m.GetVal(2, 2), 22.0);  // deliberately not cleared
  EXPECT_TRUE(m.ResizeAndClear(3, 2));
  EXPECT_EQ(m.GetVal(2, 2), 0.0);
  EXPECT_EQ(log.Counts(), std::pair(2, 2));
}

TEST(MatrixStorage, HugeResizeRaisesAndKeepsTheMatrix) {
#if defined(__SANITIZE_ADDRESS__)
  GTEST_SKIP() << "AddressSanitizer aborts on an impossible allocation instead of throwing";
#endif
  TMatrix m;
  m.SetName("Big");
  FillPattern(m, 2, 1);
  EXPECT_EQ(MessageOf([&] { m.Resize(uc_MaxInt, uc_MaxInt); }),
            "Component \"Big\": not enough memory on heap");
  EXPECT_EQ(RowsOf(m), (TRows{{11, 21}}));
}

TEST(MatrixCopy, AssignTakesEverythingSilentlyCloneFiresPerElement) {
  TMatrix src, assigned, cloned;
  FillPattern(src, 3, 2);
  src.SetDataID("set-7");
  src.SetFPrecis(0, 6);
  src.SetFPrecis(5, 3);
  int srcChanges = 0;
  src.OnChange = [&](TComponent*) { ++srcChanges; };
  src.OnCalcDistance = [](TComponent*, std::int32_t, std::int32_t, double& d) { d = 42.0; };

  EventLog log(assigned);
  assigned.Assign(src);
  EXPECT_EQ(log.Counts(), std::pair(0, 0));
  EXPECT_EQ(RowsOf(assigned), RowsOf(src));
  EXPECT_EQ(std::tuple(assigned.DataID(), assigned.GetFPrecis(0), assigned.GetFPrecis(2)),
            std::tuple("set-7", 6, 3));
  assigned.SetVal(1, 1, 0.0);  // the handlers came along with the data
  EXPECT_EQ(srcChanges, 1);
  EXPECT_EQ(assigned.DistanceOfObjects(dmUser, 1, 2), 42.0);

  // Same size: one OnChange per element and one at the end, then the final OnResize.
  cloned.Resize(3, 2);
  EventLog clog(cloned);
  cloned.Clone(&src);
  EXPECT_EQ(clog.Counts(), std::pair(6 + 1, 1));
  EXPECT_EQ(RowsOf(cloned), RowsOf(src));
  EXPECT_EQ(std::tuple(cloned.DataID(), cloned.GetFPrecis(0), bool(cloned.OnCalcDistance)),
            std::tuple("", 15, false));
  cloned.Clone(nullptr);
  EXPECT_EQ(clog.Counts(), std::pair(6 + 1, 1));
}

TEST(MatrixCopy, CopiesBetweenMatricesAndArraysClampAndDropOutsideTargets) {
  TMatrix src, dst;
  FillPattern(src, 4, 4);
  dst.Resize(3, 3);
  EventLog log(dst);
  // Bounds beyond the source are clamped, exchanged ones put in order: columns 3..4, rows 2..4.
  dst.CopyFrom(&src, 9, 4, 3, 2, 2, 1);
  dst.CopyFrom(static_cast<const TMatrix*>(nullptr), 1, 1, 1, 1, 1, 1);
  EXPECT_EQ(RowsOf(dst), (TRows{{0, 32, 42}, {0, 33, 43}, {0, 34, 44}}));
  EXPECT_EQ(log.changes, 6 + 1);  // six targets inside, then the final OnChange
  // Copying a matrix onto itself, overlapping, reads the original values.
  src.CopyFrom(&src, 1, 1, 2, 4, 2, 1);
  EXPECT_EQ(RowsOf(src)[0], (std::vector<double>{11, 11, 21, 41}));

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

  TDouble2DArray whole, part(2, TDoubleArray(2, -1.0));
  m.DuplicateDataAsArray(whole);
  EXPECT_EQ(whole, (TDouble2DArray{{11, 12, 13, 14}, {21, 22, 23, 24}, {31, 32, 33, 34}}));
  m.CopyToArray(part, 2, 3, 3, 4, 1, 0);  // (2..3, 3..4) to [1][0]: only column 2 fits
  EXPECT_EQ(part, (TDouble2DArray{{-1, -1}, {23, 24}}));
  TInt2DArray ints(1, TIntArray(1, 0));
  m.SetVal(1, 1, 2.6);
  m.CopyToArray(ints, 1, 1, 1, 1, 0, 0);
  EXPECT_EQ(ints[0][0], 3);

  dst.Resize(2, 2);
  log.Reset();
  dst.CopyFromArray(TDouble2DArray{{1, 2, 3}, {4, 5, 6}}, 0, 1, 9, 2, 1, 1);
  EXPECT_EQ(RowsOf(dst), (TRows{{2, 5}, {3, 6}}));
  dst.CopyFromArray(TIntArray{7, 8, 9}, 1, 2, 1, 2, false);
  dst.CopyFromArray(TDoubleArray{}, 0, 0, 1, 1, true);
  EXPECT_EQ(RowsOf(dst), (TRows{{2, 5}, {8, 9}}));
  EXPECT_EQ(log.changes, 2);
}

TEST(MatrixFill, FillsTakeTheirRangesAndFireOnce) {
  TMatrix m, g;
  m.Resize(4, 4);
  EventLog log(m);
  m.Fill(2, 3, 1, 2, 5.0);  // columns 2..3, rows 1..2: both column bounds come first
  EXPECT_EQ(RowsOf(m), (TRows{{0, 5, 5, 0}, {0, 5, 5, 0}, {0, 0, 0, 0}, {0, 0, 0, 0}}));
  m.Fill(1.5);
  m.FillDiag(-1.0);
  m.FillDiag(2, 1, 4, 2, 0.0);          // within columns 2..4, rows 1..2: (2, 1) and (3, 2)
  m.FillSerial(2, 3, 3, 4, 10.0, 0.5);  // columns 2..3, rows 3..4, column by column
  EXPECT_EQ(
      RowsOf(m),
      (TRows{{-1, 0, 1.5, 1.5}, {1.5, -1, 0, 1.5}, {1.5, 10, 11, 1.5}, {1.5, 10.5, 11.5, -1}}));
  EXPECT_EQ(log.changes, 5);

  // 10000 draws: the tolerances are about 4 standard errors.
  double mn = 0, mx = 0, mean = 0, var = 0;
  SetRandSeed(3);
  g.Resize(100, 100);
  g.FillRandomUniform(-2.0, 3.0);
  g.MinMax(0, 0, 0, 0, mn, mx);
  g.MeanVar(0, 0, 0, 0, mean, var);
  EXPECT_TRUE(mn >= -2.0 && mx < 3.0) << mn << " " << mx;
  EXPECT_NEAR(mean, 0.5, 0.06);
  g.FillRandomGauss(5.0, 2.0);
  g.MeanVar(0, 0, 0, 0, mean, var);
  EXPECT_NEAR(mean, 5.0, 0.1);
  EXPECT_NEAR(var, 4.0, 4.0 * 0.06);
}

TEST(MatrixSearch, ValidRangesMinMaxFindAndSortedColumn) {
  TMatrix m;
  m.Resize(5, 3);
  auto check = [&](bool cols, std::int32_t lo, std::int32_t hi, std::pair<int, int> valid,
                   bool corrected) {
    EXPECT_EQ(cols ? m.MakeValidColRange(lo, hi) : m.MakeValidRowRange(lo, hi), corrected);
    EXPECT_EQ(std::pair(lo, hi), valid);
  };
  check(true, 0, 0, {1, 5}, false);  // (0, 0): the whole dimension, nothing corrected
  check(true, 2, 4, {2, 4}, false);
  check(true, 4, 2, {2, 4}, true);
  check(false, -1, 9, {1, 3}, true);
  check(false, 0, 2, {1, 2}, true);

  double mn = 0, mx = 0;
  m.Resize(1, 1);
  m.SetVal(1, 1, -3.5);
  m.MinMax(0, 0, 0, 0, mn, mx);
  EXPECT_EQ(std::pair(mn, mx), std::pair(-3.5, -3.5));
  SetRows(m, {{1, 4, 6}, {5, 2, 3}, {9, 8, 7}});
  m.MinMax(2, 1, 3, 2, mn, mx);  // columns 2..3, rows 1..2
  EXPECT_EQ(std::pair(mn, mx), std::pair(2.0, 6.0));
  std::int32_t col = -1, row = -1;
  m.Find(0, 0, 0, 0, 4.5, col, row);  // 5 at (1, 2) and 4 at (2, 1) are equally near
  EXPECT_EQ(std::pair(col, row), std::pair(1, 2));
  m.Find(2, 2, 3, 3, 100.0, col, row);
  EXPECT_EQ(std::pair(col, row), std::pair(2, 3));

  SetRows(m, {{1, 11}, {3, 9}, {5, 7}, {7, 5}, {9, 3}, {11, 1}});
  // Between two rows the nearer wins, on a tie (8.0) the higher; beyond an end, the end row.
  EXPECT_EQ(m.FindInSortedColumn(1, true, 7.0), 4);
  EXPECT_EQ(m.FindInSortedColumn(1, true, 7.9), 4);
  EXPECT_EQ(m.FindInSortedColumn(1, true, 8.0), 5);
  EXPECT_EQ(m.FindInSortedColumn(1, true, -50.0), 1);
  EXPECT_EQ(m.FindInSortedColumn(1, true, 50.0), 6);
  EXPECT_EQ(m.FindInSortedColumn(2, false, 4.2), 4);
  EXPECT_EQ(m.FindInSortedColumn(2, false, 3.9), 5);
  EXPECT_EQ(m.FindInSortedColumn(3, true, 1.0), 0);  // no such column
}

TEST(MatrixStructure, RemoveExchangeMirror) {
  TMatrix m;
  FillPattern(m, 3, 3);
  EventLog log(m);
  EXPECT_FALSE(m.RemoveColumn(0));
  EXPECT_FALSE(m.RemoveColumn(4));
  EXPECT_TRUE(m.RemoveColumn(2));
  EXPECT_EQ(log.resizes, 1);
  EXPECT_TRUE(m.RemoveRow(1));
  EXPECT_EQ(RowsOf(m), (TRows{{12, 32}, {13, 33}}));
  EXPECT_TRUE(m.RemoveColumn(1));
  EXPECT_FALSE(m.RemoveColumn(1));  // one column left
  EXPECT_TRUE(m.RemoveRow(2));
  EXPECT_FALSE(m.RemoveRow(1));

  FillPattern(m, 3, 2);
  m.ExchangeColumns(1, 3);
  m.ExchangeRows(1, 2);
  EXPECT_EQ(RowsOf(m), (TRows{{32, 22, 12}, {31, 21, 11}}));
  const int before = log.changes;
  m.ExchangeRows(1, 3);  // out of range: ignored
  m.ExchangeColumns(0, 1);
  EXPECT_EQ(log.changes, before);
  m.MirrorColumns();
  EXPECT_EQ(RowsOf(m), (TRows{{12, 22, 32}, {11, 21, 31}}));
  m.MirrorRows();
  EXPECT_EQ(RowsOf(m), (TRows{{11, 21, 31}, {12, 22, 32}}));
}

TEST(MatrixSort, CombSortsMoveTheRangeAndReportEachExchange) {
  TMatrix m;
  // Keys in column 2; column 1 follows the rows, column 3 lies outside the column range.
  SetRows(m, {{10, 4, 7}, {20, 1, 7}, {30, 3, 7}, {40, 1, 8}});
  EventLog log(m);
  m.SortRows(2, true, 1, 0, 1, 0);  // sort by column 2, move column 1 along, all rows
  EXPECT_EQ(RowsOf(m), (TRows{{20, 1, 7}, {40, 1, 7}, {30, 3, 7}, {10, 4, 8}}));
  EXPECT_EQ(log.changes, 1);
  // Comb sort of 4, 1, 3, 1: gap 2 swaps (1,3); gap 1 swaps (1,2), (3,4) then (2,3).
  EXPECT_EQ(
      log.exchanges,
      (std::vector<TExchange>{{2, 1, 3, 1, 1}, {2, 1, 2, 1, 1}, {2, 3, 4, 1, 1}, {2, 2, 3, 1, 1}}));
  log.Reset();
  m.SortRows(2, true, 0, 0, 0, 0);   // already sorted, equal keys: no exchange
  m.SortRows(2, false, 0, 3, 0, 3);  // a single row: nothing at all
  m.SortRows(4, false, 0, 0, 0, 0);  // key column outside the matrix: nothing
  EXPECT_TRUE(log.exchanges.empty());
  EXPECT_EQ(log.changes, 1);
  m.SortRows(2, false, 0, 0, 0, 0);
  EXPECT_EQ(m.Columns()[1], (TDoubleArray{4, 3, 1, 1}));

  SetRows(m, {{3, 1, 4, 2}, {30, 10, 40, 20}});
  log.Reset();
  m.SortCols(1, true, 0, 0, 0, 0);
  EXPECT_EQ(RowsOf(m), (TRows{{1, 2, 3, 4}, {10, 20, 30, 40}}));
  EXPECT_EQ(log.changes, 1);
  EXPECT_EQ(log.exchanges,
            (std::vector<TExchange>{{1, 1, 2, 1, 2}, {1, 3, 4, 1, 2}, {1, 2, 3, 1, 2}}));
  // Only row 2 moves with the key row 1 when the row range is 2..2.
  SetRows(m, {{3, 1, 4, 2}, {30, 10, 40, 20}, {5, 6, 7, 8}});
  m.SortCols(1, false, 0, 2, 0, 2);
  EXPECT_EQ(RowsOf(m), (TRows{{4, 3, 2, 1}, {40, 30, 20, 10}, {5, 6, 7, 8}}));
}

TEST(MatrixChecksum, OneCRC32RegisterPerByteFedColumnByColumn) {
  // Registers 0..7 from zlib.crc32 of byte k of the little-endian doubles 1, 0.5, -2.5, 3.
  TMatrix m;
  SetRows(m, {{1.0, -2.5}, {0.5, 3.0}});
  EXPECT_EQ(m.CRCofData(), "2144DF1C2144DF1C2144DF1C2144DF1C2144DF1C2144DF1C6477542D1B1D0398");
}

}  // namespace
}  // namespace quv::test
