// Raw images of floating-point numbers as hexadecimal text and back.
//
// An image is handled as its bytes in significance order: byte 0 is the least significant.
// The text form lists them from the most significant byte down, two digits per byte.
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "quv/base/errors.h"
#include "quv/base/extended_stream.h"
#include "quv/math1/numtext.h"
#include "quv/math1/numtext_digits.h"

namespace quv {
namespace {

using detail::DigitValue;
using detail::kDigitTable;

template <std::size_t N>
using TImage = std::array<std::uint8_t, N>;

// Little-endian bytes of an unsigned integer: byte 0 least significant on every machine.
template <std::size_t N, class U>
TImage<N> BytesOf(U bits) {
  TImage<N> image{};
  for (std::size_t i = 0; i < N; ++i)
    image[i] = static_cast<std::uint8_t>(bits >> (8 * i));
  return image;
}

template <class U, std::size_t N>
U ValueOf(const TImage<N>& image) {
  U bits = 0;
  for (std::size_t i = N; i > 0; --i)
    bits = static_cast<U>((bits << 8) | image[i - 1]);
  return bits;
}

template <std::size_t N>
std::string ImageToHex(const TImage<N>& image) {
  std::string text(2 * N, '0');
  for (std::size_t i = 0; i < N; ++i) {
    const std::uint8_t byte = image[N - 1 - i];
    text[2 * i] = kDigitTable[byte >> 4];
    text[2 * i + 1] = kDigitTable[byte & 0x0F];
  }
  return text;
}

// Assembles the N-byte image that s describes, or raises EQUVError with the argument form
// opened by `opening`. The whole text is checked before any byte is used.
template <std::size_t N>
TImage<N> HexToImage(std::string_view s, bool mostSignificantFirst, std::string_view opening) {
  if (s.size() != 2 * N) throw EQUVError(ArgumentMessage(opening, s));
  TImage<N> image{};
  for (std::size_t k = 0; k < 2 * N; ++k) {
    const int nibble = DigitValue(s[k]);
    if (nibble < 0) throw EQUVError(ArgumentMessage(opening, s));
    const std::size_t byte = k / 2;
    const std::size_t at = mostSignificantFirst ? N - 1 - byte : byte;
    const int shift = k % 2 == 0 ? 4 : 0;
    image[at] = static_cast<std::uint8_t>(image[at] | (nibble << shift));
  }
  return image;
}

}  // namespace

std::string FPNumToHex(double x) {
  return ImageToHex(BytesOf<8>(std::bit_cast<std::uint64_t>(x)));
}

std::string FPNumToHex(float x) {
  return ImageToHex(BytesOf<4>(std::bit_cast<std::uint32_t>(x)));
}

std::string FPNumToHex(Extended x) {
  return ImageToHex(EncodeExtended(x));
}

double HexToDouble(std::string_view s, bool MostSignificantFirst) {
  const auto image = HexToImage<8>(s, MostSignificantFirst, "HexToDouble: invalid hex string \"");
  return std::bit_cast<double>(ValueOf<std::uint64_t>(image));
}

Extended HexToExtended(std::string_view s, bool MostSignificantFirst) {
  return DecodeExtended(
      HexToImage<10>(s, MostSignificantFirst, "HexToExtended: invalid hex string \""));
}

float HexToSingle(std::string_view s, bool MostSignificantFirst) {
  const auto image = HexToImage<4>(s, MostSignificantFirst, "HexToSingle: invalid hex string \"");
  return std::bit_cast<float>(ValueOf<std::uint32_t>(image));
}

}  // namespace quv
