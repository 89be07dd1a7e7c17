// quvmath stats: descriptive statistics of every column of an ASC data file.
#include <cmath>
#include <ostream>
#include <stdexcept>
#include <string>

#include "commands.h"
#include "quv/datatable/datatable.h"
#include "quv/vector/vector.h"

namespace quvmath {

const std::string_view kStatsHelp =
    "usage: quvmath stats [FILE.asc]\n"
    "\n"
    "Prints descriptive statistics of every column of an ASC data file: count, mean,\n"
    "standard deviation, minimum, quartiles (linear interpolation), maximum, sample\n"
    "skewness and excess kurtosis, and the geometric and harmonic means where they are\n"
    "defined (all values positive; the geometric mean also allows zeros). Skewness and\n"
    "kurtosis need at least 4 values, the standard deviation at least 2.\n"
    "Without FILE the bundled sample examples/data/sample.asc is used.\n";

namespace {

std::string Num(double x) {
  return FormatNumber(x, 6);
}

// One row of the table: the statistics of one column.
std::vector<std::string> ColumnRow(const std::string& name, const quv::TDoubleArray& values) {
  quv::TVector v;
  v.SetName(name);
  v.Resize(static_cast<std::int32_t>(values.size()));
  v.CopyFrom(values, 0, 0, 1);
  const std::size_t n = values.size();
  double mean = 0, variance = 0;
  v.MeanVar(0, 0, mean, variance);
  // MeanVar reports variance 1.0 for two values by convention; a table needs the real one.
  std::string sd = "-";
  if (n == 2) sd = Num(std::fabs(values[0] - values[1]) / std::sqrt(2.0));
  if (n >= 3) sd = Num(std::sqrt(variance));
  double mn = 0, mx = 0, q1 = 0, q2 = 0, q3 = 0;
  v.MinMax(0, 0, mn, mx);
  v.Quartiles(0, 0, q1, q2, q3);
  std::string skew = "-", kurt = "-";
  if (n >= 4) {
    double s = 0, k = 0;
    v.SkewKurtSample(0, 0, s, k);
    skew = Num(s);
    kurt = Num(k);
  }
  bool numbers = true;
  for (const double x : values)
    numbers = numbers && !std::isnan(x);
  const std::string geo = numbers && mn >= 0 ? Num(v.GeometricMean(0, 0)) : "-";
  const std::string harm = numbers && mn > 0 ? Num(v.HarmonicMean(0, 0)) : "-";
  return {name,    std::to_string(n), Num(mean), sd,   Num(mn), Num(q1), Num(q2),
          Num(q3), Num(mx),           skew,      kurt, geo,     harm};
}

}  // namespace

int RunStats(const Args& args, std::ostream& out) {
  if (args.size() > 1) throw UsageError{"stats takes at most one file"};
  const std::string path =
      args.empty() ? std::string(QUV_SAMPLE_DATA_DIR) + "/sample.asc" : args.front();
  quv::TASCFile file;
  const std::int32_t status = quv::ReadASCFile(path, file);
  if (status != quv::kAscHeaderOk) throw std::runtime_error(path + ": " + AscStatusText(status));
  const std::int32_t rows = file.RowsRead();
  if (rows == 0) throw std::runtime_error(path + ": no complete data row");

  out << path << '\n';
  if (!file.Comment.empty()) out << file.Comment << '\n';
  out << rows << " rows x " << file.NrCols << " columns";
  if (rows < file.NrRows) out << " (the header declares " << file.NrRows << " rows)";
  out << "\n\n";

  std::vector<std::vector<std::string>> table{{"column", "n", "mean", "std dev", "min", "Q1",
                                               "median", "Q3", "max", "skewness", "kurtosis",
                                               "geo mean", "harm mean"}};
  const auto cols = static_cast<std::size_t>(file.NrCols);
  quv::TDoubleArray column(static_cast<std::size_t>(rows));
  for (std::size_t c = 0; c < cols; ++c) {
    for (std::size_t r = 0; r < column.size(); ++r)
      column[r] = file.Values[r * cols + c];
    const std::string name =
        file.ColNames ? file.ColNameList[c] : "column " + std::to_string(c + 1);
    table.push_back(ColumnRow(name, column));
  }
  PrintTable(out, table);
  return 0;
}

}  // namespace quvmath
