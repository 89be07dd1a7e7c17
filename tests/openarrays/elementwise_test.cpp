#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "quv/openarrays/openarrays.h"

namespace quv {
namespace {

TEST(ElementwiseArithmetic, SumsDifferencesAndShapeChecks) {
  TInt2DArray r{{42}};
  EXPECT_EQ(AddArrays(TInt2DArray{{1, 2}, {3}}, TInt2DArray{{10, 20}, {30}}, r), 0);
  EXPECT_EQ(r, (TInt2DArray{{11, 22}, {33}}));
  EXPECT_EQ(AddArrays(TInt2DArray{{1, 2}, {3}}, TInt2DArray{{10, 20}, {30, 40}}, r), -2);
  EXPECT_EQ(r, (TInt2DArray{{11, 22}, {33}}));  // untouched
  EXPECT_EQ(SubtractArrays(TInt2DArray{}, TInt2DArray{{1}}, r), -1);
  TDouble4DArray a{{{{1.5, 2.5}}}};
  EXPECT_EQ(SubtractArrays(a, a, a), 0);  // the result may be an operand
  EXPECT_EQ(a, (TDouble4DArray{{{{0.0, 0.0}}}}));
  TIntArray w;
  EXPECT_EQ(AddArrays(TIntArray{2147483647}, TIntArray{1}, w), 0);
  EXPECT_EQ(w[0], -2147483647 - 1);  // wraps, no undefined overflow
  TDoubleArray e;
  EXPECT_EQ(MultiplyArraysElemw(TDoubleArray{2, 3}, TDoubleArray{4, 5}, e), 0);
  EXPECT_EQ(e, (TDoubleArray{8, 15}));

  TInt3DArray acc{{{1, 1}}, {{1}}};
  EXPECT_EQ(AccumulateArray(TInt3DArray{{{2, 3}}, {{4}}}, acc), 0);
  EXPECT_EQ(acc, (TInt3DArray{{{3, 4}}, {{5}}}));
  EXPECT_EQ(AccumulateArray(TInt3DArray{{{2, 3}}}, acc), -2);
  EXPECT_EQ(acc, (TInt3DArray{{{3, 4}}, {{5}}}));
  EXPECT_EQ(AccumulateArray(acc, acc), 0);
  EXPECT_EQ(acc, (TInt3DArray{{{6, 8}}, {{10}}}));
}

TEST(ElementwiseArithmetic, MatrixProductsAgainstHandComputedValues) {
  const TDouble2DArray a{{1, 2, 3}, {4, 5, 6}};
  const TDouble2DArray b{{7, 8}, {9, 10}, {11, 12}};
  TDouble2DArray c;
  EXPECT_EQ(MultiplyArrays(a, b, c), 0);
  EXPECT_EQ(c, (TDouble2DArray{{58, 64}, {139, 154}}));
  EXPECT_EQ(MultiplyArrays(a, a, c), -2);
  EXPECT_EQ(c, (TDouble2DArray{{58, 64}, {139, 154}}));
  TDoubleArray v;
  EXPECT_EQ(MultiplyArrays(a, TDoubleArray{1, 0, -1}, v), 0);
  EXPECT_EQ(v, (TDoubleArray{-2, -2}));
  EXPECT_EQ(MultiplyArrays(TDoubleArray{1, 1}, a, v), 0);
  EXPECT_EQ(v, (TDoubleArray{5, 7, 9}));
  TIntArray iv;
  EXPECT_EQ(MultiplyArrays(TInt2DArray{{1, 2}, {3}}, TIntArray{1, 1}, iv), -2);  // ragged
  TInt2DArray ic;
  EXPECT_EQ(MultiplyArrays(TInt2DArray{{65536}}, TInt2DArray{{65536}}, ic), 0);
  EXPECT_EQ(ic[0][0], 0);  // 2^32 cut to 32 bits
}

TEST(ElementwiseInPlace, ScalarsIncrementsAbsAndReciprocal) {
  TInt2DArray g{{1, 2, 3}, {4, 5, 6}};
  EXPECT_EQ(MultiplyArrayByScalar(g, 10, 0, 1, 1, 2), 0);
  EXPECT_EQ(g, (TInt2DArray{{1, 20, 30}, {4, 50, 60}}));
  EXPECT_EQ(MultiplyArrayByScalar(g, 10, 0, 1, 2, 2), -2);
  EXPECT_EQ(AddScalarToArray(g, -1), 0);
  EXPECT_EQ(g, (TInt2DArray{{0, 19, 29}, {3, 49, 59}}));
  EXPECT_EQ(IncArray(g, 1, 2, 5), 0);
  EXPECT_EQ(g[1][2], 64);
  EXPECT_EQ(IncArray(g, 1, 3, 5), -2);
  TDouble3DArray none;
  EXPECT_EQ(IncArray(none, 0, 0, 0, 1.0), -1);
  TIntArray v{-3, 0, -2147483647 - 1};
  EXPECT_EQ(AbsValArray(v), 0);
  EXPECT_EQ(v, (TIntArray{3, 0, -2147483647 - 1}));
  TDouble2DArray d{{2, 0}, {-4}};
  EXPECT_EQ(ReciprocalArray(d), 1);
  EXPECT_EQ(d, (TDouble2DArray{{0.5, 0}, {-0.25}}));
  TDoubleArray ed;
  EXPECT_EQ(ReciprocalArray(ed), -1);
}

TEST(StructuralTransforms, TransposeFlipEqualAndConversions) {
  TInt2DArray t;
  EXPECT_EQ(TransposeArray(TInt2DArray{{1, 2, 3}, {4, 5, 6}}, t), 0);
  EXPECT_EQ(t, (TInt2DArray{{1, 4}, {2, 5}, {3, 6}}));
  EXPECT_EQ(TransposeArray(TInt2DArray{{1, 2}, {3}}, t), -2);
  EXPECT_EQ(TransposeArray(t, t), 0);
  EXPECT_EQ(t, (TInt2DArray{{1, 2, 3}, {4, 5, 6}}));

  TInt3DArray c{{{1, 2}, {3, 4}}, {{5, 6}, {7, 8}}};
  EXPECT_EQ(FlipDimArray(c, 2), 0);
  EXPECT_EQ(c, (TInt3DArray{{{3, 4}, {1, 2}}, {{7, 8}, {5, 6}}}));
  EXPECT_EQ(FlipDimArray(c, 3), 0);
  EXPECT_EQ(c, (TInt3DArray{{{4, 3}, {2, 1}}, {{8, 7}, {6, 5}}}));
  EXPECT_EQ(FlipDimArray(c, 4), -2);
  EXPECT_EQ(FlipDimArray(c, 0), -2);
  TDoubleArray f{1, 2, 3};
  EXPECT_EQ(FlipDimArray(f, 1), 0);
  EXPECT_EQ(f, (TDoubleArray{3, 2, 1}));

  EXPECT_TRUE(EqualArrays(TInt2DArray{{1}, {2, 3}}, TInt2DArray{{1}, {2, 3}}));
  EXPECT_FALSE(EqualArrays(TInt2DArray{{1}, {2, 3}}, TInt2DArray{{1, 2}, {3}}));
  EXPECT_FALSE(EqualArrays(TIntArray{1}, TIntArray{2}));

  TBool2DArray mask;
  EXPECT_EQ(DichotomizeArray(TDouble2DArray{{0.4, 0.5}, {0.6}}, 0.5, mask), 0);
  EXPECT_EQ(mask, (TBool2DArray{{0, 1}, {1}}));
  TDoubleArray inplace{1, 5, 3};
  EXPECT_EQ(DichotomizeArray(inplace, 3.0), 0);
  EXPECT_EQ(inplace, (TDoubleArray{0, 1, 1}));
  TInt2DArray nums;
  BoolToNumArray(mask, nums);
  EXPECT_EQ(nums, (TInt2DArray{{0, 1}, {1}}));

  TIntArray classes{7};
  EXPECT_EQ(DiscretizeArray(TDoubleArray{-1, 0, 0.5, 1, 9}, TDoubleArray{0, 1}, classes), 0);
  EXPECT_EQ(classes, (TIntArray{0, 1, 1, 2, 2}));
  EXPECT_EQ(DiscretizeArray(TDoubleArray{1}, TDoubleArray{1, 0}, classes), -2);
  EXPECT_EQ(classes, (TIntArray{0, 1, 1, 2, 2}));

  TDouble2DArray img{{2, 4}, {6}};
  EXPECT_EQ(RescaleArray(img, 0.0, 1.0), 0);
  EXPECT_EQ(img, (TDouble2DArray{{0, 0.5}, {1}}));
  TDoubleArray flat{3, 3};
  EXPECT_EQ(RescaleArray(flat, -1.0, 1.0), 0);
  EXPECT_EQ(flat, (TDoubleArray{0, 0}));
}

}  // namespace
}  // namespace quv
