// Binary stream records, ASC files and binary files of TVector and TIntVector.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include "quv/datatable/datatable.h"
#include "quv/vector/vector.h"

namespace {

using quv::TIntVector;
using quv::TVector;

template <class V>
void Set(V& v, const std::vector<typename V::value_type>& values) {
  v.Resize(static_cast<std::int32_t>(values.size()));
  v.CopyFrom(values, 0, 0, 1);
}

std::string DataFile(const std::string& name) {
  return std::string(QUV_TEST_DATA_DIR) + "/" + name;
}
std::string TempFile(const std::string& name) {
  return ::testing::TempDir() + "quv_vector_" + name;
}

std::string Slurp(const std::string& path) {
  std::ifstream f(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(f), std::istreambuf_iterator<char>()};
}

struct Counter {
  int changes = 0, resizes = 0;
  template <class V>
  void Attach(V& v) {
    v.OnChange = [this](quv::TComponent*) { ++changes; };
    v.OnResize = [this](quv::TComponent*) { ++resizes; };
  }
};

TEST(VectorStream, RecordImageByteByByte) {
  TVector v;
  Set(v, {1.0, 5.0, -2.5, 0.0, 0.1});
  std::ostringstream out(std::ios::binary);
  v.SaveToStream(out, 0, 0);
  const std::string image = out.str();
  ASSERT_EQ(image.size(), 70u);  // First, Last and five elements, 10 bytes each
  // Hand-computed x87 images: 1.0 = 1.0 * 2^0, 5.0 = 1.25 * 2^2, -2.5 = -1.25 * 2^1.
  const unsigned char expected[] = {
      0, 0, 0, 0, 0, 0, 0, 0x80, 0xFF, 0x3F,  // First = 1
      0, 0, 0, 0, 0, 0, 0, 0xA0, 0x01, 0x40,  // Last = 5
      0, 0, 0, 0, 0, 0, 0, 0x80, 0xFF, 0x3F,  // 1.0
      0, 0, 0, 0, 0, 0, 0, 0xA0, 0x01, 0x40,  // 5.0
      0, 0, 0, 0, 0, 0, 0, 0xA0, 0x00, 0xC0,  // -2.5
      0, 0, 0, 0, 0, 0, 0, 0,    0,    0,     // 0.0
  };
  for (std::size_t k = 0; k < sizeof expected; ++k)
    EXPECT_EQ(static_cast<unsigned char>(image[k]), expected[k]) << "byte " << k;

  std::ostringstream part(std::ios::binary);
  v.SaveToStream(part, 4, 2);  // normalised to 2..4
  EXPECT_EQ(part.str().size(), 50u);
  EXPECT_EQ(part.str().substr(20, 30), image.substr(30, 30));
}

TEST(VectorStream, RoundTripAndQuirks) {
  TVector src;
  Set(src, {0.1, -7.25, 3e300, 1e-310, 42.0});
  std::stringstream s(std::ios::in | std::ios::out | std::ios::binary);
  src.SaveToStream(s, 0, 0);
  src.SaveToStream(s, 3, 4);

  TVector dst;
  Counter c;
  c.Attach(dst);
  ASSERT_TRUE(dst.LoadFromStream(s, true));
  EXPECT_EQ(dst.Storage(), src.Storage());  // exact, subnormal included
  EXPECT_EQ(c.changes, 2);                  // Resize, then the load itself
  EXPECT_EQ(c.resizes, 1);

  // Second record holds elements 3..4: resized to Last = 4, elements 1..2 keep their values.
  TVector part;
  Set(part, {9.0});
  ASSERT_TRUE(part.LoadFromStream(s, true));
  EXPECT_EQ(part.Storage(), (std::vector<double>{9.0, 0.0, 3e300, 1e-310}));

  // Without AdjustSize into a shorter vector: false, nothing read, but OnChange fires.
  std::stringstream s2(std::ios::in | std::ios::out | std::ios::binary);
  src.SaveToStream(s2, 0, 0);
  TVector small;
  Set(small, {1.0, 2.0});
  Counter c2;
  c2.Attach(small);
  EXPECT_FALSE(small.LoadFromStream(s2, false));
  EXPECT_EQ(small.Storage(), (std::vector<double>{1.0, 2.0}));
  EXPECT_EQ(c2.changes, 1);
  EXPECT_EQ(c2.resizes, 0);
}

TEST(VectorStream, DamagedRecords) {
  TVector src;
  Set(src, {1, 2, 3, 4});
  std::ostringstream out(std::ios::binary);
  src.SaveToStream(out, 0, 0);
  const std::string image = out.str();

  TVector v;
  Set(v, {5, 5, 5, 5});
  Counter c;
  c.Attach(v);
  std::istringstream empty(std::string{});
  EXPECT_FALSE(v.LoadFromStream(empty, true));  // First cannot be read: no events
  std::istringstream half(image.substr(0, 15));
  EXPECT_FALSE(v.LoadFromStream(half, true));  // Last cannot be read: no events
  EXPECT_EQ(c.changes, 0);

  // Cut inside the element block: the values before the cut are stored, result false.
  std::istringstream cut(image.substr(0, 45));
  EXPECT_FALSE(v.LoadFromStream(cut, false));
  EXPECT_EQ(v.Storage(), (std::vector<double>{1, 2, 5, 5}));
  EXPECT_EQ(c.changes, 1);

  // A record claiming two billion elements must not allocate them.
  std::ostringstream bogus(std::ios::binary);
  quv::WriteExtendedToStream(bogus, 1);
  quv::WriteExtendedToStream(bogus, 2.0e9L);
  quv::WriteExtendedToStream(bogus, 3.5L);
  std::istringstream in(bogus.str());
  EXPECT_FALSE(v.LoadFromStream(in, true));
  EXPECT_EQ(v.NrOfElem(), 4);
  // Bounds outside the Integer range or not numbers are refused without events.
  std::ostringstream nan(std::ios::binary);
  quv::WriteExtendedToStream(nan, NAN);
  quv::WriteExtendedToStream(nan, 1e12L);
  std::istringstream nanIn(nan.str());
  EXPECT_FALSE(v.LoadFromStream(nanIn, true));
  EXPECT_EQ(c.changes, 1);
}

TEST(IntVectorStream, ValuesTravelAsExtendedNumbers) {
  TIntVector src;
  Set(src, {-2147483647 - 1, 0, 17, 2147483647});
  std::stringstream s(std::ios::in | std::ios::out | std::ios::binary);
  src.SaveToStream(s, 0, 0);
  EXPECT_EQ(s.str().size(), 60u);
  TIntVector dst;
  ASSERT_TRUE(dst.LoadFromStream(s, true));
  EXPECT_EQ(dst.Storage(), src.Storage());

  // A double record read by an integer vector is rounded to the nearest.
  TVector real;
  Set(real, {2.5, -0.4, 7.6});
  std::stringstream r(std::ios::in | std::ios::out | std::ios::binary);
  real.SaveToStream(r, 0, 0);
  ASSERT_TRUE(dst.LoadFromStream(r, true));
  EXPECT_EQ(dst.Storage(), (quv::TIntArray{3, 0, 8}));
}

TEST(VectorFile, StoreAndLoadRoundTrip) {
  TVector v;
  Set(v, {3.25, -1e-9, 6.0});
  const std::string path = TempFile("store.bin");
  v.StoreOnFile(path);
  EXPECT_EQ(Slurp(path).size(), 8u + 10u * 5u);
  EXPECT_EQ(Slurp(path).substr(0, 8), std::string("QUVVECD\x01"));
  TVector w;
  Counter c;
  c.Attach(w);
  ASSERT_TRUE(w.LoadFromFile(path));
  EXPECT_EQ(w.Storage(), v.Storage());
  EXPECT_EQ(c.changes, 1);
  EXPECT_EQ(c.resizes, 1);

  TVector keep;
  Set(keep, {0, 0, 0, 0, 9});
  ASSERT_TRUE(keep.LoadFromFile(path, false));
  EXPECT_EQ(keep.Storage(), (std::vector<double>{3.25, -1e-9, 6.0, 0, 9}));

  TIntVector iv;  // another element type: refused
  EXPECT_FALSE(iv.LoadFromFile(path));
  EXPECT_FALSE(w.LoadFromFile(TempFile("missing.bin")));
  const std::string image = Slurp(path);
  std::ofstream(TempFile("cut.bin"), std::ios::binary) << image.substr(0, image.size() - 3);
  EXPECT_FALSE(w.LoadFromFile(TempFile("cut.bin")));
  EXPECT_EQ(w.Storage(), v.Storage());
  EXPECT_THROW(v.StoreOnFile(TempFile("no/such/dir/x.bin")), std::ios_base::failure);
}

TEST(VectorASC, ExportMatchesGoldenFiles) {
  TVector v;
  Set(v, {1.5, -2.25, 1000.0});
  const std::string path = TempFile("export.asc");
  v.ExportAsASC(path, 3, "golden vector, exported with 3 decimals");
  EXPECT_EQ(Slurp(path), Slurp(DataFile("vector_export.asc")));

  TIntVector iv;
  Set(iv, {7, -3, 12, 2147483647});
  iv.ExportAsASC(path, "golden integers");
  EXPECT_EQ(Slurp(path), Slurp(DataFile("vector_int_export.asc")));
}

TEST(VectorASC, HeaderLineAndCommentRules) {
  TVector v;
  Set(v, {1, 2, 3});
  const std::string path = TempFile("comment.asc");
  v.ExportAsASC(path, 2, "");
  std::istringstream lines(Slurp(path));
  std::string line;
  int count = 0;
  std::vector<std::string> all;
  while (std::getline(lines, line)) {
    ASSERT_FALSE(line.empty());
    EXPECT_EQ(line.back(), '\r');  // CR LF line ends
    all.push_back(line.substr(0, line.size() - 1));
    ++count;
  }
  EXPECT_EQ(count, 7);
  EXPECT_EQ(all[0], "Exported by QUV TVector component: " + path);
  EXPECT_EQ(all[2], "3\t;nr. of rows");
  EXPECT_EQ(all[4], "        1.00");

  TIntVector iv;
  iv.ExportAsASC(path, "");
  EXPECT_EQ(Slurp(path).substr(0, 50),
            ("Exported by QUV TIntVector component:" + path).substr(0, 50));
  v.ExportAsASC(path, 2, "line one\nline two\n");
  EXPECT_EQ(Slurp(path).substr(0, 20), "line one line two \r\n");
  std::string comment;
  ASSERT_EQ(v.ImportASC(path, comment), 0);
  EXPECT_EQ(comment, "line one line two ");
}

TEST(VectorASC, ImportStatusesAndShortening) {
  TVector v;
  Set(v, {8, 8});
  Counter c;
  c.Attach(v);
  std::string comment = "untouched";
  EXPECT_EQ(v.ImportASC(DataFile("no_such_file.asc"), comment), quv::kAscFileNotFound);
  EXPECT_EQ(v.ImportASC(DataFile("vector_two_columns.asc"), comment), quv::kAscTooManyColumns);
  EXPECT_EQ(v.ImportASC(DataFile("asc_bad_flags.asc"), comment), quv::kAscBadFlags);
  EXPECT_EQ(v.ImportASC(DataFile("asc_bad_columns.asc"), comment), quv::kAscBadColumnCount);
  EXPECT_EQ(v.ImportASC(DataFile("asc_cut_header.asc"), comment), quv::kAscHeaderCutShort);
  EXPECT_EQ(v.ImportASC(QUV_TEST_DATA_DIR, comment), quv::kAscFileNotFound);  // a folder
  EXPECT_EQ(v.Storage(), (std::vector<double>{8, 8}));
  EXPECT_EQ(comment, "untouched");
  EXPECT_EQ(c.changes + c.resizes, 0);

  ASSERT_EQ(v.ImportASC(DataFile("vector_short.asc"), comment), 0);
  EXPECT_EQ(comment, "declares ten rows, holds seven");
  EXPECT_EQ(v.Storage(), (std::vector<double>{1.25, -2.5, 300, 4, 5.5, 6.5, 7}));
  EXPECT_EQ(c.changes, 1);
  EXPECT_EQ(c.resizes, 1);

  ASSERT_EQ(v.ImportASC(DataFile("vector_colnames.asc"), comment), 0);
  EXPECT_EQ(v.Storage(), (std::vector<double>{70.5, 82.25, 64}));
  ASSERT_EQ(v.ImportASC(DataFile("vector_bad_data.asc"), comment), 0);
  EXPECT_EQ(v.Storage(), (std::vector<double>{10, 20}));
  ASSERT_EQ(v.ImportASC(DataFile("vector_huge_rows.asc"), comment), 0);
  EXPECT_EQ(v.Storage(), (std::vector<double>{1, 2, 3}));

  // LF-only line ends are read as well.
  const std::string lf = TempFile("lf.asc");
  std::ofstream(lf, std::ios::binary)
      << "lf only\n1\t;nr. of columns\n2\t;nr. of rows\nfalse false false false\n4.5\n5.5\n";
  ASSERT_EQ(v.ImportASC(lf, comment), 0);
  EXPECT_EQ(v.Storage(), (std::vector<double>{4.5, 5.5}));
  std::ofstream(lf, std::ios::binary) << "no numbers\n1\n3\nFALSE FALSE FALSE FALSE\nabc\n";
  EXPECT_EQ(v.ImportASC(lf, comment), quv::kAscNoData);
  EXPECT_EQ(v.Storage(), (std::vector<double>{4.5, 5.5}));
}

TEST(VectorASC, RoundTripsThroughBothClasses) {
  TVector v;
  Set(v, {0.125, -3.5, 1e6, 2.0 / 3.0});
  const std::string path = TempFile("round.asc");
  v.ExportAsASC(path, 6, "round trip");
  TVector back;
  std::string comment;
  ASSERT_EQ(back.ImportASC(path, comment), 0);
  ASSERT_EQ(back.NrOfElem(), 4);
  for (std::int32_t i = 1; i <= 3; ++i)
    EXPECT_EQ(back.GetVal(i), v.GetVal(i));
  EXPECT_NEAR(back.GetVal(4), 2.0 / 3.0, 5e-7);

  TIntVector iv;
  Set(iv, {-5, 0, 123456789});
  iv.ExportAsASC(path, "ints");
  TIntVector iback;
  ASSERT_EQ(iback.ImportASC(path, comment), 0);
  EXPECT_EQ(iback.Storage(), iv.Storage());
  // A real-valued file read by an integer vector is rounded.
  ASSERT_EQ(iback.ImportASC(DataFile("vector_short.asc"), comment), 0);
  EXPECT_EQ(iback.Storage(), (quv::TIntArray{1, -3, 300, 4, 6, 7, 7}));
}

TEST(VectorCRC, EightRegistersOfBytes) {
  TVector v;
  Set(v, {1.0, -2.0});
  const std::string crc = v.CRCofData();
  ASSERT_EQ(crc.size(), 64u);
  // Register k sees byte k of each element; compute each register as a plain CRC-32.
  double values[2] = {1.0, -2.0};
  std::string expected;
  for (int k = 0; k < 8; ++k) {
    unsigned char bytes[2];
    for (int e = 0; e < 2; ++e)
      bytes[e] = reinterpret_cast<unsigned char*>(&values[e])[k];
    char hex[9];
    std::snprintf(hex, sizeof hex, "%08X", quv::CRC32OfBytes(bytes, 2));
    expected += hex;
  }
  EXPECT_EQ(crc, expected);
  v.SetVal(2, -2.0000000001);
  EXPECT_NE(v.CRCofData(), crc);
  TIntVector iv;
  EXPECT_EQ(iv.CRCofData().substr(32), std::string(32, '0'));  // bytes 4..7 do not exist
}

}  // namespace
