#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <sstream>
#include <string>
#include <utility>

#include "quv/base/base.h"

namespace quv {
namespace {

TEST(ExtendedEncoding, KnownImages) {
  // Significand bytes 0..7 (explicit integer bit), then exponent and sign in bytes 8..9. The
  // smallest subnormal has significand 1 and a zero exponent field.
  const std::pair<Extended, TExtendedBytes> kImages[] = {
      {1.0L, {0, 0, 0, 0, 0, 0, 0, 0x80, 0xFF, 0x3F}},
      {-2.0L, {0, 0, 0, 0, 0, 0, 0, 0x80, 0x00, 0xC0}},
      {0.5L, {0, 0, 0, 0, 0, 0, 0, 0x80, 0xFE, 0x3F}},
      {3.0L, {0, 0, 0, 0, 0, 0, 0, 0xC0, 0x00, 0x40}},
      {0.0L, {0, 0, 0, 0, 0, 0, 0, 0, 0, 0}},
      {-0.0L, {0, 0, 0, 0, 0, 0, 0, 0, 0, 0x80}},
      {INFINITY, {0, 0, 0, 0, 0, 0, 0, 0x80, 0xFF, 0x7F}},
      {-INFINITY, {0, 0, 0, 0, 0, 0, 0, 0x80, 0xFF, 0xFF}},
      {std::ldexp(1.0L, -16445), {1, 0, 0, 0, 0, 0, 0, 0, 0, 0}}};
  for (const auto& [value, bytes] : kImages) {
    EXPECT_EQ(EncodeExtended(value), bytes) << static_cast<double>(value);
    EXPECT_EQ(detail::EncodeExtendedPortable(value), bytes) << static_cast<double>(value);
  }
}

// Round trips through both the native image and the arithmetic encoding used on platforms
// whose long double is not the x87 format; the two must agree byte for byte.
TEST(ExtendedEncoding, RoundTripsEveryKindOfValue) {
  // The extremes of double and of the extended format: smallest subnormal, largest finite,
  // smallest normal.
  for (Extended v : {0.1L, -3.25L, -123456.789L, 1e-300L, 1e300L, 1e-4940L, 1.18e4932L, -0.0L,
                     -HUGE_VALL, 0x1p-1074L, 0x1.fffffffffffffp1023L, 0x1p-16445L, 0x1p-16382L,
                     0x1.fffffffffffffffep16383L}) {
    const TExtendedBytes image = EncodeExtended(v);
    EXPECT_EQ(detail::EncodeExtendedPortable(v), image) << static_cast<double>(v);
    EXPECT_EQ(detail::DecodeExtendedPortable(image), v) << static_cast<double>(v);
    const Extended back = DecodeExtended(image);
    EXPECT_EQ(back, v) << static_cast<double>(v);
    EXPECT_EQ(std::signbit(back), std::signbit(v)) << static_cast<double>(v);
  }
  const TExtendedBytes nan = detail::EncodeExtendedPortable(NAN);
  EXPECT_EQ(EncodeExtended(NAN), nan);
  EXPECT_TRUE(std::isnan(DecodeExtended(nan)));
  EXPECT_TRUE(std::isnan(detail::DecodeExtendedPortable(nan)));
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
  error = false;
  EXPECT_EQ(ReadExtendedFromStream(cut, error), 0.0L);
  EXPECT_TRUE(error);
}

TEST(Crc32, CheckValues) {
  const std::string check = "123456789";
  EXPECT_EQ(CRC32OfBytes(check.data(), check.size()), 0xCBF43926u);
  EXPECT_EQ(CRC32OfBytes("", 0), 0u);
  std::uint32_t crc = 0xFFFFFFFFu;
  for (char c : std::string("The quick brown fox jumps over the lazy dog"))
    crc = CalcNextCRC32(static_cast<std::uint8_t>(c), crc);
  EXPECT_EQ(~crc, 0x414FA339u);
}

}  // namespace
}  // namespace quv
