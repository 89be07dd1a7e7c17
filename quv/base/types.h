// Fixed-width scalar types and the dynamic array aliases that every unit shares.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace quv {

/// 80-bit extended precision where the platform has it (x87 on x86-64 with GCC and Clang).
using Extended = long double;

using TDoubleArray = std::vector<double>;
using TDouble2DArray = std::vector<TDoubleArray>;
using TDouble3DArray = std::vector<TDouble2DArray>;
using TDouble4DArray = std::vector<TDouble3DArray>;
using TIntArray = std::vector<std::int32_t>;
using TInt2DArray = std::vector<TIntArray>;
using TInt3DArray = std::vector<TInt2DArray>;
using TInt4DArray = std::vector<TInt3DArray>;
using TSingleArray = std::vector<float>;
/// A vector of plain bytes used as booleans: std::vector<bool> hands out proxies, not bool&.
using TBoolArray = std::vector<std::uint8_t>;
using TBool2DArray = std::vector<TBoolArray>;
using TStrArray = std::vector<std::string>;
using TStr2DArray = std::vector<TStrArray>;

/// A point of the plane.
struct TPointDouble {
  double X = 0.0;
  double Y = 0.0;
  friend bool operator==(const TPointDouble&, const TPointDouble&) = default;
};

/// An axis-parallel rectangle given by two corners (Left, Top) and (Right, Bottom).
struct TRectDouble {
  double Left = 0.0;
  double Top = 0.0;
  double Right = 0.0;
  double Bottom = 0.0;
  friend bool operator==(const TRectDouble&, const TRectDouble&) = default;
};

/// An integer rectangle, used where geometry helpers take pixel coordinates.
struct TRectInt {
  std::int32_t Left = 0;
  std::int32_t Top = 0;
  std::int32_t Right = 0;
  std::int32_t Bottom = 0;
  friend bool operator==(const TRectInt&, const TRectInt&) = default;
};

}  // namespace quv
