#include "quv/openarrays/images.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "quv/openarrays/array_core.h"

namespace quv {

namespace {

// Position in the old grid of new cell i of n cells spread over old cells 0..old_n-1.
double SamplePosition(std::int32_t i, std::int32_t n, std::size_t old_n) {
  if (n < 2) return 0.0;
  return static_cast<double>(i) * static_cast<double>(old_n - 1) / (n - 1);
}

template <class T>
std::int32_t FloodFillImpl(std::vector<std::vector<T>>& data, std::int32_t row, std::int32_t col,
                           T new_value) {
  if (detail::IsEmptyArray(data)) return kOAEmpty;
  const auto exists = [&data](std::int64_t r, std::int64_t c) {
    return r >= 0 && c >= 0 && static_cast<std::size_t>(r) < data.size() &&
           static_cast<std::size_t>(c) < data[static_cast<std::size_t>(r)].size();
  };
  if (!exists(row, col)) return kOABadBounds;
  const T old_value = data[static_cast<std::size_t>(row)][static_cast<std::size_t>(col)];
  if (old_value == new_value) return 0;
  // An explicit stack instead of recursion: a large region would overflow the call stack.
  std::vector<std::pair<std::int64_t, std::int64_t>> stack{{row, col}};
  std::int32_t changed = 0;
  while (!stack.empty()) {
    const auto [r, c] = stack.back();
    stack.pop_back();
    if (!exists(r, c)) continue;
    T& cell = data[static_cast<std::size_t>(r)][static_cast<std::size_t>(c)];
    if (cell != old_value) continue;
    cell = new_value;
    ++changed;
    stack.emplace_back(r - 1, c);
    stack.emplace_back(r + 1, c);
    stack.emplace_back(r, c - 1);
    stack.emplace_back(r, c + 1);
  }
  return changed;
}

template <class T, class Pred>
std::int32_t ListImpl(const std::vector<std::vector<T>>& data, Pred pred, TInt2DArray& positions) {
  TInt2DArray out;
  for (std::size_t i = 0; i < data.size(); ++i) {
    for (std::size_t j = 0; j < data[i].size(); ++j) {
      if (pred(data[i][j]))
        out.push_back({static_cast<std::int32_t>(i), static_cast<std::int32_t>(j)});
    }
  }
  positions = std::move(out);
  return static_cast<std::int32_t>(positions.size());
}

template <class T>
bool BoundingRectImpl(const std::vector<std::vector<T>>& data, TRectInt& rect) {
  bool found = false;
  TRectInt r;
  for (std::size_t i = 0; i < data.size(); ++i) {
    for (std::size_t j = 0; j < data[i].size(); ++j) {
      if (data[i][j] == 0) continue;
      const auto row = static_cast<std::int32_t>(i);
      const auto col = static_cast<std::int32_t>(j);
      if (!found) {
        r = {col, row, col, row};
        found = true;
      }
      r.Left = std::min(r.Left, col);
      r.Right = std::max(r.Right, col);
      r.Top = std::min(r.Top, row);
      r.Bottom = std::max(r.Bottom, row);
    }
  }
  if (found) rect = r;
  return found;
}

}  // namespace

std::int32_t Resample2DArray(const TDouble2DArray& Source, std::int32_t NewRows,
                             std::int32_t NewCols, TDouble2DArray& Dest) {
  if (detail::IsEmptyArray(Source)) return kOAEmpty;
  if (!detail::IsRectangular(Source) || NewRows < 1 || NewCols < 1) return kOABadBounds;
  const std::size_t rows = Source.size();
  const std::size_t cols = Source[0].size();
  TDouble2DArray out(static_cast<std::size_t>(NewRows),
                     TDoubleArray(static_cast<std::size_t>(NewCols)));
  for (std::int32_t i = 0; i < NewRows; ++i) {
    const double y = SamplePosition(i, NewRows, rows);
    const auto r0 = std::min(static_cast<std::size_t>(y), rows - 1);
    const std::size_t r1 = std::min(r0 + 1, rows - 1);
    const double fy = y - static_cast<double>(r0);
    for (std::int32_t j = 0; j < NewCols; ++j) {
      const double x = SamplePosition(j, NewCols, cols);
      const auto c0 = std::min(static_cast<std::size_t>(x), cols - 1);
      const std::size_t c1 = std::min(c0 + 1, cols - 1);
      const double fx = x - static_cast<double>(c0);
      const double top = Source[r0][c0] + (Source[r0][c1] - Source[r0][c0]) * fx;
      const double bottom = Source[r1][c0] + (Source[r1][c1] - Source[r1][c0]) * fx;
      out[static_cast<std::size_t>(i)][static_cast<std::size_t>(j)] = top + (bottom - top) * fy;
    }
  }
  Dest = std::move(out);
  return kOAOk;
}

std::int32_t FloodFillArray(TInt2DArray& Data, std::int32_t Row, std::int32_t Col,
                            std::int32_t NewValue) {
  return FloodFillImpl(Data, Row, Col, NewValue);
}

std::int32_t FloodFillArray(TBool2DArray& Data, std::int32_t Row, std::int32_t Col, bool NewValue) {
  // Any non-zero byte counts as true, so normalise the start value's region by truth.
  if (detail::IsEmptyArray(Data)) return kOAEmpty;
  if (Row < 0 || Col < 0 || static_cast<std::size_t>(Row) >= Data.size() ||
      static_cast<std::size_t>(Col) >= Data[static_cast<std::size_t>(Row)].size()) {
    return kOABadBounds;
  }
  for (auto& row : Data) {
    for (auto& b : row)
      b = b != 0 ? 1 : 0;
  }
  return FloodFillImpl(Data, Row, Col, static_cast<std::uint8_t>(NewValue ? 1 : 0));
}

std::int32_t ListCellPositions(const TBool2DArray& Mask, TInt2DArray& Positions) {
  return ListImpl(
      Mask, [](std::uint8_t b) { return b != 0; }, Positions);
}

std::int32_t ListCellPositions(const TInt2DArray& Data, std::int32_t Value,
                               TInt2DArray& Positions) {
  return ListImpl(
      Data, [Value](std::int32_t x) { return x == Value; }, Positions);
}

std::int32_t CreateMaskShape(TMaskShape Shape, std::int32_t NRows, std::int32_t NCols,
                             TBool2DArray& Mask) {
  if (NRows < 1 || NCols < 1) return kOABadBounds;
  TBool2DArray out(static_cast<std::size_t>(NRows), TBoolArray(static_cast<std::size_t>(NCols)));
  const double ry = NRows / 2.0;
  const double rx = NCols / 2.0;
  for (std::int32_t i = 0; i < NRows; ++i) {
    for (std::int32_t j = 0; j < NCols; ++j) {
      // Cell centre relative to the box centre, in units of the half-axes.
      const double dy = (i + 0.5 - ry) / ry;
      const double dx = (j + 0.5 - rx) / rx;
      bool inside = true;
      if (Shape == msEllipse) inside = dx * dx + dy * dy <= 1.0;
      if (Shape == msDiamond) inside = std::fabs(dx) + std::fabs(dy) <= 1.0;
      out[static_cast<std::size_t>(i)][static_cast<std::size_t>(j)] = inside ? 1 : 0;
    }
  }
  Mask = std::move(out);
  return kOAOk;
}

std::int32_t ConvertToColorMap(const TDouble2DArray& Data, double Low, double High,
                               const TIntArray& Palette, TInt2DArray& ColorMap) {
  if (detail::IsEmptyArray(Data)) return kOAEmpty;
  if (Palette.empty() || !(High > Low)) return kOABadBounds;
  const auto n = static_cast<double>(Palette.size());
  TInt2DArray out(Data.size());
  for (std::size_t i = 0; i < Data.size(); ++i) {
    out[i].resize(Data[i].size());
    for (std::size_t j = 0; j < Data[i].size(); ++j) {
      const double k = std::floor((Data[i][j] - Low) / (High - Low) * n);
      const double clamped = std::isnan(k) ? 0.0 : std::clamp(k, 0.0, n - 1);
      out[i][j] = Palette[static_cast<std::size_t>(clamped)];
    }
  }
  ColorMap = std::move(out);
  return kOAOk;
}

bool BoundingRect(const TBool2DArray& Mask, TRectInt& Rect) {
  return BoundingRectImpl(Mask, Rect);
}

bool BoundingRect(const TInt2DArray& Data, TRectInt& Rect) {
  return BoundingRectImpl(Data, Rect);
}

}  // namespace quv
