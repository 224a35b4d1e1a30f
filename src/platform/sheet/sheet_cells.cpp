#include "platform/sheet/sheet_cells.h"

#include <QDate>
#include <QDateTime>
#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <cerrno>
#include <cmath>

namespace jxc {

SheetRows heldRows(std::vector<std::vector<Value>> rows) {
  const int count = static_cast<int>(rows.size());
  return {count,
          [held = std::make_shared<std::vector<std::vector<Value>>>(std::move(rows))](int row, std::span<Value> cells) {
            const auto& from = (*held)[static_cast<std::size_t>(row)];
            std::copy_n(from.begin(), std::min(from.size(), cells.size()), cells.begin());
          }};
}

}  // namespace jxc

namespace jxc::sheet_cells_detail {

using sheet_cells::Cell;
using sheet_cells::cleanText;

constexpr double kExact = 1e15;  // beyond this a spreadsheet keeps fewer digits than the number has

Cell textCell(const QString& text) {
  if (text.isEmpty()) return {};
  return {Cell::Kind::Text, cleanText(text), 0};
}

Cell dateCell(const QString& text) {
  // Spreadsheets count days, and take 1900 for a leap year: only from March of it on do all of them agree.
  static const QDate kOrigin(1899, 12, 30);
  static const QDate kFirst(1900, 3, 1);
  const QDate date = QDate::fromString(text.left(10), Qt::ISODate);
  if (!date.isValid() || date < kFirst || date.year() > 9999) return textCell(text);
  const auto days = static_cast<double>(kOrigin.daysTo(date));
  if (text.size() == 10) return {Cell::Kind::Date, {}, days};
  const QTime time = QTime::fromString(text.mid(11), QStringLiteral("HH:mm:ss"));
  if (text.size() != 19 || !time.isValid()) return textCell(text);
  return {Cell::Kind::DateTime, {}, days + time.msecsSinceStartOfDay() / 86400000.0};
}

int characters(const QString& text) {
  int width = 0;
  for (const QChar c : text)
    width += c.unicode() < 0x2e80 ? 1 : 2;
  return width;
}

}  // namespace jxc::sheet_cells_detail

namespace jxc::sheet_cells {

Cell cellOf(const Value& value, SheetKind kind) {
  using namespace sheet_cells_detail;
  if (value.isNull()) return {};
  const bool isText = value.kind() == Value::Kind::Text;
  if (kind == SheetKind::Text || (kind == SheetKind::AsIs && isText)) return textCell(value.text());
  if (kind == SheetKind::Date) return dateCell(value.text().trimmed());
  if (isText) {
    const QString text = value.text().trimmed();
    bool isNumber = false;
    const double number = text.toDouble(&isNumber);
    if (!isNumber || !std::isfinite(number) || std::abs(number) >= kExact) return textCell(value.text());
    return {Cell::Kind::Number, {}, number};
  }
  const double number = value.number();
  if (!std::isfinite(number)) return textCell(value.text());
  if (value.kind() == Value::Kind::Integer && std::abs(number) >= kExact) return textCell(value.text());
  return {Cell::Kind::Number, {}, number};
}

QString cleanText(QString text) {
  const auto isNoise = [](QChar c) {
    return (c.unicode() < 0x20 && c != u'\n' && c != u'\t') || c.unicode() == 0x7f || c.unicode() >= 0xfffe;
  };
  if (std::any_of(text.cbegin(), text.cend(), [&](QChar c) { return isNoise(c) || c.isSurrogate(); })) {
    QString clean;
    clean.reserve(text.size());
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(u'\r', u'\n');
    for (qsizetype i = 0; i < text.size(); ++i) {
      const QChar c = text[i];
      if (c.isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
        clean += c;
        clean += text[++i];
      } else if (!isNoise(c) && !c.isSurrogate()) {
        clean += c;
      }
    }
    text = clean;
  }
  if (text.size() > kMostCharacters) {
    text.truncate(kMostCharacters - 1);
    if (text.back().isHighSurrogate()) text.chop(1);
    text += u'…';
  }
  return text;
}

QString sheetName(const QString& wanted) {
  constexpr qsizetype kLongest = 31;
  QString name;
  for (const QChar c : cleanText(wanted)) {
    if (!QStringLiteral("[]:*?/\\\n\t").contains(c)) name += c;
  }
  name.truncate(kLongest);
  if (!name.isEmpty() && name.back().isHighSurrogate()) name.chop(1);
  while (name.startsWith(u'\''))
    name.remove(0, 1);
  while (name.endsWith(u'\''))
    name.chop(1);
  name = name.trimmed();
  return name.isEmpty() ? QStringLiteral("Sheet1") : name;
}

std::string numberFormat(const SheetColumn& column, bool withSymbol) {
  const int decimals = std::min(column.decimals, 6);
  const auto digits = [](int count) {
    return count > 0 ? "." + std::string(static_cast<std::size_t>(count), '0') : "";
  };
  switch (column.kind) {
    case SheetKind::Text:
      return "@";
    case SheetKind::Date:
      return "yyyy-mm-dd";
    case SheetKind::AsIs:
    case SheetKind::Number:
    case SheetKind::Quantity:
      return decimals < 0 ? std::string() : "0" + digits(decimals);
    case SheetKind::Money: {
      const std::string plain = "#,##0" + digits(decimals < 0 ? 2 : decimals);
      if (!withSymbol || column.symbol.isEmpty()) return plain;
      QString symbol = column.symbol;
      symbol = symbol.remove(u'"').remove(u'\\');
      const std::string quoted = '"' + symbol.toStdString() + '"';
      return quoted + plain + ";-" + quoted + plain;
    }
  }
  return {};
}

double columnWidth(const SheetColumn& column) {
  if (column.width > 0) return std::min(column.width, 200.0);
  double width = sheet_cells_detail::characters(column.caption) + 2;
  switch (column.kind) {
    case SheetKind::Text:
      width = std::max(width, 14.0);
      break;
    case SheetKind::Money:
    case SheetKind::Date:
      width = std::max(width, 12.0);
      break;
    case SheetKind::AsIs:
    case SheetKind::Number:
    case SheetKind::Quantity:
      width = std::max(width, 10.0);
      break;
  }
  return std::min(width, 60.0);
}

SheetError cannotWrite(const QString& path, int error) {
  const QString file = QDir::toNativeSeparators(path);
  switch (error) {
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
      return SheetError(QStringLiteral("磁盘空间不足，文件没有写入，原来的文件保持不变：\n%1").arg(file));
    case EACCES:
    case EPERM:
    case EROFS:
      return SheetError(QStringLiteral("没有写入权限，请换一个文件夹：\n%1").arg(file));
    case ENOENT:
    case ENOTDIR:
      return SheetError(QStringLiteral("文件夹不存在：\n%1").arg(QDir::toNativeSeparators(QFileInfo(path).path())));
    default:
      return SheetError(QStringLiteral("文件不能写入，原来的文件保持不变：\n%1").arg(file));
  }
}

}  // namespace jxc::sheet_cells
