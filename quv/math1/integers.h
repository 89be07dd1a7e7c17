// Whole-number helpers: greatest common divisors, fractions, primes and Roman numerals.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "quv/base/types.h"

namespace quv {

/// Number of entries of the prime table (the primes 2 .. 46337, every prime below
/// sqrt(2^31), so that any Integer can be factorised by it).
inline constexpr std::int32_t kNrOfTablePrimes = 4792;

/// Greatest common divisor of |a| and |b|; 0 when both are 0. The one result that does not
/// fit an Integer, 2^31 (from -2^31 with 0 or -2^31), wraps to -2^31 as 32-bit arithmetic does.
std::int32_t GreatestCommonDivisor(std::int32_t a, std::int32_t b);
/// The pair rule folded over the elements from the first on; 0 for an empty array.
std::int32_t GreatestCommonDivisor(const TIntArray& a);

/// Greatest common divisor of two reals: the Euclidean algorithm on |a| and |b| with the
/// remainder nearest to zero, ending once the divisor is at most 10^-Digits (Digits clamped
/// to 0..12). GreatestCommonDivisor(0.3, 0.1, 6) is 0.1. A NaN or infinite argument gives NaN.
double GreatestCommonDivisor(double a, double b, std::int32_t Digits);
/// The real pair rule folded over the elements from the first on; 0 for an empty array.
double GreatestCommonDivisor(const TDoubleArray& a, std::int32_t Digits);

/// Cancels the fraction Num / Den: divides both by every common divisor from 2 up, repeated
/// until nothing changes, which leaves them divided by their greatest common divisor (done
/// here in one division). A zero numerator or denominator leaves both unchanged.
void CancelFraction(std::int32_t& Num, std::int32_t& Den);

/// Trial division of |n| by 2 .. trunc(sqrt|n|). 0 and 1 report true: the loop never runs.
bool IsPrime(std::int32_t n);

/// The i-th prime of the table (1-based: ListOfPrimes(1) = 2, ListOfPrimes(4792) = 46337);
/// 0 for i outside 1..4792.
std::int32_t ListOfPrimes(std::int32_t i);

/// Prime factors of n with multiplicity, ascending; empty for n < 2. Factors is resized to
/// the number of factors.
void FindPrimeFactors(std::int32_t n, TIntArray& Factors);

/// Roman numeral of n, greedy from M down ("MCMXCIV" for 1994); empty for n < 1 or
/// n >= 30000.
std::string Roman(std::int32_t n);

namespace detail {
/// The prime table, generated at compile time by a sieve of Eratosthenes.
extern const std::array<std::int32_t, kNrOfTablePrimes> kPrimeTable;
}  // namespace detail

}  // namespace quv
