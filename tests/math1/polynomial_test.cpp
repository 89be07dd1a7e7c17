#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "math1/raised_message.h"
#include "quv/math1/math1.h"

namespace quv {
namespace {

using test::MessageOf;

TEST(Polynomial, OrderSelectsHowManyCoefficientsAreUsed) {
  const TDoubleArray c = {1.0, -3.0, 0.5, 2.0};
  // 1 - 3x + 0.5x^2 + 2x^3 at x = 2: 1 - 6 + 2 + 16.
  EXPECT_DOUBLE_EQ(Polynomial(c, 3, 2.0), 13.0);
  EXPECT_DOUBLE_EQ(Polynomial(c, 1, 2.0), -5.0);
  EXPECT_DOUBLE_EQ(Polynomial(c, 0, 123.0), 1.0);
  const std::string invalid = "Polynomial: invalid order of polynomial";
  EXPECT_EQ(MessageOf([&] { Polynomial(c, 4, 2.0); }), invalid);
  EXPECT_EQ(MessageOf([&] { Polynomial(c, -1, 2.0); }), invalid);
  EXPECT_EQ(MessageOf([] { Polynomial(TDoubleArray{}, 0, 2.0); }), invalid);
}

TEST(Polynomial, CenteredShiftsTheArgumentAndReportsAsPolynomial) {
  const TDoubleArray c = {2.0, 0.0, 1.0};  // 2 + (x - Center)^2
  EXPECT_DOUBLE_EQ(CenteredPolynomial(c, 2, 5.0, 3.0), 6.0);
  EXPECT_DOUBLE_EQ(CenteredPolynomial(c, 2, 3.0, 3.0), 2.0);
  EXPECT_EQ(MessageOf([&] { CenteredPolynomial(c, 3, 1.0, 0.0); }),
            "Polynomial: invalid order of polynomial");
}

TEST(Polynomial, AccumulatesInExtendedPrecision) {
  // (x - 1)^2 written as 1 - 2x + x^2 at x = 1 + 2^-30 is 2^-60. Every partial sum is exact in
  // a 64-bit mantissa, while double arithmetic cancels it to 0.
  const double x = 1.0 + 0x1p-30;
  EXPECT_EQ(Polynomial(TDoubleArray{1.0, -2.0, 1.0}, 2, x), 0x1p-60);
}

}  // namespace
}  // namespace quv
