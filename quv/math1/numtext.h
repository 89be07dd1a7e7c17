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
#include "quv/math1/numtext_scan.h"

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

// ---------------------------------------------------------------------------------------------
// Raw images of floating-point numbers as hexadecimal text
// ---------------------------------------------------------------------------------------------

/// The 8 bytes of the IEEE 754 image of x, most significant byte first, two upper-case digits
/// per byte (16 characters). FPNumToHex(1.0) is "3FF0000000000000".
std::string FPNumToHex(double x);
/// The 4-byte image of x (8 characters).
std::string FPNumToHex(float x);
/// The 10-byte extended image of x (20 characters): sign and exponent first, then the 64-bit
/// significand with its explicit integer bit. 1.0 is "3FFF8000000000000000".
std::string FPNumToHex(Extended x);

/// Inverse of FPNumToHex for double: s must hold exactly 16 hexadecimal digits, either case.
/// MostSignificantFirst reads s as FPNumToHex writes it; false reads the first two digits as
/// the lowest byte (within a byte the high nibble always comes first). Raises EQUVError
/// "HexToDouble: invalid hex string \"<s>\"" on a wrong length or a non-digit.
double HexToDouble(std::string_view s, bool MostSignificantFirst = true);
/// The same for the 10-byte extended image (20 digits); raises EQUVError
/// "HexToExtended: invalid hex string \"<s>\"".
Extended HexToExtended(std::string_view s, bool MostSignificantFirst = true);
/// The same for the 4-byte image (8 digits); raises EQUVError
/// "HexToSingle: invalid hex string \"<s>\"".
float HexToSingle(std::string_view s, bool MostSignificantFirst = true);

// ---------------------------------------------------------------------------------------------
// Formatting
// ---------------------------------------------------------------------------------------------

/// Engineering notation: |x| scaled by a power of 1000 and followed by its prefix letter
/// (a f p n u m, none, k M G T for 10^-18 .. 10^12). |Digits| (at most 9) is the number of
/// significant digits shown after the leading one: EEngStr(4700, 1) is "4.7k". A negative
/// Digits puts the letter in place of the decimal point instead: EEngStr(4700, -1) is "4k7"
/// (with no decimals it still follows the digits); without a letter (|x| from 1 to below
/// 1000) the point stays. Zero reads as the fixed-point
/// text of 0 with |Digits| decimals; NaN and infinities read as strff writes them. The
/// scaled value is not renormalised after rounding: EEngStr(999.96, 1) is "1000".
std::string EEngStr(double x, std::int32_t Digits);

/// Fixed-point text of x with Decimals digits after the point (negative taken as 0, at most
/// 340), right-aligned in a field of Width characters; longer texts are not cut.
std::string strf(double x, std::int32_t Width, std::int32_t Decimals);

/// Exponent form of x with Decimals digits after the point of the mantissa (negative taken
/// as 0, at most 30) and a signed exponent of at least two digits ("1.50E+03"),
/// right-aligned in a field of Width characters.
std::string MakeEFormat(double x, std::int32_t Width, std::int32_t Decimals);

/// Text of an angle given in decimal degrees, in one of the formats of TDegreeFormat:
///   dfDecDegrees  "12.5083"           Decimals digits after the point
///   dfDegMin      "12 30.50'"         whole degrees, minutes with Decimals digits
///   dfDegMinSec   "12 30' 30.0\""     whole degrees and minutes, seconds with Decimals digits
/// Decimals is limited to 0..9. The angle is rounded in units of its last part before it is
/// split, so that a part never reads 60. A negative angle gets one "-" in front. NaN and
/// infinities read as strff writes them. ScanDegrees reads back every text of a finite angle.
std::string DegreeToStr(double Angle, TDegreeFormat Format, std::int32_t Decimals);

/// Converts an angle held in three parts between degree formats. The parts are
///   dfDecDegrees  A = decimal degrees (B and C are ignored on input and set to 0)
///   dfDegMin      A = whole degrees, B = decimal minutes (C ignored, set to 0)
///   dfDegMinSec   A = whole degrees, B = whole minutes, C = decimal seconds.
/// The sign of the angle is the sign of A (a negative zero counts: A = -0, B = 30 in
/// dfDegMin is -0.5 degrees); the result carries it on A likewise. Minutes and seconds must lie in
/// [0, 60): otherwise EQUVMath1Error "ConvertDegrees: invalid range of minutes" or "... of seconds"
/// is raised and A, B and C stay as they were. Output minutes and seconds are not rounded.
void ConvertDegrees(double& A, double& B, double& C, TDegreeFormat FromFormat,
                    TDegreeFormat ToFormat);

}  // namespace quv
