// Smoothing filters and derivatives over a stretch of a TVector.
//
// Every function here shares one argument contract: (SourceVec, First, Last, Len, DestVec).
// The checks run in this order, each raising EQUVMath2Error "<Function>: <text>":
//   1. SourceVec or DestVec is null;
//   2. First and Last are clamped into 1..NrOfElem of SourceVec and exchanged when First > Last
//      (no (0, 0) shorthand here: a clamped (0, 0) is the one-element range 1..1);
//   3. Last - First < Len (the range must hold at least Len + 1 elements);
//   4. Len < 3 (or above the function's upper limit) is out of range; an even Len is refused.
// The value for source element i (First + h <= i <= Last - h, h = Len div 2) goes to
// destination element i - First + 1. The h destination elements at either end repeat the
// nearest computed value, so the destination holds Last - First + 1 meaningful elements.
//
// The destination grows to Last - First + 1 elements when it is shorter (one OnResize); a
// longer destination keeps its size and its elements beyond that. OnChange fires once. The
// result is computed before the destination is touched, so SourceVec and DestVec may be the
// same vector, and a refused call changes nothing.
//
// NaN in the source propagates: every result whose window holds a NaN is NaN (the median
// included), and so are the padded ends that copy such a result.
#pragma once

#include <cstdint>
#include <string_view>

#include "quv/base/base.h"
#include "quv/vector/vector.h"

namespace quv {

/// Texts of the smoothing messages; each follows "<Function>: ".
namespace smoothmsg {
inline constexpr std::string_view kUndefined = "either SourceVec or DestVec is undefined";
inline constexpr std::string_view kRangeWindow =
    "specified range for smoothing is smaller than the length of the smoothing windows";
inline constexpr std::string_view kRangePolynomial =
    "specified range for smoothing is smaller than the length of the polynomial";
inline constexpr std::string_view kRangeCalculation =
    "specified range for calculation is smaller than the length of the polynomial";
inline constexpr std::string_view kWindowOutOfRange = "length of smoothing window is out of range";
inline constexpr std::string_view kWindowEven = "length of smoothing window must be odd";
inline constexpr std::string_view kPolynomialOutOfRange = "length of polynomial is out of range";
inline constexpr std::string_view kPolynomialEven = "length of polynomial must be odd";
/// The kernel filter spells its own name with a lower-case f in its messages.
inline constexpr std::string_view kKernelFilterName = "MovingKernelfilter";
inline constexpr std::string_view kKernelUndefined =
    "SourceVec, DestVec and/or FilterKernel is undefined";
inline constexpr std::string_view kKernelRange =
    "specified range for smoothing is smaller than the length of the kernel";
}  // namespace smoothmsg

/// Mean of the Len values i - h .. i + h: the centre value first, then the pairs
/// s(i + j) + s(i - j) for j = 1..h, summed in extended precision and divided by Len.
void MovingAverageSmooth(const TVector* SourceVec, std::int32_t First, std::int32_t Last,
                         std::int32_t Len, TVector* DestVec);

/// Median of the Len values i - h .. i + h (Len is odd, so it is the middle value).
void MovingMedianSmooth(const TVector* SourceVec, std::int32_t First, std::int32_t Last,
                        std::int32_t Len, TVector* DestVec);

/// Triangular weights: 4 * sum_{j=-h..h} (h + 1 - |j|) * s(i + j) / (Len + 1)^2.
void WeightedAverageSmooth(const TVector* SourceVec, std::int32_t First, std::int32_t Last,
                           std::int32_t Len, TVector* DestVec);

/// Savitzky-Golay smoothing with the quadratic (equivalently cubic) rule of GolayPoly: a
/// polynomial of order 3 passes unchanged. Len from 3 to kMaxGolayLen; messages speak of the
/// "length of the polynomial".
void PolynomialSmooth(const TVector* SourceVec, std::int32_t First, std::int32_t Last,
                      std::int32_t Len, TVector* DestVec);

/// First derivative per element step by the Savitzky-Golay rule of order 2 (the slope of the
/// least-squares line through the window, sum j * s(i + j) / sum j^2): exact for polynomials
/// of order 2. Len from 3 to kMaxGolayLen; its range message says "calculation".
void FirstDeriv(const TVector* SourceVec, std::int32_t First, std::int32_t Last, std::int32_t Len,
                TVector* DestVec);

/// Second derivative per element step with the quadratic (equivalently cubic) rule of
/// Golay2ndDeriv: exact for polynomials of order 3. Len from 3 to kMaxGolayLen.
void SecondDeriv(const TVector* SourceVec, std::int32_t First, std::int32_t Last, std::int32_t Len,
                 TVector* DestVec);

/// Convolution of the stretch with FilterKernel (L = its NrOfElem elements, h = L div 2):
/// result(i) = sum_{k=1..L} K(k) * s(i - h + L - k), so for odd L K(h + 1) meets s(i) and a
/// symmetric kernel gives the moving weighted sum; an even kernel reaches one element further
/// to the left than to the right. Checks: any of the three vectors
/// null ("MovingKernelfilter: SourceVec, DestVec and/or FilterKernel is undefined"), the clamp of
/// step 2, then Last - First < L ("... smaller than the length of the kernel"). Any kernel length
/// is accepted; the ends are padded as above. Sums run in extended precision.
void MovingKernelFilter(const TVector* SourceVec, std::int32_t First, std::int32_t Last,
                        const TVector* FilterKernel, TVector* DestVec);

}  // namespace quv
