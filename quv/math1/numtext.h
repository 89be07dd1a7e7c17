// Number text: integers as hexadecimal, octal, binary and decimal digit strings, raw images of
// floating-point numbers as hexadecimal text, engineering and degree notation, and the
// scanners and validators of number texts.
//
// Hexadecimal digits are always written in upper case ("0123456789ABCDEF").
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "quv/base/enums.h"
#include "quv/base/types.h"

namespace quv {

// ---------------------------------------------------------------------------------------------
// Integers as digit strings
// ---------------------------------------------------------------------------------------------

/// The lowest `Digits` hexadecimal digits of the 32-bit pattern of Value, most significant
/// first, leading zeros kept (Digits is the exact length). Digits 0 is taken as 1 and values
/// above 16 as 16; digits above the eighth are zeros. Hex(255, 4) is "00FF".
std::string Hex(std::int32_t Value, std::uint8_t Digits);

/// The same in base 8: Digits 0 is taken as 1, values above 16 as 16 (a 32-bit pattern has 11
/// octal digits).
std::string Octal(std::int32_t Value, std::uint8_t Digits);

/// The same in base 2: Digits 0 is taken as 1, values above 32 as 32, so that every bit of a
/// 32-bit pattern can be shown.
std::string Bin(std::int32_t Value, std::uint8_t Digits);

/// The lowest `Digits` decimal digits of |Value|, zero-padded to exactly Digits characters
/// (Digits 0 is taken as 1; higher digits are dropped), with "-" in front for a negative
/// Value. Decimal(-42, 4) is "-0042", Decimal(12345, 3) is "345".
std::string Decimal(std::int32_t Value, std::uint8_t Digits);

}  // namespace quv
