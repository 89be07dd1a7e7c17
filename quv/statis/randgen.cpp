// TRandGen: rejection sampling from a table of relative probabilities with linear
// interpolation inside each bin.
#include "quv/statis/randgen.h"

#include <algorithm>
#include <cmath>

#include "quv/base/constants.h"
#include "quv/base/random.h"
#include "quv/math1/rounding.h"
#include "quv/statis/chi2_t_f.h"
#include "quv/statis/normal.h"

namespace quv {

namespace {

constexpr double kMaxReal = static_cast<double>(uc_MaxReal);

}  // namespace

TRandGen::TRandGen(TComponent* owner) : TComponent(owner) {
  SetResolution(kDefaultResolution);
}

void TRandGen::SetResolution(std::int32_t n) {
  n = std::clamp(n, kMinResolution, kMaxResolution);
  table_.assign(static_cast<std::size_t>(n), 1.0);
}

double TRandGen::GetProbability(std::int32_t i) const {
  if (i < 1 || i > Resolution()) return 0.0;
  return table_[static_cast<std::size_t>(i - 1)];
}

void TRandGen::SetProbability(std::int32_t i, double p) {
  if (i < 1 || i > Resolution()) return;
  table_[static_cast<std::size_t>(i - 1)] = std::isnan(p) ? 0.0 : std::clamp(p, 0.0, 1.0);
}

double TRandGen::GetLambda(std::int32_t i) const {
  if (i < 1) return low_;
  if (i > Resolution()) return high_;
  return low_ + (high_ - low_) * (i - 1) / Resolution();
}

std::int32_t TRandGen::IndexOfLambda(double x) const {
  if (std::isnan(x) || std::isnan(low_) || std::isnan(high_)) return 0;
  if (x < low_) return 0;
  if (x > high_) return Resolution() + 1;
  // Here low_ <= x <= high_; equal borders leave no width to divide by.
  if (high_ == low_) return 1;
  return IntNeg((x - low_) * Resolution() / (high_ - low_)) + 1;
}

double TRandGen::GetRandNum() {
  const std::int32_t res = Resolution();
  std::int32_t idx = 1;
  double u = 0.0;
  for (std::int32_t attempts = 1; attempts <= kMaxAttempts + 1; ++attempts) {
    idx = Random(res) + 1;
    u = Random();
    const double p = table_[static_cast<std::size_t>(idx - 1)];
    // Interpolate towards the next bin; the last bin falls to 0 at HighBorder.
    const double y = idx != res ? p + (table_[static_cast<std::size_t>(idx)] - p) * u : (1 - u) * p;
    if (y >= 1 || Random() < y) break;
  }
  return low_ + (idx - 1 + u) * (high_ - low_) / res;
}

void TRandGen::Normalize() {
  double max = -kMaxReal;
  double min = kMaxReal;
  for (double p : table_) {
    if (p > max) max = p;
    if (p < min) min = p;
  }
  if (max == min) return;
  for (double& p : table_)
    p = (p - min) / (max - min);
}

bool TRandGen::Standardize() {
  double max = -kMaxReal;
  for (double p : table_)
    if (p > max) max = p;
  if (max == 0) return false;
  for (double& p : table_)
    p /= max;
  return true;
}

template <class Density>
void TRandGen::FillShape(Density density) {
  for (std::int32_t i = 1; i <= Resolution(); ++i)
    table_[static_cast<std::size_t>(i - 1)] = density(GetLambda(i));
}

void TRandGen::UniformDistri() {
  std::fill(table_.begin(), table_.end(), 1.0);
}

void TRandGen::NormalDistri(double Mean, double StdDev) {
  FillShape([=](double x) { return std::exp(-(x - Mean) * (x - Mean) / 2 / (StdDev * StdDev)); });
}

void TRandGen::tDistri(std::int32_t DegFree) {
  FillShape([=](double x) { return tDistriDensity(x, DegFree); });
}

void TRandGen::Chi2Distri(std::int32_t DegFree) {
  FillShape([=](double x) { return x >= 0 ? Chi2DistriDensity(x, DegFree) : 0.0; });
}

void TRandGen::FDistri(std::int32_t DegFree1, std::int32_t DegFree2) {
  FillShape([=](double x) { return x > 0 ? FDistriDensity(x, DegFree1, DegFree2) : 0.0; });
}

void TRandGen::WeibullDistri(double Shape, double Scale) {
  FillShape([=](double x) { return WeibullDensity(x, Shape, Scale); });
}

}  // namespace quv
