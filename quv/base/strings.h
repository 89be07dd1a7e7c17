// Number formatting and small string utilities.
#pragma once

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

namespace quv {

/// Fixed-point text of x with `decimals` digits after the point, right-aligned in a field of
/// `width` characters (longer texts are not cut). A negative `decimals` gives the exponent
/// form with 15 significant digits instead. NaN and infinities read "NAN", "INF", "-INF".
std::string strff(double x, std::int32_t width, std::int32_t decimals);

/// Splits s at any of the delimiter characters; runs of delimiters count as one, and no empty
/// tokens are returned.
std::vector<std::string> Tokenize(std::string_view s, std::string_view delimiters = " \t");

/// Reads a name in double quotes from the stream, character by character: skips anything up
/// to the opening quote, then takes every character up to the closing quote. Returns false
/// when the stream ends before the closing quote (name then holds what was read).
bool ParseQuotedName(std::istream& stream, std::string& name);

/// The same on a string, starting at pos; pos is left behind the closing quote.
bool ParseQuotedName(std::string_view s, std::size_t& pos, std::string& name);

/// s with every occurrence of the character `from` replaced by `to`.
std::string ReplaceCharInString(std::string_view s, char from, char to);

/// s without leading and trailing blanks, tabs, CRs and LFs.
std::string TrimString(std::string_view s);

/// Reads one text line ended by LF or CR LF (the line end is not stored). Returns false only
/// when the stream held no more characters.
bool ReadTextLine(std::istream& stream, std::string& line);

/// Line end written to text files: CR LF on every platform.
inline constexpr std::string_view kTextLineEnd = "\r\n";

}  // namespace quv
