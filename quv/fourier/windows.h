// The weighting windows of the Fourier transform.
//
// Every window is written in the centred form w(i) with i = 1..N the sample index and
// t = (i - N/2)/N measured from the centre of the block, so that the window is 1 or close to 1
// there. The coefficients of the cosine sums are this library's own (they differ slightly
// from the values found in the literature) and are kept exactly as written below, so that
// spectra stay comparable with the ones users already have. Weights are evaluated per sample
// in extended precision.
#pragma once

#include <cstddef>
#include <cstdint>

#include "quv/base/types.h"

namespace quv {

/// Weighting windows applied before a forward transform.
enum TFastFourierWgtWin : std::uint8_t {
  fwRectangle,    ///< no weighting
  fwTriangle,     ///< 2i/N rising to the centre, mirrored on the right half
  fwCos2,         ///< cos^2(pi t)
  fwGauss,        ///< exp(-z^2/2), z = 3 (i - N/2)/(N/2)
  fwHamming,      ///< 0.543478261 + 0.456521739 cos(2 pi t)
  fwBlackman,     ///< 0.42659 + 0.49656 cos(2 pi t) + 0.076848 cos(4 pi t)
  fwBlkmHarris,   ///< 0.35875 + 0.48829 cos(2 pi t) + 0.14128 cos(4 pi t) + 0.01168 cos(6 pi t)
  fwBlkmNuttall,  ///< 0.3635819 + 0.4891775 cos(2 pi t) + 0.1365995 cos(4 pi t)
                  ///< + 0.0106411 cos(6 pi t)
  fwTukey,        ///< flat top, cosine tapers of relative width alpha (see WindowWeight)
  fwUserDef       ///< the caller's own weights
};

/// Number of windows, for tables and loops over all of them.
inline constexpr int kFastFourierWindowCount = 10;

namespace detail {

/// Weight of sample i (1-based) of a block of n samples. Alpha is the Tukey parameter (used by
/// fwTukey only, expected in [0, 1]); user points to the n user weights, 0-based (used by
/// fwUserDef only; a null pointer counts as all 1). fwRectangle gives 1.
///
/// fwTriangle: 2i/N for i <= N/2 (integer division) and 2(N+1-i)/N for the mirrored samples;
/// the middle sample of an odd block keeps 1.
/// fwTukey: 1 for alpha N/2 <= i <= N - alpha N/2, otherwise 0.5 (1 - cos(2 pi i/(alpha N))).
/// The right-hand taper uses the same expression in i rather than a mirror of the left one;
/// this is how the window has always been computed here, and spectra depend on it.
Extended WindowWeight(TFastFourierWgtWin window, std::size_t i, std::size_t n, Extended alpha,
                      const double* user);

/// Multiplies both parts of each of the n (re, im) pairs by its weight, in place (each product
/// formed in extended precision and rounded once). fwRectangle leaves the data as they are.
void ApplyWindow(double* pairs, std::size_t n, TFastFourierWgtWin window, Extended alpha,
                 const double* user);

}  // namespace detail
}  // namespace quv
