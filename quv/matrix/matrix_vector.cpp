// Operations of TMatrix that take or fill a TVector.
#include <algorithm>
#include <cmath>

#include "quv/matrix/tmatrix.h"

namespace quv {
namespace {

// Makes vec hold exactly values, firing its OnChange once (and OnResize if the size changed).
void StoreInVector(TVector& vec, const TDoubleArray& values) {
  if (values.empty()) return;
  vec.Resize(static_cast<std::int32_t>(values.size()));
  vec.CopyFrom(values, 0, 0, 1);
}

// The reduction of EdgeVector over values x.
double Reduce(TEdgeOp op, const TDoubleArray& x) {
  if (x.empty()) return 0.0;
  const Extended n = static_cast<Extended>(x.size());
  Extended sum = 0.0L;
  Extended sumSqr = 0.0L;
  for (double v : x) {
    sum += v;
    sumSqr += static_cast<Extended>(v) * v;
  }
  const auto [mn, mx] = std::minmax_element(x.begin(), x.end());
  auto variance = [&] {
    if (x.size() < 2) return 0.0L;
    const Extended mean = sum / n;
    Extended ss = 0.0L;
    for (double v : x)
      ss += (v - mean) * (v - mean);
    return ss / (n - 1);
  };
  switch (op) {
    case eoSum:
      return static_cast<double>(sum);
    case eoMean:
      return static_cast<double>(sum / n);
    case eoMin:
      return *mn;
    case eoMax:
      return *mx;
    case eoStdDev:
      return static_cast<double>(std::sqrt(variance()));
    case eoVariance:
      return static_cast<double>(variance());
    case eoSumSqr:
      return static_cast<double>(sumSqr);
    case eoRange:
      return *mx - *mn;
  }
  return 0.0;
}

}  // namespace

void TMatrix::CopyRowToVec(TVector* Vec, std::int32_t row, std::int32_t firstCol,
                           std::int32_t lastCol, std::int32_t destElem) const {
  if (Vec == nullptr) return;
  MakeValidColRange(firstCol, lastCol);
  row = std::clamp(row, std::int32_t{1}, nrows_);
  TDoubleArray values(static_cast<std::size_t>(Vec->NrOfElem()), 0.0);
  const std::int32_t count = lastCol - firstCol + 1;
  if (destElem > Vec->NrOfElem() || destElem < 2 - count) return;
  for (std::int32_t k = 0; k < count && destElem + k <= Vec->NrOfElem(); ++k) {
    if (destElem + k >= 1)
      values[static_cast<std::size_t>(destElem + k - 1)] = At(firstCol + k, row);
  }
  Vec->CopyFrom(values, 0, 0, 1);
}

void TMatrix::CopyColToVec(TVector* Vec, std::int32_t col, std::int32_t firstRow,
                           std::int32_t lastRow, std::int32_t destElem) const {
  if (Vec == nullptr) return;
  MakeValidRowRange(firstRow, lastRow);
  col = std::clamp(col, std::int32_t{1}, ncols_);
  TDoubleArray values(static_cast<std::size_t>(Vec->NrOfElem()), 0.0);
  const std::int32_t count = lastRow - firstRow + 1;
  if (destElem > Vec->NrOfElem() || destElem < 2 - count) return;
  for (std::int32_t k = 0; k < count && destElem + k <= Vec->NrOfElem(); ++k) {
    if (destElem + k >= 1)
      values[static_cast<std::size_t>(destElem + k - 1)] = At(col, firstRow + k);
  }
  Vec->CopyFrom(values, 0, 0, 1);
}

void TMatrix::CopyFromVec(const TVector* Vec, std::int32_t firstElem, std::int32_t lastElem,
                          std::int32_t destCol, std::int32_t destRow, TDims dims) {
  if (Vec == nullptr) return;
  Vec->MakeValidElemRange(firstElem, lastElem);
  for (std::int32_t i = firstElem; i <= lastElem; ++i) {
    const std::int32_t off = i - firstElem;
    const std::int32_t c = dims == dimColumns ? destCol : destCol + off;
    const std::int32_t r = dims == dimColumns ? destRow + off : destRow;
    if (Inside(c, r)) At(c, r) = Vec->GetVal(i);
  }
  Changed();
}

bool TMatrix::Multiply(const TVector* Vec, TVector* VecRes) const {
  if (Vec == nullptr || VecRes == nullptr || Vec->NrOfElem() != ncols_) return false;
  std::vector<Extended> acc(static_cast<std::size_t>(nrows_), 0.0L);
  const TDoubleArray& v = Vec->Storage();
  // Column by column: each column is contiguous and scaled by one vector element.
  for (std::size_t c = 0; c < store_.size(); ++c) {
    const Extended f = v[c];
    const TDoubleArray& col = store_[c];
    for (std::size_t r = 0; r < col.size(); ++r)
      acc[r] += col[r] * f;
  }
  TDoubleArray result(acc.begin(), acc.end());
  StoreInVector(*VecRes, result);
  return true;
}

bool TMatrix::TransposeAndMultiply(const TVector* Vec, TVector* VecRes) const {
  if (Vec == nullptr || VecRes == nullptr || Vec->NrOfElem() != nrows_) return false;
  const TDoubleArray& v = Vec->Storage();
  TDoubleArray result(store_.size());
  for (std::size_t c = 0; c < store_.size(); ++c) {
    Extended s = 0.0L;
    for (std::size_t r = 0; r < v.size(); ++r)
      s += static_cast<Extended>(store_[c][r]) * v[r];
    result[c] = static_cast<double>(s);
  }
  StoreInVector(*VecRes, result);
  return true;
}

void TMatrix::MeanVec(TDims dims, TVector* Means) const {
  EdgeVector(dims == dimColumns ? orColumns : orRows, eoMean, Means);
}

void TMatrix::EdgeVector(TOrientation orientation, TEdgeOp op, TVector* Vec) const {
  const std::int32_t other = orientation == orRows ? ncols_ : nrows_;
  TIntArray all(static_cast<std::size_t>(other));
  for (std::int32_t i = 0; i < other; ++i)
    all[static_cast<std::size_t>(i)] = i + 1;
  EdgeVector(orientation, op, all, Vec);
}

void TMatrix::EdgeVector(TOrientation orientation, TEdgeOp op, const TIntArray& indices,
                         TVector* Vec) const {
  if (Vec == nullptr) return;
  const bool perRow = orientation == orRows;
  const std::int32_t lines = perRow ? nrows_ : ncols_;
  const std::int32_t other = perRow ? ncols_ : nrows_;
  TDoubleArray result(static_cast<std::size_t>(lines));
  TDoubleArray x;
  x.reserve(indices.size());
  for (std::int32_t line = 1; line <= lines; ++line) {
    x.clear();
    for (std::int32_t ix : indices) {
      if (ix < 1 || ix > other) continue;
      x.push_back(perRow ? At(ix, line) : At(line, ix));
    }
    result[static_cast<std::size_t>(line - 1)] = Reduce(op, x);
  }
  StoreInVector(*Vec, result);
}

void TMatrix::MeanCenterColumns(TVector* Means) {
  TDoubleArray m;
  MeanCenterColumns(m);
  if (Means != nullptr) StoreInVector(*Means, m);
}

void TMatrix::MeanCenterRows(TVector* Means) {
  TDoubleArray m;
  MeanCenterRows(m);
  if (Means != nullptr) StoreInVector(*Means, m);
}

void TMatrix::StandardizeColumns(TVector* Means, TVector* StdDevs) {
  TDoubleArray m, s;
  StandardizeColumns(m, s);
  if (Means != nullptr) StoreInVector(*Means, m);
  if (StdDevs != nullptr) StoreInVector(*StdDevs, s);
}

void TMatrix::StandardizeRows(TVector* Means, TVector* StdDevs) {
  TDoubleArray m, s;
  StandardizeRows(m, s);
  if (Means != nullptr) StoreInVector(*Means, m);
  if (StdDevs != nullptr) StoreInVector(*StdDevs, s);
}

void TMatrix::QNormalizeColumns(double quantile, TVector* Medians, TVector* Spreads) {
  TDoubleArray m, s;
  QNormalizeColumns(quantile, m, s);
  if (Medians != nullptr) StoreInVector(*Medians, m);
  if (Spreads != nullptr) StoreInVector(*Spreads, s);
}

void TMatrix::QNormalizeRows(double quantile, TVector* Medians, TVector* Spreads) {
  TDoubleArray m, s;
  QNormalizeRows(quantile, m, s);
  if (Medians != nullptr) StoreInVector(*Medians, m);
  if (Spreads != nullptr) StoreInVector(*Spreads, s);
}

}  // namespace quv
