// Rounding: integer ceiling and floor, clamped rounding, rounding to the 1-2-5 grid and to
// nice angle steps, histogram bins and the tick layout of an axis.
#pragma once

#include <cstdint>

#include "quv/base/types.h"

namespace quv {

/// Integer ceiling: round(x), plus 1 if that is below x. Rounding is to nearest with ties to
/// even. Results beyond the Integer range saturate at its ends; NaN gives 0.
std::int32_t IntPos(double x);
/// Integer floor: round(x), minus 1 if that is above x. Saturates like IntPos; NaN gives 0.
std::int32_t IntNeg(double x);

/// round(x) (ties to even) clamped into [Low, High]; the bounds may come in either order.
/// NaN gives the lower bound.
std::int64_t RoundLimit(double x, std::int64_t Low, std::int64_t High);

/// Rounds to the nearest value of the grid 1, 2, 5, 10, 20, 50... (mantissa thresholds 1.5,
/// 3 and 8). The sign is kept, 0 gives 0, NaN and infinities come back unchanged. A result
/// >= 1 is an integer. The mantissa is taken to 14 significant digits, so that 0.3 counts
/// as 3 tenths and not as the double just below it.
double Round125(double x);
/// Rounds up (towards +infinity) to the 1-2-5 grid: 1.2 -> 2, -1.2 -> -1.
double RoundPos125(double x);
/// Rounds down (towards -infinity) to the 1-2-5 grid: 1.2 -> 1, -1.2 -> -2.
double RoundNeg125(double x);

/// Moves an angle step given as degrees, minutes and seconds to the nearest nice step of
/// 1, 2, 3, 5, 10, 15, 20, 30, 60, 90, 180, 360 degrees (or 1..60 minutes or seconds when the
/// step is below one degree or one minute), upwards when RoundUp is set, else downwards.
/// Minutes and seconds above 59 count as 59; any negative part sets all three to 0.
void RoundDegrees(std::int32_t& Deg, std::int32_t& Min, std::int32_t& Sec, bool RoundUp);

/// Lower edge of the histogram bin that holds x, for bins of BinWidth aligned on RefPoint:
/// floor((x - RefPoint) / BinWidth) * BinWidth + RefPoint. Offset receives x minus that edge.
double HistoBinRef(double x, double RefPoint, double BinWidth, double& Offset);

/// Tick layout of an axis from Low to High with about NrTicks intervals (at least 1): the
/// tick distance is the range divided by NrTicks, rounded to the 1-2-5 grid; FirstTick is
/// the smallest multiple of it that is >= the lower bound; NrDecPlaces is the number of
/// decimal places that print every tick exactly (0 for distances >= 1). The bounds may come
/// in either order. An empty range gives distance 0 and FirstTick at the bound; a range that
/// is not finite gives NaN for both and 0 decimal places.
void CalcScalePars(std::int32_t NrTicks, Extended Low, Extended High, Extended& FirstTick,
                   Extended& TickDist, std::uint16_t& NrDecPlaces);

}  // namespace quv
