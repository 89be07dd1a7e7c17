// Statistics of the vector core, included by vector_core.cpp (which instantiates the core
// once for both element types). Sums run in long double and are rounded to double once.
//
// Mode, Percentile and Quartiles work on a sorted copy of the range. The copy is ordered with
// a comparator that puts NaNs last, so that a NaN in the data cannot break the ordering that
// the standard sorts rely on. Each work sort counts as one step of the progress protocol.
#include <algorithm>
#include <cmath>

#include "quv/vector/vector_core.h"
#include "quv/vector/vector_detail.h"

namespace quv {

template <class T>
void TVectorCore<T>::MinMax(std::int32_t First, std::int32_t Last, T& Min, T& Max) const {
  std::int32_t minIx = 0, maxIx = 0;
  MinMax(First, Last, minIx, maxIx, Min, Max);
}

template <class T>
void TVectorCore<T>::MinMax(std::int32_t First, std::int32_t Last, std::int32_t& MinIx,
                            std::int32_t& MaxIx, T& Min, T& Max) const {
  MakeValidElemRange(First, Last);
  MinIx = MaxIx = First;
  Min = Max = GetVal(First);
  for (std::int32_t i = First + 1; i <= Last; ++i) {
    const T x = elems_[static_cast<std::size_t>(i - 1)];
    if (x < Min) {
      Min = x;
      MinIx = i;
    }
    if (x > Max) {
      Max = x;
      MaxIx = i;
    }
  }
}

template <class T>
double TVectorCore<T>::Sum(std::int32_t First, std::int32_t Last) const {
  std::size_t begin = 0, count = 0;
  Span(First, Last, begin, count);
  Extended sum = 0;
  for (std::size_t k = 0; k < count; ++k)
    sum += elems_[begin + k];
  return static_cast<double>(sum);
}

template <class T>
void TVectorCore<T>::MeanVar(std::int32_t First, std::int32_t Last, double& Mean,
                             double& Variance) const {
  std::size_t begin = 0, count = 0;
  Span(First, Last, begin, count);
  Extended sum = 0, sumSq = 0;
  for (std::size_t k = 0; k < count; ++k) {
    const Extended x = elems_[begin + k];
    sum += x;
    sumSq += x * x;
  }
  const auto n = static_cast<Extended>(count);
  Extended variance = 1.0L;  // the deliberate default for one or two elements
  Mean = static_cast<double>(sum / n);
  if (count >= 3) variance = (sumSq - sum * sum / n) / (n - 1);
  if (variance < 0) variance = 0;
  Variance = static_cast<double>(variance);
}

template <class T>
double TVectorCore<T>::GeometricMean(std::int32_t First, std::int32_t Last) const {
  std::size_t begin = 0, count = 0;
  Span(First, Last, begin, count);
  Extended sumLn = 0;
  bool zero = false;
  for (std::size_t k = 0; k < count; ++k) {
    const Extended x = elems_[begin + k];
    if (x < 0) RaiseComponentError<EQUVVectorError>(*this, msg::kNegativeArgGeometricMean);
    if (x == 0)
      zero = true;
    else
      sumLn += std::log(x);
  }
  if (zero) return 0.0;
  return static_cast<double>(std::exp(sumLn / static_cast<Extended>(count)));
}

template <class T>
double TVectorCore<T>::HarmonicMean(std::int32_t First, std::int32_t Last) const {
  std::size_t begin = 0, count = 0;
  Span(First, Last, begin, count);
  Extended sumInv = 0;
  for (std::size_t k = 0; k < count; ++k) {
    const Extended x = elems_[begin + k];
    if (!(x > 0)) RaiseComponentError<EQUVVectorError>(*this, msg::kNonPositiveArgHarmonicMean);
    sumInv += 1.0L / x;
  }
  return static_cast<double>(static_cast<Extended>(count) / sumInv);
}

template <class T>
void TVectorCore<T>::SkewKurt(std::int32_t First, std::int32_t Last, double& Skewness,
                              double& Kurtosis) const {
  std::size_t begin = 0, count = 0;
  Span(First, Last, begin, count);
  Skewness = Kurtosis = 0.0;
  if (count <= 3) return;
  const auto n = static_cast<Extended>(count);
  Extended sum = 0;
  for (std::size_t k = 0; k < count; ++k)
    sum += elems_[begin + k];
  const Extended mean = sum / n;
  Extended s1 = 0, s2 = 0, s3 = 0, s4 = 0;
  for (std::size_t k = 0; k < count; ++k) {
    const Extended d = elems_[begin + k] - mean;
    const Extended d2 = d * d;
    s1 += d;
    s2 += d2;
    s3 += d2 * d;
    s4 += d2 * d2;
  }
  const Extended s = std::sqrt((s2 - s1 * s1 / n) / (n - 1));
  if (s == 0) return;
  Skewness = static_cast<double>(s3 / n / (s * s * s));
  Kurtosis = static_cast<double>(s4 / n / (s * s * s * s) - 3);
}

template <class T>
void TVectorCore<T>::SkewKurtSample(std::int32_t First, std::int32_t Last, double& Skewness,
                                    double& Kurtosis) const {
  std::size_t begin = 0, count = 0;
  Span(First, Last, begin, count);
  Skewness = Kurtosis = 0.0;
  if (count < 4) return;
  double g = 0, k = 0;
  SkewKurt(First, Last, g, k);
  const auto n = static_cast<Extended>(count);
  Kurtosis = static_cast<double>((k + 3.0L) * n * n * (n + 1) / ((n - 1) * (n - 2) * (n - 3)) -
                                 3 * (n - 1) * (n - 1) / ((n - 2) * (n - 3)));
  Skewness = static_cast<double>(g * n * n / ((n - 1) * (n - 2)));
}

template <class T>
T TVectorCore<T>::Mode(std::int32_t First, std::int32_t Last) const {
  std::size_t begin = 0, count = 0;
  Span(First, Last, begin, count);
  TArray work = NewArray(count);
  std::copy_n(elems_.begin() + static_cast<std::ptrdiff_t>(begin), count, work.begin());
  detail::SortForStatistics(work);
  T best = work[0];
  std::size_t bestRun = 1, run = 1;
  for (std::size_t k = 1; k < count; ++k) {
    run = (work[k] == work[k - 1]) ? run + 1 : 1;
    if (run > bestRun) {
      bestRun = run;
      best = work[k];
    }
  }
  return best;
}

template <class T>
double TVectorCore<T>::Percentile(double P, std::int32_t First, std::int32_t Last) const {
  std::size_t begin = 0, count = 0;
  Span(First, Last, begin, count);
  TArray work = NewArray(count);
  std::copy_n(elems_.begin() + static_cast<std::ptrdiff_t>(begin), count, work.begin());
  // Only the two order statistics around the position are needed: select them instead of
  // sorting everything.
  return detail::SelectPercentile(work, P);
}

template <class T>
void TVectorCore<T>::Quartiles(std::int32_t First, std::int32_t Last, double& Q1, double& Q2,
                               double& Q3) const {
  std::size_t begin = 0, count = 0;
  Span(First, Last, begin, count);
  TArray work = NewArray(count);
  std::copy_n(elems_.begin() + static_cast<std::ptrdiff_t>(begin), count, work.begin());
  detail::SortForStatistics(work);
  Q1 = detail::PercentileOfSorted(work.data(), work.size(), 25.0);
  Q2 = detail::PercentileOfSorted(work.data(), work.size(), 50.0);
  Q3 = detail::PercentileOfSorted(work.data(), work.size(), 75.0);
}

}  // namespace quv
