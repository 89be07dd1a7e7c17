// Special functions of the statistics unit: logarithmic gamma, regularised incomplete gamma and
// beta functions, binomial coefficients, error functions and Fisher's transforms.
//
// These follow short classical formulas (a six-term Lanczos series, series and continued
// fractions stopped at a relative change of 1e-8) and are accurate to about 1e-8 to 1e-10; the
// chi-square, t, F and binomial distributions use their own accurate routines instead.
// Arithmetic is carried out in extended precision and rounded to double at the end.
#pragma once

#include <cstdint>

namespace quv {

/// ln Gamma(x) by a six-term Lanczos series (relative error about 2e-10); 0 for x <= 0 or NaN.
double LnGamma(double x);

/// Regularised lower incomplete gamma function P(a, x); 0 for x <= 0 or a <= 0. Series for
/// x < a + 1, else a continued fraction of at most 99 steps; both stop at a relative change
/// of 1e-8. The series has no step limit of its own; a guard of 1e6 terms ends it where it
/// cannot converge in time (x close to a beyond about a = 1e10, or a infinite).
double IncompleteGamma(double x, double a);

/// Regularised incomplete beta function I_x(a, b); 0 for x < 0 and 1 for x > 1. A continued
/// fraction of at most 100 steps that stops at a relative change of 1e-8.
double IncompleteBeta(double x, double a, double b);

/// ln Gamma(a) + ln Gamma(b) - ln Gamma(a + b) for a >= 0 and b >= 0 (LnGamma(0) counting as
/// 0), else 0.
double LnBeta(double a, double b);

/// Binomial coefficient n over k; 0 unless 0 <= k <= n; -1 when it exceeds 2147483647.
std::int32_t BinomCoeff(std::int32_t n, std::int32_t k);

/// Natural logarithm of the binomial coefficient n over k; -1 unless 0 <= k <= n.
double LnBinomCoeff(std::int32_t n, std::int32_t k);

/// Error function through IncompleteGamma(x^2, 0.5).
double Erf(double x);

/// Error function by a fixed Chebyshev-type fit (fractional error below 1.2e-7).
double ErfApprox(double x);

/// Fisher's z transform 0.5 ln((1 + r)/(1 - r)). Raises EQUVStatisError
/// "FisherTransform: argument out of range" unless -1 < r < 1 (NaN included).
double FisherTransform(double r);

/// Inverse of Fisher's transform, (e^2z - 1)/(e^2z + 1), that is tanh z.
double FisherTransformInv(double z);

/// Fisher's discrimination ratio (Mean1 - Mean2)^2 / (StdDev1^2 + StdDev2^2), the denominator
/// raised to 1e-6 when smaller.
double CalcFishQ(double Mean1, double Mean2, double StdDev1, double StdDev2);

}  // namespace quv

namespace quv::detail {

/// Extended-precision bodies of LnGamma and IncompleteGamma, for callers that keep
/// intermediate results in extended precision.
long double LnGammaExt(long double x);
long double IncompleteGammaExt(long double x, long double a);

}  // namespace quv::detail
