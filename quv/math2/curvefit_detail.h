// Numerical kernels of the curve fit, free of the component: least squares by Householder QR,
// small regressions from sums, cubic splines.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "quv/base/types.h"

namespace quv::detail {

/// A polynomial least-squares fit in the variable t = (x - Center) / Scale, by Householder QR
/// of the Vandermonde matrix of t, all in extended precision.
struct TPolyQR {
  std::int32_t Degree = 0;
  Extended Center = 0.0L;
  Extended Scale = 1.0L;
  std::vector<Extended> Coef;  ///< Degree + 1 coefficients in powers of t
  std::vector<Extended> RInv;  ///< inverse of R, (Degree + 1)², row-major, upper triangular
  Extended SSE = 0.0L;         ///< residual sum of squares
  Extended SST = 0.0L;         ///< sum of squares of y about its mean
  std::int32_t N = 0;
  /// sigma² = SSE / (N - Degree - 1), or -1 without a degree of freedom.
  Extended Sigma2() const;
  /// Value and variance factor g' (R'R)^-1 g at x (the mean response has variance
  /// Sigma2 * factor).
  void At(Extended x, Extended& y, Extended& varFactor) const;
};

/// Fits a polynomial of Degree to (x, y); Center is the mean of x, Scale the largest distance
/// from it. False when fewer distinct x than Degree + 1 (result undefined then).
bool FitPolyQR(std::span<const double> x, std::span<const double> y, std::int32_t Degree,
               TPolyQR& fit);

/// Coefficients and their standard errors of the fit in powers of (x - shift): shift = 0 for
/// the plain polynomial, Center for the centred one. StdErr entries are -1 without a degree
/// of freedom.
void PolyCoefficients(const TPolyQR& fit, Extended shift, std::vector<Extended>& coef,
                      std::vector<Extended>& stdErr);

/// Sums of a regression of v on one or two regressors f1, f2 with intercept.
struct TRegSums {
  std::int32_t K = 1;  ///< number of regressors (1 or 2)
  Extended N = 0.0L;
  Extended Sf[2] = {};
  Extended Sff[2][2] = {};
  Extended Sv = 0.0L;
  Extended Svv = 0.0L;
  Extended Sfv[2] = {};
};

/// Solves the regression from its sums (centred normal equations in extended precision):
/// v = Coef[0] + Coef[1] f1 (+ Coef[2] f2). R2 is the coefficient of determination (1 for a
/// constant v). False when the centred normal matrix is singular.
bool SolveRegSums(const TRegSums& s, Extended Coef[3], Extended& R2);

/// Piecewise cubic with knots X, values A and second derivatives M at the knots (the form of
/// both splines). Beyond the ends the end pieces continue.
struct TSplineState {
  bool Stale = true;
  std::vector<Extended> X, A, M;  ///< knots, values, second derivatives
  std::vector<Extended> W;        ///< points merged into each knot
  bool SmoothStale = true;
  bool SmoothOk = false;
  std::vector<Extended> SA, SM;  ///< smoothing spline values and second derivatives
};

/// Evaluates the piecewise cubic (X, A, M) at x; X holds at least 2 knots.
Extended EvalCubic(const std::vector<Extended>& X, const std::vector<Extended>& A,
                   const std::vector<Extended>& M, Extended x);

/// Sorts the points by x and merges equal x into one knot with the mean y; W counts them.
void MergeKnots(std::span<const double> x, std::span<const double> y, std::vector<Extended>& X,
                std::vector<Extended>& A, std::vector<Extended>& W);

/// Second derivatives of the interpolating spline: natural end (M = 0) or prescribed slope.
void SplineSecondDerivs(const std::vector<Extended>& X, const std::vector<Extended>& A,
                        bool natural1, bool naturalN, Extended slope1, Extended slopeN,
                        std::vector<Extended>& M);

/// Reinsch's smoothing spline: values SA and second derivatives SM at the knots minimising
/// Σ W (A - s)² + lambda ∫ s''² (natural ends). Needs at least 3 knots.
void SmoothingSpline(const std::vector<Extended>& X, const std::vector<Extended>& A,
                     const std::vector<Extended>& W, Extended lambda, std::vector<Extended>& SA,
                     std::vector<Extended>& SM);

}  // namespace quv::detail
