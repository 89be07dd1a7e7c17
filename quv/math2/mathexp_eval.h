// TMathExpression: compiles an expression once into a postfix program and evaluates it many
// times with variable values bound by name or by position.
//
// Syntax (lexical rules in mathexp.h; blanks, tabs and line breaks separate tokens):
//
//   expression  := operand { binary-operator operand }
//   operand     := { prefix-operator } primary
//   primary     := number | variable | constant | function "(" arguments ")" | "(" expression ")"
//   arguments   := expression { "," expression }
//
// Operators, from the loosest to the tightest binding:
//
//   level  operators                         associativity
//   1      or  xor                           left
//   2      and                               left
//   3      not  (prefix)                     -
//   4      =  <>  <  <=  >  >=               left
//   5      +  -                              left
//   6      *  /  mod                         left
//   7      +  -  (prefix signs)              -
//   8      ^                                 right
//
// == and != are accepted for = and <>. A word operator needs a blank or a parenthesis
// around it where a name would otherwise continue ("a mod b", not "amodb").
//
// So 2^3^2 = 2^9 = 512, -2^2 = -4, 2^-2 = 0.25, a-b-c = (a-b)-c, not a = b is not (a = b), and
// a < b < c compares the 0 or 1 of a < b with c.
//
// Functions (x, m, s: one argument each; list: one or more arguments separated by commas):
//
//   sin cos tan arcsin arccos arctan (x)   radians; tan is the library's tg
//   abs sign sqrt sqr round (x)            sign is Signum (1 for x >= 0, -1 otherwise);
//                                          round goes to the nearest integer, ties to even
//   ndint ndquant nddens (x)               nDistriIntegral, nDistriQuantile, nDistriDensity
//   sum mean (list)  var (list of >= 2)    var is the sample variance (divisor n - 1)
//   max min (list)                         a NaN among the arguments gives NaN
//   exp ln (x)                             std::exp, std::log
//   lg (x)                                 the library's lg: decimal logarithm, 0 for x <= 0
//   frac int (x)                           fractional part and integer part (towards zero)
//   gauss (m, s)                           normal random number m + s * GRandom()
//   rand (x)                               uniform random number x * Random(), in [0, x)
//   pi true false                          constants (true = 1, false = 0), no parentheses
//
// Values: every value is a double. Comparisons and logical operators give 1 or 0; the logical
// operators count 0 as false and every other value, NaN included, as true. Division by zero,
// sqrt and ln of negative numbers, arcsin and arccos outside [-1, 1] and 0^-1 give the IEEE
// results (infinities or NaN) without an error; a mod m is modr (remainder with the sign of
// a; m = 0 gives NaN). gauss and rand draw from the process-wide random source at every
// evaluation.
//
// Errors: Compile raises EQUVMathExp with a message that ends in " at position N", the
// 1-based character position of the fault, e.g. "operand expected at position 4" or
// "unknown function \"Sin\" at position 1". A failed Compile keeps the previous program. The
// compiler works without recursion, so any depth of nesting is only limited by memory.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "quv/math2/mathexp.h"

namespace quv {

/// Where a binary operator finds its right operand.
enum TExpSource : std::uint8_t {
  esStack,     ///< on the stack, above the left operand
  esNumber,    ///< the instruction's Value
  esVariable,  ///< the variable of index Count
};

/// One step of a compiled program, which runs on a stack of values. The compiler folds the
/// push of a number or variable that is the right operand of a binary operator into the
/// operator (Source), which saves a third of the steps of a typical formula.
struct TExpInstruction {
  TOperator Op = opNone;
  TExpSource Source = esStack;
  /// Variable index (0-based) for opListElem and esVariable; number of arguments for the
  /// list functions.
  std::int32_t Count = 0;
  /// The constant of opNumber and esNumber.
  double Value = 0.0;
};

/// An expression compiled into a postfix program. Not thread-safe: Evaluate uses a work
/// stack inside the object, so use one object per thread.
class TMathExpression {
 public:
  TMathExpression() = default;
  /// Compiles Expression with free variable names (see Compile).
  explicit TMathExpression(std::string_view Expression);

  /// Compiles Expression. Every name that is not a keyword is a variable; VarNames lists
  /// them in the order of their first occurrence, as ExtractVarNames does, and they start
  /// without a value. Raises EQUVMathExp (message with the position) on an error and then
  /// keeps the previous program and values.
  void Compile(std::string_view Expression);
  /// Compiles Expression against a fixed list of names: VarNames becomes Names (the first of
  /// equal names counts), variable indices are positions in it, and a name that is not in it
  /// raises "unknown name \"x\" at position N".
  void Compile(std::string_view Expression, const std::vector<std::string>& Names);

  /// The compiled text.
  const std::string& Expression() const { return text_; }
  /// The variables in the order of their indices.
  const std::vector<std::string>& VarNames() const { return names_; }
  /// 0-based index of a variable, or -1.
  std::int32_t VarIndex(std::string_view Name) const;
  /// The compiled program.
  const std::vector<TExpInstruction>& Program() const { return program_; }

  /// Binds a value to a variable. Raises "SetVar: unknown variable \"x\"".
  void SetVar(std::string_view Name, double Value);
  /// Binds a value to the variable with a 0-based index. Raises "SetVar: variable index out
  /// of range".
  void SetVar(std::int32_t Index, double Value);

  /// The value of the expression with the values bound by SetVar. Raises "Evaluate: no value
  /// for variable \"x\"" while a variable is unbound and "Evaluate: no expression compiled".
  double Evaluate() const;
  /// The value of the expression with Values[i] for the variable of index i. Raises
  /// "Evaluate: number of values differs from number of variables" unless the sizes match.
  double Evaluate(std::span<const double> Values) const;

 private:
  void CompileWith(std::string_view Expression, const std::vector<std::string>* Names);
  double Run(const double* values) const;

  std::string text_;
  std::vector<std::string> names_;
  std::vector<TExpInstruction> program_;
  std::vector<double> values_;
  std::vector<bool> bound_;
  std::size_t unbound_ = 0;
  mutable std::vector<double> stack_;
};

}  // namespace quv
