// TIntMatrix: dense operations forward to the matrix core; sparse ones work on the sorted
// triplet list (see tintmatrix.h for the rules).
#include <algorithm>
#include <limits>
#include <new>
#include <stdexcept>

#include "quv/matrix/tintmatrix.h"
#include "quv/vector/vector_detail.h"

namespace quv {
namespace {

// (col, row) order of the triplet list.
bool Before(const TIntTriplet& t, std::int32_t col, std::int32_t row) {
  return t.Col < col || (t.Col == col && t.Row < row);
}

}  // namespace

TIntMatrix::TIntMatrix(TComponent* owner) : Core(owner) {}

TIntMatrix::TIntMatrix(TComponent* owner, std::int32_t allocIncrement)
    : Core(owner), sparse_(true), increment_(std::max(allocIncrement, std::int32_t{1})) {
  triplets_ = GuardAllocation<EQUVMatrixError>(*this, msg::kNotEnoughMemoryOnHeap, [this] {
    return std::vector<TIntTriplet>(static_cast<std::size_t>(increment_));
  });
  capacity_ = increment_;
  SetStoreDirectly({});  // no dense store: 0 x 0
}

void TIntMatrix::BoundingBox(std::int32_t& lowCol, std::int32_t& highCol, std::int32_t& lowRow,
                             std::int32_t& highRow) const {
  lowCol = lowCol_;
  highCol = highCol_;
  lowRow = lowRow_;
  highRow = highRow_;
}

// 0-based position of (col, row) in the list, or of the triplet where the search ends when
// the cell is not there (the binary search of the list: lo moves past smaller triplets).
std::int32_t TIntMatrix::Search(std::int32_t col, std::int32_t row) const {
  std::int32_t lo = 0;
  std::int32_t hi = count_ - 1;
  while (lo < hi) {
    const std::int32_t mid = lo + (hi - lo) / 2;
    if (Before(triplets_[static_cast<std::size_t>(mid)], col, row)) {
      lo = mid + 1;
    } else {
      hi = mid;
    }
  }
  return lo;
}

std::int32_t TIntMatrix::GetVal(std::int32_t col, std::int32_t row) const {
  if (!sparse_) return Core::GetVal(col, row);
  if (count_ == 0 || col < lowCol_ || col > highCol_ || row < lowRow_ || row > highRow_) return 0;
  const TIntTriplet& t = triplets_[static_cast<std::size_t>(Search(col, row))];
  return t.Col == col && t.Row == row ? t.Value : 0;
}

void TIntMatrix::Grow() {
  const std::int64_t wanted = std::int64_t{capacity_} + increment_;
  if (wanted > std::numeric_limits<std::int32_t>::max())
    RaiseComponentError<EQUVMatrixError>(*this, msg::kNotEnoughMemoryOnHeap);
  std::vector<TIntTriplet> grown =
      GuardAllocation<EQUVMatrixError>(*this, msg::kNotEnoughMemoryOnHeap, [&] {
        std::vector<TIntTriplet> g(static_cast<std::size_t>(wanted));
        std::copy_n(triplets_.begin(), count_, g.begin());
        return g;
      });
  triplets_.swap(grown);
  capacity_ = static_cast<std::int32_t>(wanted);
}

// Writes a cell of the sparse list without an event; a 0 for a cell not in the list is
// stored only when storeZero.
void TIntMatrix::Put(std::int32_t col, std::int32_t row, std::int32_t value, bool storeZero) {
  std::int32_t place = Search(col, row);
  if (count_ > 0) {
    TIntTriplet& t = triplets_[static_cast<std::size_t>(place)];
    if (t.Col == col && t.Row == row) {
      t.Value = value;
      return;
    }
    if (Before(t, col, row)) ++place;
  }
  if (value == 0 && !storeZero) return;
  if (count_ + 1 > capacity_) Grow();
  const auto at = triplets_.begin() + place;
  std::move_backward(at, triplets_.begin() + count_, triplets_.begin() + count_ + 1);
  *at = TIntTriplet{col, row, value};
  ++count_;
  lowCol_ = std::min(lowCol_, col);
  highCol_ = std::max(highCol_, col);
  lowRow_ = std::min(lowRow_, row);
  highRow_ = std::max(highRow_, row);
  ncols_ = std::max(ncols_, highCol_);
  nrows_ = std::max(nrows_, highRow_);
}

void TIntMatrix::SetVal(std::int32_t col, std::int32_t row, std::int32_t value) {
  if (!sparse_) {
    Core::SetVal(col, row, value);
    return;
  }
  if (col < 1 || row < 1) return;
  Put(col, row, value, true);
  Changed();
}

void TIntMatrix::ResetBox() {
  lowCol_ = uc_MaxInt;
  highCol_ = 1;
  lowRow_ = uc_MaxInt;
  highRow_ = 1;
}

void TIntMatrix::RecomputeBox() {
  ResetBox();
  for (std::int32_t k = 0; k < count_; ++k) {
    const TIntTriplet& t = triplets_[static_cast<std::size_t>(k)];
    lowCol_ = std::min(lowCol_, t.Col);
    highCol_ = std::max(highCol_, t.Col);
    lowRow_ = std::min(lowRow_, t.Row);
    highRow_ = std::max(highRow_, t.Row);
  }
}

void TIntMatrix::Assign(const TIntMatrix& source) {
  if (&source == this) return;
  std::vector<TIntTriplet> list = GuardAllocation<EQUVMatrixError>(
      *this, msg::kNotEnoughMemoryOnHeap, [&] { return source.triplets_; });
  AssignCore(source);  // dense store, size, DataID, precisions, handlers
  triplets_.swap(list);
  sparse_ = source.sparse_;
  capacity_ = source.capacity_;
  increment_ = source.increment_;
  count_ = source.count_;
  lowCol_ = source.lowCol_;
  highCol_ = source.highCol_;
  lowRow_ = source.lowRow_;
  highRow_ = source.highRow_;
  ncols_ = source.ncols_;
  nrows_ = source.nrows_;
}

bool TIntMatrix::Resize(std::int32_t nCols, std::int32_t nRows) {
  if (!sparse_) return Core::Resize(nCols, nRows);
  if (nCols < 1 || nRows < 1 || (nCols == ncols_ && nRows == nrows_)) return false;
  const auto last =
      std::remove_if(triplets_.begin(), triplets_.begin() + count_,
                     [&](const TIntTriplet& t) { return t.Col > nCols || t.Row > nRows; });
  count_ = static_cast<std::int32_t>(last - triplets_.begin());
  RecomputeBox();
  ncols_ = nCols;
  nrows_ = nRows;
  Changed();
  Resized();
  return true;
}

bool TIntMatrix::ResizeAndClear(std::int32_t nCols, std::int32_t nRows) {
  if (!sparse_) return Core::ResizeAndClear(nCols, nRows);
  if (!Resize(nCols, nRows)) return false;
  count_ = 0;
  ResetBox();
  Changed();
  Resized();
  return true;
}

bool TIntMatrix::RemoveColumn(std::int32_t col) {
  if (!sparse_) return Core::RemoveColumn(col);
  if (col < 1 || col > ncols_ || ncols_ < 2) return false;
  const auto last = std::remove_if(triplets_.begin(), triplets_.begin() + count_,
                                   [col](const TIntTriplet& t) { return t.Col == col; });
  count_ = static_cast<std::int32_t>(last - triplets_.begin());
  for (std::int32_t k = 0; k < count_; ++k) {
    TIntTriplet& t = triplets_[static_cast<std::size_t>(k)];
    if (t.Col > col) --t.Col;
  }
  RecomputeBox();
  --ncols_;
  Changed();
  Resized();
  return true;
}

bool TIntMatrix::RemoveRow(std::int32_t row) {
  if (!sparse_) return Core::RemoveRow(row);
  if (row < 1 || row > nrows_ || nrows_ < 2) return false;
  const auto last = std::remove_if(triplets_.begin(), triplets_.begin() + count_,
                                   [row](const TIntTriplet& t) { return t.Row == row; });
  count_ = static_cast<std::int32_t>(last - triplets_.begin());
  // Moving the later rows down by one keeps the (column, row) order.
  for (std::int32_t k = 0; k < count_; ++k) {
    TIntTriplet& t = triplets_[static_cast<std::size_t>(k)];
    if (t.Row > row) --t.Row;
  }
  RecomputeBox();
  --nrows_;
  Changed();
  Resized();
  return true;
}

bool TIntMatrix::ValidRange(std::int32_t& lowCol, std::int32_t& lowRow, std::int32_t& highCol,
                            std::int32_t& highRow) const {
  MakeValidColRange(lowCol, highCol);
  MakeValidRowRange(lowRow, highRow);
  return lowCol <= highCol && lowRow <= highRow;
}

template <class F>
void TIntMatrix::ForEachCell(std::int32_t lowCol, std::int32_t lowRow, std::int32_t highCol,
                             std::int32_t highRow, F&& f) const {
  for (std::int32_t c = lowCol; c <= highCol; ++c) {
    for (std::int32_t r = lowRow; r <= highRow; ++r)
      f(c, r, GetVal(c, r));
  }
}

void TIntMatrix::Fill(std::int32_t lowCol, std::int32_t highCol, std::int32_t lowRow,
                      std::int32_t highRow, std::int32_t value) {
  if (!sparse_) {
    Core::Fill(lowCol, highCol, lowRow, highRow, value);
    return;
  }
  if (ValidRange(lowCol, lowRow, highCol, highRow)) {
    ForEachCell(lowCol, lowRow, highCol, highRow,
                [&](std::int32_t c, std::int32_t r, std::int32_t) { Put(c, r, value, false); });
  }
  Changed();
}

void TIntMatrix::FillDiag(std::int32_t lowCol, std::int32_t lowRow, std::int32_t highCol,
                          std::int32_t highRow, std::int32_t value) {
  if (!sparse_) {
    Core::FillDiag(lowCol, lowRow, highCol, highRow, value);
    return;
  }
  if (ValidRange(lowCol, lowRow, highCol, highRow)) {
    for (std::int32_t c = lowCol, r = lowRow; c <= highCol && r <= highRow; ++c, ++r)
      Put(c, r, value, false);
  }
  Changed();
}

void TIntMatrix::FillSerial(std::int32_t lowCol, std::int32_t lowRow, std::int32_t highCol,
                            std::int32_t highRow, std::int32_t start, std::int32_t step) {
  if (!sparse_) {
    Core::FillSerial(lowCol, lowRow, highCol, highRow, start, step);
    return;
  }
  if (ValidRange(lowCol, lowRow, highCol, highRow)) {
    std::int32_t v = start;
    ForEachCell(lowCol, lowRow, highCol, highRow,
                [&](std::int32_t c, std::int32_t r, std::int32_t) {
                  Put(c, r, v, false);
                  v = static_cast<std::int32_t>(static_cast<std::uint32_t>(v) +
                                                static_cast<std::uint32_t>(step));
                });
  }
  Changed();
}

void TIntMatrix::MinMax(std::int32_t lowCol, std::int32_t lowRow, std::int32_t highCol,
                        std::int32_t highRow, std::int32_t& minimum, std::int32_t& maximum) const {
  if (!sparse_) {
    Core::MinMax(lowCol, lowRow, highCol, highRow, minimum, maximum);
    return;
  }
  minimum = uc_MaxInt;
  maximum = -uc_MaxInt;
  if (!ValidRange(lowCol, lowRow, highCol, highRow)) return;
  ForEachCell(lowCol, lowRow, highCol, highRow, [&](std::int32_t, std::int32_t, std::int32_t x) {
    minimum = std::min(minimum, x);
    maximum = std::max(maximum, x);
  });
}

void TIntMatrix::Find(std::int32_t lowCol, std::int32_t lowRow, std::int32_t highCol,
                      std::int32_t highRow, std::int32_t value, std::int32_t& col,
                      std::int32_t& row) const {
  if (!sparse_) {
    Core::Find(lowCol, lowRow, highCol, highRow, value, col, row);
    return;
  }
  col = 0;
  row = 0;
  if (!ValidRange(lowCol, lowRow, highCol, highRow)) return;
  double best = uc_MaxDouble;
  ForEachCell(lowCol, lowRow, highCol, highRow,
              [&](std::int32_t c, std::int32_t r, std::int32_t x) {
                const double d = std::abs(static_cast<double>(x) - static_cast<double>(value));
                if (d < best) {
                  best = d;
                  col = c;
                  row = r;
                }
              });
}

std::int32_t TIntMatrix::FindInSortedColumn(std::int32_t col, bool ascending,
                                            std::int32_t value) const {
  if (!sparse_) return Core::FindInSortedColumn(col, ascending, value);
  if (col < 1 || col > ncols_ || nrows_ < 1) return 0;
  return FindSorted(nrows_, ascending, value, [&](std::int32_t r) { return GetVal(col, r); });
}

void TIntMatrix::ExchangeColumns(std::int32_t c1, std::int32_t c2) {
  if (!sparse_) {
    Core::ExchangeColumns(c1, c2);
    return;
  }
  if (c1 < 1 || c1 > ncols_ || c2 < 1 || c2 > ncols_) return;
  for (std::int32_t r = 1; r <= nrows_; ++r)
    SwapCells(c1, r, c2, r);
  Changed();
}

void TIntMatrix::ExchangeRows(std::int32_t r1, std::int32_t r2) {
  if (!sparse_) {
    Core::ExchangeRows(r1, r2);
    return;
  }
  if (r1 < 1 || r1 > nrows_ || r2 < 1 || r2 > nrows_) return;
  for (std::int32_t c = 1; c <= ncols_; ++c)
    SwapCells(c, r1, c, r2);
  Changed();
}

void TIntMatrix::MirrorColumns() {
  if (!sparse_) {
    Core::MirrorColumns();
    return;
  }
  for (std::int32_t c = 1; c <= ncols_ / 2; ++c) {
    for (std::int32_t r = 1; r <= nrows_; ++r)
      SwapCells(c, r, ncols_ + 1 - c, r);
  }
  Changed();
}

void TIntMatrix::MirrorRows() {
  if (!sparse_) {
    Core::MirrorRows();
    return;
  }
  for (std::int32_t c = 1; c <= ncols_; ++c) {
    for (std::int32_t r = 1; r <= nrows_ / 2; ++r)
      SwapCells(c, r, c, nrows_ + 1 - r);
  }
  Changed();
}

void TIntMatrix::SwapCells(std::int32_t c1, std::int32_t r1, std::int32_t c2, std::int32_t r2) {
  const std::int32_t a = GetVal(c1, r1);
  const std::int32_t b = GetVal(c2, r2);
  if (a == b) return;
  Put(c1, r1, b, false);
  Put(c2, r2, a, false);
}

void TIntMatrix::SortRows(std::int32_t sortCol, bool ascending, std::int32_t lowCol,
                          std::int32_t lowRow, std::int32_t highCol, std::int32_t highRow) {
  if (!sparse_) {
    Core::SortRows(sortCol, ascending, lowCol, lowRow, highCol, highRow);
    return;
  }
  if (!ValidRange(lowCol, lowRow, highCol, highRow) || sortCol < 1 || sortCol > ncols_) return;
  const bool keyOutside = sortCol < lowCol || sortCol > highCol;
  CombSort(
      lowRow, highRow, ascending, [&](std::int32_t i) { return GetVal(sortCol, i); },
      [&](std::int32_t i, std::int32_t j) {
        for (std::int32_t c = lowCol; c <= highCol; ++c)
          SwapCells(c, i, c, j);
        if (keyOutside) SwapCells(sortCol, i, sortCol, j);
        SortExchange(kSortExchangeRows, i, j, lowCol, highCol);
      });
}

void TIntMatrix::SortCols(std::int32_t sortRow, bool ascending, std::int32_t lowCol,
                          std::int32_t lowRow, std::int32_t highCol, std::int32_t highRow) {
  if (!sparse_) {
    Core::SortCols(sortRow, ascending, lowCol, lowRow, highCol, highRow);
    return;
  }
  if (!ValidRange(lowCol, lowRow, highCol, highRow) || sortRow < 1 || sortRow > nrows_) return;
  const bool keyOutside = sortRow < lowRow || sortRow > highRow;
  CombSort(
      lowCol, highCol, ascending, [&](std::int32_t i) { return GetVal(i, sortRow); },
      [&](std::int32_t i, std::int32_t j) {
        for (std::int32_t r = lowRow; r <= highRow; ++r)
          SwapCells(i, r, j, r);
        if (keyOutside) SwapCells(i, sortRow, j, sortRow);
        SortExchange(kSortExchangeCols, i, j, lowRow, highRow);
      });
}

std::string TIntMatrix::CRCofData() const {
  if (!sparse_) return Core::CRCofData();
  if (ncols_ < 1 || nrows_ < 1) return {};
  detail::TDataCRC crc;
  ForEachCell(1, 1, ncols_, nrows_,
              [&](std::int32_t, std::int32_t, std::int32_t x) { crc.Add(x); });
  return crc.Text();
}

void TIntMatrix::MeanVec(TDims dims, TVector* Means) const {
  if (Means == nullptr) return;
  const bool perColumn = dims == dimColumns;
  const std::int32_t lines = perColumn ? ncols_ : nrows_;
  const std::int32_t other = perColumn ? nrows_ : ncols_;
  TDoubleArray means(static_cast<std::size_t>(std::max(lines, 0)));
  for (std::int32_t line = 1; line <= lines; ++line) {
    Extended sum = 0;
    for (std::int32_t k = 1; k <= other; ++k)
      sum += perColumn ? GetVal(line, k) : GetVal(k, line);
    means[static_cast<std::size_t>(line - 1)] = static_cast<double>(sum / other);
  }
  if (lines < 1) return;
  Means->Resize(lines);
  Means->CopyFrom(means, 0, 0, 1);
}

std::int32_t TIntMatrix::CountValues(std::int32_t lowCol, std::int32_t lowRow, std::int32_t highCol,
                                     std::int32_t highRow, std::int32_t low,
                                     std::int32_t high) const {
  if (!sparse_) return Core::CountValues(lowCol, lowRow, highCol, highRow, low, high);
  std::int32_t count = 0;
  if (!ValidRange(lowCol, lowRow, highCol, highRow)) return 0;
  ForEachCell(lowCol, lowRow, highCol, highRow, [&](std::int32_t, std::int32_t, std::int32_t x) {
    if (x >= low && x <= high) ++count;
  });
  return count;
}

std::int32_t TIntMatrix::CountMaskedZeros(std::int32_t lowCol, std::int32_t lowRow,
                                          std::int32_t highCol, std::int32_t highRow,
                                          std::uint32_t mask) const {
  std::int32_t count = 0;
  if (!ValidRange(lowCol, lowRow, highCol, highRow)) return 0;
  ForEachCell(lowCol, lowRow, highCol, highRow, [&](std::int32_t, std::int32_t, std::int32_t x) {
    if ((static_cast<std::uint32_t>(x) & mask) == 0) ++count;
  });
  return count;
}

void TIntMatrix::Dichotomize(std::int32_t threshold, TBool2DArray& result) const {
  TBool2DArray out = GuardAllocation<EQUVMatrixError>(*this, msg::kNotEnoughMemoryOnHeap, [&] {
    return TBool2DArray(static_cast<std::size_t>(std::max(ncols_, 0)),
                        TBoolArray(static_cast<std::size_t>(std::max(nrows_, 0))));
  });
  if (ncols_ >= 1 && nrows_ >= 1) {
    ForEachCell(1, 1, ncols_, nrows_, [&](std::int32_t c, std::int32_t r, std::int32_t x) {
      out[static_cast<std::size_t>(c - 1)][static_cast<std::size_t>(r - 1)] =
          x >= threshold ? 1 : 0;
    });
  }
  result.swap(out);
}

}  // namespace quv
