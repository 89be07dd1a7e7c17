// Bit helpers and byte-order reversal.
#pragma once

#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <type_traits>

namespace quv {

/// True when n is a power of two, by n and (n - 1) = 0; so 0 reports true as well.
constexpr bool CheckPowerOfTwo(std::uint32_t n) {
  return (n & (n - 1)) == 0;
}

/// 1 shl i for i in 0..7, else 0.
constexpr std::uint8_t DecodeBit(std::int32_t i) {
  return (i >= 0 && i <= 7) ? static_cast<std::uint8_t>(1u << i) : 0;
}

/// 1 shl i for i in 0..31, else 0.
constexpr std::uint32_t DecodeLong(std::int32_t i) {
  return (i >= 0 && i <= 31) ? (1u << i) : 0u;
}

/// Index of the lowest set bit of v, at most 31; 0 yields 31.
constexpr std::int32_t EncodeLong(std::uint32_t v) {
  return v == 0 ? 31 : std::countr_zero(v);
}

/// Number of set bits of b.
constexpr std::int32_t CountBits(std::uint8_t b) {
  return std::popcount(b);
}

namespace detail {
constexpr std::array<std::uint8_t, 256> MakeBitReversalTable() {
  std::array<std::uint8_t, 256> table{};
  for (unsigned b = 0; b < 256; ++b) {
    unsigned r = 0;
    for (unsigned bit = 0; bit < 8; ++bit)
      if (b & (1u << bit)) r |= 0x80u >> bit;
    table[b] = static_cast<std::uint8_t>(r);
  }
  return table;
}
inline constexpr std::array<std::uint8_t, 256> kBitReversal = MakeBitReversalTable();

template <class T>
T ReverseBytes(T x) {
  static_assert(std::is_trivially_copyable_v<T>);
  std::array<unsigned char, sizeof(T)> bytes;
  std::memcpy(bytes.data(), &x, sizeof(T));
  for (std::size_t i = 0; i < sizeof(T) / 2; ++i)
    std::swap(bytes[i], bytes[sizeof(T) - 1 - i]);
  std::memcpy(&x, bytes.data(), sizeof(T));
  return x;
}
}  // namespace detail

/// b with its 8 bits in reverse order (bit 0 becomes bit 7), by table lookup.
constexpr std::uint8_t BitReversal(std::uint8_t b) {
  return detail::kBitReversal[b];
}

/// Gray code of w: w xor (w shr 1).
constexpr std::uint16_t GrayCode(std::uint16_t w) {
  return static_cast<std::uint16_t>(w ^ (w >> 1));
}

/// x with its byte order reversed (little-endian <-> big-endian).
inline double ConvertEndian(double x) {
  return detail::ReverseBytes(x);
}
/// Byte order reversed (Single).
inline float ConvertEndian(float x) {
  return detail::ReverseBytes(x);
}
/// Byte order reversed (Word).
inline std::uint16_t ConvertEndian(std::uint16_t x) {
  return detail::ReverseBytes(x);
}
/// Byte order reversed (Integer).
inline std::int32_t ConvertEndian(std::int32_t x) {
  return detail::ReverseBytes(x);
}

}  // namespace quv
