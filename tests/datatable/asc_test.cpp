// The ASC reader and writer shared by the containers, and the base header reader.
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "quv/datatable/datatable.h"

namespace {

std::string DataFile(const std::string& name) {
  return std::string(QUV_TEST_DATA_DIR) + "/" + name;
}
std::string TempFile(const std::string& name) {
  return ::testing::TempDir() + "quv_asc_" + name;
}

std::string Slurp(const std::string& path) {
  std::ifstream f(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(f), std::istreambuf_iterator<char>()};
}

TEST(ReadHeaderOfASC, FieldsFlagsAndStatuses) {
  std::string comment;
  std::int32_t cols = -1, rows = -1;
  bool ra = true, cn = false, rn = true, nv = true;
  ASSERT_EQ(
      quv::ReadHeaderOfASC(DataFile("vector_colnames.asc"), comment, cols, rows, ra, cn, rn, nv),
      quv::kAscHeaderOk);
  EXPECT_EQ(comment, "only the column names flag is set");
  EXPECT_EQ(cols, 1);
  EXPECT_EQ(rows, 3);
  EXPECT_FALSE(ra);
  EXPECT_TRUE(cn);
  EXPECT_FALSE(rn);
  EXPECT_FALSE(nv);

  // The three-word flags line of curve fits: the nominal flag reads false.
  nv = true;
  ASSERT_EQ(quv::ReadHeaderOfASC(DataFile("asc_curvefit.asc"), comment, cols, rows, ra, cn, rn, nv),
            0);
  EXPECT_EQ(cols, 2);
  EXPECT_TRUE(cn);
  EXPECT_FALSE(nv);

  const auto status = [&](const std::string& text) {
    std::istringstream in(text);
    std::int32_t words = 0;
    return quv::ReadHeaderOfASC(in, comment, cols, rows, ra, cn, rn, nv, words);
  };
  EXPECT_EQ(status("c\n0\n1\nFALSE FALSE FALSE FALSE\n"), quv::kAscBadColumnCount);
  EXPECT_EQ(status("c\n1.5\n1\nFALSE FALSE FALSE FALSE\n"), quv::kAscBadColumnCount);
  EXPECT_EQ(status("c\n3000000000\n1\nFALSE FALSE FALSE FALSE\n"), quv::kAscBadColumnCount);
  EXPECT_EQ(status("c\n1\n-1\nFALSE FALSE FALSE FALSE\n"), quv::kAscBadRowCount);
  EXPECT_EQ(status("c\n1\n;5\nFALSE FALSE FALSE FALSE\n"), quv::kAscBadRowCount);
  EXPECT_EQ(status("c\n1\n1\nFALSE FALSE\n"), quv::kAscBadFlags);
  EXPECT_EQ(status("c\n1\n1\n"), quv::kAscHeaderCutShort);
  EXPECT_EQ(status(""), quv::kAscHeaderCutShort);
  EXPECT_EQ(status("c\n+2 ; more\n0\ntrue False TRUE false\n"), 0);  // any letter case
  EXPECT_EQ(cols, 2);
  EXPECT_EQ(rows, 0);
  EXPECT_TRUE(ra);
  EXPECT_FALSE(cn);
  EXPECT_EQ(quv::ReadHeaderOfASC(DataFile("none.asc"), comment, cols, rows, ra, cn, rn, nv),
            quv::kAscFileNotFound);
}

TEST(ASCReader, EveryAnnotationBlock) {
  quv::TASCFile f;
  ASSERT_EQ(quv::ReadASCFile(DataFile("asc_full.asc"), f), 0);
  EXPECT_EQ(f.Comment, "all four annotation blocks");
  EXPECT_EQ(f.NrCols, 3);
  EXPECT_EQ(f.RowsRead(), 4);
  EXPECT_TRUE(f.RowAttrib && f.ColNames && f.RowNames && f.NominalVars && f.NominalFlag);
  EXPECT_EQ(f.ColNameList, (quv::TStrArray{"Temp", "Colour", "Yield; %"}));
  ASSERT_EQ(f.NominalList.size(), 3u);
  EXPECT_EQ(f.NominalList[0].Scale, 3);
  EXPECT_TRUE(f.NominalList[0].IDs.empty());
  EXPECT_EQ(f.NominalList[1].Scale, 1);
  ASSERT_EQ(f.NominalList[1].IDs.size(), 3u);
  EXPECT_EQ(f.NominalList[1].IDs[2], (std::pair<std::int32_t, std::string>{4, "blue"}));
  EXPECT_EQ(f.RowNameList, (quv::TStrArray{"run 1", "run 2", "run; 3", "run 4"}));
  EXPECT_EQ(f.RowAttribList, (quv::TIntArray{2, -1, 0, 7}));
  EXPECT_EQ(f.Value(1, 1), 21.5);
  EXPECT_EQ(f.Value(3, 3), -1.5e-3);
  EXPECT_EQ(f.Value(2, 3), 4.0);
  EXPECT_EQ(f.Value(4, 1), 0.0);  // outside the table
  EXPECT_EQ(f.Value(1, 5), 0.0);

  quv::TASCFile narrow;
  EXPECT_EQ(quv::ReadASCFile(DataFile("asc_full.asc"), narrow, 2), quv::kAscTooManyColumns);
  EXPECT_EQ(quv::ReadASCFile(DataFile("asc_bad_nominal.asc"), narrow), quv::kAscBadAnnotation);
}

TEST(ASCReader, CurveFitFileAndPartialRows) {
  quv::TASCFile f;
  ASSERT_EQ(quv::ReadASCFile(DataFile("asc_curvefit.asc"), f), 0);
  EXPECT_FALSE(f.NominalFlag);
  EXPECT_EQ(f.ColNameList, (quv::TStrArray{"x", "y"}));
  EXPECT_EQ(f.RowsRead(), 3);
  EXPECT_EQ(f.Value(2, 3), 6.1);

  // A row cut in the middle is dropped with everything after it.
  std::istringstream in("c\n2\n5\nFALSE FALSE TRUE FALSE\n\"a\" 1 2\n\"b\" 3\n\"c\" 5 6\n");
  ASSERT_EQ(quv::ReadASC(in, f), 0);
  EXPECT_EQ(f.NrRows, 5);
  EXPECT_EQ(f.RowsRead(), 1);
  EXPECT_EQ(f.RowNameList, (quv::TStrArray{"a"}));
  // Rows spread over several lines and more values than declared.
  std::istringstream spread("c\n2\n2\nFALSE FALSE FALSE FALSE\n1\n2 3\n4 5 6 7\n");
  ASSERT_EQ(quv::ReadASC(spread, f), 0);
  EXPECT_EQ(f.Values, (quv::TDoubleArray{1, 2, 3, 4}));
}

TEST(ASCReader, EveryCutOfAFileIsHandled) {
  // A file cut at any byte gives a status or fewer complete rows, never more.
  const std::string full = Slurp(DataFile("asc_full.asc"));
  const std::size_t headerEnd = full.find("\"Temp\"");
  for (std::size_t cut = 0; cut < full.size(); ++cut) {
    std::istringstream in(full.substr(0, cut));
    quv::TASCFile f;
    const std::int32_t status = quv::ReadASC(in, f);
    if (cut < headerEnd) {
      EXPECT_LT(status, 0) << cut;
      continue;
    }
    if (status != 0) {
      EXPECT_EQ(status, quv::kAscBadAnnotation) << cut;
      continue;
    }
    EXPECT_LE(f.RowsRead(), 4) << cut;
    EXPECT_EQ(f.RowNameList.size(), static_cast<std::size_t>(f.RowsRead()));
    EXPECT_EQ(f.RowAttribList.size(), static_cast<std::size_t>(f.RowsRead()));
  }
}

TEST(ASCWriter, RoundTripOfEveryBlock) {
  quv::TASCFile f;
  ASSERT_EQ(quv::ReadASCFile(DataFile("asc_full.asc"), f), 0);
  const std::string path = TempFile("full.asc");
  quv::TASCNumberFormat format;
  format.Decimals = 5;
  quv::WriteASCFile(path, f, format);
  const std::string text = Slurp(path);
  EXPECT_NE(text.find("TRUE TRUE TRUE TRUE\t;row attributes, column names, row names, "
                      "nominal variables\r\n\"Temp\" \"Colour\" \"Yield; %\"\r\n3\r\n"
                      "1 0 \"red\" 1 \"green\" 4 \"blue\"\r\n4\r\n\"run 1\" 2     21.50000"),
            std::string::npos);
  for (std::size_t i = text.find('\n'); i != std::string::npos; i = text.find('\n', i + 1))
    EXPECT_EQ(text[i - 1], '\r');
  quv::TASCFile back;
  ASSERT_EQ(quv::ReadASCFile(path, back), 0);
  EXPECT_EQ(back.ColNameList, f.ColNameList);
  EXPECT_EQ(back.NominalList, f.NominalList);
  EXPECT_EQ(back.RowNameList, f.RowNameList);
  EXPECT_EQ(back.RowAttribList, f.RowAttribList);
  EXPECT_EQ(back.Values, f.Values);

  quv::TASCFile fit;
  ASSERT_EQ(quv::ReadASCFile(DataFile("asc_curvefit.asc"), fit), 0);
  std::ostringstream out;
  format.Decimals = 1;
  format.Width = 0;
  quv::WriteASC(out, fit, format);
  EXPECT_EQ(out.str(), Slurp(DataFile("asc_curvefit.asc")));  // the golden three-word file

  quv::TASCFile bad = f;
  bad.RowNameList.pop_back();
  try {
    quv::WriteASC(out, bad, format);
    FAIL();
  } catch (const quv::EQUVDataTableError& e) {
    EXPECT_STREQ(e.what(), "WriteASC: the number of row names does not match the header");
  }
  EXPECT_THROW(quv::WriteASCFile(TempFile("no/dir/x.asc"), f, format), std::ios_base::failure);
}

TEST(ASCWriter, CommentLine) {
  EXPECT_EQ(quv::ASCCommentLine("", "Exported by QUV TMatrix component: ", "m.asc"),
            "Exported by QUV TMatrix component: m.asc");
  EXPECT_EQ(quv::ASCCommentLine("a\nb\n", "X", "f"), "a b ");
}

}  // namespace

// What the reader reports beyond the rows it returns: where and why it stopped, and the lines
// that do not hold one row each.
TEST(ASCReader, ReportsWhereAndWhyReadingStopped) {
  using Lines = std::vector<std::pair<std::int32_t, std::int32_t>>;
  struct Case {
    const char* text;
    std::int32_t rows;
    quv::TASCStop stop;
    std::int32_t stopLine;
    const char* item;
    const char* reason;
    std::int32_t dropped;
    Lines odd;
    std::int32_t after;
  };
  const std::string head2 = "c\n2\n4\nFALSE FALSE FALSE FALSE\n";
  const std::string names = "c\n2\n3\nFALSE FALSE TRUE FALSE\n";
  const char* nan = "not a number";
  const char* range = "the number is beyond the range of double precision";
  const Case cases[] = {
      {"1 2\n3 4\n5 6\n7 8\n", 4, quv::ascStopComplete, 0, "", "", 0, {}, 0},
      {"1 2\n3 4\nNA 6\n7 8\n", 2, quv::ascStopBadItem, 7, "NA", nan, 0, {}, 0},
      {"1 2\n3 1e400\n", 1, quv::ascStopBadItem, 6, "1e400", range, 1, {}, 0},
      {"1 2 ; ok\n\n3 1e-330\n", 1, quv::ascStopBadItem, 7, "1e-330", range, 1, {}, 0},
      {"1 2\n1D3 4\n", 1, quv::ascStopBadItem, 6, "1D3", nan, 0, {}, 0},
      // A missing value shifts the rest: the short line is named, the last row is cut off.
      {"1 2\n3\n5 6\n7 8\n", 3, quv::ascStopEndOfFile, 8, "", "", 1, {{6, 1}}, 0},
      {"1 2\n3 4\n", 2, quv::ascStopEndOfFile, 0, "", "", 0, {}, 0},
      {"1 2\n3 4 5\n6 7\n8 9\n", 4, quv::ascStopComplete, 0, "", "", 0, {{6, 3}}, 8},
      {"1 2\n3 4\n5 6\n7 8\n9 10\n", 4, quv::ascStopComplete, 0, "", "", 0, {}, 9},
  };
  for (const Case& c : cases) {
    std::istringstream in(head2 + c.text);
    quv::TASCFile f;
    quv::TASCReadReport r;
    ASSERT_EQ(quv::ReadASC(in, f, r), 0) << c.text;
    EXPECT_EQ(f.RowsRead(), c.rows) << c.text;
    EXPECT_EQ(r.Stop, c.stop) << c.text;
    EXPECT_EQ(r.StopLine, c.stopLine) << c.text;
    EXPECT_EQ(r.StopItem, c.item) << c.text;
    EXPECT_EQ(r.StopReason, c.reason) << c.text;
    EXPECT_EQ(r.ItemsDropped, c.dropped) << c.text;
    EXPECT_EQ(r.OddLines, c.odd) << c.text;
    EXPECT_EQ(r.OddLineCount, static_cast<std::int32_t>(c.odd.size())) << c.text;
    EXPECT_EQ(r.DataAfterLine, c.after) << c.text;
    EXPECT_EQ(r.DataSkipped(), c.stop != quv::ascStopComplete || c.after || !c.odd.empty());
  }

  // Row names: a missing name and a name without its values are told apart.
  std::istringstream noName(names + "\"a\" 1 2\nb 3 4\n");
  quv::TASCFile f;
  quv::TASCReadReport r;
  ASSERT_EQ(quv::ReadASC(noName, f, r), 0);
  EXPECT_EQ(r.Stop, quv::ascStopBadItem);
  EXPECT_EQ(r.StopLine, 6);
  EXPECT_EQ(r.StopItem, "b");
  EXPECT_EQ(r.StopReason, "a row name in double quotes was expected");
  std::istringstream cut(names + "\"a; x\" 1 2\n\"b\" \"c\" 5 6\n");
  ASSERT_EQ(quv::ReadASC(cut, f, r), 0);
  EXPECT_EQ(r.StopItem, "\"c\"");
  EXPECT_EQ(r.ItemsDropped, 1);
  EXPECT_EQ(r.OddLineCount, 0);  // the quoted ";" is no remark

  // Annotation blocks are skipped in the line count, which starts at the top of the file.
  quv::TASCFile full;
  ASSERT_EQ(quv::ReadASCFile(DataFile("asc_full.asc"), full, r), 0);
  EXPECT_FALSE(r.DataSkipped());
  ASSERT_EQ(quv::ReadASCFile(DataFile("vector_bad_data.asc"), full, r), 0);
  EXPECT_EQ(r.Stop, quv::ascStopBadItem);

  // Only the first lines are listed; the count goes on.
  std::string many = "c\n1\n500\nFALSE FALSE FALSE FALSE\n";
  for (int i = 0; i < 250; ++i)
    many += "1 2\n";
  std::istringstream manyIn(many);
  ASSERT_EQ(quv::ReadASC(manyIn, f, r), 0);
  EXPECT_EQ(r.OddLines.size(), quv::kAscMaxOddLines);
  EXPECT_EQ(r.OddLineCount, 250);
  EXPECT_EQ(r.OddLines.front(), (std::pair<std::int32_t, std::int32_t>{5, 2}));
  EXPECT_EQ(r.Stop, quv::ascStopComplete);
}
