// Ordering of one-dimensional dynamic arrays: permutation, shuffling, sorting and searching.
// Indices are 0-based.
#pragma once

#include <cstdint>

#include "quv/base/types.h"
#include "quv/openarrays/stats.h"

namespace quv {

/// Reorders Data so that new Data[i] = old Data[Perm[i]]. Code 0, -1 (empty) or -2 (Perm is
/// not a permutation of 0..n-1); Data is untouched on failure.
std::int32_t PermuteArray(TDoubleArray& Data, const TIntArray& Perm);

/// Random permutation of the elements (Fisher-Yates) drawn from the process-wide source
/// quv::Random, so SetRandSeed reproduces it.
void ShuffleArray(TDoubleArray& Data);
void ShuffleArray(TIntArray& Data);

/// Sorts the whole array with the sorting core of SortArray(std::span): clears
/// AbortMathProc, adds 1.0 to ProcStat per pass and returns -2 when aborted after a pass
/// (data partly sorted), otherwise 0. NaNs end up last.
std::int32_t SortArray(TDoubleArray& Data, bool Ascending = true);
std::int32_t SortArray(TIntArray& Data, bool Ascending = true);

/// Sorts ascending and removes repeated values (NaNs count as one value); returns the new
/// length, or -2 when the sort was aborted (the length is then unchanged).
std::int32_t SortAndRemoveDuplicates(TDoubleArray& Data);

/// Index of the element closest to Value (the first one on ties); -1 for an empty array.
std::int32_t FindInArray(const TDoubleArray& Data, double Value);
std::int32_t FindInArray(const TIntArray& Data, std::int32_t Value);

/// Binary search in a sorted array (ascending or descending, told by its first and last
/// element): the index of an element equal to Value met on the way, otherwise the closer of
/// the two neighbours around Value (the upper index on ties; the end element for a Value
/// outside the range). -1 for an empty array.
std::int32_t FindInSortedArray(const TDoubleArray& Data, double Value);
std::int32_t FindInSortedArray(const TIntArray& Data, std::int32_t Value);

}  // namespace quv
