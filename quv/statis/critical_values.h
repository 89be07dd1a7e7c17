// Critical values of outlier tests (Dixon's ratios, Grubbs' statistic) and the distribution of
// the Shapiro-Wilk W statistic.
#pragma once

#include <cstdint>

#include "quv/base/types.h"
#include "quv/statis/statis_types.h"

namespace quv {

/// Critical value of Dixon's outlier ratio for 3 <= n <= 100 at Level (tabulated); -1 for other
/// n or a Level outside the enumeration.
double DeanDixonCriticalValues(std::int32_t n, TSignifLevelEx Level);

/// Dixon's outlier test on the extreme values of Data. Sorts a copy and forms the ratio of the
/// low and of the high end that belongs to n (r10 for n = 3..7, r11 for 8..10, r21 for 11..13,
/// r22 for 14..100; a zero denominator gives 0). The larger ratio (the low end on a tie) goes
/// to Statistic and its extreme value to Suspect. Returns true when the tabulated critical
/// value at Level is smaller than the statistic (never for a Level outside the enumeration).
/// Raises EQUVStatisError "DeanDixonTest: number of data points is too low" for n < 3 and
/// "DeanDixonTest: number of data points is too high" for n > 100, changing nothing. NaN data
/// sort last and make the statistic NaN.
bool DeanDixonTest(const TDoubleArray& Data, TSignifLevelEx Level, double& Statistic,
                   double& Suspect);
/// The same test without the suspect value.
bool DeanDixonTest(const TDoubleArray& Data, TSignifLevelEx Level, double& Statistic);

/// Critical value of Grubbs' outlier statistic for n data at significance Alpha:
/// t = tDistriQuantile(1 - Alpha/(2 n) (two-sided) or 1 - Alpha/n (one-sided), n - 2) and
/// (n - 1)/sqrt(n) sqrt(t^2/(t^2 + n - 2)). -1 for n <= 2 or Alpha outside (0, 1).
double GrubbsCriticalValues(std::int32_t n, double Alpha, bool TwoSided);

/// Distribution of the Shapiro-Wilk statistic W of a complete sample of n values from a normal
/// distribution, by Royston's normalising transformation (Applied Statistics 44, 1995, AS R94;
/// exact for n = 3). Tail 0 gives P(W' <= W), the p-value of the test; any other Tail gives
/// P(W' >= W). 0 or 1 for W <= 0 or W >= 1; -1 for n outside 3..5000; NaN for NaN W.
double ShapiroWilkIntegral(double W, std::int32_t n, std::int32_t Tail);

}  // namespace quv
