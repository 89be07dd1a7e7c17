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
  // sp points one past the sp[-1] of the stack; the compiler sized the stack for the program.
  double* sp = stack_.data();
  for (const TExpInstruction& in : program_) {
    switch (in.Op) {
      case opNumber:
        *sp++ = in.Value;
        break;
      case opListElem:
        *sp++ = values[in.Count];
        break;
      case opMinusSign:
        sp[-1] = -sp[-1];
        break;
      case opNot:
        sp[-1] = Truth(sp[-1] == 0.0);
        break;
      case opSine:
        sp[-1] = std::sin(sp[-1]);
        break;
      case opCosine:
        sp[-1] = std::cos(sp[-1]);
        break;
      case opTangens:
        sp[-1] = tg(sp[-1]);
        break;
      case opArcSin:
        sp[-1] = std::asin(sp[-1]);
        break;
      case opArcCos:
        sp[-1] = std::acos(sp[-1]);
        break;
      case opArcTan:
        sp[-1] = std::atan(sp[-1]);
        break;
      case opAbs:
        sp[-1] = std::fabs(sp[-1]);
        break;
      case opSign:
        sp[-1] = Signum(sp[-1]);
        break;
      case opSqrt:
        sp[-1] = std::sqrt(sp[-1]);
        break;
      case opSqr:
        sp[-1] = sp[-1] * sp[-1];
        break;
      case opRound:
        sp[-1] = std::nearbyint(sp[-1]);
        break;
      case opNDInt:
        sp[-1] = nDistriIntegral(sp[-1]);
        break;
      case opNDQuant:
        sp[-1] = nDistriQuantile(sp[-1]);
        break;
      case opNDDens:
        sp[-1] = nDistriDensity(sp[-1]);
        break;
      case opExp:
        sp[-1] = std::exp(sp[-1]);
        break;
      case opLn:
        sp[-1] = std::log(sp[-1]);
        break;
      case opLg:
        sp[-1] = lg(sp[-1]);
        break;
      case opRand:
        sp[-1] = sp[-1] * Random();
        break;
      case opFrac:
        sp[-1] = sp[-1] - std::trunc(sp[-1]);
        break;
      case opInt:
        sp[-1] = std::trunc(sp[-1]);
        break;
      case opSum:
      case opMean:
      case opVar:
      case opMax:
      case opMin:
      case opGauss: {
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
        *sp++ = r;
        break;
      }
      // Binary operators: the right operand is on top; pop it first.
      case opAdd:
        --sp;
        sp[-1] += sp[0];
        break;
      case opSubtract:
        --sp;
        sp[-1] -= sp[0];
        break;
      case opMultiply:
        --sp;
        sp[-1] *= sp[0];
        break;
      case opDivide:
        --sp;
        sp[-1] /= sp[0];
        break;
      case opMod:
        --sp;
        sp[-1] = modr(sp[-1], sp[0]);
        break;
      case opPower:
        --sp;
        sp[-1] = std::pow(sp[-1], sp[0]);
        break;
      case opGT:
        --sp;
        sp[-1] = Truth(sp[-1] > sp[0]);
        break;
      case opGE:
        --sp;
        sp[-1] = Truth(sp[-1] >= sp[0]);
        break;
      case opLT:
        --sp;
        sp[-1] = Truth(sp[-1] < sp[0]);
        break;
      case opLE:
        --sp;
        sp[-1] = Truth(sp[-1] <= sp[0]);
        break;
      case opEQ:
        --sp;
        sp[-1] = Truth(sp[-1] == sp[0]);
        break;
      case opNE:
        --sp;
        sp[-1] = Truth(sp[-1] != sp[0]);
        break;
      case opAnd:
        --sp;
        sp[-1] = Truth(sp[-1] != 0.0 && sp[0] != 0.0);
        break;
      case opOr:
        --sp;
        sp[-1] = Truth(sp[-1] != 0.0 || sp[0] != 0.0);
        break;
      case opXor:
        --sp;
        sp[-1] = Truth((sp[-1] != 0.0) != (sp[0] != 0.0));
        break;
      default:
        break;  // no other operator reaches a program
    }
  }
  return sp[-1];
}

}  // namespace quv
