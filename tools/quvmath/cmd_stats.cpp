// quvmath stats: descriptive statistics of every column of an ASC data file.
//
// The moments are computed here rather than by TVector::MeanVar, whose one-pass form loses
// every digit on data with a large offset (1e15 + {0, 3, 9, 12} gives a standard deviation of
// 0). The mean is a compensated sum in extended precision, corrected by a second pass over
// the deviations; the central moments are sums of powers of those deviations, so variance,
// skewness and kurtosis are as accurate as the double input allows.
//
// NaN counts as a missing value and is left out of every statistic (the count is shown);
// infinities take part as IEEE arithmetic has it (a mean of +inf, a NaN standard deviation).
#include <algorithm>
#include <cmath>
#include <iostream>
#include <ostream>
#include <stdexcept>
#include <string>
#include <vector>

#include "commands.h"
#include "quv/datatable/datatable.h"

namespace quvmath {

const std::string_view kStatsHelp =
    "usage: quvmath stats [--precision N] [--lenient] [FILE.asc | -]\n"
    "\n"
    "Prints descriptive statistics of every column of an ASC data file, one row per data\n"
    "column, in two tables: count, missing values, mean, standard deviation, sample skewness\n"
    "and excess kurtosis; minimum, quartiles (linear interpolation), maximum, and the\n"
    "geometric and harmonic means where they are defined (all values positive; the geometric\n"
    "mean also allows zeros).\n"
    "\n"
    "NaN values count as missing and are left out of every statistic; infinities take part\n"
    "as IEEE arithmetic has it. The standard deviation needs 2 values, the skewness 3 and\n"
    "the kurtosis 4; skewness and kurtosis are undefined (\"-\") when all values are equal.\n"
    "The moments are computed in extended precision around an accurate mean, so data with a\n"
    "large offset keep their digits.\n"
    "\n"
    "A warning on stderr names every line whose data was skipped or may sit in the wrong\n"
    "column; the exit status is then 1 unless --lenient is given.\n"
    "\n"
    "  --precision N  significant digits of the numbers (1..17, default 10)\n"
    "  --lenient      exit 0 although data was skipped (the warnings stay)\n"
    "  -              read the file from standard input\n"
    "Without FILE the bundled sample sample.asc is used.\n";

namespace {

constexpr int kDefaultPrecision = 10;

using Ext = long double;

// The statistics of one column, all computed from its non-NaN values.
struct TColumnStats {
  std::size_t n = 0;
  std::size_t missing = 0;
  Ext mean = 0;
  Ext variance = 0;
  Ext skewness = 0;
  Ext kurtosis = 0;
  bool spread = false;  // not all values equal
  double min = 0, q1 = 0, median = 0, q3 = 0, max = 0;
  double geoMean = 0, harmMean = 0;
  bool geoDefined = false, harmDefined = false;
};

// Neumaier's compensated sum in extended precision.
Ext CompensatedSum(const std::vector<double>& x) {
  Ext sum = 0, carry = 0;
  for (const double v : x) {
    const Ext t = sum + v;
    carry += std::fabs(sum) >= std::fabs(static_cast<Ext>(v)) ? (sum - t) + v : (v - t) + sum;
    sum = t;
  }
  return sum + carry;
}

// Mean and central moment sums. With infinities the compensation would turn inf into NaN,
// so those columns take the plain IEEE sums.
void Moments(const std::vector<double>& x, TColumnStats& s) {
  const auto n = static_cast<Ext>(x.size());
  const bool finite = std::all_of(x.begin(), x.end(), [](double v) { return std::isfinite(v); });
  // The mean as mean + low: the compensated sum rounds it to extended precision, and the mean
  // of the deviations from that rounded value restores the part lost (each x - mean is exact,
  // as both lie close together). Kept apart, the deviations below are exact to extended
  // precision even where the spread is tiny against the mean.
  Ext mean = 0, low = 0;
  if (finite) {
    mean = CompensatedSum(x) / n;
    for (const double v : x)
      low += v - mean;
    low /= n;
  } else {
    for (const double v : x)
      mean += v;
    mean /= n;
  }
  Ext m2 = 0, m3 = 0, m4 = 0;
  for (const double v : x) {
    const Ext d = (v - mean) - low;
    const Ext d2 = d * d;
    m2 += d2;
    m3 += d2 * d;
    m4 += d2 * d2;
  }
  mean += low;
  s.mean = mean;
  s.variance = x.size() >= 2 ? m2 / (n - 1) : 0;
  if (!s.spread || x.size() < 3) return;
  // Adjusted Fisher-Pearson skewness G1 and excess kurtosis G2 (the sample forms also used
  // by TVector::SkewKurtSample).
  const Ext sd = std::sqrt(s.variance);
  s.skewness = n * m3 / ((n - 1) * (n - 2) * sd * sd * sd);
  if (x.size() >= 4) {
    s.kurtosis = n * (n + 1) * m4 / ((n - 1) * (n - 2) * (n - 3) * s.variance * s.variance) -
                 3 * (n - 1) * (n - 1) / ((n - 2) * (n - 3));
  }
}

// P-th percentile of sorted values by linear interpolation at (n - 1) P / 100, as the
// vectors compute it; an exact hit or two equal neighbours (also infinite ones) give that
// value instead of inf - inf.
double Percentile(const std::vector<double>& sorted, Ext P) {
  const Ext pos = static_cast<Ext>(sorted.size() - 1) * P / 100;
  const auto i = static_cast<std::size_t>(pos);
  const Ext f = pos - static_cast<Ext>(i);
  const Ext lo = sorted[i];
  if (f == 0 || i + 1 >= sorted.size() || sorted[i + 1] == sorted[i])
    return static_cast<double>(lo);
  return static_cast<double>(lo + (sorted[i + 1] - lo) * f);
}

TColumnStats ColumnStats(const std::vector<double>& column) {
  TColumnStats s;
  std::vector<double> x;
  x.reserve(column.size());
  for (const double v : column) {
    if (std::isnan(v))
      ++s.missing;
    else
      x.push_back(v);
  }
  s.n = x.size();
  if (x.empty()) return s;
  std::sort(x.begin(), x.end());
  s.min = x.front();
  s.max = x.back();
  s.spread = s.min != s.max;
  s.q1 = Percentile(x, 25);
  s.median = Percentile(x, 50);
  s.q3 = Percentile(x, 75);
  Moments(x, s);
  if (s.min >= 0) {
    // exp(mean of ln x), 0 when a value is 0.
    Ext sumLn = 0;
    for (const double v : x)
      sumLn += std::log(static_cast<Ext>(v));
    s.geoMean = s.min == 0 ? 0.0 : static_cast<double>(std::exp(sumLn / x.size()));
    s.geoDefined = true;
  }
  if (s.min > 0) {
    Ext sumInv = 0;
    for (const double v : x)
      sumInv += 1 / static_cast<Ext>(v);
    s.harmMean = static_cast<double>(static_cast<Ext>(x.size()) / sumInv);
    s.harmDefined = true;
  }
  return s;
}

}  // namespace

int RunStats(const Args& args, std::ostream& out) {
  const ParsedArgs parsed = ParseOptions(args, {{"--precision", true}, {"--lenient", false}});
  if (parsed.operands.size() > 1) throw UsageError{"stats takes at most one file"};
  const int digits = parsed.Has("--precision")
                         ? ParseWhole(parsed.Value("--precision"), 1, 17, "--precision")
                         : kDefaultPrecision;
  const std::string path =
      parsed.operands.empty() ? SampleDataFile("sample.asc") : parsed.operands.front();
  const DataFile data = ReadDataFile(path);
  const bool skipped = WarnSkippedData(data, std::cerr);
  const quv::TASCFile& file = data.file;
  const std::int32_t rows = file.RowsRead();
  if (rows == 0) throw std::runtime_error(data.name + ": no complete data row");

  const auto num = [digits](Ext x) { return FormatNumber(static_cast<double>(x), digits); };
  out << data.name << '\n';
  if (!file.Comment.empty()) out << file.Comment << '\n';
  out << rows << " rows x " << file.NrCols << " columns";
  if (rows < file.NrRows) out << " (the header declares " << file.NrRows << " rows)";
  out << "\n\n";

  std::vector<std::vector<std::string>> moments{
      {"column", "n", "missing", "mean", "std dev", "skewness", "kurtosis"}};
  std::vector<std::vector<std::string>> order{
      {"column", "min", "Q1", "median", "Q3", "max", "geo mean", "harm mean"}};
  const auto cols = static_cast<std::size_t>(file.NrCols);
  std::vector<double> column(static_cast<std::size_t>(rows));
  for (std::size_t c = 0; c < cols; ++c) {
    for (std::size_t r = 0; r < column.size(); ++r)
      column[r] = file.Values[r * cols + c];
    const std::string name =
        file.ColNames ? file.ColNameList[c] : "column " + std::to_string(c + 1);
    const TColumnStats s = ColumnStats(column);
    const bool any = s.n > 0;
    moments.push_back({name, std::to_string(s.n), std::to_string(s.missing),
                       any ? num(s.mean) : "-", s.n >= 2 ? num(std::sqrt(s.variance)) : "-",
                       s.n >= 3 && s.spread ? num(s.skewness) : "-",
                       s.n >= 4 && s.spread ? num(s.kurtosis) : "-"});
    order.push_back({name, any ? num(s.min) : "-", any ? num(s.q1) : "-", any ? num(s.median) : "-",
                     any ? num(s.q3) : "-", any ? num(s.max) : "-",
                     s.geoDefined ? num(s.geoMean) : "-", s.harmDefined ? num(s.harmMean) : "-"});
  }
  PrintTable(out, moments);
  out << '\n';
  PrintTable(out, order);
  if (skipped && !parsed.Has("--lenient")) {
    std::cerr << "quvmath stats: " << data.name
              << ": data was skipped (see the warnings); --lenient accepts the rows read\n";
    return kExitFailure;
  }
  return kExitOk;
}

}  // namespace quvmath
