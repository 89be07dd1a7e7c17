// Enumerations of the statistics unit: significance levels that index the tables of critical
// values, and the model and scaling selectors used by the tests and regressions.
#pragma once

#include <array>
#include <cstdint>

namespace quv {

/// Significance levels of the Kolmogorov-Smirnov table; the ordinal is the table column.
enum TSignifLevel : std::uint8_t { Dot20, Dot15, Dot10, Dot05, Dot01 };

/// The alpha of each TSignifLevel, indexed by its ordinal.
inline constexpr std::array<double, 5> kSignifLevelAlpha = {0.2, 0.15, 0.1, 0.05, 0.01};

/// Significance levels of Dixon's outlier table; the ordinal is the table column.
enum TSignifLevelEx : std::uint8_t {
  Dot001,
  Dot002,
  Dot005,
  Dot010,
  Dot020,
  Dot050,
  Dot100,
  Dot200,
  Dot500
};

/// The alpha of each TSignifLevelEx, indexed by its ordinal.
inline constexpr std::array<double, 9> kSignifLevelExAlpha = {0.001, 0.002, 0.005, 0.010, 0.020,
                                                              0.050, 0.100, 0.200, 0.500};

/// Version of Student's t test: paired, equal variances, unequal variances.
enum TtTestVersion : std::uint8_t { ttPaired, ttHomoScedastic, ttHeteroScedastic };

/// Regression model: multiple linear, linear discriminant, ridge.
enum TRegModelType : std::uint8_t { rmMLR, rmLDA, rmRR };

/// Scaling of partial least squares data: mean centring only, or standardising.
enum TPLSSclMode : std::uint8_t { scmCenter, scmStandardize };

}  // namespace quv
