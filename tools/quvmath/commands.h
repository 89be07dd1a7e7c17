// The subcommands of quvmath. Each one lives in its own cmd_<name>.cpp and is listed once in
// the table of main.cpp.
#pragma once

#include <cstdint>
#include <functional>
#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

namespace quvmath {

using Args = std::vector<std::string>;

/// A subcommand: its name, a one-line summary, its own --help text and its body. The body
/// gets the arguments after the subcommand's name and returns the process exit status.
struct Command {
  std::string_view name;
  std::string_view summary;
  std::string_view help;
  std::function<int(const Args&, std::ostream& out)> run;
};

/// Raised by a subcommand for bad usage; main prints it with a hint to --help and exits 2.
struct UsageError {
  std::string message;
};

/// True when the arguments ask for help.
bool WantsHelp(const Args& args);

/// Parses a whole argument as a double, or raises UsageError naming the argument.
double ParseNumber(const std::string& text);

/// A number as text with at most `digits` significant digits (printf's %g).
std::string FormatNumber(double x, int digits);

/// What a status of the ASC file reader means, for an error message.
std::string AscStatusText(std::int32_t status);

/// Writes rows as a table whose columns are right-aligned to their widest cell; the first
/// row is the heading and is underlined.
void PrintTable(std::ostream& out, const std::vector<std::vector<std::string>>& rows);

int RunDist(const Args& args, std::ostream& out);
extern const std::string_view kDistHelp;

int RunEncode(const Args& args, std::ostream& out);
extern const std::string_view kEncodeHelp;

int RunEval(const Args& args, std::ostream& out);
extern const std::string_view kEvalHelp;

int RunStats(const Args& args, std::ostream& out);
extern const std::string_view kStatsHelp;

}  // namespace quvmath
