// Helpers that build nested arrays of any rank and call the rank-specific overloads with
// bounds unpacked, so that one test body covers ranks 1 to 4.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <tuple>
#include <utility>
#include <vector>

namespace quv::testing_util {

template <class T, int R>
struct Nested {
  using type = std::vector<typename Nested<T, R - 1>::type>;
};
template <class T>
struct Nested<T, 0> {
  using type = T;
};
template <class T, int R>
using NestedT = typename Nested<T, R>::type;

template <int R>
using Index = std::array<std::int32_t, R>;

/// A rank-R array of the given extents with element value f(index).
template <class T, int R, int D = 0>
NestedT<T, R - D> Build(const Index<R>& extents, const std::function<T(const Index<R>&)>& f,
                        Index<R> at = {}) {
  NestedT<T, R - D> a(static_cast<std::size_t>(extents[D]));
  for (std::int32_t i = 0; i < extents[D]; ++i) {
    at[D] = i;
    if constexpr (D + 1 == R) {
      a[static_cast<std::size_t>(i)] = f(at);
    } else {
      a[static_cast<std::size_t>(i)] = Build<T, R, D + 1>(extents, f, at);
    }
  }
  return a;
}

/// Calls f(Index) for every index of the box [lo, hi].
template <int R, int D = 0>
void ForBox(const Index<R>& lo, const Index<R>& hi, const std::function<void(const Index<R>&)>& f,
            Index<R> at = {}) {
  for (std::int32_t i = lo[D]; i <= hi[D]; ++i) {
    at[D] = i;
    if constexpr (D + 1 == R) {
      f(at);
    } else {
      ForBox<R, D + 1>(lo, hi, f, at);
    }
  }
}

/// Flattens low and high bounds into one tuple in the library's order (all lows, all highs).
template <int R>
auto BoundsTuple(const Index<R>& lo, const Index<R>& hi) {
  return std::tuple_cat(std::tuple_cat(lo), std::tuple_cat(hi));
}

}  // namespace quv::testing_util
