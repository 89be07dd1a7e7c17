// Machinery shared by the vector smoothers, the Savitzky-Golay filter and the recursive
// filters: argument checks, the computation into a work array and the one-step store into the
// destination vector. Not part of the interface.
#pragma once

#include <cstdint>
#include <string_view>

#include "quv/base/base.h"
#include "quv/vector/vector.h"

namespace quv::detail {

/// Raises EQUVMath2Error "<function>: <text>".
[[noreturn]] void RaiseMath2(std::string_view function, std::string_view text);

/// Step 2 of the smoothing contract: First and Last clamped into 1..n and ordered.
void ClampSmoothRange(std::int32_t n, std::int32_t& First, std::int32_t& Last);

/// A zeroed work array of n doubles; a failed allocation raises EQUVMath2Error in the
/// component form naming owner.
TDoubleArray NewWorkArray(const TVector& owner, std::size_t n);

/// Installs values as elements 1..size of dest with one OnChange: a shorter dest grows to the
/// size (and fires OnResize), a longer one keeps its further elements.
void StoreResult(TVector& dest, const TDoubleArray& values);

/// Fills out[left .. n - right - 1] with step(s + k) for k in that span (s points at the first
/// element of the stretch, so s + k is the element whose result goes to out[k]) and pads the left
/// elements with the first computed value and the right ones with the last, as the smoothing
/// functions do.
template <class Step>
void FilterAndPad(const double* s, TDoubleArray& out, std::size_t left, std::size_t right,
                  Step step) {
  const std::size_t n = out.size();
  const std::size_t end = n - right;
  for (std::size_t k = left; k < end; ++k)
    out[k] = step(s + k);
  for (std::size_t k = 0; k < left; ++k)
    out[k] = out[left];
  for (std::size_t k = end; k < n; ++k)
    out[k] = out[end - 1];
}

}  // namespace quv::detail
