#include "quv/math1/bounds.h"

#include <cmath>

#include "quv/base/types.h"

namespace quv {

double Squash(double x, double x0, double Slope, double Limit) {
  const Extended z = -2.0L * Slope * (static_cast<Extended>(x) - x0) / static_cast<Extended>(Limit);
  if (std::fabs(z) >= 200.0L) return z > 0.0L ? -Limit : Limit;
  return static_cast<double>((2.0L / (std::exp(z) + 1.0L) - 1.0L) * Limit);
}

}  // namespace quv
