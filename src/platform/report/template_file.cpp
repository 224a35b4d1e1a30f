#include "platform/report/template_file.h"

#include "platform/report/template_attributes.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <initializer_list>
#include <tuple>

namespace jxc::report {

namespace template_file_detail {

using Kind = TemplateError::Kind;
using namespace template_attributes;

constexpr qint64 kLargestFile = 16 << 20;
constexpr std::size_t kMostBands = 200, kMostItems = 5000, kMostNames = 2000, kMostGroups = 8;

struct SideName {
  std::uint8_t side;
  QStringView name;
};
constexpr std::array kSides{SideName{side::left, u"left"}, SideName{side::top, u"top"}, SideName{side::right, u"right"},
                            SideName{side::bottom, u"bottom"}};

using Choices = std::initializer_list<QStringView>;

/// Characters that XML cannot hold do no harm on paper when they are left out.
QString writable(const QString& text) {
  QString result;
  result.reserve(text.size());
  for (const QChar c : text) {
    if (c >= u' ' || c == u'\n' || c == u'\t') result += c;
  }
  return result;
}

/// Lengths are millimetres; a template that was read holds exactly what is written of it.
double toMicrometre(double value) {
  return std::round(value * 1000) / 1000;
}

class AttributeWriter {
 public:
  explicit AttributeWriter(QXmlStreamWriter& xml) : xml_(xml) {}

  void text(const char* name, const QString& value, const QString& usual) {
    if (value != usual) put(name, writable(value));
  }
  void number(const char* name, double value, double usual, double least, double) {
    // The size of the paper always stands in the file.
    if (value != usual || least == 10) put(name, QString::number(toMicrometre(value), 'g', 12));
  }
  void whole(const char* name, int value, int usual, int, int) {
    if (value != usual) put(name, QString::number(value));
  }
  void flag(const char* name, bool value, bool usual) {
    if (value != usual) put(name, value ? QStringLiteral("yes") : QStringLiteral("no"));
  }
  void colour(const char* name, const QColor& value, const QColor& usual) {
    if (value == usual) return;
    put(name,
        value.isValid() ? value.name(value.alpha() == 255 ? QColor::HexRgb : QColor::HexArgb) : QStringLiteral("none"));
  }
  template <class E>
  void choice(const char* name, E value, E usual, Choices words) {
    if (value != usual) put(name, std::data(words)[static_cast<std::size_t>(value)].toString());
  }
  void sides(const char* name, std::uint8_t value, std::uint8_t usual) {
    if (value == usual) return;
    QStringList names;
    for (const auto& [bit, word] : kSides) {
      if (value & bit) names << word.toString();
    }
    put(name, value == side::all ? QStringLiteral("all") : names.join(u' '));
  }
  void symbology(const char* name, Symbology value, Symbology usual) {
    if (value != usual) put(name, symbologyName(value).toString());
  }

 private:
  void put(const char* name, const QString& value) { xml_.writeAttribute(QLatin1String(name), value); }
  QXmlStreamWriter& xml_;
};

/// What is wrong with the file, without its name.
struct Damage {
  QString what;
  Kind kind = Kind::Damaged;
};

class AttributeReader {
 public:
  explicit AttributeReader(const QXmlStreamAttributes& attributes) : attributes_(attributes) {}

  void text(const char* name, QString& value, const QString&) {
    if (const auto found = take(name)) value = found->toString();
  }
  void number(const char* name, double& value, double, double least, double most) {
    const auto found = take(name);
    if (!found) return;
    bool isNumber = false;
    value = toMicrometre(found->toDouble(&isNumber));
    if (!isNumber || !(value >= least && value <= most)) refuse(name, *found);
  }
  void whole(const char* name, int& value, int, int least, int most) {
    const auto found = take(name);
    if (!found) return;
    bool isNumber = false;
    value = found->toInt(&isNumber);
    if (!isNumber || value < least || value > most) refuse(name, *found);
  }
  void flag(const char* name, bool& value, bool) {
    const auto found = take(name);
    if (!found) return;
    if (*found != u"yes" && *found != u"no") refuse(name, *found);
    value = *found == u"yes";
  }
  void colour(const char* name, QColor& value, const QColor&) {
    const auto found = take(name);
    if (!found) return;
    value = *found == u"none" ? QColor() : QColor(*found);
    if (*found != u"none" && (!value.isValid() || !found->startsWith(u'#'))) refuse(name, *found);
  }
  template <class E>
  void choice(const char* name, E& value, E, Choices words) {
    const auto found = take(name);
    if (!found) return;
    const auto word = std::find(words.begin(), words.end(), *found);
    if (word == words.end()) refuse(name, *found);
    value = static_cast<E>(word - words.begin());
  }
  void sides(const char* name, std::uint8_t& value, std::uint8_t) {
    const auto found = take(name);
    if (!found) return;
    value = *found == u"all" ? side::all : side::none;
    if (*found == u"all" || *found == u"none") return;
    for (const QStringView word : found->split(u' ', Qt::SkipEmptyParts)) {
      const auto known = std::find_if(kSides.begin(), kSides.end(), [&](const auto& s) { return s.name == word; });
      if (known == kSides.end()) refuse(name, *found);
      value |= known->side;
    }
  }
  void symbology(const char* name, Symbology& value, Symbology) {
    const auto found = take(name);
    if (!found) return;
    const auto known = symbologyNamed(*found);
    if (!known) refuse(name, *found);
    value = *known;
  }

  /// An attribute that nobody knows would be lost when the template is saved again.
  void finish() const {
    for (const auto& attribute : attributes_) {
      if (std::find(taken_.begin(), taken_.end(), attribute.qualifiedName()) == taken_.end()) {
        throw Damage{QStringLiteral("不认识的属性“%1”").arg(attribute.qualifiedName())};
      }
    }
  }
  std::optional<QStringView> take(const char* name) {
    const QLatin1String key(name);
    taken_.push_back(key);
    if (!attributes_.hasAttribute(key)) return {};
    return attributes_.value(key);
  }
  [[noreturn]] static void refuse(const char* name, QStringView value) {
    throw Damage{QStringLiteral("属性“%1”的值“%2”不正确").arg(QLatin1String(name), value.left(40))};
  }

 private:
  QXmlStreamAttributes attributes_;
  std::vector<QLatin1String> taken_;
};

class TemplateReader {
 public:
  explicit TemplateReader(const QByteArray& xml) : xml_(xml) {}

  Template run() {
    try {
      document();
    } catch (const Damage& damage) {
      if (damage.kind == Kind::Newer) throw;
      throw Damage{QStringLiteral("第%1行，%2").arg(xml_.lineNumber()).arg(damage.what)};
    }
    return std::move(template_);
  }

 private:
  void document() {
    if (!nextElement() || xml_.name() != u"report") throw Damage{QStringLiteral("不是报表模板")};
    AttributeReader attributes(xml_.attributes());
    version(attributes);
    attributes.text("title", template_.title, {});
    attributes.text("kind", template_.kind, {});
    attributes.finish();
    while (nextElement())
      part();
    // What follows the root is of no use, but a file that two programs wrote into is damaged.
    while (!xml_.atEnd())
      step();
    checkGroups();
  }

  void version(AttributeReader& attributes) {
    const auto text = attributes.take("version");
    if (!text) throw Damage{QStringLiteral("没有版本号")};
    bool isNumber = false;
    const int number = text->toInt(&isNumber);
    if (!isNumber || number < 1) AttributeReader::refuse("version", *text);
    if (number > templateVersion) throw Damage{QString::number(number), Kind::Newer};
  }

  void part() {
    const QStringView name = xml_.name();
    if (name == u"page") {
      if (pageSeen_) throw Damage{QStringLiteral("有两个“page”")};
      pageSeen_ = true;
      read(template_.page);
      checkPage();
      leaf();
    } else if (name == u"variable") {
      leafInto(template_.variables, kMostNames);
      if (template_.variables.back().name.isEmpty()) throw Damage{QStringLiteral("变量没有名称")};
    } else if (name == u"field") {
      leafInto(template_.fields, kMostNames);
      if (template_.fields.back().name.isEmpty()) throw Damage{QStringLiteral("字段没有名称")};
    } else if (name == u"group") {
      leafInto(template_.groups, kMostGroups);
    } else if (name == u"band") {
      band();
    } else {
      throw Damage{QStringLiteral("不认识的元素“%1”").arg(name.left(40))};
    }
  }

  void band() {
    if (template_.bands.size() >= kMostBands) throw Damage{QStringLiteral("“band”太多")};
    Band& band = template_.bands.emplace_back();
    AttributeReader attributes(xml_.attributes());
    const auto kindName = attributes.take("kind");
    const auto kind = kindName ? bandKindNamed(*kindName) : std::nullopt;
    if (!kind) AttributeReader::refuse("kind", kindName.value_or(QStringView()));
    band.kind = *kind;
    describe(attributes, band, Band());
    attributes.finish();
    while (nextElement())
      item(band);
  }

  void item(Band& band) {
    const auto kind = itemKindNamed(xml_.name());
    if (!kind) throw Damage{QStringLiteral("不认识的元素“%1”").arg(xml_.name().left(40))};
    if (++itemCount_ > kMostItems) throw Damage{QStringLiteral("对象太多")};
    Item& item = band.items.emplace_back();
    item.kind = *kind;
    read(item);
    if (item.rotation % 90 != 0) AttributeReader::refuse("rotation", QString::number(item.rotation));
    for (;;) {
      step();
      if (xml_.isEndElement()) return;
      if (xml_.isStartElement()) throw Damage{QStringLiteral("不认识的元素“%1”").arg(xml_.name().left(40))};
      if (xml_.isCharacters()) item.content += xml_.text();
    }
  }

  template <class T>
  void read(T& value) {
    AttributeReader attributes(xml_.attributes());
    describe(attributes, value, T());
    attributes.finish();
  }

  template <class T>
  void leafInto(std::vector<T>& values, std::size_t most) {
    if (values.size() >= most) throw Damage{QStringLiteral("“%1”太多").arg(xml_.name())};
    read(values.emplace_back());
    leaf();
  }

  void leaf() {
    if (nextElement()) throw Damage{QStringLiteral("不认识的元素“%1”").arg(xml_.name().left(40))};
  }

  /// The next start of an element inside this one; false at its end.
  bool nextElement() {
    for (;;) {
      step();
      if (xml_.isStartElement()) return true;
      if (xml_.isEndElement() || xml_.isEndDocument()) return false;
      if (xml_.isCharacters() && !xml_.isWhitespace()) throw Damage{QStringLiteral("多余的文字")};
    }
  }

  void step() {
    xml_.readNext();
    // Nobody needs entities of his own in a template; they are how a small file becomes an endless one.
    if (xml_.isDTD()) throw Damage{QStringLiteral("含有不允许的文档类型声明")};
    if (!xml_.hasError()) return;
    if (xml_.error() == QXmlStreamReader::PrematureEndOfDocumentError) throw Damage{QStringLiteral("文件不完整")};
    throw Damage{QStringLiteral("不是有效的XML")};
  }

  void checkPage() const {
    const PageSetup& page = template_.page;
    if (page.bodyWidth() < 5 || page.columnWidth() < 1 || page.pageHeight() - page.top - page.bottom < 5) {
      throw Damage{QStringLiteral("页边距大于纸张")};
    }
  }

  void checkGroups() const {
    for (const Band& band : template_.bands) {
      const bool ofGroup = band.kind == BandKind::GroupHeader || band.kind == BandKind::GroupFooter;
      if (ofGroup && static_cast<std::size_t>(band.group) >= template_.groups.size()) {
        throw Damage{QStringLiteral("没有第%1个分组").arg(band.group)};
      }
    }
  }

  QXmlStreamReader xml_;
  Template template_;
  std::size_t itemCount_ = 0;
  bool pageSeen_ = false;
};

template <class T>
void writeLeaf(QXmlStreamWriter& xml, const QString& name, const T& value) {
  xml.writeStartElement(name);
  AttributeWriter attributes(xml);
  T copy = value;
  describe(attributes, copy, T());
  xml.writeEndElement();
}

void writeItem(QXmlStreamWriter& xml, const Item& item) {
  xml.writeStartElement(itemKindName(item.kind).toString());
  AttributeWriter attributes(xml);
  Item copy = item;
  describe(attributes, copy, Item());
  if (!item.content.isEmpty()) xml.writeCharacters(writable(item.content));
  xml.writeEndElement();
}

constexpr std::size_t kMostBackups = 20;
constexpr const char* kStamp = "yyyyMMdd-HHmmss";
constexpr int kStampLength = 15;

/// Named after the moment at which the design that it keeps was saved; two of one second are numbered.
QString freeBackupName(const QString& path) {
  const QString stem = path + u'.' + QFileInfo(path).lastModified().toString(QString::fromLatin1(kStamp));
  QString name = stem + QStringLiteral(".bak");
  for (int i = 2; QFile::exists(name); ++i)
    name = QStringLiteral("%1-%2.bak").arg(stem).arg(i);
  return name;
}

TemplateError missing(const QString& path) {
  return {Kind::Missing, QStringLiteral("找不到报表模板“%1”。").arg(path)};
}

}  // namespace template_file_detail

Template parseTemplate(const QByteArray& xml, const QString& name) {
  using namespace template_file_detail;
  const QString shown = name.isEmpty() ? QStringLiteral("(内存)") : name;
  try {
    if (xml.size() > kLargestFile) throw Damage{QStringLiteral("文件太大")};
    if (xml.isEmpty()) throw Damage{QStringLiteral("文件是空的")};
    return TemplateReader(xml).run();
  } catch (const Damage& damage) {
    if (damage.kind == Kind::Newer) {
      throw TemplateError(
          Kind::Newer,
          QStringLiteral("报表模板“%1”由更新版本的程序制作（版本%2），请先升级程序。").arg(shown, damage.what));
    }
    throw TemplateError(Kind::Damaged, QStringLiteral("报表模板“%1”已损坏：%2。").arg(shown, damage.what));
  }
}

Template loadTemplate(const QString& path) {
  using namespace template_file_detail;
  QFile file(path);
  if (!file.exists()) throw missing(path);
  if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly)) {
    throw TemplateError(Kind::Unreadable, QStringLiteral("报表模板“%1”无法读取：%2。").arg(path, file.errorString()));
  }
  return parseTemplate(file.read(std::min(file.size(), kLargestFile) + 1), path);
}

QByteArray templateXml(const Template& t) {
  using namespace template_file_detail;
  QByteArray bytes;
  QXmlStreamWriter xml(&bytes);
  xml.setAutoFormatting(true);
  xml.setAutoFormattingIndent(2);
  xml.writeStartDocument();
  xml.writeStartElement(QStringLiteral("report"));
  xml.writeAttribute(QStringLiteral("version"), QString::number(templateVersion));
  if (!t.title.isEmpty()) xml.writeAttribute(QStringLiteral("title"), writable(t.title));
  if (!t.kind.isEmpty()) xml.writeAttribute(QStringLiteral("kind"), writable(t.kind));
  writeLeaf(xml, QStringLiteral("page"), t.page);
  for (const Variable& variable : t.variables)
    writeLeaf(xml, QStringLiteral("variable"), variable);
  for (const DetailField& field : t.fields)
    writeLeaf(xml, QStringLiteral("field"), field);
  for (const Group& group : t.groups)
    writeLeaf(xml, QStringLiteral("group"), group);
  for (const Band& band : t.bands) {
    xml.writeStartElement(QStringLiteral("band"));
    xml.writeAttribute(QStringLiteral("kind"), bandKindName(band.kind).toString());
    AttributeWriter attributes(xml);
    Band copy = band;
    describe(attributes, copy, Band());
    for (const Item& item : band.items)
      writeItem(xml, item);
    xml.writeEndElement();
  }
  xml.writeEndElement();
  xml.writeEndDocument();
  return bytes;
}

void saveTemplate(const Template& t, const QString& path, SaveMode mode) {
  using namespace template_file_detail;
  const QByteArray xml = templateXml(t);
  // What cannot be read again must not take the place of what can.
  parseTemplate(xml, path);

  const bool exists = QFile::exists(path);
  if (exists && mode == SaveMode::New) {
    throw TemplateError(Kind::Exists, QStringLiteral("报表模板“%1”已存在。").arg(path));
  }
  if (exists && mode == SaveMode::Replace) {
    try {
      loadTemplate(path);
    } catch (const TemplateError& error) {
      throw TemplateError(Kind::WouldLose, error.message() + QStringLiteral("保存会丢失其内容，未保存。"));
    }
  }

  const auto unwritable = [&](const QString& reason) {
    return TemplateError(Kind::Unwritable, QStringLiteral("报表模板“%1”无法保存：%2。").arg(path, reason));
  };
  QSaveFile file(path);
  if (!file.open(QIODevice::WriteOnly) || file.write(xml) != xml.size() || !file.flush()) {
    throw unwritable(file.errorString());
  }
  if (exists) {
    const QString backup = freeBackupName(path);
    if (!QFile::copy(path, backup)) throw unwritable(QStringLiteral("不能保留原文件“%1”").arg(backup));
  }
  if (!file.commit()) throw unwritable(file.errorString());
  const std::vector<TemplateBackup> kept = backupsOf(path);
  for (std::size_t i = kMostBackups; i < kept.size(); ++i)
    QFile::remove(kept[i].path);
}

std::vector<TemplateBackup> backupsOf(const QString& path) {
  using namespace template_file_detail;
  const QFileInfo file(path);
  std::vector<TemplateBackup> backups;
  const QString stem = file.fileName() + u'.';
  for (const QFileInfo& each : file.dir().entryInfoList({QStringLiteral("*.bak")}, QDir::Files)) {
    if (!each.fileName().startsWith(stem)) continue;
    const QString stamp = each.fileName().mid(stem.size(), kStampLength);
    const QDateTime savedAt = QDateTime::fromString(stamp, QString::fromLatin1(kStamp));
    if (savedAt.isValid()) backups.push_back({each.filePath(), savedAt});
  }
  std::ranges::sort(backups, std::greater(),
                    [](const TemplateBackup& b) { return std::tuple(b.savedAt, b.path.size(), b.path); });
  return backups;
}

}  // namespace jxc::report
