// quvmath eval: values from the command line, a computed column over a data file, and the
// library's messages for bad expressions.
#include <gtest/gtest.h>

#include <string>

#include "quvmath_run.h"

namespace {

using quvmath::test::Cell;
using quvmath::test::Quvmath;

TEST(QuvmathEval, ValuesFromTheCommandLine) {
  const auto run = Quvmath("eval '2^3^2 - sqrt(x) * y' x=16 y=-0.5");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(Cell(run.out, "x", "value"), "16");
  EXPECT_EQ(Cell(run.out, "y", "value"), "-0.5");
  EXPECT_EQ(Cell(run.out, "result", "value"), "514");
  EXPECT_EQ(Cell(Quvmath("eval -- '-x^2' x=3").out, "result", "value"), "-9");
  EXPECT_EQ(Cell(Quvmath("eval --precision 4 'pi'").out, "result", "value"), "3.142");
  EXPECT_EQ(Cell(Quvmath("eval '1/0 + 0*x' x=1").out, "result", "value"), "inf");
}

TEST(QuvmathEval, ErrorsCarryTheLibraryMessage) {
  struct Case {
    const char* args;
    int status;
    const char* err;
  };
  const Case cases[] = {
      {"eval '1 +'", 1, "quvmath eval: unexpected end of expression at position 4\n"},
      {"eval 'x + y' x=1", 1, "quvmath eval: Evaluate: no value for variable \"y\"\n"},
      {"eval 'x' x=1 q=2", 1, "quvmath eval: SetVar: unknown variable \"q\"\n"},
      {"eval --sample 'Temperature_C + nope'", 1,
       "quvmath eval: unknown name \"nope\" at position 17\n"},
      {"eval 'x' x", 2,
       "quvmath eval: expected NAME=VALUE, got \"x\"\nRun 'quvmath eval --help' for usage.\n"},
      {"eval", 2, "quvmath eval: no expression given\nRun 'quvmath eval --help' for usage.\n"},
  };
  for (const Case& c : cases) {
    const auto run = Quvmath(c.args);
    EXPECT_EQ(run.status, c.status) << c.args;
    EXPECT_EQ(run.err, c.err) << c.args;
    EXPECT_EQ(run.out, "") << c.args;
  }
}

TEST(QuvmathEval, ColumnComputedOverADataFile) {
  const std::string data =
      "two columns\n2\n3\nFALSE TRUE FALSE FALSE\n\"a\" \"b\"\n1 10\n2 20\n3.5 -1\n";
  const auto run = Quvmath("eval --name s --table - 'a + c2 / 10'", data);
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(Cell(run.out, "1", "s"), "2");
  EXPECT_EQ(Cell(run.out, "2", "s"), "4");
  EXPECT_EQ(Cell(run.out, "3.5", "s"), "3.4");
  EXPECT_EQ(Cell(run.out, "3.5", "b"), "-1");

  // Skipped data is named by line and fails unless --lenient.
  const std::string cut = "c\n1\n3\nFALSE FALSE FALSE FALSE\n1\nNA\n3\n";
  const auto strict = Quvmath("eval --table - 'c1 * 2'", cut);
  EXPECT_EQ(strict.status, 1);
  EXPECT_EQ(Cell(strict.out, "1", "value"), "2");
  EXPECT_NE(strict.err.find("standard input:6: warning"), std::string::npos) << strict.err;
  EXPECT_EQ(Quvmath("eval --lenient --table - 'c1 * 2'", cut).status, 0);

  const auto sample = Quvmath("eval --sample 'Temperature_C * 9/5 + 32'");
  EXPECT_EQ(sample.status, 0);
  EXPECT_EQ(Cell(sample.out, "11.67", "value"), "53.006");
}

}  // namespace
