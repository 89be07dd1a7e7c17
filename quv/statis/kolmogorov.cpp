// Kolmogorov-Smirnov and Lilliefors statistics.
//
// KSPValue follows G. Marsaglia, W. W. Tsang and J. Wang, "Evaluating Kolmogorov's
// distribution", Journal of Statistical Software 8(18), 2003: P(D_n < d) is
// n!/n^n times the (k, k) element of H^n for an m-square matrix H built from h = k - n d.
// The power is taken by repeated squaring with a decimal exponent kept aside, so that the
// elements stay within double range. The matrices live in one work array allocated per call
// (three row-major m x m blocks: H, the running power and a product buffer).
#include "quv/statis/kolmogorov.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <limits>
#include <utility>
#include <vector>

#include "quv/math1/polynomial.h"

namespace quv {

namespace {

// Largest matrix order evaluated; beyond it (n of several thousands with small n d^2) the
// corrected limiting distribution is accurate to well below 1e-4 and far cheaper.
constexpr std::int64_t kKSMaxMatrixOrder = 201;

// C = A * B for m x m row-major matrices. C never overlaps A or B; saying so lets the
// compiler vectorise the inner loop, which dominates KSPValue.
void Multiply(const double* __restrict__ a, const double* __restrict__ b, double* __restrict__ c,
              std::size_t m) {
  for (std::size_t i = 0; i < m * m; ++i)
    c[i] = 0;
  for (std::size_t i = 0; i < m; ++i) {
    double* __restrict__ ci = c + i * m;
    for (std::size_t k = 0; k < m; ++k) {
      const double aik = a[i * m + k];
      const double* __restrict__ bk = b + k * m;
      for (std::size_t j = 0; j < m; ++j)
        ci[j] += aik * bk[j];
    }
  }
}

// Complementary limiting distribution P(K > lambda) of Kolmogorov's K.
long double KolmogorovLimitTail(long double lambda) {
  constexpr long double kPi = 3.141592653589793238462643383279502884L;
  if (lambda <= 0) return 1;
  if (lambda < 1) {
    // P(K <= lambda) = sqrt(2 pi)/lambda sum_j exp(-(2j - 1)^2 pi^2 / (8 lambda^2))
    long double sum = 0;
    for (int j = 1; j < 100; ++j) {
      const long double t =
          std::exp(-(2 * j - 1) * (2 * j - 1) * kPi * kPi / (8 * lambda * lambda));
      sum += t;
      if (t < 1e-22L * sum) break;
    }
    return 1 - std::sqrt(2 * kPi) / lambda * sum;
  }
  long double sum = 0;
  for (int j = 1; j < 100; ++j) {
    const long double t = std::exp(-2.0L * j * j * lambda * lambda);
    sum += (j % 2 == 1) ? t : -t;
    if (t < 1e-22L) break;
  }
  return 2 * sum;
}

long double KSMatrixPValue(std::int32_t n, long double d) {
  const long double nd = n * d;
  const auto k = static_cast<std::int64_t>(std::floor(nd)) + 1;
  const std::int64_t mm = 2 * k - 1;
  if (mm > kKSMaxMatrixOrder) {
    const long double rn = std::sqrt(static_cast<long double>(n));
    return KolmogorovLimitTail((rn + 0.12L + 0.11L / rn) * d);
  }
  const auto m = static_cast<std::size_t>(mm);
  const long double h = k - nd;
  std::vector<double> work(3 * m * m);
  double* hm = work.data();
  double* v = hm + m * m;
  double* b = v + m * m;
  // H with 1-based (i, j) at hm[(i-1) m + (j-1)].
  auto at = [m](double* a, std::size_t i, std::size_t j) -> double& {
    return a[(i - 1) * m + (j - 1)];
  };
  std::vector<long double> hp(m + 1);  // hp[i] = h^i
  hp[0] = 1;
  for (std::size_t i = 1; i <= m; ++i)
    hp[i] = hp[i - 1] * h;
  for (std::size_t i = 1; i <= m; ++i)
    for (std::size_t j = 1; j <= m; ++j)
      at(hm, i, j) = (i + 1 >= j) ? 1 : 0;
  for (std::size_t i = 1; i <= m; ++i) {
    at(hm, i, 1) = static_cast<double>(at(hm, i, 1) - hp[i]);
    at(hm, m, i) = static_cast<double>(at(hm, m, i) - hp[m - i + 1]);
  }
  if (2 * h - 1 > 0) at(hm, m, 1) = static_cast<double>(at(hm, m, 1) + std::pow(2 * h - 1, m));
  for (std::size_t i = 1; i <= m; ++i) {
    for (std::size_t j = 1; j <= i; ++j) {
      long double fact = 1;
      for (std::size_t g = 2; g <= i - j + 1; ++g)
        fact *= g;
      at(hm, i, j) = static_cast<double>(at(hm, i, j) / fact);
    }
  }
  // H^n by repeated squaring from the leading bit down, which performs the same products as
  // the recursion power(n) = power(n/2)^2 (times H when n is odd). After each level the
  // element at 1-based (m/2, m/2) decides a rescaling by 1e-140; a 1 x 1 matrix has no such
  // element and never needs one (its entry is at most 1).
  const std::size_t watch = m / 2;
  for (std::size_t i = 0; i < m * m; ++i)
    v[i] = hm[i];
  int e = 0;
  int bit = 30;
  while (((n >> bit) & 1) == 0)
    --bit;
  for (--bit; bit >= 0; --bit) {
    Multiply(v, v, b, m);
    e *= 2;
    if ((n >> bit) & 1)
      Multiply(hm, b, v, m);
    else
      std::swap(v, b);
    if (watch >= 1 && at(v, watch, watch) > 1e140) {
      for (std::size_t i = 0; i < m * m; ++i)
        v[i] *= 1e-140;
      e += 140;
    }
  }
  long double s = at(v, static_cast<std::size_t>(k), static_cast<std::size_t>(k));
  for (std::int32_t i = 1; i <= n; ++i) {
    s = s * i / n;
    if (s < 1e-140L) {
      s *= 1e140L;
      e -= 140;
    }
  }
  return 1 - s * std::pow(10.0L, e);
}

constexpr std::array<std::array<double, 5>, 20> kKSTable = {{
    {0.9, 0.925, 0.95, 0.975, 0.995},    {0.684, 0.726, 0.776, 0.842, 0.929},
    {0.565, 0.597, 0.642, 0.708, 0.828}, {0.494, 0.525, 0.564, 0.624, 0.733},
    {0.446, 0.474, 0.51, 0.565, 0.669},  {0.41, 0.436, 0.47, 0.521, 0.618},
    {0.381, 0.405, 0.438, 0.486, 0.577}, {0.358, 0.381, 0.411, 0.457, 0.543},
    {0.339, 0.36, 0.388, 0.432, 0.514},  {0.322, 0.342, 0.368, 0.41, 0.49},
    {0.307, 0.326, 0.352, 0.391, 0.468}, {0.295, 0.313, 0.338, 0.375, 0.45},
    {0.284, 0.302, 0.325, 0.361, 0.433}, {0.274, 0.292, 0.314, 0.349, 0.418},
    {0.266, 0.283, 0.304, 0.338, 0.404}, {0.258, 0.274, 0.295, 0.328, 0.392},
    {0.25, 0.266, 0.286, 0.318, 0.381},  {0.244, 0.259, 0.278, 0.309, 0.371},
    {0.237, 0.252, 0.272, 0.301, 0.363}, {0.231, 0.246, 0.264, 0.294, 0.356},
}};

constexpr std::array<double, 5> kKSAsymptotic = {1.073, 1.138, 1.224, 1.358, 1.628};

bool ValidLevel(TSignifLevel level) {
  return level <= Dot01;
}

}  // namespace

double KSPValue(std::int32_t n, double d) {
  if (n < 1) return -1;
  if (std::isnan(d)) return std::numeric_limits<double>::quiet_NaN();
  if (d <= 0) return 1;
  if (d >= 1) return 0;
  const long double de = d;
  const long double s = de * de * n;
  if (s > 7.24L || (s > 3.76L && n > 99)) {
    const long double rn = std::sqrt(static_cast<long double>(n));
    return static_cast<double>(2 * std::exp(-(2.000071L + 0.331L / rn + 1.409L / n) * s));
  }
  return static_cast<double>(KSMatrixPValue(n, de));
}

double KolmogSmir1SampleTestStat(std::int32_t n, TSignifLevel Level) {
  if (!ValidLevel(Level)) return -1;
  if (n >= 1 && n <= 20) return kKSTable[static_cast<std::size_t>(n - 1)][Level];
  return static_cast<double>(kKSAsymptotic[Level] / std::sqrt(static_cast<long double>(n)));
}

double KSQuantile(std::int32_t n, TSignifLevel Level) {
  if (n < 1 || !ValidLevel(Level)) return -1;
  const double alpha = kSignifLevelAlpha[Level];
  double d = KolmogSmir1SampleTestStat(n, Level);
  double delta = KSPValue(n, d) - alpha;
  for (int it = 0; it < 1000 && std::fabs(delta) > 1e-4; ++it) {
    const double next = d * (1 + delta);
    if (next == d || !(next > 0)) break;  // no further progress possible
    d = next;
    delta = KSPValue(n, d) - alpha;
  }
  return d;
}

double LillieforsPValue(std::int32_t n, double d) {
  if (n <= 5) return -1;
  long double dd = d;
  long double nn = n;
  if (n > 100) {
    dd *= std::pow(nn / 100, 0.49L);
    nn = 100;
  }
  const long double n2 = nn + 2.78019L;
  long double v = -7.01256L * dd * dd * n2 + 2.99587L * dd * std::sqrt(n2) - 0.122119L +
                  0.97498L / std::sqrt(nn) + 1.67997L / nn;
  if (v > 0) v = 0;
  return static_cast<double>(std::exp(v));
}

double LillieforsQuantile(std::int32_t n, double Alpha) {
  static constexpr std::array<double, 7> kA = {
      6.32207539843126, -17.1398870006148, 38.42812675101057, -45.93241384693391,
      7.88697700041829, 29.79317711037858, -18.48090137098585};
  static constexpr std::array<double, 7> kB = {
      12.940399038404,  -53.458334259532,  186.923866119699, -410.582178349305,
      517.377862566267, -343.581476222384, 92.123451358715};
  const double x = 1 - Alpha;
  const long double a = Polynomial(kA, 6, x);
  const long double b = Polynomial(kB, 6, x);
  return static_cast<double>(1 / std::sqrt(n * a + b));
}

}  // namespace quv
