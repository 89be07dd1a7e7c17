#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

#include "quv/math1/math1.h"

namespace quv {
namespace {

class RawSort : public ::testing::Test {
 protected:
  void TearDown() override {
    MathFeedBackProc = nullptr;
    AbortMathProc = false;
  }
};

std::vector<double> RandomDoubles(std::size_t n, unsigned seed, int distinct = 0) {
  std::mt19937_64 gen(seed);
  std::uniform_real_distribution<double> u(-1e6, 1e6);
  std::uniform_int_distribution<int> d(0, std::max(distinct - 1, 0));
  std::vector<double> v(n);
  for (auto& x : v)
    x = distinct > 0 ? d(gen) : u(gen);
  return v;
}

TEST_F(RawSort, AgreesWithStdSortAcrossSizesAndDuplicates) {
  // Sizes around the insertion-run and pass-segment limits, with and without many equals.
  for (std::size_t n : {0u, 1u, 2u, 17u, 1000u, 32768u, 32769u, 150000u}) {
    for (int distinct : {0, 3}) {
      auto v = RandomDoubles(n, static_cast<unsigned>(n) + 7u, distinct);
      auto expected = v;
      std::sort(expected.begin(), expected.end());
      EXPECT_EQ(SortArray(std::span<double>(v)), kSortArrayOk);
      EXPECT_EQ(v, expected) << "n=" << n << " distinct=" << distinct;
      std::sort(expected.begin(), expected.end(), std::greater<double>());
      EXPECT_EQ(SortArray(std::span<double>(v), false), kSortArrayOk);
      EXPECT_EQ(v, expected) << "descending n=" << n;
    }
  }
}

TEST_F(RawSort, OrganPipeAndSortedInputsStayFastAndCorrect) {
  std::vector<std::int32_t> v(200000);
  for (std::size_t i = 0; i < v.size(); ++i) {
    v[i] = static_cast<std::int32_t>(i < v.size() / 2 ? i : v.size() - i);
  }
  auto expected = v;
  std::sort(expected.begin(), expected.end());
  EXPECT_EQ(SortArray(std::span<std::int32_t>(v)), kSortArrayOk);
  EXPECT_EQ(v, expected);
  EXPECT_EQ(SortArray(std::span<std::int32_t>(v)), kSortArrayOk);  // already sorted
  EXPECT_EQ(v, expected);
}

TEST_F(RawSort, NaNsGoBehindNumbersInBothDirections) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  std::vector<float> f{3.0f, std::nanf(""), -1.0f, 2.0f, std::nanf("")};
  EXPECT_EQ(SortArray(std::span<float>(f)), 0);
  EXPECT_EQ(f[0], -1.0f);
  EXPECT_EQ(f[2], 3.0f);
  EXPECT_TRUE(std::isnan(f[3]) && std::isnan(f[4]));
  std::vector<double> d(100, 1.0);
  for (std::size_t i = 0; i < d.size(); i += 3)
    d[i] = nan;
  d[50] = 5.0;
  EXPECT_EQ(SortArray(std::span<double>(d), false), 0);
  EXPECT_EQ(d[0], 5.0);
  EXPECT_EQ(std::count_if(d.begin(), d.end(), [](double x) { return std::isnan(x); }), 34);
  EXPECT_TRUE(std::isnan(d.back()));
}

TEST_F(RawSort, PassesAdvanceProcStatAndAbortStopsAfterTheCurrentPass) {
  // A short array is one pass.
  ProcStat = 0.0;
  std::vector<double> small{3, 1, 2};
  EXPECT_EQ(SortArray(std::span<double>(small)), 0);
  EXPECT_DOUBLE_EQ(ProcStat, 1.0);

  // A long one takes several; the hook sees each step and aborts in the first.
  auto v = RandomDoubles(300000, 11);
  ProcStat = 0.0;
  int calls = 0;
  MathFeedBackProc = [&](double) {
    ++calls;
    AbortMathProc = true;
  };
  AbortMathProc = true;  // a stale request is cleared by the sort itself
  EXPECT_EQ(SortArray(std::span<double>(v)), kSortArrayAborted);
  EXPECT_EQ(calls, 1);
  EXPECT_DOUBLE_EQ(ProcStat, 1.0);
  EXPECT_FALSE(std::is_sorted(v.begin(), v.end()));

  MathFeedBackProc = [&](double) { ++calls; };
  calls = 0;
  EXPECT_EQ(SortArray(std::span<double>(v)), kSortArrayOk);
  EXPECT_GT(calls, 1);
  EXPECT_TRUE(std::is_sorted(v.begin(), v.end()));
}

TEST_F(RawSort, VariantValuesOrderEmptyNumbersTexts) {
  std::vector<TVariantValue> v{TVariantValue("b"), TVariantValue(2.5),
                               TVariantValue(),    TVariantValue(std::int32_t{3}),
                               TVariantValue("a"), TVariantValue(std::int64_t{-7})};
  EXPECT_EQ(SortArray(std::span<TVariantValue>(v)), 0);
  EXPECT_TRUE(v[0].IsEmpty());
  EXPECT_EQ(v[1].AsDouble(), -7.0);
  EXPECT_EQ(v[2].AsDouble(), 2.5);
  EXPECT_EQ(v[3].AsDouble(), 3.0);
  EXPECT_EQ(v[4].AsText(), "a");
  EXPECT_EQ(v[5].AsText(), "b");
  EXPECT_TRUE(TVariantValue(2.0) == TVariantValue(std::int32_t{2}));
  EXPECT_EQ(QuickSelect(std::span<TVariantValue>(v), 4).AsText(), "a");
}

TEST_F(RawSort, QuickSelectFindsOrderStatisticsAndRejectsBadIndex) {
  auto v = RandomDoubles(1001, 5, 50);
  auto sorted = v;
  std::sort(sorted.begin(), sorted.end());
  for (std::int32_t k : {0, 1, 500, 999, 1000}) {
    auto w = v;
    EXPECT_EQ(QuickSelect(std::span<double>(w), k), sorted[static_cast<std::size_t>(k)]);
    EXPECT_TRUE(std::all_of(w.begin(), w.begin() + k, [&](double x) { return x <= w[k]; }));
  }
  std::vector<std::int32_t> empty;
  try {
    QuickSelect(std::span<std::int32_t>(empty), 0);
    FAIL() << "no exception";
  } catch (const EQUVMath1Error& e) {
    EXPECT_STREQ(e.what(), "QuickSelect: index out of range");
  }
  std::vector<float> f{1.0f};
  EXPECT_THROW(QuickSelect(std::span<float>(f), -1), EQUVMath1Error);
  EXPECT_THROW(QuickSelect(std::span<float>(f), 1), EQUVMath1Error);
}

TEST_F(RawSort, SortIntoArrayKeepsTheSmallestWithEqualsAfterEarlierOnes) {
  // Nearest-neighbour use: distances kept ascending, the object ids kept in parallel.
  std::vector<double> dist(3, uc_MaxDouble);
  std::vector<std::int32_t> ids(3, -1);
  const double d[] = {5.0, 2.0, 5.0, 9.0, 2.0, 1.0, 7.0};
  for (std::int32_t id = 0; id < 7; ++id) {
    const std::int32_t pos = SortIntoArray(std::span<double>(dist), d[id]);
    InsertIntoArray(std::span<std::int32_t>(ids), pos, id);
  }
  EXPECT_EQ(dist, (std::vector<double>{1.0, 2.0, 2.0}));
  EXPECT_EQ(ids, (std::vector<std::int32_t>{5, 1, 4}));  // 1 arrived before 4

  std::vector<std::int32_t> kept{1, 3, 3};
  EXPECT_EQ(SortIntoArray(std::span<std::int32_t>(kept), 3), kSortIntoDropped);
  EXPECT_EQ(SortIntoArray(std::span<std::int32_t>(kept), 4), kSortIntoDropped);
  EXPECT_EQ(kept, (std::vector<std::int32_t>{1, 3, 3}));
  EXPECT_EQ(SortIntoArray(std::span<std::int32_t>(kept), 1), 1);
  EXPECT_EQ(kept, (std::vector<std::int32_t>{1, 1, 3}));
  std::vector<float> f(2, 0.0f);
  EXPECT_EQ(SortIntoArray(std::span<float>(f), std::nanf("")), kSortIntoDropped);
  std::vector<double> none;
  EXPECT_EQ(SortIntoArray(std::span<double>(none), 1.0), kSortIntoDropped);
}

TEST_F(RawSort, InsertIntoArrayShiftsTheTailOutAndIgnoresBadPositions) {
  std::vector<double> v{1, 2, 3, 4};
  EXPECT_TRUE(InsertIntoArray(std::span<double>(v), 1, 9.0));
  EXPECT_EQ(v, (std::vector<double>{1, 9, 2, 3}));
  EXPECT_TRUE(InsertIntoArray(std::span<double>(v), 3, 8.0));
  EXPECT_EQ(v, (std::vector<double>{1, 9, 2, 8}));
  EXPECT_FALSE(InsertIntoArray(std::span<double>(v), 4, 0.0));
  EXPECT_FALSE(InsertIntoArray(std::span<double>(v), -1, 0.0));
  EXPECT_EQ(v, (std::vector<double>{1, 9, 2, 8}));
  std::vector<TVariantValue> t{TVariantValue("x"), TVariantValue("y")};
  EXPECT_TRUE(InsertIntoArray(std::span<TVariantValue>(t), 0, TVariantValue("w")));
  EXPECT_EQ(t[1].AsText(), "x");
}

}  // namespace
}  // namespace quv
