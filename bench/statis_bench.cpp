// Statistics unit: the Kolmogorov-Smirnov matrix power against one plain matrix product of the
// same order, and quantile throughput against Boost.Math's quantiles where Boost is installed.
#include <benchmark/benchmark.h>

#include <array>
#include <cstddef>
#include <vector>

#include "quv/statis/statis.h"

#ifdef QUV_HAVE_BOOST
#include <boost/math/distributions/chi_squared.hpp>
#include <boost/math/distributions/normal.hpp>
#include <boost/math/distributions/students_t.hpp>
#endif

namespace {

// Probabilities cycled through by the quantile benchmarks, tails and centre.
constexpr std::array<double, 8> kProbs = {1e-6, 0.001, 0.025, 0.2, 0.5, 0.8, 0.975, 0.9999};
constexpr std::int32_t kDegFree = 10;

// n = 100, d = 0.1: s = 1, the matrix branch with m = 2 * 10 + 1 = 21.
void BM_KSPValue_n100_d01(benchmark::State& state) {
  for (auto _ : state)
    benchmark::DoNotOptimize(quv::KSPValue(100, 0.1));
}
BENCHMARK(BM_KSPValue_n100_d01);

// One 21 x 21 double product (i-k-j loops), the unit the matrix power is made of. The order is
// a run-time value, as in KSPValue, so that the compiler cannot specialise the loops for it.
void BM_MatrixProduct_m21(benchmark::State& state) {
  const auto m = static_cast<std::size_t>(state.range(0));
  std::vector<double> a(m * m), b(m * m), c(m * m);
  for (std::size_t i = 0; i < m * m; ++i) {
    a[i] = 1.0 / static_cast<double>(i + 1);
    b[i] = 0.5 + static_cast<double>(i % 7);
  }
  for (auto _ : state) {
    for (std::size_t i = 0; i < m * m; ++i)
      c[i] = 0;
    for (std::size_t i = 0; i < m; ++i)
      for (std::size_t k = 0; k < m; ++k) {
        const double aik = a[i * m + k];
        for (std::size_t j = 0; j < m; ++j)
          c[i * m + j] += aik * b[k * m + j];
      }
    benchmark::DoNotOptimize(c.data());
    benchmark::ClobberMemory();
  }
}
BENCHMARK(BM_MatrixProduct_m21)->Arg(21);

template <class Quantile>
void RunQuantiles(benchmark::State& state, Quantile quantile) {
  std::size_t i = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(quantile(kProbs[i]));
    i = (i + 1) % kProbs.size();
  }
  state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()));
}

void BM_nDistriQuantile(benchmark::State& state) {
  RunQuantiles(state, [](double p) { return quv::nDistriQuantile(p); });
}
BENCHMARK(BM_nDistriQuantile);

void BM_tDistriQuantile_df10(benchmark::State& state) {
  RunQuantiles(state, [](double p) { return quv::tDistriQuantile(p, kDegFree); });
}
BENCHMARK(BM_tDistriQuantile_df10);

void BM_chi2DistriQuantile_df10(benchmark::State& state) {
  RunQuantiles(state, [](double p) { return quv::chi2DistriQuantile(p, kDegFree); });
}
BENCHMARK(BM_chi2DistriQuantile_df10);

#ifdef QUV_HAVE_BOOST
void BM_Boost_NormalQuantile(benchmark::State& state) {
  const boost::math::normal dist;
  RunQuantiles(state, [&dist](double p) { return boost::math::quantile(dist, p); });
}
BENCHMARK(BM_Boost_NormalQuantile);

void BM_Boost_StudentsTQuantile_df10(benchmark::State& state) {
  const boost::math::students_t dist(kDegFree);
  RunQuantiles(state, [&dist](double p) { return boost::math::quantile(dist, p); });
}
BENCHMARK(BM_Boost_StudentsTQuantile_df10);

void BM_Boost_ChiSquaredQuantile_df10(benchmark::State& state) {
  const boost::math::chi_squared dist(kDegFree);
  RunQuantiles(state, [&dist](double p) { return boost::math::quantile(dist, p); });
}
BENCHMARK(BM_Boost_ChiSquaredQuantile_df10);
#endif

}  // namespace
