// CRC-32 and extended-value encoding throughput.
#include <benchmark/benchmark.h>

#include <vector>

#include "quv/base/base.h"

static void BM_CalcNextCRC32(benchmark::State& state) {
  std::vector<std::uint8_t> data(static_cast<std::size_t>(state.range(0)));
  for (std::size_t i = 0; i < data.size(); ++i)
    data[i] = static_cast<std::uint8_t>(i * 31);
  for (auto _ : state) {
    benchmark::DoNotOptimize(quv::CRC32OfBytes(data.data(), data.size()));
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * state.range(0));
}
BENCHMARK(BM_CalcNextCRC32)->Arg(1 << 20);

static void BM_EncodeExtended(benchmark::State& state) {
  long double x = 1.0L;
  for (auto _ : state) {
    benchmark::DoNotOptimize(quv::EncodeExtended(x));
    x += 0.37L;
  }
}
BENCHMARK(BM_EncodeExtended);
