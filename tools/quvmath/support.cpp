// What the commands share: options, checked numbers, number text, tables, and data files read
// with a warning for every piece of input that did not reach the results.
#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <limits>
#include <ostream>
#include <sstream>
#include <stdexcept>

#include "commands.h"
#include "quv/datatable/datatable.h"

namespace quvmath {

bool WantsHelp(const Args& args) {
  return std::any_of(args.begin(), args.end(),
                     [](const std::string& a) { return a == "--help" || a == "-h"; });
}

// ---- options ---------------------------------------------------------------------------

namespace {

// "-3", "-.5", "-inf": negative numbers are operands, not options.
bool LooksNumeric(const std::string& text) {
  char* end = nullptr;
  (void)std::strtod(text.c_str(), &end);
  return end == text.c_str() + text.size();
}

}  // namespace

std::string ParsedArgs::Value(std::string_view name, const std::string& fallback) const {
  const auto it = values.find(std::string(name));
  return it == values.end() ? fallback : it->second;
}

ParsedArgs ParseOptions(const Args& args, const std::vector<OptionSpec>& known) {
  ParsedArgs parsed;
  bool operandsOnly = false;
  for (std::size_t i = 0; i < args.size(); ++i) {
    const std::string& arg = args[i];
    if (operandsOnly || arg == "-" || arg.empty() || arg[0] != '-' || LooksNumeric(arg)) {
      parsed.operands.push_back(arg);
      continue;
    }
    if (arg == "--") {
      operandsOnly = true;
      continue;
    }
    const std::size_t eq = arg.find('=');
    const std::string name = arg.substr(0, eq);
    const auto option = std::find_if(known.begin(), known.end(),
                                     [&](const OptionSpec& o) { return o.name == name; });
    if (option == known.end()) throw UsageError{"unknown option \"" + arg + "\""};
    std::string value;
    if (option->takesValue) {
      if (eq != std::string::npos) {
        value = arg.substr(eq + 1);
      } else if (i + 1 < args.size()) {
        value = args[++i];
      } else {
        throw UsageError{"option " + name + " needs a value"};
      }
    } else if (eq != std::string::npos) {
      throw UsageError{"option " + name + " takes no value"};
    }
    parsed.values[name] = value;
  }
  return parsed;
}

// ---- numbers ---------------------------------------------------------------------------

double ParseNumber(const std::string& text) {
  char* end = nullptr;
  errno = 0;
  const double value = std::strtod(text.c_str(), &end);
  const bool whole = !text.empty() && end == text.c_str() + text.size() &&
                     !std::isspace(static_cast<unsigned char>(text[0]));
  if (!whole || std::isnan(value)) throw UsageError{"not a number: \"" + text + "\""};
  // strtod reports overflow as infinity and underflow as zero; both lose the number given.
  if (errno == ERANGE && (std::isinf(value) || value == 0))
    throw UsageError{"number out of the range of double precision: \"" + text + "\""};
  return value;
}

long double ParseExtended(const std::string& text) {
  char* end = nullptr;
  errno = 0;
  const long double value = std::strtold(text.c_str(), &end);
  const bool whole = !text.empty() && end == text.c_str() + text.size() &&
                     !std::isspace(static_cast<unsigned char>(text[0]));
  if (!whole) throw UsageError{"not a number: \"" + text + "\""};
  if (errno == ERANGE && (std::isinf(value) || value == 0))
    throw UsageError{"number out of the range of extended precision: \"" + text + "\""};
  return value;
}

double ParseNumberIn(const std::string& text, double lo, double hi, std::string_view what) {
  const double v = ParseNumber(text);
  if (!(v >= lo && v <= hi)) {
    throw UsageError{std::string(what) + " must lie between " + FormatNumber(lo, 17) + " and " +
                     FormatNumber(hi, 17) + ", not \"" + text + "\""};
  }
  return v;
}

std::int32_t ParseWhole(const std::string& text, std::int64_t lo, std::int64_t hi,
                        std::string_view what) {
  double v = std::numeric_limits<double>::quiet_NaN();
  try {
    v = ParseNumber(text);
  } catch (const UsageError&) {
  }
  // The range test comes first so that the cast below is always defined.
  if (!(v >= static_cast<double>(lo) && v <= static_cast<double>(hi) && v == std::floor(v))) {
    throw UsageError{std::string(what) + " must be a whole number between " + std::to_string(lo) +
                     " and " + std::to_string(hi) + ", not \"" + text + "\""};
  }
  return static_cast<std::int32_t>(v);
}

std::string FormatNumber(double x, int digits) {
  if (std::isnan(x)) return "nan";
  if (x == 0) x = 0;  // -0 prints as 0
  char buf[48];
  std::snprintf(buf, sizeof buf, "%.*g", digits, x);
  return buf;
}

std::string AscStatusText(std::int32_t status) {
  switch (status) {
    case quv::kAscFileNotFound:
      return "file not found";
    case quv::kAscHeaderCutShort:
      return "the file ends inside its four header lines";
    case quv::kAscBadColumnCount:
      return "line 2 does not hold a valid number of columns";
    case quv::kAscBadRowCount:
      return "line 3 does not hold a valid number of rows";
    case quv::kAscBadFlags:
      return "line 4 does not hold the TRUE/FALSE flags";
    case quv::kAscBadAnnotation:
      return "an annotation block (column names or nominal variables) is malformed";
    default:
      return "unreadable ASC file (status " + std::to_string(status) + ")";
  }
}

void PrintTable(std::ostream& out, const std::vector<std::vector<std::string>>& rows) {
  std::vector<std::size_t> widths;
  for (const auto& row : rows) {
    if (widths.size() < row.size()) widths.resize(row.size(), 0);
    for (std::size_t c = 0; c < row.size(); ++c)
      widths[c] = std::max(widths[c], row[c].size());
  }
  auto print_row = [&](const std::vector<std::string>& row) {
    for (std::size_t c = 0; c < row.size(); ++c) {
      if (c > 0) out << "  ";
      out << std::string(widths[c] - row[c].size(), ' ') << row[c];
    }
    out << '\n';
  };
  for (std::size_t r = 0; r < rows.size(); ++r) {
    print_row(rows[r]);
    if (r == 0) {
      std::size_t total = 0;
      for (std::size_t w : widths)
        total += w;
      total += widths.empty() ? 0 : 2 * (widths.size() - 1);
      out << std::string(total, '-') << '\n';
    }
  }
}

// ---- data files ------------------------------------------------------------------------

namespace {

[[noreturn]] void FileError(const std::string& name, const std::string& problem) {
  throw std::runtime_error(name + ": " + problem);
}

// Opens a named data file, telling apart the ways a path can fail to be one.
std::ifstream OpenDataFile(const std::string& path) {
  namespace fs = std::filesystem;
  std::error_code ec;
  const fs::file_status st = fs::status(path, ec);
  if (!fs::exists(st)) FileError(path, "file not found");
  if (fs::is_directory(st)) FileError(path, "is a directory, not a data file");
  std::ifstream in(path, std::ios::binary);
  if (!in) FileError(path, std::string("cannot be read: ") + std::strerror(errno));
  if (in.peek() == std::char_traits<char>::eof()) {
    if (in.bad()) FileError(path, "cannot be read");
    FileError(path, "the file is empty");
  }
  return in;
}

}  // namespace

DataFile ReadDataFile(const std::string& path) {
  DataFile data;
  std::int32_t status = 0;
  if (path == "-") {
    data.name = "standard input";
    std::stringstream text;
    text << std::cin.rdbuf();
    if (text.str().empty()) FileError(data.name, "no data (standard input is empty)");
    status = quv::ReadASC(text, data.file, data.report);
  } else {
    data.name = path;
    std::ifstream in = OpenDataFile(path);
    status = quv::ReadASC(in, data.file, data.report);
    if (in.bad()) FileError(path, "reading failed");
  }
  if (status != quv::kAscHeaderOk) FileError(data.name, AscStatusText(status));
  return data;
}

std::string ReadDataText(const std::string& path, std::string& name) {
  std::stringstream text;
  if (path == "-") {
    name = "standard input";
    text << std::cin.rdbuf();
    if (text.str().empty()) FileError(name, "no data (standard input is empty)");
  } else {
    name = path;
    std::ifstream in = OpenDataFile(path);
    text << in.rdbuf();
    if (in.bad()) FileError(path, "reading failed");
  }
  return std::move(text).str();
}

bool WarnSkippedData(const DataFile& data, std::ostream& err) {
  const quv::TASCReadReport& r = data.report;
  const auto where = [&](std::int32_t line) {
    return "quvmath: " + data.name + ":" + std::to_string(line) + ": warning: ";
  };
  for (const auto& [line, items] : r.OddLines) {
    err << where(line) << items << (items == 1 ? " item" : " items") << " where a row has "
        << (data.file.NrCols + (data.file.RowNames ? 1 : 0) + (data.file.RowAttrib ? 1 : 0))
        << "; the values after it may sit in the wrong columns\n";
  }
  if (r.OddLineCount > static_cast<std::int32_t>(r.OddLines.size())) {
    err << "quvmath: " << data.name
        << ": warning: " << r.OddLineCount - static_cast<std::int32_t>(r.OddLines.size())
        << " more lines with another number of items\n";
  }
  const std::int32_t read = data.file.RowsRead();
  const std::string rows = "; " + std::to_string(read) + " of " + std::to_string(data.file.NrRows) +
                           " declared rows read";
  if (r.Stop == quv::ascStopBadItem) {
    err << where(r.StopLine) << "reading stopped at \"" << r.StopItem << "\": " << r.StopReason
        << rows << '\n';
  } else if (r.Stop == quv::ascStopEndOfFile) {
    if (r.ItemsDropped > 0)
      err << where(r.StopLine) << "the file ends inside a row (" << r.ItemsDropped
          << (r.ItemsDropped == 1 ? " item" : " items") << " dropped)" << rows << '\n';
    else
      err << "quvmath: " << data.name << ": warning: the file ends early" << rows << '\n';
  }
  if (r.DataAfterLine > 0) {
    err << where(r.DataAfterLine) << "data after the " << data.file.NrRows
        << " declared rows was not read\n";
  }
  return r.DataSkipped();
}

std::string SampleDataFile(std::string_view name) {
  namespace fs = std::filesystem;
  std::error_code ec;
  const fs::path program = fs::read_symlink("/proc/self/exe", ec);
  if (!ec) {
    const fs::path installed = program.parent_path() / QUV_INSTALLED_DATA_DIR / std::string(name);
    if (fs::is_regular_file(installed, ec)) return installed.lexically_normal().string();
  }
  return std::string(QUV_SAMPLE_DATA_DIR) + "/" + std::string(name);
}

}  // namespace quvmath
