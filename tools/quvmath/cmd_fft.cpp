// quvmath fft: the power spectrum of one column of an ASC data file.
#include <algorithm>
#include <cmath>
#include <iostream>
#include <ostream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "commands.h"
#include "quv/datatable/datatable.h"
#include "quv/fourier/fourier.h"

namespace quvmath {

const std::string_view kFftHelp =
    "usage: quvmath fft [FILE.asc] [--column N] [--window NAME] [--alpha A] [--interval DT]\n"
    "\n"
    "Prints the one-sided spectrum of one column of an ASC data file, taken as equidistant\n"
    "real samples (any number of them): for every line L = 0..N/2 its frequency\n"
    "L/(N DT), its power (|X_L|^2 + |X_(N-L)|^2)/N, its magnitude (the amplitude of a\n"
    "sine or cosine on that line) and its phase arctan(Im/Re) in radians (two quadrants:\n"
    "a cosine reads 0, a sine +-pi/2). The forward transform uses the positive exponent.\n"
    "Parts of the transform below 1e-12 of the largest are rounding residue and count as\n"
    "0; the phase of an empty line (and of line 0) prints as '-'.\n"
    "\n"
    "  --column N     the column to analyse, counted from 1 (default 1)\n"
    "  --window NAME  rectangle (default), triangle, cos2, gauss, hamming, blackman,\n"
    "                 blackman-harris, blackman-nuttall, tukey\n"
    "  --alpha A      the taper fraction of the tukey window, 0..1 (default 0.5)\n"
    "  --interval DT  the sampling interval, > 0 (default 1): frequencies are in 1/DT\n"
    "\n"
    "Without FILE the bundled sample examples/data/signal.asc is used (sampled every\n"
    "0.01 s: try --interval 0.01).\n";

namespace {

struct Options {
  std::string path = std::string(QUV_SAMPLE_DATA_DIR) + "/signal.asc";
  std::int32_t column = 1;
  quv::TFastFourierWgtWin window = quv::fwRectangle;
  std::string window_name = "rectangle";
  double alpha = 0.5;
  double interval = 1.0;
};

quv::TFastFourierWgtWin ParseWindow(const std::string& name) {
  static const std::pair<const char*, quv::TFastFourierWgtWin> kWindows[] = {
      {"rectangle", quv::fwRectangle},
      {"triangle", quv::fwTriangle},
      {"cos2", quv::fwCos2},
      {"gauss", quv::fwGauss},
      {"hamming", quv::fwHamming},
      {"blackman", quv::fwBlackman},
      {"blackman-harris", quv::fwBlkmHarris},
      {"blackman-nuttall", quv::fwBlkmNuttall},
      {"tukey", quv::fwTukey}};
  for (const auto& [text, window] : kWindows)
    if (name == text) return window;
  throw UsageError{"unknown window \"" + name + "\""};
}

Options ParseOptions(const Args& args) {
  Options o;
  bool have_file = false;
  for (std::size_t i = 0; i < args.size(); ++i) {
    const std::string& a = args[i];
    if (a.size() > 2 && a.compare(0, 2, "--") == 0) {
      if (i + 1 >= args.size()) throw UsageError{a + " needs a value"};
      const std::string& value = args[++i];
      if (a == "--column") {
        const double c = ParseNumber(value);
        if (!(c >= 1 && c <= 1e6) || c != std::floor(c))
          throw UsageError{"--column needs a whole number from 1"};
        o.column = static_cast<std::int32_t>(c);
      } else if (a == "--window") {
        o.window = ParseWindow(value);
        o.window_name = value;
      } else if (a == "--alpha") {
        o.alpha = ParseNumber(value);
        if (!(o.alpha >= 0 && o.alpha <= 1)) throw UsageError{"--alpha must lie in 0..1"};
      } else if (a == "--interval") {
        o.interval = ParseNumber(value);
        if (!(o.interval > 0) || !std::isfinite(o.interval))
          throw UsageError{"--interval must be a positive number"};
      } else {
        throw UsageError{"unknown option " + a};
      }
    } else {
      if (have_file) throw UsageError{"fft takes at most one file"};
      o.path = a;
      have_file = true;
    }
  }
  return o;
}

// The chosen column as samples. Rows the reader could not take are reported, and samples that
// are not finite are refused: dropping one would shift every later sample in time.
std::pair<std::string, quv::TDoubleArray> ReadColumn(const Options& o) {
  quv::TASCFile file;
  const std::int32_t status = quv::ReadASCFile(o.path, file);
  if (status == quv::kAscFileNotFound) throw std::runtime_error(o.path + ": file not found");
  if (status != quv::kAscHeaderOk)
    throw std::runtime_error(o.path + ": unreadable ASC file (status " + std::to_string(status) +
                             ")");
  if (o.column > file.NrCols)
    throw std::runtime_error(o.path + ": there is no column " + std::to_string(o.column) +
                             " (the file has " + std::to_string(file.NrCols) + ")");
  const std::int32_t rows = file.RowsRead();
  // Data rows start after the four header lines, the names line and the nominal lines.
  const long first_line = 5 + (file.ColNames ? 1 : 0) + (file.NominalVars ? file.NrCols : 0);
  if (rows < file.NrRows) {
    std::cerr << "quvmath fft: warning: " << o.path << ": reading stopped at line "
              << first_line + rows << "; the header declares " << file.NrRows << " rows, " << rows
              << " were read\n";
  }
  if (rows == 0) throw std::runtime_error(o.path + ": no complete data row");
  const auto cols = static_cast<std::size_t>(file.NrCols);
  quv::TDoubleArray samples(static_cast<std::size_t>(rows));
  for (std::size_t r = 0; r < samples.size(); ++r) {
    samples[r] = file.Values[r * cols + static_cast<std::size_t>(o.column - 1)];
    if (!std::isfinite(samples[r]))
      throw std::runtime_error(o.path + " line " +
                               std::to_string(first_line + static_cast<long>(r)) +
                               ": the sample is not a finite number");
  }
  std::string name = file.ColNames ? file.ColNameList[static_cast<std::size_t>(o.column - 1)]
                                   : "column " + std::to_string(o.column);
  return {name, samples};
}

}  // namespace

int RunFft(const Args& args, std::ostream& out) {
  const Options o = ParseOptions(args);
  const auto [name, samples] = ReadColumn(o);
  const std::size_t n = samples.size();

  // The weighted samples as (re, im) pairs, transformed in place.
  quv::TDoubleArray pairs(2 * n, 0.0);
  for (std::size_t k = 0; k < n; ++k)
    pairs[2 * k] = samples[k];
  quv::detail::ApplyWindow(pairs.data(), n, o.window, o.alpha, nullptr);
  quv::FourierTransform(pairs, 1);

  // Parts below 1e-12 of the largest are rounding residue of the transform: clear them, so
  // that no line shows noise digits and a pure sine or cosine reads its exact phase.
  double largest = 0;
  for (const double v : pairs)
    largest = std::max(largest, std::fabs(v));
  for (double& v : pairs)
    if (std::fabs(v) < 1e-12 * largest) v = 0.0;
  const std::size_t lines = n / 2 + 1;

  out << o.path << '\n'
      << name << ": " << n << " samples, interval " << FormatNumber(o.interval, 6) << ", window "
      << o.window_name;
  if (o.window == quv::fwTukey) out << " (alpha " << FormatNumber(o.alpha, 6) << ")";
  out << "\n\n";
  std::vector<std::vector<std::string>> table{{"line", "frequency", "power", "magnitude", "phase"}};
  for (std::size_t l = 0; l < lines; ++l) {
    const auto line = static_cast<std::int64_t>(l);
    const double magnitude = quv::detail::LineMagnitude(pairs.data(), n, line);
    const double frequency = static_cast<double>(l) / (o.interval * static_cast<double>(n));
    const bool phase_known = l > 0 && magnitude > 0;
    table.push_back(
        {std::to_string(l), FormatNumber(frequency, 6),
         FormatNumber(quv::detail::LinePower(pairs.data(), n, line), 6), FormatNumber(magnitude, 6),
         phase_known ? FormatNumber(quv::detail::LinePhase(pairs.data(), n, line), 6) : "-"});
  }
  PrintTable(out, table);
  return 0;
}

}  // namespace quvmath
