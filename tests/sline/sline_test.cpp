#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <string>
#include <tuple>

#include "common/raised_message.h"
#include "quv/sline/sline.h"

namespace quv {
namespace {

using test::RaisedMessage;
constexpr double kPi = std::numbers::pi;

void SetLine(TSLine& l, double a, double b, double c) {
  l.SetParB(1.0);  // so that any A may be set first
  l.SetParA(a);
  l.SetParB(b);
  l.SetParC(c);
}

TEST(SLine, ErrorClassIsNotALibraryError) {
  static_assert(std::is_base_of_v<std::runtime_error, EQUVSLineError>);
  static_assert(!std::is_base_of_v<EQUVError, EQUVSLineError>);
}

TEST(SLine, NewLineIsTheXAxis) {
  TSLine l;
  EXPECT_EQ(l.ParA(), 0.0);
  EXPECT_EQ(l.ParB(), 1.0);
  EXPECT_EQ(l.ParC(), 0.0);
  EXPECT_FALSE(l.SubstituteInf());
  EXPECT_EQ(l.GetSlope(), 0.0);
  EXPECT_EQ(l.GetIntercept(), 0.0);
  EXPECT_EQ(l.CalcY(5), 0.0);
  EXPECT_EQ(RaisedMessage<EQUVSLineError>([&] { l.CalcX(0); }), "cannot calculate x");
  l.SetSubstituteInf(true);
  EXPECT_EQ(l.CalcX(0), 0.0);
  EXPECT_EQ(l.CalcX(1), -1.0 / 1e-100);
}

TEST(SLine, SettersRefuseBothZeroAndKeepTheValue) {
  TSLine l;
  l.SetParA(2.0);
  l.SetParB(0.0);  // allowed: A is 2
  EXPECT_EQ(RaisedMessage<EQUVSLineError>([&] { l.SetParA(0.0); }),
            "parameter A and B must not both be zero");
  EXPECT_EQ(l.ParA(), 2.0);
  l.SetParB(3.0);
  l.SetParA(0.0);
  EXPECT_EQ(RaisedMessage<EQUVSLineError>([&] { l.SetParB(0.0); }),
            "parameter A and B must not both be zero");
  EXPECT_EQ(l.ParB(), 3.0);
  l.SetParC(0.0);  // C is never checked
  EXPECT_EQ(l.ParC(), 0.0);
}

TEST(SLine, VerticalLineMessages) {
  TSLine l;
  SetLine(l, 1, 0, -2);  // x = 2
  double k = 7, d = 8;
  EXPECT_EQ(RaisedMessage<EQUVSLineError>([&] { l.CalcKDForm(k, d); }),
            "cannot convert to k-d-form if ParB is zero");
  EXPECT_EQ(k, 7);
  EXPECT_EQ(d, 8);
  EXPECT_EQ(RaisedMessage<EQUVSLineError>([&] { l.CalcY(1); }), "cannot calculate y");
  EXPECT_EQ(RaisedMessage<EQUVSLineError>([&] { l.GetSlope(); }), "slope is infinite");
  EXPECT_EQ(RaisedMessage<EQUVSLineError>([&] { l.GetIntercept(); }),
            "cannot calculate intercept (line is parallel to y axis)");
  EXPECT_EQ(l.CalcX(123), 2.0);
  l.SetSubstituteInf(true);
  EXPECT_EQ(l.CalcY(2), 0.0);
  EXPECT_EQ(l.CalcY(3), -1e100);
}

TEST(SLine, ConstructionsAgainstHandValues) {
  TSLine l;
  EXPECT_FALSE(l.LineFrom2Points(0, 0, 0, 0));
  EXPECT_EQ(l.ParB(), 1.0);
  ASSERT_TRUE(l.LineFrom2Points(1, 2, 3, 6));  // y = 2x
  EXPECT_EQ(l.ParA(), -4.0);
  EXPECT_EQ(l.ParB(), 2.0);
  EXPECT_EQ(l.ParC(), 0.0);
  double k = 0, d = 0;
  l.CalcKDForm(k, d);
  EXPECT_EQ(k, 2.0);
  EXPECT_EQ(d, 0.0);

  l.LineFromSlopeIcpt(0.5, 3);  // y = x/2 + 3
  EXPECT_EQ(l.GetSlope(), 0.5);
  EXPECT_EQ(l.GetIntercept(), 3.0);
  EXPECT_EQ(l.CalcY(4), 5.0);
  EXPECT_EQ(l.CalcX(5), 4.0);

  l.LineThroughPoint(1, 1, kPi / 4);  // y = x
  EXPECT_NEAR(l.GetSlope(), 1.0, 1e-15);
  EXPECT_NEAR(l.GetIntercept(), 0.0, 1e-15);
  EXPECT_NEAR(l.Distance(0, 1), std::sqrt(0.5), 1e-15);   // left of the direction
  EXPECT_NEAR(l.Distance(1, 0), -std::sqrt(0.5), 1e-15);  // right of it

  TSLine base;
  base.LineFromSlopeIcpt(2, 1);
  TSLine p;
  p.ParallelLine(1, 1, base);  // y = 2x - 1
  EXPECT_EQ(p.GetSlope(), 2.0);
  EXPECT_EQ(p.GetIntercept(), -1.0);
  TSLine n;
  n.NormalLine(2, 0, base);  // slope -1/2 through (2, 0)
  EXPECT_EQ(n.GetSlope(), -0.5);
  EXPECT_EQ(n.GetIntercept(), 1.0);
  n.NormalLine(0, 0, n);  // a line may be its own reference
  EXPECT_EQ(n.GetSlope(), 2.0);
}

TEST(SLine, IntersectionWithTheNormalLiesOnBoth) {
  const std::tuple<double, double, double, double> cases[] = {
      {2, 1, 3, -4}, {-0.3, 7, 1e3, 2e-3}, {0, 5, -1, 1}, {1e-6, -2, 4, 9}};
  for (const auto& [k, d, px, py] : cases) {
    TSLine l, n;
    l.LineFromSlopeIcpt(k, d);
    n.NormalLine(px, py, l);
    double x = NAN, y = NAN;
    ASSERT_TRUE(l.InterSection(n, x, y));
    const double scale = 1 + std::fabs(px) + std::fabs(py) + std::fabs(d);
    EXPECT_NEAR(l.Distance(x, y), 0.0, 1e-12 * scale) << k;
    EXPECT_NEAR(n.Distance(x, y), 0.0, 1e-12 * scale) << k;
    // The foot of the normal is as far from the point as the point is from the line.
    EXPECT_NEAR(std::hypot(px - x, py - y), std::fabs(l.Distance(px, py)), 1e-12 * scale);
    EXPECT_EQ(l.AngleBetweenLines(n), kPi / 2);
  }
}

TEST(SLine, ParallelLinesDoNotIntersect) {
  TSLine a, b;
  a.LineFromSlopeIcpt(3, 1);
  b.ParallelLine(5, 5, a);
  double x = 11, y = 12;
  EXPECT_FALSE(a.InterSection(b, x, y));
  EXPECT_EQ(x, 11);
  EXPECT_EQ(y, 12);
  EXPECT_EQ(a.AngleBetweenLines(b), 0.0);
}

TEST(SLine, AngleBetweenLines) {
  TSLine a, b;
  a.LineThroughPoint(0, 0, 0.3);
  b.LineThroughPoint(4, 4, 1.0);
  EXPECT_NEAR(a.AngleBetweenLines(b), 0.7, 1e-14);
  b.LineThroughPoint(4, 4, 0.3 + 2.5);  // 2.5 rad apart means pi - 2.5 between the lines
  EXPECT_NEAR(a.AngleBetweenLines(b), kPi - 2.5, 1e-14);
}

TEST(SLine, DirectionCoversAFullTurn) {
  TSLine l;
  for (int i = 0; i < 16; ++i) {
    const double phi = 0.05 + i * 2 * kPi / 16;  // avoid the vertical directions
    SetLine(l, -std::sin(phi), std::cos(phi), 0);
    EXPECT_NEAR(l.GetDirect(), phi, 1e-13) << i;
  }
  SetLine(l, -1, 0, 0);  // pointing up
  EXPECT_DOUBLE_EQ(l.GetDirect(), kPi / 2);
  SetLine(l, 1, 0, 0);  // pointing down
  EXPECT_DOUBLE_EQ(l.GetDirect(), 3 * kPi / 2);
  SetLine(l, 0, -1, 0);  // pointing left
  EXPECT_DOUBLE_EQ(l.GetDirect(), kPi);
}

struct ClipCase {
  const char* what;
  double a, b, c;
  bool hit;
  double x1, y1, x2, y2;
};

TEST(SLine, ClipBoxThroughAlongAndMissing) {
  // Box 0 <= x <= 4, 1 <= y <= 3, given by corners in mixed order.
  const ClipCase cases[] = {
      {"diagonal y = x - 0.5", -1, 1, 0.5, true, 1.5, 1, 3.5, 3},
      {"steep y = 2x", -2, 1, 0, true, 0.5, 1, 1.5, 3},
      {"horizontal y = 2", 0, 1, -2, true, 0, 2, 4, 2},
      {"along the bottom edge", 0, 1, -1, true, 0, 1, 4, 1},
      {"along the top edge", 0, 1, -3, true, 0, 3, 4, 3},
      {"vertical x = 1", 1, 0, -1, true, 1, 1, 1, 3},
      {"vertical along the right edge", 1, 0, -4, true, 4, 1, 4, 3},
      {"through the corner (0, 1) and (4, 3)", -0.5, 1, -1, true, 0, 1, 4, 3},
      {"touching the corner (4, 1) only", -1, 1, 3, true, 4, 1, 4, 1},
      {"missing above", 0, 1, -5, false, 9, 9, 9, 9},
      {"missing to the right", 1, 0, -5, false, 9, 9, 9, 9},
      {"missing diagonally", -1, 1, -10, false, 9, 9, 9, 9},
  };
  for (const ClipCase& t : cases) {
    TSLine l;
    SetLine(l, t.a, t.b, t.c);
    double x1 = 9, y1 = 9, x2 = 9, y2 = 9;
    EXPECT_EQ(l.ClipBox(4, 1, 0, 3, x1, y1, x2, y2), t.hit) << t.what;
    EXPECT_DOUBLE_EQ(x1, t.x1) << t.what;
    EXPECT_DOUBLE_EQ(y1, t.y1) << t.what;
    EXPECT_DOUBLE_EQ(x2, t.x2) << t.what;
    EXPECT_DOUBLE_EQ(y2, t.y2) << t.what;
    EXPECT_FALSE(l.SubstituteInf()) << t.what;
  }
}

TEST(SLine, ClipBoxKeepsSubstituteInfAndTheVerticalEdgeQuirk) {
  TSLine l;
  SetLine(l, 1, 0, 1);  // x = -1, the left edge of a box around the origin
  l.SetSubstituteInf(true);
  double x1 = 0, y1 = 0, x2 = 0, y2 = 0;
  ASSERT_TRUE(l.ClipBox(-1, -2, 1, 2, x1, y1, x2, y2));
  EXPECT_TRUE(l.SubstituteInf());
  // CalcY at the edge divides 0 by the substitute divisor: the point (-1, 0) comes first.
  EXPECT_EQ(x1, -1.0);
  EXPECT_EQ(y1, 0.0);
  EXPECT_EQ(x2, -1.0);
  EXPECT_EQ(y2, -2.0);
}

}  // namespace
}  // namespace quv
