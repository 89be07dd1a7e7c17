// Smoothing and hull benchmarks:
//   MovingAverageSmooth and PolynomialSmooth (window 25) over 10^7 elements against a plain
//   convolution loop with the same window in the same run (elements per second; goal: the
//   smoothers take at most 1.5 times the loop's time);
//   Convex2DHull of 10^6 random points (ms), beside Boost.Geometry's convex_hull when found.
#include <benchmark/benchmark.h>

#include <random>
#include <vector>

#include "quv/math2/math2.h"
#include "quv/vector/vector.h"

#if defined(QUV_HAVE_BOOST) && __has_include(<boost/geometry.hpp>)
#include <boost/geometry.hpp>
#include <boost/geometry/geometries/multi_point.hpp>
#include <boost/geometry/geometries/point_xy.hpp>
#include <boost/geometry/geometries/polygon.hpp>
#define QUV_BENCH_BOOST_GEOMETRY 1
#endif

namespace {

constexpr std::int32_t kN = 10000000;
constexpr std::int32_t kWindow = 25;
constexpr std::size_t kHullPoints = 1000000;

// A saw tooth with noise; the vector is filled once on first use.
const quv::TVector& Signal() {
  static quv::TVector s;
  static const bool filled = [] {
    std::mt19937_64 rng(42);
    std::normal_distribution<double> noise(0.0, 1.0);
    std::vector<double> d(kN);
    for (std::size_t i = 0; i < d.size(); ++i)
      d[i] = 0.001 * static_cast<double>(i % 5000) + noise(rng);
    s.Resize(kN);
    s.CopyFrom(d, 0, 0, 1);
    return true;
  }();
  benchmark::DoNotOptimize(filled);
  return s;
}

template <class Smoother>
void RunSmoother(benchmark::State& state, Smoother smoother) {
  const quv::TVector& src = Signal();
  quv::TVector dst;
  dst.Resize(kN);
  for (auto _ : state) {
    smoother(&src, 1, kN, kWindow, &dst);
    benchmark::DoNotOptimize(dst.GetVal(kN / 2));
  }
  state.SetItemsProcessed(state.iterations() * kN);
}

void BM_MovingAverageSmooth(benchmark::State& state) {
  RunSmoother(state, quv::MovingAverageSmooth);
}
BENCHMARK(BM_MovingAverageSmooth)->Unit(benchmark::kMillisecond);

void BM_PolynomialSmooth(benchmark::State& state) {
  RunSmoother(state, quv::PolynomialSmooth);
}
BENCHMARK(BM_PolynomialSmooth)->Unit(benchmark::kMillisecond);

// The baseline: a straightforward convolution with a window of 25 doubles, summed in double,
// into a plain array.
void BM_PlainConvolution(benchmark::State& state) {
  const std::vector<double>& x = Signal().Storage();
  std::vector<double> y(x.size());
  std::vector<double> k(kWindow, 1.0 / kWindow);
  for (auto _ : state) {
    for (std::size_t i = 0; i + kWindow <= x.size(); ++i) {
      double sum = 0.0;
      for (std::size_t j = 0; j < kWindow; ++j)
        sum += k[j] * x[i + j];
      y[i + kWindow / 2] = sum;
    }
    benchmark::DoNotOptimize(y[x.size() / 2]);
  }
  state.SetItemsProcessed(state.iterations() * kN);
}
BENCHMARK(BM_PlainConvolution)->Unit(benchmark::kMillisecond);

const quv::TPointDoubleArray& HullPoints() {
  static const quv::TPointDoubleArray pts = [] {
    std::mt19937_64 rng(7);
    std::uniform_real_distribution<double> u(-1.0, 1.0);
    quv::TPointDoubleArray p(kHullPoints);
    for (auto& q : p)
      q = {u(rng), u(rng)};
    return p;
  }();
  return pts;
}

void BM_Convex2DHull(benchmark::State& state) {
  for (auto _ : state)
    benchmark::DoNotOptimize(quv::Convex2DHull(HullPoints()).size());
}
BENCHMARK(BM_Convex2DHull)->Unit(benchmark::kMillisecond);

#ifdef QUV_BENCH_BOOST_GEOMETRY
void BM_BoostConvexHull(benchmark::State& state) {
  namespace bg = boost::geometry;
  using Point = bg::model::d2::point_xy<double>;
  bg::model::multi_point<Point> mp;
  for (const auto& p : HullPoints())
    mp.emplace_back(p.X, p.Y);
  for (auto _ : state) {
    bg::model::polygon<Point> hull;
    bg::convex_hull(mp, hull);
    benchmark::DoNotOptimize(hull.outer().size());
  }
}
BENCHMARK(BM_BoostConvexHull)->Unit(benchmark::kMillisecond);
#endif

}  // namespace
