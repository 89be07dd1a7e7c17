// Expressions: a compiled 20-operator expression evaluated 10^7 times with changing variables,
// beside the same formula written in C++. Two formulas: one with elementary functions and one
// of plain arithmetic and comparisons, where the interpreter's overhead shows the most.
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstddef>
#include <span>
#include <vector>

#include "quv/math2/math2.h"

namespace {

constexpr std::int64_t kEvaluations = 10'000'000;
constexpr std::size_t kPoints = 1024;  // variable sets cycled through, (x, y, z) each

// 20 operators: + * - / + + sqr - * - sqrt abs + sin * - ^ + > *
constexpr const char* kMixed =
    "(x + y) * z - x / (y + 1.5) + sqr(x - z) * 0.5 - sqrt(abs(y)) + sin(x) * z - y ^ 2"
    " + (x > z) * 3";

double Mixed(double x, double y, double z) {
  return (x + y) * z - x / (y + 1.5) + (x - z) * (x - z) * 0.5 - std::sqrt(std::fabs(y)) +
         std::sin(x) * z - std::pow(y, 2) + (x > z) * 3;
}

// 20 operators: + * - / + + - * - * * - * + > * - / + *
constexpr const char* kArithmetic =
    "((x + y) * z - x / (y + 1.5) + (x - z) * (x - z) * 0.5 - y * y + (x > z) * 3 - z / 4 + x)"
    " * y";

double Arithmetic(double x, double y, double z) {
  return ((x + y) * z - x / (y + 1.5) + (x - z) * (x - z) * 0.5 - y * y + (x > z) * 3 - z / 4 + x) *
         y;
}

std::vector<double> Points() {
  std::vector<double> p(3 * kPoints);
  for (std::size_t i = 0; i < p.size(); ++i)
    p[i] = 0.25 + static_cast<double>((i * 7919) % 1000) / 97.0;
  return p;
}

void RunCompiled(benchmark::State& state, const char* text) {
  const quv::TMathExpression e(text);
  const std::vector<double> p = Points();
  std::size_t i = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(e.Evaluate(std::span<const double>(&p[3 * i], 3)));
    i = (i + 1) % kPoints;
  }
}

void RunNative(benchmark::State& state, double (*formula)(double, double, double)) {
  const std::vector<double> p = Points();
  std::size_t i = 0;
  for (auto _ : state) {
    const double* v = &p[3 * i];
    double x = v[0], y = v[1], z = v[2];
    // Hide the values from the optimiser so that the formula runs every time.
    benchmark::DoNotOptimize(x);
    benchmark::DoNotOptimize(y);
    benchmark::DoNotOptimize(z);
    benchmark::DoNotOptimize(formula(x, y, z));
    i = (i + 1) % kPoints;
  }
}

void BM_Expression_Mixed(benchmark::State& state) {
  RunCompiled(state, kMixed);
}
BENCHMARK(BM_Expression_Mixed)->Iterations(kEvaluations);

void BM_Cxx_Mixed(benchmark::State& state) {
  RunNative(state, Mixed);
}
BENCHMARK(BM_Cxx_Mixed)->Iterations(kEvaluations);

void BM_Expression_Arithmetic(benchmark::State& state) {
  RunCompiled(state, kArithmetic);
}
BENCHMARK(BM_Expression_Arithmetic)->Iterations(kEvaluations);

void BM_Cxx_Arithmetic(benchmark::State& state) {
  RunNative(state, Arithmetic);
}
BENCHMARK(BM_Cxx_Arithmetic)->Iterations(kEvaluations);

// Compiling once: the cost that evaluating many times amortises.
void BM_Expression_Compile(benchmark::State& state) {
  for (auto _ : state) {
    quv::TMathExpression e(kMixed);
    benchmark::DoNotOptimize(e.Program().data());
  }
}
BENCHMARK(BM_Expression_Compile);

}  // namespace
