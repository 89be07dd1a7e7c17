#include "quv/fourier/any_length.h"

#include <algorithm>
#include <cmath>
#include <new>
#include <numbers>
#include <vector>

#include "quv/base/errors.h"
#include "quv/fourier/fft_core.h"

namespace quv {

namespace detail {

namespace {

bool IsPowerOfTwo(std::size_t n) {
  return n > 0 && (n & (n - 1)) == 0;
}

// Bluestein: with nk = (n^2 + k^2 - (k - n)^2)/2, X_k = c_k sum_j (x_j c_j) conj(c_(k-j))
// where c_j = e^(s i pi j^2/n). The convolution runs cyclically over m >= 2n - 1 points.
void Bluestein(double* x, std::size_t n, int direction) {
  std::size_t m = 1;
  while (m < 2 * n - 1)
    m *= 2;
  // c_j from j^2 mod 2n, so that the angle stays below 2 pi and accurate for long blocks.
  std::vector<double> chirp(2 * n);
  const double step = direction * std::numbers::pi / static_cast<double>(n);
  for (std::size_t j = 0; j < n; ++j) {
    const auto square = static_cast<double>((static_cast<std::uint64_t>(j) * j) % (2 * n));
    chirp[2 * j] = std::cos(step * square);
    chirp[2 * j + 1] = std::sin(step * square);
  }
  std::vector<double> a(2 * m, 0.0), b(2 * m, 0.0);
  for (std::size_t j = 0; j < n; ++j) {
    const double cr = chirp[2 * j], ci = chirp[2 * j + 1];
    a[2 * j] = x[2 * j] * cr - x[2 * j + 1] * ci;
    a[2 * j + 1] = x[2 * j] * ci + x[2 * j + 1] * cr;
    b[2 * j] = cr;
    b[2 * j + 1] = -ci;
    if (j > 0) {
      b[2 * (m - j)] = cr;
      b[2 * (m - j) + 1] = -ci;
    }
  }
  TwiddleTable forward;
  DoFFT(a.data(), m, 1, forward);
  DoFFT(b.data(), m, 1, forward);
  for (std::size_t k = 0; k < m; ++k) {
    const double ar = a[2 * k], ai = a[2 * k + 1], br = b[2 * k], bi = b[2 * k + 1];
    a[2 * k] = ar * br - ai * bi;
    a[2 * k + 1] = ar * bi + ai * br;
  }
  DoFFT(a.data(), m, -1);
  const double scale = direction < 0 ? static_cast<double>(n) : 1.0;
  for (std::size_t k = 0; k < n; ++k) {
    const double cr = chirp[2 * k], ci = chirp[2 * k + 1];
    x[2 * k] = (a[2 * k] * cr - a[2 * k + 1] * ci) / scale;
    x[2 * k + 1] = (a[2 * k] * ci + a[2 * k + 1] * cr) / scale;
  }
}

}  // namespace

void TransformAnyLength(double* pairs, std::size_t n, int direction) {
  direction = direction < 0 ? -1 : 1;
  if (n <= 1) return;
  if (IsPowerOfTwo(n) && n <= static_cast<std::size_t>(kMaxSpectrumSize)) {
    DoFFT(pairs, n, direction);
  } else {
    Bluestein(pairs, n, direction);
  }
}

}  // namespace detail

namespace {

// The one-sided power spectrum of samples [first, first + n), weighted; pairs is work space.
void SegmentPower(const double* samples, std::size_t n, TFastFourierWgtWin window, Extended alpha,
                  const double* user, std::vector<double>& pairs, TDoubleArray& power) {
  pairs.assign(2 * n, 0.0);
  for (std::size_t k = 0; k < n; ++k)
    pairs[2 * k] = samples[k];
  detail::ApplyWindow(pairs.data(), n, window, alpha, user);
  detail::TransformAnyLength(pairs.data(), n, 1);
  power.resize(n / 2 + 1);
  for (std::size_t line = 0; line <= n / 2; ++line)
    power[line] = detail::LinePower(pairs.data(), n, static_cast<std::int64_t>(line));
}

Extended ClampAlpha(double alpha) {
  return std::isnan(alpha) ? 0 : std::clamp(alpha, 0.0, 1.0);
}

}  // namespace

TDoubleArray RealPowerSpectrum(const TDoubleArray& Samples, TFastFourierWgtWin Window,
                               double TukeyAlpha, const TDoubleArray& UserWeights) {
  constexpr std::string_view kName = "RealPowerSpectrum";
  const std::size_t n = Samples.size();
  if (n == 0) RaiseFunctionError<EQUVFourierError>(kName, msg::kNoSamples);
  if (Window == fwUserDef && UserWeights.size() != n)
    RaiseFunctionError<EQUVFourierError>(kName, msg::kUserWeightsMismatch);
  try {
    std::vector<double> pairs;
    TDoubleArray power;
    SegmentPower(Samples.data(), n, Window, ClampAlpha(TukeyAlpha), UserWeights.data(), pairs,
                 power);
    return power;
  } catch (const std::bad_alloc&) {
    RaiseFunctionError<EQUVFourierError>(kName, msg::kSpectrumNotEnoughMemory);
  }
}

TDoubleArray WelchPowerSpectrum(const TDoubleArray& Samples, std::int32_t SegmentLength,
                                std::int32_t Overlap, TFastFourierWgtWin Window, double TukeyAlpha,
                                const TDoubleArray& UserWeights) {
  constexpr std::string_view kName = "WelchPowerSpectrum";
  if (SegmentLength < 1 || static_cast<std::size_t>(SegmentLength) > Samples.size())
    RaiseFunctionError<EQUVFourierError>(kName, msg::kSegmentLengthOutOfRange);
  if (Overlap < 0 || Overlap >= SegmentLength)
    RaiseFunctionError<EQUVFourierError>(kName, msg::kOverlapOutOfRange);
  const auto n = static_cast<std::size_t>(SegmentLength);
  if (Window == fwUserDef && UserWeights.size() != n)
    RaiseFunctionError<EQUVFourierError>(kName, msg::kUserWeightsMismatch);
  const std::size_t hop = n - static_cast<std::size_t>(Overlap);
  try {
    std::vector<double> pairs;
    TDoubleArray power, segment;
    std::vector<Extended> sum(n / 2 + 1, 0);
    std::size_t count = 0;
    for (std::size_t first = 0; first + n <= Samples.size(); first += hop) {
      SegmentPower(Samples.data() + first, n, Window, ClampAlpha(TukeyAlpha), UserWeights.data(),
                   pairs, segment);
      for (std::size_t line = 0; line < sum.size(); ++line)
        sum[line] += segment[line];
      ++count;
    }
    power.resize(sum.size());
    for (std::size_t line = 0; line < sum.size(); ++line)
      power[line] = static_cast<double>(sum[line] / static_cast<Extended>(count));
    return power;
  } catch (const std::bad_alloc&) {
    RaiseFunctionError<EQUVFourierError>(kName, msg::kSpectrumNotEnoughMemory);
  }
}

void FourierTransform(TDoubleArray& Pairs, std::int32_t Direction) {
  constexpr std::string_view kName = "FourierTransform";
  if (Pairs.size() % 2 != 0) RaiseFunctionError<EQUVFourierError>(kName, msg::kNotPairs);
  try {
    detail::TransformAnyLength(Pairs.data(), Pairs.size() / 2, Direction);
  } catch (const std::bad_alloc&) {
    RaiseFunctionError<EQUVFourierError>(kName, msg::kSpectrumNotEnoughMemory);
  }
}

}  // namespace quv
