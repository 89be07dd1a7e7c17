#include "quv/datatable/asc.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <ios>
#include <istream>
#include <ostream>

namespace quv {
namespace {

bool IsBlank(char c) {
  return c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\f' || c == '\v';
}

// Walks the text behind the header: items separated by blanks and line ends, remarks skipped.
class Cursor {
 public:
  explicit Cursor(std::string_view text)
      : begin_(text.data()), p_(text.data()), end_(text.data() + text.size()) {}

  void SkipBlanksAndRemarks() {
    while (p_ < end_) {
      if (IsBlank(*p_)) {
        ++p_;
      } else if (*p_ == ';') {
        while (p_ < end_ && *p_ != '\n')
          ++p_;
      } else {
        break;
      }
    }
  }

  // The next item: characters up to a blank, a remark or a quote.
  std::string_view Item() {
    SkipBlanksAndRemarks();
    const char* begin = p_;
    while (p_ < end_ && !IsBlank(*p_) && *p_ != ';' && *p_ != '"')
      ++p_;
    return {begin, static_cast<std::size_t>(p_ - begin)};
  }

  // A number; on failure OutOfRange tells whether the item is a number beyond the range of
  // doubles (such as 1e400 or 1e-330) rather than no number at all.
  bool Number(double& x, bool* OutOfRange = nullptr) {
    const char* mark = p_;
    std::string_view item = Item();
    if (!item.empty() && item.front() == '+') item.remove_prefix(1);
    const auto [end, ec] = std::from_chars(item.data(), item.data() + item.size(), x);
    if (item.empty() || ec != std::errc() || end != item.data() + item.size()) {
      if (OutOfRange)
        *OutOfRange = !item.empty() && ec == std::errc::result_out_of_range &&
                      end == item.data() + item.size();
      p_ = mark;
      return false;
    }
    return true;
  }

  // The next item as written, for messages: a quoted name with its quotes, or the characters
  // up to a blank or a remark. The cursor does not move.
  std::string_view Peek() {
    SkipBlanksAndRemarks();
    const char* e = p_;
    if (e < end_ && *e == '"') {
      const char* close = std::find(e + 1, end_, '"');
      e = close < end_ ? close + 1 : end_;
    } else {
      while (e < end_ && !IsBlank(*e) && *e != ';')
        ++e;
    }
    return {p_, static_cast<std::size_t>(e - p_)};
  }

  std::size_t Offset() const { return static_cast<std::size_t>(p_ - begin_); }

  bool Integer(std::int64_t lo, std::int64_t hi, std::int64_t& v) {
    const char* mark = p_;
    std::string_view item = Item();
    if (!item.empty() && item.front() == '+') item.remove_prefix(1);
    const auto [end, ec] = std::from_chars(item.data(), item.data() + item.size(), v);
    if (item.empty() || ec != std::errc() || end != item.data() + item.size() || v < lo || v > hi) {
      p_ = mark;
      return false;
    }
    return true;
  }

  // A name in double quotes that must be the next item.
  bool Quoted(std::string& name) {
    SkipBlanksAndRemarks();
    if (p_ >= end_ || *p_ != '"') return false;
    const char* begin = p_ + 1;
    const char* close = std::find(begin, end_, '"');
    if (close == end_) return false;
    name.assign(begin, close);
    p_ = close + 1;
    return true;
  }

  // A name in double quotes after anything that precedes its opening quote, as the column
  // names line is read.
  bool SkipToQuoted(std::string& name) {
    const char* open = std::find(p_, end_, '"');
    if (open == end_) return false;
    p_ = open;
    return Quoted(name);
  }

  // The rest of the current line (without its line end); moves to the next line.
  bool Line(std::string_view& line) {
    if (p_ >= end_) return false;
    const char* eol = std::find(p_, end_, '\n');
    line = std::string_view(p_, static_cast<std::size_t>(eol - p_));
    p_ = eol < end_ ? eol + 1 : end_;
    return true;
  }

  bool AtEnd() const { return p_ >= end_; }

 private:
  const char* begin_;
  const char* p_;
  const char* end_;
};

// One line of the nominal-variables block: scale, then pairs of slot and quoted identifier.
bool ParseNominalLine(std::string_view line, TASCNominalColumn& column) {
  // The remark begins at the first ";" outside quotes.
  bool inQuotes = false;
  std::size_t cut = line.size();
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (line[i] == '"') inQuotes = !inQuotes;
    if (line[i] == ';' && !inQuotes) {
      cut = i;
      break;
    }
  }
  Cursor c(line.substr(0, cut));
  std::int64_t v = 0;
  if (!c.Integer(0, 255, v)) return false;
  column.Scale = static_cast<std::uint8_t>(v);
  column.IDs.clear();
  while (true) {
    c.SkipBlanksAndRemarks();
    if (c.AtEnd()) return true;
    std::string id;
    if (!c.Integer(0, uc_MaxInt, v) || !c.Quoted(id)) return false;
    column.IDs.emplace_back(static_cast<std::int32_t>(v), std::move(id));
  }
}

// Names are written in double quotes on one line: quotes inside become single quotes and line
// ends blanks.
std::string QuoteName(const std::string& name) {
  std::string q = "\"";
  for (const char c : name)
    q += (c == '"') ? '\'' : (c == '\n' || c == '\r') ? ' ' : c;
  q += '"';
  return q;
}

void AppendValue(std::string& out, double x, const TASCNumberFormat& format) {
  if (format.Integers && std::isfinite(x) && std::fabs(x) < 9.0e18) {
    char buf[24];
    const auto r = std::to_chars(buf, buf + sizeof buf, std::llround(x));
    out.append(buf, r.ptr);
  } else {
    out += strff(x, format.Width, format.Decimals);
  }
}

void CheckImage(const TASCFile& f) {
  const auto fail = [](std::string_view what) {
    RaiseFunctionError<EQUVDataTableError>("WriteASC",
                                           std::string(what) + " does not match the header");
  };
  const auto rows = static_cast<std::size_t>(std::max(f.NrRows, 0));
  if (f.NrCols < 1 || f.NrRows < 0) fail("the table size");
  if (f.Values.size() != rows * static_cast<std::size_t>(f.NrCols)) fail("the number of values");
  if (f.ColNames && f.ColNameList.size() != static_cast<std::size_t>(f.NrCols))
    fail("the number of column names");
  if (f.NominalVars && f.NominalList.size() != static_cast<std::size_t>(f.NrCols))
    fail("the number of nominal columns");
  if (f.RowNames && f.RowNameList.size() != rows) fail("the number of row names");
  if (f.RowAttrib && f.RowAttribList.size() != rows) fail("the number of row attributes");
}

const char* Flag(bool b) {
  return b ? "TRUE" : "FALSE";
}

// Reads what is left of a stream into a string, in blocks.
std::string ReadRest(std::istream& stream) {
  std::string text;
  char block[1 << 16];
  while (stream.read(block, sizeof block) || stream.gcount() > 0)
    text.append(block, static_cast<std::size_t>(stream.gcount()));
  return text;
}

// Line number of a position in the text behind the header (which begins on line 5).
std::int32_t LineAt(std::string_view body, std::size_t offset) {
  const auto breaks =
      std::count(body.begin(), body.begin() + static_cast<std::ptrdiff_t>(offset), '\n');
  return static_cast<std::int32_t>(std::min<std::ptrdiff_t>(breaks + 5, uc_MaxInt));
}

// Items on one line of the data block: quoted names count as one item, a remark ends the line.
std::int32_t ItemsOnLine(std::string_view line) {
  std::int32_t items = 0;
  std::size_t i = 0;
  while (i < line.size()) {
    if (IsBlank(line[i])) {
      ++i;
    } else if (line[i] == ';') {
      break;
    } else if (line[i] == '"') {
      const std::size_t close = line.find('"', i + 1);
      i = close == std::string_view::npos ? line.size() : close + 1;
      ++items;
    } else {
      while (i < line.size() && !IsBlank(line[i]) && line[i] != ';' && line[i] != '"')
        ++i;
      ++items;
    }
  }
  return items;
}

// Lists the lines of body[from, to) that hold items but not exactly perRow of them. A line
// that runs past `to` was not read in full and is left to the caller's other findings.
void FindOddLines(std::string_view body, std::size_t from, std::size_t to, std::int32_t perRow,
                  TASCReadReport& report) {
  std::int32_t line = LineAt(body, from);
  std::size_t p = from;
  while (p < to) {
    const std::size_t eol = std::min(body.find('\n', p), body.size());
    if (eol >= to && to < body.size()) break;
    const std::int32_t items = ItemsOnLine(body.substr(p, eol - p));
    if (items != 0 && items != perRow) {
      if (report.OddLines.size() < kAscMaxOddLines) report.OddLines.emplace_back(line, items);
      ++report.OddLineCount;
    }
    p = eol + 1;
    ++line;
  }
}

std::int32_t ReadASCBody(std::istream& Stream, TASCFile& File, TASCReadReport* Report,
                         std::int32_t MaxCols) {
  TASCFile f;
  std::int32_t flagWords = 0;
  const std::int32_t status = ReadHeaderOfASC(Stream, f.Comment, f.NrCols, f.NrRows, f.RowAttrib,
                                              f.ColNames, f.RowNames, f.NominalVars, flagWords);
  if (status != kAscHeaderOk) return status;
  f.NominalFlag = flagWords == 4;
  if (MaxCols > 0 && f.NrCols > MaxCols) return kAscTooManyColumns;

  const std::string body = ReadRest(Stream);
  Cursor cursor(body);
  const auto cols = static_cast<std::size_t>(f.NrCols);
  // Every list grows with what is read: a header may declare far more than the file holds.
  if (f.ColNames) {
    for (std::size_t c = 0; c < cols; ++c) {
      std::string name;
      if (!cursor.SkipToQuoted(name)) return kAscBadAnnotation;
      f.ColNameList.push_back(std::move(name));
    }
    std::string_view restOfLine;
    cursor.Line(restOfLine);
  }
  if (f.NominalVars) {
    for (std::size_t c = 0; c < cols; ++c) {
      std::string_view line;
      TASCNominalColumn column;
      if (!cursor.Line(line) || !ParseNominalLine(line, column)) return kAscBadAnnotation;
      f.NominalList.push_back(std::move(column));
    }
  }
  const std::size_t dataStart = cursor.Offset();
  TASCReadReport report;
  // Records why the row begun at rowStart could not be completed; `reason` empty means the
  // file ended.
  const auto stop = [&](std::size_t rowStart, std::size_t itemsRead, const char* reason) {
    if (!Report) return;
    report.ItemsDropped = static_cast<std::int32_t>(itemsRead);
    const std::string_view item = cursor.Peek();
    if (cursor.AtEnd()) {
      report.Stop = ascStopEndOfFile;
      if (itemsRead > 0) report.StopLine = LineAt(body, rowStart);
    } else {
      report.Stop = ascStopBadItem;
      report.StopLine = LineAt(body, cursor.Offset());
      report.StopItem = item.substr(0, 40);
      report.StopReason = reason;
    }
  };
  // A value takes at least two characters (digit and separator): that bounds the reservation.
  const std::size_t declared = static_cast<std::size_t>(f.NrRows) * cols;
  f.Values.reserve(std::min(declared, body.size() / 2 + 1));
  for (std::int32_t r = 0; r < f.NrRows; ++r) {
    std::string name;
    std::int64_t attrib = 0;
    cursor.SkipBlanksAndRemarks();
    const std::size_t rowStart = cursor.Offset();
    if (f.RowNames && !cursor.Quoted(name)) {
      stop(rowStart, 0, "a row name in double quotes was expected");
      break;
    }
    if (f.RowAttrib && !cursor.Integer(uc_MinInt, uc_MaxInt, attrib)) {
      stop(rowStart, f.RowNames ? 1 : 0, "a whole number (the row attribute) was expected");
      break;
    }
    const std::size_t valueStart = f.Values.size();
    bool complete = true;
    for (std::size_t c = 0; c < cols && complete; ++c) {
      double x = 0.0;
      bool outOfRange = false;
      complete = cursor.Number(x, Report ? &outOfRange : nullptr);
      if (complete) {
        f.Values.push_back(x);
      } else {
        const std::size_t itemsRead = c + (f.RowNames ? 1 : 0) + (f.RowAttrib ? 1 : 0);
        stop(rowStart, itemsRead,
             outOfRange ? "the number is beyond the range of double precision" : "not a number");
      }
    }
    if (!complete) {
      f.Values.resize(valueStart);
      break;
    }
    if (f.RowNames) f.RowNameList.push_back(std::move(name));
    if (f.RowAttrib) f.RowAttribList.push_back(static_cast<std::int32_t>(attrib));
  }
  if (Report) {
    cursor.SkipBlanksAndRemarks();
    if (report.Stop == ascStopComplete && !cursor.AtEnd())
      report.DataAfterLine = LineAt(body, cursor.Offset());
    const auto perRow =
        static_cast<std::int32_t>(cols) + (f.RowNames ? 1 : 0) + (f.RowAttrib ? 1 : 0);
    FindOddLines(body, dataStart, cursor.Offset(), perRow, report);
    *Report = std::move(report);
  }
  File = std::move(f);
  return kAscHeaderOk;
}

}  // namespace

double TASCFile::Value(std::int32_t col, std::int32_t row) const {
  if (col < 1 || col > NrCols || row < 1 || row > RowsRead()) return 0.0;
  return Values[static_cast<std::size_t>(row - 1) * static_cast<std::size_t>(NrCols) +
                static_cast<std::size_t>(col - 1)];
}

std::string ASCCommentLine(const std::string& Comment, std::string_view HeaderText,
                           const std::string& FileName) {
  if (Comment.empty()) return std::string(HeaderText) + FileName;
  return ReplaceCharInString(Comment, '\n', ' ');
}

void WriteASC(std::ostream& Stream, const TASCFile& File, const TASCNumberFormat& Format) {
  CheckImage(File);
  const std::string eol(kTextLineEnd);
  std::string out;
  out += ReplaceCharInString(File.Comment, '\n', ' ') + eol;
  out += std::to_string(File.NrCols) + '\t' + std::string(kAscColumnsRemark) + eol;
  out += std::to_string(File.NrRows) + '\t' + std::string(kAscRowsRemark) + eol;
  out += std::string(Flag(File.RowAttrib)) + ' ' + Flag(File.ColNames) + ' ' + Flag(File.RowNames);
  if (File.NominalFlag)
    out += std::string(" ") + Flag(File.NominalVars) + '\t' + std::string(kAscFlagsRemark);
  else
    out.append("\t").append(kAscFlagsRemark3);
  out += eol;
  if (File.ColNames) {
    for (std::size_t c = 0; c < File.ColNameList.size(); ++c) {
      if (c > 0) out += ' ';
      out += QuoteName(File.ColNameList[c]);
    }
    out += eol;
  }
  if (File.NominalVars && File.NominalFlag) {
    for (const TASCNominalColumn& column : File.NominalList) {
      out += std::to_string(column.Scale);
      for (const auto& [slot, id] : column.IDs) {
        out += ' ';
        out += std::to_string(slot);
        out += ' ';
        out += QuoteName(id);
      }
      out += eol;
    }
  }
  const auto cols = static_cast<std::size_t>(File.NrCols);
  for (std::size_t r = 0; r < static_cast<std::size_t>(File.NrRows); ++r) {
    bool first = true;
    const auto separate = [&] {
      if (!first) out += ' ';
      first = false;
    };
    if (File.RowNames) {
      separate();
      out += QuoteName(File.RowNameList[r]);
    }
    if (File.RowAttrib) {
      separate();
      out += std::to_string(File.RowAttribList[r]);
    }
    for (std::size_t c = 0; c < cols; ++c) {
      separate();
      AppendValue(out, File.Values[r * cols + c], Format);
    }
    out += eol;
    if (out.size() >= (1u << 20)) {
      Stream.write(out.data(), static_cast<std::streamsize>(out.size()));
      out.clear();
    }
  }
  Stream.write(out.data(), static_cast<std::streamsize>(out.size()));
}

void WriteASCFile(const std::string& FileName, const TASCFile& File,
                  const TASCNumberFormat& Format) {
  CheckImage(File);
  std::ofstream file(FileName, std::ios::binary | std::ios::trunc);
  if (!file) throw std::ios_base::failure("cannot create file \"" + FileName + "\"");
  WriteASC(file, File, Format);
  file.flush();
  if (!file) throw std::ios_base::failure("cannot write file \"" + FileName + "\"");
}

std::int32_t ReadASC(std::istream& Stream, TASCFile& File, std::int32_t MaxCols) {
  return ReadASCBody(Stream, File, nullptr, MaxCols);
}

std::int32_t ReadASC(std::istream& Stream, TASCFile& File, TASCReadReport& Report,
                     std::int32_t MaxCols) {
  return ReadASCBody(Stream, File, &Report, MaxCols);
}

namespace {

std::int32_t ReadASCFileBody(const std::string& FileName, TASCFile& File, TASCReadReport* Report,
                             std::int32_t MaxCols) {
  std::error_code ec;
  if (!std::filesystem::is_regular_file(FileName, ec)) return kAscFileNotFound;
  std::ifstream file(FileName, std::ios::binary);
  if (!file) return kAscFileNotFound;
  return ReadASCBody(file, File, Report, MaxCols);
}

}  // namespace

std::int32_t ReadASCFile(const std::string& FileName, TASCFile& File, std::int32_t MaxCols) {
  return ReadASCFileBody(FileName, File, nullptr, MaxCols);
}

std::int32_t ReadASCFile(const std::string& FileName, TASCFile& File, TASCReadReport& Report,
                         std::int32_t MaxCols) {
  return ReadASCFileBody(FileName, File, &Report, MaxCols);
}

}  // namespace quv
