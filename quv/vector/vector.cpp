// What TVector and TIntVector add to their shared core: normalisations, random fills,
// integration, histograms and the ASC writers.
#include "quv/vector/vector.h"

#include <cmath>

#include "quv/math1/math1.h"
#include "quv/vector/vector_detail.h"

namespace quv {
namespace {

// Counts elements First..Last of data (used as given: indices outside 1..n count nothing).
template <class T>
void CountRange(const std::vector<T>& data, std::int32_t First, std::int32_t Last, double low,
                double high, double width, TIntArray& hist, std::int32_t& underflow,
                std::int32_t& overflow, std::int32_t& maxCount) {
  const std::int64_t lo = std::max<std::int64_t>(First, 1);
  const std::int64_t hi = std::min<std::int64_t>(Last, static_cast<std::int64_t>(data.size()));
  const std::size_t count = hi >= lo ? static_cast<std::size_t>(hi - lo + 1) : 0;
  detail::CountHistogram(data.data() + (count ? lo - 1 : 0), count, low, high, width, hist,
                         underflow, overflow, maxCount);
}

void ToIntVector(const TIntArray& counts, TIntVector& hist) {
  hist.Resize(static_cast<std::int32_t>(counts.size()));
  hist.CopyFrom(counts, 0, 0, 1);
}

// Closed Newton-Cotes integral over m whole unit intervals of y[0..m].
Extended SimpsonIntervals(const double* y, std::int32_t m) {
  const auto simpson = [y](std::int32_t i) {  // 1/3 rule on intervals i, i + 1
    return (static_cast<Extended>(y[i]) + 4.0L * y[i + 1] + y[i + 2]) / 3.0L;
  };
  const auto threeEighths = [y](std::int32_t i) {
    return 3.0L / 8.0L *
           (static_cast<Extended>(y[i]) + 3.0L * y[i + 1] + 3.0L * y[i + 2] + y[i + 3]);
  };
  switch (m) {
    case 0:
      return 0;
    case 1:
      return (static_cast<Extended>(y[0]) + y[1]) / 2;
    case 2:
      return simpson(0);
    case 3:
      return threeEighths(0);
    case 4:
      return 2.0L / 45.0L *
             (7.0L * y[0] + 32.0L * y[1] + 12.0L * y[2] + 32.0L * y[3] + 7.0L * y[4]);
    default: {
      // Composite 1/3 rule over pairs of intervals; an odd count ends with one 3/8 panel.
      const std::int32_t pairs = (m % 2 == 0) ? m : m - 3;
      Extended sum = 0;
      for (std::int32_t i = 0; i < pairs; i += 2)
        sum += simpson(i);
      if (pairs < m) sum += threeEighths(pairs);
      return sum;
    }
  }
}

}  // namespace

// ---- TVector ----------------------------------------------------------------------------------

void TVector::SetVecLeng(double L) {
  const double length = CalcVecLeng();
  if (length == 0) return;
  const Extended factor = static_cast<Extended>(L) / length;
  for (double& x : MutableStorage())
    x = static_cast<double>(x * factor);
  Changed();
}

double TVector::MeanCenter() {
  double mean = 0, variance = 0;
  MeanVar(0, 0, mean, variance);
  for (double& x : MutableStorage())
    x -= mean;
  return mean;
}

void TVector::Standardize(double& Mean, double& StdDev) {
  double variance = 0;
  MeanVar(0, 0, Mean, variance);
  StdDev = std::sqrt(variance);
  if (StdDev == 0) return;
  for (double& x : MutableStorage())
    x = (x - Mean) / StdDev;
}

void TVector::QNormalize(double Percent, double& Median, double& Spread) {
  Median = Percentile(50, 0, 0);
  Spread = std::fabs(Median - Percentile(Percent, 0, 0));
  if (Spread == 0) return;
  for (double& x : MutableStorage())
    x = (x - Median) / Spread;
}

bool TVector::Histogram(std::int32_t First, std::int32_t Last, double LowBound, double HighBound,
                        double BinWidth, TIntArray& Hist, std::int32_t& Underflow,
                        std::int32_t& Overflow, std::int32_t& MaxCount) const {
  if (!(BinWidth > 0)) return false;
  const double bins = std::round(std::fabs(HighBound - LowBound) / BinWidth) + 1;
  if (!(bins <= kMaxHistogramBins)) return false;  // also refuses NaN and infinite bounds
  Hist.assign(static_cast<std::size_t>(bins), 0);
  CountRange(Storage(), First, Last, LowBound, HighBound, BinWidth, Hist, Underflow, Overflow,
             MaxCount);
  return true;
}

bool TVector::Histogram(std::int32_t First, std::int32_t Last, double LowBound, double HighBound,
                        double BinWidth, TIntVector& Hist, std::int32_t& Underflow,
                        std::int32_t& Overflow, std::int32_t& MaxCount) const {
  TIntArray counts;
  if (!Histogram(First, Last, LowBound, HighBound, BinWidth, counts, Underflow, Overflow, MaxCount))
    return false;
  ToIntVector(counts, Hist);
  return true;
}

void TVector::FillRandomUniform(double Low, double High) {
  for (double& x : MutableStorage())
    x = Low + Random() * (High - Low);
  SetCleared(false);
  Changed();
}

void TVector::FillRandomGauss(double Mean, double StdDev) {
  for (double& x : MutableStorage())
    x = Mean + StdDev * GRandom();
  SetCleared(false);
  Changed();
}

double TVector::Integrate(double FromIx, double ToIx, TIntegMethod Method) const {
  const double n = NrOfElem();
  const auto clampPos = [n](double p) { return std::isnan(p) ? 1.0 : std::clamp(p, 1.0, n); };
  double a = clampPos(FromIx), b = clampPos(ToIx);
  if (a > b) std::swap(a, b);
  const double* d = Data();
  const auto y = [d](std::int32_t i) -> Extended { return d[i - 1]; };  // element i
  const auto at = [&y, n](double p) -> Extended {  // linear interpolation at position p
    const double i = std::floor(p);
    const double f = p - i;
    const auto k = static_cast<std::int32_t>(i);
    if (f == 0 || i >= n) return y(k);
    return y(k) + (y(k + 1) - y(k)) * f;
  };
  const auto ia = static_cast<std::int32_t>(std::ceil(a));
  const auto ib = static_cast<std::int32_t>(std::floor(b));
  if (ia > ib) return static_cast<double>((b - a) * (at(a) + at(b)) / 2);
  Extended sum = (ia - a) * (at(a) + y(ia)) / 2 + (b - ib) * (y(ib) + at(b)) / 2;
  switch (Method) {
    case imSimple:
      for (std::int32_t i = ia; i < ib; ++i)
        sum += y(i);
      break;
    case imTrapezoidal:
      for (std::int32_t i = ia; i < ib; ++i)
        sum += (y(i) + y(i + 1)) / 2;
      break;
    case imSimpson:
      sum += SimpsonIntervals(d + (ia - 1), ib - ia);
      break;
  }
  return static_cast<double>(sum);
}

void TVector::ExportAsASC(const std::string& FileName, std::int32_t Decimals,
                          const std::string& Comment) const {
  WriteASC(FileName, Comment, kASCHeaderText, Decimals);
}

// ---- TIntVector -------------------------------------------------------------------------------

bool TIntVector::Histogram(std::int32_t First, std::int32_t Last, std::int32_t LowBound,
                           std::int32_t HighBound, std::int32_t BinWidth, TIntArray& Hist,
                           std::int32_t& Underflow, std::int32_t& Overflow,
                           std::int32_t& MaxCount) const {
  const double bins =
      BinWidth >= 1
          ? std::round(std::fabs(static_cast<double>(HighBound) - LowBound) / BinWidth) + 1
          : 0;
  if (bins < 1 || bins > kMaxHistogramBins)
    RaiseComponentError<EQUVVectorError>(*this, msg::kHistogramInvalidBins);
  Hist.assign(static_cast<std::size_t>(bins), 0);
  CountRange(Storage(), First, Last, LowBound, HighBound, BinWidth, Hist, Underflow, Overflow,
             MaxCount);
  return true;
}

bool TIntVector::Histogram(std::int32_t First, std::int32_t Last, std::int32_t LowBound,
                           std::int32_t HighBound, std::int32_t BinWidth, TIntVector& Hist,
                           std::int32_t& Underflow, std::int32_t& Overflow,
                           std::int32_t& MaxCount) const {
  TIntArray counts;
  Histogram(First, Last, LowBound, HighBound, BinWidth, counts, Underflow, Overflow, MaxCount);
  ToIntVector(counts, Hist);
  return true;
}

void TIntVector::ExportAsASC(const std::string& FileName, const std::string& Comment) const {
  WriteASC(FileName, Comment, kASCHeaderText, 0);
}

}  // namespace quv
