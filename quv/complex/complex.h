// Chief header of the complex unit: complex numbers as plain value records of two extended
// parts, with free functions over them. All arithmetic runs in extended precision.
#pragma once

#include "quv/base/base.h"

namespace quv {

/// A complex number in rectangular form.
struct TComplex {
  Extended Re = 0;  ///< real part
  Extended Im = 0;  ///< imaginary part
};

/// A complex number in polar form.
struct TComplexPolar {
  Extended Magnitude = 0;  ///< absolute value
  Extended Angle = 0;      ///< phase in radians
};

inline constexpr TComplex COMPLEX_0{0, 0};
inline constexpr TComplex COMPLEX_1{1, 0};

/// Tolerance of CpxIsNearEqual and CpxIsZero. Callers may change it; every comparison reads
/// its current value. Process-wide and unguarded, like the feedback hooks.
inline constinit Extended CpxNearZero = 1e-15L;

/// (Re, Im).
TComplex Cpx(Extended Re, Extended Im);
/// a + b.
TComplex CpxAdd(const TComplex& a, const TComplex& b);
/// a - b.
TComplex CpxSub(const TComplex& a, const TComplex& b);
/// a * b.
TComplex CpxMult(const TComplex& a, const TComplex& b);
/// a / b by the textbook formula over d = |b|^2. Raises EQUVComplexError
/// "CpxDiv: division by zero" when d is 0 (also when it underflows to 0), and when finite
/// arguments overflow d or the quotient, the faults the division would raise in hardware.
TComplex CpxDiv(const TComplex& a, const TComplex& b);
/// -a.
TComplex CpxNeg(const TComplex& a);
/// The complex conjugate (Re, -Im).
TComplex CpxConj(const TComplex& a);
/// |a| = sqrt(Re^2 + Im^2), computed directly without scaling (so it overflows where the
/// squares do).
Extended CpxAbs(const TComplex& a);
/// |a|^2.
Extended CpxAbsSqr(const TComplex& a);
/// Whether both parts are exactly equal.
bool CpxIsEqual(const TComplex& a, const TComplex& b);
/// Whether both parts differ by strictly less than CpxNearZero (so never with a tolerance of 0).
bool CpxIsNearEqual(const TComplex& a, const TComplex& b);
/// Whether a is zero once each part below CpxNearZero in absolute value counts as 0.
bool CpxIsZero(const TComplex& a);
/// Magnitude CpxAbs(a) and Angle atan2(Im, Re) in (-pi, pi]; (0, 0) gives angle 0.
TComplexPolar ConvertRectToPolar(const TComplex& a);
/// (Magnitude cos Angle, Magnitude sin Angle).
TComplex ConvertPolarToRect(const TComplexPolar& p);

}  // namespace quv
