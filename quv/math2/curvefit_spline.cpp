// Cubic splines of TCurveFit: the interpolating spline (natural or prescribed end slopes) and
// Reinsch's smoothing spline. Both are piecewise cubics given by values and second
// derivatives at the knots, rebuilt lazily after any change of data or settings.
#include <algorithm>
#include <cmath>
#include <numeric>

#include "quv/math2/curvefit.h"
#include "quv/math2/curvefit_detail.h"

namespace quv {
namespace detail {

Extended EvalCubic(const std::vector<Extended>& X, const std::vector<Extended>& A,
                   const std::vector<Extended>& M, Extended x) {
  const std::size_t m = X.size();
  std::size_t i = static_cast<std::size_t>(std::upper_bound(X.begin(), X.end(), x) - X.begin());
  i = std::clamp<std::size_t>(i, 1, m - 1) - 1;  // piece [X[i], X[i+1]]
  const Extended h = X[i + 1] - X[i];
  const Extended l = X[i + 1] - x, r = x - X[i];
  return M[i] * l * l * l / (6.0L * h) + M[i + 1] * r * r * r / (6.0L * h) +
         (A[i] / h - M[i] * h / 6.0L) * l + (A[i + 1] / h - M[i + 1] * h / 6.0L) * r;
}

void MergeKnots(std::span<const double> x, std::span<const double> y, std::vector<Extended>& X,
                std::vector<Extended>& A, std::vector<Extended>& W) {
  std::vector<std::size_t> order(x.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::stable_sort(order.begin(), order.end(),
                   [&x](std::size_t a, std::size_t b) { return x[a] < x[b]; });
  X.clear();
  A.clear();
  W.clear();
  for (std::size_t k : order) {
    if (!X.empty() && X.back() == x[k]) {
      A.back() += y[k];
      W.back() += 1.0L;
    } else {
      X.push_back(x[k]);
      A.push_back(y[k]);
      W.push_back(1.0L);
    }
  }
  for (std::size_t k = 0; k < A.size(); ++k)
    A[k] /= W[k];
}

void SplineSecondDerivs(const std::vector<Extended>& X, const std::vector<Extended>& A,
                        bool natural1, bool naturalN, Extended slope1, Extended slopeN,
                        std::vector<Extended>& M) {
  const std::size_t m = X.size();
  M.assign(m, 0.0L);
  if (m < 2) return;
  std::vector<Extended> sub(m, 0.0L), diag(m, 1.0L), sup(m, 0.0L), rhs(m, 0.0L);
  for (std::size_t i = 1; i + 1 < m; ++i) {
    const Extended h0 = X[i] - X[i - 1], h1 = X[i + 1] - X[i];
    sub[i] = h0;
    diag[i] = 2.0L * (h0 + h1);
    sup[i] = h1;
    rhs[i] = 6.0L * ((A[i + 1] - A[i]) / h1 - (A[i] - A[i - 1]) / h0);
  }
  const Extended hf = X[1] - X[0], hl = X[m - 1] - X[m - 2];
  if (!natural1) {
    diag[0] = 2.0L * hf;
    sup[0] = hf;
    rhs[0] = 6.0L * ((A[1] - A[0]) / hf - slope1);
  }
  if (!naturalN) {
    sub[m - 1] = hl;
    diag[m - 1] = 2.0L * hl;
    rhs[m - 1] = 6.0L * (slopeN - (A[m - 1] - A[m - 2]) / hl);
  }
  // Thomas algorithm; the system is diagonally dominant.
  for (std::size_t i = 1; i < m; ++i) {
    const Extended f = sub[i] / diag[i - 1];
    diag[i] -= f * sup[i - 1];
    rhs[i] -= f * rhs[i - 1];
  }
  M[m - 1] = rhs[m - 1] / diag[m - 1];
  for (std::size_t i = m - 1; i-- > 0;)
    M[i] = (rhs[i] - sup[i] * M[i + 1]) / diag[i];
}

void SmoothingSpline(const std::vector<Extended>& X, const std::vector<Extended>& A,
                     const std::vector<Extended>& W, Extended lambda, std::vector<Extended>& SA,
                     std::vector<Extended>& SM) {
  const std::size_t m = X.size();
  const std::size_t k = m - 2;  // interior knots: unknown second derivatives
  std::vector<Extended> h(m - 1);
  for (std::size_t i = 0; i + 1 < m; ++i)
    h[i] = X[i + 1] - X[i];
  // Column j of Q (interior knot j + 1) has q0 at row j, q1 at row j + 1, q2 at row j + 2.
  std::vector<Extended> q0(k), q1(k), q2(k), rhs(k);
  for (std::size_t j = 0; j < k; ++j) {
    q0[j] = 1.0L / h[j];
    q1[j] = -1.0L / h[j] - 1.0L / h[j + 1];
    q2[j] = 1.0L / h[j + 1];
    rhs[j] = q0[j] * A[j] + q1[j] * A[j + 1] + q2[j] * A[j + 2];
  }
  // B = R + lambda Q' W^-1 Q, symmetric with two off-diagonals b1, b2.
  std::vector<Extended> b0(k), b1(k, 0.0L), b2(k, 0.0L);
  for (std::size_t j = 0; j < k; ++j) {
    b0[j] = (h[j] + h[j + 1]) / 3.0L +
            lambda * (q0[j] * q0[j] / W[j] + q1[j] * q1[j] / W[j + 1] + q2[j] * q2[j] / W[j + 2]);
    if (j + 1 < k)
      b1[j] =
          h[j + 1] / 6.0L + lambda * (q1[j] * q0[j + 1] / W[j + 1] + q2[j] * q1[j + 1] / W[j + 2]);
    if (j + 2 < k) b2[j] = lambda * q2[j] * q0[j + 2] / W[j + 2];
  }
  // Band Cholesky B = L L' (L has l0 on the diagonal, l1 and l2 below it), then solve.
  std::vector<Extended> l0(k), l1(k, 0.0L), l2(k, 0.0L), z(k);
  for (std::size_t j = 0; j < k; ++j) {
    Extended d = b0[j];
    if (j >= 1) d -= l1[j - 1] * l1[j - 1];
    if (j >= 2) d -= l2[j - 2] * l2[j - 2];
    l0[j] = std::sqrt(d);
    Extended e = b1[j];
    if (j >= 1) e -= l2[j - 1] * l1[j - 1];
    l1[j] = e / l0[j];
    l2[j] = b2[j] / l0[j];
    Extended s = rhs[j];
    if (j >= 1) s -= l1[j - 1] * z[j - 1];
    if (j >= 2) s -= l2[j - 2] * z[j - 2];
    z[j] = s / l0[j];
  }
  std::vector<Extended> gamma(k);
  for (std::size_t j = k; j-- > 0;) {
    Extended s = z[j];
    if (j + 1 < k) s -= l1[j] * gamma[j + 1];
    if (j + 2 < k) s -= l2[j] * gamma[j + 2];
    gamma[j] = s / l0[j];
  }
  SM.assign(m, 0.0L);
  SA = A;
  for (std::size_t j = 0; j < k; ++j) {
    SM[j + 1] = gamma[j];
    SA[j] -= lambda * q0[j] * gamma[j] / W[j];
    SA[j + 1] -= lambda * q1[j] * gamma[j] / W[j + 1];
    SA[j + 2] -= lambda * q2[j] * gamma[j] / W[j + 2];
  }
}

}  // namespace detail

void TCurveFit::MarkSplineStale() {
  spline_->Stale = true;
  spline_->SmoothStale = true;
}

void TCurveFit::SetNatural1(bool value) {
  natural1_ = value;
  MarkSplineStale();
}
void TCurveFit::SetNaturalN(bool value) {
  naturalN_ = value;
  MarkSplineStale();
}
void TCurveFit::SetY1Dash(double value) {
  y1Dash_ = value;
  MarkSplineStale();
}
void TCurveFit::SetYNDash(double value) {
  yNDash_ = value;
  MarkSplineStale();
}
void TCurveFit::SetSplineSmoothing(double value) {
  smoothing_ = std::isnan(value) ? 0.0 : std::clamp(value, 0.0, 1.0);
  MarkSplineStale();
}

const detail::TSplineState& TCurveFit::Spline() {
  detail::TSplineState& s = *spline_;
  if (s.Stale) {
    const auto n = static_cast<std::size_t>(n_);
    detail::MergeKnots({XData(), n}, {YData(), n}, s.X, s.A, s.W);
    s.M.clear();
    if (s.X.size() >= 2)
      detail::SplineSecondDerivs(s.X, s.A, natural1_, naturalN_, y1Dash_, yNDash_, s.M);
    s.Stale = false;
  }
  return s;
}

double TCurveFit::CubicSpline(double x) {
  const detail::TSplineState& s = Spline();
  if (s.X.empty()) return 0.0;
  if (s.X.size() == 1) return static_cast<double>(s.A[0]);
  return static_cast<double>(detail::EvalCubic(s.X, s.A, s.M, x));
}

void TCurveFit::SmoothedSpline(double x, double& y, bool& ok) {
  Spline();
  detail::TSplineState& s = *spline_;
  if (s.SmoothStale) {
    const std::size_t m = s.X.size();
    s.SmoothOk = m >= 3;
    if (s.SmoothOk && smoothing_ >= 1.0) {
      // The limit of infinite smoothing: the weighted least-squares straight line.
      Extended sw = 0, sx = 0, sy = 0, sxx = 0, sxy = 0;
      for (std::size_t i = 0; i < m; ++i) {
        sw += s.W[i];
        sx += s.W[i] * s.X[i];
        sy += s.W[i] * s.A[i];
        sxx += s.W[i] * s.X[i] * s.X[i];
        sxy += s.W[i] * s.X[i] * s.A[i];
      }
      const Extended slope = (sxy - sx * sy / sw) / (sxx - sx * sx / sw);
      const Extended icpt = (sy - slope * sx) / sw;
      s.SA.resize(m);
      for (std::size_t i = 0; i < m; ++i)
        s.SA[i] = icpt + slope * s.X[i];
      s.SM.assign(m, 0.0L);
    } else if (s.SmoothOk) {
      const Extended h = (s.X[m - 1] - s.X[0]) / static_cast<Extended>(m - 1);
      const Extended f = smoothing_;
      detail::SmoothingSpline(s.X, s.A, s.W, f / (1.0L - f) * h * h * h, s.SA, s.SM);
    }
    s.SmoothStale = false;
  }
  ok = s.SmoothOk;
  y = ok ? static_cast<double>(detail::EvalCubic(s.X, s.SA, s.SM, x)) : 0.0;
}

}  // namespace quv
