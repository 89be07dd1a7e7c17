// Compensated summation: TKahanSum::Add against a plain double accumulator over the same
// 10^7 values, so that the price of the compensation reads as the ratio of the two times.
#include <benchmark/benchmark.h>

#include <cstddef>
#include <random>
#include <vector>

#include "quv/math1/math1.h"

namespace {

const std::vector<double>& Values() {
  static const std::vector<double> values = [] {
    std::vector<double> v(10'000'000);
    std::mt19937_64 gen(42);
    std::uniform_real_distribution<double> u(-1.0, 1.0);
    for (double& x : v)
      x = u(gen);
    return v;
  }();
  return values;
}

void BM_KahanSumAdd(benchmark::State& state) {
  const std::vector<double>& v = Values();
  for (auto _ : state) {
    quv::TKahanSum sum;
    for (const double x : v)
      sum.Add(x);
    benchmark::DoNotOptimize(sum.Sum());
  }
  state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * v.size()));
}
BENCHMARK(BM_KahanSumAdd)->Unit(benchmark::kMillisecond);

void BM_NaiveSum(benchmark::State& state) {
  const std::vector<double>& v = Values();
  for (auto _ : state) {
    double sum = 0.0;
    for (const double x : v)
      sum += x;
    benchmark::DoNotOptimize(sum);
  }
  state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * v.size()));
}
BENCHMARK(BM_NaiveSum)->Unit(benchmark::kMillisecond);

void BM_Polynomial(benchmark::State& state) {
  const quv::TDoubleArray coeff = {1.0, -0.5, 0.25, 0.125, -0.0625, 0.03125};
  double x = 0.1;
  for (auto _ : state) {
    benchmark::DoNotOptimize(quv::Polynomial(coeff, 5, x));
    x += 1e-9;
  }
}
BENCHMARK(BM_Polynomial);

void BM_GRandom(benchmark::State& state) {
  quv::SetRandSeed(1);
  for (auto _ : state)
    benchmark::DoNotOptimize(quv::GRandom());
}
BENCHMARK(BM_GRandom);

}  // namespace
