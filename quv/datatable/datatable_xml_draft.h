// The draft that TDataTable reads its XML form into (an implementation detail of the table).
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "quv/base/xml.h"
#include "quv/datatable/datatable_core.h"

namespace quv::detail {

// A table as far as its XML document has been read.
struct TDTXmlDraft {
  struct Column {
    std::int32_t ix = 0;
    TMScaleType scale = stUnknown;
    std::int32_t attrib = 0;
    std::string name;
  };
  struct NominalID {
    std::int32_t ix = 0;
    std::int32_t slot = 0;
    std::string id;
  };
  struct Row {
    std::int32_t iy = 0;
    std::int32_t attrib = 0;
    std::string name;
  };
  struct Cell {
    std::int32_t ix = 0;
    std::int32_t iy = 0;
    double value = 0.0;
    std::uint8_t state = 0;
  };

  std::string id;
  std::string comment;
  std::int32_t cols = 0;
  std::int32_t rows = 0;
  bool itemsBegun = false;
  std::vector<Column> columns;
  std::vector<NominalID> ids;
  std::vector<Row> rowItems;
  std::vector<Cell> cells;

  // Takes one tag; the reason when it is refused, "" when accepted.
  std::string Take(TDTXmlTag tag, const TXmlTag& t);
  // The content of the finished table; the reason when it is incomplete.
  std::string Build(TDTContent& c) const;

 private:
  std::string Size(std::string_view content, std::int32_t& size) const;
  std::string Index(std::string_view attrs, std::string_view name, std::int32_t hi,
                    std::int32_t& ix) const;
  static std::string Name(std::string_view attrs, std::string& name);
};

}  // namespace quv::detail
