#include <gtest/gtest.h>

#include <new>
#include <string>

#include "quv/base/base.h"

namespace quv {
namespace {

TEST(ErrorMessages, ComponentFunctionAndArgumentForms) {
  TComponent vec;
  EXPECT_EQ(ComponentMessage(vec, msg::kNotEnoughMemory), "Component \"\": not enough memory");
  vec.SetName("Vec1");
  EXPECT_EQ(ComponentMessage(vec, msg::kNotEnoughMemoryOnHeap),
            "Component \"Vec1\": not enough memory on heap");
  vec.SetName("Renamed");
  EXPECT_EQ(ComponentMessage(vec, msg::kHistogramInvalidBins),
            "Component \"Renamed.Histogram\": invalid number of bins");
  EXPECT_EQ(FunctionMessage("Factorial", "negative argument"), "Factorial: negative argument");
  EXPECT_EQ(ArgumentMessage("HexToDouble: invalid hex string \"", "12G4"),
            "HexToDouble: invalid hex string \"12G4\"");
}

TEST(ErrorClasses, UnitClassesAndAllocationFailures) {
  try {
    RaiseFunctionError<EQUVMath1Error>("Factorial", "negative argument");
    FAIL() << "nothing raised";
  } catch (const EQUVError& e) {
    EXPECT_STREQ(e.what(), "Factorial: negative argument");
  }
  static_assert(std::is_base_of_v<EQUVError, EQUVVectorError>);
  static_assert(std::is_base_of_v<EQUVError, EQUVMathExp>);
  static_assert(std::is_base_of_v<std::runtime_error, EQUVSLineError>);
  static_assert(!std::is_base_of_v<EQUVError, EQUVSLineError>);
  static_assert(!std::is_base_of_v<EQUVError, EMathError>);
  // An allocation failure becomes the unit's error in the component form.
  TComponent owner;
  owner.SetName("M");
  EXPECT_EQ(GuardAllocation<EQUVMatrixError>(owner, msg::kNotEnoughMemory, [] { return 7; }), 7);
  try {
    GuardAllocation<EQUVMatrixError>(owner, msg::kNotEnoughMemory,
                                     []() -> int { throw std::bad_alloc(); });
    FAIL() << "nothing raised";
  } catch (const EQUVMatrixError& e) {
    EXPECT_STREQ(e.what(), "Component \"M\": not enough memory");
  }
}

}  // namespace
}  // namespace quv
