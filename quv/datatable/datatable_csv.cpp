// TDataTable: CSV import and export.
//
// The reader takes the file in one piece and walks it record by record. Fields in double
// quotes may hold separators, line ends and doubled quotes; blanks around unquoted fields are
// ignored. Every column first collects numbers and, separately, the texts that are not
// numbers; only at the end is a column decided to be numeric (texts become invalid cells) or
// nominal (all of its fields are texts that fit the slot table). The table is built aside and
// taken over only when the whole file was accepted.
#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <deque>
#include <filesystem>
#include <fstream>
#include <istream>
#include <ostream>
#include <sstream>

#include "quv/datatable/datatable_core.h"

namespace quv {
namespace {

bool FormatIsValid(const TCSVFormat& f) {
  const char s = f.Separator;
  return s != '"' && s != '\n' && s != '\r' && s != '\0' && !(f.DecimalComma && s == ',') &&
         !(f.DecimalComma && s == '.') && !std::isalnum(static_cast<unsigned char>(s));
}

std::string ReadAll(std::istream& stream) {
  std::ostringstream text;
  text << stream.rdbuf();
  return std::move(text).str();
}

// Splits the text into records of fields.
class CSVScanner {
 public:
  CSVScanner(std::string_view text, char separator)
      : p_(text.data()), end_(text.data() + text.size()), sep_(separator) {}

  bool AtEnd() const { return p_ >= end_; }
  std::int32_t Line() const { return line_; }
  std::size_t Offset(std::string_view text) const {
    return static_cast<std::size_t>(p_ - text.data());
  }

  // Reads one record into fields[0..count): views of the text, or of the scanner's own copies
  // for quoted fields, valid until the next record. Returns false for a quote left open;
  // `blank` is true for a line that holds nothing but blanks.
  bool Record(std::vector<std::string_view>& fields, std::size_t& count, bool& blank) {
    count = 0;
    blank = true;
    quoted_.clear();
    while (true) {
      if (count == fields.size()) fields.emplace_back();
      std::string_view& f = fields[count++];
      SkipBlanks();
      if (p_ < end_ && *p_ == '"') {
        blank = false;
        std::string& q = quoted_.emplace_back();
        if (!Quoted(q)) return false;
        SkipBlanks();
        // Anything between the closing quote and the separator belongs to the field.
        const char* begin = p_;
        while (p_ < end_ && *p_ != sep_ && *p_ != '\n' && *p_ != '\r')
          ++p_;
        q.append(begin, p_);
        f = q;
      } else {
        const char* begin = p_;
        while (p_ < end_ && *p_ != sep_ && *p_ != '\n' && *p_ != '\r')
          ++p_;
        const char* last = p_;
        while (last > begin && IsBlank(last[-1]))
          --last;
        f = std::string_view(begin, static_cast<std::size_t>(last - begin));
        if (!f.empty()) blank = false;
      }
      if (p_ < end_ && *p_ == sep_) {
        blank = false;
        ++p_;
        continue;
      }
      EndLine();
      return true;
    }
  }

 private:
  bool IsBlank(char c) const { return (c == ' ' || c == '\t') && c != sep_; }
  void SkipBlanks() {
    while (p_ < end_ && IsBlank(*p_))
      ++p_;
  }
  void EndLine() {
    if (p_ < end_ && *p_ == '\r') ++p_;
    if (p_ < end_ && *p_ == '\n') ++p_;
    ++line_;
  }
  bool Quoted(std::string& f) {
    ++p_;
    while (true) {
      const char* q = std::find(p_, end_, '"');
      line_ += static_cast<std::int32_t>(std::count(p_, q, '\n'));
      f.append(p_, q);
      if (q == end_) return false;
      p_ = q + 1;
      if (p_ < end_ && *p_ == '"') {
        f += '"';
        ++p_;
      } else {
        return true;
      }
    }
  }

  const char* p_;
  const char* end_;
  char sep_;
  std::int32_t line_ = 1;
  std::deque<std::string> quoted_;  // a deque keeps its strings in place as it grows
};

bool ParseNumber(std::string_view field, bool decimalComma, double& x) {
  std::string copy;
  if (decimalComma && field.find(',') != std::string_view::npos) {
    copy.assign(field);
    std::replace(copy.begin(), copy.end(), ',', '.');
    field = copy;
  }
  if (!field.empty() && field.front() == '+') field.remove_prefix(1);
  const char* end = field.data() + field.size();
  const auto [ptr, ec] = std::from_chars(field.data(), end, x);
  return !field.empty() && ec == std::errc() && ptr == end;
}

// One column while it is read.
struct ColumnDraft {
  std::vector<double> values;
  std::vector<std::uint8_t> states;
  std::vector<std::pair<std::int32_t, std::string>> texts;  // (0-based row, text)
  std::size_t numbers = 0;
};

bool EqualIgnoringCase(std::string_view a, std::string_view b) {
  return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) {
           return std::tolower(static_cast<unsigned char>(x)) ==
                  std::tolower(static_cast<unsigned char>(y));
         });
}

// Makes the column nominal when every text fits the slot table; false otherwise.
bool MakeNominal(ColumnDraft& d, detail::TDTColumnSetup& setup) {
  std::vector<std::string> slots;
  std::vector<std::int32_t> slotOf(d.texts.size());
  for (std::size_t i = 0; i < d.texts.size(); ++i) {
    const std::string& t = d.texts[i].second;
    if (t.size() > kMaxNominalIDLength) return false;
    const auto it = std::find_if(slots.begin(), slots.end(),
                                 [&](const std::string& s) { return EqualIgnoringCase(s, t); });
    if (it == slots.end()) {
      if (slots.size() == static_cast<std::size_t>(kNominalSlots)) return false;
      slots.push_back(t);
      slotOf[i] = static_cast<std::int32_t>(slots.size()) - 1;
    } else {
      slotOf[i] = static_cast<std::int32_t>(it - slots.begin());
    }
  }
  for (std::size_t i = 0; i < d.texts.size(); ++i)
    d.values[static_cast<std::size_t>(d.texts[i].first)] = slotOf[i];
  setup.Scale = stNominal;
  setup.Slots = std::move(slots);
  return true;
}

// A field as written: quoted when it would not read back as it is.
void AppendField(std::string& out, const std::string& text, char sep) {
  const bool quote = text.find_first_of(std::string{sep, '"', '\r', '\n'}) != std::string::npos ||
                     (!text.empty() && (text.front() == ' ' || text.front() == '\t' ||
                                        text.back() == ' ' || text.back() == '\t'));
  if (!quote) {
    out += text;
    return;
  }
  out += '"';
  for (const char c : text) {
    if (c == '"') out += '"';
    out += c;
  }
  out += '"';
}

}  // namespace

std::int32_t TDataTable::ImportCSV(const std::string& FileName, const TCSVFormat& Format,
                                   TCSVReport& Report) {
  std::error_code ec;
  if (!std::filesystem::is_regular_file(FileName, ec)) return kAscFileNotFound;
  std::ifstream file(FileName, std::ios::binary);
  if (!file) return kAscFileNotFound;
  return ImportCSV(file, Format, Report);
}

std::int32_t TDataTable::ImportCSV(std::istream& Stream, const TCSVFormat& Format,
                                   TCSVReport& Report) {
  if (!FormatIsValid(Format)) return kDTBadCSVFormat;
  const std::string text = ReadAll(Stream);
  CSVScanner scan(text, Format.Separator);
  Report = TCSVReport{};
  const auto refuse = [&](std::int32_t status, std::int32_t line) {
    Report.StopLine = line;
    return status;
  };
  std::vector<std::string_view> fields;
  std::size_t count = 0;
  bool blank = false;
  TStrArray colNames, rowNames;
  std::vector<ColumnDraft> cols;
  std::vector<std::int32_t> recordLines, recordWidths;
  std::size_t rows = 0;
  std::int32_t lastPercent = -1;
  bool header = Format.Header;
  const std::size_t skip = Format.RowNames ? 1 : 0;

  while (!scan.AtEnd()) {
    const std::int32_t line = scan.Line();
    if (!scan.Record(fields, count, blank)) return refuse(kDTUnclosedQuote, line);
    if (blank) {
      ++Report.BlankLines;
      continue;
    }
    if (header) {
      header = false;
      for (std::size_t i = skip; i < count; ++i) {
        if (fields[i].size() > kMaxDTNameLength) return refuse(kDTNameTooLong, line);
        colNames.emplace_back(fields[i]);
      }
      continue;
    }
    if (rows >= static_cast<std::size_t>(uc_MaxInt) ||
        count - skip >= static_cast<std::size_t>(uc_MaxInt))
      return refuse(kDTTooLarge, line);
    if (Format.RowNames) {
      if (fields[0].size() > kMaxDTNameLength) return refuse(kDTNameTooLong, line);
      rowNames.emplace_back(fields[0]);
    }
    // A record wider than all before it adds columns whose earlier cells are empty.
    if (count - skip > cols.size()) {
      const std::size_t old = cols.size();
      cols.resize(count - skip);
      for (std::size_t c = old; c < cols.size(); ++c) {
        cols[c].values.assign(rows, 0.0);
        cols[c].states.assign(rows, kCellEmpty);
      }
    }
    for (std::size_t c = 0; c < cols.size(); ++c) {
      ColumnDraft& d = cols[c];
      double x = 0.0;
      std::uint8_t state = 0;
      if (c + skip >= count) {
        state = kCellEmpty;
      } else {
        const std::string_view f = fields[c + skip];
        if (f.empty()) {
          state = kCellEmpty;
        } else if (ParseNumber(f, Format.DecimalComma, x)) {
          if (std::isnan(x)) {  // "NaN" and its kin mark a missing value
            x = 0.0;
            state = kCellEmpty;
          } else {
            ++d.numbers;
          }
        } else if (std::find(Format.MissingMarks.begin(), Format.MissingMarks.end(), f) !=
                   Format.MissingMarks.end()) {
          state = kCellEmpty;
        } else {
          d.texts.emplace_back(static_cast<std::int32_t>(rows), f);
        }
      }
      d.values.push_back(x);
      d.states.push_back(state);
    }
    recordLines.push_back(line);
    recordWidths.push_back(static_cast<std::int32_t>(count - skip));
    ++rows;
    const auto percent = static_cast<std::int32_t>(scan.Offset(text) * 100 / text.size());
    if (percent != lastPercent && OnPercentDone) {
      lastPercent = percent;
      PercDone(percent);
    }
  }
  if (rows == 0 || cols.empty()) return kAscNoData;

  // Columns named in the header but never filled are empty columns.
  if (colNames.size() > cols.size()) {
    const std::size_t old = cols.size();
    cols.resize(colNames.size());
    for (std::size_t c = old; c < cols.size(); ++c) {
      cols[c].values.assign(rows, 0.0);
      cols[c].states.assign(rows, kCellEmpty);
    }
  }
  colNames.resize(cols.size());
  const auto width = static_cast<std::int32_t>(cols.size());
  for (std::size_t r = 0; r < rows; ++r) {
    if (recordWidths[r] == width) continue;
    if (Report.RaggedRecords++ == 0) Report.FirstRaggedLine = recordLines[r];
  }

  detail::TDTContent c = GuardAllocation<EQUVDataTableError>(*this, msg::kNotEnoughMemory, [&] {
    detail::TDTContent n;
    n.Setup.resize(cols.size());
    n.ColAttribs.assign(cols.size(), 0);
    n.RowAttribs.assign(rows, 0);
    n.RowNames = Format.RowNames ? std::move(rowNames) : TStrArray(rows);
    n.ColNames = std::move(colNames);
    return n;
  });
  for (std::size_t j = 0; j < cols.size(); ++j) {
    ColumnDraft& d = cols[j];
    if (!d.texts.empty() && (d.numbers > 0 || !MakeNominal(d, c.Setup[j]))) {
      for (const auto& [row, t] : d.texts) {
        d.states[static_cast<std::size_t>(row)] = kCellInvalid;
        const std::int32_t line = recordLines[static_cast<std::size_t>(row)];
        if (Report.InvalidCells++ == 0 || line < Report.FirstInvalidLine) {
          Report.FirstInvalidLine = line;
          Report.FirstInvalidCell = {static_cast<std::int32_t>(j) + 1, row + 1};
        }
      }
    }
    c.Values.push_back(std::move(d.values));
    c.States.push_back(std::move(d.states));
  }
  comment_.clear();
  InstallAndSignal(std::move(c));
  return kAscHeaderOk;
}

void TDataTable::ExportCSV(const std::string& FileName, const TCSVFormat& Format) const {
  if (!FormatIsValid(Format)) RaiseFunctionError<EQUVDataTableError>("ExportCSV", "invalid format");
  std::ofstream file(FileName, std::ios::binary | std::ios::trunc);
  if (!file) throw std::ios_base::failure("cannot create file \"" + FileName + "\"");
  ExportCSV(file, Format);
  file.flush();
  if (!file) throw std::ios_base::failure("cannot write file \"" + FileName + "\"");
}

void TDataTable::ExportCSV(std::ostream& Stream, const TCSVFormat& Format) const {
  if (!FormatIsValid(Format)) RaiseFunctionError<EQUVDataTableError>("ExportCSV", "invalid format");
  auto* self = const_cast<TDataTable*>(this);
  const char sep = Format.Separator;
  std::string out;
  std::string text;
  const auto field = [&](std::int32_t col, std::int32_t row, bool first) {
    if (OnExportText) OnExportText(self, col, row, text);
    if (!first) out += sep;
    AppendField(out, text, sep);
  };
  const std::string eol(kTextLineEnd);
  if (Format.Header) {
    if (Format.RowNames) {
      text.clear();
      field(0, 0, true);
    }
    for (std::int32_t c = 1; c <= NrOfColumns(); ++c) {
      text = colNames_[Ix(c)];
      field(c, 0, c == 1 && !Format.RowNames);
    }
    out += eol;
  }
  char buf[32];
  std::int32_t lastPercent = -1;
  for (std::int32_t r = 1; r <= NrOfRows(); ++r) {
    if (Format.RowNames) {
      text = rowNames_[Ix(r)];
      field(0, r, true);
    }
    for (std::int32_t c = 1; c <= NrOfColumns(); ++c) {
      const detail::TDTColumnSetup& s = setup_[Ix(c)];
      if (!GetIsNumber(c, r)) {
        text.clear();
      } else if (s.Scale == stNominal || s.Scale == stOrdinal) {
        text = GetElemNominal(c, r);
      } else {
        const auto res = std::to_chars(buf, buf + sizeof buf, data_.Columns()[Ix(c)][Ix(r)]);
        text.assign(buf, res.ptr);
        if (Format.DecimalComma) std::replace(text.begin(), text.end(), '.', ',');
      }
      field(c, r, c == 1 && !Format.RowNames);
    }
    out += eol;
    if (out.size() >= (1u << 20)) {
      Stream.write(out.data(), static_cast<std::streamsize>(out.size()));
      out.clear();
    }
    const auto percent = static_cast<std::int32_t>(std::int64_t{r} * 100 / NrOfRows());
    if (percent != lastPercent && OnPercentDone) {
      lastPercent = percent;
      PercDone(percent);
    }
  }
  Stream.write(out.data(), static_cast<std::streamsize>(out.size()));
}

}  // namespace quv
