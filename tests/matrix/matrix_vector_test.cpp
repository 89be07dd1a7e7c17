#include <gtest/gtest.h>

#include <cmath>

#include "matrix/matrix_test_util.h"

namespace quv::test {
namespace {

// The tests below use the 3 x 4 pattern 10 col + row: columns 11..14, 21..24, 31..34.

TEST(MatrixVector, CopiesBetweenMatrixAndVector) {
  TMatrix m;
  FillPattern(m, 3, 4);
  TVector v;
  v.Resize(5);
  v.Fill(9.0);
  int changes = 0;
  v.OnChange = [&](TComponent*) { ++changes; };
  m.CopyColToVec(&v, 2, 2, 4, 2);
  EXPECT_EQ(v.Storage(), (TDoubleArray{0, 22, 23, 24, 0}));
  EXPECT_EQ(changes, 1);
  m.CopyRowToVec(&v, 9, 0, 0, 0);  // row clamped to 4; its first element lands before the start
  EXPECT_EQ(v.Storage(), (TDoubleArray{24, 34, 0, 0, 0}));
  m.CopyRowToVec(&v, 1, 0, 0, -2);  // all three land before element 1: nothing happens
  m.CopyRowToVec(&v, 1, 0, 0, 6);   // beyond the end
  EXPECT_EQ(v.Storage(), (TDoubleArray{24, 34, 0, 0, 0}));
  EXPECT_EQ(changes, 2);
  m.CopyColToVec(&v, 3, 0, 0);
  EXPECT_EQ(v.Storage(), (TDoubleArray{31, 32, 33, 34, 0}));
  m.CopyColToVec(nullptr, 1, 0, 0);

  v.Resize(3);
  v.FillSerial(1.0, 1.0);
  EventLog log(m);
  m.CopyFromVec(&v, 0, 0, 1, 3);           // down column 1 from row 3: the third element is dropped
  m.CopyFromVec(&v, 3, 2, 2, 1, dimRows);  // elements 2..3 along row 1 from column 2
  EXPECT_EQ(RowsOf(m), (TRows{{11, 2, 3}, {12, 22, 32}, {1, 23, 33}, {2, 24, 34}}));
  EXPECT_EQ(log.changes, 2);
}

TEST(MatrixVector, ProductsMeansEdgeVectorsAndNormalisationVectors) {
  TMatrix m;
  FillPattern(m, 3, 4);
  TVector x, y, z, v;
  x.Resize(3);
  x.FillSerial(1.0, 1.0);
  ASSERT_TRUE(m.Multiply(&x, &y));  // row r: (10 + r) + 2 (20 + r) + 3 (30 + r) = 140 + 6 r
  EXPECT_EQ(y.Storage(), (TDoubleArray{146, 152, 158, 164}));
  ASSERT_TRUE(m.TransposeAndMultiply(&y, &z));  // column c: sum over r of (10 c + r) y_r
  EXPECT_EQ(z.Storage(), (TDoubleArray{7780, 13980, 20180}));
  EXPECT_FALSE(m.Multiply(&y, &z));  // length 4 against 3 columns
  EXPECT_FALSE(m.TransposeAndMultiply(&x, &z));
  EXPECT_FALSE(m.Multiply(&x, nullptr));
  EXPECT_EQ(z.NrOfElem(), 3);

  m.MeanVec(dimColumns, &v);
  EXPECT_EQ(v.Storage(), (TDoubleArray{12.5, 22.5, 32.5}));
  m.MeanVec(dimRows, &v);
  EXPECT_EQ(v.Storage(), (TDoubleArray{21, 22, 23, 24}));

  const double var = 5.0 / 3.0, sd = std::sqrt(var);  // of 1, 2, 3, 4 with n - 1
  auto edge = [&](TOrientation orientation, TEdgeOp op) {
    m.EdgeVector(orientation, op, &v);
    return v.Storage();
  };
  EXPECT_EQ(edge(orColumns, eoSum), (TDoubleArray{50, 90, 130}));
  EXPECT_EQ(edge(orColumns, eoSumSqr), (TDoubleArray{630, 2030, 4230}));
  EXPECT_EQ(edge(orRows, eoRange), (TDoubleArray{20, 20, 20, 20}));
  EXPECT_EQ(edge(orRows, eoMax), (TDoubleArray{31, 32, 33, 34}));
  EXPECT_EQ(edge(orRows, eoMin), (TDoubleArray{11, 12, 13, 14}));
  EXPECT_NEAR(edge(orColumns, eoVariance).at(2), var, 1e-15);
  EXPECT_NEAR(edge(orColumns, eoStdDev).at(0), sd, 1e-15);
  m.EdgeVector(orColumns, eoMin, TIntArray{4, 2, 99}, &v);  // rows 4 and 2 only
  EXPECT_EQ(v.Storage(), (TDoubleArray{12, 22, 32}));
  m.EdgeVector(orRows, eoMean, TIntArray{0, 7}, &v);  // no valid column
  EXPECT_EQ(v.Storage(), (TDoubleArray{0, 0, 0, 0}));

  TVector means, sds;
  m.StandardizeColumns(&means, &sds);
  EXPECT_EQ(means.Storage(), (TDoubleArray{12.5, 22.5, 32.5}));
  EXPECT_NEAR(sds.GetVal(2), sd, 1e-15);
  FillPattern(m, 3, 4);
  m.MeanCenterRows(&means);
  EXPECT_EQ(means.Storage(), (TDoubleArray{21, 22, 23, 24}));
}

}  // namespace
}  // namespace quv::test
