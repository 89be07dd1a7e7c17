#include "quv/base/extended_stream.h"

#include <bit>
#include <cmath>
#include <cstring>
#include <istream>
#include <limits>
#include <ostream>

namespace quv {
namespace {

constexpr int kBias = 16383;
constexpr int kMaxExponent = 0x7FFF;
constexpr std::uint64_t kIntegerBit = std::uint64_t{1} << 63;

TExtendedBytes Pack(bool negative, int exponent, std::uint64_t significand) {
  TExtendedBytes bytes{};
  for (int i = 0; i < 8; ++i)
    bytes[i] = static_cast<std::uint8_t>(significand >> (8 * i));
  const auto top = static_cast<std::uint16_t>((negative ? 0x8000 : 0) | exponent);
  bytes[8] = static_cast<std::uint8_t>(top & 0xFF);
  bytes[9] = static_cast<std::uint8_t>(top >> 8);
  return bytes;
}

// True where a long double in memory is exactly the 10-byte image (x87 on little-endian).
constexpr bool kNativeImage = std::numeric_limits<Extended>::digits == 64 &&
                              std::numeric_limits<Extended>::max_exponent == 16384 &&
                              std::endian::native == std::endian::little;

}  // namespace

TExtendedBytes EncodeExtended(Extended value) {
  if constexpr (kNativeImage) {
    TExtendedBytes bytes{};
    std::memcpy(bytes.data(), &value, bytes.size());
    return bytes;
  } else {
    return detail::EncodeExtendedPortable(value);
  }
}

Extended DecodeExtended(const TExtendedBytes& bytes) {
  if constexpr (kNativeImage) {
    Extended value = 0;
    std::memcpy(&value, bytes.data(), bytes.size());
    return value;
  } else {
    return detail::DecodeExtendedPortable(bytes);
  }
}

namespace detail {

TExtendedBytes EncodeExtendedPortable(Extended value) {
  const bool negative = std::signbit(value);
  if (std::isnan(value)) return Pack(negative, kMaxExponent, kIntegerBit | (kIntegerBit >> 1));
  if (std::isinf(value)) return Pack(negative, kMaxExponent, kIntegerBit);
  if (value == 0) return Pack(negative, 0, 0);

  int e = 0;
  const Extended m = std::frexp(std::fabs(value), &e);  // |value| = m * 2^e, m in [0.5, 1)
  int biased = e - 1 + kBias;
  if (biased >= kMaxExponent) return Pack(negative, kMaxExponent, kIntegerBit);
  if (biased <= 0) {
    // Subnormal: the significand is |value| * 2^(kBias - 1 + 63) with a zero exponent field.
    const Extended scaled = std::ldexp(m, e + kBias - 1 + 63);
    return Pack(negative, 0, static_cast<std::uint64_t>(scaled));
  }
  return Pack(negative, biased, static_cast<std::uint64_t>(std::ldexp(m, 64)));
}

Extended DecodeExtendedPortable(const TExtendedBytes& bytes) {
  std::uint64_t significand = 0;
  for (int i = 7; i >= 0; --i)
    significand = (significand << 8) | bytes[i];
  const int top = bytes[8] | (bytes[9] << 8);
  const bool negative = (top & 0x8000) != 0;
  const int exponent = top & kMaxExponent;

  Extended magnitude = 0;
  if (exponent == kMaxExponent) {
    magnitude = (significand << 1) == 0 ? INFINITY : NAN;
  } else if (exponent == 0) {
    magnitude = std::ldexp(static_cast<Extended>(significand), 1 - kBias - 63);
  } else {
    magnitude = std::ldexp(static_cast<Extended>(significand), exponent - kBias - 63);
  }
  return negative ? -magnitude : magnitude;
}

}  // namespace detail

void WriteExtendedToStream(std::ostream& stream, Extended value) {
  const TExtendedBytes bytes = EncodeExtended(value);
  stream.write(reinterpret_cast<const char*>(bytes.data()), bytes.size());
}

Extended ReadExtendedFromStream(std::istream& stream, bool& readError) {
  TExtendedBytes bytes{};
  stream.read(reinterpret_cast<char*>(bytes.data()), bytes.size());
  readError = stream.gcount() != static_cast<std::streamsize>(bytes.size());
  if (readError) return 0;
  return DecodeExtended(bytes);
}

}  // namespace quv
