// quvmath's conventions on the command line: warnings naming the line for every piece of
// skipped data and the exit status that follows, options, files and standard input, and
// failed writes.
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <string>

#include "quvmath_run.h"

namespace {

using quvmath::test::Cell;
using quvmath::test::DataFile;
using quvmath::test::Quvmath;

std::string Quoted(const std::string& path) {
  return "'" + path + "'";
}

TEST(QuvmathData, SkippedDataIsNamedByLineAndFailsUnlessLenient) {
  const std::string na = DataFile("quvmath_stats_na.asc");
  const std::string naWarning = "quvmath: " + na +
                                ":8: warning: reading stopped at \"NA\": not a number; 2 of 5 "
                                "declared rows read\n";
  const auto strict = Quvmath("stats " + Quoted(na));
  EXPECT_EQ(strict.status, 1);
  EXPECT_EQ(strict.err, naWarning + "quvmath stats: " + na +
                            ": data was skipped (see the warnings); --lenient accepts the rows "
                            "read\n");
  EXPECT_EQ(Cell(strict.out, "a", "n"), "2");  // the rows read are still reported
  const auto lenient = Quvmath("stats --lenient " + Quoted(na));
  EXPECT_EQ(lenient.status, 0);
  EXPECT_EQ(lenient.err, naWarning);

  const std::string shifted = DataFile("quvmath_stats_shifted.asc");
  const auto run = Quvmath("stats --lenient " + Quoted(shifted));
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.err, "quvmath: " + shifted +
                         ":7: warning: 1 item where a row has 2; the values after it may sit in "
                         "the wrong columns\n"
                         "quvmath: " +
                         shifted +
                         ":9: warning: the file ends inside a row (1 item dropped); 3 of 4 "
                         "declared rows read\n");
  EXPECT_EQ(Quvmath("stats " + Quoted(shifted)).status, 1);
}

TEST(QuvmathData, ItemsThatAreNoDoubleAreReported) {
  struct Case {
    const char* item;
    const char* reason;
  };
  const Case cases[] = {{"NA", "not a number"},
                        {"1e400", "the number is beyond the range of double precision"},
                        {"1e-330", "the number is beyond the range of double precision"},
                        {"1D3", "not a number"}};
  for (const Case& c : cases) {
    const std::string text =
        std::string("c\n1\n3\nFALSE FALSE FALSE FALSE\n1\n") + c.item + "\n3\n";
    const auto run = Quvmath("stats -", text);
    EXPECT_EQ(run.status, 1) << c.item;
    EXPECT_EQ(run.err.substr(0, run.err.find('\n')),
              std::string("quvmath: standard input:6: warning: reading stopped at \"") + c.item +
                  "\": " + c.reason + "; 1 of 3 declared rows read")
        << c.item;
  }
  // More data than declared.
  const auto extra = Quvmath("stats -", "c\n1\n2\nFALSE FALSE FALSE FALSE\n1\n2\n3\n");
  EXPECT_EQ(extra.status, 1);
  EXPECT_EQ(extra.err.substr(0, extra.err.find('\n')),
            "quvmath: standard input:7: warning: data after the 2 declared rows was not read");
}

TEST(QuvmathFiles, EachFailureHasItsOwnMessage) {
  const std::string empty = quvmath::test::TempPath("empty.asc");
  std::ofstream(empty).close();
  struct Case {
    std::string args;
    std::string input;
    int status;
    std::string err;
  };
  const std::string dir = DataFile("");
  const Case cases[] = {
      {"stats " + Quoted(DataFile("none.asc")), "", 1,
       "quvmath stats: " + DataFile("none.asc") + ": file not found\n"},
      {"stats " + Quoted(dir), "", 1,
       "quvmath stats: " + dir + ": is a directory, not a data file\n"},
      {"stats " + Quoted(empty), "", 1, "quvmath stats: " + empty + ": the file is empty\n"},
      {"stats /proc/self/mem", "", 1, "quvmath stats: /proc/self/mem: cannot be read\n"},
      {"stats -", "", 1, "quvmath stats: standard input: no data (standard input is empty)\n"},
      {"stats -", "c\n2\n", 1,
       "quvmath stats: standard input: the file ends inside its four header lines\n"},
      {"stats -", "c\n1\n2\nFALSE FALSE FALSE FALSE\nx\n", 1,
       "quvmath: standard input:5: warning: reading stopped at \"x\": not a number; 0 of 2 "
       "declared rows read\nquvmath stats: standard input: no complete data row\n"},
      {"stats --frobnicate", "", 2,
       "quvmath stats: unknown option \"--frobnicate\"\nRun 'quvmath stats --help' for usage.\n"},
      {"stats -x data.asc", "", 2,
       "quvmath stats: unknown option \"-x\"\nRun 'quvmath stats --help' for usage.\n"},
      {"stats --precision", "", 2,
       "quvmath stats: option --precision needs a value\nRun 'quvmath stats --help' for "
       "usage.\n"},
      {"stats --precision 2.5", "", 2,
       "quvmath stats: --precision must be a whole number between 1 and 17, not \"2.5\"\nRun "
       "'quvmath stats --help' for usage.\n"},
      {"stats --lenient=yes", "", 2,
       "quvmath stats: option --lenient takes no value\nRun 'quvmath stats --help' for usage.\n"},
  };
  for (const Case& c : cases) {
    const auto run = Quvmath(c.args, c.input);
    EXPECT_EQ(run.status, c.status) << c.args;
    EXPECT_EQ(run.err, c.err) << c.args;
  }
  if (geteuid() != 0) {  // root reads any file
    const std::string locked = quvmath::test::TempPath("locked.asc");
    std::ofstream(locked) << "x\n";
    ASSERT_EQ(chmod(locked.c_str(), 0), 0);
    const auto run = Quvmath("stats " + Quoted(locked));
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.err, "quvmath stats: " + locked + ": cannot be read: Permission denied\n");
  }
}

TEST(QuvmathFiles, StandardInputAndOptionsAfterOperands) {
  const std::string text = quvmath::test::Slurp(DataFile("quvmath_stats_offset.asc"));
  const auto piped = Quvmath("stats - --precision 17", text);
  EXPECT_EQ(piped.status, 0) << piped.err;
  EXPECT_EQ(Cell(piped.out, "offset", "std dev"), "5.4772255750516612");
  EXPECT_EQ(piped.out.substr(0, piped.out.find('\n')), "standard input");
  const auto named =
      Quvmath("stats --precision=17 -- " + Quoted(DataFile("quvmath_stats_offset.asc")));
  EXPECT_EQ(Cell(named.out, "offset", "std dev"), "5.4772255750516612");
}

TEST(QuvmathOutput, AFailedWriteExitsNonZero) {
  const auto full = Quvmath("stats", "", "/dev/full");
  EXPECT_EQ(full.status, 1);
  EXPECT_EQ(full.err, "quvmath stats: writing the output failed\n");
  EXPECT_EQ(Quvmath("stats", "", "/dev/null").status, 0);
}

}  // namespace
