// Linear algebra on square two-dimensional arrays: inversion and LU factorisation.
//
// Both functions use Gaussian elimination with partial (row) pivoting. A pivot counts as zero
// when its magnitude does not exceed n * eps * max|a|, the round-off that elimination leaves
// behind in an exactly singular matrix of that scale; such a matrix is reported, not
// factored.
#pragma once

#include <cstdint>

#include "quv/base/types.h"

namespace quv {

/// Result codes of InvertArray and LUdecomposition.
inline constexpr std::int32_t kLinAlgOK = 0;
/// The array has no rows, or its first row is empty.
inline constexpr std::int32_t kLinAlgEmpty = -1;
/// The array is not square (some row length differs from the number of rows).
inline constexpr std::int32_t kLinAlgNotSquare = -2;
/// The matrix is singular to working precision (a zero pivot after row exchanges).
inline constexpr std::int32_t kLinAlgSingular = -3;

/// Inverts the square array Data in place by Gauss-Jordan elimination with partial pivoting.
/// The inverse of a transposed matrix is the transposed inverse, so it does not matter whether
/// Data holds rows or columns in its first index. Returns kLinAlgOK, or kLinAlgEmpty,
/// kLinAlgNotSquare or kLinAlgSingular; on any non-zero code Data is left unchanged.
std::int32_t InvertArray(TDouble2DArray& Data);

/// LU factorisation with partial pivoting of the square array Data, read as Data[row][col].
/// On success P*A = L*U, where P is the row permutation chosen by the pivoting, U is upper
/// triangular and L lower triangular with unit diagonal, except that the first column of L and
/// the first row of U are multiplied by s, s = +1 or -1 being the sign of P (so L[0][0] = s). The
/// sign thus sits in U, and the product of U's diagonal is the determinant of A itself. L and U are
/// resized to n x n. Returns the codes of InvertArray; on a non-zero code L and U are left
/// unchanged.
std::int32_t LUdecomposition(const TDouble2DArray& Data, TDouble2DArray& L, TDouble2DArray& U);

/// As above, and Perm[i] receives the 0-based row of A that became row i of P*A.
std::int32_t LUdecomposition(const TDouble2DArray& Data, TDouble2DArray& L, TDouble2DArray& U,
                             TIntArray& Perm);

}  // namespace quv
