// Plane geometry helpers: distances, angles, orientation and intersection of segments,
// points in and confined to rectangles.
//
// Rectangles are given by two corners in either order; every test orders the coordinates
// first, so a rectangle with Left > Right or Top > Bottom means the same region as its
// normalised form. Regions are closed: their border belongs to them.
#pragma once

#include <cstdint>

#include "quv/base/types.h"

namespace quv {

/// Status results of CcwTriangle.
inline constexpr std::int32_t kCounterClockwise = 1;
inline constexpr std::int32_t kClockwise = -1;
inline constexpr std::int32_t kCollinearBetween = 0;

/// sqrt((x2-x1)^2 + (y2-y1)^2), in extended precision (no overflow for any finite doubles).
double EuclideanDistance(double x1, double y1, double x2, double y2);
/// Distance between two points.
double EuclideanDistance(const TPointDouble& P1, const TPointDouble& P2);

/// Angle of the vector (dx, dy) against the x axis, in radians in [0, 2 pi]. A vertical
/// vector gives pi/2 upwards and 3pi/2 downwards; the zero vector also gives 3pi/2.
double AngleToXAxis(double dx, double dy);
/// a reduced into [-180, 180) degrees. NaN and infinities give NaN.
double CanonicalAngleDegrees(double a);
/// a reduced into [-pi, pi] radians. NaN and infinities give NaN.
double CanonicalAngleRadians(double a);

/// Distance of P from the rectangle R: 0 inside or on the border, else the distance to the
/// nearest point of the border.
double DistFromRect(const TPointDouble& P, const TRectDouble& R);
/// The same for an integer rectangle.
double DistFromRect(const TPointDouble& P, const TRectInt& R);

/// Distance of P from the axis-parallel ellipse inscribed in the rectangle R: 0 inside or on
/// the ellipse, else the distance to the nearest point of the ellipse (found by bisection on
/// the Lagrange parameter; exact to the last bits). A flat ellipse is a segment.
double DistFromEllipse(const TPointDouble& P, const TRectDouble& R);

/// Distance of P from the segment A-B (from A when the segment has no length).
double DistanceToSegment(const TPointDouble& P, const TPointDouble& A, const TPointDouble& B);

/// Orientation of the triple P0, P1, P2: kCounterClockwise (1) when P0 -> P1 -> P2 turns left,
/// kClockwise (-1) when it turns right. For collinear points: -1 when P2 lies behind P0, +1
/// when it lies beyond P1, 0 (kCollinearBetween) when it lies on the segment P0-P1.
std::int32_t CcwTriangle(const TPointDouble& P0, const TPointDouble& P1, const TPointDouble& P2);

/// True when the closed segments A1-A2 and B1-B2 have a point in common: crossing, touching
/// (an end point on the other segment, a shared end point) and collinear overlap all count.
bool SegmentsIntersect(const TPointDouble& A1, const TPointDouble& A2, const TPointDouble& B1,
                       const TPointDouble& B2);

/// True when P lies in the rectangle R, border included.
bool WithinRect(const TPointDouble& P, const TRectDouble& R);
/// The same for an integer rectangle.
bool WithinRect(const TPointDouble& P, const TRectInt& R);

/// P moved to the nearest point of the rectangle R (unchanged when inside).
TPointDouble ConfinePointToRect(const TPointDouble& P, const TRectDouble& R);
/// The same for an integer rectangle.
TPointDouble ConfinePointToRect(const TPointDouble& P, const TRectInt& R);

}  // namespace quv
