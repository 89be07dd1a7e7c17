// Vector geometry on one-dimensional arrays and normalisation of rows and columns.
// Codes kOAOk (0), kOAEmpty (-1), kOABadBounds (-2) as declared in stats.h.
#pragma once

#include <cstdint>

#include "quv/base/types.h"
#include "quv/openarrays/stats.h"

namespace quv {

/// Result := A x B for two vectors of three elements. Code 0, -1 (an operand empty) or -2
/// (a length other than 3); Result is resized to 3, untouched on failure.
std::int32_t VectorCrossProduct(const TDoubleArray& A, const TDoubleArray& B, TDoubleArray& Result);

/// Product := sum A[i] * B[i] in extended precision (0 first). Code 0, -1 (an operand empty)
/// or -2 (lengths differ).
std::int32_t VectorDotProduct(const TDoubleArray& A, const TDoubleArray& B, double& Product);
std::int32_t VectorDotProduct(const TIntArray& A, const TIntArray& B, double& Product);

/// True when the points lie on one straight line within Tolerance: the largest perpendicular
/// distance of a point from the best-fitting line (the principal axis through the centroid,
/// so vertical lines are fine) is at most Tolerance. The 1D form takes the points (i, Data[i]);
/// the 2D form one point (x, y) per row (rows need at least two elements). An empty array, or
/// a row that is too short, gives false; one or two points always lie on a line.
bool CheckLinearity(const TDoubleArray& Data, double Tolerance);
bool CheckLinearity(const TDouble2DArray& Data, double Tolerance);

/// Scales every column / row to unit Euclidean length, in place; an all-zero column or row
/// stays as it is. Code 0, -1 (empty) or -2 (NormalizeColumns on a ragged array).
std::int32_t NormalizeColumns(TDouble2DArray& Data);
std::int32_t NormalizeRows(TDouble2DArray& Data);

}  // namespace quv
