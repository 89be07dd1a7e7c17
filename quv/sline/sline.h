// Chief header of the straight-line unit: TSLine, one line in the plane in the general form
// A*x + B*y + C = 0, with its constructions (through two points, through a point at an angle,
// from slope and intercept, parallel and normal lines) and measurements (intersection, angle
// between lines, signed distance, slope, intercept, direction, clipping against a box).
//
// Errors are EQUVSLineError with a bare message (no component name). That class derives from
// std::runtime_error directly, not from EQUVError, so a handler for the library's errors does
// not catch it. All angles are in radians; points are given as x, then y.
#pragma once

#include <string_view>

#include "quv/base/base.h"

namespace quv {

/// Messages of the straight line (bare text).
namespace msg {
inline constexpr std::string_view kSLineABZero = "parameter A and B must not both be zero";
inline constexpr std::string_view kSLineNoKDForm = "cannot convert to k-d-form if ParB is zero";
inline constexpr std::string_view kSLineNoX = "cannot calculate x";
inline constexpr std::string_view kSLineNoY = "cannot calculate y";
inline constexpr std::string_view kSLineSlopeInfinite = "slope is infinite";
inline constexpr std::string_view kSLineNoIntercept =
    "cannot calculate intercept (line is parallel to y axis)";
}  // namespace msg

/// Divisor that CalcX and CalcY use instead of a zero coefficient when SubstituteInf is set.
inline constexpr double kSLineSubstituteDivisor = 1e-100;

/// A straight line A*x + B*y + C = 0. A new line is y = 0 (A = 0, B = 1, C = 0). The setters
/// keep A and B from both becoming zero; the constructions assign all three coefficients at
/// once and do not check (LineFrom2Points refuses two equal points instead).
class TSLine : public TComponent {
 public:
  explicit TSLine(TComponent* owner = nullptr) : TComponent(owner) {}

  double ParA() const { return a_; }
  double ParB() const { return b_; }
  double ParC() const { return c_; }
  /// When true, CalcX and CalcY divide by kSLineSubstituteDivisor instead of raising on a
  /// zero coefficient.
  bool SubstituteInf() const { return substitute_inf_; }

  /// A := a. Raises "parameter A and B must not both be zero" and keeps A when a = 0 and B = 0.
  void SetParA(double a);
  /// B := b. Raises "parameter A and B must not both be zero" and keeps B when b = 0 and A = 0.
  void SetParB(double b);
  /// C := c, without a check.
  void SetParC(double c) { c_ = c; }
  void SetSubstituteInf(bool on) { substitute_inf_ = on; }

  /// The line through (x1, y1) and (x2, y2): A = y1 - y2, B = x2 - x1, C = x1*y2 - y1*x2.
  /// Returns false and keeps the line when the two points are equal.
  bool LineFrom2Points(double x1, double y1, double x2, double y2);
  /// The line y = k*x + d: A = k, B = -1, C = d.
  void LineFromSlopeIcpt(double k, double d);
  /// The line through (x, y) at the angle phi to the x axis: A = -sin phi, B = cos phi.
  void LineThroughPoint(double x, double y, double phi);
  /// The line through (x, y) parallel to Line (A and B copied from it).
  void ParallelLine(double x, double y, const TSLine& Line);
  /// The line through (x, y) normal to Line: A = -Line.B, B = Line.A.
  void NormalLine(double x, double y, const TSLine& Line);

  /// Intersection with Line into (x, y). Returns false and leaves x and y untouched when the
  /// lines are parallel (determinant A*Line.B - Line.A*B exactly 0).
  bool InterSection(const TSLine& Line, double& x, double& y) const;
  /// Acute angle between this line and Line, in [0, pi/2]; exactly pi/2 when they are normal.
  double AngleBetweenLines(const TSLine& Line) const;
  /// Signed distance of (x, y) from the line: (A*x + B*y + C) / sqrt(A^2 + B^2).
  double Distance(double x, double y) const;
  /// Slope k and intercept d of y = k*x + d. Raises "cannot convert to k-d-form if ParB is
  /// zero" (k and d untouched) when B = 0.
  void CalcKDForm(double& k, double& d) const;
  /// x of the point at height y: (-y*B - C) / A. A = 0 raises "cannot calculate x" unless
  /// SubstituteInf is set.
  double CalcX(double y) const;
  /// y of the point at x: (-x*A - C) / B. B = 0 raises "cannot calculate y" unless
  /// SubstituteInf is set.
  double CalcY(double x) const;
  /// -A/B; raises "slope is infinite" when B = 0.
  double GetSlope() const;
  /// -C/B; raises "cannot calculate intercept (line is parallel to y axis)" when B = 0.
  double GetIntercept() const;
  /// Direction angle of the line in [0, 2 pi): arctan(-A/B), moved by pi when B <= 0 and by
  /// 2 pi when B > 0 and A > 0. A vertical line (B = 0) starts from -pi/2 when A <= 0 and from
  /// +pi/2 when A > 0 and is moved by pi, which gives pi/2 and 3 pi/2.
  double GetDirect() const;

  /// End points of the part of the line inside the axis-parallel box with the opposite
  /// corners (BoxX1, BoxY1) and (BoxX2, BoxY2), given in any order (the smaller coordinate of
  /// each pair is the lower bound).
  ///
  /// The line is evaluated with CalcY at the left and then the right edge, and with CalcX at
  /// the bottom and then the top edge, with SubstituteInf switched on for the duration (it is
  /// restored afterwards); every result within the box, bounds
  /// included, is a crossing. The first crossing goes to (x1, y1), the next one that differs
  /// from it to (x2, y2); a corner met by two edges therefore counts once, and further
  /// crossings are ignored. With exactly one crossing (a line that touches a corner) both
  /// output points receive it. Without a crossing the result is false and the outputs are
  /// untouched.
  ///
  /// A line along an edge: a horizontal one yields the two corners of that edge. For a
  /// vertical line CalcY divides by kSLineSubstituteDivisor, which gives y = 0 when the line
  /// runs exactly along a vertical edge; if 0 lies in the y range of the box, that point is
  /// the first crossing and the second is the bottom corner of the edge.
  bool ClipBox(double BoxX1, double BoxY1, double BoxX2, double BoxY2, double& x1, double& y1,
               double& x2, double& y2);

 private:
  double a_ = 0.0;
  double b_ = 1.0;
  double c_ = 0.0;
  bool substitute_inf_ = false;
};

}  // namespace quv
