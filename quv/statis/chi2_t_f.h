// The chi-square, Student t and F distributions: distribution functions, densities and
// quantiles, accurate to a relative error of about 1e-13 over degrees of freedom 1 .. 1e6 and
// for tails down to the smallest doubles (see dist_core.h for the methods).
//
// Markers: every function returns 0 when a degree of freedom is below 1, and each quantile
// returns 0 for p <= 0, p >= 1 or NaN, as nDistriQuantile does. A NaN x gives NaN.
//
// The upper tails P(X > x) are computed directly rather than as 1 - P(X <= x), which rounds
// every tail below about 1e-16 to 0 (chi2 with 3 degrees of freedom at 100: 1.55e-21): use
// the *UpperTail functions for p-values.
#pragma once

#include <cstdint>

namespace quv {

/// Chi-square distribution function P(X <= x) with DegFree degrees of freedom; 0 for x <= 0.
double chi2DistriIntegral(double x, std::int32_t DegFree);

/// Chi-square upper tail P(X > x) to about 1e-13 relative; 1 for x <= 0.
double chi2DistriUpperTail(double x, std::int32_t DegFree);

/// Chi-square density at x; 0 for x < 0 (at x = 0: infinite for 1, 0.5 for 2, else 0).
double Chi2DistriDensity(double x, std::int32_t DegFree);

/// Chi-square quantile: the x with P(X <= x) = p.
double chi2DistriQuantile(double p, std::int32_t DegFree);

/// Student t distribution function P(T <= x) with DegFree degrees of freedom.
double tDistriIntegral(double x, std::int32_t DegFree);

/// Student t upper tail P(T > x) to about 1e-13 relative.
double tDistriUpperTail(double x, std::int32_t DegFree);

/// Student t density at x.
double tDistriDensity(double x, std::int32_t DegFree);

/// Student t quantile: the x with P(T <= x) = p (negative for p < 0.5).
double tDistriQuantile(double p, std::int32_t DegFree);

/// F density at x with DegFree1 (numerator) and DegFree2 (denominator) degrees of freedom;
/// 0 for x < 0 (at x = 0: infinite for DegFree1 = 1, 1 for 2, else 0).
double FDistriDensity(double x, std::int32_t DegFree1, std::int32_t DegFree2);

/// F distribution function P(F <= x); 0 for x <= 0.
double FDistriIntegral(double x, std::int32_t DegFree1, std::int32_t DegFree2);

/// F upper tail P(F > x) to about 1e-13 relative; 1 for x <= 0.
double FDistriUpperTail(double x, std::int32_t DegFree1, std::int32_t DegFree2);

/// F quantile: the x with P(F <= x) = p.
double FDistriQuantile(double p, std::int32_t DegFree1, std::int32_t DegFree2);

}  // namespace quv
