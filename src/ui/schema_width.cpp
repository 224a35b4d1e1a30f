#include "ui/schema_width.h"

#include "core/schema/table_definition.h"

#include <QHash>
#include <QString>

namespace jxc::ui {
namespace schema_width_detail {

using Widths = QHash<QString, int>;

int widthOfType(QStringView type) {
  if (!type.contains(u"char", Qt::CaseInsensitive)) return 0;
  const auto open = type.indexOf(u'(');
  return open < 0 ? 0 : type.mid(open + 1, type.indexOf(u')') - open - 1).trimmed().toInt();
}

void read(const schema::TableDefinition& table, Widths& widths) {
  const QString name = QString::fromUtf8(table.name.data(), static_cast<qsizetype>(table.name.size())).toLower();
  const QString columns = QString::fromUtf8(table.columns.data(), static_cast<qsizetype>(table.columns.size()));
  widths.insert(name + QStringLiteral(".id"), 0);
  for (const QString& line : columns.split(u'\n', Qt::SkipEmptyParts)) {
    const QString plain = line.simplified();
    const auto blank = plain.indexOf(u' ');
    if (blank < 0) continue;
    widths.insert(name + u'.' + plain.left(blank).toLower(), widthOfType(QStringView(plain).mid(blank + 1)));
  }
}

const Widths& widths() {
  static const Widths all = [] {
    Widths result;
    for (const auto list :
         {schema::coreTables(), schema::stockTables(), schema::masterdataTables(), schema::purchasingTables(),
          schema::salesTables(), schema::posTables(), schema::membersTables(), schema::accountsTables(),
          schema::statisticsTables(), schema::outputTables(), schema::messagingTables(), schema::maintenanceTables()}) {
      for (const auto& table : list)
        read(table, result);
    }
    return result;
  }();
  return all;
}

}  // namespace schema_width_detail

int columnWidth(std::string_view tableAndColumn) {
  const QString key = QString::fromUtf8(tableAndColumn.data(), static_cast<qsizetype>(tableAndColumn.size())).toLower();
  return schema_width_detail::widths().value(key, -1);
}

}  // namespace jxc::ui
