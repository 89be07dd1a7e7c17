// Filter kernels and recursive filters: windowed-sinc kernels (low-pass, high-pass, band-pass,
// band-stop) for MovingKernelFilter, and recursive Chebyshev low- and high-pass filters.
//
// Frequencies are fractions of the sampling frequency (0 < f < 0.5).
//
// Windowed-sinc kernels (S. W. Smith, The Scientist and Engineer's Guide to Digital Signal
// Processing, ch. 16): the ideal low-pass impulse response sin(2 pi fc k) / (pi k),
// k = -M/2..M/2, M = KernelLen - 1, times the Blackman window
// 0.42 - 0.5 cos(2 pi i / M) + 0.08 cos(4 pi i / M), scaled to gain 1 at DC. The transition
// band is about 4 / KernelLen wide and the stop band lies about 74 dB down. High-pass is the
// spectral inversion of the low-pass (gain 1 at 0.5), band-stop the sum of a low-pass at the
// lower and a high-pass at the upper frequency (gain 1 at DC and 0.5), band-pass the inversion
// of the band-stop (gain close to 1 between the two frequencies).
//
// Chebyshev filters (same book, ch. 20): NPoles / 2 biquad stages from the poles of a
// Chebyshev type I prototype with the given pass-band ripple (0 gives a Butterworth filter),
// mapped by the bilinear transform and a low-pass to low- or high-pass transform. The gain is
// 1 at DC (low-pass) or 0.5 (high-pass), where an even number of poles puts a trough of the
// ripple, so the pass band swings between 1 and 1 / (1 - Ripple / 100); at the cutoff the
// response lies 3 dB below the peaks, sqrt(1/2) / (1 - Ripple / 100).
#pragma once

#include <cstdint>
#include <string_view>

#include "quv/base/base.h"
#include "quv/vector/vector.h"

namespace quv {

/// Longest windowed-sinc kernel.
inline constexpr std::int32_t kMaxSincKernelLen = 1000001;
/// Most poles of a Chebyshev filter (more make the recursion numerically unstable).
inline constexpr std::int32_t kMaxChebPoles = 20;
/// Largest pass-band ripple of a Chebyshev filter, in percent.
inline constexpr double kMaxChebRipple = 29.0;

namespace filtermsg {
inline constexpr std::string_view kKernelUndefined = "Kernel is undefined";
inline constexpr std::string_view kKernelLenOutOfRange = "length of kernel is out of range";
inline constexpr std::string_view kKernelLenEven = "length of kernel must be odd";
inline constexpr std::string_view kCutOffOutOfRange = "cutoff frequency is out of range";
inline constexpr std::string_view kBandOutOfRange = "cutoff frequencies are out of range";
inline constexpr std::string_view kPolesOdd = "NPoles must be even";
inline constexpr std::string_view kPolesOutOfRange = "NPoles is out of range";
inline constexpr std::string_view kInvalidRipple = "invalid Ripple value";
inline constexpr std::string_view kInvalidCutOff = "invalid cutoff frequency";
inline constexpr std::string_view kFilterUndefined = "either SourceVec or DestVec is undefined";
inline constexpr std::string_view kInvalidCoeffs = "coefficient matrix is invalid";
}  // namespace filtermsg

/// Windowed-sinc low-pass kernel of KernelLen elements (odd, 3..kMaxSincKernelLen) with cutoff
/// CutOff (0 < CutOff < 0.5). The vector form sets Kernel to exactly KernelLen elements (one
/// OnChange, OnResize when its size changed). Checks in order, raising EQUVMath2Error
/// "CalcSincLPKernel: <text>": null Kernel ("Kernel is undefined"), "length of kernel is out
/// of range", "length of kernel must be odd", "cutoff frequency is out of range".
void CalcSincLPKernel(double CutOff, std::int32_t KernelLen, TVector* Kernel);
/// The array form: Kernel becomes the KernelLen coefficients.
void CalcSincLPKernel(double CutOff, std::int32_t KernelLen, TDoubleArray& Kernel);
/// Windowed-sinc high-pass kernel; as CalcSincLPKernel.
void CalcSincHPKernel(double CutOff, std::int32_t KernelLen, TVector* Kernel);
void CalcSincHPKernel(double CutOff, std::int32_t KernelLen, TDoubleArray& Kernel);
/// Windowed-sinc band-pass kernel passing LowCutOff..HighCutOff (0 < Low < High < 0.5, else
/// "cutoff frequencies are out of range"); otherwise as CalcSincLPKernel.
void CalcSincBPKernel(double LowCutOff, double HighCutOff, std::int32_t KernelLen, TVector* Kernel);
void CalcSincBPKernel(double LowCutOff, double HighCutOff, std::int32_t KernelLen,
                      TDoubleArray& Kernel);
/// Windowed-sinc band-stop kernel blocking LowCutOff..HighCutOff; as CalcSincBPKernel.
void CalcSincBSKernel(double LowCutOff, double HighCutOff, std::int32_t KernelLen, TVector* Kernel);
void CalcSincBSKernel(double LowCutOff, double HighCutOff, std::int32_t KernelLen,
                      TDoubleArray& Kernel);

/// Coefficients of a recursive Chebyshev filter: Coeffs becomes two rows of NPoles + 1
/// values, row 0 the a_k (k = 0..NPoles) and row 1 the b_k (b_0 = 0), for
///   y[n] = sum_k a_k x[n - k] + sum_{k>=1} b_k y[n - k].
/// NPoles even, 2..kMaxChebPoles; Ripple in percent, 0..kMaxChebRipple; CutOff the 3 dB
/// frequency, 0 < CutOff < 0.5. Checks in order, raising EQUVMath2Error
/// "CalcChebFilterCoeffs: <text>": "NPoles must be even", "NPoles is out of range", "invalid
/// Ripple value", "invalid cutoff frequency". Coeffs is left alone when a check fails.
void CalcChebFilterCoeffs(std::int32_t NPoles, bool HighPass, double CutOff, double Ripple,
                          TDouble2DArray& Coeffs);

/// Runs the recursion of Coeffs (as CalcChebFilterCoeffs makes them) over the stretch
/// First..Last of SourceVec (clamped and ordered as the smoothing functions do) into DestVec
/// elements 1..Last - First + 1 (the destination grows when shorter; one OnChange). The
/// filter starts in its steady state for the first value, as if that value had always been
/// there, so a low-pass filter does not swing in from zero. Sums run in extended precision.
/// Raises "ChebychevFilter: either SourceVec or DestVec is undefined" and "ChebychevFilter:
/// coefficient matrix is invalid" (not two rows of the same length >= 1, or non-finite).
void ChebychevFilter(const TVector* SourceVec, std::int32_t First, std::int32_t Last,
                     const TDouble2DArray& Coeffs, TVector* DestVec);

}  // namespace quv
