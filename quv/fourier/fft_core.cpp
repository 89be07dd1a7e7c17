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
// Twiddle columns handled together in the long spans: 64 pairs make whole cache lines of
// every row a group touches, however far apart the rows lie.
constexpr std::size_t kColumns = 64;
// Bits of the tile index in the bit reversal: tiles of 16 x 16 pairs.
constexpr int kTileBits = 4;

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

// temp = w b; b := a - temp; a := a + temp
inline void Butterfly(double& ar, double& ai, double& br, double& bi, double wr, double wi) {
  const double tr = wr * br - wi * bi;
  const double ti = wr * bi + wi * br;
  br = ar - tr;
  bi = ai - ti;
  ar = ar + tr;
  ai = ai + ti;
}

inline void Butterfly(double* a, double* b, double wr, double wi) {
  double ar = a[0], ai = a[1], br = b[0], bi = b[1];
  Butterfly(ar, ai, br, bi, wr, wi);
  a[0] = ar;
  a[1] = ai;
  b[0] = br;
  b[1] = bi;
}

// The twiddle factors one group of two stages needs: w1 of span s at column m, w2 and w3 of
// span 2s at columns m and m + s.
struct GroupFactors {
  double w1r, w1i, w2r, w2i, w3r, w3i;
};

// Two stages at once on the four pairs p, p + s, p + 2s, p + 3s: the butterflies of span s
// on (0, 1) and (2, 3), then those of span 2s on (0, 2) and (1, 3). Each butterfly gets the
// operands it gets stage by stage; only the loads and stores between the stages are saved.
inline void Group(double* p, std::size_t s, const GroupFactors& w) {
  double* q1 = p + 2 * s;
  double* q2 = p + 4 * s;
  double* q3 = p + 6 * s;
  double a0r = p[0], a0i = p[1], a1r = q1[0], a1i = q1[1];
  double a2r = q2[0], a2i = q2[1], a3r = q3[0], a3i = q3[1];
  Butterfly(a0r, a0i, a1r, a1i, w.w1r, w.w1i);
  Butterfly(a2r, a2i, a3r, a3i, w.w1r, w.w1i);
  Butterfly(a0r, a0i, a2r, a2i, w.w2r, w.w2i);
  Butterfly(a1r, a1i, a3r, a3i, w.w3r, w.w3i);
  p[0] = a0r;
  p[1] = a0i;
  q1[0] = a1r;
  q1[1] = a1i;
  q2[0] = a2r;
  q2[1] = a2i;
  q3[0] = a3r;
  q3[1] = a3i;
}

// The recurrence of one span: factor m of span mmax is the recurrence's m-th value.
struct Recurrence {
  Recurrence(std::size_t mmax, int direction) : step(StageFactors(mmax, direction)) {}
  void Next() { Advance(wr, wi, step); }
  StageStep step;
  double wr = 1.0, wi = 0.0;
};

// The stages of spans s and 2s over all n pairs, columns in strips of kColumns: the factors
// of a strip come from the table or, for spans beyond it, from the running recurrences; then
// every block gets the strip.
void LongStagePair(double* x, std::size_t n, std::size_t s, int direction,
                   const TwiddleTable& table) {
  const bool tabulated = 2 * s < table.Spans();
  Recurrence r1(s, direction), r2(2 * s, direction), r3(2 * s, direction);
  if (!tabulated)
    for (std::size_t m = 0; m < s; ++m)
      r3.Next();  // r3 runs s columns ahead of r2
  GroupFactors strip[kColumns];
  for (std::size_t m0 = 0; m0 < s; m0 += kColumns) {
    const std::size_t width = std::min(kColumns, s - m0);
    for (std::size_t k = 0; k < width; ++k) {
      if (tabulated) {
        const double* w1 = table.Factor(s, m0 + k);
        const double* w2 = table.Factor(2 * s, m0 + k);
        const double* w3 = table.Factor(2 * s, m0 + k + s);
        strip[k] = {w1[0], w1[1], w2[0], w2[1], w3[0], w3[1]};
        continue;
      }
      strip[k] = {r1.wr, r1.wi, r2.wr, r2.wi, r3.wr, r3.wi};
      r1.Next();
      r2.Next();
      r3.Next();
    }
    for (std::size_t block = 0; block < n; block += 4 * s) {
      double* p = x + 2 * (block + m0);
      for (std::size_t k = 0; k < width; ++k)
        Group(p + 2 * k, s, strip[k]);
    }
  }
}

// One stage of span s over all n pairs, in strips like LongStagePair.
void LongStage(double* x, std::size_t n, std::size_t s, int direction, const TwiddleTable& table) {
  const bool tabulated = s < table.Spans();
  Recurrence r(s, direction);
  double strip[2 * kColumns];
  for (std::size_t m0 = 0; m0 < s; m0 += kColumns) {
    const std::size_t width = std::min(kColumns, s - m0);
    for (std::size_t k = 0; k < width; ++k) {
      if (tabulated) {
        strip[2 * k] = table.Factor(s, m0 + k)[0];
        strip[2 * k + 1] = table.Factor(s, m0 + k)[1];
        continue;
      }
      strip[2 * k] = r.wr;
      strip[2 * k + 1] = r.wi;
      r.Next();
    }
    for (std::size_t block = 0; block < n; block += 2 * s) {
      double* a = x + 2 * (block + m0);
      double* b = a + 2 * s;
      for (std::size_t k = 0; k < width; ++k)
        Butterfly(a + 2 * k, b + 2 * k, strip[2 * k], strip[2 * k + 1]);
    }
  }
}

// All stages of spans below `stretch` (a power of two, all of them tabulated) on each stretch
// of pairs in turn, two stages per pass.
void ShortStages(double* x, std::size_t n, std::size_t stretch, const TwiddleTable& table) {
  const auto factors = [&](std::size_t s, std::size_t m) { return table.Factor(s, m); };
  for (std::size_t base = 0; base < n; base += stretch) {
    double* part = x + 2 * base;
    std::size_t s = 1;
    for (; 2 * s < stretch; s *= 4) {
      for (std::size_t block = 0; block < stretch; block += 4 * s) {
        for (std::size_t m = 0; m < s; ++m) {
          const double* w1 = factors(s, m);
          const double* w2 = factors(2 * s, m);
          const double* w3 = factors(2 * s, m + s);
          Group(part + 2 * (block + m), s, {w1[0], w1[1], w2[0], w2[1], w3[0], w3[1]});
        }
      }
    }
    if (s < stretch) {  // an odd number of stages leaves the last one on its own
      for (std::size_t block = 0; block < stretch; block += 2 * s) {
        for (std::size_t m = 0; m < s; ++m) {
          const double* w = factors(s, m);
          Butterfly(part + 2 * (block + m), part + 2 * (block + m + s), w[0], w[1]);
        }
      }
    }
  }
}

std::size_t ReverseBits(std::size_t v, int bits) {
  std::size_t r = 0;
  for (int b = 0; b < bits; ++b, v >>= 1)
    r = (r << 1) | (v & 1);
  return r;
}

inline void SwapPairs(double* x, std::size_t i, std::size_t j) {
  std::swap(x[2 * i], x[2 * j]);
  std::swap(x[2 * i + 1], x[2 * j + 1]);
}

}  // namespace

bool IsValidSpectrumSize(std::int64_t n) {
  return n > 0 && n <= kMaxSpectrumSize && (n & (n - 1)) == 0;
}

// Index i = (a, m, c) with a the top and c the bottom kTileBits bits has the reversed index
// (rev c, rev m, rev a). For one middle part m, the pairs with all a and c form a tile of
// rows of contiguous pairs, and they trade places with the tile of rev m; walking tile by
// tile keeps both tiles in cache instead of jumping across the whole block for every pair.
void BitReversePairs(double* x, std::size_t n) {
  int bits = 0;
  while ((std::size_t{1} << bits) < n)
    ++bits;
  if (bits < 2 * kTileBits + 1) {
    for (std::size_t i = 0; i < n; ++i) {
      const std::size_t j = ReverseBits(i, bits);
      if (j > i) SwapPairs(x, i, j);
    }
    return;
  }
  constexpr std::size_t kSide = std::size_t{1} << kTileBits;
  std::size_t rev[kSide];
  for (std::size_t c = 0; c < kSide; ++c)
    rev[c] = ReverseBits(c, kTileBits);
  const int middle = bits - 2 * kTileBits;
  const int high = bits - kTileBits;
  for (std::size_t m = 0; m < (std::size_t{1} << middle); ++m) {
    const std::size_t mr = ReverseBits(m, middle);
    if (mr < m) continue;
    for (std::size_t a = 0; a < kSide; ++a) {
      for (std::size_t c = 0; c < kSide; ++c) {
        const std::size_t i = (a << high) | (m << kTileBits) | c;
        const std::size_t j = (rev[c] << high) | (mr << kTileBits) | rev[a];
        if (m != mr || i < j) SwapPairs(x, i, j);
      }
    }
  }
}

void TwiddleTable::Prepare(std::size_t n, int direction) {
  direction = direction < 0 ? -1 : 1;
  if (n == n_ && direction == direction_) return;
  const std::size_t spans = std::min(n, kTabulatedSpans);
  std::vector<double> values(2 * spans);
  for (std::size_t s = 1; s < spans; s *= 2) {
    Recurrence r(s, direction);
    double* w = values.data() + 2 * (s - 1);
    for (std::size_t m = 0; m < s; ++m) {
      w[2 * m] = r.wr;
      w[2 * m + 1] = r.wi;
      r.Next();
    }
  }
  values_.swap(values);
  n_ = n;
  direction_ = direction;
  spans_ = spans;
}

void DoFFT(double* x, std::size_t n, int direction, TwiddleTable& table) {
  direction = direction < 0 ? -1 : 1;
  table.Prepare(n, direction);  // first, so that a failed allocation leaves the data alone
  BitReversePairs(x, n);
  const std::size_t stretch = std::min(n, kStretch);
  ShortStages(x, n, stretch, table);
  std::size_t s = stretch;
  for (; 2 * s < n; s *= 4)
    LongStagePair(x, n, s, direction, table);
  if (s < n) LongStage(x, n, s, direction, table);

  if (direction < 0) {
    // n is a power of two, so x * (1/n) is exactly x / n (both are x scaled by 2^-k, rounded
    // once), and a multiplication is much cheaper than a division.
    const double scale = 1.0 / static_cast<double>(n);
    for (std::size_t k = 0; k < 2 * n; ++k)
      x[k] *= scale;
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
