// The ASC data file: the library's plain-text form of a table of numbers, shared by vectors,
// matrices, curve fits and data tables. This reader and writer depend only on base.
//
// Layout (8-bit text; written with CR LF line ends, read with CR LF or LF):
//
//   line 1   comment
//   line 2   NrCols <TAB> ;nr. of columns
//   line 3   NrRows <TAB> ;nr. of rows
//   line 4   TRUE|FALSE x 4 <TAB> ;row attributes, column names, row names, nominal variables
//            (curve fits write three words and the remark ";row attributes, column names,
//            row names")
//   [column names]       one line: NrCols names, each in double quotes, separated by blanks
//   [nominal variables]  NrCols lines, one per column: the column's measurement scale as a
//                        whole number (0..255), then for every used identifier slot its slot
//                        number and the identifier in double quotes:  1 0 "red" 1 "green"
//   data                 NrRows lines, one row each: the row name in double quotes when row
//                        names are present, then the row attribute (a whole number) when row
//                        attributes are present, then the NrCols values separated by blanks
//                        (a one-column file holds one value per line)
//
// Everything from ";" to the end of a line is a remark and is ignored (names in quotes may
// contain ";"). Readers take the data as a stream of items separated by blanks, TABs and line
// ends, so a row may also be spread over several lines. Reading stops at the first item that
// is not what the layout expects; only complete rows count, so a file that holds fewer rows
// than it declares yields the rows it holds (no error status). A TASCReadReport tells the
// caller where and why reading stopped and which lines held an unexpected number of items,
// so that a program can warn about data it did not use.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "quv/base/base.h"

namespace quv {

/// Results of the ASC readers beyond those of ReadHeaderOfASC (quv/base/filesys.h).
/// An annotation block (column names, nominal variables) is cut short or malformed.
inline constexpr std::int32_t kAscBadAnnotation = -5;
/// Not one complete data row was found (readers of containers that cannot be empty).
inline constexpr std::int32_t kAscNoData = -6;
/// The file declares more columns than the reader accepts (a vector reads one column).
inline constexpr std::int32_t kAscTooManyColumns = -7;

/// Line-2, line-3 and line-4 remarks as they are written.
inline constexpr std::string_view kAscColumnsRemark = ";nr. of columns";
inline constexpr std::string_view kAscRowsRemark = ";nr. of rows";
inline constexpr std::string_view kAscFlagsRemark =
    ";row attributes, column names, row names, nominal variables";
inline constexpr std::string_view kAscFlagsRemark3 = ";row attributes, column names, row names";

/// The nominal identifiers of one column: its measurement scale and its used slots.
struct TASCNominalColumn {
  std::uint8_t Scale = 0;
  std::vector<std::pair<std::int32_t, std::string>> IDs;  ///< (slot, identifier)
  friend bool operator==(const TASCNominalColumn&, const TASCNominalColumn&) = default;
};

/// Everything an ASC file holds. Values are stored row by row: value (col, row), both
/// 1-based, is Values[(row - 1) * NrCols + col - 1].
struct TASCFile {
  std::string Comment;
  std::int32_t NrCols = 1;
  /// Rows declared by the header when read; rows to write when written (must match Values).
  std::int32_t NrRows = 0;
  bool RowAttrib = false;
  bool ColNames = false;
  bool RowNames = false;
  bool NominalVars = false;
  /// Four flag words (false: the three-word line of curve fits, no nominal variables).
  bool NominalFlag = true;
  TStrArray ColNameList;                       ///< NrCols names when ColNames
  std::vector<TASCNominalColumn> NominalList;  ///< NrCols entries when NominalVars
  TStrArray RowNameList;                       ///< one per row read when RowNames
  TIntArray RowAttribList;                     ///< one per row read when RowAttrib
  TDoubleArray Values;

  /// Number of complete rows held in Values.
  std::int32_t RowsRead() const {
    return NrCols > 0 ? static_cast<std::int32_t>(Values.size() / static_cast<std::size_t>(NrCols))
                      : 0;
  }
  /// Value (col, row), both 1-based; 0 outside the table.
  double Value(std::int32_t col, std::int32_t row) const;
};

/// Why the reader stopped taking data rows.
enum TASCStop : std::uint8_t {
  ascStopComplete,   ///< every declared row was read
  ascStopEndOfFile,  ///< the file ended before the declared rows were complete
  ascStopBadItem,    ///< an item was not what the layout expects at its place
};

/// What the reader met in the data block beyond the rows it returns. Line numbers count the
/// lines of the file from 1 (the comment line).
struct TASCReadReport {
  TASCStop Stop = ascStopComplete;
  /// Line of the refused item (ascStopBadItem) or of the first item of a row cut off by the
  /// end of the file (ascStopEndOfFile with ItemsDropped > 0); 0 otherwise.
  std::int32_t StopLine = 0;
  std::string StopItem;    ///< the refused item as written (at most 40 characters)
  std::string StopReason;  ///< why it was refused, e.g. "not a number"
  /// Items of the incomplete row at which reading stopped; they are not in Values.
  std::int32_t ItemsDropped = 0;
  /// Lines read in full whose number of items differs from the items of one row (row name,
  /// row attribute and NrCols values), as (line, items); the first kAscMaxOddLines of them.
  std::vector<std::pair<std::int32_t, std::int32_t>> OddLines;
  std::int32_t OddLineCount = 0;  ///< all such lines, also those beyond the list
  /// Line of the first item after the last declared row (not read); 0 when there is none.
  std::int32_t DataAfterLine = 0;

  /// True when the file held data that did not reach the caller's rows: a cut or refused
  /// row, data after the declared rows, or lines whose items may have shifted columns.
  bool DataSkipped() const {
    return Stop != ascStopComplete || DataAfterLine > 0 || OddLineCount > 0;
  }
};

/// Lines listed in TASCReadReport::OddLines at most.
inline constexpr std::size_t kAscMaxOddLines = 100;

/// How values are written: strff(x, Width, Decimals), or as whole numbers when Integers.
struct TASCNumberFormat {
  std::int32_t Width = 12;
  std::int32_t Decimals = 4;
  bool Integers = false;
};

/// Line 1 of a written file: Comment with every LF replaced by a blank, or HeaderText followed
/// by FileName when Comment is empty.
std::string ASCCommentLine(const std::string& Comment, std::string_view HeaderText,
                           const std::string& FileName);

/// Writes a whole file image to a stream (header, blocks, data) with CR LF line ends. The
/// image's lists must match its flags and sizes; a mismatch raises EQUVDataTableError with
/// "WriteASC: <what> does not match the header".
void WriteASC(std::ostream& Stream, const TASCFile& File, const TASCNumberFormat& Format);
/// The same into a new file (an existing one is replaced). A file that cannot be created or
/// written raises std::ios_base::failure naming the file.
void WriteASCFile(const std::string& FileName, const TASCFile& File,
                  const TASCNumberFormat& Format);

/// Reads a whole file image from a stream positioned at line 1. MaxCols > 0 refuses files
/// with more columns (kAscTooManyColumns) before any data is read. Returns 0, a header status
/// of ReadHeaderOfASC, kAscBadAnnotation or kAscTooManyColumns. Memory grows with what is
/// actually read, never with what the header declares; at most NrRows rows are read.
std::int32_t ReadASC(std::istream& Stream, TASCFile& File, std::int32_t MaxCols = 0);
/// The same, and Report says what the data block held beyond the rows read (assigned on
/// success only).
std::int32_t ReadASC(std::istream& Stream, TASCFile& File, TASCReadReport& Report,
                     std::int32_t MaxCols = 0);
/// The same from a file; kAscFileNotFound (-8) when it does not exist or is not a regular
/// file. File is assigned only on success.
std::int32_t ReadASCFile(const std::string& FileName, TASCFile& File, std::int32_t MaxCols = 0);
std::int32_t ReadASCFile(const std::string& FileName, TASCFile& File, TASCReadReport& Report,
                         std::int32_t MaxCols = 0);

}  // namespace quv
