// The evaluator: one pass over the postfix program with a value stack sized by the compiler.
#include <algorithm>
#include <cmath>
#include <string>

#include "quv/math1/elementary.h"
#include "quv/math1/simple_random.h"
#include "quv/math2/mathexp_eval.h"
#include "quv/statis/normal.h"

namespace quv {

namespace {

// The dispatch key of an instruction: operator and operand source in one number, so that
// one switch reaches every variant.
constexpr int Key(TOperator op, TExpSource source) {
  return op + kNrOfOperators * source;
}

double Truth(bool b) {
  return b ? 1.0 : 0.0;
}

// Sum of n values in extended precision, rounded once.
long double SumOf(const double* v, std::int32_t n) {
  long double s = 0.0L;
  for (std::int32_t i = 0; i < n; ++i)
    s += v[i];
  return s;
}

// Sample variance by the two-pass method (n >= 2, which the compiler ensures).
double VarianceOf(const double* v, std::int32_t n) {
  const long double mean = SumOf(v, n) / n;
  long double q = 0.0L;
  for (std::int32_t i = 0; i < n; ++i)
    q += (v[i] - mean) * (v[i] - mean);
  return static_cast<double>(q / (n - 1));
}

// Maximum (Less = greater-than) or minimum of n values; the first NaN wins.
template <class Better>
double ExtremeOf(const double* v, std::int32_t n, Better better) {
  double r = v[0];
  for (std::int32_t i = 1; i < n && !std::isnan(r); ++i)
    if (std::isnan(v[i]) || better(v[i], r)) r = v[i];
  return r;
}

}  // namespace

std::int32_t TMathExpression::VarIndex(std::string_view Name) const {
  const auto it = std::find(names_.begin(), names_.end(), Name);
  return it == names_.end() ? -1 : static_cast<std::int32_t>(it - names_.begin());
}

void TMathExpression::SetVar(std::string_view Name, double Value) {
  const std::int32_t index = VarIndex(Name);
  if (index < 0)
    RaiseFunctionError<EQUVMathExp>(
        "SetVar", std::string(msg::kExpUnknownVariable) + " \"" + std::string(Name) + "\"");
  SetVar(index, Value);
}

void TMathExpression::SetVar(std::int32_t Index, double Value) {
  if (Index < 0 || static_cast<std::size_t>(Index) >= values_.size())
    RaiseFunctionError<EQUVMathExp>("SetVar", msg::kExpVarIndex);
  const auto i = static_cast<std::size_t>(Index);
  values_[i] = Value;
  if (!bound_[i]) {
    bound_[i] = true;
    --unbound_;
  }
}

double TMathExpression::Evaluate() const {
  if (unbound_ > 0) {
    const auto i =
        static_cast<std::size_t>(std::find(bound_.begin(), bound_.end(), false) - bound_.begin());
    RaiseFunctionError<EQUVMathExp>("Evaluate",
                                    std::string(msg::kExpNoValue) + " \"" + names_[i] + "\"");
  }
  return Run(values_.data());
}

double TMathExpression::Evaluate(std::span<const double> Values) const {
  if (Values.size() != names_.size())
    RaiseFunctionError<EQUVMathExp>("Evaluate", msg::kExpValueCount);
  return Run(Values.data());
}

double TMathExpression::Run(const double* values) const {
  if (program_.empty()) RaiseFunctionError<EQUVMathExp>("Evaluate", msg::kExpNotCompiled);
  // The top of the stack lives in a register (top); the values below it are in stack_, and
  // sp points one past the last of them. The first push stores the initial 0 as a dummy.
  // The compiler sized the stack for the program.
  double top = 0.0;
  double* sp = stack_.data();
  for (const TExpInstruction& in : program_) {
    switch (Key(in.Op, in.Source)) {
      case opNumber:
        *sp++ = top;
        top = in.Value;
        break;
      case opListElem:
        *sp++ = top;
        top = values[in.Count];
        break;
      case opMinusSign:
        top = -top;
        break;
      case opNot:
        top = Truth(top == 0.0);
        break;
      case opSine:
        top = std::sin(top);
        break;
      case opCosine:
        top = std::cos(top);
        break;
      case opTangens:
        top = tg(top);
        break;
      case opArcSin:
        top = std::asin(top);
        break;
      case opArcCos:
        top = std::acos(top);
        break;
      case opArcTan:
        top = std::atan(top);
        break;
      case opAbs:
        top = std::fabs(top);
        break;
      case opSign:
        top = Signum(top);
        break;
      case opSqrt:
        top = std::sqrt(top);
        break;
      case opSqr:
        top = top * top;
        break;
      case opRound:
        top = std::nearbyint(top);
        break;
      case opNDInt:
        top = nDistriIntegral(top);
        break;
      case opNDQuant:
        top = nDistriQuantile(top);
        break;
      case opNDDens:
        top = nDistriDensity(top);
        break;
      case opExp:
        top = std::exp(top);
        break;
      case opLn:
        top = std::log(top);
        break;
      case opLg:
        top = lg(top);
        break;
      case opRand:
        top = top * Random();
        break;
      case opFrac:
        top = top - std::trunc(top);
        break;
      case opInt:
        top = std::trunc(top);
        break;
      case opSum:
      case opMean:
      case opVar:
      case opMax:
      case opMin:
      case opGauss: {
        // The arguments, top included, lie together in the stack.
        *sp++ = top;
        sp -= in.Count;
        double r = 0.0;
        if (in.Op == opSum)
          r = static_cast<double>(SumOf(sp, in.Count));
        else if (in.Op == opMean)
          r = static_cast<double>(SumOf(sp, in.Count) / in.Count);
        else if (in.Op == opVar)
          r = VarianceOf(sp, in.Count);
        else if (in.Op == opMax)
          r = ExtremeOf(sp, in.Count, [](double a, double b) { return a > b; });
        else if (in.Op == opMin)
          r = ExtremeOf(sp, in.Count, [](double a, double b) { return a < b; });
        else
          r = sp[0] + sp[1] * GRandom();
        top = r;
        break;
      }
      // Binary operators, once for each source of the right operand. The left operand is
      // the top, or the value below it when the right operand is on the stack too.
#define QUV_BINARY(OP, EXPRESSION)              \
  case Key(OP, esStack): {                      \
    const double a = *--sp, b = top;            \
    top = EXPRESSION;                           \
    break;                                      \
  }                                             \
  case Key(OP, esNumber): {                     \
    const double a = top, b = in.Value;         \
    top = EXPRESSION;                           \
    break;                                      \
  }                                             \
  case Key(OP, esVariable): {                   \
    const double a = top, b = values[in.Count]; \
    top = EXPRESSION;                           \
    break;                                      \
  }
        QUV_BINARY(opAdd, a + b)
        QUV_BINARY(opSubtract, a - b)
        QUV_BINARY(opMultiply, a * b)
        QUV_BINARY(opDivide, a / b)
        QUV_BINARY(opMod, modr(a, b))
        QUV_BINARY(opPower, std::pow(a, b))
        QUV_BINARY(opGT, Truth(a > b))
        QUV_BINARY(opGE, Truth(a >= b))
        QUV_BINARY(opLT, Truth(a < b))
        QUV_BINARY(opLE, Truth(a <= b))
        QUV_BINARY(opEQ, Truth(a == b))
        QUV_BINARY(opNE, Truth(a != b))
        QUV_BINARY(opAnd, Truth(a != 0.0 && b != 0.0))
        QUV_BINARY(opOr, Truth(a != 0.0 || b != 0.0))
        QUV_BINARY(opXor, Truth((a != 0.0) != (b != 0.0)))
#undef QUV_BINARY
      default:
        break;  // no other operator reaches a program
    }
  }
  return top;
}

}  // namespace quv
