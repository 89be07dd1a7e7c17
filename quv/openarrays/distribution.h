// Distribution, counting and shape statistics over dynamic arrays: percentiles, frequency
// distributions, value counts, masked sums, local windows, correlation of columns and
// monotony tests. Bounds and codes follow the statistics family (see stats.h).
#pragma once

#include <cstdint>

#include "quv/base/types.h"

namespace quv {

/// Percentile of the elements at probability Prob (a fraction, clamped into [0, 1]): the
/// values are ordered and interpolated linearly at position Prob * (n - 1) between the two
/// neighbouring order statistics, the same rule as TVector.Percentile at 100 * Prob. Returns
/// 0.0 for an empty array or invalid bounds (Prob NaN counts as 0). Ragged 2D ranges must be
/// covered by every touched row.
double PercentileArray(double Prob, const TDoubleArray& Data);
double PercentileArray(double Prob, const TIntArray& Data);
double PercentileArray(double Prob, const TDoubleArray& Data, std::int32_t Lo1, std::int32_t Hi1);
double PercentileArray(double Prob, const TDouble2DArray& Data, std::int32_t Lo1, std::int32_t Lo2,
                       std::int32_t Hi1, std::int32_t Hi2);

/// Largest number of bins FrequDistOfArray builds.
inline constexpr std::int32_t kMaxFrequBins = 10'000'000;

/// Frequency distribution of a sub-range. Bins of width BinWidth start at LowBound; their
/// number is round(|HighBound - LowBound| / BinWidth) + 1, so the last bin starts at (about)
/// HighBound. A value x below LowBound counts in Underflow, a value at or above the end of the
/// last bin in Overflow (NaN counts as overflow); otherwise it counts in bin
/// floor((x - LowBound) / BinWidth). Hist is emptied and both counters zeroed first; code 0,
/// -1 (empty), -2 (bad bounds, BinWidth not positive or not finite, LowBound above HighBound,
/// or more than kMaxFrequBins bins). The mask form counts only the cells whose mask cell is
/// true (non-zero); a mask that does not cover the data gives -2.
std::int32_t FrequDistOfArray(const TDoubleArray& Data, std::int32_t Lo1, std::int32_t Hi1,
                              double LowBound, double HighBound, double BinWidth, TIntArray& Hist,
                              std::int32_t& Underflow, std::int32_t& Overflow);
std::int32_t FrequDistOfArray(const TDouble2DArray& Data, std::int32_t Lo1, std::int32_t Lo2,
                              std::int32_t Hi1, std::int32_t Hi2, double LowBound, double HighBound,
                              double BinWidth, TIntArray& Hist, std::int32_t& Underflow,
                              std::int32_t& Overflow);
std::int32_t FrequDistOfArray(const TDouble2DArray& Data, const TBool2DArray& Mask, double LowBound,
                              double HighBound, double BinWidth, TIntArray& Hist,
                              std::int32_t& Underflow, std::int32_t& Overflow);

/// Number of elements of the sub-range whose value lies between Value1 and Value2 inclusive
/// (in either order); -1 (empty) or -2 (bad bounds) instead of a count.
std::int32_t CountValues(const TDoubleArray& Data, std::int32_t Lo1, std::int32_t Hi1,
                         double Value1, double Value2);
std::int32_t CountValues(const TIntArray& Data, std::int32_t Lo1, std::int32_t Hi1,
                         std::int32_t Value1, std::int32_t Value2);
std::int32_t CountValues(const TDouble2DArray& Data, std::int32_t Lo1, std::int32_t Lo2,
                         std::int32_t Hi1, std::int32_t Hi2, double Value1, double Value2);
std::int32_t CountValues(const TInt2DArray& Data, std::int32_t Lo1, std::int32_t Lo2,
                         std::int32_t Hi1, std::int32_t Hi2, std::int32_t Value1,
                         std::int32_t Value2);
std::int32_t CountValues(const TDouble3DArray& Data, std::int32_t Lo1, std::int32_t Lo2,
                         std::int32_t Lo3, std::int32_t Hi1, std::int32_t Hi2, std::int32_t Hi3,
                         double Value1, double Value2);
std::int32_t CountValues(const TInt3DArray& Data, std::int32_t Lo1, std::int32_t Lo2,
                         std::int32_t Lo3, std::int32_t Hi1, std::int32_t Hi2, std::int32_t Hi3,
                         std::int32_t Value1, std::int32_t Value2);
std::int32_t CountValues(const TDouble4DArray& Data, std::int32_t Lo1, std::int32_t Lo2,
                         std::int32_t Lo3, std::int32_t Lo4, std::int32_t Hi1, std::int32_t Hi2,
                         std::int32_t Hi3, std::int32_t Hi4, double Value1, double Value2);
std::int32_t CountValues(const TInt4DArray& Data, std::int32_t Lo1, std::int32_t Lo2,
                         std::int32_t Lo3, std::int32_t Lo4, std::int32_t Hi1, std::int32_t Hi2,
                         std::int32_t Hi3, std::int32_t Hi4, std::int32_t Value1,
                         std::int32_t Value2);

/// Extended-precision sum of the cells whose mask cell is true (non-zero). Sum := 0 first;
/// code 0, -1 (empty data) or -2 (the mask does not cover every data cell).
std::int32_t SumArrayMasked(const TDouble2DArray& Data, const TBool2DArray& Mask, double& Sum);
std::int32_t SumArrayMasked(const TInt2DArray& Data, const TBool2DArray& Mask, double& Sum);

/// Sum of (A[i] - B[i])^2 between two arrays of equal length, or between A and column Col
/// (0-based) of the rows of B. Returns -1.0 when an array is empty and -2.0 when the lengths
/// differ or a row lacks the column (a sum of squares is never negative).
double SumOfSquaredDiffs(const TDoubleArray& A, const TDoubleArray& B);
double SumOfSquaredDiffs(const TDoubleArray& A, const TDouble2DArray& B, std::int32_t Col);

/// Mean / median of the window of cells [Ix1 - Radius1 .. Ix1 + Radius1] x
/// [Ix2 - Radius2 .. Ix2 + Radius2] around Data[Ix1][Ix2]. The window is cut at the borders
/// (and at the ends of ragged rows), so border cells use fewer neighbours; the median of an
/// even count is the mean of the two middle values. Returns 0.0 when the centre cell does not
/// exist or a radius is negative.
double LocalMean(const TDouble2DArray& Data, std::int32_t Ix1, std::int32_t Ix2,
                 std::int32_t Radius1, std::int32_t Radius2);
double LocalMean(const TInt2DArray& Data, std::int32_t Ix1, std::int32_t Ix2, std::int32_t Radius1,
                 std::int32_t Radius2);
double LocalMedian(const TDouble2DArray& Data, std::int32_t Ix1, std::int32_t Ix2,
                   std::int32_t Radius1, std::int32_t Radius2);
double LocalMedian(const TInt2DArray& Data, std::int32_t Ix1, std::int32_t Ix2,
                   std::int32_t Radius1, std::int32_t Radius2);

/// Pearson correlation of columns Col1 and Col2 (0-based) over all rows; the same formula as
/// TVector.PearsonCorrCoeff. 0.0 when there are fewer than two rows, a row lacks a column or
/// a column is constant.
double PearsonCorrCoeffColsOfArray(const TDouble2DArray& Data, std::int32_t Col1,
                                   std::int32_t Col2);

/// Number of true (non-zero) cells; the ranged form returns -1 / -2 as the family does.
std::int32_t CountTrueCellsOfArray(const TBoolArray& Data);
std::int32_t CountTrueCellsOfArray(const TBool2DArray& Data);
std::int32_t CountTrueCellsOfArray(const TBool2DArray& Data, std::int32_t Lo1, std::int32_t Lo2,
                                   std::int32_t Hi1, std::int32_t Hi2);

/// True when the elements never decrease or never increase (equal neighbours allowed);
/// arrays of fewer than two elements are monotone.
bool IsMonotone(const TDoubleArray& Data);
bool IsMonotone(const TIntArray& Data);
/// True when the elements strictly increase or strictly decrease; fewer than two elements
/// count as strictly monotone.
bool IsStrictlyMonotone(const TDoubleArray& Data);
bool IsStrictlyMonotone(const TIntArray& Data);

/// True when the array holds at most two distinct values: V1 := first element, V2 := the
/// first element different from it (V1 when none). V1 and V2 are 0 first; fewer than two
/// elements give false.
bool IsDichotomous(const TDoubleArray& Data, double& V1, double& V2);
bool IsDichotomous(const TIntArray& Data, std::int32_t& V1, std::int32_t& V2);

}  // namespace quv
