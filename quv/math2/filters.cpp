// Windowed-sinc kernels and recursive Chebyshev filters.
#include "quv/math2/filters.h"

#include <cmath>
#include <numbers>
#include <vector>

#include "quv/math2/smoothing_core.h"

namespace quv {

namespace {

using detail::RaiseMath2;

constexpr Extended kPi = std::numbers::pi_v<Extended>;

// Sets the vector to exactly the given values with one OnChange (and OnResize when the size
// changes): kernels are used whole, so a longer vector must not keep stale elements.
void AssignValues(TVector& v, const TDoubleArray& values) {
  TVector fresh;
  fresh.Resize(static_cast<std::int32_t>(values.size()));
  fresh.CopyFrom(values, 0, 0, 1);
  v.Clone(fresh);
}

void CheckKernelLen(std::string_view name, std::int32_t KernelLen) {
  if (KernelLen < 3 || KernelLen > kMaxSincKernelLen)
    RaiseMath2(name, filtermsg::kKernelLenOutOfRange);
  if (KernelLen % 2 == 0) RaiseMath2(name, filtermsg::kKernelLenEven);
}

void CheckCutOff(std::string_view name, double CutOff) {
  if (!(CutOff > 0.0 && CutOff < 0.5)) RaiseMath2(name, filtermsg::kCutOffOutOfRange);
}

void CheckBand(std::string_view name, double Low, double High) {
  if (!(Low > 0.0 && Low < High && High < 0.5)) RaiseMath2(name, filtermsg::kBandOutOfRange);
}

// The low-pass kernel in extended precision, scaled to a sum of 1.
std::vector<Extended> LowPass(double CutOff, std::int32_t KernelLen) {
  const auto len = static_cast<std::size_t>(KernelLen);
  const std::size_t half = len / 2;
  const auto M = static_cast<Extended>(len - 1);
  const Extended wc = 2 * kPi * CutOff;
  std::vector<Extended> k(len);
  Extended sum = 0.0L;
  for (std::size_t i = 0; i < len; ++i) {
    const Extended t = static_cast<Extended>(i) - static_cast<Extended>(half);
    const Extended ideal = i == half ? wc : std::sin(wc * t) / t;
    const Extended a = 2 * kPi * static_cast<Extended>(i) / M;
    k[i] = ideal * (0.42L - 0.5L * std::cos(a) + 0.08L * std::cos(2 * a));
    sum += k[i];
  }
  for (Extended& e : k)
    e /= sum;
  return k;
}

// Spectral inversion: delta - h, which turns a gain of g into 1 - g at every frequency.
std::vector<Extended> Inverted(std::vector<Extended> k) {
  for (Extended& e : k)
    e = -e;
  k[k.size() / 2] += 1.0L;
  return k;
}

std::vector<Extended> BandStop(double Low, double High, std::int32_t KernelLen) {
  std::vector<Extended> k = LowPass(Low, KernelLen);
  const std::vector<Extended> hp = Inverted(LowPass(High, KernelLen));
  for (std::size_t i = 0; i < k.size(); ++i)
    k[i] += hp[i];
  return k;
}

TDoubleArray Rounded(const std::vector<Extended>& k) {
  return TDoubleArray(k.begin(), k.end());
}

// The two forms of every kernel builder: the array form checks and builds, the vector form
// checks the vector first and then stores what the array form built.
template <class Build>
void IntoArray(std::string_view name, std::int32_t KernelLen, TDoubleArray& Kernel, Build build) {
  CheckKernelLen(name, KernelLen);
  Kernel = Rounded(build());
}

template <class Build>
void IntoVector(std::string_view name, std::int32_t KernelLen, TVector* Kernel, Build build) {
  if (Kernel == nullptr) RaiseMath2(name, filtermsg::kKernelUndefined);
  TDoubleArray k;
  IntoArray(name, KernelLen, k, build);
  AssignValues(*Kernel, k);
}

}  // namespace

void CalcSincLPKernel(double CutOff, std::int32_t KernelLen, TDoubleArray& Kernel) {
  constexpr std::string_view name = "CalcSincLPKernel";
  IntoArray(name, KernelLen, Kernel, [&] {
    CheckCutOff(name, CutOff);
    return LowPass(CutOff, KernelLen);
  });
}

void CalcSincLPKernel(double CutOff, std::int32_t KernelLen, TVector* Kernel) {
  constexpr std::string_view name = "CalcSincLPKernel";
  IntoVector(name, KernelLen, Kernel, [&] {
    CheckCutOff(name, CutOff);
    return LowPass(CutOff, KernelLen);
  });
}

void CalcSincHPKernel(double CutOff, std::int32_t KernelLen, TDoubleArray& Kernel) {
  constexpr std::string_view name = "CalcSincHPKernel";
  IntoArray(name, KernelLen, Kernel, [&] {
    CheckCutOff(name, CutOff);
    return Inverted(LowPass(CutOff, KernelLen));
  });
}

void CalcSincHPKernel(double CutOff, std::int32_t KernelLen, TVector* Kernel) {
  constexpr std::string_view name = "CalcSincHPKernel";
  IntoVector(name, KernelLen, Kernel, [&] {
    CheckCutOff(name, CutOff);
    return Inverted(LowPass(CutOff, KernelLen));
  });
}

void CalcSincBPKernel(double LowCutOff, double HighCutOff, std::int32_t KernelLen,
                      TDoubleArray& Kernel) {
  constexpr std::string_view name = "CalcSincBPKernel";
  IntoArray(name, KernelLen, Kernel, [&] {
    CheckBand(name, LowCutOff, HighCutOff);
    return Inverted(BandStop(LowCutOff, HighCutOff, KernelLen));
  });
}

void CalcSincBPKernel(double LowCutOff, double HighCutOff, std::int32_t KernelLen,
                      TVector* Kernel) {
  constexpr std::string_view name = "CalcSincBPKernel";
  IntoVector(name, KernelLen, Kernel, [&] {
    CheckBand(name, LowCutOff, HighCutOff);
    return Inverted(BandStop(LowCutOff, HighCutOff, KernelLen));
  });
}

void CalcSincBSKernel(double LowCutOff, double HighCutOff, std::int32_t KernelLen,
                      TDoubleArray& Kernel) {
  constexpr std::string_view name = "CalcSincBSKernel";
  IntoArray(name, KernelLen, Kernel, [&] {
    CheckBand(name, LowCutOff, HighCutOff);
    return BandStop(LowCutOff, HighCutOff, KernelLen);
  });
}

void CalcSincBSKernel(double LowCutOff, double HighCutOff, std::int32_t KernelLen,
                      TVector* Kernel) {
  constexpr std::string_view name = "CalcSincBSKernel";
  IntoVector(name, KernelLen, Kernel, [&] {
    CheckBand(name, LowCutOff, HighCutOff);
    return BandStop(LowCutOff, HighCutOff, KernelLen);
  });
}

namespace {

// One biquad stage: the pole pair p of NPoles, mapped to the digital domain.
struct TBiquad {
  Extended a0, a1, a2, b1, b2;
};

TBiquad ChebStage(std::int32_t NPoles, std::int32_t p, bool HighPass, Extended CutOff,
                  Extended Ripple) {
  const auto np = static_cast<Extended>(NPoles);
  // Pole on the unit circle (Butterworth), warped onto the ellipse of the Chebyshev ripple
  // and scaled so that the prototype passes -3 dB at 1 rad/s.
  const Extended angle = kPi / (2 * np) + static_cast<Extended>(p - 1) * kPi / np;
  Extended rp = -std::cos(angle);
  Extended ip = std::sin(angle);
  if (Ripple > 0) {
    const Extended r = 100.0L / (100.0L - Ripple);
    const Extended es = std::sqrt(r * r - 1);
    const Extended vx = std::asinh(1 / es) / np;
    const Extended kx = std::cosh(std::acosh(1 / es) / np);
    rp *= std::sinh(vx) / kx;
    ip *= std::cosh(vx) / kx;
  }
  // Bilinear transform of the s-domain pole pair (T = 2 tan(1/2) maps 1 rad/s to 1 rad).
  const Extended t = 2 * std::tan(0.5L);
  const Extended w = 2 * kPi * CutOff;
  const Extended m = rp * rp + ip * ip;
  Extended d = 4 - 4 * rp * t + m * t * t;
  const Extended x0 = t * t / d;
  const Extended x1 = 2 * t * t / d;
  const Extended x2 = t * t / d;
  const Extended y1 = (8 - 2 * m * t * t) / d;
  const Extended y2 = (-4 - 4 * rp * t - m * t * t) / d;
  // Low-pass to low-pass (or high-pass) transform from 1 rad to w.
  const Extended k = HighPass ? -std::cos(w / 2 + 0.5L) / std::cos(w / 2 - 0.5L)
                              : std::sin(0.5L - w / 2) / std::sin(0.5L + w / 2);
  d = 1 + y1 * k - y2 * k * k;
  TBiquad s{(x0 - x1 * k + x2 * k * k) / d, (-2 * x0 * k + x1 + x1 * k * k - 2 * x2 * k) / d,
            (x0 * k * k - x1 * k + x2) / d, (2 * k + y1 + y1 * k * k - 2 * y2 * k) / d,
            (-k * k - y1 * k + y2) / d};
  if (HighPass) {
    s.a1 = -s.a1;
    s.b1 = -s.b1;
  }
  return s;
}

}  // namespace

void CalcChebFilterCoeffs(std::int32_t NPoles, bool HighPass, double CutOff, double Ripple,
                          TDouble2DArray& Coeffs) {
  constexpr std::string_view name = "CalcChebFilterCoeffs";
  if (NPoles % 2 != 0) RaiseMath2(name, filtermsg::kPolesOdd);
  if (NPoles < 2 || NPoles > kMaxChebPoles) RaiseMath2(name, filtermsg::kPolesOutOfRange);
  if (!(Ripple >= 0.0 && Ripple <= kMaxChebRipple)) RaiseMath2(name, filtermsg::kInvalidRipple);
  if (!(CutOff > 0.0 && CutOff < 0.5)) RaiseMath2(name, filtermsg::kInvalidCutOff);

  // Multiply the stages together: a(z) = prod (a0 + a1 z^-1 + a2 z^-2) for the numerator and
  // b(z) = prod (1 - b1 z^-1 - b2 z^-2) for the denominator.
  const auto n = static_cast<std::size_t>(NPoles);
  std::vector<Extended> a(n + 1, 0.0L), b(n + 1, 0.0L);
  a[0] = b[0] = 1.0L;
  for (std::int32_t p = 1; p <= NPoles / 2; ++p) {
    const TBiquad s = ChebStage(NPoles, p, HighPass, CutOff, Ripple);
    for (std::size_t i = n + 1; i-- > 0;) {
      const Extended a1 = i >= 1 ? a[i - 1] : 0.0L, a2 = i >= 2 ? a[i - 2] : 0.0L;
      const Extended b1 = i >= 1 ? b[i - 1] : 0.0L, b2 = i >= 2 ? b[i - 2] : 0.0L;
      a[i] = s.a0 * a[i] + s.a1 * a1 + s.a2 * a2;
      b[i] = b[i] - s.b1 * b1 - s.b2 * b2;
    }
  }
  b[0] = 0.0L;
  for (std::size_t i = 1; i <= n; ++i)
    b[i] = -b[i];
  // Scale to gain 1 at DC (low-pass) or at 0.5 (high-pass, where z^-1 = -1).
  Extended sa = 0.0L, sb = 0.0L;
  for (std::size_t i = 0; i <= n; ++i) {
    const Extended sign = (HighPass && i % 2 == 1) ? -1.0L : 1.0L;
    sa += sign * a[i];
    sb += sign * b[i];
  }
  const Extended gain = sa / (1 - sb);
  TDouble2DArray result(2, TDoubleArray(n + 1));
  for (std::size_t i = 0; i <= n; ++i) {
    result[0][i] = static_cast<double>(a[i] / gain);
    result[1][i] = static_cast<double>(b[i]);
  }
  Coeffs = std::move(result);
}

void ChebychevFilter(const TVector* SourceVec, std::int32_t First, std::int32_t Last,
                     const TDouble2DArray& Coeffs, TVector* DestVec) {
  constexpr std::string_view name = "ChebychevFilter";
  if (SourceVec == nullptr || DestVec == nullptr) RaiseMath2(name, filtermsg::kFilterUndefined);
  bool valid = Coeffs.size() == 2 && !Coeffs[0].empty() && Coeffs[0].size() == Coeffs[1].size();
  for (std::size_t r = 0; valid && r < 2; ++r)
    for (const double c : Coeffs[r])
      valid = valid && std::isfinite(c);
  if (!valid) RaiseMath2(name, filtermsg::kInvalidCoeffs);
  detail::ClampSmoothRange(SourceVec->NrOfElem(), First, Last);

  const TDoubleArray& a = Coeffs[0];
  const TDoubleArray& b = Coeffs[1];
  const std::size_t order = a.size() - 1;
  const auto n = static_cast<std::size_t>(Last - First + 1);
  const double* x = SourceVec->Storage().data() + (First - 1);
  TDoubleArray y = detail::NewWorkArray(*DestVec, n);

  // Steady state for the first value: the past inputs equal x[0] and the past outputs its
  // image through the DC gain sum(a) / (1 - sum(b)).
  Extended sa = 0.0L, sb = 0.0L;
  for (std::size_t k = 0; k <= order; ++k) {
    sa += a[k];
    sb += k > 0 ? b[k] : 0.0;
  }
  const Extended past_x = x[0];
  const Extended past_y = (1 - sb) != 0 ? past_x * sa / (1 - sb) : 0.0L;
  for (std::size_t i = 0; i < n; ++i) {
    Extended sum = 0.0L;
    for (std::size_t k = 0; k <= order; ++k) {
      sum += a[k] * (k <= i ? static_cast<Extended>(x[i - k]) : past_x);
      if (k > 0) sum += b[k] * (k <= i ? static_cast<Extended>(y[i - k]) : past_y);
    }
    y[i] = static_cast<double>(sum);
  }
  detail::StoreResult(*DestVec, y);
}

}  // namespace quv
