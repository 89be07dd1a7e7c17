#include <numeric>

#include "math1/test_helpers.h"

namespace quv {
namespace {

using namespace test;

TEST(GreatestCommonDivisor, IntegersAgainstStdGcdAndExtremes) {
  std::mt19937 gen(11);
  std::uniform_int_distribution<std::int32_t> any(-1000000, 1000000);
  for (int i = 0; i < 1000; ++i) {
    const std::int32_t a = any(gen) * (i % 7), b = any(gen) * (i % 5);
    EXPECT_EQ(GreatestCommonDivisor(a, b), std::gcd(std::int64_t{a}, std::int64_t{b}));
  }
  // 2^31 from -2^31 with itself wraps.
  const std::int32_t min = uc_MinInt, max = uc_MaxInt;
  const std::tuple<std::int32_t, std::int32_t, std::int32_t> pairs[] = {
      {0, 0, 0}, {-12, 0, 12}, {min, 6, 2}, {min, max, 1}, {min, 1 << 30, 1 << 30}, {min, min, min},
  };
  for (const auto& [a, b, gcd] : pairs)
    EXPECT_EQ(GreatestCommonDivisor(a, b), gcd) << a << " " << b;
  EXPECT_EQ(GreatestCommonDivisor(TIntArray{12, -18, 30}), 6);
  EXPECT_EQ(GreatestCommonDivisor(TIntArray{0, 0, 5}), 5);
  EXPECT_EQ(GreatestCommonDivisor(TIntArray{-7}), 7);
  EXPECT_EQ(GreatestCommonDivisor(TIntArray{}), 0);
}

TEST(GreatestCommonDivisor, RealsWithToleranceAndNonFiniteArguments) {
  // a, b, Digits, gcd, tolerance. 0.003 is below 10^-2; Digits < 0 means a tolerance of 1.
  const std::tuple<double, double, std::int32_t, double, double> cases[] = {
      {0.3, 0.1, 6, 0.1, 1e-15},     {0.1, -0.3, 6, 0.1, 1e-15}, {1.5, 2.25, 6, 0.75, 0},
      {21.0, 6.0, 12, 3.0, 0},       {1.0, 0.003, 2, 1.0, 0},    {1.0, 0.5, -3, 1.0, 0},
      {1.0, 0.003, 4, 0.001, 1e-12},
  };
  for (const auto& [a, b, digits, gcd, tolerance] : cases)
    EXPECT_NEAR(GreatestCommonDivisor(a, b, digits), gcd, tolerance) << a << " " << b;
  // Digits beyond 12 count as 12: 1e-13 is then below the tolerance.
  EXPECT_EQ(GreatestCommonDivisor(1.0, 1e-13, 40), GreatestCommonDivisor(1.0, 1e-13, 12));
  EXPECT_TRUE(std::isnan(GreatestCommonDivisor(kNaN, 1.0, 6)));
  EXPECT_TRUE(std::isnan(GreatestCommonDivisor(1.0, kInf, 6)));
  EXPECT_TRUE(std::isfinite(GreatestCommonDivisor(1.7e308, 3.1e-300, 12)));
  EXPECT_TRUE(std::isfinite(GreatestCommonDivisor(1.7e308, 1.3e307, 12)));
  EXPECT_NEAR(GreatestCommonDivisor(TDoubleArray{0.5, 0.75, -1.25}, 6), 0.25, 1e-15);
  EXPECT_EQ(GreatestCommonDivisor(TDoubleArray{}, 6), 0.0);
  EXPECT_TRUE(std::isnan(GreatestCommonDivisor(TDoubleArray{1.0, kNaN}, 6)));
}

TEST(CancelFraction, DividesByTheGcdKeepingSignsAndHandlesExtremes) {
  auto cancel = [](std::int32_t num, std::int32_t den) {
    CancelFraction(num, den);
    return std::pair{num, den};
  };
  for (std::int32_t n = -40; n <= 40; ++n)
    for (std::int32_t d = -40; d <= 40; ++d) {
      const std::int32_t g = (n == 0 || d == 0) ? 1 : std::gcd(n, d);  // zero: unchanged
      EXPECT_EQ(cancel(n, d), std::pair(n / g, d / g)) << n << "/" << d;
    }
  const std::int32_t min = uc_MinInt, max = uc_MaxInt;
  EXPECT_EQ(cancel(min, 4), std::pair(min / 4, 1));
  EXPECT_EQ(cancel(min, min), std::pair(-1, -1));
  EXPECT_EQ(cancel(max, max - 1), std::pair(max, max - 1));  // coprime: no loop to 2^31
}

TEST(Primes, TableAndIsPrimeMatchAnIndependentSieve) {
  // pi(46337) = 4792: every prime up to 46337, counted by a sieve here.
  std::vector<bool> composite(46338, false);
  std::vector<std::int32_t> primes;
  for (std::int32_t i = 2; i <= 46337; ++i) {
    if (composite[static_cast<std::size_t>(i)]) continue;
    primes.push_back(i);
    for (std::int32_t j = 2 * i; j <= 46337; j += i)
      composite[static_cast<std::size_t>(j)] = true;
  }
  ASSERT_EQ(primes.size(), 4792u);
  for (std::int32_t i = 1; i <= kNrOfTablePrimes; ++i)
    ASSERT_EQ(ListOfPrimes(i), primes[static_cast<std::size_t>(i - 1)]) << i;
  for (std::int32_t n = 2; n <= 46337; ++n)
    ASSERT_EQ(IsPrime(n), !composite[static_cast<std::size_t>(n)]) << n;
  for (std::int32_t i : {0, 4793, uc_MinInt})
    EXPECT_EQ(ListOfPrimes(i), 0) << i;
  // 0 and 1 count as prime; the sign is ignored; 2^31 - 1 is a Mersenne prime.
  for (std::int32_t n : {0, 1, -7, uc_MaxInt})
    EXPECT_TRUE(IsPrime(n)) << n;
  for (std::int32_t n : {-9, uc_MinInt, 46337 * 46337})
    EXPECT_FALSE(IsPrime(n)) << n;
}

TEST(Primes, FindPrimeFactorsMultiplicityAndLimits) {
  // 46337 is the largest table prime; 2147395600 is 46340^2.
  const std::pair<std::int32_t, TIntArray> cases[] = {
      {360, {2, 2, 2, 3, 3, 5}},
      {1, {}},
      {uc_MinInt, {}},
      {2, {2}},
      {uc_MaxInt, {uc_MaxInt}},
      {46337 * 46337, {46337, 46337}},
      {46327 * 46337, {46327, 46337}},
      {2147395600, {2, 2, 2, 2, 5, 5, 7, 7, 331, 331}},
  };
  TIntArray f = {99, 99, 99, 99, 99, 99, 99, 99, 99};
  for (const auto& [n, factors] : cases) {
    FindPrimeFactors(n, f);
    EXPECT_EQ(f, factors) << n;
  }
  for (std::int32_t n = 2; n <= 3000; ++n) {
    FindPrimeFactors(n, f);
    std::int64_t product = 1;
    for (std::size_t i = 0; i < f.size(); ++i) {
      EXPECT_TRUE(IsPrime(f[i]) && (i == 0 || f[i - 1] <= f[i])) << n;
      product *= f[i];
    }
    EXPECT_EQ(product, n);
  }
}

TEST(Roman, GreedyNumeralsAndRange) {
  EXPECT_EQ(Roman(1994), "MCMXCIV");
  EXPECT_EQ(Roman(4), "IV");
  EXPECT_EQ(Roman(3888), "MMMDCCCLXXXVIII");
  EXPECT_EQ(Roman(29999), std::string(29, 'M') + "CMXCIX");
  for (std::int32_t n : {30000, 0, uc_MinInt, uc_MaxInt})
    EXPECT_EQ(Roman(n), "") << n;
}

}  // namespace
}  // namespace quv
