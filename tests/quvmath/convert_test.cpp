// quvmath convert: every form into every other and back, bit-exact where the form allows,
// and a clear message with exit status 1 for a bad file.
#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "quv/matrix/matrix.h"
#include "quvmath_run.h"

namespace {

using quvmath::test::DataFile;
using quvmath::test::Quvmath;

std::string Temp(const std::string& name) {
  return quvmath::test::TempPath("convert_" + name);
}

TEST(QuvmathConvert, ChainOfFormsKeepsEveryDouble) {
  quv::TMatrix m;
  m.Resize(3, 2);
  m.FillRandomGauss(0.0, 1.0);
  m.SetVal(1, 1, -0.0);
  m.SetVal(2, 2, 5e-324);
  m.SaveAsXMLFile(Temp("a.xml"), "id1");
  const auto toBin = Quvmath("convert " + Temp("a.xml") + " " + Temp("b.bin"));
  EXPECT_EQ(toBin.status, 0) << toBin.err;
  EXPECT_NE(toBin.out.find("XML"), std::string::npos);
  EXPECT_EQ(Quvmath("convert " + Temp("b.bin") + " " + Temp("c.qmat")).status, 0);
  EXPECT_EQ(Quvmath("convert " + Temp("c.qmat") + " " + Temp("d.XML")).status, 0);
  quv::TMatrix back;
  EXPECT_EQ(back.LoadFromXMLFile(Temp("d.XML"), ""), quv::kMatFileOk);
  EXPECT_EQ(back.CRCofData(), m.CRCofData());
  const auto toAsc = Quvmath("convert --decimals 3 " + Temp("d.XML") + " " + Temp("e.asc"));
  EXPECT_EQ(toAsc.status, 0) << toAsc.err;
  quv::TMatrix asc;
  std::string comment;
  EXPECT_EQ(asc.ImportASC(Temp("e.asc"), comment), 0);
  EXPECT_NEAR(asc.GetVal(3, 2), m.GetVal(3, 2), 5e-4);
}

TEST(QuvmathConvert, BadFilesAndNamesFailClearly) {
  const auto cut =
      Quvmath("convert " + DataFile("malformed/matrix_cut_in_cell.xml") + " " + Temp("x.bin"));
  EXPECT_EQ(cut.status, 1);
  EXPECT_NE(cut.err.find("the document ends before </matrix>"), std::string::npos) << cut.err;
  EXPECT_EQ(Quvmath("convert " + Temp("missing.bin") + " " + Temp("x.xml")).status, 1);
  const auto ext = Quvmath("convert " + Temp("a.xml") + " " + Temp("x.csv"));
  EXPECT_EQ(ext.status, 2);
  EXPECT_NE(ext.err.find("cannot tell the form"), std::string::npos);
  // Without IN the bundled sample is converted.
  const auto sample = Quvmath("convert " + Temp("sample.xml"));
  EXPECT_EQ(sample.status, 0) << sample.err;
}

}  // namespace
