// Functions on polygons given as arrays of points.
//
// A polygon P_0 .. P_m is closed implicitly: the last point connects to the first. Functions
// that need at least one point raise EQUVMath2Error "<Function>: polygon has no points";
// the others give their documented value for degenerate polygons (no, one or two points, all
// points equal, collinear points). NaN coordinates make the numeric results NaN and the tests
// false; Convex2DHull refuses them.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "quv/base/base.h"

namespace quv {

/// A polygon, a polyline or a set of points of the plane.
using TPointDoubleArray = std::vector<TPointDouble>;

namespace polymsg {
inline constexpr std::string_view kNoPoints = "polygon has no points";
inline constexpr std::string_view kBadTolerance = "tolerance must be a non-negative number";
inline constexpr std::string_view kNotFinite = "coordinates must be finite numbers";
}  // namespace polymsg

/// Signed area 0.5 * ((x_m - x_0)(y_m + y_0) + sum_{i<m} (x_i - x_{i+1})(y_i + y_{i+1})):
/// positive for counter-clockwise order, negative for clockwise. 0 for fewer than 3 points.
double PolygonArea(const TPointDoubleArray& Polygon);

/// The same area, and in NrOfCrossings a count of self-intersections: it starts at minus the
/// number of points and adds 1 for every pair of edges (P_i P_i+1, P_j P_j+1), i < j <= m - 1,
/// and every edge P_i P_i+1 against the closing edge P_m P_0, that touch or cross
/// (SegmentsIntersect). Neighbouring edges meet at their shared corner, which the start value
/// cancels, so a simple polygon reports 0 and a figure eight 1. A point lying on another edge
/// counts as a contact. The rule is kept as it is for degenerate polygons too: 0 for no
/// point, -1 for one or two points. O(m^2).
double PolygonArea(const TPointDoubleArray& Polygon, std::int32_t& NrOfCrossings);

/// True when (x, y) lies strictly inside the polygon (even-odd rule, so the holes of a
/// self-intersecting polygon are outside). Each edge gives t = -1 when a ray from the point
/// towards +x crosses it, 0 when the point lies on it, +1 otherwise; the product starts with
/// -t(P_m P_0) and is multiplied by t(P_i-1 P_i) for i = 1..m; the point is inside when the
/// product is exactly 1. Points on the border are therefore outside.
bool PointIsInsidePolygon(double x, double y, const TPointDoubleArray& Polygon);

/// Perimeter, the closing edge included: 0 for fewer than 2 points, twice the distance for 2.
double PolygonLength(const TPointDoubleArray& Polygon);

/// The smallest axis-parallel rectangle holding every point: Left/Right the least/greatest x,
/// Top/Bottom the least/greatest y. Raises "OuterRectOfPolygon: polygon has no points".
TRectDouble OuterRectOfPolygon(const TPointDoubleArray& Polygon);

/// Replaces P_1 .. P_m by their differences to the previous point (P_0 stays absolute).
void ConvertToDiffPolygon(TPointDoubleArray& Polygon);
/// The inverse: P_i := P_0 + sum of the differences up to i (summed in extended precision).
/// A round trip restores the points up to rounding.
void ConvertFromDiffPolygon(TPointDoubleArray& Polygon);

/// Distance of (x, y) from the border of the polygon (its nearest edge, closing edge
/// included), whether the point is inside or outside; the distance to the point itself for a
/// one-point polygon. Raises "DistanceToPolygon: polygon has no points".
double DistanceToPolygon(double x, double y, const TPointDoubleArray& Polygon);

/// The polygon with fewer points: the outline P_0 .. P_m, P_0 is simplified by the
/// Ramer-Douglas-Peucker rule, so every dropped point lies within Tolerance of the kept
/// outline. P_0 is always kept; repeated points go; the order is kept. Raises "ReducePolygon:
/// tolerance must be a non-negative number".
TPointDoubleArray ReducePolygon(const TPointDoubleArray& Polygon, double Tolerance);

/// Convex hull of the points (Andrew's monotone chain, O(n log n)): the corners in
/// counter-clockwise order, starting at the point of least x (least y among those), without
/// repeated or collinear points. All points equal give that one point, collinear points
/// their two ends, no points an empty hull. Raises "Convex2DHull: coordinates must be finite
/// numbers" for a NaN or infinite coordinate.
TPointDoubleArray Convex2DHull(const TPointDoubleArray& Points);

/// True when (x, y) lies inside or on the border of the convex polygon Hull (the corners in
/// either order, as Convex2DHull gives them). A one-point hull holds only that point, a
/// two-point hull the segment between; an empty one nothing.
bool PointIsInsideConvexHull(double x, double y, const TPointDoubleArray& Hull);

}  // namespace quv
