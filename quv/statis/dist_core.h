// Accurate building blocks of the chi-square, t, F and binomial distributions, in extended
// precision: Loader's saddle-point forms of the Poisson and binomial terms, regularised
// incomplete gamma and beta functions that deliver both tails without cancellation, and a
// safeguarded Newton solver for quantiles. Not part of the interface.
#pragma once

#include <functional>

namespace quv::detail {

/// Both tails of a distribution with their logarithms. The smaller tail is computed directly,
/// the larger one as its complement, so that each keeps its relative accuracy.
struct TTails {
  long double lower = 0;
  long double upper = 1;
  long double logLower = 0;
  long double logUpper = 0;
};

/// ln Gamma(n + 1) - ln(sqrt(2 pi n) (n/e)^n), the error of Stirling's formula, for n > 0.
long double StirlingError(long double n);

/// Deviance term x ln(x/np) + np - x, computed without cancellation when x is close to np.
long double DevianceTerm(long double x, long double np);

/// ln(lambda^x e^-lambda / Gamma(x + 1)) for real x >= 0.
long double LogPoissonTerm(long double x, long double lambda);

/// ln(Gamma(n + 1) / (Gamma(x + 1) Gamma(n - x + 1)) p^x q^(n - x)) for real 0 <= x <= n,
/// with q = 1 - p given separately.
long double LogBinomialTerm(long double x, long double n, long double p, long double q);

/// Regularised incomplete gamma functions P(a, x) and Q(a, x) for a > 0, x >= 0.
TTails GammaTails(long double a, long double x);

/// Regularised incomplete beta function I_x(a, b) and its complement for a, b > 0, with
/// y = 1 - x given separately so that x close to 1 keeps its digits.
TTails BetaTails(long double a, long double b, long double x, long double y);

/// Standard normal tails by the library's erfc.
TTails NormalTails(long double z);

/// One evaluation for the quantile solver: h(u) and dh/du.
struct TRootEval {
  long double h = 0;
  long double dh = 0;
};

/// Finds the root of a monotone function h(u), starting at u0, by Newton steps kept inside
/// the bracket of the points seen so far (bisection where a step would leave it). Stops when a
/// step is below 1e-15 (relative 1e-15 in x = e^u), when the bracket cannot shrink any further
/// or after 300 evaluations. Returns NaN when h is NaN.
long double SolveMonotone(const std::function<TRootEval(long double)>& eval, long double u0,
                          bool increasing);

}  // namespace quv::detail
