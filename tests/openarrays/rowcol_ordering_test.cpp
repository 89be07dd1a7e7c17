#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

#include "quv/openarrays/openarrays.h"

namespace quv {
namespace {

TEST(RowsAndColumns, CopiesBothWaysWithCodes) {
  const TInt2DArray grid{{1, 2, 3}, {4, 5, 6}};
  TIntArray line(4, 0);
  EXPECT_EQ(CopyArrayColumn(grid, 2, line), 0);
  EXPECT_EQ(line, (TIntArray{3, 6, 0, 0}));
  EXPECT_EQ(CopyArrayRow(grid, 1, line), 0);
  EXPECT_EQ(line, (TIntArray{4, 5, 6, 0}));
  TIntArray shorter(1, 9);
  EXPECT_EQ(CopyArrayRow(grid, 1, shorter), -2);
  EXPECT_EQ(CopyArrayColumn(grid, 3, line), -2);
  EXPECT_EQ(CopyArrayColumn(TInt2DArray{{1, 2}, {3}}, 1, line), -2);  // ragged
  EXPECT_EQ(line, (TIntArray{4, 5, 6, 0}));
  TIntArray none;
  EXPECT_EQ(CopyArrayRow(grid, 0, none), -1);

  TDouble2DArray d{{0, 0}, {0, 0}, {0, 0}};
  EXPECT_EQ(CopyToArrayColumn(TDoubleArray{7, 8}, 1, d), 0);
  EXPECT_EQ(d, (TDouble2DArray{{0, 7}, {0, 8}, {0, 0}}));
  EXPECT_EQ(CopyToArrayRow(TDoubleArray{5, 6}, 2, d), 0);
  EXPECT_EQ(d[2], (TDoubleArray{5, 6}));
  EXPECT_EQ(CopyToArrayRow(TDoubleArray{5, 6, 7}, 0, d), -2);
  EXPECT_EQ(CopyToArrayColumn(TDoubleArray{1, 2, 3, 4}, 0, d), -2);
  TBool2DArray b{{0}, {0}};
  EXPECT_EQ(CopyToArrayColumn(TBoolArray{1, 1}, 0, b), 0);
  EXPECT_EQ(b, (TBool2DArray{{1}, {1}}));

  TDoubleArray dest(4, -1.0);
  const TDouble2DArray src{{1, 2, 3}, {4, 5, 6}, {7, 8, 9}};
  EXPECT_EQ(Copy2DColTo1DArray(src, 1, 1, 2, 2, dest), 0);
  EXPECT_EQ(dest, (TDoubleArray{-1, -1, 5, 8}));
  EXPECT_EQ(Copy2DColTo1DArray(src, 1, 0, 2, 2, dest), -2);  // does not fit
  EXPECT_EQ(Copy2DRowTo1DArray(src, 2, 0, 2, 0, dest), 0);
  EXPECT_EQ(dest, (TDoubleArray{7, 8, 9, 8}));
  EXPECT_EQ(Copy2DRowTo1DArray(src, 3, 0, 0, 0, dest), -2);
  EXPECT_EQ(Copy2DRowTo1DArray(src, 0, 2, 1, 0, dest), -2);
}

TEST(RowsAndColumns, DeprecatedMembersRaise) {
  TDouble2DArray d{{1}};
  TInt2DArray i{{1}};
  TBool2DArray b{{1}};
  try {
    CopyVectorToArrayColumn(TDoubleArray{1}, 0, d);
    FAIL() << "no exception";
  } catch (const EQUVError& e) {
    EXPECT_STREQ(e.what(), "deprecated function, see help for details");
  }
  EXPECT_THROW(CopyVectorToArrayRow(TIntArray{1}, 0, i), EQUVError);
  EXPECT_THROW(CopyVectorToArrayRow(TBoolArray{1}, 0, b), EQUVError);
  EXPECT_EQ(d, (TDouble2DArray{{1}}));
}

TEST(RowsAndColumns, RemoveAndSerialize) {
  TInt2DArray g{{1, 2, 3}, {4, 5, 6}};
  EXPECT_EQ(RemoveColumn(g, 1), 0);
  EXPECT_EQ(g, (TInt2DArray{{1, 3}, {4, 6}}));
  EXPECT_EQ(RemoveColumn(g, 2), -2);
  EXPECT_EQ(RemoveRow(g, 0), 0);
  EXPECT_EQ(g, (TInt2DArray{{4, 6}}));
  EXPECT_EQ(RemoveRow(g, 1), -2);
  TDouble2DArray r{{1, 2}, {3}};
  EXPECT_EQ(RemoveColumn(r, 1), -2);
  EXPECT_EQ(r, (TDouble2DArray{{1, 2}, {3}}));
  EXPECT_EQ(SerializeArray(r), (TDoubleArray{1, 2, 3}));
}

class OpenArraySort : public ::testing::Test {
 protected:
  void TearDown() override {
    MathFeedBackProc = nullptr;
    AbortMathProc = false;
  }
};

TEST_F(OpenArraySort, SortsAndAbortsAfterTheCurrentPass) {
  TIntArray small{3, -1, 2};
  EXPECT_EQ(SortArray(small), 0);
  EXPECT_EQ(small, (TIntArray{-1, 2, 3}));
  EXPECT_EQ(SortArray(small, false), 0);
  EXPECT_EQ(small, (TIntArray{3, 2, -1}));

  std::mt19937 gen(3);
  TDoubleArray big(200000);
  for (auto& x : big)
    x = std::uniform_real_distribution<double>(0, 1)(gen);
  const TDoubleArray original = big;
  ProcStat = 0.0;
  MathFeedBackProc = [](double) { AbortMathProc = true; };
  EXPECT_EQ(SortArray(big), -2);
  EXPECT_DOUBLE_EQ(ProcStat, 1.0);
  EXPECT_FALSE(std::is_sorted(big.begin(), big.end()));
  // An aborted pass only moves elements: the multiset is intact.
  TDoubleArray a = big;
  TDoubleArray b = original;
  std::sort(a.begin(), a.end());
  std::sort(b.begin(), b.end());
  EXPECT_EQ(a, b);
  EXPECT_EQ(SortAndRemoveDuplicates(big), -2);
  EXPECT_EQ(big.size(), 200000u);

  MathFeedBackProc = nullptr;
  TDoubleArray dup{3, 1, 3, std::nan(""), 2, 1, std::nan("")};
  EXPECT_EQ(SortAndRemoveDuplicates(dup), 4);
  EXPECT_EQ(dup[2], 3.0);
  EXPECT_TRUE(std::isnan(dup[3]));
}

TEST(OpenArrayOrdering, PermuteShuffleAndFind) {
  TDoubleArray d{10, 20, 30};
  EXPECT_EQ(PermuteArray(d, TIntArray{2, 0, 1}), 0);
  EXPECT_EQ(d, (TDoubleArray{30, 10, 20}));
  EXPECT_EQ(PermuteArray(d, TIntArray{0, 0, 1}), -2);
  EXPECT_EQ(PermuteArray(d, TIntArray{0, 1}), -2);
  EXPECT_EQ(d, (TDoubleArray{30, 10, 20}));

  SetRandSeed(99);
  TIntArray s(50);
  for (std::int32_t i = 0; i < 50; ++i)
    s[static_cast<std::size_t>(i)] = i;
  ShuffleArray(s);
  TIntArray sorted = s;
  std::sort(sorted.begin(), sorted.end());
  EXPECT_EQ(sorted[49], 49);
  EXPECT_EQ(std::adjacent_find(sorted.begin(), sorted.end()), sorted.end());
  EXPECT_NE(s, sorted);
  SetRandSeed(99);
  TIntArray again = sorted;
  ShuffleArray(again);
  EXPECT_EQ(again, s);  // reproducible from the seed

  EXPECT_EQ(FindInArray(TDoubleArray{5, 1, 3, 1}, 1.2), 1);
  EXPECT_EQ(FindInArray(TIntArray{4, 8}, 6), 0);  // tie: the first
  EXPECT_EQ(FindInArray(TIntArray{}, 6), -1);
  const TDoubleArray asc{1, 3, 5, 7, 9};
  EXPECT_EQ(FindInSortedArray(asc, 5.0), 2);
  EXPECT_EQ(FindInSortedArray(asc, 6.0), 3);  // tie between 5 and 7: the upper
  EXPECT_EQ(FindInSortedArray(asc, 5.9), 2);
  EXPECT_EQ(FindInSortedArray(asc, -4.0), 0);
  EXPECT_EQ(FindInSortedArray(asc, 40.0), 4);
  EXPECT_EQ(FindInSortedArray(TIntArray{9, 7, 5, 3}, 4), 3);
  EXPECT_EQ(FindInSortedArray(TIntArray{9, 7, 5, 3}, 8), 1);
  EXPECT_EQ(FindInSortedArray(TIntArray{}, 8), -1);
}

}  // namespace
}  // namespace quv
