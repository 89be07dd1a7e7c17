// Internal core of the open-array functions: one template per family over element type and
// number of dimensions. A k-dimensional array is a std::vector nested k deep; the helpers
// recurse over the nesting and hand the innermost rows to the caller as contiguous pieces.
//
// Conventions shared by every family:
//   - bounds are 0-based and inclusive, kept as two arrays (low bounds, high bounds) in the
//     order of the dimensions;
//   - code -1: the array is empty (outer length 0, or an empty first inner array at any level);
//   - code -2: a bound is negative, at or beyond the length of its dimension, or a high bound
//     is below its low bound. Arrays may be ragged: every inner array that the sub-range
//     touches must reach the high bound of its dimension, so nothing is read out of bounds.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <type_traits>
#include <vector>

#include "quv/base/types.h"

namespace quv::detail {

inline constexpr std::int32_t kOk = 0;
inline constexpr std::int32_t kEmpty = -1;
inline constexpr std::int32_t kBadBounds = -2;

template <class A>
struct ArrayTraits {
  static constexpr int kRank = 0;
  using Elem = A;
};
template <class T>
struct ArrayTraits<std::vector<T>> {
  static constexpr int kRank = 1 + ArrayTraits<T>::kRank;
  using Elem = typename ArrayTraits<T>::Elem;
};
template <class A>
inline constexpr int kRankOf = ArrayTraits<std::remove_cvref_t<A>>::kRank;
template <class A>
using ElemOf = typename ArrayTraits<std::remove_cvref_t<A>>::Elem;

/// Low and high bounds of a sub-range of a rank-R array.
template <int R>
struct Range {
  std::array<std::int32_t, R> lo{};
  std::array<std::int32_t, R> hi{};
};

/// True when the outer array, or the first inner array at any level, is empty.
template <class A>
bool IsEmptyArray(const A& a) {
  if (a.empty()) return true;
  if constexpr (kRankOf < A >> 1) {
    return IsEmptyArray(a[0]);
  } else {
    return false;
  }
}

/// True when [lo, hi] is a valid range of every inner array it touches.
template <class A>
bool RangeFits(const A& a, const std::int32_t* lo, const std::int32_t* hi) {
  if (lo[0] < 0 || hi[0] < lo[0] || static_cast<std::size_t>(hi[0]) >= a.size()) return false;
  if constexpr (kRankOf < A >> 1) {
    for (std::int32_t i = lo[0]; i <= hi[0]; ++i) {
      if (!RangeFits(a[static_cast<std::size_t>(i)], lo + 1, hi + 1)) return false;
    }
  }
  return true;
}

/// The family's result code for a sub-range: 0, -1 (empty) or -2 (bad bounds).
template <class A, int R>
std::int32_t CheckRange(const A& a, const Range<R>& r) {
  static_assert(kRankOf<A> == R);
  if (IsEmptyArray(a)) return kEmpty;
  if (!RangeFits(a, r.lo.data(), r.hi.data())) return kBadBounds;
  return kOk;
}

/// Number of elements of a (valid) sub-range.
template <int R>
std::size_t RangeCount(const Range<R>& r) {
  std::size_t n = 1;
  for (int d = 0; d < R; ++d)
    n *= static_cast<std::size_t>(r.hi[d] - r.lo[d] + 1);
  return n;
}

/// Calls f(pointer, count) for each innermost row piece of a (valid) sub-range, outer
/// dimension outermost.
template <class A, class F>
void ForEachRowInRange(A& a, const std::int32_t* lo, const std::int32_t* hi, F& f) {
  if constexpr (kRankOf<A> == 1) {
    f(a.data() + lo[0], static_cast<std::size_t>(hi[0] - lo[0] + 1));
  } else {
    for (std::int32_t i = lo[0]; i <= hi[0]; ++i) {
      ForEachRowInRange(a[static_cast<std::size_t>(i)], lo + 1, hi + 1, f);
    }
  }
}

template <class A, int R, class F>
void ForEachRowInRange(A& a, const Range<R>& r, F&& f) {
  ForEachRowInRange(a, r.lo.data(), r.hi.data(), f);
}

/// Calls f(pointer, count) for each innermost row of the whole (possibly ragged) array.
template <class A, class F>
void ForEachRowImpl(A& a, F& f) {
  if constexpr (kRankOf<A> == 1) {
    f(a.data(), a.size());
  } else {
    for (auto& inner : a)
      ForEachRowImpl(inner, f);
  }
}

template <class A, class F>
void ForEachRow(A& a, F&& f) {
  ForEachRowImpl(a, f);
}

/// Calls f(element&) for each element of the whole array in storage order.
template <class A, class F>
void ForEachElem(A& a, F&& f) {
  ForEachRow(a, [&f](auto* p, std::size_t n) {
    for (std::size_t i = 0; i < n; ++i)
      f(p[i]);
  });
}

/// Total number of elements of a (possibly ragged) array.
template <class A>
std::size_t ElemCount(const A& a) {
  std::size_t n = 0;
  ForEachRow(a, [&n](const auto*, std::size_t k) { n += k; });
  return n;
}

/// Extended-precision sum of a contiguous piece. Four partial sums break the dependency
/// chain of the x87 additions; each is still an extended accumulator.
template <class T>
Extended SumPiece(const T* p, std::size_t n) {
  Extended s0 = 0, s1 = 0, s2 = 0, s3 = 0;
  std::size_t i = 0;
  for (; i + 4 <= n; i += 4) {
    s0 += p[i];
    s1 += p[i + 1];
    s2 += p[i + 2];
    s3 += p[i + 3];
  }
  for (; i < n; ++i)
    s0 += p[i];
  return (s0 + s1) + (s2 + s3);
}

/// True when two arrays have the same shape at every level (ragged shapes included).
template <class A, class B>
bool SameShape(const A& a, const B& b) {
  static_assert(kRankOf<A> == kRankOf<B>);
  if (a.size() != b.size()) return false;
  if constexpr (kRankOf < A >> 1) {
    for (std::size_t i = 0; i < a.size(); ++i) {
      if (!SameShape(a[i], b[i])) return false;
    }
  }
  return true;
}

/// True when a 2D mask has a cell for every cell of the 2D data (it may be larger).
template <class A>
bool MaskCovers(const A& data, const TBool2DArray& mask) {
  if (mask.size() < data.size()) return false;
  for (std::size_t i = 0; i < data.size(); ++i) {
    if (mask[i].size() < data[i].size()) return false;
  }
  return true;
}

/// Calls f(pa, pb, count) for each pair of corresponding innermost rows of two arrays of the
/// same shape (check with SameShape first).
template <class A, class B, class F>
void ForEachRowPairImpl(A& a, B& b, F& f) {
  if constexpr (kRankOf<A> == 1) {
    f(a.data(), b.data(), a.size());
  } else {
    for (std::size_t i = 0; i < a.size(); ++i)
      ForEachRowPairImpl(a[i], b[i], f);
  }
}

template <class A, class B, class F>
void ForEachRowPair(A& a, B& b, F&& f) {
  ForEachRowPairImpl(a, b, f);
}

/// True when every row of a 2D array has the length of the first.
template <class A>
bool IsRectangular(const A& a) {
  for (const auto& row : a) {
    if (row.size() != a[0].size()) return false;
  }
  return true;
}

/// Applies f(element&) to every element of the whole array (in place).
template <class A, class F>
void TransformAll(A& a, F&& f) {
  ForEachRow(a, [&f](auto* p, std::size_t n) {
    for (std::size_t i = 0; i < n; ++i)
      p[i] = f(p[i]);
  });
}

}  // namespace quv::detail
