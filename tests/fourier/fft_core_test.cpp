// The radix-2 kernel against a plain stage-by-stage version of the same algorithm, against a
// direct O(n^2) sum and NumPy, round trips, Parseval's relation and the window weights.
#include "quv/fourier/fft_core.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <map>
#include <numbers>
#include <string>
#include <vector>

#include "fourier/fourier_test_util.h"
#include "quv/fourier/windows.h"

namespace quv {
namespace {

// The textbook order of the kernel: for each span, twiddle column by column over all blocks.
void PlainFFT(std::vector<double>& x, int direction) {
  const std::size_t n = x.size() / 2;
  for (std::size_t i = 0, j = 0; i < n; ++i) {  // bit reversal with a reversed counter
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
  for (std::size_t mmax = 1; mmax < n; mmax *= 2) {
    const double theta = direction * (2 * std::numbers::pi / (2.0 * static_cast<double>(mmax)));
    const double h = std::sin(0.5 * theta);
    const double wpr = -2.0 * h * h, wpi = std::sin(theta);
    double wr = 1.0, wi = 0.0;
    for (std::size_t m = 0; m < mmax; ++m) {
      for (std::size_t i = m; i < n; i += 2 * mmax) {
        const std::size_t j = i + mmax;
        const double tr = wr * x[2 * j] - wi * x[2 * j + 1];
        const double ti = wr * x[2 * j + 1] + wi * x[2 * j];
        x[2 * j] = x[2 * i] - tr;
        x[2 * j + 1] = x[2 * i + 1] - ti;
        x[2 * i] += tr;
        x[2 * i + 1] += ti;
      }
      const double old = wr;
      wr = wr + (wr * wpr - wi * wpi);
      wi = wi + (wi * wpr + old * wpi);
    }
  }
  if (direction < 0)
    for (double& v : x)
      v /= static_cast<double>(n);
}

TEST(FFTCore, SpectrumSizeIsAPowerOfTwoAmongTheLow24Bits) {
  for (std::int64_t n : {1, 2, 4, 128, 1 << 23})
    EXPECT_TRUE(detail::IsValidSpectrumSize(n)) << n;
  for (std::int64_t n : {0, -2, 3, 100, 255, 1 << 24, 1 << 30, (1 << 24) + 8})
    EXPECT_FALSE(detail::IsValidSpectrumSize(n)) << n;
}

TEST(FFTCore, BitReversalMovesPairKToItsReversedIndex) {
  const std::size_t n = 16;
  std::vector<double> x(2 * n);
  for (std::size_t k = 0; k < n; ++k) {
    x[2 * k] = static_cast<double>(k);
    x[2 * k + 1] = -static_cast<double>(k);
  }
  detail::BitReversePairs(x.data(), n);
  for (std::size_t k = 0; k < n; ++k) {
    const std::size_t r = ((k & 1) << 3) | ((k & 2) << 1) | ((k & 4) >> 1) | ((k & 8) >> 3);
    EXPECT_EQ(x[2 * k], static_cast<double>(r));
    EXPECT_EQ(x[2 * k + 1], -static_cast<double>(r));
  }
}

// The cache-blocked order must give the plain order's result bit for bit, below, at and above
// the stretch length, in both directions.
TEST(FFTCore, BlockedOrderEqualsThePlainOrderBitForBit) {
  for (std::size_t n : {1u, 2u, 4u, 8u, 512u, 1024u, 2048u, 4096u, 8192u, 1u << 15, 1u << 16}) {
    for (int direction : {1, -1}) {
      std::vector<double> fast = test::TestSignal(n), plain = fast;
      detail::DoFFT(fast.data(), n, direction);
      PlainFFT(plain, direction);
      EXPECT_EQ(0, std::memcmp(fast.data(), plain.data(), fast.size() * sizeof(double)))
          << "n = " << n << " direction " << direction;
    }
  }
}

TEST(FFTCore, AgreesWithTheDirectSumInBothDirections) {
  for (std::size_t n : {2u, 4u, 16u, 64u, 512u}) {
    for (int direction : {1, -1}) {
      std::vector<double> x = test::TestSignal(n);
      auto ref = test::NaiveDFT(x, direction);
      if (direction < 0)
        for (auto& v : ref)
          v /= static_cast<long double>(n);
      detail::DoFFT(x.data(), n, direction);
      EXPECT_LT(test::MaxRelDiff(x, ref), 1e-14) << "n = " << n << " direction " << direction;
    }
  }
}

TEST(FFTCore, AgreesWithNumPy) {
  std::map<std::size_t, std::vector<double>> expected;
  for (const auto& row : test::ReadWords("fourier_spectra.txt")) {
    if (row[0] != "c") continue;
    auto& x = expected[std::stoul(row[1])];
    x.push_back(std::stod(row[3]));
    x.push_back(std::stod(row[4]));
  }
  ASSERT_TRUE(expected.count(8) && expected.count(32));
  for (std::size_t n : {8u, 32u}) {
    std::vector<double> x = test::TestSignal(n);
    detail::DoFFT(x.data(), n, 1);
    double scale = 0;
    for (double v : expected[n])
      scale = std::max(scale, std::abs(v));
    for (std::size_t k = 0; k < 2 * n; ++k)
      EXPECT_NEAR(x[k], expected[n][k], 1e-14 * scale) << "n = " << n << " at " << k;
  }
}

TEST(FFTCore, ForwardThenInverseRestoresTheSamples) {
  for (std::size_t n = 2; n <= (1u << 16); n *= 2) {
    const std::vector<double> original = test::TestSignal(n);
    std::vector<double> x = original;
    detail::DoFFT(x.data(), n, 1);
    detail::DoFFT(x.data(), n, -1);
    double worst = 0;
    for (std::size_t k = 0; k < x.size(); ++k)
      worst = std::max(worst, std::abs(x[k] - original[k]));
    // The signal's parts are of order 1, so the absolute error is the relative one.
    EXPECT_LT(worst, 1e-12) << "n = " << n;
  }
}

TEST(FFTCore, ParsevalsRelationHolds) {
  for (std::size_t n : {16u, 1024u}) {
    std::vector<double> x = test::TestSignal(n, true);
    long double energy = 0;
    for (double v : x)
      energy += static_cast<long double>(v) * v;
    detail::DoFFT(x.data(), n, 1);
    long double lines = 0;
    for (std::size_t line = 0; line <= n / 2; ++line)
      lines += detail::LinePower(x.data(), n, static_cast<std::int64_t>(line));
    // The power of line n/2 counts its pair twice: take one copy away.
    lines -= (x[n] * x[n] + x[n + 1] * x[n + 1]) / n;
    EXPECT_NEAR(static_cast<double>(lines), static_cast<double>(energy), 1e-12 * energy);
    const double rms = std::sqrt(static_cast<double>(energy) / n);
    EXPECT_NEAR(detail::LinesRMS(x.data(), n, 0, static_cast<std::int64_t>(n / 2)), rms,
                1e-14 * rms);
  }
}

TEST(Windows, WeightsMatchTheReferenceTable) {
  const std::map<std::string, TFastFourierWgtWin> names = {
      {"triangle", fwTriangle},       {"cos2", fwCos2},         {"gauss", fwGauss},
      {"hamming", fwHamming},         {"blackman", fwBlackman}, {"blkmharris", fwBlkmHarris},
      {"blkmnuttall", fwBlkmNuttall}, {"tukey", fwTukey}};
  const auto rows = test::ReadWords("fourier_windows.txt");
  ASSERT_GT(rows.size(), 100u);
  for (const auto& row : rows) {
    const TFastFourierWgtWin window = names.at(row[0]);
    const std::size_t n = std::stoul(row[1]), i = std::stoul(row[3]);
    const Extended alpha = std::stold(row[2]);
    const double expected = std::stod(row[4]);
    const auto weight = static_cast<double>(detail::WindowWeight(window, i, n, alpha, nullptr));
    EXPECT_NEAR(weight, expected, 2e-16 * std::max(1.0, std::abs(expected)))
        << row[0] << " n = " << n << " alpha " << row[2] << " i = " << i;
  }
}

TEST(Windows, RectangleUserAndZeroAlphaTukeyBehave) {
  const double user[4] = {0.5, 2.0, -1.0, 3.0};
  for (std::size_t i = 1; i <= 4; ++i) {
    EXPECT_EQ(detail::WindowWeight(fwRectangle, i, 4, 0, nullptr), 1);
    EXPECT_EQ(detail::WindowWeight(fwUserDef, i, 4, 0, user), user[i - 1]);
    EXPECT_EQ(detail::WindowWeight(fwTukey, i, 4, 0, nullptr), 1);
  }
  // The middle sample of an odd block has no triangle partner and keeps its value.
  EXPECT_EQ(detail::WindowWeight(fwTriangle, 3, 5, 0, nullptr), 1);
  EXPECT_NEAR(static_cast<double>(detail::WindowWeight(fwTriangle, 5, 5, 0, nullptr)), 0.4, 1e-18);
}

}  // namespace
}  // namespace quv
