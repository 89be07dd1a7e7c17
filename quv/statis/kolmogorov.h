// The one-sample Kolmogorov-Smirnov statistic D_n and the Lilliefors statistic: p-values,
// tabulated critical values and quantiles.
#pragma once

#include <cstdint>

#include "quv/statis/statis_types.h"

namespace quv {

/// P(D_n >= d) of the one-sample Kolmogorov-Smirnov statistic (Marsaglia, Tsang and Wang 2003):
/// for s = n d^2 > 7.24, or s > 3.76 with n > 99, the closed form
/// 2 exp(-(2.000071 + 0.331/sqrt(n) + 1.409/n) s); otherwise the n-th power of a
/// (2 floor(n d) + 1)-square matrix. Where that matrix would exceed order 201 (large n with
/// small s) the limiting distribution with Stephens' correction, at lambda =
/// (sqrt(n) + 0.12 + 0.11/sqrt(n)) d, replaces it. 1 for d <= 0, 0 for d >= 1, -1 for n < 1,
/// NaN for NaN d.
double KSPValue(std::int32_t n, double d);

/// Critical value of D_n at Level: from the table for 1 <= n <= 20, else c/sqrt(n) with
/// c = 1.073, 1.138, 1.224, 1.358, 1.628 for Dot20 .. Dot01. -1 for a Level outside the
/// enumeration (on both branches, so that the table is never read out of range).
double KolmogSmir1SampleTestStat(std::int32_t n, TSignifLevel Level);

/// Critical value of D_n at Level refined against KSPValue: d = d (1 + delta) while
/// |delta| = |KSPValue(n, d) - alpha| > 1e-4; the loop also ends when d stops changing or
/// after 1000 steps. -1 for n < 1 or a Level outside the enumeration.
double KSQuantile(std::int32_t n, TSignifLevel Level);

/// Approximate p-value of the Lilliefors statistic d for n data (Dallal and Wilkinson 1986);
/// -1 for n <= 5.
double LillieforsPValue(std::int32_t n, double d);

/// Approximate critical value of the Lilliefors statistic for n data at significance Alpha,
/// 1/sqrt(n A(1 - Alpha) + B(1 - Alpha)) with two fitted polynomials of degree 6.
double LillieforsQuantile(std::int32_t n, double Alpha);

}  // namespace quv
