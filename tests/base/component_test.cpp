#include <gtest/gtest.h>

#include <vector>

#include "quv/base/base.h"

namespace quv {
namespace {

// Counts live instances so that ownership can be checked without a leak detector.
class Counted : public TComponent {
 public:
  explicit Counted(TComponent* owner = nullptr) : TComponent(owner) { ++alive; }
  ~Counted() override { --alive; }
  static inline int alive = 0;
};

TEST(ComponentOwnership, OwnerFreesWhatItOwnsAndEarlyDeletesDetach) {
  Counted::alive = 0;
  {
    TComponent owner;
    EXPECT_EQ(owner.Owner(), nullptr);
    auto* a = new Counted(&owner);
    new Counted(a);  // owned by an owned component
    auto* c = new Counted(&owner);
    auto* d = new Counted(&owner);
    EXPECT_EQ(owner.ComponentCount(), 3u);
    EXPECT_EQ(a->Owner(), &owner);
    EXPECT_EQ(Counted::alive, 4);
    delete c;
    EXPECT_EQ(owner.ComponentCount(), 2u);
    EXPECT_EQ(owner.Components(1), d);
    EXPECT_EQ(Counted::alive, 3);
  }
  EXPECT_EQ(Counted::alive, 0);
  TComponent c;
  EXPECT_EQ(c.Name(), "");
  c.SetName("Kahan");
  c.SetTag(-42);
  EXPECT_EQ(c.Name(), "Kahan");
  EXPECT_EQ(c.Tag(), -42);
}

TEST(ContainerEvents, FireOnlyWhenAssignedWithSenderFirst) {
  TContainerComponent c;
  c.Changed();  // unassigned: nothing happens
  TComponent* seen = nullptr;
  int calls = 0;
  c.OnChange = [&](TComponent* sender) {
    seen = sender;
    ++calls;
  };
  c.Changed();
  c.Resized();
  EXPECT_EQ(calls, 1);
  EXPECT_EQ(seen, &c);
  // A host may announce an exchange it made itself; the arguments arrive in order.
  c.SortExchange(0, 1, 2);
  std::vector<int> args;
  c.OnSortExchange = [&](TComponent* sender, std::uint8_t what, std::int32_t i1, std::int32_t i2,
                         std::int32_t i3, std::int32_t i4) {
    EXPECT_EQ(sender, &c);
    args = {what, i1, i2, i3, i4};
  };
  c.SortExchange(2, 7, 3, 1, 5);
  EXPECT_EQ(args, (std::vector<int>{2, 7, 3, 1, 5}));
}

}  // namespace
}  // namespace quv
