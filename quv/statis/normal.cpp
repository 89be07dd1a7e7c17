// Normal distribution: the density, the distribution function through the incomplete gamma
// function, and the quantile from the rational approximation of Abramowitz and Stegun 26.2.23
// refined by bisection.
#include "quv/statis/normal.h"

#include <cmath>

#include "quv/statis/gamma_beta.h"

namespace quv {

namespace detail {

long double NDistriIntegralExt(long double x) {
  const long double g = IncompleteGammaExt(0.5L * x * x, 0.5L);
  return x > 0 ? 0.5L * (1 + g) : 0.5L * (1 - g);
}

}  // namespace detail

double nDistriDensity(double x) {
  const long double xe = x;
  return static_cast<double>(std::exp(-0.5L * xe * xe) * 0.3989422804014327L);
}

double nDistriIntegral(double x) {
  return static_cast<double>(detail::NDistriIntegralExt(x));
}

double nDistriQuantile(double p) {
  if (!(p > 0 && p < 1)) return 0;  // also NaN
  const long double pe = p;
  // The rational start value needs ln(1 - q) with q = max(p, 1 - p); 1 - q is the smaller tail
  // itself, taken directly so that tiny p keep their value instead of rounding 1 - (1 - p) to 0.
  const long double tail = pe >= 0.5L ? 1 - pe : pe;
  const long double t = std::sqrt(-2 * std::log(tail));
  long double z0 = t - (2.515517L + 0.802853L * t + 0.010328L * t * t) /
                           (1 + 1.432788L * t + 0.189269L * t * t + 0.001308L * t * t * t);
  if (p < 0.5) z0 = -z0;
  long double w = std::fabs(z0);
  if (w < 0.1L) w = 0.1L;
  long double lo = z0 - 0.1L * w;
  long double hi = z0 + 0.1L * w;
  long double mid = 0;
  // The bracket is deliberately never widened: the start value is trusted to lie within 10 %
  // of the answer. The search also ends when the bracket can no longer shrink, which happens
  // when Phi is too coarse to meet the relative criterion (p below about 1e-9).
  for (;;) {
    mid = (lo + hi) / 2;
    if (mid == lo || mid == hi) break;
    const long double prob = detail::NDistriIntegralExt(mid);
    if (prob <= pe)
      lo = mid;
    else
      hi = mid;
    if (std::fabs(prob - pe) / pe < 1e-8L) break;
  }
  return static_cast<double>(mid);
}

double ConfidenceInterval(double Alpha, double StdDev, std::int32_t NumData) {
  return static_cast<double>(static_cast<long double>(nDistriQuantile(1 - 0.5 * Alpha)) * StdDev /
                             std::sqrt(static_cast<long double>(NumData)));
}

double WeibullDensity(double x, double Shape, double Scale) {
  if (!(x > 0 && Scale > 0)) return 0;
  const long double xe = x;
  const long double k = Shape;
  const long double lambda = Scale;
  const long double xPow = std::exp((k - 1) * std::log(xe));
  const long double scalePow = std::exp(k * std::log(lambda));
  const long double ratioPow = std::exp(k * std::log(xe / lambda));
  return static_cast<double>(k * xPow / scalePow * std::exp(-ratioPow));
}

}  // namespace quv
