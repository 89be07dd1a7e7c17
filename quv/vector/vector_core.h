// TVectorCore<T>: the one core that TVector (double) and TIntVector (32-bit integer) share.
//
// It owns the element storage, resizing, the 1-based element access that never raises, range
// normalisation, the container events, arithmetic with another vector, searching, the comb
// sort, copying, the statistics and the binary and text file forms. The two public classes
// add only what differs between them (vector.h). The member definitions live in
// vector_core.cpp and the two fragments it includes, vector_stats.ipp and vector_io.ipp, so
// that the core is instantiated once for both element types.
//
// Conventions of every member:
//  - element indices are 1-based; a (First, Last) range is normalised by MakeValidElemRange,
//    so (0, 0) means the whole vector;
//  - OnChange fires once after an operation that changes values or order, OnResize after it
//    when the number of elements really changed;
//  - statistics accumulate in long double and round to double once;
//  - storage is obtained before anything changes, so a failed allocation (raised as
//    EQUVVectorError in the component form) leaves the vector as it was.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>
#include <type_traits>
#include <vector>

#include "quv/base/base.h"
// The ASC reader and writer depend on base only; the vector's ImportASC statuses live there.
#include "quv/datatable/asc.h"

namespace quv {

/// Results of MakeValidElemRange.
inline constexpr std::int32_t kRangeValid = 0;
inline constexpr std::int32_t kRangeClamped = -1;

/// Results of CopyFrom and its array forms.
inline constexpr std::int32_t kCopyOk = 0;
inline constexpr std::int32_t kCopyNoSource = -1;
inline constexpr std::int32_t kCopySourceOutOfRange = -2;
inline constexpr std::int32_t kCopyDestOutOfRange = -3;

template <class T>
class TVectorCore : public TContainerComponent {
  static_assert(std::is_same_v<T, double> || std::is_same_v<T, std::int32_t>);

 public:
  using value_type = T;
  using TArray = std::vector<T>;
  using T2DArray = std::vector<TArray>;

  /// One element 0; Cleared is true. Raises "...\": not enough memory on heap" when the
  /// storage cannot be obtained.
  explicit TVectorCore(TComponent* owner = nullptr);
  ~TVectorCore() override = default;

  // ---- storage, access and events ------------------------------------------------------

  /// Number of elements (at least 1).
  std::int32_t NrOfElem() const { return static_cast<std::int32_t>(elems_.size()); }
  /// True after construction and Clear, false after element writes and fills.
  bool Cleared() const { return cleared_; }
  /// The elements in index order (element i at position i - 1).
  const TArray& Storage() const { return elems_; }

  /// Sets the number of elements to n, keeping existing elements and zeroing new ones. n
  /// equal to NrOfElem returns true and n < 1 false, both without events. Otherwise fires
  /// OnChange then OnResize; raises "...\": not enough memory" when storage cannot be had.
  bool Resize(std::int32_t n);

  /// Element i (1-based); 0 outside 1..NrOfElem.
  T GetVal(std::int32_t i) const {
    return (i >= 1 && i <= NrOfElem()) ? elems_[static_cast<std::size_t>(i - 1)] : T{};
  }
  /// Read-only element access, the same as GetVal.
  T Elem(std::int32_t i) const { return GetVal(i); }
  /// Stores v at i (1-based), clears Cleared and fires OnChange; ignored when i is outside
  /// 1..NrOfElem.
  void SetVal(std::int32_t i, T v);

  /// Normalises a 1-based range in place: (0, 0) becomes (1, NrOfElem); otherwise bounds are
  /// clamped into 1..NrOfElem and swapped when First > Last. Returns kRangeClamped (-1) when
  /// a bound had to be moved, kRangeValid (0) otherwise.
  std::int32_t MakeValidElemRange(std::int32_t& First, std::int32_t& Last) const;

  /// Copies size, Cleared, every element and the three event handlers of source; fires
  /// nothing.
  void Assign(const TVectorCore& source);
  /// The reverse of Assign: dest.Assign(*this).
  void AssignTo(TVectorCore& dest) const { dest.Assign(*this); }

  // ---- arithmetic with the whole vector and another one ----------------------------------

  /// Euclidean length sqrt(sum x^2).
  double CalcVecLeng() const;
  /// Sum of a_i * b_i; raises "...\": vectors have different dimensions" on unequal lengths.
  double DotProduct(const TVectorCore& v) const;
  /// |a_n - b_n|: only the last elements count (kept on purpose). Raises
  /// "EuclideanDistance: dimensions of vectors do not match" on unequal lengths.
  double EuclideanDistance(const TVectorCore& v) const;
  /// Pearson correlation coefficient; 0 when the lengths differ, n < 2 or a variable is
  /// constant.
  double PearsonCorrCoeff(const TVectorCore& v) const;
  /// Sum of a_i * b_(i-Lag) over the indices where both exist; 0 when fewer than two.
  double Correlate(const TVectorCore& v, std::int32_t Lag) const;
  /// a_i += b_i; raises "...\": vectors have different dimensions"; fires OnChange.
  void Add(const TVectorCore& v);
  /// a_i -= b_i; raises "...\": vectors have different dimensions"; fires OnChange.
  void Subtract(const TVectorCore& v);
  /// a_i *= s; fires OnChange. Integer products wrap around like 32-bit hardware.
  void SMult(T s);
  /// a_i := |a_i|; fires OnChange.
  void AbsVal();

  // ---- statistics over a range (vector_stats.ipp) -----------------------------------------

  /// Smallest and largest value of the range.
  void MinMax(std::int32_t First, std::int32_t Last, T& Min, T& Max) const;
  /// The same with the 1-based indices of the first minimum and the first maximum.
  void MinMax(std::int32_t First, std::int32_t Last, std::int32_t& MinIx, std::int32_t& MaxIx,
              T& Min, T& Max) const;
  /// Sum of the range.
  double Sum(std::int32_t First, std::int32_t Last) const;
  /// Mean and variance (n - 1 denominator) of the range. For fewer than 3 elements the
  /// variance is 1.0 on purpose; a negative rounding result becomes 0. The one-pass form
  /// (sum of squares minus n mean^2) cancels on data with a large offset: 1e15 + {0, 3, 9, 12}
  /// gives variance 0 instead of 30, and NIST's NumAcc4 keeps under 2 correct digits. Where
  /// accuracy matters use MeanVarArray (quv/openarrays), whose two-pass form is good to the
  /// limit of the double input.
  void MeanVar(std::int32_t First, std::int32_t Last, double& Mean, double& Variance) const;
  /// exp(mean of ln x); 0 when an element is 0. Raises "...\": negative argument passed to
  /// GeometricMean" for a negative element.
  double GeometricMean(std::int32_t First, std::int32_t Last) const;
  /// n / sum(1/x). Raises "...\": negative or zero argument passed to HarmonicMean" for an
  /// element <= 0.
  double HarmonicMean(std::int32_t First, std::int32_t Last) const;
  /// Population skewness and excess kurtosis, both 0 for n <= 3 or constant data.
  void SkewKurt(std::int32_t First, std::int32_t Last, double& Skewness, double& Kurtosis) const;
  /// Sample-corrected skewness and excess kurtosis, both 0 for n < 4.
  void SkewKurtSample(std::int32_t First, std::int32_t Last, double& Skewness,
                      double& Kurtosis) const;
  /// Most frequent value of the range: the value of the longest run of equal sorted values,
  /// the smallest such value on ties (so the smallest value when all differ).
  T Mode(std::int32_t First, std::int32_t Last) const;
  /// P-th percentile (P clamped into 0..100) by linear interpolation between the sorted values
  /// at (c - 1) * P / 100. Raises "...\": not enough memory on heap" when the work array
  /// cannot be had.
  double Percentile(double P, std::int32_t First, std::int32_t Last) const;
  /// The 25th, 50th and 75th percentiles of the range, exactly as Percentile computes them.
  void Quartiles(std::int32_t First, std::int32_t Last, double& Q1, double& Q2, double& Q3) const;

  // ---- searching, ordering, copying and filling --------------------------------------------

  /// Index of the element closest to x (the first on ties).
  std::int32_t Find(std::int32_t First, std::int32_t Last, T x) const;
  /// Index of the first element equal to x; 0 when there is none.
  std::int32_t FindExact(std::int32_t First, std::int32_t Last, T x) const;
  /// Binary search in a sorted vector: the index of an element equal to x, or of the closer of
  /// the two neighbours that enclose x (the upper one on ties).
  std::int32_t FindInSortedVector(bool Ascending, T x) const;
  /// Comb sort of the range (shrink factor 1.3). Fires OnSortExchange(0, i, i + gap, 0, 0)
  /// after every exchange and OnChange once at the end; nothing for fewer than 2 elements.
  void SortElems(bool Ascending, std::int32_t First, std::int32_t Last);
  /// Reverses the element order; fires OnChange.
  void Mirror();
  /// Random permutation: reseeds the uniform source from the clock, then exchanges NrOfElem
  /// random pairs. Fires nothing (on purpose).
  void ShuffleElems();
  /// Becomes a copy of v's elements (size included); Cleared := false; fires OnChange, and
  /// OnResize when the size changed.
  void Clone(const TVectorCore& v);
  /// Copies v's elements SrcFirst..SrcLast (1-based; both 0 means all) to DestIx, DestIx + 1,
  /// ...; elements that would land beyond the end are dropped. Returns kCopyOk (fires
  /// OnChange), kCopyNoSource for a null v, kCopySourceOutOfRange for a source bound outside
  /// 1..v's length, kCopyDestOutOfRange for DestIx outside 1..NrOfElem.
  std::int32_t CopyFrom(const TVectorCore* v, std::int32_t SrcFirst, std::int32_t SrcLast,
                        std::int32_t DestIx);
  /// The same from a zero-based array: bounds are 0-based, and SrcFirst = SrcLast = 0 still
  /// means the whole array. An empty array gives kCopySourceOutOfRange.
  std::int32_t CopyFrom(const TArray& Arr, std::int32_t SrcFirst, std::int32_t SrcLast,
                        std::int32_t DestIx);
  /// The same from row Row (0-based) of a two-dimensional array.
  std::int32_t CopyFrom2DArrayRow(const T2DArray& Arr2D, std::int32_t Row, std::int32_t First,
                                  std::int32_t Last, std::int32_t DestIx);
  /// The same from column Col (0-based) of a two-dimensional array, rows First..Last; a row
  /// too short to hold the column gives kCopySourceOutOfRange.
  std::int32_t CopyFrom2DArrayColumn(const T2DArray& Arr2D, std::int32_t Col, std::int32_t First,
                                     std::int32_t Last, std::int32_t DestIx);
  /// Copies the range First..Last (1-based, normalised) to Arr[DestIx], Arr[DestIx + 1], ...
  /// (zero-based; a negative DestIx counts as 0); the array grows when it is too short.
  void CopyToArray(TArray& Arr, std::int32_t First, std::int32_t Last, std::int32_t DestIx) const;
  /// Copies the range into line Line (0-based) of a two-dimensional array starting at
  /// DestIx: into Arr2D[Line][DestIx + k] as a row, or Arr2D[DestIx + k][Line] when AsColumn.
  /// The array grows where it is too short; negative indices count as 0.
  void CopyToArray(T2DArray& Arr2D, std::int32_t First, std::int32_t Last, std::int32_t Line,
                   std::int32_t DestIx, bool AsColumn) const;
  /// Every element := x; Cleared := false; fires OnChange.
  void Fill(T x);
  /// Element i := First + (i - 1) * Step by repeated addition; Cleared := false; fires
  /// OnChange.
  void FillSerial(T First, T Step);
  /// Every element := 0; Cleared := true; fires OnChange.
  void Clear();
  /// True when the vector holds at most two distinct values, returned in V1 (the first
  /// element) and V2 (the first element that differs, or V1). False for fewer than 2 elements.
  bool IsDichotomous(T& V1, T& V2) const;
  /// 64 hexadecimal digits: eight CRC-32 registers, byte k of every element fed into register
  /// k (little-endian byte order, so the text is the same on every platform). An integer
  /// element has 4 bytes, so registers 4..7 of an integer vector stay at their start value.
  /// The matrices follow the same rule (detail::TDataCRC, vector_detail.h).
  std::string CRCofData() const;

  // ---- streams and files (vector_io.ipp) ---------------------------------------------------

  /// Appends the record First, Last (normalised), elements First..Last as 10-byte extended
  /// values at the stream's current position.
  void SaveToStream(std::ostream& Stream, std::int32_t First, std::int32_t Last) const;
  /// Reads a record written by SaveToStream. Reads First and Last (a failed read, a
  /// non-finite value or one outside the Integer range returns false without events); with
  /// AdjustSize resizes to Last; when Last <= NrOfElem reads the values into First..Last
  /// (values outside 1..NrOfElem are read and dropped; a failed read makes the result false
  /// but reading goes on), otherwise reads nothing and returns false. Fires OnChange in both
  /// cases. With AdjustSize, a record that claims more values than the rest of the stream
  /// holds (when the stream can tell) is refused before anything changes. The growth to Last
  /// itself is not bounded: a record First = Last = 10^8 validly asks for 10^8 elements.
  bool LoadFromStream(std::istream& Stream, bool AdjustSize);
  /// Reads a one-column ASC file: 0 on success, kAscFileNotFound (-8), kAscTooManyColumns
  /// (-7), a header status of ReadHeaderOfASC, or the body statuses of ReadASC. When fewer
  /// numbers than declared are found the vector gets only those (no error). On a non-zero
  /// status the vector is left as it was. Integer vectors round the numbers they read.
  std::int32_t ImportASC(const std::string& FileName, std::string& Comment);
  /// Writes the whole vector to a binary file: the signature "QUVVEC" + 'D' or 'I' + version
  /// byte 1, then the stream record of the whole vector (28 + 10 n bytes). A file that cannot
  /// be written raises std::ios_base::failure naming it.
  void StoreOnFile(const std::string& FileName) const;
  /// Loads a file written by StoreOnFile, taking its size. False (vector unchanged) when the
  /// file is missing, of another element type, or cut short.
  bool LoadFromFile(const std::string& FileName);
  /// The same; without AdjustSize the vector keeps its size and the stored elements beyond it
  /// are dropped.
  bool LoadFromFile(const std::string& FileName, bool AdjustSize);

 protected:
  T* Data() { return elems_.data(); }
  /// The storage for element loops that change values in place (the caller fires events).
  TArray& MutableStorage() { return elems_; }
  const T* Data() const { return elems_.data(); }
  void SetCleared(bool cleared) { cleared_ = cleared; }
  /// Installs new storage (never empty): fires OnChange, then OnResize when the size changed.
  void ReplaceStorage(TArray&& storage);
  /// A zeroed work array of n elements, guarded with "...\": not enough memory on heap".
  TArray NewArray(std::size_t n) const;
  /// The normalised range (0-based begin, count) of First..Last.
  void Span(std::int32_t First, std::int32_t Last, std::size_t& begin, std::size_t& count) const;
  /// Writes the ASC file of the whole vector with line 1 built from Comment or HeaderText.
  void WriteASC(const std::string& FileName, const std::string& Comment,
                const std::string& HeaderText, std::int32_t Decimals) const;

 private:
  template <class Op>
  void CombineWith(const TVectorCore& v, Op op);
  template <class Get>
  std::int32_t CopyRange(std::int32_t srcLen, std::int32_t base, std::int32_t SrcFirst,
                         std::int32_t SrcLast, std::int32_t DestIx, Get get);

  TArray elems_;
  bool cleared_ = true;
};

extern template class TVectorCore<double>;
extern template class TVectorCore<std::int32_t>;

}  // namespace quv
