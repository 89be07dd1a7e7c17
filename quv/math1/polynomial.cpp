#include "quv/math1/polynomial.h"

#include "quv/base/errors.h"
#include "quv/base/types.h"

namespace quv {
namespace {

Extended EvaluateUpwards(std::span<const double> coeff, std::int32_t order, Extended x) {
  if (order < 0 || static_cast<std::size_t>(order) >= coeff.size())
    RaiseFunctionError<EQUVMath1Error>("Polynomial", "invalid order of polynomial");
  Extended sum = 0.0L;
  Extended power = 1.0L;
  for (std::int32_t i = 0; i <= order; ++i) {
    sum += coeff[static_cast<std::size_t>(i)] * power;
    power *= x;
  }
  return sum;
}

}  // namespace

double Polynomial(std::span<const double> Coeff, std::int32_t Order, double x) {
  return static_cast<double>(EvaluateUpwards(Coeff, Order, x));
}

double CenteredPolynomial(std::span<const double> Coeff, std::int32_t Order, double x,
                          double Center) {
  return static_cast<double>(
      EvaluateUpwards(Coeff, Order, static_cast<Extended>(x) - static_cast<Extended>(Center)));
}

}  // namespace quv
