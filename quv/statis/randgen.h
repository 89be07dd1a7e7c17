// TRandGen: random numbers that follow a distribution given as a table of relative
// probabilities over [LowBorder, HighBorder].
//
// The table holds Resolution bins; bin i (1-based) starts at Lambda(i) = LowBorder +
// (HighBorder - LowBorder)(i - 1)/Resolution. A draw picks a bin and a position inside it
// uniformly and accepts the candidate with the table value interpolated linearly towards the
// next bin (the last bin falls to 0 at HighBorder), so the numbers follow the piecewise-linear
// density through the points (Lambda(i), Probability(i)), cut off at 1.
//
// Every uniform number comes from the library's process-wide source (quv/base/random.h): a
// caller that sets a seed with SetRandSeed gets the same sequence of draws again.
#pragma once

#include <cstdint>
#include <vector>

#include "quv/base/component.h"

namespace quv {

/// Random generator with a tabulated distribution.
class TRandGen : public TComponent {
 public:
  static constexpr std::int32_t kMinResolution = 10;
  static constexpr std::int32_t kMaxResolution = 4000;
  static constexpr std::int32_t kDefaultResolution = 500;
  /// GetRandNum gives up after this many rejected candidates plus one.
  static constexpr std::int32_t kMaxAttempts = 100000;

  /// Borders 0 and 0, Resolution 500, every bin 1.0.
  explicit TRandGen(TComponent* owner = nullptr);

  /// Lower end of the interval; initially 0. The borders are plain values: changing them
  /// moves the bins, not the table. Both must be set before drawing.
  double LowBorder() const { return low_; }
  void SetLowBorder(double value) { low_ = value; }
  /// Upper end of the interval; initially 0.
  double HighBorder() const { return high_; }
  void SetHighBorder(double value) { high_ = value; }

  /// Number of bins, always within 10..4000.
  std::int32_t Resolution() const { return static_cast<std::int32_t>(table_.size()); }
  /// Clamps n into 10..4000 and refills every bin with 1.0, even when n is the current
  /// resolution: the previous shape is discarded.
  void SetResolution(std::int32_t n);

  /// Table value of bin i (1-based); 0 outside 1..Resolution.
  double GetProbability(std::int32_t i) const;
  double Probability(std::int32_t i) const { return GetProbability(i); }
  /// Stores p, clamped into [0, 1] (NaN stores 0), in bin i; ignored outside 1..Resolution.
  void SetProbability(std::int32_t i, double p);

  /// Start of bin i; LowBorder for i < 1 and HighBorder for i > Resolution.
  double GetLambda(std::int32_t i) const;
  double Lambda(std::int32_t i) const { return GetLambda(i); }

  /// The bin of x: 0 below LowBorder, Resolution + 1 above HighBorder, otherwise
  /// IntNeg((x - LowBorder) Resolution/(HighBorder - LowBorder)) + 1. x = HighBorder gives
  /// Resolution + 1, one past the last bin, on purpose. With equal borders x = LowBorder gives
  /// 1 (no division by the empty width); a NaN among x and the borders gives 0.
  std::int32_t IndexOfLambda(double x) const;

  /// One random number by rejection from the table: a bin idx and u in [0, 1) give the
  /// candidate LowBorder + (idx - 1 + u)(HighBorder - LowBorder)/Resolution, accepted at once
  /// when the interpolated table value y is at least 1, else with probability y. Values above
  /// 1, which the shape setters may store, thus saturate at 1: a raw t, chi-square, F or
  /// Weibull shape is sampled exactly only after Standardize (or when its peak is at most 1).
  /// After 100001 rejected candidates (an all-zero or all-NaN table) the last candidate is
  /// returned without error. Equal borders give LowBorder; HighBorder < LowBorder mirrors the
  /// draws into (HighBorder, LowBorder].
  double GetRandNum();

  /// Rescales the table linearly onto [0, 1]; a constant table stays as it is.
  void Normalize();
  /// Divides the table by its largest value (NaN bins are passed over); false, nothing
  /// changed, when that is 0.
  bool Standardize();

  // The shape setters write the table directly: values are not clamped into [0, 1].

  /// Every bin 1.0.
  void UniformDistri();
  /// exp(-(Lambda(i) - Mean)^2 / (2 StdDev^2)): a peak of 1, not normalised. StdDev = 0 leaves
  /// NaN in a bin that starts exactly at Mean; such bins are never accepted.
  void NormalDistri(double Mean, double StdDev);
  /// Student's t density with DegFree degrees of freedom (all 0 for DegFree < 1).
  void tDistri(std::int32_t DegFree);
  /// Chi-square density for Lambda(i) >= 0, else 0. With DegFree = 1 a bin starting at 0
  /// holds +infinity, which no draw accepts and which Standardize spreads as NaN and 0 over
  /// the table: start the interval above 0 for one degree of freedom.
  void Chi2Distri(std::int32_t DegFree);
  /// F density for Lambda(i) > 0, else 0.
  void FDistri(std::int32_t DegFree1, std::int32_t DegFree2);
  /// Weibull density (0 for Lambda(i) <= 0 or Scale <= 0).
  void WeibullDistri(double Shape, double Scale);

 private:
  template <class Density>
  void FillShape(Density density);

  double low_ = 0.0;
  double high_ = 0.0;
  std::vector<double> table_;  // bin i at table_[i - 1]
};

}  // namespace quv
