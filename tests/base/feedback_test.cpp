#include <gtest/gtest.h>

#include <vector>

#include "quv/base/base.h"

namespace quv {
namespace {

class ProgressProtocol : public ::testing::Test {
 protected:
  void TearDown() override {
    MathFeedBackProc = nullptr;
    AbortMathProc = false;
  }
};

// A long loop written the way every abortable operation uses the protocol.
int CountPassesUntilAbort(int passes) {
  BeginAbortableOperation();
  int done = 0;
  for (int i = 0; i < passes; ++i) {
    ++done;
    if (ProgressStep(1.0)) return -2;
  }
  return done;
}

TEST_F(ProgressProtocol, StepsReachTheHookWithTheRunningCounter) {
  MathFeedBackProc = nullptr;  // an empty hook is not called
  ProcStat = 6.0;
  EXPECT_EQ(CountPassesUntilAbort(4), 4);
  EXPECT_DOUBLE_EQ(ProcStat, 10.0);
  std::vector<double> seen;
  MathFeedBackProc = [&](double p) { seen.push_back(p); };
  EXPECT_EQ(CountPassesUntilAbort(3), 3);
  EXPECT_EQ(seen, (std::vector<double>{11.0, 12.0, 13.0}));
  EXPECT_DOUBLE_EQ(ProcStat, 13.0);
}

TEST_F(ProgressProtocol, AbortFromTheHookStopsAfterTheCurrentStep) {
  ProcStat = 0.0;
  int calls = 0;
  MathFeedBackProc = [&](double p) {
    ++calls;
    if (p >= 2.0) AbortMathProc = true;
  };
  EXPECT_EQ(CountPassesUntilAbort(100), -2);
  EXPECT_EQ(calls, 2);
  EXPECT_TRUE(AbortMathProc);
  // The next abortable entry point clears the stale request.
  MathFeedBackProc = nullptr;
  EXPECT_EQ(CountPassesUntilAbort(5), 5);
}

}  // namespace
}  // namespace quv
