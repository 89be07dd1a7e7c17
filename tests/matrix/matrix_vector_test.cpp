#include <gtest/gtest.h>

#include "quv/matrix/matrix.h"

namespace quv {
namespace {

TDoubleArray Values(const TVector& v) {
  return v.Storage();
}

// 3 columns x 4 rows with element (c, r) = 10 c + r.
void Pattern(TMatrix& m) {
  m.Resize(3, 4);
  for (int c = 1; c <= 3; ++c) {
    for (int r = 1; r <= 4; ++r)
      m.SetVal(c, r, 10.0 * c + r);
  }
}

TEST(MatrixVector, CopyRowAndColumnToVector) {
  TMatrix m;
  Pattern(m);
  TVector v;
  v.Resize(5);
  v.Fill(9.0);
  int changes = 0;
  v.OnChange = [&](TComponent*) { ++changes; };
  m.CopyColToVec(&v, 2, 2, 4, 2);
  EXPECT_EQ(Values(v), (TDoubleArray{0, 22, 23, 24, 0}));
  EXPECT_EQ(changes, 1);
  m.CopyRowToVec(&v, 9, 0, 0, 0);  // row clamped to 4; its first element lands before the start
  EXPECT_EQ(Values(v), (TDoubleArray{24, 34, 0, 0, 0}));
  m.CopyRowToVec(&v, 1, 0, 0, -2);  // all three land before element 1: nothing happens
  EXPECT_EQ(Values(v), (TDoubleArray{24, 34, 0, 0, 0}));
  m.CopyRowToVec(&v, 1, 0, 0, 6);  // beyond the end
  EXPECT_EQ(changes, 2);
  m.CopyColToVec(&v, 3, 0, 0);
  EXPECT_EQ(Values(v), (TDoubleArray{31, 32, 33, 34, 0}));
  m.CopyColToVec(nullptr, 1, 0, 0);
}

TEST(MatrixVector, CopyFromVectorIntoColumnOrRow) {
  TMatrix m;
  Pattern(m);
  TVector v;
  v.Resize(3);
  v.FillSerial(1.0, 1.0);
  int changes = 0;
  m.OnChange = [&](TComponent*) { ++changes; };
  m.CopyFromVec(&v, 0, 0, 1, 3);  // down column 1 from row 3: the third element is dropped
  EXPECT_EQ(m.GetVal(1, 3), 1.0);
  EXPECT_EQ(m.GetVal(1, 4), 2.0);
  m.CopyFromVec(&v, 3, 2, 2, 1, dimRows);  // elements 2..3 along row 1 from column 2
  EXPECT_EQ(m.GetVal(2, 1), 2.0);
  EXPECT_EQ(m.GetVal(3, 1), 3.0);
  EXPECT_EQ(changes, 2);
}

TEST(MatrixVector, ProductsWithVectors) {
  TMatrix m;
  Pattern(m);
  TVector x, y;
  x.Resize(3);
  x.FillSerial(1.0, 1.0);  // (1, 2, 3)
  ASSERT_TRUE(m.Multiply(&x, &y));
  ASSERT_EQ(y.NrOfElem(), 4);
  for (int r = 1; r <= 4; ++r)
    EXPECT_EQ(y.GetVal(r), (10 + r) + 2 * (20 + r) + 3 * (30 + r));
  TVector z;
  ASSERT_TRUE(m.TransposeAndMultiply(&y, &z));
  ASSERT_EQ(z.NrOfElem(), 3);
  double expected = 0;
  for (int r = 1; r <= 4; ++r)
    expected += (20 + r) * y.GetVal(r);
  EXPECT_EQ(z.GetVal(2), expected);
  EXPECT_FALSE(m.Multiply(&y, &z));  // length 4 against 3 columns
  EXPECT_FALSE(m.TransposeAndMultiply(&x, &z));
  EXPECT_EQ(z.NrOfElem(), 3);
  EXPECT_FALSE(m.Multiply(&x, nullptr));
}

TEST(MatrixVector, MeansEdgeVectorsAndNormalisationVectors) {
  TMatrix m;
  Pattern(m);
  TVector v;
  m.MeanVec(dimColumns, &v);
  EXPECT_EQ(Values(v), (TDoubleArray{12.5, 22.5, 32.5}));
  m.MeanVec(dimRows, &v);
  EXPECT_EQ(Values(v), (TDoubleArray{21, 22, 23, 24}));

  m.EdgeVector(orColumns, eoSum, &v);
  EXPECT_EQ(Values(v), (TDoubleArray{50, 90, 130}));
  m.EdgeVector(orRows, eoRange, &v);
  EXPECT_EQ(Values(v), (TDoubleArray{20, 20, 20, 20}));
  m.EdgeVector(orRows, eoMax, &v);
  EXPECT_EQ(v.GetVal(4), 34.0);
  m.EdgeVector(orColumns, eoVariance, &v);
  EXPECT_NEAR(v.GetVal(1), 5.0 / 3.0, 1e-15);
  m.EdgeVector(orColumns, eoStdDev, &v);
  EXPECT_NEAR(v.GetVal(3), std::sqrt(5.0 / 3.0), 1e-15);
  m.EdgeVector(orColumns, eoSumSqr, &v);
  EXPECT_EQ(v.GetVal(1), 11 * 11 + 12 * 12 + 13 * 13 + 14 * 14);
  m.EdgeVector(orColumns, eoMin, TIntArray{4, 2, 99}, &v);  // rows 4 and 2 only
  EXPECT_EQ(Values(v), (TDoubleArray{12, 22, 32}));
  m.EdgeVector(orRows, eoMean, TIntArray{0, 7}, &v);  // no valid column
  EXPECT_EQ(Values(v), (TDoubleArray{0, 0, 0, 0}));

  TVector means, sds;
  m.StandardizeColumns(&means, &sds);
  EXPECT_EQ(Values(means), (TDoubleArray{12.5, 22.5, 32.5}));
  EXPECT_NEAR(sds.GetVal(2), std::sqrt(5.0 / 3.0), 1e-15);
  EXPECT_NEAR(m.Sum(2, 0, 2, 0), 0.0, 1e-14);
  Pattern(m);
  m.MeanCenterRows(&means);
  EXPECT_EQ(means.NrOfElem(), 4);
  EXPECT_EQ(m.GetVal(1, 1), -10.0);
}

}  // namespace
}  // namespace quv
