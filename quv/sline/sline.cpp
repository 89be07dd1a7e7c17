#include "quv/sline/sline.h"

#include <cmath>
#include <numbers>
#include <string>

namespace quv {

namespace {

[[noreturn]] void Raise(std::string_view text) {
  throw EQUVSLineError(std::string(text));
}

// Divides by d, or by the substitute divisor when d is 0 and substitution is on.
double DivideOrRaise(double numerator, double d, bool substitute, std::string_view text) {
  if (d == 0.0) {
    if (!substitute) Raise(text);
    d = kSLineSubstituteDivisor;
  }
  return numerator / d;
}

}  // namespace

void TSLine::SetParA(double a) {
  if (a == 0.0 && b_ == 0.0) Raise(msg::kSLineABZero);
  a_ = a;
}

void TSLine::SetParB(double b) {
  if (b == 0.0 && a_ == 0.0) Raise(msg::kSLineABZero);
  b_ = b;
}

bool TSLine::LineFrom2Points(double x1, double y1, double x2, double y2) {
  if (x1 == x2 && y1 == y2) return false;
  a_ = y1 - y2;
  b_ = x2 - x1;
  c_ = x1 * y2 - y1 * x2;
  return true;
}

void TSLine::LineFromSlopeIcpt(double k, double d) {
  a_ = k;
  b_ = -1.0;
  c_ = d;
}

void TSLine::LineThroughPoint(double x, double y, double phi) {
  a_ = -std::sin(phi);
  b_ = std::cos(phi);
  c_ = -a_ * x - b_ * y;
}

void TSLine::ParallelLine(double x, double y, const TSLine& Line) {
  a_ = Line.a_;
  b_ = Line.b_;
  c_ = -a_ * x - b_ * y;
}

void TSLine::NormalLine(double x, double y, const TSLine& Line) {
  // Read Line first: it may be this line.
  const double a = -Line.b_;
  const double b = Line.a_;
  a_ = a;
  b_ = b;
  c_ = -a_ * x - b_ * y;
}

bool TSLine::InterSection(const TSLine& Line, double& x, double& y) const {
  const double det = a_ * Line.b_ - Line.a_ * b_;
  if (det == 0.0) return false;
  x = (b_ * Line.c_ - Line.b_ * c_) / det;
  y = (c_ * Line.a_ - Line.c_ * a_) / det;
  return true;
}

double TSLine::AngleBetweenLines(const TSLine& Line) const {
  const double s = a_ * Line.a_ + b_ * Line.b_;
  if (s == 0.0) return std::numbers::pi / 2;
  return std::fabs(std::atan((a_ * Line.b_ - b_ * Line.a_) / s));
}

double TSLine::Distance(double x, double y) const {
  return (a_ * x + b_ * y + c_) / std::sqrt(a_ * a_ + b_ * b_);
}

void TSLine::CalcKDForm(double& k, double& d) const {
  if (b_ == 0.0) Raise(msg::kSLineNoKDForm);
  k = -a_ / b_;
  d = -c_ / b_;
}

double TSLine::CalcX(double y) const {
  return DivideOrRaise(-y * b_ - c_, a_, substitute_inf_, msg::kSLineNoX);
}

double TSLine::CalcY(double x) const {
  return DivideOrRaise(-x * a_ - c_, b_, substitute_inf_, msg::kSLineNoY);
}

double TSLine::GetSlope() const {
  if (b_ == 0.0) Raise(msg::kSLineSlopeInfinite);
  return -a_ / b_;
}

double TSLine::GetIntercept() const {
  if (b_ == 0.0) Raise(msg::kSLineNoIntercept);
  return -c_ / b_;
}

double TSLine::GetDirect() const {
  constexpr double pi = std::numbers::pi;
  double phi = 0.0;
  if (b_ == 0.0)
    phi = a_ <= 0.0 ? -pi / 2 : pi / 2;
  else
    phi = std::atan(-a_ / b_);
  if (b_ <= 0.0)
    phi += pi;
  else if (a_ > 0.0)
    phi += 2 * pi;
  return phi;
}

bool TSLine::ClipBox(double BoxX1, double BoxY1, double BoxX2, double BoxY2, double& x1, double& y1,
                     double& x2, double& y2) {
  const double xlo = std::fmin(BoxX1, BoxX2), xhi = std::fmax(BoxX1, BoxX2);
  const double ylo = std::fmin(BoxY1, BoxY2), yhi = std::fmax(BoxY1, BoxY2);
  // With substitution on, CalcX and CalcY cannot raise, so the flag is always restored.
  const bool saved = substitute_inf_;
  substitute_inf_ = true;
  double px[2] = {0, 0}, py[2] = {0, 0};
  int found = 0;
  auto keep = [&](double x, double y) {
    if (found == 2 || (found == 1 && px[0] == x && py[0] == y)) return;
    px[found] = x;
    py[found] = y;
    ++found;
  };
  for (const double x : {xlo, xhi}) {
    const double y = CalcY(x);
    if (y >= ylo && y <= yhi) keep(x, y);
  }
  for (const double y : {ylo, yhi}) {
    const double x = CalcX(y);
    if (x >= xlo && x <= xhi) keep(x, y);
  }
  substitute_inf_ = saved;
  if (found == 0) return false;
  if (found == 1) {
    px[1] = px[0];
    py[1] = py[0];
  }
  x1 = px[0];
  y1 = py[0];
  x2 = px[1];
  y2 = py[1];
  return true;
}

}  // namespace quv
