// Exact error texts in tests: the message of the exception a call raises.
#pragma once

#include <string>
#include <utility>

namespace quv::test {

/// What RaisedMessage returns when the call raised nothing.
inline constexpr const char* kNothingRaised = "nothing raised";

/// The what() of the E that call raises, or kNothingRaised. Other exceptions pass through,
/// so a wrong exception class fails the test instead of matching a text.
template <class E, class Call>
std::string RaisedMessage(Call&& call) {
  try {
    std::forward<Call>(call)();
  } catch (const E& e) {
    return e.what();
  }
  return kNothingRaised;
}

}  // namespace quv::test
