// Digit helpers shared by the number text sources; not part of the interface.
#pragma once

namespace quv::detail {

/// The digits of every base up to 16, upper case.
inline constexpr char kDigitTable[] = "0123456789ABCDEF";

/// Value of c as a digit of `base` (at most 16, letters in either case), or -1.
constexpr int DigitValue(char c, int base = 16) {
  int value = -1;
  if (c >= '0' && c <= '9') {
    value = c - '0';
  } else if (c >= 'A' && c <= 'F') {
    value = c - 'A' + 10;
  } else if (c >= 'a' && c <= 'f') {
    value = c - 'a' + 10;
  }
  return value < base ? value : -1;
}

}  // namespace quv::detail
