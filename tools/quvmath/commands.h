// The subcommands of quvmath. Each one lives in its own cmd_<name>.cpp and is listed once in
// the table of main.cpp. support.cpp holds what they share: options, checked numbers, data
// files read with warnings about skipped input, tables and number text.
#pragma once

#include <cstdint>
#include <functional>
#include <iosfwd>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "quv/datatable/asc.h"

namespace quvmath {

using Args = std::vector<std::string>;

/// Exit statuses: success, failure (bad data, input skipped, a failed write), bad usage.
inline constexpr int kExitOk = 0;
inline constexpr int kExitFailure = 1;
inline constexpr int kExitUsage = 2;

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

// ---- options ---------------------------------------------------------------------------

/// An option a command accepts: "--name" alone, or "--name VALUE" / "--name=VALUE".
struct OptionSpec {
  std::string_view name;  ///< with its dashes, e.g. "--precision"
  bool takesValue = false;
};

/// Arguments split into options and operands.
struct ParsedArgs {
  Args operands;                              ///< everything that is not an option, in order
  std::map<std::string, std::string> values;  ///< the options given (a flag maps to "")
  bool Has(std::string_view name) const { return values.count(std::string(name)) > 0; }
  /// The value of an option, or `fallback` when it was not given.
  std::string Value(std::string_view name, const std::string& fallback = "") const;
};

/// Splits args into options and operands. An argument that begins with "-" is an option
/// unless it is "-" itself (standard input) or a number such as "-3" or "-inf"; "--" makes
/// every later argument an operand. An option not in `known`, a missing value or a value
/// given to a flag raises UsageError ("unknown option \"--x\"").
ParsedArgs ParseOptions(const Args& args, const std::vector<OptionSpec>& known);

// ---- numbers ---------------------------------------------------------------------------

/// Parses a whole argument as a double (also "inf", "-inf"). Raises UsageError naming the
/// argument for text that is not a number, for NaN, and for a number beyond the range of
/// doubles ("1e400", "1e-330") rather than letting it become infinity or zero.
double ParseNumber(const std::string& text);

/// Parses a whole argument as an extended (80-bit) number, for images that hold one: up to
/// about 1.19e4932. "nan" and "inf" are taken as written; text that is not a number and
/// numbers beyond the extended range raise UsageError.
long double ParseExtended(const std::string& text);

/// A number in [lo, hi]; UsageError "WHAT must lie between LO and HI" otherwise.
double ParseNumberIn(const std::string& text, double lo, double hi, std::string_view what);

/// A whole number in [lo, hi]; UsageError "WHAT must be a whole number between LO and HI"
/// for fractions, NaN, infinities and values outside the range.
std::int32_t ParseWhole(const std::string& text, std::int64_t lo, std::int64_t hi,
                        std::string_view what);

/// A number as text with at most `digits` significant digits (printf's %g); -0 prints as 0
/// and NaN as "nan".
std::string FormatNumber(double x, int digits);

/// What a status of the ASC file reader means, for an error message.
std::string AscStatusText(std::int32_t status);

/// Writes rows as a table whose columns are right-aligned to their widest cell; the first
/// row is the heading and is underlined.
void PrintTable(std::ostream& out, const std::vector<std::vector<std::string>>& rows);

// ---- data files ------------------------------------------------------------------------

/// An ASC data file read for a command, with the reader's report of what it skipped.
struct DataFile {
  std::string name;  ///< as given ("standard input" for "-")
  quv::TASCFile file;
  quv::TASCReadReport report;
};

/// Reads an ASC file, or standard input for "-". Raises std::runtime_error with a message
/// that names the file for a missing file, a directory, an unreadable or empty file and a
/// header the reader refuses.
DataFile ReadDataFile(const std::string& path);

/// The whole text of a data file, or of standard input for "-", with the messages of
/// ReadDataFile for a file that cannot be one; name receives the name to report.
std::string ReadDataText(const std::string& path, std::string& name);

/// One warning on `err` per finding of the report, each naming the file and the line
/// ("quvmath: data.asc:12: ..."). True when any data of the file was not used.
bool WarnSkippedData(const DataFile& data, std::ostream& err);

/// The path of a bundled sample file: beside the installed program (share/quvmathpack),
/// else in the source tree the program was built from.
std::string SampleDataFile(std::string_view name);

// ---- commands --------------------------------------------------------------------------

int RunConvert(const Args& args, std::ostream& out);
extern const std::string_view kConvertHelp;

int RunCrossval(const Args& args, std::ostream& out);
extern const std::string_view kCrossvalHelp;

int RunDist(const Args& args, std::ostream& out);
extern const std::string_view kDistHelp;

int RunEncode(const Args& args, std::ostream& out);
extern const std::string_view kEncodeHelp;

int RunEval(const Args& args, std::ostream& out);
extern const std::string_view kEvalHelp;

int RunFft(const Args& args, std::ostream& out);
extern const std::string_view kFftHelp;

int RunRandgen(const Args& args, std::ostream& out);
extern const std::string_view kRandgenHelp;

int RunSmooth(const Args& args, std::ostream& out);
extern const std::string_view kSmoothHelp;

int RunStats(const Args& args, std::ostream& out);
extern const std::string_view kStatsHelp;

}  // namespace quvmath
