// quvmath fft: the power spectrum of one column of an ASC data file.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <iostream>
#include <ostream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "commands.h"
#include "quv/datatable/datatable.h"
#include "quv/fourier/fourier.h"
#include "svg_plot.h"

namespace quvmath {

const std::string_view kFftHelp =
    "usage: quvmath fft [FILE.asc] [--column N] [--window NAME] [--alpha A] [--interval DT]\n"
    "                   [--plot OUT.svg] [--lenient]\n"
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
    "  --plot OUT     also draws the power spectrum against frequency into an SVG file\n"
    "  --lenient      exit 0 even when rows of the file were skipped (they are warned about)\n"
    "\n"
    "Without FILE the bundled sample examples/data/signal.asc is used (sampled every\n"
    "0.01 s: try --interval 0.01).\n";

namespace {

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

// The chosen column as samples. A sample that is not finite is refused: dropping it would
// shift every later sample in time.
quv::TDoubleArray ReadSamples(const DataFile& data, std::int32_t column, std::string& name) {
  const quv::TASCFile& file = data.file;
  if (column > file.NrCols)
    throw std::runtime_error(data.name + ": there is no column " + std::to_string(column) +
                             " (the file has " + std::to_string(file.NrCols) + ")");
  if (file.RowsRead() == 0) throw std::runtime_error(data.name + ": no complete data row");
  name = file.ColNames ? file.ColNameList[static_cast<std::size_t>(column - 1)]
                       : "column " + std::to_string(column);
  quv::TDoubleArray samples;
  for (std::int32_t r = 1; r <= file.RowsRead(); ++r) {
    samples.push_back(file.Value(column, r));
    if (!std::isfinite(samples.back()))
      throw std::runtime_error(data.name + ": data row " + std::to_string(r) +
                               ": the sample is not a finite number");
  }
  return samples;
}

}  // namespace

int RunFft(const Args& args, std::ostream& out) {
  const ParsedArgs parsed = ParseOptions(args, {{"--column", true},
                                                {"--window", true},
                                                {"--alpha", true},
                                                {"--interval", true},
                                                {"--plot", true},
                                                {"--lenient", false}});
  if (parsed.operands.size() > 1) throw UsageError{"fft takes at most one file"};
  const std::int32_t column =
      parsed.Has("--column") ? ParseWhole(parsed.Value("--column"), 1, INT32_MAX, "--column") : 1;
  const std::string window_name = parsed.Value("--window", "rectangle");
  const quv::TFastFourierWgtWin window = ParseWindow(window_name);
  const double alpha =
      parsed.Has("--alpha") ? ParseNumberIn(parsed.Value("--alpha"), 0, 1, "--alpha") : 0.5;
  const double interval = parsed.Has("--interval") ? ParseNumberIn(parsed.Value("--interval"),
                                                                   1e-300, 1e300, "--interval")
                                                   : 1.0;
  const std::string plot = parsed.Value("--plot");
  const std::string path =
      parsed.operands.empty() ? SampleDataFile("signal.asc") : parsed.operands[0];

  const DataFile data = ReadDataFile(path);
  const bool skipped = WarnSkippedData(data, std::cerr);
  std::string name;
  const quv::TDoubleArray samples = ReadSamples(data, column, name);
  const std::size_t n = samples.size();

  // The weighted samples as (re, im) pairs, transformed in place.
  quv::TDoubleArray pairs(2 * n, 0.0);
  for (std::size_t k = 0; k < n; ++k)
    pairs[2 * k] = samples[k];
  quv::detail::ApplyWindow(pairs.data(), n, window, alpha, nullptr);
  quv::FourierTransform(pairs, 1);

  // Parts below 1e-12 of the largest are rounding residue of the transform: clear them, so
  // that no line shows noise digits and a pure sine or cosine reads its exact phase.
  double largest = 0;
  for (const double v : pairs)
    largest = std::max(largest, std::fabs(v));
  for (double& v : pairs)
    if (std::fabs(v) < 1e-12 * largest) v = 0.0;
  const std::size_t lines = n / 2 + 1;

  out << data.name << '\n'
      << name << ": " << n << " samples, interval " << FormatNumber(interval, 6) << ", window "
      << window_name;
  if (window == quv::fwTukey) out << " (alpha " << FormatNumber(alpha, 6) << ")";
  out << "\n\n";
  std::vector<std::vector<std::string>> table{{"line", "frequency", "power", "magnitude", "phase"}};
  for (std::size_t l = 0; l < lines; ++l) {
    const auto line = static_cast<std::int64_t>(l);
    const double magnitude = quv::detail::LineMagnitude(pairs.data(), n, line);
    const double frequency = static_cast<double>(l) / (interval * static_cast<double>(n));
    const bool phase_known = l > 0 && magnitude > 0;
    table.push_back(
        {std::to_string(l), FormatNumber(frequency, 6),
         FormatNumber(quv::detail::LinePower(pairs.data(), n, line), 6), FormatNumber(magnitude, 6),
         phase_known ? FormatNumber(quv::detail::LinePhase(pairs.data(), n, line), 6) : "-"});
  }
  PrintTable(out, table);

  if (!plot.empty()) {
    std::vector<double> frequency(lines), power(lines);
    for (std::size_t l = 0; l < lines; ++l) {
      frequency[l] = static_cast<double>(l) / (interval * static_cast<double>(n));
      power[l] = quv::detail::LinePower(pairs.data(), n, static_cast<std::int64_t>(l));
    }
    WriteSvgPlot(plot, "power spectrum of " + name + ", window " + window_name, frequency,
                 {{"power", "#c0392b", power}});
  }
  if (skipped && !parsed.Has("--lenient")) {
    std::cerr << "quvmath fft: " << data.name
              << ": data was skipped (see the warnings); --lenient accepts the rows read\n";
    return kExitFailure;
  }
  return kExitOk;
}

}  // namespace quvmath
