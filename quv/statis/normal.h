// The normal distribution after the library's fixed formulas, the normal confidence interval
// of a mean and the Weibull density.
#pragma once

#include <cstdint>

namespace quv {

/// Standard normal density exp(-x^2/2)/sqrt(2 pi).
double nDistriDensity(double x);

/// Standard normal distribution function Phi(x) through IncompleteGamma(x^2/2, 0.5). Its
/// series and continued fraction stop at a relative change of 1e-8, so it is good to about
/// 1e-8 relative in the centre and loses its digits in the far tails (P(X <= -9) is 4 % off),
/// and 1 - nDistriIntegral(x) rounds every upper tail below about 1e-16 to 0 or to a
/// multiple of 1.1e-16. Use nDistriLowerTail and nDistriUpperTail where digits matter.
double nDistriIntegral(double x);

/// Normal quantile by a rational start value refined with bisection on nDistriIntegral until
/// |Phi(z) - p| / p < 1e-8, or until the bracket cannot shrink any further (which ends the
/// search for p below about 1e-9, where Phi carries too few digits: at p = 1e-300 it returns
/// -33.34 instead of -37.05). 0 for p <= 0, p >= 1 and NaN. nDistriLowerTailQuantile is
/// accurate to 1e-14 relative over the whole range.
double nDistriQuantile(double p);

/// Standard normal lower tail Phi(x) = P(X <= x) to 1e-15 relative wherever the result is a
/// normal double (down to about 1e-300, x >= -37), through erfc in extended precision.
/// NaN for NaN.
double nDistriLowerTail(double x);

/// Standard normal upper tail P(X > x) = Phi(-x), with the accuracy of nDistriLowerTail.
double nDistriUpperTail(double x);

/// The x with Phi(x) = p, to 1e-14 relative for p in (1e-300, 1 - 1e-16) and beyond
/// (Newton steps on erf near the centre and on ln Phi in the tails, in extended precision).
/// -inf for p = 0, +inf for p = 1, NaN for p outside [0, 1] or NaN.
double nDistriLowerTailQuantile(double p);

/// The x with P(X > x) = q: -nDistriLowerTailQuantile(q), so that upper tails far below
/// 1e-16 can be asked for (q = 1e-300 gives 37.05).
double nDistriUpperTailQuantile(double q);

/// Half-width of the two-sided normal confidence interval of a mean:
/// nDistriQuantile(1 - Alpha/2) * StdDev / sqrt(NumData).
double ConfidenceInterval(double Alpha, double StdDev, std::int32_t NumData);

/// Weibull density Shape x^(Shape-1) / Scale^Shape exp(-(x/Scale)^Shape); 0 unless x > 0 and
/// Scale > 0.
double WeibullDensity(double x, double Shape, double Scale);

}  // namespace quv

namespace quv::detail {

/// Extended-precision body of nDistriIntegral.
long double NDistriIntegralExt(long double x);

}  // namespace quv::detail
