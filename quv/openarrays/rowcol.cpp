#include "quv/openarrays/rowcol.h"

#include <algorithm>
#include <cstdint>

#include "quv/base/errors.h"
#include "quv/openarrays/array_core.h"

namespace quv {

namespace {

constexpr const char* kDeprecated = "deprecated function, see help for details";

bool IndexIn(std::int32_t i, std::size_t size) {
  return i >= 0 && static_cast<std::size_t>(i) < size;
}

// True when every row of data holds column col.
template <class A>
bool AllRowsHold(const A& data, std::int32_t col) {
  return col >= 0 && std::all_of(data.begin(), data.end(), [col](const auto& row) {
           return static_cast<std::size_t>(col) < row.size();
         });
}

template <class T>
std::int32_t ColumnToImpl(const std::vector<std::vector<T>>& source, std::int32_t col,
                          std::vector<T>& dest) {
  if (detail::IsEmptyArray(source) || dest.empty()) return detail::kEmpty;
  if (!AllRowsHold(source, col) || dest.size() < source.size()) return detail::kBadBounds;
  for (std::size_t i = 0; i < source.size(); ++i)
    dest[i] = source[i][static_cast<std::size_t>(col)];
  return detail::kOk;
}

template <class T>
std::int32_t RowToImpl(const std::vector<std::vector<T>>& source, std::int32_t row,
                       std::vector<T>& dest) {
  if (detail::IsEmptyArray(source) || dest.empty()) return detail::kEmpty;
  if (!IndexIn(row, source.size())) return detail::kBadBounds;
  const auto& r = source[static_cast<std::size_t>(row)];
  if (dest.size() < r.size()) return detail::kBadBounds;
  std::copy(r.begin(), r.end(), dest.begin());
  return detail::kOk;
}

template <class T>
std::int32_t ToColumnImpl(const std::vector<T>& source, std::int32_t col,
                          std::vector<std::vector<T>>& dest) {
  if (source.empty() || detail::IsEmptyArray(dest)) return detail::kEmpty;
  if (dest.size() < source.size() || col < 0) return detail::kBadBounds;
  for (std::size_t i = 0; i < source.size(); ++i) {
    if (static_cast<std::size_t>(col) >= dest[i].size()) return detail::kBadBounds;
  }
  for (std::size_t i = 0; i < source.size(); ++i)
    dest[i][static_cast<std::size_t>(col)] = source[i];
  return detail::kOk;
}

template <class T>
std::int32_t ToRowImpl(const std::vector<T>& source, std::int32_t row,
                       std::vector<std::vector<T>>& dest) {
  if (source.empty() || detail::IsEmptyArray(dest)) return detail::kEmpty;
  if (!IndexIn(row, dest.size())) return detail::kBadBounds;
  auto& r = dest[static_cast<std::size_t>(row)];
  if (r.size() < source.size()) return detail::kBadBounds;
  std::copy(source.begin(), source.end(), r.begin());
  return detail::kOk;
}

// Shared checks of the ranged column and row copies: source range [lo, hi] of a line of
// length n to dest from dest_ix, as CopyArray does.
std::int32_t CheckLineCopy(std::size_t n, std::int32_t lo, std::int32_t hi, std::int32_t dest_ix,
                           std::size_t dest_size) {
  if (lo < 0 || hi < lo || static_cast<std::size_t>(hi) >= n || !IndexIn(dest_ix, dest_size) ||
      std::int64_t{dest_ix} + (std::int64_t{hi} - lo + 1) > static_cast<std::int64_t>(dest_size)) {
    return detail::kBadBounds;
  }
  return detail::kOk;
}

template <class T>
std::int32_t RemoveColumnImpl(std::vector<std::vector<T>>& data, std::int32_t col) {
  if (detail::IsEmptyArray(data)) return detail::kEmpty;
  if (!AllRowsHold(data, col)) return detail::kBadBounds;
  for (auto& row : data)
    row.erase(row.begin() + col);
  return detail::kOk;
}

template <class T>
std::int32_t RemoveRowImpl(std::vector<std::vector<T>>& data, std::int32_t row) {
  if (data.empty()) return detail::kEmpty;
  if (!IndexIn(row, data.size())) return detail::kBadBounds;
  data.erase(data.begin() + row);
  return detail::kOk;
}

template <class T>
std::vector<T> SerializeImpl(const std::vector<std::vector<T>>& data) {
  std::vector<T> out;
  out.reserve(detail::ElemCount(data));
  for (const auto& row : data)
    out.insert(out.end(), row.begin(), row.end());
  return out;
}

}  // namespace

std::int32_t Copy2DColTo1DArray(const TDouble2DArray& Source, std::int32_t Col, std::int32_t Lo,
                                std::int32_t Hi, std::int32_t DestIx, TDoubleArray& Dest) {
  if (detail::IsEmptyArray(Source) || Dest.empty()) return kOAEmpty;
  if (CheckLineCopy(Source.size(), Lo, Hi, DestIx, Dest.size()) != kOAOk || Col < 0) {
    return kOABadBounds;
  }
  const auto c = static_cast<std::size_t>(Col);
  for (std::int32_t i = Lo; i <= Hi; ++i) {
    if (c >= Source[static_cast<std::size_t>(i)].size()) return kOABadBounds;
  }
  for (std::int32_t i = Lo; i <= Hi; ++i) {
    Dest[static_cast<std::size_t>(DestIx + i - Lo)] = Source[static_cast<std::size_t>(i)][c];
  }
  return kOAOk;
}

std::int32_t Copy2DRowTo1DArray(const TDouble2DArray& Source, std::int32_t Row, std::int32_t Lo,
                                std::int32_t Hi, std::int32_t DestIx, TDoubleArray& Dest) {
  if (detail::IsEmptyArray(Source) || Dest.empty()) return kOAEmpty;
  if (!IndexIn(Row, Source.size())) return kOABadBounds;
  const auto& r = Source[static_cast<std::size_t>(Row)];
  if (CheckLineCopy(r.size(), Lo, Hi, DestIx, Dest.size()) != kOAOk) return kOABadBounds;
  std::copy(r.begin() + Lo, r.begin() + Hi + 1, Dest.begin() + DestIx);
  return kOAOk;
}

std::int32_t CopyArrayColumn(const TDouble2DArray& Source, std::int32_t Col, TDoubleArray& Dest) {
  return ColumnToImpl(Source, Col, Dest);
}

std::int32_t CopyArrayColumn(const TInt2DArray& Source, std::int32_t Col, TIntArray& Dest) {
  return ColumnToImpl(Source, Col, Dest);
}

std::int32_t CopyArrayColumn(const TBool2DArray& Source, std::int32_t Col, TBoolArray& Dest) {
  return ColumnToImpl(Source, Col, Dest);
}

std::int32_t CopyArrayRow(const TDouble2DArray& Source, std::int32_t Row, TDoubleArray& Dest) {
  return RowToImpl(Source, Row, Dest);
}

std::int32_t CopyArrayRow(const TInt2DArray& Source, std::int32_t Row, TIntArray& Dest) {
  return RowToImpl(Source, Row, Dest);
}

std::int32_t CopyArrayRow(const TBool2DArray& Source, std::int32_t Row, TBoolArray& Dest) {
  return RowToImpl(Source, Row, Dest);
}

std::int32_t CopyToArrayColumn(const TDoubleArray& Source, std::int32_t Col, TDouble2DArray& Dest) {
  return ToColumnImpl(Source, Col, Dest);
}

std::int32_t CopyToArrayColumn(const TIntArray& Source, std::int32_t Col, TInt2DArray& Dest) {
  return ToColumnImpl(Source, Col, Dest);
}

std::int32_t CopyToArrayColumn(const TBoolArray& Source, std::int32_t Col, TBool2DArray& Dest) {
  return ToColumnImpl(Source, Col, Dest);
}

std::int32_t CopyToArrayRow(const TDoubleArray& Source, std::int32_t Row, TDouble2DArray& Dest) {
  return ToRowImpl(Source, Row, Dest);
}

std::int32_t CopyToArrayRow(const TIntArray& Source, std::int32_t Row, TInt2DArray& Dest) {
  return ToRowImpl(Source, Row, Dest);
}

std::int32_t CopyToArrayRow(const TBoolArray& Source, std::int32_t Row, TBool2DArray& Dest) {
  return ToRowImpl(Source, Row, Dest);
}

[[noreturn]] void CopyVectorToArrayColumn(const TDoubleArray& Source, std::int32_t Index,
                                          TDouble2DArray& Dest) {
  (void)Source;
  (void)Index;
  (void)Dest;
  throw EQUVError(kDeprecated);
}

[[noreturn]] void CopyVectorToArrayColumn(const TIntArray& Source, std::int32_t Index,
                                          TInt2DArray& Dest) {
  (void)Source;
  (void)Index;
  (void)Dest;
  throw EQUVError(kDeprecated);
}

[[noreturn]] void CopyVectorToArrayColumn(const TBoolArray& Source, std::int32_t Index,
                                          TBool2DArray& Dest) {
  (void)Source;
  (void)Index;
  (void)Dest;
  throw EQUVError(kDeprecated);
}

[[noreturn]] void CopyVectorToArrayRow(const TDoubleArray& Source, std::int32_t Index,
                                       TDouble2DArray& Dest) {
  (void)Source;
  (void)Index;
  (void)Dest;
  throw EQUVError(kDeprecated);
}

[[noreturn]] void CopyVectorToArrayRow(const TIntArray& Source, std::int32_t Index,
                                       TInt2DArray& Dest) {
  (void)Source;
  (void)Index;
  (void)Dest;
  throw EQUVError(kDeprecated);
}

[[noreturn]] void CopyVectorToArrayRow(const TBoolArray& Source, std::int32_t Index,
                                       TBool2DArray& Dest) {
  (void)Source;
  (void)Index;
  (void)Dest;
  throw EQUVError(kDeprecated);
}

std::int32_t RemoveColumn(TDouble2DArray& Data, std::int32_t Col) {
  return RemoveColumnImpl(Data, Col);
}

std::int32_t RemoveColumn(TInt2DArray& Data, std::int32_t Col) {
  return RemoveColumnImpl(Data, Col);
}

std::int32_t RemoveRow(TDouble2DArray& Data, std::int32_t Row) {
  return RemoveRowImpl(Data, Row);
}

std::int32_t RemoveRow(TInt2DArray& Data, std::int32_t Row) {
  return RemoveRowImpl(Data, Row);
}

TDoubleArray SerializeArray(const TDouble2DArray& Data) {
  return SerializeImpl(Data);
}

TIntArray SerializeArray(const TInt2DArray& Data) {
  return SerializeImpl(Data);
}

}  // namespace quv
