// Storage, access, events, arithmetic, searching, the comb sort, copying and filling of the
// vector core.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <utility>

#include "quv/math1/numtext.h"
#include "quv/vector/vector_core.h"
#include "quv/vector/vector_detail.h"

namespace quv {
namespace {

// Integer arithmetic wraps around like 32-bit hardware instead of overflowing (undefined in
// C++): compute in 64 bits and keep the low 32 (a defined conversion since C++20).
template <class T>
T Wrap(std::int64_t x) {
  return static_cast<T>(x);
}

template <class T>
T AddT(T a, T b) {
  if constexpr (std::is_integral_v<T>)
    return Wrap<T>(std::int64_t{a} + b);
  else
    return a + b;
}

template <class T>
T SubT(T a, T b) {
  if constexpr (std::is_integral_v<T>)
    return Wrap<T>(std::int64_t{a} - b);
  else
    return a - b;
}

template <class T>
T MulT(T a, T b) {
  if constexpr (std::is_integral_v<T>)
    return Wrap<T>(std::int64_t{a} * b);
  else
    return a * b;
}

template <class T>
T AbsT(T a) {
  if constexpr (std::is_integral_v<T>)
    return Wrap<T>(a < 0 ? -std::int64_t{a} : std::int64_t{a});
  else
    return std::fabs(a);
}

// |a - b| without integer overflow.
template <class T>
double Distance(T a, T b) {
  if constexpr (std::is_integral_v<T>)
    return std::fabs(static_cast<double>(std::int64_t{a} - b));
  else
    return std::fabs(a - b);
}

// One comb sort of a[0..n-1]. The direction and the presence of an exchange handler are
// template arguments, so that the loop without a handler carries no test for it. `index0` is
// the 1-based index of a[0], which the handler receives.
template <bool Ascending, bool Notify, class T, class Handler>
void CombSort(T* a, std::int32_t n, std::int32_t index0, Handler& onExchange) {
  std::int32_t gap = n - 1;
  bool exchanged = true;
  while (gap > 1 || exchanged) {
    gap = std::max<std::int32_t>(1, static_cast<std::int32_t>(gap / 1.3));
    exchanged = false;
    for (std::int32_t i = 0; i + gap < n; ++i) {
      const bool outOfOrder = Ascending ? a[i] > a[i + gap] : a[i] < a[i + gap];
      if (outOfOrder) {
        std::swap(a[i], a[i + gap]);
        exchanged = true;
        if constexpr (Notify) onExchange(index0 + i, index0 + i + gap);
      }
    }
  }
}

}  // namespace

template <class T>
TVectorCore<T>::TVectorCore(TComponent* owner) : TContainerComponent(owner) {
  elems_ = NewArray(1);
}

template <class T>
typename TVectorCore<T>::TArray TVectorCore<T>::NewArray(std::size_t n) const {
  return GuardAllocation<EQUVVectorError>(*this, msg::kNotEnoughMemoryOnHeap,
                                          [n] { return TArray(n, T{}); });
}

template <class T>
void TVectorCore<T>::ReplaceStorage(TArray&& storage) {
  const bool resized = storage.size() != elems_.size();
  elems_.swap(storage);
  Changed();
  if (resized) Resized();
}

template <class T>
bool TVectorCore<T>::Resize(std::int32_t n) {
  if (n == NrOfElem()) return true;
  if (n < 1) return false;
  TArray storage = GuardAllocation<EQUVVectorError>(
      *this, msg::kNotEnoughMemory, [n] { return TArray(static_cast<std::size_t>(n), T{}); });
  const std::size_t kept = std::min(storage.size(), elems_.size());
  std::copy_n(elems_.begin(), kept, storage.begin());
  ReplaceStorage(std::move(storage));
  return true;
}

template <class T>
void TVectorCore<T>::SetVal(std::int32_t i, T v) {
  if (i < 1 || i > NrOfElem()) return;
  elems_[static_cast<std::size_t>(i - 1)] = v;
  cleared_ = false;
  Changed();
}

template <class T>
std::int32_t TVectorCore<T>::MakeValidElemRange(std::int32_t& First, std::int32_t& Last) const {
  const std::int32_t n = NrOfElem();
  std::int32_t result = kRangeValid;
  if (First == 0 && Last == 0) {
    First = 1;
    Last = n;
  } else {
    for (std::int32_t* bound : {&First, &Last}) {
      if (*bound < 1) {
        *bound = 1;
        result = kRangeClamped;
      } else if (*bound > n) {
        *bound = n;
        result = kRangeClamped;
      }
    }
  }
  if (First > Last) std::swap(First, Last);
  return result;
}

template <class T>
void TVectorCore<T>::Span(std::int32_t First, std::int32_t Last, std::size_t& begin,
                          std::size_t& count) const {
  MakeValidElemRange(First, Last);
  begin = static_cast<std::size_t>(First - 1);
  count = static_cast<std::size_t>(Last - First + 1);
}

template <class T>
void TVectorCore<T>::Assign(const TVectorCore& source) {
  if (&source == this) return;
  TArray storage = GuardAllocation<EQUVVectorError>(*this, msg::kNotEnoughMemoryOnHeap,
                                                    [&source] { return TArray(source.elems_); });
  elems_.swap(storage);
  cleared_ = source.cleared_;
  OnChange = source.OnChange;
  OnResize = source.OnResize;
  OnSortExchange = source.OnSortExchange;
}

// ---- arithmetic -------------------------------------------------------------------------------

template <class T>
double TVectorCore<T>::CalcVecLeng() const {
  Extended sum = 0;
  for (const T x : elems_)
    sum += static_cast<Extended>(x) * x;
  return static_cast<double>(std::sqrt(sum));
}

template <class T>
double TVectorCore<T>::DotProduct(const TVectorCore& v) const {
  if (v.NrOfElem() != NrOfElem())
    RaiseComponentError<EQUVVectorError>(*this, msg::kVectorsDifferentDims);
  Extended sum = 0;
  for (std::int32_t i = 1; i <= NrOfElem(); ++i)
    sum += static_cast<Extended>(elems_[static_cast<std::size_t>(i - 1)]) * v.GetVal(i);
  return static_cast<double>(sum);
}

template <class T>
double TVectorCore<T>::EuclideanDistance(const TVectorCore& v) const {
  if (v.NrOfElem() != NrOfElem())
    RaiseFunctionError<EQUVVectorError>("EuclideanDistance", "dimensions of vectors do not match");
  // Every square is computed, but only the last one is kept: the result is |a_n - b_n|.
  Extended square = 0;
  for (std::int32_t i = 1; i <= NrOfElem(); ++i) {
    const Extended d = static_cast<Extended>(GetVal(i)) - v.GetVal(i);
    square = d * d;
  }
  return static_cast<double>(std::sqrt(square));
}

template <class T>
double TVectorCore<T>::PearsonCorrCoeff(const TVectorCore& v) const {
  const std::int32_t n = NrOfElem();
  if (v.NrOfElem() != n || n < 2) return 0.0;
  Extended sx = 0, sy = 0, sxx = 0, syy = 0, sxy = 0;
  for (std::int32_t i = 1; i <= n; ++i) {
    const Extended x = GetVal(i);
    const Extended y = v.GetVal(i);
    sx += x;
    sy += y;
    sxx += x * x;
    syy += y * y;
    sxy += x * y;
  }
  if (!(sxx > 0 && syy > 0)) return 0.0;
  const Extended qx = sxx - sx * sx / n;
  const Extended qy = syy - sy * sy / n;
  if (qx == 0 || qy == 0) return 0.0;
  return static_cast<double>((sxy - sx * sy / n) / std::sqrt(std::fabs(qx * qy)));
}

template <class T>
double TVectorCore<T>::Correlate(const TVectorCore& v, std::int32_t Lag) const {
  const std::int64_t from = std::max<std::int64_t>(1, std::int64_t{Lag} + 1);
  const std::int64_t to = std::min<std::int64_t>(NrOfElem(), std::int64_t{v.NrOfElem()} + Lag);
  if (to - from + 1 < 2) return 0.0;
  Extended sum = 0;
  for (std::int64_t i = from; i <= to; ++i)
    sum += static_cast<Extended>(GetVal(static_cast<std::int32_t>(i))) *
           v.GetVal(static_cast<std::int32_t>(i - Lag));
  return static_cast<double>(sum);
}

template <class T>
template <class Op>
void TVectorCore<T>::CombineWith(const TVectorCore& v, Op op) {
  if (v.NrOfElem() != NrOfElem())
    RaiseComponentError<EQUVVectorError>(*this, msg::kVectorsDifferentDims);
  for (std::int32_t i = 1; i <= NrOfElem(); ++i) {
    T& a = elems_[static_cast<std::size_t>(i - 1)];
    a = op(a, v.GetVal(i));
  }
  Changed();
}

template <class T>
void TVectorCore<T>::Add(const TVectorCore& v) {
  CombineWith(v, AddT<T>);
}

template <class T>
void TVectorCore<T>::Subtract(const TVectorCore& v) {
  CombineWith(v, SubT<T>);
}

template <class T>
void TVectorCore<T>::SMult(T s) {
  for (T& a : elems_)
    a = MulT(a, s);
  Changed();
}

template <class T>
void TVectorCore<T>::AbsVal() {
  for (T& a : elems_)
    a = AbsT(a);
  Changed();
}

// ---- searching and ordering -------------------------------------------------------------------

template <class T>
std::int32_t TVectorCore<T>::Find(std::int32_t First, std::int32_t Last, T x) const {
  MakeValidElemRange(First, Last);
  std::int32_t best = First;
  double bestDist = Distance(GetVal(First), x);
  for (std::int32_t i = First + 1; i <= Last; ++i) {
    const double d = Distance(elems_[static_cast<std::size_t>(i - 1)], x);
    if (d < bestDist) {
      bestDist = d;
      best = i;
    }
  }
  return best;
}

template <class T>
std::int32_t TVectorCore<T>::FindExact(std::int32_t First, std::int32_t Last, T x) const {
  MakeValidElemRange(First, Last);
  for (std::int32_t i = First; i <= Last; ++i)
    if (elems_[static_cast<std::size_t>(i - 1)] == x) return i;
  return 0;
}

template <class T>
std::int32_t TVectorCore<T>::FindInSortedVector(bool Ascending, T x) const {
  std::int32_t lo = 1;
  std::int32_t hi = NrOfElem();
  while (hi - lo >= 2) {
    const std::int32_t mid = (lo + hi) / 2;
    const T m = GetVal(mid);
    if (m == x) return mid;
    if (Ascending ? x > m : x < m)
      lo = mid;
    else
      hi = mid;
  }
  return Distance(GetVal(lo), x) < Distance(GetVal(hi), x) ? lo : hi;
}

template <class T>
void TVectorCore<T>::SortElems(bool Ascending, std::int32_t First, std::int32_t Last) {
  MakeValidElemRange(First, Last);
  const std::int32_t n = Last - First + 1;
  if (n < 2) return;
  T* a = elems_.data() + (First - 1);
  auto notify = [this](std::int32_t i, std::int32_t j) { SortExchange(0, i, j); };
  if (OnSortExchange) {
    if (Ascending)
      CombSort<true, true>(a, n, First, notify);
    else
      CombSort<false, true>(a, n, First, notify);
  } else {
    if (Ascending)
      CombSort<true, false>(a, n, First, notify);
    else
      CombSort<false, false>(a, n, First, notify);
  }
  Changed();
}

template <class T>
void TVectorCore<T>::Mirror() {
  std::reverse(elems_.begin(), elems_.end());
  Changed();
}

template <class T>
void TVectorCore<T>::ShuffleElems() {
  Randomize();
  const std::int32_t n = NrOfElem();
  for (std::int32_t k = 0; k < n; ++k) {
    const auto i = static_cast<std::size_t>(Random(n));
    const auto j = static_cast<std::size_t>(Random(n));
    std::swap(elems_[i], elems_[j]);
  }
}

// ---- copying ----------------------------------------------------------------------------------

template <class T>
void TVectorCore<T>::Clone(const TVectorCore& v) {
  if (&v == this) {
    cleared_ = false;
    Changed();
    return;
  }
  TArray storage = GuardAllocation<EQUVVectorError>(*this, msg::kNotEnoughMemoryOnHeap,
                                                    [&v] { return TArray(v.elems_); });
  cleared_ = false;  // the copy counts as element writes
  ReplaceStorage(std::move(storage));
}

// Shared body of the CopyFrom family. The source holds srcLen elements addressed base ..
// base + srcLen - 1; get(k) returns element k (0-based offset from base). Bounds are checked
// before anything is copied.
template <class T>
template <class Get>
std::int32_t TVectorCore<T>::CopyRange(std::int32_t srcLen, std::int32_t base,
                                       std::int32_t SrcFirst, std::int32_t SrcLast,
                                       std::int32_t DestIx, Get get) {
  if (SrcFirst == 0 && SrcLast == 0) {
    if (srcLen < 1) return kCopySourceOutOfRange;
    SrcFirst = base;
    SrcLast = base + srcLen - 1;
  }
  const auto inSource = [&](std::int32_t ix) {
    return ix >= base && std::int64_t{ix} <= std::int64_t{base} + srcLen - 1;
  };
  if (!inSource(SrcFirst) || !inSource(SrcLast)) return kCopySourceOutOfRange;
  if (DestIx < 1 || DestIx > NrOfElem()) return kCopyDestOutOfRange;
  if (SrcFirst > SrcLast) std::swap(SrcFirst, SrcLast);
  const std::int32_t room = NrOfElem() - DestIx + 1;
  const std::int32_t count = std::min(SrcLast - SrcFirst + 1, room);
  T* dest = elems_.data() + (DestIx - 1);
  for (std::int32_t k = 0; k < count; ++k)
    dest[k] = get(SrcFirst - base + k);
  cleared_ = false;
  Changed();
  return kCopyOk;
}

template <class T>
std::int32_t TVectorCore<T>::CopyFrom(const TVectorCore* v, std::int32_t SrcFirst,
                                      std::int32_t SrcLast, std::int32_t DestIx) {
  if (v == nullptr) return kCopyNoSource;
  if (v == this) {
    // Overlapping copy within one vector: take the source values first.
    const TArray copy = GuardAllocation<EQUVVectorError>(*this, msg::kNotEnoughMemoryOnHeap,
                                                         [this] { return TArray(elems_); });
    return CopyRange(NrOfElem(), 1, SrcFirst, SrcLast, DestIx,
                     [&copy](std::int32_t k) { return copy[static_cast<std::size_t>(k)]; });
  }
  return CopyRange(v->NrOfElem(), 1, SrcFirst, SrcLast, DestIx,
                   [v](std::int32_t k) { return v->GetVal(k + 1); });
}

template <class T>
std::int32_t TVectorCore<T>::CopyFrom(const TArray& Arr, std::int32_t SrcFirst,
                                      std::int32_t SrcLast, std::int32_t DestIx) {
  return CopyRange(static_cast<std::int32_t>(std::min<std::size_t>(Arr.size(), uc_MaxInt)), 0,
                   SrcFirst, SrcLast, DestIx,
                   [&Arr](std::int32_t k) { return Arr[static_cast<std::size_t>(k)]; });
}

template <class T>
std::int32_t TVectorCore<T>::CopyFrom2DArrayRow(const T2DArray& Arr2D, std::int32_t Row,
                                                std::int32_t First, std::int32_t Last,
                                                std::int32_t DestIx) {
  if (Row < 0 || static_cast<std::size_t>(Row) >= Arr2D.size()) return kCopySourceOutOfRange;
  return CopyFrom(Arr2D[static_cast<std::size_t>(Row)], First, Last, DestIx);
}

template <class T>
std::int32_t TVectorCore<T>::CopyFrom2DArrayColumn(const T2DArray& Arr2D, std::int32_t Col,
                                                   std::int32_t First, std::int32_t Last,
                                                   std::int32_t DestIx) {
  const auto rows = static_cast<std::int32_t>(std::min<std::size_t>(Arr2D.size(), uc_MaxInt));
  if (Col < 0) return kCopySourceOutOfRange;
  // Every row of the requested span must hold the column; check before copying.
  std::int32_t lo = First, hi = Last;
  if (lo == 0 && hi == 0) {
    lo = 0;
    hi = rows - 1;
  }
  if (lo > hi) std::swap(lo, hi);
  if (lo >= 0 && hi < rows) {
    for (std::int32_t r = lo; r <= hi; ++r)
      if (static_cast<std::size_t>(Col) >= Arr2D[static_cast<std::size_t>(r)].size())
        return kCopySourceOutOfRange;
  }
  return CopyRange(rows, 0, First, Last, DestIx, [&Arr2D, Col](std::int32_t k) {
    return Arr2D[static_cast<std::size_t>(k)][static_cast<std::size_t>(Col)];
  });
}

template <class T>
void TVectorCore<T>::CopyToArray(TArray& Arr, std::int32_t First, std::int32_t Last,
                                 std::int32_t DestIx) const {
  std::size_t begin = 0, count = 0;
  Span(First, Last, begin, count);
  const auto dest = static_cast<std::size_t>(std::max(DestIx, 0));
  if (Arr.size() < dest + count) Arr.resize(dest + count);
  std::copy_n(elems_.begin() + static_cast<std::ptrdiff_t>(begin), count,
              Arr.begin() + static_cast<std::ptrdiff_t>(dest));
}

template <class T>
void TVectorCore<T>::CopyToArray(T2DArray& Arr2D, std::int32_t First, std::int32_t Last,
                                 std::int32_t Line, std::int32_t DestIx, bool AsColumn) const {
  std::size_t begin = 0, count = 0;
  Span(First, Last, begin, count);
  const auto line = static_cast<std::size_t>(std::max(Line, 0));
  const auto dest = static_cast<std::size_t>(std::max(DestIx, 0));
  if (!AsColumn) {
    if (Arr2D.size() <= line) Arr2D.resize(line + 1);
    CopyToArray(Arr2D[line], First, Last, static_cast<std::int32_t>(dest));
    return;
  }
  if (Arr2D.size() < dest + count) Arr2D.resize(dest + count);
  for (std::size_t k = 0; k < count; ++k) {
    TArray& row = Arr2D[dest + k];
    if (row.size() <= line) row.resize(line + 1);
    row[line] = elems_[begin + k];
  }
}

// ---- filling ----------------------------------------------------------------------------------

template <class T>
void TVectorCore<T>::Fill(T x) {
  std::fill(elems_.begin(), elems_.end(), x);
  cleared_ = false;
  Changed();
}

template <class T>
void TVectorCore<T>::FillSerial(T First, T Step) {
  T x = First;
  for (T& a : elems_) {
    a = x;
    x = AddT(x, Step);
  }
  cleared_ = false;
  Changed();
}

template <class T>
void TVectorCore<T>::Clear() {
  std::fill(elems_.begin(), elems_.end(), T{});
  cleared_ = true;
  Changed();
}

template <class T>
bool TVectorCore<T>::IsDichotomous(T& V1, T& V2) const {
  V1 = V2 = T{};
  if (NrOfElem() < 2) return false;
  V1 = elems_[0];
  V2 = V1;
  std::size_t i = 1;
  while (i < elems_.size() && elems_[i] == V1)
    ++i;
  if (i < elems_.size()) V2 = elems_[i];
  for (; i < elems_.size(); ++i)
    if (elems_[i] != V1 && elems_[i] != V2) return false;
  return true;
}

template <class T>
std::string TVectorCore<T>::CRCofData() const {
  detail::TDataCRC crc;
  for (const T x : elems_)
    crc.Add(x);
  return crc.Text();
}

}  // namespace quv

// The statistics and the file forms are kept in files of their own; they are included here so
// that the core is instantiated exactly once for each element type.
#include "quv/vector/vector_io.ipp"
#include "quv/vector/vector_stats.ipp"

namespace quv {

template class TVectorCore<double>;
template class TVectorCore<std::int32_t>;

}  // namespace quv
