// Inference for the current model of TCurveFit: the analysis-of-variance table and the
// prediction with confidence and prediction intervals.
#include <cmath>

#include "quv/math2/curvefit.h"
#include "quv/math2/curvefit_detail.h"
#include "quv/statis/statis.h"

namespace quv {

namespace {

// Parameters estimated by a model (0 where no ANOVA applies).
std::int32_t ParameterCount(TRegModel model, std::int32_t degree) {
  switch (model) {
    case rmNone:
    case rmCircle:
      return 0;
    case rmLinearOrigin:
      return 1;
    case rmParabolic:
    case rmGaussian:
    case rmHoerl:
      return 3;
    case rmPolynomial:
    case rmCenteredPoly:
      return degree + 1;
    default:
      return 2;
  }
}

}  // namespace

bool TCurveFit::CalcAnovaReg(TAnovaTable& Table) const {
  Table = TAnovaTable{};
  const std::int32_t p = ParameterCount(model_, degree_);
  if (p == 0 || n_ <= p || (residuals_.empty() && model_ != rmLinearOrigin)) return false;
  const bool origin = model_ == rmLinearOrigin;
  const Extended ym = origin ? 0.0L : sums_[sY] / n_;
  Extended sst = 0.0L, sse = 0.0L;
  for (std::int32_t i = 0; i < n_; ++i) {
    const Extended d = YData()[i] - ym;
    // The line through the origin evaluates to 0 in the model table: its residual is y - b x.
    const Extended e = origin ? YData()[i] - static_cast<Extended>(params1_[1]) * XData()[i]
                              : static_cast<Extended>(residuals_[static_cast<std::size_t>(i)]);
    sst += d * d;
    sse += e * e;
  }
  Table.SSTot = static_cast<double>(sst);
  Table.SSRes = static_cast<double>(sse);
  Table.SSReg = static_cast<double>(sst - sse);
  Table.DFTot = origin ? n_ : n_ - 1;
  Table.DFRes = n_ - p;
  Table.DFReg = Table.DFTot - Table.DFRes;
  Table.MSReg = Table.DFReg > 0 ? Table.SSReg / Table.DFReg : 0.0;
  Table.MSRes = Table.SSRes / Table.DFRes;
  if (Table.MSRes > 0.0 && Table.DFReg > 0) {
    Table.F = Table.MSReg / Table.MSRes;
    Table.PValue = Table.F > 0.0 ? 1.0 - FDistriIntegral(Table.F, Table.DFReg, Table.DFRes) : 1.0;
  } else {
    Table.F = Table.MSRes > 0.0 ? 0.0 : uc_MaxDouble;
    Table.PValue = Table.MSRes > 0.0 ? 1.0 : 0.0;
  }
  return true;
}

std::int32_t TCurveFit::Predict(TRegModel model, double x, double Confidence, std::int32_t PolyDeg,
                                double& y, double& HalfCIMean, double& HalfPI) {
  y = 0.0;
  HalfCIMean = HalfPI = -1.0;
  std::int32_t status = kCurveFitOk;
  if (model == rmLinearOrigin) {
    if (model_ != rmLinearOrigin) return kCurveFitNoModel;
  } else {
    status = CalcRegModel(model, PolyDeg);
    if (status != kCurveFitOk) return status;
  }
  // The line through the origin evaluates to 0 in the model table; a prediction gives b x.
  y = model == rmLinearOrigin ? params1_[1] * x : Evaluate(x);
  if (!(Confidence > 0.0 && Confidence < 1.0)) return status;

  Extended varFactor = 0.0L, sigma2 = -1.0L;
  std::int32_t df = 0;
  const auto n = static_cast<std::size_t>(n_);
  if (model == rmLinearOrigin) {
    Extended sxx = 0.0L, sse = 0.0L;
    for (std::size_t i = 0; i < n; ++i) {
      sxx += static_cast<Extended>(XData()[i]) * XData()[i];
      const Extended e = YData()[i] - static_cast<Extended>(params1_[1]) * XData()[i];
      sse += e * e;
    }
    df = n_ - 1;
    varFactor = static_cast<Extended>(x) * x / sxx;
    if (df > 0) sigma2 = sse / df;
  } else if (model == rmLinear || model == rmParabolic || model == rmPolynomial ||
             model == rmCenteredPoly) {
    const std::int32_t degree = model == rmLinear ? 1 : model == rmParabolic ? 2 : degree_;
    detail::TPolyQR qr;
    if (!detail::FitPolyQR({XData(), n}, {YData(), n}, degree, qr)) return status;
    Extended yq = 0.0L;
    qr.At(x, yq, varFactor);
    sigma2 = qr.Sigma2();
    df = n_ - degree - 1;
  }
  if (sigma2 < 0.0L) return status;
  const Extended t = tDistriQuantile(0.5 + Confidence / 2.0, df);
  HalfCIMean = static_cast<double>(t * std::sqrt(sigma2 * varFactor));
  HalfPI = static_cast<double>(t * std::sqrt(sigma2 * (1.0L + varFactor)));
  return status;
}

}  // namespace quv
