#include "quv/math2/smoothing.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <string>
#include <vector>

#include "common/raised_message.h"
#include "quv/math2/math2.h"

namespace {

using quv::EQUVMath2Error;
using quv::TVector;
using quv::test::RaisedMessage;

using Smoother =
    std::function<void(const TVector*, std::int32_t, std::int32_t, std::int32_t, TVector*)>;

void Fill(TVector& v, const std::vector<double>& values) {
  v.Resize(static_cast<std::int32_t>(values.size()));
  v.CopyFrom(values, 0, 0, 1);
}

std::vector<double> Values(const TVector& v) {
  return v.Storage();
}

// A cubic sampled at 1..n.
std::vector<double> Cubic(int n) {
  std::vector<double> y;
  for (int i = 1; i <= n; ++i)
    y.push_back(0.5 - 0.25 * i + 0.03 * i * i - 0.001 * i * i * i);
  return y;
}

// The texts after "<Function>: " in the order the checks raise them.
struct Texts {
  const char* range;
  const char* outOfRange;
  const char* even;
};

constexpr Texts kWindowTexts{
    "specified range for smoothing is smaller than the length of the smoothing windows",
    "length of smoothing window is out of range", "length of smoothing window must be odd"};
constexpr Texts kPolynomialTexts{
    "specified range for smoothing is smaller than the length of the polynomial",
    "length of polynomial is out of range", "length of polynomial must be odd"};
// FirstDeriv alone speaks of "calculation".
constexpr Texts kFirstDerivTexts{
    "specified range for calculation is smaller than the length of the polynomial",
    "length of polynomial is out of range", "length of polynomial must be odd"};

struct MessageSet {
  const char* name;
  Smoother run;
  Texts texts;
};

const MessageSet kSets[] = {
    {"MovingAverageSmooth", quv::MovingAverageSmooth, kWindowTexts},
    {"MovingMedianSmooth", quv::MovingMedianSmooth, kWindowTexts},
    {"WeightedAverageSmooth", quv::WeightedAverageSmooth, kWindowTexts},
    {"PolynomialSmooth", quv::PolynomialSmooth, kPolynomialTexts},
    {"SecondDeriv", quv::SecondDeriv, kPolynomialTexts},
    {"FirstDeriv", quv::FirstDeriv, kFirstDerivTexts},
};

TEST(Smoothers, MessagesInTheirOrder) {
  for (const MessageSet& set : kSets) {
    SCOPED_TRACE(set.name);
    const std::string name = set.name;
    TVector src;
    Fill(src, {1, 2, 3, 4, 5, 6, 7});
    TVector dst;
    auto msg = [&](const TVector* s, std::int32_t f, std::int32_t l, std::int32_t len, TVector* d) {
      return RaisedMessage<EQUVMath2Error>([&] { set.run(s, f, l, len, d); });
    };
    EXPECT_EQ(msg(nullptr, 1, 7, 3, &dst), name + ": either SourceVec or DestVec is undefined");
    EXPECT_EQ(msg(&src, 1, 7, 3, nullptr), name + ": either SourceVec or DestVec is undefined");
    // Last - First = Len - 1 is too short; the range check comes before the window checks.
    EXPECT_EQ(msg(&src, 1, 4, 4, &dst), name + ": " + set.texts.range);
    EXPECT_EQ(msg(&src, 1, 7, 8, &dst), name + ": " + set.texts.range);
    // Clamping: 0..99 becomes 1..7, which holds Len = 6 + 1 elements but not 7 + 1.
    EXPECT_EQ(msg(&src, 0, 99, 7, &dst), name + ": " + set.texts.range);
    EXPECT_EQ(msg(&src, 1, 7, 1, &dst), name + ": " + set.texts.outOfRange);
    EXPECT_EQ(msg(&src, 1, 7, -5, &dst), name + ": " + set.texts.outOfRange);
    EXPECT_EQ(msg(&src, 1, 7, 4, &dst), name + ": " + set.texts.even);
    EXPECT_EQ(msg(&src, 1, 7, 3, &dst), quv::test::kNothingRaised);
  }
}

TEST(Smoothers, TabulatedRulesRefuseWindowsBeyondTheirTable) {
  std::vector<double> y(300, 1.0);
  TVector src, dst;
  Fill(src, y);
  for (const Smoother& run :
       {Smoother(quv::PolynomialSmooth), Smoother(quv::FirstDeriv), Smoother(quv::SecondDeriv)}) {
    const std::string m = RaisedMessage<EQUVMath2Error>([&] { run(&src, 1, 300, 103, &dst); });
    EXPECT_NE(m.find(": length of polynomial is out of range"), std::string::npos) << m;
    EXPECT_EQ(RaisedMessage<EQUVMath2Error>([&] { run(&src, 1, 300, 101, &dst); }),
              quv::test::kNothingRaised);
  }
  // The averages have no upper limit but the data.
  EXPECT_EQ(
      RaisedMessage<EQUVMath2Error>([&] { quv::MovingAverageSmooth(&src, 1, 300, 299, &dst); }),
      quv::test::kNothingRaised);
}

TEST(MovingAverageSmooth, PadsTheEndsWithTheNearestSmoothedValue) {
  TVector src;
  Fill(src, {1, 2, 3, 4, 5, 6, 7});
  TVector dst;
  quv::MovingAverageSmooth(&src, 1, 7, 3, &dst);
  EXPECT_EQ(Values(dst), (std::vector<double>{2, 2, 3, 4, 5, 6, 6}));
  // Reversed bounds are exchanged.
  TVector rev;
  quv::MovingAverageSmooth(&src, 7, 1, 3, &rev);
  EXPECT_EQ(Values(rev), Values(dst));
  // A sub-range lands at element 1 of the destination.
  TVector sub;
  quv::MovingAverageSmooth(&src, 3, 7, 3, &sub);
  EXPECT_EQ(Values(sub), (std::vector<double>{4, 4, 5, 6, 6}));
}

TEST(MovingAverageSmooth, DestinationGrowsButNeverShrinksAndHearsOneChange) {
  TVector src;
  Fill(src, {1, 2, 3, 4, 5, 6, 7});
  TVector dst;
  int changes = 0, resizes = 0;
  dst.OnChange = [&](quv::TComponent*) { ++changes; };
  dst.OnResize = [&](quv::TComponent*) { ++resizes; };
  quv::MovingAverageSmooth(&src, 1, 7, 3, &dst);
  EXPECT_EQ(changes, 1);
  EXPECT_EQ(resizes, 1);

  Fill(dst, {9, 9, 9, 9, 9, 9, 9, 9, 9, 9});
  changes = resizes = 0;
  quv::MovingAverageSmooth(&src, 2, 6, 3, &dst);
  EXPECT_EQ(changes, 1);
  EXPECT_EQ(resizes, 0);
  EXPECT_EQ(Values(dst), (std::vector<double>{3, 3, 4, 5, 5, 9, 9, 9, 9, 9}));

  // A refused call leaves the destination alone and fires nothing.
  changes = 0;
  EXPECT_NE(RaisedMessage<EQUVMath2Error>([&] { quv::MovingAverageSmooth(&src, 1, 7, 4, &dst); }),
            quv::test::kNothingRaised);
  EXPECT_EQ(changes, 0);
  EXPECT_EQ(dst.GetVal(1), 3.0);
}

TEST(Smoothers, SourceMayBeTheDestination) {
  TVector v;
  Fill(v, {1, 2, 3, 10, 5, 6, 7});
  quv::MovingMedianSmooth(&v, 1, 7, 3, &v);
  EXPECT_EQ(Values(v), (std::vector<double>{2, 2, 3, 5, 6, 6, 6}));
}

TEST(MovingMedianSmooth, RemovesSpikesAndPropagatesNaN) {
  TVector src;
  Fill(src, {1, 1, 1, 100, 1, 1, -50, 1, 1});
  TVector dst;
  quv::MovingMedianSmooth(&src, 1, 9, 3, &dst);
  EXPECT_EQ(Values(dst), std::vector<double>(9, 1.0));

  TVector withNaN;
  Fill(withNaN, {1, 2, 3, std::nan(""), 5, 6, 7, 8, 9});
  quv::MovingMedianSmooth(&withNaN, 1, 9, 3, &dst);
  const std::vector<double> out = Values(dst);
  for (int k : {0, 1, 5, 6, 7, 8})
    EXPECT_FALSE(std::isnan(out[static_cast<std::size_t>(k)])) << k;
  for (int k : {2, 3, 4})
    EXPECT_TRUE(std::isnan(out[static_cast<std::size_t>(k)])) << k;
  EXPECT_EQ(out[6], 7.0);
}

TEST(WeightedAverageSmooth, TriangularWeights) {
  // Len 5: weights 1 2 3 2 1 over 9.
  TVector src;
  Fill(src, {0, 0, 0, 9, 0, 0, 0, 0});
  TVector dst;
  quv::WeightedAverageSmooth(&src, 1, 8, 5, &dst);
  EXPECT_EQ(Values(dst), (std::vector<double>{2, 2, 2, 3, 2, 1, 1, 1}));
}

// Each smoother keeps what its order promises: the averages a constant, the polynomial rule a
// cubic; the first derivative of a quadratic and the second of a cubic are exact.
TEST(Smoothers, PreservePolynomialsOfTheirOrder) {
  const std::vector<double> constant(40, 2.75);
  for (const Smoother& run :
       {Smoother(quv::MovingAverageSmooth), Smoother(quv::MovingMedianSmooth),
        Smoother(quv::WeightedAverageSmooth), Smoother(quv::PolynomialSmooth)}) {
    TVector src, dst;
    Fill(src, constant);
    run(&src, 1, 40, 11, &dst);
    for (double y : Values(dst))
      EXPECT_NEAR(y, 2.75, 1e-15);
  }
  const int n = 60;
  const std::vector<double> y = Cubic(n);
  for (int len : {3, 5, 11, 25, 51, 101}) {
    if (len >= n) continue;
    SCOPED_TRACE(len);
    TVector src, smooth, d2;
    Fill(src, y);
    quv::PolynomialSmooth(&src, 1, n, len, &smooth);
    quv::SecondDeriv(&src, 1, n, len, &d2);
    const int h = len / 2;
    for (int i = 1 + h; i <= n - h; ++i) {
      EXPECT_NEAR(smooth.GetVal(i), y[static_cast<std::size_t>(i - 1)], 1e-13);
      EXPECT_NEAR(d2.GetVal(i), 0.06 - 0.006 * i, 1e-13);
    }
  }
  std::vector<double> q;
  for (int i = 1; i <= n; ++i)
    q.push_back(3.0 - 0.5 * i + 0.02 * i * i);
  for (int len : {3, 7, 25, 41}) {
    TVector src, d1;
    Fill(src, q);
    quv::FirstDeriv(&src, 1, n, len, &d1);
    const int h = len / 2;
    for (int i = 1 + h; i <= n - h; ++i)
      EXPECT_NEAR(d1.GetVal(i), -0.5 + 0.04 * i, 1e-13) << len << " " << i;
    EXPECT_EQ(d1.GetVal(1), d1.GetVal(1 + h));  // padded with the nearest derivative
  }
}

TEST(MovingKernelFilter, ConvolvesWithTheKernelAndChecksItsArguments) {
  TVector src;
  Fill(src, {0, 0, 0, 1, 0, 0, 0});
  TVector kernel;
  Fill(kernel, {1, 2, 3});
  TVector dst;
  // Convolution of an impulse reproduces the kernel in its own order.
  quv::MovingKernelFilter(&src, 1, 7, &kernel, &dst);
  EXPECT_EQ(Values(dst), (std::vector<double>{0, 0, 1, 2, 3, 0, 0}));
  // An even kernel: one more element to the left of the centre.
  TVector even;
  Fill(even, {1, 2});
  quv::MovingKernelFilter(&src, 1, 7, &even, &dst);
  EXPECT_EQ(Values(dst), (std::vector<double>{0, 0, 0, 1, 2, 0, 0}));

  const std::string undefined =
      "MovingKernelfilter: SourceVec, DestVec and/or FilterKernel is undefined";
  EXPECT_EQ(
      RaisedMessage<EQUVMath2Error>([&] { quv::MovingKernelFilter(&src, 1, 7, nullptr, &dst); }),
      undefined);
  EXPECT_EQ(
      RaisedMessage<EQUVMath2Error>([&] { quv::MovingKernelFilter(nullptr, 1, 7, &kernel, &dst); }),
      undefined);
  EXPECT_EQ(
      RaisedMessage<EQUVMath2Error>([&] { quv::MovingKernelFilter(&src, 1, 7, &kernel, nullptr); }),
      undefined);
  EXPECT_EQ(
      RaisedMessage<EQUVMath2Error>([&] { quv::MovingKernelFilter(&src, 5, 3, &kernel, &dst); }),
      "MovingKernelfilter: specified range for smoothing is smaller than the length of the "
      "kernel");
}

}  // namespace
