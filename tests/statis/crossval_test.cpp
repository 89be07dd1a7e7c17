#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include "common/raised_message.h"
#include "quv/base/random.h"
#include "quv/matrix/matrix.h"
#include "quv/statis/statis.h"

namespace quv {
namespace {

using test::RaisedMessage;

// A tiny model whose results are known by hand. Column 1 of XMat holds the row number, so the
// model knows which object it predicts; column 1 of YMat is the class (1.0 positive, anything
// else negative) and the "model" answers the fixed response and threshold of the row.
// Column 2 of YMat is predicted exactly.
struct TRowCase {
  double y, response, thresh;
};
// TP: rows 1, 8. FN: row 2 (tie), row 3. FP: row 4 (tie), row 6. TN: rows 5, 7, 9 (y = 2 is a
// negative), 10. Squared errors: .01 .25 .64 .25 .01 .49 0 0 2.89 .16 = 4.70.
const TRowCase kRows[] = {{1, 0.9, 0.5}, {1, 0.5, 0.5}, {1, 0.2, 0.5}, {0, 0.5, 0.5},
                          {0, 0.1, 0.5}, {0, 0.7, 0.5}, {0, 0.0, 0.5}, {1, 1.0, 0.5},
                          {2, 0.3, 0.5}, {0, 0.4, 0.5}};

// Records what the validator asked for.
struct TLog {
  std::vector<TIntArray> testSets;  // the rows each successful model was applied to
  std::vector<TIntArray> training;  // ObjectList of every create request
  std::vector<std::int32_t> createPercent, applyPercent;
  std::vector<bool> runningInside;
};

class CrossValidatorTest : public ::testing::Test {
 protected:
  // n rows; XMat column 1 the row number, column 2 its square; YMat from kRows (cycled).
  void SetRows(std::int32_t n) {
    x.Resize(2, n);
    y.Resize(2, n);
    for (std::int32_t r = 1; r <= n; ++r) {
      x.SetVal(1, r, r);
      x.SetVal(2, r, r * r);
      y.SetVal(1, r, kRows[(r - 1) % 10].y);
      y.SetVal(2, r, 10.0 * r);
    }
    cv.SetXMat(&x);
    cv.SetYMat(&y);
  }

  void Connect() {
    cv.OnModelCreateRequest = [this](TComponent* sender, std::int32_t pct, const TIntArray& rows,
                                     bool& success) {
      EXPECT_EQ(sender, &cv);
      log.training.push_back(rows);
      log.createPercent.push_back(pct);
      log.runningInside.push_back(cv.Running());
      success = createSucceeds(static_cast<int>(log.training.size()));
      if (success) log.testSets.emplace_back();
    };
    cv.OnModelApplyRequest = [this](TComponent*, std::int32_t pct, const TDoubleArray& pred,
                                    TDoubleArray& resp, TDoubleArray& thresh) {
      const auto r = static_cast<std::int32_t>(pred[0]);
      EXPECT_EQ(pred[1], r * r);
      ASSERT_EQ(resp.size(), 2u);
      log.testSets.back().push_back(r);
      log.applyPercent.push_back(pct);
      const TRowCase& c = kRows[(r - 1) % 10];
      resp[0] = c.response;
      thresh[0] = c.thresh;
      resp[1] = 10.0 * r;
      thresh[1] = 0;
    };
  }

  // Every row 1..n tested exactly once over all test sets.
  void ExpectEveryRowOnce(std::int32_t n) {
    std::vector<int> seen(static_cast<std::size_t>(n) + 1, 0);
    for (const TIntArray& set : log.testSets)
      for (std::int32_t r : set)
        ++seen[static_cast<std::size_t>(r)];
    for (std::int32_t r = 1; r <= n; ++r)
      EXPECT_EQ(seen[static_cast<std::size_t>(r)], 1) << r;
  }

  std::vector<std::size_t> SetSizes() const {
    std::vector<std::size_t> sizes;
    for (const TIntArray& set : log.testSets)
      sizes.push_back(set.size());
    return sizes;
  }

  TMatrix x, y;
  TCrossValidator cv;
  TLog log;
  std::function<bool(int)> createSucceeds = [](int) { return true; };
};

TEST_F(CrossValidatorTest, TenRowsInSetsOfThreeAreEachTestedOnce) {
  SetRows(10);
  Connect();
  cv.SetTestSize(3);
  SetRandSeed(3);
  ASSERT_TRUE(cv.Execute());
  EXPECT_EQ(SetSizes(), (std::vector<std::size_t>{3, 3, 3, 1}));
  ExpectEveryRowOnce(10);
  EXPECT_EQ(cv.SizeTestSet(), 3);
  EXPECT_FALSE(cv.Running());
  EXPECT_EQ(log.runningInside, std::vector<bool>(4, true));
  // Each training list is the ascending complement of its test set; test rows come ascending.
  for (std::size_t s = 0; s < log.testSets.size(); ++s) {
    const TIntArray& test = log.testSets[s];
    EXPECT_TRUE(std::is_sorted(test.begin(), test.end()));
    TIntArray complement;
    for (std::int32_t r = 1; r <= 10; ++r)
      if (std::find(test.begin(), test.end(), r) == test.end()) complement.push_back(r);
    EXPECT_EQ(log.training[s], complement) << s;
  }
  EXPECT_EQ(log.createPercent, (std::vector<std::int32_t>{0, 30, 60, 90}));
  EXPECT_EQ(log.applyPercent, (std::vector<std::int32_t>{10, 20, 30, 40, 50, 60, 70, 80, 90, 100}));
}

TEST_F(CrossValidatorTest, OversizedTestSetIsLoweredToHalfPlusOne) {
  SetRows(10);
  Connect();
  cv.SetTestSize(100);
  ASSERT_TRUE(cv.Execute());
  EXPECT_EQ(cv.SizeTestSet(), 6);
  EXPECT_EQ(SetSizes(), (std::vector<std::size_t>{6, 4}));
  ExpectEveryRowOnce(10);
}

TEST_F(CrossValidatorTest, HandComputedScoresInEveryMode) {
  const struct {
    const char* name;
    TCVMode mode;
    std::int32_t size;
  } modes[] = {{"hold-out", cvmRepeatedHoldOut, 3},
               {"k-fold", cvmStratifiedKFold, 2},
               {"leave-one-out", cvmLeaveOneOut, 2}};
  SetRows(10);
  Connect();
  for (const auto& m : modes) {
    SCOPED_TRACE(m.name);
    log = {};
    cv.SetMode(m.mode);
    cv.SetTestSize(m.size);
    cv.SetNrOfFolds(3);
    ASSERT_TRUE(cv.Execute());
    ExpectEveryRowOnce(10);
    EXPECT_EQ(cv.GetTPCnt(1), 2);
    EXPECT_EQ(cv.GetFNCnt(1), 2);
    EXPECT_EQ(cv.GetFPCnt(1), 2);
    EXPECT_EQ(cv.GetTNCnt(1), 4);
    EXPECT_NEAR(cv.GetRMSEP(1), std::sqrt(0.47), 1e-15);
    EXPECT_DOUBLE_EQ(cv.GetAccuracy(1), 0.6);
    EXPECT_DOUBLE_EQ(cv.GetF1Score(1), 0.5);
    EXPECT_DOUBLE_EQ(cv.GetMCC(1), 1.0 / 6);             // (8 - 4)/sqrt(4 4 6 6)
    EXPECT_NEAR(cv.GetInformedness(1), 1.0 / 6, 1e-15);  // 2/4 + 4/6 - 1
    EXPECT_DOUBLE_EQ(cv.GetTPRate(1), 0.5);
    EXPECT_DOUBLE_EQ(cv.GetFPRate(1), 2.0 / 6);
    EXPECT_DOUBLE_EQ(cv.GetTNRate(1), 4.0 / 6);
    EXPECT_DOUBLE_EQ(cv.GetFNRate(1), 0.5);
    // Column 2 is predicted exactly: no error, and with threshold 0 every object is a
    // negative called positive.
    EXPECT_EQ(cv.GetRMSEP(2), 0.0);
    EXPECT_EQ(cv.GetFPCnt(2), 10);
    // Outside the response columns everything reads 0.
    EXPECT_EQ(cv.GetTPCnt(3), 0);
    EXPECT_EQ(cv.GetRMSEP(0), 0.0);
  }
}

TEST_F(CrossValidatorTest, ModelThatPredictsTheTruthScoresOne) {
  SetRows(10);
  cv.OnModelCreateRequest = [](TComponent*, std::int32_t, const TIntArray&, bool& ok) {
    ok = true;
  };
  cv.OnModelApplyRequest = [this](TComponent*, std::int32_t, const TDoubleArray& pred,
                                  TDoubleArray& resp, TDoubleArray& thresh) {
    const auto r = static_cast<std::int32_t>(pred[0]);
    resp[0] = y.GetVal(1, r) == 1.0 ? 1.0 : 0.0;
    thresh[0] = 0.5;
    resp[1] = y.GetVal(2, r);
    thresh[1] = 0.5;
  };
  y.SetVal(1, 9, 0);  // plain 0/1 classes: 4 positives, 6 negatives
  ASSERT_TRUE(cv.Execute());
  EXPECT_EQ(cv.GetTPCnt(1), 4);
  EXPECT_EQ(cv.GetTNCnt(1), 6);
  EXPECT_EQ(cv.GetRMSEP(1), 0.0);
  EXPECT_EQ(cv.GetAccuracy(1), 1.0);
  EXPECT_EQ(cv.GetMCC(1), 1.0);
  EXPECT_EQ(cv.GetF1Score(1), 1.0);
  EXPECT_EQ(cv.GetInformedness(1), 1.0);
}

TEST_F(CrossValidatorTest, ChecksRaiseInOrderAndChangeNothing) {
  TVector notAMatrix;
  TMatrix shortY;
  shortY.Resize(2, 9);
  const auto statisMessage = [this] {
    return RaisedMessage<EQUVStatisError>([this] { cv.Execute(); });
  };

  EXPECT_EQ(statisMessage(), msg::kCVDataNotAssigned);
  cv.SetXMat(&x);
  EXPECT_EQ(statisMessage(), msg::kCVDataNotAssigned);
  cv.SetYMat(&notAMatrix);
  EXPECT_EQ(statisMessage(), msg::kCVNotTMatrix);
  cv.SetYMat(&shortY);
  x.Resize(2, 10);
  EXPECT_EQ(statisMessage(), msg::kCVRowsNotEqual);
  SetRows(10);
  EXPECT_EQ(statisMessage(), msg::kCVApplyNotAssigned);
  Connect();
  auto create = cv.OnModelCreateRequest;
  cv.OnModelCreateRequest = nullptr;
  EXPECT_EQ(statisMessage(), msg::kCVCreateNotAssigned);
  EXPECT_EQ(std::string(msg::kCVDataNotAssigned),
            "TCrossValidator.Execute: data matrix not assigned");
  EXPECT_EQ(std::string(msg::kCVCreateNotAssigned),
            "TCrossValidator: OnModelCreateRequest event is not assigned");

  // After a good run a refused one leaves the results and SizeTestSet alone.
  cv.OnModelCreateRequest = create;
  cv.SetTestSize(100);
  cv.SetYMat(&shortY);
  EXPECT_EQ(statisMessage(), msg::kCVRowsNotEqual);
  EXPECT_EQ(cv.SizeTestSet(), 100);
  EXPECT_EQ(cv.GetTPCnt(1), -1);
  cv.SetYMat(&y);
  ASSERT_TRUE(cv.Execute());
  cv.SetYMat(&shortY);
  EXPECT_EQ(statisMessage(), msg::kCVRowsNotEqual);
  EXPECT_EQ(cv.GetTPCnt(1), 2);
  EXPECT_EQ(cv.GetTNCnt(1), 4);
  EXPECT_EQ(log.testSets.size(), 2u);
}

TEST_F(CrossValidatorTest, ResultsStartInvalidAndSettersInvalidateThem) {
  EXPECT_EQ(cv.SizeTestSet(), 2);
  EXPECT_EQ(cv.GetTPCnt(1), -1);
  EXPECT_TRUE(std::isnan(cv.GetRMSEP(1)));  // no XMat yet
  SetRows(10);
  Connect();
  EXPECT_TRUE(std::isnan(cv.GetRMSEP(1)));  // sqrt(-1/n)
  ASSERT_TRUE(cv.Execute());
  cv.SetTestSize(0);
  EXPECT_EQ(cv.SizeTestSet(), 1);
  for (std::int32_t j : {1, 2}) {
    EXPECT_EQ(cv.GetTPCnt(j), -1);
    EXPECT_EQ(cv.GetFPCnt(j), -1);
    EXPECT_EQ(cv.GetTNCnt(j), -1);
    EXPECT_EQ(cv.GetFNCnt(j), -1);
    EXPECT_TRUE(std::isnan(cv.GetRMSEP(j)));
    EXPECT_EQ(cv.GetAccuracy(j), 0.0);
    EXPECT_EQ(cv.GetF1Score(j), 0.0);
    EXPECT_EQ(cv.GetMCC(j), 0.0);
    EXPECT_EQ(cv.GetInformedness(j), 0.0);
    EXPECT_EQ(cv.GetTPRate(j), 0.0);
    EXPECT_EQ(cv.GetFNRate(j), 0.0);
  }
  ASSERT_TRUE(cv.Execute());
  EXPECT_EQ(log.testSets.size(), 15u);  // five pairs, then ten single rows
  cv.SetNrOfFolds(1);
  EXPECT_EQ(cv.NrOfFolds(), 2);
  EXPECT_EQ(cv.GetTPCnt(1), -1);
}

TEST_F(CrossValidatorTest, AbortAtTheFirstPollInvalidatesTheResults) {
  SetRows(10);
  Connect();
  int polls = 0;
  cv.OnCheckAbort = [&polls](TComponent*, bool& abort) {
    ++polls;
    abort = true;
  };
  EXPECT_FALSE(cv.Execute());
  EXPECT_EQ(polls, 1);
  EXPECT_EQ(log.applyPercent.size(), 1u);
  EXPECT_FALSE(cv.Running());
  EXPECT_EQ(cv.GetTPCnt(1), -1);
  EXPECT_EQ(cv.GetFNCnt(2), -1);
  EXPECT_TRUE(std::isnan(cv.GetRMSEP(1)));

  // A poll that never aborts lets the run finish.
  cv.OnCheckAbort = [&polls](TComponent*, bool&) { ++polls; };
  polls = 0;
  EXPECT_TRUE(cv.Execute());
  EXPECT_EQ(polls, 10);
}

TEST_F(CrossValidatorTest, FailedModelCreationSkipsItsTestRowsAndStillEnds) {
  SetRows(10);
  Connect();
  cv.SetTestSize(3);
  createSucceeds = [](int call) { return call != 1; };  // the first set's model fails
  ASSERT_TRUE(cv.Execute());
  EXPECT_EQ(log.training.size(), 4u);
  EXPECT_EQ(SetSizes(), (std::vector<std::size_t>{3, 3, 1}));
  EXPECT_EQ(log.createPercent, (std::vector<std::int32_t>{0, 0, 30, 60}));
  const auto counted = cv.GetTPCnt(1) + cv.GetFPCnt(1) + cv.GetTNCnt(1) + cv.GetFNCnt(1);
  EXPECT_EQ(counted, 7);

  // A model that can never be built: every set is skipped, and the run ends with zero counts.
  log = {};
  createSucceeds = [](int) { return false; };
  ASSERT_TRUE(cv.Execute());
  EXPECT_EQ(log.training.size(), 4u);
  EXPECT_TRUE(log.applyPercent.empty());
  EXPECT_EQ(cv.GetTPCnt(1), 0);
  EXPECT_EQ(cv.GetRMSEP(1), 0.0);
}

TEST_F(CrossValidatorTest, ExceptionsFromEventsPassThrough) {
  SetRows(10);
  Connect();
  cv.OnCheckAbort = [](TComponent*, bool&) { throw std::runtime_error("host failure"); };
  EXPECT_EQ(RaisedMessage<std::runtime_error>([this] { cv.Execute(); }), "host failure");
  EXPECT_FALSE(cv.Running());
  EXPECT_EQ(cv.GetTPCnt(1), -1);

  cv.OnCheckAbort = nullptr;
  cv.OnModelApplyRequest = [](TComponent*, std::int32_t, const TDoubleArray&, TDoubleArray& resp,
                              TDoubleArray&) { resp.clear(); };
  EXPECT_EQ(RaisedMessage<EQUVStatisError>([this] { cv.Execute(); }), msg::kCVResponseLength);
  EXPECT_FALSE(cv.Running());
}

TEST_F(CrossValidatorTest, PercentDoneRoundsHalvesToEven) {
  SetRows(8);
  Connect();
  cv.SetMode(cvmLeaveOneOut);
  ASSERT_TRUE(cv.Execute());
  EXPECT_EQ(log.applyPercent, (std::vector<std::int32_t>{12, 25, 38, 50, 62, 75, 88, 100}));
  // Leave-one-out takes the rows in order.
  for (std::size_t s = 0; s < 8; ++s)
    EXPECT_EQ(log.testSets[s], TIntArray{static_cast<std::int32_t>(s) + 1});
}

TEST_F(CrossValidatorTest, StratifiedFoldsBalanceSizesAndPositives) {
  // 20 rows: 8 positives (kRows cycled twice gives rows 1, 2, 3, 8, 11, 12, 13, 18).
  SetRows(20);
  Connect();
  cv.SetMode(cvmStratifiedKFold);
  cv.SetNrOfFolds(3);
  for (std::uint64_t seed : {1u, 2u, 3u}) {
    log = {};
    SetRandSeed(seed);
    ASSERT_TRUE(cv.Execute());
    ASSERT_EQ(log.testSets.size(), 3u);
    ExpectEveryRowOnce(20);
    for (const TIntArray& fold : log.testSets) {
      EXPECT_GE(fold.size(), 6u);
      EXPECT_LE(fold.size(), 7u);
      const auto positives = std::count_if(
          fold.begin(), fold.end(), [this](std::int32_t r) { return y.GetVal(1, r) == 1.0; });
      EXPECT_GE(positives, 2);
      EXPECT_LE(positives, 3);
    }
  }
  // More folds than rows: one row per fold.
  SetRows(3);
  log = {};
  cv.SetNrOfFolds(5);
  ASSERT_TRUE(cv.Execute());
  EXPECT_EQ(SetSizes(), (std::vector<std::size_t>{1, 1, 1}));
}

TEST_F(CrossValidatorTest, SameSeedSameTestSets) {
  SetRows(10);
  Connect();
  cv.SetTestSize(3);
  auto run = [this](std::uint64_t seed) {
    log = {};
    SetRandSeed(seed);
    EXPECT_TRUE(cv.Execute());
    return log.testSets;
  };
  EXPECT_EQ(run(42), run(42));
  bool differs = false;
  for (std::uint64_t seed = 43; seed < 53 && !differs; ++seed)
    differs = run(seed) != run(42);
  EXPECT_TRUE(differs);
}

TEST_F(CrossValidatorTest, SingleRowIsOneFinalTestSet) {
  SetRows(1);
  Connect();
  ASSERT_TRUE(cv.Execute());
  EXPECT_EQ(cv.SizeTestSet(), 1);
  EXPECT_EQ(log.training, std::vector<TIntArray>{TIntArray{}});
  EXPECT_EQ(SetSizes(), (std::vector<std::size_t>{1}));
}

TEST(ConfusionScores, FormulasAndZeroDenominators) {
  const struct {
    std::int32_t tp, fp, tn, fn;
    double accuracy, f1, mcc, informedness;
  } cases[] = {
      // Values by hand: 170/200, 180/210, 7000/sqrt(100 110 90 100), 90/110 + 80/90 - 1.
      {90, 10, 80, 20, 0.85, 180.0 / 210, 7000 / std::sqrt(99000000.0), 90.0 / 110 + 80.0 / 90 - 1},
      {0, 0, 0, 0, 0, 0, 0, -1},         // every denominator 0
      {5, 0, 5, 0, 1, 1, 1, 1},          // perfect
      {0, 5, 0, 5, 0, 0, -1, -1},        // perfectly wrong
      {3, 0, 0, 0, 1, 1, 0, 0},          // root 0; TN/(TN + FP) counts 0
      {0, 4, 6, 0, 0.6, 0, 0, 0.6 - 1},  // no positives at all: F1 denominator 4
      {-1, -1, -1, -1, 0, 0, 0, 0},      // invalidated results
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::Message() << c.tp << ' ' << c.fp << ' ' << c.tn << ' ' << c.fn);
    EXPECT_DOUBLE_EQ(CFAccuracy(c.tp, c.fp, c.tn, c.fn), c.accuracy);
    EXPECT_DOUBLE_EQ(CFF1Score(c.tp, c.fp, c.tn, c.fn), c.f1);
    EXPECT_DOUBLE_EQ(CFMatthewsCorr(c.tp, c.fp, c.tn, c.fn), c.mcc);
    EXPECT_DOUBLE_EQ(CFInformedness(c.tp, c.fp, c.tn, c.fn), c.informedness);
  }
  // Counts near the Int32 limit do not overflow.
  EXPECT_NEAR(CFAccuracy(2000000000, 1, 2000000000, 1), 1.0, 1e-9);
  EXPECT_NEAR(CFMatthewsCorr(2000000000, 1, 2000000000, 1), 1.0, 1e-9);
}

}  // namespace
}  // namespace quv
