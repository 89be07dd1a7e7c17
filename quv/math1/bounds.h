// Range tests, clamping and soft saturation.
#pragma once

#include <cstdint>
#include <utility>

namespace quv {

namespace detail {
template <class T>
std::pair<T, T> OrderedBounds(T b1, T b2) {
  return b2 < b1 ? std::pair<T, T>{b2, b1} : std::pair<T, T>{b1, b2};
}

template <class T>
T ConfineToBounds(T x, T b1, T b2) {
  const auto [low, high] = OrderedBounds(b1, b2);
  if (x < low) return low;
  if (x > high) return high;
  return x;
}
}  // namespace detail

/// True when b1 <= x <= b2 after ordering the bounds (inclusive). NaN is never within.
inline bool WithinBounds(double x, double b1, double b2) {
  const auto [low, high] = detail::OrderedBounds(b1, b2);
  return low <= x && x <= high;
}

/// True when the whole interval between x1 and x2 (either order) lies within the bounds b1,
/// b2 (either order, inclusive): both end points are within them.
inline bool WithinBounds(double x1, double x2, double b1, double b2) {
  return WithinBounds(x1, b1, b2) && WithinBounds(x2, b1, b2);
}

/// x clamped into the bounds b1, b2 after ordering them. A NaN x stays NaN.
inline double ConfineValue(double x, double b1, double b2) {
  return detail::ConfineToBounds(x, b1, b2);
}
/// x clamped into the ordered bounds (Single).
inline float ConfineValue(float x, float b1, float b2) {
  return detail::ConfineToBounds(x, b1, b2);
}
/// x clamped into the ordered bounds (Integer).
inline std::int32_t ConfineValue(std::int32_t x, std::int32_t b1, std::int32_t b2) {
  return detail::ConfineToBounds(x, b1, b2);
}

/// Soft saturation: Limit * tanh(Slope * (x - x0) / Limit), computed as
/// (2 / (e^z + 1) - 1) * Limit with z = -2 Slope (x - x0) / Limit, and saturated at -Limit
/// (z > 0) or +Limit (z <= 0) once |z| >= 200.
double Squash(double x, double x0, double Slope, double Limit);

}  // namespace quv
