#include <gtest/gtest.h>

#include <cmath>

#include "quv/math1/math1.h"

namespace quv {
namespace {

TEST(KahanSum, TenMillionTinyTermsSurviveWhereNaiveSummationLosesThem) {
  TKahanSum kahan;
  kahan.Add(1.0);
  double naive = 1.0;
  for (int i = 0; i < 10'000'000; ++i) {
    kahan.Add(1e-16);
    naive += 1e-16;
  }
  EXPECT_EQ(naive, 1.0);
  EXPECT_NEAR(kahan.Sum(), 1.000000001, 4e-16);
}

TEST(KahanSum, ResetClearsSumAndCompensationAndOwnerFreesIt) {
  TComponent owner;
  auto* kahan = new TKahanSum(&owner);
  kahan->SetName("Acc");
  EXPECT_EQ(kahan->Sum(), 0.0);
  kahan->Add(1.0);
  kahan->Add(1e-17);
  EXPECT_NE(kahan->Compensation(), 0.0);
  kahan->Reset();
  EXPECT_EQ(kahan->Sum(), 0.0);
  EXPECT_EQ(kahan->Compensation(), 0.0);
  kahan->Add(0.5);
  EXPECT_EQ(kahan->Sum(), 0.5);
  EXPECT_EQ(owner.ComponentCount(), 1u);
}

TEST(KahanSum, MillionTenthsStayWithinOneUlp) {
  // 0.1 (as a double) added 1e6 times is 1e5 + 5.6e-12, within one unit in the last place
  // (1.46e-11) of 1e5; naive summation drifts by about 1e-6.
  TKahanSum kahan;
  double naive = 0.0;
  for (int i = 0; i < 1'000'000; ++i) {
    kahan.Add(0.1);
    naive += 0.1;
  }
  EXPECT_NEAR(kahan.Sum(), 1e5, 1.5e-11);
  EXPECT_GT(std::abs(naive - 1e5), 1e-7);
}

}  // namespace
}  // namespace quv
