#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <limits>
#include <sstream>
#include <string>
#include <utility>

#include "common/raised_message.h"
#include "quv/complex/complex.h"

namespace quv {
namespace {

template <class Call>
std::string ComplexMessageOf(Call&& call) {
  return test::RaisedMessage<EQUVComplexError>(std::forward<Call>(call));
}

void ExpectClose(Extended actual, Extended expected, const std::string& what) {
  // Extended arithmetic keeps about 19 digits; a double-precision path would miss by 1e-16.
  const Extended tolerance = 1e-17L * std::max<Extended>(1, std::fabs(expected));
  EXPECT_LE(std::fabs(actual - expected), tolerance)
      << what << ": " << static_cast<double>(actual) << " vs " << static_cast<double>(expected);
}

TEST(Complex, AgreesWithHighPrecisionReference) {
  std::ifstream file(QUV_TEST_DATA_DIR "/complex_reference.txt");
  std::string line;
  int rows = 0;
  while (ReadTextLine(file, line)) {
    if (line.empty() || line[0] == '#') continue;
    std::istringstream fields(line);
    Extended v[10];  // a, b, a b, a / b, |a| and arg a
    for (Extended& x : v)
      fields >> x;
    ++rows;
    const TComplex a = Cpx(v[0], v[1]);
    const TComplex b = Cpx(v[2], v[3]);
    const TComplex p = CpxMult(a, b);
    const TComplex q = CpxDiv(a, b);
    const TComplexPolar polar = ConvertRectToPolar(a);
    const Extended got[] = {p.Re, p.Im, q.Re, q.Im, polar.Magnitude, polar.Angle};
    for (int i = 0; i < 6; ++i)
      ExpectClose(got[i], v[4 + i], line + ", column " + std::to_string(5 + i));
  }
  EXPECT_EQ(rows, 6);
}

// Compares the parts exactly, independently of CpxIsEqual.
bool Is(const TComplex& z, Extended re, Extended im) {
  return z.Re == re && z.Im == im;
}

TEST(Complex, ExactArithmetic) {
  // Values with short binary fractions, so that every result is exact.
  const TComplex a = Cpx(1.25L, -3.5L);
  const TComplex b = Cpx(-0.75L, 2.0L);
  EXPECT_TRUE(Is(CpxAdd(a, b), 0.5L, -1.5L));
  EXPECT_TRUE(Is(CpxSub(a, b), 2, -5.5L));
  EXPECT_TRUE(Is(CpxNeg(a), -1.25L, 3.5L));
  EXPECT_TRUE(Is(CpxConj(a), 1.25L, 3.5L));
  EXPECT_TRUE(Is(CpxMult(a, b), 6.0625L, 5.125L));
  EXPECT_TRUE(Is(CpxMult(Cpx(0, 1), Cpx(0, 1)), -1, 0));
  EXPECT_TRUE(CpxIsNearEqual(CpxMult(CpxDiv(a, b), b), a));
  EXPECT_EQ(CpxAbsSqr(a), 13.8125L);
  EXPECT_EQ(CpxAbs(Cpx(-3, 4)), 5);
  // Computed without scaling: the squares overflow long before the magnitude would.
  EXPECT_TRUE(std::isinf(CpxAbs(Cpx(3e3000L, 4e3000L))));
  EXPECT_EQ(CpxAbs(Cpx(3e2000L, 4e2000L)), 5e2000L);
}

TEST(Complex, PolarRoundTripAndAngleRange) {
  // The angle lies in (-pi, pi]: a negative zero imaginary part still gives +pi.
  EXPECT_EQ(ConvertRectToPolar(Cpx(-1, -0.0L)).Angle, uc_Pi);
  EXPECT_EQ(ConvertRectToPolar(Cpx(-1, 0)).Angle, uc_Pi);
  EXPECT_LT(ConvertRectToPolar(Cpx(-1, -1e-30L)).Angle, -3.14);  // just above -pi stays there
  EXPECT_EQ(ConvertRectToPolar(Cpx(0, -2)).Angle, -uc_Pi / 2);
  const TComplexPolar zero = ConvertRectToPolar(COMPLEX_0);
  EXPECT_EQ(zero.Magnitude, 0);
  EXPECT_EQ(zero.Angle, 0);
  for (Extended angle : {-3.0L, -1.0L, 0.5L, 2.0L, 3.1L}) {
    const TComplexPolar p = ConvertRectToPolar(ConvertPolarToRect({2.5L, angle}));
    ExpectClose(p.Magnitude, 2.5L, "magnitude");
    ExpectClose(p.Angle, angle, "angle");
  }
}

TEST(Complex, DivisionFaultsRaiseOneMessage) {
  const std::string message = "CpxDiv: division by zero";
  EXPECT_EQ(ComplexMessageOf([] { CpxDiv(Cpx(1, 0), COMPLEX_0); }), message);
  EXPECT_EQ(ComplexMessageOf([] { CpxDiv(COMPLEX_0, Cpx(-0.0L, 0)); }), message);
  // A divisor whose square underflows to zero, and a quotient that overflows.
  EXPECT_EQ(ComplexMessageOf([] { CpxDiv(Cpx(1, 0), Cpx(1e-3000L, 0)); }), message);
  EXPECT_EQ(ComplexMessageOf([] { CpxDiv(Cpx(1e4000L, 0), Cpx(1e-1000L, 0)); }), message);
  // Still fine just inside the range, and NaN or infinite arguments pass through.
  EXPECT_EQ(CpxDiv(Cpx(1, 0), Cpx(1e-2000L, 0)).Re, 1e2000L);
  EXPECT_TRUE(std::isnan(CpxDiv(Cpx(std::nanl(""), 0), COMPLEX_1).Re));
  EXPECT_TRUE(std::isinf(CpxDiv(Cpx(std::numeric_limits<Extended>::infinity(), 0), COMPLEX_1).Re));
  // The division by zero is the unit's class, and so an EQUVError as well.
  EXPECT_THROW(CpxDiv(COMPLEX_1, COMPLEX_0), EQUVError);
}

TEST(Complex, NearZeroComparisons) {
  const Extended saved = CpxNearZero;
  EXPECT_EQ(CpxNearZero, 1e-15L);
  EXPECT_TRUE(CpxIsZero(Cpx(1e-16L, -1e-16L)));
  EXPECT_FALSE(CpxIsZero(Cpx(1e-16L, 1e-15L)));  // the bound itself is not near
  EXPECT_FALSE(CpxIsEqual(Cpx(1e-16L, 0), COMPLEX_0));
  EXPECT_FALSE(CpxIsEqual(Cpx(0, 1e-16L), COMPLEX_0));
  EXPECT_TRUE(CpxIsNearEqual(Cpx(1e-16L, 0), COMPLEX_0));
  EXPECT_FALSE(CpxIsNearEqual(Cpx(0, 2e-15L), COMPLEX_0));
  EXPECT_FALSE(CpxIsNearEqual(Cpx(std::nanl(""), 0), Cpx(std::nanl(""), 0)));

  // Every comparison reads the current tolerance.
  CpxNearZero = 1e-3L;
  EXPECT_TRUE(CpxIsNearEqual(Cpx(1, 1), Cpx(1.0005L, 0.9995L)));
  EXPECT_TRUE(CpxIsZero(Cpx(-5e-4L, 5e-4L)));

  // With a tolerance of 0 the strict test fails even for equal numbers, while zero stays zero.
  CpxNearZero = 0;
  EXPECT_FALSE(CpxIsNearEqual(COMPLEX_1, COMPLEX_1));
  EXPECT_TRUE(CpxIsEqual(COMPLEX_1, COMPLEX_1));
  EXPECT_TRUE(CpxIsZero(COMPLEX_0));
  EXPECT_FALSE(CpxIsZero(Cpx(std::numeric_limits<Extended>::denorm_min(), 0)));
  CpxNearZero = saved;
}

}  // namespace
}  // namespace quv
