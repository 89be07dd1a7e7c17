// Binary stream records, ASC files and binary files of TVector and TIntVector.
#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "quv/datatable/datatable.h"
#include "quv/vector/vector.h"
#include "vector/vector_test_util.h"

namespace quv::test {
namespace {

// A stream record written number by number: First, Last and the elements as extended values
// (their byte images are tested with the base codec).
std::string Record(const std::vector<long double>& numbers) {
  std::ostringstream out(std::ios::binary);
  for (const long double x : numbers)
    WriteExtendedToStream(out, x);
  return out.str();
}

TEST(VectorStream, RecordLayout) {
  TVector v;
  Set(v, {1.0, 5.0, -2.5, 0.0, 0.1});
  std::ostringstream all(std::ios::binary), part(std::ios::binary);
  v.SaveToStream(all, 0, 0);
  v.SaveToStream(part, 4, 2);  // normalised to 2..4
  EXPECT_EQ(all.str(), Record({1, 5, 1.0, 5.0, -2.5, 0.0, 0.1}));
  EXPECT_EQ(part.str(), Record({2, 4, 5.0, -2.5, 0.0}));
  TIntVector iv;
  Set(iv, {-2147483647 - 1, 0, 2147483647});
  std::ostringstream ints(std::ios::binary);
  iv.SaveToStream(ints, 0, 0);
  EXPECT_EQ(ints.str(), Record({1, 3, -2147483648.0L, 0, 2147483647}));
}

TEST(VectorStream, RoundTripAndQuirks) {
  TVector src, dst, part, small;
  Set(src, {0.1, -7.25, 3e300, 1e-310, 42.0});
  std::stringstream s(std::ios::in | std::ios::out | std::ios::binary);
  src.SaveToStream(s, 0, 0);
  src.SaveToStream(s, 3, 4);
  EventLog log(dst);
  ASSERT_TRUE(dst.LoadFromStream(s, true));
  EXPECT_EQ(dst.Storage(), src.Storage());  // exact, subnormal included
  EXPECT_EQ(log.order, "CRC");              // Resize, then the load itself
  // The second record holds elements 3..4: resized to Last = 4, elements 1..2 kept.
  Set(part, {9.0});
  ASSERT_TRUE(part.LoadFromStream(s, true));
  EXPECT_EQ(part.Storage(), (D{9.0, 0.0, 3e300, 1e-310}));

  // Without AdjustSize into a shorter vector: false, nothing read, but OnChange fires.
  std::istringstream whole(s.str().substr(0, 70));
  Set(small, {1.0, 2.0});
  EventLog slog(small);
  EXPECT_FALSE(small.LoadFromStream(whole, false));
  EXPECT_EQ(small.Storage(), (D{1.0, 2.0}));
  EXPECT_EQ(slog.order, "C");

  // Integers travel exactly; a double record read by an integer vector is rounded.
  TIntVector ints;
  std::istringstream big(Record({1, 2, -2147483648.0L, 2147483647}));
  ASSERT_TRUE(ints.LoadFromStream(big, true));
  EXPECT_EQ(ints.Storage(), (I{-2147483647 - 1, 2147483647}));
  std::istringstream real(Record({1, 3, 2.5, -0.4, 7.6}));
  ASSERT_TRUE(ints.LoadFromStream(real, true));
  EXPECT_EQ(ints.Storage(), (I{3, 0, 8}));
}

TEST(VectorStream, DamagedRecords) {
  const std::string image = Record({1, 4, 1, 2, 3, 4});
  TVector v;
  Set(v, {5, 5, 5, 5});
  EventLog log(v);
  // First or Last cannot be read, is not a number or lies outside the Integer range: false
  // without events.
  for (const std::string& bad : {std::string(), image.substr(0, 15), Record({NAN, 1e12L})}) {
    std::istringstream in(bad);
    EXPECT_FALSE(v.LoadFromStream(in, true)) << bad.size();
  }
  EXPECT_EQ(log.order, "");

  // Cut inside the element block: the values before the cut are stored, result false.
  std::istringstream cut(image.substr(0, 45));
  EXPECT_FALSE(v.LoadFromStream(cut, false));
  EXPECT_EQ(v.Storage(), (D{1, 2, 5, 5}));
  EXPECT_EQ(log.order, "C");

  // A record claiming two billion elements must not allocate them.
  std::istringstream huge(Record({1, 2.0e9L, 3.5L}));
  EXPECT_FALSE(v.LoadFromStream(huge, true));
  EXPECT_EQ(v.NrOfElem(), 4);
  EXPECT_EQ(log.order, "C");
}

TEST(VectorFile, StoreAndLoadRoundTrip) {
  TVector v, w, keep;
  Set(v, {3.25, -1e-9, 6.0});
  const std::string path = TempFile("store.bin");
  v.StoreOnFile(path);
  const std::string image = Slurp(path);
  EXPECT_EQ(image, "QUVVECD\x01" + Record({1, 3, 3.25, -1e-9, 6.0}));
  EventLog log(w);
  ASSERT_TRUE(w.LoadFromFile(path));
  EXPECT_EQ(w.Storage(), v.Storage());
  EXPECT_EQ(log.order, "CR");
  Set(keep, {0, 0, 0, 0, 9});
  ASSERT_TRUE(keep.LoadFromFile(path, false));
  EXPECT_EQ(keep.Storage(), (D{3.25, -1e-9, 6.0, 0, 9}));

  // Another element type, a missing file and a cut one are refused and change nothing.
  TIntVector iv;
  EXPECT_FALSE(iv.LoadFromFile(path));
  EXPECT_FALSE(w.LoadFromFile(TempFile("missing.bin")));
  std::ofstream(TempFile("cut.bin"), std::ios::binary) << image.substr(0, image.size() - 3);
  EXPECT_FALSE(w.LoadFromFile(TempFile("cut.bin")));
  EXPECT_EQ(w.Storage(), v.Storage());
  EXPECT_EQ(log.order, "CR");
  EXPECT_THROW(v.StoreOnFile(TempFile("no/such/dir/x.bin")), std::ios_base::failure);
}

TEST(VectorASC, ExportMatchesGoldenFilesAndHeaderRules) {
  TVector v;
  TIntVector iv;
  Set(v, {1.5, -2.25, 1000.0});
  Set(iv, {7, -3, 12, 2147483647});
  const std::string path = TempFile("export.asc");
  v.ExportAsASC(path, 3, "golden vector, exported with 3 decimals");
  EXPECT_EQ(Slurp(path), Slurp(DataFile("vector_export.asc")));
  iv.ExportAsASC(path, "golden integers");
  EXPECT_EQ(Slurp(path), Slurp(DataFile("vector_int_export.asc")));

  // Line 1: the class's own text and the file name for an empty comment, LFs as blanks.
  const auto line1 = [&path] {
    const std::string text = Slurp(path);
    return text.substr(0, text.find("\r\n"));
  };
  v.ExportAsASC(path, 2, "");
  EXPECT_EQ(line1(), "Exported by QUV TVector component: " + path);
  iv.ExportAsASC(path, "");
  EXPECT_EQ(line1(), "Exported by QUV TIntVector component:" + path);
  v.ExportAsASC(path, 2, "line one\nline two\n");
  EXPECT_EQ(line1(), "line one line two ");
  std::string comment;
  ASSERT_EQ(v.ImportASC(path, comment), 0);
  EXPECT_EQ(comment, "line one line two ");
}

TEST(VectorASC, ImportStatusesAndShortening) {
  TVector v;
  Set(v, {8, 8});
  EventLog log(v);
  std::string comment = "untouched";
  const std::pair<const char*, std::int32_t> refused[] = {
      {"no_such_file.asc", kAscFileNotFound},     {"vector_two_columns.asc", kAscTooManyColumns},
      {"asc_bad_flags.asc", kAscBadFlags},        {"asc_bad_columns.asc", kAscBadColumnCount},
      {"asc_cut_header.asc", kAscHeaderCutShort}, {"", kAscFileNotFound}};  // "": the folder
  for (const auto& [name, status] : refused)
    EXPECT_EQ(v.ImportASC(DataFile(name), comment), status) << name;
  EXPECT_EQ(v.Storage(), (D{8, 8}));
  EXPECT_EQ(comment, "untouched");
  EXPECT_EQ(log.order, "");

  ASSERT_EQ(v.ImportASC(DataFile("vector_short.asc"), comment), 0);
  EXPECT_EQ(comment, "declares ten rows, holds seven");
  EXPECT_EQ(v.Storage(), (D{1.25, -2.5, 300, 4, 5.5, 6.5, 7}));
  EXPECT_EQ(log.order, "CR");
  TIntVector iv;  // integer vectors round what they read
  ASSERT_EQ(iv.ImportASC(DataFile("vector_short.asc"), comment), 0);
  EXPECT_EQ(iv.Storage(), (I{1, -3, 300, 4, 6, 7, 7}));
  // Column names skipped; data ended by a non-number; a row count far beyond the data.
  const std::pair<const char*, D> read[] = {{"vector_colnames.asc", {70.5, 82.25, 64}},
                                            {"vector_bad_data.asc", {10, 20}},
                                            {"vector_huge_rows.asc", {1, 2, 3}}};
  for (const auto& [name, values] : read) {
    ASSERT_EQ(v.ImportASC(DataFile(name), comment), 0) << name;
    EXPECT_EQ(v.Storage(), values) << name;
  }

  // LF-only line ends are read as well; a file without one number is refused.
  const std::string lf = TempFile("lf.asc");
  std::ofstream(lf, std::ios::binary)
      << "lf only\n1\t;nr. of columns\n2\t;nr. of rows\nfalse false false false\n4.5\n5.5\n";
  ASSERT_EQ(v.ImportASC(lf, comment), 0);
  EXPECT_EQ(v.Storage(), (D{4.5, 5.5}));
  std::ofstream(lf, std::ios::binary) << "no numbers\n1\n3\nFALSE FALSE FALSE FALSE\nabc\n";
  EXPECT_EQ(v.ImportASC(lf, comment), kAscNoData);
  EXPECT_EQ(v.Storage(), (D{4.5, 5.5}));
}

TEST(VectorASC, RoundTripsThroughBothClasses) {
  TVector v, back;
  TIntVector iv, iback;
  Set(v, {0.125, -3.5, 1e6, 2.0 / 3.0});
  Set(iv, {-5, 0, 123456789});
  const std::string path = TempFile("round.asc");
  std::string comment;
  v.ExportAsASC(path, 6, "round trip");
  ASSERT_EQ(back.ImportASC(path, comment), 0);
  ASSERT_EQ(back.NrOfElem(), 4);
  for (std::int32_t i = 1; i <= 3; ++i)
    EXPECT_EQ(back.GetVal(i), v.GetVal(i));
  EXPECT_NEAR(back.GetVal(4), 2.0 / 3.0, 5e-7);
  iv.ExportAsASC(path, "ints");
  ASSERT_EQ(iback.ImportASC(path, comment), 0);
  EXPECT_EQ(iback.Storage(), iv.Storage());
}

TEST(VectorCRC, EightRegistersOfBytes) {
  // Register k is the CRC-32 of byte k of every element (Python zlib.crc32 of those bytes).
  TVector v;
  Set(v, {1.0, -2.0});
  EXPECT_EQ(v.CRCofData(), "41D912FF41D912FF41D912FF41D912FF41D912FF41D912FF5565F3428263FA73");
  TIntVector iv;  // bytes 4..7 do not exist: those registers stay at their start
  Set(iv, {7, -3});
  EXPECT_EQ(iv.CRCofData(), "CD940A996CDBFD726CDBFD726CDBFD72" + std::string(32, '0'));
}

}  // namespace
}  // namespace quv::test
