#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

#include "quv/math1/math1.h"

namespace quv {
namespace {

TEST(NumTextHex, DigitsAreExactLengthWithClamping) {
  EXPECT_EQ(Hex(255, 4), "00FF");
  EXPECT_EQ(Hex(255, 0), "F");
  EXPECT_EQ(Hex(255, 1), "F");
  EXPECT_EQ(Hex(0x1234ABCD, 8), "1234ABCD");
  EXPECT_EQ(Hex(0x1234ABCD, 3), "BCD");
  EXPECT_EQ(Hex(0, 0), "0");
  // Negative values show their 32-bit two's complement; above 8 digits come zeros.
  EXPECT_EQ(Hex(-1, 8), "FFFFFFFF");
  EXPECT_EQ(Hex(-1, 10), "00FFFFFFFF");
  EXPECT_EQ(Hex(-1, 16), "00000000FFFFFFFF");
  EXPECT_EQ(Hex(-1, 17), "00000000FFFFFFFF");
  EXPECT_EQ(Hex(-1, 255).size(), 16u);
  EXPECT_EQ(Hex(std::numeric_limits<std::int32_t>::min(), 8), "80000000");
}

TEST(NumTextHex, CrcRegisterAsEightDigits) {
  // A CRC-32 register is a Cardinal; its text is the pattern cast to Integer.
  const std::uint32_t crc = 0xCBF43926u;
  EXPECT_EQ(Hex(static_cast<std::int32_t>(crc), 8), "CBF43926");
}

TEST(NumTextOctalBin, SameRuleInBase8And2) {
  EXPECT_EQ(Octal(8, 3), "010");
  EXPECT_EQ(Octal(511, 0), "7");
  EXPECT_EQ(Octal(-1, 11), "37777777777");
  EXPECT_EQ(Octal(-1, 200), "0000037777777777");
  EXPECT_EQ(Bin(5, 8), "00000101");
  EXPECT_EQ(Bin(5, 0), "1");
  EXPECT_EQ(Bin(6, 2), "10");
  EXPECT_EQ(Bin(-1, 32), std::string(32, '1'));
  EXPECT_EQ(Bin(std::numeric_limits<std::int32_t>::min(), 40), "1" + std::string(31, '0'));
}

TEST(NumTextDecimal, PaddingTruncationAndSign) {
  EXPECT_EQ(Decimal(-42, 4), "-0042");
  EXPECT_EQ(Decimal(12345, 3), "345");
  EXPECT_EQ(Decimal(7, 0), "7");
  EXPECT_EQ(Decimal(0, 3), "000");
  EXPECT_EQ(Decimal(-12345, 2), "-45");
  EXPECT_EQ(Decimal(std::numeric_limits<std::int32_t>::min(), 10), "-2147483648");
  EXPECT_EQ(Decimal(std::numeric_limits<std::int32_t>::max(), 12), "002147483647");
  EXPECT_EQ(Decimal(1, 255).size(), 255u);
}

}  // namespace
}  // namespace quv
