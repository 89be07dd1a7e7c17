// Exchanging values: any two variables of one type, two byte buffers, and ordering a pair.
#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>

namespace quv {

/// Swaps a and b. One template serves every type (Integer, Byte, Single, Double, Extended,
/// string, Boolean, Char, Word, ShortInt, Cardinal, Int64 and any other movable type).
template <class T>
void ExChange(T& a, T& b) {
  T t = std::move(a);
  a = std::move(b);
  b = std::move(t);
}

/// Swaps the first Count bytes of the buffers a and b byte by byte (so even overlapping
/// buffers end in a defined state). Nothing happens for Count 0.
inline void ExChange(void* a, void* b, std::uint16_t Count) {
  auto* pa = static_cast<unsigned char*>(a);
  auto* pb = static_cast<unsigned char*>(b);
  for (std::size_t i = 0; i < Count; ++i)
    std::swap(pa[i], pb[i]);
}

/// Puts a and b in ascending (a <= b) or descending (a >= b) order.
inline void SortSwap(double& a, double& b, bool Ascending) {
  if (Ascending ? (b < a) : (a < b)) std::swap(a, b);
}

}  // namespace quv
