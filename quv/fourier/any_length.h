// Spectra of real samples of any length: the one-sided power spectrum (the same windows and
// the same normalisation as TFastFourier::GetPowerSpec) and Welch's averaged periodogram.
//
// Lengths that are powers of two run through the radix-2 kernel directly, so the results equal
// the component's; other lengths use Bluestein's chirp-z algorithm, which writes the transform
// of length n as a convolution and evaluates that with radix-2 transforms of the next power of
// two at or above 2n - 1 (L. I. Bluestein, "A linear filtering approach to the computation of
// the discrete Fourier transform", IEEE Trans. Audio Electroacoust. 18 (1970) 451-455).
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "quv/base/types.h"
#include "quv/fourier/windows.h"

namespace quv {

namespace msg {
inline constexpr std::string_view kNoSamples = "no samples";
inline constexpr std::string_view kUserWeightsMismatch =
    "the number of user weights differs from the number of samples";
inline constexpr std::string_view kSegmentLengthOutOfRange = "segment length out of range";
inline constexpr std::string_view kOverlapOutOfRange = "overlap out of range";
inline constexpr std::string_view kNotPairs = "the data do not form (re, im) pairs";
inline constexpr std::string_view kSpectrumNotEnoughMemory = "not enough memory";
}  // namespace msg

/// One-sided power spectrum of n >= 1 real samples, lines 0..n/2 (n/2 rounded down): the
/// samples are weighted by Window as TFastFourier::Transform weights them (TukeyAlpha clamped
/// into [0, 1]; UserWeights, n values, used by fwUserDef only), transformed, and line L is
/// |X_0|^2/n for L = 0 and (|X_L|^2 + |X_(n-L)|^2)/n above, exactly as GetPowerSpec (so the
/// line n/2 of an even n counts its pair twice). Raises EQUVFourierError in the function form
/// "RealPowerSpectrum: ..." for no samples, a wrong number of user weights, or memory.
TDoubleArray RealPowerSpectrum(const TDoubleArray& Samples, TFastFourierWgtWin Window = fwRectangle,
                               double TukeyAlpha = 0.0, const TDoubleArray& UserWeights = {});

/// Welch's averaged periodogram: the RealPowerSpectrum of every segment of SegmentLength
/// samples, the segments starting SegmentLength - Overlap samples apart from the first sample
/// on (a tail too short for a whole segment is left out), averaged line by line; lines
/// 0..SegmentLength/2. UserWeights, if used, has SegmentLength values. Raises
/// EQUVFourierError "WelchPowerSpectrum: segment length out of range" unless
/// 1 <= SegmentLength <= number of samples, "WelchPowerSpectrum: overlap out of range" unless
/// 0 <= Overlap < SegmentLength, and the errors of RealPowerSpectrum under its own name.
TDoubleArray WelchPowerSpectrum(const TDoubleArray& Samples, std::int32_t SegmentLength,
                                std::int32_t Overlap, TFastFourierWgtWin Window = fwHamming,
                                double TukeyAlpha = 0.0, const TDoubleArray& UserWeights = {});

/// In-place transform of n (re, im) pairs of any length n >= 1 (2n doubles), with the sign
/// and scaling of TFastFourier::DoFFT: Direction > 0 forward, e^(+2 pi i jk/n); Direction < 0
/// inverse with the division by n. Raises EQUVFourierError "FourierTransform: ..." when
/// Pairs does not hold an even number of doubles or memory runs out.
void FourierTransform(TDoubleArray& Pairs, std::int32_t Direction);

namespace detail {
/// The transform of FourierTransform on raw storage: radix-2 for powers of two up to
/// kMaxSpectrumSize, Bluestein's algorithm otherwise. May raise std::bad_alloc.
void TransformAnyLength(double* pairs, std::size_t n, int direction);
}  // namespace detail

}  // namespace quv
