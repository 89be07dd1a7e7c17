#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>
#include <string>

#include "math1/raised_message.h"
#include "quv/math1/math1.h"

namespace quv {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();

using test::MessageOf;

TEST(ElementaryGuards, InvalidArgumentsReturnZeroWithoutRaising) {
  EXPECT_NO_THROW(lg(-1.0));
  EXPECT_EQ(lg(-1.0), 0.0);
  EXPECT_EQ(lg(0.0), 0.0);
  EXPECT_EQ(ld(0.0), 0.0);
  EXPECT_EQ(ld(-kInf), 0.0);
  EXPECT_EQ(cot(0.0), 0.0);  // sin 0 is exactly 0
  EXPECT_EQ(tg(0.0), 0.0);   // a true zero, not the guard
  // No other guard: near pi/2 the tangent is large but finite.
  EXPECT_GT(std::abs(tg(std::numbers::pi / 2)), 1e15);
  EXPECT_TRUE(std::isnan(lg(kNaN)));
}

TEST(ElementaryGuards, LogarithmsAndTangentsAgreeWithTheLibrary) {
  EXPECT_DOUBLE_EQ(lg(1000.0), 3.0);
  EXPECT_DOUBLE_EQ(lg(1e-300), -300.0);
  EXPECT_DOUBLE_EQ(ld(1024.0), 10.0);
  EXPECT_DOUBLE_EQ(ld(0.125), -3.0);
  for (double x : {-2.5, -0.3, 0.7, 1.2, 3.0}) {
    EXPECT_NEAR(tg(x), std::tan(x), 1e-14 * (1 + std::abs(std::tan(x)))) << x;
    EXPECT_NEAR(cot(x), 1 / std::tan(x), 1e-14 * (1 + std::abs(1 / std::tan(x)))) << x;
  }
}

TEST(ElementaryHyperbolic, MatchStandardFunctionsAndSaturate) {
  for (double x : {-20.0, -1.5, -0.25, 0.0, 0.25, 1.5, 20.0}) {
    EXPECT_NEAR(quv::sinh(x), std::sinh(x), 1e-15 * std::cosh(x)) << x;
    EXPECT_DOUBLE_EQ(quv::cosh(x), std::cosh(x)) << x;
    EXPECT_NEAR(tgh(x), std::tanh(x), 1e-15) << x;
  }
  EXPECT_EQ(tgh(1e6), 1.0);
  EXPECT_EQ(tgh(-1e6), -1.0);
  EXPECT_EQ(quv::sinh(-1e6), -kInf);
  EXPECT_EQ(quv::cosh(1e6), kInf);
}

TEST(ElementaryRemainderAndSign, FollowTheSignOfTheArgument) {
  EXPECT_DOUBLE_EQ(modr(5.5, 2.0), 1.5);
  EXPECT_DOUBLE_EQ(modr(-5.5, 2.0), -1.5);
  EXPECT_DOUBLE_EQ(modr(5.5, -2.0), 1.5);
  EXPECT_NEAR(modr(7.25, 0.5), 0.25, 1e-15);
  EXPECT_TRUE(std::isnan(modr(1.0, 0.0)));
  EXPECT_TRUE(std::isnan(modr(kInf, 3.0)));
  EXPECT_EQ(Signum(0.0), 1);
  EXPECT_EQ(Signum(-0.0), 1);
  EXPECT_EQ(Signum(1e-300), 1);
  EXPECT_EQ(Signum(-1e-300), -1);
  EXPECT_EQ(Signum(kNaN), -1);
}

TEST(Factorial, ValuesAndLimits) {
  EXPECT_EQ(Factorial(0), 1.0L);
  EXPECT_EQ(Factorial(1), 1.0L);
  EXPECT_EQ(Factorial(20), 2432902008176640000.0L);
  // 1000! against the log-gamma function: log10(1000!) = 2567.6046...
  const Extended f = Factorial(1000);
  EXPECT_TRUE(std::isfinite(f));
  EXPECT_NEAR(std::log(f), std::lgamma(1001.0L), 1e-12L);
  EXPECT_EQ(MessageOf([] { Factorial(-1); }), "Factorial: negative argument");
  EXPECT_EQ(MessageOf([] { Factorial(1001); }), "Factorial: argument too big");
  EXPECT_EQ(MessageOf([] { Factorial(uc_MinInt); }), "Factorial: negative argument");
  EXPECT_EQ(MessageOf([] { Factorial(uc_MaxInt); }), "Factorial: argument too big");
}

TEST(ProductConsecInts, ProductsStatusCodesAndOverflow) {
  EXPECT_EQ(ProductConsecInts(5, 3), 60);
  EXPECT_EQ(ProductConsecInts(3, 5), 60);
  EXPECT_EQ(ProductConsecInts(7, 7), 7);
  EXPECT_EQ(ProductConsecInts(0, 5), 0);
  EXPECT_EQ(ProductConsecInts(-2, 5), kProductNegativeFactor);
  EXPECT_EQ(ProductConsecInts(uc_MinInt, uc_MaxInt), kProductNegativeFactor);
  EXPECT_EQ(ProductConsecInts(1, 20), 2432902008176640000LL);  // 20!
  EXPECT_EQ(ProductConsecInts(1, 21), kProductOverflow);       // 21! > 9.2e18
  EXPECT_EQ(ProductConsecInts(uc_MaxInt, uc_MaxInt), uc_MaxInt);
  EXPECT_EQ(ProductConsecInts(uc_MaxInt - 1, uc_MaxInt),
            std::int64_t{uc_MaxInt - 1} * std::int64_t{uc_MaxInt});
  EXPECT_EQ(ProductConsecInts(2, uc_MaxInt), kProductOverflow);
  EXPECT_EQ(ProductConsecInts(1, uc_MaxInt), kProductOverflow);
}

}  // namespace
}  // namespace quv
