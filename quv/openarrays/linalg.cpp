// Gauss-Jordan inversion and LU factorisation with partial pivoting.
//
// Both work on a row-major working copy (an array of row arrays), so that a row exchange is a
// swap of two row handles and every elimination step is a contiguous row update.
#include "quv/openarrays/linalg.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <utility>

namespace quv {
namespace {

// kLinAlgOK when Data is a non-empty square array of finite values; largest magnitude in maxAbs.
std::int32_t CheckSquare(const TDouble2DArray& data, double& maxAbs) {
  maxAbs = 0.0;
  if (data.empty() || data.front().empty()) return kLinAlgEmpty;
  const std::size_t n = data.size();
  for (const TDoubleArray& row : data) {
    if (row.size() != n) return kLinAlgNotSquare;
  }
  for (const TDoubleArray& row : data) {
    for (double x : row) {
      if (!std::isfinite(x)) return kLinAlgSingular;
      maxAbs = std::max(maxAbs, std::abs(x));
    }
  }
  return maxAbs == 0.0 ? kLinAlgSingular : kLinAlgOK;
}

// Pivots at or below this magnitude are taken as zero: the round-off that elimination leaves
// in an exactly singular matrix of this size and scale.
double ZeroPivotLimit(std::size_t n, double maxAbs) {
  return static_cast<double>(n) * std::numeric_limits<double>::epsilon() * maxAbs;
}

// Row of the largest |a[i][k]| for i >= k.
std::size_t PivotRow(const TDouble2DArray& a, std::size_t k) {
  std::size_t best = k;
  double bestAbs = std::abs(a[k][k]);
  for (std::size_t i = k + 1; i < a.size(); ++i) {
    const double v = std::abs(a[i][k]);
    if (v > bestAbs) {
      bestAbs = v;
      best = i;
    }
  }
  return best;
}

// y[from..n) -= f * x[from..n); written plainly so that the compiler vectorises it.
inline void SubtractScaledRow(double* y, const double* x, double f, std::size_t from,
                              std::size_t n) {
  for (std::size_t j = from; j < n; ++j)
    y[j] -= f * x[j];
}

// Factors a in place (unit-lower multipliers below the diagonal, U on and above it).
// Returns false on a zero pivot; perm records the original row of each row, swaps counts the
// exchanges.
bool FactorInPlace(TDouble2DArray& a, double limit, TIntArray& perm, std::size_t& swaps) {
  const std::size_t n = a.size();
  perm.resize(n);
  for (std::size_t i = 0; i < n; ++i)
    perm[i] = static_cast<std::int32_t>(i);
  swaps = 0;
  for (std::size_t k = 0; k < n; ++k) {
    const std::size_t p = PivotRow(a, k);
    if (!(std::abs(a[p][k]) > limit)) return false;
    if (p != k) {
      std::swap(a[p], a[k]);
      std::swap(perm[p], perm[k]);
      ++swaps;
    }
    const double* pivotRow = a[k].data();
    const double pivot = pivotRow[k];
    for (std::size_t i = k + 1; i < n; ++i) {
      double* row = a[i].data();
      const double l = row[k] / pivot;
      row[k] = l;
      if (l != 0.0) SubtractScaledRow(row, pivotRow, l, k + 1, n);
    }
  }
  return true;
}

}  // namespace

std::int32_t InvertArray(TDouble2DArray& Data) {
  double maxAbs = 0.0;
  if (const std::int32_t code = CheckSquare(Data, maxAbs); code != kLinAlgOK) return code;
  const std::size_t n = Data.size();
  const double limit = ZeroPivotLimit(n, maxAbs);
  TDouble2DArray a = Data;  // the caller's array stays intact when we give up
  std::vector<std::size_t> exchanged(n);
  for (std::size_t k = 0; k < n; ++k) {
    const std::size_t p = PivotRow(a, k);
    if (!(std::abs(a[p][k]) > limit)) return kLinAlgSingular;
    std::swap(a[p], a[k]);
    exchanged[k] = p;
    // Column k of the pivot row becomes column k of the inverse: start it at 1 / pivot.
    double* pivotRow = a[k].data();
    const double inv = 1.0 / pivotRow[k];
    pivotRow[k] = 1.0;
    for (std::size_t j = 0; j < n; ++j)
      pivotRow[j] *= inv;
    for (std::size_t i = 0; i < n; ++i) {
      if (i == k) continue;
      double* row = a[i].data();
      const double f = row[k];
      if (f == 0.0) continue;
      row[k] = 0.0;
      SubtractScaledRow(row, pivotRow, f, 0, n);
    }
  }
  // The row exchanges made on the way turn into column exchanges of the inverse, undone in
  // reverse order.
  for (std::size_t k = n; k-- > 0;) {
    const std::size_t p = exchanged[k];
    if (p == k) continue;
    for (TDoubleArray& row : a)
      std::swap(row[k], row[p]);
  }
  Data = std::move(a);
  return kLinAlgOK;
}

std::int32_t LUdecomposition(const TDouble2DArray& Data, TDouble2DArray& L, TDouble2DArray& U,
                             TIntArray& Perm) {
  double maxAbs = 0.0;
  if (const std::int32_t code = CheckSquare(Data, maxAbs); code != kLinAlgOK) return code;
  const std::size_t n = Data.size();
  TDouble2DArray a = Data;
  TIntArray perm;
  std::size_t swaps = 0;
  if (!FactorInPlace(a, ZeroPivotLimit(n, maxAbs), perm, swaps)) return kLinAlgSingular;

  // The sign of the permutation goes into the first column of L and the first row of U
  // (L * D * D * U with D = diag(s, 1, ..., 1)), so that the product of U's diagonal is det(A)
  // and L * U still equals P * A.
  const double sign = (swaps % 2 == 0) ? 1.0 : -1.0;
  TDouble2DArray lower(n, TDoubleArray(n, 0.0));
  for (std::size_t i = 0; i < n; ++i) {
    for (std::size_t j = 0; j < i; ++j) {
      lower[i][j] = a[i][j];
      a[i][j] = 0.0;
    }
    lower[i][i] = 1.0;
  }
  for (std::size_t i = 0; i < n; ++i)
    lower[i][0] *= sign;
  for (std::size_t j = 0; j < n; ++j)
    a[0][j] *= sign;
  L = std::move(lower);
  U = std::move(a);
  Perm = std::move(perm);
  return kLinAlgOK;
}

std::int32_t LUdecomposition(const TDouble2DArray& Data, TDouble2DArray& L, TDouble2DArray& U) {
  TIntArray perm;
  return LUdecomposition(Data, L, U, perm);
}

}  // namespace quv
