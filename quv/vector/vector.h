// Chief header of the vector unit: TVector (doubles) and TIntVector (32-bit integers).
//
// Both classes are thin layers over TVectorCore<T> (vector_core.h), which holds everything
// they share; each adds only what differs: the size setter's name, the operations that exist
// for one element type only, the histogram's failure style and the ASC writer's signature.
// Errors raise EQUVVectorError.
#pragma once

#include <cstdint>
#include <string>

#include "quv/base/base.h"
#include "quv/vector/vector_core.h"

namespace quv {

/// Numerical integration rules of TVector::Integrate.
enum TIntegMethod : std::uint8_t { imSimple, imTrapezoidal, imSimpson };

/// Largest number of bins a histogram may have.
inline constexpr std::int32_t kMaxHistogramBins = 500;

class TIntVector;

/// A one-dimensional container of doubles with 1-based element access.
class TVector : public TVectorCore<double> {
 public:
  /// Line 1 of an exported ASC file with an empty comment (followed by the file name).
  static constexpr const char* kASCHeaderText = "Exported by QUV TVector component: ";

  explicit TVector(TComponent* owner = nullptr) : TVectorCore<double>(owner) {}

  /// Setter of NrOfElem: ignored for n < 1 or n = NrOfElem, otherwise Resize(n).
  void SetVecSize(std::int32_t n) {
    if (n >= 1 && n != NrOfElem()) Resize(n);
  }

  /// Scales the elements so that the Euclidean length becomes L; fires OnChange. Nothing
  /// happens (no event) when the length is 0.
  void SetVecLeng(double L);
  /// Subtracts the mean from every element and returns it. Fires nothing (on purpose).
  double MeanCenter();
  /// Mean and standard deviation of MeanVar over the whole vector; when StdDev is not 0 every
  /// x becomes (x - Mean) / StdDev. Fires nothing (on purpose).
  void Standardize(double& Mean, double& StdDev);
  /// Median := Percentile(50), Spread := |Median - Percentile(Percent)|; when Spread is not 0
  /// every x becomes (x - Median) / Spread. Fires nothing (on purpose).
  void QNormalize(double Percent, double& Median, double& Spread);

  /// Counts the elements First..Last (used as given, not normalised; indices outside
  /// 1..NrOfElem count nothing) into round(|High - Low| / BinWidth) + 1 bins starting at
  /// LowBound. Returns false and changes nothing when that is more than 500 bins (or the
  /// width is not positive). Values below LowBound are Underflow, values at or above
  /// HighBound + BinWidth (or beyond the last bin) Overflow; MaxCount is the largest bin.
  bool Histogram(std::int32_t First, std::int32_t Last, double LowBound, double HighBound,
                 double BinWidth, TIntArray& Hist, std::int32_t& Underflow, std::int32_t& Overflow,
                 std::int32_t& MaxCount) const;
  /// The same into an integer vector, resized to the bin count, counts at 1..bins (fires the
  /// events of Resize and CopyFrom on Hist).
  bool Histogram(std::int32_t First, std::int32_t Last, double LowBound, double HighBound,
                 double BinWidth, TIntVector& Hist, std::int32_t& Underflow, std::int32_t& Overflow,
                 std::int32_t& MaxCount) const;

  /// Element := Low + r * (High - Low) with r uniform in [0, 1); fires OnChange.
  void FillRandomUniform(double Low, double High);
  /// Element := Mean + StdDev * GRandom() (standard normal variates); fires OnChange.
  void FillRandomGauss(double Mean, double StdDev);

  /// Integral over the real element positions FromIx..ToIx (element i at position i, unit
  /// spacing; both clamped into [1, NrOfElem] and ordered). Partial intervals at the ends use
  /// the trapezoid rule on interpolated values; the whole intervals between use Method:
  /// imSimple the left rectangle rule, imTrapezoidal the trapezoid rule, imSimpson closed
  /// Newton-Cotes (2 intervals Simpson 1/3, 3 intervals Simpson 3/8, 4 intervals Boole,
  /// more: composite Simpson 1/3, ending with one 3/8 panel for an odd count; one interval:
  /// trapezoid).
  double Integrate(double FromIx, double ToIx, TIntegMethod Method) const;

  /// Writes the vector as a one-column ASC file, values as strff(x, 12, Decimals); line 1 is
  /// Comment with LFs replaced by blanks, or "Exported by QUV TVector component: " + FileName
  /// when Comment is empty. A file that cannot be written raises std::ios_base::failure.
  void ExportAsASC(const std::string& FileName, std::int32_t Decimals,
                   const std::string& Comment) const;
};

/// A one-dimensional container of 32-bit integers with 1-based element access.
class TIntVector : public TVectorCore<std::int32_t> {
 public:
  /// Line 1 of an exported ASC file with an empty comment (followed by the file name).
  static constexpr const char* kASCHeaderText = "Exported by QUV TIntVector component:";

  explicit TIntVector(TComponent* owner = nullptr) : TVectorCore<std::int32_t>(owner) {}

  /// Setter of NrOfElem: ignored for n < 1 or n = NrOfElem, otherwise Resize(n).
  void SetIntVecSize(std::int32_t n) {
    if (n >= 1 && n != NrOfElem()) Resize(n);
  }

  /// Integer histogram as TVector::Histogram, but fewer than 1 or more than 500 bins (or a
  /// width below 1) raise "...Histogram\": invalid number of bins". Returns true.
  bool Histogram(std::int32_t First, std::int32_t Last, std::int32_t LowBound,
                 std::int32_t HighBound, std::int32_t BinWidth, TIntArray& Hist,
                 std::int32_t& Underflow, std::int32_t& Overflow, std::int32_t& MaxCount) const;
  /// The same into another integer vector, resized to the bin count, counts at 1..bins.
  bool Histogram(std::int32_t First, std::int32_t Last, std::int32_t LowBound,
                 std::int32_t HighBound, std::int32_t BinWidth, TIntVector& Hist,
                 std::int32_t& Underflow, std::int32_t& Overflow, std::int32_t& MaxCount) const;

  /// Writes the vector as a one-column ASC file of plain integers; line 1 is Comment with LFs
  /// replaced by blanks, or "Exported by QUV TIntVector component:" + FileName when Comment
  /// is empty. A file that cannot be written raises std::ios_base::failure.
  void ExportAsASC(const std::string& FileName, const std::string& Comment) const;
};

}  // namespace quv
