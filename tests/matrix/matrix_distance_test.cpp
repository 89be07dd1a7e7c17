#include <gtest/gtest.h>

#include <cmath>

#include "matrix/matrix_test_util.h"

namespace quv::test {
namespace {

TEST(MatrixDistance, EveryModeOnKnownObjects) {
  TMatrix m;
  SetRows(m, {{0, 0, 0}, {3, 4, 0}, {1, 2, 3}});  // three objects of three variables
  EXPECT_EQ(m.DistanceOfObjects(dmEuclid, 1, 2), 5.0);
  EXPECT_EQ(m.DistanceOfObjects(dmEuclidSqr, 1, 2), 25.0);
  EXPECT_EQ(m.DistanceOfObjects(dmManhattan, 2, 3), 2 + 2 + 3);
  EXPECT_EQ(m.DistanceOfObjects(dmMaximum, 2, 3), 3.0);
  // cos between (3,4,0) and (1,2,3) = 11 / (5 sqrt 14)
  EXPECT_NEAR(m.DistanceOfObjects(dmCosine, 2, 3), 1.0 - 11.0 / (5.0 * std::sqrt(14.0)), 1e-15);
  // centred (2/3, 5/3, -7/3) and (-1, 0, 1): r = -3 / sqrt(26/3 * 2)
  EXPECT_NEAR(m.DistanceOfObjects(dmCorrelation, 2, 3), 1.0 + 3.0 / std::sqrt(52.0 / 3.0), 1e-15);
  EXPECT_EQ(m.DistanceOfObjects(dmCosine, 1, 2), 1.0);       // a zero object
  EXPECT_EQ(m.DistanceOfObjects(dmCorrelation, 1, 3), 1.0);  // a constant object
  EXPECT_EQ(m.DistanceOfObjects(dmEuclid, 0, 1), 0.0);
  EXPECT_EQ(m.DistanceOfObjects(dmEuclid, 1, 4), 0.0);
  EXPECT_EQ(m.DistanceOfObjects(dmUser, 1, 2), 0.0);  // no handler
  m.OnCalcDistance = [](TComponent*, std::int32_t a, std::int32_t b, double& d) {
    d = 10.0 * a + b;
  };
  EXPECT_EQ(m.DistanceOfObjects(dmUser, 3, 1), 31.0);
}

TEST(MatrixDistance, DistanceMatrixAgreesWithPairwiseDistancesAndStopsOnAbort) {
  TMatrix m, d;
  SetRandSeed(8);
  m.Resize(4, 9);
  m.FillRandomGauss(0.0, 1.0);
  EventLog log(d);
  for (TDistMode mode : {dmEuclid, dmEuclidSqr, dmManhattan, dmMaximum, dmCosine, dmCorrelation}) {
    log.Reset();
    m.CalcDistMat(mode, &d);
    ASSERT_EQ(Dims(d), std::pair(9, 9));
    // The first call resizes (OnChange, OnResize); every call ends with one OnChange.
    EXPECT_EQ(log.Counts(), mode == dmEuclid ? std::pair(2, 1) : std::pair(1, 0));
    for (int i = 1; i <= 9; ++i) {
      EXPECT_EQ(d.GetVal(i, i), 0.0);
      for (int j = 1; j <= 9; ++j) {
        EXPECT_NEAR(d.GetVal(i, j), m.DistanceOfObjects(mode, i, j), 1e-14) << int(mode);
        EXPECT_EQ(d.GetVal(i, j), d.GetVal(j, i));
      }
    }
  }
  int calls = 0;
  m.OnCalcDistance = [&](TComponent*, std::int32_t a, std::int32_t b, double& dist) {
    ++calls;
    EXPECT_LT(a, b);
    dist = b - a;
  };
  std::vector<int> percents;
  m.OnPercentDone = [&](TComponent*, std::int32_t p) { percents.push_back(p); };
  m.CalcDistMat(dmUser, &d);
  EXPECT_EQ(calls, 9 * 8 / 2);
  EXPECT_EQ(std::pair(d.GetVal(2, 9), d.GetVal(9, 2)), std::pair(7.0, 7.0));
  EXPECT_EQ(percents, (std::vector<int>{11, 22, 33, 44, 55, 66, 77, 88, 100}));

  // An abort after row 2 leaves the rows not reached as they were.
  int rows = 0;
  FeedbackScope scope([&](double) {
    if (++rows == 2) AbortMathProc = true;
  });
  m.CalcDistMat(dmEuclid, &d);
  EXPECT_EQ(rows, 2);
  EXPECT_NEAR(d.GetVal(2, 9), m.DistanceOfObjects(dmEuclid, 2, 9), 1e-14);
  EXPECT_EQ(d.GetVal(3, 9), 6.0);
}

}  // namespace
}  // namespace quv::test
