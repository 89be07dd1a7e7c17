// Integers as fixed-length digit strings in bases 16, 8, 2 and 10.
#include <algorithm>
#include <cstdint>
#include <string>

#include "quv/math1/numtext.h"
#include "quv/math1/numtext_digits.h"

namespace quv {
namespace {

using detail::kDigitTable;

// Writes the lowest `digits` digits of `value` in `base`, most significant first. Digits past
// the magnitude of the value come out as zeros, which keeps the length exact.
std::string LowDigits(std::uint64_t value, std::uint32_t base, std::uint32_t digits) {
  std::string text(digits, '0');
  for (std::uint32_t k = digits; k > 0 && value != 0; --k) {
    text[k - 1] = kDigitTable[value % base];
    value /= base;
  }
  return text;
}

std::uint32_t ClampDigits(std::uint8_t digits, std::uint32_t most) {
  return std::clamp<std::uint32_t>(digits, 1, most);
}

// The bit pattern of a 32-bit integer, so that negative values show their two's complement.
std::uint64_t Pattern(std::int32_t value) {
  return static_cast<std::uint32_t>(value);
}

}  // namespace

std::string Hex(std::int32_t Value, std::uint8_t Digits) {
  return LowDigits(Pattern(Value), 16, ClampDigits(Digits, 16));
}

std::string Octal(std::int32_t Value, std::uint8_t Digits) {
  return LowDigits(Pattern(Value), 8, ClampDigits(Digits, 16));
}

std::string Bin(std::int32_t Value, std::uint8_t Digits) {
  return LowDigits(Pattern(Value), 2, ClampDigits(Digits, 32));
}

std::string Decimal(std::int32_t Value, std::uint8_t Digits) {
  // The magnitude of the most negative Integer does not fit an Integer; take it in 64 bits.
  const std::int64_t wide = Value;
  const auto magnitude = static_cast<std::uint64_t>(wide < 0 ? -wide : wide);
  std::string text = LowDigits(magnitude, 10, ClampDigits(Digits, 255));
  if (Value < 0) text.insert(text.begin(), '-');
  return text;
}

}  // namespace quv
