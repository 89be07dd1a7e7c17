#include <gtest/gtest.h>

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

TEST(ComponentOwnership, OwnerFreesWhatItOwns) {
  Counted::alive = 0;
  {
    TComponent owner;
    auto* a = new Counted(&owner);
    new Counted(a);  // owned by an owned component
    new Counted(&owner);
    EXPECT_EQ(owner.ComponentCount(), 2u);
    EXPECT_EQ(a->Owner(), &owner);
    EXPECT_EQ(Counted::alive, 3);
  }
  EXPECT_EQ(Counted::alive, 0);
}

TEST(ComponentOwnership, DeletingAnOwnedComponentDetachesIt) {
  Counted::alive = 0;
  TComponent owner;
  auto* a = new Counted(&owner);
  auto* b = new Counted(&owner);
  delete a;
  EXPECT_EQ(owner.ComponentCount(), 1u);
  EXPECT_EQ(owner.Components(0), b);
  EXPECT_EQ(Counted::alive, 1);
}

TEST(ComponentOwnership, NameAndTag) {
  TComponent c;
  EXPECT_EQ(c.Name(), "");
  c.SetName("Kahan");
  c.SetTag(-42);
  EXPECT_EQ(c.Name(), "Kahan");
  EXPECT_EQ(c.Tag(), -42);
  EXPECT_EQ(c.Owner(), nullptr);
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
}

}  // namespace
}  // namespace quv
