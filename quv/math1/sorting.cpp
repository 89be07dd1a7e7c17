#include "quv/math1/sorting.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <string_view>

#include "quv/base/errors.h"
#include "quv/base/feedback.h"
#include "quv/math1/sort_core.h"

namespace quv {

namespace {

// Numbers order by value with NaN after all other numbers and equal to every NaN.
std::weak_ordering CompareNumbers(double a, double b) {
  const bool a_nan = std::isnan(a);
  const bool b_nan = std::isnan(b);
  if (a_nan || b_nan) {
    if (a_nan && b_nan) return std::weak_ordering::equivalent;
    return a_nan ? std::weak_ordering::greater : std::weak_ordering::less;
  }
  if (a < b) return std::weak_ordering::less;
  if (b < a) return std::weak_ordering::greater;
  return std::weak_ordering::equivalent;
}

// Rank of a kind in the order empty < numbers < texts.
int KindRank(const TVariantValue& v) {
  if (v.IsEmpty()) return 0;
  return v.IsText() ? 2 : 1;
}

template <class T>
std::int32_t SortArrayImpl(std::span<T> data, bool ascending) {
  BeginAbortableOperation();
  const auto on_pass = [] { return ProgressStep(1.0); };
  bool aborted = ascending
                     ? detail::SortInPasses(data.data(), data.size(), std::less<T>{}, on_pass)
                     : detail::SortInPasses(data.data(), data.size(), std::greater<T>{}, on_pass);
  return aborted ? kSortArrayAborted : kSortArrayOk;
}

template <class T>
T QuickSelectImpl(std::span<T> data, std::int32_t k) {
  if (k < 0 || static_cast<std::size_t>(k) >= data.size()) {
    RaiseFunctionError<EQUVMath1Error>("QuickSelect", "index out of range");
  }
  const std::size_t n = detail::MoveNaNsToEnd(data.data(), data.size());
  if (static_cast<std::size_t>(k) < n) {
    std::nth_element(data.begin(), data.begin() + k, data.begin() + static_cast<std::ptrdiff_t>(n));
  }
  return data[static_cast<std::size_t>(k)];
}

template <class T>
std::int32_t SortIntoArrayImpl(std::span<T> data, const T& value) {
  // upper_bound: the first element greater than value, so equal ones stay in front.
  const auto it = std::upper_bound(data.begin(), data.end(), value);
  if (it == data.end()) return kSortIntoDropped;
  std::move_backward(it, data.end() - 1, data.end());
  *it = value;
  return static_cast<std::int32_t>(it - data.begin());
}

template <class T>
bool InsertIntoArrayImpl(std::span<T> data, std::int32_t pos, const T& value) {
  if (pos < 0 || static_cast<std::size_t>(pos) >= data.size()) return false;
  const auto it = data.begin() + pos;
  std::move_backward(it, data.end() - 1, data.end());
  *it = value;
  return true;
}

}  // namespace

double TVariantValue::AsDouble() const {
  if (IsInteger()) return static_cast<double>(std::get<std::int64_t>(value_));
  if (IsReal()) return std::get<double>(value_);
  return 0.0;
}

const std::string& TVariantValue::AsText() const {
  static const std::string kEmpty;
  return IsText() ? std::get<std::string>(value_) : kEmpty;
}

std::weak_ordering operator<=>(const TVariantValue& a, const TVariantValue& b) {
  const int ra = KindRank(a);
  const int rb = KindRank(b);
  if (ra != rb) return ra <=> rb;
  if (ra == 0) return std::weak_ordering::equivalent;
  if (ra == 2) {
    const int c = a.AsText().compare(b.AsText());
    return c < 0 ? std::weak_ordering::less
                 : (c > 0 ? std::weak_ordering::greater : std::weak_ordering::equivalent);
  }
  if (a.IsInteger() && b.IsInteger()) {
    return std::get<std::int64_t>(a.value_) <=> std::get<std::int64_t>(b.value_);
  }
  return CompareNumbers(a.AsDouble(), b.AsDouble());
}

std::int32_t SortArray(std::span<double> Data, bool Ascending) {
  return SortArrayImpl(Data, Ascending);
}
std::int32_t SortArray(std::span<float> Data, bool Ascending) {
  return SortArrayImpl(Data, Ascending);
}
std::int32_t SortArray(std::span<std::int32_t> Data, bool Ascending) {
  return SortArrayImpl(Data, Ascending);
}
std::int32_t SortArray(std::span<TVariantValue> Data, bool Ascending) {
  return SortArrayImpl(Data, Ascending);
}

double QuickSelect(std::span<double> Data, std::int32_t K) {
  return QuickSelectImpl(Data, K);
}
float QuickSelect(std::span<float> Data, std::int32_t K) {
  return QuickSelectImpl(Data, K);
}
std::int32_t QuickSelect(std::span<std::int32_t> Data, std::int32_t K) {
  return QuickSelectImpl(Data, K);
}
TVariantValue QuickSelect(std::span<TVariantValue> Data, std::int32_t K) {
  return QuickSelectImpl(Data, K);
}

std::int32_t SortIntoArray(std::span<double> Data, double Value) {
  return SortIntoArrayImpl(Data, Value);
}
std::int32_t SortIntoArray(std::span<float> Data, float Value) {
  return SortIntoArrayImpl(Data, Value);
}
std::int32_t SortIntoArray(std::span<std::int32_t> Data, std::int32_t Value) {
  return SortIntoArrayImpl(Data, Value);
}
std::int32_t SortIntoArray(std::span<TVariantValue> Data, const TVariantValue& Value) {
  return SortIntoArrayImpl(Data, Value);
}

bool InsertIntoArray(std::span<double> Data, std::int32_t Pos, double Value) {
  return InsertIntoArrayImpl(Data, Pos, Value);
}
bool InsertIntoArray(std::span<float> Data, std::int32_t Pos, float Value) {
  return InsertIntoArrayImpl(Data, Pos, Value);
}
bool InsertIntoArray(std::span<std::int32_t> Data, std::int32_t Pos, std::int32_t Value) {
  return InsertIntoArrayImpl(Data, Pos, Value);
}
bool InsertIntoArray(std::span<TVariantValue> Data, std::int32_t Pos, const TVariantValue& Value) {
  return InsertIntoArrayImpl(Data, Pos, Value);
}

}  // namespace quv
