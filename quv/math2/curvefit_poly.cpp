// Polynomial least squares: Householder QR of the Vandermonde matrix of centred and scaled x
// in extended precision, and the two polynomial fits of TCurveFit.
//
// Centring and scaling to t in [-1, 1] keeps the Vandermonde matrix as well conditioned as
// the monomial basis allows; QR never forms the normal equations, whose condition would be
// the square. The coefficients are mapped back to powers of x (or of x - shift) in extended
// precision, and so is the covariance, so that the standard errors belong to the returned
// coefficients.
#include <algorithm>
#include <cmath>

#include "quv/math2/curvefit.h"
#include "quv/math2/curvefit_detail.h"

namespace quv {
namespace detail {

Extended TPolyQR::Sigma2() const {
  const std::int32_t df = N - Degree - 1;
  return df > 0 ? SSE / df : -1.0L;
}

void TPolyQR::At(Extended x, Extended& y, Extended& varFactor) const {
  const auto p = static_cast<std::size_t>(Degree + 1);
  const Extended t = (x - Center) / Scale;
  std::vector<Extended> g(p);
  Extended power = 1.0L;
  y = 0.0L;
  for (std::size_t j = 0; j < p; ++j) {
    g[j] = power;
    y += Coef[j] * power;
    power *= t;
  }
  // g' (R'R)^-1 g = |R^-T g|²; (R^-T g)_k = Σ_j RInv[j][k] g_j.
  varFactor = 0.0L;
  for (std::size_t k = 0; k < p; ++k) {
    Extended z = 0.0L;
    for (std::size_t j = 0; j <= k; ++j)
      z += RInv[j * p + k] * g[j];
    varFactor += z * z;
  }
}

bool FitPolyQR(std::span<const double> x, std::span<const double> y, std::int32_t Degree,
               TPolyQR& fit) {
  const std::size_t n = x.size();
  const auto p = static_cast<std::size_t>(Degree + 1);
  {
    std::vector<double> sorted(x.begin(), x.end());
    std::sort(sorted.begin(), sorted.end());
    const auto distinct =
        static_cast<std::size_t>(std::unique(sorted.begin(), sorted.end()) - sorted.begin());
    if (distinct < p) return false;
  }
  fit.Degree = Degree;
  fit.N = static_cast<std::int32_t>(n);
  Extended sx = 0.0L, sy = 0.0L;
  for (std::size_t i = 0; i < n; ++i) {
    sx += x[i];
    sy += y[i];
  }
  fit.Center = sx / static_cast<Extended>(n);
  const Extended ym = sy / static_cast<Extended>(n);
  Extended scale = 0.0L, sst = 0.0L;
  for (std::size_t i = 0; i < n; ++i) {
    scale = std::max(scale, std::fabs(x[i] - fit.Center));
    sst += (y[i] - ym) * (y[i] - ym);
  }
  fit.Scale = scale > 0.0L ? scale : 1.0L;
  fit.SST = sst;

  // Column-major Vandermonde matrix of t and the right-hand side.
  std::vector<Extended> a(n * p), b(y.begin(), y.end());
  for (std::size_t i = 0; i < n; ++i) {
    const Extended t = (x[i] - fit.Center) / fit.Scale;
    Extended power = 1.0L;
    for (std::size_t j = 0; j < p; ++j) {
      a[j * n + i] = power;
      power *= t;
    }
  }
  std::vector<Extended> r(p * p, 0.0L);
  for (std::size_t k = 0; k < p; ++k) {
    Extended* col = &a[k * n];
    Extended norm2 = 0.0L;
    for (std::size_t i = k; i < n; ++i)
      norm2 += col[i] * col[i];
    const Extended norm = std::sqrt(norm2);
    if (norm == 0.0L) return false;
    const Extended alpha = col[k] > 0.0L ? -norm : norm;
    // v = col[k..] - alpha e_k, stored in place; v'v = 2 norm (norm + |col[k]|).
    col[k] -= alpha;
    const Extended vtv = 2.0L * norm * (norm + std::fabs(col[k] + alpha));
    const auto reflect = [&](Extended* target) {
      Extended dot = 0.0L;
      for (std::size_t i = k; i < n; ++i)
        dot += col[i] * target[i];
      const Extended f = 2.0L * dot / vtv;
      for (std::size_t i = k; i < n; ++i)
        target[i] -= f * col[i];
    };
    for (std::size_t j = k + 1; j < p; ++j)
      reflect(&a[j * n]);
    reflect(b.data());
    r[k * p + k] = alpha;
    for (std::size_t j = k + 1; j < p; ++j)
      r[k * p + j] = a[j * n + k];
  }
  // A rank deficit that rounding hides: a pivot far below the first.
  for (std::size_t k = 0; k < p; ++k)
    if (std::fabs(r[k * p + k]) <= 1e-17L * std::fabs(r[0])) return false;

  fit.Coef.assign(p, 0.0L);
  for (std::size_t k = p; k-- > 0;) {
    Extended s = b[k];
    for (std::size_t j = k + 1; j < p; ++j)
      s -= r[k * p + j] * fit.Coef[j];
    fit.Coef[k] = s / r[k * p + k];
  }
  fit.SSE = 0.0L;
  for (std::size_t i = p; i < n; ++i)
    fit.SSE += b[i] * b[i];
  // R^-1 column by column (upper triangular).
  fit.RInv.assign(p * p, 0.0L);
  for (std::size_t c = 0; c < p; ++c) {
    fit.RInv[c * p + c] = 1.0L / r[c * p + c];
    for (std::size_t k = c; k-- > 0;) {
      Extended s = 0.0L;
      for (std::size_t j = k + 1; j <= c; ++j)
        s += r[k * p + j] * fit.RInv[j * p + c];
      fit.RInv[k * p + c] = -s / r[k * p + k];
    }
  }
  return true;
}

void PolyCoefficients(const TPolyQR& fit, Extended shift, std::vector<Extended>& coef,
                      std::vector<Extended>& stdErr) {
  const auto p = static_cast<std::size_t>(fit.Degree + 1);
  // t = (u - c0) / s with u = x - shift and c0 = Center - shift; T maps coefficients of t^j to
  // those of u^k: T[k][j] = C(j, k) (-c0)^(j - k) / s^j.
  const Extended c0 = fit.Center - shift;
  std::vector<Extended> trans(p * p, 0.0L);
  Extended invScalePow = 1.0L;
  for (std::size_t j = 0; j < p; ++j) {
    Extended binom = 1.0L;  // C(j, k), built downwards from k = j
    Extended cpow = 1.0L;   // (-c0)^(j - k)
    for (std::size_t k = j + 1; k-- > 0;) {
      trans[k * p + j] = binom * cpow * invScalePow;
      binom = binom * static_cast<Extended>(k) / static_cast<Extended>(j - k + 1);
      cpow *= -c0;
    }
    invScalePow /= fit.Scale;
  }
  coef.assign(p, 0.0L);
  stdErr.assign(p, -1.0L);
  for (std::size_t k = 0; k < p; ++k)
    for (std::size_t j = k; j < p; ++j)
      coef[k] += trans[k * p + j] * fit.Coef[j];
  const Extended sigma2 = fit.Sigma2();
  if (sigma2 < 0.0L) return;
  // Covariance T R^-1 R^-T T' sigma²: row k of M = T R^-1.
  for (std::size_t k = 0; k < p; ++k) {
    Extended sq = 0.0L;
    for (std::size_t m = 0; m < p; ++m) {
      Extended v = 0.0L;
      for (std::size_t j = k; j <= m; ++j)
        v += trans[k * p + j] * fit.RInv[j * p + m];
      sq += v * v;
    }
    stdErr[k] = std::sqrt(sigma2 * sq);
  }
}

}  // namespace detail

void TCurveFit::FitPolynomial(std::string_view fit, bool centred, std::int32_t Degree,
                              TDoubleArray& Params, TDoubleArray& StdErrs, double& XShift,
                              double& FitQual, bool& ok) {
  Params.assign(kCurveFitMaxDegree + 1, 0.0);
  StdErrs.assign(kCurveFitMaxDegree + 1, -1.0);
  XShift = 0.0;
  FitQual = 0.0;
  ok = false;
  if (Degree < 0 || Degree > kCurveFitMaxDegree) {
    ClearModelParams();
    return;
  }
  RequirePoints(fit, Degree + 1);
  const auto n = static_cast<std::size_t>(n_);
  detail::TPolyQR qr;
  if (!detail::FitPolyQR({XData(), n}, {YData(), n}, Degree, qr)) {
    ClearModelParams();
    return;
  }
  std::vector<Extended> coef, se;
  detail::PolyCoefficients(qr, centred ? qr.Center : 0.0L, coef, se);
  for (std::size_t k = 0; k < coef.size(); ++k) {
    Params[k] = static_cast<double>(coef[k]);
    StdErrs[k] = static_cast<double>(se[k]);
  }
  FitQual = qr.SST > 0.0L ? static_cast<double>(1.0L - qr.SSE / qr.SST) : 1.0;
  if (centred) XShift = static_cast<double>(qr.Center);
  ok = true;
  StoreModel(centred ? rmCenteredPoly : rmPolynomial, Degree, FitQual);
  std::copy(Params.begin(), Params.end(), params1_.begin());
  std::copy(StdErrs.begin(), StdErrs.end(), params2_.begin());
  xShift_ = XShift;
}

void TCurveFit::CalcPolyFit(std::int32_t Degree, TDoubleArray& Params, TDoubleArray& StdErrs,
                            double& FitQual, bool& ok) {
  double shift = 0.0;
  FitPolynomial("CalcPolyFit", false, Degree, Params, StdErrs, shift, FitQual, ok);
}

void TCurveFit::CalcPolyFit(std::int32_t Degree, TDoubleArray& Params, double& FitQual, bool& ok) {
  TDoubleArray stdErrs;
  CalcPolyFit(Degree, Params, stdErrs, FitQual, ok);
}

void TCurveFit::CalcCenteredPolyFit(std::int32_t Degree, TDoubleArray& Params,
                                    TDoubleArray& StdErrs, double& XShift, double& FitQual,
                                    bool& ok) {
  FitPolynomial("CalcCenteredPolyFit", true, Degree, Params, StdErrs, XShift, FitQual, ok);
}

void TCurveFit::CalcCenteredPolyFit(std::int32_t Degree, TDoubleArray& Params, double& XShift,
                                    double& FitQual, bool& ok) {
  TDoubleArray stdErrs;
  CalcCenteredPolyFit(Degree, Params, stdErrs, XShift, FitQual, ok);
}

}  // namespace quv
