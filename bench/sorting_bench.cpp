// SortArray over raw doubles against std::sort on the same data in the same run.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <random>
#include <vector>

#include "quv/math1/math1.h"

namespace {

const std::vector<double>& RandomData(std::size_t n) {
  static std::vector<double> data;
  if (data.size() != n) {
    std::mt19937_64 gen(42);
    std::uniform_real_distribution<double> u(0.0, 1.0);
    data.resize(n);
    for (auto& x : data)
      x = u(gen);
  }
  return data;
}

void BM_SortArray(benchmark::State& state) {
  const auto& source = RandomData(static_cast<std::size_t>(state.range(0)));
  std::vector<double> v;
  for (auto _ : state) {
    state.PauseTiming();
    v = source;
    state.ResumeTiming();
    benchmark::DoNotOptimize(quv::SortArray(std::span<double>(v)));
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

void BM_StdSort(benchmark::State& state) {
  const auto& source = RandomData(static_cast<std::size_t>(state.range(0)));
  std::vector<double> v;
  for (auto _ : state) {
    state.PauseTiming();
    v = source;
    state.ResumeTiming();
    std::sort(v.begin(), v.end());
    benchmark::DoNotOptimize(v.data());
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK(BM_SortArray)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_StdSort)->Arg(1000000)->Unit(benchmark::kMillisecond);

}  // namespace
