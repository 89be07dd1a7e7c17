// The normal distribution after the library's fixed formulas, the normal confidence interval
// of a mean and the Weibull density.
#pragma once

#include <cstdint>

namespace quv {

/// Standard normal density exp(-x^2/2)/sqrt(2 pi).
double nDistriDensity(double x);

/// Standard normal distribution function Phi(x) through IncompleteGamma(x^2/2, 0.5)
/// (accurate to about 1e-8 relative in the centre; far tails lose their digits).
double nDistriIntegral(double x);

/// Normal quantile by a rational start value refined with bisection on nDistriIntegral until
/// |Phi(z) - p| / p < 1e-8, or until the bracket cannot shrink any further (which ends the
/// search for p below about 1e-9, where Phi carries too few digits). 0 for p <= 0, p >= 1 and
/// NaN.
double nDistriQuantile(double p);

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
