#include <gtest/gtest.h>

#include <cmath>
#include <sstream>
#include <utility>

#include "quv/base/base.h"

namespace quv {
namespace {

TEST(BitField, OneBasedAccessIgnoresOutOfRange) {
  TBitFld f(70);
  for (int i : {1, 70, 0, 71})
    f.SetBit(i, true);
  for (int i : {0, 1, 2, 69, 70, 71})
    EXPECT_EQ(f.Bit(i), i == 1 || i == 70) << i;
  EXPECT_EQ(f.CountTrueBits(), 2);
  f.ToggleBit(1);
  f.ToggleBit(71);
  EXPECT_FALSE(f.Bit(1));
  EXPECT_EQ(f.CountTrueBits(), 1);
  f.SetAll();
  EXPECT_EQ(f.CountTrueBits(), 70);
  f.Resize(65);
  EXPECT_EQ(f.CountTrueBits(), 65);
  f.Resize(130);
  EXPECT_EQ(f.CountTrueBits(), 65);
  EXPECT_EQ(f.NrOfBits(), 130);
  EXPECT_FALSE(f.Bit(66));
  f.Clear();
  EXPECT_EQ(f.CountTrueBits(), 0);
}

TEST(BitField, CombineWithEveryOperationAgainstBoolLogic) {
  const int n = 67;
  TBitFld a(n), b(n);
  for (int i = 1; i <= n; ++i) {
    a.SetBit(i, i % 2 == 0);
    b.SetBit(i, i % 3 == 0);
  }
  // Truth table of each operation: bit (2 x + y) holds x <op> y.
  const std::pair<TLogicOp, int> kTruth[] = {{loAND, 0b1000},   {loNAND, 0b0111}, {loXOR, 0b0110},
                                             {loOR, 0b1110},    {loNOR, 0b0001},  {loXNOR, 0b1001},
                                             {loANDNOT, 0b0100}};
  for (const auto& [op, truth] : kTruth) {
    TBitFld r = a;
    r.CombineWith(b, op);
    int expected_count = 0;
    for (int i = 1; i <= n; ++i) {
      const bool want = (truth >> (2 * a.Bit(i) + b.Bit(i))) & 1;
      EXPECT_EQ(r.Bit(i), want) << "op " << int(op) << " bit " << i;
      expected_count += want;
    }
    EXPECT_EQ(r.CountTrueBits(), expected_count) << "op " << int(op);
  }
  EXPECT_EQ(int(loOR), 3);
}

TEST(NumberFormatting, FixedPointRightAligned) {
  EXPECT_EQ(strff(3.14159, 12, 3), "       3.142");
  EXPECT_EQ(strff(-2.5, 6, 0), "    -2");  // rounds half to even like printf
  EXPECT_EQ(strff(123456.0, 3, 1), "123456.0");
  EXPECT_EQ(strff(0.0, 0, 2), "0.00");
  EXPECT_EQ(strff(1.5e300, 0, -1), "1.50000000000000E+300");
  EXPECT_EQ(strff(NAN, 5, 2), "  NAN");
  EXPECT_EQ(strff(-INFINITY, 0, 2), "-INF");
}

TEST(StringUtilities, TokenizeReplaceTrimAndReadLines) {
  EXPECT_EQ(Tokenize("  12\t 3.5  x "), (std::vector<std::string>{"12", "3.5", "x"}));
  EXPECT_EQ(Tokenize("a;;b;", ";"), (std::vector<std::string>{"a", "b"}));
  EXPECT_TRUE(Tokenize("   ").empty());
  EXPECT_EQ(ReplaceCharInString("a\nb\nc", '\n', ' '), "a b c");
  EXPECT_EQ(TrimString(" \t x y \r\n"), "x y");
  std::istringstream in("one\r\ntwo\nthree");
  std::string line;
  std::vector<std::string> lines;
  while (ReadTextLine(in, line))
    lines.push_back(line);
  EXPECT_EQ(lines, (std::vector<std::string>{"one", "two", "three"}));
}

TEST(StringUtilities, ParseQuotedNameFromStreamAndString) {
  std::istringstream in("  \"first name\" \"second\"  \"open");
  std::string name;
  EXPECT_TRUE(ParseQuotedName(in, name));
  EXPECT_EQ(name, "first name");
  EXPECT_TRUE(ParseQuotedName(in, name));
  EXPECT_EQ(name, "second");
  EXPECT_FALSE(ParseQuotedName(in, name));
  EXPECT_EQ(name, "open");

  std::size_t pos = 0;
  EXPECT_TRUE(ParseQuotedName("x \"\" \"b c\"", pos, name));
  EXPECT_EQ(name, "");
  EXPECT_TRUE(ParseQuotedName("x \"\" \"b c\"", pos, name));
  EXPECT_EQ(name, "b c");
  EXPECT_FALSE(ParseQuotedName("x \"\" \"b c\"", pos, name));
}

TEST(RandomSource, SeedReproducesAndRangesHold) {
  SetRandSeed(12345);
  const double first = Random();
  const std::int32_t second = Random(10);
  SetRandSeed(12345);
  EXPECT_EQ(Random(), first);
  EXPECT_EQ(Random(10), second);

  int counts[7] = {};
  for (int i = 0; i < 70000; ++i) {
    const double u = Random();
    ASSERT_GE(u, 0.0);
    ASSERT_LT(u, 1.0);
    const std::int32_t k = Random(7);
    ASSERT_GE(k, 0);
    ASSERT_LT(k, 7);
    ++counts[k];
  }
  for (int c : counts)
    EXPECT_NEAR(c, 10000, 500);  // about 5 standard deviations
  EXPECT_EQ(Random(0), 0);
  EXPECT_EQ(Random(-3), 0);
}

}  // namespace
}  // namespace quv
