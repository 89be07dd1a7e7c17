// Runs the quvmath program as a user does and captures what it prints and its exit status;
// reads cells of the tables it prints.
#pragma once

#include <sys/wait.h>
#include <unistd.h>

#include <cmath>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace quvmath::test {

struct TRun {
  int status = -1;
  std::string out;
  std::string err;
};

inline std::string DataFile(const std::string& name) {
  return std::string(QUV_TEST_DATA_DIR) + "/" + name;
}

inline std::string Slurp(const std::string& path) {
  std::ifstream f(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(f), std::istreambuf_iterator<char>()};
}

/// A path in the temporary folder that no other test process uses at the same time (several
/// builds may run their suites side by side).
inline std::string TempPath(const std::string& name) {
  return ::testing::TempDir() + "quvmath_" + std::to_string(::getpid()) + "_" + name;
}

/// Runs `quvmath ARGS` through the shell (ARGS is shell text: quote what needs it), with
/// `input` on standard input. stdoutTarget replaces the captured output (e.g. "/dev/full").
inline TRun Quvmath(const std::string& args, const std::string& input = "",
                    const std::string& stdoutTarget = "") {
  const std::string base = TempPath(
      std::string("run_") + ::testing::UnitTest::GetInstance()->current_test_info()->name());
  {
    std::ofstream in(base + ".in", std::ios::binary);
    in << input;
  }
  const std::string out = stdoutTarget.empty() ? base + ".out" : stdoutTarget;
  const std::string command = "'" + std::string(QUVMATH_PROGRAM) + "' " + args + " <'" + base +
                              ".in' >'" + out + "' 2>'" + base + ".err'";
  const int raw = std::system(command.c_str());
  TRun r;
  r.status = WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
  if (stdoutTarget.empty()) r.out = Slurp(base + ".out");
  r.err = Slurp(base + ".err");
  return r;
}

/// Cells of a printed table split at runs of two or more blanks (single blanks stay inside
/// headings such as "std dev").
inline std::vector<std::string> Cells(const std::string& line) {
  std::vector<std::string> cells;
  std::string cell;
  std::size_t blanks = 0;
  for (const char c : line) {
    if (c == ' ') {
      ++blanks;
      continue;
    }
    if (blanks >= 2 && !cell.empty()) {
      cells.push_back(cell);
      cell.clear();
    } else if (blanks == 1 && !cell.empty()) {
      cell += ' ';
    }
    blanks = 0;
    cell += c;
  }
  if (!cell.empty()) cells.push_back(cell);
  return cells;
}

/// The cell in the row whose first cell is `row` and the column headed `heading`, searching
/// every table of the output; "" when there is none.
inline std::string Cell(const std::string& output, const std::string& row,
                        const std::string& heading) {
  std::istringstream in(output);
  std::string line;
  std::vector<std::string> head;
  while (std::getline(in, line)) {
    if (line.find_first_not_of('-') == std::string::npos && !line.empty()) continue;
    const std::vector<std::string> cells = Cells(line);
    if (cells.empty()) {
      head.clear();
      continue;
    }
    if (head.empty()) {
      head = cells;
      continue;
    }
    if (cells.front() != row || cells.size() != head.size()) continue;
    for (std::size_t i = 0; i < head.size(); ++i)
      if (head[i] == heading) return cells[i];
  }
  return "";
}

/// The same as a number (NaN when the cell is missing or not a number).
inline double CellValue(const std::string& output, const std::string& row,
                        const std::string& heading) {
  const std::string text = Cell(output, row, heading);
  char* end = nullptr;
  const double v = std::strtod(text.c_str(), &end);
  return !text.empty() && end == text.c_str() + text.size() ? v : std::nan("");
}

}  // namespace quvmath::test
