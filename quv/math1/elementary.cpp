#include "quv/math1/elementary.h"

#include <cmath>
#include <limits>
#include <utility>

#include "quv/base/constants.h"
#include "quv/base/errors.h"

namespace quv {

namespace detail {
void DiscardMathError(const char* text) {
  const EMathError discarded(text);
  static_cast<void>(discarded);
}
}  // namespace detail

namespace {
constexpr const char* kLogInvalid = "logarithm: invalid argument";
}  // namespace

double lg(double x) {
  if (x <= 0.0) {
    detail::DiscardMathError(kLogInvalid);
    return 0.0;
  }
  return static_cast<double>(std::log(static_cast<Extended>(x)) / uc_Ln10);
}

double ld(double x) {
  if (x <= 0.0) {
    detail::DiscardMathError(kLogInvalid);
    return 0.0;
  }
  return static_cast<double>(std::log(static_cast<Extended>(x)) / uc_Ln2);
}

double sinh(double x) {
  const Extended e = std::exp(static_cast<Extended>(x));
  return static_cast<double>((e - 1.0L / e) / 2.0L);
}

double cosh(double x) {
  const Extended e = std::exp(static_cast<Extended>(x));
  return static_cast<double>((e + 1.0L / e) / 2.0L);
}

double tgh(double x) {
  const Extended e2 = std::exp(2.0L * static_cast<Extended>(x));
  return static_cast<double>(1.0L - 2.0L / (e2 + 1.0L));
}

double tg(double x) {
  const Extended c = std::cos(static_cast<Extended>(x));
  if (c == 0.0L) {
    detail::DiscardMathError("tangens overflow");
    return 0.0;
  }
  return static_cast<double>(std::sin(static_cast<Extended>(x)) / c);
}

double cot(double x) {
  const Extended s = std::sin(static_cast<Extended>(x));
  if (s == 0.0L) {
    detail::DiscardMathError("cotangens overflow");
    return 0.0;
  }
  return static_cast<double>(std::cos(static_cast<Extended>(x)) / s);
}

double modr(double x, double m) {
  const Extended q = static_cast<Extended>(x) / static_cast<Extended>(m);
  return static_cast<double>((q - std::trunc(q)) * static_cast<Extended>(m));
}

std::int32_t Signum(double x) {
  return x >= 0.0 ? 1 : -1;
}

Extended Factorial(std::int32_t n) {
  if (n < 0) RaiseFunctionError<EQUVMath1Error>("Factorial", "negative argument");
  if (n > 1000) RaiseFunctionError<EQUVMath1Error>("Factorial", "argument too big");
  Extended f = 1.0L;
  for (std::int32_t i = 2; i <= n; ++i)
    f *= i;
  return f;
}

std::int64_t ProductConsecInts(std::int32_t a, std::int32_t b) {
  if (a > b) std::swap(a, b);
  if (a == 0) return 0;
  if (a < 0) return kProductNegativeFactor;
  // Product < guard keeps the next multiplication (by at most b) inside Int64.
  const std::int64_t guard = uc_MaxInt64 / b;
  std::int64_t product = 1;
  std::int64_t i = static_cast<std::int64_t>(a) - 1;
  while (product < guard && i < b) {
    ++i;
    product *= i;
  }
  return i < b ? kProductOverflow : product;
}

}  // namespace quv
