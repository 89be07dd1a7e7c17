#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>

#include "quv/openarrays/openarrays.h"

namespace quv {
namespace {

TDouble2DArray RandomSquare(std::size_t n, std::uint64_t seed) {
  SetRandSeed(seed);
  TDouble2DArray a(n, TDoubleArray(n));
  for (auto& row : a) {
    for (double& x : row)
      x = 2.0 * Random() - 1.0;
  }
  return a;
}

TDouble2DArray Hilbert(std::size_t n) {
  TDouble2DArray h(n, TDoubleArray(n));
  for (std::size_t i = 0; i < n; ++i) {
    for (std::size_t j = 0; j < n; ++j)
      h[i][j] = 1.0 / static_cast<double>(i + j + 1);
  }
  return h;
}

double Binomial(int n, int k) {
  double r = 1.0;
  for (int i = 1; i <= k; ++i)
    r = r * (n - k + i) / i;
  return r;
}

// The closed form of the inverse Hilbert matrix (all entries are integers), 1-based i, j.
double InverseHilbertEntry(int n, int i, int j) {
  const double sign = ((i + j) % 2 == 0) ? 1.0 : -1.0;
  const double c = Binomial(i + j - 2, i - 1);
  return sign * (i + j - 1) * Binomial(n + i - 1, n - j) * Binomial(n + j - 1, n - i) * c * c;
}

TDouble2DArray Product(const TDouble2DArray& a, const TDouble2DArray& b) {
  const std::size_t n = a.size();
  TDouble2DArray c(n, TDoubleArray(n, 0.0));
  for (std::size_t i = 0; i < n; ++i) {
    for (std::size_t j = 0; j < n; ++j) {
      long double s = 0.0L;
      for (std::size_t k = 0; k < n; ++k)
        s += static_cast<long double>(a[i][k]) * b[k][j];
      c[i][j] = static_cast<double>(s);
    }
  }
  return c;
}

double MaxDeviationFromIdentity(const TDouble2DArray& m) {
  double worst = 0.0;
  for (std::size_t i = 0; i < m.size(); ++i) {
    for (std::size_t j = 0; j < m.size(); ++j) {
      worst = std::max(worst, std::abs(m[i][j] - (i == j ? 1.0 : 0.0)));
    }
  }
  return worst;
}

TEST(InvertArray, RandomMatricesGiveTheIdentityOnBothSides) {
  for (std::size_t n : {1u, 2u, 7u, 40u}) {
    const TDouble2DArray a = RandomSquare(n, 17 + n);
    TDouble2DArray inv = a;
    ASSERT_EQ(InvertArray(inv), kLinAlgOK) << n;
    EXPECT_LT(MaxDeviationFromIdentity(Product(a, inv)), 1e-11) << n;
    EXPECT_LT(MaxDeviationFromIdentity(Product(inv, a)), 1e-11) << n;
  }
}

TEST(InvertArray, HilbertMatrixMatchesItsClosedFormInverse) {
  const int n = 8;  // condition number about 1.5e10
  TDouble2DArray inv = Hilbert(n);
  ASSERT_EQ(InvertArray(inv), kLinAlgOK);
  for (int i = 1; i <= n; ++i) {
    for (int j = 1; j <= n; ++j) {
      const double exact = InverseHilbertEntry(n, i, j);
      EXPECT_NEAR(inv[i - 1][j - 1], exact, 1e-5 * std::abs(exact)) << i << "," << j;
    }
  }
  EXPECT_DOUBLE_EQ(InverseHilbertEntry(3, 2, 2), 192.0);  // check of the formula itself
}

TEST(InvertArray, BadInputIsReportedAndLeavesTheArrayAlone) {
  TDouble2DArray empty;
  EXPECT_EQ(InvertArray(empty), kLinAlgEmpty);
  TDouble2DArray emptyRow(2);
  EXPECT_EQ(InvertArray(emptyRow), kLinAlgEmpty);
  TDouble2DArray ragged = {{1, 2}, {3}};
  EXPECT_EQ(InvertArray(ragged), kLinAlgNotSquare);
  TDouble2DArray wide = {{1, 2, 3}, {4, 5, 6}};
  EXPECT_EQ(InvertArray(wide), kLinAlgNotSquare);

  TDouble2DArray singular = {{1, 2, 3}, {4, 5, 6}, {7, 8, 9}};
  const TDouble2DArray before = singular;
  EXPECT_EQ(InvertArray(singular), kLinAlgSingular);
  EXPECT_EQ(singular, before);
  TDouble2DArray zeros(3, TDoubleArray(3, 0.0));
  EXPECT_EQ(InvertArray(zeros), kLinAlgSingular);
  TDouble2DArray withNaN = {{1, NAN}, {0, 1}};
  EXPECT_EQ(InvertArray(withNaN), kLinAlgSingular);

  // Scale alone never makes a matrix singular.
  TDouble2DArray tiny = {{1e-300, 0}, {0, 2e-300}};
  ASSERT_EQ(InvertArray(tiny), kLinAlgOK);
  EXPECT_DOUBLE_EQ(tiny[1][1], 0.5e300);
}

void ExpectLUReproducesPA(const TDouble2DArray& a, double tol) {
  TDouble2DArray l, u;
  TIntArray perm;
  ASSERT_EQ(LUdecomposition(a, l, u, perm), kLinAlgOK);
  const std::size_t n = a.size();
  ASSERT_EQ(l.size(), n);
  ASSERT_EQ(u.size(), n);
  for (std::size_t i = 0; i < n; ++i) {
    for (std::size_t j = i + 1; j < n; ++j) {
      EXPECT_EQ(l[i][j], 0.0);
      EXPECT_EQ(u[j][i], 0.0);
    }
    // Partial pivoting keeps every multiplier at most 1 in magnitude.
    for (std::size_t j = 0; j < i; ++j)
      EXPECT_LE(std::abs(l[i][j]), 1.0);
    EXPECT_EQ(std::abs(l[i][i]), 1.0);
  }
  const TDouble2DArray lu = Product(l, u);
  for (std::size_t i = 0; i < n; ++i) {
    for (std::size_t j = 0; j < n; ++j) {
      EXPECT_NEAR(lu[i][j], a[perm[i]][j], tol) << i << "," << j;
    }
  }
}

TEST(LUdecomposition, ReproducesThePermutedMatrix) {
  ExpectLUReproducesPA(RandomSquare(9, 5), 1e-14);
  ExpectLUReproducesPA(RandomSquare(50, 6), 1e-13);
  ExpectLUReproducesPA(Hilbert(10), 1e-15);
}

TEST(LUdecomposition, DiagonalOfUpperFactorCarriesTheDeterminantSign) {
  auto diagonalProduct = [](const TDouble2DArray& a) {
    TDouble2DArray l, u;
    EXPECT_EQ(LUdecomposition(a, l, u), kLinAlgOK);
    long double p = 1.0L;
    for (std::size_t i = 0; i < u.size(); ++i)
      p *= u[i][i];
    return static_cast<double>(p);
  };
  EXPECT_DOUBLE_EQ(diagonalProduct({{0, 1}, {1, 0}}), -1.0);                  // one exchange
  EXPECT_DOUBLE_EQ(diagonalProduct({{0, 1, 0}, {0, 0, 1}, {1, 0, 0}}), 1.0);  // two
  // det by cofactor expansion: 2(0*1-3*1) - 1(1*1-3*4) + 5(1*1-0*4) = -6 + 11 + 5 = 10
  EXPECT_NEAR(diagonalProduct({{2, 1, 5}, {1, 0, 3}, {4, 1, 1}}), 10.0, 1e-13);
  EXPECT_NEAR(diagonalProduct({{1, 2}, {3, 4}}), -2.0, 1e-15);
  EXPECT_DOUBLE_EQ(diagonalProduct({{-4.5}}), -4.5);
  // det of the 4x4 Hilbert matrix is 1/6048000.
  EXPECT_NEAR(diagonalProduct(Hilbert(4)), 1.0 / 6048000.0, 1e-12 / 6048000.0);
}

TEST(LUdecomposition, SingularOrBadInputLeavesTheFactorsAlone) {
  TDouble2DArray l = {{7}}, u = {{8}};
  EXPECT_EQ(LUdecomposition({{1, 2}, {2, 4}}, l, u), kLinAlgSingular);
  EXPECT_EQ(LUdecomposition({{1, 2, 3}, {4, 5, 6}, {7, 8, 9}}, l, u), kLinAlgSingular);
  EXPECT_EQ(LUdecomposition({{1, 2}}, l, u), kLinAlgNotSquare);
  EXPECT_EQ(LUdecomposition({}, l, u), kLinAlgEmpty);
  EXPECT_EQ(l, TDouble2DArray{{7}});
  EXPECT_EQ(u, TDouble2DArray{{8}});
}

}  // namespace
}  // namespace quv
