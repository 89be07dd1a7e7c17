// Singular value decomposition of a dense matrix (Golub and Reinsch, "Singular value
// decomposition and least squares solutions", Numer. Math. 14 (1970) 403-420): Householder
// reduction to bidiagonal form, accumulation of the transformations, then implicitly shifted
// QR iterations on the bidiagonal.
#pragma once

#include <cstdint>

#include "quv/base/types.h"

namespace quv::detail {

/// Outcome of SingularValueDecomposition.
enum TSvdStatus : std::uint8_t {
  svdOK,             ///< converged
  svdNoConvergence,  ///< a singular value needed 30 QR iterations
  svdAborted         ///< AbortMathProc was raised during the iterations
};

/// Decomposes the m x n array a (a[row][col], m >= n >= 1) as a = U diag(w) V'. On return a
/// holds U (m x n), w the n singular values (not sorted, all >= 0) and v the n x n matrix V.
/// A value has converged when |e| + anorm = anorm for its off-diagonal element e. One
/// progress step (ProgressStep) per singular value; AbortMathProc stops the iterations.
TSvdStatus SingularValueDecomposition(TDouble2DArray& a, TDoubleArray& w, TDouble2DArray& v);

}  // namespace quv::detail
