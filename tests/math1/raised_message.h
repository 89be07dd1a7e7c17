// The message of the EQUVMath1Error that a call raises, or "nothing raised".
#pragma once

#include <functional>
#include <string>

#include "quv/base/errors.h"

namespace quv::test {

inline std::string MessageOf(const std::function<void()>& call) {
  try {
    call();
  } catch (const EQUVMath1Error& e) {
    return e.what();
  }
  return "nothing raised";
}

}  // namespace quv::test
