#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "quv/math1/math1.h"

namespace quv {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();

TEST(IntPosIntNeg, AgreeWithCeilAndFloorAndSaturate) {
  for (double x = -50.0; x <= 50.0; x += 0.125) {
    EXPECT_EQ(IntPos(x), static_cast<std::int32_t>(std::ceil(x))) << x;
    EXPECT_EQ(IntNeg(x), static_cast<std::int32_t>(std::floor(x))) << x;
  }
  EXPECT_EQ(IntPos(1e-300), 1);
  EXPECT_EQ(IntNeg(-1e-300), -1);
  EXPECT_EQ(IntPos(1e300), uc_MaxInt);
  EXPECT_EQ(IntNeg(-1e300), uc_MinInt);
  EXPECT_EQ(IntPos(-kInf), uc_MinInt);
  EXPECT_EQ(IntNeg(kInf), uc_MaxInt);
  EXPECT_EQ(IntPos(2147483646.5), uc_MaxInt);
  EXPECT_EQ(IntPos(kNaN), 0);
  EXPECT_EQ(IntNeg(kNaN), 0);
}

TEST(RoundLimit, TiesToEvenClampedIntoOrderedBounds) {
  EXPECT_EQ(RoundLimit(2.5, 0, 10), 2);
  EXPECT_EQ(RoundLimit(3.5, 0, 10), 4);
  EXPECT_EQ(RoundLimit(-2.6, -10, 10), -3);
  EXPECT_EQ(RoundLimit(11.0, 0, 10), 10);
  EXPECT_EQ(RoundLimit(-5.0, 0, 10), 0);
  EXPECT_EQ(RoundLimit(5.0, 10, 0), 5);
  EXPECT_EQ(RoundLimit(kNaN, 3, 7), 3);
  EXPECT_EQ(RoundLimit(1e300, uc_MinInt64, uc_MaxInt64), uc_MaxInt64);
  EXPECT_EQ(RoundLimit(-kInf, uc_MinInt64, uc_MaxInt64), uc_MinInt64);
  EXPECT_EQ(RoundLimit(-0x1p63, uc_MinInt64, 0), uc_MinInt64);
}

TEST(Round125, NearestGridValuesPowersOfTenAndNegatives) {
  EXPECT_EQ(Round125(0.00234), 0.002);
  EXPECT_EQ(Round125(7.9), 5.0);
  EXPECT_EQ(Round125(8.0), 10.0);
  EXPECT_EQ(Round125(1.49), 1.0);
  EXPECT_EQ(Round125(1.5), 2.0);
  EXPECT_EQ(Round125(2.99), 2.0);
  EXPECT_EQ(Round125(3.0), 5.0);
  EXPECT_EQ(Round125(0.3), 0.5);  // the double below 0.3 still counts as 3 tenths
  EXPECT_EQ(Round125(1234.0), 1000.0);
  for (double p : {1e-12, 1e-5, 1e-3, 0.01, 0.1, 1.0, 10.0, 100.0, 1e3, 1e6, 1e15}) {
    EXPECT_EQ(Round125(p), p);
    EXPECT_EQ(RoundPos125(p), p);
    EXPECT_EQ(RoundNeg125(p), p);
    EXPECT_EQ(Round125(-p), -p);
  }
  EXPECT_EQ(Round125(-0.00234), -0.002);
  EXPECT_EQ(Round125(-7.9), -5.0);
  EXPECT_EQ(Round125(-8.0), -10.0);
  EXPECT_EQ(Round125(0.0), 0.0);
  EXPECT_TRUE(std::isnan(Round125(kNaN)));
  EXPECT_EQ(RoundPos125(kInf), kInf);
  EXPECT_GT(Round125(5e-324), 0.0);
}

TEST(Round125, DirectedRoundingFollowsTheNumberLine) {
  EXPECT_EQ(RoundPos125(1.2), 2.0);
  EXPECT_EQ(RoundPos125(2.1), 5.0);
  EXPECT_EQ(RoundPos125(5.5), 10.0);
  EXPECT_EQ(RoundPos125(0.012), 0.02);
  EXPECT_EQ(RoundPos125(-1.2), -1.0);
  EXPECT_EQ(RoundPos125(-2.5), -2.0);
  EXPECT_EQ(RoundPos125(-7.0), -5.0);
  EXPECT_EQ(RoundNeg125(1.99), 1.0);
  EXPECT_EQ(RoundNeg125(4.9), 2.0);
  EXPECT_EQ(RoundNeg125(9.9), 5.0);
  EXPECT_EQ(RoundNeg125(-1.2), -2.0);
  EXPECT_EQ(RoundNeg125(-2.1), -5.0);
  EXPECT_EQ(RoundNeg125(-6.0), -10.0);
  EXPECT_EQ(RoundNeg125(-0.03), -0.05);
  // Every result is a grid value, and the directed ones bracket the argument.
  std::mt19937_64 gen(5);
  std::uniform_real_distribution<double> exponent(-20.0, 20.0);
  for (int i = 0; i < 2000; ++i) {
    const double x = (i % 2 ? -1.0 : 1.0) * std::pow(10.0, exponent(gen));
    const double lo = RoundNeg125(x);
    const double hi = RoundPos125(x);
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
  struct Case {
    std::int32_t d, m, s;
    bool up;
    std::int32_t rd, rm, rs;
  };
  const Case cases[] = {
      {2, 30, 0, true, 3, 0, 0},  {2, 30, 0, false, 2, 0, 0},   {7, 0, 0, true, 10, 0, 0},
      {7, 0, 0, false, 5, 0, 0},  {400, 0, 0, true, 360, 0, 0}, {400, 0, 0, false, 360, 0, 0},
      {1, 0, 0, true, 1, 0, 0},   {0, 7, 0, true, 0, 10, 0},    {0, 7, 0, false, 0, 5, 0},
      {0, 45, 0, true, 1, 0, 0},  {0, 59, 59, false, 0, 30, 0}, {0, 75, 0, true, 1, 0, 0},
      {0, 0, 7, true, 0, 0, 10},  {0, 0, 45, true, 0, 1, 0},    {0, 0, 75, false, 0, 0, 30},
      {0, 0, 0, true, 0, 0, 0},   {-1, 5, 5, true, 0, 0, 0},    {3, -1, 0, false, 0, 0, 0},
      {0, 20, 1, true, 0, 30, 0}, {0, 20, 1, false, 0, 20, 0},
  };
  for (const Case& c : cases) {
    std::int32_t d = c.d, m = c.m, s = c.s;
    RoundDegrees(d, m, s, c.up);
    EXPECT_EQ(d, c.rd) << c.d << " " << c.m << " " << c.s << " " << c.up;
    EXPECT_EQ(m, c.rm) << c.d << " " << c.m << " " << c.s << " " << c.up;
    EXPECT_EQ(s, c.rs) << c.d << " " << c.m << " " << c.s << " " << c.up;
  }
}

TEST(HistoBinRef, LowerEdgeAndOffset) {
  double offset = -1.0;
  EXPECT_DOUBLE_EQ(HistoBinRef(7.3, 1.0, 2.0, offset), 7.0);
  EXPECT_NEAR(offset, 0.3, 1e-15);
  EXPECT_EQ(HistoBinRef(-0.5, 0.0, 1.0, offset), -1.0);
  EXPECT_EQ(offset, 0.5);
  EXPECT_EQ(HistoBinRef(3.0, 1.0, 2.0, offset), 3.0);
  EXPECT_EQ(offset, 0.0);
  EXPECT_NO_THROW(HistoBinRef(1.0, 0.0, 0.0, offset));
}

TEST(CalcScalePars, NiceTicksAndDecimalPlaces) {
  Extended first = 0;
  Extended dist = 0;
  std::uint16_t places = 99;
  CalcScalePars(5, 0.0L, 1.0L, first, dist, places);
  EXPECT_NEAR(static_cast<double>(dist), 0.2, 1e-15);
  EXPECT_EQ(first, 0.0L);
  EXPECT_EQ(places, 1);
  CalcScalePars(4, 12.2L, -3.7L, first, dist, places);  // bounds in either order
  EXPECT_EQ(dist, 5.0L);
  EXPECT_EQ(first, 0.0L);
  EXPECT_EQ(places, 0);
  CalcScalePars(10, 0.013L, 0.0172L, first, dist, places);
  EXPECT_NEAR(static_cast<double>(dist), 5e-4, 1e-18);
  EXPECT_NEAR(static_cast<double>(first), 0.013, 1e-15);
  EXPECT_EQ(places, 4);
  CalcScalePars(0, 3.0L, 3.0L, first, dist, places);
  EXPECT_EQ(dist, 0.0L);
  EXPECT_EQ(first, 3.0L);
  CalcScalePars(5, 0.0L, std::numeric_limits<Extended>::infinity(), first, dist, places);
  EXPECT_TRUE(std::isnan(dist));
  EXPECT_EQ(places, 0);
}

TEST(BoundsAndSquash, InclusiveOrderedBoundsAndSaturation) {
  EXPECT_TRUE(WithinBounds(5.0, 10.0, 0.0));
  EXPECT_TRUE(WithinBounds(10.0, 0.0, 10.0));
  EXPECT_FALSE(WithinBounds(10.5, 0.0, 10.0));
  EXPECT_FALSE(WithinBounds(kNaN, 0.0, 10.0));
  EXPECT_TRUE(WithinBounds(2.0, 8.0, 10.0, 0.0));
  EXPECT_FALSE(WithinBounds(2.0, 11.0, 10.0, 0.0));
  EXPECT_EQ(ConfineValue(12.0, 10.0, 0.0), 10.0);
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
