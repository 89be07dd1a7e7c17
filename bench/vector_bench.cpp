// Vector benchmarks with the standard library as the baseline:
//   SortElems (comb sort, no handler) against std::sort on 10^6 random doubles;
//   Percentile against copy + std::sort + interpolation on 10^6 values;
//   ImportASC of a 10^6-row file (bytes per second);
//   CRCofData (bytes per second).
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

#include "quv/vector/vector.h"

namespace {

constexpr std::int32_t kN = 1000000;

const std::vector<double>& RandomData() {
  static const std::vector<double> data = [] {
    std::mt19937_64 rng(42);
    std::uniform_real_distribution<double> u(-1000.0, 1000.0);
    std::vector<double> d(kN);
    for (double& x : d)
      x = u(rng);
    return d;
  }();
  return data;
}

void BM_SortElems(benchmark::State& state) {
  quv::TVector v;
  v.Resize(kN);
  for (auto _ : state) {
    v.CopyFrom(RandomData(), 0, 0, 1);
    v.SortElems(true, 0, 0);
    benchmark::DoNotOptimize(v.GetVal(1));
  }
}
BENCHMARK(BM_SortElems)->Unit(benchmark::kMillisecond);

void BM_StdSort(benchmark::State& state) {
  std::vector<double> d(kN);
  for (auto _ : state) {
    std::copy(RandomData().begin(), RandomData().end(), d.begin());
    std::sort(d.begin(), d.end());
    benchmark::DoNotOptimize(d[0]);
  }
}
BENCHMARK(BM_StdSort)->Unit(benchmark::kMillisecond);

void BM_Percentile(benchmark::State& state) {
  quv::TVector v;
  v.Resize(kN);
  v.CopyFrom(RandomData(), 0, 0, 1);
  for (auto _ : state)
    benchmark::DoNotOptimize(v.Percentile(37.5, 0, 0));
}
BENCHMARK(BM_Percentile)->Unit(benchmark::kMillisecond);

void BM_CopySortPercentile(benchmark::State& state) {
  for (auto _ : state) {
    std::vector<double> d(RandomData());
    std::sort(d.begin(), d.end());
    const double pos = (kN - 1) * 37.5 / 100;
    const auto i = static_cast<std::size_t>(pos);
    benchmark::DoNotOptimize(d[i] + (d[i + 1] - d[i]) * (pos - static_cast<double>(i)));
  }
}
BENCHMARK(BM_CopySortPercentile)->Unit(benchmark::kMillisecond);

void BM_ImportASC(benchmark::State& state) {
  const std::string path =
      (std::filesystem::temp_directory_path() / "quv_vector_bench.asc").string();
  {
    quv::TVector v;
    v.Resize(kN);
    v.CopyFrom(RandomData(), 0, 0, 1);
    v.ExportAsASC(path, 6, "benchmark data");
  }
  const auto bytes = static_cast<std::int64_t>(std::filesystem::file_size(path));
  quv::TVector v;
  std::string comment;
  for (auto _ : state) {
    if (v.ImportASC(path, comment) != 0) state.SkipWithError("import failed");
    benchmark::DoNotOptimize(v.GetVal(kN));
  }
  state.SetBytesProcessed(bytes * state.iterations());
  std::remove(path.c_str());
}
BENCHMARK(BM_ImportASC)->Unit(benchmark::kMillisecond);

void BM_CRCofData(benchmark::State& state) {
  quv::TVector v;
  v.Resize(kN);
  v.CopyFrom(RandomData(), 0, 0, 1);
  for (auto _ : state)
    benchmark::DoNotOptimize(v.CRCofData());
  state.SetBytesProcessed(static_cast<std::int64_t>(kN) * 8 * state.iterations());
}
BENCHMARK(BM_CRCofData)->Unit(benchmark::kMillisecond);

}  // namespace
