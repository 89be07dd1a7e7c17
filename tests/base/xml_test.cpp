#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <sstream>
#include <string>
#include <vector>

#include "quv/base/xml.h"

namespace quv::test {
namespace {

// One handed-over element, flattened: name|attributes|content.
struct Recorder {
  std::vector<std::string> tags;
  std::string stopAt;  // the handler returns kXmlTagDone at this name
  std::string refuse;  // and kXmlTagInvalid at this one

  TXmlReadResult Read(const std::string& text) {
    std::istringstream in(text);
    return ReadXmlTags(in, [this](const TXmlTag& t) {
      tags.push_back(std::string(t.Name) + "|" + std::string(t.Attributes) + "|" +
                     std::string(t.Content));
      if (t.Name == stopAt) return kXmlTagDone;
      if (t.Name == refuse) return kXmlTagInvalid;
      return kXmlTagGoOn;
    });
  }
};

TEST(XmlReader, HandsOverLeavesContainersAndClosingTags) {
  Recorder rec;
  rec.stopAt = "/matrix";
  const std::string doc =
      "<?xml version=\"1.0\"?>\r\n<!-- a comment with <tags> -->\r\n"
      "<!DOCTYPE m [ <!ENTITY x \"y\"> ]>\n"
      "<matrix id='a'>\r\n  <numcols>3</numcols>\n"
      "  <cell iy = \"2\"\tix='1'> 1.5 </cell>\n"
      "  <cell ix=\"2\" iy=\"1\"/>\n"
      "  <text>a &amp; b &lt;c&gt; &quot;&apos; &#65;&#x42; &#xE9; &bogus; & x</text>\n"
      "  <mixed>1<!-- c -->2<![CDATA[<3>]]></mixed>\n"
      "</matrix>\ntrailing";
  EXPECT_EQ(rec.Read(doc), xrDone);
  const std::vector<std::string> expected = {
      "matrix|id='a'|",
      "numcols||3",
      "cell|iy = \"2\"\tix='1'| 1.5 ",
      "cell|ix=\"2\" iy=\"1\"|",
      "text||a & b <c> \"' AB \xC3\xA9 &bogus; & x",
      "mixed||12<3>",
      "/matrix||",
  };
  EXPECT_EQ(rec.tags, expected);
}

TEST(XmlReader, StopsWhereTheHandlerSaysAndLeavesTheStreamThere) {
  std::istringstream in("<a>1</a><b>2</b><c>3</c>");
  std::vector<std::string> seen;
  const auto handler = [&](const TXmlTag& t) {
    seen.emplace_back(t.Name);
    return t.Name == "b" ? kXmlTagDone : kXmlTagGoOn;
  };
  EXPECT_EQ(ReadXmlTags(in, handler), xrDone);
  EXPECT_EQ(seen, (std::vector<std::string>{"a", "b"}));
  std::string rest;
  std::getline(in, rest);
  EXPECT_EQ(rest, "<c>3</c>");

  Recorder rec;
  rec.refuse = "b";
  EXPECT_EQ(rec.Read("<a>1</a><b>2</b><c>3</c>"), xrInvalidTag);
  EXPECT_EQ(rec.tags.size(), 2u);
}

TEST(XmlReader, EveryCutOfADocumentIsReportedAndNothingHangs) {
  const std::string doc =
      "<?xml version=\"1.0\"?><!-- c --><m a=\"x>y\"><![CDATA[z]]><v>1 &amp; 2</v></m>";
  for (std::size_t n = 0; n < doc.size(); ++n) {
    Recorder rec;
    rec.stopAt = "/m";
    EXPECT_EQ(rec.Read(doc.substr(0, n)), xrCutShort) << n;
  }
  Recorder whole;
  whole.stopAt = "/m";
  EXPECT_EQ(whole.Read(doc), xrDone);
  EXPECT_EQ(whole.tags.front(), "m|a=\"x>y\"|z");
}

TEST(XmlReader, MalformedMarkup) {
  for (const char* text :
       {"< a>", "<>", "</a b>", "</a/>", "<a <b>", "<!-x -->", "<![CDADA[x]]>"}) {
    Recorder rec;
    EXPECT_EQ(rec.Read(text), xrMalformed) << text;
  }
}

TEST(XmlValues, AttributesInAnyOrderAndQuoting) {
  const std::string attrs = "iy='7' ix=\"12\" name=\"a &amp; &quot;b&quot;\" xix=\"9\"";
  std::int32_t ix = 0, iy = 0;
  std::string name;
  EXPECT_TRUE(XmlIntAttribute(attrs, "ix", ix));
  EXPECT_TRUE(XmlIntAttribute(attrs, "iy", iy));
  EXPECT_EQ(std::pair(ix, iy), std::pair(12, 7));
  EXPECT_TRUE(XmlAttribute(attrs, "name", name));
  EXPECT_EQ(name, "a & \"b\"");
  EXPECT_FALSE(XmlAttribute(attrs, "x", name));
  EXPECT_FALSE(XmlIntAttribute(attrs, "name", ix));
  EXPECT_EQ(ix, 12);
  for (const char* bad : {"ix=12", "ix=\"12", "ix \"12\"", "=\"1\" ix=\"2\""})
    EXPECT_FALSE(XmlAttribute(bad, "ix", name)) << bad;
}

TEST(XmlValues, IntegerAndDoubleTexts) {
  struct Case {
    const char* text;
    bool ok;
    std::int32_t value;
  };
  for (const Case& c : {Case{" 42 ", true, 42},
                        {"+7", true, 7},
                        {"-2147483648", true, INT32_MIN},
                        {"2147483648", false, 0},
                        {"1.5", false, 0},
                        {"", false, 0},
                        {"12abc", false, 0},
                        {"+-1", false, 0},
                        {"\r\n3\t", true, 3}}) {
    std::int32_t v = 0;
    EXPECT_EQ(XmlParseInt(c.text, v), c.ok) << c.text;
    if (c.ok) {
      EXPECT_EQ(v, c.value) << c.text;
    }
  }
  double d = 0.0;
  EXPECT_TRUE(XmlParseDouble(" -1.25E+2 ", d));
  EXPECT_EQ(d, -125.0);
  EXPECT_TRUE(XmlParseDouble("1e999", d));
  EXPECT_EQ(d, std::numeric_limits<double>::infinity());
  EXPECT_TRUE(XmlParseDouble("-inf", d));
  EXPECT_EQ(d, -std::numeric_limits<double>::infinity());
  EXPECT_TRUE(XmlParseDouble("nan", d));
  EXPECT_TRUE(std::isnan(d));
  for (const char* bad : {"", "abc", "1.0x", "--1", "1 2"})
    EXPECT_FALSE(XmlParseDouble(bad, d)) << bad;
}

TEST(XmlValues, NumbersReadBackBitExact) {
  const double values[] = {0.0,
                           -0.0,
                           0.1,
                           1.0 / 3.0,
                           -2.5e-300,
                           std::numeric_limits<double>::denorm_min(),
                           -std::numeric_limits<double>::denorm_min(),
                           std::numeric_limits<double>::min(),
                           std::numeric_limits<double>::max(),
                           -std::numeric_limits<double>::max(),
                           std::numeric_limits<double>::infinity(),
                           -std::numeric_limits<double>::infinity(),
                           123456789012345678.0};
  for (const double x : values) {
    double back = 1.0;
    ASSERT_TRUE(XmlParseDouble(TXmlNumber(x).View(), back)) << XmlNumber(x);
    EXPECT_EQ(std::bit_cast<std::uint64_t>(back), std::bit_cast<std::uint64_t>(x)) << XmlNumber(x);
  }
  EXPECT_EQ(XmlNumber(std::numeric_limits<double>::quiet_NaN()), "NaN");
  EXPECT_EQ(XmlNumber(-0.0), "-0");
  EXPECT_EQ(TXmlNumber(std::int32_t{-17}).View(), "-17");
}

TEST(XmlWriter, WritesWhatTheReaderReadsBack) {
  std::ostringstream out;
  {
    TXmlWriter w(out);
    w.Declaration();
    w.Comment("made by -- a test");
    w.Open("doc", {{"id", "a\"b<c"}});
    w.Element("text", "x & y < z", {{"k", "1"}});
    w.Element("empty", "", {{"ix", TXmlNumber(std::int32_t{3})}}, true);
    w.Close("doc");
  }
  EXPECT_EQ(out.str(),
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n"
            "<!-- made by - - a test -->\r\n"
            "<doc id=\"a&quot;b&lt;c\">\r\n"
            "  <text k=\"1\">x &amp; y &lt; z</text>\r\n"
            "  <empty ix=\"3\"/>\r\n"
            "</doc>\r\n");
  Recorder rec;
  rec.stopAt = "/doc";
  EXPECT_EQ(rec.Read(out.str()), xrDone);
  std::string id;
  ASSERT_EQ(rec.tags.size(), 4u);
  EXPECT_TRUE(XmlAttribute("id=\"a&quot;b&lt;c\"", "id", id));
  EXPECT_EQ(id, "a\"b<c");
  EXPECT_EQ(rec.tags[1], "text|k=\"1\"|x & y < z");
  EXPECT_EQ(XmlEscape("<&>\"'"), "&lt;&amp;&gt;&quot;&apos;");
  EXPECT_EQ(XmlUnescape(XmlEscape("<&>\"'")), "<&>\"'");
}

enum class TTestTag : std::uint8_t { ttA, ttB, ttInvalid };

TEST(XmlValues, TagVocabularyLookup) {
  static constexpr std::array<std::string_view, 3> kTexts = {"a", "/b", "invalidtag"};
  EXPECT_EQ(XmlTagOf("a", kTexts, TTestTag::ttInvalid), TTestTag::ttA);
  EXPECT_EQ(XmlTagOf("/b", kTexts, TTestTag::ttInvalid), TTestTag::ttB);
  EXPECT_EQ(XmlTagOf("B", kTexts, TTestTag::ttInvalid), TTestTag::ttInvalid);
}

}  // namespace
}  // namespace quv::test
