#include "quv/fourier/fast_fourier.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "quv/fourier/fft_core.h"

namespace quv {

namespace {

// Folds x into [lo, hi]; a NaN anywhere makes the extreme NaN for good.
void Widen(double x, double& lo, double& hi) {
  if (std::isnan(x) || std::isnan(lo)) {
    lo = hi = std::numeric_limits<double>::quiet_NaN();
    return;
  }
  lo = std::min(lo, x);
  hi = std::max(hi, x);
}

}  // namespace

TFastFourier::TFastFourier(TComponent* owner) : TComponent(owner) {
  GuardAllocation<EQUVFourierError>(*this, msg::kNotEnoughMemoryOnHeap, [&] {
    data_.assign(2 * static_cast<std::size_t>(n_), 0.0);
    weights_.assign(static_cast<std::size_t>(n_), 1.0);
  });
}

void TFastFourier::SetNumData(std::int32_t n) {
  if (!detail::IsValidSpectrumSize(n))
    RaiseComponentError<EQUVFourierError>(*this, msg::kDataLengthPowerOf2);
  // Allocate both blocks before anything changes, so that a failure leaves the old ones.
  auto [data, weights] = GuardAllocation<EQUVFourierError>(*this, msg::kNotEnoughMemoryOnHeap, [&] {
    const auto size = static_cast<std::size_t>(n);
    return std::pair{TDoubleArray(2 * size, 0.0), TDoubleArray(size, 0.0)};
  });
  data_.swap(data);
  weights_.swap(weights);
  n_ = n;
  Changed();
}

void TFastFourier::SetTukAlpha(double alpha) {
  if (data_.empty()) return;
  alpha_ = std::isnan(alpha) ? 0.0 : std::clamp(alpha, 0.0, 1.0);
}

double TFastFourier::GetRealVal(std::int32_t i) const {
  return InRange(i) ? data_[2 * static_cast<std::size_t>(i - 1)] : 0.0;
}

double TFastFourier::GetImagVal(std::int32_t i) const {
  return InRange(i) ? data_[2 * static_cast<std::size_t>(i - 1) + 1] : 0.0;
}

void TFastFourier::SetRealVal(std::int32_t i, double x) {
  if (!InRange(i)) return;
  data_[2 * static_cast<std::size_t>(i - 1)] = x;
  Changed();
}

void TFastFourier::SetImagVal(std::int32_t i, double x) {
  if (!InRange(i)) return;
  data_[2 * static_cast<std::size_t>(i - 1) + 1] = x;
  Changed();
}

double TFastFourier::GetWgtVal(std::int32_t i) const {
  return InRange(i) ? weights_[static_cast<std::size_t>(i - 1)] : 0.0;
}

void TFastFourier::SetWgtVal(std::int32_t i, double x) {
  if (InRange(i)) weights_[static_cast<std::size_t>(i - 1)] = x;
}

void TFastFourier::Clear() {
  std::fill(data_.begin(), data_.end(), 0.0);
  Changed();
}

void TFastFourier::ClearReal() {
  for (std::size_t k = 0; k < data_.size(); k += 2)
    data_[k] = 0.0;
  Changed();
}

void TFastFourier::ClearImag() {
  for (std::size_t k = 1; k < data_.size(); k += 2)
    data_[k] = 0.0;
  Changed();
}

void TFastFourier::Transform() {
  detail::ApplyWindow(data_.data(), static_cast<std::size_t>(n_), window_, alpha_, weights_.data());
  DoFFT(1);
}

void TFastFourier::InverseTransform() {
  DoFFT(-1);
}

void TFastFourier::DoFFT(std::int32_t Direction) {
  detail::TwiddleTable& table = Direction < 0 ? inverse_ : forward_;
  GuardAllocation<EQUVFourierError>(*this, msg::kNotEnoughMemoryOnHeap, [&] {
    table.Prepare(static_cast<std::size_t>(n_), Direction < 0 ? -1 : 1);
  });
  detail::DoFFT(data_.data(), static_cast<std::size_t>(n_), Direction < 0 ? -1 : 1, table);
  Changed();
}

double TFastFourier::GetPowerSpec(std::int32_t Line) const {
  return detail::LinePower(data_.data(), static_cast<std::size_t>(n_), Line);
}

double TFastFourier::GetMagnitude(std::int32_t Line) const {
  return detail::LineMagnitude(data_.data(), static_cast<std::size_t>(n_), Line);
}

double TFastFourier::GetPhase(std::int32_t Line) const {
  return detail::LinePhase(data_.data(), static_cast<std::size_t>(n_), Line);
}

double TFastFourier::GetFSerSin(std::int32_t Line) const {
  return detail::LineSinCoefficient(data_.data(), static_cast<std::size_t>(n_), Line);
}

double TFastFourier::GetFSerCos(std::int32_t Line) const {
  return detail::LineCosCoefficient(data_.data(), static_cast<std::size_t>(n_), Line);
}

double TFastFourier::RMS(std::int32_t FirstLine, std::int32_t LastLine) const {
  return detail::LinesRMS(data_.data(), static_cast<std::size_t>(n_), FirstLine, LastLine);
}

void TFastFourier::CalcMaxValues() const {
  Extremes e;
  e.min_real = e.max_real = data_[0];
  e.min_imag = e.max_imag = data_[1];
  for (std::size_t k = 0; k < data_.size(); k += 2) {
    Widen(data_[k], e.min_real, e.max_real);
    Widen(data_[k + 1], e.min_imag, e.max_imag);
  }
  double lo_power = 0.0, lo_magni = 0.0;
  e.max_power = GetPowerSpec(0);
  e.max_magni = GetMagnitude(0);
  lo_power = e.max_power;
  lo_magni = e.max_magni;
  for (std::int32_t line = 1; line <= n_ / 2; ++line) {
    Widen(GetPowerSpec(line), lo_power, e.max_power);
    Widen(GetMagnitude(line), lo_magni, e.max_magni);
  }
  extremes_ = e;
  extremes_valid_ = true;
}

const TFastFourier::Extremes& TFastFourier::Current() const {
  if (!extremes_valid_) CalcMaxValues();
  return extremes_;
}

double TFastFourier::GetMaxPower() const {
  return Current().max_power;
}
double TFastFourier::GetMaxMagni() const {
  return Current().max_magni;
}
double TFastFourier::GetMaxReal() const {
  return Current().max_real;
}
double TFastFourier::GetMaxImag() const {
  return Current().max_imag;
}
double TFastFourier::GetMinReal() const {
  return Current().min_real;
}
double TFastFourier::GetMinImag() const {
  return Current().min_imag;
}

double TFastFourier::FreqOfLine(std::int32_t Line, double SampleInterval) const {
  if (Line < 1 || Line > n_ / 2) return 0.0;
  return Line / (SampleInterval * n_);
}

std::int32_t TFastFourier::LineOfFreq(double Freq, double SampleInterval) const {
  const double line = std::nearbyint(n_ * SampleInterval * Freq);
  if (!(line >= 1 && line <= n_ / 2)) return 0;
  return static_cast<std::int32_t>(line);
}

}  // namespace quv
