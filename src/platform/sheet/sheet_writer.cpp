#include "platform/sheet/sheet_writer.h"

#include "engine/new_file.h"
#include "engine/work_behind.h"
#include "platform/sheet/sheet_cells.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QSysInfo>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace jxc::sheet_writer_detail {

using sheet_cells::Cell;
using sheet_cells::Style;
using sheet_cells::Workbook;

constexpr qint64 kSecondsOfADay = 86400;

/// Names which start of which machine, and which process there, is writing.
QString writersMark() {
  return QStringLiteral("%1-%2").arg(QString::fromLatin1(QSysInfo::bootUniqueId().left(8))).arg(::getpid());
}

/// Whether nobody writes this file any more: its process is gone. Nobody here knows those of another machine at the
/// same folder; no file takes a day to write.
bool isLeftBehind(const QFileInfo& file) {
  static const QRegularExpression ours(QStringLiteral("^\\.jxc-([0-9a-f]*)-(\\d+)-[0-9a-z]+\\.xlsx?$"));
  const QRegularExpressionMatch match = ours.match(file.fileName());
  if (!match.hasMatch()) return false;
  if (writersMark().startsWith(match.captured(1) + u'-'))
    return ::kill(match.captured(2).toInt(), 0) != 0 && errno == ESRCH;
  return file.lastModified().secsTo(QDateTime::currentDateTime()) > kSecondsOfADay;
}

/// A name beside the wanted file, which takes its place once all is written, and is gone otherwise. What a program that
/// was killed has left in the folder goes with the next one.
class FileBeside {
 public:
  explicit FileBeside(const QString& wanted)
      : wanted_(QFileInfo(wanted).isSymLink() ? QFileInfo(wanted).symLinkTarget() : wanted) {
    const QFileInfo info(wanted_);
    for (const QFileInfo& each : info.dir().entryInfoList({QStringLiteral(".jxc-*.xls*")}, QDir::Files | QDir::Hidden))
      if (isLeftBehind(each)) QFile::remove(each.filePath());
    name_ = info.dir().filePath(QStringLiteral(".jxc-%1-%2.%3")
                                    .arg(writersMark(), QString::number(QRandomGenerator::system()->generate64(), 36),
                                         info.suffix().toLower()));
  }
  ~FileBeside() {
    if (!name_.isEmpty()) QFile::remove(name_);
  }
  FileBeside(const FileBeside&) = delete;
  FileBeside& operator=(const FileBeside&) = delete;

  const QString& name() const { return name_; }

  void moveIntoPlace() {
    const QByteArray from = QFile::encodeName(name_);
    const QByteArray to = QFile::encodeName(wanted_);
    // The rights of the file that was there stay; to a write-protected one nothing is done.
    struct stat before {};
    if (stat(to.constData(), &before) == 0) {
      if (access(to.constData(), W_OK) != 0) throw sheet_cells::cannotWrite(wanted_, EACCES);
      static_cast<void>(chmod(from.constData(), before.st_mode & 07777));
    }
    // First the contents, then the name: after a power cut the file is the old one or the new one.
    const int handle = ::open(from.constData(), O_RDONLY | O_CLOEXEC);
    const bool synced = handle >= 0 && fsync(handle) == 0;
    const int error = errno;
    if (handle >= 0) ::close(handle);
    if (!synced) throw sheet_cells::cannotWrite(wanted_, error);
    if (std::rename(from.constData(), to.constData()) != 0) throw sheet_cells::cannotWrite(wanted_, errno);
    name_.clear();
    syncFolderOf(wanted_);
  }

 private:
  QString wanted_, name_;
};

/// Reports by hundredths of all rows.
class Steps {
 public:
  Steps(std::int64_t rows, const SheetProgress& progress)
      : rows_(std::max<std::int64_t>(rows, 1)), progress_(progress) {}
  bool next() {
    const int percent = static_cast<int>(done_++ * 100 / rows_);
    if (!progress_ || percent == told_) return true;
    told_ = percent;
    return progress_(percent);
  }

 private:
  std::int64_t rows_, done_ = 0;
  int told_ = -1;
  const SheetProgress& progress_;
};

bool isNumber(SheetKind kind) {
  return kind == SheetKind::Number || kind == SheetKind::Money || kind == SheetKind::Quantity;
}

/// The looks of one column.
struct ColumnStyles {
  int header, cell, time, text, sum;
};

ColumnStyles stylesOf(Workbook& book, const SheetColumn& column) {
  const bool number = isNumber(column.kind);
  const std::string format = sheet_cells::numberFormat(column, true);
  return {book.style({.format = "@", .bold = true, .right = number, .header = true}), book.style({.format = format}),
          book.style({.format = "yyyy-mm-dd hh:mm:ss"}), book.style({.format = "@"}),
          book.style({.format = sheet_cells::numberFormat(column, false), .bold = true, .right = number})};
}

void writeCell(Workbook& book, int row, int column, const Cell& cell, const ColumnStyles& styles) {
  switch (cell.kind) {
    case Cell::Kind::Empty:
      return;
    case Cell::Kind::Text:
      return book.text(row, column, styles.text, cell.text);
    case Cell::Kind::Number:
    case Cell::Kind::Date:
      return book.number(row, column, styles.cell, cell.number);
    case Cell::Kind::DateTime:
      return book.number(row, column, styles.time, cell.number);
  }
}

[[noreturn]] void throwTooMany(int rows, bool isXls) {
  throw SheetError((isXls ? QStringLiteral("共有 %1 行，.xls 文件最多只能放 65535 行，请改用 .xlsx 格式！")
                          : QStringLiteral("共有 %1 行，表格文件最多只能放 1048575 行，请缩小查询范围！"))
                       .arg(rows));
}

bool writeOne(Workbook& book, const Sheet& sheet, const QString& name, int most, const std::function<bool()>& goesOn) {
  std::vector<double> widths;
  std::vector<ColumnStyles> styles;
  for (const SheetColumn& column : sheet.columns) {
    widths.push_back(sheet_cells::columnWidth(column));
    styles.push_back(stylesOf(book, column));
  }
  const int columns = static_cast<int>(sheet.columns.size());
  book.beginSheet(name, widths);
  for (int c = 0; c < columns; ++c) {
    const QString caption = sheet_cells::cleanText(sheet.columns[static_cast<std::size_t>(c)].caption);
    if (!caption.isEmpty()) book.text(0, c, styles[static_cast<std::size_t>(c)].header, caption);
  }
  std::vector<Value> cells(sheet.columns.size());
  int at = 1;
  for (int row = 0; sheet.rows.next || row < sheet.rows.count; ++row, ++at) {
    if (goesOn && !goesOn()) return false;
    std::fill(cells.begin(), cells.end(), Value());
    if (!sheet.rows.next) {
      sheet.rows.read(row, cells);
    } else if (!sheet.rows.next(cells)) {
      break;
    }
    if (row == most) throwTooMany(row + 1, most == kXlsMostRows);
    for (int c = 0; c < columns; ++c) {
      const auto i = static_cast<std::size_t>(c);
      writeCell(book, at, c, sheet_cells::cellOf(cells[i], sheet.columns[i].kind), styles[i]);
    }
  }
  if (!sheet.sums.empty()) {
    for (int c = 0; c < std::min(columns, static_cast<int>(sheet.sums.size())); ++c) {
      const auto i = static_cast<std::size_t>(c);
      ColumnStyles bold = styles[i];
      bold.cell = bold.text = styles[i].sum;
      writeCell(book, at, c, sheet_cells::cellOf(sheet.sums[i], sheet.columns[i].kind), bold);
    }
    ++at;
  }
  const int noteStyle = book.style({.format = "@"});
  for (const QString& note : sheet.notes) {
    const QString text = sheet_cells::cleanText(note);
    if (!text.isEmpty()) book.text(at, 0, noteStyle, text);
    ++at;
  }
  return true;
}

void requireFits(const Sheet& sheet, bool isXls) {
  const qsizetype lines = sheet.rows.count + (sheet.sums.empty() ? 0 : 1) + sheet.notes.size();
  const auto columns = sheet.columns.size();
  if (isXls && lines > kXlsMostRows) throwTooMany(sheet.rows.count, isXls);
  if (lines > kXlsxMostRows) throwTooMany(sheet.rows.count, isXls);
  if (isXls && columns > 256) {
    throw SheetError(QStringLiteral("共有 %1 列，.xls 文件最多只能放 256 列，请改用 .xlsx 格式！").arg(columns));
  }
  if (columns > 16384) throw SheetError(QStringLiteral("共有 %1 列，表格文件最多只能放 16384 列！").arg(columns));
}

}  // namespace jxc::sheet_writer_detail

namespace jxc {

bool writeSheet(const QString& path, const Sheet& sheet, const SheetProgress& progress) {
  return writeSheets(path, std::span(&sheet, 1), progress);
}

struct SheetBook::Making {
  explicit Making(const QString& wanted)
      : path(wanted), isXls(QFileInfo(wanted).suffix().toLower() == QStringLiteral("xls")), beside(wanted) {}

  /// The operator knows the file by the name that he gave.
  template <class Work>
  auto told(Work work) {
    try {
      return work();
    } catch (const SheetError& error) {
      throw SheetError(
          QString(error.message()).replace(QDir::toNativeSeparators(beside.name()), QDir::toNativeSeparators(path)));
    }
  }

  QString path;
  bool isXls;
  QStringList names;
  sheet_writer_detail::FileBeside beside;
  std::unique_ptr<sheet_cells::Workbook> book;
};

SheetBook::SheetBook(const QString& path) {
  const QString ending = QFileInfo(path).suffix().toLower();
  if (ending != QStringLiteral("xls") && ending != QStringLiteral("xlsx"))
    throw SheetError(QStringLiteral("文件名必须以 .xls 或 .xlsx 结尾：\n%1").arg(QDir::toNativeSeparators(path)));
  making_ = std::make_unique<Making>(path);
  {
    // A name that cannot be made is known before the first of 100,000 rows.
    QFile probe(making_->beside.name());
    errno = 0;
    if (!probe.open(QIODevice::WriteOnly)) throw sheet_cells::cannotWrite(path, errno);
  }
  making_->told([this] {
    making_->book =
        making_->isXls ? sheet_cells::makeXls(making_->beside.name()) : sheet_cells::makeXlsx(making_->beside.name());
  });
}

SheetBook::~SheetBook() = default;

bool SheetBook::add(const Sheet& sheet, const std::function<bool()>& goesOn) {
  using namespace sheet_writer_detail;
  requireFits(sheet, making_->isXls);
  const QString name = sheet_cells::sheetName(sheet.name);
  if (making_->names.contains(name, Qt::CaseInsensitive))
    throw SheetError(QStringLiteral("表格名称重复：%1").arg(name));
  making_->names << name;
  const int most = making_->isXls ? kXlsMostRows : kXlsxMostRows;
  return making_->told([&] { return writeOne(*making_->book, sheet, name, most, goesOn); });
}

bool SheetBook::finish(const std::function<bool()>& goesOn) {
  if (goesOn && !goesOn()) return false;  // a small file would be there before the first look
  return making_->told([this, &goesOn] {
    bool isMoved = false;
    WorkBehind work([this, &isMoved](const WorkBehind::Report& report) {
      making_->book->save();
      isMoved = report(99);
      if (isMoved) making_->beside.moveIntoPlace();
    });
    work.result([&goesOn](int) { return !goesOn || goesOn(); });
    return isMoved;
  });
}

bool writeSheets(const QString& path, std::span<const Sheet> sheets, const SheetProgress& progress) {
  using namespace sheet_writer_detail;
  SheetBook book(path);
  std::int64_t rows = 0;
  for (const Sheet& sheet : sheets)
    rows += sheet.rows.count;
  Steps steps(rows, progress);
  for (const Sheet& sheet : sheets) {
    if (!book.add(sheet, [&steps] { return steps.next(); })) return false;
  }
  if (!book.finish([&progress] { return !progress || progress(99); })) return false;
  if (progress) progress(100);
  return true;
}

}  // namespace jxc
