#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>
#include <random>

#include "quv/math1/math1.h"

namespace quv {
namespace {

constexpr double kPi = std::numbers::pi;
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

TEST(GeometryAngles, AngleToXAxisConventionsAndAtan2Agreement) {
  EXPECT_DOUBLE_EQ(AngleToXAxis(0.0, 0.0), 1.5 * kPi);
  EXPECT_DOUBLE_EQ(AngleToXAxis(-1.0, 0.0), kPi);
  EXPECT_EQ(AngleToXAxis(1.0, 0.0), 0.0);
  EXPECT_DOUBLE_EQ(AngleToXAxis(0.0, 2.0), kPi / 2);
  EXPECT_DOUBLE_EQ(AngleToXAxis(0.0, -2.0), 1.5 * kPi);
  EXPECT_DOUBLE_EQ(AngleToXAxis(1.0, -1.0), 1.75 * kPi);
  std::mt19937_64 gen(3);
  std::uniform_real_distribution<double> u(-10.0, 10.0);
  for (int i = 0; i < 1000; ++i) {
    const double dx = u(gen);
    const double dy = u(gen);
    double expected = std::atan2(dy, dx);
    if (expected < 0) expected += 2 * kPi;
    EXPECT_NEAR(AngleToXAxis(dx, dy), expected, 1e-14);
  }
}

TEST(GeometryAngles, CanonicalAnglesAreHalfOpenRanges) {
  EXPECT_EQ(CanonicalAngleDegrees(190.0), -170.0);
  EXPECT_EQ(CanonicalAngleDegrees(180.0), -180.0);
  EXPECT_EQ(CanonicalAngleDegrees(-180.0), -180.0);
  EXPECT_EQ(CanonicalAngleDegrees(540.0), -180.0);
  EXPECT_EQ(CanonicalAngleDegrees(359.0), -1.0);
  EXPECT_EQ(CanonicalAngleDegrees(-190.0), 170.0);
  EXPECT_EQ(CanonicalAngleDegrees(-1e-20), -1e-20);
  EXPECT_NEAR(CanonicalAngleRadians(1.5 * kPi), -0.5 * kPi, 1e-15);
  EXPECT_NEAR(CanonicalAngleRadians(-7.0), -7.0 + 2 * kPi, 1e-15);
  EXPECT_TRUE(std::isnan(CanonicalAngleDegrees(kNaN)));
  EXPECT_TRUE(std::isnan(CanonicalAngleRadians(std::numeric_limits<double>::infinity())));
  std::mt19937_64 gen(4);
  std::uniform_real_distribution<double> u(-1e6, 1e6);
  for (int i = 0; i < 1000; ++i) {
    const double d = CanonicalAngleDegrees(u(gen));
    EXPECT_TRUE(d >= -180.0 && d < 180.0) << d;
    const double r = CanonicalAngleRadians(u(gen));
    EXPECT_TRUE(r >= -kPi && r <= kPi) << r;
  }
}

TEST(GeometryDistances, PointsRectanglesAndSegments) {
  EXPECT_EQ(EuclideanDistance(0.0, 0.0, 3.0, 4.0), 5.0);
  EXPECT_EQ(EuclideanDistance(TPointDouble{1, 1}, TPointDouble{4, 5}), 5.0);
  EXPECT_DOUBLE_EQ(EuclideanDistance(0.0, 0.0, 3e300, 4e300), 5e300);  // no overflow
  const TRectDouble r{4.0, 3.0, 0.0, 0.0};                             // corners in reversed order
  EXPECT_EQ(DistFromRect({2.0, 1.0}, r), 0.0);
  EXPECT_EQ(DistFromRect({4.0, 3.0}, r), 0.0);
  EXPECT_EQ(DistFromRect({7.0, 7.0}, r), 5.0);
  EXPECT_EQ(DistFromRect({2.0, -2.0}, r), 2.0);
  EXPECT_EQ(DistFromRect({-3.0, -4.0}, TRectInt{0, 0, 4, 3}), 5.0);
  EXPECT_TRUE(std::isnan(DistFromRect({kNaN, 0.0}, r)));
  const TPointDouble a{0.0, 0.0};
  const TPointDouble b{4.0, 0.0};
  EXPECT_EQ(DistanceToSegment({2.0, 3.0}, a, b), 3.0);
  EXPECT_EQ(DistanceToSegment({7.0, 4.0}, a, b), 5.0);
  EXPECT_EQ(DistanceToSegment({-3.0, -4.0}, a, b), 5.0);
  EXPECT_EQ(DistanceToSegment({3.0, 4.0}, a, a), 5.0);
}

// Distance to the ellipse curve by brute force over its parametrisation.
double BruteEllipseDistance(double px, double py, double cx, double cy, double a, double b) {
  double best = std::numeric_limits<double>::max();
  for (int i = 0; i < 400000; ++i) {
    const double t = 2 * kPi * i / 400000;
    best = std::min(best, std::hypot(cx + a * std::cos(t) - px, cy + b * std::sin(t) - py));
  }
  return best;
}

TEST(GeometryDistances, EllipseAgainstBruteForceAndDegenerateShapes) {
  const TRectDouble box{-2.0, -1.0, 4.0, 3.0};  // centre (1, 1), semi-axes 3 and 2
  EXPECT_EQ(DistFromEllipse({1.0, 1.0}, box), 0.0);
  EXPECT_EQ(DistFromEllipse({4.0, 1.0}, box), 0.0);
  EXPECT_DOUBLE_EQ(DistFromEllipse({6.0, 1.0}, box), 2.0);
  EXPECT_DOUBLE_EQ(DistFromEllipse({1.0, -3.0}, box), 2.0);
  for (const TPointDouble p : {TPointDouble{5.0, 4.0}, TPointDouble{-9.0, 7.5},
                               TPointDouble{1.5, 3.2}, TPointDouble{-2.1, 1.1}})
    EXPECT_NEAR(DistFromEllipse(p, box), BruteEllipseDistance(p.X, p.Y, 1.0, 1.0, 3.0, 2.0), 1e-9)
        << p.X << " " << p.Y;
  EXPECT_DOUBLE_EQ(DistFromEllipse({3.0, 4.0}, TRectDouble{-1, -1, 1, 1}), 4.0);  // circle
  EXPECT_DOUBLE_EQ(DistFromEllipse({3.0, 1.0}, TRectDouble{-2, 0, 2, 0}), std::sqrt(2.0));
  EXPECT_DOUBLE_EQ(DistFromEllipse({3.0, 4.0}, TRectDouble{0, 0, 0, 0}), 5.0);
  EXPECT_TRUE(std::isnan(DistFromEllipse({kNaN, 1.0}, box)));
  EXPECT_GT(DistFromEllipse({1e300, -1e300}, TRectDouble{-1e-300, -1, 1e-300, 1}), 0.0);
}

TEST(GeometryOrientation, CcwTriangleForTurnsAndCollinearPoints) {
  const TPointDouble p0{0, 0};
  const TPointDouble p1{2, 0};
  EXPECT_EQ(CcwTriangle(p0, p1, {1, 1}), kCounterClockwise);
  EXPECT_EQ(CcwTriangle(p0, p1, {1, -1}), kClockwise);
  EXPECT_EQ(CcwTriangle(p0, p1, {-1, 0}), kClockwise);        // behind P0
  EXPECT_EQ(CcwTriangle(p0, p1, {3, 0}), kCounterClockwise);  // beyond P1
  EXPECT_EQ(CcwTriangle(p0, p1, {1, 0}), kCollinearBetween);  // on the segment
  EXPECT_EQ(CcwTriangle(p0, p1, {2, 0}), kCollinearBetween);
}

TEST(GeometryOrientation, SegmentsIntersectCountsTouchingAndOverlap) {
  auto hit = [](TPointDouble a1, TPointDouble a2, TPointDouble b1, TPointDouble b2) {
    const bool r = SegmentsIntersect(a1, a2, b1, b2);
    // The answer does not depend on the order of segments or end points.
    EXPECT_EQ(r, SegmentsIntersect(b2, b1, a2, a1));
    return r;
  };
  EXPECT_TRUE(hit({0, 0}, {2, 2}, {0, 2}, {2, 0}));     // crossing
  EXPECT_TRUE(hit({0, 0}, {1, 1}, {1, 1}, {2, 0}));     // shared end point
  EXPECT_TRUE(hit({0, 0}, {2, 0}, {1, 0}, {1, 5}));     // T: end point on the other segment
  EXPECT_TRUE(hit({0, 0}, {2, 0}, {1, 0}, {3, 0}));     // collinear overlap
  EXPECT_TRUE(hit({0, 0}, {2, 0}, {2, 0}, {3, 0}));     // collinear, touching at an end
  EXPECT_FALSE(hit({0, 0}, {1, 0}, {2, 0}, {3, 0}));    // collinear, apart
  EXPECT_FALSE(hit({0, 0}, {2, 0}, {0, 1}, {2, 1}));    // parallel
  EXPECT_FALSE(hit({0, 0}, {2, 2}, {3, 0}, {2, 0.9}));  // near miss
  EXPECT_TRUE(hit({1, 1}, {1, 1}, {0, 0}, {2, 2}));     // a point on the segment
  EXPECT_FALSE(hit({1, 2}, {1, 2}, {0, 0}, {2, 2}));    // a point off it
  EXPECT_FALSE(hit({kNaN, 0}, {1, 1}, {0, 1}, {1, 0}));
}

TEST(GeometryRectangles, WithinAndConfineWithEitherCornerOrder) {
  const TRectDouble r{4.0, 3.0, 0.0, 0.0};
  EXPECT_TRUE(WithinRect({0.0, 0.0}, r));
  EXPECT_TRUE(WithinRect({4.0, 1.5}, r));
  EXPECT_FALSE(WithinRect({4.0001, 1.5}, r));
  EXPECT_FALSE(WithinRect({kNaN, 1.0}, r));
  EXPECT_TRUE(WithinRect({2.0, 2.0}, TRectInt{0, 0, 4, 3}));
  EXPECT_FALSE(WithinRect({2.0, 3.5}, TRectInt{0, 0, 4, 3}));
  EXPECT_EQ(ConfinePointToRect({7.0, -2.0}, r), (TPointDouble{4.0, 0.0}));
  EXPECT_EQ(ConfinePointToRect({1.0, 2.0}, r), (TPointDouble{1.0, 2.0}));
  EXPECT_EQ(ConfinePointToRect({-1.0, 9.0}, TRectInt{0, 0, 4, 3}), (TPointDouble{0.0, 3.0}));
}

}  // namespace
}  // namespace quv
