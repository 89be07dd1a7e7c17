#include "quv/math2/polygon.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <random>
#include <string>

#include "common/raised_message.h"
#include "quv/math2/math2.h"

namespace {

using quv::EQUVMath2Error;
using quv::TPointDouble;
using quv::TPointDoubleArray;
using quv::test::RaisedMessage;

const TPointDoubleArray kSquare{{0, 0}, {1, 0}, {1, 1}, {0, 1}};

TPointDoubleArray Reversed(TPointDoubleArray p) {
  std::reverse(p.begin(), p.end());
  return p;
}

TEST(PolygonArea, SignedAreaAndCrossings) {
  struct Case {
    const char* what;
    TPointDoubleArray polygon;
    double area;
    std::int32_t crossings;
  };
  const Case cases[] = {
      {"unit square", kSquare, 1.0, 0},
      {"clockwise square", Reversed(kSquare), -1.0, 0},
      {"triangle", {{0, 0}, {4, 0}, {0, 3}}, 6.0, 0},
      // A figure eight: the two lobes cancel, the crossing is counted once.
      {"bow tie", {{0, 0}, {2, 2}, {2, 0}, {0, 2}}, 0.0, 1},
      {"L shape", {{0, 0}, {2, 0}, {2, 1}, {1, 1}, {1, 2}, {0, 2}}, 3.0, 0},
      {"empty", {}, 0.0, 0},
      {"one point", {{3, 4}}, 0.0, -1},
      {"two points", {{0, 0}, {1, 1}}, 0.0, -1},
      // Every edge touches every other here, just as the neighbours of a triangle do.
      {"all points equal", {{1, 1}, {1, 1}, {1, 1}}, 0.0, 0},
      {"collinear", {{0, 0}, {1, 0}, {2, 0}}, 0.0, 0},
      {"collinear, four points", {{0, 0}, {1, 0}, {2, 0}, {3, 0}}, 0.0, 1},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    EXPECT_DOUBLE_EQ(quv::PolygonArea(c.polygon), c.area);
    std::int32_t crossings = 99;
    EXPECT_DOUBLE_EQ(quv::PolygonArea(c.polygon, crossings), c.area);
    EXPECT_EQ(crossings, c.crossings);
  }
  // A pentagram drawn by skipping a corner: its five points cross five times.
  TPointDoubleArray star;
  for (int k = 0; k < 5; ++k) {
    const double a = std::numbers::pi / 2 + 4 * std::numbers::pi * k / 5;
    star.push_back({std::cos(a), std::sin(a)});
  }
  std::int32_t crossings = 0;
  quv::PolygonArea(star, crossings);
  EXPECT_EQ(crossings, 5);
}

TEST(PointIsInsidePolygon, InsideOutsideAndBorder) {
  const TPointDoubleArray l{{0, 0}, {2, 0}, {2, 1}, {1, 1}, {1, 2}, {0, 2}};
  struct Case {
    double x, y;
    bool inside;
  };
  const Case cases[] = {
      {0.5, 0.5, true},   {1.5, 0.5, true},  {0.5, 1.5, true},  {1.5, 1.5, false},
      {-0.1, 0.5, false}, {2.5, 0.5, false}, {0.5, 2.5, false}, {0.0, 0.5, false},  // on the border
      {1.0, 1.0, false},  // on the inner corner
      {1.5, 1.0, false},  // on a horizontal edge
      {0.5, 1.0, true},   // level with the inner edge, left of it
      {3.0, 1.0, false},  // level with a horizontal edge, outside
  };
  for (const auto& polygon : {l, Reversed(l)}) {
    for (const Case& c : cases)
      EXPECT_EQ(quv::PointIsInsidePolygon(c.x, c.y, polygon), c.inside) << c.x << " " << c.y;
  }
  EXPECT_FALSE(quv::PointIsInsidePolygon(0, 0, {}));
  EXPECT_FALSE(quv::PointIsInsidePolygon(1, 1, {{1, 1}}));
  EXPECT_FALSE(quv::PointIsInsidePolygon(0.5, 0.5, {{0, 0}, {1, 1}}));
  EXPECT_FALSE(quv::PointIsInsidePolygon(std::nan(""), 0.5, kSquare));
}

// Random star-shaped polygons around the origin: the area against the sum of the centre
// triangles, the point test against the winding number from summed angles.
TEST(PolygonFunctions, AgreeWithBruteForceOnRandomPolygons) {
  std::mt19937 gen(20261124);
  std::uniform_real_distribution<double> unit(0.0, 1.0);
  for (int trial = 0; trial < 50; ++trial) {
    const int n = 3 + static_cast<int>(unit(gen) * 30);
    std::vector<double> angle(static_cast<std::size_t>(n));
    for (double& a : angle)
      a = 2 * std::numbers::pi * unit(gen);
    std::sort(angle.begin(), angle.end());
    TPointDoubleArray poly;
    std::vector<double> radius;
    for (double a : angle) {
      radius.push_back(0.5 + unit(gen));
      poly.push_back({radius.back() * std::cos(a), radius.back() * std::sin(a)});
    }
    double area = 0;
    for (std::size_t i = 0; i < poly.size(); ++i) {
      const std::size_t j = (i + 1) % poly.size();
      area += 0.5 * radius[i] * radius[j] * std::sin(angle[j] - angle[i]);
    }
    EXPECT_NEAR(quv::PolygonArea(poly), area, 1e-12);
    EXPECT_NEAR(quv::PolygonArea(Reversed(poly)), -area, 1e-12);

    for (int probe = 0; probe < 40; ++probe) {
      const double x = 3 * unit(gen) - 1.5, y = 3 * unit(gen) - 1.5;
      double winding = 0;
      for (std::size_t i = 0; i < poly.size(); ++i) {
        const TPointDouble& a = poly[i];
        const TPointDouble& b = poly[(i + 1) % poly.size()];
        winding += std::remainder(std::atan2(b.Y - y, b.X - x) - std::atan2(a.Y - y, a.X - x),
                                  2 * std::numbers::pi);
      }
      const bool inside = std::fabs(winding) > std::numbers::pi;
      if (quv::DistanceToPolygon(x, y, poly) < 1e-9) continue;  // too close to call
      EXPECT_EQ(quv::PointIsInsidePolygon(x, y, poly), inside) << trial << " " << x << " " << y;
    }
  }
}

TEST(PolygonFunctions, LengthRectDistanceAndDiffForm) {
  EXPECT_DOUBLE_EQ(quv::PolygonLength(kSquare), 4.0);
  EXPECT_DOUBLE_EQ(quv::PolygonLength({{0, 0}, {3, 4}}), 10.0);
  EXPECT_DOUBLE_EQ(quv::PolygonLength({{1, 1}}), 0.0);
  EXPECT_DOUBLE_EQ(quv::PolygonLength({}), 0.0);

  const quv::TRectDouble r = quv::OuterRectOfPolygon({{1, 5}, {-2, 3}, {4, -1}});
  EXPECT_EQ(r, (quv::TRectDouble{-2, -1, 4, 5}));
  EXPECT_EQ(RaisedMessage<EQUVMath2Error>([] { quv::OuterRectOfPolygon({}); }),
            "OuterRectOfPolygon: polygon has no points");

  EXPECT_DOUBLE_EQ(quv::DistanceToPolygon(0.5, 0.25, kSquare), 0.25);  // inside
  EXPECT_DOUBLE_EQ(quv::DistanceToPolygon(4, 5, kSquare), 5.0);        // from a corner
  EXPECT_DOUBLE_EQ(quv::DistanceToPolygon(-1, 0.5, kSquare), 1.0);     // the closing edge
  EXPECT_DOUBLE_EQ(quv::DistanceToPolygon(3, 4, {{0, 0}}), 5.0);
  EXPECT_EQ(RaisedMessage<EQUVMath2Error>([] { quv::DistanceToPolygon(0, 0, {}); }),
            "DistanceToPolygon: polygon has no points");

  TPointDoubleArray p{{10, 20}, {11, 22}, {9, 25}, {10, 20}};
  quv::ConvertToDiffPolygon(p);
  EXPECT_EQ(p, (TPointDoubleArray{{10, 20}, {1, 2}, {-2, 3}, {1, -5}}));
  quv::ConvertFromDiffPolygon(p);
  EXPECT_EQ(p, (TPointDoubleArray{{10, 20}, {11, 22}, {9, 25}, {10, 20}}));
  TPointDoubleArray none;
  quv::ConvertToDiffPolygon(none);
  quv::ConvertFromDiffPolygon(none);
  EXPECT_TRUE(none.empty());
}

TEST(ReducePolygon, DropsPointsWithinTheTolerance) {
  // A square with extra points on its edges and a slight bump.
  const TPointDoubleArray p{{0, 0}, {0.5, 0.01}, {1, 0}, {1, 0.5}, {1, 0.5},
                            {1, 1}, {0.5, 1},    {0, 1}, {0, 0}};
  EXPECT_EQ(quv::ReducePolygon(p, 0.05), kSquare);
  const TPointDoubleArray fine = quv::ReducePolygon(p, 0.001);
  EXPECT_EQ(fine, (TPointDoubleArray{{0, 0}, {0.5, 0.01}, {1, 0}, {1, 1}, {0, 1}}));
  // Tolerance 0 keeps every point that is not exactly on the outline.
  EXPECT_EQ(quv::ReducePolygon(p, 0.0).size(), 5u);
  EXPECT_EQ(quv::ReducePolygon({{1, 1}, {1, 1}}, 0.0), (TPointDoubleArray{{1, 1}}));
  EXPECT_TRUE(quv::ReducePolygon({}, 1.0).empty());
  for (double bad : {-1.0, std::nan("")})
    EXPECT_EQ(RaisedMessage<EQUVMath2Error>([&] { quv::ReducePolygon(p, bad); }),
              "ReducePolygon: tolerance must be a non-negative number");
}

TEST(Convex2DHull, DegenerateInputs) {
  EXPECT_TRUE(quv::Convex2DHull({}).empty());
  EXPECT_EQ(quv::Convex2DHull({{2, 3}, {2, 3}, {2, 3}}), (TPointDoubleArray{{2, 3}}));
  EXPECT_EQ(quv::Convex2DHull({{2, 2}, {0, 0}, {1, 1}, {3, 3}, {1, 1}}),
            (TPointDoubleArray{{0, 0}, {3, 3}}));
  // Collinear points on the border and duplicates do not become corners.
  EXPECT_EQ(quv::Convex2DHull({{0, 0}, {1, 0}, {2, 0}, {2, 2}, {1, 1}, {0, 2}, {0, 1}, {2, 2}}),
            (TPointDoubleArray{{0, 0}, {2, 0}, {2, 2}, {0, 2}}));
  EXPECT_EQ(RaisedMessage<EQUVMath2Error>([] {
              quv::Convex2DHull({{0, 0}, {std::nan(""), 1}});
            }),
            "Convex2DHull: coordinates must be finite numbers");
  EXPECT_EQ(RaisedMessage<EQUVMath2Error>([] {
              quv::Convex2DHull({{INFINITY, 0}});
            }),
            "Convex2DHull: coordinates must be finite numbers");
}

TEST(Convex2DHull, RandomPointsLieInsideAConvexHull) {
  std::mt19937 gen(7);
  std::normal_distribution<double> normal;
  for (int trial = 0; trial < 20; ++trial) {
    TPointDoubleArray pts;
    for (int i = 0; i < 500; ++i)  // on a grid, so that duplicates and collinear runs occur
      pts.push_back({std::round(normal(gen) * 8), std::round(normal(gen) * 8)});
    const TPointDoubleArray hull = quv::Convex2DHull(pts);
    ASSERT_GE(hull.size(), 3u);
    EXPECT_GT(quv::PolygonArea(hull), 0.0);  // counter-clockwise
    for (std::size_t i = 0; i < hull.size(); ++i) {
      const TPointDouble& a = hull[i];
      const TPointDouble& b = hull[(i + 1) % hull.size()];
      const TPointDouble& c = hull[(i + 2) % hull.size()];
      EXPECT_GT((b.X - a.X) * (c.Y - a.Y) - (b.Y - a.Y) * (c.X - a.X), 0.0);  // strictly convex
      EXPECT_NE(std::find(pts.begin(), pts.end(), a), pts.end());
    }
    for (const TPointDouble& p : pts)
      EXPECT_TRUE(quv::PointIsInsideConvexHull(p.X, p.Y, hull));
    const quv::TRectDouble r = quv::OuterRectOfPolygon(pts);
    EXPECT_FALSE(quv::PointIsInsideConvexHull(r.Right + 1, r.Bottom, hull));
    EXPECT_TRUE(quv::PointIsInsideConvexHull(hull[0].X, hull[0].Y, Reversed(hull)));
  }
}

TEST(PointIsInsideConvexHull, SmallHulls) {
  EXPECT_FALSE(quv::PointIsInsideConvexHull(0, 0, {}));
  EXPECT_TRUE(quv::PointIsInsideConvexHull(1, 2, {{1, 2}}));
  EXPECT_FALSE(quv::PointIsInsideConvexHull(1, 2.5, {{1, 2}}));
  EXPECT_TRUE(quv::PointIsInsideConvexHull(1, 1, {{0, 0}, {2, 2}}));
  EXPECT_FALSE(quv::PointIsInsideConvexHull(3, 3, {{0, 0}, {2, 2}}));
  EXPECT_FALSE(quv::PointIsInsideConvexHull(1, 1.1, {{0, 0}, {2, 2}}));
  EXPECT_TRUE(quv::PointIsInsideConvexHull(1, 0.5, kSquare));
  EXPECT_FALSE(quv::PointIsInsideConvexHull(std::nan(""), 0.5, kSquare));
}

}  // namespace
