// Reading .xls through libfreexl, which holds the whole file in memory.
#include "platform/sheet/ole_file.h"
#include "platform/sheet/sheet_files.h"

#include <QFile>
#include <QTemporaryFile>

#include <algorithm>
#include <freexl.h>
#include <string>
#include <string_view>
#include <vector>

namespace jxc::xls_file_detail {

[[noreturn]] void fail(int error) {
  if (error == FREEXL_INSUFFICIENT_MEMORY) sheet_files::throwTooLarge();
  sheet_files::throwDamaged();
}

constexpr std::size_t kLongestRecord = 8224;  // bytes; the library has room for no more

std::size_t byteAt(std::string_view bytes, std::size_t at) {
  return at < bytes.size() ? static_cast<unsigned char>(bytes[at]) : 0;
}
std::size_t wordAt(std::string_view bytes, std::size_t at) {
  return byteAt(bytes, at) | byteAt(bytes, at + 1) << 8U;
}

/// A record that holds one text: where its length stands and how long that is.
struct TextRecord {
  std::size_t kind, lengthAt;
  enum Length : unsigned char { Short = 1, Long = 2 } length;  // bytes of it
  Length lengthIn95;  // before the form of 1997, whose texts have one byte a character and no flags
};
using enum TextRecord::Length;
constexpr TextRecord kTextRecords[] = {
    {0x41e, 2, Long, Short}, {0x85, 6, Short, Short}, {0x204, 6, Long, Long}, {0x207, 0, Long, Long}};

/// Whether the text of a record ends within it.
bool holdsItsText(std::size_t kind, std::string_view record, bool form97) {
  for (const TextRecord& each : kTextRecords) {
    if (each.kind != kind) continue;
    const TextRecord::Length length = form97 ? each.length : each.lengthIn95;
    const std::size_t start = each.lengthAt + length;
    const std::size_t characters =
        length == TextRecord::Long ? wordAt(record, each.lengthAt) : byteAt(record, each.lengthAt);
    if (!form97) return start + characters <= record.size();
    return characters == 0 || start + 1 + characters * ((byteAt(record, start) & 1U) + 1) <= record.size();
  }
  return true;
}

/// Whether the records of a workbook follow each other to its end, and their texts end within them.
bool isWhole(std::string_view stream) {
  constexpr std::size_t kBegin = 0x809;
  bool form97 = true;
  for (std::size_t at = 0; at + 4 <= stream.size();) {
    const std::size_t kind = wordAt(stream, at), length = wordAt(stream, at + 2);
    if (length > kLongestRecord || at + 4 + length > stream.size()) return false;
    const std::string_view record = stream.substr(at + 4, length);
    if (kind == kBegin) form97 = wordAt(record, 0) == 0x600;
    if (!holdsItsText(kind, record, form97)) return false;
    at += 4 + length;
  }
  return true;
}

/// The texts that all cells share: one record, and those that it goes on in.
class SharedTexts {
 public:
  explicit SharedTexts(std::string_view stream) {
    constexpr std::size_t kTexts = 0xfc, kContinue = 0x3c;
    for (std::size_t at = 0; at + 4 <= stream.size(); at += 4 + wordAt(stream, at + 2)) {
      const std::size_t kind = wordAt(stream, at);
      if (kind != kTexts && (kind != kContinue || parts_.empty())) {
        if (!parts_.empty()) return;
        continue;
      }
      parts_.push_back(stream.substr(at + 4, wordAt(stream, at + 2)));
    }
  }

  /// The beginning of the first text that runs through more records than two: the library reads what is behind it from
  /// a wrong place.
  QString firstTooLong() {
    if (parts_.empty()) return {};
    at_ = 8;
    while (part_ < parts_.size()) {
      if (at_ >= parts_[part_].size()) {
        ++part_;
        at_ = 0;
        continue;
      }
      const std::size_t first = part_;
      std::size_t characters = word();
      std::size_t flags = byteAt(parts_[part_], at_++);
      const std::size_t runs = (flags & 8U) != 0 ? word() : 0;
      const std::size_t more = (flags & 4U) != 0 ? word() | word() << 16U : 0;
      QString beginning;
      while (characters > 0) {
        const std::size_t width = (flags & 1U) + 1, here = std::min(characters, (parts_[part_].size() - at_) / width);
        for (std::size_t i = 0; i < here && beginning.size() < 12; ++i)
          beginning += QChar(
              static_cast<char16_t>(width == 2 ? wordAt(parts_[part_], at_ + i * 2) : byteAt(parts_[part_], at_ + i)));
        at_ += here * width;
        if ((characters -= here) == 0) break;
        if (++part_ >= parts_.size()) return {};
        flags = byteAt(parts_[part_], 0);
        at_ = 1;
      }
      if (part_ > first + 1) return beginning;
      skip(runs * 4 + more);
    }
    return {};
  }

 private:
  std::size_t word() {
    at_ += 2;
    return wordAt(parts_[part_], at_ - 2);
  }
  void skip(std::size_t bytes) {
    while (part_ < parts_.size() && bytes > parts_[part_].size() - at_) {
      bytes -= parts_[part_].size() - at_;
      at_ = 0;
      if (++part_ >= parts_.size()) return;
    }
    at_ += bytes;
  }

  std::vector<std::string_view> parts_;
  std::size_t part_ = 0, at_ = 0;
};

/// The library trusts the container and the lengths that a file states, and writes beyond its buffers where they lie.
/// So it gets a container that was made here, around a workbook whose records are whole.
std::unique_ptr<QTemporaryFile> trustworthyCopy(const QString& path) {
  const QByteArray name = QFile::encodeName(path);
  std::string stream = oleStream(name.constData(), "Workbook");
  if (stream.empty()) stream = oleStream(name.constData(), "Book");
  if (stream.empty() || !isWhole(stream)) sheet_files::throwDamaged();
  if (const QString text = SharedTexts(stream).firstTooLong(); !text.isEmpty())
    throw SheetError(QStringLiteral("以“%1”开头的一格文字太长，.xls 读不准，请改短或另存为 .xlsx。").arg(text));
  const std::string container = oleFile("Workbook", stream);
  auto copy = std::make_unique<QTemporaryFile>();
  if (container.empty() || !copy->open() ||
      copy->write(container.data(), static_cast<qint64>(container.size())) != static_cast<qint64>(container.size()) ||
      !copy->flush()) {
    throw SheetError(QStringLiteral("临时文件夹不能写入，表格打不开。"));
  }
  return copy;
}

class XlsFile : public SheetFile {
 public:
  explicit XlsFile(const QString& path) {
    const auto copy = trustworthyCopy(path);
    const int error = freexl_open(QFile::encodeName(copy->fileName()).constData(), &book_);
    if (info(FREEXL_BIFF_PASSWORD) == FREEXL_BIFF_OBFUSCATED) {
      close();
      sheet_files::throwPassword();
    }
    if (error != FREEXL_OK) {
      close();
      fail(error);
    }
    const unsigned count = info(FREEXL_BIFF_SHEET_COUNT);
    for (unsigned i = 0; i < count && i < 0xffff; ++i) {
      const char* name = nullptr;
      if (freexl_get_worksheet_name(book_, static_cast<unsigned short>(i), &name) != FREEXL_OK || !name) break;
      names_ << QString::fromUtf8(name);
    }
    if (names_.isEmpty()) {
      close();
      sheet_files::throwDamaged();  // the format knows no workbook without a sheet
    }
  }
  ~XlsFile() override { close(); }
  XlsFile(const XlsFile&) = delete;
  XlsFile& operator=(const XlsFile&) = delete;

  const QStringList& sheetNames() const override { return names_; }

  void readRows(const SheetRowSink& sink, int sheet) override {
    unsigned rows = 0;
    unsigned short columns = 0;
    int error = freexl_select_active_worksheet(book_, static_cast<unsigned short>(sheet));
    if (error == FREEXL_OK) error = freexl_worksheet_dimensions(book_, &rows, &columns);
    if (error != FREEXL_OK) fail(error);
    std::vector<SheetCell> cells;
    for (unsigned row = 0; row < rows; ++row) {
      cells.assign(columns, {});
      for (unsigned short column = 0; column < columns; ++column) {
        FreeXL_CellValue value{};
        error = freexl_get_cell_value(book_, row, column, &value);
        if (error != FREEXL_OK) fail(error);
        cells[column] = cellOf(value);
        requireTrueDate(cells[column], row, column);
      }
      if (!sink(static_cast<int>(row), cells)) return;
    }
  }

 private:
  unsigned info(unsigned short what) const {
    unsigned value = 0;
    if (book_) freexl_get_info(book_, what, &value);
    return value;
  }
  void close() {
    if (book_) freexl_close(book_);
    book_ = nullptr;
  }

  static SheetCell cellOf(const FreeXL_CellValue& value) {
    switch (value.type) {
      case FREEXL_CELL_INT:
        return {SheetCell::Kind::Number, {}, static_cast<double>(value.value.int_value)};
      case FREEXL_CELL_DOUBLE:
        return {SheetCell::Kind::Number, {}, value.value.double_value};
      case FREEXL_CELL_TEXT:
      case FREEXL_CELL_SST_TEXT: {
        const QString text = QString::fromUtf8(value.value.text_value);
        return text.isEmpty() ? SheetCell() : SheetCell{SheetCell::Kind::Text, text, 0};
      }
      case FREEXL_CELL_DATE:
      case FREEXL_CELL_DATETIME:
      case FREEXL_CELL_TIME: {
        QString text = QString::fromUtf8(value.value.text_value);
        return {SheetCell::Kind::Date, text.remove(QStringLiteral(" 00:00:00")), 0};
      }
      default:
        return {};
    }
  }

  /// The library knows a 29th of February 2100, which there never is: behind it every day is one too early.
  static void requireTrueDate(const SheetCell& cell, unsigned row, unsigned column) {
    if (cell.kind != SheetCell::Kind::Date || cell.text < u"2100-02-28") return;
    throw SheetError(
        QStringLiteral("第 %1 行第 %2 列的日期 %3 在 2100 年 2 月以后，.xls 读不准，请改正或另存为 .xlsx。")
            .arg(row + 1)
            .arg(column + 1)
            .arg(cell.text));
  }

  const void* book_ = nullptr;
  QStringList names_;
};

}  // namespace jxc::xls_file_detail

namespace jxc::sheet_files {

std::unique_ptr<SheetFile> openXls(const QString& path) {
  return std::make_unique<xls_file_detail::XlsFile>(path);
}

}  // namespace jxc::sheet_files
