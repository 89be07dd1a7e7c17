#include <gtest/gtest.h>

#include <bit>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <limits>
#include <sstream>
#include <string>

#include "matrix/matrix_test_util.h"

namespace quv::test {
namespace {

namespace fs = std::filesystem;

const std::string kDataDir = QUV_TEST_DATA_DIR;

// A file name in a fresh temporary folder, removed with the fixture.
class MatrixFiles : public ::testing::Test {
 protected:
  void SetUp() override {
    dir_ =
        fs::temp_directory_path() /
        ("quv_matrix_files_" + std::to_string(::testing::UnitTest::GetInstance()->random_seed()) +
         "_" + ::testing::UnitTest::GetInstance()->current_test_info()->name());
    fs::create_directories(dir_);
  }
  void TearDown() override { fs::remove_all(dir_); }
  std::string Path(const std::string& name) const { return (dir_ / name).string(); }
  void WriteText(const std::string& name, const std::string& text) const {
    std::ofstream(Path(name), std::ios::binary) << text;
  }
  fs::path dir_;
};

// Values every form must carry unchanged.
TRows SpecialRows() {
  constexpr double inf = std::numeric_limits<double>::infinity();
  return {{0.0, -0.0, std::numeric_limits<double>::denorm_min()},
          {uc_MaxDouble, -uc_MaxDouble, 0.1},
          {inf, -inf, -std::numeric_limits<double>::denorm_min() * 3},
          {1.0 / 3.0, -2.5e-310, 123456.789}};
}

void ExpectBitEqual(const TMatrix& a, const TMatrix& b) {
  ASSERT_EQ(Dims(a), Dims(b));
  for (int c = 1; c <= a.NrOfColumns(); ++c) {
    for (int r = 1; r <= a.NrOfRows(); ++r) {
      EXPECT_EQ(std::bit_cast<std::uint64_t>(a.GetVal(c, r)),
                std::bit_cast<std::uint64_t>(b.GetVal(c, r)))
          << c << "," << r;
    }
  }
}

TEST_F(MatrixFiles, XmlRoundTripIsBitExactAndCarriesTheIdentifier) {
  TMatrix m, back;
  SetRows(m, SpecialRows());
  m.SetVal(2, 2, std::numeric_limits<double>::quiet_NaN());
  m.SaveAsXMLFile(Path("m.xml"), "spectra & co");
  EventLog log(back);
  EXPECT_EQ(back.LoadFromXMLFile(Path("m.xml"), ""), kMatFileOk);
  EXPECT_EQ(back.DataID(), "spectra & co");
  EXPECT_EQ(log.Counts(), std::pair(1, 1));  // one operation, one set of events
  EXPECT_TRUE(std::isnan(back.GetVal(2, 2)));
  m.SetVal(2, 2, 0.0);
  back.SetVal(2, 2, 0.0);
  ExpectBitEqual(m, back);

  std::ostringstream text;
  TMatrix small;
  SetRows(small, {{1.5, -0.0}});
  small.WriteToXMLStream(text, false, "");
  EXPECT_EQ(text.str(),
            "<matrix>\r\n  <numcols>2</numcols>\r\n  <numrows>1</numrows>\r\n"
            "  <cell ix=\"1\" iy=\"1\">1.5</cell>\r\n  <cell ix=\"2\" iy=\"1\">-0</cell>\r\n"
            "</matrix>\r\n");
}

TEST_F(MatrixFiles, XmlDataIDSelectsAMatrixOfSeveralInOneStream) {
  TMatrix a, b, r;
  SetRows(a, {{1, 2}});
  SetRows(b, {{3}, {4}});
  std::stringstream both;
  a.WriteToOpenXMLFile(both, true, "first");
  b.WriteToOpenXMLFile(both, false, "second");
  const std::string doc = both.str();
  std::istringstream in1(doc), in2(doc), in3(doc);
  EXPECT_EQ(r.ReadFromXMLStream(in1, "second"), kMatFileOk);
  EXPECT_EQ(RowsOf(r), (TRows{{3}, {4}}));
  EXPECT_EQ(r.ReadFromOpenXMLFile(in2, ""), kMatFileOk);  // empty: the first one
  EXPECT_EQ(RowsOf(r), (TRows{{1, 2}}));
  EXPECT_EQ(r.DataID(), "first");
  EXPECT_EQ(r.ReadFromXMLStream(in2, ""), kMatFileOk);  // the stream goes on behind it
  EXPECT_EQ(r.DataID(), "second");
  EXPECT_EQ(r.ReadFromXMLStream(in3, "third"), kMatXmlNoMatrix);
  EXPECT_EQ(r.DataID(), "second");
}

TEST_F(MatrixFiles, HandWrittenXmlAsTheFormatDescribesIt) {
  // Cells in any order, a comment, single quotes, LF line ends; ix = 0 and iy beyond the
  // announced rows are dropped; cells not listed are 0 in a freshly sized matrix.
  const std::string doc =
      "<?xml version='1.0'?>\n<!-- by hand -->\n<matrix>\n<numrows> 2 </numrows>\n"
      "<numcols>3</numcols>\n<cell iy='2' ix='3'>-1.5E2</cell>\n<cell ix=\"0\" iy=\"1\">9</cell>\n"
      "<cell ix=\"1\" iy=\"3\">9</cell>\n<cell ix=\"2\" iy=\"1\">&#52;2</cell>\n"
      "<numplanes>7</numplanes>\n</matrix>\n";
  TMatrix m;
  std::istringstream in(doc);
  EXPECT_EQ(m.ReadFromXMLStream(in), kMatFileOk);
  EXPECT_EQ(RowsOf(m), (TRows{{0, 42, 0}, {0, 0, -150}}));
}

TEST_F(MatrixFiles, ProcessXmlTagResults) {
  TMatrix m;
  EXPECT_EQ(m.ProcessXmlTag(TMatXmlTag::xmlMatBegin, "", ""), 0);
  EXPECT_EQ(m.ProcessXmlTag(TMatXmlTag::xmlMatNumCols, "", "2"), 0);
  EXPECT_EQ(m.ProcessXmlTag(TMatXmlTag::xmlMatNumRows, "", "2"), 0);
  EXPECT_EQ(Dims(m), std::pair(1, 1));  // sized at the first cell only
  EXPECT_EQ(m.ProcessXmlTag(TMatXmlTag::xmlMatCell, "ix=\"2\" iy=\"2\"", "5"), 0);
  EXPECT_EQ(Dims(m), std::pair(2, 2));
  EXPECT_EQ(m.GetVal(2, 2), 5.0);
  EXPECT_EQ(m.ProcessXmlTag(TMatXmlTag::xmlMatCell, "ix=\"a\" iy=\"2\"", "5"), -1);
  EXPECT_EQ(m.ProcessXmlTag(TMatXmlTag::xmlMatCell, "ix=\"1\" iy=\"1\"", "five"), -1);
  EXPECT_EQ(m.ProcessXmlTag(TMatXmlTag::xmlInvalid, "", ""), -1);
  EXPECT_EQ(m.ProcessXmlTag(TMatXmlTag::xmlMatEnd, "", ""), 1);
  EXPECT_EQ(MatXmlTagOf("numtimeslots"), TMatXmlTag::xmlMatNumTimeSlots);
  EXPECT_EQ(MatXmlTagOf("row"), TMatXmlTag::xmlInvalid);
}

// Every file of the malformed corpus leaves the matrix as it was and says why.
TEST_F(MatrixFiles, MalformedXmlCorpusLeavesTheMatrixUnchanged) {
  struct Case {
    const char* file;
    std::int32_t status;
  };
  const Case cases[] = {
      {"matrix_cut_in_cell.xml", kMatXmlCutShort},    {"matrix_cut_in_tag.xml", kMatXmlCutShort},
      {"matrix_no_end.xml", kMatXmlCutShort},         {"matrix_empty.xml", kMatXmlNoMatrix},
      {"matrix_unknown_tag.xml", kMatXmlInvalidTag},  {"matrix_bad_index.xml", kMatXmlInvalidTag},
      {"matrix_bad_value.xml", kMatXmlInvalidTag},    {"matrix_bad_numcols.xml", kMatXmlInvalidTag},
      {"matrix_zero_size.xml", kMatXmlBadSize},       {"matrix_negative_size.xml", kMatXmlBadSize},
      {"matrix_absurd_size.xml", kMatXmlBadSize},     {"matrix_no_size.xml", kMatXmlBadSize},
      {"matrix_broken_markup.xml", kMatXmlMalformed}, {"does_not_exist.xml", kMatFileNotFound},
  };
  for (const Case& c : cases) {
    TMatrix m;
    m.SetDataID("kept");
    SetRows(m, {{1, 2}, {3, 4}});
    EventLog log(m);
    EXPECT_EQ(m.LoadFromXMLFile(kDataDir + "/malformed/" + c.file, ""), c.status) << c.file;
    EXPECT_EQ(RowsOf(m), (TRows{{1, 2}, {3, 4}})) << c.file;
    EXPECT_EQ(m.DataID(), "kept") << c.file;
    EXPECT_EQ(log.Counts(), std::pair(0, 0)) << c.file;
  }
}

TEST_F(MatrixFiles, BinaryFileRoundTripAndHeader) {
  TMatrix m, back;
  SetRows(m, SpecialRows());
  m.SetDataID("binary id");
  m.SaveBinary(Path("m.bin"));
  EXPECT_EQ(fs::file_size(Path("m.bin")), 4096u + 8u * 12u);
  EXPECT_TRUE(back.LoadBinary(Path("m.bin")));
  ExpectBitEqual(m, back);
  EXPECT_EQ(back.DataID(), "binary id");

  std::int32_t d1 = 0, d2 = 0, kind = 0;
  std::string id;
  EXPECT_TRUE(TMatrix::ReadBinaryHeader(Path("m.bin"), d1, d2, id, kind));
  EXPECT_EQ(std::tuple(d1, d2, id, kind), std::tuple(3, 4, std::string("binary id"), 1));
  EXPECT_FALSE(TMatrix::ReadBinaryHeader(Path("none.bin"), d1, d2, id, kind));
  WriteText("short.bin", std::string(100, '\0'));
  EXPECT_THROW(TMatrix::ReadBinaryHeader(Path("short.bin"), d1, d2, id, kind),
               std::ios_base::failure);
}

TEST_F(MatrixFiles, BinaryHeaderWrittenByHand) {
  // A header built byte by byte: 2 columns, 1 row, id "ab", kind 1, then two doubles.
  std::string bytes(4096, '\0');
  bytes[0] = 2;
  bytes[4] = 1;
  bytes[16] = 2;
  bytes[17] = 'a';
  bytes[18] = 'b';
  bytes[272] = 1;
  const double values[2] = {1.25, -8.0};
  bytes.append(reinterpret_cast<const char*>(values), sizeof values);
  WriteText("hand.bin", bytes);
  TMatrix m;
  EXPECT_TRUE(m.LoadBinary(Path("hand.bin")));
  EXPECT_EQ(RowsOf(m), (TRows{{1.25, -8.0}}));

  // The same with 1 at offset 8: a three-dimensional file, refused.
  bytes[8] = 1;
  WriteText("three.bin", bytes);
  std::int32_t d1 = 0, d2 = 0, kind = 0;
  std::string id;
  EXPECT_FALSE(TMatrix::ReadBinaryHeader(Path("three.bin"), d1, d2, id, kind));
  EXPECT_EQ(std::pair(d1, d2), std::pair(2, 1));
}

TEST_F(MatrixFiles, BadBinaryFilesLeaveTheMatrixUnchanged) {
  TMatrix good;
  SetRows(good, {{1, 2}, {3, 4}});
  good.SaveBinary(Path("good.bin"));
  std::ifstream in(Path("good.bin"), std::ios::binary);
  const std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  auto patched = [&](std::size_t offset, std::int32_t value) {
    std::string b = bytes;
    std::memcpy(b.data() + offset, &value, 4);
    return b;
  };
  const std::pair<const char*, std::string> files[] = {
      {"empty", ""},
      {"header_only_short", bytes.substr(0, 2000)},
      {"cut_data", bytes.substr(0, bytes.size() - 3)},
      {"extra_data", bytes + "x"},
      {"zero_cols", patched(0, 0)},
      {"negative_rows", patched(4, -2)},
      {"absurd", patched(0, 1000000000)},
      {"kind_0", patched(272, 0)},
      {"dim4_set", patched(12, 1)},
  };
  for (const auto& [name, content] : files) {
    WriteText(name, content);
    TMatrix m;
    SetRows(m, {{9}});
    EventLog log(m);
    EXPECT_FALSE(m.LoadBinary(Path(name))) << name;
    EXPECT_EQ(RowsOf(m), (TRows{{9}})) << name;
    EXPECT_EQ(log.Counts(), std::pair(0, 0)) << name;
  }
}

TEST_F(MatrixFiles, StreamRecordAndStreamFile) {
  TMatrix m, back;
  SetRows(m, SpecialRows());
  std::stringstream s;
  m.SaveToStream(s, 0, 0, 0, 0);
  EXPECT_EQ(s.str().size(), 10u * (4 + 12));
  EXPECT_TRUE(back.LoadFromStream(s, true));
  ExpectBitEqual(m, back);

  // A part of the matrix: bounds (2, 3)-(3, 4) land in place; AdjustSize false needs room.
  std::stringstream part;
  m.SaveToStream(part, 3, 4, 2, 3);  // made valid and ordered
  TMatrix target;
  SetRows(target, {{1, 1, 1}, {1, 1, 1}, {1, 1, 1}});
  const std::string record = part.str();
  std::istringstream tooSmall(record);
  EXPECT_FALSE(target.LoadFromStream(tooSmall, false));  // needs 4 rows
  EXPECT_EQ(RowsOf(target), (TRows{{1, 1, 1}, {1, 1, 1}, {1, 1, 1}}));
  std::istringstream fits(record);
  EXPECT_TRUE(target.LoadFromStream(fits, true));
  EXPECT_EQ(Dims(target), std::pair(3, 4));
  EXPECT_EQ(target.GetVal(1, 1), 1.0);
  EXPECT_EQ(target.GetVal(3, 4), m.GetVal(3, 4));
  EXPECT_EQ(target.GetVal(2, 3), m.GetVal(2, 3));

  // A record cut anywhere changes nothing.
  for (std::size_t n = 0; n < record.size(); n += 7) {
    std::istringstream cut(record.substr(0, n));
    TMatrix t;
    EXPECT_FALSE(t.LoadFromStream(cut, true)) << n;
    EXPECT_EQ(Dims(t), std::pair(1, 1));
  }

  m.StoreOnFile(0, 0, 0, 0, Path("m.qmat"));
  TMatrix fromFile;
  SetRows(fromFile, {{5, 5, 5, 5}, {5, 5, 5, 5}});
  EXPECT_TRUE(fromFile.LoadFromFile(Path("m.qmat"), true));
  ExpectBitEqual(m, fromFile);
  m.StoreOnFile(2, 2, 2, 2, Path("one.qmat"));
  TMatrix keep, clear;
  SetRows(keep, {{5, 5}, {5, 5}});
  SetRows(clear, {{5, 5}, {5, 5}});
  EXPECT_TRUE(keep.LoadFromFile(Path("one.qmat"), false));
  EXPECT_TRUE(clear.LoadFromFile(Path("one.qmat"), false, true));
  EXPECT_EQ(RowsOf(keep), (TRows{{5, 5}, {5, m.GetVal(2, 2)}}));
  EXPECT_EQ(RowsOf(clear), (TRows{{0, 0}, {0, m.GetVal(2, 2)}}));
  EXPECT_FALSE(clear.LoadFromFile(Path("missing.qmat"), true));
  WriteText("bad.qmat", "QUVVECD\x01 not a matrix");
  EXPECT_FALSE(clear.LoadFromFile(Path("bad.qmat"), true));
}

TEST_F(MatrixFiles, AscRoundTripWithNames) {
  TMatrix m, back;
  SetRows(m, {{1.5, -2.25, 3}, {4, 5, 6.125}});
  m.ExportAsASC(Path("m.asc"), 3, "two\nlines", TStr2DArray{{"a", "b c", "d"}, {"r1", "r2"}});
  std::ifstream in(Path("m.asc"), std::ios::binary);
  std::string line;
  std::getline(in, line);
  EXPECT_EQ(line, "two lines\r");
  std::string comment;
  TStr2DArray names;
  EXPECT_EQ(back.ImportASC(Path("m.asc"), comment, names), 0);
  EXPECT_EQ(comment, "two lines");
  EXPECT_EQ(RowsOf(back), RowsOf(m));
  EXPECT_EQ(names, (TStr2DArray{{"a", "b c", "d"}, {"r1", "r2"}}));

  m.ExportAsASC(Path("plain.asc"), 2, "");
  std::ifstream plain(Path("plain.asc"), std::ios::binary);
  std::getline(plain, line);
  EXPECT_EQ(line, "Exported by QUV TMatrix component: " + Path("plain.asc") + "\r");
  m.SetName("M");
  EXPECT_EQ(RaisedMessage<EQUVMatrixError>(
                [&] { m.ExportAsASC(Path("x.asc"), 2, "", TStr2DArray{{"a"}}); }),
            "Component \"M\": names do not match the matrix");

  TMatrix kept;
  SetRows(kept, {{7}});
  EXPECT_EQ(kept.ImportASC(Path("missing.asc"), comment), kAscFileNotFound);
  EXPECT_EQ(kept.ImportASC(kDataDir + "/asc_bad_flags.asc", comment), kAscBadFlags);
  EXPECT_EQ(RowsOf(kept), (TRows{{7}}));
}

}  // namespace
}  // namespace quv::test
