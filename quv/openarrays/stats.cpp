#include "quv/openarrays/stats.h"

#include <array>
#include <cmath>
#include <functional>
#include <type_traits>

#include "quv/openarrays/array_core.h"

namespace quv {

namespace {

using detail::Range;

template <class A, int R>
std::int32_t MeanImpl(const A& data, const Range<R>& r, double& mean) {
  mean = 0.0;
  const std::int32_t code = detail::CheckRange(data, r);
  if (code != kOAOk) return code;
  Extended sum = 0;
  detail::ForEachRowInRange(
      data, r, [&sum](const auto* p, std::size_t n) { sum += detail::SumPiece(p, n); });
  mean = static_cast<double>(sum / static_cast<Extended>(detail::RangeCount(r)));
  return kOAOk;
}

// Mean and sample variance of a validated sub-range: two passes, so that a large mean does
// not swallow the spread.
template <class A, int R>
void MeanVarOfRange(const A& data, const Range<R>& r, Extended& mean, Extended& variance) {
  const auto n = static_cast<Extended>(detail::RangeCount(r));
  Extended sum = 0;
  detail::ForEachRowInRange(
      data, r, [&sum](const auto* p, std::size_t k) { sum += detail::SumPiece(p, k); });
  mean = sum / n;
  Extended squares = 0;
  detail::ForEachRowInRange(data, r, [&squares, m = mean](const auto* p, std::size_t k) {
    for (std::size_t i = 0; i < k; ++i) {
      const Extended d = static_cast<Extended>(p[i]) - m;
      squares += d * d;
    }
  });
  variance = n > 1 ? squares / (n - 1) : 0;
}

template <class A, int R>
std::int32_t StdDevImpl(const A& data, const Range<R>& r, double& std_dev) {
  std_dev = 0.0;
  const std::int32_t code = detail::CheckRange(data, r);
  if (code != kOAOk) return code;
  Extended mean = 0;
  Extended variance = 0;
  MeanVarOfRange(data, r, mean, variance);
  std_dev = static_cast<double>(std::sqrt(variance));
  return kOAOk;
}

template <class A, int R>
std::int32_t MeanVarImpl(const A& data, const Range<R>& r, double& mean, double& variance) {
  mean = 0.0;
  variance = 0.0;
  const std::int32_t code = detail::CheckRange(data, r);
  if (code != kOAOk) return code;
  Extended m = 0;
  Extended v = 0;
  MeanVarOfRange(data, r, m, v);
  mean = static_cast<double>(m);
  variance = static_cast<double>(v);
  return kOAOk;
}

template <class T>
std::int32_t MeanAbsDevImpl(const std::vector<T>& data, std::int32_t num, double& mean_dev) {
  mean_dev = 0.0;
  if (data.empty()) return kOAEmpty;
  if (num < 1 || static_cast<std::size_t>(num) > data.size()) return kOABadBounds;
  const Range<1> r{{0}, {num - 1}};
  Extended mean = 0;
  Extended variance = 0;
  MeanVarOfRange(data, r, mean, variance);
  Extended dev = 0;
  for (std::int32_t i = 0; i < num; ++i) {
    dev += std::fabs(static_cast<Extended>(data[static_cast<std::size_t>(i)]) - mean);
  }
  mean_dev = static_cast<double>(dev / num);
  return kOAOk;
}

// The extreme of the whole array: the first element is the candidate and a later one replaces
// it only when strictly better, so the first of equal extremes is kept.
template <class A, class Better>
detail::ElemOf<A> ExtremeOf(const A& data, Better better, detail::ElemOf<A> sentinel) {
  using T = detail::ElemOf<A>;
  bool found = false;
  T best = sentinel;
  detail::ForEachRow(data, [&](const T* p, std::size_t n) {
    for (std::size_t i = 0; i < n; ++i) {
      if (!found) {
        best = p[i];
        found = true;
      } else if (better(p[i], best)) {
        best = p[i];
      }
    }
  });
  return best;
}

// Walks a validated 1D or 2D sub-range with the position of each element.
template <class A, int R, class F>
void ForEachIndexed(const A& data, const Range<R>& r, F&& f) {
  if constexpr (R == 1) {
    for (std::int32_t i = r.lo[0]; i <= r.hi[0]; ++i) {
      f(data[static_cast<std::size_t>(i)], std::array<std::int32_t, 1>{i});
    }
  } else {
    static_assert(R == 2);
    for (std::int32_t i = r.lo[0]; i <= r.hi[0]; ++i) {
      const auto& row = data[static_cast<std::size_t>(i)];
      for (std::int32_t j = r.lo[1]; j <= r.hi[1]; ++j) {
        f(row[static_cast<std::size_t>(j)], std::array<std::int32_t, 2>{i, j});
      }
    }
  }
}

// Extreme with its position over a range; index left alone when there is no element.
template <class A, int R, class Better>
detail::ElemOf<A> ExtremeWithIndex(const A& data, const Range<R>& r, Better better,
                                   detail::ElemOf<A> sentinel,
                                   std::type_identity_t<std::array<std::int32_t*, R>> index) {
  bool found = false;
  detail::ElemOf<A> best = sentinel;
  std::array<std::int32_t, R> at{};
  ForEachIndexed(data, r, [&](auto x, const std::array<std::int32_t, R>& pos) {
    if (!found || better(x, best)) {
      best = x;
      at = pos;
      found = true;
    }
  });
  if (found) {
    for (int d = 0; d < R; ++d)
      *index[d] = at[d];
  }
  return best;
}

// Whole-array range of a 1D array, or of a 2D array when every row has the same length as
// the first; used by the indexed extremes, which scan the rows as they are (see below).
template <class T, class Better>
T ExtremeIndexed1D(const std::vector<T>& data, Better better, T sentinel, std::int32_t& index) {
  if (data.empty()) return sentinel;
  const Range<1> r{{0}, {static_cast<std::int32_t>(data.size()) - 1}};
  return ExtremeWithIndex(data, r, better, sentinel, {&index});
}

// A ragged 2D array is scanned row by row over each row's own length.
template <class T, class Better>
T ExtremeIndexed2D(const std::vector<std::vector<T>>& data, Better better, T sentinel,
                   std::int32_t& index1, std::int32_t& index2) {
  bool found = false;
  T best = sentinel;
  for (std::size_t i = 0; i < data.size(); ++i) {
    for (std::size_t j = 0; j < data[i].size(); ++j) {
      if (!found || better(data[i][j], best)) {
        best = data[i][j];
        index1 = static_cast<std::int32_t>(i);
        index2 = static_cast<std::int32_t>(j);
        found = true;
      }
    }
  }
  return best;
}

template <class A, class T>
std::int32_t MinMaxImpl(const A& data, T& minimum, T& maximum) {
  minimum = T{};
  maximum = T{};
  if (detail::ElemCount(data) == 0) return kOAEmpty;
  minimum = ExtremeOf(data, std::less<T>{}, T{});
  maximum = ExtremeOf(data, std::greater<T>{}, T{});
  return kOAOk;
}

template <class A, int R, class T>
std::int32_t MinMaxRangeImpl(const A& data, const Range<R>& r, T& minimum, T& maximum,
                             std::type_identity_t<std::array<std::int32_t*, R>> min_ix,
                             std::type_identity_t<std::array<std::int32_t*, R>> max_ix) {
  minimum = T{};
  maximum = T{};
  for (int d = 0; d < R; ++d)
    *min_ix[d] = *max_ix[d] = 0;
  const std::int32_t code = detail::CheckRange(data, r);
  if (code != kOAOk) return code;
  minimum = ExtremeWithIndex(data, r, std::less<T>{}, T{}, min_ix);
  maximum = ExtremeWithIndex(data, r, std::greater<T>{}, T{}, max_ix);
  return kOAOk;
}

constexpr std::int32_t kIntMaxEmpty = static_cast<std::int32_t>(kMaxArrayEmpty);
constexpr std::int32_t kIntMinEmpty = static_cast<std::int32_t>(kMinArrayEmpty);

}  // namespace

std::int32_t MeanArray(const TDoubleArray& Data, std::int32_t Lo1, std::int32_t Hi1, double& Mean) {
  return MeanImpl(Data, Range<1>{{Lo1}, {Hi1}}, Mean);
}

std::int32_t MeanArray(const TIntArray& Data, std::int32_t Lo1, std::int32_t Hi1, double& Mean) {
  return MeanImpl(Data, Range<1>{{Lo1}, {Hi1}}, Mean);
}

std::int32_t MeanArray(const TDouble2DArray& Data, std::int32_t Lo1, std::int32_t Lo2,
                       std::int32_t Hi1, std::int32_t Hi2, double& Mean) {
  return MeanImpl(Data, Range<2>{{Lo1, Lo2}, {Hi1, Hi2}}, Mean);
}

std::int32_t MeanArray(const TInt2DArray& Data, std::int32_t Lo1, std::int32_t Lo2,
                       std::int32_t Hi1, std::int32_t Hi2, double& Mean) {
  return MeanImpl(Data, Range<2>{{Lo1, Lo2}, {Hi1, Hi2}}, Mean);
}

std::int32_t MeanArray(const TDouble3DArray& Data, std::int32_t Lo1, std::int32_t Lo2,
                       std::int32_t Lo3, std::int32_t Hi1, std::int32_t Hi2, std::int32_t Hi3,
                       double& Mean) {
  return MeanImpl(Data, Range<3>{{Lo1, Lo2, Lo3}, {Hi1, Hi2, Hi3}}, Mean);
}

std::int32_t MeanArray(const TInt3DArray& Data, std::int32_t Lo1, std::int32_t Lo2,
                       std::int32_t Lo3, std::int32_t Hi1, std::int32_t Hi2, std::int32_t Hi3,
                       double& Mean) {
  return MeanImpl(Data, Range<3>{{Lo1, Lo2, Lo3}, {Hi1, Hi2, Hi3}}, Mean);
}

std::int32_t MeanArray(const TDouble4DArray& Data, std::int32_t Lo1, std::int32_t Lo2,
                       std::int32_t Lo3, std::int32_t Lo4, std::int32_t Hi1, std::int32_t Hi2,
                       std::int32_t Hi3, std::int32_t Hi4, double& Mean) {
  return MeanImpl(Data, Range<4>{{Lo1, Lo2, Lo3, Lo4}, {Hi1, Hi2, Hi3, Hi4}}, Mean);
}

std::int32_t MeanArray(const TInt4DArray& Data, std::int32_t Lo1, std::int32_t Lo2,
                       std::int32_t Lo3, std::int32_t Lo4, std::int32_t Hi1, std::int32_t Hi2,
                       std::int32_t Hi3, std::int32_t Hi4, double& Mean) {
  return MeanImpl(Data, Range<4>{{Lo1, Lo2, Lo3, Lo4}, {Hi1, Hi2, Hi3, Hi4}}, Mean);
}

std::int32_t StdDevArray(const TDoubleArray& Data, std::int32_t Lo1, std::int32_t Hi1,
                         double& StdDev) {
  return StdDevImpl(Data, Range<1>{{Lo1}, {Hi1}}, StdDev);
}

std::int32_t StdDevArray(const TIntArray& Data, std::int32_t Lo1, std::int32_t Hi1,
                         double& StdDev) {
  return StdDevImpl(Data, Range<1>{{Lo1}, {Hi1}}, StdDev);
}

std::int32_t StdDevArray(const TDouble2DArray& Data, std::int32_t Lo1, std::int32_t Lo2,
                         std::int32_t Hi1, std::int32_t Hi2, double& StdDev) {
  return StdDevImpl(Data, Range<2>{{Lo1, Lo2}, {Hi1, Hi2}}, StdDev);
}

std::int32_t StdDevArray(const TInt2DArray& Data, std::int32_t Lo1, std::int32_t Lo2,
                         std::int32_t Hi1, std::int32_t Hi2, double& StdDev) {
  return StdDevImpl(Data, Range<2>{{Lo1, Lo2}, {Hi1, Hi2}}, StdDev);
}

std::int32_t StdDevArray(const TDouble3DArray& Data, std::int32_t Lo1, std::int32_t Lo2,
                         std::int32_t Lo3, std::int32_t Hi1, std::int32_t Hi2, std::int32_t Hi3,
                         double& StdDev) {
  return StdDevImpl(Data, Range<3>{{Lo1, Lo2, Lo3}, {Hi1, Hi2, Hi3}}, StdDev);
}

std::int32_t StdDevArray(const TInt3DArray& Data, std::int32_t Lo1, std::int32_t Lo2,
                         std::int32_t Lo3, std::int32_t Hi1, std::int32_t Hi2, std::int32_t Hi3,
                         double& StdDev) {
  return StdDevImpl(Data, Range<3>{{Lo1, Lo2, Lo3}, {Hi1, Hi2, Hi3}}, StdDev);
}

std::int32_t StdDevArray(const TDouble4DArray& Data, std::int32_t Lo1, std::int32_t Lo2,
                         std::int32_t Lo3, std::int32_t Lo4, std::int32_t Hi1, std::int32_t Hi2,
                         std::int32_t Hi3, std::int32_t Hi4, double& StdDev) {
  return StdDevImpl(Data, Range<4>{{Lo1, Lo2, Lo3, Lo4}, {Hi1, Hi2, Hi3, Hi4}}, StdDev);
}

std::int32_t StdDevArray(const TInt4DArray& Data, std::int32_t Lo1, std::int32_t Lo2,
                         std::int32_t Lo3, std::int32_t Lo4, std::int32_t Hi1, std::int32_t Hi2,
                         std::int32_t Hi3, std::int32_t Hi4, double& StdDev) {
  return StdDevImpl(Data, Range<4>{{Lo1, Lo2, Lo3, Lo4}, {Hi1, Hi2, Hi3, Hi4}}, StdDev);
}

std::int32_t MeanVarArray(const TDoubleArray& Data, std::int32_t Lo1, std::int32_t Hi1,
                          double& Mean, double& Variance) {
  return MeanVarImpl(Data, Range<1>{{Lo1}, {Hi1}}, Mean, Variance);
}

std::int32_t MeanVarArray(const TIntArray& Data, std::int32_t Lo1, std::int32_t Hi1, double& Mean,
                          double& Variance) {
  return MeanVarImpl(Data, Range<1>{{Lo1}, {Hi1}}, Mean, Variance);
}

std::int32_t MeanVarArray(const TDouble2DArray& Data, std::int32_t Lo1, std::int32_t Lo2,
                          std::int32_t Hi1, std::int32_t Hi2, double& Mean, double& Variance) {
  return MeanVarImpl(Data, Range<2>{{Lo1, Lo2}, {Hi1, Hi2}}, Mean, Variance);
}

std::int32_t MeanVarArray(const TInt2DArray& Data, std::int32_t Lo1, std::int32_t Lo2,
                          std::int32_t Hi1, std::int32_t Hi2, double& Mean, double& Variance) {
  return MeanVarImpl(Data, Range<2>{{Lo1, Lo2}, {Hi1, Hi2}}, Mean, Variance);
}

std::int32_t MeanAbsDev(const TDoubleArray& Data, std::int32_t NumData, double& MeanDev) {
  return MeanAbsDevImpl(Data, NumData, MeanDev);
}

std::int32_t MeanAbsDev(const TIntArray& Data, std::int32_t NumData, double& MeanDev) {
  return MeanAbsDevImpl(Data, NumData, MeanDev);
}

double MaxArray(const TDoubleArray& Data) {
  return ExtremeOf(Data, std::greater<double>{}, kMaxArrayEmpty);
}

std::int32_t MaxArray(const TIntArray& Data) {
  return ExtremeOf(Data, std::greater<std::int32_t>{}, kIntMaxEmpty);
}

double MaxArray(const TDouble2DArray& Data) {
  return ExtremeOf(Data, std::greater<double>{}, kMaxArrayEmpty);
}

std::int32_t MaxArray(const TInt2DArray& Data) {
  return ExtremeOf(Data, std::greater<std::int32_t>{}, kIntMaxEmpty);
}

double MaxArray(const TDouble3DArray& Data) {
  return ExtremeOf(Data, std::greater<double>{}, kMaxArrayEmpty);
}

std::int32_t MaxArray(const TInt3DArray& Data) {
  return ExtremeOf(Data, std::greater<std::int32_t>{}, kIntMaxEmpty);
}

double MaxArray(const TDouble4DArray& Data) {
  return ExtremeOf(Data, std::greater<double>{}, kMaxArrayEmpty);
}

std::int32_t MaxArray(const TInt4DArray& Data) {
  return ExtremeOf(Data, std::greater<std::int32_t>{}, kIntMaxEmpty);
}

double MaxArray(const TDoubleArray& Data, std::int32_t& Index) {
  return ExtremeIndexed1D(Data, std::greater<double>{}, double{kMaxArrayEmpty}, Index);
}

double MaxArray(const TDouble2DArray& Data, std::int32_t& Index1, std::int32_t& Index2) {
  return ExtremeIndexed2D(Data, std::greater<double>{}, double{kMaxArrayEmpty}, Index1, Index2);
}

std::int32_t MaxArray(const TIntArray& Data, std::int32_t& Index) {
  return ExtremeIndexed1D(Data, std::greater<std::int32_t>{}, std::int32_t{kIntMaxEmpty}, Index);
}

std::int32_t MaxArray(const TInt2DArray& Data, std::int32_t& Index1, std::int32_t& Index2) {
  return ExtremeIndexed2D(Data, std::greater<std::int32_t>{}, std::int32_t{kIntMaxEmpty}, Index1,
                          Index2);
}

double MinArray(const TDoubleArray& Data) {
  return ExtremeOf(Data, std::less<double>{}, kMinArrayEmpty);
}

std::int32_t MinArray(const TIntArray& Data) {
  return ExtremeOf(Data, std::less<std::int32_t>{}, kIntMinEmpty);
}

double MinArray(const TDouble2DArray& Data) {
  return ExtremeOf(Data, std::less<double>{}, kMinArrayEmpty);
}

std::int32_t MinArray(const TInt2DArray& Data) {
  return ExtremeOf(Data, std::less<std::int32_t>{}, kIntMinEmpty);
}

double MinArray(const TDouble3DArray& Data) {
  return ExtremeOf(Data, std::less<double>{}, kMinArrayEmpty);
}

std::int32_t MinArray(const TInt3DArray& Data) {
  return ExtremeOf(Data, std::less<std::int32_t>{}, kIntMinEmpty);
}

double MinArray(const TDouble4DArray& Data) {
  return ExtremeOf(Data, std::less<double>{}, kMinArrayEmpty);
}

std::int32_t MinArray(const TInt4DArray& Data) {
  return ExtremeOf(Data, std::less<std::int32_t>{}, kIntMinEmpty);
}

double MinArray(const TDoubleArray& Data, std::int32_t& Index) {
  return ExtremeIndexed1D(Data, std::less<double>{}, double{kMinArrayEmpty}, Index);
}

double MinArray(const TDouble2DArray& Data, std::int32_t& Index1, std::int32_t& Index2) {
  return ExtremeIndexed2D(Data, std::less<double>{}, double{kMinArrayEmpty}, Index1, Index2);
}

std::int32_t MinArray(const TIntArray& Data, std::int32_t& Index) {
  return ExtremeIndexed1D(Data, std::less<std::int32_t>{}, std::int32_t{kIntMinEmpty}, Index);
}

std::int32_t MinArray(const TInt2DArray& Data, std::int32_t& Index1, std::int32_t& Index2) {
  return ExtremeIndexed2D(Data, std::less<std::int32_t>{}, std::int32_t{kIntMinEmpty}, Index1,
                          Index2);
}

std::int32_t MinMaxArray(const TSingleArray& Data, float& Minimum, float& Maximum) {
  return MinMaxImpl(Data, Minimum, Maximum);
}

std::int32_t MinMaxArray(const TDoubleArray& Data, double& Minimum, double& Maximum) {
  return MinMaxImpl(Data, Minimum, Maximum);
}

std::int32_t MinMaxArray(const TIntArray& Data, std::int32_t& Minimum, std::int32_t& Maximum) {
  return MinMaxImpl(Data, Minimum, Maximum);
}

std::int32_t MinMaxArray(const TDouble2DArray& Data, double& Minimum, double& Maximum) {
  return MinMaxImpl(Data, Minimum, Maximum);
}

std::int32_t MinMaxArray(const TInt2DArray& Data, std::int32_t& Minimum, std::int32_t& Maximum) {
  return MinMaxImpl(Data, Minimum, Maximum);
}

std::int32_t MinMaxArray(const TDouble3DArray& Data, double& Minimum, double& Maximum) {
  return MinMaxImpl(Data, Minimum, Maximum);
}

std::int32_t MinMaxArray(const TInt3DArray& Data, std::int32_t& Minimum, std::int32_t& Maximum) {
  return MinMaxImpl(Data, Minimum, Maximum);
}

std::int32_t MinMaxArray(const TDouble4DArray& Data, double& Minimum, double& Maximum) {
  return MinMaxImpl(Data, Minimum, Maximum);
}

std::int32_t MinMaxArray(const TInt4DArray& Data, std::int32_t& Minimum, std::int32_t& Maximum) {
  return MinMaxImpl(Data, Minimum, Maximum);
}

std::int32_t MinMaxArray(const TSingleArray& Data, std::int32_t Lo1, std::int32_t Hi1,
                         float& Minimum, float& Maximum, std::int32_t& MinIx, std::int32_t& MaxIx) {
  return MinMaxRangeImpl(Data, Range<1>{{Lo1}, {Hi1}}, Minimum, Maximum, {&MinIx}, {&MaxIx});
}

std::int32_t MinMaxArray(const TDoubleArray& Data, std::int32_t Lo1, std::int32_t Hi1,
                         double& Minimum, double& Maximum, std::int32_t& MinIx,
                         std::int32_t& MaxIx) {
  return MinMaxRangeImpl(Data, Range<1>{{Lo1}, {Hi1}}, Minimum, Maximum, {&MinIx}, {&MaxIx});
}

std::int32_t MinMaxArray(const TIntArray& Data, std::int32_t Lo1, std::int32_t Hi1,
                         std::int32_t& Minimum, std::int32_t& Maximum, std::int32_t& MinIx,
                         std::int32_t& MaxIx) {
  return MinMaxRangeImpl(Data, Range<1>{{Lo1}, {Hi1}}, Minimum, Maximum, {&MinIx}, {&MaxIx});
}

std::int32_t MinMaxArray(const TDouble2DArray& Data, std::int32_t Lo1, std::int32_t Lo2,
                         std::int32_t Hi1, std::int32_t Hi2, double& Minimum, double& Maximum,
                         std::int32_t& MinIx1, std::int32_t& MinIx2, std::int32_t& MaxIx1,
                         std::int32_t& MaxIx2) {
  return MinMaxRangeImpl(Data, Range<2>{{Lo1, Lo2}, {Hi1, Hi2}}, Minimum, Maximum,
                         {&MinIx1, &MinIx2}, {&MaxIx1, &MaxIx2});
}

std::int32_t MinMaxArray(const TInt2DArray& Data, std::int32_t Lo1, std::int32_t Lo2,
                         std::int32_t Hi1, std::int32_t Hi2, std::int32_t& Minimum,
                         std::int32_t& Maximum, std::int32_t& MinIx1, std::int32_t& MinIx2,
                         std::int32_t& MaxIx1, std::int32_t& MaxIx2) {
  return MinMaxRangeImpl(Data, Range<2>{{Lo1, Lo2}, {Hi1, Hi2}}, Minimum, Maximum,
                         {&MinIx1, &MinIx2}, {&MaxIx1, &MaxIx2});
}

}  // namespace quv
