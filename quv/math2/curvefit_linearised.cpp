// The linearised fits of TCurveFit: each model is turned into a regression that is linear in
// its parameters, solved from the running sums kept for that transform. The normal equations
// are centred (Σff - ΣfΣf/n) and solved in extended precision, which removes the worst of
// their cancellation; the sums themselves are what the class keeps, so no second pass over
// the data is needed.
#include <algorithm>
#include <cmath>
#include <string>

#include "quv/math2/curvefit.h"
#include "quv/math2/curvefit_detail.h"

namespace quv {
namespace detail {

bool SolveRegSums(const TRegSums& s, Extended Coef[3], Extended& R2) {
  Coef[0] = Coef[1] = Coef[2] = 0.0L;
  R2 = 0.0L;
  const Extended n = s.N;
  // Every entry is computed, used or not: the two-regressor branch then reads only
  // initialised values in the compiler's eyes as well as in fact.
  Extended c[2][2], r[2];
  for (int j = 0; j < 2; ++j) {
    r[j] = s.Sfv[j] - s.Sf[j] * s.Sv / n;
    for (int k = 0; k < 2; ++k)
      c[j][k] = s.Sff[j][k] - s.Sf[j] * s.Sf[k] / n;
  }
  Extended beta[2] = {0.0L, 0.0L};
  if (s.K == 1) {
    if (!(c[0][0] > 0.0L)) return false;
    beta[0] = r[0] / c[0][0];
  } else {
    const Extended det = c[0][0] * c[1][1] - c[0][1] * c[1][0];
    // Relative test: the centred matrix is positive semi-definite, so det <= c00 c11.
    if (!(det > 1e-18L * c[0][0] * c[1][1])) return false;
    beta[0] = (r[0] * c[1][1] - r[1] * c[0][1]) / det;
    beta[1] = (r[1] * c[0][0] - r[0] * c[1][0]) / det;
  }
  Extended icpt = s.Sv;
  Extended explained = 0.0L;
  for (int j = 0; j < s.K; ++j) {
    icpt -= beta[j] * s.Sf[j];
    explained += beta[j] * r[j];
    Coef[j + 1] = beta[j];
  }
  Coef[0] = icpt / n;
  const Extended svvc = s.Svv - s.Sv * s.Sv / n;
  R2 = svvc > 0.0L ? explained / svvc : 1.0L;
  return true;
}

}  // namespace detail

namespace {

// Text of the refusal for a flag.
std::string_view FlagText(TCurveFitError e) {
  switch (e) {
    case cfeXLE0:
      return "data contain x <= 0";
    case cfeYLE0:
      return "data contain y <= 0";
    case cfeXEQ0:
      return "data contain x = 0";
    default:
      return "data contain y = 0";
  }
}

constexpr std::uint8_t Bit(TCurveFitError e) {
  return static_cast<std::uint8_t>(1U << e);
}

}  // namespace

void TCurveFit::RequireFlagsClear(std::string_view fit, std::uint8_t mask) {
  for (TCurveFitError e : {cfeXLE0, cfeYLE0, cfeXEQ0, cfeYEQ0})
    if ((mask & flags_ & Bit(e)) != 0) Refuse(fit, FlagText(e));
}

detail::TRegSums TCurveFit::RegSums(TSum f, TSum ff, TSum v, TSum vv, TSum fv) const {
  detail::TRegSums rs;
  rs.K = 1;
  rs.N = n_;
  rs.Sf[0] = sums_[f];
  rs.Sff[0][0] = sums_[ff];
  rs.Sv = sums_[v];
  rs.Svv = sums_[vv];
  rs.Sfv[0] = sums_[fv];
  return rs;
}

void TCurveFit::SolveLinearised(std::string_view fit, std::uint8_t mask, const detail::TRegSums& rs,
                                Extended (&coef)[3], Extended& r2) {
  RequirePoints(fit, 3);
  RequireFlagsClear(fit, mask);
  if (!detail::SolveRegSums(rs, coef, r2)) Refuse(fit, msg::kSlopeIsInfinite);
}

// Two-parameter fits: the intercept and slope of the linearised line, mapped to (a, b).
void TCurveFit::StoreTwo(TRegModel model, double a, double b, Extended r2, double& outA,
                         double& outB, double& FitQual) {
  outA = a;
  outB = b;
  FitQual = static_cast<double>(r2);
  StoreModel(model, 0, FitQual);
  params1_[0] = a;
  params1_[1] = b;
}

void TCurveFit::CalcReciLinFit(double& a, double& b, double& FitQual) {
  a = b = FitQual = 0.0;
  Extended c[3], r2;
  SolveLinearised("CalcReciLinFit", Bit(cfeYEQ0), RegSums(sX, sX2, sRY, sRY2, sXRY), c, r2);
  StoreTwo(rmReciLin, static_cast<double>(c[0]), static_cast<double>(c[1]), r2, a, b, FitQual);
}

void TCurveFit::CalcHyperbolFit(double& a, double& b, double& FitQual) {
  a = b = FitQual = 0.0;
  Extended c[3], r2;
  SolveLinearised("CalcHyperbolFit", Bit(cfeXEQ0), RegSums(sRX, sRX2, sY, sY2, sYRX), c, r2);
  StoreTwo(rmHyperbolic, static_cast<double>(c[0]), static_cast<double>(c[1]), r2, a, b, FitQual);
}

void TCurveFit::CalcReciHyperbolFit(double& a, double& b, double& FitQual) {
  a = b = FitQual = 0.0;
  Extended c[3], r2;
  SolveLinearised("CalcReciHyperbolFit", Bit(cfeXEQ0) | Bit(cfeYEQ0),
                  RegSums(sRX, sRX2, sRY, sRY2, sRXY), c, r2);
  StoreTwo(rmReciHyperbolic, static_cast<double>(c[0]), static_cast<double>(c[1]), r2, a, b,
           FitQual);
}

void TCurveFit::CalcLogFit(double& a, double& b, double& FitQual) {
  a = b = FitQual = 0.0;
  Extended c[3], r2;
  SolveLinearised("CalcLogFit", Bit(cfeXLE0), RegSums(sLX, sLX2, sY, sY2, sYLX), c, r2);
  StoreTwo(rmLog, static_cast<double>(c[0]), static_cast<double>(c[1]), r2, a, b, FitQual);
}

void TCurveFit::CalcReciLogFit(double& a, double& b, double& FitQual) {
  a = b = FitQual = 0.0;
  Extended c[3], r2;
  SolveLinearised("CalcReciLogFit", Bit(cfeXLE0) | Bit(cfeYEQ0),
                  RegSums(sLX, sLX2, sRY, sRY2, sLXRY), c, r2);
  StoreTwo(rmReciLog, static_cast<double>(c[0]), static_cast<double>(c[1]), r2, a, b, FitQual);
}

void TCurveFit::CalcPowerFit(double& a, double& b, double& FitQual) {
  a = b = FitQual = 0.0;
  Extended c[3], r2;
  SolveLinearised("CalcPowerFit", Bit(cfeXLE0) | Bit(cfeYLE0), RegSums(sLX, sLX2, sLY, sLY2, sLXLY),
                  c, r2);
  StoreTwo(rmPower, static_cast<double>(std::exp(c[0])), static_cast<double>(c[1]), r2, a, b,
           FitQual);
}

void TCurveFit::CalcExponentialFit(double& a, double& b, double& FitQual) {
  a = b = FitQual = 0.0;
  Extended c[3], r2;
  SolveLinearised("CalcExponentialFit", Bit(cfeYLE0), RegSums(sX, sX2, sLY, sLY2, sXLY), c, r2);
  StoreTwo(rmExpo, static_cast<double>(std::exp(c[0])), static_cast<double>(c[1]), r2, a, b,
           FitQual);
}

void TCurveFit::CalcHoerlFit(double& a, double& b, double& c, double& FitQual) {
  a = b = c = FitQual = 0.0;
  // ln y = ln a + (ln b) x + c ln x
  detail::TRegSums rs = RegSums(sX, sX2, sLY, sLY2, sXLY);
  rs.K = 2;
  rs.Sf[1] = sums_[sLX];
  rs.Sff[0][1] = rs.Sff[1][0] = sums_[sXLX];
  rs.Sff[1][1] = sums_[sLX2];
  rs.Sfv[1] = sums_[sLXLY];
  Extended p[3], r2;
  SolveLinearised("CalcHoerlFit", Bit(cfeXLE0) | Bit(cfeYLE0), rs, p, r2);
  a = static_cast<double>(std::exp(p[0]));
  b = static_cast<double>(std::exp(p[1]));
  c = static_cast<double>(p[2]);
  FitQual = static_cast<double>(r2);
  StoreModel(rmHoerl, 0, FitQual);
  params1_[0] = a;
  params1_[1] = b;
  params1_[2] = c;
}

void TCurveFit::CalcGaussFit(double& a, double& b, double& c, double& FitQual) {
  a = b = c = FitQual = 0.0;
  // ln y = p0 + p1 x + p2 x² = ln a - (x - b)² / c, so c = -1/p2, b = -p1 / (2 p2) and
  // ln a = p0 - p1² / (4 p2). A zero p2 (no curvature) leaves c infinite.
  detail::TRegSums rs = RegSums(sX, sX2, sLY, sLY2, sXLY);
  rs.K = 2;
  rs.Sf[1] = sums_[sX2];
  rs.Sff[0][1] = rs.Sff[1][0] = sums_[sX3];
  rs.Sff[1][1] = sums_[sX4];
  rs.Sfv[1] = sums_[sX2LY];
  Extended p[3], r2;
  SolveLinearised("CalcGaussFit", Bit(cfeYLE0), rs, p, r2);
  // No curvature beyond the rounding of the sums over the x range: the width is infinite.
  const Extended range = maxX_ - minX_;
  const Extended scale =
      std::fabs(p[0]) + std::fabs(p[1]) * std::max(std::fabs(minX_), std::fabs(maxX_));
  if (std::fabs(p[2]) * range * range <= 1e-13L * scale)
    Refuse("CalcGaussFit", msg::kWidthIsInfinite);
  a = static_cast<double>(std::exp(p[0] - p[1] * p[1] / (4.0L * p[2])));
  b = static_cast<double>(-p[1] / (2.0L * p[2]));
  c = static_cast<double>(-1.0L / p[2]);
  FitQual = static_cast<double>(r2);
  StoreModel(rmGaussian, 0, FitQual);
  params1_[0] = a;
  params1_[1] = b;
  params1_[2] = c;
}

}  // namespace quv
