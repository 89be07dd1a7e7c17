#include "quv/openarrays/elementwise.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <type_traits>

#include "quv/openarrays/array_core.h"

namespace quv {

namespace {

using detail::kRankOf;
using detail::Range;

// Integer arithmetic in 64 bits, cut back to 32 bits (modulo 2^32) at the end, so that an
// overflow wraps instead of being undefined.
template <class T>
T Plus(T a, T b) {
  if constexpr (std::is_integral_v<T>) {
    return static_cast<T>(std::int64_t{a} + std::int64_t{b});
  } else {
    return a + b;
  }
}
template <class T>
T Minus(T a, T b) {
  if constexpr (std::is_integral_v<T>) {
    return static_cast<T>(std::int64_t{a} - std::int64_t{b});
  } else {
    return a - b;
  }
}
template <class T>
T Times(T a, T b) {
  if constexpr (std::is_integral_v<T>) {
    return static_cast<T>(std::int64_t{a} * std::int64_t{b});
  } else {
    return a * b;
  }
}

// Result := op(a, b) element by element; validated first, written through a temporary so that
// the result may be one of the operands.
template <class A, class Op>
std::int32_t BinaryImpl(const A& a, const A& b, A& result, Op op) {
  if (detail::IsEmptyArray(a) || detail::IsEmptyArray(b)) return detail::kEmpty;
  if (!detail::SameShape(a, b)) return detail::kBadBounds;
  A out = a;
  detail::ForEachRowPair(out, b, [&op](auto* p, const auto* q, std::size_t n) {
    for (std::size_t i = 0; i < n; ++i)
      p[i] = op(p[i], q[i]);
  });
  result = std::move(out);
  return detail::kOk;
}

template <class A>
std::int32_t AddImpl(const A& a, const A& b, A& result) {
  return BinaryImpl(a, b, result, [](auto x, auto y) { return Plus(x, y); });
}
template <class A>
std::int32_t SubtractImpl(const A& a, const A& b, A& result) {
  return BinaryImpl(a, b, result, [](auto x, auto y) { return Minus(x, y); });
}
template <class A>
std::int32_t ElemwiseImpl(const A& a, const A& b, A& result) {
  return BinaryImpl(a, b, result, [](auto x, auto y) { return Times(x, y); });
}

// Accumulator of a dot product: extended for reals, 64-bit for integers.
template <class T>
using Acc = std::conditional_t<std::is_integral_v<T>, std::int64_t, Extended>;

// Matrix product of rectangular arrays; a is n x m, b is m x p.
template <class T>
std::int32_t MatMulImpl(const std::vector<std::vector<T>>& a, const std::vector<std::vector<T>>& b,
                        std::vector<std::vector<T>>& result) {
  if (detail::IsEmptyArray(a) || detail::IsEmptyArray(b)) return detail::kEmpty;
  if (!detail::IsRectangular(a) || !detail::IsRectangular(b) || a[0].size() != b.size()) {
    return detail::kBadBounds;
  }
  const std::size_t n = a.size();
  const std::size_t m = b.size();
  const std::size_t p = b[0].size();
  std::vector<std::vector<T>> out(n, std::vector<T>(p));
  std::vector<Acc<T>> row(p);
  for (std::size_t i = 0; i < n; ++i) {
    // Row i of the product as a combination of the rows of b: walks b row by row.
    std::fill(row.begin(), row.end(), Acc<T>{0});
    for (std::size_t k = 0; k < m; ++k) {
      const Acc<T> aik = a[i][k];
      const T* bk = b[k].data();
      for (std::size_t j = 0; j < p; ++j)
        row[j] += aik * bk[j];
    }
    for (std::size_t j = 0; j < p; ++j)
      out[i][j] = static_cast<T>(row[j]);
  }
  result = std::move(out);
  return detail::kOk;
}

// Matrix times column vector: result[i] = sum_k a[i][k] v[k].
template <class T>
std::int32_t MatVecImpl(const std::vector<std::vector<T>>& a, const std::vector<T>& v,
                        std::vector<T>& result) {
  if (detail::IsEmptyArray(a) || v.empty()) return detail::kEmpty;
  if (!detail::IsRectangular(a) || a[0].size() != v.size()) return detail::kBadBounds;
  std::vector<T> out(a.size());
  for (std::size_t i = 0; i < a.size(); ++i) {
    Acc<T> s = 0;
    for (std::size_t k = 0; k < v.size(); ++k)
      s += static_cast<Acc<T>>(a[i][k]) * v[k];
    out[i] = static_cast<T>(s);
  }
  result = std::move(out);
  return detail::kOk;
}

// Row vector times matrix: result[j] = sum_k v[k] a[k][j].
template <class T>
std::int32_t VecMatImpl(const std::vector<T>& v, const std::vector<std::vector<T>>& a,
                        std::vector<T>& result) {
  if (detail::IsEmptyArray(a) || v.empty()) return detail::kEmpty;
  if (!detail::IsRectangular(a) || a.size() != v.size()) return detail::kBadBounds;
  std::vector<Acc<T>> acc(a[0].size(), Acc<T>{0});
  for (std::size_t k = 0; k < v.size(); ++k) {
    for (std::size_t j = 0; j < acc.size(); ++j)
      acc[j] += static_cast<Acc<T>>(v[k]) * a[k][j];
  }
  std::vector<T> out(acc.size());
  for (std::size_t j = 0; j < acc.size(); ++j)
    out[j] = static_cast<T>(acc[j]);
  result = std::move(out);
  return detail::kOk;
}

template <class A, class F>
std::int32_t InPlaceAll(A& data, F f) {
  if (detail::IsEmptyArray(data)) return detail::kEmpty;
  detail::TransformAll(data, f);
  return detail::kOk;
}

template <class A, int R, class F>
std::int32_t InPlaceRange(A& data, const Range<R>& r, F f) {
  const std::int32_t code = detail::CheckRange(data, r);
  if (code != detail::kOk) return code;
  detail::ForEachRowInRange(data, r, [&f](auto* p, std::size_t n) {
    for (std::size_t i = 0; i < n; ++i)
      p[i] = f(p[i]);
  });
  return detail::kOk;
}

// The element at a position (one index per dimension), or nullptr when it does not exist.
template <class A>
auto CellAt(A& a, const std::int32_t* ix) -> detail::ElemOf<A>* {
  if (ix[0] < 0 || static_cast<std::size_t>(ix[0]) >= a.size()) return nullptr;
  if constexpr (kRankOf < A >> 1) {
    return CellAt(a[static_cast<std::size_t>(ix[0])], ix + 1);
  } else {
    return &a[static_cast<std::size_t>(ix[0])];
  }
}

template <class A, class T>
std::int32_t IncImpl(A& data, const std::array<std::int32_t, kRankOf<A>>& ix, T delta) {
  if (detail::IsEmptyArray(data)) return detail::kEmpty;
  T* cell = CellAt(data, ix.data());
  if (cell == nullptr) return detail::kBadBounds;
  *cell = Plus(*cell, delta);
  return detail::kOk;
}

template <class T>
T AbsValue(T x) {
  if constexpr (std::is_integral_v<T>) {
    // -2147483648 has no positive counterpart and stays as it is.
    return x < 0 ? static_cast<T>(0u - static_cast<std::uint32_t>(x)) : x;
  } else {
    return std::fabs(x);
  }
}

template <class A>
std::int32_t ReciprocalImpl(A& data) {
  if (detail::IsEmptyArray(data)) return detail::kEmpty;
  std::int32_t zeros = 0;
  detail::TransformAll(data, [&zeros](double x) {
    if (x == 0.0) {
      ++zeros;
      return x;
    }
    return 1.0 / x;
  });
  return zeros;
}

template <class A>
std::int32_t AccumulateImpl(const A& source, A& dest) {
  if (detail::IsEmptyArray(source) || detail::IsEmptyArray(dest)) return detail::kEmpty;
  if (!detail::SameShape(source, dest)) return detail::kBadBounds;
  if (&source == &dest) {
    detail::TransformAll(dest, [](auto x) { return Plus(x, x); });
    return detail::kOk;
  }
  detail::ForEachRowPair(dest, source, [](auto* p, const auto* q, std::size_t n) {
    for (std::size_t i = 0; i < n; ++i)
      p[i] = Plus(p[i], q[i]);
  });
  return detail::kOk;
}

template <class T>
std::int32_t TransposeImpl(const std::vector<std::vector<T>>& source,
                           std::vector<std::vector<T>>& dest) {
  if (detail::IsEmptyArray(source)) return detail::kEmpty;
  if (!detail::IsRectangular(source)) return detail::kBadBounds;
  std::vector<std::vector<T>> out(source[0].size(), std::vector<T>(source.size()));
  for (std::size_t i = 0; i < source.size(); ++i) {
    for (std::size_t j = 0; j < source[i].size(); ++j)
      out[j][i] = source[i][j];
  }
  dest = std::move(out);
  return detail::kOk;
}

// Reverses dimension dim (1 = outermost) of every inner array at that depth.
template <class A>
void Flip(A& a, std::int32_t dim) {
  if (dim == 1) {
    std::reverse(a.begin(), a.end());
    return;
  }
  if constexpr (kRankOf < A >> 1) {
    for (auto& inner : a)
      Flip(inner, dim - 1);
  }
}

template <class A>
std::int32_t FlipImpl(A& data, std::int32_t dim) {
  if (detail::IsEmptyArray(data)) return detail::kEmpty;
  if (dim < 1 || dim > kRankOf<A>) return detail::kBadBounds;
  Flip(data, dim);
  return detail::kOk;
}

template <class A, class B, class T>
std::int32_t DichotomizeImpl(const A& source, T threshold, B& dest) {
  if (detail::IsEmptyArray(source)) return detail::kEmpty;
  B out;
  if constexpr (kRankOf<A> == 1) {
    out.resize(source.size());
    for (std::size_t i = 0; i < source.size(); ++i)
      out[i] = source[i] >= threshold ? 1 : 0;
  } else {
    out.resize(source.size());
    for (std::size_t i = 0; i < source.size(); ++i)
      DichotomizeImpl(source[i], threshold, out[i]);
  }
  dest = std::move(out);
  return detail::kOk;
}

template <class A>
std::int32_t DichotomizeInPlace(A& data, double threshold) {
  return InPlaceAll(data, [threshold](double x) { return x >= threshold ? 1.0 : 0.0; });
}

template <class B, class A>
void BoolToNum(const B& source, A& dest) {
  A out(source.size());
  for (std::size_t i = 0; i < source.size(); ++i) {
    if constexpr (kRankOf < B >> 1) {
      BoolToNum(source[i], out[i]);
    } else {
      out[i] = source[i] != 0 ? 1 : 0;
    }
  }
  dest = std::move(out);
}

template <class A>
std::int32_t RescaleImpl(A& data, double new_low, double new_high) {
  if (detail::IsEmptyArray(data)) return detail::kEmpty;
  double lo = 0;
  double hi = 0;
  bool first = true;
  detail::ForEachElem(data, [&](double x) {
    if (first) {
      lo = hi = x;
      first = false;
    }
    lo = std::min(lo, x);
    hi = std::max(hi, x);
  });
  if (hi == lo) {
    const double mid = new_low + (new_high - new_low) / 2;
    detail::TransformAll(data, [mid](double) { return mid; });
    return detail::kOk;
  }
  const Extended scale =
      (static_cast<Extended>(new_high) - new_low) / (static_cast<Extended>(hi) - lo);
  detail::TransformAll(data, [&](double x) {
    return static_cast<double>(new_low + (static_cast<Extended>(x) - lo) * scale);
  });
  return detail::kOk;
}

}  // namespace

std::int32_t DiscretizeArray(const TDoubleArray& Data, const TDoubleArray& Thresholds,
                             TIntArray& Classes) {
  if (Data.empty()) return kOAEmpty;
  if (!std::is_sorted(Thresholds.begin(), Thresholds.end())) return kOABadBounds;
  TIntArray out(Data.size());
  for (std::size_t i = 0; i < Data.size(); ++i) {
    out[i] = static_cast<std::int32_t>(
        std::upper_bound(Thresholds.begin(), Thresholds.end(), Data[i]) - Thresholds.begin());
  }
  Classes = std::move(out);
  return kOAOk;
}

std::int32_t AddArrays(const TDoubleArray& A, const TDoubleArray& B, TDoubleArray& Result) {
  return AddImpl(A, B, Result);
}

std::int32_t AddArrays(const TIntArray& A, const TIntArray& B, TIntArray& Result) {
  return AddImpl(A, B, Result);
}

std::int32_t AddArrays(const TDouble2DArray& A, const TDouble2DArray& B, TDouble2DArray& Result) {
  return AddImpl(A, B, Result);
}

std::int32_t AddArrays(const TInt2DArray& A, const TInt2DArray& B, TInt2DArray& Result) {
  return AddImpl(A, B, Result);
}

std::int32_t AddArrays(const TDouble3DArray& A, const TDouble3DArray& B, TDouble3DArray& Result) {
  return AddImpl(A, B, Result);
}

std::int32_t AddArrays(const TInt3DArray& A, const TInt3DArray& B, TInt3DArray& Result) {
  return AddImpl(A, B, Result);
}

std::int32_t AddArrays(const TDouble4DArray& A, const TDouble4DArray& B, TDouble4DArray& Result) {
  return AddImpl(A, B, Result);
}

std::int32_t AddArrays(const TInt4DArray& A, const TInt4DArray& B, TInt4DArray& Result) {
  return AddImpl(A, B, Result);
}

std::int32_t SubtractArrays(const TDoubleArray& A, const TDoubleArray& B, TDoubleArray& Result) {
  return SubtractImpl(A, B, Result);
}

std::int32_t SubtractArrays(const TIntArray& A, const TIntArray& B, TIntArray& Result) {
  return SubtractImpl(A, B, Result);
}

std::int32_t SubtractArrays(const TDouble2DArray& A, const TDouble2DArray& B,
                            TDouble2DArray& Result) {
  return SubtractImpl(A, B, Result);
}

std::int32_t SubtractArrays(const TInt2DArray& A, const TInt2DArray& B, TInt2DArray& Result) {
  return SubtractImpl(A, B, Result);
}

std::int32_t SubtractArrays(const TDouble3DArray& A, const TDouble3DArray& B,
                            TDouble3DArray& Result) {
  return SubtractImpl(A, B, Result);
}

std::int32_t SubtractArrays(const TInt3DArray& A, const TInt3DArray& B, TInt3DArray& Result) {
  return SubtractImpl(A, B, Result);
}

std::int32_t SubtractArrays(const TDouble4DArray& A, const TDouble4DArray& B,
                            TDouble4DArray& Result) {
  return SubtractImpl(A, B, Result);
}

std::int32_t SubtractArrays(const TInt4DArray& A, const TInt4DArray& B, TInt4DArray& Result) {
  return SubtractImpl(A, B, Result);
}

std::int32_t MultiplyArrays(const TDouble2DArray& A, const TDouble2DArray& B,
                            TDouble2DArray& Result) {
  return MatMulImpl(A, B, Result);
}

std::int32_t MultiplyArrays(const TDouble2DArray& A, const TDoubleArray& B, TDoubleArray& Result) {
  return MatVecImpl(A, B, Result);
}

std::int32_t MultiplyArrays(const TDoubleArray& A, const TDouble2DArray& B, TDoubleArray& Result) {
  return VecMatImpl(A, B, Result);
}

std::int32_t MultiplyArrays(const TInt2DArray& A, const TInt2DArray& B, TInt2DArray& Result) {
  return MatMulImpl(A, B, Result);
}

std::int32_t MultiplyArrays(const TInt2DArray& A, const TIntArray& B, TIntArray& Result) {
  return MatVecImpl(A, B, Result);
}

std::int32_t MultiplyArrays(const TIntArray& A, const TInt2DArray& B, TIntArray& Result) {
  return VecMatImpl(A, B, Result);
}

std::int32_t MultiplyArraysElemw(const TDoubleArray& A, const TDoubleArray& B,
                                 TDoubleArray& Result) {
  return ElemwiseImpl(A, B, Result);
}

std::int32_t MultiplyArraysElemw(const TIntArray& A, const TIntArray& B, TIntArray& Result) {
  return ElemwiseImpl(A, B, Result);
}

std::int32_t MultiplyArraysElemw(const TDouble2DArray& A, const TDouble2DArray& B,
                                 TDouble2DArray& Result) {
  return ElemwiseImpl(A, B, Result);
}

std::int32_t MultiplyArraysElemw(const TInt2DArray& A, const TInt2DArray& B, TInt2DArray& Result) {
  return ElemwiseImpl(A, B, Result);
}

std::int32_t MultiplyArrayByScalar(TDoubleArray& Data, double Factor) {
  return InPlaceAll(Data, [Factor](double x) { return Times(x, Factor); });
}

std::int32_t MultiplyArrayByScalar(TDoubleArray& Data, double Factor, std::int32_t Lo1,
                                   std::int32_t Hi1) {
  return InPlaceRange(Data, Range<1>{{Lo1}, {Hi1}},
                      [Factor](double x) { return Times(x, Factor); });
}

std::int32_t MultiplyArrayByScalar(TIntArray& Data, std::int32_t Factor) {
  return InPlaceAll(Data, [Factor](std::int32_t x) { return Times(x, Factor); });
}

std::int32_t MultiplyArrayByScalar(TIntArray& Data, std::int32_t Factor, std::int32_t Lo1,
                                   std::int32_t Hi1) {
  return InPlaceRange(Data, Range<1>{{Lo1}, {Hi1}},
                      [Factor](std::int32_t x) { return Times(x, Factor); });
}

std::int32_t MultiplyArrayByScalar(TDouble2DArray& Data, double Factor) {
  return InPlaceAll(Data, [Factor](double x) { return Times(x, Factor); });
}

std::int32_t MultiplyArrayByScalar(TDouble2DArray& Data, double Factor, std::int32_t Lo1,
                                   std::int32_t Lo2, std::int32_t Hi1, std::int32_t Hi2) {
  return InPlaceRange(Data, Range<2>{{Lo1, Lo2}, {Hi1, Hi2}},
                      [Factor](double x) { return Times(x, Factor); });
}

std::int32_t MultiplyArrayByScalar(TInt2DArray& Data, std::int32_t Factor) {
  return InPlaceAll(Data, [Factor](std::int32_t x) { return Times(x, Factor); });
}

std::int32_t MultiplyArrayByScalar(TInt2DArray& Data, std::int32_t Factor, std::int32_t Lo1,
                                   std::int32_t Lo2, std::int32_t Hi1, std::int32_t Hi2) {
  return InPlaceRange(Data, Range<2>{{Lo1, Lo2}, {Hi1, Hi2}},
                      [Factor](std::int32_t x) { return Times(x, Factor); });
}

std::int32_t MultiplyArrayByScalar(TDouble3DArray& Data, double Factor) {
  return InPlaceAll(Data, [Factor](double x) { return Times(x, Factor); });
}

std::int32_t MultiplyArrayByScalar(TDouble3DArray& Data, double Factor, std::int32_t Lo1,
                                   std::int32_t Lo2, std::int32_t Lo3, std::int32_t Hi1,
                                   std::int32_t Hi2, std::int32_t Hi3) {
  return InPlaceRange(Data, Range<3>{{Lo1, Lo2, Lo3}, {Hi1, Hi2, Hi3}},
                      [Factor](double x) { return Times(x, Factor); });
}

std::int32_t MultiplyArrayByScalar(TInt3DArray& Data, std::int32_t Factor) {
  return InPlaceAll(Data, [Factor](std::int32_t x) { return Times(x, Factor); });
}

std::int32_t MultiplyArrayByScalar(TInt3DArray& Data, std::int32_t Factor, std::int32_t Lo1,
                                   std::int32_t Lo2, std::int32_t Lo3, std::int32_t Hi1,
                                   std::int32_t Hi2, std::int32_t Hi3) {
  return InPlaceRange(Data, Range<3>{{Lo1, Lo2, Lo3}, {Hi1, Hi2, Hi3}},
                      [Factor](std::int32_t x) { return Times(x, Factor); });
}

std::int32_t MultiplyArrayByScalar(TDouble4DArray& Data, double Factor) {
  return InPlaceAll(Data, [Factor](double x) { return Times(x, Factor); });
}

std::int32_t MultiplyArrayByScalar(TDouble4DArray& Data, double Factor, std::int32_t Lo1,
                                   std::int32_t Lo2, std::int32_t Lo3, std::int32_t Lo4,
                                   std::int32_t Hi1, std::int32_t Hi2, std::int32_t Hi3,
                                   std::int32_t Hi4) {
  return InPlaceRange(Data, Range<4>{{Lo1, Lo2, Lo3, Lo4}, {Hi1, Hi2, Hi3, Hi4}},
                      [Factor](double x) { return Times(x, Factor); });
}

std::int32_t MultiplyArrayByScalar(TInt4DArray& Data, std::int32_t Factor) {
  return InPlaceAll(Data, [Factor](std::int32_t x) { return Times(x, Factor); });
}

std::int32_t MultiplyArrayByScalar(TInt4DArray& Data, std::int32_t Factor, std::int32_t Lo1,
                                   std::int32_t Lo2, std::int32_t Lo3, std::int32_t Lo4,
                                   std::int32_t Hi1, std::int32_t Hi2, std::int32_t Hi3,
                                   std::int32_t Hi4) {
  return InPlaceRange(Data, Range<4>{{Lo1, Lo2, Lo3, Lo4}, {Hi1, Hi2, Hi3, Hi4}},
                      [Factor](std::int32_t x) { return Times(x, Factor); });
}

std::int32_t AddScalarToArray(TDoubleArray& Data, double Value) {
  return InPlaceAll(Data, [Value](double x) { return Plus(x, Value); });
}

std::int32_t AddScalarToArray(TIntArray& Data, std::int32_t Value) {
  return InPlaceAll(Data, [Value](std::int32_t x) { return Plus(x, Value); });
}

std::int32_t AddScalarToArray(TDouble2DArray& Data, double Value) {
  return InPlaceAll(Data, [Value](double x) { return Plus(x, Value); });
}

std::int32_t AddScalarToArray(TInt2DArray& Data, std::int32_t Value) {
  return InPlaceAll(Data, [Value](std::int32_t x) { return Plus(x, Value); });
}

std::int32_t AddScalarToArray(TDouble3DArray& Data, double Value) {
  return InPlaceAll(Data, [Value](double x) { return Plus(x, Value); });
}

std::int32_t AddScalarToArray(TInt3DArray& Data, std::int32_t Value) {
  return InPlaceAll(Data, [Value](std::int32_t x) { return Plus(x, Value); });
}

std::int32_t AddScalarToArray(TDouble4DArray& Data, double Value) {
  return InPlaceAll(Data, [Value](double x) { return Plus(x, Value); });
}

std::int32_t AddScalarToArray(TInt4DArray& Data, std::int32_t Value) {
  return InPlaceAll(Data, [Value](std::int32_t x) { return Plus(x, Value); });
}

std::int32_t IncArray(TDoubleArray& Data, std::int32_t Ix1, double Delta) {
  return IncImpl(Data, {Ix1}, Delta);
}

std::int32_t IncArray(TIntArray& Data, std::int32_t Ix1, std::int32_t Delta) {
  return IncImpl(Data, {Ix1}, Delta);
}

std::int32_t IncArray(TDouble2DArray& Data, std::int32_t Ix1, std::int32_t Ix2, double Delta) {
  return IncImpl(Data, {Ix1, Ix2}, Delta);
}

std::int32_t IncArray(TInt2DArray& Data, std::int32_t Ix1, std::int32_t Ix2, std::int32_t Delta) {
  return IncImpl(Data, {Ix1, Ix2}, Delta);
}

std::int32_t IncArray(TDouble3DArray& Data, std::int32_t Ix1, std::int32_t Ix2, std::int32_t Ix3,
                      double Delta) {
  return IncImpl(Data, {Ix1, Ix2, Ix3}, Delta);
}

std::int32_t IncArray(TInt3DArray& Data, std::int32_t Ix1, std::int32_t Ix2, std::int32_t Ix3,
                      std::int32_t Delta) {
  return IncImpl(Data, {Ix1, Ix2, Ix3}, Delta);
}

std::int32_t IncArray(TDouble4DArray& Data, std::int32_t Ix1, std::int32_t Ix2, std::int32_t Ix3,
                      std::int32_t Ix4, double Delta) {
  return IncImpl(Data, {Ix1, Ix2, Ix3, Ix4}, Delta);
}

std::int32_t IncArray(TInt4DArray& Data, std::int32_t Ix1, std::int32_t Ix2, std::int32_t Ix3,
                      std::int32_t Ix4, std::int32_t Delta) {
  return IncImpl(Data, {Ix1, Ix2, Ix3, Ix4}, Delta);
}

std::int32_t AbsValArray(TDoubleArray& Data) {
  return InPlaceAll(Data, [](const double x) { return AbsValue(x); });
}

std::int32_t AbsValArray(TIntArray& Data) {
  return InPlaceAll(Data, [](const std::int32_t x) { return AbsValue(x); });
}

std::int32_t AbsValArray(TDouble2DArray& Data) {
  return InPlaceAll(Data, [](const double x) { return AbsValue(x); });
}

std::int32_t AbsValArray(TInt2DArray& Data) {
  return InPlaceAll(Data, [](const std::int32_t x) { return AbsValue(x); });
}

std::int32_t AbsValArray(TDouble3DArray& Data) {
  return InPlaceAll(Data, [](const double x) { return AbsValue(x); });
}

std::int32_t AbsValArray(TInt3DArray& Data) {
  return InPlaceAll(Data, [](const std::int32_t x) { return AbsValue(x); });
}

std::int32_t AbsValArray(TDouble4DArray& Data) {
  return InPlaceAll(Data, [](const double x) { return AbsValue(x); });
}

std::int32_t AbsValArray(TInt4DArray& Data) {
  return InPlaceAll(Data, [](const std::int32_t x) { return AbsValue(x); });
}

std::int32_t ReciprocalArray(TDoubleArray& Data) {
  return ReciprocalImpl(Data);
}

std::int32_t ReciprocalArray(TDouble2DArray& Data) {
  return ReciprocalImpl(Data);
}

std::int32_t ReciprocalArray(TDouble3DArray& Data) {
  return ReciprocalImpl(Data);
}

std::int32_t ReciprocalArray(TDouble4DArray& Data) {
  return ReciprocalImpl(Data);
}

std::int32_t AccumulateArray(const TDoubleArray& Source, TDoubleArray& Dest) {
  return AccumulateImpl(Source, Dest);
}

std::int32_t AccumulateArray(const TIntArray& Source, TIntArray& Dest) {
  return AccumulateImpl(Source, Dest);
}

std::int32_t AccumulateArray(const TDouble2DArray& Source, TDouble2DArray& Dest) {
  return AccumulateImpl(Source, Dest);
}

std::int32_t AccumulateArray(const TInt2DArray& Source, TInt2DArray& Dest) {
  return AccumulateImpl(Source, Dest);
}

std::int32_t AccumulateArray(const TDouble3DArray& Source, TDouble3DArray& Dest) {
  return AccumulateImpl(Source, Dest);
}

std::int32_t AccumulateArray(const TInt3DArray& Source, TInt3DArray& Dest) {
  return AccumulateImpl(Source, Dest);
}

std::int32_t AccumulateArray(const TDouble4DArray& Source, TDouble4DArray& Dest) {
  return AccumulateImpl(Source, Dest);
}

std::int32_t AccumulateArray(const TInt4DArray& Source, TInt4DArray& Dest) {
  return AccumulateImpl(Source, Dest);
}

std::int32_t TransposeArray(const TDouble2DArray& Source, TDouble2DArray& Dest) {
  return TransposeImpl(Source, Dest);
}

std::int32_t TransposeArray(const TInt2DArray& Source, TInt2DArray& Dest) {
  return TransposeImpl(Source, Dest);
}

std::int32_t TransposeArray(const TBool2DArray& Source, TBool2DArray& Dest) {
  return TransposeImpl(Source, Dest);
}

std::int32_t FlipDimArray(TDoubleArray& Data, std::int32_t Dim) {
  return FlipImpl(Data, Dim);
}

std::int32_t FlipDimArray(TIntArray& Data, std::int32_t Dim) {
  return FlipImpl(Data, Dim);
}

std::int32_t FlipDimArray(TDouble2DArray& Data, std::int32_t Dim) {
  return FlipImpl(Data, Dim);
}

std::int32_t FlipDimArray(TInt2DArray& Data, std::int32_t Dim) {
  return FlipImpl(Data, Dim);
}

std::int32_t FlipDimArray(TDouble3DArray& Data, std::int32_t Dim) {
  return FlipImpl(Data, Dim);
}

std::int32_t FlipDimArray(TInt3DArray& Data, std::int32_t Dim) {
  return FlipImpl(Data, Dim);
}

std::int32_t FlipDimArray(TDouble4DArray& Data, std::int32_t Dim) {
  return FlipImpl(Data, Dim);
}

std::int32_t FlipDimArray(TInt4DArray& Data, std::int32_t Dim) {
  return FlipImpl(Data, Dim);
}

bool EqualArrays(const TIntArray& A, const TIntArray& B) {
  return A == B;
}

bool EqualArrays(const TInt2DArray& A, const TInt2DArray& B) {
  return A == B;
}

bool EqualArrays(const TInt3DArray& A, const TInt3DArray& B) {
  return A == B;
}

bool EqualArrays(const TInt4DArray& A, const TInt4DArray& B) {
  return A == B;
}

std::int32_t DichotomizeArray(const TDoubleArray& Source, double Threshold, TBoolArray& Dest) {
  return DichotomizeImpl(Source, Threshold, Dest);
}

std::int32_t DichotomizeArray(const TIntArray& Source, std::int32_t Threshold, TBoolArray& Dest) {
  return DichotomizeImpl(Source, Threshold, Dest);
}

std::int32_t DichotomizeArray(const TDouble2DArray& Source, double Threshold, TBool2DArray& Dest) {
  return DichotomizeImpl(Source, Threshold, Dest);
}

std::int32_t DichotomizeArray(const TInt2DArray& Source, std::int32_t Threshold,
                              TBool2DArray& Dest) {
  return DichotomizeImpl(Source, Threshold, Dest);
}

std::int32_t DichotomizeArray(TDoubleArray& Data, double Threshold) {
  return DichotomizeInPlace(Data, Threshold);
}

std::int32_t DichotomizeArray(TDouble2DArray& Data, double Threshold) {
  return DichotomizeInPlace(Data, Threshold);
}

void BoolToNumArray(const TBoolArray& Source, TDoubleArray& Dest) {
  BoolToNum(Source, Dest);
}

void BoolToNumArray(const TBoolArray& Source, TIntArray& Dest) {
  BoolToNum(Source, Dest);
}

void BoolToNumArray(const TBool2DArray& Source, TDouble2DArray& Dest) {
  BoolToNum(Source, Dest);
}

void BoolToNumArray(const TBool2DArray& Source, TInt2DArray& Dest) {
  BoolToNum(Source, Dest);
}

std::int32_t RescaleArray(TDoubleArray& Data, double NewLow, double NewHigh) {
  return RescaleImpl(Data, NewLow, NewHigh);
}

std::int32_t RescaleArray(TDouble2DArray& Data, double NewLow, double NewHigh) {
  return RescaleImpl(Data, NewLow, NewHigh);
}

}  // namespace quv
