#include "quv/openarrays/distribution.h"

#include <algorithm>
#include <cmath>

#include "quv/openarrays/array_core.h"
#include "quv/openarrays/stats.h"

namespace quv {

namespace {

using detail::Range;

// Orders NaN after every number, so that selection stays well defined on any input.
bool NumberLess(double a, double b) {
  return a < b || (!std::isnan(a) && std::isnan(b));
}

// Linear interpolation between the order statistics around position prob * (n - 1). Only
// the two needed order statistics are selected, in linear time; work is reordered.
double PercentileOfWork(std::vector<double>& work, double prob) {
  if (work.empty()) return 0.0;
  if (!(prob > 0.0)) prob = 0.0;  // also NaN
  if (prob > 1.0) prob = 1.0;
  const std::size_t n = work.size();
  const double pos = static_cast<double>(n - 1) * prob;
  const auto i = static_cast<std::size_t>(pos);
  const double f = pos - static_cast<double>(i);
  const auto nth = work.begin() + static_cast<std::ptrdiff_t>(i);
  std::nth_element(work.begin(), nth, work.end(), NumberLess);
  if (i + 1 >= n || f == 0.0) return *nth;
  const double next = *std::min_element(nth + 1, work.end(), NumberLess);
  return *nth + (next - *nth) * f;
}

template <class A, int R>
double PercentileImpl(double prob, const A& data, const Range<R>& r) {
  if (detail::CheckRange(data, r) != kOAOk) return 0.0;
  std::vector<double> work;
  work.reserve(detail::RangeCount(r));
  detail::ForEachRowInRange(
      data, r, [&work](const auto* p, std::size_t n) { work.insert(work.end(), p, p + n); });
  return PercentileOfWork(work, prob);
}

template <class A>
double PercentileAll(double prob, const A& data) {
  std::vector<double> work(data.begin(), data.end());
  return PercentileOfWork(work, prob);
}

// Bins of a frequency distribution; validated once, then fed value by value.
class FrequBins {
 public:
  // Returns false when the bin parameters are invalid.
  bool Setup(double low, double high, double width) {
    if (!(width > 0.0) || !std::isfinite(width) || !std::isfinite(low) || !std::isfinite(high) ||
        low > high) {
      return false;
    }
    const double bins = std::round((high - low) / width) + 1.0;
    if (!(bins <= kMaxFrequBins)) return false;
    low_ = low;
    width_ = width;
    bins_ = static_cast<std::int32_t>(bins);
    return true;
  }
  std::int32_t Count() const { return bins_; }
  void Add(double x, TIntArray& hist, std::int32_t& under, std::int32_t& over) const {
    if (x < low_) {
      ++under;
      return;
    }
    const double k = std::floor((x - low_) / width_);
    if (!(k < bins_)) {
      ++over;  // past the last bin, or NaN
      return;
    }
    ++hist[static_cast<std::size_t>(k)];
  }

 private:
  double low_ = 0.0;
  double width_ = 1.0;
  std::int32_t bins_ = 0;
};

template <class A, int R>
std::int32_t FrequDistImpl(const A& data, const Range<R>& r, double low, double high, double width,
                           TIntArray& hist, std::int32_t& under, std::int32_t& over) {
  hist.clear();
  under = 0;
  over = 0;
  const std::int32_t code = detail::CheckRange(data, r);
  if (code != kOAOk) return code;
  FrequBins bins;
  if (!bins.Setup(low, high, width)) return kOABadBounds;
  hist.assign(static_cast<std::size_t>(bins.Count()), 0);
  detail::ForEachRowInRange(data, r, [&](const double* p, std::size_t n) {
    for (std::size_t i = 0; i < n; ++i)
      bins.Add(p[i], hist, under, over);
  });
  return kOAOk;
}

std::int32_t FrequDistMaskedImpl(const TDouble2DArray& data, const TBool2DArray& mask, double low,
                                 double high, double width, TIntArray& hist, std::int32_t& under,
                                 std::int32_t& over) {
  hist.clear();
  under = 0;
  over = 0;
  if (detail::IsEmptyArray(data)) return kOAEmpty;
  FrequBins bins;
  if (!detail::MaskCovers(data, mask) || !bins.Setup(low, high, width)) return kOABadBounds;
  hist.assign(static_cast<std::size_t>(bins.Count()), 0);
  for (std::size_t i = 0; i < data.size(); ++i) {
    for (std::size_t j = 0; j < data[i].size(); ++j) {
      if (mask[i][j] != 0) bins.Add(data[i][j], hist, under, over);
    }
  }
  return kOAOk;
}

template <class A, int R, class T>
std::int32_t CountValuesImpl(const A& data, const Range<R>& r, T v1, T v2) {
  const std::int32_t code = detail::CheckRange(data, r);
  if (code != kOAOk) return code;
  const T lo = std::min(v1, v2);
  const T hi = std::max(v1, v2);
  std::int32_t count = 0;
  detail::ForEachRowInRange(data, r, [&](const T* p, std::size_t n) {
    for (std::size_t i = 0; i < n; ++i)
      count += (p[i] >= lo && p[i] <= hi) ? 1 : 0;
  });
  return count;
}

template <class A>
std::int32_t SumMaskedImpl(const A& data, const TBool2DArray& mask, double& sum) {
  sum = 0.0;
  if (detail::IsEmptyArray(data)) return kOAEmpty;
  if (!detail::MaskCovers(data, mask)) return kOABadBounds;
  Extended s = 0;
  for (std::size_t i = 0; i < data.size(); ++i) {
    for (std::size_t j = 0; j < data[i].size(); ++j) {
      if (mask[i][j] != 0) s += data[i][j];
    }
  }
  sum = static_cast<double>(s);
  return kOAOk;
}

// Collects the cells of the window around (ix1, ix2), cut at the borders.
template <class T>
bool CollectWindow(const std::vector<std::vector<T>>& data, std::int32_t ix1, std::int32_t ix2,
                   std::int32_t r1, std::int32_t r2, std::vector<double>& cells) {
  if (r1 < 0 || r2 < 0 || ix1 < 0 || ix2 < 0 || static_cast<std::size_t>(ix1) >= data.size() ||
      static_cast<std::size_t>(ix2) >= data[static_cast<std::size_t>(ix1)].size()) {
    return false;
  }
  const std::int64_t first = std::max<std::int64_t>(0, std::int64_t{ix1} - r1);
  const std::int64_t last =
      std::min<std::int64_t>(static_cast<std::int64_t>(data.size()) - 1, std::int64_t{ix1} + r1);
  for (std::int64_t i = first; i <= last; ++i) {
    const auto& row = data[static_cast<std::size_t>(i)];
    const std::int64_t j0 = std::max<std::int64_t>(0, std::int64_t{ix2} - r2);
    const std::int64_t j1 =
        std::min<std::int64_t>(static_cast<std::int64_t>(row.size()) - 1, std::int64_t{ix2} + r2);
    for (std::int64_t j = j0; j <= j1; ++j)
      cells.push_back(row[static_cast<std::size_t>(j)]);
  }
  return true;
}

template <class T>
double LocalMeanImpl(const std::vector<std::vector<T>>& data, std::int32_t ix1, std::int32_t ix2,
                     std::int32_t r1, std::int32_t r2) {
  std::vector<double> cells;
  if (!CollectWindow(data, ix1, ix2, r1, r2, cells)) return 0.0;
  return static_cast<double>(detail::SumPiece(cells.data(), cells.size()) /
                             static_cast<Extended>(cells.size()));
}

template <class T>
double LocalMedianImpl(const std::vector<std::vector<T>>& data, std::int32_t ix1, std::int32_t ix2,
                       std::int32_t r1, std::int32_t r2) {
  std::vector<double> cells;
  if (!CollectWindow(data, ix1, ix2, r1, r2, cells)) return 0.0;
  return PercentileOfWork(cells, 0.5);
}

template <class T>
bool IsMonotoneImpl(const std::vector<T>& data, bool strict) {
  bool up = true;
  bool down = true;
  for (std::size_t i = 1; i < data.size(); ++i) {
    const T a = data[i - 1];
    const T b = data[i];
    if (strict) {
      up = up && a < b;
      down = down && a > b;
    } else {
      up = up && a <= b;
      down = down && a >= b;
    }
  }
  return up || down;
}

template <class T>
bool IsDichotomousImpl(const std::vector<T>& data, T& v1, T& v2) {
  v1 = T{};
  v2 = T{};
  if (data.size() < 2) return false;
  v1 = data[0];
  v2 = v1;
  bool second_found = false;
  for (std::size_t i = 1; i < data.size(); ++i) {
    const T x = data[i];
    if (x == v1 || (second_found && x == v2)) continue;
    if (second_found) return false;
    v2 = x;
    second_found = true;
  }
  return true;
}

}  // namespace

double PercentileArray(double Prob, const TDoubleArray& Data) {
  return PercentileAll(Prob, Data);
}

double PercentileArray(double Prob, const TIntArray& Data) {
  return PercentileAll(Prob, Data);
}

double PercentileArray(double Prob, const TDoubleArray& Data, std::int32_t Lo1, std::int32_t Hi1) {
  return PercentileImpl(Prob, Data, Range<1>{{Lo1}, {Hi1}});
}

double PercentileArray(double Prob, const TDouble2DArray& Data, std::int32_t Lo1, std::int32_t Lo2,
                       std::int32_t Hi1, std::int32_t Hi2) {
  return PercentileImpl(Prob, Data, Range<2>{{Lo1, Lo2}, {Hi1, Hi2}});
}

std::int32_t FrequDistOfArray(const TDoubleArray& Data, std::int32_t Lo1, std::int32_t Hi1,
                              double LowBound, double HighBound, double BinWidth, TIntArray& Hist,
                              std::int32_t& Underflow, std::int32_t& Overflow) {
  return FrequDistImpl(Data, Range<1>{{Lo1}, {Hi1}}, LowBound, HighBound, BinWidth, Hist, Underflow,
                       Overflow);
}

std::int32_t FrequDistOfArray(const TDouble2DArray& Data, std::int32_t Lo1, std::int32_t Lo2,
                              std::int32_t Hi1, std::int32_t Hi2, double LowBound, double HighBound,
                              double BinWidth, TIntArray& Hist, std::int32_t& Underflow,
                              std::int32_t& Overflow) {
  return FrequDistImpl(Data, Range<2>{{Lo1, Lo2}, {Hi1, Hi2}}, LowBound, HighBound, BinWidth, Hist,
                       Underflow, Overflow);
}

std::int32_t FrequDistOfArray(const TDouble2DArray& Data, const TBool2DArray& Mask, double LowBound,
                              double HighBound, double BinWidth, TIntArray& Hist,
                              std::int32_t& Underflow, std::int32_t& Overflow) {
  return FrequDistMaskedImpl(Data, Mask, LowBound, HighBound, BinWidth, Hist, Underflow, Overflow);
}

std::int32_t CountValues(const TDoubleArray& Data, std::int32_t Lo1, std::int32_t Hi1,
                         double Value1, double Value2) {
  return CountValuesImpl(Data, Range<1>{{Lo1}, {Hi1}}, Value1, Value2);
}

std::int32_t CountValues(const TIntArray& Data, std::int32_t Lo1, std::int32_t Hi1,
                         std::int32_t Value1, std::int32_t Value2) {
  return CountValuesImpl(Data, Range<1>{{Lo1}, {Hi1}}, Value1, Value2);
}

std::int32_t CountValues(const TDouble2DArray& Data, std::int32_t Lo1, std::int32_t Lo2,
                         std::int32_t Hi1, std::int32_t Hi2, double Value1, double Value2) {
  return CountValuesImpl(Data, Range<2>{{Lo1, Lo2}, {Hi1, Hi2}}, Value1, Value2);
}

std::int32_t CountValues(const TInt2DArray& Data, std::int32_t Lo1, std::int32_t Lo2,
                         std::int32_t Hi1, std::int32_t Hi2, std::int32_t Value1,
                         std::int32_t Value2) {
  return CountValuesImpl(Data, Range<2>{{Lo1, Lo2}, {Hi1, Hi2}}, Value1, Value2);
}

std::int32_t CountValues(const TDouble3DArray& Data, std::int32_t Lo1, std::int32_t Lo2,
                         std::int32_t Lo3, std::int32_t Hi1, std::int32_t Hi2, std::int32_t Hi3,
                         double Value1, double Value2) {
  return CountValuesImpl(Data, Range<3>{{Lo1, Lo2, Lo3}, {Hi1, Hi2, Hi3}}, Value1, Value2);
}

std::int32_t CountValues(const TInt3DArray& Data, std::int32_t Lo1, std::int32_t Lo2,
                         std::int32_t Lo3, std::int32_t Hi1, std::int32_t Hi2, std::int32_t Hi3,
                         std::int32_t Value1, std::int32_t Value2) {
  return CountValuesImpl(Data, Range<3>{{Lo1, Lo2, Lo3}, {Hi1, Hi2, Hi3}}, Value1, Value2);
}

std::int32_t CountValues(const TDouble4DArray& Data, std::int32_t Lo1, std::int32_t Lo2,
                         std::int32_t Lo3, std::int32_t Lo4, std::int32_t Hi1, std::int32_t Hi2,
                         std::int32_t Hi3, std::int32_t Hi4, double Value1, double Value2) {
  return CountValuesImpl(Data, Range<4>{{Lo1, Lo2, Lo3, Lo4}, {Hi1, Hi2, Hi3, Hi4}}, Value1,
                         Value2);
}

std::int32_t CountValues(const TInt4DArray& Data, std::int32_t Lo1, std::int32_t Lo2,
                         std::int32_t Lo3, std::int32_t Lo4, std::int32_t Hi1, std::int32_t Hi2,
                         std::int32_t Hi3, std::int32_t Hi4, std::int32_t Value1,
                         std::int32_t Value2) {
  return CountValuesImpl(Data, Range<4>{{Lo1, Lo2, Lo3, Lo4}, {Hi1, Hi2, Hi3, Hi4}}, Value1,
                         Value2);
}

std::int32_t SumArrayMasked(const TDouble2DArray& Data, const TBool2DArray& Mask, double& Sum) {
  return SumMaskedImpl(Data, Mask, Sum);
}

std::int32_t SumArrayMasked(const TInt2DArray& Data, const TBool2DArray& Mask, double& Sum) {
  return SumMaskedImpl(Data, Mask, Sum);
}

double LocalMean(const TDouble2DArray& Data, std::int32_t Ix1, std::int32_t Ix2,
                 std::int32_t Radius1, std::int32_t Radius2) {
  return LocalMeanImpl(Data, Ix1, Ix2, Radius1, Radius2);
}

double LocalMean(const TInt2DArray& Data, std::int32_t Ix1, std::int32_t Ix2, std::int32_t Radius1,
                 std::int32_t Radius2) {
  return LocalMeanImpl(Data, Ix1, Ix2, Radius1, Radius2);
}

double LocalMedian(const TDouble2DArray& Data, std::int32_t Ix1, std::int32_t Ix2,
                   std::int32_t Radius1, std::int32_t Radius2) {
  return LocalMedianImpl(Data, Ix1, Ix2, Radius1, Radius2);
}

double LocalMedian(const TInt2DArray& Data, std::int32_t Ix1, std::int32_t Ix2,
                   std::int32_t Radius1, std::int32_t Radius2) {
  return LocalMedianImpl(Data, Ix1, Ix2, Radius1, Radius2);
}

bool IsMonotone(const TDoubleArray& Data) {
  return IsMonotoneImpl(Data, false);
}

bool IsMonotone(const TIntArray& Data) {
  return IsMonotoneImpl(Data, false);
}

bool IsStrictlyMonotone(const TDoubleArray& Data) {
  return IsMonotoneImpl(Data, true);
}

bool IsStrictlyMonotone(const TIntArray& Data) {
  return IsMonotoneImpl(Data, true);
}

bool IsDichotomous(const TDoubleArray& Data, double& V1, double& V2) {
  return IsDichotomousImpl(Data, V1, V2);
}

bool IsDichotomous(const TIntArray& Data, std::int32_t& V1, std::int32_t& V2) {
  return IsDichotomousImpl(Data, V1, V2);
}

double SumOfSquaredDiffs(const TDoubleArray& A, const TDoubleArray& B) {
  if (A.empty() || B.empty()) return -1.0;
  if (A.size() != B.size()) return -2.0;
  Extended sum = 0;
  for (std::size_t i = 0; i < A.size(); ++i) {
    const Extended d = static_cast<Extended>(A[i]) - B[i];
    sum += d * d;
  }
  return static_cast<double>(sum);
}

double SumOfSquaredDiffs(const TDoubleArray& A, const TDouble2DArray& B, std::int32_t Col) {
  if (A.empty() || detail::IsEmptyArray(B)) return -1.0;
  if (A.size() != B.size() || Col < 0) return -2.0;
  const auto col = static_cast<std::size_t>(Col);
  Extended sum = 0;
  for (std::size_t i = 0; i < A.size(); ++i) {
    if (col >= B[i].size()) return -2.0;
    const Extended d = static_cast<Extended>(A[i]) - B[i][col];
    sum += d * d;
  }
  return static_cast<double>(sum);
}

double PearsonCorrCoeffColsOfArray(const TDouble2DArray& Data, std::int32_t Col1,
                                   std::int32_t Col2) {
  if (Data.size() < 2 || Col1 < 0 || Col2 < 0) return 0.0;
  const auto c1 = static_cast<std::size_t>(Col1);
  const auto c2 = static_cast<std::size_t>(Col2);
  Extended sx = 0, sy = 0, sxx = 0, syy = 0, sxy = 0;
  for (const auto& row : Data) {
    if (c1 >= row.size() || c2 >= row.size()) return 0.0;
    const Extended x = row[c1];
    const Extended y = row[c2];
    sx += x;
    sy += y;
    sxx += x * x;
    syy += y * y;
    sxy += x * y;
  }
  const auto n = static_cast<Extended>(Data.size());
  if (!(sxx > 0 && syy > 0)) return 0.0;
  const Extended qx = sxx - sx * sx / n;
  const Extended qy = syy - sy * sy / n;
  if (qx == 0 || qy == 0) return 0.0;
  return static_cast<double>((sxy - sx * sy / n) / std::sqrt(std::fabs(qx * qy)));
}

std::int32_t CountTrueCellsOfArray(const TBoolArray& Data) {
  return static_cast<std::int32_t>(
      std::count_if(Data.begin(), Data.end(), [](std::uint8_t b) { return b != 0; }));
}

std::int32_t CountTrueCellsOfArray(const TBool2DArray& Data) {
  std::int32_t count = 0;
  for (const auto& row : Data)
    count += CountTrueCellsOfArray(row);
  return count;
}

std::int32_t CountTrueCellsOfArray(const TBool2DArray& Data, std::int32_t Lo1, std::int32_t Lo2,
                                   std::int32_t Hi1, std::int32_t Hi2) {
  const Range<2> r{{Lo1, Lo2}, {Hi1, Hi2}};
  const std::int32_t code = detail::CheckRange(Data, r);
  if (code != kOAOk) return code;
  std::int32_t count = 0;
  detail::ForEachRowInRange(Data, r, [&count](const std::uint8_t* p, std::size_t n) {
    count +=
        static_cast<std::int32_t>(std::count_if(p, p + n, [](std::uint8_t b) { return b != 0; }));
  });
  return count;
}

}  // namespace quv
