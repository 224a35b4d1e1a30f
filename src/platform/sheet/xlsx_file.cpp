// Reading .xlsx: small parts tell where the sheets are and what dates look like; a sheet is read cell by cell.
#include "platform/sheet/sheet_files.h"
#include "platform/sheet/zip_package.h"

#include <QDir>
#include <QHash>
#include <QXmlStreamReader>

#include <algorithm>
#include <vector>

namespace jxc::xlsx_file_detail {

constexpr qint64 kMostSmallPart = qint64{64} << 20;
constexpr qint64 kMostTexts = qint64{400} << 20;  // bytes of shared texts in memory
constexpr int kMostRows = 1048576;
constexpr int kMostColumns = 16384;
constexpr int kDeepest = 64;  // elements inside each other

/// Reads one part as XML and turns everything that can be wrong with it into one of our messages.
class PartReader {
 public:
  PartReader(const ZipPackage& package, const QString& name, qint64 most) : part_(package.open(name, most)) {
    if (part_) xml_.setDevice(part_.get());
  }
  bool exists() const { return part_ != nullptr; }

  /// The next token; false at the end of the part. Throws when the part is damaged.
  bool next() {
    if (!part_) sheet_files::throwDamaged();
    const auto token = xml_.readNext();
    if (token == QXmlStreamReader::StartElement && ++depth_ > kDeepest) sheet_files::throwDamaged();
    if (token == QXmlStreamReader::EndElement) --depth_;
    if (token == QXmlStreamReader::DTD) sheet_files::throwDamaged();  // no program writes one
    if (token == QXmlStreamReader::Invalid) {
      if (part_->isTooLong()) sheet_files::throwTooLarge();
      sheet_files::throwDamaged();
    }
    if (token != QXmlStreamReader::EndDocument) return true;
    // A changed digit is good XML still; only the check sum knows it.
    while (!part_->read(1 << 16).isEmpty()) {
    }
    if (!part_->isWhole()) sheet_files::throwDamaged();
    return false;
  }
  bool isStart(QStringView name) const { return xml_.isStartElement() && xml_.name() == name; }
  bool isEnd(QStringView name) const { return xml_.isEndElement() && xml_.name() == name; }
  bool isStart() const { return xml_.isStartElement(); }
  bool isText() const { return xml_.isCharacters(); }
  QStringView name() const { return xml_.name(); }
  QStringView text() const { return xml_.text(); }
  QXmlStreamAttributes attributes() const { return xml_.attributes(); }

 private:
  std::unique_ptr<ZipPackage::Part> part_;
  QXmlStreamReader xml_;
  int depth_ = 0;
};

/// "_x000D_" stands for a character that XML cannot hold.
QString unescaped(const QString& text) {
  if (!text.contains(QStringLiteral("_x"))) return text;
  QString result;
  result.reserve(text.size());
  for (qsizetype i = 0; i < text.size(); ++i) {
    bool isCode = false;
    if (text[i] == u'_' && i + 6 < text.size() && text[i + 1] == u'x' && text[i + 6] == u'_') {
      const uint code = QStringView(text).mid(i + 2, 4).toUInt(&isCode, 16);
      if (isCode) {
        result += QChar(static_cast<char16_t>(code));
        i += 6;
      }
    }
    if (!isCode) result += text[i];
  }
  return result;
}

bool isTrue(QStringView flag) {
  return flag == u"1" || flag == u"true";
}

/// Where a part leads to by its relations.
struct Relation {
  QString type, target;
};

QHash<QString, Relation> readRelations(const ZipPackage& package, const QString& part) {
  const qsizetype slash = part.lastIndexOf(u'/');
  const QString folder = part.left(slash + 1);
  QHash<QString, Relation> relations;
  PartReader reader(package, folder + QStringLiteral("_rels/") + part.mid(slash + 1) + QStringLiteral(".rels"),
                    kMostSmallPart);
  if (!reader.exists()) return relations;
  while (reader.next()) {
    if (!reader.isStart(u"Relationship")) continue;
    const auto attributes = reader.attributes();
    QString target = attributes.value(QStringLiteral("Target")).toString();
    target = target.startsWith(u'/') ? target.mid(1) : QDir::cleanPath(folder + target);
    relations.insert(attributes.value(QStringLiteral("Id")).toString(),
                     {attributes.value(QStringLiteral("Type")).toString(), target});
  }
  return relations;
}

QString targetOf(const QHash<QString, Relation>& relations, const QString& typeEnd) {
  for (const Relation& relation : relations) {
    if (relation.type.endsWith(typeEnd)) return relation.target;
  }
  return {};
}

/// Row and column from 0 of "BC12"; column -1 when it is none.
struct Place {
  int row = -1, column = -1;
};

Place placeOf(QStringView reference) {
  int column = 0;
  qsizetype i = 0;
  for (; i < reference.size() && column <= kMostColumns; ++i) {
    const char16_t c = reference[i].toUpper().unicode();
    if (c < u'A' || c > u'Z') break;
    column = column * 26 + (c - u'A' + 1);
  }
  bool isNumber = false;
  const int row = reference.mid(i).toInt(&isNumber);
  if (column < 1 || column > kMostColumns || !isNumber || row < 1 || row > kMostRows) return {};
  return {row - 1, column - 1};
}

class XlsxFile : public SheetFile {
 public:
  explicit XlsxFile(const QString& path) : package_(path) {
    // A document of another kind is such a package too.
    QString workbook = targetOf(readRelations(package_, {}), QStringLiteral("/officeDocument"));
    if (!package_.has(workbook)) workbook = QStringLiteral("xl/workbook.xml");
    if (!package_.has(workbook)) {
      if (package_.has(QStringLiteral("[Content_Types].xml")) || package_.has(QStringLiteral("mimetype"))) {
        throw SheetError(QStringLiteral("这不是 .xlsx 表格文件，请用表格软件打开后另存为 .xlsx 格式。"));
      }
      sheet_files::throwDamaged();
    }
    const auto relations = readRelations(package_, workbook);
    readWorkbook(workbook, relations);
    textsPart_ = targetOf(relations, QStringLiteral("/sharedStrings"));
    readStyles(targetOf(relations, QStringLiteral("/styles")));
    if (names_.isEmpty()) throw SheetError(QStringLiteral("表格文件里没有工作表。"));
  }

  const QStringList& sheetNames() const override { return names_; }

  void readRows(const SheetRowSink& sink, int sheet) override {
    if (sheet < 0 || sheet >= names_.size()) sheet_files::throwDamaged();
    readTexts();
    PartReader reader(package_, parts_[sheet], ZipPackage::kMostBytes);
    if (!reader.exists()) sheet_files::throwDamaged();
    int next = 0;  // row
    bool seen = false;
    std::vector<SheetCell> cells;
    while (reader.next()) {
      if (reader.isStart(u"sheetData") || reader.isStart(u"worksheet")) seen = true;
      if (!reader.isStart(u"row")) continue;
      int row = next;
      const auto number = reader.attributes().value(QStringLiteral("r"));
      if (!number.isEmpty()) row = number.toInt() - 1;
      if (row < next || row >= kMostRows) sheet_files::throwDamaged();
      for (; next < row; ++next) {
        if (!sink(next, {})) return;
      }
      readRow(reader, cells);
      if (!sink(next++, cells)) return;
    }
    if (!seen) sheet_files::throwDamaged();
  }

 private:
  void readWorkbook(const QString& part, const QHash<QString, Relation>& relations) {
    PartReader reader(package_, part, kMostSmallPart);
    while (reader.next()) {
      if (reader.isStart(u"workbookPr")) {
        from1904_ = isTrue(reader.attributes().value(QStringLiteral("date1904")));
      } else if (reader.isStart(u"sheet")) {
        const auto attributes = reader.attributes();
        for (const auto& attribute : attributes) {
          if (attribute.name() != u"id") continue;
          const Relation relation = relations.value(attribute.value().toString());
          if (!relation.type.endsWith(u"/worksheet")) continue;  // a sheet that is one chart has no rows
          names_ << attributes.value(QStringLiteral("name")).toString();
          parts_ << relation.target;
        }
      }
    }
  }

  void readStyles(const QString& part) {
    PartReader reader(package_, part, kMostSmallPart);
    if (!reader.exists()) return;
    QHash<int, bool> own;
    bool inCells = false;
    while (reader.next()) {
      if (reader.isStart(u"numFmt")) {
        const auto attributes = reader.attributes();
        own.insert(attributes.value(QStringLiteral("numFmtId")).toInt(),
                   sheet_files::isDateFormat(attributes.value(QStringLiteral("formatCode"))));
      } else if (reader.isStart(u"cellXfs")) {
        inCells = true;
      } else if (reader.isEnd(u"cellXfs")) {
        inCells = false;
      } else if (inCells && reader.isStart(u"xf")) {
        const int format = reader.attributes().value(QStringLiteral("numFmtId")).toInt();
        isDate_.push_back(own.contains(format) ? own.value(format) : sheet_files::isDateFormat(format));
      }
    }
  }

  void readTexts() {
    if (textsRead_) return;
    textsRead_ = true;
    PartReader reader(package_, textsPart_, ZipPackage::kMostBytes);
    if (!reader.exists()) return;
    qint64 bytes = 0;
    while (reader.next()) {
      if (!reader.isStart(u"si")) continue;
      texts_.push_back(readText(reader, u"si"));
      bytes += 40 + texts_.back().size() * 2;
      if (bytes > kMostTexts) sheet_files::throwTooLarge();
    }
  }

  /// The pieces of a text up to its end element; what tells how Chinese is pronounced is no part of it.
  static QString readText(PartReader& reader, QStringView end) {
    QString text;
    bool inside = false, phonetic = false;
    while (reader.next() && !reader.isEnd(end)) {
      if (reader.isStart(u"rPh")) phonetic = true;
      if (reader.isEnd(u"rPh")) phonetic = false;
      if (reader.isStart(u"t")) inside = true;
      if (reader.isEnd(u"t")) inside = false;
      if (inside && !phonetic && reader.isText()) text += reader.text();
    }
    return unescaped(text);
  }

  void readRow(PartReader& reader, std::vector<SheetCell>& cells) {
    cells.clear();
    while (reader.next() && !reader.isEnd(u"row")) {
      if (!reader.isStart(u"c")) continue;
      const auto attributes = reader.attributes();
      const auto reference = attributes.value(QStringLiteral("r"));
      auto column = static_cast<int>(cells.size());
      if (!reference.isEmpty()) {
        column = placeOf(reference).column;
        if (column < 0) sheet_files::throwDamaged();
      }
      if (column >= kMostColumns) sheet_files::throwDamaged();
      const QString type = attributes.value(QStringLiteral("t")).toString();
      const int style = attributes.value(QStringLiteral("s")).toInt();
      const SheetCell cell = readCell(reader, type, style);
      if (cell.isEmpty()) continue;
      if (static_cast<std::size_t>(column) >= cells.size()) cells.resize(static_cast<std::size_t>(column) + 1);
      cells[static_cast<std::size_t>(column)] = cell;
    }
  }

  SheetCell readCell(PartReader& reader, const QString& type, int style) {
    QString value;
    QString inlineText;
    bool inValue = false;
    while (reader.next() && !reader.isEnd(u"c")) {
      if (reader.isStart(u"is")) inlineText = readText(reader, u"is");
      if (reader.isStart(u"v")) inValue = true;
      if (reader.isEnd(u"v")) inValue = false;
      if (inValue && reader.isText()) value += reader.text();
    }
    const auto text = [](const QString& of) {
      return of.isEmpty() ? SheetCell() : SheetCell{SheetCell::Kind::Text, of, 0};
    };
    if (type == u"inlineStr") return text(inlineText);
    if (value.isEmpty() || type == u"e") return {};  // a formula without a result, or one that failed
    if (type == u"str") return text(unescaped(value));
    if (type == u"s") {
      bool isNumber = false;
      const uint index = value.toUInt(&isNumber);
      if (!isNumber || index >= texts_.size()) sheet_files::throwDamaged();
      return text(texts_[index]);
    }
    if (type == u"d") {
      return {SheetCell::Kind::Date, value.left(19).replace(u'T', u' ').remove(QStringLiteral(" 00:00:00")), 0};
    }
    bool isNumber = false;
    const double number = value.trimmed().toDouble(&isNumber);
    if (!isNumber) sheet_files::throwDamaged();
    if (type != u"b" && style >= 0 && style < static_cast<int>(isDate_.size()) &&
        isDate_[static_cast<std::size_t>(style)]) {
      return sheet_files::dateCell(number, from1904_);
    }
    return {SheetCell::Kind::Number, {}, number};
  }

  ZipPackage package_;
  QStringList names_, parts_;
  QString textsPart_;
  std::vector<char> isDate_;  // by style
  std::vector<QString> texts_;
  bool textsRead_ = false;
  bool from1904_ = false;
};

}  // namespace jxc::xlsx_file_detail

namespace jxc::sheet_files {

std::unique_ptr<SheetFile> openXlsx(const QString& path) {
  return std::make_unique<xlsx_file_detail::XlsxFile>(path);
}

}  // namespace jxc::sheet_files
