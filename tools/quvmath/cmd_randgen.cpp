// quvmath randgen: random numbers from a tabulated distribution, with a histogram of the
// draws beside the counts the table predicts and a chi-square goodness-of-fit line.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <ostream>
#include <stdexcept>
#include <string>
#include <vector>

#include "commands.h"
#include "quv/base/random.h"
#include "quv/statis/statis.h"

namespace quvmath {

const std::string_view kRandgenHelp =
    "usage: quvmath randgen [SHAPE [PARAMS...]] [--range LOW,HIGH] [--n N] [--seed S]\n"
    "                       [--bins B] [--resolution R] [--values]\n"
    "\n"
    "Draws N random numbers (default 10000) from a distribution tabulated in R bins\n"
    "(default 500, within 10..4000) over [LOW, HIGH), by rejection with linear\n"
    "interpolation inside each bin. Prints a histogram of B bins (default 20; B must\n"
    "divide R) with the counts the table predicts, and Pearson's chi-square test of the\n"
    "draws against the table (bins pooled to at least 5 expected draws). --values prints\n"
    "the draws instead, one per line. Without --seed the seed comes from the clock; the\n"
    "seed used is printed, and the same seed repeats the run.\n"
    "\n"
    "shapes (default: normal 0 1):\n"
    "  normal [MEAN SD]     range MEAN -/+ 4 SD\n"
    "  t DF                 range -/+ the 0.999 quantile\n"
    "  chi2 DF              range 0 .. the 0.999 quantile\n"
    "  f DF1 DF2            range 0 .. the 0.999 quantile\n"
    "  weibull SHAPE SCALE  range 0 .. the 0.999 quantile\n"
    "  uniform              range 0 .. 1 (the last bin falls to 0 at HIGH)\n"
    "The table is divided by its largest value, so that densities above 1 are sampled\n"
    "exactly. A density that is infinite at LOW (chi2 1, f 1 DF2) needs LOW above 0.\n";

namespace {

struct TOptions {
  std::vector<std::string> shape;  // name and parameters
  bool haveRange = false;
  double low = 0, high = 0;
  std::int32_t n = 10000, bins = 20, resolution = 500;
  bool haveSeed = false;
  std::uint64_t seed = 0;
  bool values = false;
};

TOptions ParseRandgenOptions(const Args& args) {
  const ParsedArgs parsed = ParseOptions(args, {{"--range", true},
                                                {"--n", true},
                                                {"--seed", true},
                                                {"--bins", true},
                                                {"--resolution", true},
                                                {"--values", false}});
  TOptions o;
  o.shape = parsed.operands;
  if (o.shape.empty()) o.shape = {"normal", "0", "1"};
  if (parsed.Has("--range")) {
    // LOW and HIGH come as one value "LOW,HIGH" so that negative bounds read as numbers.
    const std::string range = parsed.Value("--range");
    const std::size_t comma = range.find(',');
    if (comma == std::string::npos) throw UsageError{"--range takes LOW,HIGH"};
    o.low = ParseNumber(range.substr(0, comma));
    o.high = ParseNumber(range.substr(comma + 1));
    if (!(o.low < o.high && std::isfinite(o.low) && std::isfinite(o.high)))
      throw UsageError{"--range needs finite LOW < HIGH"};
    o.haveRange = true;
  }
  if (parsed.Has("--n")) o.n = ParseWhole(parsed.Value("--n"), 1, 100000000, "--n");
  if (parsed.Has("--bins")) o.bins = ParseWhole(parsed.Value("--bins"), 1, 4000, "--bins");
  if (parsed.Has("--resolution"))
    o.resolution = ParseWhole(parsed.Value("--resolution"), quv::TRandGen::kMinResolution,
                              quv::TRandGen::kMaxResolution, "--resolution");
  if (parsed.Has("--seed")) {
    const std::string s = parsed.Value("--seed");
    if (s.empty() || s.size() > 19 || s.find_first_not_of("0123456789") != std::string::npos)
      throw UsageError{"--seed must be a whole number between 0 and 9999999999999999999"};
    o.seed = std::stoull(s);
    o.haveSeed = true;
  }
  o.values = parsed.Has("--values");
  if (o.resolution % o.bins != 0) throw UsageError{"--bins must divide the resolution"};
  return o;
}

// Fills the table from the shape and returns its description; sets the default range.
std::string SetShape(quv::TRandGen& gen, TOptions& o) {
  const std::string& name = o.shape[0];
  auto params = [&o, &name](std::size_t count) {
    if (o.shape.size() != count + 1)
      throw UsageError{name + " takes " + std::to_string(count) + " parameter(s)"};
  };
  auto range = [&o](double low, double high) {
    if (!o.haveRange) {
      o.low = low;
      o.high = high;
    }
  };
  auto degFree = [&o](std::size_t i) {
    return ParseWhole(o.shape[i], 1, 1000000, "degrees of freedom");
  };
  std::string text;
  if (name == "normal") {
    if (o.shape.size() != 1) params(2);
    const double mean = o.shape.size() > 1 ? ParseNumber(o.shape[1]) : 0.0;
    const double sd = o.shape.size() > 1 ? ParseNumber(o.shape[2]) : 1.0;
    if (!(sd > 0)) throw UsageError{"SD must be positive"};
    range(mean - 4 * sd, mean + 4 * sd);
    gen.SetLowBorder(o.low);
    gen.SetHighBorder(o.high);
    gen.NormalDistri(mean, sd);
    text = "normal(" + FormatNumber(mean, 6) + ", " + FormatNumber(sd, 6) + ")";
  } else if (name == "t") {
    params(1);
    const std::int32_t df = degFree(1);
    const double q = quv::tDistriQuantile(0.999, df);
    range(-q, q);
    gen.SetLowBorder(o.low);
    gen.SetHighBorder(o.high);
    gen.tDistri(df);
    text = "t(" + std::to_string(df) + ")";
  } else if (name == "chi2") {
    params(1);
    const std::int32_t df = degFree(1);
    range(0, quv::chi2DistriQuantile(0.999, df));
    gen.SetLowBorder(o.low);
    gen.SetHighBorder(o.high);
    gen.Chi2Distri(df);
    text = "chi2(" + std::to_string(df) + ")";
  } else if (name == "f") {
    params(2);
    const std::int32_t d1 = degFree(1), d2 = degFree(2);
    range(0, quv::FDistriQuantile(0.999, d1, d2));
    gen.SetLowBorder(o.low);
    gen.SetHighBorder(o.high);
    gen.FDistri(d1, d2);
    text = "F(" + std::to_string(d1) + ", " + std::to_string(d2) + ")";
  } else if (name == "weibull") {
    params(2);
    const double shape = ParseNumber(o.shape[1]), scale = ParseNumber(o.shape[2]);
    if (!(shape > 0 && scale > 0)) throw UsageError{"SHAPE and SCALE must be positive"};
    range(0, scale * std::pow(-std::log(0.001), 1 / shape));
    gen.SetLowBorder(o.low);
    gen.SetHighBorder(o.high);
    gen.WeibullDistri(shape, scale);
    text = "Weibull(" + FormatNumber(shape, 6) + ", " + FormatNumber(scale, 6) + ")";
  } else if (name == "uniform") {
    params(0);
    range(0, 1);
    gen.SetLowBorder(o.low);
    gen.SetHighBorder(o.high);
    text = "uniform table";
  } else {
    throw UsageError{"unknown shape \"" + name + "\""};
  }
  for (std::int32_t i = 1; i <= gen.Resolution(); ++i)
    if (!std::isfinite(gen.GetProbability(i)))
      throw std::runtime_error("the density of " + text + " is not finite at " +
                               FormatNumber(gen.Lambda(i), 10) + "; move LOW above it");
  if (!gen.Standardize()) throw std::runtime_error("the density of " + text + " is 0 on the range");
  return text;
}

// Relative mass of table bin i under the sampled density: the mean of the line from P(i) to
// P(i + 1) (0 after the last bin). The table is standardized, so no value exceeds 1.
double BinMass(const quv::TRandGen& gen, std::int32_t i) {
  return (gen.GetProbability(i) + gen.GetProbability(i + 1)) / 2;
}

}  // namespace

int RunRandgen(const Args& args, std::ostream& out) {
  TOptions o = ParseRandgenOptions(args);
  quv::TRandGen gen;
  gen.SetResolution(o.resolution);
  const std::string text = SetShape(gen, o);
  if (o.haveSeed)
    quv::SetRandSeed(o.seed);
  else
    quv::Randomize();
  const std::uint64_t seed = quv::RandSeed();

  std::vector<double> draws(static_cast<std::size_t>(o.n));
  for (double& x : draws)
    x = gen.GetRandNum();
  if (o.values) {
    for (double x : draws)
      out << FormatNumber(x, 17) << '\n';
    return kExitOk;
  }

  const std::int32_t per = o.resolution / o.bins;
  const double width = (o.high - o.low) / o.bins;
  std::vector<double> count(static_cast<std::size_t>(o.bins), 0.0);
  for (double x : draws) {
    auto b = static_cast<std::int32_t>((x - o.low) / width);
    b = std::min(std::max(b, 0), o.bins - 1);
    count[static_cast<std::size_t>(b)] += 1;
  }
  std::vector<double> expected(static_cast<std::size_t>(o.bins), 0.0);
  double total = 0;
  for (std::int32_t i = 1; i <= o.resolution; ++i) {
    expected[static_cast<std::size_t>((i - 1) / per)] += BinMass(gen, i);
    total += BinMass(gen, i);
  }
  for (double& e : expected)
    e *= o.n / total;

  out << text << " on [" << FormatNumber(o.low, 10) << ", " << FormatNumber(o.high, 10)
      << "), resolution " << o.resolution << ", " << o.n << " draws, seed " << seed << "\n\n";
  std::vector<std::vector<std::string>> table{{"from", "to", "count", "expected"}};
  for (std::int32_t b = 0; b < o.bins; ++b)
    table.push_back({FormatNumber(o.low + b * width, 6), FormatNumber(o.low + (b + 1) * width, 6),
                     FormatNumber(count[static_cast<std::size_t>(b)], 10),
                     FormatNumber(expected[static_cast<std::size_t>(b)], 6)});
  PrintTable(out, table);

  // Pool histogram bins from the left until each cell expects at least 5 draws.
  double stat = 0, obs = 0, exp = 0, lastObs = 0, lastExp = 0;
  std::int32_t cells = 0;
  for (std::int32_t b = 0; b < o.bins; ++b) {
    obs += count[static_cast<std::size_t>(b)];
    exp += expected[static_cast<std::size_t>(b)];
    if (exp >= 5) {
      if (cells > 0) stat += (lastObs - lastExp) * (lastObs - lastExp) / lastExp;
      lastObs = obs;
      lastExp = exp;
      ++cells;
      obs = exp = 0;
    }
  }
  lastObs += obs;
  lastExp += exp;
  if (cells > 0) stat += (lastObs - lastExp) * (lastObs - lastExp) / lastExp;
  out << '\n';
  if (cells < 2) {
    out << "too few draws for a goodness-of-fit test\n";
  } else {
    out << "chi-square goodness of fit: X2 = " << FormatNumber(stat, 6) << ", df = " << cells - 1
        << ", p = " << FormatNumber(1 - quv::chi2DistriIntegral(stat, cells - 1), 4) << '\n';
  }
  return kExitOk;
}

}  // namespace quvmath
