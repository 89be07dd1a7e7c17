// quvmath stats: descriptive statistics of every column of an ASC or CSV data file, read into
// a data table; nominal columns as frequency tables.
//
// The moments are computed here rather than by TVector::MeanVar, whose one-pass form loses
// every digit on data with a large offset (1e15 + {0, 3, 9, 12} gives a standard deviation of
// 0). The mean is a compensated sum in extended precision, corrected by a second pass over
// the deviations; the central moments are sums of powers of those deviations, so variance,
// skewness and kurtosis are as accurate as the double input allows.
//
// Empty cells (NaN in the file among them) are left out of every statistic (their count is
// shown); infinities take part as IEEE arithmetic has it (a mean of +inf, a NaN standard
// deviation).
#include <algorithm>
#include <cmath>
#include <iostream>
#include <ostream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "commands.h"
#include "quv/datatable/datatable.h"

namespace quvmath {

const std::string_view kStatsHelp =
    "usage: quvmath stats [--precision N] [--lenient] [CSV options] [FILE | -]\n"
    "\n"
    "Prints descriptive statistics of every column of a data file, an ASC file or a CSV\n"
    "file (FILE.csv, FILE.tsv, or --csv), one row per data column, in two tables: count of\n"
    "numeric cells, count of empty cells, mean, standard deviation, sample skewness and\n"
    "excess kurtosis; minimum, quartiles (linear interpolation), maximum, and the geometric\n"
    "and harmonic means where they are defined (all values positive; the geometric mean\n"
    "also allows zeros). A nominal column (the ASC nominal-variables block, or a CSV column\n"
    "of texts only) is printed as a frequency table of its values instead.\n"
    "\n"
    "Empty cells - empty CSV fields, NA, N/A, ?, and NaN in either format - are left out of\n"
    "every statistic; infinities take part as IEEE arithmetic has it. The standard deviation\n"
    "needs 2 values, the skewness 3 and the kurtosis 4; skewness and kurtosis are undefined\n"
    "(\"-\") when all values are equal. The moments are computed in extended precision\n"
    "around an accurate mean, so data with a large offset keep their digits.\n"
    "\n"
    "A warning on stderr names every line whose data was skipped or may sit in the wrong\n"
    "column (a text among numbers in a CSV column, a record with fewer fields); the exit\n"
    "status is then 1 unless --lenient is given.\n"
    "\n"
    "  --precision N    significant digits of the numbers (1..17, default 10)\n"
    "  --lenient        exit 0 although data was skipped (the warnings stay)\n"
    "  --csv            read FILE as CSV whatever its name\n"
    "  --sep C          CSV field separator: one character, or \"tab\" (default \",\"; TAB\n"
    "                   for .tsv; \";\" with --decimal-comma)\n"
    "  --decimal-comma  CSV numbers are written with a decimal comma\n"
    "  --no-header      the first CSV record is data, not column names\n"
    "  -                read the file from standard input\n"
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

// What a status of the table's readers means, beyond the ASC header statuses.
std::string TableStatusText(std::int32_t status) {
  switch (status) {
    case quv::kAscNoData:
      return "no complete data row";
    case quv::kDTNameTooLong:
      return "a column or row name is longer than 50 characters";
    case quv::kDTBadNominal:
      return "the nominal-variables block is malformed (scale, slot or identifier)";
    case quv::kDTBadCSVFormat:
      return "the separator cannot be used with this decimal mark";
    case quv::kDTUnclosedQuote:
      return "a quoted field is not closed";
    case quv::kDTTooLarge:
      return "more rows or columns than a table can hold";
    default:
      return AscStatusText(status);
  }
}

bool EndsWith(const std::string& s, std::string_view tail) {
  return s.size() >= tail.size() && s.compare(s.size() - tail.size(), tail.size(), tail) == 0;
}

// Reads a CSV file into the table; warnings on stderr for every finding of the reader.
// True when data was skipped or may sit in the wrong column.
bool ReadCSVTable(const ParsedArgs& parsed, const std::string& path, quv::TDataTable& table,
                  std::string& name) {
  quv::TCSVFormat format;
  if (EndsWith(path, ".tsv") || EndsWith(path, ".tab")) format.Separator = '\t';
  if (parsed.Has("--decimal-comma")) {
    format.DecimalComma = true;
    format.Separator = ';';
  }
  if (parsed.Has("--sep")) {
    const std::string sep = parsed.Value("--sep");
    if (sep == "tab" || sep == "\\t") {
      format.Separator = '\t';
    } else if (sep.size() == 1) {
      format.Separator = sep[0];
    } else {
      throw UsageError{"--sep takes one character or \"tab\""};
    }
  }
  format.Header = !parsed.Has("--no-header");
  std::istringstream text(ReadDataText(path, name));
  quv::TCSVReport report;
  const std::int32_t status = table.ImportCSV(text, format, report);
  if (status != quv::kAscHeaderOk) {
    std::string where = name;
    if (report.StopLine > 0) where += ":" + std::to_string(report.StopLine);
    throw std::runtime_error(where + ": " + TableStatusText(status));
  }
  const auto warn = [&](std::int32_t line) {
    return "quvmath: " + name + ":" + std::to_string(line) + ": warning: ";
  };
  if (report.InvalidCells > 0) {
    std::cerr << warn(report.FirstInvalidLine) << report.InvalidCells
              << (report.InvalidCells == 1 ? " text" : " texts")
              << " where numbers were expected, first in column " << report.FirstInvalidCell.Col
              << "; left out of the statistics\n";
  }
  if (report.RaggedRecords > 0) {
    std::cerr << warn(report.FirstRaggedLine) << report.RaggedRecords
              << (report.RaggedRecords == 1 ? " record has" : " records have")
              << " fewer fields than the widest (" << table.NrOfColumns()
              << "); the missing fields count as empty\n";
  }
  return report.InvalidCells > 0 || report.RaggedRecords > 0;
}

bool IsNominal(const quv::TDataTable& t, std::int32_t col) {
  const quv::TMScaleType s = t.GetMScaleType(col);
  return s == quv::stNominal || s == quv::stOrdinal;
}

// The frequency table of a nominal column: every identifier in slot order, then any other
// value, then the empty cells.
std::vector<std::vector<std::string>> Frequencies(const quv::TDataTable& t, std::int32_t col,
                                                  const std::string& heading) {
  std::vector<std::pair<std::string, std::int32_t>> counts;
  for (std::int32_t slot = 0; slot < quv::kNominalSlots; ++slot) {
    const std::string id = t.GetNominalID(col, slot);
    if (!id.empty()) counts.emplace_back(id, 0);
  }
  std::int32_t total = 0, empty = 0;
  for (std::int32_t r = 1; r <= t.NrOfRows(); ++r) {
    if (!t.GetIsNumber(col, r)) {
      empty += t.GetIsEmpty(col, r) ? 1 : 0;
      continue;
    }
    const std::string id = t.GetElemNominal(col, r);
    auto it =
        std::find_if(counts.begin(), counts.end(), [&](const auto& c) { return c.first == id; });
    if (it == counts.end()) it = counts.insert(counts.end(), {id, 0});
    ++it->second;
    ++total;
  }
  std::vector<std::vector<std::string>> rows{{heading, "count", "percent"}};
  for (const auto& [id, n] : counts) {
    rows.push_back({id.empty() ? "(free slot)" : id, std::to_string(n),
                    total > 0 ? FormatNumber(100.0 * n / total, 4) : "-"});
  }
  if (empty > 0) rows.push_back({"(empty)", std::to_string(empty), "-"});
  return rows;
}

}  // namespace

int RunStats(const Args& args, std::ostream& out) {
  const ParsedArgs parsed = ParseOptions(args, {{"--precision", true},
                                                {"--lenient", false},
                                                {"--csv", false},
                                                {"--sep", true},
                                                {"--decimal-comma", false},
                                                {"--no-header", false}});
  if (parsed.operands.size() > 1) throw UsageError{"stats takes at most one file"};
  const int digits = parsed.Has("--precision")
                         ? ParseWhole(parsed.Value("--precision"), 1, 17, "--precision")
                         : kDefaultPrecision;
  const std::string path =
      parsed.operands.empty() ? SampleDataFile("sample.asc") : parsed.operands.front();
  const bool csv = parsed.Has("--csv") || parsed.Has("--sep") || parsed.Has("--decimal-comma") ||
                   parsed.Has("--no-header") || EndsWith(path, ".csv") || EndsWith(path, ".tsv") ||
                   EndsWith(path, ".tab");

  quv::TDataTable table;
  std::string name;
  bool skipped = false;
  std::int32_t declaredRows = 0;
  if (csv) {
    skipped = ReadCSVTable(parsed, path, table, name);
    declaredRows = table.NrOfRows();
  } else {
    const DataFile data = ReadDataFile(path);
    name = data.name;
    skipped = WarnSkippedData(data, std::cerr);
    const std::int32_t status = table.ImportASC(data.file);
    if (status != quv::kAscHeaderOk)
      throw std::runtime_error(data.name + ": " + TableStatusText(status));
    declaredRows = data.file.NrRows;
  }

  const auto num = [digits](Ext x) { return FormatNumber(static_cast<double>(x), digits); };
  out << name << '\n';
  if (!table.Comment().empty()) out << table.Comment() << '\n';
  out << table.NrOfRows() << " rows x " << table.NrOfColumns() << " columns";
  if (table.NrOfRows() < declaredRows) out << " (the header declares " << declaredRows << " rows)";
  out << "\n\n";

  std::vector<std::vector<std::string>> moments{
      {"column", "n", "empty", "mean", "std dev", "skewness", "kurtosis"}};
  std::vector<std::vector<std::string>> order{
      {"column", "min", "Q1", "median", "Q3", "max", "geo mean", "harm mean"}};
  std::vector<std::int32_t> nominal;
  std::vector<double> column;
  for (std::int32_t c = 1; c <= table.NrOfColumns(); ++c) {
    const std::string colName =
        table.GetColName(c).empty() ? "column " + std::to_string(c) : table.GetColName(c);
    if (IsNominal(table, c)) {
      nominal.push_back(c);
      continue;
    }
    // The numeric cells only: empty ones (NaN in the file among them) and invalid ones are
    // left out.
    column.clear();
    std::int32_t empty = 0;
    for (std::int32_t r = 1; r <= table.NrOfRows(); ++r) {
      if (table.GetIsNumber(c, r)) column.push_back(table.GetElem(c, r));
      if (table.GetIsEmpty(c, r)) ++empty;
    }
    const TColumnStats s = ColumnStats(column);
    const bool any = s.n > 0;
    moments.push_back({colName, std::to_string(s.n), std::to_string(empty), any ? num(s.mean) : "-",
                       s.n >= 2 ? num(std::sqrt(s.variance)) : "-",
                       s.n >= 3 && s.spread ? num(s.skewness) : "-",
                       s.n >= 4 && s.spread ? num(s.kurtosis) : "-"});
    order.push_back({colName, any ? num(s.min) : "-", any ? num(s.q1) : "-",
                     any ? num(s.median) : "-", any ? num(s.q3) : "-", any ? num(s.max) : "-",
                     s.geoDefined ? num(s.geoMean) : "-", s.harmDefined ? num(s.harmMean) : "-"});
  }
  if (moments.size() > 1) {
    PrintTable(out, moments);
    out << '\n';
    PrintTable(out, order);
  }
  for (const std::int32_t c : nominal) {
    const std::string colName =
        table.GetColName(c).empty() ? "column " + std::to_string(c) : table.GetColName(c);
    const char* scale = table.GetMScaleType(c) == quv::stOrdinal ? " (ordinal)" : " (nominal)";
    if (moments.size() > 1 || c != nominal.front()) out << '\n';
    PrintTable(out, Frequencies(table, c, colName + scale));
  }
  if (skipped && !parsed.Has("--lenient")) {
    std::cerr << "quvmath stats: " << name
              << ": data was skipped (see the warnings); --lenient accepts the rows read\n";
    return kExitFailure;
  }
  return kExitOk;
}

}  // namespace quvmath
