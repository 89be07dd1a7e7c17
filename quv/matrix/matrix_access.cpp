// Copying between matrices and arrays, and the random fills.
#include <algorithm>
#include <cmath>
#include <limits>

#include "quv/matrix/tmatrix.h"

namespace quv {
namespace {

void OrderedClamp(std::int32_t& lo, std::int32_t& hi, std::int32_t size) {
  lo = std::clamp(lo, std::int32_t{0}, size - 1);
  hi = std::clamp(hi, std::int32_t{0}, size - 1);
  if (lo > hi) std::swap(lo, hi);
}

std::int32_t RoundToInt32(double x) {
  if (std::isnan(x)) return 0;
  const double r = std::round(x);
  if (r >= static_cast<double>(uc_MaxInt)) return uc_MaxInt;
  if (r <= static_cast<double>(uc_MinInt)) return uc_MinInt;
  return static_cast<std::int32_t>(r);
}

// Writes count values get(k) to arr[dest + k], after zeroing arr; only the part that falls
// inside arr is written, and nothing at all unless some of it does.
template <class Get>
void CopyLineToArray(TDoubleArray& arr, std::int32_t count, std::int32_t dest, Get&& get) {
  const auto len = static_cast<std::int64_t>(arr.size());
  if (dest >= len || static_cast<std::int64_t>(dest) + count <= 0) return;
  std::fill(arr.begin(), arr.end(), 0.0);
  for (std::int32_t k = 0; k < count; ++k) {
    const std::int64_t ix = static_cast<std::int64_t>(dest) + k;
    if (ix >= len) break;
    if (ix >= 0) arr[static_cast<std::size_t>(ix)] = get(k);
  }
}

template <class Arr, class Convert>
void CopyRangeToArray(const TMatrix& m, Arr& arr, std::int32_t lowCol, std::int32_t lowRow,
                      std::int32_t highCol, std::int32_t highRow, std::int32_t destCol,
                      std::int32_t destRow, Convert&& convert) {
  m.MakeValidColRange(lowCol, highCol);
  m.MakeValidRowRange(lowRow, highRow);
  for (std::int32_t c = lowCol; c <= highCol; ++c) {
    const std::int64_t i = static_cast<std::int64_t>(destCol) + (c - lowCol);
    if (i < 0 || i >= static_cast<std::int64_t>(arr.size())) continue;
    auto& target = arr[static_cast<std::size_t>(i)];
    const TDoubleArray& col = m.Columns()[static_cast<std::size_t>(c - 1)];
    for (std::int32_t r = lowRow; r <= highRow; ++r) {
      const std::int64_t j = static_cast<std::int64_t>(destRow) + (r - lowRow);
      if (j < 0 || j >= static_cast<std::int64_t>(target.size())) continue;
      target[static_cast<std::size_t>(j)] = convert(col[static_cast<std::size_t>(r - 1)]);
    }
  }
}

}  // namespace

void TMatrix::Assign(const TMatrix& source) {
  if (&source == this) return;
  AssignCore(source);
  OnCalcDistance = source.OnCalcDistance;
}

void TMatrix::Clone(const TMatrix* source) {
  if (source == nullptr || source == this) return;
  Resize(source->NrOfColumns(), source->NrOfRows());
  for (std::int32_t c = 1; c <= ncols_; ++c) {
    for (std::int32_t r = 1; r <= nrows_; ++r)
      SetVal(c, r, source->At(c, r));
  }
  Changed();
  Resized();
}

void TMatrix::CopyColTo1DArray(TDoubleArray& arr, std::int32_t col, std::int32_t first,
                               std::int32_t last, std::int32_t dest) const {
  MakeValidRowRange(first, last);
  col = std::clamp(col, std::int32_t{1}, ncols_);
  CopyLineToArray(arr, last - first + 1, dest, [&](std::int32_t k) { return At(col, first + k); });
}

void TMatrix::CopyRowTo1DArray(TDoubleArray& arr, std::int32_t row, std::int32_t first,
                               std::int32_t last, std::int32_t dest) const {
  MakeValidColRange(first, last);
  row = std::clamp(row, std::int32_t{1}, nrows_);
  CopyLineToArray(arr, last - first + 1, dest, [&](std::int32_t k) { return At(first + k, row); });
}

void TMatrix::CopyToArray(TDouble2DArray& arr, std::int32_t lowCol, std::int32_t lowRow,
                          std::int32_t highCol, std::int32_t highRow, std::int32_t destCol,
                          std::int32_t destRow) const {
  CopyRangeToArray(*this, arr, lowCol, lowRow, highCol, highRow, destCol, destRow,
                   [](double x) { return x; });
}

void TMatrix::CopyToArray(TInt2DArray& arr, std::int32_t lowCol, std::int32_t lowRow,
                          std::int32_t highCol, std::int32_t highRow, std::int32_t destCol,
                          std::int32_t destRow) const {
  CopyRangeToArray(*this, arr, lowCol, lowRow, highCol, highRow, destCol, destRow, RoundToInt32);
}

namespace {

template <class Arr2D>
void CopyFrom2D(const Arr2D& arr, std::int32_t lo1, std::int32_t lo2, std::int32_t hi1,
                std::int32_t hi2, std::int32_t destCol, std::int32_t destRow,
                const std::function<void(std::int32_t, std::int32_t, double)>& put) {
  if (arr.empty() || arr.front().empty()) return;
  OrderedClamp(lo1, hi1, static_cast<std::int32_t>(arr.size()));
  OrderedClamp(lo2, hi2, static_cast<std::int32_t>(arr.front().size()));
  for (std::int32_t i = lo1; i <= hi1; ++i) {
    const auto& line = arr[static_cast<std::size_t>(i)];
    for (std::int32_t j = lo2; j <= hi2 && j < static_cast<std::int32_t>(line.size()); ++j) {
      put(destCol + i - lo1, destRow + j - lo2,
          static_cast<double>(line[static_cast<std::size_t>(j)]));
    }
  }
}

template <class Arr1D>
bool CopyFrom1D(const Arr1D& arr, std::int32_t first, std::int32_t last, std::int32_t destCol,
                std::int32_t destRow, bool asColumn,
                const std::function<void(std::int32_t, std::int32_t, double)>& put) {
  if (arr.empty()) return false;
  OrderedClamp(first, last, static_cast<std::int32_t>(arr.size()));
  for (std::int32_t k = first; k <= last; ++k) {
    const std::int32_t off = k - first;
    put(asColumn ? destCol : destCol + off, asColumn ? destRow + off : destRow,
        static_cast<double>(arr[static_cast<std::size_t>(k)]));
  }
  return true;
}

}  // namespace

void TMatrix::CopyFromArray(const TDouble2DArray& arr, std::int32_t lo1, std::int32_t lo2,
                            std::int32_t hi1, std::int32_t hi2, std::int32_t destCol,
                            std::int32_t destRow) {
  if (arr.empty() || arr.front().empty()) return;
  CopyFrom2D(arr, lo1, lo2, hi1, hi2, destCol, destRow,
             [this](std::int32_t c, std::int32_t r, double x) {
               if (Inside(c, r)) At(c, r) = x;
             });
  Changed();
}

void TMatrix::CopyFromArray(const TInt2DArray& arr, std::int32_t lo1, std::int32_t lo2,
                            std::int32_t hi1, std::int32_t hi2, std::int32_t destCol,
                            std::int32_t destRow) {
  if (arr.empty() || arr.front().empty()) return;
  CopyFrom2D(arr, lo1, lo2, hi1, hi2, destCol, destRow,
             [this](std::int32_t c, std::int32_t r, double x) {
               if (Inside(c, r)) At(c, r) = x;
             });
  Changed();
}

void TMatrix::CopyFromArray(const TDoubleArray& arr, std::int32_t first, std::int32_t last,
                            std::int32_t destCol, std::int32_t destRow, bool asColumn) {
  if (CopyFrom1D(arr, first, last, destCol, destRow, asColumn,
                 [this](std::int32_t c, std::int32_t r, double x) {
                   if (Inside(c, r)) At(c, r) = x;
                 })) {
    Changed();
  }
}

void TMatrix::CopyFromArray(const TIntArray& arr, std::int32_t first, std::int32_t last,
                            std::int32_t destCol, std::int32_t destRow, bool asColumn) {
  if (CopyFrom1D(arr, first, last, destCol, destRow, asColumn,
                 [this](std::int32_t c, std::int32_t r, double x) {
                   if (Inside(c, r)) At(c, r) = x;
                 })) {
    Changed();
  }
}

void TMatrix::DuplicateDataAsArray(TDouble2DArray& arr) const {
  arr =
      GuardAllocation<EQUVMatrixError>(*this, msg::kNotEnoughMemoryOnHeap, [&] { return store_; });
}

void TMatrix::FillRandomUniform(std::int32_t lowCol, std::int32_t lowRow, std::int32_t highCol,
                                std::int32_t highRow, double low, double high) {
  MakeValidColRange(lowCol, highCol);
  MakeValidRowRange(lowRow, highRow);
  ForRange(lowCol, lowRow, highCol, highRow, [&](double& x) { x = low + Random() * (high - low); });
  Changed();
}

void TMatrix::FillRandomGauss(std::int32_t lowCol, std::int32_t lowRow, std::int32_t highCol,
                              std::int32_t highRow, double mean, double stdDev) {
  MakeValidColRange(lowCol, highCol);
  MakeValidRowRange(lowRow, highRow);
  ForRange(lowCol, lowRow, highCol, highRow, [&](double& x) { x = mean + stdDev * GRandom(); });
  Changed();
}

}  // namespace quv
