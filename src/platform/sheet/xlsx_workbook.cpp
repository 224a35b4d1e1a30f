// .xlsx files, written row by row through libxlsxwriter, so that 100,000 rows are never in memory.
#include "platform/sheet/sheet_cells.h"
#include "platform/sheet/zip_package.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStorageInfo>

#include <algorithm>
#include <cerrno>
#include <vector>
#include <xlsxwriter.h>

namespace jxc::xlsx_workbook_detail {

using sheet_cells::Style;

/// "_x0041_" in a cell stands for a character by its number; a text that only looks like it is written so that it
/// comes back as it was.
QString escaped(const QString& text) {
  if (!text.contains(QStringLiteral("_x"))) return text;
  static const QRegularExpression kLooks(QStringLiteral("_(x[0-9a-fA-F]{4}_)"));
  return QString(text).replace(kLooks, QStringLiteral("_x005F_\\1"));
}

class Xlsx : public sheet_cells::Workbook {
 public:
  explicit Xlsx(const QString& path) : path_(path) {
    lxw_workbook_options options{};
    options.constant_memory = LXW_TRUE;
    book_ = workbook_new_opt(QFile::encodeName(path).constData(), &options);
    if (!book_) throw SheetError(QStringLiteral("内存不足，不能写表格文件"));
  }
  ~Xlsx() override {
    if (book_) lxw_workbook_free(book_);
  }
  Xlsx(const Xlsx&) = delete;
  Xlsx& operator=(const Xlsx&) = delete;

  int style(const Style& style) override {
    for (std::size_t i = 0; i < styles_.size(); ++i) {
      if (styles_[i] == style) return static_cast<int>(i);
    }
    // The library asks for the number of a format by a sum over all of it, at every cell: a cell as any other has none.
    lxw_format* format = style == Style{} ? nullptr : workbook_add_format(book_);
    if (!style.format.empty()) format_set_num_format(format, style.format.c_str());
    if (style.bold) format_set_bold(format);
    if (style.right) format_set_align(format, LXW_ALIGN_RIGHT);
    if (style.header) format_set_bg_color(format, 0xe4e4e4);
    styles_.push_back(style);
    formats_.push_back(format);
    return static_cast<int>(styles_.size()) - 1;
  }

  void beginSheet(const QString& name, std::span<const double> widths) override {
    sheet_ = workbook_add_worksheet(book_, name.toUtf8().constData());
    if (!sheet_) throw SheetError(QStringLiteral("表格名称不能用：%1").arg(name));
    for (std::size_t i = 0; i < widths.size(); ++i) {
      const auto column = static_cast<lxw_col_t>(i);
      worksheet_set_column(sheet_, column, column, widths[i], nullptr);
    }
    worksheet_freeze_panes(sheet_, 1, 0);
    // Printed from there: captions on every page, all columns across one page of A4.
    worksheet_repeat_rows(sheet_, 0, 0);
    worksheet_set_paper(sheet_, 9);
    worksheet_fit_to_pages(sheet_, 1, 0);
  }

  void text(int row, int column, int style, const QString& text) override {
    worksheet_write_string(sheet_, static_cast<lxw_row_t>(row), static_cast<lxw_col_t>(column),
                           escaped(text).toUtf8().constData(), formats_[static_cast<std::size_t>(style)]);
  }

  void number(int row, int column, int style, double number) override {
    worksheet_write_number(sheet_, static_cast<lxw_row_t>(row), static_cast<lxw_col_t>(column), number,
                           formats_[static_cast<std::size_t>(style)]);
  }

  void save() override {
    errno = 0;
    const lxw_error error = workbook_close(std::exchange(book_, nullptr));
    const int reason = errno;
    // The library does not look whether its scratch files could be written in full, so the result is read once more.
    if (error == LXW_NO_ERROR && isWholePackage(path_)) return;
    constexpr qint64 kLittle = qint64{4} << 20;
    const bool isFull = std::min(QStorageInfo(QFileInfo(path_).path()).bytesAvailable(),
                                 QStorageInfo(QDir::tempPath()).bytesAvailable()) < kLittle;
    throw sheet_cells::cannotWrite(path_, isFull ? ENOSPC : reason);
  }

 private:
  /// Whether every part of the file can be read and every sheet has its end.
  static bool isWholePackage(const QString& path) {
    try {
      ZipPackage package(path);
      int sheets = 0;
      for (const QString& name : package.partNames()) {
        const auto part = package.open(name, ZipPackage::kMostBytes);
        QByteArray tail;
        while (true) {
          const QByteArray piece = part->read(1 << 16);
          if (piece.isEmpty()) break;
          tail = (tail.right(16) + piece).right(64);
        }
        if (!part->isWhole()) return false;
        if (!name.startsWith(QStringLiteral("xl/worksheets/sheet"))) continue;
        if (!tail.trimmed().endsWith("</worksheet>")) return false;
        ++sheets;
      }
      return sheets > 0;
    } catch (const SheetError&) {
      return false;
    }
  }

  QString path_;
  lxw_workbook* book_ = nullptr;
  lxw_worksheet* sheet_ = nullptr;
  std::vector<Style> styles_;
  std::vector<lxw_format*> formats_;
};

}  // namespace jxc::xlsx_workbook_detail

namespace jxc::sheet_cells {

std::unique_ptr<Workbook> makeXlsx(const QString& path) {
  return std::make_unique<xlsx_workbook_detail::Xlsx>(path);
}

}  // namespace jxc::sheet_cells
