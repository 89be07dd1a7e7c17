// TFastFourier: sizes and their errors, the user weights, element access, the windows as the
// component applies them, and every reading of the spectrum.
#include "quv/fourier/fast_fourier.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>
#include <vector>

#include "common/raised_message.h"
#include "fourier/fourier_test_util.h"
#include "quv/fourier/fft_core.h"

namespace quv {
namespace {

constexpr double kPi = std::numbers::pi;

std::string MessageOf(auto&& call) {
  return test::RaisedMessage<EQUVFourierError>(call);
}

// Fills samples 1..N with f(k) for k = 0..N-1 (real parts only).
template <class F>
void FillReal(TFastFourier& ff, F f) {
  for (std::int32_t i = 1; i <= ff.SpectrumSize(); ++i)
    ff.SetRealVal(i, f(i - 1));
}

TEST(FastFourier, CreateGivesTheDefaults) {
  TFastFourier ff;
  EXPECT_EQ(ff.SpectrumSize(), 256);
  EXPECT_EQ(ff.WeightingWindow(), fwRectangle);
  EXPECT_EQ(ff.TukeyAlpha(), 0.0);
  for (std::int32_t i : {1, 128, 256}) {
    EXPECT_EQ(ff.GetRealVal(i), 0.0);
    EXPECT_EQ(ff.GetImagVal(i), 0.0);
    EXPECT_EQ(ff.GetWgtVal(i), 1.0);
  }
}

TEST(FastFourier, SizeMustBeAPowerOfTwoAndNothingChangesOtherwise) {
  TFastFourier ff;
  ff.SetName("FFT1");
  ff.SetRealVal(3, 7.5);
  ff.SetWgtVal(2, 0.25);
  for (std::int32_t bad : {100, 0, -256, 3, 1 << 24, (1 << 24) + 8}) {
    EXPECT_EQ(MessageOf([&] { ff.SetNumData(bad); }),
              "Component \"FFT1\": data length must be power of 2")
        << bad;
  }
  EXPECT_EQ(ff.SpectrumSize(), 256);
  EXPECT_EQ(ff.GetRealVal(3), 7.5);
  EXPECT_EQ(ff.GetWgtVal(2), 0.25);
}

// After Create the user weights are 1.0, after every later size change 0.0 (kept on purpose).
TEST(FastFourier, ResizeZeroesDataAndUserWeights) {
  TFastFourier ff;
  ff.SetRealVal(1, 1.0);
  ff.SetImagVal(1, 2.0);
  for (std::int32_t n : {128, 128, 1, 1 << 23}) {
    ff.SetNumData(n);
    EXPECT_EQ(ff.SpectrumSize(), n);
    for (std::int32_t i : {1, n}) {
      EXPECT_EQ(ff.GetRealVal(i), 0.0);
      EXPECT_EQ(ff.GetImagVal(i), 0.0);
      EXPECT_EQ(ff.GetWgtVal(i), 0.0);
    }
    ff.SetRealVal(1, 1.0);
  }
}

TEST(FastFourier, IndexErrorsReadZeroAndWritesAreIgnored) {
  TFastFourier ff;
  ff.SetNumData(4);
  for (std::int32_t i : {0, -1, 5, std::numeric_limits<std::int32_t>::max()}) {
    ff.SetRealVal(i, 9.0);
    ff.SetImagVal(i, 9.0);
    ff.SetWgtVal(i, 9.0);
    EXPECT_EQ(ff.GetRealVal(i), 0.0);
    EXPECT_EQ(ff.GetImagVal(i), 0.0);
    EXPECT_EQ(ff.GetWgtVal(i), 0.0);
  }
  for (std::int32_t i = 1; i <= 4; ++i) {
    EXPECT_EQ(ff.GetRealVal(i), 0.0);
    EXPECT_EQ(ff.GetWgtVal(i), 0.0);
  }
  for (std::int32_t line : {-1, 3, 4}) {
    ff.SetRealVal(1, 1.0);
    EXPECT_EQ(ff.GetPowerSpec(line), 0.0);
    EXPECT_EQ(ff.GetMagnitude(line), 0.0);
    EXPECT_EQ(ff.GetPhase(line), 0.0);
    EXPECT_EQ(ff.GetFSerSin(line), 0.0);
    EXPECT_EQ(ff.GetFSerCos(line), 0.0);
  }
}

TEST(FastFourier, ClearVariantsZeroTheirParts) {
  TFastFourier ff;
  ff.SetNumData(2);
  auto fill = [&] {
    ff.SetRealVal(1, 1);
    ff.SetImagVal(1, 2);
    ff.SetRealVal(2, 3);
    ff.SetImagVal(2, 4);
  };
  fill();
  ff.ClearReal();
  EXPECT_EQ(
      (std::vector<double>{ff.GetRealVal(1), ff.GetImagVal(1), ff.GetRealVal(2), ff.GetImagVal(2)}),
      (std::vector<double>{0, 2, 0, 4}));
  fill();
  ff.ClearImag();
  EXPECT_EQ(
      (std::vector<double>{ff.GetRealVal(1), ff.GetImagVal(1), ff.GetRealVal(2), ff.GetImagVal(2)}),
      (std::vector<double>{1, 0, 3, 0}));
  fill();
  ff.Clear();
  EXPECT_EQ(ff.GetMaxReal(), 0.0);
  EXPECT_EQ(ff.GetMinImag(), 0.0);
}

TEST(FastFourier, TukeyAlphaIsClamped) {
  TFastFourier ff;
  const std::pair<double, double> cases[] = {
      {1.5, 1.0}, {-1.0, 0.0}, {0.25, 0.25}, {std::numeric_limits<double>::quiet_NaN(), 0.0}};
  for (const auto& [given, stored] : cases) {
    ff.SetTukAlpha(given);
    EXPECT_EQ(ff.TukeyAlpha(), stored) << given;
  }
}

TEST(FastFourier, ConstantSignalLandsOnLineZero) {
  TFastFourier ff;
  ff.SetNumData(64);
  const double c = 1.5;
  FillReal(ff, [&](int) { return c; });
  ff.Transform();
  EXPECT_NEAR(ff.GetPowerSpec(0), 64 * c * c, 1e-12);
  EXPECT_NEAR(ff.GetMagnitude(0), c, 1e-15);
  EXPECT_NEAR(ff.GetFSerCos(0), c, 1e-15);
  for (std::int32_t line = 1; line <= 32; ++line)
    EXPECT_NEAR(ff.GetPowerSpec(line), 0.0, 1e-24) << line;
  EXPECT_NEAR(ff.GetMaxPower(), 64 * c * c, 1e-12);
  EXPECT_NEAR(ff.GetMaxMagni(), c, 1e-15);
}

// A cosine and a sine of amplitude a on line k: magnitude and series coefficient a, phase 0
// or +pi/2 (positive exponent), power a^2 N/2, RMS a/sqrt 2, nothing on the other lines.
TEST(FastFourier, PureCosineAndSineLandOnTheirLine) {
  const std::int32_t n = 128, k = 9;
  const double a = 2.5;
  struct Case {
    bool sine;
    double phase, fcos, fsin;
  };
  for (const Case& c : {Case{false, 0.0, a, 0.0}, Case{true, kPi / 2, 0.0, a}}) {
    TFastFourier ff;
    ff.SetNumData(n);
    FillReal(ff, [&](int j) {
      const double angle = 2 * kPi * k * j / n;
      return a * (c.sine ? std::sin(angle) : std::cos(angle));
    });
    ff.Transform();
    EXPECT_NEAR(ff.GetMagnitude(k), a, 1e-13);
    // Two quadrants only: a sine reads +pi/2 or, with a rounding-sized negative real part,
    // -pi/2; the sign of its series coefficient tells them apart.
    EXPECT_NEAR(std::abs(ff.GetPhase(k)), c.phase, 1e-12);
    EXPECT_NEAR(ff.GetFSerCos(k), c.fcos, 1e-13);
    EXPECT_NEAR(ff.GetFSerSin(k), c.fsin, 1e-13);
    EXPECT_NEAR(ff.GetPowerSpec(k), a * a * n / 2, 1e-10);
    EXPECT_NEAR(ff.RMS(k, k), a / std::sqrt(2.0), 1e-13);
    EXPECT_NEAR(ff.RMS(-5, 1000), a / std::sqrt(2.0), 1e-13);
    EXPECT_NEAR(ff.RMS(0, k - 1), 0.0, 1e-13);
    EXPECT_EQ(ff.RMS(k + 1, k), 0.0);
    for (std::int32_t line = 0; line <= n / 2; ++line)
      if (line != k) {
        EXPECT_NEAR(ff.GetMagnitude(line), 0.0, 1e-13) << line;
      }
    EXPECT_NEAR(ff.GetMaxMagni(), a, 1e-13);
  }
}

TEST(FastFourier, NyquistLineCountsItsPairTwiceInPowerButOnceInTheSeries) {
  TFastFourier ff;
  ff.SetNumData(8);
  FillReal(ff, [](int j) { return j % 2 == 0 ? 1.0 : -1.0; });
  ff.Transform();
  EXPECT_NEAR(ff.GetFSerCos(4), 1.0, 1e-15);
  EXPECT_EQ(ff.GetFSerSin(4), 0.0);
  EXPECT_NEAR(ff.GetPowerSpec(4), 2 * 64.0 / 8, 1e-13);
  EXPECT_NEAR(ff.GetMagnitude(4), 2.0, 1e-15);
  EXPECT_NEAR(ff.RMS(0, 4), 1.0, 1e-15);
}

TEST(FastFourier, PhaseIsTwoQuadrantWithTheZeroRealPartRule) {
  TFastFourier ff;
  ff.SetNumData(8);
  struct Case {
    double re, im, phase;
  };
  const Case cases[] = {{0, 0, -kPi / 2}, {0, -3, -kPi / 2}, {0, 2, kPi / 2},
                        {1, 1, kPi / 4},  {-1, 1, -kPi / 4}, {-1, -1, kPi / 4}};
  for (const Case& c : cases) {
    ff.SetRealVal(3, c.re);  // pair 3 holds line 2
    ff.SetImagVal(3, c.im);
    EXPECT_DOUBLE_EQ(ff.GetPhase(2), c.phase) << c.re << ", " << c.im;
  }
  EXPECT_EQ(ff.GetPhase(0), 0.0);
}

TEST(FastFourier, TransformThenInverseRestoresTheSamples) {
  TFastFourier ff;
  ff.SetNumData(1024);
  const std::vector<double> x = test::TestSignal(1024);
  for (std::int32_t i = 1; i <= 1024; ++i) {
    ff.SetRealVal(i, x[2 * (i - 1)]);
    ff.SetImagVal(i, x[2 * (i - 1) + 1]);
  }
  ff.Transform();
  ff.InverseTransform();
  for (std::int32_t i = 1; i <= 1024; ++i) {
    EXPECT_NEAR(ff.GetRealVal(i), x[2 * (i - 1)], 1e-13);
    EXPECT_NEAR(ff.GetImagVal(i), x[2 * (i - 1) + 1], 1e-13);
  }
}

// Transform weights the stored samples in place with every window: compare with the weights
// of the window function times the samples, transformed by the kernel.
TEST(FastFourier, TransformAppliesTheSelectedWindowInPlace) {
  const std::int32_t n = 16;
  for (int w = 0; w < kFastFourierWindowCount; ++w) {
    const auto window = static_cast<TFastFourierWgtWin>(w);
    TFastFourier ff;
    ff.SetNumData(n);
    ff.SetWgtWin(window);
    ff.SetTukAlpha(0.5);
    std::vector<double> expected = test::TestSignal(n);
    for (std::int32_t i = 1; i <= n; ++i) {
      ff.SetRealVal(i, expected[2 * (i - 1)]);
      ff.SetImagVal(i, expected[2 * (i - 1) + 1]);
      ff.SetWgtVal(i, 0.1 * i);
    }
    std::vector<double> user(n);
    for (std::int32_t i = 1; i <= n; ++i)
      user[i - 1] = 0.1 * i;
    detail::ApplyWindow(expected.data(), n, window, 0.5L, user.data());
    detail::DoFFT(expected.data(), n, 1);
    ff.Transform();
    for (std::int32_t i = 1; i <= n; ++i) {
      EXPECT_EQ(ff.GetRealVal(i), expected[2 * (i - 1)]) << "window " << w << " i " << i;
      EXPECT_EQ(ff.GetImagVal(i), expected[2 * (i - 1) + 1]) << "window " << w << " i " << i;
    }
  }
}

TEST(FastFourier, UserWindowAfterCreateAndTukeyWithZeroAlphaLeaveTheData) {
  for (TFastFourierWgtWin window : {fwUserDef, fwTukey, fwRectangle}) {
    TFastFourier weighted, plain;
    weighted.SetWgtWin(window);
    for (TFastFourier* ff : {&weighted, &plain})
      FillReal(*ff, [](int j) { return std::sin(0.3 * j) + 0.1 * j; });
    weighted.Transform();
    plain.Transform();
    for (std::int32_t line = 0; line <= 128; ++line)
      EXPECT_EQ(weighted.GetPowerSpec(line), plain.GetPowerSpec(line)) << window;
  }
}

TEST(FastFourier, FrequencyAndLineConvertBothWays) {
  TFastFourier ff;
  ff.SetNumData(256);
  const double dt = 0.01;
  EXPECT_EQ(ff.FreqOfLine(0, dt), 0.0);
  EXPECT_EQ(ff.FreqOfLine(129, dt), 0.0);
  EXPECT_DOUBLE_EQ(ff.FreqOfLine(1, dt), 1 / 2.56);
  EXPECT_DOUBLE_EQ(ff.FreqOfLine(128, dt), 50.0);
  for (std::int32_t line : {1, 7, 128})
    EXPECT_EQ(ff.LineOfFreq(ff.FreqOfLine(line, dt), dt), line);
  // N dt f = 2.5 and 3.5: ties go to the even line.
  EXPECT_EQ(ff.LineOfFreq(2.5 / 2.56, dt), 2);
  EXPECT_EQ(ff.LineOfFreq(3.5 / 2.56, dt), 4);
  for (double f : {0.0, 0.1, 60.0, -5.0, std::numeric_limits<double>::quiet_NaN()})
    EXPECT_EQ(ff.LineOfFreq(f, dt), 0) << f;
}

TEST(FastFourier, ExtremesFollowTheData) {
  TFastFourier ff;
  ff.SetNumData(4);
  ff.SetRealVal(2, 5.0);
  ff.SetImagVal(3, -2.0);
  EXPECT_EQ(ff.GetMaxReal(), 5.0);
  EXPECT_EQ(ff.GetMinReal(), 0.0);
  EXPECT_EQ(ff.GetMinImag(), -2.0);
  EXPECT_EQ(ff.GetMaxImag(), 0.0);
  ff.SetRealVal(4, -7.0);  // the cache is recomputed after a write
  EXPECT_EQ(ff.GetMinReal(), -7.0);
  ff.SetImagVal(1, 3.0);
  EXPECT_EQ(ff.GetMaxImag(), 3.0);
  ff.DoFFT(1);
  double max_power = 0, max_real = -1e300;
  for (std::int32_t line = 0; line <= 2; ++line)
    max_power = std::max(max_power, ff.GetPowerSpec(line));
  for (std::int32_t i = 1; i <= 4; ++i)
    max_real = std::max(max_real, ff.GetRealVal(i));
  EXPECT_EQ(ff.GetMaxPower(), max_power);
  EXPECT_EQ(ff.GetMaxReal(), max_real);
}

TEST(FastFourier, NonFiniteSamplesPropagateWithoutHarm) {
  for (double bad :
       {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()}) {
    TFastFourier ff;
    ff.SetNumData(16);
    FillReal(ff, [](int j) { return 1.0 * j; });
    ff.SetRealVal(5, bad);
    ff.SetWgtWin(fwHamming);
    ff.Transform();
    EXPECT_TRUE(std::isnan(ff.GetPowerSpec(1)) || std::isinf(ff.GetPowerSpec(1)));
    EXPECT_TRUE(std::isnan(ff.GetMaxPower()) || std::isinf(ff.GetMaxPower()));
    EXPECT_TRUE(!std::isfinite(ff.RMS(0, 8)));
  }
}

}  // namespace
}  // namespace quv
