#include "platform/sheet/sheet_reader.h"

#include "platform/sheet/ole_file.h"
#include "platform/sheet/sheet_files.h"

#include <QDate>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>
#include <QTime>

#include <algorithm>
#include <cmath>

namespace jxc::sheet_reader_detail {

constexpr qint64 kMostFileBytes = qint64{300} << 20;
constexpr std::int64_t kMostCells = 20'000'000;

bool contains(const std::vector<std::string>& names, std::string_view name) {
  return std::find(names.begin(), names.end(), name) != names.end();
}

bool looksLikeText(const QByteArray& head) {
  return std::none_of(head.begin(), head.end(), [](char c) { return c >= 0 && c < 0x20 && !strchr("\t\r\n\f", c); });
}

QStringList columnNames(std::span<const SheetCell> cells) {
  QStringList names;
  QSet<QString> used;
  for (const SheetCell& cell : cells) {
    QString name = cell.asText().simplified();
    if (name.isEmpty()) name = QStringLiteral("F%1").arg(names.size() + 1);
    const QString wanted = name;
    for (int again = 1; used.contains(name.toLower()); ++again)
      name = wanted + QString::number(again);
    used.insert(name.toLower());
    names << name;
  }
  return names;
}

void addCell(RowSet& rows, const SheetCell& cell) {
  switch (cell.kind) {
    case SheetCell::Kind::Empty:
      return rows.addNull();
    case SheetCell::Kind::Number:
      if (cell.number == std::floor(cell.number) && std::abs(cell.number) < 9e15) {
        return rows.addInteger(static_cast<std::int64_t>(cell.number));
      }
      return rows.addReal(cell.number);
    case SheetCell::Kind::Text:
    case SheetCell::Kind::Date:
      return rows.addText(cell.text.toStdString());
  }
}

}  // namespace jxc::sheet_reader_detail

namespace jxc::sheet_files {

SheetCell dateCell(double days, bool from1904) {
  constexpr double kLastDay = 2958466;  // 10000-01-01
  if (from1904) days += 1462;
  if (!(days >= 0) || days >= kLastDay) return {SheetCell::Kind::Number, {}, days};
  auto whole = static_cast<qint64>(std::floor(days));
  auto seconds = static_cast<int>(std::lround((days - static_cast<double>(whole)) * 86400));
  if (seconds == 86400) {
    seconds = 0;
    ++whole;
  }
  const QString time = QTime(0, 0).addSecs(seconds).toString(QStringLiteral("HH:mm:ss"));
  if (whole == 0) return {SheetCell::Kind::Date, time, 0};
  // Day 60 is a 29th of February 1900 that never was; before it the count is one less.
  const QString date = QDate(1899, 12, 30).addDays(whole < 60 ? whole + 1 : whole).toString(Qt::ISODate);
  return {SheetCell::Kind::Date, seconds == 0 ? date : date + u' ' + time, 0};
}

bool isDateFormat(int builtIn) {
  return (builtIn >= 14 && builtIn <= 22) || (builtIn >= 27 && builtIn <= 36) || (builtIn >= 45 && builtIn <= 47) ||
         (builtIn >= 50 && builtIn <= 58);
}

bool isDateFormat(QStringView code) {
  bool quoted = false;
  for (qsizetype i = 0; i < code.size(); ++i) {
    const QChar c = code[i].toLower();
    if (c == u'"') quoted = !quoted;
    if (quoted) continue;
    if (c == u';') return false;  // what follows is for other numbers
    if (c == u'\\' || c == u'_' || c == u'*') {
      ++i;  // the next character stands for itself
    } else if (c == u'[') {
      const qsizetype end = code.indexOf(u']', i);
      if (end < 0) return false;
      const QStringView inside = code.mid(i + 1, end - i - 1);
      // "[h]:mm" counts hours; "[红色]" and "[$-804]" are no part of the number.
      if (!inside.isEmpty() && QStringView(u"hms").contains(inside[0].toLower()) &&
          std::all_of(inside.begin(), inside.end(), [&](QChar x) { return x.toLower() == inside[0].toLower(); })) {
        return true;
      }
      i = end;
    } else if (QStringView(u"ymdhs").contains(c)) {
      return true;
    } else if (c == u'g' && code.mid(i).startsWith(u"General", Qt::CaseInsensitive)) {
      i += 6;
    }
  }
  return false;
}

void throwDamaged() {
  throw SheetError(QStringLiteral("表格文件已损坏，不能读取。\n请用表格软件打开后另存为新文件，再试一次。"));
}
void throwTooLarge() {
  throw SheetError(QStringLiteral("表格文件太大，请把内容分成几个文件后再试。"));
}
void throwPassword() {
  throw SheetError(QStringLiteral("表格文件有密码，请先用表格软件去掉密码再打开。"));
}

}  // namespace jxc::sheet_files

namespace jxc {

QString SheetCell::asText() const {
  return kind == Kind::Number ? numberText(number) : text;
}

RowSet SheetFile::rows(int sheet) {
  using namespace sheet_reader_detail;
  RowSet result;
  int columns = 0;
  int emptyRows = 0;
  std::int64_t cellCount = 0;
  const auto addRow = [&](std::span<const SheetCell> cells) {
    cellCount += columns;
    if (cellCount > kMostCells) sheet_files::throwTooLarge();
    for (int i = 0; i < columns; ++i)
      addCell(result, i < static_cast<int>(cells.size()) ? cells[static_cast<std::size_t>(i)] : SheetCell());
  };
  readRows(
      [&](int, std::span<const SheetCell> cells) {
        if (columns == 0) {
          while (!cells.empty() && cells.back().isEmpty())
            cells = cells.first(cells.size() - 1);
          std::vector<std::string> names;
          for (const QString& name : columnNames(cells))
            names.push_back(name.toStdString());
          columns = static_cast<int>(names.size());
          if (columns > 0) result = RowSet(std::move(names));
          return true;
        }
        const auto shown = cells.first(std::min(cells.size(), static_cast<std::size_t>(columns)));
        if (std::all_of(shown.begin(), shown.end(), [](const SheetCell& cell) { return cell.isEmpty(); })) {
          ++emptyRows;
          return true;
        }
        for (; emptyRows > 0; --emptyRows)
          addRow({});
        addRow(shown);
        return true;
      },
      sheet);
  return result;
}

std::unique_ptr<SheetFile> openExcel(const QString& path) {
  using namespace sheet_reader_detail;
  const QString shown = QDir::toNativeSeparators(path);
  const QFileInfo info(path);
  if (!info.exists()) throw SheetError(QStringLiteral("文件不存在：\n%1").arg(shown));
  QFile file(path);
  if (info.isDir() || !file.open(QIODevice::ReadOnly)) {
    throw SheetError(QStringLiteral("文件不能打开，可能没有读取权限：\n%1").arg(shown));
  }
  if (file.size() == 0) throw SheetError(QStringLiteral("文件是空的：\n%1").arg(shown));
  if (file.size() > kMostFileBytes) sheet_files::throwTooLarge();
  const QByteArray head = file.read(512);
  file.close();
  if (head.startsWith("PK")) return sheet_files::openXlsx(path);
  if (head.startsWith("\xd0\xcf\x11\xe0\xa1\xb1\x1a\xe1")) {
    const auto streams = oleStreamNames(QFile::encodeName(path).constData());
    if (contains(streams, "EncryptedPackage")) sheet_files::throwPassword();
    if (contains(streams, "WordDocument")) {
      throw SheetError(QStringLiteral("这是文字文档，不是表格文件：\n%1").arg(shown));
    }
    if (!contains(streams, "Workbook") && !contains(streams, "Book")) sheet_files::throwDamaged();
    return sheet_files::openXls(path);
  }
  if (looksLikeText(head)) {
    throw SheetError(
        QStringLiteral("文件里是网页或文字，不是表格：\n%1\n请用表格软件打开，另存为 .xlsx 格式后再试。").arg(shown));
  }
  throw SheetError(QStringLiteral("文件不是 .xls 或 .xlsx 表格，或已损坏：\n%1").arg(shown));
}

void closeExcel(std::unique_ptr<SheetFile>& file) {
  file.reset();
}

}  // namespace jxc
