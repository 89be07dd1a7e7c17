// Number text against the C library: ScanFPNum beside strtod on the same decimal texts, and
// Hex / FPNumToHex / HexToDouble beside snprintf and strtoull, so that the price of the
// grammar checks reads as the ratio of the two times.
#include <benchmark/benchmark.h>

#include <cinttypes>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "quv/math1/math1.h"

namespace {

const std::vector<std::string>& DecimalTexts() {
  static const std::vector<std::string> texts = [] {
    std::vector<std::string> t;
    std::mt19937_64 gen(7);
    std::uniform_real_distribution<double> mantissa(-10.0, 10.0);
    std::uniform_int_distribution<int> exponent(-30, 30);
    char buffer[40];
    for (int i = 0; i < 10000; ++i) {
      std::snprintf(buffer, sizeof buffer, "%.15e", mantissa(gen) * std::pow(10.0, exponent(gen)));
      t.emplace_back(buffer);
    }
    return t;
  }();
  return texts;
}

void BM_ScanFPNum(benchmark::State& state) {
  const auto& texts = DecimalTexts();
  for (auto _ : state) {
    double sum = 0;
    for (const std::string& s : texts) {
      std::int32_t pos = 1;
      sum += quv::ScanFPNum(s, true, quv::dsPoint, pos);
    }
    benchmark::DoNotOptimize(sum);
  }
  state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * texts.size()));
}
BENCHMARK(BM_ScanFPNum);

void BM_Strtod(benchmark::State& state) {
  const auto& texts = DecimalTexts();
  for (auto _ : state) {
    double sum = 0;
    for (const std::string& s : texts)
      sum += std::strtod(s.c_str(), nullptr);
    benchmark::DoNotOptimize(sum);
  }
  state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * texts.size()));
}
BENCHMARK(BM_Strtod);

void BM_Hex8(benchmark::State& state) {
  std::int32_t v = 0x12345678;
  for (auto _ : state) {
    std::string s = quv::Hex(v++, 8);
    benchmark::DoNotOptimize(s);
  }
}
BENCHMARK(BM_Hex8);

void BM_Snprintf08X(benchmark::State& state) {
  std::uint32_t v = 0x12345678;
  for (auto _ : state) {
    char buffer[16];
    std::snprintf(buffer, sizeof buffer, "%08" PRIX32, v++);
    std::string s = buffer;
    benchmark::DoNotOptimize(s);
  }
}
BENCHMARK(BM_Snprintf08X);

void BM_DoubleHexRoundTrip(benchmark::State& state) {
  double x = 1.0 / 3.0;
  for (auto _ : state) {
    x = quv::HexToDouble(quv::FPNumToHex(x)) + 1e-9;
    benchmark::DoNotOptimize(x);
  }
}
BENCHMARK(BM_DoubleHexRoundTrip);

void BM_SnprintfStrtoullRoundTrip(benchmark::State& state) {
  double x = 1.0 / 3.0;
  for (auto _ : state) {
    std::uint64_t bits = 0;
    std::memcpy(&bits, &x, sizeof bits);
    char buffer[24];
    std::snprintf(buffer, sizeof buffer, "%016" PRIX64, bits);
    const std::string s = buffer;
    bits = std::strtoull(s.c_str(), nullptr, 16);
    std::memcpy(&x, &bits, sizeof x);
    x += 1e-9;
    benchmark::DoNotOptimize(x);
  }
}
BENCHMARK(BM_SnprintfStrtoullRoundTrip);

}  // namespace
