// TIntMatrix: the two-dimensional matrix of 32-bit integers, dense or sparse.
//
// The storage mode is chosen at construction and never changes:
//   - dense (TIntMatrix(owner)): the column-major store of the matrix core, exactly as
//     TMatrix keeps its doubles; every operation is the core's;
//   - sparse (TIntMatrix(owner, allocIncrement)): only the cells that were written are kept,
//     as a list of (column, row, value) triplets sorted by column and, within a column, by
//     row, no two for one cell. The list grows by the allocation increment (at least 1) when
//     it is full, and a cell never leaves it once written (writing 0 stores a 0). A bounding
//     box of the written cells lets reads outside it return 0 without a search. The matrix
//     starts 0 x 0; a write beyond the size grows it (there is no upper index limit).
//
// How the operations behave in sparse mode (the same results as a dense matrix holding the
// same cells, unwritten cells reading as 0):
//   - Resize / SetNCols / SetNRows cut the triplets beyond the new size away and set the
//     size (which a later write may grow again: NrOfColumns is the larger of the size and
//     the highest column written); ResizeAndClear empties the list; RemoveColumn / RemoveRow
//     drop the triplets of that column / row and move the later ones down by one.
//   - reading operations (MinMax, Find, FindInSortedColumn, CountValues, CountMaskedZeros,
//     Dichotomize, MeanVec, CRCofData) visit every cell of the range, unwritten ones as 0;
//   - writing operations (Fill, FillDiag, FillSerial, the exchanges, mirrors and sorts,
//     CopyFrom) write cell by cell with one OnChange at the end; they store every value they
//     write except a 0 into a cell that was never written (it reads 0 already).
//
// CRCofData, the one rule of the integer containers (TIntVector gives the same text): eight
// CRC-32 registers started at 0xFFFFFFFF; the four little-endian bytes of each element, in
// store order (column by column, rows within a column), go into registers 0..3; registers 4..7
// are never fed. Every register is complemented and written as 8 hexadecimal digits, register
// 0 first: 64 characters, the last 32 of them always "00000000" four times.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "quv/matrix/matrix_core.h"
#include "quv/vector/vector.h"

namespace quv {

/// One written cell of a sparse integer matrix (1-based indices).
struct TIntTriplet {
  std::int32_t Col = 0;
  std::int32_t Row = 0;
  std::int32_t Value = 0;
  friend bool operator==(const TIntTriplet&, const TIntTriplet&) = default;
};

/// Two-dimensional matrix of Int32, element (col, row) 1-based; dense or sparse storage.
/// Errors raise EQUVMatrixError in the component form.
class TIntMatrix : public detail::TMatrixCore<std::int32_t> {
  using Core = detail::TMatrixCore<std::int32_t>;

 public:
  /// Dense matrix: 1 x 1 holding 0, as TMatrix.
  explicit TIntMatrix(TComponent* owner = nullptr);
  /// Sparse matrix: 0 x 0, a list of max(allocIncrement, 1) slots, growing by that many.
  TIntMatrix(TComponent* owner, std::int32_t allocIncrement);

  /// True when created with an allocation increment.
  bool Sparse() const { return sparse_; }
  /// Sparse mode: triplets in use, slots allocated, slots added per growth (0 when dense).
  std::int32_t SparseCount() const { return count_; }
  std::int32_t SparseCapacity() const { return capacity_; }
  std::int32_t AllocIncrement() const { return increment_; }
  /// The triplets in use, in list order.
  std::span<const TIntTriplet> Triplets() const {
    return {triplets_.data(), static_cast<std::size_t>(count_)};
  }
  /// The bounding box of the written cells; (2147483647, 1, 2147483647, 1) before any write.
  void BoundingBox(std::int32_t& lowCol, std::int32_t& highCol, std::int32_t& lowRow,
                   std::int32_t& highRow) const;

  /// Element (col, row); 0 outside the matrix (dense) or for a cell never written (sparse).
  std::int32_t GetVal(std::int32_t col, std::int32_t row) const;
  std::int32_t Elem(std::int32_t col, std::int32_t row) const { return GetVal(col, row); }
  /// Stores element (col, row) and fires OnChange. Dense: ignored outside the matrix. Sparse:
  /// ignored for an index below 1; a new cell may grow the list, which raises
  /// "Component \"<Name>\": not enough memory on heap" when it cannot (list unchanged).
  void SetVal(std::int32_t col, std::int32_t row, std::int32_t value);

  /// Takes over the storage mode, size, cells, DataID, precision pair and event handlers.
  void Assign(const TIntMatrix& source);

  // Size and structure (sparse behaviour in the file comment).
  bool Resize(std::int32_t nCols, std::int32_t nRows);
  void SetNCols(std::int32_t n) { Resize(std::max(n, 0), nrows_); }
  void SetNRows(std::int32_t n) { Resize(ncols_, std::max(n, 0)); }
  bool ResizeAndClear(std::int32_t nCols, std::int32_t nRows);
  bool RemoveColumn(std::int32_t col);
  bool RemoveRow(std::int32_t row);

  // Fills, search, extremes, exchanges and sorts: as the matrix core (matrix_core.h).
  void Fill(std::int32_t value) { Fill(0, 0, 0, 0, value); }
  void Fill(std::int32_t lowCol, std::int32_t highCol, std::int32_t lowRow, std::int32_t highRow,
            std::int32_t value);
  void FillDiag(std::int32_t value) { FillDiag(0, 0, 0, 0, value); }
  void FillDiag(std::int32_t lowCol, std::int32_t lowRow, std::int32_t highCol,
                std::int32_t highRow, std::int32_t value);
  void FillSerial(std::int32_t start, std::int32_t step) { FillSerial(0, 0, 0, 0, start, step); }
  void FillSerial(std::int32_t lowCol, std::int32_t lowRow, std::int32_t highCol,
                  std::int32_t highRow, std::int32_t start, std::int32_t step);
  void MinMax(std::int32_t lowCol, std::int32_t lowRow, std::int32_t highCol, std::int32_t highRow,
              std::int32_t& minimum, std::int32_t& maximum) const;
  void Find(std::int32_t lowCol, std::int32_t lowRow, std::int32_t highCol, std::int32_t highRow,
            std::int32_t value, std::int32_t& col, std::int32_t& row) const;
  std::int32_t FindInSortedColumn(std::int32_t col, bool ascending, std::int32_t value) const;
  void ExchangeColumns(std::int32_t c1, std::int32_t c2);
  void ExchangeRows(std::int32_t r1, std::int32_t r2);
  void MirrorColumns();
  void MirrorRows();
  void SortRows(std::int32_t sortCol, bool ascending, std::int32_t lowCol, std::int32_t lowRow,
                std::int32_t highCol, std::int32_t highRow);
  void SortCols(std::int32_t sortRow, bool ascending, std::int32_t lowCol, std::int32_t lowRow,
                std::int32_t highCol, std::int32_t highRow);
  /// As TMatrix::CopyFrom, from a matrix of either element type (doubles are rounded to the
  /// nearest integer, saturating at the Int32 limits, NaN giving 0).
  template <class Source>
  void CopyFrom(const Source* source, std::int32_t lowCol, std::int32_t lowRow,
                std::int32_t highCol, std::int32_t highRow, std::int32_t destCol,
                std::int32_t destRow);

  /// The checksum of the elements (rule in the file comment).
  std::string CRCofData() const;
  /// Column means (dimColumns, one per column) or row means (dimRows) into Means, resized;
  /// nothing when Means is null.
  void MeanVec(TDims dims, TVector* Means) const;
  /// Number of cells x of the range with low <= x <= high.
  std::int32_t CountValues(std::int32_t lowCol, std::int32_t lowRow, std::int32_t highCol,
                           std::int32_t highRow, std::int32_t low, std::int32_t high) const;
  /// Number of cells x of the range whose bits under the mask are all 0 ((x & mask) == 0);
  /// a mask of 0xFFFFFFFF counts the zero cells.
  std::int32_t CountMaskedZeros(std::int32_t lowCol, std::int32_t lowRow, std::int32_t highCol,
                                std::int32_t highRow, std::uint32_t mask) const;
  /// result[col - 1][row - 1] := (element >= threshold) for every cell, result resized to
  /// NrOfColumns x NrOfRows. The matrix is not changed (no event).
  void Dichotomize(std::int32_t threshold, TBool2DArray& result) const;

 private:
  // Sparse helpers.
  std::int32_t Search(std::int32_t col, std::int32_t row) const;
  void Put(std::int32_t col, std::int32_t row, std::int32_t value, bool storeZero);
  void SwapCells(std::int32_t c1, std::int32_t r1, std::int32_t c2, std::int32_t r2);
  void Grow();
  void RecomputeBox();
  void ResetBox();
  /// f(col, row, value) for every cell of a valid range, column by column.
  template <class F>
  void ForEachCell(std::int32_t lowCol, std::int32_t lowRow, std::int32_t highCol,
                   std::int32_t highRow, F&& f) const;
  bool ValidRange(std::int32_t& lowCol, std::int32_t& lowRow, std::int32_t& highCol,
                  std::int32_t& highRow) const;

  bool sparse_ = false;
  std::int32_t capacity_ = 0;
  std::int32_t increment_ = 0;
  std::int32_t count_ = 0;
  std::int32_t lowCol_ = uc_MaxInt, highCol_ = 1, lowRow_ = uc_MaxInt, highRow_ = 1;
  std::vector<TIntTriplet> triplets_;
};

template <class Source>
void TIntMatrix::CopyFrom(const Source* source, std::int32_t lowCol, std::int32_t lowRow,
                          std::int32_t highCol, std::int32_t highRow, std::int32_t destCol,
                          std::int32_t destRow) {
  if (source == nullptr) return;
  if (!sparse_) {
    Core::CopyFrom(source, lowCol, lowRow, highCol, highRow, destCol, destRow);
    return;
  }
  std::vector<std::vector<std::int32_t>> block;
  if (!detail::CopyBlock<std::int32_t>(*source, lowCol, lowRow, highCol, highRow, block)) return;
  for (std::size_t c = 0; c < block.size(); ++c) {
    for (std::size_t r = 0; r < block[c].size(); ++r) {
      const std::int32_t col = static_cast<std::int32_t>(c) + destCol;
      const std::int32_t row = static_cast<std::int32_t>(r) + destRow;
      if (col >= 1 && row >= 1) Put(col, row, block[c][r], false);
    }
  }
  Changed();
}

}  // namespace quv
