#include "quv/math1/interpolation.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "quv/base/errors.h"

namespace quv {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

// Interpolation along an ascending axis from lo (value at(0)) to hi (value at(n-1)), with
// the outermost pair of values continued beyond either end.
template <class At>
Extended AlongAscendingAxis(const At& at, std::size_t n, Extended x, Extended lo, Extended hi) {
  const auto steps = static_cast<Extended>(n - 1);
  const Extended span = hi - lo;
  if (x < lo) return at(0) + (at(1) - at(0)) * steps * (x - lo) / span;
  if (x > hi) return at(n - 1) + (at(n - 1) - at(n - 2)) * steps * (x - hi) / span;
  if (x == hi) return at(n - 1);
  const Extended w = steps * (x - lo) / span;
  if (!(w >= 0.0L && w < steps)) return at(n - 1);  // a rounding step past hi, or no number
  const Extended whole = std::trunc(w);
  const auto i = static_cast<std::size_t>(whole);
  return at(i) + (at(i + 1) - at(i)) * (w - whole);
}

template <class T>
double InterpolEquidistant(double x, double first_x, double last_x, const std::vector<T>& table) {
  if (table.size() < 2)
    RaiseFunctionError<EQUVMath1Error>("InterpolTable",
                                       "pivot array must contain at least 2 values");
  if (last_x - first_x == 0.0)
    RaiseFunctionError<EQUVMath1Error>("InterpolTable", "specified range of pivot array is zero");
  if (std::isnan(x) || std::isnan(first_x) || std::isnan(last_x)) return kNaN;
  const std::size_t n = table.size();
  if (first_x < last_x) {
    auto at = [&](std::size_t i) { return static_cast<Extended>(table[i]); };
    return static_cast<double>(AlongAscendingAxis(at, n, x, first_x, last_x));
  }
  // Descending axis: positions count from the LastX end, which holds Table[n-1].
  auto from_end = [&](std::size_t i) { return static_cast<Extended>(table[n - 1 - i]); };
  return static_cast<double>(AlongAscendingAxis(from_end, n, x, last_x, first_x));
}

}  // namespace

double InterpolTable(double x, double FirstX, double LastX, const TDoubleArray& Table) {
  return InterpolEquidistant(x, FirstX, LastX, Table);
}

double InterpolTable(double x, double FirstX, double LastX, const TIntArray& Table) {
  return InterpolEquidistant(x, FirstX, LastX, Table);
}

double InterpolXYTable(double x, const TDouble2DArray& Table, bool Extrapolate) {
  std::size_t n = Table.empty() ? 0 : Table[0].size();
  if (Table.size() >= 2) n = std::min(n, Table[1].size());
  if (n < 2)
    RaiseFunctionError<EQUVMath1Error>("InterpolXYTable",
                                       "pivot array must contain at least 2 rows");
  if (Table.size() != 2)
    RaiseFunctionError<EQUVMath1Error>("InterpolXYTable", "pivot array must contain 2 columns");
  if (std::isnan(x)) return kNaN;
  const TDoubleArray& px = Table[0];
  const TDoubleArray& py = Table[1];
  const Extended xe = x;
  // The line through pivots i and j, evaluated at x.
  auto line = [&](std::size_t i, std::size_t j) {
    return static_cast<double>(py[i] + (xe - px[i]) / (static_cast<Extended>(px[i]) - px[j]) *
                                           (static_cast<Extended>(py[i]) - py[j]));
  };
  const bool ascending = px[0] <= px[n - 1];
  const double low = ascending ? px[0] : px[n - 1];
  const double high = ascending ? px[n - 1] : px[0];
  if (x >= low && x <= high) {
    if (ascending) {
      std::size_t i = 0;
      while (i < n - 1 && !(x <= px[i]))
        ++i;
      return i == 0 ? py[0] : line(i, i - 1);
    }
    std::size_t i = n - 1;
    while (i > 0 && !(x <= px[i]))
      --i;
    return i == n - 1 ? py[n - 1] : line(i, i + 1);
  }
  if (!Extrapolate) return 0.0;
  // Continue the line at the nearer end: the first two pivots when x lies beyond px[0].
  const bool beyond_first = ascending ? x < px[0] : x > px[0];
  return beyond_first ? line(0, 1) : line(n - 1, n - 2);
}

double InterpolZofXYRect(double x, double y, double z00, double z10, double z01, double z11) {
  const Extended xe = x;
  const Extended bottom = z00 + (static_cast<Extended>(z10) - z00) * xe;
  const Extended top = z01 + (static_cast<Extended>(z11) - z01) * xe;
  return static_cast<double>(bottom + (top - bottom) * static_cast<Extended>(y));
}

}  // namespace quv
