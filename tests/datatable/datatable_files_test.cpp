// TDataTable files: ASC and CSV round trips, malformed input refused with the table unchanged.
#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>

#include "common/raised_message.h"
#include "quv/datatable/datatable.h"

namespace {

using quv::TDataTable;

std::string DataFile(const std::string& name) {
  return std::string(QUV_TEST_DATA_DIR) + "/" + name;
}
std::string TempFile(const std::string& name) {
  return ::testing::TempDir() + "quv_datatable_" + name;
}
std::string Slurp(const std::string& path) {
  std::ifstream f(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(f), std::istreambuf_iterator<char>()};
}

// A table that uses every item the files can carry: names, row attributes, a nominal column,
// an ordinal column with a gap in its slots, empty cells.
void FillSample(TDataTable& t) {
  t.Resize(4, 3);
  t.SetComment("sample table");
  const char* colNames[] = {"Temp", "Colour", "Grade; %", "Yield"};
  for (int c = 1; c <= 4; ++c)
    t.SetColName(c, colNames[c - 1]);
  for (int r = 1; r <= 3; ++r) {
    t.SetRowName(r, "run " + std::to_string(r));
    t.SetRowAttrib(r, r * 3 - 5);
    t.SetElem(1, r, 20.25 + r);
    t.SetElem(4, r, -0.125 * r);
  }
  t.SetElemNominal(2, 1, "red");
  t.SetMScaleType(2, quv::stNominal);
  t.SetElemNominal(2, 2, "green");
  t.SetElemNominal(2, 3, "red");
  t.SetMScaleType(3, quv::stOrdinal);
  t.SetElemNominal(3, 1, "low");
  t.SetElemNominal(3, 2, "high");
  t.SetElemNominal(3, 3, "low");
  t.SetMScaleType(4, quv::stRatio);
  t.SetIsEmpty(4, 2, true);
}

// Everything a file keeps: values of number cells, emptiness, identifiers, names, attributes.
void ExpectSameContent(const TDataTable& a, const TDataTable& b, bool scales) {
  ASSERT_EQ(a.NrOfColumns(), b.NrOfColumns());
  ASSERT_EQ(a.NrOfRows(), b.NrOfRows());
  for (int c = 1; c <= a.NrOfColumns(); ++c) {
    EXPECT_EQ(a.GetColName(c), b.GetColName(c));
    if (scales) {
      EXPECT_EQ(a.GetMScaleType(c), b.GetMScaleType(c)) << c;
    }
    for (int r = 1; r <= a.NrOfRows(); ++r) {
      EXPECT_EQ(a.GetIsEmpty(c, r), b.GetIsEmpty(c, r)) << c << "," << r;
      EXPECT_EQ(a.GetElemNominal(c, r), b.GetElemNominal(c, r)) << c << "," << r;
      if (a.GetIsNumber(c, r)) {
        EXPECT_EQ(a.GetElem(c, r), b.GetElem(c, r)) << c << "," << r;
      }
    }
  }
  for (int r = 1; r <= a.NrOfRows(); ++r)
    EXPECT_EQ(a.GetRowName(r), b.GetRowName(r));
}

// A reader that refuses its input must leave a filled table as it was, without events.
template <class Read>
void ExpectRefused(Read read, std::int32_t status) {
  TDataTable t, before;
  FillSample(t);
  before.Assign(t);
  int events = 0;
  t.OnChange = [&](quv::TComponent*) { ++events; };
  t.OnResize = [&](quv::TComponent*, int, int, int, int) { ++events; };
  EXPECT_EQ(read(t), status);
  EXPECT_EQ(events, 0);
  ExpectSameContent(before, t, true);
  EXPECT_EQ(t.Comment(), "sample table");
}

TEST(DataTableASC, RoundTripKeepsNamesAttributesAndNominalColumns) {
  TDataTable a, b;
  FillSample(a);
  a.SetRowName(2, "run \"2\"");
  const std::string path = TempFile("roundtrip.asc");
  a.ExportAsASC(path, 6);
  std::vector<std::string> events;
  b.OnChange = [&](quv::TComponent*) { events.push_back("change"); };
  b.OnResize = [&](quv::TComponent*, int oc, int orr, int nc, int nr) {
    events.push_back(std::to_string(oc) + std::to_string(orr) + std::to_string(nc) +
                     std::to_string(nr));
  };
  ASSERT_EQ(b.ImportASC(path), 0);
  EXPECT_EQ(events, (std::vector<std::string>{"change", "1143"}));
  // Quotes inside names are written as single quotes: the format has no escape.
  EXPECT_EQ(b.GetRowName(2), "run '2'");
  b.SetRowName(2, a.GetRowName(2));
  ExpectSameContent(a, b, true);
  EXPECT_EQ(b.Comment(), "sample table");
  for (int r = 1; r <= 3; ++r)
    EXPECT_EQ(b.GetRowAttrib(r), a.GetRowAttrib(r));
  EXPECT_EQ(b.GetNominalID(3, 1), "high");
}

TEST(DataTableASC, WrittenLayout) {
  TDataTable t;
  t.Resize(2, 2);
  t.SetElem(1, 1, 1.5);
  t.SetElem(2, 1, -2.0);
  t.SetElem(1, 2, 3.25);
  t.SetIsEmpty(2, 2, true);
  const std::string path = TempFile("layout.asc");
  t.ExportAsASC(path, 2);
  // Without names, attributes or scales no annotation block is written; an empty cell is NAN.
  EXPECT_EQ(Slurp(path),
            "Exported by QUV TDataTable component: " + path +
                "\r\n2\t;nr. of columns\r\n2\t;nr. of rows\r\n"
                "FALSE FALSE FALSE FALSE\t;row attributes, column names, row names, nominal "
                "variables\r\n"
                "        1.50        -2.00\r\n        3.25          NAN\r\n");
  TDataTable u;
  ASSERT_EQ(u.ImportASC(path), 0);
  EXPECT_TRUE(u.GetIsEmpty(2, 2));
  EXPECT_EQ(u.GetElem(2, 2), 0.0);
  EXPECT_EQ(u.GetElem(1, 2), 3.25);

  t.SetComment("two\nlines");
  std::ostringstream out;
  t.ExportAsASC(out, 1);
  EXPECT_EQ(out.str().substr(0, 11), "two lines\r\n");
}

TEST(DataTableASC, ReadsTheSharedSampleFile) {
  TDataTable t;
  ASSERT_EQ(t.ImportASC(DataFile("asc_full.asc")), 0);
  EXPECT_EQ(t.NrOfColumns(), 3);
  EXPECT_EQ(t.NrOfRows(), 4);
  EXPECT_EQ(t.GetColName(3), "Yield; %");
  EXPECT_EQ(t.GetRowName(3), "run; 3");
  EXPECT_EQ(t.GetRowAttrib(2), -1);
  EXPECT_EQ(t.GetMScaleType(1), quv::stInterval);
  EXPECT_EQ(t.GetMScaleType(2), quv::stNominal);
  EXPECT_EQ(t.GetElemNominal(2, 3), "blue");
  EXPECT_EQ(t.GetElem(3, 3), -1.5e-3);
}

TEST(DataTableASC, MalformedFilesLeaveTheTableAsItWas) {
  const struct {
    const char* file;
    std::int32_t status;
  } cases[] = {{"datatable_bad_long_colname.asc", quv::kDTNameTooLong},
               {"datatable_bad_long_rowname.asc", quv::kDTNameTooLong},
               {"datatable_bad_slot.asc", quv::kDTBadNominal},
               {"datatable_bad_long_id.asc", quv::kDTBadNominal},
               {"datatable_bad_dup_slot.asc", quv::kDTBadNominal},
               {"datatable_bad_scale.asc", quv::kDTBadNominal},
               {"datatable_bad_no_data.asc", quv::kAscNoData},
               {"asc_bad_flags.asc", quv::kAscBadFlags},
               {"asc_cut_header.asc", quv::kAscHeaderCutShort},
               {"no_such_file.asc", quv::kAscFileNotFound}};
  for (const auto& c : cases) {
    ExpectRefused([&](TDataTable& t) { return t.ImportASC(DataFile(c.file)); }, c.status);
  }
}

TEST(DataTableASC, AnAbsurdRowCountGivesTheRowsPresent) {
  TDataTable t;
  ASSERT_EQ(t.ImportASC(DataFile("datatable_huge_rows.asc")), 0);
  EXPECT_EQ(t.NrOfColumns(), 2);
  EXPECT_EQ(t.NrOfRows(), 1);
  EXPECT_EQ(t.GetElem(2, 1), 2.0);
}

TEST(DataTableCSV, RoundTripWithNamesStatesAndIdentifiers) {
  TDataTable a;
  FillSample(a);
  a.SetElem(1, 3, 0.1 + 0.2);  // needs all 17 digits
  for (const char sep : {',', ';', '\t'}) {
    for (const bool decimalComma : {false, true}) {
      if (sep == ',' && decimalComma) continue;
      quv::TCSVFormat f;
      f.Separator = sep;
      f.DecimalComma = decimalComma;
      f.RowNames = true;
      std::stringstream io;
      a.ExportCSV(io, f);
      TDataTable b;
      quv::TCSVReport report;
      ASSERT_EQ(b.ImportCSV(io, f, report), 0) << io.str();
      // The ordinal column comes back nominal: a CSV file has no scales.
      ExpectSameContent(a, b, false);
      EXPECT_EQ(b.GetMScaleType(2), quv::stNominal);
      EXPECT_EQ(b.GetMScaleType(3), quv::stNominal);
      EXPECT_EQ(report.InvalidCells, 0);
      EXPECT_EQ(report.RaggedRecords, 0);
    }
  }
}

TEST(DataTableCSV, ExportedText) {
  TDataTable t;
  FillSample(t);
  for (int r = 1; r <= 3; ++r)
    t.SetRowName(r, "run \"" + std::to_string(r) + "\"");
  t.SetElem(1, 3, 0.1 + 0.2);  // written with all the digits it needs
  quv::TCSVFormat f;
  f.RowNames = true;
  std::ostringstream out;
  t.OnExportText = [](quv::TComponent*, int col, int row, std::string& text) {
    if (col == 0 && row == 0) text = "run";
  };
  t.ExportCSV(out, f);
  EXPECT_EQ(out.str(),
            "run,Temp,Colour,Grade; %,Yield\r\n"
            "\"run \"\"1\"\"\",21.25,red,low,-0.125\r\n"
            "\"run \"\"2\"\"\",22.25,green,high,\r\n"
            "\"run \"\"3\"\"\",0.30000000000000004,red,low,-0.375\r\n");
  f.DecimalComma = true;
  EXPECT_EQ(quv::test::RaisedMessage<quv::EQUVDataTableError>([&] { t.ExportCSV(out, f); }),
            "ExportCSV: invalid format");
}

TEST(DataTableCSV, ReadsWhatUsersWrite) {
  const std::string text =
      "id; weight ;colour;note\n"
      "a;1,5;Red;x\n"
      "\n"
      "b; 2,25 ;RED;\"multi\nline; \"\"quoted\"\"\"\n"
      "c;NA;blue;7\n"
      "d;;green\n"
      "e;3e2;red;y;extra\r\n";
  quv::TCSVFormat f;
  f.Separator = ';';
  f.DecimalComma = true;
  f.RowNames = true;
  std::istringstream in(text);
  TDataTable t;
  quv::TCSVReport report;
  ASSERT_EQ(t.ImportCSV(in, f, report), 0);
  EXPECT_EQ(t.NrOfColumns(), 4);
  EXPECT_EQ(t.NrOfRows(), 5);
  EXPECT_EQ(t.GetColName(1), "weight");
  EXPECT_EQ(t.GetColName(4), "");
  EXPECT_EQ(t.GetRowName(5), "e");
  const double weights[] = {1.5, 2.25, 0.0, 0.0, 300.0};
  for (int r = 1; r <= 5; ++r)
    EXPECT_EQ(t.GetElem(1, r), weights[r - 1]);
  EXPECT_TRUE(t.GetIsEmpty(1, 3));  // NA
  EXPECT_TRUE(t.GetIsEmpty(1, 4));  // empty field
  // Colour: texts only, so nominal; "RED" is the identifier "Red".
  EXPECT_EQ(t.GetMScaleType(2), quv::stNominal);
  EXPECT_EQ(t.GetElemNominal(2, 2), "Red");
  EXPECT_EQ(t.GetElemNominal(2, 3), "blue");
  EXPECT_EQ(t.CountNominalIDs(2), 3);
  // Note: texts and a number; the texts are invalid cells, the number stays.
  EXPECT_EQ(t.GetMScaleType(3), quv::stUnknown);
  EXPECT_EQ(t.GetElem(3, 3), 7.0);
  EXPECT_EQ(t.GetCellState(3, 1), quv::kCellInvalid);
  EXPECT_EQ(t.GetCellState(3, 2), quv::kCellInvalid);
  EXPECT_TRUE(t.GetIsEmpty(3, 4));  // missing field of a short record
  EXPECT_EQ(t.GetCellState(3, 5), quv::kCellInvalid);
  EXPECT_EQ(report.InvalidCells, 3);
  EXPECT_EQ(report.FirstInvalidLine, 2);
  EXPECT_EQ(report.FirstInvalidCell, (quv::TCellPos{3, 1}));
  EXPECT_EQ(report.BlankLines, 1);
  // Records of 4 fields (with the row name) against the widest of 5: all but the last.
  EXPECT_EQ(report.RaggedRecords, 4);
  EXPECT_EQ(report.FirstRaggedLine, 2);
  EXPECT_TRUE(t.GetIsEmpty(4, 1));
  EXPECT_EQ(t.GetElemNominal(4, 5), "extra");  // a column of one text is nominal
}

TEST(DataTableCSV, TextsThatDoNotFitTheSlotTableAreInvalid) {
  std::string many = "code\n";
  for (int i = 0; i < quv::kNominalSlots + 1; ++i)
    many += "k" + std::to_string(i) + "\n";
  const std::string longText = "name\nshort\nmuch too long for a slot\n";
  for (const std::string& text : {many, longText}) {
    std::istringstream in(text);
    TDataTable t;
    quv::TCSVReport report;
    ASSERT_EQ(t.ImportCSV(in, quv::TCSVFormat{}, report), 0);
    EXPECT_EQ(t.GetMScaleType(1), quv::stUnknown);
    EXPECT_EQ(report.InvalidCells, t.NrOfRows());
    EXPECT_EQ(t.CountNominalIDs(1), 0);
  }
}

TEST(DataTableCSV, RefusedInputLeavesTheTableAsItWas) {
  quv::TCSVFormat commaTwice;
  commaTwice.DecimalComma = true;
  quv::TCSVFormat quoteSep;
  quoteSep.Separator = '"';
  const std::string longName(51, 'n');
  const struct {
    std::string text;
    quv::TCSVFormat format;
    std::int32_t status;
    std::int32_t line;
  } cases[] = {
      {"a,b\n1,2\n", commaTwice, quv::kDTBadCSVFormat, 0},
      {"a,b\n1,2\n", quoteSep, quv::kDTBadCSVFormat, 0},
      {"a,b\n1,\"2\n3,4\n", {}, quv::kDTUnclosedQuote, 2},
      {"a," + longName + "\n1,2\n", {}, quv::kDTNameTooLong, 1},
      {"a,b\n", {}, quv::kAscNoData, 0},
      {"", {}, quv::kAscNoData, 0},
      {"\n\n", {}, quv::kAscNoData, 0},
  };
  for (const auto& c : cases) {
    ExpectRefused(
        [&](TDataTable& t) {
          std::istringstream in(c.text);
          quv::TCSVReport report;
          const std::int32_t status = t.ImportCSV(in, c.format, report);
          EXPECT_EQ(report.StopLine, c.line) << c.text;
          return status;
        },
        c.status);
  }
  TDataTable t;
  quv::TCSVReport report;
  EXPECT_EQ(t.ImportCSV(DataFile("datatable_bad_unclosed.csv"), {}, report), quv::kDTUnclosedQuote);
  EXPECT_EQ(report.StopLine, 2);
  EXPECT_EQ(t.ImportCSV(DataFile("no_such_file.csv"), {}, report), quv::kAscFileNotFound);
}

TEST(DataTableCSV, FileRoundTripAndWithoutHeader) {
  TDataTable a, b;
  FillSample(a);
  quv::TCSVFormat f;
  f.Header = false;
  const std::string path = TempFile("roundtrip.csv");
  a.ExportCSV(path, f);
  quv::TCSVReport report;
  ASSERT_EQ(b.ImportCSV(path, f, report), 0);
  EXPECT_EQ(b.NrOfRows(), 3);
  EXPECT_EQ(b.GetColName(1), "");
  EXPECT_EQ(b.GetElemNominal(2, 2), "green");
  EXPECT_EQ(b.GetElem(1, 3), 23.25);
}

}  // namespace

namespace {

TEST(DataTableCSV, NaNInAnySpellingIsAMissingValue) {
  std::istringstream in("x\n1\nNaN\nnan\n-nan\ninf\n");
  TDataTable t;
  quv::TCSVReport report;
  ASSERT_EQ(t.ImportCSV(in, quv::TCSVFormat{}, report), 0);
  for (int r = 2; r <= 4; ++r) {
    EXPECT_TRUE(t.GetIsEmpty(1, r)) << r;
    EXPECT_EQ(t.GetElem(1, r), 0.0);
  }
  EXPECT_TRUE(std::isinf(t.GetElem(1, 5)));
  EXPECT_EQ(report.InvalidCells, 0);
}

}  // namespace
