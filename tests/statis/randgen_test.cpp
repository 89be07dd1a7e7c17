#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <vector>

#include "quv/base/random.h"
#include "quv/statis/statis.h"

namespace quv {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

std::vector<double> Table(const TRandGen& g) {
  std::vector<double> t;
  for (std::int32_t i = 1; i <= g.Resolution(); ++i)
    t.push_back(g.GetProbability(i));
  return t;
}

bool AllBinsAre(const TRandGen& g, double v) {
  const std::vector<double> t = Table(g);
  return std::all_of(t.begin(), t.end(), [v](double p) { return p == v; });
}

TEST(RandGen, ResolutionIsClampedAndRefillsTheTable) {
  const struct {
    std::int32_t set, expected;
  } cases[] = {{5, 10}, {10000, 4000}, {10, 10}, {4000, 4000}, {0, 10}, {-7, 10}, {321, 321}};
  TRandGen g;
  EXPECT_EQ(g.Resolution(), 500);
  EXPECT_TRUE(AllBinsAre(g, 1.0));
  EXPECT_EQ(g.LowBorder(), 0.0);
  EXPECT_EQ(g.HighBorder(), 0.0);
  for (const auto& c : cases) {
    g.SetLowBorder(-3);
    g.SetHighBorder(3);
    g.NormalDistri(0, 1);
    g.SetResolution(c.set);
    EXPECT_EQ(g.Resolution(), c.expected) << c.set;
    EXPECT_TRUE(AllBinsAre(g, 1.0)) << c.set;
  }
  // The same resolution again still discards the shape.
  g.NormalDistri(0, 1);
  g.SetResolution(g.Resolution());
  EXPECT_TRUE(AllBinsAre(g, 1.0));
}

TEST(RandGen, ProbabilityIsClampedAndOutOfRangeIndicesAreInert) {
  TRandGen g;
  g.SetResolution(20);
  const struct {
    double set, stored;
  } cases[] = {{1.7, 1.0}, {-0.2, 0.0}, {0.3, 0.3}, {0.0, 0.0}, {1.0, 1.0}, {kNaN, 0.0}};
  for (const auto& c : cases) {
    g.SetProbability(7, c.set);
    EXPECT_EQ(g.GetProbability(7), c.stored) << c.set;
    EXPECT_EQ(g.Probability(7), c.stored);
  }
  g.UniformDistri();
  for (std::int32_t i : {0, 21, -1}) {
    g.SetProbability(i, 0.5);
    EXPECT_EQ(g.GetProbability(i), 0.0) << i;
  }
  EXPECT_TRUE(AllBinsAre(g, 1.0));
}

TEST(RandGen, LambdaAndIndexOfLambda) {
  TRandGen g;
  g.SetResolution(10);
  g.SetLowBorder(2);
  g.SetHighBorder(12);
  const struct {
    std::int32_t i;
    double lambda;
  } lambdas[] = {{1, 2}, {2, 3}, {10, 11}, {0, 2}, {-4, 2}, {11, 12}, {99, 12}};
  for (const auto& c : lambdas)
    EXPECT_DOUBLE_EQ(g.Lambda(c.i), c.lambda) << c.i;

  const struct {
    double x;
    std::int32_t index;
  } indices[] = {{2, 1},    {2.999, 1},  {3, 2},      {11.5, 10}, {12, 11},
                 {1.99, 0}, {12.01, 11}, {-1e300, 0}, {kNaN, 0}};
  for (const auto& c : indices)
    EXPECT_EQ(g.IndexOfLambda(c.x), c.index) << c.x;
  // Every bin start maps back to its own bin.
  for (std::int32_t i = 1; i <= 10; ++i)
    EXPECT_EQ(g.IndexOfLambda(g.Lambda(i)), i);
}

TEST(RandGen, DegenerateBordersDoNotDivideByZero) {
  TRandGen g;  // both borders 0
  EXPECT_EQ(g.IndexOfLambda(0), 1);
  EXPECT_EQ(g.IndexOfLambda(-1), 0);
  EXPECT_EQ(g.IndexOfLambda(1), 501);
  SetRandSeed(11);
  for (int k = 0; k < 100; ++k)
    ASSERT_EQ(g.GetRandNum(), 0.0);

  // Inverted borders: every x lies below LowBorder or above HighBorder, and the draws land in
  // (HighBorder, LowBorder].
  g.SetLowBorder(5);
  g.SetHighBorder(1);
  EXPECT_EQ(g.IndexOfLambda(3), 0);
  EXPECT_EQ(g.IndexOfLambda(0), 0);
  EXPECT_EQ(g.IndexOfLambda(7), 501);
  for (int k = 0; k < 1000; ++k) {
    const double x = g.GetRandNum();
    ASSERT_GT(x, 1.0);
    ASSERT_LE(x, 5.0);
  }
  g.SetHighBorder(kNaN);
  EXPECT_EQ(g.IndexOfLambda(3), 0);
  EXPECT_TRUE(std::isnan(g.GetRandNum()));
}

TEST(RandGen, AllZeroTableGivesUpAfterTheAttemptCapWithTheLastCandidate) {
  TRandGen g;
  g.SetResolution(10);
  g.SetLowBorder(0);
  g.SetHighBorder(10);
  for (std::int32_t i = 1; i <= 10; ++i)
    g.SetProbability(i, 0);
  // Replay the uniform draws of 100001 rejected candidates: bin, position, acceptance test.
  SetRandSeed(2024);
  std::int32_t idx = 0;
  double u = 0;
  for (int attempt = 0; attempt <= TRandGen::kMaxAttempts; ++attempt) {
    idx = Random(10) + 1;
    u = Random();
    Random();
  }
  const double expected = idx - 1 + u;
  const std::uint64_t stateAfter = RandSeed();
  SetRandSeed(2024);
  EXPECT_DOUBLE_EQ(g.GetRandNum(), expected);
  EXPECT_EQ(RandSeed(), stateAfter);
}

TEST(RandGen, FixedSeedRepeatsTheDraws) {
  TRandGen g;
  g.SetLowBorder(-4);
  g.SetHighBorder(4);
  g.NormalDistri(0, 1);
  auto draws = [&g](std::uint64_t seed) {
    SetRandSeed(seed);
    std::vector<double> v;
    for (int k = 0; k < 200; ++k)
      v.push_back(g.GetRandNum());
    return v;
  };
  EXPECT_EQ(draws(7), draws(7));
  EXPECT_NE(draws(7), draws(8));
}

TEST(RandGen, NormalizeAndStandardize) {
  TRandGen g;
  g.SetResolution(10);
  const double values[] = {0.2, 0.4, 0.6, 1.0, 0.2, 0.3, 0.5, 0.7, 0.9, 0.8};
  for (std::int32_t i = 1; i <= 10; ++i)
    g.SetProbability(i, values[i - 1]);
  g.Normalize();
  for (std::int32_t i = 1; i <= 10; ++i)
    EXPECT_NEAR(g.GetProbability(i), (values[i - 1] - 0.2) / 0.8, 1e-15) << i;

  for (std::int32_t i = 1; i <= 10; ++i)
    g.SetProbability(i, values[i - 1] / 2);
  EXPECT_TRUE(g.Standardize());
  for (std::int32_t i = 1; i <= 10; ++i)
    EXPECT_NEAR(g.GetProbability(i), values[i - 1], 1e-15) << i;

  // A constant table survives Normalize; an all-zero one refuses Standardize.
  for (std::int32_t i = 1; i <= 10; ++i)
    g.SetProbability(i, 0.25);
  g.Normalize();
  EXPECT_TRUE(AllBinsAre(g, 0.25));
  for (std::int32_t i = 1; i <= 10; ++i)
    g.SetProbability(i, 0);
  EXPECT_FALSE(g.Standardize());
  EXPECT_TRUE(AllBinsAre(g, 0.0));
}

TEST(RandGen, ShapeSettersWriteDensitiesUnclamped) {
  TRandGen g;
  g.SetResolution(40);
  g.SetLowBorder(-2);
  g.SetHighBorder(6);
  g.NormalDistri(1, 0.5);
  for (std::int32_t i = 1; i <= 40; ++i) {
    const double d = (g.Lambda(i) - 1) / 0.5;
    EXPECT_NEAR(g.GetProbability(i), std::exp(-d * d / 2), 1e-15) << i;
  }
  EXPECT_EQ(g.GetProbability(16), 1.0);  // Lambda(16) = 1 = Mean

  g.tDistri(3);
  for (std::int32_t i : {1, 10, 21, 40})
    EXPECT_EQ(g.GetProbability(i), tDistriDensity(g.Lambda(i), 3)) << i;

  g.Chi2Distri(3);
  for (std::int32_t i = 1; i <= 40; ++i) {
    const double x = g.Lambda(i);
    EXPECT_EQ(g.GetProbability(i), x >= 0 ? Chi2DistriDensity(x, 3) : 0.0) << i;
  }
  g.FDistri(1, 5);  // Lambda(11) = 0 is excluded although the density is infinite there
  for (std::int32_t i = 1; i <= 40; ++i) {
    const double x = g.Lambda(i);
    EXPECT_EQ(g.GetProbability(i), x > 0 ? FDistriDensity(x, 1, 5) : 0.0) << i;
  }

  // A narrow Weibull peaks far above 1 and is stored as it is.
  g.SetLowBorder(0);
  g.SetHighBorder(1);
  g.WeibullDistri(2, 0.2);
  const std::vector<double> t = Table(g);
  EXPECT_GT(*std::max_element(t.begin(), t.end()), 4.0);
  EXPECT_EQ(g.GetProbability(9), WeibullDensity(g.Lambda(9), 2, 0.2));

  g.UniformDistri();
  EXPECT_TRUE(AllBinsAre(g, 1.0));
}

// ---- goodness of fit ---------------------------------------------------------------------

// Relative probability mass of table bin i (1-based) under the sampled density: the linear
// interpolation from P(i) to P(i + 1) (to 0 after the last bin), cut off at 1.
double BinMass(const TRandGen& g, std::int32_t i) {
  const double a = g.GetProbability(i);
  const double b = i < g.Resolution() ? g.GetProbability(i + 1) : 0.0;
  if (a <= 1 && b <= 1) return (a + b) / 2;
  if (a >= 1 && b >= 1) return 1;
  // The line crosses 1 at t; the part above 1 counts as 1.
  const double t = (1 - a) / (b - a);
  return a < 1 ? t * (a + 1) / 2 + (1 - t) : t + (1 - t) * (1 + b) / 2;
}

// Pearson's chi-square test of n draws against the table's density: table bins are pooled
// from the left into cells of at least 5 expected draws. Returns the upper-tail p-value.
double GoodnessOfFitP(const std::vector<double>& draws, const TRandGen& density) {
  const std::int32_t res = density.Resolution();
  const double low = density.LowBorder();
  const double width = (density.HighBorder() - low) / res;
  std::vector<double> observed(static_cast<std::size_t>(res), 0.0);
  for (double x : draws) {
    const auto bin =
        std::clamp(static_cast<std::int32_t>(std::floor((x - low) / width)), 0, res - 1);
    observed[static_cast<std::size_t>(bin)] += 1;
  }
  double total = 0;
  for (std::int32_t i = 1; i <= res; ++i)
    total += BinMass(density, i);
  const double n = static_cast<double>(draws.size());
  std::vector<double> cellObs, cellExp;
  double obs = 0, exp = 0;
  for (std::int32_t i = 1; i <= res; ++i) {
    obs += observed[static_cast<std::size_t>(i - 1)];
    exp += n * BinMass(density, i) / total;
    if (exp >= 5) {
      cellObs.push_back(obs);
      cellExp.push_back(exp);
      obs = exp = 0;
    }
  }
  cellObs.back() += obs;
  cellExp.back() += exp;
  double stat = 0;
  for (std::size_t c = 0; c < cellObs.size(); ++c)
    stat += (cellObs[c] - cellExp[c]) * (cellObs[c] - cellExp[c]) / cellExp[c];
  const auto df = static_cast<std::int32_t>(cellObs.size()) - 1;
  return 1 - chi2DistriIntegral(stat, df);
}

std::vector<double> Draw(TRandGen& g, int n, std::uint64_t seed) {
  SetRandSeed(seed);
  std::vector<double> v(static_cast<std::size_t>(n));
  for (double& x : v)
    x = g.GetRandNum();
  return v;
}

// A shape and a slightly different one that the same draws must be told apart from.
struct TShapeCase {
  const char* name;
  double low, high;
  void (*shape)(TRandGen&);
  void (*wrong)(TRandGen&);
  bool standardize;
};

const TShapeCase kShapes[] = {
    {"normal", -4, 4, [](TRandGen& g) { g.NormalDistri(0, 1); },
     [](TRandGen& g) { g.NormalDistri(0, 1.04); }, false},
    {"chi2", 0, 20, [](TRandGen& g) { g.Chi2Distri(4); }, [](TRandGen& g) { g.Chi2Distri(5); },
     true},
    {"weibull", 0, 8, [](TRandGen& g) { g.WeibullDistri(1.5, 2); },
     [](TRandGen& g) { g.WeibullDistri(1.6, 2); }, true},
};

// Sets the borders of the case and one of its shapes, standardized when the case says so.
void Configure(TRandGen& g, const TShapeCase& c, void (*shape)(TRandGen&)) {
  g.SetLowBorder(c.low);
  g.SetHighBorder(c.high);
  shape(g);
  if (c.standardize) {
    ASSERT_TRUE(g.Standardize());
  }
}

TEST(RandGenGoodnessOfFit, DrawsFollowTheTabulatedDensity) {
  std::uint64_t seed = 101;
  for (const TShapeCase& c : kShapes) {
    TRandGen g;
    Configure(g, c, c.shape);
    const std::vector<double> draws = Draw(g, 100000, seed++);
    for (double x : draws) {
      ASSERT_GE(x, c.low);
      ASSERT_LT(x, c.high);
    }
    EXPECT_GT(GoodnessOfFitP(draws, g), 0.001) << c.name;

    // Power: the same draws are told apart from the slightly different shape.
    TRandGen wrong;
    Configure(wrong, c, c.wrong);
    EXPECT_LT(GoodnessOfFitP(draws, wrong), 1e-6) << c.name;
  }
}

TEST(RandGenGoodnessOfFit, LastBinOfTheInitialTableFallsToZero) {
  TRandGen g;
  g.SetResolution(10);
  g.SetHighBorder(10);
  const std::vector<double> draws = Draw(g, 100000, 55);
  EXPECT_GT(GoodnessOfFitP(draws, g), 0.001);
  std::vector<int> count(10, 0);
  for (double x : draws)
    ++count[static_cast<std::size_t>(x)];
  // Bins 1..9 carry 1/9.5 each, bin 10 half of that; inside the last bin the density falls
  // linearly, so its upper half holds a quarter of its draws.
  const double full = 100000 / 9.5;
  for (int b = 0; b < 9; ++b)
    EXPECT_NEAR(count[static_cast<std::size_t>(b)], full, 5 * std::sqrt(full)) << b;
  EXPECT_NEAR(count[9], full / 2, 5 * std::sqrt(full / 2));
  const auto upper = std::count_if(draws.begin(), draws.end(), [](double x) { return x >= 9.5; });
  EXPECT_NEAR(static_cast<double>(upper), full / 8, 5 * std::sqrt(full / 8));
}

TEST(RandGenGoodnessOfFit, RawShapeAboveOneSaturatesUntilStandardized) {
  TRandGen raw;
  raw.SetLowBorder(0);
  raw.SetHighBorder(1);
  raw.WeibullDistri(2, 0.2);  // peak near 4.3
  const std::vector<double> rawDraws = Draw(raw, 100000, 77);
  EXPECT_GT(GoodnessOfFitP(rawDraws, raw), 0.001);  // the cut-off density

  TRandGen standardized;
  standardized.SetLowBorder(0);
  standardized.SetHighBorder(1);
  standardized.WeibullDistri(2, 0.2);
  ASSERT_TRUE(standardized.Standardize());
  EXPECT_LT(GoodnessOfFitP(rawDraws, standardized), 1e-6);  // not the Weibull shape
  EXPECT_GT(GoodnessOfFitP(Draw(standardized, 100000, 78), standardized), 0.001);
}

}  // namespace
}  // namespace quv
