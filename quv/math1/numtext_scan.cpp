// Matchers of the number grammars, and the scanners and validators built on them.
//
// A matcher looks at s from a 0-based start, returns how many characters form a number there
// (0 when none does) and delivers its value. Scanners and validators are thin wrappers, so
// that the two can never disagree about what a number text is.
#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <system_error>

#include "quv/math1/numtext.h"
#include "quv/math1/numtext_digits.h"

namespace quv {
namespace {

bool IsBlank(char c) {
  return c == ' ' || c == '\t';
}
bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

std::size_t SkipBlanks(std::string_view s, std::size_t at) {
  while (at < s.size() && IsBlank(s[at]))
    ++at;
  return at;
}

std::size_t SkipDigits(std::string_view s, std::size_t at) {
  while (at < s.size() && IsDigit(s[at]))
    ++at;
  return at;
}

// Integer grammar: blank* [sign] digit+ blank*, the sign only in base 10. Values beyond the
// range (Integer for base 10, 32-bit pattern otherwise) make the text no number.
std::size_t MatchInteger(std::string_view s, std::size_t start, int base, std::int32_t& value) {
  std::size_t at = SkipBlanks(s, start);
  bool negative = false;
  if (base == 10 && at < s.size() && (s[at] == '+' || s[at] == '-')) {
    negative = s[at] == '-';
    ++at;
  }
  const std::uint64_t limit = base != 10 ? std::numeric_limits<std::uint32_t>::max()
                              : negative ? std::uint64_t{1} << 31
                                         : std::numeric_limits<std::int32_t>::max();
  const std::size_t first = at;
  std::uint64_t magnitude = 0;
  bool overflow = false;
  for (int d = 0; at < s.size() && (d = detail::DigitValue(s[at], base)) >= 0; ++at) {
    // Keep consuming digits after an overflow so that the whole run is rejected, not cut.
    if (!overflow) magnitude = magnitude * static_cast<std::uint64_t>(base) + d;
    overflow = overflow || magnitude > limit;
  }
  if (at == first || overflow) return 0;
  if (base == 10) {
    const auto wide = static_cast<std::int64_t>(magnitude);
    value = static_cast<std::int32_t>(negative ? -wide : wide);
  } else {
    value = static_cast<std::int32_t>(static_cast<std::uint32_t>(magnitude));
  }
  return SkipBlanks(s, at) - start;
}

bool IsSeparator(char c, std::int32_t decSep) {
  switch (decSep) {
    case dsComma:
      return c == ',';
    case dsBoth:
      return c == '.' || c == ',';
    default:
      return c == '.';
  }
}

// Converts the parts of a matched floating-point text. Returns false when the value lies
// beyond the double range; one below the subnormals becomes a zero of its sign.
bool ConvertFloat(bool negative, std::string_view intDigits, std::string_view fracDigits,
                  bool expNegative, std::string_view expDigits, double& value) {
  std::string text;
  text.reserve(intDigits.size() + fracDigits.size() + expDigits.size() + 5);
  if (negative) text.push_back('-');
  text.append(intDigits.empty() ? "0" : intDigits);
  if (!fracDigits.empty()) text.append(".").append(fracDigits);
  if (!expDigits.empty()) text.append(expNegative ? "e-" : "e").append(expDigits);

  double result = 0;
  const auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), result);
  if (ec == std::errc()) {
    value = result;
    return end == text.data() + text.size();
  }
  if (ec != std::errc::result_out_of_range) return false;
  // Out of range: decide between overflow and underflow by the decimal exponent of the
  // leading significant digit, counted with saturation so that huge exponents stay safe.
  const std::size_t lead = intDigits.find_first_not_of('0');
  std::int64_t position = 0;
  if (lead != std::string_view::npos) {
    position = static_cast<std::int64_t>(intDigits.size() - lead);
  } else {
    const std::size_t fracLead = fracDigits.find_first_not_of('0');
    if (fracLead == std::string_view::npos) {
      value = negative ? -0.0 : 0.0;
      return true;
    }
    position = -static_cast<std::int64_t>(fracLead);
  }
  std::int64_t exponent = 0;
  for (char c : expDigits) {
    exponent = std::min<std::int64_t>(exponent * 10 + (c - '0'), std::int64_t{1} << 40);
  }
  if (expNegative) exponent = -exponent;
  if (position + exponent > 0) return false;  // overflow
  value = negative ? -0.0 : 0.0;
  return true;
}

// Floating-point grammar (see numtext_scan.h).
std::size_t MatchFloat(std::string_view s, std::size_t start, bool allowExponent,
                       std::int32_t decSep, double& value) {
  std::size_t at = SkipBlanks(s, start);
  bool negative = false;
  if (at < s.size() && (s[at] == '+' || s[at] == '-')) {
    negative = s[at] == '-';
    ++at;
  }
  const std::size_t intBegin = at;
  at = SkipDigits(s, at);
  const std::string_view intDigits = s.substr(intBegin, at - intBegin);
  std::string_view fracDigits;
  if (at < s.size() && IsSeparator(s[at], decSep)) {
    const std::size_t fracBegin = at + 1;
    const std::size_t fracEnd = SkipDigits(s, fracBegin);
    // A lone separator is no number; "5." and ".5" are.
    if (!intDigits.empty() || fracEnd > fracBegin) {
      fracDigits = s.substr(fracBegin, fracEnd - fracBegin);
      at = fracEnd;
    }
  }
  if (intDigits.empty() && fracDigits.empty()) return 0;

  bool expNegative = false;
  std::string_view expDigits;
  if (allowExponent && at < s.size() && (s[at] == 'e' || s[at] == 'E')) {
    std::size_t expAt = at + 1;
    bool sign = false;
    if (expAt < s.size() && (s[expAt] == '+' || s[expAt] == '-')) {
      sign = s[expAt] == '-';
      ++expAt;
    }
    const std::size_t expEnd = SkipDigits(s, expAt);
    if (expEnd > expAt) {  // an incomplete exponent is not part of the number
      expNegative = sign;
      expDigits = s.substr(expAt, expEnd - expAt);
      at = expEnd;
    }
  }
  if (!ConvertFloat(negative, intDigits, fracDigits, expNegative, expDigits, value)) return 0;
  return SkipBlanks(s, at) - start;
}

// Unsigned number of the degree grammar: digit+ ["." digit+].
std::size_t MatchDegreePart(std::string_view s, std::size_t start, double& value) {
  const std::size_t intEnd = SkipDigits(s, start);
  if (intEnd == start) return 0;
  std::size_t end = intEnd;
  if (end < s.size() && s[end] == '.') {
    const std::size_t fracEnd = SkipDigits(s, end + 1);
    if (fracEnd > end + 1) end = fracEnd;
  }
  return MatchFloat(s.substr(0, end), start, false, dsPoint, value);
}

// Degree grammar (see numtext_scan.h). format receives the TDegreeFormat ordinal.
std::size_t MatchDegrees(std::string_view s, std::size_t start, bool checkRanges, double& value,
                         std::int32_t& format) {
  std::size_t at = SkipBlanks(s, start);
  bool negative = false;
  if (at < s.size() && (s[at] == '+' || s[at] == '-')) {
    negative = s[at] == '-';
    ++at;
  }
  double degrees = 0;
  const std::size_t degLength = MatchDegreePart(s, at, degrees);
  if (degLength == 0) return 0;
  at += degLength;
  Extended angle = degrees;
  std::int32_t found = dfDecDegrees;

  // Minutes, then seconds, each taken only when complete with its mark.
  double minutes = 0;
  std::size_t next = SkipBlanks(s, at);
  std::size_t length = MatchDegreePart(s, next, minutes);
  if (length > 0 && next + length < s.size() && s[next + length] == '\'') {
    if (checkRanges && minutes >= 60) return 0;
    angle += static_cast<Extended>(minutes) / 60;
    at = next + length + 1;
    found = dfDegMin;
    double seconds = 0;
    next = SkipBlanks(s, at);
    length = MatchDegreePart(s, next, seconds);
    if (length > 0 && next + length < s.size() && s[next + length] == '"') {
      if (checkRanges && seconds >= 60) return 0;
      angle += static_cast<Extended>(seconds) / 3600;
      at = next + length + 1;
      found = dfDegMinSec;
    }
  }
  value = static_cast<double>(negative ? -angle : angle);
  format = found;
  return SkipBlanks(s, at) - start;
}

// Runs a matcher at the 1-based Pos and moves Pos behind what it read.
template <class T, class Matcher>
T ScanAt(std::string_view s, std::int32_t& Pos, Matcher&& match) {
  if (Pos < 1 || static_cast<std::size_t>(Pos) > s.size()) return T{};
  T value{};
  const std::size_t length = match(static_cast<std::size_t>(Pos) - 1, value);
  if (length == 0) return T{};
  Pos += static_cast<std::int32_t>(length);
  return value;
}

// A text is valid when the matcher, started at its beginning, reads all of it.
template <class T, class Matcher>
bool ReadsWhole(std::string_view s, Matcher&& match) {
  T value{};
  return !s.empty() && match(0, value) == s.size();
}

auto IntegerMatcher(std::string_view s, int base) {
  return [s, base](std::size_t start, std::int32_t& value) {
    return MatchInteger(s, start, base, value);
  };
}

auto FloatMatcher(std::string_view s, bool allowExponent, std::int32_t decSep) {
  return [s, allowExponent, decSep](std::size_t start, double& value) {
    return MatchFloat(s, start, allowExponent, decSep, value);
  };
}

}  // namespace

std::int32_t ScanHex(std::string_view s, std::int32_t& Pos) {
  return ScanAt<std::int32_t>(s, Pos, IntegerMatcher(s, 16));
}

std::int32_t ScanOctal(std::string_view s, std::int32_t& Pos) {
  return ScanAt<std::int32_t>(s, Pos, IntegerMatcher(s, 8));
}

std::int32_t ScanBin(std::string_view s, std::int32_t& Pos) {
  return ScanAt<std::int32_t>(s, Pos, IntegerMatcher(s, 2));
}

std::int32_t ScanDecimal(std::string_view s, std::int32_t& Pos) {
  return ScanAt<std::int32_t>(s, Pos, IntegerMatcher(s, 10));
}

double ScanFPNum(std::string_view s, bool AllowExponent, std::int32_t DecSep, std::int32_t& Pos) {
  return ScanAt<double>(s, Pos, FloatMatcher(s, AllowExponent, DecSep));
}

double ScanDegrees(std::string_view s, std::int32_t& Pos, bool CheckRanges, std::int32_t& Format) {
  std::int32_t found = kScanDegreesNone;
  const double angle = ScanAt<double>(s, Pos, [&](std::size_t start, double& value) {
    return MatchDegrees(s, start, CheckRanges, value, found);
  });
  Format = found;
  return angle;
}

bool IsValidDouble(std::string_view s, bool AllowExponent, TDecPSep DecSep) {
  return ReadsWhole<double>(s, FloatMatcher(s, AllowExponent, DecSep));
}

bool IsValidFPNum(std::string_view s, TDecPSep DecSep) {
  return IsValidDouble(s, true, DecSep);
}

bool IsValidHex(std::string_view s) {
  return ReadsWhole<std::int32_t>(s, IntegerMatcher(s, 16));
}

bool IsValidOct(std::string_view s) {
  return ReadsWhole<std::int32_t>(s, IntegerMatcher(s, 8));
}

bool IsValidBin(std::string_view s) {
  return ReadsWhole<std::int32_t>(s, IntegerMatcher(s, 2));
}

bool IsValidDecInt(std::string_view s) {
  return ReadsWhole<std::int32_t>(s, IntegerMatcher(s, 10));
}

std::int32_t StrToIntDefault(std::string_view s, std::int32_t Default) {
  std::int32_t value = 0;
  return !s.empty() && MatchInteger(s, 0, 10, value) == s.size() ? value : Default;
}

}  // namespace quv
