// quvmath smooth: smooths or differentiates one column of an ASC or CSV data file.
#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <ostream>
#include <sstream>
#include <stdexcept>
#include <string>

#include "commands.h"
#include "quv/datatable/datatable.h"
#include "quv/math2/math2.h"
#include "quv/vector/vector.h"
#include "svg_plot.h"

namespace quvmath {

const std::string_view kSmoothHelp =
    "usage: quvmath smooth [FILE.asc|FILE.csv] [--method NAME] [--window N] [--column N]\n"
    "                      [--plot OUT.svg]\n"
    "\n"
    "Smooths one column of a data file and writes the result to standard output in the\n"
    "format of the input (an ASC file of one column, or CSV with a heading). The window is\n"
    "centred on each value; the ends repeat the nearest value of a full window.\n"
    "\n"
    "  --method NAME  average     moving average (default)\n"
    "                 median      moving median\n"
    "                 weighted    triangular weights\n"
    "                 polynomial  Savitzky-Golay, quadratic/cubic (window 3..101)\n"
    "                 deriv1      first derivative per row, Savitzky-Golay (window 3..101)\n"
    "                 deriv2      second derivative per row, Savitzky-Golay (window 3..101)\n"
    "  --window N     odd window length, at least 3, shorter than the data (default 5)\n"
    "  --column N     the column to smooth, counted from 1 (default 1)\n"
    "  --plot OUT     also draws the raw and the smoothed column into an SVG file\n"
    "\n"
    "A CSV file is read as comma-separated values; its first line is a heading when the\n"
    "chosen field is not a number there. Lines whose field is missing or not a number are\n"
    "skipped with a warning naming the line. Results carry 10 significant digits.\n"
    "Without FILE the bundled sample examples/data/sample.asc is used.\n";

namespace {

using Smoother = void (*)(const quv::TVector*, std::int32_t, std::int32_t, std::int32_t,
                          quv::TVector*);

struct Method {
  std::string_view name;
  Smoother run;
};

constexpr Method kMethods[] = {
    {"average", quv::MovingAverageSmooth},
    {"median", quv::MovingMedianSmooth},
    {"weighted", quv::WeightedAverageSmooth},
    {"polynomial", quv::PolynomialSmooth},
    {"deriv1", quv::FirstDeriv},
    {"deriv2", quv::SecondDeriv},
};

constexpr int kDigits = 10;

// The column to smooth, its name and where it came from.
struct Column {
  std::string name;
  quv::TDoubleArray values;
  bool csv = false;
};

std::int32_t ParseCount(const std::string& option, const std::string& text) {
  const double v = ParseNumber(text);
  if (!(v >= 1 && v <= 1e9) || v != std::floor(v))
    throw UsageError{option + " needs a whole number of at least 1, not \"" + text + "\""};
  return static_cast<std::int32_t>(v);
}

bool EndsWithCsv(const std::string& path) {
  if (path.size() < 4) return false;
  std::string ext = path.substr(path.size() - 4);
  std::transform(ext.begin(), ext.end(), ext.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return ext == ".csv";
}

std::string Trim(const std::string& s) {
  const auto b = s.find_first_not_of(" \t\r\"");
  if (b == std::string::npos) return "";
  const auto e = s.find_last_not_of(" \t\r\"");
  return s.substr(b, e - b + 1);
}

bool ParseField(const std::string& text, double& value) {
  const std::string t = Trim(text);
  if (t.empty()) return false;
  char* end = nullptr;
  value = std::strtod(t.c_str(), &end);
  return end == t.c_str() + t.size() && std::isfinite(value);
}

Column ReadCsvColumn(const std::string& path, std::int32_t col) {
  std::ifstream in(path);
  if (!in) throw std::runtime_error(path + ": file not found");
  Column c;
  c.csv = true;
  c.name = "column " + std::to_string(col);
  std::string line;
  for (long nr = 1; std::getline(in, line); ++nr) {
    if (Trim(line).empty()) continue;
    std::vector<std::string> fields;
    std::stringstream ss(line);
    for (std::string f; std::getline(ss, f, ',');)
      fields.push_back(f);
    const auto ix = static_cast<std::size_t>(col - 1);
    double v = 0;
    if (ix < fields.size() && ParseField(fields[ix], v)) {
      c.values.push_back(v);
    } else if (nr == 1 && ix < fields.size()) {
      c.name = Trim(fields[ix]);
    } else {
      std::cerr << "quvmath smooth: warning: " << path << " line " << nr << " skipped: "
                << (ix < fields.size() ? "field " + std::to_string(col) + " is not a number"
                                       : "it has no field " + std::to_string(col))
                << '\n';
    }
  }
  return c;
}

Column ReadAscColumn(const std::string& path, std::int32_t col) {
  quv::TASCFile file;
  const std::int32_t status = quv::ReadASCFile(path, file);
  if (status == quv::kAscFileNotFound) throw std::runtime_error(path + ": file not found");
  if (status != quv::kAscHeaderOk)
    throw std::runtime_error(path + ": unreadable ASC file (status " + std::to_string(status) +
                             ")");
  if (col > file.NrCols)
    throw std::runtime_error(path + ": there is no column " + std::to_string(col) +
                             " (the file has " + std::to_string(file.NrCols) + ")");
  const std::int32_t rows = file.RowsRead();
  if (rows < file.NrRows) {
    // Rows follow the header (4 lines), the names line and one line per nominal column.
    const long first = 5 + (file.ColNames ? 1 : 0) + (file.NominalVars ? file.NrCols : 0);
    std::cerr << "quvmath smooth: warning: " << path << ": reading stopped at line " << first + rows
              << "; the header declares " << file.NrRows << " rows, " << rows << " were read\n";
  }
  Column c;
  c.name = file.ColNames ? file.ColNameList[static_cast<std::size_t>(col - 1)]
                         : "column " + std::to_string(col);
  for (std::int32_t r = 1; r <= rows; ++r)
    c.values.push_back(file.Value(col, r));
  return c;
}

// Decimals that give kDigits significant digits for the largest value.
std::int32_t DecimalsFor(const quv::TDoubleArray& v) {
  double big = 0;
  for (const double x : v)
    big = std::max(big, std::fabs(x));
  if (big == 0 || !std::isfinite(big)) return 4;
  const int mag = static_cast<int>(std::floor(std::log10(big)));
  return std::clamp(kDigits - 1 - mag, 0, 15);
}

}  // namespace

int RunSmooth(const Args& args, std::ostream& out) {
  std::string path, method = "average", plot;
  std::int32_t window = 5, column = 1;
  for (std::size_t i = 0; i < args.size(); ++i) {
    const std::string& a = args[i];
    auto value = [&]() -> const std::string& {
      if (i + 1 >= args.size()) throw UsageError{a + " needs a value"};
      return args[++i];
    };
    if (a == "--method") {
      method = value();
    } else if (a == "--window") {
      window = ParseCount(a, value());
    } else if (a == "--column") {
      column = ParseCount(a, value());
    } else if (a == "--plot") {
      plot = value();
    } else if (a.rfind("--", 0) == 0) {
      throw UsageError{"unknown option " + a};
    } else if (path.empty()) {
      path = a;
    } else {
      throw UsageError{"smooth takes one file"};
    }
  }
  const auto m = std::find_if(std::begin(kMethods), std::end(kMethods),
                              [&](const Method& x) { return x.name == method; });
  if (m == std::end(kMethods)) throw UsageError{"unknown method \"" + method + "\""};
  if (path.empty()) path = std::string(QUV_SAMPLE_DATA_DIR) + "/sample.asc";

  const Column c = EndsWithCsv(path) ? ReadCsvColumn(path, column) : ReadAscColumn(path, column);
  if (c.values.empty())
    throw std::runtime_error(path + ": no value in column " + std::to_string(column));
  const auto n = static_cast<std::int32_t>(c.values.size());
  quv::TVector raw, smooth;
  raw.Resize(n);
  raw.CopyFrom(c.values, 0, 0, 1);
  m->run(&raw, 1, n, window, &smooth);
  const quv::TDoubleArray& result = smooth.Storage();
  const std::string name = c.name + "_" + method;

  if (c.csv) {
    out << name << '\n';
    for (const double y : result)
      out << FormatNumber(y, kDigits) << '\n';
  } else {
    quv::TASCFile file;
    file.Comment = name + " (window " + std::to_string(window) + ") of " + path;
    file.NrCols = 1;
    file.NrRows = n;
    file.ColNames = true;
    file.ColNameList = {name};
    file.Values = result;
    quv::WriteASC(out, file, quv::TASCNumberFormat{16, DecimalsFor(result), false});
  }
  if (!plot.empty()) {
    quv::TDoubleArray x(c.values.size());
    for (std::size_t i = 0; i < x.size(); ++i)
      x[i] = static_cast<double>(i + 1);
    std::vector<PlotSeries> series;
    // A derivative lives on another scale than the data: plot it alone.
    if (method != "deriv1" && method != "deriv2") series.push_back({c.name, "#9aa5b1", c.values});
    series.push_back({name, "#c0392b", result});
    WriteSvgPlot(plot, name + ", window " + std::to_string(window), x, series);
  }
  return 0;
}

}  // namespace quvmath
