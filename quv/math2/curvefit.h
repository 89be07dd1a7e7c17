// TCurveFit: collects (x, y) pairs one at a time, keeps running sums over them in extended
// precision, and delivers descriptive statistics, rank correlations, least-squares fits of
// fifteen regression models with their residuals, interpolating and smoothing cubic splines,
// and the ASC export and import of the two columns.
//
// Parameter sets. Set 1 holds the coefficients of the current model (a, b, c at indexes 0, 1, 2;
// p0..p10 for the polynomials). Set 2 holds the standard error of each coefficient of set 1
// for the fits that estimate it: the straight line (standard errors of a and b, from n - 2
// degrees of freedom), the line through the origin (of b, n - 1), the parabola and both
// polynomial fits (of p0..pdegree, n - degree - 1). Every other entry of set 2 is -1.0, also
// when a fit has no degree of freedom left to estimate it.
//
// Which sums the linearised fits need, and which flag (set by an entered point) refuses them:
//   rmGaussian        ln y = quadratic in x          cfeYLE0
//   rmReciLin         1/y = a + b x                   cfeYEQ0
//   rmHyperbolic      y = a + b/x                     cfeXEQ0
//   rmReciHyperbolic  1/y = a + b/x                   cfeXEQ0, cfeYEQ0
//   rmLog             y = a + b ln x                  cfeXLE0
//   rmReciLog         1/y = a + b ln x                cfeXLE0, cfeYEQ0
//   rmPower           ln y = ln a + b ln x            cfeXLE0, cfeYLE0
//   rmExpo            ln y = ln a + b x               cfeYLE0
//   rmHoerl           ln y = ln a + x ln b + c ln x   cfeXLE0, cfeYLE0
// A refused fit raises EQUVMath2Error "<Fit>: data contain <what>" (for instance
// "CalcPowerFit: data contain y <= 0") and leaves rmNone. Their fit quality is the coefficient
// of determination of the linearised regression (1 when the transformed y is constant).
//
// Accuracy of the polynomial and straight-line fits against the certified values of the NIST
// StRD linear regression data sets (tests/data/nist_*.txt), as the smallest number of correct
// digits -log10(|relative error|) over the coefficients / over their standard errors, measured
// by the tests of this unit on x86-64 (GCC, 80-bit long double):
//
//   data set   fit                        coefficients   standard errors
//   Norris     CalcLinFit                 14.1           13.9
//   Pontius    CalcPolyFit degree 2       13.5           13.8
//   NoInt1     CalcLinFitThroughOrigin    14.7           15.0
//   NoInt2     CalcLinFitThroughOrigin    15.0           14.9
//   Filip      CalcPolyFit degree 10      14.0           14.8
//   Wampler1   CalcPolyFit degree 5       12.7           (certified 0)
//   Wampler2   CalcPolyFit degree 5       13.2           (certified 0)
//   Wampler3   CalcPolyFit degree 5       12.9           14.5
//   Wampler4   CalcPolyFit degree 5       13.0           14.5
//   Wampler5   CalcPolyFit degree 5       11.1           14.5
// (15 is the cap: the certified values carry 15 digits.)
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "quv/base/base.h"
#include "quv/matrix/matrix.h"

namespace quv {

/// The regression models; the ordinals are fixed.
enum TRegModel : std::uint8_t {
  rmNone,
  rmLinear,
  rmParabolic,
  rmGaussian,
  rmReciLin,
  rmHyperbolic,
  rmReciHyperbolic,
  rmLog,
  rmReciLog,
  rmPower,
  rmExpo,
  rmHoerl,
  rmCircle,
  rmPolynomial,
  rmCenteredPoly,
  rmLinearOrigin
};

/// Reasons why a sum of the linearised models became unusable; bit i of CurveFitErrors().
enum TCurveFitError : std::uint8_t { cfeXLE0, cfeYLE0, cfeXEQ0, cfeYEQ0 };

/// Results of CalcRegModel and Predict.
inline constexpr std::int32_t kCurveFitOk = 0;
inline constexpr std::int32_t kCurveFitTooFewPoints = -1;
inline constexpr std::int32_t kCurveFitNoModel = -2;
/// A polynomial fit came back not ok (invalid degree or too few distinct x); the model is
/// rmNone and the residuals are y - 0.
inline constexpr std::int32_t kCurveFitNotOk = -3;

/// Highest polynomial degree (parameter sets hold 11 coefficients).
inline constexpr std::int32_t kCurveFitMaxDegree = 10;
/// Rows by which the data store grows.
inline constexpr std::int32_t kCurveFitGrowRows = 1000;

/// Literals of the curve fit.
namespace msg {
inline constexpr std::string_view kCurveFitHeader = "Exported by QUV TCurveFit component:";
inline constexpr std::string_view kCurveFitImportColumns =
    "TCurveFit.ImportASC: number of columns must be 2 (is actually";
inline constexpr std::string_view kNotEnoughDataPoints = "not enough data points";
inline constexpr std::string_view kSlopeIsInfinite = "slope is infinite";
inline constexpr std::string_view kSlopeIsUndefined = "slope is undefined";
inline constexpr std::string_view kRadiusIsInfinite = "radius is infinite";
inline constexpr std::string_view kWidthIsInfinite = "width is infinite";
inline constexpr std::string_view kPointNotFinite = "x and y must be finite numbers";
}  // namespace msg

namespace detail {
struct TSplineState;
struct TRegSums;
}  // namespace detail

/// The analysis-of-variance table of the current model (CalcAnovaReg).
struct TAnovaTable {
  double SSReg = 0.0;  ///< regression sum of squares, SSTot - SSRes
  double SSRes = 0.0;  ///< residual sum of squares
  double SSTot = 0.0;  ///< total sum of squares about the mean (about 0 for rmLinearOrigin)
  std::int32_t DFReg = 0;
  std::int32_t DFRes = 0;
  std::int32_t DFTot = 0;
  double MSReg = 0.0;
  double MSRes = 0.0;
  double F = 0.0;       ///< MSReg / MSRes
  double PValue = 1.0;  ///< probability of an F at least this large by chance
};

class TCurveFit : public TComponent {
 public:
  /// Creates the 2 x 1000 data store, sets the spline defaults and calls Init.
  explicit TCurveFit(TComponent* owner = nullptr);
  ~TCurveFit() override;

  // ----- data entry (curvefit.cpp) -----

  /// Empties the data, the sums, the flags, the extremes and the model.
  void Init();
  /// Adds a point and returns the new count. Clears the model. Raises EQUVMath2Error
  /// "EnterStatValue: x and y must be finite numbers" (nothing changed) for NaN or infinity.
  std::int32_t EnterStatValue(double x, double y);
  /// Updates extremes and running sums alone (no point is stored). Raises as EnterStatValue.
  void AdjustSums(double x, double y);
  /// Removes point ix (1-based) and takes it out of the sums; later points move up one row and
  /// the extremes are recomputed from the remaining points. Flags stay set. Other ix: ignored.
  void RemoveStatValue(std::int32_t ix);
  /// Exchanges the roles of x and y (Σx²·ln y and Σy²·ln x keep their places; the flags stay).
  void FlipXY();
  double GetDataX(std::int32_t ix) const;
  double GetDataY(std::int32_t ix) const;
  std::int32_t NrOfPoints() const { return n_; }
  /// The TCurveFitError flags as a bit set (bit cfeXLE0 .. cfeYEQ0).
  std::uint8_t CurveFitErrors() const { return flags_; }
  bool HasCurveFitError(TCurveFitError e) const { return (flags_ >> e) & 1U; }
  double MinX() const { return minX_; }
  double MaxX() const { return maxX_; }
  double MinY() const { return minY_; }
  double MaxY() const { return maxY_; }
  void ClearModelParams();

  // ----- fits (curvefit_fits.cpp, curvefit_linearised.cpp, curvefit_poly.cpp) -----

  /// Fits model (PolyDeg for the polynomials) and fills the residuals. Returns kCurveFitOk,
  /// kCurveFitTooFewPoints, kCurveFitNoModel or kCurveFitNotOk. rmCircle and rmLinearOrigin
  /// are not fitted here. Exceptions of the fits propagate.
  std::int32_t CalcRegModel(TRegModel model, std::int32_t PolyDeg);
  /// y = d + k x. FitQual reaches the caller only here: GetFitQual reads 0.0 afterwards.
  void CalcLinFit(double& k, double& d, double& FitQual);
  /// y = k x; FitQual = 1 - SSE / Σy².
  void CalcLinFitThroughOrigin(double& k, double& FitQual);
  /// y = a + b x + c x² from the normal equations of the centred data.
  void CalcParabolFit(double& a, double& b, double& c, double& FitQual);
  /// Algebraic least-squares circle from the running sums.
  void CalcCircleFit(double& r, double& xc, double& yc);
  void CalcGaussFit(double& a, double& b, double& c, double& FitQual);
  void CalcReciLinFit(double& a, double& b, double& FitQual);
  void CalcHyperbolFit(double& a, double& b, double& FitQual);
  void CalcReciHyperbolFit(double& a, double& b, double& FitQual);
  void CalcLogFit(double& a, double& b, double& FitQual);
  void CalcReciLogFit(double& a, double& b, double& FitQual);
  void CalcPowerFit(double& a, double& b, double& FitQual);
  void CalcExponentialFit(double& a, double& b, double& FitQual);
  void CalcHoerlFit(double& a, double& b, double& c, double& FitQual);
  /// Polynomial of Degree (0..10) by Householder QR of the Vandermonde matrix of centred and
  /// scaled x in extended precision. Params gets the 11 coefficients p0..p10 (unused ones 0),
  /// StdErrs their standard errors (-1.0 where not estimated), FitQual R². ok is false (model
  /// rmNone, outputs zero) for a degree outside 0..10 or fewer distinct x than Degree + 1.
  /// Fewer points than Degree + 1 raise "CalcPolyFit: not enough data points".
  void CalcPolyFit(std::int32_t Degree, TDoubleArray& Params, double& FitQual, bool& ok);
  void CalcPolyFit(std::int32_t Degree, TDoubleArray& Params, TDoubleArray& StdErrs,
                   double& FitQual, bool& ok);
  /// The same in powers of (x - XShift), XShift being the mean of x.
  void CalcCenteredPolyFit(std::int32_t Degree, TDoubleArray& Params, double& XShift,
                           double& FitQual, bool& ok);
  void CalcCenteredPolyFit(std::int32_t Degree, TDoubleArray& Params, TDoubleArray& StdErrs,
                           double& XShift, double& FitQual, bool& ok);

  // ----- the model (curvefit.cpp) -----

  double Evaluate(double x) const { return EvaluateIntern(model_, x); }
  /// Value of model at x with the stored parameters.
  double EvaluateIntern(TRegModel model, double x) const;
  /// ParType 1: coefficient ix, ParType 2: its standard error (0 <= ix <= 10, model current).
  double GetModelPar(std::int32_t ParType, std::int32_t ix) const;
  double GetFitQual() const { return model_ != rmNone ? fitQual_ : 0.0; }
  double GetXShift() const { return model_ == rmCenteredPoly ? xShift_ : 0.0; }
  TRegModel CurrentModel() const { return model_; }
  std::int32_t CurrentDegree() const { return degree_; }
  /// y_ix - model(x_ix), 1-based; 0.0 without a model or out of range.
  double GetResidual(std::int32_t ix) const;
  std::int32_t NrOfResiduals() const { return static_cast<std::int32_t>(residuals_.size()); }
  double GetStdDevResidual() const;

  // ----- inference (curvefit_anova.cpp) -----

  /// ANOVA of the current model from its residuals (which CalcRegModel fills; for
  /// rmLinearOrigin the residuals y - b x are taken directly, as the model evaluates to 0). The
  /// model's parameter count is 2 for the two-parameter models, 3 for rmParabolic, rmGaussian and
  /// rmHoerl, degree + 1 for the polynomials, 1 for rmLinearOrigin (whose sums are about 0).
  /// False (table zero, PValue 1) without a current model with residuals, for rmCircle, or
  /// when no residual degree of freedom is left.
  bool CalcAnovaReg(TAnovaTable& Table) const;
  /// Fits model (as CalcRegModel(model, PolyDeg) does, unless it is current) and returns at x
  /// its value y, and the half-widths of the two-sided confidence intervals at the level
  /// Confidence (for example 0.95): of the mean response (HalfCIMean) and of a new observation
  /// (HalfPI). Half-widths are given for the models linear in their parameters (rmLinear,
  /// rmParabolic, rmPolynomial, rmCenteredPoly, rmLinearOrigin); the others, a Confidence
  /// outside (0, 1) and a fit without degree of freedom give -1.0. Returns the status of
  /// CalcRegModel (rmLinearOrigin must have been fitted by CalcLinFitThroughOrigin; its y is
  /// b x, although the model itself evaluates to 0).
  std::int32_t Predict(TRegModel model, double x, double Confidence, std::int32_t PolyDeg,
                       double& y, double& HalfCIMean, double& HalfPI);

  // ----- statistics (curvefit_stats.cpp) -----

  double GetMeanX() const;
  double GetMeanY() const;
  double GetMeanDiff() const;
  double GetRMSDiff() const;
  /// Standard deviations from the running sums; 0.0 for fewer than 3 points.
  double GetStdDevX() const;
  double GetStdDevY() const;
  double GetStdDevDiff() const;
  double GetRxy() const;
  /// Sample-corrected skewness and excess kurtosis of a column (0 for fewer than 4 points).
  double GetSkewnessX() const;
  double GetSkewnessY() const;
  double GetKurtosisX() const;
  double GetKurtosisY() const;
  /// Percentile p (0..100) of a column, interpolated between order statistics; 0 when empty.
  double PercentileX(double p) const;
  double PercentileY(double p) const;
  void QuartilesX(double& q1, double& q2, double& q3) const;
  void QuartilesY(double& q1, double& q2, double& q3) const;
  /// Circular mean of the angles (degrees) of column col (1 = x, 2 = y), in [0, 360); 0.0
  /// when empty, for another col, or when the angles cancel (resultant below 1e-12 n).
  double CalcMeanDegrees(std::int32_t col) const;
  double GetMeanXDegrees() const { return CalcMeanDegrees(1); }
  double GetMeanYDegrees() const { return CalcMeanDegrees(2); }
  /// n, means, standard deviations, Rxy, mean and standard deviation of x - y.
  void CalcStatistics(std::int32_t& n, double& MeanX, double& MeanY, double& StdDevX,
                      double& StdDevY, double& Rxy, double& MeanDiff, double& StdDevDiff) const;

  // ----- rank statistics (curvefit_rank.cpp) -----

  /// Counts over all pairs of points: concordant, discordant, tied in x only, tied in y only,
  /// tied in both. O(n log n).
  void BasicRankCounts(std::int64_t& Concordant, std::int64_t& Discordant, std::int64_t& TiedX,
                       std::int64_t& TiedY, std::int64_t& TiedXY) const;
  /// Kendall's tau-b (ties corrected) and the z statistic of its test (variance with the tie
  /// corrections). False, both 0, for fewer than 2 points or a constant column.
  bool KendallsTau(double& Tau, double& z) const;
  /// (C - D) / (C + D); 0.0 when every pair is tied.
  double GetKruskalGamma() const;
  /// Pearson correlation of average ranks; 0.0 for fewer than 2 points or a constant column.
  double GetSpearman() const;

  // ----- splines (curvefit_spline.cpp) -----

  /// Natural end condition at the first / last point (true), else the prescribed slope.
  void SetNatural1(bool value);
  void SetNaturalN(bool value);
  void SetY1Dash(double value);
  void SetYNDash(double value);
  /// Smoothing factor f in [0, 1]: SmoothedSpline minimises Σ(y - s)² + λ∫s''² with
  /// λ = f / (1 - f) · h³, h the mean knot spacing (so f does not depend on the units of x
  /// and y). 0 interpolates; 1 gives the least-squares straight line. Clamped to [0, 1].
  void SetSplineSmoothing(double value);
  bool Natural1() const { return natural1_; }
  bool NaturalN() const { return naturalN_; }
  double Y1Dash() const { return y1Dash_; }
  double YNDash() const { return yNDash_; }
  double SplineSmoothing() const { return smoothing_; }
  /// Interpolating cubic spline through the points (sorted by x; points with equal x are
  /// merged into their mean y). Beyond the ends the end pieces continue. 0.0 without points,
  /// the one y for one distinct x.
  double CubicSpline(double x);
  /// Smoothing spline at x; ok false (y 0) for fewer than 3 distinct x.
  void SmoothedSpline(double x, double& y, bool& ok);

  // ----- files (curvefit.cpp) -----

  /// Writes the two columns as an ASC file (values strff(v, 12, Precision)).
  void ExportAsASC(const std::string& FileName, const std::string& Comment,
                   std::int32_t Precision) const;
  /// Replaces the data by the two columns of an ASC file. Returns 0 or the negative status of
  /// the reader (nothing changed). A file with another column count raises EQUVMath2Error
  /// "TCurveFit.ImportASC: number of columns must be 2 (is actually N)"; one with a value
  /// that is not finite raises as EnterStatValue; both leave the data as they were.
  std::int32_t ImportASC(const std::string& FileName);

 private:
  friend struct TCurveFitAccess;  // white-box checks of the sums in the tests
  // Indexes of the running sums.
  enum TSum : std::uint8_t {
    sX,
    sY,
    sX2,
    sY2,
    sXY,
    sD,
    sD2,
    sX2Y,
    sXY2,
    sX3,
    sY3,
    sX4,
    sY4,
    sRY,
    sRY2,
    sXRY,
    sRXY,
    sRX,
    sRX2,
    sYRX,
    sLX,
    sLX2,
    sYLX,
    sXLX,
    sY2LX,
    sLXRY,
    sLXLY,
    sLY,
    sLY2,
    sXLY,
    sX2LY,
    sYLY,
    sLYRX,
    kNumSums
  };
  template <bool kAdd>
  void AddToSums(double x, double y);
  void SetFlag(TCurveFitError e) { flags_ = static_cast<std::uint8_t>(flags_ | (1U << e)); }
  void UpdateExtremes(double x, double y);
  void RecomputeExtremes();
  void CheckFinite(double x, double y) const;
  const double* XData() const { return data_->Columns()[0].data(); }
  const double* YData() const { return data_->Columns()[1].data(); }
  // Model store after a fit: clears, then sets model and parameters.
  void StoreModel(TRegModel model, std::int32_t degree, double fitQual);
  [[noreturn]] void Refuse(std::string_view fit, std::string_view text);
  void RequirePoints(std::string_view fit, std::int32_t needed);
  void RequireFlagsClear(std::string_view fit, std::uint8_t mask);
  // One-regressor sums of the linearised fits: regressor f, Σf², response v, Σv², Σfv.
  detail::TRegSums RegSums(TSum f, TSum ff, TSum v, TSum vv, TSum fv) const;
  void SolveLinearised(std::string_view fit, std::uint8_t mask, const detail::TRegSums& rs,
                       Extended (&coef)[3], Extended& r2);
  void StoreTwo(TRegModel model, double a, double b, Extended r2, double& outA, double& outB,
                double& FitQual);
  void FitPolynomial(std::string_view fit, bool centred, std::int32_t Degree, TDoubleArray& Params,
                     TDoubleArray& StdErrs, double& XShift, double& FitQual, bool& ok);
  void FillResiduals();
  void MarkSplineStale();
  const detail::TSplineState& Spline();

  TMatrix* data_;
  std::int32_t n_ = 0;
  double minX_ = 0.0, maxX_ = 0.0, minY_ = 0.0, maxY_ = 0.0;
  std::array<Extended, kNumSums> sums_{};
  std::uint8_t flags_ = 0;
  TRegModel model_ = rmNone;
  std::int32_t degree_ = 0;
  std::array<double, 11> params1_{};
  std::array<double, 11> params2_{};
  double fitQual_ = 0.0;
  double xShift_ = 0.0;
  TDoubleArray residuals_;
  bool natural1_ = true;
  bool naturalN_ = true;
  double y1Dash_ = 0.0;
  double yNDash_ = 0.0;
  double smoothing_ = 0.5;
  std::unique_ptr<detail::TSplineState> spline_;
};

}  // namespace quv
