// Functions that treat 2D arrays as images or masks: resampling, flood fill, cell lists,
// mask shapes, colour maps and bounding rectangles. Indices are [row][column], 0-based; codes
// kOAOk (0), kOAEmpty (-1), kOABadBounds (-2) as declared in stats.h.
#pragma once

#include <cstdint>

#include "quv/base/types.h"
#include "quv/openarrays/stats.h"

namespace quv {

/// Dest := Source resampled to NewRows x NewCols by bilinear interpolation with the corner
/// cells kept in place (new cell i sits at old position i * (rows - 1) / (NewRows - 1); a
/// single new row or column samples the first). Code 0, -1 (empty), -2 (Source ragged or a
/// new size below 1); Dest is resized, untouched on failure.
std::int32_t Resample2DArray(const TDouble2DArray& Source, std::int32_t NewRows,
                             std::int32_t NewCols, TDouble2DArray& Dest);

/// Replaces the 4-connected region of cells equal to Data[Row][Col] (the start cell included)
/// by NewValue; ragged rows are respected. Returns the number of cells changed (0 when
/// NewValue equals the region's value), -1 for an empty array or -2 when the start cell does
/// not exist. The Boolean form first stores every true cell as 1.
std::int32_t FloodFillArray(TInt2DArray& Data, std::int32_t Row, std::int32_t Col,
                            std::int32_t NewValue);
std::int32_t FloodFillArray(TBool2DArray& Data, std::int32_t Row, std::int32_t Col, bool NewValue);

/// Positions := one row {row, column} per true (non-zero) mask cell, or per cell equal to
/// Value, in storage order. Returns the number of cells listed.
std::int32_t ListCellPositions(const TBool2DArray& Mask, TInt2DArray& Positions);
std::int32_t ListCellPositions(const TInt2DArray& Data, std::int32_t Value, TInt2DArray& Positions);

/// Shapes of CreateMaskShape, inscribed into the NRows x NCols box.
enum TMaskShape : std::uint8_t {
  msRectangle,  ///< every cell
  msEllipse,    ///< cells whose centre lies in the inscribed ellipse
  msDiamond,    ///< cells whose centre lies in the inscribed rhombus
};

/// Mask := a new NRows x NCols mask holding Shape. Code 0 or -2 (a size below 1; Mask is
/// then untouched).
std::int32_t CreateMaskShape(TMaskShape Shape, std::int32_t NRows, std::int32_t NCols,
                             TBool2DArray& Mask);

/// ColorMap := for each cell the palette entry Palette[k], k = floor((x - Low) / (High - Low)
/// * n) clamped into 0..n-1 for a palette of n entries (NaN takes entry 0). Code 0, -1 (Data
/// empty) or -2 (empty palette or High not above Low); ColorMap resized to the shape of Data.
std::int32_t ConvertToColorMap(const TDouble2DArray& Data, double Low, double High,
                               const TIntArray& Palette, TInt2DArray& ColorMap);

/// The smallest rectangle holding every true (non-zero) cell: Left/Right are columns,
/// Top/Bottom rows, all inclusive. Returns false and leaves Rect alone when there is none.
bool BoundingRect(const TBool2DArray& Mask, TRectInt& Rect);
bool BoundingRect(const TInt2DArray& Data, TRectInt& Rect);

}  // namespace quv
