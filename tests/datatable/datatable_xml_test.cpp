// TDataTable XML form: round trips, embedding in another document, refused documents.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <sstream>
#include <string>

#include "quv/datatable/datatable.h"

namespace {

using quv::TDataTable;

// Every item the XML form carries, with values that need all their digits.
void FillAll(TDataTable& t) {
  t.Resize(3, 4);
  t.SetComment("a <comment> & \"quotes\"\nover two lines");
  t.SetColName(1, "x & y");
  t.SetColAttrib(2, 2);
  t.SetRowName(3, " padded ");
  t.SetRowAttrib(4, -7);
  t.SetMScaleType(3, quv::stOrdinal);
  t.SetElemNominal(3, 1, "low");
  t.SetElemNominal(3, 2, "<high>");
  for (int r = 1; r <= 4; ++r) {
    t.SetElem(1, r, 0.1 * r + 1e-300);
    t.SetElem(2, r, -r / 3.0);
  }
  t.SetElem(2, 4, std::numeric_limits<double>::infinity());
  t.SetIsEmpty(1, 2, true);
  t.SetIsImputed(2, 3, true);
  t.SetCellState(1, 4, 200);
}

void ExpectEqualTables(const TDataTable& a, const TDataTable& b) {
  ASSERT_EQ(a.NrOfColumns(), b.NrOfColumns());
  ASSERT_EQ(a.NrOfRows(), b.NrOfRows());
  EXPECT_EQ(a.Comment(), b.Comment());
  for (int c = 1; c <= a.NrOfColumns(); ++c) {
    EXPECT_EQ(a.GetColName(c), b.GetColName(c));
    EXPECT_EQ(a.GetColAttrib(c), b.GetColAttrib(c));
    EXPECT_EQ(a.GetMScaleType(c), b.GetMScaleType(c));
    EXPECT_EQ(a.CountNominalIDs(c), b.CountNominalIDs(c));
    for (int s = 0; s < quv::kNominalSlots; ++s)
      EXPECT_EQ(a.GetNominalID(c, s), b.GetNominalID(c, s));
    for (int r = 1; r <= a.NrOfRows(); ++r) {
      EXPECT_EQ(a.DataMatrix().GetVal(c, r), b.DataMatrix().GetVal(c, r)) << c << "," << r;
      EXPECT_EQ(a.GetCellState(c, r), b.GetCellState(c, r)) << c << "," << r;
    }
  }
  for (int r = 1; r <= a.NrOfRows(); ++r) {
    EXPECT_EQ(a.GetRowName(r), b.GetRowName(r));
    EXPECT_EQ(a.GetRowAttrib(r), b.GetRowAttrib(r));
  }
}

TEST(DataTableXML, RoundTripKeepsEverything) {
  TDataTable a, b;
  FillAll(a);
  std::stringstream io;
  a.WriteToXMLStream(io, "Set & 1");
  std::string id;
  int changes = 0, resizes = 0;
  b.OnChange = [&](quv::TComponent*) { ++changes; };
  b.OnResize = [&](quv::TComponent*, int, int, int, int) { ++resizes; };
  ASSERT_EQ(b.ReadFromXMLStream(io, id), 0) << b.XmlError();
  EXPECT_EQ(id, "Set & 1");
  EXPECT_EQ(b.XmlDataID(), "Set & 1");
  EXPECT_EQ(changes, 1);
  EXPECT_EQ(resizes, 1);
  ExpectEqualTables(a, b);
  EXPECT_EQ(b.GetElemNominal(3, 2), "<high>");

  const std::string path = ::testing::TempDir() + "quv_datatable.xml";
  b.SaveAsXMLFile(path, "second");
  TDataTable c;
  ASSERT_EQ(c.LoadFromXMLFile(path, id), 0);
  EXPECT_EQ(id, "second");
  ExpectEqualTables(a, c);
  EXPECT_EQ(c.LoadFromXMLFile(path + ".missing", id), quv::kAscFileNotFound);
}

TEST(DataTableXML, WrittenLayout) {
  TDataTable t;
  t.Resize(2, 1);
  t.SetColName(2, "b");
  t.SetElem(1, 1, 0.5);
  t.SetIsEmpty(2, 1, true);
  std::ostringstream out;
  quv::TXmlWriter w(out, "\n");
  t.WriteXML(w, "T");
  w.Flush();
  EXPECT_EQ(out.str(),
            "<datatable id=\"T\">\n"
            "  <comment></comment>\n"
            "  <numcols>2</numcols>\n"
            "  <numrows>1</numrows>\n"
            "  <column ix=\"2\" scale=\"0\" attrib=\"0\" name=\"b\"/>\n"
            "  <cell ix=\"1\" iy=\"1\">0.5</cell>\n"
            "  <cell ix=\"2\" iy=\"1\" state=\"2\">0</cell>\n"
            "</datatable>\n");
}

// A host document that embeds the table, as the memory-based learner does.
TEST(DataTableXML, EmbeddedInAnotherDocument) {
  TDataTable a, b;
  FillAll(a);
  std::stringstream io;
  {
    quv::TXmlWriter w(io);
    w.Declaration();
    w.Open("host", {{"vers", "1"}});
    w.Element("name", "outer");
    w.Open("modeldata");
    a.WriteXML(w, "MBLModel");
    w.Close("modeldata");
    w.Element("after", "42");
    w.Close("host");
  }
  bool inTable = false;
  std::string after;
  const auto result = quv::ReadXmlTags(io, [&](const quv::TXmlTag& tag) {
    if (inTable) {
      const std::int32_t r = b.ProcessXmlTag(tag);
      if (r == quv::kXmlTagDone) inTable = false;
      return r == quv::kXmlTagDone ? quv::kXmlTagGoOn : r;
    }
    if (tag.Name == "modeldata") inTable = true;
    if (tag.Name == "after") after = tag.Content;
    return tag.Name == "/host" ? quv::kXmlTagDone : quv::kXmlTagGoOn;
  });
  ASSERT_EQ(result, quv::xrDone) << b.XmlError();
  EXPECT_EQ(b.XmlDataID(), "MBLModel");
  EXPECT_EQ(after, "42");
  ExpectEqualTables(a, b);
}

TEST(DataTableXML, RefusedDocumentsLeaveTheTableAsItWas) {
  const std::string head = "<datatable id=\"x\"><numcols>2</numcols><numrows>1</numrows>";
  const std::string cells = "<cell ix=\"1\" iy=\"1\">1</cell><cell ix=\"2\" iy=\"1\">2</cell>";
  const std::string tail = "</datatable>";
  const struct {
    std::string doc;
    std::int32_t status;
    const char* error;
  } cases[] = {
      {head + cells + tail.substr(0, 5), quv::kDTXmlCutShort, "the document ends before"},
      {head + cells, quv::kDTXmlCutShort, "the document ends before"},
      {"", quv::kDTXmlCutShort, "the document ends before"},
      {"<matrix>" + head, quv::kDTXmlInvalid, "<matrix>: outside a table"},
      {head + "<cell ix=\"3\" iy=\"1\">1</cell>" + tail, quv::kDTXmlInvalid,
       "<cell>: ix outside 1..2"},
      {head + "<cell ix=\"1\" iy=\"1\">one</cell>" + tail, quv::kDTXmlInvalid,
       "<cell>: value is not a number"},
      {head + "<cell ix=\"1\" iy=\"1\">1</cell><cell ix=\"1\" iy=\"1\">1</cell>" + tail,
       quv::kDTXmlInvalid, "</datatable>: cell given twice"},
      {head + "<cell ix=\"1\" iy=\"1\">1</cell>" + tail, quv::kDTXmlInvalid,
       "</datatable>: 1 cells for a table of 2 x 1"},
      {"<datatable><numrows>1</numrows><cell ix=\"1\" iy=\"1\">1</cell>" + tail, quv::kDTXmlInvalid,
       "<cell>: numcols and numrows must come first"},
      {"<datatable><numcols>0</numcols>" + tail, quv::kDTXmlInvalid,
       "<numcols>: size is not a whole number from 1 on"},
      {"<datatable><numcols>2000000000</numcols><numrows>2000000000</numrows>" + cells + tail,
       quv::kDTXmlInvalid, "</datatable>: 2 cells for a table of 2000000000 x 2000000000"},
      {head + "<numcols>2</numcols>" + tail, quv::kDTXmlInvalid, "<numcols>: size given twice"},
      {head + cells + "<numrows>1</numrows>" + tail, quv::kDTXmlInvalid,
       "<numrows>: size given after the cells"},
      {head + "<column ix=\"1\" scale=\"5\"/>" + cells + tail, quv::kDTXmlInvalid,
       "<column>: scale beyond 4"},
      {head + "<column ix=\"1\" name=\"" + std::string(51, 'n') + "\"/>" + tail, quv::kDTXmlInvalid,
       "<column>: name longer than 50 characters"},
      {head + "<row iy=\"2\"/>" + tail, quv::kDTXmlInvalid, "<row>: iy outside 1..1"},
      {head + "<nomid ix=\"1\" slot=\"151\">a</nomid>" + tail, quv::kDTXmlInvalid,
       "<nomid>: slot outside 0..150"},
      {head + "<nomid ix=\"1\" slot=\"0\">abcdefghijk</nomid>" + tail, quv::kDTXmlInvalid,
       "<nomid>: identifier longer than 10 characters"},
      {head + "<cell ix=\"1\" iy=\"1\" state=\"256\">1</cell>" + tail, quv::kDTXmlInvalid,
       "<cell>: state outside 0..255"},
      {head + "<colour/>" + tail, quv::kDTXmlInvalid, "<colour>: unknown tag"},
      {head + "< >" + tail, quv::kDTXmlMalformed, "markup that is not XML"},
  };
  for (const auto& c : cases) {
    TDataTable t, before;
    FillAll(t);
    before.Assign(t);
    int events = 0;
    t.OnChange = [&](quv::TComponent*) { ++events; };
    std::istringstream in(c.doc);
    std::string id = "unchanged";
    EXPECT_EQ(t.ReadFromXMLStream(in, id), c.status) << c.doc;
    EXPECT_EQ(t.XmlError().substr(0, std::string(c.error).size()), c.error) << c.doc;
    EXPECT_EQ(id, "unchanged");
    EXPECT_EQ(events, 0);
    ExpectEqualTables(before, t);
  }
}

}  // namespace
