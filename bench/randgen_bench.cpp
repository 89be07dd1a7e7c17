// Random generator with a tabulated distribution: draws per second of TRandGen::GetRandNum
// with the normal shape at Resolution 500 (on [-4, 4], about 31 % of the candidates
// accepted), beside std::normal_distribution driven by std::mt19937_64 in the same run. The
// rejection scheme is fixed, so the figure is a report, not a goal.
#include <benchmark/benchmark.h>

#include <random>

#include "quv/base/random.h"
#include "quv/statis/statis.h"

namespace {

void BM_RandGen_GetRandNum_Normal500(benchmark::State& state) {
  quv::TRandGen gen;
  gen.SetResolution(500);
  gen.SetLowBorder(-4);
  gen.SetHighBorder(4);
  gen.NormalDistri(0, 1);
  quv::SetRandSeed(12345);
  for (auto _ : state)
    benchmark::DoNotOptimize(gen.GetRandNum());
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_RandGen_GetRandNum_Normal500);

void BM_StdNormalDistribution(benchmark::State& state) {
  std::mt19937_64 engine(12345);
  std::normal_distribution<double> normal(0.0, 1.0);
  for (auto _ : state)
    benchmark::DoNotOptimize(normal(engine));
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_StdNormalDistribution);

}  // namespace
