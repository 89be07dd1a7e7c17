// quvmath dist: values of the distributions, their quantiles and tables of critical values.
#include <array>
#include <cmath>
#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

#include "commands.h"
#include "quv/statis/statis.h"

namespace quvmath {

const std::string_view kDistHelp =
    "usage: quvmath dist normal [X...]\n"
    "       quvmath dist chi2 DF [X...]\n"
    "       quvmath dist t DF [X...]\n"
    "       quvmath dist f DF1 DF2 [X...]\n"
    "       quvmath dist binom N P [K...]\n"
    "       quvmath dist quantile normal|chi2 DF|t DF|f DF1 DF2 [P...]\n"
    "       quvmath dist critical ks|lilliefors|dixon|grubbs N\n"
    "\n"
    "Prints a table of the density, the distribution function P(X <= x) and the upper\n"
    "tail at each X (for binom: P(X = k) and P(X <= k) of N trials with success\n"
    "probability P), the quantiles at each probability P, or the critical values of a\n"
    "test for N data at its tabulated significance levels. Without values a standard set\n"
    "is used. The normal distribution uses the library's fixed formulas; chi2, t, F and\n"
    "binom are accurate to about 1e-13 relative.\n";

namespace {

std::string Num(double x) {
  return FormatNumber(x, 10);
}

std::int32_t ParseCount(const std::string& text, std::int32_t min) {
  const double v = ParseNumber(text);
  if (!(v >= min && v <= 2147483647.0 && v == std::floor(v)))
    throw UsageError{"\"" + text + "\" is not a whole number of at least " + std::to_string(min)};
  return static_cast<std::int32_t>(v);
}

// The numbers from args[first] on, or the defaults when there are none.
std::vector<double> Values(const Args& args, std::size_t first, std::vector<double> defaults) {
  if (args.size() <= first) return defaults;
  std::vector<double> out;
  for (std::size_t i = first; i < args.size(); ++i)
    out.push_back(ParseNumber(args[i]));
  return out;
}

void Need(const Args& args, std::size_t count, const char* what) {
  if (args.size() < count) throw UsageError{std::string("missing ") + what};
}

// A distribution reduced to what the tables need.
struct TDist {
  std::function<double(double)> density;
  std::function<double(double)> integral;
  std::function<double(double)> quantile;
  std::size_t next = 0;  // index of the first value argument
};

TDist ParseDist(const Args& args, std::size_t at) {
  Need(args, at + 1, "distribution");
  const std::string& name = args[at];
  if (name == "normal")
    return {quv::nDistriDensity, quv::nDistriIntegral, quv::nDistriQuantile, at + 1};
  if (name == "chi2" || name == "t") {
    Need(args, at + 2, "degrees of freedom");
    const std::int32_t df = ParseCount(args[at + 1], 1);
    if (name == "chi2")
      return {[df](double x) { return quv::Chi2DistriDensity(x, df); },
              [df](double x) { return quv::chi2DistriIntegral(x, df); },
              [df](double p) { return quv::chi2DistriQuantile(p, df); }, at + 2};
    return {[df](double x) { return quv::tDistriDensity(x, df); },
            [df](double x) { return quv::tDistriIntegral(x, df); },
            [df](double p) { return quv::tDistriQuantile(p, df); }, at + 2};
  }
  if (name == "f") {
    Need(args, at + 3, "degrees of freedom");
    const std::int32_t d1 = ParseCount(args[at + 1], 1);
    const std::int32_t d2 = ParseCount(args[at + 2], 1);
    return {[d1, d2](double x) { return quv::FDistriDensity(x, d1, d2); },
            [d1, d2](double x) { return quv::FDistriIntegral(x, d1, d2); },
            [d1, d2](double p) { return quv::FDistriQuantile(p, d1, d2); }, at + 3};
  }
  throw UsageError{"unknown distribution \"" + name + "\""};
}

std::vector<double> DefaultX(const std::string& name, const Args& args) {
  if (name == "chi2") {
    const double df = ParseNumber(args[1]);
    return {0.25 * df, 0.5 * df, df, 1.5 * df, 2 * df, 3 * df};
  }
  if (name == "f") return {0.25, 0.5, 1, 2, 4, 8};
  return {-3, -2, -1, 0, 1, 2, 3};
}

int RunValues(const Args& args, std::ostream& out) {
  const TDist dist = ParseDist(args, 0);
  std::vector<std::vector<std::string>> rows = {{"x", "density", "P(X<=x)", "P(X>x)"}};
  for (double x : Values(args, dist.next, DefaultX(args[0], args))) {
    const double p = dist.integral(x);
    rows.push_back({Num(x), Num(dist.density(x)), Num(p), Num(1 - p)});
  }
  PrintTable(out, rows);
  return 0;
}

int RunBinom(const Args& args, std::ostream& out) {
  Need(args, 3, "N and P");
  const std::int32_t n = ParseCount(args[1], 0);
  const double p = ParseNumber(args[2]);
  if (!(p >= 0 && p <= 1)) throw UsageError{"P must lie between 0 and 1"};
  std::vector<double> defaults;
  const double mean = n * p;
  const double sd = std::sqrt(n * p * (1 - p));
  const double lo = std::max(0.0, std::floor(mean - 3 * sd));
  const double hi = std::min<double>(n, std::ceil(mean + 3 * sd));
  const double step = std::max(1.0, std::ceil((hi - lo) / 20));
  for (double k = lo; k <= hi; k += step)
    defaults.push_back(k);
  std::vector<std::vector<std::string>> rows = {{"k", "P(X=k)", "P(X<=k)"}};
  for (double kv : Values(args, 3, defaults)) {
    const auto k = static_cast<std::int32_t>(kv);
    rows.push_back({std::to_string(k), Num(quv::BinomDistriDensity(k, p, n)),
                    Num(quv::BinomDistriIntegral(k, p, n))});
  }
  PrintTable(out, rows);
  return 0;
}

int RunQuantile(const Args& args, std::ostream& out) {
  const TDist dist = ParseDist(args, 1);
  std::vector<std::vector<std::string>> rows = {{"p", "quantile"}};
  for (double p : Values(args, dist.next,
                         {0.001, 0.01, 0.025, 0.05, 0.1, 0.5, 0.9, 0.95, 0.975, 0.99, 0.999})) {
    if (!(p > 0 && p < 1)) throw UsageError{"probabilities must lie strictly between 0 and 1"};
    rows.push_back({Num(p), Num(dist.quantile(p))});
  }
  PrintTable(out, rows);
  return 0;
}

int RunCritical(const Args& args, std::ostream& out) {
  Need(args, 3, "test and N");
  const std::string& test = args[1];
  const std::int32_t n = ParseCount(args[2], 1);
  std::vector<std::vector<std::string>> rows;
  if (test == "ks") {
    rows.push_back({"alpha", "tabulated", "refined"});
    for (quv::TSignifLevel level : {quv::Dot20, quv::Dot15, quv::Dot10, quv::Dot05, quv::Dot01})
      rows.push_back({Num(quv::kSignifLevelAlpha[level]),
                      Num(quv::KolmogSmir1SampleTestStat(n, level)),
                      Num(quv::KSQuantile(n, level))});
  } else if (test == "lilliefors") {
    rows.push_back({"alpha", "critical D"});
    for (double alpha : quv::kSignifLevelAlpha)
      rows.push_back({Num(alpha), Num(quv::LillieforsQuantile(n, alpha))});
  } else if (test == "dixon") {
    if (n < 3 || n > 100) throw UsageError{"Dixon's table covers 3 <= N <= 100"};
    rows.push_back({"alpha", "critical ratio"});
    for (int level = quv::Dot001; level <= quv::Dot500; ++level) {
      const auto l = static_cast<quv::TSignifLevelEx>(level);
      rows.push_back({Num(quv::kSignifLevelExAlpha[l]), Num(quv::DeanDixonCriticalValues(n, l))});
    }
  } else if (test == "grubbs") {
    if (n < 3) throw UsageError{"Grubbs' test needs N >= 3"};
    rows.push_back({"alpha", "one-sided", "two-sided"});
    for (double alpha : quv::kSignifLevelAlpha)
      rows.push_back({Num(alpha), Num(quv::GrubbsCriticalValues(n, alpha, false)),
                      Num(quv::GrubbsCriticalValues(n, alpha, true))});
  } else {
    throw UsageError{"unknown test \"" + test + "\""};
  }
  PrintTable(out, rows);
  return 0;
}

}  // namespace

int RunDist(const Args& args, std::ostream& out) {
  if (args.empty()) throw UsageError{"missing distribution"};
  if (args[0] == "quantile") return RunQuantile(args, out);
  if (args[0] == "critical") return RunCritical(args, out);
  if (args[0] == "binom") return RunBinom(args, out);
  return RunValues(args, out);
}

}  // namespace quvmath
