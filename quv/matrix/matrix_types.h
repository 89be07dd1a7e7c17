// Enumerations and event types of the matrix unit.
#pragma once

#include <cstdint>
#include <functional>

#include "quv/base/component.h"

namespace quv {

/// Matrix norms (TMatrix::Norm).
enum TNormType : std::uint8_t {
  ntColwise,   ///< largest sum of absolute values of a column
  ntRowwise,   ///< largest sum of absolute values of a row
  ntSpectral,  ///< largest singular value
  ntFrobenius  ///< square root of the sum of all squares
};

/// Distance between two rows (objects) of a matrix, x and y being the two rows.
enum TDistMode : std::uint8_t {
  dmEuclid,       ///< sqrt(sum (x - y)^2)
  dmEuclidSqr,    ///< sum (x - y)^2
  dmManhattan,    ///< sum |x - y|
  dmMaximum,      ///< max |x - y| (Chebyshev)
  dmCosine,       ///< 1 - x.y / (|x| |y|); 1 when either row is all zero
  dmCorrelation,  ///< 1 - Pearson r of the two rows; 1 when either row is constant
  dmUser          ///< whatever OnCalcDistance reports (0 when it is not assigned)
};

/// Direction of an operation that works column by column or row by row.
enum TApplyColRow : std::uint8_t {
  acrColumns,  ///< along each column (down the rows)
  acrRows      ///< along each row (across the columns)
};

/// User distance between rows row1 and row2 (1-based) of the sender.
using TOnCalcDistanceEvent =
    std::function<void(TComponent* sender, std::int32_t row1, std::int32_t row2, double& distance)>;

}  // namespace quv
