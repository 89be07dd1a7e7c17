// Universal constants shared by the units.
#pragma once

#include <cstdint>
#include <limits>

#include "quv/base/types.h"

namespace quv {

/// Largest finite double.
inline constexpr double uc_MaxDouble = std::numeric_limits<double>::max();
/// Smallest positive normal double.
inline constexpr double uc_MinDouble = std::numeric_limits<double>::min();
/// The conventional "largest real" sentinel, 1.7e308: just below uc_MaxDouble, so that it
/// survives conversion to double and its square still fits an extended accumulator.
inline constexpr Extended uc_MaxReal = 1.7e308L;
/// Largest finite float.
inline constexpr float uc_MaxSingle = std::numeric_limits<float>::max();
/// Largest finite extended value.
inline constexpr Extended uc_MaxExtended = std::numeric_limits<Extended>::max();
inline constexpr std::int32_t uc_MaxInt = std::numeric_limits<std::int32_t>::max();
inline constexpr std::int32_t uc_MinInt = std::numeric_limits<std::int32_t>::min();
inline constexpr std::int64_t uc_MaxInt64 = std::numeric_limits<std::int64_t>::max();
inline constexpr std::int64_t uc_MinInt64 = std::numeric_limits<std::int64_t>::min();
inline constexpr std::uint32_t uc_MaxCardinal = std::numeric_limits<std::uint32_t>::max();

inline constexpr Extended uc_Pi = 3.14159265358979323846264338327950288L;
inline constexpr Extended uc_E = 2.71828182845904523536028747135266250L;
inline constexpr Extended uc_Ln2 = 0.693147180559945309417232121458176568L;
inline constexpr Extended uc_Ln10 = 2.30258509299404568401799145468436421L;
inline constexpr Extended uc_Sqrt2 = 1.41421356237309504880168872420969808L;

}  // namespace quv
