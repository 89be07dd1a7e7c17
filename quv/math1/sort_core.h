// The sorting core shared by the raw-array sorts of the scalar unit and the open-array sorts.
//
// The sort is a quicksort organised in passes so that it can report progress and honour an
// abort request between them:
//   - each partitioning pass splits every segment still longer than kPassSegment elements
//     once (median-of-three pivot, Hoare partition), walking the array from left to right;
//   - the final pass sorts each remaining segment completely (recursive quicksort with
//     insertion sort for short runs and a heapsort fallback against bad pivots).
// After every pass the caller's OnPass hook runs; when it returns true the sort stops and
// leaves the array partly sorted. A pass that makes no progress because the pivots were bad
// too often switches the remaining segments to heapsort, so the worst case stays n log n.
//
// NaN values of floating-point arrays are moved behind all numbers before sorting (in both
// directions), because NaN does not take part in a strict weak ordering.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <type_traits>
#include <utility>
#include <vector>

namespace quv::detail {

/// Segments at most this long are finished in the final pass; longer ones are split by the
/// partitioning passes (a segment of this size fits in the second-level cache).
inline constexpr std::size_t kPassSegment = 1u << 15;
/// Runs at most this long are finished by insertion sort.
inline constexpr std::size_t kInsertionRun = 16;

template <class T, class Less>
void InsertionSort(T* first, T* last, Less less) {
  for (T* i = first + 1; i < last; ++i) {
    T value = std::move(*i);
    T* j = i;
    for (; j > first && less(value, *(j - 1)); --j)
      *j = std::move(*(j - 1));
    *j = std::move(value);
  }
}

/// Puts the median of first, middle and last element at first; they then serve as sentinels
/// for the unguarded scans of the partition.
template <class T, class Less>
void MedianOfThreeToFront(T* first, T* last, Less less) {
  T* a = first + 1;
  T* b = first + (last - first) / 2;
  T* c = last - 1;
  if (less(*b, *a)) std::swap(a, b);
  if (less(*c, *b)) std::swap(b, c);
  if (less(*b, *a)) std::swap(a, b);
  std::iter_swap(first, b);
}

/// Hoare partition around the pivot at *first; returns the split point: [first, cut) holds
/// elements not greater than the pivot, [cut, last) elements not less than it.
template <class T, class Less>
T* PartitionAroundFirst(T* first, T* last, Less less) {
  MedianOfThreeToFront(first, last, less);
  const T& pivot = *first;
  T* left = first + 1;
  T* right = last;
  for (;;) {
    while (less(*left, pivot))
      ++left;
    --right;
    while (less(pivot, *right))
      --right;
    if (!(left < right)) return left;
    std::iter_swap(left, right);
    ++left;
  }
}

template <class T, class Less>
void HeapSort(T* first, T* last, Less less) {
  std::make_heap(first, last, less);
  std::sort_heap(first, last, less);
}

template <class T, class Less>
void SortSegment(T* first, T* last, Less less, int depth_limit) {
  while (static_cast<std::size_t>(last - first) > kInsertionRun) {
    if (depth_limit-- == 0) {
      HeapSort(first, last, less);
      return;
    }
    T* cut = PartitionAroundFirst(first, last, less);
    // Recurse into the smaller side so the stack stays logarithmic.
    if (cut - first < last - cut) {
      SortSegment(first, cut, less, depth_limit);
      first = cut;
    } else {
      SortSegment(cut, last, less, depth_limit);
      last = cut;
    }
  }
  InsertionSort(first, last, less);
}

inline int DepthLimit(std::size_t n) {
  int log2 = 0;
  while (n > 1) {
    n >>= 1;
    ++log2;
  }
  return 2 * log2 + 2;
}

/// Moves NaN values behind all others and returns the number of non-NaN elements in front.
template <class T>
std::size_t MoveNaNsToEnd(T* data, std::size_t n) {
  if constexpr (std::is_floating_point_v<T>) {
    // The order of the numbers does not matter here: they are sorted or selected next.
    T* end = std::partition(data, data + n, [](T x) { return !std::isnan(x); });
    return static_cast<std::size_t>(end - data);
  } else {
    return n;
  }
}

/// Sorts data[0..n) by less in passes; calls on_pass() after each pass and stops when it
/// returns true. Returns true when the sort was stopped that way.
template <class T, class Less, class OnPass>
bool SortInPasses(T* data, std::size_t n, Less less, OnPass on_pass) {
  n = MoveNaNsToEnd(data, n);
  const int depth_limit = DepthLimit(n);
  using Segment = std::pair<std::size_t, std::size_t>;  // [begin, end)
  std::vector<Segment> segments{{0, n}};
  std::vector<Segment> next;
  std::vector<Segment> small;  // finished by the final pass
  int passes = 0;
  while (!segments.empty()) {
    if (n <= kPassSegment) {
      small.swap(segments);
      break;
    }
    if (passes++ == depth_limit) {
      // The pivots were bad too often: finish the long segments by heapsort in this pass.
      for (auto [b, e] : segments)
        HeapSort(data + b, data + e, less);
      segments.clear();
      if (on_pass()) return true;
      break;
    }
    next.clear();
    for (auto [b, e] : segments) {
      const auto cut =
          static_cast<std::size_t>(PartitionAroundFirst(data + b, data + e, less) - data);
      for (Segment part : {Segment{b, cut}, Segment{cut, e}}) {
        (part.second - part.first > kPassSegment ? next : small).push_back(part);
      }
    }
    segments.swap(next);
    if (on_pass()) return true;
  }
  for (auto [b, e] : small)
    SortSegment(data + b, data + e, less, depth_limit);
  return on_pass();
}

}  // namespace quv::detail
