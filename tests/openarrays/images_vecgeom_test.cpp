#include <gtest/gtest.h>

#include <cmath>

#include "quv/openarrays/openarrays.h"

namespace quv {
namespace {

TEST(ImageArrays, ResampleKeepsCornersAndInterpolates) {
  const TDouble2DArray src{{0, 10}, {20, 30}};
  TDouble2DArray dst;
  EXPECT_EQ(Resample2DArray(src, 3, 5, dst), 0);
  ASSERT_EQ(dst.size(), 3u);
  ASSERT_EQ(dst[0].size(), 5u);
  EXPECT_EQ(dst[0][0], 0.0);
  EXPECT_EQ(dst[2][4], 30.0);
  EXPECT_DOUBLE_EQ(dst[0][1], 2.5);
  EXPECT_DOUBLE_EQ(dst[1][2], 15.0);  // centre: mean of the four corners
  EXPECT_EQ(Resample2DArray(src, 0, 5, dst), -2);
  EXPECT_EQ(Resample2DArray(TDouble2DArray{{1, 2}, {3}}, 2, 2, dst), -2);
  EXPECT_EQ(dst.size(), 3u);  // untouched
  EXPECT_EQ(Resample2DArray(src, 1, 1, dst), 0);
  EXPECT_EQ(dst, (TDouble2DArray{{0.0}}));
}

TEST(ImageArrays, FloodFillListsAndBoundingRect) {
  TInt2DArray img{{1, 1, 0, 1}, {0, 1, 0, 1}, {1, 1, 1}};
  EXPECT_EQ(FloodFillArray(img, 0, 0, 7), 6);  // 4-connected: (0,3),(1,3) stay apart
  EXPECT_EQ(img, (TInt2DArray{{7, 7, 0, 1}, {0, 7, 0, 1}, {7, 7, 7}}));
  EXPECT_EQ(FloodFillArray(img, 0, 3, 1), 0);
  EXPECT_EQ(FloodFillArray(img, 2, 3, 5), -2);  // ragged: no such cell
  TInt2DArray empty;
  EXPECT_EQ(FloodFillArray(empty, 0, 0, 1), -1);
  TBool2DArray mask{{0, 0, 0}, {0, 2, 0}, {0, 0, 1}};
  EXPECT_EQ(FloodFillArray(mask, 0, 0, true), 7);
  EXPECT_EQ(mask, (TBool2DArray{{1, 1, 1}, {1, 1, 1}, {1, 1, 1}}));

  TInt2DArray pos;
  EXPECT_EQ(ListCellPositions(TBool2DArray{{0, 1}, {1}}, pos), 2);
  EXPECT_EQ(pos, (TInt2DArray{{0, 1}, {1, 0}}));
  EXPECT_EQ(ListCellPositions(img, 0, pos), 3);
  EXPECT_EQ(pos[2], (TIntArray{1, 2}));

  TRectInt r{-1, -1, -1, -1};
  EXPECT_FALSE(BoundingRect(TBool2DArray{{0, 0}, {0}}, r));
  EXPECT_EQ(r.Left, -1);
  EXPECT_TRUE(BoundingRect(TInt2DArray{{0, 0, 0, 0}, {0, 0, 3}, {0, 4}}, r));
  EXPECT_EQ(r, (TRectInt{1, 1, 2, 2}));
}

TEST(ImageArrays, MaskShapesAndColorMaps) {
  TBool2DArray m;
  EXPECT_EQ(CreateMaskShape(msEllipse, 5, 5, m), 0);
  EXPECT_EQ(CountTrueCellsOfArray(m), 21);  // 5x5 disc without the four corners
  EXPECT_EQ(m[0][0], 0);
  EXPECT_EQ(m[2][2], 1);
  EXPECT_EQ(CreateMaskShape(msDiamond, 5, 5, m), 0);
  EXPECT_EQ(CountTrueCellsOfArray(m), 13);
  EXPECT_EQ(CreateMaskShape(msRectangle, 2, 3, m), 0);
  EXPECT_EQ(CountTrueCellsOfArray(m), 6);
  EXPECT_EQ(CreateMaskShape(msRectangle, 0, 3, m), -2);
  EXPECT_EQ(m.size(), 2u);

  TInt2DArray colors;
  const TIntArray palette{100, 200, 300, 400};
  EXPECT_EQ(ConvertToColorMap(TDouble2DArray{{-5, 0, 0.26, 0.5}, {0.99, 1, 7, std::nan("")}}, 0.0,
                              1.0, palette, colors),
            0);
  EXPECT_EQ(colors, (TInt2DArray{{100, 100, 200, 300}, {400, 400, 400, 100}}));
  EXPECT_EQ(ConvertToColorMap(TDouble2DArray{{1}}, 1.0, 1.0, palette, colors), -2);
  EXPECT_EQ(ConvertToColorMap(TDouble2DArray{{1}}, 0.0, 1.0, TIntArray{}, colors), -2);
}

TEST(VectorGeometry, ProductsLinearityNormalisation) {
  TDoubleArray c;
  EXPECT_EQ(VectorCrossProduct({1, 0, 0}, {0, 1, 0}, c), 0);
  EXPECT_EQ(c, (TDoubleArray{0, 0, 1}));
  EXPECT_EQ(VectorCrossProduct({1, 2, 3}, {4, 5, 6}, c), 0);
  EXPECT_EQ(c, (TDoubleArray{-3, 6, -3}));
  EXPECT_EQ(VectorCrossProduct({1, 2}, {4, 5}, c), -2);
  EXPECT_EQ(c, (TDoubleArray{-3, 6, -3}));
  double p = 5;
  EXPECT_EQ(VectorDotProduct(TIntArray{1, 2, 3}, TIntArray{4, 5, 6}, p), 0);
  EXPECT_EQ(p, 32.0);
  EXPECT_EQ(VectorDotProduct(TDoubleArray{1}, TDoubleArray{1, 2}, p), -2);
  EXPECT_EQ(p, 0.0);

  EXPECT_TRUE(CheckLinearity(TDoubleArray{1, 3, 5, 7}, 1e-12));
  EXPECT_FALSE(CheckLinearity(TDoubleArray{1, 3, 5, 8}, 0.1));
  EXPECT_TRUE(CheckLinearity(TDoubleArray{1, 3, 5, 8}, 0.5));
  EXPECT_TRUE(CheckLinearity(TDouble2DArray{{2, 0}, {2, 5}, {2, -3}}, 1e-12));  // vertical
  EXPECT_FALSE(CheckLinearity(TDouble2DArray{{0, 0}, {1, 1}, {2, 0}}, 0.1));
  EXPECT_FALSE(CheckLinearity(TDouble2DArray{{0, 0}, {1}}, 0.1));
  EXPECT_FALSE(CheckLinearity(TDoubleArray{}, 1.0));

  TDouble2DArray m{{3, 0}, {4, 0}};
  EXPECT_EQ(NormalizeColumns(m), 0);
  EXPECT_EQ(m, (TDouble2DArray{{0.6, 0}, {0.8, 0}}));
  TDouble2DArray rows{{3, 4}, {0}, {2}};
  EXPECT_EQ(NormalizeRows(rows), 0);
  EXPECT_EQ(rows, (TDouble2DArray{{0.6, 0.8}, {0}, {1}}));
  EXPECT_EQ(NormalizeColumns(rows), -2);
}

}  // namespace
}  // namespace quv
