#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <map>
#include <string>

#include "matrix/matrix_test_util.h"

namespace quv::test {
namespace {

// Columns (2,4,4,4) (5,5,7,9) (1,8,3,6.5), with reference values from the data file.
class MatrixStats : public ::testing::Test {
 protected:
  void SetUp() override {
    std::ifstream in(std::string(QUV_TEST_DATA_DIR) + "/matrix_stats_reference.txt");
    for (std::string name; in >> name;) {
      if (name[0] == '#') {
        in.ignore(1000, '\n');
      } else {
        in >> ref_[name];
      }
    }
    ASSERT_EQ(ref_.size(), 15u);
    SetRows(m_, {{2, 5, 1}, {4, 5, 8}, {4, 7, 3}, {4, 9, 6.5}});
  }
  double Ref(const std::string& name) { return ref_.at(name); }

  TMatrix m_;
  std::map<std::string, double> ref_;
};

TEST_F(MatrixStats, MomentsMeansAndPercentilesOverSubRanges) {
  double mean = 0, var = 0, skew = 0, kurt = 0;
  m_.MeanVar(0, 0, 0, 0, mean, var);
  EXPECT_NEAR(mean, Ref("mean_all"), 1e-15);
  EXPECT_NEAR(var, Ref("var_all"), 1e-14);
  m_.MeanVar(1, 1, 2, 4, mean, var);  // columns 1..2: mean 5, sample variance 32/7
  EXPECT_DOUBLE_EQ(mean, 5.0);
  EXPECT_NEAR(var, 32.0 / 7.0, 1e-15);
  m_.MeanVar(3, 2, 3, 2, mean, var);
  EXPECT_EQ(std::pair(mean, var), std::pair(8.0, 0.0));

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
  EXPECT_EQ(std::pair(skew, kurt), std::pair(0.0, 0.0));

  EXPECT_NEAR(m_.GeometricMean(0, 0, 0, 0), Ref("gmean_all"), 1e-14);
  EXPECT_NEAR(m_.HarmonicMean(0, 0, 0, 0), Ref("hmean_all"), 1e-14);
  EXPECT_EQ(m_.Sum(2, 3, 3, 4), 7 + 9 + 3 + 6.5);
  EXPECT_EQ(m_.Sum(3, 4, 2, 3), 7 + 9 + 3 + 6.5);  // bounds in any order
  EXPECT_EQ(m_.Trace(), 2 + 5 + 3);
  for (int p : {10, 25, 50, 75, 90}) {
    EXPECT_NEAR(m_.Percentile(p, 0, 0, 0, 0), Ref("pct" + std::to_string(p) + "_all"), 1e-14) << p;
  }
  EXPECT_NEAR(m_.Percentile(40, 2, 2, 3, 3), Ref("pct40_c23_r23"), 1e-14);
  EXPECT_EQ(m_.Percentile(150, 0, 0, 0, 0), 9.0);
  EXPECT_EQ(m_.Percentile(-5, 0, 0, 0, 0), 1.0);
  EXPECT_EQ(m_.Percentile(std::nan(""), 0, 0, 0, 0), 1.0);
  double q1 = 0, q2 = 0, q3 = 0;
  m_.Quartiles(0, 0, 0, 0, q1, q2, q3);
  EXPECT_NEAR(q1, Ref("pct25_all"), 1e-14);
  EXPECT_NEAR(q2, Ref("pct50_all"), 1e-14);
  EXPECT_NEAR(q3, Ref("pct75_all"), 1e-14);

  m_.SetName("M1");
  m_.SetVal(3, 1, 0.0);
  EXPECT_EQ(m_.GeometricMean(0, 0, 0, 0), 0.0);
  EXPECT_GT(m_.GeometricMean(1, 1, 2, 4), 0.0);  // the zero lies outside this range
  EXPECT_EQ(MessageOf([&] { m_.HarmonicMean(0, 0, 0, 0); }),
            "Component \"M1\": negative or zero argument passed to HarmonicMean");
  m_.SetVal(3, 2, -1.0);
  EXPECT_EQ(MessageOf([&] { m_.GeometricMean(0, 0, 0, 0); }),
            "Component \"M1\": negative argument passed to GeometricMean");
}

TEST_F(MatrixStats, CorrelateCountHistogram) {
  TMatrix y;
  SetRows(y, {{1, 4, 8}, {3, 6, 11}, {2, 9, 10}, {5, 7, 12.5}});
  EXPECT_NEAR(m_.Correlate(&y), Ref("pearson_xy"), 1e-14);
  EXPECT_NEAR(m_.Correlate(&m_), 1.0, 1e-15);
  y.Resize(4, 4);
  y.SetName("Y");
  EXPECT_EQ(MessageOf([&] { y.Correlate(&m_); }), "Component \"Y\": matrices do not match");
  EXPECT_EQ(m_.CountValues(0, 0, 0, 0, 4.0, 6.5), 6);
  EXPECT_EQ(m_.CountValues(1, 1, 1, 4, 4.0, 4.0), 3);

  // The values: 1 | 2,3 | 4,4,4,5,5 | 6.5,7 | 8,9. Bins of width 2 from 2: highBound 8 gives
  // four bins; so does 7 (round(2.5) + 1), but then 9 >= 7 + 2 is overflow.
  TIntArray hist{99};
  std::int32_t under = -1, over = -1, maxCount = -1;
  auto histogram = [&](double low, double high, double width) {
    m_.Histogram(0, 0, 0, 0, low, high, width, hist, under, over, maxCount);
    return std::tuple(hist, under, over, maxCount);
  };
  EXPECT_EQ(histogram(2.0, 8.0, 2.0), std::tuple(TIntArray{2, 5, 2, 2}, 1, 0, 5));
  EXPECT_EQ(histogram(2.0, 7.0, 2.0), std::tuple(TIntArray{2, 5, 2, 1}, 1, 1, 5));
  m_.SetName("H");
  for (auto [high, width] : {std::pair{1000.0, 1.0}, {1.0, 0.0}, {1.0, -1.0}}) {
    EXPECT_EQ(MessageOf([&] { histogram(0.0, high, width); }),
              "Component \"H.Histogram\": invalid number of bins")
        << high << " " << width;
  }
  // Untouched by the refused calls.
  EXPECT_EQ(std::tuple(hist, under, over, maxCount), std::tuple(TIntArray{2, 5, 2, 1}, 1, 1, 5));
}

TEST_F(MatrixStats, NormalisationsOfColumnsAndRows) {
  TMatrix a;
  a.Assign(m_);
  TDoubleArray means, sds, medians, spreads;
  double mean = 0, var = 0;
  a.StandardizeColumns(means, sds);
  EXPECT_EQ(means, (TDoubleArray{3.5, 6.5, 4.625}));
  for (int c = 1; c <= 3; ++c) {
    a.MeanVar(c, 1, c, 4, mean, var);
    EXPECT_NEAR(mean, 0.0, 1e-15);
    EXPECT_NEAR(var, 1.0, 1e-14);
  }
  a.Assign(m_);
  a.StandardizeRows(means, sds);
  a.MeanVar(1, 3, 3, 3, mean, var);
  EXPECT_NEAR(mean, 0.0, 1e-15);
  EXPECT_NEAR(var, 1.0, 1e-14);
  a.Assign(m_);
  a.MeanCenterRows(means);
  EXPECT_NEAR(means[0], 8.0 / 3.0, 1e-15);
  EXPECT_NEAR(a.Sum(1, 2, 3, 2), 0.0, 1e-14);

  // Column 2 (5, 5, 7, 9): median 6, 75th percentile 7.5. Column 1 (2, 4, 4, 4): median and
  // 75th percentile both 4, so it is only centred.
  a.Assign(m_);
  a.QNormalizeColumns(75.0, medians, spreads);
  EXPECT_EQ(std::pair(medians[1], spreads[1]), std::pair(6.0, 1.5));
  EXPECT_EQ(std::pair(medians[0], spreads[0]), std::pair(4.0, 0.0));
  EXPECT_EQ(std::pair(a.GetVal(1, 1), a.GetVal(2, 4)), std::pair(-2.0, 2.0));
}

TEST_F(MatrixStats, DiffDichotomizeResample) {
  TMatrix a, small, r;
  a.Assign(m_);
  EventLog log(a);
  a.Diff(1, acrColumns);
  EXPECT_EQ(RowsOf(a), (TRows{{2, 0, 7}, {0, 2, -5}, {0, 2, 3.5}}));
  a.Diff(2, acrRows);  // second differences across the three columns
  EXPECT_EQ(RowsOf(a), (TRows{{9}, {-9}, {-0.5}}));
  a.Diff(1, acrRows);  // one column left: the order must stay below the dimension
  a.Diff(0, acrColumns);
  EXPECT_EQ(log.resizes, 2);

  a.Assign(m_);
  a.Dichotomize(5.0);
  EXPECT_EQ(RowsOf(a), (TRows{{0, 1, 0}, {0, 1, 1}, {0, 1, 0}, {0, 1, 1}}));

  SetRows(small, {{0, 4}, {2, 6}});
  EventLog rlog(r);
  ASSERT_TRUE(small.ResampleExtMat(&r, 3, 5));
  EXPECT_EQ(RowsOf(r), (TRows{{0, 2, 4}, {0.5, 2.5, 4.5}, {1, 3, 5}, {1.5, 3.5, 5.5}, {2, 4, 6}}));
  EXPECT_EQ(rlog.Counts(), std::pair(1, 1));  // one operation: one OnChange, one OnResize
  ASSERT_TRUE(small.ResampleExtMat(&r, 3, 5));
  EXPECT_EQ(rlog.Counts(), std::pair(2, 1));
  EXPECT_FALSE(small.ResampleExtMat(&r, 0, 3));
  EXPECT_FALSE(small.ResampleExtMat(nullptr, 2, 3));
  EXPECT_EQ(Dims(r), std::pair(3, 5));
}

TEST_F(MatrixStats, NotANumberNeitherCrashesNorHangs) {
  m_.SetVal(2, 2, std::nan(""));
  m_.SetVal(1, 4, INFINITY);
  TIntArray hist;
  std::int32_t under = 0, over = 0, maxCount = 0;
  m_.Histogram(0, 0, 0, 0, 0.0, 10.0, 1.0, hist, under, over, maxCount);
  EXPECT_EQ(under + over, 1);                    // the infinity; the NaN is not counted
  EXPECT_EQ(m_.Percentile(0, 0, 0, 0, 0), 1.0);  // NaN sorts last
  m_.SortRows(2, true, 0, 0, 0, 0);
  EXPECT_EQ(m_.Sum(1, 0, 1, 0), INFINITY);  // the sort lost no row
}

}  // namespace
}  // namespace quv::test
