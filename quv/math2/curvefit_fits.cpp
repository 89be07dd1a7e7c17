// The fit dispatcher and the fixed fits of TCurveFit: straight line, line through the origin,
// parabola and circle.
#include <cmath>
#include <string>

#include "quv/math2/curvefit.h"
#include "quv/math2/curvefit_detail.h"

namespace quv {

namespace {

// Minimum number of points of each model; 0 where the fit itself decides.
std::int32_t MinimumPoints(TRegModel model) {
  switch (model) {
    case rmNone:
    case rmPolynomial:
    case rmCenteredPoly:
      return 0;
    case rmLinear:
    case rmLinearOrigin:
      return 2;
    default:
      return 3;
  }
}

}  // namespace

void TCurveFit::StoreModel(TRegModel model, std::int32_t degree, double fitQual) {
  ClearModelParams();
  model_ = model;
  degree_ = degree;
  fitQual_ = fitQual;
}

void TCurveFit::Refuse(std::string_view fit, std::string_view text) {
  model_ = rmNone;
  RaiseFunctionError<EQUVMath2Error>(fit, text);
}

void TCurveFit::RequirePoints(std::string_view fit, std::int32_t needed) {
  if (n_ < needed) Refuse(fit, msg::kNotEnoughDataPoints);
}

std::int32_t TCurveFit::CalcRegModel(TRegModel model, std::int32_t PolyDeg) {
  if (model == rmNone) return kCurveFitNoModel;
  if (model > rmLinearOrigin || MinimumPoints(model) > n_) return kCurveFitTooFewPoints;
  const bool polynomial = model == rmPolynomial || model == rmCenteredPoly;
  if (model != model_ || (polynomial && PolyDeg != degree_)) {
    double a = 0.0, b = 0.0, c = 0.0, q = 0.0;
    TDoubleArray params;
    bool ok = true;
    switch (model) {
      case rmLinear:
        CalcLinFit(b, a, q);
        break;
      case rmParabolic:
        CalcParabolFit(a, b, c, q);
        break;
      case rmGaussian:
        CalcGaussFit(a, b, c, q);
        break;
      case rmReciLin:
        CalcReciLinFit(a, b, q);
        break;
      case rmHyperbolic:
        CalcHyperbolFit(a, b, q);
        break;
      case rmReciHyperbolic:
        CalcReciHyperbolFit(a, b, q);
        break;
      case rmLog:
        CalcLogFit(a, b, q);
        break;
      case rmReciLog:
        CalcReciLogFit(a, b, q);
        break;
      case rmPower:
        CalcPowerFit(a, b, q);
        break;
      case rmExpo:
        CalcExponentialFit(a, b, q);
        break;
      case rmHoerl:
        CalcHoerlFit(a, b, c, q);
        break;
      case rmPolynomial:
        CalcPolyFit(PolyDeg, params, q, ok);
        break;
      case rmCenteredPoly:
        CalcCenteredPolyFit(PolyDeg, params, c, q, ok);
        break;
      default:
        break;  // rmCircle and rmLinearOrigin have their own entry points
    }
    if (!ok) {
      FillResiduals();
      return kCurveFitNotOk;
    }
  }
  FillResiduals();
  return kCurveFitOk;
}

void TCurveFit::FillResiduals() {
  residuals_.resize(static_cast<std::size_t>(n_));
  for (std::int32_t i = 0; i < n_; ++i)
    residuals_[static_cast<std::size_t>(i)] = YData()[i] - EvaluateIntern(model_, XData()[i]);
}

void TCurveFit::CalcLinFit(double& k, double& d, double& FitQual) {
  k = d = FitQual = 0.0;
  RequirePoints("CalcLinFit", 2);
  double xm = 0.0, ym = 0.0, var = 0.0;
  data_->MeanVar(1, 1, 1, n_, xm, var);
  data_->MeanVar(2, 1, 2, n_, ym, var);
  Extended su = 0.0L, sv = 0.0L, suu = 0.0L, svv = 0.0L, suv = 0.0L;
  for (std::int32_t i = 0; i < n_; ++i) {
    const Extended u = static_cast<Extended>(XData()[i]) - xm;
    const Extended v = static_cast<Extended>(YData()[i]) - ym;
    su += u;
    sv += v;
    suu += u * u;
    svv += v * v;
    suv += u * v;
  }
  const Extended n = n_;
  const Extended det = n * suu - su * su;
  if (det == 0.0L) Refuse("CalcLinFit", msg::kSlopeIsInfinite);
  const Extended slope = (n * suv - su * sv) / det;
  const Extended icpt = (suu * sv - su * suv) / det;  // intercept in u, v
  k = static_cast<double>(slope);
  d = static_cast<double>(icpt - slope * xm + ym);
  const Extended t = svv - sv * sv / n;
  FitQual = t == 0.0L ? 1.0 : static_cast<double>((d * sv + slope * suv - sv * sv / n) / t);

  // Standard errors of the intercept and slope from the residuals about the line.
  Extended sse = 0.0L;
  for (std::int32_t i = 0; i < n_; ++i) {
    const Extended e = (static_cast<Extended>(YData()[i]) - ym) - icpt -
                       slope * (static_cast<Extended>(XData()[i]) - xm);
    sse += e * e;
  }
  StoreModel(rmLinear, 0, 0.0);
  params1_[0] = d;
  params1_[1] = k;
  if (n_ > 2) {
    const Extended s2 = sse / (n - 2);
    const Extended sxx = suu - su * su / n;
    const Extended mean = xm + su / n;
    params2_[0] = static_cast<double>(std::sqrt(s2 * (1.0L / n + mean * mean / sxx)));
    params2_[1] = static_cast<double>(std::sqrt(s2 / sxx));
  }
}

void TCurveFit::CalcLinFitThroughOrigin(double& k, double& FitQual) {
  k = FitQual = 0.0;
  RequirePoints("CalcLinFitThroughOrigin", 2);
  Extended sy = 0.0L, sxx = 0.0L, syy = 0.0L, sxy = 0.0L;
  for (std::int32_t i = 0; i < n_; ++i) {
    const Extended x = XData()[i], y = YData()[i];
    sy += y;
    sxx += x * x;
    syy += y * y;
    sxy += x * y;
  }
  if (sxx == 0.0L) Refuse("CalcLinFitThroughOrigin", msg::kSlopeIsInfinite);
  const Extended slope = sxy / sxx;
  Extended sse = 0.0L;
  for (std::int32_t i = 0; i < n_; ++i) {
    const Extended e = YData()[i] - slope * XData()[i];
    sse += e * e;
  }
  if (syy == 0.0L) Refuse("CalcLinFitThroughOrigin", msg::kSlopeIsUndefined);
  k = static_cast<double>(slope);
  FitQual = static_cast<double>(1.0L - sse / syy);
  StoreModel(rmLinearOrigin, 0, 0.0);
  params1_[1] = k;
  params2_[1] = static_cast<double>(std::sqrt(sse / (n_ - 1) / sxx));
}

void TCurveFit::CalcParabolFit(double& a, double& b, double& c, double& FitQual) {
  a = b = c = FitQual = 0.0;
  RequirePoints("CalcParabolFit", 3);
  double xm = 0.0, ym = 0.0, var = 0.0;
  data_->MeanVar(1, 1, 1, n_, xm, var);
  data_->MeanVar(2, 1, 2, n_, ym, var);
  Extended su = 0, sv = 0, suu = 0, svv = 0, suv = 0, su2v = 0, su3 = 0, su4 = 0;
  for (std::int32_t i = 0; i < n_; ++i) {
    const Extended u = static_cast<Extended>(XData()[i]) - xm;
    const Extended v = static_cast<Extended>(YData()[i]) - ym;
    su += u;
    sv += v;
    suu += u * u;
    svv += v * v;
    suv += u * v;
    su2v += u * u * v;
    su3 += u * u * u;
    su4 += u * u * u * u;
  }
  // Normal equations of v = alpha + beta u + gamma u², by elimination without pivoting; a
  // zero pivot leaves its coefficient at 0.
  const Extended n = n_;
  Extended m[3][4] = {{n, su, suu, sv}, {su, suu, su3, suv}, {suu, su3, su4, su2v}};
  for (int p = 0; p < 3; ++p) {
    if (m[p][p] == 0.0L) continue;
    for (int r = p + 1; r < 3; ++r) {
      const Extended f = m[r][p] / m[p][p];
      for (int col = p; col < 4; ++col)
        m[r][col] -= f * m[p][col];
    }
  }
  Extended sol[3] = {0.0L, 0.0L, 0.0L};
  for (int p = 2; p >= 0; --p) {
    if (m[p][p] == 0.0L) continue;
    Extended s = m[p][3];
    for (int col = p + 1; col < 3; ++col)
      s -= m[p][col] * sol[col];
    sol[p] = s / m[p][p];
  }
  const Extended alpha = sol[0], beta = sol[1], gamma = sol[2];
  a = static_cast<double>(gamma * xm * xm + alpha - beta * xm + ym);
  b = static_cast<double>(beta - 2.0L * gamma * xm);
  c = static_cast<double>(gamma);
  const Extended syy = svv - sv * sv / n;
  FitQual = syy == 0.0L
                ? 1.0
                : static_cast<double>((alpha * sv + beta * suv + gamma * su2v - sv * sv / n) / syy);
  StoreModel(rmParabolic, 0, FitQual);
  params1_[0] = a;
  params1_[1] = b;
  params1_[2] = c;
  // Standard errors from the QR fit of the same parabola.
  detail::TPolyQR qr;
  const auto count = static_cast<std::size_t>(n_);
  if (detail::FitPolyQR({XData(), count}, {YData(), count}, 2, qr)) {
    std::vector<Extended> coef, se;
    detail::PolyCoefficients(qr, 0.0L, coef, se);
    for (std::size_t j = 0; j < 3; ++j)
      params2_[j] = static_cast<double>(se[j]);
  }
}

void TCurveFit::CalcCircleFit(double& r, double& xc, double& yc) {
  r = xc = yc = 0.0;
  RequirePoints("CalcCircleFit", 3);
  const Extended n = n_;
  const auto& s = sums_;
  const Extended A = n * s[sXY] - s[sX] * s[sY];
  const Extended B = s[sY] * s[sY] - n * s[sY2];
  const Extended C = s[sX] * s[sX] - n * s[sX2];
  const Extended D = (s[sX2] + s[sY2]) * s[sY] - n * (s[sX2Y] + s[sY3]);
  const Extended E = (s[sX2] + s[sY2]) * s[sX] - n * (s[sX3] + s[sXY2]);
  const Extended det = B * C - A * A;
  if (det == 0.0L) Refuse("CalcCircleFit", msg::kRadiusIsInfinite);
  const Extended cx = (A * D + B * E) / 2.0L / det;
  const Extended cy = (A * E + C * D) / 2.0L / det;
  const Extended r2 =
      ((cx * cx + cy * cy) * n + s[sX2] + s[sY2] - 2.0L * (s[sX] * cx + s[sY] * cy)) / n;
  xc = static_cast<double>(cx);
  yc = static_cast<double>(cy);
  r = static_cast<double>(std::sqrt(r2));
  StoreModel(rmCircle, 0, 0.0);
  params1_[0] = xc;
  params1_[1] = yc;
  params1_[2] = r;
}

}  // namespace quv
