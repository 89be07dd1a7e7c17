// quvmath convert: converts a matrix between its file forms, chosen by the file extensions.
#include <algorithm>
#include <cctype>
#include <filesystem>
#include <iostream>
#include <ostream>
#include <stdexcept>
#include <string>
#include <vector>

#include "commands.h"
#include "quv/matrix/matrix.h"

namespace quvmath {

const std::string_view kConvertHelp =
    "usage: quvmath convert [--id TEXT] [--decimals N] [--lenient] [IN] OUT\n"
    "\n"
    "Converts a matrix between its file forms. The form of each file follows from its\n"
    "extension (any letter case):\n"
    "  .xml   XML matrix document (every value written so that it reads back bit-exact)\n"
    "  .bin   binary matrix file: 4096-byte header, then 8-byte doubles column by column\n"
    "  .qmat  matrix stream file: a signature and 10-byte extended values\n"
    "  .asc   ASC data file, one matrix row per line (text: values are rounded)\n"
    "XML, binary and stream files carry every double exactly; the binary and XML files also\n"
    "carry the data identifier.\n"
    "\n"
    "  --id TEXT     read the XML matrix element with this identifier (default: the first)\n"
    "                and write TEXT as the identifier of the output\n"
    "  --decimals N  decimals of the ASC values (0..30; default: 15 significant digits)\n"
    "  --lenient     convert an ASC file although data was skipped (the warnings stay)\n"
    "Without IN the bundled sample sample.asc is converted.\n"
    "A file that cannot be read gives a message on stderr and exit status 1.\n";

namespace {

enum class TForm { xml, binary, stream, asc };

const char* FormName(TForm f) {
  switch (f) {
    case TForm::xml:
      return "XML";
    case TForm::binary:
      return "binary";
    case TForm::stream:
      return "stream";
    case TForm::asc:
      return "ASC";
  }
  return "";
}

TForm FormOf(const std::string& path) {
  std::string ext = std::filesystem::path(path).extension().string();
  std::transform(ext.begin(), ext.end(), ext.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  if (ext == ".xml") return TForm::xml;
  if (ext == ".bin") return TForm::binary;
  if (ext == ".qmat") return TForm::stream;
  if (ext == ".asc") return TForm::asc;
  throw UsageError{"cannot tell the form of \"" + path +
                   "\" from its extension (.xml, .bin, .qmat or .asc)"};
}

std::string XmlStatusText(std::int32_t status, const std::string& id) {
  switch (status) {
    case quv::kMatXmlCutShort:
      return "the document ends before </matrix>";
    case quv::kMatXmlInvalidTag:
      return "an unknown tag or a number that cannot be read";
    case quv::kMatXmlMalformed:
      return "the file is not XML";
    case quv::kMatXmlBadSize:
      return "the announced size is missing, below 1 or too large";
    case quv::kMatXmlNoMatrix:
      return id.empty() ? "no matrix element" : "no matrix element with dataid \"" + id + "\"";
    case quv::kMatFileNotFound:
      return "file not found";
    default:
      return "status " + std::to_string(status);
  }
}

[[noreturn]] void CannotRead(const std::string& path, const std::string& why) {
  throw std::runtime_error("cannot read \"" + path + "\": " + why);
}

void Read(quv::TMatrix& m, const std::string& path, TForm form, const std::string& id,
          bool lenient) {
  if (!std::filesystem::is_regular_file(path)) CannotRead(path, "file not found");
  switch (form) {
    case TForm::xml: {
      const std::int32_t status = m.LoadFromXMLFile(path, id);
      if (status != quv::kMatFileOk) CannotRead(path, XmlStatusText(status, id));
      return;
    }
    case TForm::binary:
      if (!m.LoadBinary(path)) CannotRead(path, "not a binary matrix file, or cut short");
      return;
    case TForm::stream:
      if (!m.LoadFromFile(path, true)) CannotRead(path, "not a matrix stream file, or cut short");
      return;
    case TForm::asc: {
      // The report of the data reader names every line whose data was skipped.
      const DataFile data = ReadDataFile(path);
      if (WarnSkippedData(data, std::cerr) && !lenient)
        CannotRead(path, "data was skipped (see the warnings); --lenient accepts the rows read");
      std::string comment;
      const std::int32_t status = m.ImportASC(path, comment);
      if (status != 0) CannotRead(path, AscStatusText(status));
      return;
    }
  }
}

void Write(const quv::TMatrix& m, const std::string& path, TForm form, std::int32_t decimals) {
  switch (form) {
    case TForm::xml:
      m.SaveAsXMLFile(path, m.DataID());
      return;
    case TForm::binary:
      m.SaveBinary(path);
      return;
    case TForm::stream:
      m.StoreOnFile(0, 0, 0, 0, path);
      return;
    case TForm::asc:
      m.ExportAsASC(path, decimals, m.DataID());
      return;
  }
}

}  // namespace

int RunConvert(const Args& args, std::ostream& out) {
  const ParsedArgs parsed =
      ParseOptions(args, {{"--id", true}, {"--decimals", true}, {"--lenient", false}});
  if (parsed.operands.empty() || parsed.operands.size() > 2) throw UsageError{"expected [IN] OUT"};
  const std::string in =
      parsed.operands.size() == 2 ? parsed.operands[0] : SampleDataFile("sample.asc");
  const std::string& outPath = parsed.operands.back();
  const TForm inForm = FormOf(in);
  const TForm outForm = FormOf(outPath);
  const std::int32_t decimals =
      parsed.Has("--decimals") ? ParseWhole(parsed.Value("--decimals"), 0, 30, "--decimals") : -1;
  const std::string id = parsed.Value("--id");

  quv::TMatrix m;
  m.SetName("convert");
  Read(m, in, inForm, id, parsed.Has("--lenient"));
  if (!id.empty()) m.SetDataID(id);
  Write(m, outPath, outForm, decimals);

  const std::string cols = std::to_string(m.NrOfColumns());
  const std::string rows = std::to_string(m.NrOfRows());
  PrintTable(out, {{"file", "form", "columns", "rows"},
                   {in, FormName(inForm), cols, rows},
                   {outPath, FormName(outForm), cols, rows}});
  return 0;
}

}  // namespace quvmath
