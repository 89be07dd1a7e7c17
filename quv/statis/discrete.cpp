// Discrete distributions. The hypergeometric probability follows the library's LnGamma; the
// binomial terms are Loader's saddle-point form and the binomial distribution function is the
// incomplete beta function I_(1-p)(n - k, k + 1) of dist_core; the Mann-Whitney distribution is
// computed exactly from its generating function, the Gaussian binomial coefficient
// [n1 + n2 over n1]_q = prod_(i=1..n1) (1 - q^(n2+i)) / (1 - q^i), as probabilities.
#include "quv/statis/discrete.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

#include "quv/base/errors.h"
#include "quv/statis/dist_core.h"
#include "quv/statis/gamma_beta.h"

namespace quv {

double HyperGeoDistriDensity(double p, std::int32_t NPop, std::int32_t NSample, std::int32_t x) {
  constexpr const char* kName = "HyperGeoDistriDensity";
  if (!(p >= 0 && p <= 1))
    RaiseFunctionError<EQUVStatisError>(kName, "probability p must be between 0.0 and 1.0");
  if (NPop < 1) RaiseFunctionError<EQUVStatisError>(kName, "npop must be greater than 0");
  if (NPop < NSample)
    RaiseFunctionError<EQUVStatisError>(kName, "nsample must not be greater than npop");
  if (NSample < 1) RaiseFunctionError<EQUVStatisError>(kName, "nsample must not be less than 1");
  const auto k = static_cast<std::int64_t>(std::nearbyint(static_cast<long double>(NPop) * p));
  const std::int64_t n = NPop;
  const std::int64_t s = NSample;
  const std::int64_t xi = x;
  if (xi < 0 || xi > k || xi > s || xi < s - (n - k)) return 0;
  auto lg = [](std::int64_t v) { return detail::LnGammaExt(static_cast<long double>(v)); };
  const long double e = lg(k + 1) - lg(xi + 1) - lg(k - xi + 1) + lg(n - k + 1) - lg(s - xi + 1) -
                        lg(n - k - s + xi + 1) - lg(n + 1) + lg(s + 1) + lg(n - s + 1);
  return static_cast<double>(std::exp(e));
}

// ---- binomial -----------------------------------------------------------------------------

namespace {

bool ValidBinom(double p, std::int32_t n) {
  return n >= 0 && p >= 0 && p <= 1;
}

long double BinomCdf(std::int32_t k, long double p, std::int32_t n) {
  if (k < 0) return 0;
  if (k >= n) return 1;
  return detail::BetaTails(static_cast<long double>(n) - k, static_cast<long double>(k) + 1, 1 - p,
                           p)
      .lower;
}

}  // namespace

double BinomDistriDensity(std::int32_t k, double p, std::int32_t n) {
  if (!ValidBinom(p, n) || k < 0 || k > n) return 0;
  const long double pe = p;
  return static_cast<double>(std::exp(detail::LogBinomialTerm(k, n, pe, 1 - pe)));
}

double BinomDistriIntegral(std::int32_t k, double p, std::int32_t n) {
  if (!ValidBinom(p, n)) return 0;
  return static_cast<double>(BinomCdf(k, p, n));
}

double BinomDistriUpperTail(std::int32_t k, double p, std::int32_t n) {
  if (!ValidBinom(p, n)) return 0;
  if (k < 0) return 1;
  if (k >= n) return 0;
  const long double pe = p;
  return static_cast<double>(detail::BetaTails(static_cast<long double>(n) - k,
                                               static_cast<long double>(k) + 1, 1 - pe, pe)
                                 .upper);
}

std::int32_t BinomDistriQuantile(std::int32_t n, double p, double Alpha, double& CumProb) {
  if (!ValidBinom(p, n) || !(Alpha >= 0 && Alpha <= 1)) return -1;
  // Bisection over k: P(X <= lo) < Alpha <= P(X <= hi) with P(X <= -1) = 0 and P(X <= n) = 1.
  std::int64_t lo = -1;
  std::int64_t hi = n;
  long double hiProb = 1;
  if (Alpha == 0) {
    hi = 0;
    hiProb = BinomCdf(0, p, n);
  }
  while (hi - lo > 1) {
    const std::int64_t mid = lo + (hi - lo) / 2;
    const long double prob = BinomCdf(static_cast<std::int32_t>(mid), p, n);
    if (prob >= Alpha) {
      hi = mid;
      hiProb = prob;
    } else {
      lo = mid;
    }
  }
  CumProb = static_cast<double>(hiProb);
  return static_cast<std::int32_t>(hi);
}

// ---- Mann-Whitney U -----------------------------------------------------------------------

namespace {

// Beyond this work (sample size times the length of the shorter tail) the exact distribution
// would take too long (or its table too much memory); the normal approximation takes over.
constexpr long double kUExactWork = 1e8;
constexpr std::int64_t kUExactLength = 4'000'000;

struct TUSizes {
  std::int64_t m = 0;  // the smaller sample
  std::int64_t n = 0;  // the larger sample
  std::int64_t mn() const { return m * n; }
};

TUSizes SortedSizes(std::int32_t n1, std::int32_t n2) {
  return {std::min<std::int64_t>(n1, n2), std::max<std::int64_t>(n1, n2)};
}

bool UExact(const TUSizes& s, std::int64_t len) {
  return len <= kUExactLength &&
         static_cast<long double>(s.m) * static_cast<long double>(len + 1) <= kUExactWork;
}

// P(U = j) for j = 0..len (len <= mn/2 keeps the cancellation of the multiplication small).
// Each factor (1 - q^(n+i))/(1 - q^i) is applied to the truncated series and scaled by
// i/(n + i), so that the coefficients stay the distribution of U for samples i and n.
std::vector<long double> ULowerPmf(const TUSizes& s, std::int64_t len) {
  std::vector<long double> c(static_cast<std::size_t>(len + 1), 0.0L);
  c[0] = 1;
  for (std::int64_t i = 1; i <= s.m; ++i) {
    for (std::int64_t j = i; j <= len; ++j)
      c[j] += c[j - i];
    for (std::int64_t j = len; j >= s.n + i; --j)
      c[j] -= c[j - s.n - i];
    const long double scale = static_cast<long double>(i) / static_cast<long double>(s.n + i);
    for (auto& v : c)
      v *= scale;
  }
  return c;
}

// Normal approximation with continuity correction: P(U <= u).
long double UApproxCdf(const TUSizes& s, long double u) {
  const long double mean = 0.5L * s.mn();
  const long double sd = std::sqrt(static_cast<long double>(s.mn()) * (s.m + s.n + 1) / 12);
  return detail::NormalTails((u + 0.5L - mean) / sd).lower;
}

// P(U <= u) for 0 <= u < mn.
long double UCdf(const TUSizes& s, std::int64_t u) {
  const std::int64_t mirror = s.mn() - u - 1;  // P(U <= u) = 1 - P(U <= mirror)
  const std::int64_t len = std::min(u, mirror);
  if (!UExact(s, len)) return UApproxCdf(s, u);
  const std::vector<long double> c = ULowerPmf(s, len);
  long double sum = 0;
  for (long double v : c)
    sum += v;
  return u <= mirror ? sum : 1 - sum;
}

}  // namespace

double UDistriDensity(std::int32_t n1, std::int32_t n2, std::int32_t u) {
  if (n1 < 1 || n2 < 1 || u < 0) return 0;
  const TUSizes s = SortedSizes(n1, n2);
  if (u > s.mn()) return 0;
  const std::int64_t len = std::min<std::int64_t>(u, s.mn() - u);
  if (!UExact(s, len)) return static_cast<double>(UApproxCdf(s, u) - UApproxCdf(s, u - 1.0L));
  return static_cast<double>(ULowerPmf(s, len)[static_cast<std::size_t>(len)]);
}

double UDistriIntegral(std::int32_t n1, std::int32_t n2, std::int32_t u) {
  if (n1 < 1 || n2 < 1 || u < 0) return 0;
  const TUSizes s = SortedSizes(n1, n2);
  if (u >= s.mn()) return 1;
  return static_cast<double>(UCdf(s, u));
}

double UDistriUpperTail(std::int32_t n1, std::int32_t n2, std::int32_t u) {
  if (n1 < 1 || n2 < 1) return 0;
  if (u < 0) return 1;
  const TUSizes s = SortedSizes(n1, n2);
  if (u >= s.mn()) return 0;
  // P(U > u) = P(U <= mn - u - 1), as U and mn - U have the same distribution.
  return static_cast<double>(UCdf(s, s.mn() - u - 1));
}

double UDistriQuantile(std::int32_t n1, std::int32_t n2, double Alpha) {
  if (n1 < 1 || n2 < 1 || !(Alpha >= 0 && Alpha <= 1)) return -1;
  const TUSizes s = SortedSizes(n1, n2);
  const std::int64_t half = s.mn() / 2;
  if (UExact(s, half)) {
    // One pass over the lower half, P(U <= u) = 1 - P(U <= mn - u - 1) above it.
    const std::vector<long double> c = ULowerPmf(s, half);
    std::vector<long double> cum(c.size());
    long double sum = 0;
    for (std::size_t j = 0; j < c.size(); ++j)
      cum[j] = sum += c[j];
    if (Alpha <= cum.back()) {
      const auto it = std::lower_bound(cum.begin(), cum.end(), static_cast<long double>(Alpha));
      return static_cast<double>(it - cum.begin());
    }
    // Smallest u > half with P(U <= mn - u - 1) <= 1 - Alpha, i.e. the largest such v = mn-u-1.
    const long double rest = 1 - static_cast<long double>(Alpha);
    const auto it = std::upper_bound(cum.begin(), cum.end(), rest);  // first cum > rest
    const std::int64_t v = (it - cum.begin()) - 1;                   // -1 when none
    return static_cast<double>(s.mn() - 1 - v);
  }
  // Bisection over u on the distribution function.
  std::int64_t lo = -1;
  std::int64_t hi = s.mn();
  while (hi - lo > 1) {
    const std::int64_t mid = lo + (hi - lo) / 2;
    if (UCdf(s, mid) >= Alpha)
      hi = mid;
    else
      lo = mid;
  }
  return static_cast<double>(hi);
}

}  // namespace quv
