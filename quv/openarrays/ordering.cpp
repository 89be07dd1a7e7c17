#include "quv/openarrays/ordering.h"

#include <algorithm>
#include <cmath>
#include <span>

#include "quv/base/random.h"
#include "quv/math1/sorting.h"

namespace quv {

namespace {

template <class T>
void ShuffleImpl(std::vector<T>& data) {
  // Fisher-Yates: every permutation equally likely.
  for (std::size_t i = data.size(); i > 1; --i) {
    const auto j = static_cast<std::size_t>(Random(static_cast<std::int32_t>(i)));
    std::swap(data[i - 1], data[j]);
  }
}

template <class T>
std::int32_t FindClosestImpl(const std::vector<T>& data, T value) {
  if (data.empty()) return -1;
  std::size_t best = 0;
  double best_dist = std::fabs(static_cast<double>(data[0]) - static_cast<double>(value));
  for (std::size_t i = 1; i < data.size(); ++i) {
    const double d = std::fabs(static_cast<double>(data[i]) - static_cast<double>(value));
    if (d < best_dist) {
      best = i;
      best_dist = d;
    }
  }
  return static_cast<std::int32_t>(best);
}

// Binary search that narrows [lo, hi] down to two neighbours and returns the closer one (the
// upper on ties); an equal element found on the way is returned at once.
template <class T>
std::int32_t FindSortedImpl(const std::vector<T>& data, T value) {
  if (data.empty()) return -1;
  std::size_t lo = 0;
  std::size_t hi = data.size() - 1;
  const bool ascending = data.front() <= data.back();
  while (hi - lo >= 2) {
    const std::size_t mid = (lo + hi) / 2;
    if (data[mid] == value) return static_cast<std::int32_t>(mid);
    if ((data[mid] < value) == ascending) {
      lo = mid;
    } else {
      hi = mid;
    }
  }
  const double dlo = std::fabs(static_cast<double>(data[lo]) - static_cast<double>(value));
  const double dhi = std::fabs(static_cast<double>(data[hi]) - static_cast<double>(value));
  return static_cast<std::int32_t>(dlo < dhi ? lo : hi);
}

}  // namespace

std::int32_t PermuteArray(TDoubleArray& Data, const TIntArray& Perm) {
  if (Data.empty()) return kOAEmpty;
  if (Perm.size() != Data.size()) return kOABadBounds;
  std::vector<std::uint8_t> seen(Data.size(), 0);
  for (std::int32_t p : Perm) {
    if (p < 0 || static_cast<std::size_t>(p) >= Data.size() || seen[static_cast<std::size_t>(p)]) {
      return kOABadBounds;
    }
    seen[static_cast<std::size_t>(p)] = 1;
  }
  TDoubleArray out(Data.size());
  for (std::size_t i = 0; i < Data.size(); ++i)
    out[i] = Data[static_cast<std::size_t>(Perm[i])];
  Data = std::move(out);
  return kOAOk;
}

void ShuffleArray(TDoubleArray& Data) {
  ShuffleImpl(Data);
}

void ShuffleArray(TIntArray& Data) {
  ShuffleImpl(Data);
}

std::int32_t SortArray(TDoubleArray& Data, bool Ascending) {
  return SortArray(std::span<double>(Data), Ascending);
}

std::int32_t SortArray(TIntArray& Data, bool Ascending) {
  return SortArray(std::span<std::int32_t>(Data), Ascending);
}

std::int32_t SortAndRemoveDuplicates(TDoubleArray& Data) {
  const std::int32_t code = SortArray(std::span<double>(Data), true);
  if (code != kSortArrayOk) return code;
  // NaNs sit at the end after sorting; equal NaNs are not duplicates by ==, so keep one.
  const auto last = std::unique(Data.begin(), Data.end(), [](double a, double b) {
    return a == b || (std::isnan(a) && std::isnan(b));
  });
  Data.erase(last, Data.end());
  return static_cast<std::int32_t>(Data.size());
}

std::int32_t FindInArray(const TDoubleArray& Data, double Value) {
  return FindClosestImpl(Data, Value);
}

std::int32_t FindInArray(const TIntArray& Data, std::int32_t Value) {
  return FindClosestImpl(Data, Value);
}

std::int32_t FindInSortedArray(const TDoubleArray& Data, double Value) {
  return FindSortedImpl(Data, Value);
}

std::int32_t FindInSortedArray(const TIntArray& Data, std::int32_t Value) {
  return FindSortedImpl(Data, Value);
}

}  // namespace quv
