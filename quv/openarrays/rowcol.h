// Copies between rows or columns of 2D arrays and 1D arrays, removal of rows and columns, and
// serialisation. Indices are 0-based; codes kOAOk (0), kOAEmpty (-1), kOABadBounds (-2) as
// declared in stats.h. Copy destinations are never resized.
#pragma once

#include <cstdint>

#include "quv/base/types.h"
#include "quv/openarrays/stats.h"

namespace quv {

/// Copies column Col (0-based) of every row of Source to Dest[0..rows-1]. Dest is not
/// resized. Code 0, -1 (Source or Dest empty) or -2 (a row lacks the column, or Dest is too
/// short); nothing is written on failure.
std::int32_t CopyArrayColumn(const TDouble2DArray& Source, std::int32_t Col, TDoubleArray& Dest);
std::int32_t CopyArrayColumn(const TInt2DArray& Source, std::int32_t Col, TIntArray& Dest);
std::int32_t CopyArrayColumn(const TBool2DArray& Source, std::int32_t Col, TBoolArray& Dest);

/// Copies row Row of Source to the start of Dest; codes as CopyArrayColumn.
std::int32_t CopyArrayRow(const TDouble2DArray& Source, std::int32_t Row, TDoubleArray& Dest);
std::int32_t CopyArrayRow(const TInt2DArray& Source, std::int32_t Row, TIntArray& Dest);
std::int32_t CopyArrayRow(const TBool2DArray& Source, std::int32_t Row, TBoolArray& Dest);

/// Copies Source into column Col of the first Source.size() rows of Dest. Code 0, -1 (an
/// array is empty) or -2 (too few rows, or a row lacks the column); nothing written on failure.
std::int32_t CopyToArrayColumn(const TDoubleArray& Source, std::int32_t Col, TDouble2DArray& Dest);
std::int32_t CopyToArrayColumn(const TIntArray& Source, std::int32_t Col, TInt2DArray& Dest);
std::int32_t CopyToArrayColumn(const TBoolArray& Source, std::int32_t Col, TBool2DArray& Dest);

/// Copies Source to the start of row Row of Dest; codes as CopyToArrayColumn.
std::int32_t CopyToArrayRow(const TDoubleArray& Source, std::int32_t Row, TDouble2DArray& Dest);
std::int32_t CopyToArrayRow(const TIntArray& Source, std::int32_t Row, TInt2DArray& Dest);
std::int32_t CopyToArrayRow(const TBoolArray& Source, std::int32_t Row, TBool2DArray& Dest);

/// Copies Source[Lo..Hi][Col] (a piece of a column) or Source[Row][Lo..Hi] (a piece of a row)
/// to Dest from DestIx on, with the codes of CopyArray: -1 when an array is empty, -2 for a bad
/// bound, column, row or destination position, or when the piece does not fit Dest.
std::int32_t Copy2DColTo1DArray(const TDouble2DArray& Source, std::int32_t Col, std::int32_t Lo,
                                std::int32_t Hi, std::int32_t DestIx, TDoubleArray& Dest);
std::int32_t Copy2DRowTo1DArray(const TDouble2DArray& Source, std::int32_t Row, std::int32_t Lo,
                                std::int32_t Hi, std::int32_t DestIx, TDoubleArray& Dest);

/// Deprecated: do no work and always raise EQUVError "deprecated function, see help for
/// details". Use CopyToArrayColumn / CopyToArrayRow.
[[noreturn]] void CopyVectorToArrayColumn(const TDoubleArray& Source, std::int32_t Index,
                                          TDouble2DArray& Dest);
[[noreturn]] void CopyVectorToArrayColumn(const TIntArray& Source, std::int32_t Index,
                                          TInt2DArray& Dest);
[[noreturn]] void CopyVectorToArrayColumn(const TBoolArray& Source, std::int32_t Index,
                                          TBool2DArray& Dest);
[[noreturn]] void CopyVectorToArrayRow(const TDoubleArray& Source, std::int32_t Index,
                                       TDouble2DArray& Dest);
[[noreturn]] void CopyVectorToArrayRow(const TIntArray& Source, std::int32_t Index,
                                       TInt2DArray& Dest);
[[noreturn]] void CopyVectorToArrayRow(const TBoolArray& Source, std::int32_t Index,
                                       TBool2DArray& Dest);

/// Removes column Col from every row. Code 0, -1 (empty) or -2 (a row lacks the column);
/// nothing changes on failure.
std::int32_t RemoveColumn(TDouble2DArray& Data, std::int32_t Col);
std::int32_t RemoveColumn(TInt2DArray& Data, std::int32_t Col);

/// Removes row Row. Code 0, -1 (no rows) or -2 (Row outside 0..rows-1).
std::int32_t RemoveRow(TDouble2DArray& Data, std::int32_t Row);
std::int32_t RemoveRow(TInt2DArray& Data, std::int32_t Row);

/// The rows of Data joined into one array, row after row.
TDoubleArray SerializeArray(const TDouble2DArray& Data);
TIntArray SerializeArray(const TInt2DArray& Data);

}  // namespace quv
