// TFastFourier: one block of complex samples, a weighting window and a radix-2 transform in
// place, with the readings of the spectrum. The algorithms live in fft_core.h and windows.h;
// this class validates, converts 1-based indices and caches the extreme values.
#pragma once

#include <cstdint>
#include <string_view>

#include "quv/base/base.h"
#include "quv/fourier/fft_core.h"
#include "quv/fourier/windows.h"

namespace quv {

namespace msg {
/// Closing literal of the component form for a block size that is not a power of two.
inline constexpr std::string_view kDataLengthPowerOf2 = "\": data length must be power of 2";
}  // namespace msg

/// Default block size of a new TFastFourier.
inline constexpr std::int32_t kDefaultSpectrumSize = 256;

/// A block of N complex samples (N a power of two up to 2^23) that is weighted and transformed
/// in place. Samples and user weights are 1-based (1..N); spectral lines are 0-based, line L
/// of the one-sided spectrum (0..N/2) being read from pair L + 1 and pair N + 1 - L. Reads
/// outside the ranges give 0 and writes outside are ignored. Errors raise EQUVFourierError
/// in the component form.
class TFastFourier : public TComponent {
 public:
  /// N = 256, samples zeroed, user weights all 1.0, window fwRectangle, TukeyAlpha 0. A failed
  /// allocation raises "Component \"<Name>\": not enough memory on heap".
  explicit TFastFourier(TComponent* owner = nullptr);

  /// Number of complex samples N.
  std::int32_t SpectrumSize() const { return n_; }
  /// Setter of SpectrumSize: N must be a power of two, 1 .. 2^23 (one bit set among the low
  /// 24 bits), else "Component \"<Name>\": data length must be power of 2" and nothing
  /// changes. Every accepted call allocates a new block: samples (0, 0) and user weights 0.0
  /// (not 1.0 as after construction; set them again with SetWgtVal).
  void SetNumData(std::int32_t n);

  TFastFourierWgtWin WeightingWindow() const { return window_; }
  /// Setter of WeightingWindow: stores the window used by the next Transform.
  void SetWgtWin(TFastFourierWgtWin window) { window_ = window; }

  double TukeyAlpha() const { return alpha_; }
  /// Setter of TukeyAlpha: clamped into [0, 1] (NaN stores 0); ignored while there is no
  /// data block.
  void SetTukAlpha(double alpha);

  /// Real or imaginary part of sample i (1..N); 0 outside.
  double GetRealVal(std::int32_t i) const;
  double GetImagVal(std::int32_t i) const;
  /// Stores into sample i (1..N; ignored outside); the extremes are recomputed on demand.
  void SetRealVal(std::int32_t i, double x);
  void SetImagVal(std::int32_t i, double x);
  /// User weight i (1..N) of fwUserDef; 0 outside, writes outside ignored.
  double GetWgtVal(std::int32_t i) const;
  void SetWgtVal(std::int32_t i, double x);

  /// Sets every sample to (0, 0).
  void Clear();
  /// Zeroes only the real parts.
  void ClearReal();
  /// Zeroes only the imaginary parts.
  void ClearImag();

  /// Multiplies the samples in place by the selected window (so a second Transform weights
  /// them again), then runs DoFFT(+1). Afterwards sample L + 1 holds spectral line L.
  void Transform();
  /// DoFFT(-1): the inverse transform with the division by N, no window. After Transform with
  /// fwRectangle it restores the samples.
  void InverseTransform();
  /// The radix-2 transform in place (see detail::DoFFT): Direction > 0 forward with the
  /// positive exponent e^(+2 pi i jk/N), Direction < 0 inverse with the negative exponent and
  /// the division by N (0 counts as forward). The twiddle factors are kept between calls; a
  /// failure to allocate them raises "Component \"<Name>\": not enough memory on heap" before
  /// the data change.
  void DoFFT(std::int32_t Direction);

  /// One-sided power of line L: (re0^2 + im0^2)/N at line 0, (|X_L|^2 + |X_(N-L)|^2)/N for
  /// 1 <= L <= N/2 (line N/2 counts its pair twice); 0 otherwise. A constant c gives N c^2 at
  /// line 0; a sine of amplitude a on line L gives a^2 N/2.
  double GetPowerSpec(std::int32_t Line) const;
  /// |X_0|/N at line 0, |(re_L + re_(N-L), im_L - im_(N-L))|/N for 1 <= L <= N/2, else 0: the
  /// amplitude of a real cosine or sine on the line.
  double GetMagnitude(std::int32_t Line) const;
  /// arctan(im_L/re_L) for 1 <= L <= N/2, in (-pi/2, pi/2) (two quadrants only); re_L = 0
  /// gives -pi/2 when im_L <= 0, +pi/2 otherwise; 0 for other lines. With the positive
  /// exponent a cosine on the line has phase 0 and a sine +pi/2.
  double GetPhase(std::int32_t Line) const;
  /// Sine coefficient b_L of the real Fourier series x_k = sum over L = 0..N/2 of
  /// a_L cos(2 pi L k/N) + b_L sin(2 pi L k/N) (k = 0..N-1): (im_L - im_(N-L))/N for
  /// 1 <= L < N/2, 0 at lines 0 and N/2 and outside. A sine of amplitude a gives a.
  double GetFSerSin(std::int32_t Line) const;
  /// Cosine coefficient a_L of the same series: (re_L + re_(N-L))/N for 1 <= L < N/2, re_L/N
  /// at lines 0 (the mean) and N/2; 0 outside. A cosine of amplitude a gives a.
  double GetFSerCos(std::int32_t Line) const;
  /// Root mean square of the signal part on lines FirstLine..LastLine (negative bounds taken
  /// as 0, upper bounds limited to N/2; an empty range gives 0): sqrt of the sum of
  /// |X_L|^2/N^2 over the lines, 1 <= L < N/2 adding their mirror pair. RMS(0, N/2) is the
  /// RMS of the samples; a sine of amplitude a on its own line gives a/sqrt(2).
  double RMS(std::int32_t FirstLine, std::int32_t LastLine) const;

  /// Largest GetPowerSpec over lines 0..N/2 (recomputed first when the data changed). A NaN
  /// anywhere in the data makes every extreme NaN.
  double GetMaxPower() const;
  /// Largest GetMagnitude over lines 0..N/2.
  double GetMaxMagni() const;
  /// Extremes of the real and imaginary parts over all N pairs.
  double GetMaxReal() const;
  double GetMaxImag() const;
  double GetMinReal() const;
  double GetMinImag() const;
  /// Recomputes all extremes now and marks them valid.
  void CalcMaxValues() const;

  /// Frequency of line L: L/(SampleInterval N) for 1 <= L <= N/2, else 0.
  double FreqOfLine(std::int32_t Line, double SampleInterval) const;
  /// round(N SampleInterval Freq) (ties to even); 0 when that is below 1 or above N/2 (or
  /// not a number).
  std::int32_t LineOfFreq(double Freq, double SampleInterval) const;

 private:
  struct Extremes {
    double max_power = 0, max_magni = 0, max_real = 0, max_imag = 0, min_real = 0, min_imag = 0;
  };

  bool InRange(std::int32_t i) const { return i >= 1 && i <= n_; }
  const Extremes& Current() const;
  void Changed() { extremes_valid_ = false; }

  std::int32_t n_ = kDefaultSpectrumSize;
  TDoubleArray data_;     // n_ (re, im) pairs
  TDoubleArray weights_;  // n_ user weights
  TFastFourierWgtWin window_ = fwRectangle;
  double alpha_ = 0.0;
  mutable bool extremes_valid_ = false;
  mutable Extremes extremes_;
  // Twiddle factors of the current size, one table per direction, filled on first use.
  detail::TwiddleTable forward_, inverse_;
};

}  // namespace quv
