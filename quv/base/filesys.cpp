#include "quv/base/filesys.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <fstream>
#include <limits>
#include <string_view>

#include "quv/base/strings.h"

namespace quv {
namespace {

// The part of a header line before its remark.
std::string_view BeforeRemark(std::string_view line) {
  return line.substr(0, std::min(line.find(';'), line.size()));
}

// The first whole number of a line, if it is one in lo..2^31 - 1.
bool LeadingCount(std::string_view line, std::int32_t lo, std::int32_t& value) {
  const std::vector<std::string> words = Tokenize(BeforeRemark(line), " \t\r");
  if (words.empty()) return false;
  std::string_view w = words.front();
  if (!w.empty() && w.front() == '+') w.remove_prefix(1);
  std::int64_t v = 0;
  const auto [end, ec] = std::from_chars(w.data(), w.data() + w.size(), v);
  if (ec != std::errc() || end != w.data() + w.size() || w.empty()) return false;
  if (v < lo || v > std::numeric_limits<std::int32_t>::max()) return false;
  value = static_cast<std::int32_t>(v);
  return true;
}

bool FlagWord(const std::string& word, bool& flag) {
  std::string upper = word;
  std::transform(upper.begin(), upper.end(), upper.begin(),
                 [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
  if (upper == "TRUE") {
    flag = true;
    return true;
  }
  if (upper == "FALSE") {
    flag = false;
    return true;
  }
  return false;
}

}  // namespace

std::int32_t ReadHeaderOfASC(std::istream& Stream, std::string& Comment, std::int32_t& NrCols,
                             std::int32_t& NrRows, bool& RowAttrib, bool& ColNames, bool& RowNames,
                             bool& NominalVars, std::int32_t& FlagWords) {
  std::string lines[4];
  for (std::string& line : lines)
    if (!ReadTextLine(Stream, line)) return kAscHeaderCutShort;
  std::int32_t cols = 0, rows = 0;
  if (!LeadingCount(lines[1], 1, cols)) return kAscBadColumnCount;
  if (!LeadingCount(lines[2], 0, rows)) return kAscBadRowCount;
  const std::vector<std::string> words = Tokenize(BeforeRemark(lines[3]), " \t\r");
  bool flags[4] = {false, false, false, false};
  std::size_t nFlags = 0;
  while (nFlags < 4 && nFlags < words.size() && FlagWord(words[nFlags], flags[nFlags]))
    ++nFlags;
  if (nFlags < 3) return kAscBadFlags;
  Comment = lines[0];
  NrCols = cols;
  NrRows = rows;
  RowAttrib = flags[0];
  ColNames = flags[1];
  RowNames = flags[2];
  NominalVars = flags[3];
  FlagWords = static_cast<std::int32_t>(nFlags);
  return kAscHeaderOk;
}

std::int32_t ReadHeaderOfASC(const std::string& FileName, std::string& Comment,
                             std::int32_t& NrCols, std::int32_t& NrRows, bool& RowAttrib,
                             bool& ColNames, bool& RowNames, bool& NominalVars) {
  std::ifstream file(FileName, std::ios::binary);
  if (!file) return kAscFileNotFound;
  std::int32_t flagWords = 0;
  return ReadHeaderOfASC(file, Comment, NrCols, NrRows, RowAttrib, ColNames, RowNames, NominalVars,
                         flagWords);
}

}  // namespace quv
