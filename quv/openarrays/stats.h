// Statistics over dynamic arrays of one to four dimensions: mean, standard deviation,
// variance, extremes.
//
// Bounds are 0-based and inclusive, all low bounds first, then all high bounds, each group in
// the order of the dimensions (2D: Lo1, Lo2, Hi1, Hi2). Functions with a code zero their var
// results first and return kOAOk (0), kOAEmpty (-1: outer length 0, or an empty first inner
// array) or kOABadBounds (-2: a bound negative, at or beyond the length of its dimension, or a
// high bound below its low bound), decided in that order. Arrays may be ragged: every inner
// array the sub-range touches must reach its high bound, otherwise the code is -2.
#pragma once

#include <cstdint>

#include "quv/base/types.h"

namespace quv {

/// Result codes of the open-array functions.
inline constexpr std::int32_t kOAOk = 0;
inline constexpr std::int32_t kOAEmpty = -1;
inline constexpr std::int32_t kOABadBounds = -2;

/// Sentinel returned by MaxArray for an array without elements (-2147483648.0).
inline constexpr double kMaxArrayEmpty = -2147483648.0;
/// Sentinel returned by MinArray for an array without elements (2147483647.0).
inline constexpr double kMinArrayEmpty = 2147483647.0;

/// Mean of a sub-range, summed in extended precision; code 0 / -1 / -2, Mean 0.0 on failure.
std::int32_t MeanArray(const TDoubleArray& Data, std::int32_t Lo1, std::int32_t Hi1, double& Mean);
std::int32_t MeanArray(const TIntArray& Data, std::int32_t Lo1, std::int32_t Hi1, double& Mean);
std::int32_t MeanArray(const TDouble2DArray& Data, std::int32_t Lo1, std::int32_t Lo2,
                       std::int32_t Hi1, std::int32_t Hi2, double& Mean);
std::int32_t MeanArray(const TInt2DArray& Data, std::int32_t Lo1, std::int32_t Lo2,
                       std::int32_t Hi1, std::int32_t Hi2, double& Mean);
std::int32_t MeanArray(const TDouble3DArray& Data, std::int32_t Lo1, std::int32_t Lo2,
                       std::int32_t Lo3, std::int32_t Hi1, std::int32_t Hi2, std::int32_t Hi3,
                       double& Mean);
std::int32_t MeanArray(const TInt3DArray& Data, std::int32_t Lo1, std::int32_t Lo2,
                       std::int32_t Lo3, std::int32_t Hi1, std::int32_t Hi2, std::int32_t Hi3,
                       double& Mean);
std::int32_t MeanArray(const TDouble4DArray& Data, std::int32_t Lo1, std::int32_t Lo2,
                       std::int32_t Lo3, std::int32_t Lo4, std::int32_t Hi1, std::int32_t Hi2,
                       std::int32_t Hi3, std::int32_t Hi4, double& Mean);
std::int32_t MeanArray(const TInt4DArray& Data, std::int32_t Lo1, std::int32_t Lo2,
                       std::int32_t Lo3, std::int32_t Lo4, std::int32_t Hi1, std::int32_t Hi2,
                       std::int32_t Hi3, std::int32_t Hi4, double& Mean);

/// Sample standard deviation (denominator n - 1) of a sub-range; 0.0 with code 0 for a single
/// element. Two passes in extended precision. Code 0 / -1 / -2, StdDev 0.0 on failure.
std::int32_t StdDevArray(const TDoubleArray& Data, std::int32_t Lo1, std::int32_t Hi1,
                         double& StdDev);
std::int32_t StdDevArray(const TIntArray& Data, std::int32_t Lo1, std::int32_t Hi1, double& StdDev);
std::int32_t StdDevArray(const TDouble2DArray& Data, std::int32_t Lo1, std::int32_t Lo2,
                         std::int32_t Hi1, std::int32_t Hi2, double& StdDev);
std::int32_t StdDevArray(const TInt2DArray& Data, std::int32_t Lo1, std::int32_t Lo2,
                         std::int32_t Hi1, std::int32_t Hi2, double& StdDev);
std::int32_t StdDevArray(const TDouble3DArray& Data, std::int32_t Lo1, std::int32_t Lo2,
                         std::int32_t Lo3, std::int32_t Hi1, std::int32_t Hi2, std::int32_t Hi3,
                         double& StdDev);
std::int32_t StdDevArray(const TInt3DArray& Data, std::int32_t Lo1, std::int32_t Lo2,
                         std::int32_t Lo3, std::int32_t Hi1, std::int32_t Hi2, std::int32_t Hi3,
                         double& StdDev);
std::int32_t StdDevArray(const TDouble4DArray& Data, std::int32_t Lo1, std::int32_t Lo2,
                         std::int32_t Lo3, std::int32_t Lo4, std::int32_t Hi1, std::int32_t Hi2,
                         std::int32_t Hi3, std::int32_t Hi4, double& StdDev);
std::int32_t StdDevArray(const TInt4DArray& Data, std::int32_t Lo1, std::int32_t Lo2,
                         std::int32_t Lo3, std::int32_t Lo4, std::int32_t Hi1, std::int32_t Hi2,
                         std::int32_t Hi3, std::int32_t Hi4, double& StdDev);

/// Mean and sample variance (denominator n - 1; 0.0 for a single element) of a sub-range.
/// Code 0 / -1 / -2; both results 0.0 on failure.
std::int32_t MeanVarArray(const TDoubleArray& Data, std::int32_t Lo1, std::int32_t Hi1,
                          double& Mean, double& Variance);
std::int32_t MeanVarArray(const TIntArray& Data, std::int32_t Lo1, std::int32_t Hi1, double& Mean,
                          double& Variance);
std::int32_t MeanVarArray(const TDouble2DArray& Data, std::int32_t Lo1, std::int32_t Lo2,
                          std::int32_t Hi1, std::int32_t Hi2, double& Mean, double& Variance);
std::int32_t MeanVarArray(const TInt2DArray& Data, std::int32_t Lo1, std::int32_t Lo2,
                          std::int32_t Hi1, std::int32_t Hi2, double& Mean, double& Variance);

/// Mean absolute deviation from the mean, (1/n) sum |x - mean|, of the first NumData
/// elements. Code 0, -1 (empty array) or -2 (NumData below 1 or above the length); MeanDev
/// 0.0 on failure.
std::int32_t MeanAbsDev(const TDoubleArray& Data, std::int32_t NumData, double& MeanDev);
std::int32_t MeanAbsDev(const TIntArray& Data, std::int32_t NumData, double& MeanDev);

/// Largest element; the first of equal maxima wins. Without elements the result is
/// kMaxArrayEmpty (-2147483648) and the indices are left as they were. The forms with
/// indices report the 0-based position (2D: outer index, inner index).
double MaxArray(const TDoubleArray& Data);
std::int32_t MaxArray(const TIntArray& Data);
double MaxArray(const TDouble2DArray& Data);
std::int32_t MaxArray(const TInt2DArray& Data);
double MaxArray(const TDouble3DArray& Data);
std::int32_t MaxArray(const TInt3DArray& Data);
double MaxArray(const TDouble4DArray& Data);
std::int32_t MaxArray(const TInt4DArray& Data);
double MaxArray(const TDoubleArray& Data, std::int32_t& Index);
std::int32_t MaxArray(const TIntArray& Data, std::int32_t& Index);
double MaxArray(const TDouble2DArray& Data, std::int32_t& Index1, std::int32_t& Index2);
std::int32_t MaxArray(const TInt2DArray& Data, std::int32_t& Index1, std::int32_t& Index2);

/// Smallest element, mirroring MaxArray (strictly smaller replaces, so the first of equal
/// minima wins); without elements the result is kMinArrayEmpty (2147483647).
double MinArray(const TDoubleArray& Data);
std::int32_t MinArray(const TIntArray& Data);
double MinArray(const TDouble2DArray& Data);
std::int32_t MinArray(const TInt2DArray& Data);
double MinArray(const TDouble3DArray& Data);
std::int32_t MinArray(const TInt3DArray& Data);
double MinArray(const TDouble4DArray& Data);
std::int32_t MinArray(const TInt4DArray& Data);
double MinArray(const TDoubleArray& Data, std::int32_t& Index);
std::int32_t MinArray(const TIntArray& Data, std::int32_t& Index);
double MinArray(const TDouble2DArray& Data, std::int32_t& Index1, std::int32_t& Index2);
std::int32_t MinArray(const TInt2DArray& Data, std::int32_t& Index1, std::int32_t& Index2);

/// Smallest and largest element of the whole array in one scan. Code 0, or -1 when the
/// array has no element at all (ragged arrays: empty rows are skipped); both results 0 first.
std::int32_t MinMaxArray(const TSingleArray& Data, float& Minimum, float& Maximum);
std::int32_t MinMaxArray(const TDoubleArray& Data, double& Minimum, double& Maximum);
std::int32_t MinMaxArray(const TIntArray& Data, std::int32_t& Minimum, std::int32_t& Maximum);
std::int32_t MinMaxArray(const TDouble2DArray& Data, double& Minimum, double& Maximum);
std::int32_t MinMaxArray(const TInt2DArray& Data, std::int32_t& Minimum, std::int32_t& Maximum);
std::int32_t MinMaxArray(const TDouble3DArray& Data, double& Minimum, double& Maximum);
std::int32_t MinMaxArray(const TInt3DArray& Data, std::int32_t& Minimum, std::int32_t& Maximum);
std::int32_t MinMaxArray(const TDouble4DArray& Data, double& Minimum, double& Maximum);
std::int32_t MinMaxArray(const TInt4DArray& Data, std::int32_t& Minimum, std::int32_t& Maximum);

/// Extremes of a sub-range with their 0-based positions (first of equals); code 0 / -1 / -2,
/// values and positions 0 on failure.
std::int32_t MinMaxArray(const TSingleArray& Data, std::int32_t Lo1, std::int32_t Hi1,
                         float& Minimum, float& Maximum, std::int32_t& MinIx, std::int32_t& MaxIx);
std::int32_t MinMaxArray(const TDoubleArray& Data, std::int32_t Lo1, std::int32_t Hi1,
                         double& Minimum, double& Maximum, std::int32_t& MinIx,
                         std::int32_t& MaxIx);
std::int32_t MinMaxArray(const TIntArray& Data, std::int32_t Lo1, std::int32_t Hi1,
                         std::int32_t& Minimum, std::int32_t& Maximum, std::int32_t& MinIx,
                         std::int32_t& MaxIx);
std::int32_t MinMaxArray(const TDouble2DArray& Data, std::int32_t Lo1, std::int32_t Lo2,
                         std::int32_t Hi1, std::int32_t Hi2, double& Minimum, double& Maximum,
                         std::int32_t& MinIx1, std::int32_t& MinIx2, std::int32_t& MaxIx1,
                         std::int32_t& MaxIx2);
std::int32_t MinMaxArray(const TInt2DArray& Data, std::int32_t Lo1, std::int32_t Lo2,
                         std::int32_t Hi1, std::int32_t Hi2, std::int32_t& Minimum,
                         std::int32_t& Maximum, std::int32_t& MinIx1, std::int32_t& MinIx2,
                         std::int32_t& MaxIx1, std::int32_t& MaxIx2);

}  // namespace quv
