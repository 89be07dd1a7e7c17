// Elementary functions: guarded logarithms and tangents, hyperbolic functions from one
// exponential, real remainder, sign, factorial and products of consecutive integers.
//
// Inside namespace quv, an unqualified sinh, cosh, lg... call with a floating-point argument
// resolves to these double functions (a long double argument is narrowed); call std::sinh
// explicitly where the standard function is meant.
#pragma once

#include <cstdint>

#include "quv/base/types.h"

namespace quv {

/// Status results of ProductConsecInts.
inline constexpr std::int64_t kProductOverflow = -1;
inline constexpr std::int64_t kProductNegativeFactor = -2;

/// Decimal logarithm, ln x / ln 10. For x <= 0 it builds an EMathError
/// "logarithm: invalid argument", does not raise it, and returns 0.
double lg(double x);
/// Binary logarithm, ln x / ln 2; the same silent guard as lg for x <= 0.
double ld(double x);

/// Hyperbolic sine (e^x - 1/e^x) / 2, computed from one exponential.
double sinh(double x);
/// Hyperbolic cosine (e^x + 1/e^x) / 2, computed from one exponential.
double cosh(double x);
/// Hyperbolic tangent as 1 - 2 / (e^(2x) + 1).
double tgh(double x);

/// Tangent sin x / cos x. When cos x is exactly 0 it builds an EMathError "tangens overflow",
/// does not raise it, and returns 0; near pi/2 the result is simply huge.
double tg(double x);
/// Cotangent cos x / sin x; when sin x is exactly 0 it builds an EMathError
/// "cotangens overflow", does not raise it, and returns 0.
double cot(double x);

/// Real remainder frac(x / m) * m, with the sign of x. m = 0 or an infinite x gives NaN.
double modr(double x, double m);

/// 1 for x >= 0 (zero included), -1 otherwise (NaN included).
std::int32_t Signum(double x);

/// n! in extended precision, 0! = 1! = 1. Raises EQUVMath1Error "Factorial: negative
/// argument" for n < 0 and "Factorial: argument too big" for n > 1000.
Extended Factorial(std::int32_t n);

/// a * (a+1) * ... * b (the bounds may come in either order). Returns 0 when the lower bound
/// is 0, kProductNegativeFactor (-2) when it is negative and kProductOverflow (-1) when the
/// product would leave Int64.
std::int64_t ProductConsecInts(std::int32_t a, std::int32_t b);

namespace detail {
/// Builds the math error of a silent guard and discards it: the guards report failure by
/// their result 0 alone.
void DiscardMathError(const char* text);
}  // namespace detail

}  // namespace quv
