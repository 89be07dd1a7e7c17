// The expression compiler: the shunting-yard method (E. W. Dijkstra, 1961) extended by
// prefix operators and function calls with counted arguments. It walks the text once with an
// explicit operator stack instead of recursion, so hostile nesting cannot overflow the call
// stack, and checks at every token whether an operand or an operator is due, which gives
// each error its position.
#include <algorithm>
#include <charconv>
#include <limits>
#include <numbers>
#include <string>
#include <utility>

#include "quv/math2/mathexp_eval.h"

namespace quv {

namespace {

constexpr std::int32_t kUnlimited = std::numeric_limits<std::int32_t>::max();

bool IsFunction(TOperator op) {
  return (op >= opSine && op <= opVar) || (op >= opExp && op <= opMin);
}

bool IsPrefix(TOperator op) {
  return op == opMinusSign || op == opPlusSign || op == opNot;
}

// Binding level of an operator, 1 the loosest (see the table in mathexp_eval.h).
int Level(TOperator op) {
  switch (op) {
    case opOr:
    case opXor:
      return 1;
    case opAnd:
      return 2;
    case opNot:
      return 3;
    case opGT:
    case opGE:
    case opLT:
    case opLE:
    case opEQ:
    case opNE:
      return 4;
    case opAdd:
    case opSubtract:
      return 5;
    case opMultiply:
    case opDivide:
    case opMod:
      return 6;
    case opMinusSign:
    case opPlusSign:
      return 7;
    case opPower:
      return 8;
    default:
      return 0;
  }
}

std::pair<std::int32_t, std::int32_t> ArgRange(TOperator op) {
  switch (op) {
    case opSum:
    case opMean:
    case opMax:
    case opMin:
      return {1, kUnlimited};
    case opVar:
      return {2, kUnlimited};
    case opGauss:
      return {2, 2};
    default:
      return {1, 1};
  }
}

[[noreturn]] void RaiseAt(std::string text, std::size_t index) {
  throw EQUVMathExp(text + " at position " + std::to_string(index + 1));
}

std::string Quoted(std::string_view what, std::string_view name) {
  return std::string(what) + " \"" + std::string(name) + "\"";
}

// Value of the number text; a value beyond the double range raises, one below it is 0.
double NumberValue(std::string_view text, std::size_t at) {
  double value = 0.0;
  const auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (ec == std::errc() && end == text.data() + text.size()) return value;
  // Out of range: find the decimal order of the first significant digit to tell overflow
  // from underflow.
  const std::size_t epos = text.find_first_of("eE");
  const std::string_view mantissa = text.substr(0, epos);
  long long exponent = 0;
  if (epos != std::string_view::npos) {
    std::size_t k = epos + 1;
    const bool negative = text[k] == '-';
    if (text[k] == '+' || text[k] == '-') ++k;
    for (; k < text.size(); ++k)
      exponent = std::min(exponent * 10 + (text[k] - '0'), 1'000'000'000'000LL);
    if (negative) exponent = -exponent;
  }
  const std::size_t point = std::min(mantissa.find('.'), mantissa.size());
  const std::size_t first = mantissa.find_first_of("123456789");
  if (first == std::string_view::npos) return 0.0;
  const long long order = first < point ? static_cast<long long>(point - first) - 1
                                        : -static_cast<long long>(first - point);
  if (order + exponent < 0) return 0.0;
  RaiseAt(std::string(msg::kExpNumberRange), at);
}

// An entry of the operator stack: an operator waiting for its right operand, a parenthesis,
// or the parenthesis of a function call with its arguments counted so far.
struct Pending {
  TOperator op;
  bool call;
  std::int32_t args;
  std::size_t pos;
  bool IsMarker() const { return call || op == opOpenParanth; }
};

class Compiler {
 public:
  Compiler(std::string_view text, const std::vector<std::string>* fixed)
      : text_(text), fixed_(fixed) {
    if (fixed_) names_ = *fixed_;
  }

  void Run() {
    std::size_t i = 0;
    bool any = false;
    while (true) {
      while (i < text_.size() && IsBlank(text_[i]))
        ++i;
      if (i >= text_.size()) break;
      any = true;
      i = Token(i);
    }
    if (!any) RaiseAt(std::string(msg::kExpEmpty), 0);
    if (expect_operand_) RaiseAt(std::string(msg::kExpUnexpectedEnd), text_.size());
    while (!stack_.empty()) {
      if (stack_.back().IsMarker()) RaiseAt(std::string(msg::kExpNotClosed), stack_.back().pos);
      EmitPending();
    }
  }

  std::vector<TExpInstruction> program_;
  std::vector<std::string> names_;
  std::size_t max_depth_ = 0;

 private:
  static bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

  // Handles the token at i and returns the position after it.
  std::size_t Token(std::size_t i) {
    const char c = text_[i];
    if (detail::IsNumberStart(text_, i)) {
      const std::size_t n = detail::ScanNumber(text_, i);
      ExpectOperand(i);
      Emit(opNumber, 0, NumberValue(text_.substr(i, n), i));
      expect_operand_ = false;
      return i + n;
    }
    if (detail::IsNameStart(c)) return Word(i);
    switch (c) {
      case '(':
        ExpectOperand(i);
        stack_.push_back({opOpenParanth, false, 0, i});
        return i + 1;
      case ')':
        return Close(i);
      case ',':
        return Comma(i);
      case '+':
      case '-':
        if (expect_operand_) {
          // A plus sign changes nothing and is dropped.
          if (c == '-') stack_.push_back({opMinusSign, false, 0, i});
          return i + 1;
        }
        return Binary(c == '+' ? opAdd : opSubtract, i, 1);
      case '*':
        return Binary(opMultiply, i, 1);
      case '/':
        return Binary(opDivide, i, 1);
      case '^':
        return Binary(opPower, i, 1);
      case '=':
        return Binary(opEQ, i, Next(i) == '=' ? 2 : 1);
      case '!':
        if (Next(i) == '=') return Binary(opNE, i, 2);
        break;
      case '<':
        if (Next(i) == '>') return Binary(opNE, i, 2);
        if (Next(i) == '=') return Binary(opLE, i, 2);
        return Binary(opLT, i, 1);
      case '>':
        if (Next(i) == '=') return Binary(opGE, i, 2);
        return Binary(opGT, i, 1);
      default:
        break;
    }
    std::string what(msg::kExpUnexpectedChar);
    if (static_cast<unsigned char>(c) >= 0x20 && static_cast<unsigned char>(c) < 0x7F)
      what += std::string(" '") + c + "'";
    RaiseAt(what, i);
  }

  char Next(std::size_t i) const { return i + 1 < text_.size() ? text_[i + 1] : '\0'; }

  std::size_t Word(std::size_t i) {
    const std::size_t n = detail::ScanName(text_, i);
    const std::string_view word = text_.substr(i, n);
    const TOperator op = KeywordOperator(word);
    std::size_t after = i + n;
    while (after < text_.size() && IsBlank(text_[after]))
      ++after;
    const bool paren_follows = after < text_.size() && text_[after] == '(';
    if (op == opMod || op == opAnd || op == opOr || op == opXor) return Binary(op, i, n);
    ExpectOperand(i);
    if (op == opNot) {
      stack_.push_back({opNot, false, 0, i});
      return i + n;
    }
    if (op == opPi || op == opTrue || op == opFalse) {
      Emit(opNumber, 0, op == opPi ? std::numbers::pi : (op == opTrue ? 1.0 : 0.0));
      expect_operand_ = false;
      return i + n;
    }
    if (IsFunction(op)) {
      if (!paren_follows) RaiseAt(Quoted(msg::kExpParanthExpected, word), after);
      stack_.push_back({op, true, 1, i});
      return after + 1;
    }
    if (paren_follows) RaiseAt(Quoted(msg::kExpUnknownFunction, word), i);
    const auto found = std::find(names_.begin(), names_.end(), word);
    if (found == names_.end()) {
      if (fixed_) RaiseAt(Quoted(msg::kExpUnknownName, word), i);
      names_.emplace_back(word);
    }
    Emit(opListElem,
         static_cast<std::int32_t>(std::find(names_.begin(), names_.end(), word) - names_.begin()),
         0.0);
    expect_operand_ = false;
    return i + n;
  }

  std::size_t Binary(TOperator op, std::size_t i, std::size_t length) {
    if (expect_operand_) RaiseAt(std::string(msg::kExpOperandExpected), i);
    const int level = Level(op);
    const bool right = op == opPower;
    while (!stack_.empty() && !stack_.back().IsMarker()) {
      const int top = Level(stack_.back().op);
      if (top > level || (top == level && !right))
        EmitPending();
      else
        break;
    }
    stack_.push_back({op, false, 0, i});
    expect_operand_ = true;
    return i + length;
  }

  std::size_t Close(std::size_t i) {
    if (expect_operand_) RaiseAt(std::string(msg::kExpOperandExpected), i);
    PopToMarker();
    if (stack_.empty()) RaiseAt(std::string(msg::kExpNoPartner), i);
    const Pending marker = stack_.back();
    stack_.pop_back();
    if (marker.call) {
      const auto [low, high] = ArgRange(marker.op);
      if (marker.args < low || marker.args > high) {
        std::string what = std::string(msg::kExpArgCount) + " " +
                           std::string(OperatorKeyword(marker.op)) + " (" +
                           std::to_string(marker.args) + " given, ";
        if (low == high)
          what += std::to_string(low) + " expected)";
        else
          what += "at least " + std::to_string(low) + " expected)";
        RaiseAt(what, marker.pos);
      }
      Emit(marker.op, marker.args, 0.0);
    }
    return i + 1;
  }

  std::size_t Comma(std::size_t i) {
    if (expect_operand_) RaiseAt(std::string(msg::kExpOperandExpected), i);
    PopToMarker();
    if (stack_.empty() || !stack_.back().call) RaiseAt(std::string(msg::kExpCommaOutside), i);
    ++stack_.back().args;
    expect_operand_ = true;
    return i + 1;
  }

  void ExpectOperand(std::size_t i) const {
    if (!expect_operand_) RaiseAt(std::string(msg::kExpOperatorExpected), i);
  }

  void PopToMarker() {
    while (!stack_.empty() && !stack_.back().IsMarker())
      EmitPending();
  }

  void EmitPending() {
    const TOperator op = stack_.back().op;
    stack_.pop_back();
    Emit(op, 0, 0.0);
  }

  // Appends an instruction and follows the depth of the value stack it will need.
  void Emit(TOperator op, std::int32_t count, double value) {
    if (op == opNumber || op == opListElem)
      ++depth_;
    else if (IsFunction(op))
      depth_ = depth_ + 1 - static_cast<std::size_t>(count);
    else if (!IsPrefix(op))
      --depth_;
    max_depth_ = std::max(max_depth_, depth_);
    // A binary operator whose right operand is a single push takes that operand directly.
    if (!IsFunction(op) && !IsPrefix(op) && op != opNumber && op != opListElem) {
      TExpInstruction& last = program_.back();
      if (last.Op == opNumber || last.Op == opListElem) {
        last.Source = last.Op == opNumber ? esNumber : esVariable;
        last.Op = op;
        return;
      }
    }
    program_.push_back({op, esStack, count, value});
  }

  std::string_view text_;
  const std::vector<std::string>* fixed_;
  std::vector<Pending> stack_;
  bool expect_operand_ = true;
  std::size_t depth_ = 0;
};

}  // namespace

TMathExpression::TMathExpression(std::string_view Expression) {
  Compile(Expression);
}

void TMathExpression::Compile(std::string_view Expression) {
  CompileWith(Expression, nullptr);
}

void TMathExpression::Compile(std::string_view Expression, const std::vector<std::string>& Names) {
  CompileWith(Expression, &Names);
}

void TMathExpression::CompileWith(std::string_view Expression,
                                  const std::vector<std::string>* Names) {
  Compiler c(Expression, Names);
  c.Run();
  // Only running out of memory can fail from here on: build everything, then swap it in.
  std::string text(Expression);
  std::vector<double> values(c.names_.size(), 0.0);
  std::vector<bool> bound(c.names_.size(), false);
  // One more than the deepest stack: a list function stores the top beside its arguments.
  std::vector<double> stack(c.max_depth_ + 1);
  text_.swap(text);
  names_.swap(c.names_);
  program_.swap(c.program_);
  values_.swap(values);
  bound_.swap(bound);
  unbound_ = names_.size();
  stack_.swap(stack);
}

}  // namespace quv
