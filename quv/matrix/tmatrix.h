// TMatrix: the two-dimensional matrix of doubles.
//
// Storage, resizing, ranges, events, fills, search and sorting come from the shared core
// (matrix_core.h); this class adds copying between matrices and arrays, linear algebra,
// statistics and distances. Indices are 1-based, the column first. Errors raise
// EQUVMatrixError in the component form "Component \"<Name>...".
#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>
#include <string_view>

#include "quv/matrix/matrix_core.h"
#include "quv/matrix/matrix_files.h"
#include "quv/matrix/matrix_types.h"
#include "quv/vector/vector.h"

namespace quv {

/// Closing literal of ExportAsASC when a list of names does not fit the matrix.
inline constexpr std::string_view kNamesDoNotMatch = "\": names do not match the matrix";

/// Two-dimensional matrix of doubles, element (col, row) 1-based, column-major storage.
///
/// Files and streams (matrix_xml.cpp, matrix_io.cpp):
///   - XML: the layout of matrix_files.h; bit-exact for every double (NaN payloads aside).
///   - binary file (SaveBinary / LoadBinary): the 4096-byte header of matrix_files.h with the
///     first dimension the number of columns and the second the number of rows, then the
///     elements column by column, rows within a column, each an 8-byte little-endian IEEE
///     double: exactly 4096 + 8 NrOfColumns NrOfRows bytes, bit-exact.
///   - stream record (SaveToStream / LoadFromStream): LowCol, LowRow, HighCol, HighRow, then
///     the elements of that range column by column, every number a 10-byte extended value
///     (quv/base/extended_stream.h), bit-exact for doubles (NaN payloads aside).
///   - stream file (StoreOnFile / LoadFromFile): the 8 bytes "QUVMATD" 0x01, then one stream
///     record and nothing else.
///   - ASC (ExportAsASC / ImportASC): the library's text data file, one matrix row per line;
///     values written with strff(x, 12, Decimals) (Decimals < 0: 15 significant digits), so
///     not bit-exact; line 1 "Exported by QUV TMatrix component: " + file name for an empty
///     comment; optional column names and row names.
/// What the readers report for a bad file, always leaving the matrix as it was (no event):
///   - XML readers: the kMatXml... results of matrix_files.h (cut short, invalid tag or
///     unreadable number, malformed markup, bad or absurd size, no such matrix, no file);
///   - LoadBinary, LoadFromFile: false for a missing file, a short file, a wrong header or
///     signature, dimensions below 1, and a length other than the header announces;
///   - LoadFromStream: false for a cut record, bounds that are not whole numbers in 1..2^31-1
///     or not ordered, a range larger than the bytes left, or (without AdjustSize) a range
///     beyond the matrix;
///   - ImportASC: the status of the ASC reader (quv/datatable/asc.h), kAscNoData without a
///     complete row.
class TMatrix : public detail::TMatrixCore<double> {
 public:
  using TMatrixCore::TMatrixCore;

  /// Line 1 of an exported ASC file with an empty comment (followed by the file name).
  static constexpr const char* kASCHeaderText = "Exported by QUV TMatrix component: ";
  /// Most elements a document reader sizes a matrix for (2^28, 2 GiB of doubles).
  static constexpr std::int64_t kMaxXmlElements = std::int64_t{1} << 28;

  /// User distance between two rows, used by dmUser.
  TOnCalcDistanceEvent OnCalcDistance;

  // ----- copying (matrix_access.cpp) -----

  /// Takes over dimensions, DataID, every element, the precision pair and all five event
  /// handlers of source. The store is sized directly, so no event fires.
  void Assign(const TMatrix& source);
  /// Assign in the other direction: dest takes over everything of this matrix.
  void AssignTo(TMatrix& dest) const { dest.Assign(*this); }
  /// Resize to the source's size, then every element through SetVal (OnChange per element),
  /// then OnChange and OnResize once more. Copies neither DataID, nor the precision pair, nor
  /// the handlers. Nothing happens when source is null.
  void Clone(const TMatrix* source);

  /// Copies column col, rows first..last (made valid; col clamped), into arr from the 0-based
  /// position dest. arr keeps its length: it is first filled with 0, then the elements that
  /// fall inside it are written. Nothing happens unless dest < length and at least one
  /// element lands inside.
  void CopyColTo1DArray(TDoubleArray& arr, std::int32_t col, std::int32_t first, std::int32_t last,
                        std::int32_t dest) const;
  /// The same along row row, columns first..last.
  void CopyRowTo1DArray(TDoubleArray& arr, std::int32_t row, std::int32_t first, std::int32_t last,
                        std::int32_t dest) const;
  /// Copies the range into arr[col][row] (0-based, same layout as the store) from
  /// (destCol, destRow); arr is not resized and elements falling outside it are dropped. The
  /// integer form rounds to the nearest integer, saturating at the Int32 limits.
  void CopyToArray(TDouble2DArray& arr, std::int32_t lowCol, std::int32_t lowRow,
                   std::int32_t highCol, std::int32_t highRow, std::int32_t destCol,
                   std::int32_t destRow) const;
  void CopyToArray(TInt2DArray& arr, std::int32_t lowCol, std::int32_t lowRow, std::int32_t highCol,
                   std::int32_t highRow, std::int32_t destCol, std::int32_t destRow) const;
  /// Copies arr[i][j] (0-based, i the column) for i in lo1..hi1, j in lo2..hi2 (clamped to
  /// the array, pairs ordered) to (destCol + i - lo1, destRow + j - lo2); targets outside the
  /// matrix are dropped. Fires OnChange once; nothing for an empty array.
  void CopyFromArray(const TDouble2DArray& arr, std::int32_t lo1, std::int32_t lo2,
                     std::int32_t hi1, std::int32_t hi2, std::int32_t destCol,
                     std::int32_t destRow);
  void CopyFromArray(const TInt2DArray& arr, std::int32_t lo1, std::int32_t lo2, std::int32_t hi1,
                     std::int32_t hi2, std::int32_t destCol, std::int32_t destRow);
  /// Copies arr[first..last] (clamped, ordered) down a column (asColumn) or along a row,
  /// starting at (destCol, destRow); targets outside are dropped. Fires OnChange once.
  void CopyFromArray(const TDoubleArray& arr, std::int32_t first, std::int32_t last,
                     std::int32_t destCol, std::int32_t destRow, bool asColumn);
  void CopyFromArray(const TIntArray& arr, std::int32_t first, std::int32_t last,
                     std::int32_t destCol, std::int32_t destRow, bool asColumn);
  /// arr := a copy of the whole store, arr[col - 1][row - 1].
  void DuplicateDataAsArray(TDouble2DArray& arr) const;

  /// Uniform random values in [low, high) from Random(); fires OnChange.
  void FillRandomUniform(double low, double high) { FillRandomUniform(0, 0, 0, 0, low, high); }
  void FillRandomUniform(std::int32_t lowCol, std::int32_t lowRow, std::int32_t highCol,
                         std::int32_t highRow, double low, double high);
  /// Normal random values mean + stdDev * GRandom(); fires OnChange.
  void FillRandomGauss(double mean, double stdDev) { FillRandomGauss(0, 0, 0, 0, mean, stdDev); }
  void FillRandomGauss(std::int32_t lowCol, std::int32_t lowRow, std::int32_t highCol,
                       std::int32_t highRow, double mean, double stdDev);

  // ----- linear algebra (matrix_linalg.cpp) -----

  /// MatRes := this x MatB, sums in extended precision. The method sizes MatRes itself
  /// (Resize to MatB's columns x this matrix's rows) and writes every element with SetVal.
  /// False, nothing done, when a matrix is null or NrOfColumns differs from MatB's NrOfRows.
  /// Reports progress per block of 32 result rows (OnPercentDone, progress protocol); an abort
  /// leaves
  /// MatRes untouched and returns false. MatRes may be this matrix or MatB.
  bool Multiply(const TMatrix* MatB, TMatrix* MatRes);
  /// MatRes := this x transpose(MatB); needs equal column counts.
  bool MultiplyTransposed(const TMatrix* MatB, TMatrix* MatRes);
  /// MatRes := transpose(this) x MatB; needs equal row counts.
  bool TransposeAndMultiply(const TMatrix* MatB, TMatrix* MatRes);
  /// MatRes := element-wise product; needs equal dimensions.
  bool EMult(const TMatrix* MatB, TMatrix* MatRes);
  /// this := this + MatB / this - MatB; false (nothing done) unless the dimensions agree.
  /// Fires OnChange.
  bool Add(const TMatrix* MatB);
  bool Subtract(const TMatrix* MatB);
  /// Every element times factor / plus summand; fires OnChange.
  void SMult(double factor);
  void SAdd(double summand);
  /// this := its transpose; fires OnChange, and OnResize unless the matrix is square.
  void Transpose();
  /// Inverts in place (InvertArray); true on success, then OnChange. A singular or
  /// non-square matrix gives false and stays as it was.
  bool Invert();
  /// Product of the diagonal of the LU upper factor (the sign of the row exchanges included);
  /// 0 when the matrix is singular or not square.
  double Determinant() const;
  /// this = L x U with partial pivoting folded into L (L is a row permutation of a lower
  /// triangular matrix). L and U are resized to n x n. False (L and U unchanged) when the
  /// matrix is not square or singular or L or U is null.
  bool LUdecomposition(TMatrix* L, TMatrix* U) const;
  /// Cholesky factorisation of the lower triangle (col <= row). Destructive: the factor is
  /// written above the diagonal of this matrix without OnChange. Lower is resized to n x n and
  /// receives the factor in its lower triangle; its upper part is not written. False when not
  /// square (nothing changed) or when a diagonal sum is not positive (its factor entries are
  /// then written as 0 and the loop goes on).
  bool CholeskyDecomp(TMatrix* Lower);
  /// The norm of the matrix. ntSpectral decomposes a copy of
  /// the store (transposed where that makes it tall, which keeps the singular values) with
  /// one progress step per singular value; it raises EQUVMatrixError "near singular
  /// covariance matrix" (no component prefix) when a value needs 30 iterations, and returns 0
  /// when AbortMathProc stops it.
  double Norm(TNormType normType) const;
  /// MatRes := this x this; false unless square.
  bool Square(TMatrix* MatRes);
  /// Balances a square matrix in place for eigenvalue work (diagonal similarity by powers of
  /// the radix 2, Parlett-Reinsch), so that each row and column have comparable norms; scale
  /// receives the n factors d (the result is D^-1 A D). False unless square. Fires OnChange.
  bool Balance(TDoubleArray& scale);
  /// Hat := X (X'X)^-1 X', NrOfRows x NrOfRows; false when X'X is singular or Hat is null.
  bool CalcHatMatrix(TMatrix* Hat) const;

  // ----- statistics (matrix_stats.cpp) -----

  /// Sum of the diagonal elements (1..min(NrOfColumns, NrOfRows)).
  double Trace() const;
  /// Sum over the range, in extended precision.
  double Sum(std::int32_t lowCol, std::int32_t lowRow, std::int32_t highCol,
             std::int32_t highRow) const;
  /// Mean and sample variance (n - 1) over the range; the variance is 0 for one element.
  void MeanVar(std::int32_t lowCol, std::int32_t lowRow, std::int32_t highCol, std::int32_t highRow,
               double& mean, double& variance) const;
  /// Population skewness and excess kurtosis over the range (n > 3, else both 0), in the
  /// forms of the vector class.
  void SkewKurt(std::int32_t lowCol, std::int32_t lowRow, std::int32_t highCol,
                std::int32_t highRow, double& skewness, double& kurtosis) const;
  /// Sample-corrected skewness and excess kurtosis (n > 3, else both 0).
  void SkewKurtSample(std::int32_t lowCol, std::int32_t lowRow, std::int32_t highCol,
                      std::int32_t highRow, double& skewness, double& kurtosis) const;
  /// exp(mean of ln x), 0 when the range holds a 0; a negative element raises
  /// "Component \"<Name>\": negative argument passed to GeometricMean".
  double GeometricMean(std::int32_t lowCol, std::int32_t lowRow, std::int32_t highCol,
                       std::int32_t highRow) const;
  /// n / sum(1/x); an element <= 0 raises
  /// "Component \"<Name>\": negative or zero argument passed to HarmonicMean".
  double HarmonicMean(std::int32_t lowCol, std::int32_t lowRow, std::int32_t highCol,
                      std::int32_t highRow) const;
  /// Percentile(25), Percentile(50) and Percentile(75) of the range.
  void Quartiles(std::int32_t lowCol, std::int32_t lowRow, std::int32_t highCol,
                 std::int32_t highRow, double& q1, double& q2, double& q3) const;
  /// prob (clamped to 0..100, NaN counting as 0) percentile of the range: s[i] + (s[i+1] - s[i]) f
  /// for pos = (n - 1) prob / 100 = i + f over the sorted values s (0-based).
  double Percentile(double prob, std::int32_t lowCol, std::int32_t lowRow, std::int32_t highCol,
                    std::int32_t highRow) const;
  /// Pearson correlation of the elements of this matrix and MatB taken pairwise; 0 when either
  /// is constant. Unequal dimensions raise "Component \"<Name>\": matrices do not match".
  double Correlate(const TMatrix* MatB) const;
  /// Frequencies of the range in bins of width binWidth from lowBound: bins =
  /// round(|highBound - lowBound| / binWidth) + 1; x < lowBound counts as underflow,
  /// x >= highBound + binWidth as overflow, else bin floor((x - lowBound) / binWidth).
  /// maxCount is the largest bin count; NaN elements are not counted. Fewer than 1 or more than 500
  /// bins (or a binWidth that is not positive) raise "Component \"<Name>.Histogram\": invalid
  /// number of bins".
  void Histogram(std::int32_t lowCol, std::int32_t lowRow, std::int32_t highCol,
                 std::int32_t highRow, double lowBound, double highBound, double binWidth,
                 TIntArray& hist, std::int32_t& underflow, std::int32_t& overflow,
                 std::int32_t& maxCount) const;
  /// Every element := 1 when it is >= threshold, else 0; fires OnChange.
  void Dichotomize(double threshold);
  /// Replaces each column (acrColumns) or row (acrRows) by its differences of the given order
  /// (x[i+1] - x[i], applied order times); that dimension shrinks by order (events of
  /// Resize). Nothing happens unless 1 <= order < that dimension.
  void Diff(std::int32_t order, TApplyColRow applyTo);
  /// Column means subtracted from every column; means receives them (0-based). OnChange.
  void MeanCenterColumns(TDoubleArray& means);
  /// Row means subtracted from every row; means receives them. OnChange.
  void MeanCenterRows(TDoubleArray& means);
  /// (x - mean) / sd per column, sd the sample standard deviation; a column with sd 0 is only
  /// centred. Means and sds are returned; OnChange.
  void StandardizeColumns(TDoubleArray& means, TDoubleArray& stdDevs);
  void StandardizeRows(TDoubleArray& means, TDoubleArray& stdDevs);
  /// (x - median) / spread per column with spread = |median - Percentile(quantile)|; a column
  /// with spread 0 is only centred. Medians and spreads are returned; OnChange.
  void QNormalizeColumns(double quantile, TDoubleArray& medians, TDoubleArray& spreads);
  void QNormalizeRows(double quantile, TDoubleArray& medians, TDoubleArray& spreads);
  /// Resamples the matrix onto a grid of nCols x nRows by bilinear interpolation (corner
  /// elements map onto corner elements) into dest, which is resized. False when dest is null
  /// or a size is below 1.
  bool ResampleExtMat(TMatrix* dest, std::int32_t nCols, std::int32_t nRows) const;

  // ----- operations with vectors (matrix_vector.cpp) -----

  /// Copies row row (clamped), columns firstCol..lastCol (made valid), into Vec from element
  /// destElem on. Nothing happens when Vec is null, destElem > Vec's length or no element
  /// would land at 1 or beyond. Otherwise the whole vector becomes 0 first, the elements that
  /// fit are written, and Vec fires OnChange once.
  void CopyRowToVec(TVector* Vec, std::int32_t row, std::int32_t firstCol, std::int32_t lastCol,
                    std::int32_t destElem) const;
  void CopyRowToVec(TVector* Vec, std::int32_t row, std::int32_t firstCol,
                    std::int32_t lastCol) const {
    CopyRowToVec(Vec, row, firstCol, lastCol, 1);
  }
  /// The same along column col, rows firstRow..lastRow.
  void CopyColToVec(TVector* Vec, std::int32_t col, std::int32_t firstRow, std::int32_t lastRow,
                    std::int32_t destElem) const;
  void CopyColToVec(TVector* Vec, std::int32_t col, std::int32_t firstRow,
                    std::int32_t lastRow) const {
    CopyColToVec(Vec, col, firstRow, lastRow, 1);
  }
  /// Copies Vec's elements firstElem..lastElem (1-based, made valid as the vector does) down
  /// column destCol from row destRow (dims = dimColumns) or along row destRow from column
  /// destCol (dims = dimRows); targets outside the matrix are dropped. OnChange once.
  void CopyFromVec(const TVector* Vec, std::int32_t firstElem, std::int32_t lastElem,
                   std::int32_t destCol, std::int32_t destRow, TDims dims);
  /// The same down a column.
  void CopyFromVec(const TVector* Vec, std::int32_t firstElem, std::int32_t lastElem,
                   std::int32_t destCol, std::int32_t destRow) {
    CopyFromVec(Vec, firstElem, lastElem, destCol, destRow, dimColumns);
  }
  /// VecRes := this x Vec (extended sums); VecRes is resized to NrOfRows. False (nothing
  /// done) when a vector is null or Vec's length differs from NrOfColumns.
  bool Multiply(const TVector* Vec, TVector* VecRes) const;
  /// VecRes := transpose(this) x Vec; needs Vec's length = NrOfRows; VecRes gets NrOfColumns.
  bool TransposeAndMultiply(const TVector* Vec, TVector* VecRes) const;
  /// Column means (dimColumns, NrOfColumns values) or row means (dimRows) into Means, which
  /// is resized. Nothing when Means is null.
  void MeanVec(TDims dims, TVector* Means) const;
  /// One value per row (orRows, over the columns) or per column (orColumns, over the rows)
  /// into Vec, which is resized. Variance and standard deviation use n - 1 (0 for one value).
  void EdgeVector(TOrientation orientation, TEdgeOp op, TVector* Vec) const;
  /// The same, but each row (or column) contributes only its elements at the 1-based
  /// positions of indices (columns for orRows, rows for orColumns); positions outside the
  /// matrix are skipped, and a line with no valid position gives 0.
  void EdgeVector(TOrientation orientation, TEdgeOp op, const TIntArray& indices,
                  TVector* Vec) const;
  /// The vector forms of the normalisations: the statistics go into the vectors (resized);
  /// a null vector is skipped.
  void MeanCenterColumns(TVector* Means);
  void MeanCenterRows(TVector* Means);
  void StandardizeColumns(TVector* Means, TVector* StdDevs);
  void StandardizeRows(TVector* Means, TVector* StdDevs);
  void QNormalizeColumns(double quantile, TVector* Medians, TVector* Spreads);
  void QNormalizeRows(double quantile, TVector* Medians, TVector* Spreads);

  // ----- distances (matrix_distance.cpp) -----

  /// Distance between rows row1 and row2 (1-based) over all columns; 0 when a row is
  /// outside the matrix.
  double DistanceOfObjects(TDistMode distMode, std::int32_t row1, std::int32_t row2);
  /// DistMat := the NrOfRows x NrOfRows matrix of distances between all pairs of rows
  /// (symmetric, zero diagonal, dmUser asks OnCalcDistance for each pair i < j). Reports
  /// progress per row; an abort leaves the rows not reached as they were. DistMat is resized
  /// (events of Resize) and fires OnChange once at the end.
  void CalcDistMat(TDistMode distMode, TMatrix* DistMat);

  // ----- files and streams (matrix_xml.cpp, matrix_io.cpp; layouts above) -----

  /// Handles one tag of a matrix document. matrix: starts a document (nothing announced, not
  /// yet sized); numcols / numrows: the whole-number content is the announced size;
  /// numplanes / numtimeslots: ignored; cell: at the first cell of the document Resize to
  /// the announced size, then SetVal(ix, iy, value), so cells outside are dropped. Returns
  /// kMatXmlTagDone (1) at the closing matrix tag, kMatXmlTagInvalid (-1) at an invalid tag
  /// and at a size, index or value that is not a number, else kMatXmlTagGoOn (0). An
  /// announced size of more than kMaxXmlElements raises "...\": not enough memory on heap".
  std::int32_t ProcessXmlTag(TMatXmlTag Tag, std::string_view Attributes, std::string_view Content);
  /// Reads the first matrix element whose dataid equals DataID (the first one at all when
  /// DataID is empty) from the stream's position, and leaves the stream behind it. The
  /// document runs through ProcessXmlTag on a copy of the matrix, which replaces it (OnChange,
  /// OnResize when the size changed; DataID := the element's dataid) only when the closing
  /// tag was reached. Returns kMatFileOk or a kMatXml... result (matrix unchanged).
  std::int32_t ReadFromXMLStream(std::istream& Stream, const std::string& DataID = "");
  /// The same on a text file opened by the caller.
  std::int32_t ReadFromOpenXMLFile(std::istream& TextFile, const std::string& DataID = "");
  /// The same from a file; kMatFileNotFound when it cannot be opened.
  std::int32_t LoadFromXMLFile(const std::string& FileName, const std::string& DataID);
  /// Writes the matrix element at the stream's position, after an XML declaration when
  /// WithDeclaration; DataID (when not empty) goes into the dataid attribute. Several
  /// matrices may follow one another in one stream.
  void WriteToXMLStream(std::ostream& Stream, bool WithDeclaration,
                        const std::string& DataID) const;
  /// The same on a text file opened by the caller.
  void WriteToOpenXMLFile(std::ostream& TextFile, bool WithDeclaration,
                          const std::string& DataID) const;
  /// A new file (replacing one) with the declaration and the matrix element; raises
  /// std::ios_base::failure naming the file when it cannot be written.
  void SaveAsXMLFile(const std::string& FileName, const std::string& DataID) const;

  /// Reads the 4096-byte header of a binary file: Dim1, Dim2, the identifier and the Int32 at
  /// offset 272 into Kind. False when the file does not exist; true exactly when the Int32
  /// values at offsets 8 and 12 are 0 and Kind is 1. A file shorter than the header raises
  /// std::ios_base::failure.
  static bool ReadBinaryHeader(const std::string& FileName, std::int32_t& Dim1, std::int32_t& Dim2,
                               std::string& DataID, std::int32_t& Kind);
  /// Writes the binary file (header with DataID, then the elements); raises
  /// std::ios_base::failure when it cannot.
  void SaveBinary(const std::string& FileName) const;
  /// Loads a binary file: size, elements and DataID (OnChange, OnResize when the size
  /// changed). False, matrix unchanged, for a missing or bad file.
  bool LoadBinary(const std::string& FileName);
  /// Appends the stream record of the range (made valid; 0, 0 means all) to the stream.
  void SaveToStream(std::ostream& Stream, std::int32_t LowCol, std::int32_t LowRow,
                    std::int32_t HighCol, std::int32_t HighRow) const;
  /// Reads one stream record. AdjustSize: the matrix is resized to (HighCol, HighRow) first,
  /// elements present before and after keeping their values; otherwise the range must lie
  /// inside the matrix. The range's elements are then stored in place; OnChange (and
  /// OnResize) once. False, matrix unchanged, for a bad or cut record.
  bool LoadFromStream(std::istream& Stream, bool AdjustSize);
  /// Writes the stream file of the range; raises std::ios_base::failure when it cannot.
  void StoreOnFile(std::int32_t LowCol, std::int32_t LowRow, std::int32_t HighCol,
                   std::int32_t HighRow, const std::string& FileName) const;
  /// Loads a stream file as LoadFromStream; ClearFirst sets every element outside the
  /// stored range to 0. False, matrix unchanged, for a missing or bad file.
  bool LoadFromFile(const std::string& FileName, bool AdjustSize, bool ClearFirst = false);

  /// Writes the ASC file; raises std::ios_base::failure when it cannot be written.
  void ExportAsASC(const std::string& FileName, std::int32_t Decimals,
                   const std::string& Comment) const;
  /// The same with names: Names[0] the column names, Names[1] the row names, each written
  /// when present and not empty; a list whose length differs from the matrix raises
  /// "Component \"<Name>\": names do not match the matrix".
  void ExportAsASC(const std::string& FileName, std::int32_t Decimals, const std::string& Comment,
                   const TStr2DArray& Names) const;
  /// Reads an ASC file into the matrix (NrCols columns, the complete rows read); Comment is
  /// line 1. Returns 0 or the negative status of the ASC reader; the matrix is unchanged on
  /// failure.
  std::int32_t ImportASC(const std::string& FileName, std::string& Comment);
  /// The same, returning the names: Names[0] column names, Names[1] row names (empty lists
  /// when the file has none).
  std::int32_t ImportASC(const std::string& FileName, std::string& Comment, TStr2DArray& Names);

 private:
  bool LoadRecord(std::istream& Stream, bool AdjustSize, bool ClearFirst);

  // The working fields of a document being read: the announced size and whether the matrix
  // has been sized for it.
  std::int32_t xmlNumCols_ = 0;
  std::int32_t xmlNumRows_ = 0;
  bool xmlNotSized_ = true;
};

}  // namespace quv
