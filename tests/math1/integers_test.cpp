#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numeric>
#include <random>
#include <vector>

#include "quv/math1/math1.h"

namespace quv {
namespace {

TEST(GreatestCommonDivisor, IntegersAgainstStdGcdAndExtremes) {
  std::mt19937 gen(11);
  std::uniform_int_distribution<std::int32_t> any(-1000000, 1000000);
  for (int i = 0; i < 1000; ++i) {
    const std::int32_t a = any(gen) * (i % 7);
    const std::int32_t b = any(gen) * (i % 5);
    EXPECT_EQ(GreatestCommonDivisor(a, b), std::gcd(std::int64_t{a}, std::int64_t{b}));
  }
  EXPECT_EQ(GreatestCommonDivisor(0, 0), 0);
  EXPECT_EQ(GreatestCommonDivisor(-12, 0), 12);
  EXPECT_EQ(GreatestCommonDivisor(uc_MinInt, 6), 2);
  EXPECT_EQ(GreatestCommonDivisor(uc_MinInt, uc_MaxInt), 1);
  EXPECT_EQ(GreatestCommonDivisor(uc_MinInt, 1 << 30), 1 << 30);
  EXPECT_EQ(GreatestCommonDivisor(uc_MinInt, uc_MinInt), uc_MinInt);  // 2^31 wraps
  EXPECT_EQ(GreatestCommonDivisor(TIntArray{12, -18, 30}), 6);
  EXPECT_EQ(GreatestCommonDivisor(TIntArray{0, 0, 5}), 5);
  EXPECT_EQ(GreatestCommonDivisor(TIntArray{-7}), 7);
  EXPECT_EQ(GreatestCommonDivisor(TIntArray{}), 0);
}

TEST(GreatestCommonDivisor, RealsWithToleranceAndNonFiniteArguments) {
  EXPECT_NEAR(GreatestCommonDivisor(0.3, 0.1, 6), 0.1, 1e-15);
  EXPECT_NEAR(GreatestCommonDivisor(0.1, -0.3, 6), 0.1, 1e-15);
  EXPECT_EQ(GreatestCommonDivisor(1.5, 2.25, 6), 0.75);
  EXPECT_EQ(GreatestCommonDivisor(21.0, 6.0, 12), 3.0);
  EXPECT_EQ(GreatestCommonDivisor(1.0, 0.003, 2), 1.0);  // 0.003 is below 10^-2
  EXPECT_NEAR(GreatestCommonDivisor(1.0, 0.003, 4), 0.001, 1e-12);
  // Digits beyond 12 count as 12: 1e-13 is then below the tolerance.
  EXPECT_EQ(GreatestCommonDivisor(1.0, 1e-13, 40), GreatestCommonDivisor(1.0, 1e-13, 12));
  EXPECT_EQ(GreatestCommonDivisor(1.0, 0.5, -3), 1.0);  // tolerance 1 when Digits < 0
  EXPECT_TRUE(std::isnan(GreatestCommonDivisor(std::nan(""), 1.0, 6)));
  EXPECT_TRUE(std::isnan(GreatestCommonDivisor(1.0, std::numeric_limits<double>::infinity(), 6)));
  EXPECT_TRUE(std::isfinite(GreatestCommonDivisor(1.7e308, 3.1e-300, 12)));
  EXPECT_TRUE(std::isfinite(GreatestCommonDivisor(1.7e308, 1.3e307, 12)));
  EXPECT_NEAR(GreatestCommonDivisor(TDoubleArray{0.5, 0.75, -1.25}, 6), 0.25, 1e-15);
  EXPECT_EQ(GreatestCommonDivisor(TDoubleArray{}, 6), 0.0);
  EXPECT_TRUE(std::isnan(GreatestCommonDivisor(TDoubleArray{1.0, std::nan("")}, 6)));
}

// The literal rule: divide by every common divisor 2..min(|Num|, |Den|), pass after pass.
void CancelByTrialDivision(std::int32_t& num, std::int32_t& den) {
  bool changed = true;
  while (changed) {
    changed = false;
    for (std::int32_t d = 2; d <= std::min(std::abs(num), std::abs(den)); ++d)
      if (num % d == 0 && den % d == 0) {
        num /= d;
        den /= d;
        changed = true;
      }
  }
}

TEST(CancelFraction, MatchesRepeatedTrialDivisionAndHandlesExtremes) {
  for (std::int32_t n = -40; n <= 40; ++n)
    for (std::int32_t d = -40; d <= 40; ++d) {
      std::int32_t n1 = n, d1 = d, n2 = n, d2 = d;
      CancelFraction(n1, d1);
      CancelByTrialDivision(n2, d2);
      EXPECT_EQ(n1, n2) << n << "/" << d;
      EXPECT_EQ(d1, d2) << n << "/" << d;
    }
  std::int32_t n = uc_MinInt, d = 4;
  CancelFraction(n, d);
  EXPECT_EQ(n, uc_MinInt / 4);
  EXPECT_EQ(d, 1);
  n = d = uc_MinInt;
  CancelFraction(n, d);  // signs are kept, as the trial division keeps them
  EXPECT_EQ(n, -1);
  EXPECT_EQ(d, -1);
  n = uc_MaxInt;
  d = uc_MaxInt - 1;
  CancelFraction(n, d);  // coprime: must return at once, not loop to 2^31
  EXPECT_EQ(n, uc_MaxInt);
  EXPECT_EQ(d, uc_MaxInt - 1);
}

TEST(Primes, TableMatchesAnIndependentSieveAndTheCountingFunction) {
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
  EXPECT_EQ(ListOfPrimes(1), 2);
  EXPECT_EQ(ListOfPrimes(4790), 46309);
  EXPECT_EQ(ListOfPrimes(4791), 46327);
  EXPECT_EQ(ListOfPrimes(4792), 46337);
  EXPECT_EQ(ListOfPrimes(4793), 0);
  EXPECT_EQ(ListOfPrimes(0), 0);
  EXPECT_EQ(ListOfPrimes(uc_MinInt), 0);
  for (std::int32_t n = 2; n <= 46337; ++n)
    ASSERT_EQ(IsPrime(n), !composite[static_cast<std::size_t>(n)]) << n;
}

TEST(Primes, IsPrimeConventionsAndExtremes) {
  EXPECT_TRUE(IsPrime(0));
  EXPECT_TRUE(IsPrime(1));
  EXPECT_TRUE(IsPrime(2));
  EXPECT_FALSE(IsPrime(4));
  EXPECT_TRUE(IsPrime(-7));
  EXPECT_FALSE(IsPrime(-9));
  EXPECT_TRUE(IsPrime(uc_MaxInt));  // 2^31 - 1 is a Mersenne prime
  EXPECT_FALSE(IsPrime(uc_MinInt));
  EXPECT_FALSE(IsPrime(46337 * 46337));
}

TEST(Primes, FindPrimeFactorsMultiplicityAndLimits) {
  TIntArray f = {99, 99, 99, 99, 99, 99, 99, 99, 99};
  FindPrimeFactors(360, f);
  EXPECT_EQ(f, (TIntArray{2, 2, 2, 3, 3, 5}));
  FindPrimeFactors(1, f);
  EXPECT_TRUE(f.empty());
  FindPrimeFactors(uc_MinInt, f);
  EXPECT_TRUE(f.empty());
  FindPrimeFactors(2, f);
  EXPECT_EQ(f, TIntArray{2});
  FindPrimeFactors(uc_MaxInt, f);
  EXPECT_EQ(f, TIntArray{uc_MaxInt});
  FindPrimeFactors(46337 * 46337, f);  // the largest table prime, squared
  EXPECT_EQ(f, (TIntArray{46337, 46337}));
  FindPrimeFactors(46327 * 46337, f);
  EXPECT_EQ(f, (TIntArray{46327, 46337}));
  FindPrimeFactors(2147395600, f);  // 46340^2
  EXPECT_EQ(f, (TIntArray{2, 2, 2, 2, 5, 5, 7, 7, 331, 331}));
  for (std::int32_t n = 2; n <= 3000; ++n) {
    FindPrimeFactors(n, f);
    std::int64_t product = 1;
    for (std::size_t i = 0; i < f.size(); ++i) {
      EXPECT_TRUE(IsPrime(f[i])) << n;
      if (i > 0) {
        EXPECT_LE(f[i - 1], f[i]) << n;
      }
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
  EXPECT_EQ(Roman(30000), "");
  EXPECT_EQ(Roman(0), "");
  EXPECT_EQ(Roman(uc_MinInt), "");
  EXPECT_EQ(Roman(uc_MaxInt), "");
}

}  // namespace
}  // namespace quv
