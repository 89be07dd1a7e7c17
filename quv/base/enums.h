// Enumerations that several units take from the base package.
#pragma once

#include <cstdint>

namespace quv {

/// Selects rows or columns of a matrix (MeanVec, CopyFromVec).
enum TDims : std::uint8_t { dimRows, dimColumns };

/// Direction along which an edge vector is formed: one value per row or per column.
enum TOrientation : std::uint8_t { orRows, orColumns };

/// Operation that reduces a row or column to one value (EdgeVector).
enum TEdgeOp : std::uint8_t {
  eoSum,       ///< sum of the elements
  eoMean,      ///< arithmetic mean
  eoMin,       ///< smallest element
  eoMax,       ///< largest element
  eoStdDev,    ///< sample standard deviation (n - 1 in the denominator)
  eoVariance,  ///< sample variance
  eoSumSqr,    ///< sum of squares
  eoRange,     ///< largest minus smallest element
};

/// Text formats of an angle given in degrees.
enum TDegreeFormat : std::uint8_t {
  dfDecDegrees,  ///< decimal degrees: 12.5083
  dfDegMin,      ///< degrees and decimal minutes: 12 30.5'
  dfDegMinSec,   ///< degrees, minutes and decimal seconds: 12 30' 30"
};

/// Which decimal separator a number text may use.
enum TDecPSep : std::uint8_t {
  dsPoint,  ///< "." only
  dsComma,  ///< "," only
  dsBoth,   ///< either "." or ","
};

/// Language of month and weekday names in date texts.
enum TLanguage : std::uint8_t { lanEnglish, lanGerman };

}  // namespace quv
