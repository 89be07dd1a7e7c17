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
    "                      [--plot OUT.svg] [--lenient]\n"
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
    "  --lenient      exit 0 even when input was skipped (the warnings still appear)\n"
    "\n"
    "A CSV file is read as comma-separated values; its first line is a heading when the\n"
    "chosen field is not a number there. Lines whose field is missing or not a number are\n"
    "skipped with a warning naming the line, as is whatever the ASC reader could not use;\n"
    "then the exit status is 1 unless --lenient. Results carry 10 significant digits.\n"
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

Column ReadCsvColumn(const std::string& path, std::int32_t col, bool& skipped) {
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
      skipped = true;
      std::cerr << "quvmath: " << path << ":" << nr << ": warning: line skipped: "
                << (ix < fields.size() ? "field " + std::to_string(col) + " is not a number"
                                       : "it has no field " + std::to_string(col))
                << '\n';
    }
  }
  return c;
}

Column ReadAscColumn(const std::string& path, std::int32_t col, bool& skipped) {
  const DataFile data = ReadDataFile(path);
  skipped = WarnSkippedData(data, std::cerr);
  const quv::TASCFile& file = data.file;
  if (col > file.NrCols)
    throw std::runtime_error(data.name + ": there is no column " + std::to_string(col) +
                             " (the file has " + std::to_string(file.NrCols) + ")");
  Column c;
  c.name = file.ColNames ? file.ColNameList[static_cast<std::size_t>(col - 1)]
                         : "column " + std::to_string(col);
  for (std::int32_t r = 1; r <= file.RowsRead(); ++r)
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
  const ParsedArgs parsed = ParseOptions(args, {{"--method", true},
                                                {"--window", true},
                                                {"--column", true},
                                                {"--plot", true},
                                                {"--lenient", false}});
  if (parsed.operands.size() > 1) throw UsageError{"smooth takes at most one file"};
  const std::string method = parsed.Value("--method", "average");
  const std::int32_t window =
      parsed.Has("--window") ? ParseWhole(parsed.Value("--window"), 1, INT32_MAX, "--window") : 5;
  const std::int32_t column =
      parsed.Has("--column") ? ParseWhole(parsed.Value("--column"), 1, INT32_MAX, "--column") : 1;
  const std::string plot = parsed.Value("--plot");
  const std::string path =
      parsed.operands.empty() ? SampleDataFile("sample.asc") : parsed.operands[0];
  const auto m = std::find_if(std::begin(kMethods), std::end(kMethods),
                              [&](const Method& x) { return x.name == method; });
  if (m == std::end(kMethods)) throw UsageError{"unknown method \"" + method + "\""};

  bool skipped = false;
  const Column c = EndsWithCsv(path) ? ReadCsvColumn(path, column, skipped)
                                     : ReadAscColumn(path, column, skipped);
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
  if (skipped && !parsed.Has("--lenient")) {
    std::cerr << "quvmath smooth: " << path
              << ": data was skipped (see the warnings); --lenient accepts the rows read\n";
    return kExitFailure;
  }
  return kExitOk;
}

}  // namespace quvmath
