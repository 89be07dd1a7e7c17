// Polygon area, crossings, point tests, outline simplification and the convex hull.
#include "quv/math2/polygon.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "quv/math1/geometry.h"
#include "quv/math2/smoothing_core.h"

namespace quv {

namespace {

using detail::RaiseMath2;

// Cross product (b - a) x (c - a) in extended precision: its sign is the turn a -> b -> c.
Extended Cross(const TPointDouble& a, const TPointDouble& b, const TPointDouble& c) {
  return (static_cast<Extended>(b.X) - a.X) * (static_cast<Extended>(c.Y) - a.Y) -
         (static_cast<Extended>(b.Y) - a.Y) * (static_cast<Extended>(c.X) - a.X);
}

// The edge test of PointIsInsidePolygon for the point a and the edge b-c: -1 when the ray from
// a towards +x crosses the edge, 0 when a lies on the edge, +1 otherwise. The edge is taken
// half-open in y (its lower end excluded), so a ray through a corner counts once.
int CrossingTest(const TPointDouble& a, TPointDouble b, TPointDouble c) {
  if (a.Y == b.Y && a.Y == c.Y) {
    const bool between = (b.X <= a.X && a.X <= c.X) || (c.X <= a.X && a.X <= b.X);
    return between ? 0 : 1;
  }
  if (b.Y > c.Y) std::swap(b, c);
  if (a.Y == b.Y && a.X == b.X) return 0;
  if (a.Y <= b.Y || a.Y > c.Y) return 1;
  const Extended delta = Cross(a, b, c);
  if (delta > 0) return -1;
  if (delta < 0) return 1;
  return 0;
}

void CheckNotEmpty(std::string_view name, const TPointDoubleArray& Polygon) {
  if (Polygon.empty()) RaiseMath2(name, polymsg::kNoPoints);
}

}  // namespace

double PolygonArea(const TPointDoubleArray& Polygon) {
  if (Polygon.empty()) return 0.0;
  const std::size_t m = Polygon.size() - 1;
  const TPointDouble& p0 = Polygon.front();
  const TPointDouble& pm = Polygon.back();
  Extended sum = (static_cast<Extended>(pm.X) - p0.X) * (static_cast<Extended>(pm.Y) + p0.Y);
  for (std::size_t i = 0; i < m; ++i) {
    const TPointDouble& a = Polygon[i];
    const TPointDouble& b = Polygon[i + 1];
    sum += (static_cast<Extended>(a.X) - b.X) * (static_cast<Extended>(a.Y) + b.Y);
  }
  return static_cast<double>(0.5L * sum);
}

double PolygonArea(const TPointDoubleArray& Polygon, std::int32_t& NrOfCrossings) {
  const auto n = static_cast<std::int64_t>(Polygon.size());
  std::int64_t count = -n;
  if (n > 0) {
    const std::size_t m = Polygon.size() - 1;
    const TPointDouble& pm = Polygon[m];
    const TPointDouble& p0 = Polygon[0];
    for (std::size_t i = 0; i < m; ++i) {
      const TPointDouble& a = Polygon[i];
      const TPointDouble& b = Polygon[i + 1];
      for (std::size_t j = i + 1; j < m; ++j)
        count += SegmentsIntersect(a, b, Polygon[j], Polygon[j + 1]) ? 1 : 0;
      count += SegmentsIntersect(a, b, pm, p0) ? 1 : 0;
    }
  }
  NrOfCrossings = static_cast<std::int32_t>(std::clamp<std::int64_t>(count, INT32_MIN, INT32_MAX));
  return PolygonArea(Polygon);
}

bool PointIsInsidePolygon(double x, double y, const TPointDoubleArray& Polygon) {
  if (Polygon.empty()) return false;
  const TPointDouble a{x, y};
  int product = -CrossingTest(a, Polygon.back(), Polygon.front());
  for (std::size_t i = 1; i < Polygon.size() && product != 0; ++i)
    product *= CrossingTest(a, Polygon[i - 1], Polygon[i]);
  return product == 1;
}

double PolygonLength(const TPointDoubleArray& Polygon) {
  if (Polygon.size() < 2) return 0.0;
  Extended sum = EuclideanDistance(Polygon.back(), Polygon.front());
  for (std::size_t i = 1; i < Polygon.size(); ++i)
    sum += EuclideanDistance(Polygon[i - 1], Polygon[i]);
  return static_cast<double>(sum);
}

TRectDouble OuterRectOfPolygon(const TPointDoubleArray& Polygon) {
  CheckNotEmpty("OuterRectOfPolygon", Polygon);
  TRectDouble r{Polygon[0].X, Polygon[0].Y, Polygon[0].X, Polygon[0].Y};
  for (const TPointDouble& p : Polygon) {
    r.Left = std::min(r.Left, p.X);
    r.Right = std::max(r.Right, p.X);
    r.Top = std::min(r.Top, p.Y);
    r.Bottom = std::max(r.Bottom, p.Y);
  }
  return r;
}

void ConvertToDiffPolygon(TPointDoubleArray& Polygon) {
  for (std::size_t i = Polygon.size(); i-- > 1;) {
    Polygon[i].X -= Polygon[i - 1].X;
    Polygon[i].Y -= Polygon[i - 1].Y;
  }
}

void ConvertFromDiffPolygon(TPointDoubleArray& Polygon) {
  if (Polygon.empty()) return;
  Extended x = Polygon[0].X, y = Polygon[0].Y;
  for (std::size_t i = 1; i < Polygon.size(); ++i) {
    x += Polygon[i].X;
    y += Polygon[i].Y;
    Polygon[i] = {static_cast<double>(x), static_cast<double>(y)};
  }
}

double DistanceToPolygon(double x, double y, const TPointDoubleArray& Polygon) {
  CheckNotEmpty("DistanceToPolygon", Polygon);
  const TPointDouble p{x, y};
  double best = DistanceToSegment(p, Polygon.back(), Polygon.front());
  for (std::size_t i = 1; i < Polygon.size(); ++i)
    best = std::min(best, DistanceToSegment(p, Polygon[i - 1], Polygon[i]));
  return best;
}

TPointDoubleArray ReducePolygon(const TPointDoubleArray& Polygon, double Tolerance) {
  if (!(Tolerance >= 0.0)) RaiseMath2("ReducePolygon", polymsg::kBadTolerance);
  // The outline without repeated neighbours, closed by a copy of P_0.
  TPointDoubleArray outline;
  outline.reserve(Polygon.size() + 1);
  for (const TPointDouble& p : Polygon)
    if (outline.empty() || !(p == outline.back())) outline.push_back(p);
  while (outline.size() > 1 && outline.back() == outline.front())
    outline.pop_back();
  if (outline.size() < 3) return outline;
  outline.push_back(outline.front());

  // Ramer-Douglas-Peucker with an explicit stack of spans, so no recursion depth limit.
  std::vector<std::uint8_t> keep(outline.size(), 0);
  keep.front() = keep.back() = 1;
  std::vector<std::pair<std::size_t, std::size_t>> spans{{0, outline.size() - 1}};
  while (!spans.empty()) {
    const auto [lo, hi] = spans.back();
    spans.pop_back();
    double far = -1.0;
    std::size_t at = lo;
    for (std::size_t i = lo + 1; i < hi; ++i) {
      const double d = DistanceToSegment(outline[i], outline[lo], outline[hi]);
      if (d > far) {
        far = d;
        at = i;
      }
    }
    if (at == lo || far <= Tolerance) continue;
    keep[at] = 1;
    spans.emplace_back(lo, at);
    spans.emplace_back(at, hi);
  }
  TPointDoubleArray reduced;
  for (std::size_t i = 0; i + 1 < outline.size(); ++i)
    if (keep[i]) reduced.push_back(outline[i]);
  return reduced;
}

TPointDoubleArray Convex2DHull(const TPointDoubleArray& Points) {
  for (const TPointDouble& p : Points)
    if (!std::isfinite(p.X) || !std::isfinite(p.Y)) RaiseMath2("Convex2DHull", polymsg::kNotFinite);
  TPointDoubleArray pts(Points);
  std::sort(pts.begin(), pts.end(), [](const TPointDouble& a, const TPointDouble& b) {
    return a.X < b.X || (a.X == b.X && a.Y < b.Y);
  });
  pts.erase(std::unique(pts.begin(), pts.end()), pts.end());
  if (pts.size() < 3) return pts;

  // Lower chain left to right, then upper chain right to left; a turn that is not strictly
  // to the left drops the middle point, so collinear points never become corners.
  TPointDoubleArray hull(2 * pts.size());
  std::size_t k = 0;
  for (const TPointDouble& p : pts) {
    while (k >= 2 && Cross(hull[k - 2], hull[k - 1], p) <= 0)
      --k;
    hull[k++] = p;
  }
  const std::size_t lower = k + 1;
  for (std::size_t i = pts.size() - 1; i-- > 0;) {
    while (k >= lower && Cross(hull[k - 2], hull[k - 1], pts[i]) <= 0)
      --k;
    hull[k++] = pts[i];
  }
  hull.resize(k - 1);  // the last point repeats the first
  return hull;
}

bool PointIsInsideConvexHull(double x, double y, const TPointDoubleArray& Hull) {
  const TPointDouble p{x, y};
  switch (Hull.size()) {
    case 0:
      return false;
    case 1:
      return p == Hull[0];
    case 2:
      return Cross(Hull[0], Hull[1], p) == 0 && std::min(Hull[0].X, Hull[1].X) <= x &&
             x <= std::max(Hull[0].X, Hull[1].X) && std::min(Hull[0].Y, Hull[1].Y) <= y &&
             y <= std::max(Hull[0].Y, Hull[1].Y);
    default:
      break;
  }
  bool left = false, right = false;
  for (std::size_t i = 0; i < Hull.size(); ++i) {
    const Extended c = Cross(Hull[i], Hull[(i + 1) % Hull.size()], p);
    if (std::isnan(c)) return false;
    left = left || c > 0;
    right = right || c < 0;
  }
  return !(left && right);
}

}  // namespace quv
