// Distances between rows (objects) and the matrix of all pairwise distances.
//
// The sums of non-negative terms (Euclidean, Manhattan) are accumulated in double: they cannot
// cancel, so their relative error stays below n * eps. The cosine and correlation forms
// accumulate products that can cancel and use extended precision.
#include <algorithm>
#include <cmath>

#include "quv/matrix/tmatrix.h"

namespace quv {
namespace {

// Distance between two objects of n values, read through x(k) and y(k). Not for dmUser.
template <class X, class Y>
double Distance(TDistMode mode, std::size_t n, X&& x, Y&& y) {
  switch (mode) {
    case dmEuclid:
    case dmEuclidSqr: {
      double s = 0.0;
      for (std::size_t k = 0; k < n; ++k) {
        const double d = x(k) - y(k);
        s += d * d;
      }
      return mode == dmEuclid ? std::sqrt(s) : s;
    }
    case dmManhattan: {
      double s = 0.0;
      for (std::size_t k = 0; k < n; ++k)
        s += std::abs(x(k) - y(k));
      return s;
    }
    case dmMaximum: {
      double m = 0.0;
      for (std::size_t k = 0; k < n; ++k)
        m = std::max(m, std::abs(x(k) - y(k)));
      return m;
    }
    case dmCosine:
    case dmCorrelation: {
      Extended mx = 0.0L;
      Extended my = 0.0L;
      if (mode == dmCorrelation) {
        for (std::size_t k = 0; k < n; ++k) {
          mx += x(k);
          my += y(k);
        }
        mx /= static_cast<Extended>(n);
        my /= static_cast<Extended>(n);
      }
      Extended sxx = 0.0L, syy = 0.0L, sxy = 0.0L;
      for (std::size_t k = 0; k < n; ++k) {
        const Extended a = x(k) - mx;
        const Extended b = y(k) - my;
        sxx += a * a;
        syy += b * b;
        sxy += a * b;
      }
      if (!(sxx > 0.0L) || !(syy > 0.0L)) return 1.0;
      return static_cast<double>(1.0L - sxy / std::sqrt(sxx * syy));
    }
    case dmUser:
      break;
  }
  return 0.0;
}

}  // namespace

double TMatrix::DistanceOfObjects(TDistMode distMode, std::int32_t row1, std::int32_t row2) {
  if (row1 < 1 || row1 > nrows_ || row2 < 1 || row2 > nrows_) return 0.0;
  if (distMode == dmUser) {
    double d = 0.0;
    FireEvent(OnCalcDistance, this, row1, row2, d);
    return d;
  }
  const auto i = static_cast<std::size_t>(row1 - 1);
  const auto j = static_cast<std::size_t>(row2 - 1);
  return Distance(
      distMode, store_.size(), [&](std::size_t c) { return store_[c][i]; },
      [&](std::size_t c) { return store_[c][j]; });
}

void TMatrix::CalcDistMat(TDistMode distMode, TMatrix* DistMat) {
  if (DistMat == nullptr) return;
  const auto n = static_cast<std::size_t>(nrows_);
  const std::size_t nc = store_.size();
  // The rows are gathered into contiguous arrays once, so each pair walks two short arrays.
  TDouble2DArray rows = GuardAllocation<EQUVMatrixError>(*this, msg::kNotEnoughMemoryOnHeap, [&] {
    TDouble2DArray t(n, TDoubleArray(nc));
    for (std::size_t c = 0; c < nc; ++c) {
      for (std::size_t r = 0; r < n; ++r)
        t[r][c] = store_[c][r];
    }
    return t;
  });
  // Written straight into DistMat's store, which keeps its storage when it has the size.
  DistMat->Resize(nrows_, nrows_);
  TDouble2DArray& dist = DistMat->store_;
  BeginAbortableOperation();
  for (std::size_t i = 0; i < n; ++i) {
    dist[i][i] = 0.0;
    const double* x = rows[i].data();
    for (std::size_t j = i + 1; j < n; ++j) {
      double d = 0.0;
      if (distMode == dmUser) {
        FireEvent(OnCalcDistance, this, static_cast<std::int32_t>(i + 1),
                  static_cast<std::int32_t>(j + 1), d);
      } else {
        const double* y = rows[j].data();
        d = Distance(
            distMode, nc, [x](std::size_t k) { return x[k]; }, [y](std::size_t k) { return y[k]; });
      }
      dist[i][j] = d;  // (column i, row j)
      dist[j][i] = d;
    }
    PercDone(this, static_cast<std::int32_t>(100 * (i + 1) / n));
    if (ProgressStep(1.0)) break;
  }
  DistMat->Changed();
}

}  // namespace quv
