// quvmath eval: evaluates an expression, once with values given on the command line or once
// per row of an ASC data file.
#include <iostream>
#include <ostream>
#include <stdexcept>
#include <string>

#include "commands.h"
#include "quv/math2/math2.h"

namespace quvmath {

const std::string_view kEvalHelp =
    "usage: quvmath eval [--precision N] EXPR [NAME=VALUE ...]\n"
    "       quvmath eval [--precision N] [--name NAME] [--lenient] --table FILE.asc|- EXPR\n"
    "       quvmath eval [--precision N] [--name NAME] --sample EXPR\n"
    "\n"
    "Evaluates the expression EXPR. In the first form every variable of EXPR gets its\n"
    "value from a NAME=VALUE argument. With --table the expression is evaluated for every\n"
    "row of an ASC data file (\"-\": standard input) and printed as a column beside the\n"
    "file's columns; a variable names a column by its name in the file or as c1, c2, ...\n"
    "by its position. --sample does the same with the bundled sample sample.asc.\n"
    "\n"
    "  --precision N  significant digits of the printed numbers (1..17, default 10)\n"
    "  --name NAME    heading of the computed column (default \"value\")\n"
    "  --lenient      exit 0 although data of the file was skipped (the warnings stay)\n"
    "\n"
    "Syntax: numbers (1.5, .5, 2e-3), variables (letters, digits, _), parentheses and,\n"
    "from the loosest to the tightest binding: or xor; and; not; = <> < <= > >=; + -;\n"
    "* / mod; prefix + -; ^ (right-associative, so 2^3^2 = 512 and -2^2 = -4).\n"
    "Functions: sin cos tan arcsin arccos arctan abs sign sqrt sqr round ndint ndquant\n"
    "nddens exp ln lg frac int rand(x) gauss(m, s) and sum mean var max min over lists\n"
    "(sum(a, b, c)); constants pi true false. Comparisons and logic give 1 or 0.\n"
    "Division by zero and the like give inf or nan. ndint and ndquant carry about 8\n"
    "correct digits. An expression that begins with \"-\" follows \"--\".\n"
    "\n"
    "Examples:  quvmath eval \"2^3^2 - sqrt(x)\" x=16\n"
    "           quvmath eval -- \"-x^2\" x=3\n"
    "           quvmath eval --name TempF --sample \"Temperature_C * 9/5 + 32\"\n";

namespace {

constexpr int kDefaultPrecision = 10;

// c1, c2, ... for the 0-based column c; built piecewise, which keeps GCC 12 from a false
// -Wrestrict warning on "c" + std::to_string(...).
std::string ColumnAlias(std::size_t c) {
  std::string alias = "c";
  alias += std::to_string(c + 1);
  return alias;
}

int EvalOnce(const std::string& expression, const Args& assignments, int digits,
             std::ostream& out) {
  quv::TMathExpression e(expression);
  std::vector<std::vector<std::string>> table{{"name", "value"}};
  for (const std::string& a : assignments) {
    const std::size_t eq = a.find('=');
    if (eq == std::string::npos || eq == 0)
      throw UsageError{"expected NAME=VALUE, got \"" + a + "\""};
    const double value = ParseNumber(a.substr(eq + 1));
    e.SetVar(a.substr(0, eq), value);
    table.push_back({a.substr(0, eq), FormatNumber(value, digits)});
  }
  const double result = e.Evaluate();
  table.push_back({"result", FormatNumber(result, digits)});
  out << expression << "\n\n";
  PrintTable(out, table);
  return kExitOk;
}

int EvalTable(const std::string& expression, const std::string& path, const ParsedArgs& parsed,
              int digits, std::ostream& out) {
  const DataFile data = ReadDataFile(path);
  // Compile before warning about the data, so that a bad expression is the only message.
  const quv::TASCFile& file = data.file;
  const auto cols = static_cast<std::size_t>(file.NrCols);
  // Variables: the column names, then c1..cN; the first of equal names counts.
  std::vector<std::string> names;
  std::vector<std::string> headings;
  for (std::size_t c = 0; c < cols; ++c) {
    headings.push_back(file.ColNames ? file.ColNameList[c] : ColumnAlias(c));
    if (file.ColNames) names.push_back(file.ColNameList[c]);
  }
  const std::size_t named = names.size();
  for (std::size_t c = 0; c < cols; ++c)
    names.push_back(ColumnAlias(c));
  quv::TMathExpression e;
  e.Compile(expression, names);

  const bool skipped = WarnSkippedData(data, std::cerr);
  const std::int32_t rows = file.RowsRead();
  if (rows == 0) throw std::runtime_error(data.name + ": no complete data row");
  const std::string name = parsed.Value("--name", "value");
  out << data.name << '\n' << name << " = " << expression << "\n\n";
  headings.push_back(name);
  std::vector<std::vector<std::string>> table{headings};
  std::vector<double> values(names.size());
  for (std::size_t r = 0; r < static_cast<std::size_t>(rows); ++r) {
    const double* row = &file.Values[r * cols];
    for (std::size_t c = 0; c < cols; ++c) {
      if (c < named) values[c] = row[c];
      values[named + c] = row[c];
    }
    std::vector<std::string> line;
    for (std::size_t c = 0; c < cols; ++c)
      line.push_back(FormatNumber(row[c], digits));
    line.push_back(FormatNumber(e.Evaluate(values), digits));
    table.push_back(std::move(line));
  }
  PrintTable(out, table);
  if (skipped && !parsed.Has("--lenient")) {
    std::cerr << "quvmath eval: " << data.name
              << ": data was skipped (see the warnings); --lenient accepts the rows read\n";
    return kExitFailure;
  }
  return kExitOk;
}

}  // namespace

int RunEval(const Args& args, std::ostream& out) {
  const ParsedArgs parsed = ParseOptions(args, {{"--precision", true},
                                                {"--name", true},
                                                {"--table", true},
                                                {"--sample", false},
                                                {"--lenient", false}});
  const int digits = parsed.Has("--precision")
                         ? ParseWhole(parsed.Value("--precision"), 1, 17, "--precision")
                         : kDefaultPrecision;
  if (parsed.operands.empty()) throw UsageError{"no expression given"};
  const std::string& expression = parsed.operands.front();
  const Args rest(parsed.operands.begin() + 1, parsed.operands.end());
  const bool table = parsed.Has("--table") || parsed.Has("--sample");
  if (parsed.Has("--table") && parsed.Has("--sample"))
    throw UsageError{"--table and --sample exclude each other"};
  if (!table) {
    if (parsed.Has("--name") || parsed.Has("--lenient"))
      throw UsageError{"--name and --lenient go with --table or --sample"};
    return EvalOnce(expression, rest, digits, out);
  }
  if (!rest.empty()) throw UsageError{"NAME=VALUE arguments do not go with --table or --sample"};
  const std::string path =
      parsed.Has("--sample") ? SampleDataFile("sample.asc") : parsed.Value("--table");
  return EvalTable(expression, path, parsed, digits, out);
}

}  // namespace quvmath
