// File-system helpers of the base package: the header reader of the ASC data file.
//
// An ASC file opens with four lines: a free comment; the number of columns; the number of
// rows; and a flags line of "TRUE"/"FALSE" words (row attributes, column names, row names,
// nominal variables). Everything from ";" to the end of a line is a remark. Curve fits write
// a three-word flags line without the nominal-variables word; it is accepted, the missing
// flag reading as false.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>

namespace quv {

/// Results of ReadHeaderOfASC.
inline constexpr std::int32_t kAscHeaderOk = 0;
/// The file ended before the four header lines were read.
inline constexpr std::int32_t kAscHeaderCutShort = -1;
/// Line 2 does not begin with a whole number of at least 1 (and at most 2^31 - 1).
inline constexpr std::int32_t kAscBadColumnCount = -2;
/// Line 3 does not begin with a whole number of at least 0 (and at most 2^31 - 1).
inline constexpr std::int32_t kAscBadRowCount = -3;
/// Line 4 does not begin with three or four words "TRUE" or "FALSE" (any letter case).
inline constexpr std::int32_t kAscBadFlags = -4;
/// The file does not exist or cannot be opened.
inline constexpr std::int32_t kAscFileNotFound = -8;

/// Reads the four header lines of an ASC file: line 1 into Comment, the first whole number of
/// lines 2 and 3 into NrCols and NrRows, the flag words of line 4 into the four Booleans.
/// Returns kAscHeaderOk (0) or one of the negative codes above; the outputs are assigned only
/// on success.
std::int32_t ReadHeaderOfASC(const std::string& FileName, std::string& Comment,
                             std::int32_t& NrCols, std::int32_t& NrRows, bool& RowAttrib,
                             bool& ColNames, bool& RowNames, bool& NominalVars);

/// The same from a text stream positioned at line 1; on success the stream is left at the
/// start of line 5. FlagWords receives 3 or 4, the number of flag words found.
std::int32_t ReadHeaderOfASC(std::istream& Stream, std::string& Comment, std::int32_t& NrCols,
                             std::int32_t& NrRows, bool& RowAttrib, bool& ColNames, bool& RowNames,
                             bool& NominalVars, std::int32_t& FlagWords);

}  // namespace quv
