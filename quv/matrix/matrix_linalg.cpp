// Products, transposition, inversion, determinant, LU and Cholesky factorisations, norms,
// balancing and the hat matrix.
#include <algorithm>
#include <cmath>

#include "quv/matrix/matrix_product.h"
#include "quv/matrix/matrix_svd.h"
#include "quv/matrix/tmatrix.h"
#include "quv/openarrays/linalg.h"

namespace quv {
namespace {

using TStore = TDouble2DArray;

// The transpose of a store: column arrays become row arrays and vice versa.
TStore Transposed(const TStore& s) {
  const std::size_t nc = s.size();
  const std::size_t nr = nc == 0 ? 0 : s.front().size();
  TStore t(nr, TDoubleArray(nc));
  // Blocks of 32 x 32 keep both the reads and the writes within cache.
  constexpr std::size_t kBlock = 32;
  for (std::size_t c0 = 0; c0 < nc; c0 += kBlock) {
    for (std::size_t r0 = 0; r0 < nr; r0 += kBlock) {
      for (std::size_t c = c0; c < std::min(nc, c0 + kBlock); ++c) {
        for (std::size_t r = r0; r < std::min(nr, r0 + kBlock); ++r)
          t[r][c] = s[c][r];
      }
    }
  }
  return t;
}

}  // namespace

namespace detail {

// Shared by the three products: left holds the rows of the left factor, right the columns of
// the right factor. Writes the product into res with SetVal after sizing it; the progress
// protocol runs once per block of result rows, and an abort leaves res untouched.
bool FinishProduct(TMatrix& self, const TStore& left, const TStore& right, TMatrix& res,
                   const TOnPercentDoneEvent& onPercentDone) {
  TStore product;
  const std::size_t total = left.size();
  BeginAbortableOperation();
  const bool done = GuardAllocation<EQUVMatrixError>(self, msg::kNotEnoughMemoryOnHeap, [&] {
    return AccurateProduct(left, right, product, [&](std::size_t finished) {
      if (onPercentDone) {
        onPercentDone(&self, static_cast<std::int32_t>(100 * finished / total));
      }
      return ProgressStep(1.0);
    });
  });
  if (!done) return false;
  res.Resize(static_cast<std::int32_t>(product.size()),
             static_cast<std::int32_t>(product.front().size()));
  for (std::size_t c = 0; c < product.size(); ++c) {
    for (std::size_t r = 0; r < product[c].size(); ++r) {
      res.SetVal(static_cast<std::int32_t>(c + 1), static_cast<std::int32_t>(r + 1), product[c][r]);
    }
  }
  return true;
}

}  // namespace detail

bool TMatrix::Multiply(const TMatrix* MatB, TMatrix* MatRes) {
  if (MatB == nullptr || MatRes == nullptr || ncols_ != MatB->nrows_) return false;
  const TStore left = GuardAllocation<EQUVMatrixError>(*this, msg::kNotEnoughMemoryOnHeap,
                                                       [&] { return Transposed(store_); });
  return detail::FinishProduct(*this, left, MatB->store_, *MatRes, OnPercentDone);
}

bool TMatrix::MultiplyTransposed(const TMatrix* MatB, TMatrix* MatRes) {
  if (MatB == nullptr || MatRes == nullptr || ncols_ != MatB->ncols_) return false;
  const auto [left, right] = GuardAllocation<EQUVMatrixError>(
      *this, msg::kNotEnoughMemoryOnHeap,
      [&] { return std::pair(Transposed(store_), Transposed(MatB->store_)); });
  return detail::FinishProduct(*this, left, right, *MatRes, OnPercentDone);
}

bool TMatrix::TransposeAndMultiply(const TMatrix* MatB, TMatrix* MatRes) {
  if (MatB == nullptr || MatRes == nullptr || nrows_ != MatB->nrows_) return false;
  if (MatRes == this || MatRes == MatB) {
    const auto [left, right] = GuardAllocation<EQUVMatrixError>(
        *this, msg::kNotEnoughMemoryOnHeap, [&] { return std::pair(store_, MatB->store_); });
    return detail::FinishProduct(*this, left, right, *MatRes, OnPercentDone);
  }
  return detail::FinishProduct(*this, store_, MatB->store_, *MatRes, OnPercentDone);
}

bool TMatrix::EMult(const TMatrix* MatB, TMatrix* MatRes) {
  if (MatB == nullptr || MatRes == nullptr || ncols_ != MatB->ncols_ || nrows_ != MatB->nrows_) {
    return false;
  }
  TStore product =
      GuardAllocation<EQUVMatrixError>(*this, msg::kNotEnoughMemoryOnHeap, [&] { return store_; });
  for (std::size_t c = 0; c < product.size(); ++c) {
    for (std::size_t r = 0; r < product[c].size(); ++r)
      product[c][r] *= MatB->store_[c][r];
  }
  MatRes->Resize(ncols_, nrows_);
  for (std::int32_t c = 1; c <= ncols_; ++c) {
    for (std::int32_t r = 1; r <= nrows_; ++r) {
      MatRes->SetVal(c, r,
                     product[static_cast<std::size_t>(c - 1)][static_cast<std::size_t>(r - 1)]);
    }
  }
  return true;
}

bool TMatrix::Add(const TMatrix* MatB) {
  if (MatB == nullptr || ncols_ != MatB->ncols_ || nrows_ != MatB->nrows_) return false;
  for (std::size_t c = 0; c < store_.size(); ++c) {
    for (std::size_t r = 0; r < store_[c].size(); ++r)
      store_[c][r] += MatB->store_[c][r];
  }
  Changed();
  return true;
}

bool TMatrix::Subtract(const TMatrix* MatB) {
  if (MatB == nullptr || ncols_ != MatB->ncols_ || nrows_ != MatB->nrows_) return false;
  for (std::size_t c = 0; c < store_.size(); ++c) {
    for (std::size_t r = 0; r < store_[c].size(); ++r)
      store_[c][r] -= MatB->store_[c][r];
  }
  Changed();
  return true;
}

void TMatrix::SMult(double factor) {
  for (TDoubleArray& col : store_) {
    for (double& x : col)
      x *= factor;
  }
  Changed();
}

void TMatrix::SAdd(double summand) {
  for (TDoubleArray& col : store_) {
    for (double& x : col)
      x += summand;
  }
  Changed();
}

void TMatrix::Transpose() {
  TStore t = GuardAllocation<EQUVMatrixError>(*this, msg::kNotEnoughMemoryOnHeap,
                                              [&] { return Transposed(store_); });
  const bool square = ncols_ == nrows_;
  SetStoreDirectly(std::move(t));
  Changed();
  if (!square) Resized();
}

bool TMatrix::Invert() {
  if (ncols_ != nrows_) return false;
  // InvertArray leaves the store as it was when it refuses.
  const std::int32_t code = GuardAllocation<EQUVMatrixError>(*this, msg::kNotEnoughMemoryOnHeap,
                                                             [&] { return InvertArray(store_); });
  if (code != kLinAlgOK) return false;
  Changed();
  return true;
}

double TMatrix::Determinant() const {
  // det(A') = det(A), so the column store serves as it is.
  TStore l, u;
  const std::int32_t code = GuardAllocation<EQUVMatrixError>(
      *this, msg::kNotEnoughMemoryOnHeap, [&] { return quv::LUdecomposition(store_, l, u); });
  if (code != kLinAlgOK) return 0.0;
  Extended det = 1.0L;
  for (std::int32_t i = 0; i < ncols_; ++i)
    det *= u[static_cast<std::size_t>(i)][static_cast<std::size_t>(i)];
  return static_cast<double>(det);
}

bool TMatrix::LUdecomposition(TMatrix* L, TMatrix* U) const {
  if (ncols_ != nrows_ || L == nullptr || U == nullptr) return false;
  // The array function reads rows first; hand it the rows of this matrix.
  TStore l, u;
  TIntArray perm;
  const std::int32_t code = GuardAllocation<EQUVMatrixError>(
      *this, msg::kNotEnoughMemoryOnHeap,
      [&] { return quv::LUdecomposition(Transposed(store_), l, u, perm); });
  if (code != kLinAlgOK) return false;
  // P A = l u, so A = (P' l) u: the permutation goes into L, whose rows are l's rows put back
  // in their original order.
  TStore lp(l.size());
  for (std::size_t i = 0; i < l.size(); ++i)
    lp[static_cast<std::size_t>(perm[i])] = std::move(l[i]);
  TStore lStore = Transposed(lp);
  TStore uStore = Transposed(u);
  L->ReplaceStore(std::move(lStore));
  U->ReplaceStore(std::move(uStore));
  return true;
}

bool TMatrix::CholeskyDecomp(TMatrix* Lower) {
  if (ncols_ != nrows_ || Lower == nullptr) return false;
  const std::int32_t n = ncols_;
  TDoubleArray d(static_cast<std::size_t>(n) + 1, 0.0);
  bool positive = true;
  for (std::int32_t i = 1; i <= n; ++i) {
    for (std::int32_t j = i; j <= n; ++j) {
      double sum = At(i, j);
      for (std::int32_t k = i - 1; k >= 1; --k)
        sum -= At(i, k) * At(j, k);
      if (i == j) {
        if (sum > 0.0) {
          d[static_cast<std::size_t>(i)] = std::sqrt(sum);
        } else {
          positive = false;  // d(i) stays 0 and the quotients of this column are written as 0
        }
      } else {
        const double di = d[static_cast<std::size_t>(i)];
        At(j, i) = di != 0.0 ? sum / di : 0.0;
      }
    }
  }
  Lower->Resize(n, n);
  for (std::int32_t i = 1; i <= n; ++i) {
    for (std::int32_t j = i; j <= n; ++j)
      Lower->At(i, j) = At(j, i);
    Lower->At(i, i) = d[static_cast<std::size_t>(i)];
  }
  Lower->Changed();
  return positive;
}

double TMatrix::Norm(TNormType normType) const {
  switch (normType) {
    case ntColwise: {
      Extended best = 0.0L;
      for (const TDoubleArray& col : store_) {
        Extended s = 0.0L;
        for (double x : col)
          s += std::abs(x);
        best = std::max(best, s);
      }
      return static_cast<double>(best);
    }
    case ntRowwise: {
      std::vector<Extended> sums(static_cast<std::size_t>(nrows_), 0.0L);
      for (const TDoubleArray& col : store_) {
        for (std::size_t r = 0; r < col.size(); ++r)
          sums[r] += std::abs(col[r]);
      }
      Extended best = 0.0L;
      for (Extended s : sums)
        best = std::max(best, s);
      return static_cast<double>(best);
    }
    case ntSpectral: {
      // Rows first, with at least as many rows as columns: the transpose has the same
      // singular values, so take whichever orientation is tall.
      TStore a = GuardAllocation<EQUVMatrixError>(*this, msg::kNotEnoughMemoryOnHeap, [&] {
        return nrows_ >= ncols_ ? Transposed(store_) : store_;
      });
      TDoubleArray w;
      TStore v;
      BeginAbortableOperation();
      const detail::TSvdStatus status = detail::SingularValueDecomposition(a, w, v);
      if (status == detail::svdNoConvergence)
        throw EQUVMatrixError("near singular covariance matrix");
      if (status == detail::svdAborted) return 0.0;
      return w.empty() ? 0.0 : *std::max_element(w.begin(), w.end());
    }
    case ntFrobenius: {
      Extended s = 0.0L;
      for (const TDoubleArray& col : store_) {
        for (double x : col)
          s += static_cast<Extended>(x) * x;
      }
      return static_cast<double>(std::sqrt(s));
    }
  }
  return 0.0;
}

bool TMatrix::Square(TMatrix* MatRes) {
  if (ncols_ != nrows_) return false;
  return Multiply(this, MatRes);
}

bool TMatrix::Balance(TDoubleArray& scale) {
  if (ncols_ != nrows_) return false;
  const std::size_t n = store_.size();
  constexpr double kRadix = 2.0;
  constexpr double kRadix2 = kRadix * kRadix;
  TDoubleArray d(n, 1.0);
  bool done = false;
  while (!done) {
    done = true;
    for (std::size_t i = 0; i < n; ++i) {
      // Off-diagonal norms of column i and row i (store_[col][row]).
      double c = 0.0;
      double r = 0.0;
      for (std::size_t j = 0; j < n; ++j) {
        if (j == i) continue;
        c += std::abs(store_[i][j]);
        r += std::abs(store_[j][i]);
      }
      // Nothing to balance against, or a value that no power of 2 can bring into range.
      if (c == 0.0 || r == 0.0 || !std::isfinite(c) || !std::isfinite(r)) continue;
      double g = r / kRadix;
      double f = 1.0;
      const double s = c + r;
      while (c < g) {
        f *= kRadix;
        c *= kRadix2;
      }
      g = r * kRadix;
      while (c > g) {
        f /= kRadix;
        c /= kRadix2;
      }
      if ((c + r) / f < 0.95 * s) {
        done = false;
        d[i] *= f;
        // A := D^-1 A D with D_ii = f: row i divided by f, column i multiplied by f.
        for (std::size_t j = 0; j < n; ++j)
          store_[j][i] /= f;
        for (std::size_t j = 0; j < n; ++j)
          store_[i][j] *= f;
      }
    }
  }
  scale = std::move(d);
  Changed();
  return true;
}

bool TMatrix::CalcHatMatrix(TMatrix* Hat) const {
  if (Hat == nullptr) return false;
  // H = X (X'X)^-1 X', with X'X formed and inverted on arrays.
  TMatrix xtx;
  TMatrix self;
  self.SetStoreDirectly(store_);
  if (!self.TransposeAndMultiply(&self, &xtx) || !xtx.Invert()) return false;
  TMatrix xInv;
  if (!self.Multiply(&xtx, &xInv)) return false;
  TMatrix hat;
  if (!xInv.MultiplyTransposed(&self, &hat)) return false;
  Hat->Resize(hat.NrOfColumns(), hat.NrOfRows());
  Hat->SetStoreDirectly(hat.store_);
  Hat->Changed();
  return true;
}

}  // namespace quv
