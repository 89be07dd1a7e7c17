// The storage, resizing, range, event and ordering core shared by the two-dimensional
// matrices of doubles and of integers.
//
// The store is column-major by design: an array of NrOfColumns column arrays, each holding
// NrOfRows elements, so that a whole column is one contiguous array. Every index of the
// interface is 1-based and the column comes first: element (col, row) lives at
// store[col - 1][row - 1]. Out-of-range reads give 0 and out-of-range writes are dropped,
// silently; sub-ranges are clamped and put in order, and (0, 0) means the whole dimension.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "quv/base/base.h"
#include "quv/math1/math1.h"
#include "quv/vector/vector_detail.h"

namespace quv::detail {

/// An element converted between matrix element types: doubles become integers by rounding
/// to the nearest (half away from zero), saturating at the Int32 limits, NaN giving 0.
template <class T, class U>
T ConvertElement(U x) {
  if constexpr (std::is_integral_v<T> && std::is_floating_point_v<U>) {
    if (std::isnan(x)) return 0;
    const U r = std::round(x);
    if (r >= static_cast<U>(std::numeric_limits<T>::max())) return std::numeric_limits<T>::max();
    if (r <= static_cast<U>(std::numeric_limits<T>::min())) return std::numeric_limits<T>::min();
    return static_cast<T>(r);
  } else {
    return static_cast<T>(x);
  }
}

/// Copies the range (lowCol, lowRow, highCol, highRow) of any matrix with GetVal into block,
/// block[c - lowCol][r - lowRow], converted to T. Each bound is clamped to the source and the
/// pairs put in order. False (block untouched) when the source is empty.
template <class T, class Source>
bool CopyBlock(const Source& source, std::int32_t& lowCol, std::int32_t& lowRow,
               std::int32_t& highCol, std::int32_t& highRow, std::vector<std::vector<T>>& block) {
  const std::int32_t nc = source.NrOfColumns();
  const std::int32_t nr = source.NrOfRows();
  if (nc < 1 || nr < 1) return false;
  const auto clampPair = [](std::int32_t& lo, std::int32_t& hi, std::int32_t size) {
    lo = std::clamp(lo, std::int32_t{1}, size);
    hi = std::clamp(hi, std::int32_t{1}, size);
    if (lo > hi) std::swap(lo, hi);
  };
  clampPair(lowCol, highCol, nc);
  clampPair(lowRow, highRow, nr);
  std::vector<std::vector<T>> b(static_cast<std::size_t>(highCol - lowCol + 1));
  for (std::int32_t c = lowCol; c <= highCol; ++c) {
    auto& col = b[static_cast<std::size_t>(c - lowCol)];
    col.reserve(static_cast<std::size_t>(highRow - lowRow + 1));
    for (std::int32_t r = lowRow; r <= highRow; ++r)
      col.push_back(ConvertElement<T>(source.GetVal(c, r)));
  }
  block.swap(b);
  return true;
}

/// The sentinels with which MinMax starts, per element type.
template <class T>
struct TMatrixLimits;
template <>
struct TMatrixLimits<double> {
  static constexpr double kHuge = static_cast<double>(uc_MaxReal);
};
template <>
struct TMatrixLimits<std::int32_t> {
  static constexpr std::int32_t kHuge = uc_MaxInt;
};

/// The matrix shell shared by TMatrix (double) and the integer matrix (int32): store,
/// size, 1-based access, ranges, fills, search, structure changes, comb sorts, checksum and
/// the container events, plus OnPercentDone for long operations.
template <class T>
class TMatrixCore : public TContainerComponent {
 public:
  using TColumn = std::vector<T>;
  using TStore = std::vector<TColumn>;

  /// A 1 x 1 matrix holding 0, precision pair (15, -1), no events assigned.
  explicit TMatrixCore(TComponent* owner = nullptr)
      : TContainerComponent(owner),
        store_(GuardAllocation<EQUVMatrixError>(*this, msg::kNotEnoughMemoryOnHeap,
                                                [] { return TStore(1, TColumn(1, T{})); })) {}

  /// Progress of long operations of this matrix, in percent.
  TOnPercentDoneEvent OnPercentDone;

  std::int32_t NrOfColumns() const { return ncols_; }
  std::int32_t NrOfRows() const { return nrows_; }
  /// Resize(max(n, 0), NrOfRows): a value below 1 leaves the matrix as it is.
  void SetNCols(std::int32_t n) { Resize(std::max(n, 0), nrows_); }
  /// Resize(NrOfColumns, max(n, 0)): a value below 1 leaves the matrix as it is.
  void SetNRows(std::int32_t n) { Resize(ncols_, std::max(n, 0)); }

  /// Free identifier of the data set; copied by Assign, not by Clone.
  const std::string& DataID() const { return dataID_; }
  void SetDataID(std::string id) { dataID_ = std::move(id); }

  /// The number-format precisions: ix < 2 selects the first (default 15), any other ix the
  /// second (default -1).
  std::int32_t GetFPrecis(std::int32_t ix) const { return ix < 2 ? precis_[0] : precis_[1]; }
  void SetFPrecis(std::int32_t ix, std::int32_t value) {
    (ix < 2 ? precis_[0] : precis_[1]) = value;
  }

  /// Sets the size to nCols x nRows, keeping the elements present before and after and setting
  /// new ones to 0. Returns false and does nothing when a size is below 1 or both equal the
  /// current ones. Fires OnChange, then OnResize. Raises EQUVMatrixError
  /// "Component \"<Name>\": not enough memory on heap" when the store cannot be allocated; the
  /// matrix then stays as it was.
  bool Resize(std::int32_t nCols, std::int32_t nRows) {
    if (nCols < 1 || nRows < 1 || (nCols == ncols_ && nRows == nrows_)) return false;
    if (nCols == ncols_ && nRows > nrows_) {
      GrowRows(nRows);
      return true;
    }
    TStore fresh = GuardAllocation<EQUVMatrixError>(*this, msg::kNotEnoughMemoryOnHeap, [&] {
      TStore s(static_cast<std::size_t>(nCols));
      const auto keepRows = static_cast<std::size_t>(std::min(nRows, nrows_));
      for (std::int32_t c = 0; c < nCols; ++c) {
        TColumn& col = s[static_cast<std::size_t>(c)];
        col.assign(static_cast<std::size_t>(nRows), T{});
        if (c < ncols_) {
          const TColumn& old = store_[static_cast<std::size_t>(c)];
          std::copy(old.begin(), old.begin() + static_cast<std::ptrdiff_t>(keepRows), col.begin());
        }
      }
      return s;
    });
    store_ = std::move(fresh);
    ncols_ = nCols;
    nrows_ = nRows;
    Changed();
    Resized();
    return true;
  }

  /// Resize, and only when it resized: every element := 0, then OnChange and OnResize again.
  /// With the dimensions already as requested nothing is cleared (returns false).
  bool ResizeAndClear(std::int32_t nCols, std::int32_t nRows) {
    if (!Resize(nCols, nRows)) return false;
    for (TColumn& col : store_)
      std::fill(col.begin(), col.end(), T{});
    Changed();
    Resized();
    return true;
  }

  /// Element (col, row), 1-based; 0 outside the matrix.
  T GetVal(std::int32_t col, std::int32_t row) const {
    if (!Inside(col, row)) return T{};
    return store_[static_cast<std::size_t>(col - 1)][static_cast<std::size_t>(row - 1)];
  }
  T Elem(std::int32_t col, std::int32_t row) const { return GetVal(col, row); }
  /// Stores element (col, row) and fires OnChange; ignored (no event) outside the matrix.
  void SetVal(std::int32_t col, std::int32_t row, T value) {
    if (!Inside(col, row)) return;
    store_[static_cast<std::size_t>(col - 1)][static_cast<std::size_t>(row - 1)] = value;
    Changed();
  }

  /// The store, read-only: NrOfColumns column arrays of NrOfRows elements (0-based).
  const TStore& Columns() const { return store_; }

  /// Both 0: lo := 1, hi := NrOfColumns, result false. Otherwise clamps both to
  /// 1..NrOfColumns and orders them; true when anything had to be corrected.
  bool MakeValidColRange(std::int32_t& lo, std::int32_t& hi) const {
    return MakeValidRange(lo, hi, ncols_);
  }
  /// The same for rows.
  bool MakeValidRowRange(std::int32_t& lo, std::int32_t& hi) const {
    return MakeValidRange(lo, hi, nrows_);
  }

  /// Every element := value; fires OnChange.
  void Fill(T value) {
    for (TColumn& col : store_)
      std::fill(col.begin(), col.end(), value);
    Changed();
  }
  /// The range := value; fires OnChange. Note the bound order: both column bounds, then both
  /// row bounds (every other ranged method takes lowCol, lowRow, highCol, highRow).
  void Fill(std::int32_t lowCol, std::int32_t highCol, std::int32_t lowRow, std::int32_t highRow,
            T value) {
    MakeValidColRange(lowCol, highCol);
    MakeValidRowRange(lowRow, highRow);
    ForRange(lowCol, lowRow, highCol, highRow, [&](T& x) { x = value; });
    Changed();
  }
  /// The main diagonal := value, other elements untouched; fires OnChange.
  void FillDiag(T value) { FillDiag(0, 0, 0, 0, value); }
  /// Within the range, the elements with col - lowCol = row - lowRow := value; fires OnChange.
  void FillDiag(std::int32_t lowCol, std::int32_t lowRow, std::int32_t highCol,
                std::int32_t highRow, T value) {
    MakeValidColRange(lowCol, highCol);
    MakeValidRowRange(lowRow, highRow);
    for (std::int32_t c = lowCol, r = lowRow; c <= highCol && r <= highRow; ++c, ++r)
      At(c, r) = value;
    Changed();
  }
  /// Fills with start, start + step, ... column by column (rows within a column), by repeated
  /// addition; fires OnChange.
  void FillSerial(T start, T step) { FillSerial(0, 0, 0, 0, start, step); }
  void FillSerial(std::int32_t lowCol, std::int32_t lowRow, std::int32_t highCol,
                  std::int32_t highRow, T start, T step) {
    MakeValidColRange(lowCol, highCol);
    MakeValidRowRange(lowRow, highRow);
    T v = start;
    ForRange(lowCol, lowRow, highCol, highRow, [&](T& x) {
      x = v;
      v += step;
    });
    Changed();
  }

  /// Smallest and largest element of the range. They start at +huge and -huge (uc_MaxReal for
  /// doubles) and come back so when nothing is scanned.
  void MinMax(std::int32_t lowCol, std::int32_t lowRow, std::int32_t highCol, std::int32_t highRow,
              T& minimum, T& maximum) const {
    minimum = TMatrixLimits<T>::kHuge;
    maximum = -TMatrixLimits<T>::kHuge;
    if (store_.empty()) return;
    MakeValidColRange(lowCol, highCol);
    MakeValidRowRange(lowRow, highRow);
    ForRange(lowCol, lowRow, highCol, highRow, [&](const T& x) {
      if (x < minimum) minimum = x;
      if (x > maximum) maximum = x;
    });
  }

  /// Position (col, row) of the element nearest to value within the range, scanning column by
  /// column; the first of equally near elements wins. (0, 0) with no store.
  void Find(std::int32_t lowCol, std::int32_t lowRow, std::int32_t highCol, std::int32_t highRow,
            T value, std::int32_t& col, std::int32_t& row) const {
    col = 0;
    row = 0;
    if (store_.empty()) return;
    MakeValidColRange(lowCol, highCol);
    MakeValidRowRange(lowRow, highRow);
    double best = uc_MaxDouble;
    for (std::int32_t c = lowCol; c <= highCol; ++c) {
      for (std::int32_t r = lowRow; r <= highRow; ++r) {
        const double d = std::abs(static_cast<double>(At(c, r)) - static_cast<double>(value));
        if (d < best) {
          best = d;
          col = c;
          row = r;
        }
      }
    }
  }

  /// Binary search in column col, sorted ascending or descending: the row of an element equal
  /// to value, else of the nearer of the two neighbours that enclose it (the higher row on
  /// ties); values beyond either end give the end row. 0 when col is outside the matrix.
  std::int32_t FindInSortedColumn(std::int32_t col, bool ascending, T value) const {
    if (col < 1 || col > ncols_ || nrows_ < 1) return 0;
    const TColumn& x = store_[static_cast<std::size_t>(col - 1)];
    return FindSorted(nrows_, ascending, value,
                      [&x](std::int32_t r) { return x[static_cast<std::size_t>(r - 1)]; });
  }

  /// Number of elements x of the range with low <= x <= high.
  std::int32_t CountValues(std::int32_t lowCol, std::int32_t lowRow, std::int32_t highCol,
                           std::int32_t highRow, T low, T high) const {
    MakeValidColRange(lowCol, highCol);
    MakeValidRowRange(lowRow, highRow);
    std::int32_t count = 0;
    ForRange(lowCol, lowRow, highCol, highRow, [&](const T& x) {
      if (x >= low && x <= high) ++count;
    });
    return count;
  }

  /// Removes column col (1-based), moving the later ones left, and resizes (events as Resize).
  /// False, nothing done, when col is outside the matrix or there is only one column.
  bool RemoveColumn(std::int32_t col) {
    if (col < 1 || col > ncols_ || ncols_ < 2) return false;
    // Move the column to the end, where Resize drops it; undo the move if Resize throws.
    const auto first = store_.begin() + (col - 1);
    std::rotate(first, first + 1, store_.end());
    try {
      return Resize(ncols_ - 1, nrows_);
    } catch (...) {
      std::rotate(store_.begin() + (col - 1), store_.end() - 1, store_.end());
      throw;
    }
  }
  /// Removes row row (1-based) the same way. False when row is outside or only one row is left.
  bool RemoveRow(std::int32_t row) {
    if (row < 1 || row > nrows_ || nrows_ < 2) return false;
    auto rotateAll = [&](bool back) {
      for (TColumn& c : store_) {
        const auto first = c.begin() + (row - 1);
        if (back) {
          std::rotate(first, c.end() - 1, c.end());
        } else {
          std::rotate(first, first + 1, c.end());
        }
      }
    };
    rotateAll(false);
    try {
      return Resize(ncols_, nrows_ - 1);
    } catch (...) {
      rotateAll(true);
      throw;
    }
  }

  /// Swaps two columns; fires OnChange. Ignored when either is outside the matrix.
  void ExchangeColumns(std::int32_t c1, std::int32_t c2) {
    if (c1 < 1 || c1 > ncols_ || c2 < 1 || c2 > ncols_) return;
    std::swap(store_[static_cast<std::size_t>(c1 - 1)], store_[static_cast<std::size_t>(c2 - 1)]);
    Changed();
  }
  /// Swaps two rows; fires OnChange. Ignored when either is outside the matrix.
  void ExchangeRows(std::int32_t r1, std::int32_t r2) {
    if (r1 < 1 || r1 > nrows_ || r2 < 1 || r2 > nrows_) return;
    for (TColumn& c : store_)
      std::swap(c[static_cast<std::size_t>(r1 - 1)], c[static_cast<std::size_t>(r2 - 1)]);
    Changed();
  }
  /// Reverses the order of the columns; fires OnChange.
  void MirrorColumns() {
    std::reverse(store_.begin(), store_.end());
    Changed();
  }
  /// Reverses the order of the rows; fires OnChange.
  void MirrorRows() {
    for (TColumn& c : store_)
      std::reverse(c.begin(), c.end());
    Changed();
  }

  /// Comb sort (shrink factor 1.3) of rows lowRow..highRow by the values of column sortCol.
  /// An exchange swaps the two rows in columns lowCol..highCol and in sortCol, then fires
  /// OnSortExchange(kind 2, row i, row j, lowCol, highCol). Equal keys are never exchanged.
  /// Fires OnChange once at the end; nothing when fewer than two rows are in range.
  void SortRows(std::int32_t sortCol, bool ascending, std::int32_t lowCol, std::int32_t lowRow,
                std::int32_t highCol, std::int32_t highRow) {
    MakeValidColRange(lowCol, highCol);
    MakeValidRowRange(lowRow, highRow);
    if (sortCol < 1 || sortCol > ncols_) return;
    const TColumn& key = store_[static_cast<std::size_t>(sortCol - 1)];
    const bool keyOutside = sortCol < lowCol || sortCol > highCol;
    CombSort(
        lowRow, highRow, ascending,
        [&](std::int32_t i) { return key[static_cast<std::size_t>(i - 1)]; },
        [&](std::int32_t i, std::int32_t j) {
          for (std::int32_t c = lowCol; c <= highCol; ++c)
            SwapElems(c, i, c, j);
          if (keyOutside) SwapElems(sortCol, i, sortCol, j);
          SortExchange(kSortExchangeRows, i, j, lowCol, highCol);
        });
  }
  /// Comb sort of columns lowCol..highCol by the values of row sortRow; an exchange swaps the
  /// two columns in rows lowRow..highRow and in sortRow, then fires
  /// OnSortExchange(kind 1, col i, col j, lowRow, highRow). Fires OnChange once at the end.
  void SortCols(std::int32_t sortRow, bool ascending, std::int32_t lowCol, std::int32_t lowRow,
                std::int32_t highCol, std::int32_t highRow) {
    MakeValidColRange(lowCol, highCol);
    MakeValidRowRange(lowRow, highRow);
    if (sortRow < 1 || sortRow > nrows_) return;
    const bool keyOutside = sortRow < lowRow || sortRow > highRow;
    CombSort(
        lowCol, highCol, ascending, [&](std::int32_t i) { return At(i, sortRow); },
        [&](std::int32_t i, std::int32_t j) {
          if (lowRow == 1 && highRow == nrows_) {
            std::swap(store_[static_cast<std::size_t>(i - 1)],
                      store_[static_cast<std::size_t>(j - 1)]);
          } else {
            for (std::int32_t r = lowRow; r <= highRow; ++r)
              SwapElems(i, r, j, r);
            if (keyOutside) SwapElems(i, sortRow, j, sortRow);
          }
          SortExchange(kSortExchangeCols, i, j, lowRow, highRow);
        });
  }

  /// Copies the source range (lowCol, lowRow, highCol, highRow; each bound clamped to the
  /// source, the pairs put in order) to (destCol, destRow) of this matrix with SetVal, so
  /// targets outside are dropped and OnChange fires per element; then OnChange once more.
  /// Does nothing when source is null. Works between matrices of any element type, dense or
  /// sparse (the source is read through its GetVal; doubles into integers as ConvertElement).
  template <class Source>
  void CopyFrom(const Source* source, std::int32_t lowCol, std::int32_t lowRow,
                std::int32_t highCol, std::int32_t highRow, std::int32_t destCol,
                std::int32_t destRow) {
    if (source == nullptr) return;
    // A copy of the range first, so that copying a matrix onto itself reads unchanged data.
    std::vector<std::vector<T>> block;
    if (!CopyBlock<T>(*source, lowCol, lowRow, highCol, highRow, block)) return;
    for (std::int32_t c = lowCol; c <= highCol; ++c) {
      const auto& col = block[static_cast<std::size_t>(c - lowCol)];
      for (std::int32_t r = lowRow; r <= highRow; ++r)
        SetVal(c - lowCol + destCol, r - lowRow + destRow,
               col[static_cast<std::size_t>(r - lowRow)]);
    }
    Changed();
  }

  /// Checksum of the elements: the rule of TDataCRC (vector_detail.h), fed column by column,
  /// rows within a column; 64 hexadecimal digits, the empty string with no store.
  std::string CRCofData() const {
    if (store_.empty()) return {};
    TDataCRC crc;
    for (const TColumn& col : store_) {
      for (const T& x : col)
        crc.Add(x);
    }
    return crc.Text();
  }

  /// ExchgWhat of the sort exchange events: columns exchanged, rows exchanged.
  static constexpr std::uint8_t kSortExchangeCols = 1;
  static constexpr std::uint8_t kSortExchangeRows = 2;

 protected:
  /// Forwards progress to OnPercentDone.
  void PercDone(TComponent* sender, std::int32_t percent) {
    FireEvent(OnPercentDone, sender, percent);
  }

  bool Inside(std::int32_t col, std::int32_t row) const {
    return col >= 1 && col <= ncols_ && row >= 1 && row <= nrows_;
  }
  /// Unchecked 1-based access for loops whose bounds are already valid.
  T& At(std::int32_t col, std::int32_t row) {
    return store_[static_cast<std::size_t>(col - 1)][static_cast<std::size_t>(row - 1)];
  }
  const T& At(std::int32_t col, std::int32_t row) const {
    return store_[static_cast<std::size_t>(col - 1)][static_cast<std::size_t>(row - 1)];
  }
  void SwapElems(std::int32_t c1, std::int32_t r1, std::int32_t c2, std::int32_t r2) {
    std::swap(At(c1, r1), At(c2, r2));
  }

  /// Calls f on every element of a valid range, column by column, rows within a column.
  template <class F>
  void ForRange(std::int32_t lowCol, std::int32_t lowRow, std::int32_t highCol,
                std::int32_t highRow, F&& f) {
    for (std::int32_t c = lowCol; c <= highCol; ++c) {
      TColumn& col = store_[static_cast<std::size_t>(c - 1)];
      for (std::int32_t r = lowRow; r <= highRow; ++r)
        f(col[static_cast<std::size_t>(r - 1)]);
    }
  }
  template <class F>
  void ForRange(std::int32_t lowCol, std::int32_t lowRow, std::int32_t highCol,
                std::int32_t highRow, F&& f) const {
    for (std::int32_t c = lowCol; c <= highCol; ++c) {
      const TColumn& col = store_[static_cast<std::size_t>(c - 1)];
      for (std::int32_t r = lowRow; r <= highRow; ++r)
        f(col[static_cast<std::size_t>(r - 1)]);
    }
  }

  /// Replaces the store and the dimensions without events (Assign, loading).
  void SetStoreDirectly(TStore store) {
    ncols_ = static_cast<std::int32_t>(store.size());
    nrows_ = store.empty() ? 0 : static_cast<std::int32_t>(store.front().size());
    store_ = std::move(store);
  }

  /// Takes over a ready store as the new contents: OnChange, then OnResize when the
  /// dimensions changed (one operation, one set of events).
  void ReplaceStore(TStore store) {
    const bool resized =
        store.size() != static_cast<std::size_t>(ncols_) ||
        (!store.empty() && store.front().size() != static_cast<std::size_t>(nrows_));
    SetStoreDirectly(std::move(store));
    Changed();
    if (resized) Resized();
  }

  /// Copies the fields that Assign takes over from another matrix of the same kind.
  void AssignCore(const TMatrixCore& source) {
    TStore copy = GuardAllocation<EQUVMatrixError>(*this, msg::kNotEnoughMemoryOnHeap,
                                                   [&] { return source.store_; });
    SetStoreDirectly(std::move(copy));
    dataID_ = source.dataID_;
    precis_[0] = source.precis_[0];
    precis_[1] = source.precis_[1];
    OnChange = source.OnChange;
    OnResize = source.OnResize;
    OnSortExchange = source.OnSortExchange;
    OnPercentDone = source.OnPercentDone;
  }

  using TContainerComponent::SortExchange;

  // Comb sort over positions lo..hi: key(i) gives the sort key, exchange(i, j) swaps and
  // reports. Fires OnChange at the end unless fewer than two positions are in range.
  template <class Key, class Exchange>
  void CombSort(std::int32_t lo, std::int32_t hi, bool ascending, Key&& key, Exchange&& exchange) {
    std::int32_t gap = hi - lo;
    if (gap < 1) return;
    constexpr Extended kShrink = 1.3L;
    bool exchanged = true;
    while (gap > 1 || exchanged) {
      gap = static_cast<std::int32_t>(static_cast<Extended>(gap) / kShrink);
      if (gap == 0) gap = 1;
      exchanged = false;
      for (std::int32_t i = lo; i + gap <= hi; ++i) {
        const T a = key(i);
        const T b = key(i + gap);
        if (ascending ? (a > b) : (a < b)) {
          exchange(i, i + gap);
          exchanged = true;
        }
      }
    }
    Changed();
  }

  // Binary search over positions 1..n sorted ascending or descending, get(i) the value at i:
  // the position of an element equal to value, else of the nearer of the two neighbours that
  // enclose it (the higher on ties); values beyond either end give the end position.
  template <class Get>
  static std::int32_t FindSorted(std::int32_t n, bool ascending, T value, Get&& get) {
    std::int32_t lo = 1;
    std::int32_t hi = n;
    while (hi - lo >= 2) {
      const std::int32_t mid = (lo + hi) / 2;
      const T m = get(mid);
      if (m == value) return mid;
      if ((value > m) == ascending) {
        lo = mid;
      } else {
        hi = mid;
      }
    }
    const double dlo = std::abs(static_cast<double>(get(lo)) - static_cast<double>(value));
    const double dhi = std::abs(static_cast<double>(get(hi)) - static_cast<double>(value));
    return dlo < dhi ? lo : hi;
  }

  TStore store_;
  std::int32_t ncols_ = 1;
  std::int32_t nrows_ = 1;

 private:
  /// Adds rows in place. Every column is reserved first (the only step that can fail, and it
  /// changes no element), with at least double the capacity, so that a matrix grown by a block
  /// of rows at a time costs linear time overall instead of a full copy per block.
  void GrowRows(std::int32_t nRows) {
    const auto n = static_cast<std::size_t>(nRows);
    GuardAllocation<EQUVMatrixError>(*this, msg::kNotEnoughMemoryOnHeap, [&] {
      for (TColumn& col : store_)
        if (col.capacity() < n) col.reserve(std::max(n, 2 * col.capacity()));
    });
    for (TColumn& col : store_)
      col.resize(n, T{});
    nrows_ = nRows;
    Changed();
    Resized();
  }

  static bool MakeValidRange(std::int32_t& lo, std::int32_t& hi, std::int32_t size) {
    if (size < 1) {
      // An empty dimension (a sparse integer matrix before its first write): an empty range.
      const bool corrected = lo != 1 || hi != 0;
      lo = 1;
      hi = 0;
      return corrected;
    }
    if (lo == 0 && hi == 0) {
      lo = 1;
      hi = size;
      return false;
    }
    bool corrected = false;
    auto clamp = [&](std::int32_t& v) {
      const std::int32_t c = std::clamp(v, std::int32_t{1}, size);
      if (c != v) corrected = true;
      v = c;
    };
    clamp(lo);
    clamp(hi);
    if (lo > hi) {
      std::swap(lo, hi);
      corrected = true;
    }
    return corrected;
  }

  std::string dataID_;
  std::int32_t precis_[2] = {15, -1};
};

extern template class TMatrixCore<double>;
extern template class TMatrixCore<std::int32_t>;

}  // namespace quv::detail
