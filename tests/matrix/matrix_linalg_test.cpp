#include <gtest/gtest.h>

#include <cmath>

#include "quv/matrix/matrix.h"
#include "quv/matrix/matrix_product.h"

namespace quv {
namespace {

// Builds a matrix from rows given the way one writes a matrix down.
void SetRows(TMatrix& m, const std::vector<std::vector<double>>& rows) {
  m.Resize(static_cast<std::int32_t>(rows.front().size()), static_cast<std::int32_t>(rows.size()));
  for (std::size_t r = 0; r < rows.size(); ++r) {
    for (std::size_t c = 0; c < rows[r].size(); ++c) {
      m.SetVal(static_cast<std::int32_t>(c + 1), static_cast<std::int32_t>(r + 1), rows[r][c]);
    }
  }
}

void FillRandom(TMatrix& m, int nc, int nr, std::uint64_t seed) {
  SetRandSeed(seed);
  m.Resize(nc, nr);
  m.FillRandomUniform(-1.0, 1.0);
}

// The textbook triple loop, element by element through GetVal.
double NaiveProductElem(const TMatrix& a, const TMatrix& b, int c, int r) {
  double s = 0.0;
  for (int k = 1; k <= a.NrOfColumns(); ++k)
    s += a.GetVal(k, r) * b.GetVal(c, k);
  return s;
}

TEST(MatrixProducts, AgreeWithTheTripleLoop) {
  TMatrix a, b, res;
  FillRandom(a, 7, 5, 1);  // 5 rows x 7 columns
  FillRandom(b, 3, 7, 2);  // 7 rows x 3 columns
  int changes = 0, resizes = 0;
  res.OnChange = [&](TComponent*) { ++changes; };
  res.OnResize = [&](TComponent*) { ++resizes; };
  ASSERT_TRUE(a.Multiply(&b, &res));
  ASSERT_EQ(res.NrOfColumns(), 3);
  ASSERT_EQ(res.NrOfRows(), 5);
  EXPECT_EQ(resizes, 1);
  EXPECT_EQ(changes, 1 + 15);  // resize, then SetVal per element
  for (int c = 1; c <= 3; ++c) {
    for (int r = 1; r <= 5; ++r)
      EXPECT_NEAR(res.GetVal(c, r), NaiveProductElem(a, b, c, r), 1e-14);
  }

  TMatrix bt, viaT;
  bt.Assign(b);
  bt.Transpose();
  ASSERT_TRUE(a.MultiplyTransposed(&bt, &viaT));
  EXPECT_EQ(viaT.CRCofData(), res.CRCofData());  // same sums in the same order

  TMatrix at, viaTA;
  at.Assign(a);
  at.Transpose();
  ASSERT_TRUE(at.TransposeAndMultiply(&b, &viaTA));
  EXPECT_EQ(viaTA.CRCofData(), res.CRCofData());

  // Multiplying into one of the factors reads the factors before writing.
  TMatrix sq, expect;
  FillRandom(sq, 4, 4, 3);
  ASSERT_TRUE(sq.Multiply(&sq, &expect));
  ASSERT_TRUE(sq.Square(&sq));
  EXPECT_EQ(sq.CRCofData(), expect.CRCofData());
}

TEST(MatrixProducts, ExtendedAccumulationKeepsSmallTerms) {
  TMatrix a, b, res;
  SetRows(a, {{1e16, 1.0, -1e16, 1.0}});
  SetRows(b, {{1.0}, {1.0}, {1.0}, {1.0}});
  ASSERT_TRUE(a.Multiply(&b, &res));
  EXPECT_EQ(res.GetVal(1, 1), 2.0);  // a double accumulator would give 1 or 0
}

class MatrixProductKernels : public ::testing::TestWithParam<bool> {
 protected:
  void SetUp() override { detail::UseExtendedKernelOnly(GetParam()); }
  void TearDown() override { detail::UseExtendedKernelOnly(false); }
};
INSTANTIATE_TEST_SUITE_P(BothKernels, MatrixProductKernels, ::testing::Values(false, true));

TEST_P(MatrixProductKernels, LongCancellingDotProductsStayExact) {
  // 37 terms: nine groups (1e17, 1, -1e17, 1) and a last 1 exercise the vector lanes, their
  // folding and the scalar tail; a double accumulator loses every 1 next to 1e17.
  TMatrix a, b, res;
  a.Resize(37, 2);
  b.Resize(1, 37);
  for (int k = 1; k <= 37; ++k) {
    const int phase = (k - 1) % 4;
    a.SetVal(k, 1, k == 37 ? 1.0 : phase == 0 ? 1e17 : phase == 2 ? -1e17 : 1.0);
    a.SetVal(k, 2, 1.0 / k);
    b.SetVal(1, k, 1.0);
  }
  ASSERT_TRUE(a.Multiply(&b, &res));
  EXPECT_EQ(res.GetVal(1, 1), 19.0);
  long double h = 0.0L;
  for (int k = 1; k <= 37; ++k)
    h += 1.0L / k;
  EXPECT_NEAR(res.GetVal(1, 2), static_cast<double>(h), 4e-16 * static_cast<double>(h));

  // Odd sizes in every dimension reach the single-row and single-column edges of the blocks.
  TMatrix x, y, xy;
  SetRandSeed(77);
  x.Resize(9, 5);
  y.Resize(3, 9);
  x.FillRandomUniform(-1.0, 1.0);
  y.FillRandomUniform(-1.0, 1.0);
  ASSERT_TRUE(x.Multiply(&y, &xy));
  for (int c = 1; c <= 3; ++c) {
    for (int r = 1; r <= 5; ++r) {
      long double s = 0.0L;
      for (int k = 1; k <= 9; ++k)
        s += static_cast<long double>(x.GetVal(k, r)) * y.GetVal(c, k);
      EXPECT_NEAR(xy.GetVal(c, r), static_cast<double>(s), 1e-16) << c << "," << r;
    }
  }
}

TEST(MatrixProducts, MismatchesReturnFalseAndTouchNothing) {
  TMatrix a, b, res;
  FillRandom(a, 3, 2, 4);
  FillRandom(b, 2, 2, 5);
  res.Resize(5, 5);
  res.Fill(9.0);
  int events = 0;
  res.OnChange = [&](TComponent*) { ++events; };
  EXPECT_FALSE(a.Multiply(&b, &res));
  EXPECT_FALSE(a.Multiply(nullptr, &res));
  EXPECT_FALSE(a.Multiply(&b, nullptr));
  EXPECT_FALSE(a.MultiplyTransposed(&b, &res));
  EXPECT_FALSE(b.TransposeAndMultiply(&res, &res));
  EXPECT_FALSE(a.EMult(&b, &res));
  EXPECT_FALSE(a.Add(&b));
  EXPECT_FALSE(a.Subtract(&b));
  EXPECT_FALSE(a.Square(&res));
  EXPECT_EQ(events, 0);
  EXPECT_EQ(res.NrOfColumns(), 5);
  EXPECT_EQ(res.GetVal(5, 5), 9.0);
}

TEST(MatrixProducts, ElementwiseAndScalarOperations) {
  TMatrix a, b, res;
  SetRows(a, {{1, 2}, {3, 4}});
  SetRows(b, {{5, 6}, {7, 8}});
  ASSERT_TRUE(a.EMult(&b, &res));
  EXPECT_EQ(res.GetVal(2, 2), 32.0);
  EXPECT_EQ(res.GetVal(1, 2), 21.0);
  ASSERT_TRUE(a.Add(&b));
  EXPECT_EQ(a.GetVal(2, 1), 8.0);
  ASSERT_TRUE(a.Subtract(&b));
  EXPECT_EQ(a.GetVal(2, 1), 2.0);
  a.SMult(-2.0);
  a.SAdd(1.0);
  EXPECT_EQ(a.GetVal(2, 2), -7.0);

  TMatrix t;
  SetRows(t, {{1, 2, 3}, {4, 5, 6}});
  int resizes = 0;
  t.OnResize = [&](TComponent*) { ++resizes; };
  t.Transpose();
  EXPECT_EQ(t.NrOfColumns(), 2);
  EXPECT_EQ(t.NrOfRows(), 3);
  EXPECT_EQ(t.GetVal(2, 3), 6.0);
  EXPECT_EQ(t.GetVal(1, 3), 3.0);
  EXPECT_EQ(resizes, 1);
}

TEST(MatrixInverse, InvertDeterminantAndLU) {
  TMatrix a, inv, prod;
  FillRandom(a, 6, 6, 11);
  inv.Assign(a);
  ASSERT_TRUE(inv.Invert());
  ASSERT_TRUE(a.Multiply(&inv, &prod));
  for (int c = 1; c <= 6; ++c) {
    for (int r = 1; r <= 6; ++r)
      EXPECT_NEAR(prod.GetVal(c, r), c == r ? 1.0 : 0.0, 1e-12);
  }

  // det by cofactors: 2(0*1-3*1) - 1(1*1-3*4) + 5(1*1-0*4) = 10; one row exchange inside.
  TMatrix d;
  SetRows(d, {{2, 1, 5}, {1, 0, 3}, {4, 1, 1}});
  EXPECT_NEAR(d.Determinant(), 10.0, 1e-13);
  SetRows(d, {{0, 1}, {1, 0}});
  EXPECT_DOUBLE_EQ(d.Determinant(), -1.0);
  SetRows(d, {{0, 2, 0}, {3, 0, 0}, {0, 0, 4}});
  EXPECT_DOUBLE_EQ(d.Determinant(), -24.0);
  SetRows(d, {{-7.25}});
  EXPECT_EQ(d.Determinant(), -7.25);
  // The determinant is multiplicative: det(A inv(A)) = 1 up to round-off.
  EXPECT_NEAR(a.Determinant() * inv.Determinant(), 1.0, 1e-12);

  TMatrix l, u, lu;
  ASSERT_TRUE(a.LUdecomposition(&l, &u));
  for (int c = 1; c <= 6; ++c) {
    for (int r = c + 1; r <= 6; ++r)
      EXPECT_EQ(u.GetVal(c, r), 0.0);  // upper triangular
  }
  ASSERT_TRUE(l.Multiply(&u, &lu));
  for (int c = 1; c <= 6; ++c) {
    for (int r = 1; r <= 6; ++r)
      EXPECT_NEAR(lu.GetVal(c, r), a.GetVal(c, r), 1e-14);
  }
}

TEST(MatrixInverse, SingularAndNonSquareAreRefusedWithoutChanges) {
  TMatrix s;
  SetRows(s, {{1, 2, 3}, {4, 5, 6}, {7, 8, 9}});
  const std::string before = s.CRCofData();
  int events = 0;
  s.OnChange = [&](TComponent*) { ++events; };
  EXPECT_FALSE(s.Invert());
  EXPECT_EQ(s.CRCofData(), before);
  EXPECT_EQ(s.Determinant(), 0.0);
  TMatrix l, u;
  l.Resize(2, 2);
  EXPECT_FALSE(s.LUdecomposition(&l, &u));
  EXPECT_EQ(l.NrOfColumns(), 2);
  EXPECT_FALSE(s.LUdecomposition(&l, nullptr));
  EXPECT_EQ(events, 0);

  TMatrix wide;
  wide.Resize(3, 2);
  wide.Fill(1.0);
  EXPECT_FALSE(wide.Invert());
  EXPECT_EQ(wide.Determinant(), 0.0);
  EXPECT_FALSE(wide.LUdecomposition(&l, &u));
}

TEST(MatrixCholesky, PositiveDefiniteFactorAndDestructiveEffect) {
  // A = L L' with L = [[2,0,0],[1,3,0],[-1,2,1]]
  TMatrix a, lower;
  SetRows(a, {{4, 2, -2}, {2, 10, 5}, {-2, 5, 6}});
  ASSERT_TRUE(a.CholeskyDecomp(&lower));
  const double expected[3][3] = {{2, 0, 0}, {1, 3, 0}, {-1, 2, 1}};
  for (int r = 1; r <= 3; ++r) {
    for (int c = 1; c <= 3; ++c)
      EXPECT_NEAR(lower.GetVal(c, r), expected[r - 1][c - 1], 1e-15);
  }
  // The factor now sits above the diagonal of A (element (j, i), j > i); the lower triangle,
  // diagonal included, still holds the input.
  EXPECT_NEAR(a.GetVal(2, 1), 1.0, 1e-15);
  EXPECT_NEAR(a.GetVal(3, 1), -1.0, 1e-15);
  EXPECT_NEAR(a.GetVal(3, 2), 2.0, 1e-15);
  EXPECT_EQ(a.GetVal(1, 1), 4.0);
  EXPECT_EQ(a.GetVal(1, 3), -2.0);

  // A Lower of the right size keeps what it held above the diagonal.
  TMatrix b, kept;
  SetRows(b, {{4, 2}, {2, 10}});
  kept.Resize(2, 2);
  kept.Fill(7.0);
  ASSERT_TRUE(b.CholeskyDecomp(&kept));
  EXPECT_EQ(kept.GetVal(2, 1), 7.0);
  EXPECT_EQ(kept.GetVal(1, 2), 1.0);
}

TEST(MatrixCholesky, NonDefiniteOrNonSquareInput) {
  TMatrix a, lower;
  SetRows(a, {{1, 2}, {2, 1}});  // eigenvalues 3 and -1
  EXPECT_FALSE(a.CholeskyDecomp(&lower));
  EXPECT_EQ(lower.NrOfColumns(), 2);  // still filled
  EXPECT_EQ(lower.GetVal(1, 1), 1.0);
  EXPECT_EQ(lower.GetVal(1, 2), 2.0);
  EXPECT_EQ(lower.GetVal(2, 2), 0.0);  // the failed pivot
  EXPECT_EQ(a.GetVal(2, 1), 2.0);      // factor entry written into A

  TMatrix z;
  SetRows(z, {{0, 0}, {0, 1}});
  EXPECT_FALSE(z.CholeskyDecomp(&lower));
  EXPECT_TRUE(std::isfinite(lower.GetVal(1, 2)));

  TMatrix wide, untouched;
  SetRows(wide, {{1, 2, 3}});
  untouched.Resize(4, 4);
  EXPECT_FALSE(wide.CholeskyDecomp(&untouched));
  EXPECT_EQ(untouched.NrOfColumns(), 4);
  EXPECT_EQ(wide.GetVal(2, 1), 2.0);
}

// Q = I - 2 v v' / v'v, an orthogonal matrix.
std::vector<std::vector<double>> Householder(const std::vector<double>& v) {
  double vv = 0.0;
  for (double x : v)
    vv += x * x;
  std::vector<std::vector<double>> q(v.size(), std::vector<double>(v.size()));
  for (std::size_t i = 0; i < v.size(); ++i) {
    for (std::size_t j = 0; j < v.size(); ++j)
      q[i][j] = (i == j ? 1.0 : 0.0) - 2.0 * v[i] * v[j] / vv;
  }
  return q;
}

TEST(MatrixNorm, AllFourNormsOnKnownMatrices) {
  TMatrix m;
  SetRows(m, {{-3}});
  EXPECT_EQ(m.Norm(ntColwise), 3.0);
  EXPECT_EQ(m.Norm(ntSpectral), 3.0);
  SetRows(m, {{1, 1}, {1, 1}});
  EXPECT_DOUBLE_EQ(m.Norm(ntFrobenius), 2.0);
  EXPECT_NEAR(m.Norm(ntSpectral), 2.0, 1e-15);
  SetRows(m, {{1, -2}, {-3, 4}, {5, 0.5}});
  EXPECT_EQ(m.Norm(ntColwise), 9.0);
  EXPECT_EQ(m.Norm(ntRowwise), 7.0);
  EXPECT_DOUBLE_EQ(m.Norm(ntFrobenius), std::sqrt(55.25));
}

TEST(MatrixNorm, SpectralNormIsTheLargestSingularValue) {
  // A = U diag(s) V' with orthogonal U (5 x 5) and V (3 x 3): its singular values are s.
  const auto u = Householder({1, -2, 0.5, 3, 1});
  const auto v = Householder({2, 1, -1});
  const double s[3] = {0.5, 7.25, 3.0};
  std::vector<std::vector<double>> rows(5, std::vector<double>(3, 0.0));
  for (int i = 0; i < 5; ++i) {
    for (int j = 0; j < 3; ++j) {
      for (int k = 0; k < 3; ++k)
        rows[i][j] += u[i][k] * s[k] * v[j][k];
    }
  }
  TMatrix tall, wide;
  SetRows(tall, rows);
  EXPECT_NEAR(tall.Norm(ntSpectral), 7.25, 1e-13);
  wide.Assign(tall);
  wide.Transpose();
  EXPECT_NEAR(wide.Norm(ntSpectral), 7.25, 1e-13);

  // Random matrices: against the power iteration on A'A, an independent method.
  for (auto [nc, nr] : {std::pair{5, 7}, {7, 5}, {6, 6}}) {
    TMatrix a, ata;
    FillRandom(a, nc, nr, 50 + nc);
    ASSERT_TRUE(a.TransposeAndMultiply(&a, &ata));
    TVector x, y;
    x.Resize(nc);
    x.Fill(1.0);
    double lambda = 0.0;
    for (int it = 0; it < 2000; ++it) {
      ata.Multiply(&x, &y);
      lambda = y.CalcVecLeng() / x.CalcVecLeng();
      x.Clone(y);
      x.SetVecLeng(1.0);
    }
    EXPECT_NEAR(a.Norm(ntSpectral), std::sqrt(lambda), 1e-10) << nc << "x" << nr;
  }

  // A rank-deficient matrix still converges.
  TMatrix r1;
  SetRows(r1, {{1, 2, 3}, {2, 4, 6}, {3, 6, 9}});
  EXPECT_NEAR(r1.Norm(ntSpectral), 14.0, 1e-13);  // u u' with |u|^2 = 14
}

TEST(MatrixNorm, SpectralNormReportsProgressAndHonoursAbort) {
  TMatrix m;
  FillRandom(m, 8, 10, 21);
  int steps = 0;
  MathFeedBackProc = [&](double) { ++steps; };
  const double full = m.Norm(ntSpectral);
  EXPECT_EQ(steps, 8);  // one step per singular value
  MathFeedBackProc = [&](double) { AbortMathProc = true; };
  EXPECT_EQ(m.Norm(ntSpectral), 0.0);
  MathFeedBackProc = nullptr;
  AbortMathProc = false;
  EXPECT_GT(full, 0.0);
  // Spectral norm lies between Frobenius / sqrt(rank) and Frobenius.
  EXPECT_LE(full, m.Norm(ntFrobenius));
  EXPECT_GE(full, m.Norm(ntFrobenius) / std::sqrt(8.0));
}

TEST(MatrixLinalg, BalanceHatMatrixAndSquare) {
  TMatrix a;
  SetRows(a, {{1, 1e4, 0}, {1e-4, 1, 1e3}, {0, 1e-3, 1}});
  const double traceBefore = a.Trace();
  const double detBefore = a.Determinant();
  TDoubleArray scale;
  ASSERT_TRUE(a.Balance(scale));
  ASSERT_EQ(scale.size(), 3u);
  // A similarity transform keeps trace and determinant, and balancing evens the norms.
  EXPECT_NEAR(a.Trace(), traceBefore, 1e-12);
  EXPECT_NEAR(a.Determinant(), detBefore, 1e-9 * std::abs(detBefore));
  EXPECT_LT(a.Norm(ntColwise), 100.0);
  for (double f : scale)
    EXPECT_EQ(std::exp2(std::round(std::log2(f))), f);  // powers of 2

  // The hat matrix of a design is a projection: symmetric, idempotent, trace = columns.
  TMatrix x, hat, hh;
  FillRandom(x, 3, 8, 31);
  ASSERT_TRUE(x.CalcHatMatrix(&hat));
  ASSERT_EQ(hat.NrOfColumns(), 8);
  EXPECT_NEAR(hat.Trace(), 3.0, 1e-12);
  ASSERT_TRUE(hat.Multiply(&hat, &hh));
  for (int c = 1; c <= 8; ++c) {
    for (int r = 1; r <= 8; ++r) {
      EXPECT_NEAR(hh.GetVal(c, r), hat.GetVal(c, r), 1e-12);
      EXPECT_NEAR(hat.GetVal(r, c), hat.GetVal(c, r), 1e-12);
    }
  }
  TMatrix collinear;
  SetRows(collinear, {{1, 2}, {2, 4}, {3, 6}});
  EXPECT_FALSE(collinear.CalcHatMatrix(&hat));
}

TEST(MatrixProducts, ProgressPerRowBlockAndAbort) {
  TMatrix a, b, res;
  FillRandom(a, 4, 70, 41);  // 70 result rows: blocks end at rows 32, 64 and 70
  FillRandom(b, 5, 4, 42);
  std::vector<int> percents;
  a.OnPercentDone = [&](TComponent*, std::int32_t p) { percents.push_back(p); };
  ASSERT_TRUE(a.Multiply(&b, &res));
  EXPECT_EQ(percents, (std::vector<int>{45, 91, 100}));
  MathFeedBackProc = [](double) { AbortMathProc = true; };
  TMatrix untouched;
  EXPECT_FALSE(a.Multiply(&b, &untouched));
  MathFeedBackProc = nullptr;
  AbortMathProc = false;
  EXPECT_EQ(untouched.NrOfColumns(), 1);
}

}  // namespace
}  // namespace quv
