// The radix-2 transform kernel and the readings of a transformed block.
//
// A block is n complex values stored as (re, im) pairs in 2n doubles. After a forward
// transform pair k (0-based) holds spectral line k; lines above n/2 are the negative
// frequencies, so a line L of the one-sided spectrum combines pair L and pair n - L.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "quv/base/types.h"

namespace quv::detail {

/// Largest block of the radix-2 kernel: one bit set among the low 24 bits, so 2^23 pairs.
inline constexpr std::int64_t kMaxSpectrumSize = std::int64_t{1} << 23;

/// True when n is a power of two with its bit among the low 24 bits (1, 2, 4, ..., 2^23).
bool IsValidSpectrumSize(std::int64_t n);

/// Reorders the n pairs into bit-reversed order of their indices (n a power of two).
void BitReversePairs(double* pairs, std::size_t n);

/// Spans below this many pairs have their twiddle factors kept in a TwiddleTable (at most
/// 1 MiB); longer spans run their recurrence during the transform.
inline constexpr std::size_t kTabulatedSpans = std::size_t{1} << 16;

/// The twiddle factors of one block size and direction: factor m of span s is the m-th value
/// of that span's recurrence (see DoFFT), for the spans s < min(n, kTabulatedSpans). A caller
/// that transforms blocks of one size again and again keeps one table per direction, so that
/// the recurrences run once instead of in every transform; the values are the same either way.
class TwiddleTable {
 public:
  /// Fits the table to (n, direction), recomputing only when either differs. May raise
  /// std::bad_alloc, leaving the table as it was.
  void Prepare(std::size_t n, int direction);
  /// Spans s < Spans() are tabulated.
  std::size_t Spans() const { return spans_; }
  /// Factor m (0 <= m < s) of span s as (re, im).
  const double* Factor(std::size_t s, std::size_t m) const {
    return values_.data() + 2 * (s - 1 + m);
  }

 private:
  std::size_t n_ = 0;
  int direction_ = 0;
  std::size_t spans_ = 0;
  std::vector<double> values_;  // span s at pairs [s - 1, 2s - 1)
};

/// In-place complex radix-2 transform by decimation in time (n a power of two): bit reversal,
/// then for the butterfly spans mmax = 1, 2, 4, ... < n the angle theta = direction 2 pi /
/// (2 mmax); the twiddle factor starts at (1, 0) and advances by the recurrence
/// w := w + w (wpr + i wpi), wpr = -2 sin^2(theta/2), wpi = sin theta, so that each stage
/// evaluates only two sines. A butterfly forms temp = w x[j] and sets x[j] := x[i] - temp,
/// x[i] := x[i] + temp. Direction > 0 is the forward transform with the positive exponent,
/// e^(+2 pi i jk/n); direction < 0 the inverse with the negative exponent, every part then
/// divided by n. Table supplies (and keeps) the twiddle factors. May raise std::bad_alloc
/// before it touches the data.
///
/// The order of the work is chosen for the memory hierarchy: the bit reversal swaps tile by
/// tile, the short spans run stretch by stretch in cache, and two stages share each pass over
/// the data. Every butterfly still sees the same operands and factors, in the same arithmetic,
/// as in the plain stage-by-stage order, so the result is the same bit for bit.
void DoFFT(double* pairs, std::size_t n, int direction, TwiddleTable& table);
/// The same with a table of its own for this one call.
inline void DoFFT(double* pairs, std::size_t n, int direction) {
  TwiddleTable table;
  DoFFT(pairs, n, direction, table);
}

/// One-sided power of line L: line 0 |X0|^2/n; 1 <= L <= n/2 (|XL|^2 + |X(n-L)|^2)/n (line
/// n/2 thus counts its pair twice); 0 for other lines.
double LinePower(const double* pairs, std::size_t n, std::int64_t line);
/// Magnitude of line L: line 0 |X0|/n; 1 <= L <= n/2 |(reL + re(n-L), imL - im(n-L))|/n
/// (the amplitude of a real cosine or sine on that line); 0 for other lines.
double LineMagnitude(const double* pairs, std::size_t n, std::int64_t line);
/// Phase of line L for 1 <= L <= n/2: arctan(imL/reL), a two-quadrant angle in (-pi/2, pi/2);
/// reL = 0 gives -pi/2 when imL <= 0 and +pi/2 otherwise. 0 for other lines.
double LinePhase(const double* pairs, std::size_t n, std::int64_t line);
/// Cosine coefficient a_L of the real Fourier series x_k = sum a_L cos(2 pi L k/n) +
/// b_L sin(2 pi L k/n) over L = 0..n/2: (reL + re(n-L))/n for 1 <= L < n/2, reL/n for line 0
/// and line n/2 (whose pair is its own mirror); 0 outside 0..n/2.
double LineCosCoefficient(const double* pairs, std::size_t n, std::int64_t line);
/// Sine coefficient b_L of the same series: (imL - im(n-L))/n for 1 <= L < n/2; 0 for line
/// 0, line n/2 (where the sine vanishes at every sample) and outside.
double LineSinCoefficient(const double* pairs, std::size_t n, std::int64_t line);
/// Root mean square of the part of the signal carried by lines first..last (first below 0
/// taken as 0, last above n/2 as n/2; an empty range gives 0): the square root of the sum
/// over those lines of |XL|^2/n^2, lines 1 <= L < n/2 adding their mirror pair. Over all
/// lines 0..n/2 this is the RMS of the samples (Parseval's relation); a sine of amplitude a
/// alone on its line gives a/sqrt(2). Summed in extended precision.
double LinesRMS(const double* pairs, std::size_t n, std::int64_t first, std::int64_t last);

}  // namespace quv::detail
