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
  /// Fires OnSortExchange if assigned, with this container as sender. Sorts call it after
  /// every exchange; a host that reorders the data itself may call it too. ExchgWhat tells
  /// what was exchanged (0 elements, 1 columns, 2 rows); i1 and i2 are the exchanged 1-based
  /// indices, i3 and i4 the bounds of the other dimension (0 for vectors).
  void SortExchange(std::uint8_t ExchgWhat, std::int32_t i1, std::int32_t i2, std::int32_t i3 = 0,
                    std::int32_t i4 = 0) {
    FireEvent(OnSortExchange, this, ExchgWhat, i1, i2, i3, i4);
  }
};

}  // namespace quv
