// Spectra of any length: against the component for powers of two, against the direct sum and
// NumPy otherwise, Welch's periodogram and the errors of the free functions.
#include "quv/fourier/any_length.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <numbers>
#include <vector>

#include "common/raised_message.h"
#include "fourier/fourier_test_util.h"
#include "quv/fourier/fast_fourier.h"
#include "quv/fourier/fft_core.h"

namespace quv {
namespace {

std::vector<double> RealParts(const std::vector<double>& pairs) {
  std::vector<double> re(pairs.size() / 2);
  for (std::size_t k = 0; k < re.size(); ++k)
    re[k] = pairs[2 * k];
  return re;
}

TEST(RealPowerSpectrum, EqualsTheComponentForPowersOfTwo) {
  for (std::int32_t n : {1, 2, 64, 4096}) {
    for (TFastFourierWgtWin window : {fwRectangle, fwBlackman, fwTukey, fwUserDef}) {
      const std::vector<double> x = RealParts(test::TestSignal(n));
      std::vector<double> user(n);
      TFastFourier ff;
      ff.SetNumData(n);
      ff.SetWgtWin(window);
      ff.SetTukAlpha(0.3);
      for (std::int32_t i = 1; i <= n; ++i) {
        ff.SetRealVal(i, x[i - 1]);
        user[i - 1] = std::cos(0.01 * i);
        ff.SetWgtVal(i, user[i - 1]);
      }
      ff.Transform();
      const TDoubleArray power = RealPowerSpectrum(x, window, 0.3, user);
      ASSERT_EQ(power.size(), static_cast<std::size_t>(n / 2 + 1));
      for (std::int32_t line = 0; line <= n / 2; ++line)
        EXPECT_EQ(power[line], ff.GetPowerSpec(line)) << "n " << n << " window " << window;
    }
  }
}

// Bluestein against the direct sum, forward and inverse, for awkward lengths.
TEST(FourierTransform, AnyLengthAgreesWithTheDirectSum) {
  for (std::size_t n : {3u, 5u, 7u, 100u, 1000u, 1023u, 1025u}) {
    for (int direction : {1, -1}) {
      TDoubleArray x = test::TestSignal(n);
      auto ref = test::NaiveDFT(x, direction);
      if (direction < 0)
        for (auto& v : ref)
          v /= static_cast<long double>(n);
      FourierTransform(x, direction);
      EXPECT_LT(test::MaxRelDiff(x, ref), 1e-13) << "n " << n << " direction " << direction;
    }
  }
}

TEST(RealPowerSpectrum, AgreesWithTheDirectSumAndNumPy) {
  std::map<std::size_t, std::vector<double>> numpy;
  for (const auto& row : test::ReadWords("fourier_spectra.txt"))
    if (row[0] == "r") numpy[std::stoul(row[1])].push_back(std::stod(row[3]));
  for (std::size_t n : {3u, 5u, 7u, 12u, 100u, 1000u}) {
    const TDoubleArray x = RealParts(test::TestSignal(n));
    const auto ref = test::NaiveDFT(test::TestSignal(n, true), 1);
    const TDoubleArray power = RealPowerSpectrum(x);
    ASSERT_EQ(power.size(), n / 2 + 1);
    long double top = 1;
    for (const auto& v : ref)
      top = std::max(top, 2 * std::norm(v) / n);
    for (std::size_t line = 0; line <= n / 2; ++line) {
      long double expected = std::norm(ref[line]);
      if (line > 0) expected += std::norm(ref[n - line]);
      expected /= n;
      EXPECT_NEAR(power[line], static_cast<double>(expected), 1e-13 * top)
          << "n " << n << " line " << line;
      if (numpy.count(n)) {
        EXPECT_NEAR(power[line], numpy[n][line], 1e-13 * top) << "n " << n << " line " << line;
      }
    }
  }
}

TEST(RealPowerSpectrum, SineOnALineOfAnOddLength) {
  const std::size_t n = 999, k = 37;
  const double a = 3.0;
  TDoubleArray x(n);
  for (std::size_t j = 0; j < n; ++j)
    x[j] = a * std::sin(2 * std::numbers::pi * static_cast<double>(k * j) / n);
  const TDoubleArray power = RealPowerSpectrum(x);
  EXPECT_NEAR(power[k], a * a * n / 2, 1e-9);
  EXPECT_NEAR(power[k + 1], 0.0, 1e-9);
}

TEST(WelchPowerSpectrum, AveragesTheSegments) {
  const TDoubleArray x = RealParts(test::TestSignal(1000));
  // Segments of 200 with overlap 50 start at 0, 150, ..., 750: six of them.
  const TDoubleArray welch = WelchPowerSpectrum(x, 200, 50, fwHamming);
  ASSERT_EQ(welch.size(), 101u);
  std::vector<long double> sum(101, 0);
  for (std::size_t first = 0; first + 200 <= 1000; first += 150) {
    const TDoubleArray part(x.begin() + static_cast<std::ptrdiff_t>(first),
                            x.begin() + static_cast<std::ptrdiff_t>(first + 200));
    const TDoubleArray p = RealPowerSpectrum(part, fwHamming);
    for (std::size_t l = 0; l < sum.size(); ++l)
      sum[l] += p[l];
  }
  for (std::size_t l = 0; l < sum.size(); ++l)
    EXPECT_NEAR(welch[l], static_cast<double>(sum[l] / 6), 1e-12 * (1 + welch[l])) << l;
  // One segment over everything is the plain spectrum.
  EXPECT_EQ(WelchPowerSpectrum(x, 1000, 0, fwBlackman), RealPowerSpectrum(x, fwBlackman));
}

TEST(SpectrumFunctions, BadArgumentsRaiseNamedErrors) {
  const TDoubleArray x(10, 1.0);
  auto message = [](auto&& call) { return test::RaisedMessage<EQUVFourierError>(call); };
  EXPECT_EQ(message([] { (void)RealPowerSpectrum({}); }), "RealPowerSpectrum: no samples");
  EXPECT_EQ(message([&] {
              (void)RealPowerSpectrum(x, fwUserDef, 0, {1.0, 2.0});
            }),
            "RealPowerSpectrum: the number of user weights differs from the number of samples");
  EXPECT_EQ(message([&] {
              (void)RealPowerSpectrum(x, fwHamming, 0, {1.0, 2.0});
            }),
            test::kNothingRaised);
  for (std::int32_t length : {0, -1, 11})
    EXPECT_EQ(message([&] { (void)WelchPowerSpectrum(x, length, 0); }),
              "WelchPowerSpectrum: segment length out of range");
  for (std::int32_t overlap : {-1, 4})
    EXPECT_EQ(message([&] { (void)WelchPowerSpectrum(x, 4, overlap); }),
              "WelchPowerSpectrum: overlap out of range");
  TDoubleArray odd(5, 0.0);
  EXPECT_EQ(message([&] { FourierTransform(odd, 1); }),
            "FourierTransform: the data do not form (re, im) pairs");
}

TEST(SpectrumFunctions, NonFiniteSamplesPropagate) {
  TDoubleArray x(37, 1.0);
  x[4] = std::numeric_limits<double>::quiet_NaN();
  const TDoubleArray power = RealPowerSpectrum(x, fwHamming);
  EXPECT_TRUE(std::isnan(power[3]));
}

}  // namespace
}  // namespace quv
