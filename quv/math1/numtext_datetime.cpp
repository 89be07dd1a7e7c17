// Reading dates and times laid out by a format text (field letters in numtext_scan.h).
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "quv/math1/numtext.h"

namespace quv {
namespace {

template <std::size_t N>
struct TNames {
  std::array<std::string_view, N> full;
  std::array<std::string_view, N> abbreviated;
};

// Month and weekday names of one language; weekdays start on Monday.
struct TLanguageNames {
  TNames<12> months;
  TNames<7> weekdays;
  // Second spellings of March, as written without the umlaut (empty where there are none).
  std::string_view marchFull;
  std::string_view marchShort;
};

constexpr TLanguageNames kEnglishNames = {
    {{"January", "February", "March", "April", "May", "June", "July", "August", "September",
      "October", "November", "December"},
     {"Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"}},
    {{"Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday", "Sunday"},
     {"Mon", "Tue", "Wed", "Thu", "Fri", "Sat", "Sun"}},
    {},
    {}};

constexpr TLanguageNames kGermanNames = {
    {{"Januar", "Februar", "M\xC3\xA4rz", "April", "Mai", "Juni", "Juli", "August", "September",
      "Oktober", "November", "Dezember"},
     {"Jan", "Feb", "M\xC3\xA4r", "Apr", "Mai", "Jun", "Jul", "Aug", "Sep", "Okt", "Nov", "Dez"}},
    {{"Montag", "Dienstag", "Mittwoch", "Donnerstag", "Freitag", "Samstag", "Sonntag"},
     {"Mo", "Di", "Mi", "Do", "Fr", "Sa", "So"}},
    "Maerz",
    "Mrz"};

char Lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool StartsWithNoCase(std::string_view s, std::size_t at, std::string_view word) {
  if (s.size() - at < word.size()) return false;
  for (std::size_t i = 0; i < word.size(); ++i) {
    if (Lower(s[at + i]) != Lower(word[i])) return false;
  }
  return true;
}

bool IsFieldLetter(char c) {
  const char l = Lower(c);
  return l == 'y' || l == 'm' || l == 'd' || l == 'h' || l == 'n' || l == 's' || l == 'z';
}

// Reads between minDigits and maxDigits decimal digits at `at`.
bool ReadDigits(std::string_view s, std::size_t& at, int minDigits, int maxDigits, int& value) {
  int count = 0;
  value = 0;
  while (count < maxDigits && at < s.size() && s[at] >= '0' && s[at] <= '9') {
    value = value * 10 + (s[at] - '0');
    ++at;
    ++count;
  }
  return count >= minDigits;
}

// Reads one of the names at `at` (case-insensitive); returns its 1-based number or 0.
template <std::size_t N>
int ReadName(std::string_view s, std::size_t& at, const std::array<std::string_view, N>& names) {
  for (std::size_t i = 0; i < N; ++i) {
    if (StartsWithNoCase(s, at, names[i])) {
      at += names[i].size();
      return static_cast<int>(i) + 1;
    }
  }
  return 0;
}

int ReadMonthName(std::string_view s, std::size_t& at, const TLanguageNames& names,
                  bool abbreviated) {
  const int month = ReadName(s, at, abbreviated ? names.months.abbreviated : names.months.full);
  if (month != 0) return month;
  const std::string_view march = abbreviated ? names.marchShort : names.marchFull;
  if (!march.empty() && StartsWithNoCase(s, at, march)) {
    at += march.size();
    return 3;
  }
  return 0;
}

bool IsLeapYear(int y) {
  return (y % 4 == 0 && y % 100 != 0) || y % 400 == 0;
}

int DaysInMonth(int y, int m) {
  constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  return m == 2 && IsLeapYear(y) ? 29 : kDays[m - 1];
}

// Days from 1970-01-01 to a date of the proleptic Gregorian calendar, counted by eras of 400
// years (H. Hinnant's days_from_civil), which needs no tables and no loops.
std::int64_t DaysFromCivil(std::int64_t y, int m, int d) {
  y -= m <= 2;
  const std::int64_t era = (y >= 0 ? y : y - 399) / 400;
  const std::int64_t yearOfEra = y - era * 400;
  const std::int64_t dayOfYear = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
  const std::int64_t dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
  return era * 146097 + dayOfEra - 719468;
}

struct TDateFields {
  int year = 1900;
  int month = 1;
  int day = 1;
  int hour = 0;
  int minute = 0;
  int second = 0;
  int millisecond = 0;
  int weekday = 0;  // 1 = Monday .. 7 = Sunday, 0 when the text names none
  bool hasDate = false;
};

// Matches s from `start` against the format; returns the length read, 0 on a mismatch.
std::size_t MatchDateTime(std::string_view s, std::size_t start, std::string_view format,
                          TLanguage language, double& value) {
  const TLanguageNames& names = language == lanGerman ? kGermanNames : kEnglishNames;
  TDateFields f;
  std::size_t at = start;
  std::size_t k = 0;
  while (k < format.size()) {
    const char letter = Lower(format[k]);
    if (!IsFieldLetter(format[k])) {
      if (at >= s.size() || s[at] != format[k]) return 0;
      ++at;
      ++k;
      continue;
    }
    std::size_t run = 0;
    while (k + run < format.size() && Lower(format[k + run]) == letter)
      ++run;
    k += run;
    bool ok = true;
    switch (letter) {
      case 'y':
        f.hasDate = true;
        if (run >= 3) {
          ok = ReadDigits(s, at, 4, 4, f.year) && f.year >= 1;
        } else {
          ok = ReadDigits(s, at, 2, 2, f.year);
          f.year += f.year < 50 ? 2000 : 1900;
        }
        break;
      case 'm':
        f.hasDate = true;
        if (run >= 3) {
          f.month = ReadMonthName(s, at, names, run == 3);
          ok = f.month != 0;
        } else {
          ok = ReadDigits(s, at, run, 2, f.month) && f.month >= 1 && f.month <= 12;
        }
        break;
      case 'd':
        if (run >= 3) {
          f.weekday = ReadName(s, at, run == 3 ? names.weekdays.abbreviated : names.weekdays.full);
          ok = f.weekday != 0;
        } else {
          f.hasDate = true;
          ok = ReadDigits(s, at, run, 2, f.day) && f.day >= 1;
        }
        break;
      case 'h':
        ok = ReadDigits(s, at, run >= 2 ? 2 : 1, 2, f.hour) && f.hour <= 23;
        break;
      case 'n':
        ok = ReadDigits(s, at, run >= 2 ? 2 : 1, 2, f.minute) && f.minute <= 59;
        break;
      case 's':
        ok = ReadDigits(s, at, run >= 2 ? 2 : 1, 2, f.second) && f.second <= 59;
        break;
      default:  // 'z'
        ok = ReadDigits(s, at, 3, 3, f.millisecond);
        break;
    }
    if (!ok) return 0;
  }
  if (at == start) return 0;
  if (f.day > DaysInMonth(f.year, f.month)) return 0;

  const double time =
      (((f.hour * 60.0 + f.minute) * 60.0 + f.second) * 1000.0 + f.millisecond) / 86400000.0;
  const std::int64_t epochDays = DaysFromCivil(f.year, f.month, f.day);
  // 1970-01-01 was a Thursday; a named weekday must be the one of the date.
  const std::int64_t weekday = ((epochDays % 7) + 7 + 3) % 7 + 1;
  if (f.hasDate && f.weekday != 0 && f.weekday != weekday) return 0;
  const std::int64_t days = f.hasDate ? epochDays - DaysFromCivil(1899, 12, 30) : 0;
  value = static_cast<double>(days) + time;
  return at - start;
}

}  // namespace

double ScanDateTime(std::string_view s, std::string_view Format, TLanguage Language,
                    std::int32_t& Pos) {
  if (Pos < 1 || static_cast<std::size_t>(Pos) > s.size()) return 0;
  double value = 0;
  const std::size_t length =
      MatchDateTime(s, static_cast<std::size_t>(Pos) - 1, Format, Language, value);
  if (length == 0) return 0;
  Pos += static_cast<std::int32_t>(length);
  return value;
}

}  // namespace quv
