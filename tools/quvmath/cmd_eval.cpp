// quvmath eval: evaluates an expression, once with values given on the command line or once
// per row of an ASC data file.
#include <iostream>
#include <ostream>
#include <stdexcept>
#include <string>

#include "commands.h"
#include "quv/datatable/datatable.h"
#include "quv/math2/math2.h"

namespace quvmath {

const std::string_view kEvalHelp =
    "usage: quvmath eval [--digits N] EXPR [NAME=VALUE ...]\n"
    "       quvmath eval [--digits N] [--name NAME] --table [FILE.asc] EXPR\n"
    "\n"
    "Evaluates the expression EXPR. In the first form every variable of EXPR gets its\n"
    "value from a NAME=VALUE argument. With --table the expression is evaluated for every\n"
    "row of an ASC data file and printed as a column beside the file's columns; a variable\n"
    "names a column by its name in the file or as c1, c2, ... by its position. The argument\n"
    "after --table is the file when it ends in .asc; otherwise the bundled sample\n"
    "examples/data/sample.asc is used.\n"
    "\n"
    "  --digits N  significant digits of the printed numbers (1..17, default 10)\n"
    "  --name NAME heading of the computed column (default \"value\")\n"
    "\n"
    "Syntax: numbers (1.5, .5, 2e-3), variables (letters, digits, _), parentheses and,\n"
    "from the loosest to the tightest binding: or xor; and; not; = <> < <= > >=; + -;\n"
    "* / mod; prefix + -; ^ (right-associative, so 2^3^2 = 512 and -2^2 = -4).\n"
    "Functions: sin cos tan arcsin arccos arctan abs sign sqrt sqr round ndint ndquant\n"
    "nddens exp ln lg frac int rand(x) gauss(m, s) and sum mean var max min over lists\n"
    "(sum(a, b, c)); constants pi true false. Comparisons and logic give 1 or 0.\n"
    "Division by zero and the like give inf or nan. ndint and ndquant carry about 8\n"
    "correct digits.\n"
    "\n"
    "Examples:  quvmath eval \"2^3^2 - sqrt(x)\" x=16\n"
    "           quvmath eval --name TempF --table \"Temperature_C * 9/5 + 32\"\n";

namespace {

struct EvalOptions {
  int digits = 10;
  std::string name = "value";
  bool table = false;
  std::string file;
  std::string expression;
  std::vector<std::pair<std::string, double>> values;
};

EvalOptions ParseOptions(const Args& args) {
  EvalOptions o;
  bool have_expression = false;
  for (std::size_t i = 0; i < args.size(); ++i) {
    const std::string& a = args[i];
    const bool has_next = i + 1 < args.size();
    if (a == "--digits") {
      if (!has_next) throw UsageError{"--digits needs a number"};
      const double d = ParseNumber(args[++i]);
      if (!(d >= 1 && d <= 17) || d != static_cast<int>(d))
        throw UsageError{"--digits takes a whole number from 1 to 17"};
      o.digits = static_cast<int>(d);
    } else if (a == "--name") {
      if (!has_next) throw UsageError{"--name needs a heading"};
      o.name = args[++i];
    } else if (a == "--table") {
      o.table = true;
      const bool is_file = has_next && args[i + 1].size() > 4 &&
                           (args[i + 1].ends_with(".asc") || args[i + 1].ends_with(".ASC"));
      if (is_file) o.file = args[++i];
    } else if (!have_expression) {
      o.expression = a;
      have_expression = true;
    } else {
      const std::size_t eq = a.find('=');
      if (eq == std::string::npos || eq == 0)
        throw UsageError{"expected NAME=VALUE, got \"" + a + "\""};
      o.values.emplace_back(a.substr(0, eq), ParseNumber(a.substr(eq + 1)));
    }
  }
  if (!have_expression) throw UsageError{"no expression given"};
  if (o.table && !o.values.empty()) throw UsageError{"NAME=VALUE arguments do not go with --table"};
  return o;
}

// c1, c2, ... for the 0-based column c; built piecewise, which keeps GCC 12 from a false
// -Wrestrict warning on "c" + std::to_string(...).
std::string ColumnAlias(std::size_t c) {
  std::string alias = "c";
  alias += std::to_string(c + 1);
  return alias;
}

int EvalOnce(const EvalOptions& o, std::ostream& out) {
  quv::TMathExpression e(o.expression);
  for (const auto& [name, value] : o.values)
    e.SetVar(name, value);
  const double result = e.Evaluate();
  std::vector<std::vector<std::string>> table{{"name", "value"}};
  for (const auto& [name, value] : o.values)
    table.push_back({name, FormatNumber(value, o.digits)});
  table.push_back({"result", FormatNumber(result, o.digits)});
  out << o.expression << "\n\n";
  PrintTable(out, table);
  return 0;
}

int EvalTable(const EvalOptions& o, std::ostream& out) {
  const std::string path =
      o.file.empty() ? std::string(QUV_SAMPLE_DATA_DIR) + "/sample.asc" : o.file;
  quv::TASCFile file;
  const std::int32_t status = quv::ReadASCFile(path, file);
  if (status != quv::kAscHeaderOk) throw std::runtime_error(path + ": " + AscStatusText(status));
  const std::int32_t rows = file.RowsRead();
  if (rows == 0) throw std::runtime_error(path + ": no complete data row");
  if (rows < file.NrRows)
    std::cerr << "quvmath eval: warning: " << path << ": the header declares " << file.NrRows
              << " rows, the data end after row " << rows << "\n";

  // Variables: the column names, then c1..cN; the first of equal names counts.
  const auto cols = static_cast<std::size_t>(file.NrCols);
  std::vector<std::string> names;
  std::vector<std::string> headings;
  for (std::size_t c = 0; c < cols; ++c) {
    headings.push_back(file.ColNames ? file.ColNameList[c] : ColumnAlias(c));
    if (file.ColNames) names.push_back(file.ColNameList[c]);
  }
  for (std::size_t c = 0; c < cols; ++c)
    names.push_back(ColumnAlias(c));
  quv::TMathExpression e;
  e.Compile(o.expression, names);

  out << path << '\n' << o.name << " = " << o.expression << "\n\n";
  headings.push_back(o.name);
  std::vector<std::vector<std::string>> table{headings};
  const std::size_t named = file.ColNames ? cols : 0;
  std::vector<double> values(names.size());
  for (std::size_t r = 0; r < static_cast<std::size_t>(rows); ++r) {
    const double* row = &file.Values[r * cols];
    for (std::size_t c = 0; c < cols; ++c) {
      if (file.ColNames) values[c] = row[c];
      values[named + c] = row[c];
    }
    std::vector<std::string> line;
    for (std::size_t c = 0; c < cols; ++c)
      line.push_back(FormatNumber(row[c], o.digits));
    line.push_back(FormatNumber(e.Evaluate(values), o.digits));
    table.push_back(std::move(line));
  }
  PrintTable(out, table);
  return 0;
}

}  // namespace

int RunEval(const Args& args, std::ostream& out) {
  const EvalOptions o = ParseOptions(args);
  return o.table ? EvalTable(o, out) : EvalOnce(o, out);
}

}  // namespace quvmath
