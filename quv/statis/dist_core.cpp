// Accurate distribution kernels in extended precision.
//
// The Poisson and binomial terms follow C. Loader, "Fast and accurate computation of binomial
// probabilities" (2000): Stirling's error and the deviance term replace differences of large
// logarithms of gamma functions, so that the terms keep their relative accuracy for parameters
// up to millions. The incomplete gamma function uses its power series below x = a + 1 and
// Legendre's continued fraction above; the incomplete beta function uses its continued fraction
// on the side of (a + 1)/(a + b + 2) where it converges fast (both evaluated by the modified
// Lentz method, Press et al., Numerical Recipes 6.2 and 6.4). Each computes the tail on its own
// side directly and the other as the complement, so that small tails never suffer cancellation.
#include "quv/statis/dist_core.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace quv::detail {

namespace {

constexpr long double kLnSqrt2Pi = 0.918938533204672741780329736405617639861L;
constexpr long double kLn2Pi = 1.837877066409345483560659472811235279723L;
constexpr long double kEps = std::numeric_limits<long double>::epsilon();
constexpr long double kTiny = 1e-4000L;
constexpr long double kInf = std::numeric_limits<long double>::infinity();
// Far beyond the steps any convergent case needs (a few thousand at a = 5e5); only a guard.
constexpr long kMaxSteps = 2'000'000;

TTails FromLogLower(long double logLower) {
  TTails t;
  t.logLower = logLower;
  t.lower = std::exp(logLower);
  t.upper = -std::expm1(logLower);
  t.logUpper = std::log(t.upper);
  return t;
}

TTails FromLogUpper(long double logUpper) {
  TTails t;
  t.logUpper = logUpper;
  t.upper = std::exp(logUpper);
  t.lower = -std::expm1(logUpper);
  t.logLower = std::log(t.lower);
  return t;
}

TTails AllLower() {
  return FromLogLower(0);
}
TTails AllUpper() {
  return FromLogUpper(0);
}

long double Guarded(long double v) {
  return std::fabs(v) < kTiny ? kTiny : v;
}

// Continued fraction of I_x(a, b) without its front factor, modified Lentz method.
long double BetaFraction(long double a, long double b, long double x) {
  const long double qab = a + b;
  const long double qap = a + 1;
  const long double qam = a - 1;
  long double c = 1;
  long double d = 1 / Guarded(1 - qab * x / qap);
  long double h = d;
  for (long m = 1; m < kMaxSteps; ++m) {
    const long double em = m;
    const long double m2 = 2 * em;
    long double aa = em * (b - em) * x / ((qam + m2) * (a + m2));
    d = 1 / Guarded(1 + aa * d);
    c = Guarded(1 + aa / c);
    h *= d * c;
    aa = -(a + em) * (qab + em) * x / ((a + m2) * (qap + m2));
    d = 1 / Guarded(1 + aa * d);
    c = Guarded(1 + aa / c);
    const long double del = d * c;
    h *= del;
    if (std::fabs(del - 1) <= 2 * kEps || std::isnan(del)) break;
  }
  return h;
}

}  // namespace

long double StirlingError(long double n) {
  if (n <= 15) return std::lgamma(n + 1) - (n + 0.5L) * std::log(n) + n - kLnSqrt2Pi;
  constexpr long double kS0 = 1.0L / 12;
  constexpr long double kS1 = 1.0L / 360;
  constexpr long double kS2 = 1.0L / 1260;
  constexpr long double kS3 = 1.0L / 1680;
  constexpr long double kS4 = 1.0L / 1188;
  const long double nn = n * n;
  return (kS0 - (kS1 - (kS2 - (kS3 - kS4 / nn) / nn) / nn) / nn) / n;
}

long double DevianceTerm(long double x, long double np) {
  if (x == 0) return np;
  if (std::fabs(x - np) < 0.1L * (x + np)) {
    long double v = (x - np) / (x + np);
    long double s = (x - np) * v;
    long double ej = 2 * x * v;
    const long double v2 = v * v;
    for (int j = 1; j < 1000; ++j) {
      ej *= v2;
      const long double s1 = s + ej / (2 * j + 1);
      if (s1 == s) return s1;
      s = s1;
    }
    return s;
  }
  return x * std::log(x / np) + np - x;
}

long double LogPoissonTerm(long double x, long double lambda) {
  if (lambda == 0) return x == 0 ? 0 : -kInf;
  if (!std::isfinite(lambda) || x < 0) return -kInf;
  if (x == 0) return -lambda;
  if (lambda < x * std::numeric_limits<long double>::min())
    return -lambda + x * std::log(lambda) - std::lgamma(x + 1);
  return -StirlingError(x) - DevianceTerm(x, lambda) - 0.5L * (kLn2Pi + std::log(x));
}

long double LogBinomialTerm(long double x, long double n, long double p, long double q) {
  if (p == 0) return x == 0 ? 0 : -kInf;
  if (q == 0) return x == n ? 0 : -kInf;
  if (x == 0) {
    if (n == 0) return 0;
    return p < 0.1L ? -DevianceTerm(n, n * q) - n * p : n * std::log(q);
  }
  if (x == n) return q < 0.1L ? -DevianceTerm(n, n * p) - n * q : n * std::log(p);
  if (x < 0 || x > n) return -kInf;
  const long double lc = StirlingError(n) - StirlingError(x) - StirlingError(n - x) -
                         DevianceTerm(x, n * p) - DevianceTerm(n - x, n * q);
  const long double lf = kLn2Pi + std::log(x) + std::log1p(-x / n);
  return lc - 0.5L * lf;
}

TTails GammaTails(long double a, long double x) {
  if (x <= 0) return AllUpper();
  if (std::isinf(x)) return AllLower();
  const long double logFront = LogPoissonTerm(a, x);  // x^a e^-x / Gamma(a + 1)
  if (x < a + 1) {
    long double sum = 1;
    long double term = 1;
    for (long n = 1; n < kMaxSteps; ++n) {
      term *= x / (a + n);
      sum += term;
      if (term <= sum * kEps) break;
    }
    return FromLogLower(logFront + std::log(sum));
  }
  long double b = x + 1 - a;
  long double c = 1 / kTiny;
  long double d = 1 / b;
  long double h = d;
  for (long i = 1; i < kMaxSteps; ++i) {
    const long double an = -i * (i - a);
    b += 2;
    d = 1 / Guarded(an * d + b);
    c = Guarded(b + an / c);
    const long double del = d * c;
    h *= del;
    if (std::fabs(del - 1) <= 2 * kEps || std::isnan(del)) break;
  }
  return FromLogUpper(logFront + std::log(a) + std::log(h));
}

TTails BetaTails(long double a, long double b, long double x, long double y) {
  if (x <= 0) return AllUpper();
  if (y <= 0) return AllLower();
  // ln(x^a y^b / B(a, b)) through the binomial term: Gamma(a + b)/(Gamma(a) Gamma(b)) equals
  // Gamma(a + b + 1)/(Gamma(a + 1) Gamma(b + 1)) * a b/(a + b).
  const long double logFront = LogBinomialTerm(a, a + b, x, y) + std::log(a * b / (a + b));
  if (x < (a + 1) / (a + b + 2))
    return FromLogLower(logFront - std::log(a) + std::log(BetaFraction(a, b, x)));
  return FromLogUpper(logFront - std::log(b) + std::log(BetaFraction(b, a, y)));
}

TTails NormalTails(long double z) {
  constexpr long double kInvSqrt2 = 0.707106781186547524400844362104849039L;
  if (z < 0) return FromLogLower(std::log(0.5L * std::erfc(-z * kInvSqrt2)));
  return FromLogUpper(std::log(0.5L * std::erfc(z * kInvSqrt2)));
}

long double SolveMonotone(const std::function<TRootEval(long double)>& eval, long double u0,
                          bool increasing) {
  // e^u must stay inside the extended range.
  constexpr long double kUMax = 11000;
  long double lo = -kUMax;
  long double hi = kUMax;
  long double u = std::clamp(u0, lo, hi);
  for (int it = 0; it < 300; ++it) {
    const TRootEval e = eval(u);
    if (std::isnan(e.h)) return std::numeric_limits<long double>::quiet_NaN();
    if (e.h == 0) return u;
    const bool rootAbove = increasing ? e.h < 0 : e.h > 0;
    if (rootAbove)
      lo = u;
    else
      hi = u;
    long double next = u - e.h / e.dh;
    if (!(next > lo && next < hi)) next = 0.5L * (lo + hi);  // a NaN step bisects too
    if (next == lo || next == hi) return u;                  // the bracket cannot shrink
    if (std::fabs(next - u) <= 1e-15L) return next;
    u = next;
  }
  return u;
}

}  // namespace quv::detail
