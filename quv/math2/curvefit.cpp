// TCurveFit: data store, running sums, extremes, FlipXY, model evaluation and the ASC files.
#include "quv/math2/curvefit.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "quv/datatable/asc.h"
#include "quv/math2/curvefit_detail.h"

namespace quv {

namespace {

constexpr Extended kEps = 1e-30L;
constexpr double kMinStart = 1.7e308;

}  // namespace

TCurveFit::TCurveFit(TComponent* owner)
    : TComponent(owner),
      data_(new TMatrix(this)),
      spline_(std::make_unique<detail::TSplineState>()) {
  data_->Resize(2, kCurveFitGrowRows);
  Init();
}

TCurveFit::~TCurveFit() = default;

void TCurveFit::Init() {
  sums_.fill(0.0L);
  n_ = 0;
  flags_ = 0;
  minX_ = minY_ = kMinStart;
  maxX_ = maxY_ = -kMinStart;
  data_->Fill(0.0);
  ClearModelParams();
  MarkSplineStale();
}

void TCurveFit::ClearModelParams() {
  model_ = rmNone;
  degree_ = 0;
  residuals_.clear();
  fitQual_ = 0.0;
  xShift_ = 0.0;
  params1_.fill(0.0);
  params2_.fill(-1.0);
}

void TCurveFit::CheckFinite(double x, double y) const {
  if (!std::isfinite(x) || !std::isfinite(y))
    RaiseFunctionError<EQUVMath2Error>("EnterStatValue", msg::kPointNotFinite);
}

void TCurveFit::UpdateExtremes(double x, double y) {
  if (x < minX_) minX_ = x;
  if (x > maxX_) maxX_ = x;
  if (y < minY_) minY_ = y;
  if (y > maxY_) maxY_ = y;
}

void TCurveFit::RecomputeExtremes() {
  minX_ = minY_ = kMinStart;
  maxX_ = maxY_ = -kMinStart;
  for (std::int32_t i = 0; i < n_; ++i)
    UpdateExtremes(XData()[i], YData()[i]);
}

// Adds (kAdd) or takes out one point. The substitutes for zero divisors and the flags follow
// the table of the class: a substitute keeps the sum finite, the flag marks it as unusable for
// the fits that need it. Quotients are taken as products with the two reciprocals, so that a
// point costs two divisions and two logarithms.
template <bool kAdd>
void TCurveFit::AddToSums(double xd, double yd) {
  Extended* s = sums_.data();
  const auto put = [s](TSum k, Extended v) {
    if constexpr (kAdd)
      s[k] += v;
    else
      s[k] -= v;
  };
  const Extended x = xd, y = yd;
  const Extended d = x - y;
  const Extended x2 = x * x, y2 = y * y;
  put(sX, x);
  put(sY, y);
  put(sX2, x2);
  put(sY2, y2);
  put(sXY, x * y);
  put(sD, d);
  put(sD2, d * d);
  put(sX2Y, x2 * y);
  put(sXY2, x * y2);
  put(sX3, x2 * x);
  put(sY3, y2 * y);
  put(sX4, x2 * x2);
  put(sY4, y2 * y2);

  const bool xZero = std::fabs(x) <= kEps;
  const bool yZero = std::fabs(y) <= kEps;
  const Extended rx = xZero ? uc_MaxReal : 1.0L / x;
  const Extended ry = yZero ? uc_MaxReal : 1.0L / y;
  put(sRY, ry);
  put(sRY2, ry * ry);
  put(sXRY, x * ry);
  // Σ1/(xy): with y = 0 the substitute is MaxReal/x, or MaxReal itself when x = 0 as well.
  put(sRXY, yZero && xZero ? uc_MaxReal : rx * ry);
  put(sRX, rx);
  put(sRX2, rx * rx);
  put(sYRX, y * rx);
  if (yZero) SetFlag(cfeYEQ0);
  if (xZero) SetFlag(cfeXEQ0);

  const Extended ly = y > 0.0L ? std::log(y) : 0.0L;
  if (x > 0.0L) {
    const Extended lx = std::log(x);
    put(sLX, lx);
    put(sLX2, lx * lx);
    put(sYLX, y * lx);
    put(sXLX, x * lx);
    put(sY2LX, y2 * lx);
    if (!yZero)
      put(sLXRY, lx * ry);
    else
      SetFlag(cfeYEQ0);
    if (y > kEps)
      put(sLXLY, lx * ly);
    else
      SetFlag(cfeYLE0);
  } else {
    SetFlag(cfeXLE0);
  }
  if (y > 0.0L) {
    put(sLY, ly);
    put(sLY2, ly * ly);
    put(sXLY, x * ly);
    put(sX2LY, x2 * ly);
    put(sYLY, y * ly);
    if (!xZero)
      put(sLYRX, ly * rx);
    else
      SetFlag(cfeXEQ0);
  } else {
    SetFlag(cfeYLE0);
  }
}

void TCurveFit::AdjustSums(double x, double y) {
  CheckFinite(x, y);
  UpdateExtremes(x, y);
  AddToSums<true>(x, y);
}

std::int32_t TCurveFit::EnterStatValue(double x, double y) {
  CheckFinite(x, y);
  if (n_ + 1 > data_->NrOfRows()) data_->Resize(2, data_->NrOfRows() + kCurveFitGrowRows);
  AdjustSums(x, y);
  ++n_;
  data_->SetVal(1, n_, x);
  data_->SetVal(2, n_, y);
  MarkSplineStale();
  ClearModelParams();
  return n_;
}

void TCurveFit::RemoveStatValue(std::int32_t ix) {
  if (ix < 1 || ix > n_) return;
  AddToSums<false>(GetDataX(ix), GetDataY(ix));
  for (std::int32_t r = ix; r < n_; ++r) {
    data_->SetVal(1, r, data_->GetVal(1, r + 1));
    data_->SetVal(2, r, data_->GetVal(2, r + 1));
  }
  data_->SetVal(1, n_, 0.0);
  data_->SetVal(2, n_, 0.0);
  --n_;
  RecomputeExtremes();
  MarkSplineStale();
  ClearModelParams();
}

void TCurveFit::FlipXY() {
  std::swap(minX_, minY_);
  std::swap(maxX_, maxY_);
  auto& s = sums_;
  const auto swapSums = [&s](TSum a, TSum b) { std::swap(s[a], s[b]); };
  swapSums(sX, sY);
  swapSums(sX2, sY2);
  s[sD] = -s[sD];
  swapSums(sX2Y, sXY2);
  swapSums(sX3, sY3);
  swapSums(sX4, sY4);
  swapSums(sRY, sRX);
  swapSums(sRY2, sRX2);
  swapSums(sXRY, sYRX);
  swapSums(sLX, sLY);
  swapSums(sLX2, sLY2);
  swapSums(sYLX, sXLY);
  swapSums(sXLX, sYLY);
  swapSums(sLXRY, sLYRX);
  // Σx²·ln y and Σy²·ln x stay where they are; Σxy, Σ(x - y)², Σ1/(xy), Σln x·ln y are
  // symmetric.
  for (std::int32_t r = 1; r <= n_; ++r) {
    const double x = data_->GetVal(1, r);
    data_->SetVal(1, r, data_->GetVal(2, r));
    data_->SetVal(2, r, x);
  }
  MarkSplineStale();
}

double TCurveFit::GetDataX(std::int32_t ix) const {
  return ix >= 1 && ix <= n_ ? data_->GetVal(1, ix) : 0.0;
}

double TCurveFit::GetDataY(std::int32_t ix) const {
  return ix >= 1 && ix <= n_ ? data_->GetVal(2, ix) : 0.0;
}

double TCurveFit::EvaluateIntern(TRegModel model, double x) const {
  const double a = params1_[0], b = params1_[1], c = params1_[2];
  switch (model) {
    case rmLinear:
      return a + b * x;
    case rmParabolic:
      return a + b * x + c * x * x;
    case rmGaussian:
      return a * std::exp(-(x - b) * (x - b) / c);
    case rmReciLin: {
      const double den = a + b * x;
      return den == 0.0 ? uc_MaxDouble : 1.0 / den;
    }
    case rmHyperbolic:
      return x == 0.0 ? uc_MaxDouble : a + b / x;
    case rmReciHyperbolic: {
      const double den = a * x + b;
      return den == 0.0 ? uc_MaxDouble : x / den;
    }
    case rmLog:
      return x <= 0.0 ? -uc_MaxDouble : a + b * std::log(x);
    case rmReciLog: {
      if (x <= 0.0) return -uc_MaxDouble;
      const double den = a + b * std::log(x);
      return den == 0.0 ? uc_MaxDouble : 1.0 / den;
    }
    case rmPower:
      return a * std::pow(x, b);
    case rmExpo:
      return a * std::exp(b * x);
    case rmHoerl:
      return a * std::exp(x * std::log(b)) * std::exp(c * std::log(x));
    case rmPolynomial:
      return Polynomial(params1_, degree_, x);
    case rmCenteredPoly:
      return CenteredPolynomial(params1_, degree_, x, xShift_);
    default:  // rmNone, rmCircle, rmLinearOrigin and values out of the enumeration
      return 0.0;
  }
}

double TCurveFit::GetModelPar(std::int32_t ParType, std::int32_t ix) const {
  const bool valid = model_ != rmNone && ix >= 0 && ix <= kCurveFitMaxDegree;
  if (ParType == 1) return valid ? params1_[static_cast<std::size_t>(ix)] : 0.0;
  if (ParType == 2) return valid ? params2_[static_cast<std::size_t>(ix)] : -1.0;
  return -1.0;
}

double TCurveFit::GetResidual(std::int32_t ix) const {
  if (model_ == rmNone || ix < 1 || ix > NrOfResiduals()) return 0.0;
  return residuals_[static_cast<std::size_t>(ix - 1)];
}

double TCurveFit::GetStdDevResidual() const {
  if (residuals_.empty()) return 0.0;
  double sd = 0.0;
  if (StdDevArray(residuals_, 0, NrOfResiduals() - 1, sd) != 0) return 0.0;
  return sd;
}

void TCurveFit::ExportAsASC(const std::string& FileName, const std::string& Comment,
                            std::int32_t Precision) const {
  TASCFile file;
  file.Comment = ASCCommentLine(Comment, msg::kCurveFitHeader, FileName);
  file.NrCols = 2;
  file.NrRows = n_;
  file.ColNames = true;
  file.NominalFlag = false;
  file.ColNameList = {"x", "y"};
  file.Values.reserve(2 * static_cast<std::size_t>(n_));
  for (std::int32_t i = 0; i < n_; ++i) {
    file.Values.push_back(XData()[i]);
    file.Values.push_back(YData()[i]);
  }
  TASCNumberFormat format;
  format.Decimals = Precision;
  WriteASCFile(FileName, file, format);
}

std::int32_t TCurveFit::ImportASC(const std::string& FileName) {
  TASCFile file;
  const std::int32_t status = ReadASCFile(FileName, file);
  if (status != kAscHeaderOk) return status;
  if (file.NrCols != 2)
    throw EQUVMath2Error(std::string(msg::kCurveFitImportColumns) + " " +
                         std::to_string(file.NrCols) + ")");
  const std::int32_t rows = file.RowsRead();
  for (std::int32_t r = 1; r <= rows; ++r)
    CheckFinite(file.Value(1, r), file.Value(2, r));
  Init();
  for (std::int32_t r = 1; r <= rows; ++r)
    EnterStatValue(file.Value(1, r), file.Value(2, r));
  return kAscHeaderOk;
}

}  // namespace quv
