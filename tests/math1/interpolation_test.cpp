#include "math1/test_helpers.h"

namespace quv {
namespace {

using namespace test;

TEST(InterpolTable, InsideAtEndsAndExtrapolatedOnBothAxisDirections) {
  // Table[i] sits at 2 + 3i on an ascending axis and at 8 - 3i on a descending one; beyond an
  // end the line through the two outermost values on that side is continued.
  const TDoubleArray u = {1.0, 3.0, 2.0};
  for (const auto& [x, y] :
       {std::pair{2.0, 1.0}, {8.0, 2.0}, {3.5, 2.0}, {6.5, 2.5}, {0.5, 0.0}, {9.5, 1.5}}) {
    EXPECT_EQ(InterpolTable(x, 2.0, 8.0, u), y) << x;
    EXPECT_EQ(InterpolTable(10.0 - x, 8.0, 2.0, u), y) << x;
  }
  EXPECT_DOUBLE_EQ(InterpolTable(0.25, 0.0, 1.0, TIntArray{0, 10, 20}), 5.0);
  // Samples of f(x) = 3x - 2 on [-1, 4]: interpolation and extrapolation are both exact.
  TDoubleArray line(11);
  for (int i = 0; i <= 10; ++i)
    line[static_cast<std::size_t>(i)] = 3.0 * (-1.0 + 0.5 * i) - 2.0;
  const TDoubleArray reversed(line.rbegin(), line.rend());
  for (double x = -3.0; x <= 6.0; x += 0.173) {
    EXPECT_NEAR(InterpolTable(x, -1.0, 4.0, line), 3.0 * x - 2.0, 1e-12) << x;
    EXPECT_NEAR(InterpolTable(x, 4.0, -1.0, reversed), 3.0 * x - 2.0, 1e-12) << x;
  }
}

TEST(InterpolTable, ErrorsAndNonFiniteArguments) {
  const std::string few = "InterpolTable: pivot array must contain at least 2 values";
  EXPECT_EQ(MessageOf([] { InterpolTable(0.5, 0.0, 1.0, TDoubleArray{1.0}); }), few);
  EXPECT_EQ(MessageOf([] { InterpolTable(0.5, 0.0, 1.0, TIntArray{}); }), few);
  EXPECT_EQ(MessageOf([] {
              InterpolTable(0.5, 2.0, 2.0, TDoubleArray{1.0, 2.0});
            }),
            "InterpolTable: specified range of pivot array is zero");
  const TDoubleArray t = {1.0, 2.0, 4.0};
  EXPECT_TRUE(std::isnan(InterpolTable(kNaN, 0.0, 1.0, t)));
  EXPECT_TRUE(std::isnan(InterpolTable(0.5, kNaN, 1.0, t)));
  EXPECT_TRUE(std::isnan(InterpolTable(0.5, 0.0, kNaN, t)));
  // Infinite ends or arguments must not index outside the table.
  const std::tuple<double, double, double> far[] = {
      {0.5, -kInf, 1.0}, {0.5, 0.0, kInf},       {kInf, 0.0, 1.0},
      {-kInf, 1.0, 0.0}, {1e308, -1e308, 1e308},
  };
  for (const auto& [x, first, last] : far)
    EXPECT_NO_THROW(InterpolTable(x, first, last, t));
}

TEST(InterpolXYTable, PivotOrdersExtrapolationAndMalformedTables) {
  const TDouble2DArray up = {{1.0, 2.0, 4.0}, {10.0, 20.0, 0.0}};
  const TDouble2DArray down = {{4.0, 2.0, 1.0}, {0.0, 20.0, 10.0}};
  // x, the result without and with extrapolation.
  const std::tuple<double, double, double> cases[] = {
      {1.0, 10, 10}, {1.5, 15, 15}, {2.0, 20, 20}, {3.0, 10, 10},
      {4.0, 0, 0},   {5.0, 0, -10}, {0.5, 0, 5},
  };
  for (const TDouble2DArray* t : {&up, &down}) {
    for (const auto& [x, inside, extrapolated] : cases) {
      EXPECT_EQ(InterpolXYTable(x, *t, false), inside) << x;
      EXPECT_EQ(InterpolXYTable(x, *t, true), extrapolated) << x;
    }
    EXPECT_TRUE(std::isnan(InterpolXYTable(kNaN, *t, true)));
  }
  const std::string rows = "InterpolXYTable: pivot array must contain at least 2 rows";
  const std::string columns = "InterpolXYTable: pivot array must contain 2 columns";
  EXPECT_EQ(MessageOf([] { InterpolXYTable(1.0, {{1.0}, {2.0}}, false); }), rows);
  EXPECT_EQ(MessageOf([] { InterpolXYTable(1.0, {}, false); }), rows);
  EXPECT_EQ(MessageOf([] { InterpolXYTable(1.0, {{1.0, 2.0, 3.0}, {1.0}}, false); }), rows);
  EXPECT_EQ(MessageOf([] { InterpolXYTable(1.0, {{1.0, 2.0}}, false); }), columns);
  EXPECT_EQ(MessageOf([] {
              InterpolXYTable(1.0, {{1.0, 2.0}, {3.0, 4.0}, {5.0, 6.0}}, false);
            }),
            columns);
  // A longer y row is accepted; the complete pairs count. NaN pivots stay in bounds.
  EXPECT_DOUBLE_EQ(InterpolXYTable(1.5, {{1.0, 2.0}, {0.0, 1.0, 99.0}}, false), 0.5);
  for (double x : {-1.0, 0.5, 1.5, 2.5, 9.0})
    for (bool extrapolate : {false, true}) {
      EXPECT_NO_THROW(InterpolXYTable(x, {{0.0, kNaN, 2.0}, {0.0, 1.0, 2.0}}, extrapolate));
      EXPECT_NO_THROW(InterpolXYTable(x, {{kNaN, 1.0, kNaN}, {0.0, 1.0, 2.0}}, extrapolate));
    }
}

TEST(InterpolZofXYRect, ReproducesABilinearSurface) {
  // f(x, y) = 1 + 2x + 4y + 4xy is bilinear, so the interpolation is exact everywhere.
  auto f = [](double x, double y) { return 1 + 2 * x + 4 * y + 4 * x * y; };
  for (double x : {0.0, 0.25, 0.5, 1.0, 1.5})
    for (double y : {0.0, 0.75, 1.0, -0.5})
      EXPECT_DOUBLE_EQ(InterpolZofXYRect(x, y, f(0, 0), f(1, 0), f(0, 1), f(1, 1)), f(x, y));
}

}  // namespace
}  // namespace quv
