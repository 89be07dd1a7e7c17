#include "quv/math1/rounding.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "quv/base/constants.h"

namespace quv {
namespace {

// Rounds to nearest, ties to even, and saturates into the Integer range (NaN gives 0).
std::int32_t RoundToInt32(long double r) {
  if (std::isnan(r)) return 0;
  if (r <= uc_MinInt) return uc_MinInt;
  if (r >= uc_MaxInt) return uc_MaxInt;
  return static_cast<std::int32_t>(r);
}

// Grid mantissas. Each picker receives the magnitude's mantissa m (1 <= m < 10) and whether x
// is negative, and returns 1, 2, 5 or 10.
int NearestGrid(Extended m, bool /*negative*/) {
  if (m < 1.5L) return 1;
  if (m < 3.0L) return 2;
  if (m < 8.0L) return 5;
  return 10;
}

int MagnitudeDown(Extended m) {
  if (m < 2.0L) return 1;
  if (m < 5.0L) return 2;
  if (m < 10.0L) return 5;
  return 10;
}

int MagnitudeUp(Extended m) {
  if (m > 5.0L) return 10;
  if (m > 2.0L) return 5;
  if (m > 1.0L) return 2;
  return 1;
}

int DownwardGrid(Extended m, bool negative) {
  return negative ? MagnitudeUp(m) : MagnitudeDown(m);
}

int UpwardGrid(Extended m, bool negative) {
  return negative ? MagnitudeDown(m) : MagnitudeUp(m);
}

template <class Pick>
double RoundToGrid(double x, Pick pick) {
  if (x == 0.0 || !std::isfinite(x)) return x;
  const Extended magnitude = std::fabs(static_cast<Extended>(x));
  Extended e = std::log(magnitude) / uc_Ln10;
  // Exact powers of ten whose logarithm came out a hair off.
  if (std::fabs(e - std::round(e)) <= 1e-14L) e = std::round(e);
  auto k = static_cast<int>(std::floor(e));
  // The mantissa, with the argument's representation noise removed (14 significant digits).
  Extended m = magnitude / std::pow(10.0L, static_cast<Extended>(k));
  m = std::round(m * 1e13L) / 1e13L;
  if (m >= 10.0L) {
    m /= 10.0L;
    ++k;
  } else if (m < 1.0L) {
    m *= 10.0L;
    --k;
  }
  const int g = pick(m, x < 0.0);
  // g * 10^k, rounded once: a division by an exact power of ten where one is available.
  double result = 0.0;
  if (k < 0 && k >= -22) {
    result = g / std::pow(10.0, -k);
  } else {
    result = static_cast<double>(g * std::pow(10.0L, static_cast<Extended>(k)));
  }
  if (x < 0.0) return -result;
  return result >= 1.0 ? std::nearbyint(result) : result;
}

constexpr std::array<std::int32_t, 12> kNiceSteps = {1, 2, 3, 5, 10, 15, 20, 30, 60, 90, 180, 360};

// Index (0-based) of the nice step, among the first count ones, next to v: the first one
// >= v when rounding up (the last one if none is), else the last one <= v (the first one
// if none is). Steps and v are compared in the unit `scale`.
int NiceStepIndex(std::int64_t v, std::int64_t scale, int count, bool round_up) {
  if (round_up) {
    int i = 0;
    while (i < count - 1 && kNiceSteps[static_cast<std::size_t>(i)] * scale < v)
      ++i;
    return i;
  }
  int i = count - 1;
  while (i > 0 && kNiceSteps[static_cast<std::size_t>(i)] * scale > v)
    --i;
  return i;
}

}  // namespace

std::int32_t IntPos(double x) {
  const long double r = std::nearbyint(static_cast<long double>(x));
  const std::int32_t i = RoundToInt32(r);
  return (r < x && i < uc_MaxInt) ? i + 1 : i;
}

std::int32_t IntNeg(double x) {
  const long double r = std::nearbyint(static_cast<long double>(x));
  const std::int32_t i = RoundToInt32(r);
  return (r > x && i > uc_MinInt) ? i - 1 : i;
}

std::int64_t RoundLimit(double x, std::int64_t Low, std::int64_t High) {
  if (Low > High) std::swap(Low, High);
  if (std::isnan(x)) return Low;
  const double r = std::nearbyint(x);
  // 2^63 bounds the doubles that convert to Int64; beyond them the clamp decides anyway.
  if (r < -0x1p63) return Low;
  if (r >= 0x1p63) return High;
  return std::clamp(static_cast<std::int64_t>(r), Low, High);
}

double Round125(double x) {
  return RoundToGrid(x, NearestGrid);
}

double RoundPos125(double x) {
  return RoundToGrid(x, UpwardGrid);
}

double RoundNeg125(double x) {
  return RoundToGrid(x, DownwardGrid);
}

void RoundDegrees(std::int32_t& Deg, std::int32_t& Min, std::int32_t& Sec, bool RoundUp) {
  if (Deg < 0 || Min < 0 || Sec < 0) {
    Deg = Min = Sec = 0;
    return;
  }
  Min = std::min(Min, 59);
  Sec = std::min(Sec, 59);
  // The angle in seconds; comparing integers keeps the steps exact.
  const std::int64_t v = std::int64_t{Deg} * 3600 + std::int64_t{Min} * 60 + Sec;
  if (Deg > 0) {
    Deg = kNiceSteps[static_cast<std::size_t>(NiceStepIndex(v, 3600, 12, RoundUp))];
    Min = Sec = 0;
  } else if (Min > 0) {
    Min = kNiceSteps[static_cast<std::size_t>(NiceStepIndex(v, 60, 9, RoundUp))];
    Sec = 0;
    if (Min == 60) {
      Deg = 1;
      Min = 0;
    }
  } else if (Sec > 0) {
    Sec = kNiceSteps[static_cast<std::size_t>(NiceStepIndex(v, 1, 9, RoundUp))];
    if (Sec == 60) {
      Min = 1;
      Sec = 0;
    }
  }
}

double HistoBinRef(double x, double RefPoint, double BinWidth, double& Offset) {
  const Extended ref = RefPoint;
  const Extended width = BinWidth;
  const Extended edge = std::floor((x - ref) / width) * width + ref;
  Offset = static_cast<double>(x - edge);
  return static_cast<double>(edge);
}

void CalcScalePars(std::int32_t NrTicks, Extended Low, Extended High, Extended& FirstTick,
                   Extended& TickDist, std::uint16_t& NrDecPlaces) {
  NrDecPlaces = 0;
  if (!std::isfinite(Low) || !std::isfinite(High) || !std::isfinite(High - Low)) {
    FirstTick = TickDist = std::numeric_limits<Extended>::quiet_NaN();
    return;
  }
  if (Low > High) std::swap(Low, High);
  TickDist = Round125(static_cast<double>((High - Low) / std::max(NrTicks, 1)));
  if (TickDist == 0.0L) {
    FirstTick = Low;
    return;
  }
  FirstTick = std::ceil(Low / TickDist) * TickDist;
  // A grid step 1, 2 or 5 times 10^k needs -k decimal places when k < 0.
  const Extended e = std::floor(std::log10(TickDist) + 1e-12L);
  if (e < 0) NrDecPlaces = static_cast<std::uint16_t>(std::min<Extended>(-e, 400.0L));
}

}  // namespace quv
