// Vocabulary of the arithmetic expression language: the operator set TOperator, the exception
// class EQUVMathExp (declared with the library's other error classes), the parenthesis check
// and the extraction of variable names. The compiler and evaluator, TMathExpression, are in
// mathexp_eval.h.
//
// Lexical rules shared by ExtractVarNames and the compiler:
//   name     a letter or underscore followed by letters, digits and underscores; case matters
//   number   digits with an optional decimal point and fraction (".5" and "5." are numbers)
//            and an optional exponent e or E, sign, digits; no sign of its own
//   keyword  a name of the function set (OperatorKeyword): function names, the constants pi,
//            true and false, and the word operators mod, and, or, xor, not; keywords are
//            lower case, so "Sin" is an ordinary name
// A name that is not a keyword is a variable.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "quv/base/base.h"

namespace quv {

/// Operators and functions of an expression. The order, and so every ordinal, is fixed.
/// In a compiled program opNumber pushes a constant and opListElem pushes an element of the
/// list of variable values (see TExpInstruction).
// One line per group of operators.
// clang-format off
enum TOperator : std::uint8_t {
  opNone, opNumber, opListElem,
  opAdd, opSubtract, opMultiply, opDivide, opMod, opPower,
  opGT, opGE, opLT, opLE, opEQ, opNE,
  opOpenParanth, opClosedParanth, opMinusSign, opPlusSign,
  opSine, opCosine, opTangens, opArcSin, opArcCos, opArcTan,
  opAbs, opSign, opSqrt, opSqr, opRound,
  opNDInt, opNDQuant, opNDDens,
  opSum, opMean, opVar,
  opPi, opTrue, opFalse,
  opExp, opLn, opLg, opGauss, opRand, opFrac, opInt, opMax, opMin,
  opAnd, opNot, opOr, opXor
};
// clang-format on

/// Number of values of TOperator.
inline constexpr int kNrOfOperators = opXor + 1;

/// Messages of the expression language. The compiler adds " at position N" (1-based
/// character position of the fault) to each of the positional ones.
namespace msg {
inline constexpr std::string_view kExpEmpty = "empty expression";
inline constexpr std::string_view kExpUnexpectedChar = "unexpected character";
inline constexpr std::string_view kExpOperandExpected = "operand expected";
inline constexpr std::string_view kExpOperatorExpected = "operator expected";
inline constexpr std::string_view kExpUnexpectedEnd = "unexpected end of expression";
inline constexpr std::string_view kExpNoPartner = "closing parenthesis without partner";
inline constexpr std::string_view kExpNotClosed = "parenthesis not closed";
inline constexpr std::string_view kExpCommaOutside = "comma outside an argument list";
inline constexpr std::string_view kExpNumberRange = "number out of range";
inline constexpr std::string_view kExpParanthExpected = "opening parenthesis expected after";
inline constexpr std::string_view kExpUnknownFunction = "unknown function";
inline constexpr std::string_view kExpUnknownName = "unknown name";
inline constexpr std::string_view kExpArgCount = "wrong number of arguments for";
// Messages of the function form (the function's name comes first).
inline constexpr std::string_view kExpUnknownVariable = "unknown variable";
inline constexpr std::string_view kExpVarIndex = "variable index out of range";
inline constexpr std::string_view kExpNoValue = "no value for variable";
inline constexpr std::string_view kExpNotCompiled = "no expression compiled";
inline constexpr std::string_view kExpValueCount =
    "number of values differs from number of variables";
}  // namespace msg

/// Checks the nesting of parentheses: walks the characters while the count of open ones is
/// not negative. Returns 0 when balanced, the number of parentheses left open when positive,
/// and minus the 1-based position of the first ")" without a partner when negative (the walk
/// stops there, so "(x))(" gives -4).
std::int32_t CheckParanthInExp(const std::string& Expression);

/// Clears VarNames and fills it with the variable names of Expression in the order of their
/// first occurrence, each once. Keywords of the function set are not variables. Only the
/// lexical rules above are applied: text that would not compile still yields its names.
void ExtractVarNames(const std::string& Expression, std::vector<std::string>& VarNames);

/// The keyword of an operator ("sin", "mod", "pi", ...), or "" for the operators that are
/// written with symbols (opAdd, opGT, ...) or not written at all (opNone, opNumber,
/// opListElem).
std::string_view OperatorKeyword(TOperator op);

/// The operator of a keyword, or opNone when Word is not a keyword.
TOperator KeywordOperator(std::string_view Word);

namespace detail {

/// True for the first character of a name.
constexpr bool IsNameStart(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}
/// True for a decimal digit.
constexpr bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}
/// True where a number starts: a digit, or a point followed by a digit.
bool IsNumberStart(std::string_view text, std::size_t i);
/// Length of the name that starts at i.
std::size_t ScanName(std::string_view text, std::size_t i);
/// Length of the number that starts at i (IsNumberStart must hold).
std::size_t ScanNumber(std::string_view text, std::size_t i);

}  // namespace detail

}  // namespace quv
