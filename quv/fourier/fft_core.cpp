// Radix-2 decimation-in-time transform with the trigonometric recurrence for the twiddle
// factors (the classic in-place scheme of Cooley and Tukey as given, for example, in
// Press et al., Numerical Recipes, section 12.2).
#include "quv/fourier/fft_core.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>
#include <vector>

namespace quv::detail {

namespace {

// Pairs per stretch for the short spans: 2048 pairs are 32 KiB, the size of a level-1 data
// cache, so all short-span stages of a stretch run on cached data.
constexpr std::size_t kStretch = 2048;

struct StageStep {
  double wpr;
  double wpi;
};

StageStep StageFactors(std::size_t mmax, int direction) {
  const double theta = direction * (2 * std::numbers::pi / (2.0 * static_cast<double>(mmax)));
  const double half = std::sin(0.5 * theta);
  return {-2.0 * half * half, std::sin(theta)};
}

// w := w + w (wpr + i wpi)
inline void Advance(double& wr, double& wi, const StageStep& s) {
  const double old = wr;
  wr = wr + (wr * s.wpr - wi * s.wpi);
  wi = wi + (wi * s.wpr + old * s.wpi);
}

inline void Butterfly(double* a, double* b, double wr, double wi) {
  const double tr = wr * b[0] - wi * b[1];
  const double ti = wr * b[1] + wi * b[0];
  b[0] = a[0] - tr;
  b[1] = a[1] - ti;
  a[0] += tr;
  a[1] += ti;
}

// One stage of span mmax in the plain order: twiddle column by column, each column over all
// blocks. Used for the long spans, whose few blocks keep the touched cache lines small.
void PlainStage(double* x, std::size_t n, std::size_t mmax, int direction) {
  const StageStep step = StageFactors(mmax, direction);
  double wr = 1.0, wi = 0.0;
  for (std::size_t m = 0; m < mmax; ++m) {
    for (std::size_t i = m; i < n; i += 2 * mmax)
      Butterfly(x + 2 * i, x + 2 * (i + mmax), wr, wi);
    Advance(wr, wi, step);
  }
}

}  // namespace

bool IsValidSpectrumSize(std::int64_t n) {
  return n > 0 && n <= kMaxSpectrumSize && (n & (n - 1)) == 0;
}

void BitReversePairs(double* x, std::size_t n) {
  std::size_t j = 0;
  for (std::size_t i = 0; i < n; ++i) {
    if (j > i) {
      std::swap(x[2 * i], x[2 * j]);
      std::swap(x[2 * i + 1], x[2 * j + 1]);
    }
    std::size_t m = n >> 1;
    while (m >= 1 && j >= m) {
      j -= m;
      m >>= 1;
    }
    j += m;
  }
}

void DoFFT(double* x, std::size_t n, int direction) {
  direction = direction < 0 ? -1 : 1;
  BitReversePairs(x, n);

  // Short spans: every stage of a stretch before the next stretch. The twiddle factors of
  // span mmax are the mmax values of the recurrence, stored at [mmax - 1, 2 mmax - 1).
  const std::size_t stretch = std::min(n, kStretch);
  std::vector<double> table(2 * stretch);
  for (std::size_t mmax = 1; mmax < stretch; mmax *= 2) {
    const StageStep step = StageFactors(mmax, direction);
    double wr = 1.0, wi = 0.0;
    double* w = table.data() + 2 * (mmax - 1);
    for (std::size_t m = 0; m < mmax; ++m) {
      w[2 * m] = wr;
      w[2 * m + 1] = wi;
      Advance(wr, wi, step);
    }
  }
  for (std::size_t base = 0; base < n; base += stretch) {
    double* s = x + 2 * base;
    for (std::size_t mmax = 1; mmax < stretch; mmax *= 2) {
      const double* w = table.data() + 2 * (mmax - 1);
      for (std::size_t block = 0; block < stretch; block += 2 * mmax) {
        double* a = s + 2 * block;
        double* b = a + 2 * mmax;
        for (std::size_t m = 0; m < mmax; ++m)
          Butterfly(a + 2 * m, b + 2 * m, w[2 * m], w[2 * m + 1]);
      }
    }
  }
  // Long spans in the plain order.
  for (std::size_t mmax = stretch; mmax < n; mmax *= 2)
    PlainStage(x, n, mmax, direction);

  if (direction < 0) {
    const auto divisor = static_cast<double>(n);
    for (std::size_t k = 0; k < 2 * n; ++k)
      x[k] /= divisor;
  }
}

namespace {

inline double Re(const double* x, std::size_t k) {
  return x[2 * k];
}
inline double Im(const double* x, std::size_t k) {
  return x[2 * k + 1];
}

// True when line lies in 1..n/2 (lines with a mirror pair, the Nyquist line included).
inline bool IsUpperLine(std::size_t n, std::int64_t line) {
  return line >= 1 && static_cast<std::size_t>(line) <= n / 2;
}

}  // namespace

double LinePower(const double* x, std::size_t n, std::int64_t line) {
  const auto N = static_cast<double>(n);
  if (line == 0 && n > 0) return (Re(x, 0) * Re(x, 0) + Im(x, 0) * Im(x, 0)) / N;
  if (!IsUpperLine(n, line)) return 0.0;
  const auto l = static_cast<std::size_t>(line);
  const std::size_t r = n - l;
  return (Re(x, l) * Re(x, l) + Im(x, l) * Im(x, l) + Re(x, r) * Re(x, r) + Im(x, r) * Im(x, r)) /
         N;
}

double LineMagnitude(const double* x, std::size_t n, std::int64_t line) {
  const auto N = static_cast<double>(n);
  if (line == 0 && n > 0) return std::sqrt(Re(x, 0) * Re(x, 0) + Im(x, 0) * Im(x, 0)) / N;
  if (!IsUpperLine(n, line)) return 0.0;
  const auto l = static_cast<std::size_t>(line);
  const std::size_t r = n - l;
  const double re = Re(x, l) + Re(x, r);
  const double im = Im(x, l) - Im(x, r);
  return std::sqrt(re * re + im * im) / N;
}

double LinePhase(const double* x, std::size_t n, std::int64_t line) {
  if (!IsUpperLine(n, line)) return 0.0;
  const auto l = static_cast<std::size_t>(line);
  const double re = Re(x, l), im = Im(x, l);
  if (re == 0.0) return im <= 0.0 ? -std::numbers::pi / 2 : std::numbers::pi / 2;
  return std::atan(im / re);
}

double LineCosCoefficient(const double* x, std::size_t n, std::int64_t line) {
  const auto N = static_cast<double>(n);
  if (line == 0 && n > 0) return Re(x, 0) / N;
  if (!IsUpperLine(n, line)) return 0.0;
  const auto l = static_cast<std::size_t>(line);
  if (2 * l == n) return Re(x, l) / N;
  return (Re(x, l) + Re(x, n - l)) / N;
}

double LineSinCoefficient(const double* x, std::size_t n, std::int64_t line) {
  if (!IsUpperLine(n, line)) return 0.0;
  const auto l = static_cast<std::size_t>(line);
  if (2 * l == n) return 0.0;
  return (Im(x, l) - Im(x, n - l)) / static_cast<double>(n);
}

double LinesRMS(const double* x, std::size_t n, std::int64_t first, std::int64_t last) {
  if (n == 0) return 0.0;
  first = std::max<std::int64_t>(first, 0);
  last = std::min<std::int64_t>(last, static_cast<std::int64_t>(n / 2));
  Extended sum = 0;
  auto add = [&](std::size_t k) {
    const Extended re = Re(x, k), im = Im(x, k);
    sum += re * re + im * im;
  };
  for (std::int64_t line = first; line <= last; ++line) {
    const auto l = static_cast<std::size_t>(line);
    add(l);
    if (l != 0 && 2 * l != n) add(n - l);
  }
  const auto N = static_cast<Extended>(n);
  return static_cast<double>(std::sqrt(sum) / N);
}

}  // namespace quv::detail
