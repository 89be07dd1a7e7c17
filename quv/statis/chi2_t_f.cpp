// Chi-square, t and F distributions on the accurate kernels of dist_core: the chi-square
// distribution is the incomplete gamma function P(df/2, x/2), t and F are incomplete beta
// functions, the densities are Loader's saddle-point forms. Quantiles solve ln(tail) = ln(p)
// on the tail that p lies in, in the variable u = ln x, by safeguarded Newton steps; ln(tail)
// is concave in u for these distributions, so the steps approach the root monotonically.
#include "quv/statis/chi2_t_f.h"

#include <cmath>
#include <limits>

#include "quv/statis/dist_core.h"

namespace quv {

namespace {

using detail::TRootEval;
using detail::TTails;

constexpr long double kLn2Pi = 1.837877066409345483560659472811235279723L;
constexpr long double kInf = std::numeric_limits<long double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

bool ValidProbability(double p) {
  return p > 0 && p < 1;
}

// Solves the quantile of a positive variable from its tails and log density in x = e^u.
// The tail solved is the lower one when `lower`, else the upper one; logTarget is ln of the
// probability it must reach.
template <class Tails, class LogDensity>
long double PositiveQuantile(bool lower, long double logTarget, long double u0, Tails tails,
                             LogDensity logDensity) {
  const long double target = logTarget;
  const long double u = detail::SolveMonotone(
      [&](long double uu) {
        const long double x = std::exp(uu);
        const TTails t = tails(x);
        const long double logTail = lower ? t.logLower : t.logUpper;
        const long double slope = std::exp(logDensity(x) + uu - logTail);
        return TRootEval{logTail - target, lower ? slope : -slope};
      },
      u0, lower);
  return std::exp(u);
}

// The tail that p lies in and ln of its probability; 1 - p is exact for a double p >= 0.5.
bool LowerTail(double p) {
  return p < 0.5;
}
long double LogTailTarget(double p) {
  return p < 0.5 ? std::log(static_cast<long double>(p)) : std::log1p(-static_cast<long double>(p));
}

// Upper normal quantile for a tail q <= 0.5 by the rational approximation of Abramowitz and
// Stegun 26.2.23 (error below 4.5e-4): start values for the solvers below.
long double NormalUpperStart(long double q) {
  const long double t = std::sqrt(-2 * std::log(q));
  return t - (2.515517L + 0.802853L * t + 0.010328L * t * t) /
                 (1 + 1.432788L * t + 0.189269L * t * t + 0.001308L * t * t * t);
}

// ---- chi-square -------------------------------------------------------------------------

TTails Chi2Tails(long double x, long double df) {
  return detail::GammaTails(df / 2, x / 2);
}

// ln density for x > 0: the gamma density of shape a = df/2 and scale 2 as a Poisson term.
long double Chi2LogDensity(long double x, long double df) {
  const long double a = df / 2;
  if (a < 1) return detail::LogPoissonTerm(a, x / 2) + std::log(a / x);
  return detail::LogPoissonTerm(a - 1, x / 2) - std::log(2.0L);
}

// ---- t ----------------------------------------------------------------------------------

// P(T <= t) and P(T > t): the tail beyond |t| is I_x(df/2, 1/2)/2 with x = df/(df + t^2).
TTails TTailsOf(long double t, long double df) {
  const long double t2 = t * t;
  const long double x = std::isinf(t) ? 0 : df / (df + t2);
  const long double y = std::isinf(t) ? 1 : t2 / (df + t2);
  const TTails b = detail::BetaTails(df / 2, 0.5L, x, y);
  TTails r;
  const long double half = 0.5L * b.lower;
  const long double logHalf = b.logLower - std::log(2.0L);
  const long double rest = 1 - half;
  const long double logRest = std::log1p(-half);
  if (t < 0) {
    r = {half, rest, logHalf, logRest};
  } else {
    r = {rest, half, logRest, logHalf};
  }
  return r;
}

long double TLogDensity(long double t, long double df) {
  const long double c = -detail::DevianceTerm(df / 2, (df + 1) / 2) +
                        detail::StirlingError((df + 1) / 2) - detail::StirlingError(df / 2);
  const long double x2n = t * t / df;
  const long double l1p = std::log1p(x2n);
  return c - df / 2 * l1p - 0.5L * (kLn2Pi + l1p);
}

// ---- F ----------------------------------------------------------------------------------

TTails FTails(long double x, long double m, long double n) {
  if (std::isinf(x)) return detail::BetaTails(m / 2, n / 2, 1, 0);
  const long double d = m * x + n;
  return detail::BetaTails(m / 2, n / 2, m * x / d, n / d);
}

// ln density for x > 0 as a binomial term (m, n: numerator and denominator degrees).
long double FLogDensity(long double x, long double m, long double n) {
  const long double f = 1 / (n + x * m);
  const long double q = n * f;
  const long double p = x * m * f;
  if (m >= 2)
    return std::log(m * q / 2) + detail::LogBinomialTerm((m - 2) / 2, (m + n - 2) / 2, p, q);
  return std::log(m * m * q / (2 * p * (m + n))) +
         detail::LogBinomialTerm(m / 2, (m + n) / 2, p, q);
}

}  // namespace

double chi2DistriIntegral(double x, std::int32_t DegFree) {
  if (DegFree < 1) return 0;
  if (std::isnan(x)) return kNaN;
  return static_cast<double>(Chi2Tails(x, DegFree).lower);
}

double chi2DistriUpperTail(double x, std::int32_t DegFree) {
  if (DegFree < 1) return 0;
  if (std::isnan(x)) return kNaN;
  return static_cast<double>(Chi2Tails(x, DegFree).upper);
}

double Chi2DistriDensity(double x, std::int32_t DegFree) {
  if (DegFree < 1) return 0;
  if (std::isnan(x)) return kNaN;
  if (x < 0 || std::isinf(x)) return 0;
  if (x == 0) return DegFree == 1 ? static_cast<double>(kInf) : DegFree == 2 ? 0.5 : 0;
  return static_cast<double>(std::exp(Chi2LogDensity(x, DegFree)));
}

// ln of a start value for the chi-square quantile: Wilson and Hilferty's cube-root normal
// approximation, or for far lower tails P(a, x) ~ (x/2)^a / Gamma(a + 1) with a = df/2.
long double Chi2StartLog(double p, long double df) {
  const long double z =
      p < 0.5 ? -NormalUpperStart(p) : NormalUpperStart(1 - static_cast<long double>(p));
  const long double c = 2 / (9 * df);
  const long double root = 1 - c + z * std::sqrt(c);
  if (root > 0.2L) return std::log(df) + 3 * std::log(root);
  const long double a = df / 2;
  return std::log(2.0L) + (LogTailTarget(p) + std::lgamma(a + 1)) / a;
}

double chi2DistriQuantile(double p, std::int32_t DegFree) {
  if (DegFree < 1 || !ValidProbability(p)) return 0;
  const long double df = DegFree;
  return static_cast<double>(PositiveQuantile(
      LowerTail(p), LogTailTarget(p), Chi2StartLog(p, df),
      [df](long double x) { return Chi2Tails(x, df); },
      [df](long double x) { return Chi2LogDensity(x, df); }));
}

double tDistriIntegral(double x, std::int32_t DegFree) {
  if (DegFree < 1) return 0;
  if (std::isnan(x)) return kNaN;
  return static_cast<double>(TTailsOf(x, DegFree).lower);
}

double tDistriUpperTail(double x, std::int32_t DegFree) {
  if (DegFree < 1) return 0;
  if (std::isnan(x)) return kNaN;
  return static_cast<double>(TTailsOf(x, DegFree).upper);
}

double tDistriDensity(double x, std::int32_t DegFree) {
  if (DegFree < 1) return 0;
  if (std::isnan(x)) return kNaN;
  if (std::isinf(x)) return 0;
  return static_cast<double>(std::exp(TLogDensity(x, DegFree)));
}

double tDistriQuantile(double p, std::int32_t DegFree) {
  if (DegFree < 1 || !ValidProbability(p)) return 0;
  if (p == 0.5) return 0;
  const long double df = DegFree;
  // Solve for |t| on the upper tail P(T > |t|) = min(p, 1 - p), which is below 0.5.
  const long double q = p < 0.5 ? static_cast<long double>(p) : 1 - static_cast<long double>(p);
  // Start from the Cornish-Fisher expansion about the normal quantile.
  const long double z = NormalUpperStart(q);
  const long double z2 = z * z;
  const long double t0 =
      z + (z2 + 1) * z / (4 * df) + ((5 * z2 + 16) * z2 + 3) * z / (96 * df * df);
  const long double t = PositiveQuantile(
      false, std::log(q), std::log(t0), [df](long double x) { return TTailsOf(x, df); },
      [df](long double x) { return TLogDensity(x, df); });
  return static_cast<double>(p < 0.5 ? -t : t);
}

double FDistriDensity(double x, std::int32_t DegFree1, std::int32_t DegFree2) {
  if (DegFree1 < 1 || DegFree2 < 1) return 0;
  if (std::isnan(x)) return kNaN;
  if (x < 0 || std::isinf(x)) return 0;
  if (x == 0) return DegFree1 == 1 ? static_cast<double>(kInf) : DegFree1 == 2 ? 1 : 0;
  return static_cast<double>(std::exp(FLogDensity(x, DegFree1, DegFree2)));
}

double FDistriIntegral(double x, std::int32_t DegFree1, std::int32_t DegFree2) {
  if (DegFree1 < 1 || DegFree2 < 1) return 0;
  if (std::isnan(x)) return kNaN;
  if (x <= 0) return 0;
  return static_cast<double>(FTails(x, DegFree1, DegFree2).lower);
}

double FDistriUpperTail(double x, std::int32_t DegFree1, std::int32_t DegFree2) {
  if (DegFree1 < 1 || DegFree2 < 1) return 0;
  if (std::isnan(x)) return kNaN;
  if (x <= 0) return 1;
  return static_cast<double>(FTails(x, DegFree1, DegFree2).upper);
}

double FDistriQuantile(double p, std::int32_t DegFree1, std::int32_t DegFree2) {
  if (DegFree1 < 1 || DegFree2 < 1 || !ValidProbability(p)) return 0;
  const long double m = DegFree1;
  const long double n = DegFree2;
  return static_cast<double>(PositiveQuantile(
      LowerTail(p), LogTailTarget(p), 0, [m, n](long double x) { return FTails(x, m, n); },
      [m, n](long double x) { return FLogDensity(x, m, n); }));
}

}  // namespace quv
