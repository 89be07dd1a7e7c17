// Scanners and validators of number texts.
//
// Each kind of number has one grammar, and its scanner and its validator use the same
// matcher: a validator accepts a text exactly when the scanner, started at the first
// character, reads the whole text. A scanner that finds no number returns 0 and leaves Pos
// where it was; callers tell success by Pos having moved.
//
// Positions are 1-based like the rest of the interface: Pos = 1 is the first character. A
// Pos outside 1..length reads nothing.
//
// Grammars (blank = space or tab; digit sets as named):
//
//   integer in base 16   blank* hexdigit+ blank*     hexdigit = 0-9 A-F a-f
//   integer in base 8    blank* octdigit+ blank*     octdigit = 0-7
//   integer in base 2    blank* bindigit+ blank*     bindigit = 0-1
//     No sign and no prefix ("$", "0x"). Leading zeros are free; the value must fit 32 bits
//     (at most FFFFFFFF) and is returned as the Integer with that bit pattern, so
//     ScanHex("FFFFFFFF") is -1, the inverse of Hex(-1, 8).
//
//   decimal integer      blank* [+|-] digit+ blank*
//     The value must lie in the Integer range -2147483648..2147483647; a text beyond it is
//     no number at all (rather than a shorter one).
//
//   floating-point       blank* [+|-] mantissa [exponent] blank*
//     mantissa = digit+ [sep digit*] | sep digit+
//     exponent = (e|E) [+|-] digit+        only where the exponent is allowed
//     sep      = "." for dsPoint, "," for dsComma, either for dsBoth (one separator only,
//                no thousands grouping). No "INF" or "NAN" texts.
//     A text whose value lies beyond the double range is no number; one below the smallest
//     subnormal reads as a zero of its sign. An incomplete exponent ("2e", "2e+") is not
//     part of the number: the scanner stops before the "e", the validator rejects the text.
//
//   degrees              blank* [+|-] number [blank* number "'" [blank* number '"']] blank*
//     number = digit+ ["." digit+]. The angle is degrees + minutes/60 + seconds/3600 with
//     the sign applied to the whole; DegreeToStr writes texts of this form.
//
//   date and time        laid out field by field by the Format of ScanDateTime (below);
//     blanks are not skipped there, the layout is exact.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "quv/base/enums.h"

namespace quv {

/// Reads a hexadecimal integer at Pos (1-based) and moves Pos behind it and its trailing
/// blanks. Returns the 32-bit pattern as Integer, or 0 with Pos unchanged when none is there.
std::int32_t ScanHex(std::string_view s, std::int32_t& Pos);
/// The same for base 8.
std::int32_t ScanOctal(std::string_view s, std::int32_t& Pos);
/// The same for base 2.
std::int32_t ScanBin(std::string_view s, std::int32_t& Pos);
/// The same for a signed decimal integer.
std::int32_t ScanDecimal(std::string_view s, std::int32_t& Pos);

/// Reads a floating-point number at Pos (1-based). AllowExponent admits an exponent part;
/// DecSep is the ordinal of TDecPSep (0 point, 1 comma, 2 either; other values count as
/// point). Returns 0 with Pos unchanged when no number is there.
double ScanFPNum(std::string_view s, bool AllowExponent, std::int32_t DecSep, std::int32_t& Pos);

/// Result of ScanDegrees in Format when no angle was found.
inline constexpr std::int32_t kScanDegreesNone = -1;

/// Reads an angle in degree notation at Pos (1-based) and returns it in decimal degrees.
/// With CheckRanges, minutes and seconds of 60 or more make the text no angle. Format
/// receives the ordinal of the TDegreeFormat found (decimal degrees, with minutes, with
/// minutes and seconds), or kScanDegreesNone with a result of 0 and Pos unchanged.
double ScanDegrees(std::string_view s, std::int32_t& Pos, bool CheckRanges, std::int32_t& Format);

/// Reads a date and time at Pos (1-based) as laid out by Format, and returns it as a serial
/// date: days since 1899-12-30 plus the time of day as a fraction of a day. Fields of Format:
///   yyyy  four-digit year (1..9999)      yy  two-digit year, 00..49 -> 20xx, 50..99 -> 19xx
///   mmmm  month name   mmm  three-letter month name   mm  two-digit month   m  1-2 digits
///   dd    two-digit day                   d   1-2 digits
///   dddd  weekday name   ddd  short weekday name (checked against the date when there is one)
///   hh    two-digit hour (0..23)          h   1-2 digits
///   nn    two-digit minute                n   1-2 digits
///   ss    two-digit second                s   1-2 digits
///   zzz   three-digit millisecond
/// Field letters are case-insensitive; every other character of Format must appear as it is.
/// TLanguage selects the names, matched with ASCII case folding: English January..December
/// (Jan..Dec) and Monday..Sunday (Mon..Sun); German Januar..Dezember (Jan, Feb, Mär or Mrz,
/// Apr, Mai, Jun, Jul, Aug, Sep, Okt, Nov, Dez; März also as Maerz) and Montag..Sonntag
/// (Mo, Di, Mi, Do, Fr, Sa, So), in UTF-8. Missing date fields default to day 1, month 1, year
/// 1900; a Format without any date field gives the time of day alone. A day beyond its month, a
/// field out of range or a mismatch makes the text no date: 0 is returned, Pos unchanged.
double ScanDateTime(std::string_view s, std::string_view Format, TLanguage Language,
                    std::int32_t& Pos);

/// Whether s is a floating-point text as read by ScanFPNum (grammar above).
bool IsValidDouble(std::string_view s, bool AllowExponent, TDecPSep DecSep);
/// Whether s is a floating-point text with an optional exponent.
bool IsValidFPNum(std::string_view s, TDecPSep DecSep);
/// Whether s is a hexadecimal integer text as read by ScanHex.
bool IsValidHex(std::string_view s);
/// Whether s is an octal integer text as read by ScanOctal.
bool IsValidOct(std::string_view s);
/// Whether s is a binary integer text as read by ScanBin.
bool IsValidBin(std::string_view s);
/// Whether s is a decimal integer text as read by ScanDecimal.
bool IsValidDecInt(std::string_view s);

/// s as Integer when it is a decimal integer text (IsValidDecInt), otherwise Default.
std::int32_t StrToIntDefault(std::string_view s, std::int32_t Default);

}  // namespace quv
