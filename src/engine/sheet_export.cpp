#include "engine/sheet_export.h"

#include <utility>

namespace jxc {
namespace sheet_export_detail {

SheetExporter& current() {
  static SheetExporter exporter;
  return exporter;
}

}  // namespace sheet_export_detail

void setSheetExporter(SheetExporter exporter) {
  sheet_export_detail::current() = std::move(exporter);
}
const SheetExporter& sheetExporter() {
  return sheet_export_detail::current();
}

}  // namespace jxc
