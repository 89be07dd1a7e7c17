// TMatrix in binary files, binary streams and ASC text files (layouts in tmatrix.h).
#include <bit>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <ios>
#include <istream>
#include <ostream>

#include "quv/datatable/asc.h"
#include "quv/matrix/tmatrix.h"

namespace quv {
namespace {

constexpr std::size_t kExtendedSize = 10;
constexpr std::string_view kStreamFileSignature{"QUVMATD\x01", 8};

void CreateFailure(const char* function, const std::string& fileName) {
  throw std::ios_base::failure(std::string(function) + ": cannot create file \"" + fileName + "\"");
}
void WriteFailure(const char* function, const std::string& fileName) {
  throw std::ios_base::failure(std::string(function) + ": cannot write file \"" + fileName + "\"");
}

// The little-endian IEEE image of a double, and back (the element layout of binary files).
void PutDouble(char* out, double x) {
  const auto bits = std::bit_cast<std::uint64_t>(x);
  for (std::size_t k = 0; k < 8; ++k)
    out[k] = static_cast<char>((bits >> (8 * k)) & 0xFFu);
}
double GetDouble(const char* in) {
  std::uint64_t bits = 0;
  for (std::size_t k = 0; k < 8; ++k)
    bits |= static_cast<std::uint64_t>(static_cast<unsigned char>(in[k])) << (8 * k);
  return std::bit_cast<double>(bits);
}

// A stream bound: an integral extended value within 1..2^31-1.
bool AsIndex(Extended x, std::int32_t& index) {
  if (!(x >= 1 && x <= uc_MaxInt) || x != std::floor(x)) return false;
  index = static_cast<std::int32_t>(x);
  return true;
}

}  // namespace

bool TMatrix::ReadBinaryHeader(const std::string& FileName, std::int32_t& Dim1, std::int32_t& Dim2,
                               std::string& DataID, std::int32_t& Kind) {
  std::array<std::int32_t, 4> dims{};
  if (!detail::ReadMatrixHeader(FileName, dims, DataID, Kind)) return false;
  Dim1 = dims[0];
  Dim2 = dims[1];
  return dims[2] == 0 && dims[3] == 0 && Kind == kMatHeaderKind;
}

void TMatrix::SaveBinary(const std::string& FileName) const {
  std::ofstream file(FileName, std::ios::binary | std::ios::trunc);
  if (!file) CreateFailure("SaveBinary", FileName);
  const std::string header = detail::EncodeMatrixHeader({ncols_, nrows_, 0, 0}, DataID());
  file.write(header.data(), static_cast<std::streamsize>(header.size()));
  std::string column(8 * static_cast<std::size_t>(nrows_), '\0');
  for (const TDoubleArray& col : store_) {
    if constexpr (std::endian::native == std::endian::little) {
      std::memcpy(column.data(), col.data(), column.size());
    } else {
      for (std::size_t r = 0; r < col.size(); ++r)
        PutDouble(column.data() + 8 * r, col[r]);
    }
    file.write(column.data(), static_cast<std::streamsize>(column.size()));
  }
  file.flush();
  if (!file) WriteFailure("SaveBinary", FileName);
}

bool TMatrix::LoadBinary(const std::string& FileName) {
  std::error_code ec;
  if (!std::filesystem::is_regular_file(FileName, ec)) return false;
  const auto size = std::filesystem::file_size(FileName, ec);
  if (ec || size < kMatHeaderSize) return false;
  std::int32_t nc = 0, nr = 0, kind = 0;
  std::string id;
  if (!ReadBinaryHeader(FileName, nc, nr, id, kind) || nc < 1 || nr < 1) return false;
  // The file must hold exactly the elements its header announces (checked before allocating).
  // (Divisions, not a product that could wrap around for absurd dimensions.)
  const std::uint64_t data = size - kMatHeaderSize;
  const auto ucols = static_cast<std::uint64_t>(nc);
  const auto urows = static_cast<std::uint64_t>(nr);
  if (data % 8 != 0 || data / 8 % urows != 0 || data / 8 / urows != ucols) return false;
  std::ifstream file(FileName, std::ios::binary);
  file.seekg(static_cast<std::streamoff>(kMatHeaderSize));
  TStore fresh = GuardAllocation<EQUVMatrixError>(*this, msg::kNotEnoughMemoryOnHeap, [&] {
    return TStore(static_cast<std::size_t>(nc), TDoubleArray(static_cast<std::size_t>(nr)));
  });
  std::string column(8 * static_cast<std::size_t>(nr), '\0');
  for (TDoubleArray& col : fresh) {
    if (!file.read(column.data(), static_cast<std::streamsize>(column.size()))) return false;
    if constexpr (std::endian::native == std::endian::little) {
      std::memcpy(col.data(), column.data(), column.size());
    } else {
      for (std::size_t r = 0; r < col.size(); ++r)
        col[r] = GetDouble(column.data() + 8 * r);
    }
  }
  ReplaceStore(std::move(fresh));
  SetDataID(std::move(id));
  return true;
}

void TMatrix::SaveToStream(std::ostream& Stream, std::int32_t LowCol, std::int32_t LowRow,
                           std::int32_t HighCol, std::int32_t HighRow) const {
  MakeValidColRange(LowCol, HighCol);
  MakeValidRowRange(LowRow, HighRow);
  std::string record;
  record.reserve(kExtendedSize * (4 + static_cast<std::size_t>(HighCol - LowCol + 1) *
                                          static_cast<std::size_t>(HighRow - LowRow + 1)));
  const auto put = [&record](Extended x) {
    const TExtendedBytes b = EncodeExtended(x);
    record.append(reinterpret_cast<const char*>(b.data()), b.size());
  };
  for (const std::int32_t bound : {LowCol, LowRow, HighCol, HighRow})
    put(bound);
  ForRange(LowCol, LowRow, HighCol, HighRow, [&](double x) { put(x); });
  Stream.write(record.data(), static_cast<std::streamsize>(record.size()));
}

bool TMatrix::LoadFromStream(std::istream& Stream, bool AdjustSize) {
  return LoadRecord(Stream, AdjustSize, false);
}

bool TMatrix::LoadRecord(std::istream& Stream, bool AdjustSize, bool ClearFirst) {
  std::int32_t b[4] = {};
  for (std::int32_t& bound : b) {
    bool readError = false;
    const Extended x = ReadExtendedFromStream(Stream, readError);
    if (readError || !AsIndex(x, bound)) return false;
  }
  const auto [lowCol, lowRow, highCol, highRow] = b;
  if (lowCol > highCol || lowRow > highRow) return false;
  const std::int64_t count =
      (std::int64_t{highCol} - lowCol + 1) * (std::int64_t{highRow} - lowRow + 1);
  const std::int64_t left = detail::StreamBytesLeft(Stream);
  if (left >= 0 && count > left / static_cast<std::int64_t>(kExtendedSize)) return false;
  const std::int32_t nc = AdjustSize ? highCol : ncols_;
  const std::int32_t nr = AdjustSize ? highRow : nrows_;
  if (highCol > nc || highRow > nr) return false;

  // The values first (memory grows with what is read), then the new store.
  TDoubleArray values;
  for (std::int64_t k = 0; k < count; ++k) {
    bool readError = false;
    const Extended x = ReadExtendedFromStream(Stream, readError);
    if (readError) return false;
    values.push_back(static_cast<double>(x));
  }
  TStore fresh = GuardAllocation<EQUVMatrixError>(*this, msg::kNotEnoughMemoryOnHeap, [&] {
    TStore s(static_cast<std::size_t>(nc), TDoubleArray(static_cast<std::size_t>(nr), 0.0));
    if (!ClearFirst) {
      for (std::int32_t c = 1; c <= std::min(nc, ncols_); ++c) {
        const TDoubleArray& old = store_[static_cast<std::size_t>(c - 1)];
        std::copy_n(old.begin(), std::min(nr, nrows_), s[static_cast<std::size_t>(c - 1)].begin());
      }
    }
    return s;
  });
  std::size_t k = 0;
  for (std::int32_t c = lowCol; c <= highCol; ++c) {
    for (std::int32_t r = lowRow; r <= highRow; ++r)
      fresh[static_cast<std::size_t>(c - 1)][static_cast<std::size_t>(r - 1)] = values[k++];
  }
  ReplaceStore(std::move(fresh));
  return true;
}

void TMatrix::StoreOnFile(std::int32_t LowCol, std::int32_t LowRow, std::int32_t HighCol,
                          std::int32_t HighRow, const std::string& FileName) const {
  std::ofstream file(FileName, std::ios::binary | std::ios::trunc);
  if (!file) CreateFailure("StoreOnFile", FileName);
  file.write(kStreamFileSignature.data(),
             static_cast<std::streamsize>(kStreamFileSignature.size()));
  SaveToStream(file, LowCol, LowRow, HighCol, HighRow);
  file.flush();
  if (!file) WriteFailure("StoreOnFile", FileName);
}

bool TMatrix::LoadFromFile(const std::string& FileName, bool AdjustSize, bool ClearFirst) {
  std::error_code ec;
  if (!std::filesystem::is_regular_file(FileName, ec)) return false;
  std::ifstream file(FileName, std::ios::binary);
  std::string signature(kStreamFileSignature.size(), '\0');
  if (!file.read(signature.data(), static_cast<std::streamsize>(signature.size())) ||
      signature != kStreamFileSignature)
    return false;
  if (!LoadRecord(file, AdjustSize, ClearFirst)) return false;
  return file.peek() == std::ifstream::traits_type::eof();
}

void TMatrix::ExportAsASC(const std::string& FileName, std::int32_t Decimals,
                          const std::string& Comment) const {
  ExportAsASC(FileName, Decimals, Comment, TStr2DArray{});
}

void TMatrix::ExportAsASC(const std::string& FileName, std::int32_t Decimals,
                          const std::string& Comment, const TStr2DArray& Names) const {
  TASCFile file;
  file.Comment = ASCCommentLine(Comment, kASCHeaderText, FileName);
  file.NrCols = ncols_;
  file.NrRows = nrows_;
  const auto names = [&](std::size_t i) -> const TStrArray* {
    return Names.size() > i && !Names[i].empty() ? &Names[i] : nullptr;
  };
  if (const TStrArray* cols = names(0)) {
    if (cols->size() != static_cast<std::size_t>(ncols_))
      RaiseComponentError<EQUVMatrixError>(*this, kNamesDoNotMatch);
    file.ColNames = true;
    file.ColNameList = *cols;
  }
  if (const TStrArray* rows = names(1)) {
    if (rows->size() != static_cast<std::size_t>(nrows_))
      RaiseComponentError<EQUVMatrixError>(*this, kNamesDoNotMatch);
    file.RowNames = true;
    file.RowNameList = *rows;
  }
  file.Values.reserve(static_cast<std::size_t>(ncols_) * static_cast<std::size_t>(nrows_));
  for (std::int32_t r = 1; r <= nrows_; ++r) {
    for (std::int32_t c = 1; c <= ncols_; ++c)
      file.Values.push_back(At(c, r));
  }
  TASCNumberFormat format;
  format.Decimals = Decimals;
  WriteASCFile(FileName, file, format);
}

std::int32_t TMatrix::ImportASC(const std::string& FileName, std::string& Comment) {
  TStr2DArray names;
  return ImportASC(FileName, Comment, names);
}

std::int32_t TMatrix::ImportASC(const std::string& FileName, std::string& Comment,
                                TStr2DArray& Names) {
  TASCFile file;
  const std::int32_t status = ReadASCFile(FileName, file);
  if (status != kAscHeaderOk) return status;
  const std::int32_t rows = file.RowsRead();
  if (rows == 0) return kAscNoData;
  const std::int32_t cols = file.NrCols;
  TStore fresh = GuardAllocation<EQUVMatrixError>(*this, msg::kNotEnoughMemoryOnHeap, [&] {
    return TStore(static_cast<std::size_t>(cols), TDoubleArray(static_cast<std::size_t>(rows)));
  });
  for (std::int32_t r = 1; r <= rows; ++r) {
    for (std::int32_t c = 1; c <= cols; ++c)
      fresh[static_cast<std::size_t>(c - 1)][static_cast<std::size_t>(r - 1)] = file.Value(c, r);
  }
  TStr2DArray names(2);
  names[0] = std::move(file.ColNameList);
  names[1] = std::move(file.RowNameList);
  Comment = std::move(file.Comment);
  Names = std::move(names);
  ReplaceStore(std::move(fresh));
  return kAscHeaderOk;
}

}  // namespace quv
