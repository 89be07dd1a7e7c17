// Matrix products, inversion, determinant and distance matrices, with Eigen as the baseline
// where it is installed.
#include <benchmark/benchmark.h>

#include <cmath>

#include "quv/matrix/matrix.h"

#ifdef QUV_HAVE_EIGEN
#include <Eigen/Dense>
#endif

namespace {

void RandomMatrix(quv::TMatrix& m, int nc, int nr, std::uint64_t seed) {
  quv::SetRandSeed(seed);
  m.Resize(nc, nr);
  m.FillRandomUniform(-1.0, 1.0);
}

void BM_MatrixMultiply(benchmark::State& state) {
  const int n = static_cast<int>(state.range(0));
  quv::TMatrix a, b, res;
  RandomMatrix(a, n, n, 1);
  RandomMatrix(b, n, n, 2);
  for (auto _ : state) {
    benchmark::DoNotOptimize(a.Multiply(&b, &res));
  }
}
BENCHMARK(BM_MatrixMultiply)->Arg(256)->Arg(512)->Unit(benchmark::kMillisecond);

void BM_MatrixInvert(benchmark::State& state) {
  const int n = static_cast<int>(state.range(0));
  quv::TMatrix a;
  RandomMatrix(a, n, n, 3);
  for (auto _ : state) {
    benchmark::DoNotOptimize(a.Invert());  // alternates between A and its inverse
  }
}
BENCHMARK(BM_MatrixInvert)->Arg(256)->Arg(512)->Unit(benchmark::kMillisecond);

void BM_MatrixDeterminant(benchmark::State& state) {
  const int n = static_cast<int>(state.range(0));
  quv::TMatrix a;
  RandomMatrix(a, n, n, 4);
  for (auto _ : state) {
    benchmark::DoNotOptimize(a.Determinant());
  }
}
BENCHMARK(BM_MatrixDeterminant)->Arg(256)->Arg(512)->Unit(benchmark::kMillisecond);

void BM_InvertArray(benchmark::State& state) {
  const auto n = static_cast<std::size_t>(state.range(0));
  quv::SetRandSeed(5);
  quv::TDouble2DArray a(n, quv::TDoubleArray(n));
  for (auto& row : a) {
    for (double& x : row)
      x = 2.0 * quv::Random() - 1.0;
  }
  for (auto _ : state) {
    benchmark::DoNotOptimize(quv::InvertArray(a));
  }
}
BENCHMARK(BM_InvertArray)->Arg(300)->Unit(benchmark::kMillisecond);

void BM_CalcDistMatEuclid(benchmark::State& state) {
  quv::TMatrix data, dist;
  RandomMatrix(data, 20, 2000, 6);
  for (auto _ : state) {
    data.CalcDistMat(quv::dmEuclid, &dist);
    benchmark::DoNotOptimize(dist.GetVal(1, 2));
  }
}
BENCHMARK(BM_CalcDistMatEuclid)->Unit(benchmark::kMillisecond);

// The baseline of CalcDistMat: a plain double loop over row-major data into a flat matrix.
void BM_PlainDistMatEuclid(benchmark::State& state) {
  const std::size_t n = 2000, p = 20;
  quv::SetRandSeed(6);
  std::vector<double> x(n * p);
  for (double& v : x)
    v = 2.0 * quv::Random() - 1.0;
  std::vector<double> d(n * n);
  for (auto _ : state) {
    for (std::size_t i = 0; i < n; ++i) {
      for (std::size_t j = i + 1; j < n; ++j) {
        double s = 0.0;
        for (std::size_t k = 0; k < p; ++k) {
          const double t = x[i * p + k] - x[j * p + k];
          s += t * t;
        }
        d[i * n + j] = d[j * n + i] = std::sqrt(s);
      }
    }
    benchmark::DoNotOptimize(d.data());
  }
}
BENCHMARK(BM_PlainDistMatEuclid)->Unit(benchmark::kMillisecond);

#ifdef QUV_HAVE_EIGEN
void BM_EigenMultiply(benchmark::State& state) {
  const auto n = state.range(0);
  std::srand(1);
  const Eigen::MatrixXd a = Eigen::MatrixXd::Random(n, n);
  const Eigen::MatrixXd b = Eigen::MatrixXd::Random(n, n);
  Eigen::MatrixXd c(n, n);
  for (auto _ : state) {
    c.noalias() = a * b;
    benchmark::DoNotOptimize(c.data());
  }
}
BENCHMARK(BM_EigenMultiply)->Arg(256)->Arg(512)->Unit(benchmark::kMillisecond);

void BM_EigenInverse(benchmark::State& state) {
  const auto n = state.range(0);
  std::srand(3);
  Eigen::MatrixXd a = Eigen::MatrixXd::Random(n, n);
  for (auto _ : state) {
    a = Eigen::PartialPivLU<Eigen::MatrixXd>(a).inverse();
    benchmark::DoNotOptimize(a.data());
  }
}
BENCHMARK(BM_EigenInverse)->Arg(256)->Arg(300)->Arg(512)->Unit(benchmark::kMillisecond);

void BM_EigenDeterminant(benchmark::State& state) {
  const auto n = state.range(0);
  std::srand(4);
  const Eigen::MatrixXd a = Eigen::MatrixXd::Random(n, n);
  for (auto _ : state) {
    benchmark::DoNotOptimize(Eigen::PartialPivLU<Eigen::MatrixXd>(a).determinant());
  }
}
BENCHMARK(BM_EigenDeterminant)->Arg(256)->Arg(512)->Unit(benchmark::kMillisecond);
#endif

}  // namespace
