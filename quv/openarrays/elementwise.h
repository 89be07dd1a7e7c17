// Element-wise arithmetic, matrix products and structural transforms of dynamic arrays of one
// to four dimensions. Codes: kOAOk (0), kOAEmpty (-1), kOABadBounds (-2), declared in stats.h;
// bounds as in the statistics family. Functions with a Result or Dest that is not a copy
// target resize it to the result and leave it untouched on failure.
#pragma once

#include <cstdint>

#include "quv/base/types.h"
#include "quv/openarrays/stats.h"

namespace quv {

/// Result := A + B (AddArrays) or A - B (SubtractArrays) element by element. Code 0, -1 (an
/// operand is empty) or -2 (the shapes differ, ragged shapes included); Result is resized and
/// may be one of the operands; it is untouched on failure. Integers wrap modulo 2^32.
std::int32_t AddArrays(const TDoubleArray& A, const TDoubleArray& B, TDoubleArray& Result);
std::int32_t AddArrays(const TIntArray& A, const TIntArray& B, TIntArray& Result);
std::int32_t AddArrays(const TDouble2DArray& A, const TDouble2DArray& B, TDouble2DArray& Result);
std::int32_t AddArrays(const TInt2DArray& A, const TInt2DArray& B, TInt2DArray& Result);
std::int32_t AddArrays(const TDouble3DArray& A, const TDouble3DArray& B, TDouble3DArray& Result);
std::int32_t AddArrays(const TInt3DArray& A, const TInt3DArray& B, TInt3DArray& Result);
std::int32_t AddArrays(const TDouble4DArray& A, const TDouble4DArray& B, TDouble4DArray& Result);
std::int32_t AddArrays(const TInt4DArray& A, const TInt4DArray& B, TInt4DArray& Result);
std::int32_t SubtractArrays(const TDoubleArray& A, const TDoubleArray& B, TDoubleArray& Result);
std::int32_t SubtractArrays(const TIntArray& A, const TIntArray& B, TIntArray& Result);
std::int32_t SubtractArrays(const TDouble2DArray& A, const TDouble2DArray& B,
                            TDouble2DArray& Result);
std::int32_t SubtractArrays(const TInt2DArray& A, const TInt2DArray& B, TInt2DArray& Result);
std::int32_t SubtractArrays(const TDouble3DArray& A, const TDouble3DArray& B,
                            TDouble3DArray& Result);
std::int32_t SubtractArrays(const TInt3DArray& A, const TInt3DArray& B, TInt3DArray& Result);
std::int32_t SubtractArrays(const TDouble4DArray& A, const TDouble4DArray& B,
                            TDouble4DArray& Result);
std::int32_t SubtractArrays(const TInt4DArray& A, const TInt4DArray& B, TInt4DArray& Result);

/// Matrix products of rectangular arrays indexed [row][column]: A (n x m) times B (m x p);
/// a 2D array times a 1D array as a column vector; a 1D array as a row vector times a 2D array.
/// Sums run in extended precision (integers in 64 bits, cut to 32). Code 0, -1 (an operand is
/// empty) or -2 (ragged or inner dimensions differ); Result is resized, untouched on failure.
std::int32_t MultiplyArrays(const TDouble2DArray& A, const TDouble2DArray& B,
                            TDouble2DArray& Result);
std::int32_t MultiplyArrays(const TDouble2DArray& A, const TDoubleArray& B, TDoubleArray& Result);
std::int32_t MultiplyArrays(const TDoubleArray& A, const TDouble2DArray& B, TDoubleArray& Result);
std::int32_t MultiplyArrays(const TInt2DArray& A, const TInt2DArray& B, TInt2DArray& Result);
std::int32_t MultiplyArrays(const TInt2DArray& A, const TIntArray& B, TIntArray& Result);
std::int32_t MultiplyArrays(const TIntArray& A, const TInt2DArray& B, TIntArray& Result);

/// Result := A * B element by element; codes as AddArrays.
std::int32_t MultiplyArraysElemw(const TDoubleArray& A, const TDoubleArray& B,
                                 TDoubleArray& Result);
std::int32_t MultiplyArraysElemw(const TIntArray& A, const TIntArray& B, TIntArray& Result);
std::int32_t MultiplyArraysElemw(const TDouble2DArray& A, const TDouble2DArray& B,
                                 TDouble2DArray& Result);
std::int32_t MultiplyArraysElemw(const TInt2DArray& A, const TInt2DArray& B, TInt2DArray& Result);

/// Multiplies every element of the array or of the sub-range by Factor, in place. Code 0,
/// -1 (empty) or -2 (bad bounds).
std::int32_t MultiplyArrayByScalar(TDoubleArray& Data, double Factor);
std::int32_t MultiplyArrayByScalar(TDoubleArray& Data, double Factor, std::int32_t Lo1,
                                   std::int32_t Hi1);
std::int32_t MultiplyArrayByScalar(TIntArray& Data, std::int32_t Factor);
std::int32_t MultiplyArrayByScalar(TIntArray& Data, std::int32_t Factor, std::int32_t Lo1,
                                   std::int32_t Hi1);
std::int32_t MultiplyArrayByScalar(TDouble2DArray& Data, double Factor);
std::int32_t MultiplyArrayByScalar(TDouble2DArray& Data, double Factor, std::int32_t Lo1,
                                   std::int32_t Lo2, std::int32_t Hi1, std::int32_t Hi2);
std::int32_t MultiplyArrayByScalar(TInt2DArray& Data, std::int32_t Factor);
std::int32_t MultiplyArrayByScalar(TInt2DArray& Data, std::int32_t Factor, std::int32_t Lo1,
                                   std::int32_t Lo2, std::int32_t Hi1, std::int32_t Hi2);
std::int32_t MultiplyArrayByScalar(TDouble3DArray& Data, double Factor);
std::int32_t MultiplyArrayByScalar(TDouble3DArray& Data, double Factor, std::int32_t Lo1,
                                   std::int32_t Lo2, std::int32_t Lo3, std::int32_t Hi1,
                                   std::int32_t Hi2, std::int32_t Hi3);
std::int32_t MultiplyArrayByScalar(TInt3DArray& Data, std::int32_t Factor);
std::int32_t MultiplyArrayByScalar(TInt3DArray& Data, std::int32_t Factor, std::int32_t Lo1,
                                   std::int32_t Lo2, std::int32_t Lo3, std::int32_t Hi1,
                                   std::int32_t Hi2, std::int32_t Hi3);
std::int32_t MultiplyArrayByScalar(TDouble4DArray& Data, double Factor);
std::int32_t MultiplyArrayByScalar(TDouble4DArray& Data, double Factor, std::int32_t Lo1,
                                   std::int32_t Lo2, std::int32_t Lo3, std::int32_t Lo4,
                                   std::int32_t Hi1, std::int32_t Hi2, std::int32_t Hi3,
                                   std::int32_t Hi4);
std::int32_t MultiplyArrayByScalar(TInt4DArray& Data, std::int32_t Factor);
std::int32_t MultiplyArrayByScalar(TInt4DArray& Data, std::int32_t Factor, std::int32_t Lo1,
                                   std::int32_t Lo2, std::int32_t Lo3, std::int32_t Lo4,
                                   std::int32_t Hi1, std::int32_t Hi2, std::int32_t Hi3,
                                   std::int32_t Hi4);

/// Adds Value to every element, in place. Code 0 or -1 (empty).
std::int32_t AddScalarToArray(TDoubleArray& Data, double Value);
std::int32_t AddScalarToArray(TIntArray& Data, std::int32_t Value);
std::int32_t AddScalarToArray(TDouble2DArray& Data, double Value);
std::int32_t AddScalarToArray(TInt2DArray& Data, std::int32_t Value);
std::int32_t AddScalarToArray(TDouble3DArray& Data, double Value);
std::int32_t AddScalarToArray(TInt3DArray& Data, std::int32_t Value);
std::int32_t AddScalarToArray(TDouble4DArray& Data, double Value);
std::int32_t AddScalarToArray(TInt4DArray& Data, std::int32_t Value);

/// Adds Delta to the one element at the given 0-based position (one index per dimension), as
/// when counting into a histogram. Code 0, -1 (empty) or -2 (no element at that position).
std::int32_t IncArray(TDoubleArray& Data, std::int32_t Ix1, double Delta);
std::int32_t IncArray(TIntArray& Data, std::int32_t Ix1, std::int32_t Delta);
std::int32_t IncArray(TDouble2DArray& Data, std::int32_t Ix1, std::int32_t Ix2, double Delta);
std::int32_t IncArray(TInt2DArray& Data, std::int32_t Ix1, std::int32_t Ix2, std::int32_t Delta);
std::int32_t IncArray(TDouble3DArray& Data, std::int32_t Ix1, std::int32_t Ix2, std::int32_t Ix3,
                      double Delta);
std::int32_t IncArray(TInt3DArray& Data, std::int32_t Ix1, std::int32_t Ix2, std::int32_t Ix3,
                      std::int32_t Delta);
std::int32_t IncArray(TDouble4DArray& Data, std::int32_t Ix1, std::int32_t Ix2, std::int32_t Ix3,
                      std::int32_t Ix4, double Delta);
std::int32_t IncArray(TInt4DArray& Data, std::int32_t Ix1, std::int32_t Ix2, std::int32_t Ix3,
                      std::int32_t Ix4, std::int32_t Delta);

/// Replaces every element by its absolute value, in place (-2147483648 stays as it is).
/// Code 0 or -1 (empty).
std::int32_t AbsValArray(TDoubleArray& Data);
std::int32_t AbsValArray(TIntArray& Data);
std::int32_t AbsValArray(TDouble2DArray& Data);
std::int32_t AbsValArray(TInt2DArray& Data);
std::int32_t AbsValArray(TDouble3DArray& Data);
std::int32_t AbsValArray(TInt3DArray& Data);
std::int32_t AbsValArray(TDouble4DArray& Data);
std::int32_t AbsValArray(TInt4DArray& Data);

/// Replaces every element x by 1/x, in place; elements equal to 0 stay 0. Returns the number
/// of such zero elements (0 when there were none), or -1 for an empty array.
std::int32_t ReciprocalArray(TDoubleArray& Data);
std::int32_t ReciprocalArray(TDouble2DArray& Data);
std::int32_t ReciprocalArray(TDouble3DArray& Data);
std::int32_t ReciprocalArray(TDouble4DArray& Data);

/// Dest := Dest + Source element by element. Code 0, -1 (an array is empty) or -2 (the
/// shapes differ); Dest is untouched on failure.
std::int32_t AccumulateArray(const TDoubleArray& Source, TDoubleArray& Dest);
std::int32_t AccumulateArray(const TIntArray& Source, TIntArray& Dest);
std::int32_t AccumulateArray(const TDouble2DArray& Source, TDouble2DArray& Dest);
std::int32_t AccumulateArray(const TInt2DArray& Source, TInt2DArray& Dest);
std::int32_t AccumulateArray(const TDouble3DArray& Source, TDouble3DArray& Dest);
std::int32_t AccumulateArray(const TInt3DArray& Source, TInt3DArray& Dest);
std::int32_t AccumulateArray(const TDouble4DArray& Source, TDouble4DArray& Dest);
std::int32_t AccumulateArray(const TInt4DArray& Source, TInt4DArray& Dest);

/// Dest := the transpose of Source (Dest[j][i] = Source[i][j]); Dest is resized and may be
/// Source. Code 0, -1 (empty) or -2 (ragged); Dest untouched on failure.
std::int32_t TransposeArray(const TDouble2DArray& Source, TDouble2DArray& Dest);
std::int32_t TransposeArray(const TInt2DArray& Source, TInt2DArray& Dest);
std::int32_t TransposeArray(const TBool2DArray& Source, TBool2DArray& Dest);

/// Reverses the order along dimension Dim (1 = outermost, as in Lo1), in place; in ragged
/// arrays each inner array is reversed on its own. Code 0, -1 (empty) or -2 (Dim outside
/// 1..number of dimensions).
std::int32_t FlipDimArray(TDoubleArray& Data, std::int32_t Dim);
std::int32_t FlipDimArray(TIntArray& Data, std::int32_t Dim);
std::int32_t FlipDimArray(TDouble2DArray& Data, std::int32_t Dim);
std::int32_t FlipDimArray(TInt2DArray& Data, std::int32_t Dim);
std::int32_t FlipDimArray(TDouble3DArray& Data, std::int32_t Dim);
std::int32_t FlipDimArray(TInt3DArray& Data, std::int32_t Dim);
std::int32_t FlipDimArray(TDouble4DArray& Data, std::int32_t Dim);
std::int32_t FlipDimArray(TInt4DArray& Data, std::int32_t Dim);

/// True when both arrays have the same shape and the same elements.
bool EqualArrays(const TIntArray& A, const TIntArray& B);
bool EqualArrays(const TInt2DArray& A, const TInt2DArray& B);
bool EqualArrays(const TInt3DArray& A, const TInt3DArray& B);
bool EqualArrays(const TInt4DArray& A, const TInt4DArray& B);

/// Thresholding: Dest := (x >= Threshold) for every element (Dest resized to the shape of
/// Source); the forms without Dest replace each element by 1.0 or 0.0 in place. Code 0 or -1
/// (empty); Dest untouched on failure.
std::int32_t DichotomizeArray(const TDoubleArray& Source, double Threshold, TBoolArray& Dest);
std::int32_t DichotomizeArray(const TIntArray& Source, std::int32_t Threshold, TBoolArray& Dest);
std::int32_t DichotomizeArray(const TDouble2DArray& Source, double Threshold, TBool2DArray& Dest);
std::int32_t DichotomizeArray(const TInt2DArray& Source, std::int32_t Threshold,
                              TBool2DArray& Dest);
std::int32_t DichotomizeArray(TDoubleArray& Data, double Threshold);
std::int32_t DichotomizeArray(TDouble2DArray& Data, double Threshold);

/// Classes[i] := the number of thresholds less than or equal to Data[i] (0 below the first
/// threshold, size of Thresholds at or above the last; NaN gets the highest class). Classes is
/// resized. Code 0, -1 (Data empty) or -2 (Thresholds not ascending).
std::int32_t DiscretizeArray(const TDoubleArray& Data, const TDoubleArray& Thresholds,
                             TIntArray& Classes);

/// Dest := 1 for true (non-zero) cells and 0 for false ones, in the shape of Source.
void BoolToNumArray(const TBoolArray& Source, TDoubleArray& Dest);
void BoolToNumArray(const TBoolArray& Source, TIntArray& Dest);
void BoolToNumArray(const TBool2DArray& Source, TDouble2DArray& Dest);
void BoolToNumArray(const TBool2DArray& Source, TInt2DArray& Dest);

/// Maps the elements linearly so that the smallest becomes NewLow and the largest NewHigh,
/// in place; a constant array becomes (NewLow + NewHigh) / 2 everywhere. Code 0 or -1 (empty).
std::int32_t RescaleArray(TDoubleArray& Data, double NewLow, double NewHigh);
std::int32_t RescaleArray(TDouble2DArray& Data, double NewLow, double NewHigh);

}  // namespace quv
