#include <bit>
#include <set>

#include "math1/test_helpers.h"

namespace quv {
namespace {

using namespace test;

TEST(BitHelpers, PowersDecodingEncodingCountAndReversal) {
  for (std::uint32_t n = 0; n < 70000; ++n)
    ASSERT_EQ(CheckPowerOfTwo(n), std::popcount(n) <= 1) << n;  // 0 counts as a power
  EXPECT_TRUE(CheckPowerOfTwo(0x80000000u));
  EXPECT_FALSE(CheckPowerOfTwo(0x80000001u));
  EXPECT_FALSE(CheckPowerOfTwo(uc_MaxCardinal));
  const std::tuple<std::int32_t, std::uint32_t, std::uint32_t> decode[] = {
      {-1, 0, 0}, {0, 1, 1}, {7, 0x80, 0x80}, {8, 0, 0x100}, {31, 0, 1u << 31}, {32, 0, 0},
  };
  for (const auto& [i, bit, lng] : decode) {
    EXPECT_EQ(DecodeBit(i), bit) << i;
    EXPECT_EQ(DecodeLong(i), lng) << i;
  }
  const std::pair<std::uint32_t, std::int32_t> encode[] = {
      {1, 0}, {12, 2}, {0xF00000, 20}, {1u << 31, 31}, {~0u, 0}, {0, 31},
  };
  for (const auto& [v, lowest] : encode)
    EXPECT_EQ(EncodeLong(v), lowest) << v;
  for (unsigned b = 0; b < 256; ++b) {
    const auto byte = static_cast<std::uint8_t>(b);
    std::int32_t count = 0;
    for (unsigned k = 0; k < 8; ++k) {
      count += (b >> k) & 1u;
      ASSERT_EQ((BitReversal(byte) >> (7 - k)) & 1u, (b >> k) & 1u) << b;
    }
    EXPECT_EQ(CountBits(byte), count) << b;
  }
}

TEST(BitHelpers, GrayCodeAndEndianReversal) {
  std::uint16_t previous = GrayCode(0);
  std::set<std::uint16_t> seen{previous};  // a bijection with one-bit steps
  for (std::uint32_t w = 1; w <= 0xFFFF; ++w) {
    const std::uint16_t g = GrayCode(static_cast<std::uint16_t>(w));
    seen.insert(g);
    ASSERT_EQ(std::popcount(unsigned(g ^ previous)), 1) << w;
    previous = g;
  }
  EXPECT_EQ(seen.size(), 65536u);
  EXPECT_EQ(GrayCode(2), 3);
  EXPECT_EQ(ConvertEndian(std::int32_t{0x01020304}), 0x04030201);
  EXPECT_EQ(ConvertEndian(std::int32_t{-1}), -1);
  EXPECT_EQ(ConvertEndian(std::uint16_t{0x1234}), 0x3412);
  EXPECT_EQ(std::bit_cast<std::uint64_t>(ConvertEndian(1.0)), 0x000000000000F03FULL);
  EXPECT_EQ(std::bit_cast<std::uint32_t>(ConvertEndian(1.0f)), 0x0000803Fu);
  EXPECT_EQ(ConvertEndian(ConvertEndian(-123.456)), -123.456);
}

TEST(ExChange, SwapsValuesAndByteBuffersAndOrdersPairs) {
  auto check = [](auto a, auto b) {
    auto x = a, y = b;
    ExChange(x, y);
    EXPECT_TRUE(x == b && y == a);
  };
  check(uc_MinInt64, uc_MaxInt64);
  check(std::string("left"), std::string("a much longer right-hand string"));
  char a[] = "abcdef", b[] = "uvwxyz";
  ExChange(a, b, 4);
  ExChange(a, b, 0);
  EXPECT_STREQ(a, "uvwxef");
  EXPECT_STREQ(b, "abcdyz");
  double lo = 3.0, hi = 1.0;
  SortSwap(lo, hi, true);
  EXPECT_TRUE(lo == 1.0 && hi == 3.0);
  for (int round = 0; round < 2; ++round) {  // the second round: already in order
    SortSwap(lo, hi, false);
    EXPECT_TRUE(lo == 3.0 && hi == 1.0);
  }
}

TEST(Elementary, GuardedLogarithmsAndTangents) {
  for (double invalid : {-1.0, 0.0, -kInf}) {  // the guard returns 0 and raises nothing
    EXPECT_EQ(lg(invalid), 0.0) << invalid;
    EXPECT_EQ(ld(invalid), 0.0) << invalid;
  }
  EXPECT_TRUE(std::isnan(lg(kNaN)));
  EXPECT_TRUE(lg(1000.0) == 3.0 && ld(1024.0) == 10.0 && ld(0.125) == -3.0);
  EXPECT_DOUBLE_EQ(lg(1e-300), -300.0);
  EXPECT_EQ(cot(0.0), 0.0);  // sin 0 is exactly 0
  EXPECT_EQ(tg(0.0), 0.0);   // a true zero, not the guard
  // No other guard: near pi/2 the tangent is large but finite.
  EXPECT_GT(std::abs(tg(std::numbers::pi / 2)), 1e15);
  for (double x : {-2.5, -0.3, 0.7, 1.2, 3.0}) {
    EXPECT_NEAR(tg(x), std::tan(x), 1e-14 * (1 + std::abs(std::tan(x)))) << x;
    EXPECT_NEAR(cot(x), 1 / std::tan(x), 1e-14 * (1 + std::abs(1 / std::tan(x)))) << x;
  }
}

TEST(Elementary, HyperbolicRemainderAndSign) {
  for (double x : {-20.0, -1.5, -0.25, 0.0, 0.25, 1.5, 20.0}) {
    EXPECT_NEAR(quv::sinh(x), std::sinh(x), 1e-15 * std::cosh(x)) << x;
    EXPECT_DOUBLE_EQ(quv::cosh(x), std::cosh(x)) << x;
    EXPECT_NEAR(tgh(x), std::tanh(x), 1e-15) << x;
  }
  EXPECT_TRUE(tgh(1e6) == 1.0 && tgh(-1e6) == -1.0);
  EXPECT_TRUE(quv::sinh(-1e6) == -kInf && quv::cosh(1e6) == kInf);
  for (const auto& [x, m, r] : {std::tuple{5.5, 2.0, 1.5}, {-5.5, 2.0, -1.5}, {5.5, -2.0, 1.5}})
    EXPECT_DOUBLE_EQ(modr(x, m), r) << x << " " << m;
  EXPECT_NEAR(modr(7.25, 0.5), 0.25, 1e-15);
  EXPECT_TRUE(std::isnan(modr(1.0, 0.0)));
  EXPECT_TRUE(std::isnan(modr(kInf, 3.0)));
  const std::pair<double, std::int32_t> signs[] = {
      {0.0, 1}, {-0.0, 1}, {1e-300, 1}, {-1e-300, -1}, {kNaN, -1}, {-kInf, -1},
  };
  for (const auto& [x, sign] : signs)
    EXPECT_EQ(Signum(x), sign) << x;
}

TEST(Elementary, FactorialAndProductsOfConsecutiveIntegers) {
  EXPECT_EQ(Factorial(0), 1.0L);
  EXPECT_EQ(Factorial(1), 1.0L);
  EXPECT_EQ(Factorial(20), 2432902008176640000.0L);
  EXPECT_NEAR(std::log(Factorial(1000)), std::lgamma(1001.0L), 1e-12L);  // finite, and right
  for (std::int32_t n : {-1, uc_MinInt})
    EXPECT_EQ(MessageOf([n] { Factorial(n); }), "Factorial: negative argument");
  for (std::int32_t n : {1001, uc_MaxInt})
    EXPECT_EQ(MessageOf([n] { Factorial(n); }), "Factorial: argument too big");
  // 20! fits Int64, 21! does not.
  const std::int32_t max = uc_MaxInt, min = uc_MinInt;
  const std::int64_t negative = kProductNegativeFactor, overflow = kProductOverflow;
  const std::int64_t f20 = 2432902008176640000, top = 4611686011984936962;
  const std::tuple<std::int32_t, std::int32_t, std::int64_t> products[] = {
      {5, 3, 60},        {3, 5, 60},           {7, 7, 7},          {0, 5, 0},
      {-2, 5, negative}, {min, max, negative}, {1, 20, f20},       {1, 21, overflow},
      {max, max, max},   {max - 1, max, top},  {2, max, overflow}, {1, max, overflow},
  };
  for (const auto& [a, b, product] : products)
    EXPECT_EQ(ProductConsecInts(a, b), product) << a << ".." << b;
}

TEST(Polynomial, OrderCentreErrorsAndExtendedAccumulation) {
  const TDoubleArray c = {1.0, -3.0, 0.5, 2.0};
  // 1 - 3x + 0.5x^2 + 2x^3 at x = 2: 1 - 6 + 2 + 16.
  EXPECT_DOUBLE_EQ(Polynomial(c, 3, 2.0), 13.0);
  EXPECT_DOUBLE_EQ(Polynomial(c, 1, 2.0), -5.0);
  EXPECT_DOUBLE_EQ(Polynomial(c, 0, 123.0), 1.0);
  EXPECT_DOUBLE_EQ(CenteredPolynomial(c, 3, 5.0, 3.0), 13.0);
  EXPECT_DOUBLE_EQ(CenteredPolynomial(c, 2, 3.0, 3.0), 1.0);
  const std::string invalid = "Polynomial: invalid order of polynomial";
  EXPECT_EQ(MessageOf([&] { Polynomial(c, 4, 2.0); }), invalid);
  EXPECT_EQ(MessageOf([&] { Polynomial(c, -1, 2.0); }), invalid);
  EXPECT_EQ(MessageOf([] { Polynomial(TDoubleArray{}, 0, 2.0); }), invalid);
  EXPECT_EQ(MessageOf([&] { CenteredPolynomial(c, 4, 1.0, 0.0); }), invalid);
  // (x - 1)^2 written as 1 - 2x + x^2 at x = 1 + 2^-30 is 2^-60. Every partial sum is exact in
  // a 64-bit mantissa, while double arithmetic cancels it to 0.
  EXPECT_EQ(Polynomial(TDoubleArray{1.0, -2.0, 1.0}, 2, 1.0 + 0x1p-30), 0x1p-60);
}

TEST(KahanSum, CompensationKeepsLongSumsExactAndResetClearsIt) {
  TComponent owner;
  auto* kahan = new TKahanSum(&owner);  // freed by its owner
  EXPECT_EQ(owner.ComponentCount(), 1u);
  EXPECT_EQ(kahan->Sum(), 0.0);
  kahan->Add(1.0);
  kahan->Add(1e-17);
  EXPECT_NE(kahan->Compensation(), 0.0);
  kahan->Reset();
  EXPECT_TRUE(kahan->Sum() == 0.0 && kahan->Compensation() == 0.0);
  auto sums = [kahan](double first, double term, int n) {  // compensated and naive
    kahan->Reset();
    kahan->Add(first);
    double naive = first;
    for (int i = 0; i < n; ++i) {
      kahan->Add(term);
      naive += term;
    }
    return std::pair{kahan->Sum(), naive};
  };
  // 1 plus 1e7 terms of 1e-16: naive summation loses every term.
  const auto [tiny, tinyNaive] = sums(1.0, 1e-16, 10'000'000);
  EXPECT_EQ(tinyNaive, 1.0);
  EXPECT_NEAR(tiny, 1.000000001, 4e-16);
  // 0.1 (as a double) added 1e6 times is 1e5 + 5.6e-12, within one unit in the last place
  // (1.46e-11) of 1e5; naive summation drifts by about 1e-6.
  const auto [tenths, tenthsNaive] = sums(0.0, 0.1, 1'000'000);
  EXPECT_NEAR(tenths, 1e5, 1.5e-11);
  EXPECT_GT(std::abs(tenthsNaive - 1e5), 1e-7);
}

}  // namespace
}  // namespace quv
