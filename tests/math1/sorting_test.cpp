#include <algorithm>

#include "math1/test_helpers.h"

namespace quv {
namespace {

using namespace test;

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

TEST_F(RawSort, AgreesWithStdSortAcrossSizesDuplicatesAndOrganPipes) {
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
  std::vector<std::int32_t> pipe(200000);
  for (std::size_t i = 0; i < pipe.size(); ++i)
    pipe[i] = static_cast<std::int32_t>(i < pipe.size() / 2 ? i : pipe.size() - i);
  auto expected = pipe;
  std::sort(expected.begin(), expected.end());
  for (int round = 0; round < 2; ++round) {  // the second round: already sorted
    EXPECT_EQ(SortArray(std::span<std::int32_t>(pipe)), kSortArrayOk);
    EXPECT_EQ(pipe, expected);
  }
}

TEST_F(RawSort, NaNsGoBehindNumbersInBothDirections) {
  std::vector<float> f{3.0f, std::nanf(""), -1.0f, 2.0f, std::nanf("")};
  EXPECT_EQ(SortArray(std::span<float>(f)), kSortArrayOk);
  EXPECT_TRUE(f[0] == -1.0f && f[1] == 2.0f && f[2] == 3.0f && std::isnan(f[3]) &&
              std::isnan(f[4]));
  std::vector<double> d(100, 1.0);
  for (std::size_t i = 0; i < d.size(); i += 3)
    d[i] = kNaN;
  d[50] = 5.0;
  EXPECT_EQ(SortArray(std::span<double>(d), false), kSortArrayOk);
  EXPECT_TRUE(d[0] == 5.0 && d[65] == 1.0);
  EXPECT_TRUE(std::all_of(d.begin() + 66, d.end(), [](double x) { return std::isnan(x); }));
}

TEST_F(RawSort, PassesAdvanceProcStatAndAbortStopsAfterTheCurrentPass) {
  // A short array is one pass.
  ProcStat = 0.0;
  std::vector<double> small{3, 1, 2};
  EXPECT_EQ(SortArray(std::span<double>(small)), kSortArrayOk);
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
  std::vector<TVariantValue> v{"b", 2.5, {}, std::int32_t{3}, "a", std::int64_t{-7}};
  EXPECT_EQ(SortArray(std::span<TVariantValue>(v)), kSortArrayOk);
  EXPECT_TRUE(v[0].IsEmpty());  // the comparison below counts empty equal to empty only
  EXPECT_EQ(v, (std::vector<TVariantValue>{{}, -7.0, 2.5, 3.0, "a", "b"}));
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
    EXPECT_TRUE(std::all_of(w.begin() + k, w.end(), [&](double x) { return x >= w[k]; }));
  }
  const std::string message = "QuickSelect: index out of range";
  std::vector<std::int32_t> empty;
  std::vector<float> f{1.0f};
  EXPECT_EQ(MessageOf([&] { QuickSelect(std::span<std::int32_t>(empty), 0); }), message);
  EXPECT_EQ(MessageOf([&] { QuickSelect(std::span<float>(f), -1); }), message);
  EXPECT_EQ(MessageOf([&] { QuickSelect(std::span<float>(f), 1); }), message);
}

TEST_F(RawSort, SortIntoArrayKeepsTheSmallestAndInsertIntoArrayFollows) {
  // Nearest-neighbour use: distances kept ascending, the object ids kept in parallel.
  std::vector<double> dist(3, uc_MaxDouble);
  std::vector<std::int32_t> ids(3, -1);
  const double d[] = {5.0, 2.0, 5.0, 9.0, 2.0, 1.0, 7.0};
  for (std::int32_t id = 0; id < 7; ++id)
    InsertIntoArray(std::span<std::int32_t>(ids), SortIntoArray(std::span<double>(dist), d[id]),
                    id);
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

  std::vector<double> v{1, 2, 3, 4};
  EXPECT_TRUE(InsertIntoArray(std::span<double>(v), 1, 9.0));
  EXPECT_TRUE(InsertIntoArray(std::span<double>(v), 3, 8.0));
  EXPECT_FALSE(InsertIntoArray(std::span<double>(v), 4, 0.0));
  EXPECT_FALSE(InsertIntoArray(std::span<double>(v), -1, 0.0));
  EXPECT_EQ(v, (std::vector<double>{1, 9, 2, 8}));
  std::vector<TVariantValue> t{"x", "y"};
  EXPECT_TRUE(InsertIntoArray(std::span<TVariantValue>(t), 0, TVariantValue("w")));
  EXPECT_EQ(t[1].AsText(), "x");
}

}  // namespace
}  // namespace quv
