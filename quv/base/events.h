// Event types of the components and the firing conventions that the containers share.
#pragma once

#include <cstdint>
#include <functional>
#include <utility>

#include "quv/base/component.h"

namespace quv {

/// Callback with the sender only (OnChange, OnResize).
using TNotifyEvent = std::function<void(TComponent* sender)>;
/// Fired once per exchange of two elements during a sort, right after the swap. ExchgWhat is
/// 0 for elements; the first two integers are the 1-based indices exchanged, and what the
/// last two carry is up to the container (vectors pass 0).
using TSortExchgEvent =
    std::function<void(TComponent* sender, std::uint8_t exchgWhat, std::int32_t first,
                       std::int32_t second, std::int32_t third, std::int32_t fourth)>;
/// Progress of a long method of one component, in percent (0..100).
using TOnPercentDoneEvent = std::function<void(TComponent* sender, std::int32_t percent)>;
/// Asks the host whether to abort; the handler sets abort to true to stop.
using TOnCheckAbortEvent = std::function<void(TComponent* sender, bool& abort)>;

/// Calls the event with the arguments when it is assigned.
template <class Event, class... Args>
void FireEvent(const Event& event, Args&&... args) {
  if (event) event(std::forward<Args>(args)...);
}

/// The events common to the containers. OnChange fires once after every operation that
/// changes element values or order; OnResize fires after OnChange, only when the number of
/// elements really changed; OnSortExchange fires for every exchange a sort performs.
class TContainerComponent : public TComponent {
 public:
  using TComponent::TComponent;

  TNotifyEvent OnChange;
  TNotifyEvent OnResize;
  TSortExchgEvent OnSortExchange;

  /// Fires OnChange if assigned.
  void Changed() { FireEvent(OnChange, this); }
  /// Fires OnResize if assigned.
  void Resized() { FireEvent(OnResize, this); }

 protected:
  /// Fires OnSortExchange for elements first and second (1-based) if assigned.
  void SortExchange(std::int32_t first, std::int32_t second, std::int32_t third = 0,
                    std::int32_t fourth = 0, std::uint8_t exchgWhat = 0) {
    FireEvent(OnSortExchange, this, exchgWhat, first, second, third, fourth);
  }
};

}  // namespace quv
