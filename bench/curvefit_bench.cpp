// Curve fit: entering points (about thirty extended running sums each) and the degree-10
// polynomial fit by Householder QR in extended precision, with Eigen's double-precision
// Householder QR of the same scaled Vandermonde matrix as the baseline where it is installed.
#include <benchmark/benchmark.h>

#include <cmath>
#include <vector>

#include "quv/quv.h"

#ifdef QUV_HAVE_EIGEN
#include <Eigen/Dense>
#endif

namespace {

void Points(std::size_t n, std::vector<double>& x, std::vector<double>& y) {
  quv::SetRandSeed(7);
  x.resize(n);
  y.resize(n);
  for (std::size_t i = 0; i < n; ++i) {
    x[i] = 0.5 + 10.0 * quv::Random();
    y[i] = 1.0 + std::sin(x[i]) + 0.01 * quv::Random() + 1.5;
  }
}

void BM_CurveFitEnterStatValue(benchmark::State& state) {
  const auto n = static_cast<std::size_t>(state.range(0));
  std::vector<double> x, y;
  Points(n, x, y);
  quv::TCurveFit fit;
  for (auto _ : state) {
    state.PauseTiming();
    fit.Init();
    state.ResumeTiming();
    for (std::size_t i = 0; i < n; ++i)
      fit.EnterStatValue(x[i], y[i]);
    benchmark::DoNotOptimize(fit.GetMeanX());
  }
  state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * n));
  state.counters["ns_per_point"] = benchmark::Counter(
      static_cast<double>(n) * 1e-9,
      benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}
BENCHMARK(BM_CurveFitEnterStatValue)->Arg(1000000)->Unit(benchmark::kMillisecond);

void BM_CurveFitPolyFit10(benchmark::State& state) {
  const auto n = static_cast<std::size_t>(state.range(0));
  std::vector<double> x, y;
  Points(n, x, y);
  quv::TCurveFit fit;
  for (std::size_t i = 0; i < n; ++i)
    fit.EnterStatValue(x[i], y[i]);
  quv::TDoubleArray params, stdErrs;
  double q = 0.0;
  bool ok = false;
  for (auto _ : state) {
    fit.CalcPolyFit(10, params, stdErrs, q, ok);
    benchmark::DoNotOptimize(params.data());
  }
}
BENCHMARK(BM_CurveFitPolyFit10)->Arg(100000)->Unit(benchmark::kMillisecond);

#ifdef QUV_HAVE_EIGEN
// The same least-squares problem: Vandermonde matrix of x centred and scaled to [-1, 1],
// solved by Householder QR in double precision (no standard errors).
void BM_EigenHouseholderPolyFit10(benchmark::State& state) {
  const auto n = static_cast<Eigen::Index>(state.range(0));
  std::vector<double> x, y;
  Points(static_cast<std::size_t>(n), x, y);
  const Eigen::Map<const Eigen::VectorXd> xv(x.data(), n), yv(y.data(), n);
  for (auto _ : state) {
    const double c = xv.mean();
    const double s = (xv.array() - c).abs().maxCoeff();
    Eigen::MatrixXd a(n, 11);
    a.col(0).setOnes();
    const Eigen::ArrayXd t = (xv.array() - c) / s;
    for (int j = 1; j < 11; ++j)
      a.col(j) = a.col(j - 1).array() * t;
    const Eigen::VectorXd coef = a.householderQr().solve(yv);
    benchmark::DoNotOptimize(coef.data());
  }
}
BENCHMARK(BM_EigenHouseholderPolyFit10)->Arg(100000)->Unit(benchmark::kMillisecond);
#endif

}  // namespace
