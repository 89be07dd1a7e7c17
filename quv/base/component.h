// TComponent: the owner/name/tag shell that every class of the library derives from.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace quv {

/// A component has an optional owner, a Name used in error messages and a free Tag.
/// A component created with an owner is deleted by that owner's destructor, so it must have
/// been created with new; one created without an owner lives wherever the caller puts it.
/// Deleting an owned component earlier is allowed: it leaves its owner's list first.
/// Components are neither copyable nor movable; classes that copy data offer Assign/Clone.
class TComponent {
 public:
  explicit TComponent(TComponent* owner = nullptr);
  virtual ~TComponent();

  TComponent(const TComponent&) = delete;
  TComponent& operator=(const TComponent&) = delete;
  TComponent(TComponent&&) = delete;
  TComponent& operator=(TComponent&&) = delete;

  const std::string& Name() const { return name_; }
  void SetName(std::string name) { name_ = std::move(name); }

  std::int64_t Tag() const { return tag_; }
  void SetTag(std::int64_t tag) { tag_ = tag; }

  TComponent* Owner() const { return owner_; }
  /// Number of components this one owns.
  std::size_t ComponentCount() const { return owned_.size(); }
  /// The owned component at 0-based position i, in order of creation.
  TComponent* Components(std::size_t i) const { return owned_.at(i); }

 private:
  void Remove(TComponent* child);

  TComponent* owner_ = nullptr;
  std::string name_;
  std::int64_t tag_ = 0;
  std::vector<TComponent*> owned_;
};

}  // namespace quv
