#include "quv/base/component.h"

#include <algorithm>

namespace quv {

TComponent::TComponent(TComponent* owner) : owner_(owner) {
  if (owner_ != nullptr) owner_->owned_.push_back(this);
}

TComponent::~TComponent() {
  // Free the owned components, newest first; each one is detached before it is deleted so
  // that its own destructor does not search this list.
  while (!owned_.empty()) {
    TComponent* child = owned_.back();
    owned_.pop_back();
    child->owner_ = nullptr;
    delete child;
  }
  if (owner_ != nullptr) owner_->Remove(this);
}

void TComponent::Remove(TComponent* child) {
  auto it = std::find(owned_.begin(), owned_.end(), child);
  if (it != owned_.end()) owned_.erase(it);
}

}  // namespace quv
