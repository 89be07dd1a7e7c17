#include <gtest/gtest.h>

#include <cmath>

#include "quv/matrix/matrix.h"

namespace quv {
namespace {

// Three objects (rows) of three variables: (0,0,0), (3,4,0), (1,2,3).
void Objects(TMatrix& m) {
  m.Resize(3, 3);
  m.CopyFromArray(TDouble2DArray{{0, 3, 1}, {0, 4, 2}, {0, 0, 3}}, 0, 0, 2, 2, 1, 1);
}

TEST(MatrixDistance, EveryModeOnKnownObjects) {
  TMatrix m;
  Objects(m);
  EXPECT_DOUBLE_EQ(m.DistanceOfObjects(dmEuclid, 1, 2), 5.0);
  EXPECT_DOUBLE_EQ(m.DistanceOfObjects(dmEuclidSqr, 1, 2), 25.0);
  EXPECT_DOUBLE_EQ(m.DistanceOfObjects(dmManhattan, 2, 3), 2 + 2 + 3);
  EXPECT_DOUBLE_EQ(m.DistanceOfObjects(dmMaximum, 2, 3), 3.0);
  // cos between (3,4,0) and (1,2,3) = 11 / (5 sqrt 14)
  EXPECT_NEAR(m.DistanceOfObjects(dmCosine, 2, 3), 1.0 - 11.0 / (5.0 * std::sqrt(14.0)), 1e-15);
  EXPECT_EQ(m.DistanceOfObjects(dmCosine, 1, 2), 1.0);  // a zero object
  // (3,4,0) against (1,2,3): centred (2/3, 5/3, -7/3) and (-1, 0, 1); r = -3 / sqrt(26/3 * 2)
  EXPECT_NEAR(m.DistanceOfObjects(dmCorrelation, 2, 3), 1.0 + 3.0 / std::sqrt(52.0 / 3.0), 1e-15);
  EXPECT_EQ(m.DistanceOfObjects(dmCorrelation, 1, 3), 1.0);  // a constant object
  EXPECT_EQ(m.DistanceOfObjects(dmEuclid, 0, 1), 0.0);
  EXPECT_EQ(m.DistanceOfObjects(dmEuclid, 1, 4), 0.0);
  EXPECT_EQ(m.DistanceOfObjects(dmUser, 1, 2), 0.0);  // no handler
  m.OnCalcDistance = [](TComponent*, std::int32_t a, std::int32_t b, double& d) {
    d = 10.0 * a + b;
  };
  EXPECT_EQ(m.DistanceOfObjects(dmUser, 3, 1), 31.0);
}

TEST(MatrixDistance, DistanceMatrixAgreesWithPairwiseDistances) {
  TMatrix m, d;
  SetRandSeed(8);
  m.Resize(4, 9);
  m.FillRandomGauss(0.0, 1.0);
  int changes = 0;
  d.OnChange = [&](TComponent*) { ++changes; };
  for (TDistMode mode : {dmEuclid, dmEuclidSqr, dmManhattan, dmMaximum, dmCosine, dmCorrelation}) {
    changes = 0;
    m.CalcDistMat(mode, &d);
    ASSERT_EQ(d.NrOfColumns(), 9);
    ASSERT_EQ(d.NrOfRows(), 9);
    EXPECT_LE(changes, 2);  // a resize the first time, then the one change
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
  EXPECT_EQ(d.GetVal(2, 9), 7.0);
  EXPECT_EQ(percents.size(), 9u);
  EXPECT_EQ(percents.back(), 100);
}

TEST(MatrixDistance, AbortStopsAfterTheCurrentRow) {
  TMatrix m, d;
  m.Resize(2, 6);
  m.FillSerial(1.0, 1.0);
  int rows = 0;
  MathFeedBackProc = [&](double) {
    if (++rows == 2) AbortMathProc = true;
  };
  m.CalcDistMat(dmEuclid, &d);
  MathFeedBackProc = nullptr;
  AbortMathProc = false;
  EXPECT_EQ(rows, 2);
  EXPECT_GT(d.GetVal(1, 6), 0.0);  // rows 1 and 2 are done
  EXPECT_EQ(d.GetVal(3, 6), 0.0);  // row 3 was never reached
}

}  // namespace
}  // namespace quv
