#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

#include "math1/raised_message.h"
#include "quv/math1/math1.h"

namespace quv {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();

using test::MessageOf;

TEST(InterpolTable, AscendingInsideAtEndsAndExtrapolated) {
  const TDoubleArray t = {0.0, 10.0, 40.0, 90.0};  // at x = 0, 1, 2, 3
  EXPECT_EQ(InterpolTable(0.0, 0.0, 3.0, t), 0.0);
  EXPECT_EQ(InterpolTable(3.0, 0.0, 3.0, t), 90.0);
  EXPECT_DOUBLE_EQ(InterpolTable(1.5, 0.0, 3.0, t), 25.0);
  EXPECT_DOUBLE_EQ(InterpolTable(-1.0, 0.0, 3.0, t), -10.0);  // first two values continued
  EXPECT_DOUBLE_EQ(InterpolTable(4.0, 0.0, 3.0, t), 140.0);   // last two values continued
  // Uneven end points: Table[i] sits at 2 + 3i.
  const TDoubleArray u = {1.0, 3.0, 2.0};
  EXPECT_DOUBLE_EQ(InterpolTable(3.5, 2.0, 8.0, u), 2.0);
  EXPECT_DOUBLE_EQ(InterpolTable(6.5, 2.0, 8.0, u), 2.5);
  EXPECT_DOUBLE_EQ(InterpolTable(0.25, 0.0, 1.0, TIntArray{0, 10, 20}), 5.0);
}

TEST(InterpolTable, DescendingAxisCountsFromTheLastXEnd) {
  const TDoubleArray u = {1.0, 3.0, 2.0};  // Table[0] at 8, Table[1] at 5, Table[2] at 2
  EXPECT_EQ(InterpolTable(8.0, 8.0, 2.0, u), 1.0);
  EXPECT_EQ(InterpolTable(2.0, 8.0, 2.0, u), 2.0);
  EXPECT_DOUBLE_EQ(InterpolTable(6.5, 8.0, 2.0, u), 2.0);
  EXPECT_DOUBLE_EQ(InterpolTable(3.5, 8.0, 2.0, u), 2.5);
  EXPECT_DOUBLE_EQ(InterpolTable(9.5, 8.0, 2.0, u), 0.0);  // beyond FirstX: first two values
  EXPECT_DOUBLE_EQ(InterpolTable(0.5, 8.0, 2.0, u), 1.5);  // beyond LastX: last two values
}

TEST(InterpolTable, ReproducesAStraightLineEverywhereInBothDirections) {
  // Samples of f(x) = 3x - 2 on [-1, 4]: interpolation and extrapolation are both exact.
  TDoubleArray up(11);
  for (int i = 0; i <= 10; ++i)
    up[static_cast<std::size_t>(i)] = 3.0 * (-1.0 + 0.5 * i) - 2.0;
  const TDoubleArray down(up.rbegin(), up.rend());
  for (double x = -3.0; x <= 6.0; x += 0.173) {
    EXPECT_NEAR(InterpolTable(x, -1.0, 4.0, up), 3.0 * x - 2.0, 1e-12) << x;
    EXPECT_NEAR(InterpolTable(x, 4.0, -1.0, down), 3.0 * x - 2.0, 1e-12) << x;
  }
}

TEST(InterpolTable, ErrorsAndNonFiniteArguments) {
  EXPECT_EQ(MessageOf([] { InterpolTable(0.5, 0.0, 1.0, TDoubleArray{1.0}); }),
            "InterpolTable: pivot array must contain at least 2 values");
  EXPECT_EQ(MessageOf([] { InterpolTable(0.5, 0.0, 1.0, TIntArray{}); }),
            "InterpolTable: pivot array must contain at least 2 values");
  EXPECT_EQ(MessageOf([] {
              InterpolTable(0.5, 2.0, 2.0, TDoubleArray{1.0, 2.0});
            }),
            "InterpolTable: specified range of pivot array is zero");
  const TDoubleArray t = {1.0, 2.0, 4.0};
  EXPECT_TRUE(std::isnan(InterpolTable(kNaN, 0.0, 1.0, t)));
  EXPECT_TRUE(std::isnan(InterpolTable(0.5, kNaN, 1.0, t)));
  EXPECT_TRUE(std::isnan(InterpolTable(0.5, 0.0, kNaN, t)));
  // Infinite ends or arguments must not index outside the table.
  EXPECT_NO_THROW(InterpolTable(0.5, -kInf, 1.0, t));
  EXPECT_NO_THROW(InterpolTable(0.5, 0.0, kInf, t));
  EXPECT_NO_THROW(InterpolTable(kInf, 0.0, 1.0, t));
  EXPECT_NO_THROW(InterpolTable(-kInf, 1.0, 0.0, t));
  EXPECT_NO_THROW(InterpolTable(1e308, -1e308, 1e308, t));
}

TEST(InterpolXYTable, BothPivotOrdersWithAndWithoutExtrapolation) {
  const TDouble2DArray up = {{1.0, 2.0, 4.0}, {10.0, 20.0, 0.0}};
  const TDouble2DArray down = {{4.0, 2.0, 1.0}, {0.0, 20.0, 10.0}};
  for (const TDouble2DArray* t : {&up, &down}) {
    EXPECT_EQ(InterpolXYTable(1.0, *t, false), 10.0);
    EXPECT_DOUBLE_EQ(InterpolXYTable(1.5, *t, false), 15.0);
    EXPECT_DOUBLE_EQ(InterpolXYTable(2.0, *t, false), 20.0);
    EXPECT_DOUBLE_EQ(InterpolXYTable(3.0, *t, false), 10.0);
    EXPECT_EQ(InterpolXYTable(4.0, *t, false), 0.0);
    EXPECT_EQ(InterpolXYTable(5.0, *t, false), 0.0);
    EXPECT_DOUBLE_EQ(InterpolXYTable(5.0, *t, true), -10.0);
    EXPECT_EQ(InterpolXYTable(0.5, *t, false), 0.0);
    EXPECT_DOUBLE_EQ(InterpolXYTable(0.5, *t, true), 5.0);
    EXPECT_TRUE(std::isnan(InterpolXYTable(kNaN, *t, true)));
  }
}

TEST(InterpolXYTable, MalformedTablesRaiseAndNaNPivotsStayInBounds) {
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
  // A longer y row is accepted; the complete pairs count.
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
