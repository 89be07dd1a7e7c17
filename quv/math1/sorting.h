// Selection, sorting and sorted insertion over raw typed arrays (double, float, int32 and the
// variant value TVariantValue), given as std::span.
//
// The open-array unit has its own SortArray for TDoubleArray& and TIntArray&; a vector passed
// by name picks that overload (an exact match beats the conversion to std::span), so both
// coexist without ambiguity. To sort a raw buffer, pass std::span{pointer, count}.
#pragma once

#include <compare>
#include <cstdint>
#include <span>
#include <string>
#include <variant>

namespace quv {

/// A small tagged value for sorting mixed data: empty, integer, real or text. The order is
/// empty < numbers < texts; integers and reals compare by numeric value (NaN after every
/// other number, all NaNs equal); texts compare byte-wise.
class TVariantValue {
 public:
  TVariantValue() = default;
  TVariantValue(std::int64_t value) : value_(value) {}                // NOLINT: implicit by design
  TVariantValue(std::int32_t value) : value_(std::int64_t{value}) {}  // NOLINT
  TVariantValue(double value) : value_(value) {}                      // NOLINT
  TVariantValue(std::string value) : value_(std::move(value)) {}      // NOLINT
  TVariantValue(const char* value) : value_(std::string(value)) {}    // NOLINT

  bool IsEmpty() const { return value_.index() == 0; }
  bool IsInteger() const { return value_.index() == 1; }
  bool IsReal() const { return value_.index() == 2; }
  bool IsText() const { return value_.index() == 3; }
  /// The numeric value (0 for empty and text).
  double AsDouble() const;
  /// The text (empty for the other kinds).
  const std::string& AsText() const;

  friend std::weak_ordering operator<=>(const TVariantValue& a, const TVariantValue& b);
  friend bool operator==(const TVariantValue& a, const TVariantValue& b) { return (a <=> b) == 0; }

 private:
  std::variant<std::monostate, std::int64_t, double, std::string> value_;
};

/// Result codes of SortArray.
inline constexpr std::int32_t kSortArrayOk = 0;
inline constexpr std::int32_t kSortArrayAborted = -2;

/// Sorts Data in place, ascending or descending. Follows the progress protocol: clears
/// AbortMathProc at the start, adds 1.0 to ProcStat after each pass (a pass partitions every
/// long segment once; the last pass finishes all short segments) and returns
/// kSortArrayAborted (-2) when AbortMathProc is set after a pass, leaving Data partly sorted;
/// otherwise kSortArrayOk (0). Not stable. NaN values end up behind all numbers.
std::int32_t SortArray(std::span<double> Data, bool Ascending = true);
std::int32_t SortArray(std::span<float> Data, bool Ascending = true);
std::int32_t SortArray(std::span<std::int32_t> Data, bool Ascending = true);
std::int32_t SortArray(std::span<TVariantValue> Data, bool Ascending = true);

/// The K-th smallest element (K 0-based) of Data. Reorders Data so that Data[K] holds it,
/// nothing in front is greater and nothing behind is smaller (NaN counts as greatest).
/// Linear time on average; runs no progress protocol. Raises EQUVMath1Error
/// "QuickSelect: index out of range" when K is not in 0..size-1 (also for an empty array).
double QuickSelect(std::span<double> Data, std::int32_t K);
float QuickSelect(std::span<float> Data, std::int32_t K);
std::int32_t QuickSelect(std::span<std::int32_t> Data, std::int32_t K);
TVariantValue QuickSelect(std::span<TVariantValue> Data, std::int32_t K);

/// Result of SortIntoArray when the value is not kept.
inline constexpr std::int32_t kSortIntoDropped = -1;

/// Keeps the ascending array Data (of fixed length) holding the smallest values seen so far.
/// Value goes to the position after all elements less than or equal to it (so a value equal
/// to kept ones lands AFTER them, and earlier arrivals keep precedence); the elements from
/// there on move back by one and the last one falls out. A value not less than the last
/// element (or NaN) is dropped. Returns the 0-based position taken, or kSortIntoDropped (-1).
/// Start with Data filled by a sentinel such as uc_MaxDouble. Pass the result to
/// InsertIntoArray to keep a parallel array (indices, labels) in step.
std::int32_t SortIntoArray(std::span<double> Data, double Value);
std::int32_t SortIntoArray(std::span<float> Data, float Value);
std::int32_t SortIntoArray(std::span<std::int32_t> Data, std::int32_t Value);
std::int32_t SortIntoArray(std::span<TVariantValue> Data, const TVariantValue& Value);

/// Inserts Value at the 0-based position Pos of Data: Data[Pos..size-2] move to Pos+1.., the
/// last element falls out. Returns false and changes nothing when Pos is outside
/// 0..size-1 (for example kSortIntoDropped).
bool InsertIntoArray(std::span<double> Data, std::int32_t Pos, double Value);
bool InsertIntoArray(std::span<float> Data, std::int32_t Pos, float Value);
bool InsertIntoArray(std::span<std::int32_t> Data, std::int32_t Pos, std::int32_t Value);
bool InsertIntoArray(std::span<TVariantValue> Data, std::int32_t Pos, const TVariantValue& Value);

}  // namespace quv
