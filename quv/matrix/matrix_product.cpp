#include "quv/matrix/matrix_product.h"

#include <algorithm>
#include <cmath>

#if defined(__x86_64__) && (defined(__GNUC__) || defined(__clang__))
#define QUV_PRODUCT_AVX2 1
#include <immintrin.h>
#endif

namespace quv::detail {
namespace {

// ---- long double accumulation --------------------------------------------------------------

Extended DotExtended(const double* x, const double* y, std::size_t n) {
  Extended s0 = 0.0L;
  Extended s1 = 0.0L;
  std::size_t k = 0;
  for (; k + 1 < n; k += 2) {
    s0 += static_cast<Extended>(x[k]) * y[k];
    s1 += static_cast<Extended>(x[k + 1]) * y[k + 1];
  }
  if (k < n) s0 += static_cast<Extended>(x[k]) * y[k];
  return s0 + s1;
}

// Two rows against one column: three values and two accumulators fit the x87 register stack.
void BlockExtended(const double* a0, const double* a1, const double* b, std::size_t n, double& r0,
                   double& r1) {
  Extended s0 = 0.0L;
  Extended s1 = 0.0L;
  for (std::size_t k = 0; k < n; ++k) {
    const Extended y = b[k];
    s0 += a0[k] * y;
    s1 += a1[k] * y;
  }
  r0 = static_cast<double>(s0);
  r1 = static_cast<double>(s1);
}

#ifdef QUV_PRODUCT_AVX2

// ---- compensated accumulation with AVX2 and FMA --------------------------------------------

// A running double-double sum of four lanes: value s and the accumulated errors c.
struct Lanes {
  __m256d s;
  __m256d c;
};

__attribute__((target("avx2,fma"))) inline void AddProduct(Lanes& acc, __m256d x, __m256d y) {
  const __m256d p = _mm256_mul_pd(x, y);
  const __m256d e = _mm256_fmsub_pd(x, y, p);  // x*y - p exactly
  const __m256d t = _mm256_add_pd(acc.s, p);   // TwoSum(s, p)
  const __m256d z = _mm256_sub_pd(t, acc.s);
  const __m256d q = _mm256_add_pd(_mm256_sub_pd(acc.s, _mm256_sub_pd(t, z)), _mm256_sub_pd(p, z));
  acc.s = t;
  acc.c = _mm256_add_pd(acc.c, _mm256_add_pd(q, e));
}

// Scalar Dot2 state, used for the tail and to fold the lanes together.
struct Scalar2 {
  double s = 0.0;
  double c = 0.0;
  __attribute__((target("avx2,fma"))) void AddSum(double v) {
    const double t = s + v;
    const double z = t - s;
    c += (s - (t - z)) + (v - z);
    s = t;
  }
  __attribute__((target("avx2,fma"))) void AddProduct(double x, double y) {
    const double p = x * y;
    c += __builtin_fma(x, y, -p);
    AddSum(p);
  }
};

__attribute__((target("avx2,fma"))) double Finish(const Lanes& acc, const double* x,
                                                  const double* y, std::size_t from,
                                                  std::size_t n) {
  alignas(32) double s[4];
  alignas(32) double c[4];
  _mm256_store_pd(s, acc.s);
  _mm256_store_pd(c, acc.c);
  Scalar2 total;
  for (int l = 0; l < 4; ++l)
    total.AddSum(s[l]);
  for (std::size_t k = from; k < n; ++k)
    total.AddProduct(x[k], y[k]);
  return total.s + (total.c + (c[0] + c[1] + c[2] + c[3]));
}

__attribute__((target("avx2,fma"))) double DotFma(const double* x, const double* y, std::size_t n) {
  Lanes acc{_mm256_setzero_pd(), _mm256_setzero_pd()};
  std::size_t k = 0;
  for (; k + 4 <= n; k += 4)
    AddProduct(acc, _mm256_loadu_pd(x + k), _mm256_loadu_pd(y + k));
  return Finish(acc, x, y, k, n);
}

// Two rows against two columns: four independent compensated sums share the loads.
__attribute__((target("avx2,fma"))) void BlockFma(const double* a0, const double* a1,
                                                  const double* b0, const double* b1, std::size_t n,
                                                  double* out) {
  Lanes s00{_mm256_setzero_pd(), _mm256_setzero_pd()};
  Lanes s01 = s00, s10 = s00, s11 = s00;
  std::size_t k = 0;
  for (; k + 4 <= n; k += 4) {
    const __m256d x0 = _mm256_loadu_pd(a0 + k);
    const __m256d x1 = _mm256_loadu_pd(a1 + k);
    const __m256d y0 = _mm256_loadu_pd(b0 + k);
    const __m256d y1 = _mm256_loadu_pd(b1 + k);
    AddProduct(s00, x0, y0);
    AddProduct(s10, x1, y0);
    AddProduct(s01, x0, y1);
    AddProduct(s11, x1, y1);
  }
  out[0] = Finish(s00, a0, b0, k, n);
  out[1] = Finish(s10, a1, b0, k, n);
  out[2] = Finish(s01, a0, b1, k, n);
  out[3] = Finish(s11, a1, b1, k, n);
}

bool extendedOnly = false;

bool HaveFma() {
  static const bool have = __builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma");
  return have && !extendedOnly;
}

#else

bool HaveFma() {
  return false;
}
double DotFma(const double*, const double*, std::size_t) {
  return 0.0;
}
void BlockFma(const double*, const double*, const double*, const double*, std::size_t, double*) {}

#endif

}  // namespace

void UseExtendedKernelOnly(bool only) {
  extendedOnly = only;
}

double AccurateDot(const double* x, const double* y, std::size_t n) {
  return HaveFma() ? DotFma(x, y, n) : static_cast<double>(DotExtended(x, y, n));
}

bool AccurateProduct(const TDouble2DArray& left, const TDouble2DArray& right,
                     TDouble2DArray& result, const std::function<bool(std::size_t)>& step) {
  const std::size_t m = left.size();
  const std::size_t nres = right.size();
  const std::size_t kn = m == 0 ? 0 : left.front().size();
  const bool fma = HaveFma();
  result.assign(nres, TDoubleArray(m));
  // A block of left rows stays in cache while every column of right passes by it.
  for (std::size_t r0 = 0; r0 < m; r0 += kProductRowBlock) {
    const std::size_t r1 = std::min(m, r0 + kProductRowBlock);
    for (std::size_t c = 0; c < nres; c += 2) {
      const bool pair = c + 1 < nres;
      const double* b0 = right[c].data();
      const double* b1 = pair ? right[c + 1].data() : b0;
      std::size_t r = r0;
      for (; r + 1 < r1; r += 2) {
        const double* a0 = left[r].data();
        const double* a1 = left[r + 1].data();
        if (fma) {
          double out[4];
          BlockFma(a0, a1, b0, b1, kn, out);
          result[c][r] = out[0];
          result[c][r + 1] = out[1];
          if (pair) {
            result[c + 1][r] = out[2];
            result[c + 1][r + 1] = out[3];
          }
        } else {
          BlockExtended(a0, a1, b0, kn, result[c][r], result[c][r + 1]);
          if (pair) BlockExtended(a0, a1, b1, kn, result[c + 1][r], result[c + 1][r + 1]);
        }
      }
      if (r < r1) {
        result[c][r] = AccurateDot(left[r].data(), b0, kn);
        if (pair) result[c + 1][r] = AccurateDot(left[r].data(), b1, kn);
      }
    }
    if (step(r1)) return false;
  }
  return true;
}

}  // namespace quv::detail
