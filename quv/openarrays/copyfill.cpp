#include "quv/openarrays/copyfill.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <type_traits>

#include "quv/base/random.h"
#include "quv/math1/simple_random.h"
#include "quv/openarrays/array_core.h"

namespace quv {

namespace {

using detail::kRankOf;
using detail::Range;

// First and last source index at one level: the given range, or the whole inner array.
template <class S>
bool SourceSpan(const S& src, const std::int32_t* lo, const std::int32_t* hi, bool ranged,
                std::int64_t& first, std::int64_t& count) {
  if (ranged) {
    if (lo[0] < 0 || hi[0] < lo[0] || static_cast<std::size_t>(hi[0]) >= src.size()) return false;
    first = lo[0];
    count = std::int64_t{hi[0]} - lo[0] + 1;
  } else {
    first = 0;
    count = static_cast<std::int64_t>(src.size());
  }
  return true;
}

// True when the source (range) fits the destination at the destination positions, checked
// for every inner array that the copy touches.
template <class S, class D>
bool CopyFits(const S& src, const std::int32_t* lo, const std::int32_t* hi, const std::int32_t* dix,
              const D& dst, bool ranged) {
  if (dix[0] < 0 || static_cast<std::size_t>(dix[0]) >= dst.size()) return false;
  std::int64_t first = 0;
  std::int64_t count = 0;
  if (!SourceSpan(src, lo, hi, ranged, first, count)) return false;
  if (dix[0] + count > static_cast<std::int64_t>(dst.size())) return false;
  if constexpr (kRankOf < S >> 1) {
    for (std::int64_t k = 0; k < count; ++k) {
      if (!CopyFits(src[static_cast<std::size_t>(first + k)], lo + 1, hi + 1, dix + 1,
                    dst[static_cast<std::size_t>(dix[0] + k)], ranged)) {
        return false;
      }
    }
  }
  return true;
}

// Copies a validated source (range) into the destination. When source and destination are
// the same array the direction is chosen so that overlapping parts are read before written.
template <class S, class D>
void CopyInto(const S& src, const std::int32_t* lo, const std::int32_t* hi, const std::int32_t* dix,
              D& dst, bool ranged) {
  std::int64_t first = 0;
  std::int64_t count = 0;
  SourceSpan(src, lo, hi, ranged, first, count);
  const bool backwards =
      static_cast<const void*>(&src) == static_cast<const void*>(&dst) && dix[0] > first;
  for (std::int64_t n = 0; n < count; ++n) {
    const std::int64_t k = backwards ? count - 1 - n : n;
    const auto s = static_cast<std::size_t>(first + k);
    const auto d = static_cast<std::size_t>(dix[0] + k);
    if constexpr (kRankOf < S >> 1) {
      CopyInto(src[s], lo + 1, hi + 1, dix + 1, dst[d], ranged);
    } else {
      dst[d] = src[s];
    }
  }
}

// The form without a range passes ranged = false and copies each inner array whole.
template <class A, int R>
std::int32_t CopyImpl(const A& src, const Range<R>& r, bool ranged,
                      const std::type_identity_t<std::array<std::int32_t, R>>& dix, A& dst) {
  if (detail::IsEmptyArray(src) || detail::IsEmptyArray(dst)) return detail::kEmpty;
  if (!CopyFits(src, r.lo.data(), r.hi.data(), dix.data(), dst, ranged)) {
    return detail::kBadBounds;
  }
  CopyInto(src, r.lo.data(), r.hi.data(), dix.data(), dst, ranged);
  return detail::kOk;
}

// A new array holding a validated sub-range.
template <class A>
A Extract(const A& src, const std::int32_t* lo, const std::int32_t* hi) {
  A out;
  out.reserve(static_cast<std::size_t>(hi[0] - lo[0] + 1));
  for (std::int32_t i = lo[0]; i <= hi[0]; ++i) {
    if constexpr (kRankOf < A >> 1) {
      out.push_back(Extract(src[static_cast<std::size_t>(i)], lo + 1, hi + 1));
    } else {
      out.push_back(src[static_cast<std::size_t>(i)]);
    }
  }
  return out;
}

template <class A, int R>
std::int32_t CloneRangeImpl(const A& src, const Range<R>& r, A& dst) {
  const std::int32_t code = detail::CheckRange(src, r);
  if (code != detail::kOk) return code;
  dst = Extract(src, r.lo.data(), r.hi.data());
  return detail::kOk;
}

// Reverses the storage order: the outer order and, recursively, every inner array.
template <class A>
A Reversed(const A& src) {
  A out(src.rbegin(), src.rend());
  if constexpr (kRankOf < A >> 1) {
    for (auto& inner : out)
      inner = Reversed(inner);
  }
  return out;
}

template <class A, class T>
std::int32_t FillAllImpl(A& data, T value) {
  if (detail::IsEmptyArray(data)) return detail::kEmpty;
  detail::ForEachRow(data, [&value](auto* p, std::size_t n) { std::fill(p, p + n, value); });
  return detail::kOk;
}

template <class A, int R, class T>
std::int32_t FillRangeImpl(A& data, const Range<R>& r, T value) {
  const std::int32_t code = detail::CheckRange(data, r);
  if (code != detail::kOk) return code;
  detail::ForEachRowInRange(data, r,
                            [&value](auto* p, std::size_t n) { std::fill(p, p + n, value); });
  return detail::kOk;
}

// Element k of the series, counted in storage order over the filled cells. Computed from k
// rather than by repeated addition, so that long series do not drift.
template <class T>
class Series {
 public:
  Series(T start, T step) : start_(start), step_(step) {}
  T Next() {
    if constexpr (std::is_integral_v<T>) {
      // Wraps modulo 2^32 like integer arithmetic without overflow checks.
      return static_cast<T>(static_cast<std::uint32_t>(start_) +
                            static_cast<std::uint32_t>(step_) * static_cast<std::uint32_t>(k_++));
    } else {
      return static_cast<T>(static_cast<Extended>(start_) +
                            static_cast<Extended>(k_++) * static_cast<Extended>(step_));
    }
  }

 private:
  T start_;
  T step_;
  std::uint64_t k_ = 0;
};

template <class A, class T>
std::int32_t SerialAllImpl(A& data, T start, T step) {
  if (detail::IsEmptyArray(data)) return detail::kEmpty;
  Series<T> series(start, step);
  detail::ForEachElem(data, [&series](T& x) { x = series.Next(); });
  return detail::kOk;
}

template <class A, int R, class T>
std::int32_t SerialRangeImpl(A& data, const Range<R>& r, T start, T step) {
  const std::int32_t code = detail::CheckRange(data, r);
  if (code != detail::kOk) return code;
  Series<T> series(start, step);
  detail::ForEachRowInRange(data, r, [&series](T* p, std::size_t n) {
    for (std::size_t i = 0; i < n; ++i)
      p[i] = series.Next();
  });
  return detail::kOk;
}

template <class A, class T>
std::int32_t FillMaskedImpl(A& data, const TBool2DArray& mask, T value) {
  if (detail::IsEmptyArray(data)) return detail::kEmpty;
  if (!detail::MaskCovers(data, mask)) return detail::kBadBounds;
  for (std::size_t i = 0; i < data.size(); ++i) {
    for (std::size_t j = 0; j < data[i].size(); ++j) {
      if (mask[i][j] != 0) data[i][j] = value;
    }
  }
  return detail::kOk;
}

// The diagonal cell [i][i]...[i], or nullptr when one of the inner arrays is too short.
template <class A>
auto DiagonalCell(A& a, std::size_t i) -> detail::ElemOf<A>* {
  if (i >= a.size()) return nullptr;
  if constexpr (kRankOf < A >> 1) {
    return DiagonalCell(a[i], i);
  } else {
    return &a[i];
  }
}

template <class A, class T>
std::int32_t FillDiagImpl(A& data, T value) {
  if (detail::IsEmptyArray(data)) return detail::kEmpty;
  for (std::size_t i = 0;; ++i) {
    T* cell = DiagonalCell(data, i);
    if (cell == nullptr) break;
    *cell = value;
  }
  return detail::kOk;
}

// Uniform value in [low, high) for reals, in [low, high] for integers (bounds in any order).
double UniformValue(double low, double high) {
  return low + (high - low) * Random();
}

std::int32_t UniformValue(std::int32_t low, std::int32_t high) {
  if (low > high) std::swap(low, high);
  const std::int64_t span = std::int64_t{high} - low + 1;
  const auto k =
      std::min(static_cast<std::int64_t>(Random() * static_cast<double>(span)), span - 1);
  return static_cast<std::int32_t>(low + k);
}

template <class A, class T>
std::int32_t RandomUniformImpl(A& data, T low, T high) {
  if (detail::IsEmptyArray(data)) return detail::kEmpty;
  detail::ForEachElem(data, [&](T& x) { x = UniformValue(low, high); });
  return detail::kOk;
}

template <class A>
std::int32_t RandomNormalImpl(A& data, double mean, double std_dev) {
  if (detail::IsEmptyArray(data)) return detail::kEmpty;
  detail::ForEachElem(data, [&](double& x) { x = mean + std_dev * GRandom(); });
  return detail::kOk;
}

}  // namespace

std::int32_t CopyArray(const TDoubleArray& Source, std::int32_t DestIx1, TDoubleArray& Dest) {
  return CopyImpl(Source, Range<1>{}, false, std::array<std::int32_t, 1>{DestIx1}, Dest);
}

std::int32_t CopyArray(const TDoubleArray& Source, std::int32_t Lo1, std::int32_t Hi1,
                       std::int32_t DestIx1, TDoubleArray& Dest) {
  return CopyImpl(Source, Range<1>{{Lo1}, {Hi1}}, true, std::array<std::int32_t, 1>{DestIx1}, Dest);
}

std::int32_t CopyArray(const TIntArray& Source, std::int32_t DestIx1, TIntArray& Dest) {
  return CopyImpl(Source, Range<1>{}, false, std::array<std::int32_t, 1>{DestIx1}, Dest);
}

std::int32_t CopyArray(const TIntArray& Source, std::int32_t Lo1, std::int32_t Hi1,
                       std::int32_t DestIx1, TIntArray& Dest) {
  return CopyImpl(Source, Range<1>{{Lo1}, {Hi1}}, true, std::array<std::int32_t, 1>{DestIx1}, Dest);
}

std::int32_t CopyArray(const TDouble2DArray& Source, std::int32_t DestIx1, std::int32_t DestIx2,
                       TDouble2DArray& Dest) {
  return CopyImpl(Source, Range<2>{}, false, std::array<std::int32_t, 2>{DestIx1, DestIx2}, Dest);
}

std::int32_t CopyArray(const TDouble2DArray& Source, std::int32_t Lo1, std::int32_t Lo2,
                       std::int32_t Hi1, std::int32_t Hi2, std::int32_t DestIx1,
                       std::int32_t DestIx2, TDouble2DArray& Dest) {
  return CopyImpl(Source, Range<2>{{Lo1, Lo2}, {Hi1, Hi2}}, true,
                  std::array<std::int32_t, 2>{DestIx1, DestIx2}, Dest);
}

std::int32_t CopyArray(const TInt2DArray& Source, std::int32_t DestIx1, std::int32_t DestIx2,
                       TInt2DArray& Dest) {
  return CopyImpl(Source, Range<2>{}, false, std::array<std::int32_t, 2>{DestIx1, DestIx2}, Dest);
}

std::int32_t CopyArray(const TInt2DArray& Source, std::int32_t Lo1, std::int32_t Lo2,
                       std::int32_t Hi1, std::int32_t Hi2, std::int32_t DestIx1,
                       std::int32_t DestIx2, TInt2DArray& Dest) {
  return CopyImpl(Source, Range<2>{{Lo1, Lo2}, {Hi1, Hi2}}, true,
                  std::array<std::int32_t, 2>{DestIx1, DestIx2}, Dest);
}

std::int32_t CopyArray(const TDouble3DArray& Source, std::int32_t DestIx1, std::int32_t DestIx2,
                       std::int32_t DestIx3, TDouble3DArray& Dest) {
  return CopyImpl(Source, Range<3>{}, false, std::array<std::int32_t, 3>{DestIx1, DestIx2, DestIx3},
                  Dest);
}

std::int32_t CopyArray(const TDouble3DArray& Source, std::int32_t Lo1, std::int32_t Lo2,
                       std::int32_t Lo3, std::int32_t Hi1, std::int32_t Hi2, std::int32_t Hi3,
                       std::int32_t DestIx1, std::int32_t DestIx2, std::int32_t DestIx3,
                       TDouble3DArray& Dest) {
  return CopyImpl(Source, Range<3>{{Lo1, Lo2, Lo3}, {Hi1, Hi2, Hi3}}, true,
                  std::array<std::int32_t, 3>{DestIx1, DestIx2, DestIx3}, Dest);
}

std::int32_t CopyArray(const TInt3DArray& Source, std::int32_t DestIx1, std::int32_t DestIx2,
                       std::int32_t DestIx3, TInt3DArray& Dest) {
  return CopyImpl(Source, Range<3>{}, false, std::array<std::int32_t, 3>{DestIx1, DestIx2, DestIx3},
                  Dest);
}

std::int32_t CopyArray(const TInt3DArray& Source, std::int32_t Lo1, std::int32_t Lo2,
                       std::int32_t Lo3, std::int32_t Hi1, std::int32_t Hi2, std::int32_t Hi3,
                       std::int32_t DestIx1, std::int32_t DestIx2, std::int32_t DestIx3,
                       TInt3DArray& Dest) {
  return CopyImpl(Source, Range<3>{{Lo1, Lo2, Lo3}, {Hi1, Hi2, Hi3}}, true,
                  std::array<std::int32_t, 3>{DestIx1, DestIx2, DestIx3}, Dest);
}

std::int32_t CopyArray(const TDouble4DArray& Source, std::int32_t DestIx1, std::int32_t DestIx2,
                       std::int32_t DestIx3, std::int32_t DestIx4, TDouble4DArray& Dest) {
  return CopyImpl(Source, Range<4>{}, false,
                  std::array<std::int32_t, 4>{DestIx1, DestIx2, DestIx3, DestIx4}, Dest);
}

std::int32_t CopyArray(const TDouble4DArray& Source, std::int32_t Lo1, std::int32_t Lo2,
                       std::int32_t Lo3, std::int32_t Lo4, std::int32_t Hi1, std::int32_t Hi2,
                       std::int32_t Hi3, std::int32_t Hi4, std::int32_t DestIx1,
                       std::int32_t DestIx2, std::int32_t DestIx3, std::int32_t DestIx4,
                       TDouble4DArray& Dest) {
  return CopyImpl(Source, Range<4>{{Lo1, Lo2, Lo3, Lo4}, {Hi1, Hi2, Hi3, Hi4}}, true,
                  std::array<std::int32_t, 4>{DestIx1, DestIx2, DestIx3, DestIx4}, Dest);
}

std::int32_t CopyArray(const TInt4DArray& Source, std::int32_t DestIx1, std::int32_t DestIx2,
                       std::int32_t DestIx3, std::int32_t DestIx4, TInt4DArray& Dest) {
  return CopyImpl(Source, Range<4>{}, false,
                  std::array<std::int32_t, 4>{DestIx1, DestIx2, DestIx3, DestIx4}, Dest);
}

std::int32_t CopyArray(const TInt4DArray& Source, std::int32_t Lo1, std::int32_t Lo2,
                       std::int32_t Lo3, std::int32_t Lo4, std::int32_t Hi1, std::int32_t Hi2,
                       std::int32_t Hi3, std::int32_t Hi4, std::int32_t DestIx1,
                       std::int32_t DestIx2, std::int32_t DestIx3, std::int32_t DestIx4,
                       TInt4DArray& Dest) {
  return CopyImpl(Source, Range<4>{{Lo1, Lo2, Lo3, Lo4}, {Hi1, Hi2, Hi3, Hi4}}, true,
                  std::array<std::int32_t, 4>{DestIx1, DestIx2, DestIx3, DestIx4}, Dest);
}

std::int32_t CopyArray(const TBoolArray& Source, std::int32_t DestIx1, TBoolArray& Dest) {
  return CopyImpl(Source, Range<1>{}, false, std::array<std::int32_t, 1>{DestIx1}, Dest);
}

std::int32_t CopyArray(const TBool2DArray& Source, std::int32_t DestIx1, std::int32_t DestIx2,
                       TBool2DArray& Dest) {
  return CopyImpl(Source, Range<2>{}, false, std::array<std::int32_t, 2>{DestIx1, DestIx2}, Dest);
}

TDoubleArray CloneArray(const TDoubleArray& Source) {
  return Source;
}

TIntArray CloneArray(const TIntArray& Source) {
  return Source;
}

TDouble2DArray CloneArray(const TDouble2DArray& Source) {
  return Source;
}

TInt2DArray CloneArray(const TInt2DArray& Source) {
  return Source;
}

TDouble3DArray CloneArray(const TDouble3DArray& Source) {
  return Source;
}

TInt3DArray CloneArray(const TInt3DArray& Source) {
  return Source;
}

TDouble4DArray CloneArray(const TDouble4DArray& Source) {
  return Source;
}

TInt4DArray CloneArray(const TInt4DArray& Source) {
  return Source;
}

TBoolArray CloneArray(const TBoolArray& Source) {
  return Source;
}

TBool2DArray CloneArray(const TBool2DArray& Source) {
  return Source;
}

TSingleArray CloneArray(const TSingleArray& Source) {
  return Source;
}

TStrArray CloneArray(const TStrArray& Source) {
  return Source;
}

std::int32_t CloneArray(const TDoubleArray& Source, std::int32_t Lo1, std::int32_t Hi1,
                        TDoubleArray& Dest) {
  return CloneRangeImpl(Source, Range<1>{{Lo1}, {Hi1}}, Dest);
}

std::int32_t CloneArray(const TIntArray& Source, std::int32_t Lo1, std::int32_t Hi1,
                        TIntArray& Dest) {
  return CloneRangeImpl(Source, Range<1>{{Lo1}, {Hi1}}, Dest);
}

std::int32_t CloneArray(const TDouble2DArray& Source, std::int32_t Lo1, std::int32_t Lo2,
                        std::int32_t Hi1, std::int32_t Hi2, TDouble2DArray& Dest) {
  return CloneRangeImpl(Source, Range<2>{{Lo1, Lo2}, {Hi1, Hi2}}, Dest);
}

std::int32_t CloneArray(const TInt2DArray& Source, std::int32_t Lo1, std::int32_t Lo2,
                        std::int32_t Hi1, std::int32_t Hi2, TInt2DArray& Dest) {
  return CloneRangeImpl(Source, Range<2>{{Lo1, Lo2}, {Hi1, Hi2}}, Dest);
}

std::int32_t CloneArray(const TDouble3DArray& Source, std::int32_t Lo1, std::int32_t Lo2,
                        std::int32_t Lo3, std::int32_t Hi1, std::int32_t Hi2, std::int32_t Hi3,
                        TDouble3DArray& Dest) {
  return CloneRangeImpl(Source, Range<3>{{Lo1, Lo2, Lo3}, {Hi1, Hi2, Hi3}}, Dest);
}

std::int32_t CloneArray(const TInt3DArray& Source, std::int32_t Lo1, std::int32_t Lo2,
                        std::int32_t Lo3, std::int32_t Hi1, std::int32_t Hi2, std::int32_t Hi3,
                        TInt3DArray& Dest) {
  return CloneRangeImpl(Source, Range<3>{{Lo1, Lo2, Lo3}, {Hi1, Hi2, Hi3}}, Dest);
}

std::int32_t CloneArray(const TDouble4DArray& Source, std::int32_t Lo1, std::int32_t Lo2,
                        std::int32_t Lo3, std::int32_t Lo4, std::int32_t Hi1, std::int32_t Hi2,
                        std::int32_t Hi3, std::int32_t Hi4, TDouble4DArray& Dest) {
  return CloneRangeImpl(Source, Range<4>{{Lo1, Lo2, Lo3, Lo4}, {Hi1, Hi2, Hi3, Hi4}}, Dest);
}

std::int32_t CloneArray(const TInt4DArray& Source, std::int32_t Lo1, std::int32_t Lo2,
                        std::int32_t Lo3, std::int32_t Lo4, std::int32_t Hi1, std::int32_t Hi2,
                        std::int32_t Hi3, std::int32_t Hi4, TInt4DArray& Dest) {
  return CloneRangeImpl(Source, Range<4>{{Lo1, Lo2, Lo3, Lo4}, {Hi1, Hi2, Hi3, Hi4}}, Dest);
}

TDoubleArray CloneAndReverseArray(const TDoubleArray& Source) {
  return Reversed(Source);
}

TIntArray CloneAndReverseArray(const TIntArray& Source) {
  return Reversed(Source);
}

TSingleArray CloneAndReverseArray(const TSingleArray& Source) {
  return Reversed(Source);
}

TBoolArray CloneAndReverseArray(const TBoolArray& Source) {
  return Reversed(Source);
}

TStrArray CloneAndReverseArray(const TStrArray& Source) {
  return Reversed(Source);
}

TDouble2DArray CloneAndReverseArray(const TDouble2DArray& Source) {
  return Reversed(Source);
}

TInt2DArray CloneAndReverseArray(const TInt2DArray& Source) {
  return Reversed(Source);
}

std::int32_t FillArray(TDoubleArray& Data, double Value) {
  return FillAllImpl(Data, Value);
}

std::int32_t FillArray(TDoubleArray& Data, double Value, std::int32_t Lo1, std::int32_t Hi1) {
  return FillRangeImpl(Data, Range<1>{{Lo1}, {Hi1}}, Value);
}

std::int32_t FillArray(TIntArray& Data, std::int32_t Value) {
  return FillAllImpl(Data, Value);
}

std::int32_t FillArray(TIntArray& Data, std::int32_t Value, std::int32_t Lo1, std::int32_t Hi1) {
  return FillRangeImpl(Data, Range<1>{{Lo1}, {Hi1}}, Value);
}

std::int32_t FillArray(TDouble2DArray& Data, double Value) {
  return FillAllImpl(Data, Value);
}

std::int32_t FillArray(TDouble2DArray& Data, double Value, std::int32_t Lo1, std::int32_t Lo2,
                       std::int32_t Hi1, std::int32_t Hi2) {
  return FillRangeImpl(Data, Range<2>{{Lo1, Lo2}, {Hi1, Hi2}}, Value);
}

std::int32_t FillArray(TInt2DArray& Data, std::int32_t Value) {
  return FillAllImpl(Data, Value);
}

std::int32_t FillArray(TInt2DArray& Data, std::int32_t Value, std::int32_t Lo1, std::int32_t Lo2,
                       std::int32_t Hi1, std::int32_t Hi2) {
  return FillRangeImpl(Data, Range<2>{{Lo1, Lo2}, {Hi1, Hi2}}, Value);
}

std::int32_t FillArray(TDouble3DArray& Data, double Value) {
  return FillAllImpl(Data, Value);
}

std::int32_t FillArray(TDouble3DArray& Data, double Value, std::int32_t Lo1, std::int32_t Lo2,
                       std::int32_t Lo3, std::int32_t Hi1, std::int32_t Hi2, std::int32_t Hi3) {
  return FillRangeImpl(Data, Range<3>{{Lo1, Lo2, Lo3}, {Hi1, Hi2, Hi3}}, Value);
}

std::int32_t FillArray(TInt3DArray& Data, std::int32_t Value) {
  return FillAllImpl(Data, Value);
}

std::int32_t FillArray(TInt3DArray& Data, std::int32_t Value, std::int32_t Lo1, std::int32_t Lo2,
                       std::int32_t Lo3, std::int32_t Hi1, std::int32_t Hi2, std::int32_t Hi3) {
  return FillRangeImpl(Data, Range<3>{{Lo1, Lo2, Lo3}, {Hi1, Hi2, Hi3}}, Value);
}

std::int32_t FillArray(TDouble4DArray& Data, double Value) {
  return FillAllImpl(Data, Value);
}

std::int32_t FillArray(TDouble4DArray& Data, double Value, std::int32_t Lo1, std::int32_t Lo2,
                       std::int32_t Lo3, std::int32_t Lo4, std::int32_t Hi1, std::int32_t Hi2,
                       std::int32_t Hi3, std::int32_t Hi4) {
  return FillRangeImpl(Data, Range<4>{{Lo1, Lo2, Lo3, Lo4}, {Hi1, Hi2, Hi3, Hi4}}, Value);
}

std::int32_t FillArray(TInt4DArray& Data, std::int32_t Value) {
  return FillAllImpl(Data, Value);
}

std::int32_t FillArray(TInt4DArray& Data, std::int32_t Value, std::int32_t Lo1, std::int32_t Lo2,
                       std::int32_t Lo3, std::int32_t Lo4, std::int32_t Hi1, std::int32_t Hi2,
                       std::int32_t Hi3, std::int32_t Hi4) {
  return FillRangeImpl(Data, Range<4>{{Lo1, Lo2, Lo3, Lo4}, {Hi1, Hi2, Hi3, Hi4}}, Value);
}

std::int32_t FillArray(TBoolArray& Data, bool Value) {
  return FillAllImpl(Data, static_cast<std::uint8_t>(Value ? 1 : 0));
}

std::int32_t FillArray(TBool2DArray& Data, bool Value) {
  return FillAllImpl(Data, static_cast<std::uint8_t>(Value ? 1 : 0));
}

std::int32_t FillArraySerial(TDoubleArray& Data, double Start, double Step) {
  return SerialAllImpl(Data, Start, Step);
}

std::int32_t FillArraySerial(TIntArray& Data, std::int32_t Start, std::int32_t Step) {
  return SerialAllImpl(Data, Start, Step);
}

std::int32_t FillArraySerial(TDouble2DArray& Data, double Start, double Step) {
  return SerialAllImpl(Data, Start, Step);
}

std::int32_t FillArraySerial(TInt2DArray& Data, std::int32_t Start, std::int32_t Step) {
  return SerialAllImpl(Data, Start, Step);
}

std::int32_t FillArraySerial(TDouble3DArray& Data, double Start, double Step) {
  return SerialAllImpl(Data, Start, Step);
}

std::int32_t FillArraySerial(TInt3DArray& Data, std::int32_t Start, std::int32_t Step) {
  return SerialAllImpl(Data, Start, Step);
}

std::int32_t FillArraySerial(TDouble4DArray& Data, double Start, double Step) {
  return SerialAllImpl(Data, Start, Step);
}

std::int32_t FillArraySerial(TInt4DArray& Data, std::int32_t Start, std::int32_t Step) {
  return SerialAllImpl(Data, Start, Step);
}

std::int32_t FillArraySerial(TDoubleArray& Data, double Start, double Step, std::int32_t Lo1,
                             std::int32_t Hi1) {
  return SerialRangeImpl(Data, Range<1>{{Lo1}, {Hi1}}, Start, Step);
}

std::int32_t FillArraySerial(TIntArray& Data, std::int32_t Start, std::int32_t Step,
                             std::int32_t Lo1, std::int32_t Hi1) {
  return SerialRangeImpl(Data, Range<1>{{Lo1}, {Hi1}}, Start, Step);
}

std::int32_t FillArraySerial(TDouble2DArray& Data, double Start, double Step, std::int32_t Lo1,
                             std::int32_t Lo2, std::int32_t Hi1, std::int32_t Hi2) {
  return SerialRangeImpl(Data, Range<2>{{Lo1, Lo2}, {Hi1, Hi2}}, Start, Step);
}

std::int32_t FillArraySerial(TInt2DArray& Data, std::int32_t Start, std::int32_t Step,
                             std::int32_t Lo1, std::int32_t Lo2, std::int32_t Hi1,
                             std::int32_t Hi2) {
  return SerialRangeImpl(Data, Range<2>{{Lo1, Lo2}, {Hi1, Hi2}}, Start, Step);
}

std::int32_t FillArraySerial(TSingleArray& Data, float Start, float Step) {
  return SerialAllImpl(Data, Start, Step);
}

std::int32_t FillArrayMasked(TDouble2DArray& Data, const TBool2DArray& Mask, double Value) {
  return FillMaskedImpl(Data, Mask, Value);
}

std::int32_t FillArrayMasked(TInt2DArray& Data, const TBool2DArray& Mask, std::int32_t Value) {
  return FillMaskedImpl(Data, Mask, Value);
}

std::int32_t FillDiagArray(TDouble2DArray& Data, double Value) {
  return FillDiagImpl(Data, Value);
}

std::int32_t FillDiagArray(TInt2DArray& Data, std::int32_t Value) {
  return FillDiagImpl(Data, Value);
}

std::int32_t FillDiagArray(TDouble3DArray& Data, double Value) {
  return FillDiagImpl(Data, Value);
}

std::int32_t FillDiagArray(TInt3DArray& Data, std::int32_t Value) {
  return FillDiagImpl(Data, Value);
}

std::int32_t FillDiagArray(TDouble4DArray& Data, double Value) {
  return FillDiagImpl(Data, Value);
}

std::int32_t FillDiagArray(TInt4DArray& Data, std::int32_t Value) {
  return FillDiagImpl(Data, Value);
}

std::int32_t FillRandomUniform(TDoubleArray& Data, double Low, double High) {
  return RandomUniformImpl(Data, Low, High);
}

std::int32_t FillRandomUniform(TIntArray& Data, std::int32_t Low, std::int32_t High) {
  return RandomUniformImpl(Data, Low, High);
}

std::int32_t FillRandomUniform(TDouble2DArray& Data, double Low, double High) {
  return RandomUniformImpl(Data, Low, High);
}

std::int32_t FillRandomUniform(TInt2DArray& Data, std::int32_t Low, std::int32_t High) {
  return RandomUniformImpl(Data, Low, High);
}

std::int32_t FillRandomUniform(TDouble3DArray& Data, double Low, double High) {
  return RandomUniformImpl(Data, Low, High);
}

std::int32_t FillRandomUniform(TInt3DArray& Data, std::int32_t Low, std::int32_t High) {
  return RandomUniformImpl(Data, Low, High);
}

std::int32_t FillRandomUniform(TDouble4DArray& Data, double Low, double High) {
  return RandomUniformImpl(Data, Low, High);
}

std::int32_t FillRandomUniform(TInt4DArray& Data, std::int32_t Low, std::int32_t High) {
  return RandomUniformImpl(Data, Low, High);
}

std::int32_t FillRandomUniform(TDoubleArray& Data, double Low, double High, std::int32_t Lo1,
                               std::int32_t Hi1) {
  const std::int32_t code = detail::CheckRange(Data, Range<1>{{Lo1}, {Hi1}});
  if (code != detail::kOk) return code;
  for (std::int32_t i = Lo1; i <= Hi1; ++i)
    Data[static_cast<std::size_t>(i)] = UniformValue(Low, High);
  return detail::kOk;
}

std::int32_t FillRandomNormal(TDoubleArray& Data, double Mean, double StdDev) {
  return RandomNormalImpl(Data, Mean, StdDev);
}

std::int32_t FillRandomNormal(TDouble2DArray& Data, double Mean, double StdDev) {
  return RandomNormalImpl(Data, Mean, StdDev);
}

std::int32_t FillRandomNormal(TDouble3DArray& Data, double Mean, double StdDev) {
  return RandomNormalImpl(Data, Mean, StdDev);
}

std::int32_t FillRandomNormal(TDouble4DArray& Data, double Mean, double StdDev) {
  return RandomNormalImpl(Data, Mean, StdDev);
}

}  // namespace quv
