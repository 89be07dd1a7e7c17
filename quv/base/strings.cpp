#include "quv/base/strings.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <istream>

namespace quv {

std::string strff(double x, std::int32_t width, std::int32_t decimals) {
  std::string text;
  if (std::isnan(x)) {
    text = "NAN";
  } else if (std::isinf(x)) {
    text = x < 0 ? "-INF" : "INF";
  } else {
    // Enough room for the longest fixed-point text of a double (309 digits) plus decimals.
    const int prec = decimals < 0 ? 14 : std::min<std::int32_t>(decimals, 340);
    const char* format = decimals < 0 ? "%.*E" : "%.*f";
    const int length = std::snprintf(nullptr, 0, format, prec, x);
    text.resize(static_cast<std::size_t>(length) + 1);
    std::snprintf(text.data(), text.size(), format, prec, x);
    text.pop_back();
  }
  if (width > 0 && text.size() < static_cast<std::size_t>(width)) {
    text.insert(0, static_cast<std::size_t>(width) - text.size(), ' ');
  }
  return text;
}

std::vector<std::string> Tokenize(std::string_view s, std::string_view delimiters) {
  std::vector<std::string> tokens;
  std::size_t pos = 0;
  while (pos < s.size()) {
    pos = s.find_first_not_of(delimiters, pos);
    if (pos == std::string_view::npos) break;
    const std::size_t end = s.find_first_of(delimiters, pos);
    tokens.emplace_back(s.substr(pos, end == std::string_view::npos ? s.npos : end - pos));
    pos = end;
  }
  return tokens;
}

bool ParseQuotedName(std::istream& stream, std::string& name) {
  name.clear();
  char c = 0;
  while (stream.get(c) && c != '"') {
  }
  if (!stream) return false;
  while (stream.get(c)) {
    if (c == '"') return true;
    name.push_back(c);
  }
  return false;
}

bool ParseQuotedName(std::string_view s, std::size_t& pos, std::string& name) {
  name.clear();
  const std::size_t open = s.find('"', pos);
  if (open == std::string_view::npos) {
    pos = s.size();
    return false;
  }
  const std::size_t close = s.find('"', open + 1);
  if (close == std::string_view::npos) {
    name.assign(s.substr(open + 1));
    pos = s.size();
    return false;
  }
  name.assign(s.substr(open + 1, close - open - 1));
  pos = close + 1;
  return true;
}

std::string ReplaceCharInString(std::string_view s, char from, char to) {
  std::string result(s);
  for (char& c : result) {
    if (c == from) c = to;
  }
  return result;
}

std::string TrimString(std::string_view s) {
  constexpr std::string_view kBlank = " \t\r\n";
  const std::size_t first = s.find_first_not_of(kBlank);
  if (first == std::string_view::npos) return {};
  const std::size_t last = s.find_last_not_of(kBlank);
  return std::string(s.substr(first, last - first + 1));
}

bool ReadTextLine(std::istream& stream, std::string& line) {
  line.clear();
  if (!std::getline(stream, line)) return false;
  if (!line.empty() && line.back() == '\r') line.pop_back();
  return true;
}

}  // namespace quv
