#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <numbers>
#include <string>
#include <vector>

#include "common/raised_message.h"
#include "quv/base/random.h"
#include "quv/math1/elementary.h"
#include "quv/math1/simple_random.h"
#include "quv/math2/math2.h"
#include "quv/statis/normal.h"

namespace quv {
namespace {

using test::RaisedMessage;
using Names = std::vector<std::string>;

double Eval(const std::string& text) {
  return TMathExpression(text).Evaluate(std::span<const double>());
}

TEST(MathExpVocabulary, OrdinalsAndKeywords) {
  static_assert(std::is_base_of_v<EQUVError, EQUVMathExp>);
  EXPECT_EQ(kNrOfOperators, 52);
  const std::pair<TOperator, int> ordinals[] = {
      {opNone, 0}, {opListElem, 2},     {opAdd, 3},       {opPower, 8},   {opGT, 9},
      {opNE, 14},  {opOpenParanth, 15}, {opPlusSign, 18}, {opSine, 19},   {opArcTan, 24},
      {opAbs, 25}, {opRound, 29},       {opNDInt, 30},    {opNDDens, 32}, {opSum, 33},
      {opVar, 35}, {opPi, 36},          {opFalse, 38},    {opExp, 39},    {opMin, 47},
      {opAnd, 48}, {opNot, 49},         {opOr, 50},       {opXor, 51},
  };
  for (const auto& [op, ordinal] : ordinals)
    EXPECT_EQ(static_cast<int>(op), ordinal);
  int keywords = 0;
  for (int i = 0; i < kNrOfOperators; ++i) {
    const auto op = static_cast<TOperator>(i);
    const std::string_view word = OperatorKeyword(op);
    if (word.empty()) continue;
    ++keywords;
    EXPECT_EQ(KeywordOperator(word), op) << word;
  }
  // Symbols: + - * / ^ and the comparisons; unwritten: none, number, list element, ( ) and
  // the two signs.
  EXPECT_EQ(keywords, 34);
  EXPECT_EQ(KeywordOperator("Sin"), opNone);
  EXPECT_EQ(KeywordOperator(""), opNone);
}

TEST(CheckParanthInExp, WalkStopsAtFirstUnmatchedClose) {
  const std::pair<const char*, int> cases[] = {
      {"", 0},        {"(a+b", 1}, {"((x)", 1}, {"a)+(b", -2},     {"(x))(", -4},
      {"(a)*(b)", 0}, {")", -1},   {"((((", 4}, {"f(g(h(x)))", 0}, {"())((", -3},
  };
  for (const auto& [text, expected] : cases)
    EXPECT_EQ(CheckParanthInExp(text), expected) << text;
}

TEST(ExtractVarNames, OrderDuplicatesKeywordsAndNumbers) {
  const std::pair<const char*, Names> cases[] = {
      {"", {}},
      {"b + a*b - a", {"b", "a"}},
      {"sin(x) + cos(y) + pi * true - sum(x, z1, _w)", {"x", "y", "z1", "_w"}},
      {"2e5x + 1E-3 + .5e+2y + 3.f", {"x", "y", "f"}},  // exponents belong to their numbers
      {"2ex", {"ex"}},                                  // no digits after e: a name
      {"Sin(a) mod not b and c or d xor e", {"Sin", "a", "b", "c", "d", "e"}},
      {"x_1 + X_1 + x_1", {"x_1", "X_1"}},
      {"((a $ b", {"a", "b"}},  // text that would not compile still yields its names
  };
  for (const auto& [text, expected] : cases) {
    Names names{"left over"};
    ExtractVarNames(text, names);
    EXPECT_EQ(names, expected) << text;
  }
}

struct FormulaCase {
  const char* text;
  std::function<double(double, double, double)> formula;
};

TEST(MathExpression, AgreesWithTheSameFormulasInCxx) {
  const FormulaCase cases[] = {
      {"x + y * z", [](double x, double y, double z) { return x + y * z; }},
      {"(x + y) * z", [](double x, double y, double z) { return (x + y) * z; }},
      {"x / y - z", [](double x, double y, double z) { return x / y - z; }},
      {"x^2 + y^2 - z", [](double x, double y, double z) { return x * x + y * y - z; }},
      {"sqrt(sqr(x) + sqr(y)) * z",
       [](double x, double y, double z) { return std::sqrt(x * x + y * y) * z; }},
      {"sin(x) * cos(y) + tan(z)",
       [](double x, double y, double z) { return std::sin(x) * std::cos(y) + std::tan(z); }},
      {"exp(-x) * ln(y) + z",
       [](double x, double y, double z) { return std::exp(-x) * std::log(y) + z; }},
      {"arctan(y / x) + arcsin(z / 10) - arccos(z / 5)",
       [](double x, double y, double z) {
         return std::atan(y / x) + std::asin(z / 10) - std::acos(z / 5);
       }},
      {"abs(x - y) + sign(z) + sign(0)",
       [](double x, double y, double z) { return std::fabs(x - y) + (z >= 0 ? 1 : -1) + 1; }},
      {"round(x * 10) / 10 + round(2.5) + round(-0.5)",
       [](double x, double, double) { return std::nearbyint(x * 10) / 10 + 2.0 - 0.0; }},
      {"frac(x) + int(y) * 100 + int(z)",
       [](double x, double y, double z) {
         return x - std::trunc(x) + std::trunc(y) * 100 + std::trunc(z);
       }},
      {"x mod y + z mod 0.75",
       [](double x, double y, double z) { return std::fmod(x, y) + std::fmod(z, 0.75); }},
      {"(x > y) + (x >= y)*2 + (x < y)*4 + (x <= y)*8 + (x = y)*16 + (x <> y)*32 + (x == x)*64 + "
       "(x != z)*128",
       [](double x, double y, double z) {
         return (x > y) + (x >= y) * 2 + (x < y) * 4 + (x <= y) * 8 + (x == y) * 16 +
                (x != y) * 32 + 64 + (x != z) * 128;
       }},
      {"x > 0 and y > 0 or z < 0",
       [](double x, double y, double z) { return double((x > 0 && y > 0) || z < 0); }},
      {"not (x > y) xor z > 0",
       [](double x, double y, double z) { return double(!(x > y) != (z > 0)); }},
      {"max(x, y, z) - min(x, y, z) + max(z)",
       [](double x, double y, double z) {
         return std::max({x, y, z}) - std::min({x, y, z}) + z;
       }},
      {"mean(x, y, z) + var(x, y) + sum(x, y, z, 1)",
       [](double x, double y, double z) {
         return (x + y + z) / 3 + (x - y) * (x - y) / 2 + x + y + z + 1;
       }},
      {"nddens(x) + ndint(y) + ndquant(0.3)",
       [](double x, double y, double) {
         return nDistriDensity(x) + nDistriIntegral(y) + nDistriQuantile(0.3);
       }},
      {"pi * x^2 + true - false",
       [](double x, double, double) { return std::numbers::pi * x * x + 1; }},
      {"lg(y) + 1e3 * .5 - 2.5E-1 + 3.", [](double, double y, double) { return lg(y) + 502.75; }},
      {"-x^2 - -y + +z", [](double x, double y, double z) { return -(x * x) + y + z; }},
  };
  const double points[][3] = {{1.5, 2.5, -0.5}, {3, 0.7, 4.25}, {-2, 5, 1}, {2, 2, 0}};
  for (const FormulaCase& c : cases) {
    TMathExpression e(c.text);
    for (const auto& p : points) {
      const Names names = e.VarNames();
      for (std::size_t i = 0; i < names.size(); ++i)
        e.SetVar(names[i], p[names[i][0] - 'x']);
      const double expected = c.formula(p[0], p[1], p[2]);
      EXPECT_NEAR(e.Evaluate(), expected, 1e-14 * (1 + std::fabs(expected)))
          << c.text << " at " << p[0] << ", " << p[1] << ", " << p[2];
    }
  }
}

TEST(MathExpression, PrecedenceAndAssociativity) {
  const std::pair<const char*, double> cases[] = {
      {"2^3^2", 512},
      {"(2^3)^2", 64},
      {"-2^2", -4},
      {"2^-2", 0.25},
      {"10-4-3", 3},
      {"64/4/2", 8},
      {"2*3^2", 18},
      {"-3*2", -6},
      {"2*-3", -6},
      {"--2", 2},
      {"+2", 2},
      {"1+2*3-4/2", 5},
      {"7 mod 3 * 2", 2},
      {"-7 mod 3", -1},
      {"2 + 7 mod 3", 3},
      {"1 < 2 < 3", 1},
      {"3 > 2 > 1", 0},
      {"1 + 1 = 2", 1},
      {"not 1 = 0", 1},
      {"not 0 + 1", 0},
      {"1 or 0 and 0", 1},
      {"(1 or 0) and 0", 0},
      {"1 xor 1 or 1", 1},
      {"1 xor (1 or 1)", 0},
      {"0 and 1 xor 1", 1},
      {"not not 5", 1},
      {"- - - 1", -1},
      {"2^3^0", 2},
      {"1e2^0.5", 10},
      {"  ( 1 )\t*\n2 ", 2},
  };
  for (const auto& [text, expected] : cases)
    EXPECT_DOUBLE_EQ(Eval(text), expected) << text;
  TMathExpression e("a-b-c");
  EXPECT_EQ(e.Evaluate(std::vector<double>{10, 4, 3}), 3.0);
}

TEST(MathExpression, CompileErrorsNameThePosition) {
  const std::pair<const char*, const char*> cases[] = {
      {"", "empty expression at position 1"},
      {" \t ", "empty expression at position 1"},
      {"1+", "unexpected end of expression at position 3"},
      {"1 mod ", "unexpected end of expression at position 7"},
      {"(1+2", "parenthesis not closed at position 1"},
      {"sum(1, (2)", "parenthesis not closed at position 1"},
      {"1+2)", "closing parenthesis without partner at position 4"},
      {"()", "operand expected at position 2"},
      {"1 2", "operator expected at position 3"},
      {"x y", "operator expected at position 3"},
      {"2x", "operator expected at position 2"},
      {"pi(2)", "operator expected at position 3"},
      {"2 ** 3", "operand expected at position 4"},
      {"and 1", "operand expected at position 1"},
      {"sum(1,)", "operand expected at position 7"},
      {"sin x", "opening parenthesis expected after \"sin\" at position 5"},
      {"1 + max", "opening parenthesis expected after \"max\" at position 8"},
      {"Sin(x)", "unknown function \"Sin\" at position 1"},
      {"1 + foo (2)", "unknown function \"foo\" at position 5"},
      {"var(1)", "wrong number of arguments for var (1 given, at least 2 expected) at position 1"},
      {"2*gauss(1)", "wrong number of arguments for gauss (1 given, 2 expected) at position 3"},
      {"sin(1, 2)", "wrong number of arguments for sin (2 given, 1 expected) at position 1"},
      {"1, 2", "comma outside an argument list at position 2"},
      {"sin((1, 2))", "comma outside an argument list at position 7"},
      {"1 $ 2", "unexpected character '$' at position 3"},
      {"1 ! 2", "unexpected character '!' at position 3"},
      {"1 + \x01", "unexpected character at position 5"},
      {"1e999 + 1", "number out of range at position 1"},
      {"2 * 1000000000000000000000000000000e300", "number out of range at position 5"},
  };
  for (const auto& [text, message] : cases)
    EXPECT_EQ(RaisedMessage<EQUVMathExp>([&] { TMathExpression e(text); }), message) << text;
}

TEST(MathExpression, NumbersBelowTheRangeAreZero) {
  EXPECT_EQ(Eval("1e-999 + 1"), 1.0);
  EXPECT_EQ(Eval("0.00000000000000000000000000000000000000000001e-300"), 0.0);
  EXPECT_EQ(Eval("4.9e-324"), 4.9e-324);
}

TEST(MathExpression, RightOperandsFoldIntoTheirOperators) {
  const TMathExpression e("(x - 1.5) * y + 2 * (x + y)");
  const std::vector<TExpInstruction>& p = e.Program();
  // x, -1.5, *y, 2, x, +y, *, +
  ASSERT_EQ(p.size(), 8u);
  EXPECT_EQ(p[0].Op, opListElem);
  EXPECT_EQ(p[1].Op, opSubtract);
  EXPECT_EQ(p[1].Source, esNumber);
  EXPECT_EQ(p[1].Value, 1.5);
  EXPECT_EQ(p[2].Op, opMultiply);
  EXPECT_EQ(p[2].Source, esVariable);
  EXPECT_EQ(p[2].Count, 1);
  EXPECT_EQ(p[3].Op, opNumber);
  EXPECT_EQ(p[6].Op, opMultiply);
  EXPECT_EQ(p[6].Source, esStack);
  EXPECT_EQ(p[7].Op, opAdd);
  EXPECT_EQ(p[7].Source, esStack);
  EXPECT_EQ(e.Evaluate(std::vector<double>{2.5, 4}), 4 + 2 * 6.5);
}

TEST(MathExpression, FixedNamesBindByPosition) {
  TMathExpression e;
  e.Compile("c * 10 + a", {"a", "b", "c"});
  EXPECT_EQ(e.VarNames(), (Names{"a", "b", "c"}));
  EXPECT_EQ(e.VarIndex("c"), 2);
  EXPECT_EQ(e.VarIndex("q"), -1);
  EXPECT_EQ(e.Evaluate(std::vector<double>{1, 99, 4}), 41.0);
  EXPECT_EQ(RaisedMessage<EQUVMathExp>([&] {
              e.Compile("a + q", {"a", "b"});
            }),
            "unknown name \"q\" at position 5");
  // The failed compile kept the previous program and names.
  EXPECT_EQ(e.Expression(), "c * 10 + a");
  EXPECT_EQ(e.Evaluate(std::vector<double>{2, 0, 3}), 32.0);
}

TEST(MathExpression, BindingErrors) {
  TMathExpression e;
  EXPECT_EQ(RaisedMessage<EQUVMathExp>([&] { e.Evaluate(); }), "Evaluate: no expression compiled");
  e.Compile("x + y");
  EXPECT_EQ(RaisedMessage<EQUVMathExp>([&] { e.Evaluate(); }),
            "Evaluate: no value for variable \"x\"");
  e.SetVar("x", 1);
  EXPECT_EQ(RaisedMessage<EQUVMathExp>([&] { e.Evaluate(); }),
            "Evaluate: no value for variable \"y\"");
  e.SetVar(1, 2);
  EXPECT_EQ(e.Evaluate(), 3.0);
  EXPECT_EQ(RaisedMessage<EQUVMathExp>([&] { e.SetVar("z", 1); }),
            "SetVar: unknown variable \"z\"");
  EXPECT_EQ(RaisedMessage<EQUVMathExp>([&] { e.SetVar(2, 1); }),
            "SetVar: variable index out of range");
  EXPECT_EQ(RaisedMessage<EQUVMathExp>([&] { e.SetVar(-1, 1); }),
            "SetVar: variable index out of range");
  EXPECT_EQ(RaisedMessage<EQUVMathExp>([&] { e.Evaluate(std::vector<double>{1}); }),
            "Evaluate: number of values differs from number of variables");
  // A failed compile keeps the bindings too.
  EXPECT_THROW(e.Compile("x +"), EQUVMathExp);
  EXPECT_EQ(e.Evaluate(), 3.0);
  // A new program starts without values.
  e.Compile("y * x");
  EXPECT_THROW(e.Evaluate(), EQUVMathExp);
}

TEST(MathExpression, ExtractVarNamesMatchesTheBindings) {
  const char* texts[] = {"b + a*b - a", "sum(q, r, q) / n_1 + sin(t)", "pi * r^2",
                         "not p xor (q and r) or 2e3 > x1", "42"};
  for (const char* text : texts) {
    Names extracted;
    ExtractVarNames(text, extracted);
    TMathExpression e(text);
    EXPECT_EQ(e.VarNames(), extracted) << text;
    for (std::size_t i = 0; i < extracted.size(); ++i)
      EXPECT_EQ(e.VarIndex(extracted[i]), static_cast<std::int32_t>(i)) << text;
  }
}

TEST(MathExpression, IeeeResultsWithoutErrors) {
  const double inf = std::numeric_limits<double>::infinity();
  EXPECT_EQ(Eval("1/0"), inf);
  EXPECT_EQ(Eval("-1/0"), -inf);
  EXPECT_EQ(Eval("ln(0)"), -inf);
  EXPECT_EQ(Eval("0^-1"), inf);
  const char* nans[] = {"0/0",         "sqrt(-1)",    "ln(-1)",
                        "arcsin(2)",   "5 mod 0",     "max(1, 0/0, 3)",
                        "min(0/0, 1)", "sum(1, 0/0)", "1/0 - 1/0"};
  for (const char* text : nans)
    EXPECT_TRUE(std::isnan(Eval(text))) << text;
  // NaN compares false, and counts as true in logic.
  EXPECT_EQ(Eval("(0/0 = 0/0) + (0/0 < 1)*2 + (0/0 <> 0/0)*4"), 4.0);
  EXPECT_EQ(Eval("not (0/0)"), 0.0);
  EXPECT_EQ(Eval("lg(0)"), 0.0);  // the library's guarded logarithm
  EXPECT_EQ(Eval("lg(1000)"), 3.0);
}

TEST(MathExpression, AggregatesAccumulateInExtendedPrecision) {
  EXPECT_EQ(Eval("sum(1e16, 1, -1e16)"), 1.0);
  EXPECT_DOUBLE_EQ(Eval("var(1, 2, 3, 4)"), 5.0 / 3.0);
  EXPECT_EQ(Eval("var(1e9 + 1, 1e9 + 2, 1e9 + 3)"), 1.0);
  EXPECT_EQ(Eval("mean(2, 4, 9)"), 5.0);
  EXPECT_EQ(Eval("max(-1, -5, -2) + min(3, 8, 0.5)"), -0.5);
}

TEST(MathExpression, RandomFunctionsDrawFromTheLibrarySource) {
  SetRandSeed(4711);
  ResetGRandom();
  const double u = 10 * Random();
  const double g = 3 + 2 * GRandom();
  SetRandSeed(4711);
  ResetGRandom();
  EXPECT_EQ(Eval("rand(10)"), u);
  EXPECT_EQ(Eval("gauss(3, 2)"), g);
  // Every evaluation draws anew.
  const TMathExpression e("rand(10) + gauss(3, 2)");
  EXPECT_NE(e.Evaluate(std::span<const double>()), e.Evaluate(std::span<const double>()));
}

TEST(MathExpression, HostileInputNeitherCrashesNorRecurses) {
  constexpr std::size_t kDeep = 100000;
  const std::string open(kDeep, '('), close(kDeep, ')');
  EXPECT_EQ(Eval(open + "1" + close), 1.0);
  EXPECT_EQ(Eval(open + "1+" + "(2" + close + ")"), 3.0);
  EXPECT_EQ(RaisedMessage<EQUVMathExp>([&] { Eval(open + "1" + close.substr(1)); }),
            "parenthesis not closed at position 1");
  std::string calls;
  for (std::size_t i = 0; i < kDeep; ++i)
    calls += "abs(";
  EXPECT_EQ(Eval(calls + "-2" + close), 2.0);

  std::string sum = "1";
  while (sum.size() < 1000000)
    sum += "+1";
  EXPECT_EQ(Eval(sum), static_cast<double>(sum.size() / 2 + 1));
  EXPECT_EQ(Eval(std::string(kDeep, '-') + "7"), 7.0);
  EXPECT_EQ(Eval(std::string(kDeep - 1, '-') + "7"), -7.0);
  // Right-associative powers wait on the value stack: one value per level.
  std::string powers = "1";
  for (std::size_t i = 0; i < kDeep; ++i)
    powers += "^1";
  EXPECT_EQ(Eval(powers), 1.0);
  EXPECT_EQ(RaisedMessage<EQUVMathExp>([&] { Eval(std::string(kDeep, '+')); }),
            "unexpected end of expression at position 100001");
}

}  // namespace
}  // namespace quv
