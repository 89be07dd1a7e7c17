#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ostream>

#include "commands.h"
#include "quv/datatable/datatable.h"

namespace quvmath {

bool WantsHelp(const Args& args) {
  return std::any_of(args.begin(), args.end(),
                     [](const std::string& a) { return a == "--help" || a == "-h"; });
}

std::string FormatNumber(double x, int digits) {
  char buf[40];
  std::snprintf(buf, sizeof buf, "%.*g", digits, x);
  return buf;
}

double ParseNumber(const std::string& text) {
  char* end = nullptr;
  const double value = std::strtod(text.c_str(), &end);
  if (text.empty() || end != text.c_str() + text.size()) {
    throw UsageError{"not a number: \"" + text + "\""};
  }
  return value;
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

}  // namespace quvmath
