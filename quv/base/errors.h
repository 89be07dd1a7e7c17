// The exception family of the library and the helpers that compose its messages.
//
// Every message belongs to one of four forms, and each form is built by exactly one helper so
// that the literals appear once:
//   component form   Component "<Name><closing literal>     ComponentMessage
//   function form    <Function>: <text>                      FunctionMessage
//   argument form    <opening literal><argument>"            ArgumentMessage
//   bare text        the literal itself
#pragma once

#include <new>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

namespace quv {

class TComponent;

/// Base exception of the library: a message and nothing else.
class EQUVError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Floating-point math error. The guarded elementary functions build one and return 0
/// instead of raising it; nothing in the library throws it.
class EMathError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Declares one unit's exception class.
#define QUV_DECLARE_ERROR(Name, Parent) \
  class Name : public Parent {          \
    using Base = Parent;                \
                                        \
   public:                              \
    using Base::Base;                   \
  }

QUV_DECLARE_ERROR(EQUVMath1Error, EQUVError);
QUV_DECLARE_ERROR(EQUVComplexError, EQUVError);
QUV_DECLARE_ERROR(EQUVVectorError, EQUVError);
QUV_DECLARE_ERROR(EQUVMatrixError, EQUVError);
QUV_DECLARE_ERROR(EQUVDataTableError, EQUVError);
QUV_DECLARE_ERROR(EQUVStatisError, EQUVError);
QUV_DECLARE_ERROR(EQUVMath2Error, EQUVError);
QUV_DECLARE_ERROR(EQUVMathExp, EQUVError);
QUV_DECLARE_ERROR(EQUVFourierError, EQUVError);
QUV_DECLARE_ERROR(EQUVWaveletError, EQUVError);
/// Deliberately not an EQUVError: the straight-line unit raises plain runtime errors.
QUV_DECLARE_ERROR(EQUVSLineError, std::runtime_error);

#undef QUV_DECLARE_ERROR

/// Closing literals of the component form. Each ends the quotation around the name.
namespace msg {
inline constexpr std::string_view kNotEnoughMemoryOnHeap = "\": not enough memory on heap";
inline constexpr std::string_view kNotEnoughMemory = "\": not enough memory";
inline constexpr std::string_view kVectorsDifferentDims = "\": vectors have different dimensions";
inline constexpr std::string_view kNegativeArgGeometricMean =
    "\": negative argument passed to GeometricMean";
inline constexpr std::string_view kNonPositiveArgHarmonicMean =
    "\": negative or zero argument passed to HarmonicMean";
inline constexpr std::string_view kHistogramInvalidBins = ".Histogram\": invalid number of bins";
}  // namespace msg

/// Component form: "Component \"" + name + closing literal.
std::string ComponentMessage(std::string_view name, std::string_view closing);
/// Component form with the component's Name() as it is now.
std::string ComponentMessage(const TComponent& component, std::string_view closing);
/// Function form: function + ": " + text.
std::string FunctionMessage(std::string_view function, std::string_view text);
/// Argument form: opening literal + argument as passed + one closing double quote.
std::string ArgumentMessage(std::string_view opening, std::string_view argument);

/// Raises E with the component form.
template <class E>
[[noreturn]] void RaiseComponentError(const TComponent& component, std::string_view closing) {
  throw E(ComponentMessage(component, closing));
}

/// Raises E with the function form.
template <class E>
[[noreturn]] void RaiseFunctionError(std::string_view function, std::string_view text) {
  throw E(FunctionMessage(function, text));
}

/// Runs an allocation and turns std::bad_alloc into E with the component form, so that an
/// out-of-memory failure reads like every other error of the component. The operation must
/// obtain its storage before it changes anything, so that the component stays as it was.
template <class E, class Allocate>
decltype(auto) GuardAllocation(const TComponent& component, std::string_view closing,
                               Allocate&& allocate) {
  try {
    return std::forward<Allocate>(allocate)();
  } catch (const std::bad_alloc&) {
    RaiseComponentError<E>(component, closing);
  }
}

}  // namespace quv
