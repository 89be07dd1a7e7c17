// Discrete distributions: hypergeometric, binomial and the Mann-Whitney U statistic.
#pragma once

#include <cstdint>

namespace quv {

/// Probability of x successes in a sample of NSample drawn without replacement from NPop
/// items of which round(NPop p) (ties to even) are successes, through LnGamma; 0 for
/// infeasible x. Raises EQUVStatisError, checked in this order:
/// "HyperGeoDistriDensity: probability p must be between 0.0 and 1.0" (also NaN),
/// "HyperGeoDistriDensity: npop must be greater than 0",
/// "HyperGeoDistriDensity: nsample must not be greater than npop",
/// "HyperGeoDistriDensity: nsample must not be less than 1".
double HyperGeoDistriDensity(double p, std::int32_t NPop, std::int32_t NSample, std::int32_t x);

/// Binomial probability P(X = k) of k successes in n trials with success probability p.
/// 0 for k outside 0..n, n < 0, or p outside [0, 1] (NaN included).
double BinomDistriDensity(std::int32_t k, double p, std::int32_t n);

/// Binomial distribution function P(X <= k); 0 for k < 0, 1 for k >= n; 0 for n < 0 or p
/// outside [0, 1] (NaN included).
double BinomDistriIntegral(std::int32_t k, double p, std::int32_t n);

/// Binomial upper tail P(X > k), computed directly so that small tails keep their relative
/// accuracy (about 1e-13); 1 for k < 0, 0 for k >= n; 0 for n < 0 or p outside [0, 1].
double BinomDistriUpperTail(std::int32_t k, double p, std::int32_t n);

/// Binomial quantile: the smallest k in 0..n with P(X <= k) >= Alpha for n trials with success
/// probability p. Returns k and stores P(X <= k) in CumProb. Returns -1 and leaves CumProb
/// alone for n < 0, p or Alpha outside [0, 1] (NaN included).
std::int32_t BinomDistriQuantile(std::int32_t n, double p, double Alpha, double& CumProb);

/// Probability P(U = u) of the Mann-Whitney statistic U (the number of pairs in which the
/// value of the first sample exceeds that of the second) for samples of sizes n1 and n2 drawn
/// from one continuous distribution (no ties). 0 for u outside 0..n1 n2, n1 < 1 or n2 < 1.
/// Exact while min(u, n1 n2 - u) <= 4e6 and min(n1, n2) times it stays below 1e8, else the
/// normal approximation with continuity correction.
double UDistriDensity(std::int32_t n1, std::int32_t n2, std::int32_t u);

/// Distribution function P(U <= u) of the Mann-Whitney statistic (see UDistriDensity); 0 for
/// u < 0, 1 for u >= n1 n2, 0 for n1 < 1 or n2 < 1.
double UDistriIntegral(std::int32_t n1, std::int32_t n2, std::int32_t u);

/// Upper tail P(U > u) of the Mann-Whitney statistic (see UDistriDensity), computed as the
/// lower tail of the mirrored statistic so that small tails keep their digits; 1 for u < 0,
/// 0 for u >= n1 n2, 0 for n1 < 1 or n2 < 1.
double UDistriUpperTail(std::int32_t n1, std::int32_t n2, std::int32_t u);

/// Mann-Whitney quantile: the smallest u with P(U <= u) >= Alpha; -1 for n1 < 1, n2 < 1 or
/// Alpha outside [0, 1] (NaN included).
double UDistriQuantile(std::int32_t n1, std::int32_t n2, double Alpha);

}  // namespace quv
