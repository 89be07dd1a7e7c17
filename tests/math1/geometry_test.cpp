#include "math1/test_helpers.h"

namespace quv {
namespace {

using namespace test;
constexpr double kPi = std::numbers::pi;

TEST(GeometryAngles, AngleToXAxisAndCanonicalAngles) {
  EXPECT_EQ(AngleToXAxis(1.0, 0.0), 0.0);
  const std::tuple<double, double, double> axis[] = {
      {0, 0, 1.5 * kPi}, {-1, 0, kPi}, {0, 2, kPi / 2}, {0, -2, 1.5 * kPi}, {1, -1, 1.75 * kPi},
  };
  for (const auto& [dx, dy, angle] : axis)
    EXPECT_DOUBLE_EQ(AngleToXAxis(dx, dy), angle) << dx << " " << dy;
  const std::pair<double, double> degrees[] = {
      {190, -170}, {180, -180}, {-180, -180}, {540, -180}, {359, -1}, {-190, 170}, {-1e-20, -1e-20},
  };
  for (const auto& [a, reduced] : degrees)
    EXPECT_EQ(CanonicalAngleDegrees(a), reduced) << a;
  EXPECT_NEAR(CanonicalAngleRadians(1.5 * kPi), -0.5 * kPi, 1e-15);
  EXPECT_NEAR(CanonicalAngleRadians(-7.0), -7.0 + 2 * kPi, 1e-15);
  EXPECT_TRUE(std::isnan(CanonicalAngleDegrees(kNaN)));
  EXPECT_TRUE(std::isnan(CanonicalAngleRadians(kInf)));
  std::mt19937_64 gen(3);
  std::uniform_real_distribution<double> u(-10.0, 10.0), wide(-1e6, 1e6);
  for (int i = 0; i < 1000; ++i) {
    const double dx = u(gen), dy = u(gen), expected = std::atan2(dy, dx);
    EXPECT_NEAR(AngleToXAxis(dx, dy), expected < 0 ? expected + 2 * kPi : expected, 1e-14);
    const double d = CanonicalAngleDegrees(wide(gen)), r = CanonicalAngleRadians(wide(gen));
    EXPECT_TRUE(d >= -180.0 && d < 180.0 && r >= -kPi && r <= kPi) << d << " " << r;
  }
}

TEST(GeometryDistances, PointsRectanglesAndSegments) {
  EXPECT_EQ(EuclideanDistance(0.0, 0.0, 3.0, 4.0), 5.0);
  EXPECT_EQ(EuclideanDistance(TPointDouble{1, 1}, TPointDouble{4, 5}), 5.0);
  EXPECT_DOUBLE_EQ(EuclideanDistance(0.0, 0.0, 3e300, 4e300), 5e300);  // no overflow
  const TRectDouble r{4.0, 3.0, 0.0, 0.0};                             // corners in reversed order
  for (const auto& [x, y, d] :
       {std::tuple{2.0, 1.0, 0.0}, {4.0, 3.0, 0.0}, {7.0, 7.0, 5.0}, {2.0, -2.0, 2.0}})
    EXPECT_EQ(DistFromRect({x, y}, r), d) << x << " " << y;
  EXPECT_EQ(DistFromRect({-3.0, -4.0}, TRectInt{0, 0, 4, 3}), 5.0);
  EXPECT_TRUE(std::isnan(DistFromRect({kNaN, 0.0}, r)));
  const TPointDouble a{0.0, 0.0}, b{4.0, 0.0};
  EXPECT_EQ(DistanceToSegment({2.0, 3.0}, a, b), 3.0);
  EXPECT_EQ(DistanceToSegment({7.0, 4.0}, a, b), 5.0);
  EXPECT_EQ(DistanceToSegment({-3.0, -4.0}, a, b), 5.0);
  EXPECT_EQ(DistanceToSegment({3.0, 4.0}, a, a), 5.0);
}

TEST(GeometryDistances, EllipseAgainstBruteForceAndDegenerateShapes) {
  const TRectDouble box{-2.0, -1.0, 4.0, 3.0};  // centre (1, 1), semi-axes 3 and 2
  EXPECT_EQ(DistFromEllipse({1.0, 1.0}, box), 0.0);
  EXPECT_EQ(DistFromEllipse({4.0, 1.0}, box), 0.0);
  EXPECT_DOUBLE_EQ(DistFromEllipse({6.0, 1.0}, box), 2.0);
  EXPECT_DOUBLE_EQ(DistFromEllipse({1.0, -3.0}, box), 2.0);
  for (const TPointDouble p : {TPointDouble{5.0, 4.0}, {-9.0, 7.5}, {1.5, 3.2}, {-2.1, 1.1}}) {
    double brute = kInf;  // over the parametrisation of the ellipse curve
    for (int i = 0; i < 400000; ++i) {
      const double t = 2 * kPi * i / 400000;
      brute = std::min(brute, std::hypot(1 + 3 * std::cos(t) - p.X, 1 + 2 * std::sin(t) - p.Y));
    }
    EXPECT_NEAR(DistFromEllipse(p, box), brute, 1e-9) << p.X << " " << p.Y;
  }
  EXPECT_DOUBLE_EQ(DistFromEllipse({3.0, 4.0}, TRectDouble{-1, -1, 1, 1}), 4.0);  // circle
  EXPECT_DOUBLE_EQ(DistFromEllipse({3.0, 1.0}, TRectDouble{-2, 0, 2, 0}), std::sqrt(2.0));
  EXPECT_DOUBLE_EQ(DistFromEllipse({3.0, 4.0}, TRectDouble{0, 0, 0, 0}), 5.0);
  EXPECT_TRUE(std::isnan(DistFromEllipse({kNaN, 1.0}, box)));
  EXPECT_GT(DistFromEllipse({1e300, -1e300}, TRectDouble{-1e-300, -1, 1e-300, 1}), 0.0);
}

TEST(GeometryOrientation, CcwTriangleAndSegmentIntersection) {
  // Collinear points: -1 behind P0, +1 beyond P1, 0 on the segment P0-P1.
  const std::pair<TPointDouble, std::int32_t> turns[] = {
      {{1, 1}, kCounterClockwise}, {{1, -1}, kClockwise},       {{-1, 0}, kClockwise},
      {{3, 0}, kCounterClockwise}, {{1, 0}, kCollinearBetween}, {{2, 0}, kCollinearBetween},
  };
  for (const auto& [p2, turn] : turns)
    EXPECT_EQ(CcwTriangle({0, 0}, {2, 0}, p2), turn) << p2.X << " " << p2.Y;
  // Crossing, shared end point, T, collinear overlap, collinear touching at an end, a point
  // on a segment; then collinear apart, parallel, near miss, a point off a segment, NaN.
  using Segments = std::tuple<TPointDouble, TPointDouble, TPointDouble, TPointDouble>;
  const Segments hits[] = {
      {{0, 0}, {2, 2}, {0, 2}, {2, 0}}, {{0, 0}, {1, 1}, {1, 1}, {2, 0}},
      {{0, 0}, {2, 0}, {1, 0}, {1, 5}}, {{0, 0}, {2, 0}, {1, 0}, {3, 0}},
      {{0, 0}, {2, 0}, {2, 0}, {3, 0}}, {{1, 1}, {1, 1}, {0, 0}, {2, 2}},
  };
  const Segments misses[] = {
      {{0, 0}, {1, 0}, {2, 0}, {3, 0}},    {{0, 0}, {2, 0}, {0, 1}, {2, 1}},
      {{0, 0}, {2, 2}, {3, 0}, {2, 0.9}},  {{1, 2}, {1, 2}, {0, 0}, {2, 2}},
      {{kNaN, 0}, {1, 1}, {0, 1}, {1, 0}},
  };
  // The answer does not depend on the order of segments or end points.
  for (const auto& [a1, a2, b1, b2] : hits)
    EXPECT_TRUE(SegmentsIntersect(a1, a2, b1, b2) && SegmentsIntersect(b2, b1, a2, a1)) << a1.X;
  for (const auto& [a1, a2, b1, b2] : misses)
    EXPECT_FALSE(SegmentsIntersect(a1, a2, b1, b2) || SegmentsIntersect(b2, b1, a2, a1)) << a1.X;
}

TEST(GeometryRectangles, WithinAndConfineWithEitherCornerOrder) {
  const TRectDouble r{4.0, 3.0, 0.0, 0.0};
  const TRectInt ri{0, 0, 4, 3};
  EXPECT_TRUE(WithinRect({0.0, 0.0}, r) && WithinRect({4.0, 1.5}, r) && WithinRect({2, 2}, ri));
  EXPECT_FALSE(WithinRect({4.0001, 1.5}, r));
  EXPECT_FALSE(WithinRect({kNaN, 1.0}, r));
  EXPECT_FALSE(WithinRect({2.0, 3.5}, ri));
  EXPECT_EQ(ConfinePointToRect({7.0, -2.0}, r), (TPointDouble{4.0, 0.0}));
  EXPECT_EQ(ConfinePointToRect({1.0, 2.0}, r), (TPointDouble{1.0, 2.0}));
  EXPECT_EQ(ConfinePointToRect({-1.0, 9.0}, ri), (TPointDouble{0.0, 3.0}));
}

}  // namespace
}  // namespace quv
