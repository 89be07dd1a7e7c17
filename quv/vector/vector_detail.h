// Helpers of the vector statistics that other containers can share: ordering of work arrays,
// percentiles by linear interpolation, and histogram counting.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <type_traits>
#include <vector>

#include "quv/base/base.h"
#include "quv/math1/numtext.h"

namespace quv::detail {

/// The data checksum of every container (CRCofData), one rule for all element types: eight
/// CRC-32 registers started at 0xFFFFFFFF; the little-endian bytes of each element, in the
/// container's store order, go into registers 0, 1, ... (a double feeds all eight, a 32-bit
/// integer registers 0..3 only, the others staying untouched). At the end every register is
/// complemented and written as 8 hexadecimal digits, register 0 first: 64 characters (for
/// integers the last 32 are always zeros).
class TDataCRC {
 public:
  template <class T>
  void Add(T x) {
    static_assert(sizeof(T) == 8 || sizeof(T) == 4);
    std::uint64_t bits = 0;
    if constexpr (sizeof(T) == 8) {
      std::memcpy(&bits, &x, 8);
    } else {
      std::uint32_t b32 = 0;
      std::memcpy(&b32, &x, 4);
      bits = b32;
    }
    for (std::size_t k = 0; k < sizeof(T); ++k)
      reg_[k] = CalcNextCRC32(static_cast<std::uint8_t>(bits >> (8 * k)), reg_[k]);
  }
  std::string Text() const {
    std::string text;
    text.reserve(64);
    for (const std::uint32_t r : reg_)
      text += Hex(static_cast<std::int32_t>(~r), 8);
    return text;
  }

 private:
  std::uint32_t reg_[8] = {0xFFFFFFFFu, 0xFFFFFFFFu, 0xFFFFFFFFu, 0xFFFFFFFFu,
                           0xFFFFFFFFu, 0xFFFFFFFFu, 0xFFFFFFFFu, 0xFFFFFFFFu};
};

/// Strict weak order that puts NaNs after every number, so that the standard sorts stay
/// well-defined on any data.
template <class T>
bool LessNaNLast(T a, T b) {
  if constexpr (std::is_floating_point_v<T>)
    return a < b || (std::isnan(b) && !std::isnan(a));
  else
    return a < b;
}

/// Sorts a work array ascending (NaNs last); counts as one step of the progress protocol.
template <class T>
void SortForStatistics(std::vector<T>& work) {
  std::sort(work.begin(), work.end(), LessNaNLast<T>);
  (void)ProgressStep(1.0);
}

/// P-th percentile of sorted values s[0..c-1] (c >= 1): P is clamped into 0..100; c = 1 or
/// P = 100 give an end value, otherwise s[i] + (s[i+1] - s[i]) * f with i + f = (c - 1) P / 100.
template <class T>
double PercentileOfSorted(const T* s, std::size_t c, double P) {
  P = std::isnan(P) ? 0.0 : std::clamp(P, 0.0, 100.0);
  if (c == 1) return static_cast<double>(s[0]);
  if (P == 100.0) return static_cast<double>(s[c - 1]);
  const Extended pos = static_cast<Extended>(c - 1) * P / 100.0L;
  const auto i = static_cast<std::size_t>(pos);
  const Extended f = pos - static_cast<Extended>(i);
  const Extended lo = s[i];
  return static_cast<double>(lo + (static_cast<Extended>(s[i + 1]) - lo) * f);
}

/// The same percentile of unsorted values, found by selection (the work array is reordered).
/// Gives exactly what PercentileOfSorted gives on the sorted array.
template <class T>
double SelectPercentile(std::vector<T>& work, double P) {
  const std::size_t c = work.size();
  P = std::isnan(P) ? 0.0 : std::clamp(P, 0.0, 100.0);
  if (c == 1) return static_cast<double>(work[0]);
  std::size_t i = c - 1;
  if (P < 100.0) i = static_cast<std::size_t>(static_cast<Extended>(c - 1) * P / 100.0L);
  const auto nth = work.begin() + static_cast<std::ptrdiff_t>(i);
  std::nth_element(work.begin(), nth, work.end(), LessNaNLast<T>);
  (void)ProgressStep(1.0);
  if (i + 1 >= c) return static_cast<double>(work[i]);
  // The next order statistic is the smallest value behind the selected one.
  const T next = *std::min_element(nth + 1, work.end(), LessNaNLast<T>);
  const Extended pos = static_cast<Extended>(c - 1) * P / 100.0L;
  const Extended f = pos - static_cast<Extended>(i);
  const Extended lo = work[i];
  return static_cast<double>(lo + (static_cast<Extended>(next) - lo) * f);
}

/// Histogram counts of values[0..count-1] into bins of width `width` starting at `low`.
/// Values below low count as underflow; values at or above high + width, or whose bin would
/// lie beyond the last one, as overflow; NaNs are not counted. MaxCount is the largest bin.
template <class T>
void CountHistogram(const T* values, std::size_t count, double low, double high, double width,
                    std::vector<std::int32_t>& hist, std::int32_t& underflow,
                    std::int32_t& overflow, std::int32_t& maxCount) {
  underflow = overflow = maxCount = 0;
  const std::size_t bins = hist.size();
  for (std::size_t k = 0; k < count; ++k) {
    const double x = static_cast<double>(values[k]);
    if (std::isnan(x)) continue;
    if (x < low) {
      ++underflow;
      continue;
    }
    const double bin = std::floor((x - low) / width);
    if (x >= high + width || !(bin < static_cast<double>(bins))) {
      ++overflow;
      continue;
    }
    const std::int32_t c = ++hist[static_cast<std::size_t>(bin)];
    maxCount = std::max(maxCount, c);
  }
}

}  // namespace quv::detail
