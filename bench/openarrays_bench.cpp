// Open-array statistics over large arrays; the naive extended-precision loop runs beside
// MeanArray as the baseline.
#include <benchmark/benchmark.h>

#include <random>
#include <vector>

#include "quv/openarrays/openarrays.h"

namespace {

const quv::TDoubleArray& Data1D() {
  static const quv::TDoubleArray data = [] {
    std::mt19937_64 gen(7);
    std::uniform_real_distribution<double> u(-1.0, 1.0);
    quv::TDoubleArray d(10'000'000);
    for (auto& x : d)
      x = u(gen);
    return d;
  }();
  return data;
}

void BM_MeanArray1D(benchmark::State& state) {
  const auto& data = Data1D();
  const auto hi = static_cast<std::int32_t>(data.size()) - 1;
  for (auto _ : state) {
    double mean = 0;
    benchmark::DoNotOptimize(quv::MeanArray(data, 0, hi, mean));
    benchmark::DoNotOptimize(mean);
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(data.size()));
}

void BM_NaiveExtendedMean1D(benchmark::State& state) {
  const auto& data = Data1D();
  for (auto _ : state) {
    long double sum = 0;
    for (double x : data)
      sum += x;
    double mean = static_cast<double>(sum / static_cast<long double>(data.size()));
    benchmark::DoNotOptimize(mean);
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(data.size()));
}

BENCHMARK(BM_MeanArray1D)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_NaiveExtendedMean1D)->Unit(benchmark::kMillisecond);

}  // namespace
