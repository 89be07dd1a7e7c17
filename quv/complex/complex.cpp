// Complex arithmetic in extended precision.
#include "quv/complex/complex.h"

#include <cmath>

namespace quv {

TComplex Cpx(Extended Re, Extended Im) {
  return {Re, Im};
}

TComplex CpxAdd(const TComplex& a, const TComplex& b) {
  return {a.Re + b.Re, a.Im + b.Im};
}

TComplex CpxSub(const TComplex& a, const TComplex& b) {
  return {a.Re - b.Re, a.Im - b.Im};
}

TComplex CpxMult(const TComplex& a, const TComplex& b) {
  return {a.Re * b.Re - a.Im * b.Im, a.Re * b.Im + a.Im * b.Re};
}

TComplex CpxDiv(const TComplex& a, const TComplex& b) {
  const Extended d = b.Re * b.Re + b.Im * b.Im;
  const TComplex q = {(a.Re * b.Re + a.Im * b.Im) / d, (a.Im * b.Re - a.Re * b.Im) / d};
  // Without floating-point traps the faults show as results: a zero divisor, or an infinity
  // born of finite arguments (overflow). NaN and infinite arguments pass through as IEEE
  // arithmetic makes them.
  const bool finiteArgs =
      std::isfinite(a.Re) && std::isfinite(a.Im) && std::isfinite(b.Re) && std::isfinite(b.Im);
  const bool overflow = finiteArgs && (std::isinf(d) || std::isinf(q.Re) || std::isinf(q.Im));
  if (d == 0 || overflow) RaiseFunctionError<EQUVComplexError>("CpxDiv", "division by zero");
  return q;
}

TComplex CpxNeg(const TComplex& a) {
  return {-a.Re, -a.Im};
}

TComplex CpxConj(const TComplex& a) {
  return {a.Re, -a.Im};
}

Extended CpxAbs(const TComplex& a) {
  return std::sqrt(a.Re * a.Re + a.Im * a.Im);
}

Extended CpxAbsSqr(const TComplex& a) {
  return a.Re * a.Re + a.Im * a.Im;
}

bool CpxIsEqual(const TComplex& a, const TComplex& b) {
  return a.Re == b.Re && a.Im == b.Im;
}

bool CpxIsNearEqual(const TComplex& a, const TComplex& b) {
  return std::fabs(a.Re - b.Re) < CpxNearZero && std::fabs(a.Im - b.Im) < CpxNearZero;
}

bool CpxIsZero(const TComplex& a) {
  const Extended re = std::fabs(a.Re) < CpxNearZero ? 0 : a.Re;
  const Extended im = std::fabs(a.Im) < CpxNearZero ? 0 : a.Im;
  return re == 0 && im == 0;
}

TComplexPolar ConvertRectToPolar(const TComplex& a) {
  Extended angle = std::atan2(a.Im, a.Re);
  // atan2 gives -pi on the negative real axis when the imaginary part is a negative zero;
  // the range is (-pi, pi], so that axis reads +pi whatever the sign of the zero.
  if (a.Im == 0 && angle < 0) angle = -angle;
  return {CpxAbs(a), angle};
}

TComplex ConvertPolarToRect(const TComplexPolar& p) {
  return {p.Magnitude * std::cos(p.Angle), p.Magnitude * std::sin(p.Angle)};
}

}  // namespace quv
