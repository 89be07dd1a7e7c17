#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <sstream>
#include <string>

#include "quv/base/base.h"

namespace quv {
namespace {

TExtendedBytes Bytes(std::initializer_list<int> values) {
  TExtendedBytes b{};
  std::size_t i = 0;
  for (int v : values)
    b[i++] = static_cast<std::uint8_t>(v);
  return b;
}

TEST(ExtendedEncoding, KnownImages) {
  EXPECT_EQ(EncodeExtended(1.0L), Bytes({0, 0, 0, 0, 0, 0, 0, 0x80, 0xFF, 0x3F}));
  EXPECT_EQ(EncodeExtended(-2.0L), Bytes({0, 0, 0, 0, 0, 0, 0, 0x80, 0x00, 0xC0}));
  EXPECT_EQ(EncodeExtended(0.5L), Bytes({0, 0, 0, 0, 0, 0, 0, 0x80, 0xFE, 0x3F}));
  EXPECT_EQ(EncodeExtended(3.0L), Bytes({0, 0, 0, 0, 0, 0, 0, 0xC0, 0x00, 0x40}));
  EXPECT_EQ(EncodeExtended(0.0L), Bytes({0, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
  EXPECT_EQ(EncodeExtended(-0.0L), Bytes({0, 0, 0, 0, 0, 0, 0, 0, 0, 0x80}));
  EXPECT_EQ(EncodeExtended(INFINITY), Bytes({0, 0, 0, 0, 0, 0, 0, 0x80, 0xFF, 0x7F}));
  EXPECT_EQ(EncodeExtended(-INFINITY), Bytes({0, 0, 0, 0, 0, 0, 0, 0x80, 0xFF, 0xFF}));
  // The smallest subnormal extended value has significand 1 and a zero exponent field.
  EXPECT_EQ(EncodeExtended(std::ldexp(1.0L, -16445)), Bytes({1, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
}

// The arithmetic encoding must agree with the memory image wherever the latter is used.
TEST(ExtendedEncoding, PortableEncodingMatchesTheNativeOne) {
  const long double values[] = {1.0L,     -3.25L,     1e-300L, 1e300L,   0.1L,
                                1e-4940L, 1.18e4932L, -0.0L,   INFINITY, 3.0L};
  for (long double v : values) {
    EXPECT_EQ(detail::EncodeExtendedPortable(v), EncodeExtended(v)) << static_cast<double>(v);
    EXPECT_EQ(detail::DecodeExtendedPortable(EncodeExtended(v)), v) << static_cast<double>(v);
  }
  const TExtendedBytes nan = detail::EncodeExtendedPortable(NAN);
  EXPECT_TRUE(std::isnan(DecodeExtended(nan)));
  EXPECT_TRUE(std::isnan(detail::DecodeExtendedPortable(nan)));
}

TEST(ExtendedEncoding, RoundTripsEveryKindOfValue) {
  const long double values[] = {0.1L,
                                -123456.789L,
                                std::numeric_limits<double>::denorm_min(),
                                std::numeric_limits<double>::max(),
                                std::numeric_limits<long double>::max(),
                                std::numeric_limits<long double>::denorm_min(),
                                std::numeric_limits<long double>::min(),
                                -0.0L};
  for (long double v : values) {
    const long double back = DecodeExtended(EncodeExtended(v));
    EXPECT_EQ(back, v);
    EXPECT_EQ(std::signbit(back), std::signbit(v));
  }
  EXPECT_TRUE(std::isnan(DecodeExtended(EncodeExtended(NAN))));
  EXPECT_TRUE(std::isinf(DecodeExtended(EncodeExtended(-INFINITY))));
}

TEST(ExtendedStream, WritesTenBytesAndFlagsShortReads) {
  std::stringstream s;
  WriteExtendedToStream(s, 1.0L);
  WriteExtendedToStream(s, -7.5L);
  EXPECT_EQ(s.str().size(), 20u);
  bool error = true;
  EXPECT_EQ(ReadExtendedFromStream(s, error), 1.0L);
  EXPECT_FALSE(error);
  EXPECT_EQ(ReadExtendedFromStream(s, error), -7.5L);
  EXPECT_FALSE(error);
  EXPECT_EQ(ReadExtendedFromStream(s, error), 0.0L);
  EXPECT_TRUE(error);

  std::stringstream cut(std::string("\0\0\0\0\0", 5));
  ReadExtendedFromStream(cut, error);
  EXPECT_TRUE(error);
}

TEST(Crc32, CheckValues) {
  const std::string check = "123456789";
  EXPECT_EQ(CRC32OfBytes(check.data(), check.size()), 0xCBF43926u);
  EXPECT_EQ(CRC32OfBytes("", 0), 0u);
  std::uint32_t crc = 0xFFFFFFFFu;
  for (char c : std::string("The quick brown fox jumps over the lazy dog")) {
    crc = CalcNextCRC32(static_cast<std::uint8_t>(c), crc);
  }
  EXPECT_EQ(~crc, 0x414FA339u);
}

}  // namespace
}  // namespace quv
