#include "engine/sheet_export.h"

#include "engine/error.h"

#include <utility>

namespace jxc {
namespace sheet_export_detail {

SheetExporter& current() {
  static SheetExporter exporter;
  return exporter;
}

const SheetExporter& needed() {
  if (!current().add || !current().begin)
    throw DbError(DbError::Kind::Unsupported, QStringLiteral("本机不能导出表格文件。"));
  return current();
}

DbError stopped() {
  return DbError(DbError::Kind::Other, QStringLiteral("操作已取消。"));
}

thread_local SheetsTogether* together = nullptr;

}  // namespace sheet_export_detail

void setSheetExporter(SheetExporter exporter) {
  sheet_export_detail::current() = std::move(exporter);
}

SheetsTogether::SheetsTogether(QString file, std::function<bool(std::int64_t)> goesOn)
    : file_(std::move(file)), goesOn_(std::move(goesOn)), making_(sheet_export_detail::needed().begin(file_)) {
  sheet_export_detail::together = this;
}

SheetsTogether::~SheetsTogether() {
  sheet_export_detail::together = nullptr;
}

void SheetsTogether::finish() {
  if (!making_->finish([this] { return !goesOn_ || goesOn_(rows_); })) throw sheet_export_detail::stopped();
}

void exportRows(const RowPieces& rows, const QString& sheet, const QString& file) {
  SheetsTogether* const all = sheet_export_detail::together;
  if (all == nullptr || all->file_ != file) return sheet_export_detail::needed().add(rows, sheet, file);
  const auto counted = [all, &rows] {
    RowSet piece = rows();
    all->rows_ += piece.rowCount();
    if (all->goesOn_ && !all->goesOn_(all->rows_)) throw sheet_export_detail::stopped();
    return piece;
  };
  all->making_->add(counted, sheet);
}

}  // namespace jxc
