// Data table file import: CSV and ASC of 10^6 rows x 10 columns, in MB/s of file text (goal:
// at least 100 MB/s). There is no peer library for these formats; the baseline beside each
// import is the bare floor of the job, every number of the same text read with
// std::from_chars into a flat array, so the ratio shows what the table's reader adds.
#include <benchmark/benchmark.h>

#include <charconv>
#include <sstream>
#include <string>
#include <vector>

#include "quv/datatable/datatable.h"

namespace {

constexpr int kRows = 1'000'000;
constexpr int kCols = 10;

// A table of values with 4 to 6 significant digits, as measured data usually have.
const quv::TDataTable& SampleTable() {
  static quv::TDataTable* table = [] {
    auto* t = new quv::TDataTable;
    t->Resize(kCols, kRows);
    quv::SetRandSeed(42);
    for (int c = 1; c <= kCols; ++c) {
      t->SetColName(c, "col" + std::to_string(c));
      for (int r = 1; r <= kRows; ++r)
        t->SetElem(c, r, static_cast<double>(quv::Random(2'000'000) - 1'000'000) / 1000.0);
    }
    return t;
  }();
  return *table;
}

const std::string& CSVText() {
  static const std::string text = [] {
    std::ostringstream out;
    SampleTable().ExportCSV(out, quv::TCSVFormat{});
    return out.str();
  }();
  return text;
}

const std::string& ASCText() {
  static const std::string text = [] {
    std::ostringstream out;
    SampleTable().ExportAsASC(out, 3);
    return out.str();
  }();
  return text;
}

// Every number of the text into one array: the separators are skipped, nothing else done.
std::size_t ParseAllNumbers(const std::string& text, std::vector<double>& out) {
  out.clear();
  const char* p = text.data();
  const char* end = p + text.size();
  while (p < end) {
    double x = 0.0;
    const auto r = std::from_chars(p, end, x);
    if (r.ec == std::errc()) {
      out.push_back(x);
      p = r.ptr;
    } else {
      ++p;
    }
  }
  return out.size();
}

void BM_ImportCSV(benchmark::State& state) {
  const std::string& text = CSVText();
  for (auto _ : state) {
    quv::TDataTable t;
    std::istringstream in(text);
    quv::TCSVReport report;
    benchmark::DoNotOptimize(t.ImportCSV(in, quv::TCSVFormat{}, report));
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                          static_cast<std::int64_t>(text.size()));
}
BENCHMARK(BM_ImportCSV)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_ImportASC(benchmark::State& state) {
  const std::string& text = ASCText();
  for (auto _ : state) {
    quv::TDataTable t;
    std::istringstream in(text);
    benchmark::DoNotOptimize(t.ImportASC(in));
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                          static_cast<std::int64_t>(text.size()));
}
BENCHMARK(BM_ImportASC)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_FromCharsFloorCSV(benchmark::State& state) {
  const std::string& text = CSVText();
  std::vector<double> values;
  for (auto _ : state)
    benchmark::DoNotOptimize(ParseAllNumbers(text, values));
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                          static_cast<std::int64_t>(text.size()));
}
BENCHMARK(BM_FromCharsFloorCSV)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_FromCharsFloorASC(benchmark::State& state) {
  const std::string& text = ASCText();
  std::vector<double> values;
  for (auto _ : state)
    benchmark::DoNotOptimize(ParseAllNumbers(text, values));
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                          static_cast<std::int64_t>(text.size()));
}
BENCHMARK(BM_FromCharsFloorASC)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
