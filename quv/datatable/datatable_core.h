// TDataTable: the library's named data grid.
//
// A table holds a double in each cell of NrOfColumns x NrOfRows (both at least 1), addressed
// (col, row) and 1-based like the matrices, and beside the values:
//   - per column: a measurement scale (TMScaleType), a slot table of 151 nominal identifiers
//     (slots 0..150, at most 10 characters each, an empty one is free), a name and an Integer
//     attribute;
//   - per row: a name and an Integer attribute;
//   - per cell: a state byte (kCellEmpty, kCellInvalid, kCellImputed, kCellMarked, free bits);
//   - a comment.
// The values live in an inner TMatrix (DataMatrix()); a nominal value is stored as the slot
// number of its identifier.
//
// Access never raises for positions outside the table: readers return 0, an empty text or -1,
// writers do nothing. Structural operations (Resize, insert, remove, exchange, sort, Clear,
// Assign, loading) move values, states, names, attributes and column setups together.
//
// Events. Cell, setup, name, attribute and state setters fire OnChange, OnChangeSetup,
// OnChangeNames, OnChangeAttrib and OnChangeCellState respectively, once per call (SetCellState
// only when the byte really changes). A structural operation fires OnChange once, and then
// OnResize (old and new sizes) when the size really changed; it does not fire the narrower
// events, since everything may have moved. Sorts fire OnSortExchange per exchange.
//
// Construction: 1 column x 1 row holding 0 as a number, scale stUnknown, no identifiers, empty
// names, attributes 0, empty comment. New cells made by a structural operation start the same
// way (value 0, state 0), so that SetElem alone fills a table with numbers.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "quv/base/base.h"
#include "quv/base/xml.h"
#include "quv/datatable/asc.h"
#include "quv/datatable/datatable_types.h"
#include "quv/matrix/matrix.h"

namespace quv {

namespace detail {

/// The table's inner matrix: a TMatrix whose store the table can take over in one move.
class TTableMatrix final : public TMatrix {
 public:
  using TMatrix::TMatrix;
  /// Replaces the store and the dimensions, without events.
  void Adopt(TStore store) { SetStoreDirectly(std::move(store)); }
  /// Hands the store out, leaving an empty one; Adopt must follow.
  TStore Release() { return std::move(store_); }
  /// Column c (0-based) for writing in place.
  TColumn& Column(std::size_t c) { return store_[c]; }
};

/// The setup record of one column: its scale and its used identifier slots. Slots beyond the
/// vector's length are free, so a column without identifiers costs nothing.
struct TDTColumnSetup {
  TMScaleType Scale = stUnknown;
  std::vector<std::string> Slots;
  friend bool operator==(const TDTColumnSetup&, const TDTColumnSetup&) = default;
};

/// Everything of a table but its events, name and comment, in the table's own layout (values
/// and states column by column). Readers fill one and the table takes it over in one step.
struct TDTXmlDraft;

struct TDTContent {
  std::vector<std::vector<double>> Values;
  std::vector<std::vector<std::uint8_t>> States;
  std::vector<TDTColumnSetup> Setup;
  TStrArray ColNames, RowNames;
  TIntArray ColAttribs, RowAttribs;

  /// A content of cols x rows default cells (value 0, state 0, empty names, attributes 0).
  static TDTContent Blank(std::size_t cols, std::size_t rows);
};

}  // namespace detail

/// Named data grid with cell states, nominal values, names and attributes (see above).
class TDataTable : public TComponent {
 public:
  /// A 1 x 1 table (see above). An allocation failure raises EQUVDataTableError
  /// "Component \"\": failed to initialize (out of memory)".
  explicit TDataTable(TComponent* owner = nullptr);
  ~TDataTable() override;

  TNotifyEvent OnChange;
  TNotifyEvent OnChangeSetup;
  TNotifyEvent OnChangeNames;
  TNotifyEvent OnChangeAttrib;
  TNotifyEvent OnChangeCellState;
  TDataTableResizeEvent OnResize;
  /// ExchgWhat 1: columns i1 and i2 exchanged (i3, i4 = 1, NrOfRows); 2: rows (1, NrOfColumns).
  TSortExchgEvent OnSortExchange;
  TExportTextEvent OnExportText;
  /// Progress of the file readers and writers and of the sorts, in percent.
  TOnPercentDoneEvent OnPercentDone;

  /// ExchgWhat of OnSortExchange: columns exchanged, rows exchanged.
  static constexpr std::uint8_t kSortExchangeCols = 1;
  static constexpr std::uint8_t kSortExchangeRows = 2;

  // ----- properties -----

  const std::string& Comment() const { return comment_; }
  /// Stores the comment; fires nothing.
  void SetComment(std::string comment) { comment_ = std::move(comment); }
  std::int32_t NrOfColumns() const { return data_.NrOfColumns(); }
  std::int32_t NrOfRows() const { return data_.NrOfRows(); }
  /// Resize(n, NrOfRows).
  void SetNrOfColumns(std::int32_t n) { Resize(n, NrOfRows()); }
  /// Resize(NrOfColumns, n).
  void SetNrOfRows(std::int32_t n) { Resize(NrOfColumns(), n); }
  /// The inner matrix of values, read-only: the stored values without the rounding that
  /// GetElem applies in nominal and ordinal columns. DataMatrix().Columns() gives whole
  /// columns as contiguous arrays.
  const TMatrix& DataMatrix() const { return data_; }

  // ----- cells (datatable_core.cpp) -----

  /// The cell value; in a nominal or ordinal column rounded to the nearest integer (ties to
  /// even). 0 outside the table.
  double GetElem(std::int32_t Col, std::int32_t Row) const;
  double Elem(std::int32_t Col, std::int32_t Row) const { return GetElem(Col, Row); }
  /// Stores the value (the cell state is not touched) and fires OnChange.
  void SetElem(std::int32_t Col, std::int32_t Row, double Value);

  /// The state byte; 0 outside the table.
  std::uint8_t GetCellState(std::int32_t Col, std::int32_t Row) const;
  /// Writes the byte only when it differs from the stored one, then fires OnChangeCellState.
  void SetCellState(std::int32_t Col, std::int32_t Row, std::uint8_t State);
  bool GetIsEmpty(std::int32_t Col, std::int32_t Row) const;
  /// Sets or clears kCellEmpty through SetCellState, then fires OnChange in any case (inside
  /// the table).
  void SetIsEmpty(std::int32_t Col, std::int32_t Row, bool Value);
  bool GetIsImputed(std::int32_t Col, std::int32_t Row) const;
  /// Sets or clears kCellImputed as SetIsEmpty does kCellEmpty.
  void SetIsImputed(std::int32_t Col, std::int32_t Row, bool Value);
  /// True when neither kCellInvalid nor kCellEmpty is set; false outside the table.
  bool GetIsNumber(std::int32_t Col, std::int32_t Row) const;

  // ----- scales and nominal values (datatable_core.cpp) -----

  /// The column's scale; stUnknown outside the table.
  TMScaleType GetMScaleType(std::int32_t Col) const;
  /// Stores the scale and fires OnChangeSetup.
  void SetMScaleType(std::int32_t Col, TMScaleType Scale);
  /// The slot (0..150) whose identifier equals ID, both cut to 10 characters, compared in
  /// lower case when IgnoreCase, else exactly; the lowest such slot. -1 when Col is outside,
  /// ID is empty, the column is neither nominal nor ordinal, or no slot matches.
  std::int32_t OrdinalOfNominalID(std::int32_t Col, std::string_view ID, bool IgnoreCase) const;
  /// The slot of ID: the one OrdinalOfNominalID(Col, ID, true) finds, else the first free slot,
  /// which receives ID (cut to 10 characters) while the column's scale becomes stNominal
  /// (OnChangeSetup). -1 when Col is outside or all 151 slots are taken.
  std::int32_t AddNominalID(std::int32_t Col, std::string_view ID);
  /// Stores the slot of ID as the cell value (OnChange). The slot is found as AddNominalID
  /// finds it, but the scale is left alone: in a column that is not nominal or ordinal the
  /// search finds nothing, so every call takes a new slot. Raises EQUVDataTableError
  /// "Component \"<Name>\": number of available nominal values exceeded" when all slots are
  /// taken; nothing is written then. Does nothing outside the table.
  void SetElemNominal(std::int32_t Col, std::int32_t Row, std::string_view ID);
  /// The cell as an identifier: empty unless the column is nominal or ordinal; then the value
  /// rounded, and for 0..150 that slot's identifier, for any other value its decimal text
  /// cut to 10 characters ("NAN" for NaN).
  std::string GetElemNominal(std::int32_t Col, std::int32_t Row) const;
  /// The identifier in slot Ordinal of a nominal or ordinal column; empty otherwise.
  std::string GetNominalID(std::int32_t Col, std::int32_t Ordinal) const;
  /// Number of used slots of the column, whatever its scale; 0 outside.
  std::int32_t CountNominalIDs(std::int32_t Col) const;
  /// Frees every slot of the column (the scale stays); fires OnChangeSetup.
  void ClearNominalIDs(std::int32_t Col);

  // ----- names and attributes (datatable_core.cpp) -----

  /// Names are cut to 50 characters when stored; setters fire OnChangeNames.
  std::string GetColName(std::int32_t Col) const;
  void SetColName(std::int32_t Col, std::string_view Name);
  std::string GetRowName(std::int32_t Row) const;
  void SetRowName(std::int32_t Row, std::string_view Name);
  /// The first column (row) whose name equals Name (cut to 50 characters) exactly; -1 when
  /// none does or Name is empty.
  std::int32_t FindColIndex(std::string_view Name) const;
  std::int32_t FindRowIndex(std::string_view Name) const;
  /// Length of the longest column (row) name; 0 when all are empty.
  std::int32_t MaxColNameLength() const;
  std::int32_t MaxRowNameLength() const;
  /// Attributes: 0 outside the table; setters fire OnChangeAttrib.
  std::int32_t GetColAttrib(std::int32_t Col) const;
  void SetColAttrib(std::int32_t Col, std::int32_t Value);
  std::int32_t GetRowAttrib(std::int32_t Row) const;
  void SetRowAttrib(std::int32_t Row, std::int32_t Value);

  // ----- shape (datatable_shape.cpp) -----
  // Each raises EQUVDataTableError "Component \"<Name>\": not enough memory" when the new
  // layout cannot be allocated; the table then stays as it was.

  /// Sets the size, keeping every item of the cells, columns and rows present before and
  /// after; new ones start as in a new table. False, nothing done, when a size is below 1 or
  /// both equal the current ones.
  bool Resize(std::int32_t NrColumns, std::int32_t NrRows);
  /// Inserts a new column before Col (Col = NrOfColumns + 1 appends). False when Col is
  /// outside 1..NrOfColumns + 1.
  bool InsertColumn(std::int32_t Col);
  /// Removes column Col. False when Col is outside or it is the only column.
  bool RemoveColumn(std::int32_t Col);
  /// Rows the same way.
  bool InsertRow(std::int32_t Row);
  bool RemoveRow(std::int32_t Row);
  /// Swaps two columns with everything that belongs to them (values, states, setup, name,
  /// attribute); fires OnChange. Ignored when either is outside.
  void ExchangeColumns(std::int32_t C1, std::int32_t C2);
  /// Swaps two rows with their states, names and attributes; fires OnChange.
  void ExchangeRows(std::int32_t R1, std::int32_t R2);
  /// Returns the table to the state of a new one (1 x 1, see above) and empties the comment;
  /// the events stay assigned. Fires OnChange, and OnResize when the size changed.
  void Clear();
  /// Takes over size, values, states, setups, names, attributes and comment of Source (not
  /// its Name, Tag or events). Fires OnChange, and OnResize when the size changed.
  void Assign(const TDataTable& Source);
  /// Copies the values and states of Source's block (LowCol, LowRow)..(HighCol, HighRow)
  /// (each bound clamped to Source, the pairs put in order) to this table from (DestCol,
  /// DestRow); cells falling outside are dropped. Names, attributes and setups are not copied.
  /// Source may be this table. Fires OnChange once; nothing when Source is null.
  void CopyFrom(const TDataTable* Source, std::int32_t LowCol, std::int32_t LowRow,
                std::int32_t HighCol, std::int32_t HighRow, std::int32_t DestCol,
                std::int32_t DestRow);

  // ----- sorting (datatable_shape.cpp) -----
  // Stable sorts: rows (columns) with equal keys keep their order. Every item of a row
  // (column) moves with it; OnSortExchange fires per exchange, OnChange once at the end
  // (unless there are fewer than two rows or columns).

  /// Sorts the rows by the values (GetElem) of column Col; cells that are not numbers, and
  /// NaNs, go last in either direction. Nothing when Col is outside.
  void SortRows(std::int32_t Col, bool Ascending);
  /// Sorts the rows by their names, ignoring letter case (ASCII).
  void SortRowsByName(bool Ascending);
  /// Sorts the rows by their attributes.
  void SortRowsByAttrib(bool Ascending);
  /// Sorts the columns by their names (ignoring letter case) or by their attributes.
  void SortColumnsByName(bool Ascending);
  void SortColumnsByAttrib(bool Ascending);

  // ----- cells in bulk and statistics (datatable_stats.cpp) -----
  // A block is given as LowCol, LowRow, HighCol, HighRow: each bound clamped to the table,
  // the pairs put in order, and (0, 0) in a pair meaning the whole dimension.
  // The statistics take the numeric cells of the block (GetIsNumber, value by GetElem, NaN
  // values skipped) whose state has every bit of Mask set (Mask 0: all numeric cells).

  /// Mean and sample variance (n - 1; 0 for one cell), two-pass in extended precision.
  /// Returns the number of cells used; with none, mean and variance are 0.
  std::int32_t MeanVarOfNumCells(std::int32_t LowCol, std::int32_t LowRow, std::int32_t HighCol,
                                 std::int32_t HighRow, double& Mean, double& Variance,
                                 std::uint8_t Mask = 0) const;
  /// The 25th, 50th and 75th percentiles, s[i] + (s[i+1] - s[i]) f at position
  /// (n - 1) p / 100 = i + f of the sorted values, as the matrix computes them. Returns the
  /// number of cells used; with none, all three are 0. A work array that cannot be allocated
  /// raises "Component \"<Name>\": not enough memory on heap".
  std::int32_t QuartilesOfNumCells(std::int32_t LowCol, std::int32_t LowRow, std::int32_t HighCol,
                                   std::int32_t HighRow, double& Q1, double& Q2, double& Q3,
                                   std::uint8_t Mask = 0) const;
  /// exp(mean of ln x); 0 when a cell holds 0 or no cell is used. A negative value raises
  /// EQUVDataTableError "Component \"<Name>\": negative argument passed to GeometricMean".
  double GeometricMeanOfNumCells(std::int32_t LowCol, std::int32_t LowRow, std::int32_t HighCol,
                                 std::int32_t HighRow, std::uint8_t Mask = 0) const;
  /// The numeric cells of the block whose value (GetElem) lies in Low..High, column by column.
  std::vector<TCellPos> FindCells(std::int32_t LowCol, std::int32_t LowRow, std::int32_t HighCol,
                                  std::int32_t HighRow, double Low, double High) const;
  /// Every state byte s of the block := s Op Bits (loOR sets Bits, loANDNOT clears them,
  /// loXOR toggles them, loAND keeps only them; the negated forms complement the result).
  /// Fires OnChangeCellState once when any byte changed. Returns the number of bytes changed.
  std::int32_t SetCellStates(std::int32_t LowCol, std::int32_t LowRow, std::int32_t HighCol,
                             std::int32_t HighRow, std::uint8_t Bits, TLogicOp Op);
  /// Sets (or clears) Bits in the states of the given cells; positions outside are skipped.
  /// Fires OnChangeCellState once when any byte changed.
  void MarkCells(const std::vector<TCellPos>& Cells, std::uint8_t Bits, bool Set);

  // ----- ASC files (datatable_io.cpp) -----

  /// Line 1 of an exported ASC file with an empty comment (followed by the file name).
  static constexpr const char* kASCHeaderText = "Exported by QUV TDataTable component: ";

  /// Writes the table as an ASC file with its comment on line 1 (kASCHeaderText + FileName
  /// when it is empty), values as strff(x, 12, Precision). Column names, row names, row
  /// attributes and nominal variables are written when they hold anything (a name, a non-zero
  /// attribute, a scale or identifier). Cells that are not numbers are written as NAN.
  /// Column attributes and the other state bits have no place in the file. A file that cannot
  /// be written raises std::ios_base::failure naming it.
  void ExportAsASC(const std::string& FileName, std::int32_t Precision) const;
  /// The same to a stream, line 1 being the comment as it is.
  void ExportAsASC(std::ostream& Stream, std::int32_t Precision) const;
  /// Reads an ASC file into the table, its line 1 becoming the comment. A NaN in the data
  /// reads as an empty cell holding 0. Returns 0, kAscFileNotFound, a status of
  /// ReadHeaderOfASC or ReadASC, kAscNoData (not one complete row), kDTNameTooLong or
  /// kDTBadNominal; on any status but 0 the table is left as it was. Fewer rows than declared
  /// give a table of the rows read (no error). Fires OnChange, and OnResize when the size
  /// changed.
  std::int32_t ImportASC(const std::string& FileName);
  std::int32_t ImportASC(std::istream& Stream);
  /// Takes over a file image read by ReadASC (quv/datatable/asc.h), for callers that want
  /// the reader's report too: the same checks and statuses, after the reading.
  std::int32_t ImportASC(const TASCFile& File);

  // ----- CSV files (datatable_csv.cpp) -----

  /// Reads a CSV file (RFC 4180 quoting: fields in double quotes may hold separators, line
  /// ends and doubled quotes; CR LF or LF line ends; blanks around unquoted fields ignored).
  /// The table gets as many columns as the widest record and one row per record; a missing
  /// field, an empty one, NaN or one of Format.MissingMarks makes an empty cell (value 0). A column
  /// whose fields are all texts becomes nominal, its identifiers taking slots in order of
  /// first appearance (letter case ignored, as AddNominalID does); a text in a column of
  /// numbers, or one that does not fit the slot table, makes an invalid cell (kCellInvalid,
  /// value 0), counted in Report. Returns 0, kAscFileNotFound, kDTBadCSVFormat,
  /// kDTUnclosedQuote, kDTNameTooLong, kDTTooLarge or kAscNoData (no record of data); on any
  /// status but 0 the table is left as it was. Fires OnChange, and OnResize when the size
  /// changed.
  std::int32_t ImportCSV(const std::string& FileName, const TCSVFormat& Format, TCSVReport& Report);
  std::int32_t ImportCSV(std::istream& Stream, const TCSVFormat& Format, TCSVReport& Report);
  /// Writes the table as CSV: a header of column names when Format.Header, the row names
  /// first when Format.RowNames, numbers in their shortest form that reads back exactly
  /// (decimal comma when asked), identifiers for nominal and ordinal columns, an empty field
  /// for a cell that is not a number. Fields are quoted when they need it. OnExportText sees
  /// every field first. Raises std::ios_base::failure naming the file when it cannot be
  /// written, and EQUVDataTableError "ExportCSV: invalid format" for a format ImportCSV refuses.
  void ExportCSV(const std::string& FileName, const TCSVFormat& Format) const;
  void ExportCSV(std::ostream& Stream, const TCSVFormat& Format) const;

  // ----- XML form (datatable_xml.cpp) -----
  // One element "datatable" with the attribute id, holding flat elements (see TDTXmlTag):
  //   <datatable id="...">
  //     <comment>...</comment> <numcols>C</numcols> <numrows>R</numrows>
  //     <column ix="2" scale="1" attrib="0" name="Colour"/>   only columns with a setting
  //     <nomid ix="2" slot="0">red</nomid>                    every used slot
  //     <row iy="1" attrib="3" name="run 1"/>                  only rows with a setting
  //     <cell ix="1" iy="1" state="2">21.5</cell>              every cell, column by column
  //   </datatable>
  // Numbers are written in their shortest form that reads back exactly.

  /// Writes the table element with identifier DataID, for embedding in another document.
  void WriteXML(TXmlWriter& Writer, std::string_view DataID) const;
  /// Writes a whole document: the XML declaration and the table element.
  void WriteToXMLStream(std::ostream& Stream, std::string_view DataID) const;
  /// The same into a file; std::ios_base::failure naming the file when it cannot be written.
  void SaveAsXMLFile(const std::string& FileName, std::string_view DataID) const;
  /// Handles one tag of a document being read (the handler of ReadXmlTags). "datatable"
  /// starts a table aside; the other tags fill it in; the closing tag checks it (numcols and
  /// numrows given, every cell given exactly once) and the table takes it over (OnChange,
  /// OnResize when the size changed). Returns kXmlTagDone then, kXmlTagGoOn before, and
  /// kXmlTagInvalid, the table unchanged, at a tag or value it refuses: an unknown tag, a tag
  /// before "datatable", a size that is not a whole number from 1 on or given twice or after
  /// the items, an index outside the announced size, a scale beyond stRatio, a slot outside
  /// 0..150, an identifier longer than 10 or a name longer than 50 characters, a value that
  /// is not a number. A later column, row or nomid element overrides an earlier one.
  std::int32_t ProcessXmlTag(const TXmlTag& Tag);
  /// Reads a document (or the next table element of a stream) through ProcessXmlTag.
  /// Returns 0 with DataID the identifier of the table read, kDTXmlCutShort, kDTXmlInvalid or
  /// kDTXmlMalformed; on any status but 0 the table is left as it was.
  std::int32_t ReadFromXMLStream(std::istream& Stream, std::string& DataID);
  /// The same from a file; kAscFileNotFound (-8) when it does not exist.
  std::int32_t LoadFromXMLFile(const std::string& FileName, std::string& DataID);
  /// Why the last XML read was refused ("" after a table was taken over).
  const std::string& XmlError() const { return xmlError_; }
  /// The identifier of the last table taken over from XML.
  const std::string& XmlDataID() const { return xmlDataID_; }

  // ----- change signals -----

  /// Fire OnChange, OnChangeSetup, OnChangeNames, OnChangeAttrib, OnChangeCellState.
  void ChangedData() { FireEvent(OnChange, this); }
  void ChangedSetup() { FireEvent(OnChangeSetup, this); }
  void ChangedNames() { FireEvent(OnChangeNames, this); }
  void ChangedAttrib() { FireEvent(OnChangeAttrib, this); }
  void ChangedCellStates() { FireEvent(OnChangeCellState, this); }

 private:
  bool InsideCell(std::int32_t Col, std::int32_t Row) const {
    return InsideCol(Col) && InsideRow(Row);
  }
  bool InsideCol(std::int32_t Col) const { return Col >= 1 && Col <= NrOfColumns(); }
  bool InsideRow(std::int32_t Row) const { return Row >= 1 && Row <= NrOfRows(); }
  static std::size_t Ix(std::int32_t i) { return static_cast<std::size_t>(i - 1); }
  /// The slot ID finds or takes, without storing anything; -1 when all are taken.
  std::int32_t SlotFor(std::int32_t Col, std::string_view ID) const;
  /// Writes ID into a free Slot (a used one keeps its identifier).
  void StoreID(std::int32_t Col, std::int32_t Slot, std::string_view ID);

  /// Installs a content without events.
  void Install(detail::TDTContent&& content);
  /// Installs a content and fires OnChange, then OnResize when the size changed.
  void InstallAndSignal(detail::TDTContent&& content);
  /// The new layout: new column j is old column colMap[j] (0-based; -1 a new column), and so
  /// for rows. Allocation is guarded; then the table takes it with OnChange (and OnResize).
  void Remap(const std::vector<std::int32_t>& colMap, const std::vector<std::int32_t>& rowMap);
  /// Applies a permutation of the rows (perm[new] = old, 0-based) as a sequence of exchanges,
  /// firing OnSortExchange per exchange and OnChange at the end.
  void PermuteRows(const std::vector<std::int32_t>& perm);
  void PermuteColumns(const std::vector<std::int32_t>& perm);
  /// Exchange every item of two rows (columns), 0-based, without events.
  void SwapRowItems(std::size_t i, std::size_t j);
  void SwapColumnItems(std::size_t i, std::size_t j);
  /// Collects the numeric values of a block that match Mask.
  std::vector<double> NumCells(std::int32_t LowCol, std::int32_t LowRow, std::int32_t HighCol,
                               std::int32_t HighRow, std::uint8_t Mask) const;
  void PercDone(std::int32_t percent) const;
  /// The ASC image of the whole table with the given line 1.
  TASCFile ASCImage(std::string line1) const;

  detail::TTableMatrix data_;
  std::vector<std::vector<std::uint8_t>> states_;
  std::vector<detail::TDTColumnSetup> setup_;
  TStrArray colNames_, rowNames_;
  TIntArray colAttribs_, rowAttribs_;
  std::string comment_;
  std::unique_ptr<detail::TDTXmlDraft> xml_;  // the table being read from XML
  std::string xmlError_, xmlDataID_;
};

}  // namespace quv
