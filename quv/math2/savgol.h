// Savitzky-Golay coefficients: the classic integer tables of the smoothing functions and the
// general rule (any odd window, any polynomial order below it, any derivative up to that
// order, evaluated at any point of the window).
//
// The tables come from the closed formulas of the least-squares parabola over 2h + 1 equally
// spaced points (A. Savitzky, M. J. E. Golay, Anal. Chem. 36 (1964) 1627; corrections by
// J. Steinier et al., Anal. Chem. 44 (1972) 1906), reduced to lowest terms, so every
// coefficient is an exact integer over an exact integer norm:
//   smoothing          (3(3h^2 + 3h - 1) - 15 j^2) / ((2h - 1)(2h + 1)(2h + 3))
//   first derivative   3 j / (h (h + 1)(2h + 1))
//   second derivative  30 (3 j^2 - h (h + 1)) / (h (h + 1)(2h - 1)(2h + 1)(2h + 3))
// The quadratic rules are also the cubic ones (the odd power does not change the centre value
// or the curvature of a symmetric fit), so smoothing and the second derivative are exact for
// polynomials of order 3 and the first derivative for order 2.
//
// The general rule fits the polynomial by an orthonormal basis of discrete polynomials over the
// window (Stieltjes recurrence with reorthogonalisation, in extended precision), which stays
// well conditioned for high orders and long windows.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "quv/base/base.h"
#include "quv/vector/vector.h"

namespace quv {

/// Longest window of the tabulated rules (GolayPoly, Golay2ndDeriv, PolynomialSmooth,
/// FirstDeriv, SecondDeriv).
inline constexpr std::int32_t kMaxGolayLen = 101;
/// Longest window of the general rule.
inline constexpr std::int32_t kMaxSavGolLen = 1001;
/// Highest polynomial order of the general rule (higher orders only fit noise).
inline constexpr std::int32_t kMaxSavGolOrder = 50;

/// One tabulated rule: coefficient j (j = -h..h) is Weights[j + h] / Norm, all integers.
struct TGolayTable {
  std::vector<std::int64_t> Weights;
  std::int64_t Norm = 1;
};

/// The smoothing rule for an odd window Len (3..kMaxGolayLen), e.g. Len 5: (-3 12 17 12 -3)/35.
/// Raises "GolayPoly: length of polynomial is out of range" / "... must be odd".
TGolayTable GolayPoly(std::int32_t Len);
/// The second-derivative rule, e.g. Len 5: (2 -1 -2 -1 2)/7. Messages as GolayPoly.
TGolayTable Golay2ndDeriv(std::int32_t Len);
/// The first-derivative rule, e.g. Len 5: (-2 -1 0 1 2)/10. Messages as GolayPoly.
TGolayTable Golay1stDeriv(std::int32_t Len);

/// How the general filter treats the WindowLen div 2 elements at either end.
enum TSavGolEdge : std::uint8_t {
  sgeNearest,  ///< repeat the nearest value of a full centred window (as PolynomialSmooth)
  sgeInterp    ///< evaluate the fit of the first and of the last full window at the end points
};

/// Coefficients c[0..WindowLen-1] such that sum c[k] * s(k) is the DerivOrder-th derivative
/// (per element step) at position Pos (0-based within the window) of the least-squares
/// polynomial of order PolyOrder through the window's values s(0..WindowLen-1). Checks in this
/// order, raising EQUVMath2Error "SavitzkyGolayCoeffs: <text>": WindowLen odd and within
/// 1..kMaxSavGolLen, 0 <= PolyOrder < WindowLen and <= kMaxSavGolOrder, 0 <= DerivOrder <=
/// PolyOrder, 0 <= Pos < WindowLen.
TDoubleArray SavitzkyGolayCoeffs(std::int32_t WindowLen, std::int32_t PolyOrder,
                                 std::int32_t DerivOrder, std::int32_t Pos);

/// Savitzky-Golay filter of the stretch First..Last (clamped into the source and ordered as the
/// smoothing functions do) into DestVec elements 1..Last - First + 1, the DerivOrder-th
/// derivative divided by Delta^DerivOrder (Delta = spacing of the samples). The ends follow
/// Edge. DestVec grows when shorter and fires OnChange once; SourceVec may be DestVec. Checks,
/// raising "SavitzkyGolayFilter: <text>": null vectors, then the coefficient checks above, a
/// non-positive or non-finite Delta, and a stretch shorter than the window.
void SavitzkyGolayFilter(const TVector* SourceVec, std::int32_t First, std::int32_t Last,
                         std::int32_t WindowLen, std::int32_t PolyOrder, std::int32_t DerivOrder,
                         TSavGolEdge Edge, double Delta, TVector* DestVec);

/// Texts of the general rule's messages; each follows "<Function>: ".
namespace savgolmsg {
inline constexpr std::string_view kUndefined = "either SourceVec or DestVec is undefined";
inline constexpr std::string_view kWindowEven = "length of window must be odd";
inline constexpr std::string_view kWindowOutOfRange = "length of window is out of range";
inline constexpr std::string_view kOrderOutOfRange =
    "polynomial order must be at least 0, below the length of the window and at most 50";
inline constexpr std::string_view kDerivOutOfRange =
    "derivative order must lie between 0 and the polynomial order";
inline constexpr std::string_view kPosOutOfRange = "evaluation point lies outside the window";
inline constexpr std::string_view kBadDelta = "spacing of the samples must be positive";
inline constexpr std::string_view kRangeTooShort =
    "specified range is shorter than the length of the window";
}  // namespace savgolmsg

namespace detail {
/// Extended-precision coefficients behind SavitzkyGolayCoeffs (arguments already checked).
std::vector<Extended> SavGolWeights(std::int32_t WindowLen, std::int32_t PolyOrder,
                                    std::int32_t DerivOrder, std::int32_t Pos);
}  // namespace detail

}  // namespace quv
