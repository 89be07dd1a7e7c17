// Enumerations, cell-state bits, limits, messages, statuses and event types of the data table.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "quv/base/component.h"

namespace quv {

/// Measurement scale of a column. Cells of nominal and ordinal columns hold the slot number
/// (0..150) of an identifier in the column's slot table.
enum TMScaleType : std::uint8_t { stUnknown, stNominal, stOrdinal, stInterval, stRatio };

/// Bits of the cell state byte. The other bits are free for the caller's own markings.
/// A cell is a number (GetIsNumber) when neither kCellInvalid nor kCellEmpty is set.
/// The content of the cell is not a valid number (a text the readers could not place, say).
inline constexpr std::uint8_t kCellInvalid = 1;
/// The cell is empty: its value means nothing.
inline constexpr std::uint8_t kCellEmpty = 2;
/// The cell is marked (a selection made by the caller); SetCellStates and the statistics'
/// Mask work with it as with any other bit.
inline constexpr std::uint8_t kCellMarked = 4;
/// The value was imputed.
inline constexpr std::uint8_t kCellImputed = 32;

/// Number of identifier slots of a column, numbered 0..kNominalSlots - 1.
inline constexpr std::int32_t kNominalSlots = 151;
/// Identifiers (TNominalIDStr) are cut to this many characters.
inline constexpr std::size_t kMaxNominalIDLength = 10;
/// Row and column names (TDTNameStr) are cut to this many characters.
inline constexpr std::size_t kMaxDTNameLength = 50;

/// Closing literals of the table's component-form messages.
namespace msg {
inline constexpr std::string_view kNominalValuesExceeded =
    "\": number of available nominal values exceeded";
inline constexpr std::string_view kFailedToInitialize = "\": failed to initialize (out of memory)";
}  // namespace msg

/// Statuses of the table's file readers beyond those of the ASC reader (quv/datatable/asc.h,
/// quv/base/filesys.h). They are far from the ASC codes so that the two sets never meet.
/// A column or row name is longer than kMaxDTNameLength characters.
inline constexpr std::int32_t kDTNameTooLong = -21;
/// A nominal block is malformed: a scale beyond stRatio, a slot outside 0..150 or given
/// twice, or an identifier longer than kMaxNominalIDLength characters.
inline constexpr std::int32_t kDTBadNominal = -22;
/// The CSV format cannot be read: the decimal comma is also the separator, or the separator
/// is a quote or a line end.
inline constexpr std::int32_t kDTBadCSVFormat = -23;
/// A quoted CSV field is not closed before the end of the file.
inline constexpr std::int32_t kDTUnclosedQuote = -24;
/// The file holds more rows or columns than a table can have (2^31 - 1).
inline constexpr std::int32_t kDTTooLarge = -25;

/// The document ended before the table's closing tag.
inline constexpr std::int32_t kDTXmlCutShort = -26;
/// A tag or value of the XML form that the table does not accept (XmlError() says which).
inline constexpr std::int32_t kDTXmlInvalid = -27;
/// Markup that is not XML.
inline constexpr std::int32_t kDTXmlMalformed = -28;

/// The tags of the table's XML form.
enum TDTXmlTag : std::uint8_t {
  xmlDTBegin,      ///< "datatable": opens the table; attribute id
  xmlDTEnd,        ///< "/datatable": closes it
  xmlDTComment,    ///< "comment": content the comment
  xmlDTNumCols,    ///< "numcols": content the number of columns
  xmlDTNumRows,    ///< "numrows": content the number of rows
  xmlDTColumn,     ///< "column": attributes ix, scale, attrib, name
  xmlDTNominalID,  ///< "nomid": attributes ix, slot; content the identifier
  xmlDTRow,        ///< "row": attributes iy, attrib, name
  xmlDTCell,       ///< "cell": attributes ix, iy, state (when not 0); content the value
  xmlDTInvalid     ///< any other tag
};
/// Tag texts of TDTXmlTag, in its order.
inline constexpr std::array<std::string_view, 10> kDTXmlTagTexts = {
    "datatable", "/datatable", "comment", "numcols", "numrows",
    "column",    "nomid",      "row",     "cell",    "$invalidtag$"};

/// Position of a cell, both 1-based.
struct TCellPos {
  std::int32_t Col = 0;
  std::int32_t Row = 0;
  friend bool operator==(const TCellPos&, const TCellPos&) = default;
};

/// OnResize of the table: the sizes before and after.
using TDataTableResizeEvent =
    std::function<void(TComponent* sender, std::int32_t oldColumns, std::int32_t oldRows,
                       std::int32_t newColumns, std::int32_t newRows)>;

/// Fired by the CSV writer for every field before it is written; the handler may change the
/// text. Col and Row are 1-based for cells; Row 0 is the header line of column names and
/// Col 0 the column of row names.
using TExportTextEvent =
    std::function<void(TComponent* sender, std::int32_t col, std::int32_t row, std::string& text)>;

/// Layout of a CSV file.
struct TCSVFormat {
  /// Field separator; a comma, a semicolon or a TAB are usual.
  char Separator = ',';
  /// Numbers use a decimal comma (then the separator must not be a comma).
  bool DecimalComma = false;
  /// The first record holds the column names.
  bool Header = true;
  /// The first field of every record is the row name (in the header: a title, ignored).
  bool RowNames = false;
  /// Field texts (compared exactly, after trimming blanks) that mark a missing value; they
  /// read as empty cells, like empty fields and like NaN in any spelling.
  std::vector<std::string> MissingMarks{"NA", "N/A", "?"};
};

/// What the CSV reader met besides plain cells. Lines are 1-based lines of the file.
struct TCSVReport {
  /// Records whose number of fields differs from the widest record (the missing fields read
  /// as empty cells), and the line where the first of them begins (0: none).
  std::int32_t RaggedRecords = 0;
  std::int32_t FirstRaggedLine = 0;
  /// Texts in columns that otherwise hold numbers, or texts that a nominal column could not
  /// take (more than 151 distinct identifiers, or one longer than 10 characters). Those
  /// cells are marked kCellInvalid and hold 0; the first of them is on FirstInvalidLine.
  std::int32_t InvalidCells = 0;
  std::int32_t FirstInvalidLine = 0;
  TCellPos FirstInvalidCell;
  /// Blank lines, which carry no record.
  std::int32_t BlankLines = 0;
  /// Where a refusing status (kDTUnclosedQuote, kDTNameTooLong, kDTTooLarge) was met: the line
  /// on which the offending record begins. 0 otherwise.
  std::int32_t StopLine = 0;
};

}  // namespace quv
