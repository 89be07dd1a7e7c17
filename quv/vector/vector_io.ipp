// Binary stream record, ASC text file and binary file of the vector core, included by
// vector_core.cpp (which instantiates the core once for both element types).
//
// Stream record: First, Last, then elements First..Last, every number a 10-byte extended
// value (quv/base/extended_stream.h).
//
// Binary file (StoreOnFile / LoadFromFile): an 8-byte signature "QUVVEC" + element type
// ('D' doubles, 'I' integers) + format version (1), followed by the stream record of the
// whole vector (First = 1, Last = NrOfElem). A file of n elements is thus 28 + 10 n bytes.
#include <cmath>
#include <filesystem>
#include <fstream>
#include <ios>
#include <istream>
#include <ostream>

#include "quv/datatable/asc.h"
#include "quv/vector/vector_core.h"

namespace quv {
namespace detail {

inline constexpr std::size_t kVectorFileSignatureSize = 8;
inline constexpr std::size_t kExtendedSize = 10;

template <class T>
std::string VectorFileSignature() {
  return std::string("QUVVEC") + (std::is_integral_v<T> ? 'I' : 'D') + '\x01';
}

// A value read from a stream or a text file, as an element. Integers are rounded to the
// nearest and clamped into the Integer range; NaN becomes 0.
template <class T>
T FromReal(Extended x) {
  if constexpr (std::is_integral_v<T>) {
    if (std::isnan(x)) return 0;
    x = std::round(x);
    if (x <= uc_MinInt) return uc_MinInt;
    if (x >= uc_MaxInt) return uc_MaxInt;
    return static_cast<T>(x);
  } else {
    return static_cast<T>(x);
  }
}

// A stream position count of the bytes left, or -1 when the stream cannot tell.
inline std::int64_t BytesLeft(std::istream& stream) {
  const std::istream::pos_type here = stream.tellg();
  if (here == std::istream::pos_type(-1)) return -1;
  stream.seekg(0, std::ios::end);
  const std::istream::pos_type end = stream.tellg();
  stream.seekg(here);
  if (end == std::istream::pos_type(-1)) return -1;
  return static_cast<std::int64_t>(end - here);
}

}  // namespace detail

template <class T>
void TVectorCore<T>::SaveToStream(std::ostream& Stream, std::int32_t First,
                                  std::int32_t Last) const {
  MakeValidElemRange(First, Last);
  std::string record;
  record.reserve(detail::kExtendedSize * static_cast<std::size_t>(Last - First + 3));
  const auto put = [&record](Extended x) {
    const TExtendedBytes b = EncodeExtended(x);
    record.append(reinterpret_cast<const char*>(b.data()), b.size());
  };
  put(First);
  put(Last);
  for (std::int32_t i = First; i <= Last; ++i)
    put(elems_[static_cast<std::size_t>(i - 1)]);
  Stream.write(record.data(), static_cast<std::streamsize>(record.size()));
}

template <class T>
bool TVectorCore<T>::LoadFromStream(std::istream& Stream, bool AdjustSize) {
  bool readError = false;
  const Extended firstX = ReadExtendedFromStream(Stream, readError);
  if (readError) return false;
  const Extended lastX = ReadExtendedFromStream(Stream, readError);
  if (readError) return false;
  const Extended firstR = std::round(firstX);
  const Extended lastR = std::round(lastX);
  const auto inIntRange = [](Extended x) { return x >= uc_MinInt && x <= uc_MaxInt; };
  if (!inIntRange(firstR) || !inIntRange(lastR)) return false;  // also catches NaN
  const auto First = static_cast<std::int32_t>(firstR);
  const auto Last = static_cast<std::int32_t>(lastR);
  const std::int64_t count = std::int64_t{Last} - First + 1;

  if (AdjustSize && Last > NrOfElem()) {
    // Do not let a damaged record allocate more than the stream could fill.
    const std::int64_t left = detail::BytesLeft(Stream);
    if (left >= 0 && count * static_cast<std::int64_t>(detail::kExtendedSize) > left) return false;
  }
  if (AdjustSize) Resize(Last);  // to Last, not to the element count: on purpose

  bool complete = true;
  if (Last <= NrOfElem()) {
    for (std::int64_t k = 0; k < count; ++k) {
      const Extended x = ReadExtendedFromStream(Stream, readError);
      if (readError) {
        // Once the stream has run dry no later read can succeed.
        complete = false;
        break;
      }
      const std::int64_t i = First + k;
      if (i >= 1 && i <= NrOfElem()) {
        elems_[static_cast<std::size_t>(i - 1)] = detail::FromReal<T>(x);
        cleared_ = false;
      }
    }
  } else {
    complete = false;
  }
  Changed();
  return complete;
}

template <class T>
std::int32_t TVectorCore<T>::ImportASC(const std::string& FileName, std::string& Comment) {
  TASCFile file;
  const std::int32_t status = ReadASCFile(FileName, file, 1);
  if (status != kAscHeaderOk) return status;
  const std::size_t rows = file.Values.size();
  if (rows == 0) return kAscNoData;
  TArray storage = GuardAllocation<EQUVVectorError>(*this, msg::kNotEnoughMemory,
                                                    [rows] { return TArray(rows); });
  for (std::size_t k = 0; k < rows; ++k)
    storage[k] = detail::FromReal<T>(file.Values[k]);
  Comment = std::move(file.Comment);
  cleared_ = false;
  ReplaceStorage(std::move(storage));
  return kAscHeaderOk;
}

template <class T>
void TVectorCore<T>::WriteASC(const std::string& FileName, const std::string& Comment,
                              const std::string& HeaderText, std::int32_t Decimals) const {
  TASCFile file;
  file.Comment = ASCCommentLine(Comment, HeaderText, FileName);
  file.NrCols = 1;
  file.NrRows = NrOfElem();
  file.Values.assign(elems_.begin(), elems_.end());
  TASCNumberFormat format;
  format.Decimals = Decimals;
  format.Integers = std::is_integral_v<T>;
  WriteASCFile(FileName, file, format);
}

template <class T>
void TVectorCore<T>::StoreOnFile(const std::string& FileName) const {
  std::ofstream file(FileName, std::ios::binary | std::ios::trunc);
  if (!file) throw std::ios_base::failure("StoreOnFile: cannot create file \"" + FileName + "\"");
  const std::string signature = detail::VectorFileSignature<T>();
  file.write(signature.data(), static_cast<std::streamsize>(signature.size()));
  SaveToStream(file, 0, 0);
  file.flush();
  if (!file) throw std::ios_base::failure("StoreOnFile: cannot write file \"" + FileName + "\"");
}

template <class T>
bool TVectorCore<T>::LoadFromFile(const std::string& FileName) {
  return LoadFromFile(FileName, true);
}

template <class T>
bool TVectorCore<T>::LoadFromFile(const std::string& FileName, bool AdjustSize) {
  std::error_code ec;
  if (!std::filesystem::is_regular_file(FileName, ec)) return false;
  const auto size = std::filesystem::file_size(FileName, ec);
  if (ec) return false;
  std::ifstream file(FileName, std::ios::binary);
  std::string signature(detail::kVectorFileSignatureSize, '\0');
  if (!file.read(signature.data(), static_cast<std::streamsize>(signature.size())) ||
      signature != detail::VectorFileSignature<T>())
    return false;
  bool readError = false;
  const Extended first = ReadExtendedFromStream(file, readError);
  if (readError) return false;
  const Extended last = ReadExtendedFromStream(file, readError);
  if (readError || first != 1 || !(last >= 1 && last <= uc_MaxInt) || last != std::floor(last))
    return false;
  const auto n = static_cast<std::size_t>(last);
  // The file must hold exactly the record it announces (checked before allocating).
  if (size != detail::kVectorFileSignatureSize + detail::kExtendedSize * (n + 2)) return false;
  TArray values = NewArray(n);
  for (T& v : values) {
    v = detail::FromReal<T>(ReadExtendedFromStream(file, readError));
    if (readError) return false;
  }
  if (!AdjustSize) {
    // Keep the size: the stored elements overwrite the leading ones, the rest stay.
    TArray kept = GuardAllocation<EQUVVectorError>(*this, msg::kNotEnoughMemoryOnHeap,
                                                   [this] { return TArray(elems_); });
    std::copy_n(values.begin(), std::min(n, kept.size()), kept.begin());
    values.swap(kept);
  }
  cleared_ = false;
  ReplaceStorage(std::move(values));
  return true;
}

}  // namespace quv
