#include "quv/math2/mathexp.h"

#include <algorithm>
#include <utility>

namespace quv {

namespace {

// The keywords of the operator set; every other operator is written with a symbol.
constexpr std::pair<std::string_view, TOperator> kKeywords[] = {
    {"mod", opMod},       {"sin", opSine},        {"cos", opCosine},    {"tan", opTangens},
    {"arcsin", opArcSin}, {"arccos", opArcCos},   {"arctan", opArcTan}, {"abs", opAbs},
    {"sign", opSign},     {"sqrt", opSqrt},       {"sqr", opSqr},       {"round", opRound},
    {"ndint", opNDInt},   {"ndquant", opNDQuant}, {"nddens", opNDDens}, {"sum", opSum},
    {"mean", opMean},     {"var", opVar},         {"pi", opPi},         {"true", opTrue},
    {"false", opFalse},   {"exp", opExp},         {"ln", opLn},         {"lg", opLg},
    {"gauss", opGauss},   {"rand", opRand},       {"frac", opFrac},     {"int", opInt},
    {"max", opMax},       {"min", opMin},         {"and", opAnd},       {"not", opNot},
    {"or", opOr},         {"xor", opXor},
};

}  // namespace

std::int32_t CheckParanthInExp(const std::string& Expression) {
  std::int32_t count = 0;
  for (std::size_t i = 0; i < Expression.size() && count >= 0; ++i) {
    if (Expression[i] == '(') {
      ++count;
    } else if (Expression[i] == ')') {
      --count;
      if (count < 0) count = -static_cast<std::int32_t>(i + 1);
    }
  }
  return count;
}

void ExtractVarNames(const std::string& Expression, std::vector<std::string>& VarNames) {
  VarNames.clear();
  const std::string_view text = Expression;
  std::size_t i = 0;
  while (i < text.size()) {
    if (detail::IsNumberStart(text, i)) {
      i += detail::ScanNumber(text, i);
    } else if (detail::IsNameStart(text[i])) {
      const std::size_t n = detail::ScanName(text, i);
      const std::string_view name = text.substr(i, n);
      if (KeywordOperator(name) == opNone &&
          std::find(VarNames.begin(), VarNames.end(), name) == VarNames.end())
        VarNames.emplace_back(name);
      i += n;
    } else {
      ++i;
    }
  }
}

std::string_view OperatorKeyword(TOperator op) {
  for (const auto& [word, o] : kKeywords)
    if (o == op) return word;
  return {};
}

TOperator KeywordOperator(std::string_view Word) {
  for (const auto& [word, o] : kKeywords)
    if (word == Word) return o;
  return opNone;
}

namespace detail {

bool IsNumberStart(std::string_view text, std::size_t i) {
  return IsDigit(text[i]) || (text[i] == '.' && i + 1 < text.size() && IsDigit(text[i + 1]));
}

std::size_t ScanName(std::string_view text, std::size_t i) {
  std::size_t j = i + 1;
  while (j < text.size() && (IsNameStart(text[j]) || IsDigit(text[j])))
    ++j;
  return j - i;
}

std::size_t ScanNumber(std::string_view text, std::size_t i) {
  std::size_t j = i;
  auto digits = [&] {
    while (j < text.size() && IsDigit(text[j]))
      ++j;
  };
  digits();
  if (j < text.size() && text[j] == '.') {
    ++j;
    digits();
  }
  // An exponent counts only when digits follow: in "2e" or "2ex" the number is "2".
  if (j < text.size() && (text[j] == 'e' || text[j] == 'E')) {
    std::size_t k = j + 1;
    if (k < text.size() && (text[k] == '+' || text[k] == '-')) ++k;
    if (k < text.size() && IsDigit(text[k])) {
      j = k;
      digits();
    }
  }
  return j - i;
}

}  // namespace detail

}  // namespace quv
