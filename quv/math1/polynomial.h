// Polynomial evaluation.
#pragma once

#include <cstdint>
#include <span>

namespace quv {

/// Sum of Coeff[i] * x^i for i = 0..Order, accumulated upwards with a running power in
/// extended precision (not by Horner's rule). Raises EQUVMath1Error
/// "Polynomial: invalid order of polynomial" unless 0 <= Order <= the highest index of Coeff.
double Polynomial(std::span<const double> Coeff, std::int32_t Order, double x);

/// The same polynomial in (x - Center). Raises the same error text as Polynomial.
double CenteredPolynomial(std::span<const double> Coeff, std::int32_t Order, double x,
                          double Center);

}  // namespace quv
