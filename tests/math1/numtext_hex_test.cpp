#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>

#include "quv/math1/math1.h"

namespace quv {
namespace {

// The same digits with the byte order reversed (pairs of digits stay as they are).
std::string ReverseBytes(const std::string& hex) {
  std::string out;
  for (std::size_t i = hex.size(); i >= 2; i -= 2)
    out.append(hex, i - 2, 2);
  return out;
}

template <class F, class Call>
std::string MessageOf(Call&& call) {
  try {
    call();
  } catch (const F& e) {
    return e.what();
  }
  return "(nothing raised)";
}

TEST(NumTextFPImage, MatchesReferenceImagesInBothByteOrders) {
  std::ifstream file(QUV_TEST_DATA_DIR "/numtext_fpimages.txt");
  std::string line;
  int rows = 0;
  while (ReadTextLine(file, line)) {
    if (line.empty() || line[0] == '#') continue;
    std::istringstream fields(line);
    std::string valueText, d, f, x;
    fields >> valueText >> d >> f >> x;
    const double value = std::strtod(valueText.c_str(), nullptr);
    ++rows;
    SCOPED_TRACE(valueText);

    EXPECT_EQ(FPNumToHex(value), d);
    EXPECT_EQ(std::bit_cast<std::uint64_t>(HexToDouble(d)), std::bit_cast<std::uint64_t>(value));
    EXPECT_EQ(std::bit_cast<std::uint64_t>(HexToDouble(ReverseBytes(d), false)),
              std::bit_cast<std::uint64_t>(value));

    const auto single = static_cast<float>(value);
    EXPECT_EQ(FPNumToHex(single), f);
    EXPECT_EQ(std::bit_cast<std::uint32_t>(HexToSingle(f)), std::bit_cast<std::uint32_t>(single));
    EXPECT_EQ(std::bit_cast<std::uint32_t>(HexToSingle(ReverseBytes(f), false)),
              std::bit_cast<std::uint32_t>(single));

    const Extended extended = value;
    EXPECT_EQ(FPNumToHex(extended), x);
    const Extended back = HexToExtended(x);
    const Extended backReversed = HexToExtended(ReverseBytes(x), false);
    if (std::isnan(value)) {
      EXPECT_TRUE(std::isnan(back) && std::isnan(backReversed));
    } else {
      EXPECT_EQ(back, extended);
      EXPECT_EQ(backReversed, extended);
      EXPECT_EQ(std::signbit(back), std::signbit(extended));
    }
  }
  EXPECT_EQ(rows, 16);
}

TEST(NumTextFPImage, LowerCaseAndExtendedOnlyValues) {
  EXPECT_EQ(HexToDouble("3ff0000000000000"), 1.0);
  EXPECT_EQ(HexToDouble("000000000000f03f", false), 1.0);
  EXPECT_EQ(HexToSingle("3F800000"), 1.0f);
  // Beyond the double range and below its subnormals: only the extended image holds them.
  const Extended huge = 1e4000L;
  EXPECT_EQ(HexToExtended(FPNumToHex(huge)), huge);
  const Extended smallest = std::numeric_limits<Extended>::denorm_min();
  EXPECT_EQ(FPNumToHex(smallest), "00000000000000000001");
  EXPECT_EQ(HexToExtended("00000000000000000001"), smallest);
  EXPECT_EQ(FPNumToHex(-std::numeric_limits<Extended>::max()), "FFFEFFFFFFFFFFFFFFFF");
}

TEST(NumTextFPImage, BadTextsRaiseBaseErrorWithTheText) {
  EXPECT_EQ(MessageOf<EQUVError>([] { HexToDouble("3FF000000000000"); }),
            "HexToDouble: invalid hex string \"3FF000000000000\"");
  EXPECT_EQ(MessageOf<EQUVError>([] { HexToDouble("3FF000000000000G"); }),
            "HexToDouble: invalid hex string \"3FF000000000000G\"");
  EXPECT_EQ(MessageOf<EQUVError>([] { HexToDouble("3FF00000000000000", false); }),
            "HexToDouble: invalid hex string \"3FF00000000000000\"");
  EXPECT_EQ(MessageOf<EQUVError>([] { HexToDouble(""); }), "HexToDouble: invalid hex string \"\"");
  EXPECT_EQ(MessageOf<EQUVError>([] { HexToExtended("3FFF80000000000000 0"); }),
            "HexToExtended: invalid hex string \"3FFF80000000000000 0\"");
  EXPECT_EQ(MessageOf<EQUVError>([] { HexToExtended("3FF0000000000000"); }),
            "HexToExtended: invalid hex string \"3FF0000000000000\"");
  EXPECT_EQ(MessageOf<EQUVError>([] { HexToSingle("-3F80000"); }),
            "HexToSingle: invalid hex string \"-3F80000\"");
  EXPECT_EQ(MessageOf<EQUVError>([] { HexToSingle("3F800000", false); }), "(nothing raised)");
  EXPECT_EQ(MessageOf<EQUVError>([] { HexToSingle(std::string(100000, 'F')); }).size(),
            100000u + 34u);
  // The base class itself is raised, not a unit's class derived from it.
  try {
    HexToSingle("xx");
    ADD_FAILURE() << "nothing raised";
  } catch (const EQUVError& e) {
    EXPECT_EQ(typeid(e), typeid(EQUVError));
  }
}

}  // namespace
}  // namespace quv
