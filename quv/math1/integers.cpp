#include "quv/math1/integers.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string_view>

#include "quv/base/constants.h"

namespace quv {
namespace {

constexpr std::int32_t kSieveLimit = 46337;

constexpr std::array<std::int32_t, kNrOfTablePrimes> SievePrimes() {
  std::array<bool, kSieveLimit + 1> composite{};
  std::array<std::int32_t, kNrOfTablePrimes> primes{};
  std::size_t count = 0;
  for (std::int32_t i = 2; i <= kSieveLimit; ++i) {
    if (composite[static_cast<std::size_t>(i)]) continue;
    // A prime past the table size leaves the array short of an entry: a compile error.
    primes.at(count++) = i;
    for (std::int64_t j = std::int64_t{i} * i; j <= kSieveLimit; j += i)
      composite[static_cast<std::size_t>(j)] = true;
  }
  if (count != primes.size()) throw "prime table size mismatch";
  return primes;
}

std::uint32_t Magnitude(std::int32_t v) {
  return v < 0 ? 0u - static_cast<std::uint32_t>(v) : static_cast<std::uint32_t>(v);
}

std::uint32_t GcdUnsigned(std::uint32_t a, std::uint32_t b) {
  while (b != 0) {
    const std::uint32_t r = a % b;
    a = b;
    b = r;
  }
  return a;
}

Extended GcdReal(Extended a, Extended b, Extended tolerance) {
  a = std::fabs(a);
  b = std::fabs(b);
  if (b > a) std::swap(a, b);
  // The nearest remainder at most halves the divisor each step, so the loop ends after at
  // most a few thousand steps whatever the magnitudes.
  while (b > tolerance) {
    Extended r = std::fmod(a, b);
    if (r > b / 2) r = b - r;
    a = b;
    b = r;
  }
  return a;
}

Extended Tolerance(std::int32_t digits) {
  return std::pow(10.0L, -static_cast<Extended>(std::clamp(digits, 0, 12)));
}

}  // namespace

namespace detail {
constexpr std::array<std::int32_t, kNrOfTablePrimes> kPrimeTable = SievePrimes();
}  // namespace detail

std::int32_t GreatestCommonDivisor(std::int32_t a, std::int32_t b) {
  return static_cast<std::int32_t>(GcdUnsigned(Magnitude(a), Magnitude(b)));
}

std::int32_t GreatestCommonDivisor(const TIntArray& a) {
  if (a.empty()) return 0;
  std::uint32_t g = Magnitude(a[0]);
  for (std::size_t i = 1; i < a.size(); ++i)
    g = GcdUnsigned(g, Magnitude(a[i]));
  return static_cast<std::int32_t>(g);
}

double GreatestCommonDivisor(double a, double b, std::int32_t Digits) {
  if (!std::isfinite(a) || !std::isfinite(b)) return std::numeric_limits<double>::quiet_NaN();
  return static_cast<double>(GcdReal(a, b, Tolerance(Digits)));
}

double GreatestCommonDivisor(const TDoubleArray& a, std::int32_t Digits) {
  if (a.empty()) return 0.0;
  const Extended tolerance = Tolerance(Digits);
  Extended g = std::fabs(static_cast<Extended>(a[0]));
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (!std::isfinite(a[i])) return std::numeric_limits<double>::quiet_NaN();
    if (i > 0) g = GcdReal(g, a[i], tolerance);
  }
  return static_cast<double>(g);
}

void CancelFraction(std::int32_t& Num, std::int32_t& Den) {
  if (Num == 0 || Den == 0) return;
  const std::int64_t g = GcdUnsigned(Magnitude(Num), Magnitude(Den));
  Num = static_cast<std::int32_t>(Num / g);
  Den = static_cast<std::int32_t>(Den / g);
}

bool IsPrime(std::int32_t n) {
  const std::uint32_t m = Magnitude(n);
  for (std::uint32_t d = 2; std::uint64_t{d} * d <= m; ++d)
    if (m % d == 0) return false;
  return true;
}

std::int32_t ListOfPrimes(std::int32_t i) {
  if (i < 1 || i > kNrOfTablePrimes) return 0;
  return detail::kPrimeTable[static_cast<std::size_t>(i - 1)];
}

void FindPrimeFactors(std::int32_t n, TIntArray& Factors) {
  TIntArray found;
  if (n >= 2) {
    // Primes below trunc(sqrt(n)) + 1; an integer square root avoids rounding doubts.
    auto root = static_cast<std::int64_t>(std::sqrt(static_cast<double>(n)));
    while (root * root > n)
      --root;
    while ((root + 1) * (root + 1) <= n)
      ++root;
    std::int32_t rest = n;
    for (const std::int32_t p : detail::kPrimeTable) {
      if (p >= root + 1 || rest == 1) break;
      while (rest % p == 0) {
        found.push_back(p);
        rest /= p;
      }
    }
    if (rest >= 2) found.push_back(rest);
  }
  Factors = std::move(found);
}

std::string Roman(std::int32_t n) {
  static constexpr std::array<std::int32_t, 13> kValues = {1000, 900, 500, 400, 100, 90, 50,
                                                           40,   10,  9,   5,   4,   1};
  static constexpr std::array<std::string_view, 13> kTexts = {
      "M", "CM", "D", "CD", "C", "XC", "L", "XL", "X", "IX", "V", "IV", "I"};
  std::string text;
  if (n < 1 || n >= 30000) return text;
  for (std::size_t i = 0; i < kValues.size(); ++i) {
    while (n >= kValues[i]) {
      text += kTexts[i];
      n -= kValues[i];
    }
  }
  return text;
}

}  // namespace quv
