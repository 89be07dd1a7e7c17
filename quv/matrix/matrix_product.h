// The dot-product kernel behind the matrix products.
//
// Every product element is a dot product accumulated beyond double precision. Where the
// processor has AVX2 and FMA (checked once at run time), the kernel uses the compensated dot
// product Dot2 of Ogita, Rump and Oishi ("Accurate sum and dot product", SIAM J. Sci. Comput.
// 26 (2005) 1955-1988): error-free products by FMA and error-free sums by TwoSum, four lanes
// at a time, which is as accurate as accumulating in twice the working precision and so at
// least as accurate as an 80-bit extended accumulator. Elsewhere the sums are accumulated in
// long double. Both read the two operands contiguously.
#pragma once

#include <cstddef>
#include <functional>

#include "quv/base/types.h"

namespace quv::detail {

/// Result rows are computed in blocks of this many (a block of left rows stays in cache).
inline constexpr std::size_t kProductRowBlock = 32;

/// result[c][r] = sum_k left[r][k] * right[c][k] for every row array of left and column array
/// of right (all of one length). step(rowsDone) is called after every block of result rows
/// and returns true to abort; the function then returns false.
bool AccurateProduct(const TDouble2DArray& left, const TDouble2DArray& right,
                     TDouble2DArray& result, const std::function<bool(std::size_t)>& step);

/// Restricts the kernels to the long double accumulation even where AVX2 and FMA exist (for
/// tests of that path); false restores the choice by processor.
void UseExtendedKernelOnly(bool only);

/// One dot product of n values with the same accuracy.
double AccurateDot(const double* x, const double* y, std::size_t n);

}  // namespace quv::detail
