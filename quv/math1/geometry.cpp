#include "quv/math1/geometry.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

#include "quv/base/constants.h"

namespace quv {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

struct Box {
  Extended left, right, low, high;  // low <= high on the y axis
};

template <class Rect>
Box Normalised(const Rect& r) {
  return {std::min<Extended>(r.Left, r.Right), std::max<Extended>(r.Left, r.Right),
          std::min<Extended>(r.Top, r.Bottom), std::max<Extended>(r.Top, r.Bottom)};
}

template <class Rect>
double DistFromBox(const TPointDouble& p, const Rect& rect) {
  const Box b = Normalised(rect);
  const Extended dx = std::max({b.left - p.X, 0.0L, p.X - b.right});
  const Extended dy = std::max({b.low - p.Y, 0.0L, p.Y - b.high});
  if (std::isnan(p.X) || std::isnan(p.Y)) return kNaN;
  return static_cast<double>(std::sqrt(dx * dx + dy * dy));
}

template <class Rect>
bool InBox(const TPointDouble& p, const Rect& rect) {
  const Box b = Normalised(rect);
  return b.left <= p.X && p.X <= b.right && b.low <= p.Y && p.Y <= b.high;
}

template <class Rect>
TPointDouble ClampToBox(const TPointDouble& p, const Rect& rect) {
  const Box b = Normalised(rect);
  auto clamp = [](double v, Extended low, Extended high) {
    if (v < low) return static_cast<double>(low);
    if (v > high) return static_cast<double>(high);
    return v;
  };
  return {clamp(p.X, b.left, b.right), clamp(p.Y, b.low, b.high)};
}

Extended Cross(const TPointDouble& o, const TPointDouble& a, const TPointDouble& b) {
  return (static_cast<Extended>(a.X) - o.X) * (static_cast<Extended>(b.Y) - o.Y) -
         (static_cast<Extended>(a.Y) - o.Y) * (static_cast<Extended>(b.X) - o.X);
}

// True when q, known to be collinear with a-b, lies within the bounding box of a-b.
bool OnSegment(const TPointDouble& a, const TPointDouble& b, const TPointDouble& q) {
  return std::min(a.X, b.X) <= q.X && q.X <= std::max(a.X, b.X) && std::min(a.Y, b.Y) <= q.Y &&
         q.Y <= std::max(a.Y, b.Y);
}

// Distance of (y0, y1), both >= 0, from the ellipse with semi-axes e0, e1 > 0 centred at the
// origin; 0 inside. Outside, the nearest point is x_i = e_i^2 y_i / (t + e_i^2) for the root
// t > 0 of F(t) = sum (e_i y_i / (t + e_i^2))^2 - 1, which decreases strictly on t > 0 (Eberly,
// "Distance from a Point to an Ellipse"). F(0) > 0 and F(sqrt(sum e_i^2 y_i^2)) <= 0 bracket
// it; bisection halves the bracket until it no longer shrinks.
Extended DistanceOutsideEllipse(Extended e0, Extended e1, Extended y0, Extended y1) {
  const Extended z0 = y0 / e0;
  const Extended z1 = y1 / e1;
  if (z0 * z0 + z1 * z1 <= 1.0L) return 0.0L;
  auto f = [&](Extended t) {
    const Extended a = e0 * y0 / (t + e0 * e0);
    const Extended b = e1 * y1 / (t + e1 * e1);
    return a * a + b * b - 1.0L;
  };
  Extended lo = 0.0L;
  Extended hi = std::sqrt(e0 * e0 * y0 * y0 + e1 * e1 * y1 * y1);
  for (int i = 0; i < 20000; ++i) {
    const Extended mid = lo + (hi - lo) / 2;
    if (!(mid > lo && mid < hi)) break;
    (f(mid) > 0.0L ? lo : hi) = mid;
  }
  const Extended t = lo + (hi - lo) / 2;
  const Extended x0 = e0 * e0 * y0 / (t + e0 * e0);
  const Extended x1 = e1 * e1 * y1 / (t + e1 * e1);
  return std::hypot(x0 - y0, x1 - y1);
}

}  // namespace

double EuclideanDistance(double x1, double y1, double x2, double y2) {
  const Extended dx = static_cast<Extended>(x2) - x1;
  const Extended dy = static_cast<Extended>(y2) - y1;
  return static_cast<double>(std::sqrt(dx * dx + dy * dy));
}

double EuclideanDistance(const TPointDouble& P1, const TPointDouble& P2) {
  return EuclideanDistance(P1.X, P1.Y, P2.X, P2.Y);
}

double AngleToXAxis(double dx, double dy) {
  const Extended two_pi = 2.0L * uc_Pi;
  if (dx == 0.0) return static_cast<double>(dy > 0.0 ? uc_Pi / 2.0L : 1.5L * uc_Pi);
  Extended a = std::atan(static_cast<Extended>(dy) / dx);
  if (dx < 0.0) a += uc_Pi;
  if (a < 0.0L) a += two_pi;
  if (a > two_pi) a -= two_pi;
  return static_cast<double>(a);
}

double CanonicalAngleDegrees(double a) {
  if (!std::isfinite(a)) return kNaN;
  const Extended r = a - 360.0L * std::floor((a + 180.0L) / 360.0L);
  const auto d = static_cast<double>(r);
  // Rounding to double may land on the open end of [-180, 180).
  return d >= 180.0 ? d - 360.0 : (d < -180.0 ? -180.0 : d);
}

double CanonicalAngleRadians(double a) {
  if (!std::isfinite(a)) return kNaN;
  const Extended two_pi = 2.0L * uc_Pi;
  const Extended r = a - two_pi * std::floor((a + uc_Pi) / two_pi);
  return static_cast<double>(std::clamp(r, -uc_Pi, uc_Pi));
}

double DistFromRect(const TPointDouble& P, const TRectDouble& R) {
  return DistFromBox(P, R);
}

double DistFromRect(const TPointDouble& P, const TRectInt& R) {
  return DistFromBox(P, R);
}

double DistFromEllipse(const TPointDouble& P, const TRectDouble& R) {
  const Box b = Normalised(R);
  const Extended cx = (b.left + b.right) / 2;
  const Extended cy = (b.low + b.high) / 2;
  const Extended e0 = (b.right - b.left) / 2;
  const Extended e1 = (b.high - b.low) / 2;
  const Extended y0 = std::fabs(P.X - cx);
  const Extended y1 = std::fabs(P.Y - cy);
  if (std::isnan(y0) || std::isnan(y1) || std::isnan(e0) || std::isnan(e1) || std::isinf(e0) ||
      std::isinf(e1))
    return kNaN;
  if (e0 == 0.0L || e1 == 0.0L) {
    // Flat: the segment along the longer axis (a point when both are 0).
    const Extended dx = std::max(y0 - e0, 0.0L);
    const Extended dy = std::max(y1 - e1, 0.0L);
    return static_cast<double>(std::sqrt(dx * dx + dy * dy));
  }
  return static_cast<double>(DistanceOutsideEllipse(e0, e1, y0, y1));
}

double DistanceToSegment(const TPointDouble& P, const TPointDouble& A, const TPointDouble& B) {
  const Extended vx = static_cast<Extended>(B.X) - A.X;
  const Extended vy = static_cast<Extended>(B.Y) - A.Y;
  const Extended wx = static_cast<Extended>(P.X) - A.X;
  const Extended wy = static_cast<Extended>(P.Y) - A.Y;
  const Extended len2 = vx * vx + vy * vy;
  Extended t = len2 > 0.0L ? (wx * vx + wy * vy) / len2 : 0.0L;
  t = std::clamp(t, 0.0L, 1.0L);
  const Extended dx = wx - t * vx;
  const Extended dy = wy - t * vy;
  return static_cast<double>(std::sqrt(dx * dx + dy * dy));
}

std::int32_t CcwTriangle(const TPointDouble& P0, const TPointDouble& P1, const TPointDouble& P2) {
  const Extended dx1 = static_cast<Extended>(P1.X) - P0.X;
  const Extended dy1 = static_cast<Extended>(P1.Y) - P0.Y;
  const Extended dx2 = static_cast<Extended>(P2.X) - P0.X;
  const Extended dy2 = static_cast<Extended>(P2.Y) - P0.Y;
  if (dx1 * dy2 > dy1 * dx2) return kCounterClockwise;
  if (dx1 * dy2 < dy1 * dx2) return kClockwise;
  if (dx1 * dx2 < 0.0L || dy1 * dy2 < 0.0L) return kClockwise;
  if (dx1 * dx1 + dy1 * dy1 < dx2 * dx2 + dy2 * dy2) return kCounterClockwise;
  return kCollinearBetween;
}

bool SegmentsIntersect(const TPointDouble& A1, const TPointDouble& A2, const TPointDouble& B1,
                       const TPointDouble& B2) {
  const Extended d1 = Cross(B1, B2, A1);
  const Extended d2 = Cross(B1, B2, A2);
  const Extended d3 = Cross(A1, A2, B1);
  const Extended d4 = Cross(A1, A2, B2);
  if (((d1 > 0 && d2 < 0) || (d1 < 0 && d2 > 0)) && ((d3 > 0 && d4 < 0) || (d3 < 0 && d4 > 0)))
    return true;
  // Touching and collinear cases: an end point on the other segment.
  return (d1 == 0 && OnSegment(B1, B2, A1)) || (d2 == 0 && OnSegment(B1, B2, A2)) ||
         (d3 == 0 && OnSegment(A1, A2, B1)) || (d4 == 0 && OnSegment(A1, A2, B2));
}

bool WithinRect(const TPointDouble& P, const TRectDouble& R) {
  return InBox(P, R);
}

bool WithinRect(const TPointDouble& P, const TRectInt& R) {
  return InBox(P, R);
}

TPointDouble ConfinePointToRect(const TPointDouble& P, const TRectDouble& R) {
  return ClampToBox(P, R);
}

TPointDouble ConfinePointToRect(const TPointDouble& P, const TRectInt& R) {
  return ClampToBox(P, R);
}

}  // namespace quv
