// Helpers shared by the Fourier tests: an independent O(n^2) transform, the test signal of
// tests/data/fourier_reference.py and the reader of its tables.
#pragma once

#include <cmath>
#include <complex>
#include <fstream>
#include <numbers>
#include <sstream>
#include <string>
#include <vector>

namespace quv::test {

/// The direct sum X_k = sum_j x_j e^(s 2 pi i jk/n) in extended precision, with the angle
/// reduced exactly (jk mod n) so that long blocks keep full accuracy. pairs holds n (re, im).
inline std::vector<std::complex<long double>> NaiveDFT(const std::vector<double>& pairs, int sign) {
  const std::size_t n = pairs.size() / 2;
  std::vector<long double> c(n), s(n);
  const long double step = sign * 2 * std::numbers::pi_v<long double> / n;
  for (std::size_t m = 0; m < n; ++m) {
    c[m] = std::cos(step * m);
    s[m] = std::sin(step * m);
  }
  std::vector<std::complex<long double>> x(n);
  for (std::size_t k = 0; k < n; ++k) {
    long double re = 0, im = 0;
    for (std::size_t j = 0, m = 0; j < n; ++j, m = (m + k) % n) {
      re += pairs[2 * j] * c[m] - pairs[2 * j + 1] * s[m];
      im += pairs[2 * j] * s[m] + pairs[2 * j + 1] * c[m];
    }
    x[k] = {re, im};
  }
  return x;
}

/// The test signal of fourier_reference.py: re_k = sin(0.37 k) + 0.25 cos(0.05 k^2),
/// im_k = 0.5 cos(1.3 k), as n (re, im) pairs; with real_only the imaginary parts are 0.
inline std::vector<double> TestSignal(std::size_t n, bool real_only = false) {
  std::vector<double> pairs(2 * n);
  for (std::size_t k = 0; k < n; ++k) {
    const double x = static_cast<double>(k);
    pairs[2 * k] = std::sin(0.37 * x) + 0.25 * std::cos(0.05 * x * x);
    pairs[2 * k + 1] = real_only ? 0.0 : 0.5 * std::cos(1.3 * x);
  }
  return pairs;
}

/// The rows of a table of tests/data as whitespace-separated words ('#' lines skipped).
inline std::vector<std::vector<std::string>> ReadWords(const std::string& name) {
  std::vector<std::vector<std::string>> rows;
  std::ifstream in(std::string(QUV_TEST_DATA_DIR) + "/" + name);
  std::string line;
  while (std::getline(in, line)) {
    if (line.empty() || line[0] == '#') continue;
    std::istringstream fields(line);
    std::vector<std::string> row;
    for (std::string word; fields >> word;)
      row.push_back(word);
    rows.push_back(row);
  }
  return rows;
}

/// Largest |a_k - b_k| over the pairs relative to the largest |b_k|.
inline long double MaxRelDiff(const std::vector<double>& pairs,
                              const std::vector<std::complex<long double>>& ref) {
  long double scale = 0, diff = 0;
  for (std::size_t k = 0; k < ref.size(); ++k) {
    scale = std::max(scale, std::abs(ref[k]));
    diff = std::max(diff,
                    std::abs(std::complex<long double>(pairs[2 * k], pairs[2 * k + 1]) - ref[k]));
  }
  return scale > 0 ? diff / scale : diff;
}

}  // namespace quv::test
