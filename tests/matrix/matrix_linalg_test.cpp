#include <gtest/gtest.h>

#include <cmath>

#include "matrix/matrix_test_util.h"
#include "quv/matrix/matrix_product.h"

namespace quv::test {
namespace {

// Expects want = a x b, element by element, against the textbook loop in long double.
void ExpectProduct(const TMatrix& a, const TMatrix& b, const TMatrix& want, double tol) {
  ASSERT_EQ(Dims(want), std::pair(b.NrOfColumns(), a.NrOfRows()));
  for (int c = 1; c <= want.NrOfColumns(); ++c) {
    for (int r = 1; r <= want.NrOfRows(); ++r) {
      long double s = 0.0L;
      for (int k = 1; k <= a.NrOfColumns(); ++k)
        s += static_cast<long double>(a.GetVal(k, r)) * b.GetVal(c, k);
      EXPECT_NEAR(want.GetVal(c, r), static_cast<double>(s), tol) << c << "," << r;
    }
  }
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
  TMatrix a, b, res, x, y, xy;
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
  const double h = 4.2015862238216659;  // sum of 1/k, k = 1..37
  EXPECT_NEAR(res.GetVal(1, 2), h, 4e-16 * h);
  // Odd sizes in every dimension reach the single-row and single-column edges of the blocks.
  FillRandom(x, 9, 5, 77);
  FillRandom(y, 3, 9, 78);
  ASSERT_TRUE(x.Multiply(&y, &xy));
  ExpectProduct(x, y, xy, 1e-16);
}

TEST(MatrixProducts, EveryFormAgreesSizesTheResultAndReportsProgress) {
  TMatrix a, b, res, bt, viaT, at, viaTA, sq, expect;
  FillRandom(a, 7, 5, 1);  // 5 rows x 7 columns
  FillRandom(b, 3, 7, 2);  // 7 rows x 3 columns
  EventLog log(res);
  ASSERT_TRUE(a.Multiply(&b, &res));
  EXPECT_EQ(log.Counts(), std::pair(1 + 15, 1));  // resize, then SetVal per element
  // The transposed forms make the same sums in the same order.
  bt.Assign(b);
  bt.Transpose();
  ASSERT_TRUE(a.MultiplyTransposed(&bt, &viaT));
  EXPECT_EQ(viaT.CRCofData(), res.CRCofData());
  at.Assign(a);
  at.Transpose();
  ASSERT_TRUE(at.TransposeAndMultiply(&b, &viaTA));
  EXPECT_EQ(viaTA.CRCofData(), res.CRCofData());
  // Multiplying into one of the factors reads the factors before writing.
  FillRandom(sq, 4, 4, 3);
  ASSERT_TRUE(sq.Multiply(&sq, &expect));
  ASSERT_TRUE(sq.Square(&sq));
  EXPECT_EQ(sq.CRCofData(), expect.CRCofData());

  // Progress per block of 32 result rows: 70 rows end blocks at 32, 64 and 70. An abort leaves
  // the result untouched.
  FillRandom(a, 4, 70, 41);
  FillRandom(b, 5, 4, 42);
  std::vector<int> percents;
  a.OnPercentDone = [&](TComponent*, std::int32_t p) { percents.push_back(p); };
  ASSERT_TRUE(a.Multiply(&b, &res));
  EXPECT_EQ(percents, (std::vector<int>{45, 91, 100}));
  FeedbackScope scope([](double) { AbortMathProc = true; });
  EXPECT_FALSE(a.Multiply(&b, &expect));
  EXPECT_EQ(Dims(expect), std::pair(4, 4));
}

TEST(MatrixProducts, MismatchesReturnFalseAndTouchNothing) {
  TMatrix a, b, res;
  FillRandom(a, 3, 2, 4);
  FillRandom(b, 2, 2, 5);
  res.Resize(5, 5);
  res.Fill(9.0);
  const std::string aBefore = a.CRCofData(), resBefore = res.CRCofData();
  EventLog resLog(res), aLog(a);
  TDoubleArray scale{7.0};
  EXPECT_FALSE(a.Multiply(&b, &res));
  EXPECT_FALSE(a.Multiply(nullptr, &res));
  EXPECT_FALSE(a.Multiply(&b, nullptr));
  EXPECT_FALSE(a.MultiplyTransposed(&b, &res));
  EXPECT_FALSE(b.TransposeAndMultiply(&res, &res));
  EXPECT_FALSE(a.EMult(&b, &res));
  EXPECT_FALSE(a.Add(&b));
  EXPECT_FALSE(a.Subtract(&b));
  EXPECT_FALSE(a.Square(&res));
  EXPECT_FALSE(a.Balance(scale));
  EXPECT_EQ(resLog.changes + aLog.changes, 0);
  EXPECT_EQ(a.CRCofData(), aBefore);
  EXPECT_EQ(res.CRCofData(), resBefore);
  EXPECT_EQ(scale, (TDoubleArray{7.0}));
}

TEST(MatrixProducts, ElementwiseScalarAndTranspose) {
  TMatrix a, b, res;
  SetRows(a, {{1, 2}, {3, 4}});
  SetRows(b, {{5, 6}, {7, 8}});
  ASSERT_TRUE(a.EMult(&b, &res));
  EXPECT_EQ(RowsOf(res), (TRows{{5, 12}, {21, 32}}));
  ASSERT_TRUE(a.Add(&b));
  EXPECT_EQ(RowsOf(a), (TRows{{6, 8}, {10, 12}}));
  ASSERT_TRUE(a.Subtract(&b));
  a.SMult(-2.0);
  a.SAdd(1.0);
  EXPECT_EQ(RowsOf(a), (TRows{{-1, -3}, {-5, -7}}));

  SetRows(a, {{1, 2, 3}, {4, 5, 6}});
  EventLog log(a), squareLog(b);
  a.Transpose();
  b.Transpose();  // square: no OnResize
  EXPECT_EQ(RowsOf(a), (TRows{{1, 4}, {2, 5}, {3, 6}}));
  EXPECT_EQ(RowsOf(b), (TRows{{5, 7}, {6, 8}}));
  EXPECT_EQ(log.Counts(), std::pair(1, 1));
  EXPECT_EQ(squareLog.Counts(), std::pair(1, 0));
}

TEST(MatrixInverse, InvertDeterminantAndLUOrRefuseWithoutChanges) {
  TMatrix a, inv, identity, l, u;
  FillRandom(a, 6, 6, 11);
  inv.Assign(a);
  ASSERT_TRUE(inv.Invert());
  identity.Resize(6, 6);
  identity.FillDiag(1.0);
  ExpectProduct(a, inv, identity, 1e-12);
  // The determinant is multiplicative: det(A inv(A)) = 1 up to round-off.
  EXPECT_NEAR(a.Determinant() * inv.Determinant(), 1.0, 1e-12);
  ASSERT_TRUE(a.LUdecomposition(&l, &u));
  ExpectProduct(l, u, a, 1e-14);
  for (int c = 1; c <= 6; ++c) {
    for (int r = c + 1; r <= 6; ++r)
      EXPECT_EQ(u.GetVal(c, r), 0.0);  // upper triangular
  }

  // Cofactor expansions; the zero pivots force row exchanges, which flip the sign.
  TMatrix d;
  SetRows(d, {{2, 1, 5}, {1, 0, 3}, {4, 1, 1}});
  EXPECT_NEAR(d.Determinant(), 10.0, 1e-13);
  SetRows(d, {{0, 1}, {1, 0}});
  EXPECT_EQ(d.Determinant(), -1.0);
  SetRows(d, {{0, 2, 0}, {3, 0, 0}, {0, 0, 4}});
  EXPECT_EQ(d.Determinant(), -24.0);
  SetRows(d, {{-7.25}});
  EXPECT_EQ(d.Determinant(), -7.25);

  // Singular and non-square matrices are refused without changes.
  TMatrix s, wide;
  SetRows(s, {{1, 2, 3}, {4, 5, 6}, {7, 8, 9}});
  SetRows(wide, {{1, 1, 1}, {1, 1, 1}});
  l.Resize(2, 2);
  for (TMatrix* m : {&s, &wide}) {
    const std::string before = m->CRCofData();
    EventLog log(*m);
    EXPECT_FALSE(m->Invert());
    EXPECT_EQ(m->Determinant(), 0.0);
    EXPECT_FALSE(m->LUdecomposition(&l, &u));
    EXPECT_FALSE(m->LUdecomposition(&l, nullptr));
    EXPECT_EQ(m->CRCofData(), before);
    EXPECT_EQ(log.changes, 0);
    EXPECT_EQ(std::pair(Dims(l), Dims(u)), std::pair(std::pair(2, 2), std::pair(6, 6)));
  }
}

TEST(MatrixCholesky, DefiniteNonDefiniteAndNonSquareInput) {
  // A = L L' with L = [[2,0,0],[1,3,0],[-1,2,1]]
  TMatrix a, lower;
  SetRows(a, {{4, 2, -2}, {2, 10, 5}, {-2, 5, 6}});
  ASSERT_TRUE(a.CholeskyDecomp(&lower));
  EXPECT_EQ(RowsOf(lower), (TRows{{2, 0, 0}, {1, 3, 0}, {-1, 2, 1}}));
  // Destructive: L' now sits above the diagonal of A; the lower triangle still holds A.
  EXPECT_EQ(RowsOf(a), (TRows{{4, 1, -1}, {2, 10, 2}, {-2, 5, 6}}));

  // A Lower of the right size keeps what it held above the diagonal.
  SetRows(a, {{4, 2}, {2, 10}});
  lower.Fill(7.0);
  ASSERT_TRUE(a.CholeskyDecomp(&lower));
  EXPECT_EQ(RowsOf(lower), (TRows{{2, 7}, {1, 3}}));
  // Eigenvalues 3 and -1: the failed pivot is written as 0, the rest is still filled in.
  SetRows(a, {{1, 2}, {2, 1}});
  EXPECT_FALSE(a.CholeskyDecomp(&lower));
  EXPECT_EQ(RowsOf(lower), (TRows{{1, 7}, {2, 0}}));
  EXPECT_EQ(a.GetVal(2, 1), 2.0);  // the factor entry written into A
  SetRows(a, {{0, 0}, {0, 1}});    // a zero first pivot: no division by it
  EXPECT_FALSE(a.CholeskyDecomp(&lower));
  EXPECT_EQ(RowsOf(lower), (TRows{{0, 7}, {0, 1}}));

  SetRows(a, {{1, 2, 3}});
  lower.Resize(4, 4);
  EXPECT_FALSE(a.CholeskyDecomp(&lower));
  EXPECT_EQ(Dims(lower), std::pair(4, 4));
  EXPECT_EQ(RowsOf(a), (TRows{{1, 2, 3}}));
}

TEST(MatrixNorm, KnownNormsProgressAbortAndNonConvergence) {
  TMatrix m, bad;
  SetRows(m, {{-3}});
  EXPECT_EQ(std::pair(m.Norm(ntColwise), m.Norm(ntSpectral)), std::pair(3.0, 3.0));
  SetRows(m, {{1, 1}, {1, 1}});
  EXPECT_EQ(m.Norm(ntFrobenius), 2.0);
  EXPECT_NEAR(m.Norm(ntSpectral), 2.0, 1e-15);
  SetRows(m, {{1, -2}, {-3, 4}, {5, 0.5}});
  EXPECT_EQ(std::pair(m.Norm(ntColwise), m.Norm(ntRowwise)), std::pair(9.0, 7.0));
  EXPECT_DOUBLE_EQ(m.Norm(ntFrobenius), std::sqrt(55.25));
  SetRows(m, {{1, 2, 3}, {2, 4, 6}, {3, 6, 9}});  // rank one, u u' with |u|^2 = 14
  EXPECT_NEAR(m.Norm(ntSpectral), 14.0, 1e-13);
  // V C' with orthogonal rows C' of lengths 0.5, 7.25 and 3, turned by the rotation V with
  // cosine 0.6: its singular values are 0.5, 7.25 and 3. Wide, then tall.
  SetRows(m, {{3.05, -2.75, 3.05, -2.75, 0},
              {1.975, -2.375, 1.975, -2.375, 0},
              {1.5, 1.5, -1.5, -1.5, 0}});
  EXPECT_NEAR(m.Norm(ntSpectral), 7.25, 1e-13);
  m.Transpose();
  EXPECT_NEAR(m.Norm(ntSpectral), 7.25, 1e-13);

  FillRandom(m, 8, 10, 21);
  int steps = 0;
  {
    FeedbackScope scope([&](double) { ++steps; });
    EXPECT_GT(m.Norm(ntSpectral), 0.0);
    EXPECT_EQ(steps, 8);  // one step per singular value
  }
  {
    FeedbackScope scope([](double) { AbortMathProc = true; });
    EXPECT_EQ(m.Norm(ntSpectral), 0.0);
  }
  // An infinite element: Balance skips its norms instead of looping, and the singular value
  // iterations cannot converge; that message has no component prefix.
  bad.SetName("Bad");
  SetRows(bad, {{1, 1}, {INFINITY, 1}});
  TDoubleArray scale;
  EXPECT_TRUE(bad.Balance(scale));
  EXPECT_EQ(MessageOf([&] { bad.Norm(ntSpectral); }), "near singular covariance matrix");
}

TEST(MatrixLinalg, BalanceAndHatMatrix) {
  TMatrix a, x, hat, collinear;
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
  FillRandom(x, 3, 8, 31);
  ASSERT_TRUE(x.CalcHatMatrix(&hat));
  ASSERT_EQ(Dims(hat), std::pair(8, 8));
  EXPECT_NEAR(hat.Trace(), 3.0, 1e-12);
  ExpectProduct(hat, hat, hat, 1e-12);
  for (int c = 1; c <= 8; ++c) {
    for (int r = 1; r < c; ++r)
      EXPECT_NEAR(hat.GetVal(r, c), hat.GetVal(c, r), 1e-12);
  }
  SetRows(collinear, {{1, 2}, {2, 4}, {3, 6}});
  EXPECT_FALSE(collinear.CalcHatMatrix(&hat));
  EXPECT_FALSE(x.CalcHatMatrix(nullptr));
  EXPECT_EQ(Dims(hat), std::pair(8, 8));
}

}  // namespace
}  // namespace quv::test
