// Descriptive statistics of TCurveFit: from the running sums (means, spreads, correlation)
// and from the stored columns (moments, order statistics, angles).
#include <cmath>

#include "quv/math2/curvefit.h"

namespace quv {

namespace {

// sqrt(|(Σv² - (Σv)²/n) / (n - 1)|); 0 for fewer than three values (deliberately three).
double StdDevFromSums(Extended sum, Extended sumSq, std::int32_t n) {
  if (n < 3) return 0.0;
  const Extended nn = n;
  return static_cast<double>(std::sqrt(std::fabs((sumSq - sum * sum / nn) / (nn - 1.0L))));
}

}  // namespace

double TCurveFit::GetMeanX() const {
  return n_ < 1 ? 0.0 : static_cast<double>(sums_[sX] / n_);
}
double TCurveFit::GetMeanY() const {
  return n_ < 1 ? 0.0 : static_cast<double>(sums_[sY] / n_);
}
double TCurveFit::GetMeanDiff() const {
  return n_ < 1 ? 0.0 : static_cast<double>(sums_[sD] / n_);
}
double TCurveFit::GetRMSDiff() const {
  return n_ < 1 ? 0.0 : static_cast<double>(std::sqrt(sums_[sD2] / n_));
}
double TCurveFit::GetStdDevX() const {
  return StdDevFromSums(sums_[sX], sums_[sX2], n_);
}
double TCurveFit::GetStdDevY() const {
  return StdDevFromSums(sums_[sY], sums_[sY2], n_);
}
double TCurveFit::GetStdDevDiff() const {
  return StdDevFromSums(sums_[sD], sums_[sD2], n_);
}

double TCurveFit::GetRxy() const {
  if (n_ < 3 || sums_[sX2] <= 0.0L || sums_[sY2] <= 0.0L) return 0.0;
  const Extended n = n_;
  const Extended sxx = sums_[sX2] - sums_[sX] * sums_[sX] / n;
  const Extended syy = sums_[sY2] - sums_[sY] * sums_[sY] / n;
  if (sxx == 0.0L || syy == 0.0L) return 0.0;
  return static_cast<double>((sums_[sXY] - sums_[sX] * sums_[sY] / n) /
                             std::sqrt(std::fabs(sxx * syy)));
}

double TCurveFit::GetSkewnessX() const {
  double skew = 0.0, kurt = 0.0;
  if (n_ > 0) data_->SkewKurtSample(1, 1, 1, n_, skew, kurt);
  return skew;
}
double TCurveFit::GetSkewnessY() const {
  double skew = 0.0, kurt = 0.0;
  if (n_ > 0) data_->SkewKurtSample(2, 1, 2, n_, skew, kurt);
  return skew;
}
double TCurveFit::GetKurtosisX() const {
  double skew = 0.0, kurt = 0.0;
  if (n_ > 0) data_->SkewKurtSample(1, 1, 1, n_, skew, kurt);
  return kurt;
}
double TCurveFit::GetKurtosisY() const {
  double skew = 0.0, kurt = 0.0;
  if (n_ > 0) data_->SkewKurtSample(2, 1, 2, n_, skew, kurt);
  return kurt;
}

double TCurveFit::PercentileX(double p) const {
  return n_ > 0 ? data_->Percentile(p, 1, 1, 1, n_) : 0.0;
}
double TCurveFit::PercentileY(double p) const {
  return n_ > 0 ? data_->Percentile(p, 2, 1, 2, n_) : 0.0;
}
void TCurveFit::QuartilesX(double& q1, double& q2, double& q3) const {
  q1 = q2 = q3 = 0.0;
  if (n_ > 0) data_->Quartiles(1, 1, 1, n_, q1, q2, q3);
}
void TCurveFit::QuartilesY(double& q1, double& q2, double& q3) const {
  q1 = q2 = q3 = 0.0;
  if (n_ > 0) data_->Quartiles(2, 1, 2, n_, q1, q2, q3);
}

double TCurveFit::CalcMeanDegrees(std::int32_t col) const {
  if (n_ < 1 || (col != 1 && col != 2)) return 0.0;
  const double* v = col == 1 ? XData() : YData();
  constexpr Extended kRad = uc_Pi / 180.0L;
  Extended sc = 0.0L, ss = 0.0L;
  for (std::int32_t i = 0; i < n_; ++i) {
    sc += std::cos(v[i] * kRad);
    ss += std::sin(v[i] * kRad);
  }
  if (std::hypot(sc, ss) < 1e-12L * n_) return 0.0;
  Extended deg = std::atan2(ss, sc) / kRad;
  if (deg < 0.0L) deg += 360.0L;
  return deg >= 360.0L ? 0.0 : static_cast<double>(deg);
}

void TCurveFit::CalcStatistics(std::int32_t& n, double& MeanX, double& MeanY, double& StdDevX,
                               double& StdDevY, double& Rxy, double& MeanDiff,
                               double& StdDevDiff) const {
  n = n_;
  MeanX = GetMeanX();
  MeanY = GetMeanY();
  StdDevX = GetStdDevX();
  StdDevY = GetStdDevY();
  Rxy = GetRxy();
  MeanDiff = GetMeanDiff();
  StdDevDiff = GetStdDevDiff();
}

}  // namespace quv
