// Linear interpolation in tables: an equidistant table, a table of (x, y) pivots, and bilinear
// interpolation between the four corners of a rectangle.
#pragma once

#include "quv/base/types.h"

namespace quv {

/// Linear interpolation in an equidistant table: Table[0] sits at FirstX, Table[n-1] at LastX
/// and the others evenly between; FirstX may be above LastX (a descending axis). Outside the
/// range the line through the two outermost values on that side is continued. A NaN x,
/// FirstX or LastX yields NaN. Raises EQUVMath1Error "InterpolTable: pivot array must contain
/// at least 2 values" or "InterpolTable: specified range of pivot array is zero".
double InterpolTable(double x, double FirstX, double LastX, const TDoubleArray& Table);
/// The same for a table of Integers.
double InterpolTable(double x, double FirstX, double LastX, const TIntArray& Table);

/// Linear interpolation between pivots: Table[0] holds the pivot x values (ascending or
/// descending), Table[1] the y values; the number of pivots is that of complete (x, y) pairs.
/// Outside the pivot range the straight line through the two pivots at the nearer end is
/// continued when Extrapolate is set; otherwise the result is 0. A NaN x yields NaN.
/// Raises EQUVMath1Error "InterpolXYTable: pivot array must contain at least 2 rows" or
/// "InterpolXYTable: pivot array must contain 2 columns".
double InterpolXYTable(double x, const TDouble2DArray& Table, bool Extrapolate);

/// Bilinear interpolation in a rectangle given by its corner values: z00 at (0, 0), z10 at
/// (1, 0), z01 at (0, 1) and z11 at (1, 1); x and y are the point's coordinates relative to
/// the rectangle (0..1 inside, beyond that the surface is continued). Interpolates along x
/// on both edges y = 0 and y = 1, then along y between the two results.
double InterpolZofXYRect(double x, double y, double z00, double z10, double z01, double z11);

}  // namespace quv
