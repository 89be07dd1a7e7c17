// Engineering notation, fixed-point and exponent texts, and degree notation.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "quv/base/errors.h"
#include "quv/base/strings.h"
#include "quv/math1/numtext.h"

namespace quv {
namespace {

// Prefix letters for the powers 1000^g, g = -6..4; the blank stands for g = 0.
constexpr char kPrefixLetters[] = "afpnum kMGT";
constexpr int kLowestPrefix = -6;
constexpr int kHighestPrefix = 4;

std::string PadLeft(std::string text, std::int32_t width) {
  if (width > 0 && text.size() < static_cast<std::size_t>(width))
    text.insert(0, static_cast<std::size_t>(width) - text.size(), ' ');
  return text;
}

Extended PowerOfTen(int n) {
  return std::pow(10.0L, static_cast<Extended>(n));
}

}  // namespace

std::string EEngStr(double x, std::int32_t Digits) {
  Digits = std::clamp<std::int32_t>(Digits, -9, 9);
  // A negative Digits asks for the letter in place of the decimal point.
  const bool letterForPoint = Digits < 0;
  const int digits = std::abs(Digits);
  if (x == 0) return strff(0.0, 1, digits);  // a negative zero reads as zero
  if (!std::isfinite(x)) return strff(x, 1, digits);

  const bool negative = x < 0;
  const Extended magnitude = std::fabs(static_cast<Extended>(x));
  const Extended lg = std::log10(magnitude);
  const int e = static_cast<int>(std::floor(lg));
  const int g = std::clamp(static_cast<int>(std::floor(lg / 3)), kLowestPrefix, kHighestPrefix);
  const int decimals = std::max(0, digits - (e - 3 * g));

  std::string text = strff(static_cast<double>(magnitude / PowerOfTen(3 * g)), 1, decimals);
  if (g != 0) {
    const char letter = kPrefixLetters[g - kLowestPrefix];
    const std::size_t point = text.find('.');
    if (letterForPoint && point != std::string::npos) {
      text[point] = letter;
    } else {
      text.push_back(letter);
    }
  }
  if (negative) text.insert(text.begin(), '-');
  return text;
}

std::string strf(double x, std::int32_t Width, std::int32_t Decimals) {
  return strff(x, Width, std::clamp<std::int32_t>(Decimals, 0, 340));
}

std::string MakeEFormat(double x, std::int32_t Width, std::int32_t Decimals) {
  if (!std::isfinite(x)) return strff(x, Width, 0);
  const int decimals = std::clamp<std::int32_t>(Decimals, 0, 30);
  char buffer[64];
  std::snprintf(buffer, sizeof buffer, "%.*E", decimals, x);
  return PadLeft(buffer, Width);
}

std::string DegreeToStr(double Angle, TDegreeFormat Format, std::int32_t Decimals) {
  if (!std::isfinite(Angle)) return strff(Angle, 0, 0);
  const int decimals = std::clamp<std::int32_t>(Decimals, 0, 9);
  const Extended unit = PowerOfTen(decimals);  // steps of the last part per whole unit
  const Extended magnitude = std::fabs(static_cast<Extended>(Angle));

  std::string text;
  Extended steps = 0;  // the angle rounded to whole steps of its last part
  switch (Format) {
    case dfDegMin: {
      steps = std::round(magnitude * 60 * unit);
      const Extended perDegree = 60 * unit;
      text = strff(static_cast<double>(std::floor(steps / perDegree)), 0, 0) + " " +
             strff(static_cast<double>(std::fmod(steps, perDegree) / unit), 0, decimals) + "'";
      break;
    }
    case dfDegMinSec: {
      steps = std::round(magnitude * 3600 * unit);
      const Extended perDegree = 3600 * unit;
      const Extended perMinute = 60 * unit;
      const Extended rest = std::fmod(steps, perDegree);
      text = strff(static_cast<double>(std::floor(steps / perDegree)), 0, 0) + " " +
             strff(static_cast<double>(std::floor(rest / perMinute)), 0, 0) + "' " +
             strff(static_cast<double>(std::fmod(rest, perMinute) / unit), 0, decimals) + "\"";
      break;
    }
    default:
      steps = std::round(magnitude * unit);
      text = strff(static_cast<double>(magnitude), 0, decimals);
      break;
  }
  if (Angle < 0 && steps != 0) text.insert(text.begin(), '-');
  return text;
}

void ConvertDegrees(double& A, double& B, double& C, TDegreeFormat FromFormat,
                    TDegreeFormat ToFormat) {
  const bool negative = std::signbit(A);
  Extended degrees = std::fabs(static_cast<Extended>(A));
  if (FromFormat == dfDegMin || FromFormat == dfDegMinSec) {
    if (!(B >= 0 && B < 60))
      RaiseFunctionError<EQUVMath1Error>("ConvertDegrees", "invalid range of minutes");
    degrees += static_cast<Extended>(B) / 60;
  }
  if (FromFormat == dfDegMinSec) {
    if (!(C >= 0 && C < 60))
      RaiseFunctionError<EQUVMath1Error>("ConvertDegrees", "invalid range of seconds");
    degrees += static_cast<Extended>(C) / 3600;
  }

  Extended a = degrees;
  Extended b = 0;
  Extended c = 0;
  if (ToFormat == dfDegMin || ToFormat == dfDegMinSec) {
    a = std::floor(degrees);
    b = (degrees - a) * 60;
  }
  if (ToFormat == dfDegMinSec) {
    const Extended minutes = b;
    b = std::floor(minutes);
    c = (minutes - b) * 60;
  }
  // A part just below 60 in extended precision may round to 60 as a double; carry it so
  // that the result is valid input again.
  if (ToFormat == dfDegMinSec && static_cast<double>(c) >= 60) {
    c = 0;
    b += 1;
  }
  if ((ToFormat == dfDegMin || ToFormat == dfDegMinSec) && static_cast<double>(b) >= 60) {
    b = 0;
    a += 1;
  }
  A = std::copysign(static_cast<double>(a), negative ? -1.0 : 1.0);
  B = static_cast<double>(b);
  C = static_cast<double>(c);
}

}  // namespace quv
