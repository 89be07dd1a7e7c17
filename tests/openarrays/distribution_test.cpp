#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <limits>
#include <sstream>
#include <string>

#include "quv/openarrays/openarrays.h"

namespace quv {
namespace {

TEST(PercentileArray, MatchesReferenceTableAndRanges) {
  std::ifstream in(std::string(QUV_TEST_DATA_DIR) + "/openarrays_percentiles.txt");
  ASSERT_TRUE(in.is_open());
  std::string line;
  TDoubleArray data;
  int checked = 0;
  while (std::getline(in, line)) {
    if (line.empty() || line[0] == '#') continue;
    std::istringstream fields(line);
    if (line.rfind("data", 0) == 0) {
      std::string tag;
      fields >> tag;
      for (double x; fields >> x;)
        data.push_back(x);
      continue;
    }
    double prob = 0;
    double expected = 0;
    fields >> prob >> expected;
    EXPECT_NEAR(PercentileArray(prob, data), expected, 1e-12) << "prob " << prob;
    // The same data as one 2D row, as a column, and inside a larger 1D range.
    TDouble2DArray column;
    for (double x : data)
      column.push_back({x});
    const auto last = static_cast<std::int32_t>(data.size()) - 1;
    EXPECT_NEAR(PercentileArray(prob, column, 0, 0, last, 0), expected, 1e-12);
    TDoubleArray padded = data;
    padded.insert(padded.begin(), 1e9);
    padded.push_back(-1e9);
    EXPECT_NEAR(PercentileArray(prob, padded, 1, last + 1), expected, 1e-12);
    ++checked;
  }
  EXPECT_EQ(checked, 11);
  EXPECT_EQ(PercentileArray(1.5, data), 9.75);   // clamped to the maximum
  EXPECT_EQ(PercentileArray(-0.5, data), -3.0);  // and to the minimum
  EXPECT_EQ(PercentileArray(0.5, TIntArray{4, 1, 3, 2}), 2.5);
  EXPECT_EQ(PercentileArray(0.5, TDoubleArray{}), 0.0);
  EXPECT_EQ(PercentileArray(0.5, data, 3, 2), 0.0);
  EXPECT_EQ(PercentileArray(0.5, TDouble2DArray{{1, 2}, {3}}, 0, 1, 1, 1), 0.0);  // ragged
}

TEST(FrequDistOfArray, BinsCountersAndCodes) {
  const TDoubleArray data{-1.0, 0.0, 0.4, 0.5, 1.99, 2.0, 2.5, 3.0, 7.0};
  TIntArray hist{99};
  std::int32_t under = 5;
  std::int32_t over = 5;
  // Bins [0,1) [1,2) [2,3): 3 bins for low 0, high 2, width 1; 3.0 and 7.0 overflow.
  EXPECT_EQ(FrequDistOfArray(data, 0, 8, 0.0, 2.0, 1.0, hist, under, over), 0);
  EXPECT_EQ(hist, (TIntArray{3, 1, 2}));
  EXPECT_EQ(under, 1);
  EXPECT_EQ(over, 2);
  EXPECT_EQ(FrequDistOfArray(data, 2, 3, 0.0, 2.0, 1.0, hist, under, over), 0);
  EXPECT_EQ(hist, (TIntArray{2, 0, 0}));
  EXPECT_EQ(FrequDistOfArray(data, 0, 9, 0.0, 2.0, 1.0, hist, under, over), -2);
  EXPECT_TRUE(hist.empty());
  EXPECT_EQ(under, 0);
  EXPECT_EQ(FrequDistOfArray(data, 0, 8, 0.0, 2.0, 0.0, hist, under, over), -2);
  EXPECT_EQ(FrequDistOfArray(data, 0, 8, 3.0, 2.0, 1.0, hist, under, over), -2);
  EXPECT_EQ(FrequDistOfArray(TDoubleArray{}, 0, 0, 0.0, 2.0, 1.0, hist, under, over), -1);

  const TDouble2DArray grid{{0.5, 1.5}, {2.5, std::nan("")}};
  EXPECT_EQ(FrequDistOfArray(grid, 0, 0, 1, 1, 0.0, 1.0, 1.0, hist, under, over), 0);
  EXPECT_EQ(hist, (TIntArray{1, 1}));
  EXPECT_EQ(over, 2);  // 2.5 and NaN
  const TBool2DArray mask{{1, 0}, {1, 0}};
  EXPECT_EQ(FrequDistOfArray(grid, mask, 0.0, 2.0, 1.0, hist, under, over), 0);
  EXPECT_EQ(hist, (TIntArray{1, 0, 1}));
  EXPECT_EQ(over, 0);
  EXPECT_EQ(FrequDistOfArray(grid, TBool2DArray{{1, 0}, {1}}, 0.0, 2.0, 1.0, hist, under, over),
            -2);
}

TEST(CountValuesAndMasks, CountsSumsAndCodes) {
  EXPECT_EQ(CountValues(TDoubleArray{1, 2, 3, 4, 5}, 1, 4, 4.0, 2.0), 3);
  EXPECT_EQ(CountValues(TIntArray{1, 2, 3}, 0, 3, 1, 2), -2);
  EXPECT_EQ(CountValues(TInt2DArray{}, 0, 0, 0, 0, 1, 2), -1);
  EXPECT_EQ(CountValues(TInt3DArray{{{1, 2}, {3, 4}}, {{5, 6}, {7, 8}}}, 0, 1, 0, 1, 1, 1, 3, 6),
            2);  // cells 4 and 6 of the chosen column
  EXPECT_EQ(CountValues(TDouble4DArray{{{{1.5}}}}, 0, 0, 0, 0, 0, 0, 0, 0, 1.5, 1.5), 1);

  double sum = 9;
  EXPECT_EQ(SumArrayMasked(TInt2DArray{{1, 2}, {3, 4, 5}}, {{1, 1}, {0, 1, 1}}, sum), 0);
  EXPECT_EQ(sum, 12.0);
  EXPECT_EQ(SumArrayMasked(TDouble2DArray{{1, 2}, {3, 4, 5}}, {{1, 1}, {0, 1}}, sum), -2);
  EXPECT_EQ(sum, 0.0);
  EXPECT_EQ(CountTrueCellsOfArray(TBoolArray{1, 0, 2}), 2);
  EXPECT_EQ(CountTrueCellsOfArray(TBool2DArray{{1, 0}, {1, 1, 1}}), 4);
  EXPECT_EQ(CountTrueCellsOfArray(TBool2DArray{{1, 0}, {1, 1, 1}}, 0, 1, 1, 1), 1);
  EXPECT_EQ(CountTrueCellsOfArray(TBool2DArray{{1, 0}, {1, 1, 1}}, 0, 1, 1, 2), -2);

  EXPECT_EQ(SumOfSquaredDiffs(TDoubleArray{1, 2, 3}, TDoubleArray{1, 4, 0}), 13.0);
  EXPECT_EQ(SumOfSquaredDiffs(TDoubleArray{1, 2}, TDoubleArray{1}), -2.0);
  EXPECT_EQ(SumOfSquaredDiffs(TDoubleArray{}, TDoubleArray{1}), -1.0);
  EXPECT_EQ(SumOfSquaredDiffs(TDoubleArray{1, 2}, TDouble2DArray{{0, 2}, {5, 4}}, 1), 5.0);
  EXPECT_EQ(SumOfSquaredDiffs(TDoubleArray{1, 2}, TDouble2DArray{{0, 2}, {5}}, 1), -2.0);
}

TEST(LocalWindows, MeanAndMedianCutAtBorders) {
  const TInt2DArray img{{1, 2, 3}, {4, 50, 6}, {7, 8, 9}};
  EXPECT_DOUBLE_EQ(LocalMean(img, 1, 1, 1, 1), 90.0 / 9.0);
  EXPECT_DOUBLE_EQ(LocalMedian(img, 1, 1, 1, 1), 6.0);
  EXPECT_DOUBLE_EQ(LocalMean(img, 0, 0, 1, 1), (1 + 2 + 4 + 50) / 4.0);  // corner: 4 cells
  EXPECT_DOUBLE_EQ(LocalMedian(img, 0, 0, 1, 1), 3.0);                   // (2 + 4) / 2
  EXPECT_DOUBLE_EQ(LocalMean(img, 2, 1, 0, 5), 8.0);                     // one row
  EXPECT_EQ(LocalMean(img, 3, 0, 1, 1), 0.0);
  EXPECT_EQ(LocalMedian(img, 0, 0, -1, 1), 0.0);
  const TDouble2DArray ragged{{1.0}, {2.0, 3.0}};
  EXPECT_DOUBLE_EQ(LocalMean(ragged, 1, 1, 1, 1), 2.0);
}

TEST(ShapeStatistics, CorrelationMonotonyDichotomy) {
  const TDouble2DArray xy{{1, 2, 9}, {2, 4, 1}, {3, 6, 5}, {4, 8, 0}};
  EXPECT_NEAR(PearsonCorrCoeffColsOfArray(xy, 0, 1), 1.0, 1e-15);
  // Reference from scipy.stats.pearsonr([1, 2, 3, 4], [9, 1, 5, 0]).
  EXPECT_NEAR(PearsonCorrCoeffColsOfArray(xy, 0, 2), -0.7219295436604962, 1e-12);
  EXPECT_EQ(PearsonCorrCoeffColsOfArray(xy, 0, 3), 0.0);
  EXPECT_EQ(PearsonCorrCoeffColsOfArray(TDouble2DArray{{1, 1}, {1, 2}}, 0, 1), 0.0);

  EXPECT_TRUE(IsMonotone(TDoubleArray{1, 1, 2}));
  EXPECT_FALSE(IsStrictlyMonotone(TDoubleArray{1, 1, 2}));
  EXPECT_TRUE(IsStrictlyMonotone(TIntArray{5, 3, -1}));
  EXPECT_FALSE(IsMonotone(TIntArray{1, 3, 2}));
  EXPECT_TRUE(IsMonotone(TIntArray{}));

  double v1 = 7;
  double v2 = 7;
  EXPECT_TRUE(IsDichotomous(TDoubleArray{2, 2, 5, 2, 5}, v1, v2));
  EXPECT_EQ(v1, 2.0);
  EXPECT_EQ(v2, 5.0);
  EXPECT_FALSE(IsDichotomous(TDoubleArray{2, 5, 6}, v1, v2));
  std::int32_t i1 = 3;
  std::int32_t i2 = 3;
  EXPECT_TRUE(IsDichotomous(TIntArray{4, 4}, i1, i2));
  EXPECT_EQ(i2, 4);
  EXPECT_FALSE(IsDichotomous(TIntArray{4}, i1, i2));
  EXPECT_EQ(i1, 0);
}

}  // namespace
}  // namespace quv
