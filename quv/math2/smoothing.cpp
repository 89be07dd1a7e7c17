// Moving-window smoothers and Savitzky-Golay derivatives over a stretch of a TVector.
#include "quv/math2/smoothing.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "quv/math2/savgol.h"
#include "quv/math2/smoothing_core.h"

namespace quv {

namespace detail {

void RaiseMath2(std::string_view function, std::string_view text) {
  RaiseFunctionError<EQUVMath2Error>(function, text);
}

void ClampSmoothRange(std::int32_t n, std::int32_t& First, std::int32_t& Last) {
  First = std::clamp(First, std::int32_t{1}, n);
  Last = std::clamp(Last, std::int32_t{1}, n);
  if (First > Last) std::swap(First, Last);
}

TDoubleArray NewWorkArray(const TVector& owner, std::size_t n) {
  return GuardAllocation<EQUVMath2Error>(owner, msg::kNotEnoughMemoryOnHeap,
                                         [n] { return TDoubleArray(n); });
}

void StoreResult(TVector& dest, const TDoubleArray& values) {
  const auto n = static_cast<std::int32_t>(values.size());
  if (dest.NrOfElem() >= n) {
    dest.CopyFrom(values, 0, n - 1, 1);
    return;
  }
  // Growing through Resize would fire OnChange twice; build the grown vector aside and take
  // it over in one step instead.
  TVector grown;
  grown.Resize(n);
  grown.CopyFrom(values, 0, n - 1, 1);
  dest.Clone(grown);
}

}  // namespace detail

namespace {

using detail::RaiseMath2;

// The texts one smoother raises: its name, its range text and its two window texts.
struct TSmootherTexts {
  std::string_view name;
  std::string_view range;
  std::string_view outOfRange;
  std::string_view even;
  std::int32_t maxLen;
};

constexpr std::int32_t kNoUpperLimit = INT32_MAX;

constexpr TSmootherTexts kAverageTexts{"MovingAverageSmooth", smoothmsg::kRangeWindow,
                                       smoothmsg::kWindowOutOfRange, smoothmsg::kWindowEven,
                                       kNoUpperLimit};
constexpr TSmootherTexts kMedianTexts{"MovingMedianSmooth", smoothmsg::kRangeWindow,
                                      smoothmsg::kWindowOutOfRange, smoothmsg::kWindowEven,
                                      kNoUpperLimit};
constexpr TSmootherTexts kWeightedTexts{"WeightedAverageSmooth", smoothmsg::kRangeWindow,
                                        smoothmsg::kWindowOutOfRange, smoothmsg::kWindowEven,
                                        kNoUpperLimit};
constexpr TSmootherTexts kPolynomialTexts{"PolynomialSmooth", smoothmsg::kRangePolynomial,
                                          smoothmsg::kPolynomialOutOfRange,
                                          smoothmsg::kPolynomialEven, kMaxGolayLen};
constexpr TSmootherTexts kFirstDerivTexts{"FirstDeriv", smoothmsg::kRangeCalculation,
                                          smoothmsg::kPolynomialOutOfRange,
                                          smoothmsg::kPolynomialEven, kMaxGolayLen};
constexpr TSmootherTexts kSecondDerivTexts{"SecondDeriv", smoothmsg::kRangePolynomial,
                                           smoothmsg::kPolynomialOutOfRange,
                                           smoothmsg::kPolynomialEven, kMaxGolayLen};

// Steps 1 to 4 of the contract, then the window computation, the padding and the store.
// makeStep(h) is called once after the checks and returns the per-window function.
template <class MakeStep>
void SmoothStretch(const TSmootherTexts& texts, const TVector* SourceVec, std::int32_t First,
                   std::int32_t Last, std::int32_t Len, TVector* DestVec, MakeStep makeStep) {
  if (SourceVec == nullptr || DestVec == nullptr) RaiseMath2(texts.name, smoothmsg::kUndefined);
  detail::ClampSmoothRange(SourceVec->NrOfElem(), First, Last);
  if (Last - First < Len) RaiseMath2(texts.name, texts.range);
  if (Len < 3 || Len > texts.maxLen) RaiseMath2(texts.name, texts.outOfRange);
  if (Len % 2 == 0) RaiseMath2(texts.name, texts.even);

  const auto h = static_cast<std::size_t>(Len / 2);
  const auto n = static_cast<std::size_t>(Last - First + 1);
  TDoubleArray out = detail::NewWorkArray(*DestVec, n);
  // The step functions receive a pointer to the centre of their window.
  const double* s = SourceVec->Storage().data() + (First - 1);
  auto step = makeStep(h);
  detail::FilterAndPad(s, out, h, h, [&step](const double* centre) { return step(centre); });
  detail::StoreResult(*DestVec, out);
}

// sum c[j] * (s(i + j) + s(i - j)) for j = 1..h plus c[0] * s(i): a symmetric table.
auto SymmetricTableStep(const TGolayTable& table) {
  return [table](std::size_t h) {
    std::vector<Extended> w(h + 1);
    for (std::size_t j = 0; j <= h; ++j)
      w[j] = static_cast<Extended>(table.Weights[h + j]);
    const auto norm = static_cast<Extended>(table.Norm);
    return [w = std::move(w), norm, h](const double* c) {
      Extended sum = w[0] * c[0];
      for (std::size_t j = 1; j <= h; ++j)
        sum += w[j] * (static_cast<Extended>(c[j]) + c[-static_cast<std::ptrdiff_t>(j)]);
      return static_cast<double>(sum / norm);
    };
  };
}

}  // namespace

void MovingAverageSmooth(const TVector* SourceVec, std::int32_t First, std::int32_t Last,
                         std::int32_t Len, TVector* DestVec) {
  SmoothStretch(kAverageTexts, SourceVec, First, Last, Len, DestVec, [Len](std::size_t h) {
    return [h, Len](const double* c) {
      Extended sum = c[0];
      for (std::size_t j = 1; j <= h; ++j) {
        sum += c[j];
        sum += c[-static_cast<std::ptrdiff_t>(j)];
      }
      return static_cast<double>(sum / Len);
    };
  });
}

void MovingMedianSmooth(const TVector* SourceVec, std::int32_t First, std::int32_t Last,
                        std::int32_t Len, TVector* DestVec) {
  SmoothStretch(kMedianTexts, SourceVec, First, Last, Len, DestVec, [](std::size_t h) {
    // One work buffer for all windows; nth_element needs an order, so a window with a NaN
    // gives NaN without being sorted.
    return [h, buf = TDoubleArray(2 * h + 1)](const double* c) mutable {
      const double* lo = c - h;
      bool nan = false;
      for (std::size_t k = 0; k < buf.size(); ++k) {
        buf[k] = lo[k];
        nan = nan || std::isnan(lo[k]);
      }
      if (nan) return std::nan("");
      std::nth_element(buf.begin(), buf.begin() + static_cast<std::ptrdiff_t>(h), buf.end());
      return buf[h];
    };
  });
}

void WeightedAverageSmooth(const TVector* SourceVec, std::int32_t First, std::int32_t Last,
                           std::int32_t Len, TVector* DestVec) {
  SmoothStretch(kWeightedTexts, SourceVec, First, Last, Len, DestVec, [Len](std::size_t h) {
    const Extended scale = 4.0L / (static_cast<Extended>(Len + 1) * (Len + 1));
    return [h, scale](const double* c) {
      Extended sum = static_cast<Extended>(h + 1) * c[0];
      for (std::size_t j = 1; j <= h; ++j)
        sum += static_cast<Extended>(h + 1 - j) *
               (static_cast<Extended>(c[j]) + c[-static_cast<std::ptrdiff_t>(j)]);
      return static_cast<double>(scale * sum);
    };
  });
}

void PolynomialSmooth(const TVector* SourceVec, std::int32_t First, std::int32_t Last,
                      std::int32_t Len, TVector* DestVec) {
  SmoothStretch(kPolynomialTexts, SourceVec, First, Last, Len, DestVec,
                [Len](std::size_t h) { return SymmetricTableStep(GolayPoly(Len))(h); });
}

void SecondDeriv(const TVector* SourceVec, std::int32_t First, std::int32_t Last, std::int32_t Len,
                 TVector* DestVec) {
  SmoothStretch(kSecondDerivTexts, SourceVec, First, Last, Len, DestVec,
                [Len](std::size_t h) { return SymmetricTableStep(Golay2ndDeriv(Len))(h); });
}

void FirstDeriv(const TVector* SourceVec, std::int32_t First, std::int32_t Last, std::int32_t Len,
                TVector* DestVec) {
  SmoothStretch(kFirstDerivTexts, SourceVec, First, Last, Len, DestVec, [Len](std::size_t h) {
    const TGolayTable table = Golay1stDeriv(Len);
    const auto norm = static_cast<Extended>(table.Norm);
    // The weights are j / Norm after reduction by a common factor; keep them as integers.
    std::vector<Extended> w(h + 1);
    for (std::size_t j = 0; j <= h; ++j)
      w[j] = static_cast<Extended>(table.Weights[h + j]);
    return [w = std::move(w), norm, h](const double* c) {
      Extended sum = 0.0L;
      for (std::size_t j = 1; j <= h; ++j)
        sum += w[j] * (static_cast<Extended>(c[j]) - c[-static_cast<std::ptrdiff_t>(j)]);
      return static_cast<double>(sum / norm);
    };
  });
}

void MovingKernelFilter(const TVector* SourceVec, std::int32_t First, std::int32_t Last,
                        const TVector* FilterKernel, TVector* DestVec) {
  const std::string_view name = smoothmsg::kKernelFilterName;
  if (SourceVec == nullptr || DestVec == nullptr || FilterKernel == nullptr)
    RaiseMath2(name, smoothmsg::kKernelUndefined);
  detail::ClampSmoothRange(SourceVec->NrOfElem(), First, Last);
  const std::int32_t L = FilterKernel->NrOfElem();
  if (Last - First < L) RaiseMath2(name, smoothmsg::kKernelRange);

  // Reversed kernel so that the inner loop walks source and kernel forwards.
  const TDoubleArray& k = FilterKernel->Storage();
  const std::vector<Extended> rev(k.rbegin(), k.rend());
  const auto h = static_cast<std::size_t>(L / 2);
  const auto right = static_cast<std::size_t>(L) - 1 - h;
  const auto n = static_cast<std::size_t>(Last - First + 1);
  TDoubleArray out = detail::NewWorkArray(*DestVec, n);
  const double* s = SourceVec->Storage().data() + (First - 1);
  detail::FilterAndPad(s, out, h, right, [&rev, h](const double* at) {
    const double* lo = at - h;
    Extended sum = 0.0L;
    for (std::size_t m = 0; m < rev.size(); ++m)
      sum += rev[m] * lo[m];
    return static_cast<double>(sum);
  });
  detail::StoreResult(*DestVec, out);
}

}  // namespace quv
