// Fourier unit: TFastFourier's transform against FFTW's complex 1-D transform (planned with
// FFTW_ESTIMATE), and the any-length power spectrum against FFTW's real-to-complex transform,
// where FFTW is installed.
//
// A forward transform alone cannot be repeated on the same block (every pass scales the data
// by up to N), so the component is timed over a round trip, Transform then InverseTransform,
// and FFTW over the same work: forward, backward and the division by N. The kernel pair times
// one forward transform of a fresh copy of the data on both sides (the copy is in both).
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstddef>
#include <cstring>
#include <vector>

#include "quv/fourier/fourier.h"

#ifdef QUV_HAVE_FFTW
#include <fftw3.h>
#endif

namespace {

std::vector<double> Signal(std::size_t n) {
  std::vector<double> pairs(2 * n);
  for (std::size_t k = 0; k < n; ++k) {
    pairs[2 * k] = std::sin(0.37 * static_cast<double>(k));
    pairs[2 * k + 1] = 0.5 * std::cos(1.3 * static_cast<double>(k));
  }
  return pairs;
}

void BM_FastFourier_RoundTrip(benchmark::State& state) {
  const auto n = static_cast<std::int32_t>(state.range(0));
  quv::TFastFourier ff;
  ff.SetNumData(n);
  const std::vector<double> x = Signal(static_cast<std::size_t>(n));
  for (std::int32_t i = 1; i <= n; ++i) {
    ff.SetRealVal(i, x[2 * static_cast<std::size_t>(i - 1)]);
    ff.SetImagVal(i, x[2 * static_cast<std::size_t>(i - 1) + 1]);
  }
  for (auto _ : state) {
    ff.Transform();
    ff.InverseTransform();
    benchmark::DoNotOptimize(ff.GetRealVal(1));
  }
}
BENCHMARK(BM_FastFourier_RoundTrip)->Arg(1 << 10)->Arg(1 << 16)->Arg(1 << 20);

void BM_Kernel_Forward(benchmark::State& state) {
  const auto n = static_cast<std::size_t>(state.range(0));
  const std::vector<double> x = Signal(n);
  std::vector<double> work(x.size());
  quv::detail::TwiddleTable table;  // kept, as FFTW keeps its plan
  for (auto _ : state) {
    std::memcpy(work.data(), x.data(), x.size() * sizeof(double));
    quv::detail::DoFFT(work.data(), n, 1, table);
    benchmark::DoNotOptimize(work.data());
    benchmark::ClobberMemory();
  }
}
BENCHMARK(BM_Kernel_Forward)->Arg(1 << 10)->Arg(1 << 16)->Arg(1 << 20);

// N = 10^6 - 1 = 3^3 7 11 13 37: Bluestein over transforms of 2^21 points.
constexpr std::int64_t kOddLength = 999999;

void BM_RealPowerSpectrum_AnyLength(benchmark::State& state) {
  const auto n = static_cast<std::size_t>(state.range(0));
  quv::TDoubleArray x(n);
  for (std::size_t k = 0; k < n; ++k)
    x[k] =
        std::sin(0.37 * static_cast<double>(k)) + 0.25 * std::cos(0.001 * static_cast<double>(k));
  for (auto _ : state)
    benchmark::DoNotOptimize(quv::RealPowerSpectrum(x));
}
BENCHMARK(BM_RealPowerSpectrum_AnyLength)->Arg(kOddLength)->Unit(benchmark::kMillisecond);

#ifdef QUV_HAVE_FFTW
void BM_FFTW_RoundTrip(benchmark::State& state) {
  const auto n = static_cast<int>(state.range(0));
  const std::vector<double> x = Signal(static_cast<std::size_t>(n));
  auto* data = fftw_alloc_complex(static_cast<std::size_t>(n));
  const fftw_plan forward = fftw_plan_dft_1d(n, data, data, FFTW_FORWARD, FFTW_ESTIMATE);
  const fftw_plan backward = fftw_plan_dft_1d(n, data, data, FFTW_BACKWARD, FFTW_ESTIMATE);
  std::memcpy(data, x.data(), x.size() * sizeof(double));
  double* parts = &data[0][0];
  for (auto _ : state) {
    fftw_execute(forward);
    fftw_execute(backward);
    for (std::size_t k = 0; k < 2 * static_cast<std::size_t>(n); ++k)
      parts[k] /= n;
    benchmark::DoNotOptimize(parts[0]);
  }
  fftw_destroy_plan(forward);
  fftw_destroy_plan(backward);
  fftw_free(data);
}
BENCHMARK(BM_FFTW_RoundTrip)->Arg(1 << 10)->Arg(1 << 16)->Arg(1 << 20);

void BM_FFTW_Forward(benchmark::State& state) {
  const auto n = static_cast<int>(state.range(0));
  const std::vector<double> x = Signal(static_cast<std::size_t>(n));
  auto* data = fftw_alloc_complex(static_cast<std::size_t>(n));
  const fftw_plan plan = fftw_plan_dft_1d(n, data, data, FFTW_FORWARD, FFTW_ESTIMATE);
  for (auto _ : state) {
    std::memcpy(data, x.data(), x.size() * sizeof(double));
    fftw_execute(plan);
    benchmark::DoNotOptimize(data);
    benchmark::ClobberMemory();
  }
  fftw_destroy_plan(plan);
  fftw_free(data);
}
BENCHMARK(BM_FFTW_Forward)->Arg(1 << 10)->Arg(1 << 16)->Arg(1 << 20);

// The same N through the real-to-complex transform, then the one-sided power of every line.
void BM_FFTW_R2C_Power(benchmark::State& state) {
  const auto n = static_cast<int>(state.range(0));
  const auto lines = static_cast<std::size_t>(n / 2 + 1);
  double* in = fftw_alloc_real(static_cast<std::size_t>(n));
  auto* out = fftw_alloc_complex(lines);
  const fftw_plan plan = fftw_plan_dft_r2c_1d(n, in, out, FFTW_ESTIMATE);
  for (int k = 0; k < n; ++k)
    in[k] = std::sin(0.37 * k) + 0.25 * std::cos(0.001 * k);
  std::vector<double> power(lines);
  for (auto _ : state) {
    fftw_execute(plan);
    power[0] = (out[0][0] * out[0][0] + out[0][1] * out[0][1]) / n;
    for (std::size_t l = 1; l < lines; ++l)
      power[l] = 2 * (out[l][0] * out[l][0] + out[l][1] * out[l][1]) / n;
    benchmark::DoNotOptimize(power.data());
  }
  fftw_destroy_plan(plan);
  fftw_free(out);
  fftw_free(in);
}
BENCHMARK(BM_FFTW_R2C_Power)->Arg(kOddLength)->Unit(benchmark::kMillisecond);
#endif

}  // namespace
