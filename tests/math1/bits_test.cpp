#include <gtest/gtest.h>

#include <bit>
#include <cstring>
#include <set>
#include <string>

#include "quv/math1/math1.h"

namespace quv {
namespace {

TEST(BitHelpers, AgreeWithBruteForceLoops) {
  std::set<std::uint32_t> powers;
  for (int i = 0; i < 32; ++i)
    powers.insert(std::uint32_t{1} << i);
  for (std::uint32_t n = 1; n < 70000; ++n)
    ASSERT_EQ(CheckPowerOfTwo(n), powers.count(n) == 1);
  for (std::uint32_t p : powers) {
    EXPECT_TRUE(CheckPowerOfTwo(p));
    if (p >= 4) {
      EXPECT_FALSE(CheckPowerOfTwo(p + 3)) << p;
      EXPECT_FALSE(CheckPowerOfTwo(p - 1)) << p;
    }
  }
  EXPECT_TRUE(CheckPowerOfTwo(0));
  EXPECT_FALSE(CheckPowerOfTwo(uc_MaxCardinal));

  for (std::int32_t i = -3; i <= 40; ++i) {
    std::uint32_t expected = 0;
    for (std::int32_t k = 0; k < 32; ++k)
      if (k == i) expected = std::uint32_t{1} << k;
    EXPECT_EQ(DecodeLong(i), expected) << i;
    EXPECT_EQ(DecodeBit(i), i <= 7 ? expected : 0u) << i;
  }
  for (std::uint32_t v : {1u, 2u, 12u, 0x80000000u, 0xFFFFFFFFu, 0x00F00000u, 0u}) {
    std::int32_t lowest = 31;
    for (std::int32_t k = 31; k >= 0; --k)
      if (v & (std::uint32_t{1} << k)) lowest = k;
    EXPECT_EQ(EncodeLong(v), lowest) << v;
  }
  for (unsigned b = 0; b < 256; ++b) {
    int count = 0;
    unsigned reversed = 0;
    for (int k = 0; k < 8; ++k) {
      if (b & (1u << k)) {
        ++count;
        reversed |= 1u << (7 - k);
      }
    }
    EXPECT_EQ(CountBits(static_cast<std::uint8_t>(b)), count);
    EXPECT_EQ(BitReversal(static_cast<std::uint8_t>(b)), reversed);
  }
}

TEST(BitHelpers, GrayCodeIsABijectionWithOneBitSteps) {
  std::set<std::uint16_t> seen;
  for (std::uint32_t w = 0; w <= 0xFFFF; ++w) {
    const std::uint16_t g = GrayCode(static_cast<std::uint16_t>(w));
    seen.insert(g);
    if (w > 0) {
      const std::uint16_t prev = GrayCode(static_cast<std::uint16_t>(w - 1));
      ASSERT_EQ(std::popcount(static_cast<unsigned>(g ^ prev)), 1) << w;
    }
  }
  EXPECT_EQ(seen.size(), 65536u);
  EXPECT_EQ(GrayCode(0), 0);
  EXPECT_EQ(GrayCode(2), 3);
}

TEST(ConvertEndian, ReversesTheBytesOfEachType) {
  EXPECT_EQ(ConvertEndian(std::int32_t{0x01020304}), 0x04030201);
  EXPECT_EQ(ConvertEndian(std::int32_t{-1}), -1);
  EXPECT_EQ(ConvertEndian(std::uint16_t{0x1234}), 0x3412);
  const double d = 1.0;  // 3FF0000000000000
  EXPECT_EQ(std::bit_cast<std::uint64_t>(ConvertEndian(d)), 0x000000000000F03FULL);
  EXPECT_EQ(ConvertEndian(ConvertEndian(-123.456)), -123.456);
  const float f = 1.0f;  // 3F800000
  EXPECT_EQ(std::bit_cast<std::uint32_t>(ConvertEndian(f)), 0x0000803Fu);
}

TEST(ExChange, SwapsEveryListedTypeAndByteBuffers) {
  auto check = [](auto a, auto b) {
    auto x = a;
    auto y = b;
    ExChange(x, y);
    EXPECT_EQ(x, b);
    EXPECT_EQ(y, a);
  };
  check(std::int32_t{1}, std::int32_t{-2});
  check(std::uint8_t{1}, std::uint8_t{255});
  check(1.5f, -2.5f);
  check(1.5, -2.5);
  check(1.5L, -2.5L);
  check(std::string("left"), std::string("a much longer right-hand string"));
  check(true, false);
  check('a', 'z');
  check(std::uint16_t{7}, std::uint16_t{65535});
  check(std::int8_t{-128}, std::int8_t{127});
  check(std::uint32_t{0}, uc_MaxCardinal);
  check(uc_MinInt64, uc_MaxInt64);

  char a[] = "abcdef";
  char b[] = "uvwxyz";
  ExChange(a, b, 4);
  EXPECT_STREQ(a, "uvwxef");
  EXPECT_STREQ(b, "abcdyz");
  ExChange(a, b, 0);
  EXPECT_STREQ(a, "uvwxef");

  double lo = 3.0, hi = 1.0;
  SortSwap(lo, hi, true);
  EXPECT_EQ(lo, 1.0);
  EXPECT_EQ(hi, 3.0);
  SortSwap(lo, hi, false);
  EXPECT_EQ(lo, 3.0);
  EXPECT_EQ(hi, 1.0);
  SortSwap(lo, hi, false);  // already in order
  EXPECT_EQ(lo, 3.0);
}

}  // namespace
}  // namespace quv
