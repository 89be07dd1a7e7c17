#include "math1/test_helpers.h"

namespace quv {
namespace {

using namespace test;

TEST(Rounding, IntPosIntNegAndRoundLimitSaturate) {
  for (double x = -50.0; x <= 50.0; x += 0.125) {
    EXPECT_EQ(IntPos(x), static_cast<std::int32_t>(std::ceil(x))) << x;
    EXPECT_EQ(IntNeg(x), static_cast<std::int32_t>(std::floor(x))) << x;
  }
  // x, IntPos, IntNeg.
  const std::int32_t max = uc_MaxInt, min = uc_MinInt;
  const std::tuple<double, std::int32_t, std::int32_t> cases[] = {
      {1e-300, 1, 0},   {-1e-300, 0, -1},  {1e300, max, max}, {-1e300, min, min},
      {kInf, max, max}, {-kInf, min, min}, {kNaN, 0, 0},      {2147483646.5, max, max - 1},
  };
  for (const auto& [x, pos, neg] : cases) {
    EXPECT_EQ(IntPos(x), pos) << x;
    EXPECT_EQ(IntNeg(x), neg) << x;
  }
  // Ties go to even; the bounds may come in either order; NaN gives the lower bound.
  const std::int64_t low = uc_MinInt64, high = uc_MaxInt64;
  const std::tuple<double, std::int64_t, std::int64_t, std::int64_t> limits[] = {
      {2.5, 0, 10, 2},        {3.5, 0, 10, 4},          {-2.6, -10, 10, -3},
      {11.0, 0, 10, 10},      {-5.0, 0, 10, 0},         {5.0, 10, 0, 5},
      {kNaN, 3, 7, 3},        {1e300, low, high, high}, {-kInf, low, high, low},
      {-0x1p63, low, 0, low},
  };
  for (const auto& [x, b1, b2, result] : limits)
    EXPECT_EQ(RoundLimit(x, b1, b2), result) << x;
}

TEST(Round125, NearestAndDirectedGridValues) {
  // x, Round125, RoundPos125, RoundNeg125. Thresholds of the nearest value: 1.5, 3 and 8; the
  // double just below 0.3 still counts as 3 tenths.
  const std::array<double, 4> cases[] = {
      {0.00234, 0.002, 0.005, 0.002}, {1.49, 1.0, 2.0, 1.0},      {1.5, 2.0, 2.0, 1.0},
      {2.99, 2.0, 5.0, 2.0},          {3.0, 5.0, 5.0, 2.0},       {7.9, 5.0, 10.0, 5.0},
      {8.0, 10.0, 10.0, 5.0},         {0.3, 0.5, 0.5, 0.2},       {1234, 1000, 2000, 1000},
      {5.5, 5.0, 10.0, 5.0},          {9.9, 10.0, 10.0, 5.0},     {0.012, 0.01, 0.02, 0.01},
      {-0.03, -0.05, -0.02, -0.05},   {-1.2, -1.0, -1.0, -2.0},   {-2.5, -2.0, -2.0, -5.0},
      {-7.9, -5.0, -5.0, -10.0},      {-8.0, -10.0, -5.0, -10.0}, {0.0, 0.0, 0.0, 0.0},
  };
  for (const auto& [x, nearest, up, down] : cases) {
    EXPECT_EQ(Round125(x), nearest) << x;
    EXPECT_EQ(RoundPos125(x), up) << x;
    EXPECT_EQ(RoundNeg125(x), down) << x;
  }
  EXPECT_EQ(Round125(-0.00234), -0.002);
  for (double p : {1e-12, 1e-5, 1e-3, 0.01, 0.1, 1.0, 10.0, 100.0, 1e3, 1e6, 1e15}) {
    EXPECT_TRUE(Round125(p) == p && RoundPos125(p) == p && RoundNeg125(p) == p) << p;
    EXPECT_EQ(Round125(-p), -p);
  }
  EXPECT_TRUE(std::isnan(Round125(kNaN)));
  EXPECT_EQ(RoundPos125(kInf), kInf);
  EXPECT_GT(Round125(5e-324), 0.0);
  // Every result is a grid value, and the directed ones bracket the argument.
  std::mt19937_64 gen(5);
  std::uniform_real_distribution<double> exponent(-20.0, 20.0);
  for (int i = 0; i < 2000; ++i) {
    const double x = (i % 2 ? -1.0 : 1.0) * std::pow(10.0, exponent(gen));
    const double lo = RoundNeg125(x), hi = RoundPos125(x);
    EXPECT_LE(lo, x * (1 + 1e-13 * (x < 0 ? -1 : 1)));
    EXPECT_GE(hi, x * (1 - 1e-13 * (x < 0 ? -1 : 1)));
    for (double r : {lo, hi, Round125(x)}) {
      const double m = std::abs(r) / std::pow(10.0, std::floor(std::log10(std::abs(r)) + 1e-9));
      EXPECT_TRUE(std::abs(m - 1) < 1e-9 || std::abs(m - 2) < 1e-9 || std::abs(m - 5) < 1e-9)
          << x << " -> " << r;
    }
  }
}

TEST(RoundDegrees, NiceStepsForDegreesMinutesAndSeconds) {
  // Deg, Min, Sec, RoundUp, and the expected Deg, Min, Sec.
  const std::array<std::int32_t, 7> cases[] = {
      {2, 30, 0, 1, 3, 0, 0},  {2, 30, 0, 0, 2, 0, 0},    {7, 0, 0, 1, 10, 0, 0},
      {7, 0, 0, 0, 5, 0, 0},   {400, 0, 0, 1, 360, 0, 0}, {400, 0, 0, 0, 360, 0, 0},
      {1, 0, 0, 1, 1, 0, 0},   {0, 7, 0, 1, 0, 10, 0},    {0, 7, 0, 0, 0, 5, 0},
      {0, 45, 0, 1, 1, 0, 0},  {0, 59, 59, 0, 0, 30, 0},  {0, 75, 0, 1, 1, 0, 0},
      {0, 0, 7, 1, 0, 0, 10},  {0, 0, 45, 1, 0, 1, 0},    {0, 0, 75, 0, 0, 0, 30},
      {0, 0, 0, 1, 0, 0, 0},   {-1, 5, 5, 1, 0, 0, 0},    {3, -1, 0, 0, 0, 0, 0},
      {0, 20, 1, 1, 0, 30, 0}, {0, 20, 1, 0, 0, 20, 0},
  };
  for (const auto& [d0, m0, s0, up, d1, m1, s1] : cases) {
    std::int32_t d = d0, m = m0, s = s0;
    RoundDegrees(d, m, s, up != 0);
    EXPECT_EQ((std::array{d, m, s}), (std::array{d1, m1, s1})) << d0 << " " << m0 << " " << s0;
  }
}

TEST(Rounding, HistogramBinsAndScaleTicks) {
  double offset = -1.0;
  EXPECT_DOUBLE_EQ(HistoBinRef(7.3, 1.0, 2.0, offset), 7.0);
  EXPECT_NEAR(offset, 0.3, 1e-15);
  EXPECT_EQ(HistoBinRef(-0.5, 0.0, 1.0, offset), -1.0);
  EXPECT_EQ(offset, 0.5);
  EXPECT_EQ(HistoBinRef(3.0, 1.0, 2.0, offset), 3.0);
  EXPECT_EQ(offset, 0.0);
  EXPECT_NO_THROW(HistoBinRef(1.0, 0.0, 0.0, offset));

  Extended first = 0, dist = 0;
  std::uint16_t places = 99;
  CalcScalePars(5, 0.0L, 1.0L, first, dist, places);
  EXPECT_NEAR(static_cast<double>(dist), 0.2, 1e-15);
  EXPECT_TRUE(first == 0.0L && places == 1);
  CalcScalePars(4, 12.2L, -3.7L, first, dist, places);  // bounds in either order
  EXPECT_TRUE(dist == 5.0L && first == 0.0L && places == 0);
  CalcScalePars(10, 0.013L, 0.0172L, first, dist, places);
  EXPECT_NEAR(static_cast<double>(dist), 5e-4, 1e-18);
  EXPECT_NEAR(static_cast<double>(first), 0.013, 1e-15);
  EXPECT_EQ(places, 4);
  CalcScalePars(0, 3.0L, 3.0L, first, dist, places);
  EXPECT_TRUE(dist == 0.0L && first == 3.0L);
  CalcScalePars(5, 0.0L, std::numeric_limits<Extended>::infinity(), first, dist, places);
  EXPECT_TRUE(std::isnan(dist) && std::isnan(first) && places == 0);
}

TEST(Bounds, InclusiveOrderedBoundsClampingAndSquash) {
  EXPECT_TRUE(WithinBounds(5.0, 10.0, 0.0) && WithinBounds(10.0, 0.0, 10.0));
  EXPECT_FALSE(WithinBounds(10.5, 0.0, 10.0) || WithinBounds(kNaN, 0.0, 10.0));
  EXPECT_TRUE(WithinBounds(2.0, 8.0, 10.0, 0.0));
  EXPECT_FALSE(WithinBounds(2.0, 11.0, 10.0, 0.0));
  EXPECT_EQ(ConfineValue(12.0, 10.0, 0.0), 10.0);
  EXPECT_TRUE(std::isnan(ConfineValue(kNaN, 0.0, 1.0)));
  EXPECT_EQ(ConfineValue(-3.0f, 0.0f, 1.0f), 0.0f);
  EXPECT_EQ(ConfineValue(uc_MinInt, 5, -5), -5);
  EXPECT_EQ(ConfineValue(3, 5, -5), 3);
  for (double x : {-3.0, -0.5, 0.0, 0.7, 4.0})
    EXPECT_NEAR(Squash(x, 0.5, 2.0, 3.0), 3.0 * std::tanh(2.0 * (x - 0.5) / 3.0), 1e-15) << x;
  EXPECT_EQ(Squash(1e6, 0.0, 1.0, 3.0), 3.0);
  EXPECT_EQ(Squash(-1e6, 0.0, 1.0, 3.0), -3.0);
  EXPECT_EQ(Squash(0.5, 0.5, 2.0, 3.0), 0.0);
  EXPECT_NO_THROW(Squash(1.0, 0.0, 1.0, 0.0));
}

}  // namespace
}  // namespace quv
