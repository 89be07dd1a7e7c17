// Statistics over rectangular sub-ranges, normalisation of columns and rows, differences,
// counting, histograms, dichotomisation and resampling.
#include <algorithm>
#include <cmath>

#include "quv/matrix/tmatrix.h"

namespace quv {
namespace {

// Sorts ascending with NaN last, so that a NaN cannot break the ordering the sort relies on.
void SortValues(TDoubleArray& x) {
  std::sort(x.begin(), x.end(),
            [](double a, double b) { return a < b || (std::isnan(b) && !std::isnan(a)); });
}

// Percentile of sorted values: s[i] + (s[i+1] - s[i]) f for pos = (n - 1) p / 100 = i + f.
// A NaN probability counts as 0, as in the vector classes.
double SortedPercentile(const TDoubleArray& s, double prob) {
  prob = std::isnan(prob) ? 0.0 : std::clamp(prob, 0.0, 100.0);
  const std::size_t n = s.size();
  if (n == 1) return s[0];
  if (prob == 100.0) return s[n - 1];
  const double pos = static_cast<double>(n - 1) * prob / 100.0;
  const auto i = static_cast<std::size_t>(pos);
  const double f = pos - static_cast<double>(i);
  return s[i] + (s[i + 1] - s[i]) * f;
}

// Population skewness and excess kurtosis in the forms of the vector class (n > 3).
void SkewKurtOf(const TDoubleArray& x, double& skewness, double& kurtosis) {
  skewness = 0.0;
  kurtosis = 0.0;
  const std::size_t n = x.size();
  if (n <= 3) return;
  Extended sum = 0.0L;
  for (double v : x)
    sum += v;
  const Extended mean = sum / static_cast<Extended>(n);
  Extended s1 = 0.0L, s2 = 0.0L, s3 = 0.0L, s4 = 0.0L;
  for (double v : x) {
    const Extended d = v - mean;
    s1 += d;
    s2 += d * d;
    s3 += d * d * d;
    s4 += d * d * d * d;
  }
  const Extended nn = static_cast<Extended>(n);
  const Extended var = (s2 - s1 * s1 / nn) / (nn - 1);
  if (!(var > 0.0L)) return;
  const Extended s = std::sqrt(var);
  skewness = static_cast<double>(s3 / nn / (s * s * s));
  kurtosis = static_cast<double>(s4 / nn / (s * s * s * s) - 3.0L);
}

// Mean and sample variance of values (variance 0 for fewer than two values).
void MeanVarOf(const TDoubleArray& x, Extended& mean, Extended& variance) {
  Extended sum = 0.0L;
  for (double v : x)
    sum += v;
  const Extended n = static_cast<Extended>(x.size());
  mean = x.empty() ? 0.0L : sum / n;
  Extended ss = 0.0L;
  for (double v : x)
    ss += (v - mean) * (v - mean);
  variance = x.size() < 2 ? 0.0L : ss / (n - 1);
}

}  // namespace

namespace detail {

// The elements of a made-valid range, column by column.
TDoubleArray RangeValues(const TDouble2DArray& store, std::int32_t lowCol, std::int32_t lowRow,
                         std::int32_t highCol, std::int32_t highRow) {
  TDoubleArray v;
  v.reserve(static_cast<std::size_t>(highCol - lowCol + 1) *
            static_cast<std::size_t>(highRow - lowRow + 1));
  for (std::int32_t c = lowCol; c <= highCol; ++c) {
    const TDoubleArray& col = store[static_cast<std::size_t>(c - 1)];
    v.insert(v.end(), col.begin() + (lowRow - 1), col.begin() + highRow);
  }
  return v;
}

}  // namespace detail

namespace {

// Copies the made-valid range of m into a work array, guarding the allocation.
TDoubleArray ValuesOf(const TMatrix& m, std::int32_t lowCol, std::int32_t lowRow,
                      std::int32_t highCol, std::int32_t highRow) {
  m.MakeValidColRange(lowCol, highCol);
  m.MakeValidRowRange(lowRow, highRow);
  return GuardAllocation<EQUVMatrixError>(m, msg::kNotEnoughMemoryOnHeap, [&] {
    return detail::RangeValues(m.Columns(), lowCol, lowRow, highCol, highRow);
  });
}

TDoubleArray RowOf(const TDouble2DArray& store, std::size_t r) {
  TDoubleArray row(store.size());
  for (std::size_t c = 0; c < store.size(); ++c)
    row[c] = store[c][r];
  return row;
}

}  // namespace

double TMatrix::Trace() const {
  Extended s = 0.0L;
  for (std::int32_t i = 1; i <= std::min(ncols_, nrows_); ++i)
    s += At(i, i);
  return static_cast<double>(s);
}

double TMatrix::Sum(std::int32_t lowCol, std::int32_t lowRow, std::int32_t highCol,
                    std::int32_t highRow) const {
  MakeValidColRange(lowCol, highCol);
  MakeValidRowRange(lowRow, highRow);
  Extended s = 0.0L;
  ForRange(lowCol, lowRow, highCol, highRow, [&](double x) { s += x; });
  return static_cast<double>(s);
}

void TMatrix::MeanVar(std::int32_t lowCol, std::int32_t lowRow, std::int32_t highCol,
                      std::int32_t highRow, double& mean, double& variance) const {
  MakeValidColRange(lowCol, highCol);
  MakeValidRowRange(lowRow, highRow);
  Extended sum = 0.0L;
  ForRange(lowCol, lowRow, highCol, highRow, [&](double x) { sum += x; });
  const Extended n = static_cast<Extended>(highCol - lowCol + 1) * (highRow - lowRow + 1);
  const Extended m = sum / n;
  Extended ss = 0.0L;  // two passes: no cancellation between the sum of squares and the mean
  ForRange(lowCol, lowRow, highCol, highRow, [&](double x) { ss += (x - m) * (x - m); });
  mean = static_cast<double>(m);
  variance = n < 2 ? 0.0 : static_cast<double>(ss / (n - 1));
}

void TMatrix::SkewKurt(std::int32_t lowCol, std::int32_t lowRow, std::int32_t highCol,
                       std::int32_t highRow, double& skewness, double& kurtosis) const {
  SkewKurtOf(ValuesOf(*this, lowCol, lowRow, highCol, highRow), skewness, kurtosis);
}

void TMatrix::SkewKurtSample(std::int32_t lowCol, std::int32_t lowRow, std::int32_t highCol,
                             std::int32_t highRow, double& skewness, double& kurtosis) const {
  const TDoubleArray x = ValuesOf(*this, lowCol, lowRow, highCol, highRow);
  SkewKurtOf(x, skewness, kurtosis);
  const double n = static_cast<double>(x.size());
  if (x.size() < 4) return;
  kurtosis = (kurtosis + 3.0) * n * n * (n + 1) / ((n - 1) * (n - 2) * (n - 3)) -
             3.0 * (n - 1) * (n - 1) / ((n - 2) * (n - 3));
  skewness = skewness * n * n / ((n - 1) * (n - 2));
}

double TMatrix::GeometricMean(std::int32_t lowCol, std::int32_t lowRow, std::int32_t highCol,
                              std::int32_t highRow) const {
  MakeValidColRange(lowCol, highCol);
  MakeValidRowRange(lowRow, highRow);
  Extended logSum = 0.0L;
  bool zero = false;
  std::int64_t count = 0;
  for (std::int32_t c = lowCol; c <= highCol; ++c) {
    for (std::int32_t r = lowRow; r <= highRow; ++r) {
      const double x = At(c, r);
      ++count;
      if (x < 0.0) RaiseComponentError<EQUVMatrixError>(*this, msg::kNegativeArgGeometricMean);
      if (x == 0.0) {
        zero = true;
      } else {
        logSum += std::log(static_cast<Extended>(x));
      }
    }
  }
  if (zero) return 0.0;
  return static_cast<double>(std::exp(logSum / static_cast<Extended>(count)));
}

double TMatrix::HarmonicMean(std::int32_t lowCol, std::int32_t lowRow, std::int32_t highCol,
                             std::int32_t highRow) const {
  MakeValidColRange(lowCol, highCol);
  MakeValidRowRange(lowRow, highRow);
  Extended s = 0.0L;
  std::int64_t count = 0;
  for (std::int32_t c = lowCol; c <= highCol; ++c) {
    for (std::int32_t r = lowRow; r <= highRow; ++r) {
      const double x = At(c, r);
      if (x <= 0.0) RaiseComponentError<EQUVMatrixError>(*this, msg::kNonPositiveArgHarmonicMean);
      s += 1.0L / x;
      ++count;
    }
  }
  return static_cast<double>(static_cast<Extended>(count) / s);
}

void TMatrix::Quartiles(std::int32_t lowCol, std::int32_t lowRow, std::int32_t highCol,
                        std::int32_t highRow, double& q1, double& q2, double& q3) const {
  TDoubleArray s = ValuesOf(*this, lowCol, lowRow, highCol, highRow);
  SortValues(s);
  q1 = SortedPercentile(s, 25.0);
  q2 = SortedPercentile(s, 50.0);
  q3 = SortedPercentile(s, 75.0);
}

double TMatrix::Percentile(double prob, std::int32_t lowCol, std::int32_t lowRow,
                           std::int32_t highCol, std::int32_t highRow) const {
  TDoubleArray s = ValuesOf(*this, lowCol, lowRow, highCol, highRow);
  SortValues(s);
  return SortedPercentile(s, prob);
}

double TMatrix::Correlate(const TMatrix* MatB) const {
  if (MatB == nullptr || MatB->ncols_ != ncols_ || MatB->nrows_ != nrows_) {
    RaiseComponentError<EQUVMatrixError>(*this, "\": matrices do not match");
  }
  Extended sx = 0.0L, sy = 0.0L, sxx = 0.0L, syy = 0.0L, sxy = 0.0L;
  for (std::size_t c = 0; c < store_.size(); ++c) {
    for (std::size_t r = 0; r < store_[c].size(); ++r) {
      const Extended x = store_[c][r];
      const Extended y = MatB->store_[c][r];
      sx += x;
      sy += y;
      sxx += x * x;
      syy += y * y;
      sxy += x * y;
    }
  }
  const Extended n = static_cast<Extended>(ncols_) * nrows_;
  const Extended qx = sxx - sx * sx / n;
  const Extended qy = syy - sy * sy / n;
  if (!(qx > 0.0L) || !(qy > 0.0L)) return 0.0;
  return static_cast<double>((sxy - sx * sy / n) / std::sqrt(qx * qy));
}

void TMatrix::Histogram(std::int32_t lowCol, std::int32_t lowRow, std::int32_t highCol,
                        std::int32_t highRow, double lowBound, double highBound, double binWidth,
                        TIntArray& hist, std::int32_t& underflow, std::int32_t& overflow,
                        std::int32_t& maxCount) const {
  const double binCount = std::round(std::abs(highBound - lowBound) / binWidth) + 1.0;
  if (!(binWidth > 0.0) || !(binCount >= 1.0) || binCount > kMaxHistogramBins) {
    RaiseComponentError<EQUVMatrixError>(*this, msg::kHistogramInvalidBins);
  }
  TIntArray counts(static_cast<std::size_t>(binCount), 0);
  underflow = 0;
  overflow = 0;
  maxCount = 0;
  MakeValidColRange(lowCol, highCol);
  MakeValidRowRange(lowRow, highRow);
  ForRange(lowCol, lowRow, highCol, highRow, [&](double x) {
    if (std::isnan(x)) return;  // belongs nowhere
    if (x < lowBound) {
      ++underflow;
    } else if (x >= highBound + binWidth) {
      ++overflow;
    } else {
      // The last bin may be reached by a value just below highBound + binWidth.
      const auto bin =
          std::min(static_cast<std::size_t>((x - lowBound) / binWidth), counts.size() - 1);
      maxCount = std::max(maxCount, ++counts[bin]);
    }
  });
  hist = std::move(counts);
}

void TMatrix::Dichotomize(double threshold) {
  for (TDoubleArray& col : store_) {
    for (double& x : col)
      x = x >= threshold ? 1.0 : 0.0;
  }
  Changed();
}

void TMatrix::Diff(std::int32_t order, TApplyColRow applyTo) {
  const std::int32_t len = applyTo == acrColumns ? nrows_ : ncols_;
  if (order < 1 || order >= len) return;
  TStore work = store_;
  for (std::int32_t o = 0; o < order; ++o) {
    if (applyTo == acrColumns) {
      for (TDoubleArray& col : work) {
        for (std::size_t r = 0; r + 1 < col.size(); ++r)
          col[r] = col[r + 1] - col[r];
        col.pop_back();
      }
    } else {
      for (std::size_t c = 0; c + 1 < work.size(); ++c) {
        for (std::size_t r = 0; r < work[c].size(); ++r)
          work[c][r] = work[c + 1][r] - work[c][r];
      }
      work.pop_back();
    }
  }
  SetStoreDirectly(std::move(work));
  Changed();
  Resized();
}

void TMatrix::MeanCenterColumns(TDoubleArray& means) {
  TDoubleArray m(store_.size());
  for (std::size_t c = 0; c < store_.size(); ++c) {
    Extended mean, var;
    MeanVarOf(store_[c], mean, var);
    m[c] = static_cast<double>(mean);
    for (double& x : store_[c])
      x -= m[c];
  }
  means = std::move(m);
  Changed();
}

void TMatrix::MeanCenterRows(TDoubleArray& means) {
  TDoubleArray m(static_cast<std::size_t>(nrows_));
  for (std::size_t r = 0; r < m.size(); ++r) {
    Extended mean, var;
    MeanVarOf(RowOf(store_, r), mean, var);
    m[r] = static_cast<double>(mean);
    for (TDoubleArray& col : store_)
      col[r] -= m[r];
  }
  means = std::move(m);
  Changed();
}

void TMatrix::StandardizeColumns(TDoubleArray& means, TDoubleArray& stdDevs) {
  TDoubleArray m(store_.size()), sd(store_.size());
  for (std::size_t c = 0; c < store_.size(); ++c) {
    Extended mean, var;
    MeanVarOf(store_[c], mean, var);
    m[c] = static_cast<double>(mean);
    sd[c] = static_cast<double>(std::sqrt(var));
    for (double& x : store_[c])
      x = sd[c] != 0.0 ? (x - m[c]) / sd[c] : x - m[c];
  }
  means = std::move(m);
  stdDevs = std::move(sd);
  Changed();
}

void TMatrix::StandardizeRows(TDoubleArray& means, TDoubleArray& stdDevs) {
  TDoubleArray m(static_cast<std::size_t>(nrows_)), sd(static_cast<std::size_t>(nrows_));
  for (std::size_t r = 0; r < m.size(); ++r) {
    Extended mean, var;
    MeanVarOf(RowOf(store_, r), mean, var);
    m[r] = static_cast<double>(mean);
    sd[r] = static_cast<double>(std::sqrt(var));
    for (TDoubleArray& col : store_)
      col[r] = sd[r] != 0.0 ? (col[r] - m[r]) / sd[r] : col[r] - m[r];
  }
  means = std::move(m);
  stdDevs = std::move(sd);
  Changed();
}

void TMatrix::QNormalizeColumns(double quantile, TDoubleArray& medians, TDoubleArray& spreads) {
  TDoubleArray md(store_.size()), sp(store_.size());
  for (std::size_t c = 0; c < store_.size(); ++c) {
    TDoubleArray s = store_[c];
    SortValues(s);
    md[c] = SortedPercentile(s, 50.0);
    sp[c] = std::abs(md[c] - SortedPercentile(s, quantile));
    for (double& x : store_[c])
      x = sp[c] != 0.0 ? (x - md[c]) / sp[c] : x - md[c];
  }
  medians = std::move(md);
  spreads = std::move(sp);
  Changed();
}

void TMatrix::QNormalizeRows(double quantile, TDoubleArray& medians, TDoubleArray& spreads) {
  TDoubleArray md(static_cast<std::size_t>(nrows_)), sp(static_cast<std::size_t>(nrows_));
  for (std::size_t r = 0; r < md.size(); ++r) {
    TDoubleArray s = RowOf(store_, r);
    SortValues(s);
    md[r] = SortedPercentile(s, 50.0);
    sp[r] = std::abs(md[r] - SortedPercentile(s, quantile));
    for (TDoubleArray& col : store_)
      col[r] = sp[r] != 0.0 ? (col[r] - md[r]) / sp[r] : col[r] - md[r];
  }
  medians = std::move(md);
  spreads = std::move(sp);
  Changed();
}

bool TMatrix::ResampleExtMat(TMatrix* dest, std::int32_t nCols, std::int32_t nRows) const {
  if (dest == nullptr || nCols < 1 || nRows < 1) return false;
  // Position of target index t (0-based) of nt in a source dimension of ns elements.
  auto position = [](std::int32_t t, std::int32_t nt, std::int32_t ns) {
    return nt == 1 ? 0.0 : static_cast<double>(t) * (ns - 1) / (nt - 1);
  };
  TStore out = GuardAllocation<EQUVMatrixError>(*dest, msg::kNotEnoughMemoryOnHeap, [&] {
    return TStore(static_cast<std::size_t>(nCols), TDoubleArray(static_cast<std::size_t>(nRows)));
  });
  for (std::int32_t c = 0; c < nCols; ++c) {
    const double pc = position(c, nCols, ncols_);
    const auto c0 = std::min(static_cast<std::size_t>(pc), store_.size() - 1);
    const std::size_t c1 = std::min(c0 + 1, store_.size() - 1);
    const double fc = pc - static_cast<double>(c0);
    for (std::int32_t r = 0; r < nRows; ++r) {
      const double pr = position(r, nRows, nrows_);
      const auto r0 = std::min(static_cast<std::size_t>(pr), static_cast<std::size_t>(nrows_ - 1));
      const std::size_t r1 = std::min(r0 + 1, static_cast<std::size_t>(nrows_ - 1));
      const double fr = pr - static_cast<double>(r0);
      const double top = store_[c0][r0] + (store_[c1][r0] - store_[c0][r0]) * fc;
      const double bottom = store_[c0][r1] + (store_[c1][r1] - store_[c0][r1]) * fc;
      out[static_cast<std::size_t>(c)][static_cast<std::size_t>(r)] = top + (bottom - top) * fr;
    }
  }
  dest->ReplaceStore(std::move(out));
  return true;
}

}  // namespace quv
