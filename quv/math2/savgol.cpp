// Savitzky-Golay coefficient tables and the general least-squares rule.
#include "quv/math2/savgol.h"

#include <cmath>
#include <cstdlib>
#include <numeric>

#include "quv/math2/smoothing.h"
#include "quv/math2/smoothing_core.h"

namespace quv {

namespace {

using detail::RaiseMath2;

void CheckTableLen(std::string_view name, std::int32_t Len) {
  if (Len < 3 || Len > kMaxGolayLen) RaiseMath2(name, smoothmsg::kPolynomialOutOfRange);
  if (Len % 2 == 0) RaiseMath2(name, smoothmsg::kPolynomialEven);
}

// Builds the table from weight(j) and norm, then divides out their greatest common divisor.
template <class Weight>
TGolayTable MakeTable(std::int32_t Len, std::int64_t norm, Weight weight) {
  const std::int64_t h = Len / 2;
  TGolayTable t;
  t.Weights.reserve(static_cast<std::size_t>(Len));
  std::int64_t g = norm;
  for (std::int64_t j = -h; j <= h; ++j) {
    t.Weights.push_back(weight(j));
    g = std::gcd(g, t.Weights.back());
  }
  for (std::int64_t& w : t.Weights)
    w /= g;
  t.Norm = norm / g;
  return t;
}

void CheckRule(std::string_view name, std::int32_t WindowLen, std::int32_t PolyOrder,
               std::int32_t DerivOrder) {
  if (WindowLen < 1 || WindowLen > kMaxSavGolLen) RaiseMath2(name, savgolmsg::kWindowOutOfRange);
  if (WindowLen % 2 == 0) RaiseMath2(name, savgolmsg::kWindowEven);
  if (PolyOrder < 0 || PolyOrder >= WindowLen || PolyOrder > kMaxSavGolOrder)
    RaiseMath2(name, savgolmsg::kOrderOutOfRange);
  if (DerivOrder < 0 || DerivOrder > PolyOrder) RaiseMath2(name, savgolmsg::kDerivOutOfRange);
}

}  // namespace

TGolayTable GolayPoly(std::int32_t Len) {
  CheckTableLen("GolayPoly", Len);
  const std::int64_t h = Len / 2;
  return MakeTable(Len, (2 * h - 1) * (2 * h + 1) * (2 * h + 3),
                   [h](std::int64_t j) { return 3 * (3 * h * h + 3 * h - 1) - 15 * j * j; });
}

TGolayTable Golay2ndDeriv(std::int32_t Len) {
  CheckTableLen("Golay2ndDeriv", Len);
  const std::int64_t h = Len / 2;
  return MakeTable(Len, h * (h + 1) * (2 * h - 1) * (2 * h + 1) * (2 * h + 3),
                   [h](std::int64_t j) { return 30 * (3 * j * j - h * (h + 1)); });
}

TGolayTable Golay1stDeriv(std::int32_t Len) {
  CheckTableLen("Golay1stDeriv", Len);
  const std::int64_t h = Len / 2;
  return MakeTable(Len, h * (h + 1) * (2 * h + 1), [](std::int64_t j) { return 3 * j; });
}

namespace detail {

// The window's abscissae are scaled into [-1, 1]. An orthonormal basis q_0..q_p of the
// polynomials of order <= p over these points is built by the Stieltjes recurrence
// (q_{k+1} ~ x q_k orthogonalised against all earlier q_j, twice for safety). Every step is
// linear, so the derivatives 0..d of each q_k at the evaluation point t follow the same
// combinations, with D^m(x q)(t) = t D^m q(t) + m D^(m-1) q(t). The least-squares polynomial
// is sum_k <q_k, s> q_k, so weight i = sum_k q_k(x_i) D^d q_k(t).
std::vector<Extended> SavGolWeights(std::int32_t WindowLen, std::int32_t PolyOrder,
                                    std::int32_t DerivOrder, std::int32_t Pos) {
  const auto W = static_cast<std::size_t>(WindowLen);
  const auto p = static_cast<std::size_t>(PolyOrder);
  const auto d = static_cast<std::size_t>(DerivOrder);
  const Extended centre = (static_cast<Extended>(WindowLen) - 1) / 2;
  const Extended scale = centre > 0 ? centre : 1.0L;
  std::vector<Extended> x(W);
  for (std::size_t i = 0; i < W; ++i)
    x[i] = (static_cast<Extended>(i) - centre) / scale;
  const Extended t = (Pos - centre) / scale;

  std::vector<std::vector<Extended>> q(p + 1, std::vector<Extended>(W));
  std::vector<std::vector<Extended>> dq(p + 1, std::vector<Extended>(d + 1, 0.0L));
  const Extended q0 = 1.0L / std::sqrt(static_cast<Extended>(W));
  std::fill(q[0].begin(), q[0].end(), q0);
  dq[0][0] = q0;
  for (std::size_t k = 0; k < p; ++k) {
    std::vector<Extended>& v = q[k + 1];
    std::vector<Extended>& dv = dq[k + 1];
    for (std::size_t i = 0; i < W; ++i)
      v[i] = x[i] * q[k][i];
    for (std::size_t m = 0; m <= d; ++m)
      dv[m] = t * dq[k][m] + (m > 0 ? static_cast<Extended>(m) * dq[k][m - 1] : 0.0L);
    for (int pass = 0; pass < 2; ++pass) {
      for (std::size_t j = 0; j <= k; ++j) {
        Extended c = 0.0L;
        for (std::size_t i = 0; i < W; ++i)
          c += v[i] * q[j][i];
        for (std::size_t i = 0; i < W; ++i)
          v[i] -= c * q[j][i];
        for (std::size_t m = 0; m <= d; ++m)
          dv[m] -= c * dq[j][m];
      }
    }
    Extended norm = 0.0L;
    for (const Extended e : v)
      norm += e * e;
    norm = std::sqrt(norm);
    for (Extended& e : v)
      e /= norm;
    for (Extended& e : dv)
      e /= norm;
  }
  const Extended unit = std::pow(scale, static_cast<Extended>(DerivOrder));
  std::vector<Extended> w(W, 0.0L);
  for (std::size_t k = 0; k <= p; ++k)
    for (std::size_t i = 0; i < W; ++i)
      w[i] += q[k][i] * dq[k][d];
  for (Extended& e : w)
    e /= unit;
  return w;
}

}  // namespace detail

TDoubleArray SavitzkyGolayCoeffs(std::int32_t WindowLen, std::int32_t PolyOrder,
                                 std::int32_t DerivOrder, std::int32_t Pos) {
  constexpr std::string_view name = "SavitzkyGolayCoeffs";
  CheckRule(name, WindowLen, PolyOrder, DerivOrder);
  if (Pos < 0 || Pos >= WindowLen) RaiseMath2(name, savgolmsg::kPosOutOfRange);
  const std::vector<Extended> w = detail::SavGolWeights(WindowLen, PolyOrder, DerivOrder, Pos);
  return TDoubleArray(w.begin(), w.end());
}

void SavitzkyGolayFilter(const TVector* SourceVec, std::int32_t First, std::int32_t Last,
                         std::int32_t WindowLen, std::int32_t PolyOrder, std::int32_t DerivOrder,
                         TSavGolEdge Edge, double Delta, TVector* DestVec) {
  constexpr std::string_view name = "SavitzkyGolayFilter";
  if (SourceVec == nullptr || DestVec == nullptr) RaiseMath2(name, savgolmsg::kUndefined);
  detail::ClampSmoothRange(SourceVec->NrOfElem(), First, Last);
  CheckRule(name, WindowLen, PolyOrder, DerivOrder);
  if (!(Delta > 0.0) || !std::isfinite(Delta)) RaiseMath2(name, savgolmsg::kBadDelta);
  if (Last - First + 1 < WindowLen) RaiseMath2(name, savgolmsg::kRangeTooShort);

  const auto W = static_cast<std::size_t>(WindowLen);
  const std::size_t h = W / 2;
  const auto n = static_cast<std::size_t>(Last - First + 1);
  const Extended unit = std::pow(static_cast<Extended>(Delta), static_cast<Extended>(DerivOrder));
  const auto apply = [&](const std::vector<Extended>& w, const double* lo) {
    Extended sum = 0.0L;
    for (std::size_t m = 0; m < W; ++m)
      sum += w[m] * lo[m];
    return static_cast<double>(sum / unit);
  };

  TDoubleArray out = detail::NewWorkArray(*DestVec, n);
  const double* s = SourceVec->Storage().data() + (First - 1);
  const std::vector<Extended> centre =
      detail::SavGolWeights(WindowLen, PolyOrder, DerivOrder, static_cast<std::int32_t>(h));
  detail::FilterAndPad(s, out, h, h, [&](const double* at) { return apply(centre, at - h); });
  if (Edge == sgeInterp) {
    for (std::size_t k = 0; k < h; ++k) {
      const auto pos = static_cast<std::int32_t>(k);
      out[k] = apply(detail::SavGolWeights(WindowLen, PolyOrder, DerivOrder, pos), s);
      out[n - 1 - k] =
          apply(detail::SavGolWeights(WindowLen, PolyOrder, DerivOrder, WindowLen - 1 - pos),
                s + (n - W));
    }
  }
  detail::StoreResult(*DestVec, out);
}

}  // namespace quv
