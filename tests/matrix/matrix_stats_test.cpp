#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <map>
#include <sstream>
#include <string>

#include "quv/matrix/matrix.h"

namespace quv {
namespace {

std::map<std::string, double> ReadReference() {
  std::map<std::string, double> values;
  std::ifstream in(std::string(QUV_TEST_DATA_DIR) + "/matrix_stats_reference.txt");
  std::string line;
  while (std::getline(in, line)) {
    if (line.empty() || line[0] == '#') continue;
    std::istringstream fields(line);
    std::string name;
    double value = 0.0;
    fields >> name >> value;
    values[name] = value;
  }
  return values;
}

class MatrixStats : public ::testing::Test {
 protected:
  void SetUp() override {
    ref_ = ReadReference();
    ASSERT_EQ(ref_.size(), 15u);
    m_.Resize(3, 4);
    m_.CopyFromArray(TDouble2DArray{{2, 4, 4, 4}, {5, 5, 7, 9}, {1, 8, 3, 6.5}}, 0, 0, 2, 3, 1, 1);
  }
  double Ref(const std::string& name) { return ref_.at(name); }

  TMatrix m_;
  std::map<std::string, double> ref_;
};

TEST_F(MatrixStats, MomentsAgainstReferenceValues) {
  double mean = 0, var = 0;
  m_.MeanVar(0, 0, 0, 0, mean, var);
  EXPECT_NEAR(mean, Ref("mean_all"), 1e-15);
  EXPECT_NEAR(var, Ref("var_all"), 1e-14);
  m_.MeanVar(1, 1, 2, 4, mean, var);  // columns 1..2: mean 5, sample variance 32/7
  EXPECT_DOUBLE_EQ(mean, 5.0);
  EXPECT_NEAR(var, 32.0 / 7.0, 1e-15);
  m_.MeanVar(3, 2, 3, 2, mean, var);
  EXPECT_EQ(mean, 8.0);
  EXPECT_EQ(var, 0.0);

  double skew = 0, kurt = 0;
  m_.SkewKurtSample(1, 1, 2, 4, skew, kurt);
  EXPECT_NEAR(skew, Ref("skew_sample_cols12"), 1e-14);
  EXPECT_NEAR(kurt, Ref("kurt_sample_cols12"), 1e-14);
  m_.SkewKurtSample(0, 0, 0, 0, skew, kurt);
  EXPECT_NEAR(skew, Ref("skew_sample_all"), 1e-14);
  EXPECT_NEAR(kurt, Ref("kurt_sample_all"), 1e-14);
  // Population form over columns 1..2: sum d^3 = 42, sum d^4 = 356, s^2 = 32/7.
  m_.SkewKurt(1, 1, 2, 4, skew, kurt);
  EXPECT_NEAR(skew, 42.0 / 8.0 / std::pow(32.0 / 7.0, 1.5), 1e-14);
  EXPECT_NEAR(kurt, 356.0 / 8.0 / std::pow(32.0 / 7.0, 2) - 3.0, 1e-14);
  m_.SkewKurt(1, 1, 1, 3, skew, kurt);  // three values: both 0
  EXPECT_EQ(skew, 0.0);
  EXPECT_EQ(kurt, 0.0);

  EXPECT_NEAR(m_.GeometricMean(0, 0, 0, 0), Ref("gmean_all"), 1e-14);
  EXPECT_NEAR(m_.HarmonicMean(0, 0, 0, 0), Ref("hmean_all"), 1e-14);
  EXPECT_EQ(m_.Sum(2, 3, 3, 4), 7 + 9 + 3 + 6.5);
  EXPECT_EQ(m_.Sum(3, 4, 2, 3), 7 + 9 + 3 + 6.5);  // bounds in any order
  EXPECT_EQ(m_.Trace(), 2 + 5 + 3);
}

TEST_F(MatrixStats, OrderStatistics) {
  for (int p : {10, 25, 50, 75, 90}) {
    EXPECT_NEAR(m_.Percentile(p, 0, 0, 0, 0), Ref("pct" + std::to_string(p) + "_all"), 1e-14) << p;
  }
  EXPECT_NEAR(m_.Percentile(40, 2, 2, 3, 3), Ref("pct40_c23_r23"), 1e-14);
  EXPECT_EQ(m_.Percentile(150, 0, 0, 0, 0), 9.0);
  EXPECT_EQ(m_.Percentile(-5, 0, 0, 0, 0), 1.0);
  double q1 = 0, q2 = 0, q3 = 0;
  m_.Quartiles(0, 0, 0, 0, q1, q2, q3);
  EXPECT_NEAR(q1, Ref("pct25_all"), 1e-14);
  EXPECT_NEAR(q2, Ref("pct50_all"), 1e-14);
  EXPECT_NEAR(q3, Ref("pct75_all"), 1e-14);
}

TEST_F(MatrixStats, MeansRaiseOnBadElements) {
  m_.SetName("M1");
  m_.SetVal(3, 1, 0.0);
  EXPECT_EQ(m_.GeometricMean(0, 0, 0, 0), 0.0);
  EXPECT_GT(m_.GeometricMean(1, 1, 2, 4), 0.0);  // the zero lies outside this range
  try {
    m_.HarmonicMean(0, 0, 0, 0);
    FAIL();
  } catch (const EQUVMatrixError& e) {
    EXPECT_STREQ(e.what(), "Component \"M1\": negative or zero argument passed to HarmonicMean");
  }
  m_.SetVal(3, 2, -1.0);
  try {
    m_.GeometricMean(0, 0, 0, 0);
    FAIL();
  } catch (const EQUVMatrixError& e) {
    EXPECT_STREQ(e.what(), "Component \"M1\": negative argument passed to GeometricMean");
  }
}

TEST_F(MatrixStats, CorrelateCountHistogram) {
  TMatrix y;
  y.Resize(3, 4);
  y.CopyFromArray(TDouble2DArray{{1, 3, 2, 5}, {4, 6, 9, 7}, {8, 11, 10, 12.5}}, 0, 0, 2, 3, 1, 1);
  EXPECT_NEAR(m_.Correlate(&y), Ref("pearson_xy"), 1e-14);
  EXPECT_NEAR(m_.Correlate(&m_), 1.0, 1e-15);
  y.Resize(4, 4);
  y.SetName("Y");
  try {
    y.Correlate(&m_);
    FAIL();
  } catch (const EQUVMatrixError& e) {
    EXPECT_STREQ(e.what(), "Component \"Y\": matrices do not match");
  }

  EXPECT_EQ(m_.CountValues(0, 0, 0, 0, 4.0, 6.5), 6);
  EXPECT_EQ(m_.CountValues(1, 1, 1, 4, 4.0, 4.0), 3);

  TIntArray hist{99};
  std::int32_t under = -1, over = -1, maxCount = -1;
  m_.Histogram(0, 0, 0, 0, 2.0, 8.0, 2.0, hist, under, over, maxCount);
  // Bins [2,4) [4,6) [6,8) [8,10): values 2,3 | 4,4,4,5,5 | 6.5,7 | 8,9; below 2: 1.
  EXPECT_EQ(hist, (TIntArray{2, 5, 2, 2}));
  EXPECT_EQ(under, 1);
  EXPECT_EQ(over, 0);
  EXPECT_EQ(maxCount, 5);
  m_.SetName("H");
  try {
    m_.Histogram(0, 0, 0, 0, 0.0, 1000.0, 1.0, hist, under, over, maxCount);
    FAIL();
  } catch (const EQUVMatrixError& e) {
    EXPECT_STREQ(e.what(), "Component \"H.Histogram\": invalid number of bins");
  }
  EXPECT_THROW(m_.Histogram(0, 0, 0, 0, 0.0, 1.0, 0.0, hist, under, over, maxCount),
               EQUVMatrixError);
  EXPECT_EQ(hist.size(), 4u);  // untouched by the refused calls
}

TEST_F(MatrixStats, NormalisationsOfColumnsAndRows) {
  TMatrix a;
  a.Assign(m_);
  TDoubleArray means, sds;
  a.StandardizeColumns(means, sds);
  EXPECT_EQ(means, (TDoubleArray{3.5, 6.5, 4.625}));
  for (int c = 1; c <= 3; ++c) {
    double mean = 0, var = 0;
    a.MeanVar(c, 1, c, 4, mean, var);
    EXPECT_NEAR(mean, 0.0, 1e-15);
    EXPECT_NEAR(var, 1.0, 1e-14);
  }
  a.Assign(m_);
  a.MeanCenterRows(means);
  EXPECT_NEAR(means[0], 8.0 / 3.0, 1e-15);
  EXPECT_NEAR(a.Sum(1, 2, 3, 2), 0.0, 1e-14);

  a.Assign(m_);
  TDoubleArray medians, spreads;
  a.QNormalizeColumns(75.0, medians, spreads);
  EXPECT_EQ(medians[1], 6.0);  // (5, 5, 7, 9)
  EXPECT_EQ(spreads[1], 1.5);  // 75th percentile 7.5
  EXPECT_EQ(a.GetVal(2, 4), 2.0);
  EXPECT_EQ(medians[0], 4.0);  // (2, 4, 4, 4): 75th percentile also 4, only centred
  EXPECT_EQ(spreads[0], 0.0);
  EXPECT_EQ(a.GetVal(1, 1), -2.0);

  a.Assign(m_);
  a.StandardizeRows(means, sds);
  double mean = 0, var = 0;
  a.MeanVar(1, 3, 3, 3, mean, var);
  EXPECT_NEAR(mean, 0.0, 1e-15);
  EXPECT_NEAR(var, 1.0, 1e-14);
}

TEST_F(MatrixStats, DiffDichotomizeResample) {
  TMatrix a;
  a.Assign(m_);
  int resizes = 0;
  a.OnResize = [&](TComponent*) { ++resizes; };
  a.Diff(1, acrColumns);
  EXPECT_EQ(a.NrOfRows(), 3);
  EXPECT_EQ(a.GetVal(2, 3), 2.0);  // 9 - 7
  a.Diff(2, acrRows);              // second differences across the three columns
  EXPECT_EQ(a.NrOfColumns(), 1);
  // Row 1 after the column differences is (2, 0, 7): first differences (-2, 7), second 9.
  EXPECT_EQ(a.GetVal(1, 1), 9.0);
  EXPECT_EQ(a.GetVal(1, 3), (3.5 - 2) - (2 - 0));  // row 3 was (0, 2, 3.5)
  EXPECT_EQ(resizes, 2);
  a.Diff(1, acrRows);  // one column left: order must stay below the dimension
  EXPECT_EQ(resizes, 2);

  a.Assign(m_);
  a.Dichotomize(5.0);
  EXPECT_EQ(a.Sum(0, 0, 0, 0), 6.0);  // 5, 5, 7, 9, 8, 6.5

  TMatrix r;
  TMatrix small;
  small.Resize(2, 2);
  small.CopyFromArray(TDouble2DArray{{0, 2}, {4, 6}}, 0, 0, 1, 1, 1, 1);
  ASSERT_TRUE(small.ResampleExtMat(&r, 3, 5));
  EXPECT_EQ(r.GetVal(1, 1), 0.0);
  EXPECT_EQ(r.GetVal(3, 5), 6.0);
  EXPECT_EQ(r.GetVal(2, 3), 3.0);  // the centre
  EXPECT_EQ(r.GetVal(1, 2), 0.5);
  EXPECT_FALSE(small.ResampleExtMat(&r, 0, 3));
  EXPECT_FALSE(small.ResampleExtMat(nullptr, 2, 3));
}

TEST_F(MatrixStats, NotANumberNeitherCrashesNorHangs) {
  m_.SetVal(2, 2, std::nan(""));
  m_.SetVal(1, 4, INFINITY);
  TIntArray hist;
  std::int32_t under = 0, over = 0, maxCount = 0;
  m_.Histogram(0, 0, 0, 0, 0.0, 10.0, 1.0, hist, under, over, maxCount);
  EXPECT_EQ(under + over, 1);                    // the infinity; the NaN is not counted
  EXPECT_EQ(m_.Percentile(0, 0, 0, 0, 0), 1.0);  // NaN sorts last
  TDoubleArray scale;
  TMatrix sq;
  sq.Resize(2, 2);
  sq.Fill(1.0);
  sq.SetVal(1, 2, INFINITY);
  EXPECT_TRUE(sq.Balance(scale));
  m_.SortRows(2, true, 0, 0, 0, 0);
  EXPECT_THROW(sq.Norm(ntSpectral), EQUVMatrixError);
}

}  // namespace
}  // namespace quv
