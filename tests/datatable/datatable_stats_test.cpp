// TDataTable statistics over numeric cells, FindCells and the state operations.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "common/raised_message.h"
#include "quv/datatable/datatable.h"

namespace {

using quv::TDataTable;

// Column 1: 1..8 with row 3 empty, row 5 invalid, row 7 NaN; column 2: 10, 20, ... 80.
void Fill(TDataTable& t) {
  t.Resize(2, 8);
  for (int r = 1; r <= 8; ++r) {
    t.SetElem(1, r, r);
    t.SetElem(2, r, 10.0 * r);
  }
  t.SetIsEmpty(1, 3, true);
  t.SetCellState(1, 5, quv::kCellInvalid);
  t.SetElem(1, 7, std::numeric_limits<double>::quiet_NaN());
}

TEST(DataTableStats, OnlyNumericCellsCount) {
  TDataTable t;
  Fill(t);
  double mean = -1, var = -1;
  // Column 1 keeps 1, 2, 4, 6, 8.
  EXPECT_EQ(t.MeanVarOfNumCells(1, 0, 1, 0, mean, var), 5);
  EXPECT_DOUBLE_EQ(mean, 4.2);
  EXPECT_DOUBLE_EQ(var, 8.2);  // sum of squared deviations 32.8 over 4
  double q1 = 0, q2 = 0, q3 = 0;
  EXPECT_EQ(t.QuartilesOfNumCells(1, 0, 1, 0, q1, q2, q3), 5);
  EXPECT_DOUBLE_EQ(q1, 2.0);
  EXPECT_DOUBLE_EQ(q2, 4.0);
  EXPECT_DOUBLE_EQ(q3, 6.0);
  EXPECT_NEAR(t.GeometricMeanOfNumCells(1, 0, 1, 0), std::pow(1.0 * 2 * 4 * 6 * 8, 0.2), 1e-14);

  // Both columns, whole table: 5 + 8 cells.
  EXPECT_EQ(t.MeanVarOfNumCells(0, 0, 0, 0, mean, var), 13);
  EXPECT_DOUBLE_EQ(mean, (21.0 + 360.0) / 13.0);
  // Bounds beyond the table are clamped and put in order.
  EXPECT_EQ(t.MeanVarOfNumCells(9, 8, 2, 6, mean, var), 3);
  EXPECT_DOUBLE_EQ(mean, 70.0);
  EXPECT_DOUBLE_EQ(var, 100.0);

  // A large offset does not swallow the spread.
  TDataTable big;
  big.Resize(1, 4);
  const double x[] = {0, 3, 9, 12};
  for (int r = 1; r <= 4; ++r)
    big.SetElem(1, r, 1e15 + x[r - 1]);
  EXPECT_EQ(big.MeanVarOfNumCells(0, 0, 0, 0, mean, var), 4);
  EXPECT_DOUBLE_EQ(var, 30.0);
}

TEST(DataTableStats, MarkedCellsAndEmptySelections) {
  TDataTable t;
  Fill(t);
  t.MarkCells({{2, 2}, {2, 4}, {1, 3}, {9, 9}}, quv::kCellMarked, true);
  double mean = 0, var = 0, q1 = 1, q2 = 1, q3 = 1;
  // (1, 3) is marked but empty: only the two cells of column 2 count.
  EXPECT_EQ(t.MeanVarOfNumCells(0, 0, 0, 0, mean, var, quv::kCellMarked), 2);
  EXPECT_DOUBLE_EQ(mean, 30.0);
  EXPECT_DOUBLE_EQ(var, 200.0);
  // Nothing selected: zeros.
  EXPECT_EQ(t.MeanVarOfNumCells(1, 0, 1, 0, mean, var, 128), 0);
  EXPECT_EQ(mean, 0.0);
  EXPECT_EQ(var, 0.0);
  EXPECT_EQ(t.QuartilesOfNumCells(1, 0, 1, 0, q1, q2, q3, 128), 0);
  EXPECT_EQ(q1 + q2 + q3, 0.0);
  EXPECT_EQ(t.GeometricMeanOfNumCells(1, 0, 1, 0, 128), 0.0);
  // One cell: variance 0.
  EXPECT_EQ(t.MeanVarOfNumCells(2, 1, 2, 1, mean, var), 1);
  EXPECT_EQ(var, 0.0);
}

TEST(DataTableStats, GeometricMeanGuards) {
  TDataTable t;
  Fill(t);
  t.SetName("Tab");
  t.SetElem(2, 8, 0.0);
  EXPECT_EQ(t.GeometricMeanOfNumCells(2, 0, 2, 0), 0.0);
  t.SetElem(2, 8, -1.0);
  EXPECT_EQ(quv::test::RaisedMessage<quv::EQUVDataTableError>(
                [&] { t.GeometricMeanOfNumCells(2, 0, 2, 0); }),
            "Component \"Tab\": negative argument passed to GeometricMean");
  // A negative value in a cell that is not a number does not count.
  t.SetIsEmpty(2, 8, true);
  EXPECT_GT(t.GeometricMeanOfNumCells(2, 0, 2, 0), 0.0);
}

TEST(DataTableStats, NominalColumnsCountByTheirRoundedValues) {
  TDataTable t;
  t.Resize(1, 3);
  t.SetElem(1, 1, 0.4);
  t.SetElem(1, 2, 1.6);
  t.SetElem(1, 3, 2.0);
  t.SetMScaleType(1, quv::stOrdinal);
  double mean = 0, var = 0;
  t.MeanVarOfNumCells(0, 0, 0, 0, mean, var);
  EXPECT_DOUBLE_EQ(mean, (0.0 + 2.0 + 2.0) / 3.0);
  EXPECT_EQ(t.FindCells(0, 0, 0, 0, 1.5, 2.5), (std::vector<quv::TCellPos>{{1, 2}, {1, 3}}));
}

TEST(DataTableStats, FindCellsSkipsCellsThatAreNotNumbers) {
  TDataTable t;
  Fill(t);
  EXPECT_EQ(t.FindCells(0, 0, 0, 0, 2.0, 5.0), (std::vector<quv::TCellPos>{{1, 2}, {1, 4}}));
  EXPECT_EQ(t.FindCells(2, 2, 2, 3, 0.0, 100.0), (std::vector<quv::TCellPos>{{2, 2}, {2, 3}}));
  EXPECT_TRUE(t.FindCells(0, 0, 0, 0, 100.0, 0.0).empty());
}

TEST(DataTableStats, SetCellStatesCombinesEveryByteOfTheBlock) {
  const struct {
    quv::TLogicOp op;
    std::uint8_t result;  // of 0b0110 op 0b0011
  } cases[] = {{quv::loAND, 0b0010},   {quv::loNAND, 0b11111101}, {quv::loXOR, 0b0101},
               {quv::loOR, 0b0111},    {quv::loNOR, 0b11111000},  {quv::loXNOR, 0b11111010},
               {quv::loANDNOT, 0b0100}};
  for (const auto& c : cases) {
    TDataTable t;
    t.Resize(2, 2);
    for (int col = 1; col <= 2; ++col) {
      for (int row = 1; row <= 2; ++row)
        t.SetCellState(col, row, 0b0110);
    }
    int events = 0;
    t.OnChangeCellState = [&](quv::TComponent*) { ++events; };
    EXPECT_EQ(t.SetCellStates(2, 1, 2, 2, 0b0011, c.op), 2);
    EXPECT_EQ(t.GetCellState(2, 1), c.result) << int(c.op);
    EXPECT_EQ(t.GetCellState(2, 2), c.result) << int(c.op);
    EXPECT_EQ(t.GetCellState(1, 1), 0b0110);
    EXPECT_EQ(events, 1);
  }
  TDataTable t;
  int events = 0;
  t.OnChangeCellState = [&](quv::TComponent*) { ++events; };
  EXPECT_EQ(t.SetCellStates(0, 0, 0, 0, quv::kCellMarked, quv::loANDNOT), 0);
  t.MarkCells({{1, 1}}, quv::kCellMarked, false);
  EXPECT_EQ(events, 0);
}

}  // namespace
