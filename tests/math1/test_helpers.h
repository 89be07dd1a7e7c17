// Helpers and includes shared by the tests of the scalar unit.
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <numbers>
#include <random>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "common/raised_message.h"
#include "quv/math1/math1.h"

namespace quv::test {

inline constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
inline constexpr double kInf = std::numeric_limits<double>::infinity();

/// The message of the E (EQUVMath1Error unless told) that call raises, or "nothing raised".
template <class E = EQUVMath1Error, class Call>
std::string MessageOf(Call&& call) {
  return RaisedMessage<E>(std::forward<Call>(call));
}

}  // namespace quv::test
