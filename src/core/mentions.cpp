#include "core/mentions.h"

#include "core/reading.h"
#include "core/schema/schema.h"

#include <algorithm>
#include <vector>

namespace jxc {
namespace mentions_detail {

bool isAmong(std::string_view name, std::initializer_list<std::string_view> list) {
  return std::find(list.begin(), list.end(), name) != list.end();
}

std::string_view purposeOf(std::string_view table) {
  const auto tables = schema::tables();
  const auto found =
      std::find_if(tables.begin(), tables.end(), [&](const schema::TableEntry& each) { return each.name == table; });
  return found == tables.end() ? std::string_view() : found->purpose;
}

}  // namespace mentions_detail

QString rowInWords(std::string_view table, const Row& row) {
  const std::string_view purpose = mentions_detail::purposeOf(table);
  QStringList words(QString::fromUtf8(purpose.data(), qsizetype(purpose.size())));
  // A document has its number, master data begins with a number and a name: what comes behind belongs to others.
  const auto columns = schema::columnsOf(*schema::findDefinition(table));
  const auto document =
      std::find_if(columns.begin(), columns.end(), [](const auto& each) { return each.name == "gl_djh"; });
  if (document != columns.end()) {
    words << row.text("gl_djh");
  } else if (!columns.empty() && columns[0].name.ends_with("_sn")) {
    const auto end = columns.begin() + std::min<std::ptrdiff_t>(3, std::ssize(columns));
    const auto name = std::find_if(columns.begin(), end, [](const auto& each) { return each.name.ends_with("_name"); });
    words << row.text(columns[0].name);
    if (name != end) words << row.text(name->name);
  }
  words.removeAll(QString());
  return words.join(u' ');
}

QString firstMention(std::span<const KeyColumn> columns, const QString& value) {
  for (const auto& [table, column] : columns) {
    const RowSet rows = openSelect(compose("select top 1 * from {} where {}=? order by id", {table, column}), value);
    if (!rows.isEmpty()) return rowInWords(table, rows.front());
  }
  return {};
}

QString firstMentionAnywhere(const QString& key, std::initializer_list<std::string_view> columns,
                             std::initializer_list<std::string_view> own) {
  std::vector<KeyColumn> all;
  for (const schema::TableEntry& table : schema::tables()) {
    if (mentions_detail::isAmong(table.name, own)) continue;
    for (const schema::ColumnLine& column : schema::columnsOf(*schema::findDefinition(table.name)))
      if (mentions_detail::isAmong(column.name, columns)) all.push_back({table.name, column.name});
  }
  return firstMention(all, key);
}

}  // namespace jxc
