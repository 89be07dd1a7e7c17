// TKahanSum: compensated (Kahan) summation of doubles.
#pragma once

#include "quv/base/component.h"

namespace quv {

/// Accumulates doubles with Kahan's compensation, so that the rounding error of a long sum
/// stays of the order of one unit in the last place instead of growing with the number of
/// terms. Every intermediate is a double, as the algorithm requires.
class TKahanSum : public TComponent {
 public:
  /// Creates the accumulator, reset to 0.
  explicit TKahanSum(TComponent* AOwner = nullptr) : TComponent(AOwner) { Reset(); }

  /// Sum := 0, Compensation := 0.
  void Reset() {
    sum_ = 0.0;
    compensation_ = 0.0;
  }

  /// Adds x with compensation.
  void Add(double x) {
    // Must not be built with -ffast-math: reassociation would fold the compensation to 0.
    const double y = x - compensation_;
    const double t = sum_ + y;
    compensation_ = (t - sum_) - y;
    sum_ = t;
  }

  /// The current compensated sum.
  double Sum() const { return sum_; }
  /// The running correction term (the low-order part lost so far).
  double Compensation() const { return compensation_; }

 private:
  double sum_ = 0.0;
  double compensation_ = 0.0;
};

}  // namespace quv
