// Matrix files: XML write and read speed (MB/s of document), the binary file against a raw
// fwrite/fread of the same elements, and the sparse integer matrix against std::map.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <filesystem>
#include <map>
#include <random>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "quv/matrix/matrix.h"

namespace {

constexpr int kSide = 1000;

void RandomMatrix(quv::TMatrix& m, int nc, int nr) {
  quv::SetRandSeed(7);
  m.Resize(nc, nr);
  m.FillRandomGauss(0.0, 1.0e3);  // full 17-digit values: the worst case for text
}

std::string TempFile(const char* name) {
  return (std::filesystem::temp_directory_path() / name).string();
}

void BM_XmlWrite(benchmark::State& state) {
  quv::TMatrix m;
  RandomMatrix(m, kSide, kSide);
  std::size_t bytes = 0;
  for (auto _ : state) {
    std::ostringstream out;
    m.WriteToXMLStream(out, true, "bench");
    bytes = out.str().size();
    benchmark::DoNotOptimize(bytes);
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * bytes));
}
BENCHMARK(BM_XmlWrite)->Unit(benchmark::kMillisecond);

void BM_XmlRead(benchmark::State& state) {
  quv::TMatrix m, back;
  RandomMatrix(m, kSide, kSide);
  std::ostringstream out;
  m.WriteToXMLStream(out, true, "bench");
  const std::string doc = out.str();
  for (auto _ : state) {
    std::istringstream in(doc);
    benchmark::DoNotOptimize(back.ReadFromXMLStream(in));
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * doc.size()));
}
BENCHMARK(BM_XmlRead)->Unit(benchmark::kMillisecond);

// Binary file save + load, against writing and reading the same 8 MB with fwrite/fread.
void BM_BinarySaveLoad(benchmark::State& state) {
  quv::TMatrix m, back;
  RandomMatrix(m, kSide, kSide);
  const std::string path = TempFile("quv_bench_matrix.bin");
  for (auto _ : state) {
    m.SaveBinary(path);
    benchmark::DoNotOptimize(back.LoadBinary(path));
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * 2 * 8 * kSide * kSide));
  std::filesystem::remove(path);
}
BENCHMARK(BM_BinarySaveLoad)->Unit(benchmark::kMillisecond);

void BM_RawFwriteFread(benchmark::State& state) {
  quv::TMatrix m;
  RandomMatrix(m, kSide, kSide);
  const std::string path = TempFile("quv_bench_raw.bin");
  std::vector<std::vector<double>> back(kSide, std::vector<double>(kSide));
  for (auto _ : state) {
    std::FILE* f = std::fopen(path.c_str(), "wb");
    for (const auto& col : m.Columns())
      std::fwrite(col.data(), sizeof(double), col.size(), f);
    std::fclose(f);
    f = std::fopen(path.c_str(), "rb");
    for (auto& col : back)
      benchmark::DoNotOptimize(std::fread(col.data(), sizeof(double), col.size(), f));
    std::fclose(f);
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * 2 * 8 * kSide * kSide));
  std::filesystem::remove(path);
}
BENCHMARK(BM_RawFwriteFread)->Unit(benchmark::kMillisecond);

// 10^5 distinct cells in a 10^4 x 10^4 grid; then 10^6 writes and 10^6 reads of random ones.
constexpr int kCells = 100000;
constexpr int kCalls = 1000000;

std::vector<std::pair<int, int>> Cells() {
  std::mt19937 gen(3);
  std::uniform_int_distribution<int> idx(1, 10000);
  std::map<std::pair<int, int>, int> unique;
  while (static_cast<int>(unique.size()) < kCells)
    unique.emplace(std::pair(idx(gen), idx(gen)), 0);
  std::vector<std::pair<int, int>> cells;
  for (const auto& [cell, v] : unique)
    cells.push_back(cell);
  return cells;  // sorted by (column, row)
}

std::vector<int> Picks() {
  std::mt19937 gen(4);
  std::uniform_int_distribution<int> pick(0, kCells - 1);
  std::vector<int> p(kCalls);
  for (int& k : p)
    k = pick(gen);
  return p;
}

void BM_SparseIntMatrixSetGet(benchmark::State& state) {
  const auto cells = Cells();
  const auto picks = Picks();
  quv::TIntMatrix m(nullptr, 1024);
  for (const auto& [c, r] : cells)
    m.SetVal(c, r, 1);  // ascending: each new cell goes to the end of the list
  for (auto _ : state) {
    for (int k = 0; k < kCalls; ++k) {
      const auto& [c, r] = cells[static_cast<std::size_t>(picks[static_cast<std::size_t>(k)])];
      m.SetVal(c, r, k);
    }
    std::int64_t sum = 0;
    for (int k = 0; k < kCalls; ++k) {
      const auto& [c, r] = cells[static_cast<std::size_t>(picks[static_cast<std::size_t>(k)])];
      sum += m.GetVal(c, r);
    }
    benchmark::DoNotOptimize(sum);
  }
  state.SetItemsProcessed(state.iterations() * 2 * kCalls);  // calls: ns per call = 1e9 / rate
}
BENCHMARK(BM_SparseIntMatrixSetGet)->Unit(benchmark::kMillisecond);

void BM_StdMapSetGet(benchmark::State& state) {
  const auto cells = Cells();
  const auto picks = Picks();
  std::map<std::pair<int, int>, int> m;
  for (const auto& cell : cells)
    m[cell] = 1;
  for (auto _ : state) {
    for (int k = 0; k < kCalls; ++k)
      m[cells[static_cast<std::size_t>(picks[static_cast<std::size_t>(k)])]] = k;
    std::int64_t sum = 0;
    for (int k = 0; k < kCalls; ++k) {
      const auto hit = m.find(cells[static_cast<std::size_t>(picks[static_cast<std::size_t>(k)])]);
      sum += hit == m.end() ? 0 : hit->second;
    }
    benchmark::DoNotOptimize(sum);
  }
  state.SetItemsProcessed(state.iterations() * 2 * kCalls);
}
BENCHMARK(BM_StdMapSetGet)->Unit(benchmark::kMillisecond);

}  // namespace
