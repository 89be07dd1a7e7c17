// quvmath dist: values of the distributions, their quantiles and tables of critical values.
//
// Upper tails come from the library's direct upper-tail functions, never from 1 - P(X <= x),
// and the normal distribution from its accurate tails and quantile rather than the fixed
// formulas of nDistriIntegral/nDistriQuantile, so that every printed digit holds. Every
// argument is checked before the library sees it.
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdlib>
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
    "       quvmath dist u N1 N2 [U...]\n"
    "       quvmath dist quantile normal|chi2 DF|t DF|f DF1 DF2 [P...]\n"
    "       quvmath dist critical ks|lilliefors|dixon|grubbs N\n"
    "\n"
    "Prints a table of the density, the distribution function P(X <= x) and the upper\n"
    "tail P(X > x) at each X; for binom P(X = k), P(X <= k) and P(X > k) of N trials with\n"
    "success probability P; for u the same of the Mann-Whitney statistic of samples of N1\n"
    "and N2 values; the quantiles at each probability P; or the critical values of a test\n"
    "for N data at its tabulated significance levels. Without values a standard set is used.\n"
    "\n"
    "Upper tails are computed directly, so tails far below 1e-16 keep their digits. Values\n"
    "and quantiles are accurate to about 1e-13 relative and printed with 12 significant\n"
    "digits. The refined Kolmogorov-Smirnov value (solved to 1e-4 in probability) and the\n"
    "Lilliefors approximation are printed with 4. DF, N, N1, N2 and K are whole numbers\n"
    "(0 <= K <= N); P lies in [0, 1] (strictly inside for quantiles). The Lilliefors\n"
    "approximation covers N >= 4, Dixon's table 3 <= N <= 100, Grubbs' test N >= 3.\n";

namespace {

constexpr int kDigits = 12;
constexpr int kApproxDigits = 4;
constexpr std::int64_t kMaxInt = 2147483647;

std::string Num(double x) {
  return FormatNumber(x, kDigits);
}

// An argument value, exact as given: 12 digits, or as many more as it takes to read back the
// same double (0.9999999999999998 must not show as 1).
std::string Arg(double x) {
  for (int digits = kDigits; digits < 17; ++digits) {
    const std::string text = FormatNumber(x, digits);
    if (std::strtod(text.c_str(), nullptr) == x) return text;
  }
  return FormatNumber(x, 17);
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
  std::function<double(double)> lower;
  std::function<double(double)> upper;
  std::function<double(double)> quantile;
  std::size_t next = 0;  // index of the first value argument
};

std::int32_t ParseDegrees(const std::string& text, const char* what) {
  return ParseWhole(text, 1, kMaxInt, what);
}

TDist ParseDist(const Args& args, std::size_t at) {
  Need(args, at + 1, "distribution");
  const std::string& name = args[at];
  if (name == "normal")
    return {quv::nDistriDensity, quv::nDistriLowerTail, quv::nDistriUpperTail,
            quv::nDistriLowerTailQuantile, at + 1};
  if (name == "chi2" || name == "t") {
    Need(args, at + 2, "degrees of freedom");
    const std::int32_t df = ParseDegrees(args[at + 1], "DF");
    if (name == "chi2")
      return {[df](double x) { return quv::Chi2DistriDensity(x, df); },
              [df](double x) { return quv::chi2DistriIntegral(x, df); },
              [df](double x) { return quv::chi2DistriUpperTail(x, df); },
              [df](double p) { return quv::chi2DistriQuantile(p, df); }, at + 2};
    return {[df](double x) { return quv::tDistriDensity(x, df); },
            [df](double x) { return quv::tDistriIntegral(x, df); },
            [df](double x) { return quv::tDistriUpperTail(x, df); },
            [df](double p) { return quv::tDistriQuantile(p, df); }, at + 2};
  }
  if (name == "f") {
    Need(args, at + 3, "degrees of freedom");
    const std::int32_t d1 = ParseDegrees(args[at + 1], "DF1");
    const std::int32_t d2 = ParseDegrees(args[at + 2], "DF2");
    return {[d1, d2](double x) { return quv::FDistriDensity(x, d1, d2); },
            [d1, d2](double x) { return quv::FDistriIntegral(x, d1, d2); },
            [d1, d2](double x) { return quv::FDistriUpperTail(x, d1, d2); },
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
  for (double x : Values(args, dist.next, DefaultX(args[0], args)))
    rows.push_back({Arg(x), Num(dist.density(x)), Num(dist.lower(x)), Num(dist.upper(x))});
  PrintTable(out, rows);
  return kExitOk;
}

// Whole-number arguments from args[first] on, each in [0, n], or the defaults.
std::vector<std::int32_t> Counts(const Args& args, std::size_t first, std::int64_t n,
                                 const char* what, std::vector<std::int32_t> defaults) {
  if (args.size() <= first) return defaults;
  std::vector<std::int32_t> out;
  for (std::size_t i = first; i < args.size(); ++i)
    out.push_back(ParseWhole(args[i], 0, n, what));
  return out;
}

// About twenty steps over mean -+ 3 standard deviations, inside 0..n.
std::vector<std::int32_t> DefaultCounts(double mean, double sd, std::int64_t n) {
  const double lo = std::max(0.0, std::floor(mean - 3 * sd));
  const double hi = std::min<double>(static_cast<double>(n), std::ceil(mean + 3 * sd));
  const double step = std::max(1.0, std::ceil((hi - lo) / 20));
  std::vector<std::int32_t> out;
  for (double k = lo; k <= hi; k += step)
    out.push_back(static_cast<std::int32_t>(k));
  return out;
}

int RunBinom(const Args& args, std::ostream& out) {
  Need(args, 3, "N and P");
  const std::int32_t n = ParseWhole(args[1], 0, kMaxInt, "N");
  const double p = ParseNumberIn(args[2], 0, 1, "P");
  const double mean = n * p;
  const double sd = std::sqrt(n * p * (1 - p));
  std::vector<std::vector<std::string>> rows = {{"k", "P(X=k)", "P(X<=k)", "P(X>k)"}};
  for (const std::int32_t k : Counts(args, 3, n, "K", DefaultCounts(mean, sd, n))) {
    rows.push_back({std::to_string(k), Num(quv::BinomDistriDensity(k, p, n)),
                    Num(quv::BinomDistriIntegral(k, p, n)),
                    Num(quv::BinomDistriUpperTail(k, p, n))});
  }
  PrintTable(out, rows);
  return kExitOk;
}

int RunU(const Args& args, std::ostream& out) {
  Need(args, 3, "N1 and N2");
  const std::int32_t n1 = ParseWhole(args[1], 1, 65535, "N1");
  const std::int32_t n2 = ParseWhole(args[2], 1, 65535, "N2");
  const std::int64_t mn = static_cast<std::int64_t>(n1) * n2;
  if (mn > kMaxInt) throw UsageError{"N1 times N2 must not exceed 2147483647"};
  const double mean = 0.5 * static_cast<double>(mn);
  const double sd = std::sqrt(static_cast<double>(mn) * (n1 + n2 + 1) / 12);
  std::vector<std::vector<std::string>> rows = {{"u", "P(U=u)", "P(U<=u)", "P(U>u)"}};
  for (const std::int32_t u : Counts(args, 3, mn, "U", DefaultCounts(mean, sd, mn))) {
    rows.push_back({std::to_string(u), Num(quv::UDistriDensity(n1, n2, u)),
                    Num(quv::UDistriIntegral(n1, n2, u)), Num(quv::UDistriUpperTail(n1, n2, u))});
  }
  PrintTable(out, rows);
  return kExitOk;
}

int RunQuantile(const Args& args, std::ostream& out) {
  const TDist dist = ParseDist(args, 1);
  std::vector<std::vector<std::string>> rows = {{"p", "quantile"}};
  for (double p : Values(args, dist.next,
                         {0.001, 0.01, 0.025, 0.05, 0.1, 0.5, 0.9, 0.95, 0.975, 0.99, 0.999})) {
    if (!(p > 0 && p < 1)) throw UsageError{"probabilities must lie strictly between 0 and 1"};
    rows.push_back({Arg(p), Num(dist.quantile(p))});
  }
  PrintTable(out, rows);
  return kExitOk;
}

int RunCritical(const Args& args, std::ostream& out) {
  Need(args, 3, "test and N");
  const std::string& test = args[1];
  const std::int32_t n = ParseWhole(args[2], 1, kMaxInt, "N");
  std::vector<std::vector<std::string>> rows;
  if (test == "ks") {
    rows.push_back({"alpha", "tabulated", "refined"});
    for (quv::TSignifLevel level : {quv::Dot20, quv::Dot15, quv::Dot10, quv::Dot05, quv::Dot01})
      rows.push_back({Num(quv::kSignifLevelAlpha[level]),
                      Num(quv::KolmogSmir1SampleTestStat(n, level)),
                      FormatNumber(quv::KSQuantile(n, level), kApproxDigits)});
  } else if (test == "lilliefors") {
    if (n < 4) throw UsageError{"the Lilliefors approximation covers N >= 4"};
    rows.push_back({"alpha", "critical D"});
    for (double alpha : quv::kSignifLevelAlpha)
      rows.push_back({Num(alpha), FormatNumber(quv::LillieforsQuantile(n, alpha), kApproxDigits)});
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
  return kExitOk;
}

}  // namespace

int RunDist(const Args& all, std::ostream& out) {
  const Args args = ParseOptions(all, {}).operands;
  if (args.empty()) throw UsageError{"missing distribution"};
  if (args[0] == "quantile") return RunQuantile(args, out);
  if (args[0] == "critical") return RunCritical(args, out);
  if (args[0] == "binom") return RunBinom(args, out);
  if (args[0] == "u") return RunU(args, out);
  return RunValues(args, out);
}

}  // namespace quvmath
