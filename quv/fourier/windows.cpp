#include "quv/fourier/windows.h"

#include <cmath>
#include <numbers>

namespace quv::detail {

namespace {

constexpr Extended kPi = std::numbers::pi_v<Extended>;

// a0 + a1 cos(2 pi t) + a2 cos(4 pi t) + a3 cos(6 pi t)
Extended CosineSum(Extended t, Extended a0, Extended a1, Extended a2, Extended a3) {
  return a0 + a1 * std::cos(2 * kPi * t) + a2 * std::cos(4 * kPi * t) + a3 * std::cos(6 * kPi * t);
}

}  // namespace

Extended WindowWeight(TFastFourierWgtWin window, std::size_t i, std::size_t n, Extended alpha,
                      const double* user) {
  const auto x = static_cast<Extended>(i);
  const auto N = static_cast<Extended>(n);
  const Extended t = (x - N / 2) / N;
  switch (window) {
    case fwRectangle:
      return 1;
    case fwTriangle: {
      const std::size_t half = n / 2;
      if (i <= half) return 2 * x / N;
      const std::size_t mirror = n + 1 - i;
      return mirror <= half ? 2 * static_cast<Extended>(mirror) / N : 1;
    }
    case fwCos2: {
      const Extended c = std::cos(kPi * t);
      return c * c;
    }
    case fwGauss: {
      const Extended z = 3 * (x - N / 2) / (N / 2);
      return std::exp(-0.5L * z * z);
    }
    case fwHamming:
      return CosineSum(t, 0.543478261L, 0.456521739L, 0, 0);
    case fwBlackman:
      return CosineSum(t, 0.42659L, 0.49656L, 0.076848L, 0);
    case fwBlkmHarris:
      return CosineSum(t, 0.35875L, 0.48829L, 0.14128L, 0.01168L);
    case fwBlkmNuttall:
      return CosineSum(t, 0.3635819L, 0.4891775L, 0.1365995L, 0.0106411L);
    case fwTukey: {
      const Extended edge = alpha * N / 2;
      if (edge <= x && x <= N - edge) return 1;
      return 0.5L * (1 - std::cos(2 * kPi * x / (alpha * N)));
    }
    case fwUserDef:
      return user != nullptr ? user[i - 1] : 1;
  }
  return 1;
}

void ApplyWindow(double* pairs, std::size_t n, TFastFourierWgtWin window, Extended alpha,
                 const double* user) {
  if (window == fwRectangle) return;
  for (std::size_t i = 1; i <= n; ++i) {
    const Extended w = WindowWeight(window, i, n, alpha, user);
    double* pair = pairs + 2 * (i - 1);
    pair[0] = static_cast<double>(pair[0] * w);
    pair[1] = static_cast<double>(pair[1] * w);
  }
}

}  // namespace quv::detail
