#include "core/mentions.h"

#include "core/numbers.h"
#include "core/schema/schema.h"

#include <algorithm>

namespace jxc {

QString firstMention(const QString& key, std::initializer_list<std::string_view> columns,
                     std::initializer_list<std::string_view> own) {
  const auto isAmong = [](std::string_view name, std::initializer_list<std::string_view> list) {
    return std::find(list.begin(), list.end(), name) != list.end();
  };
  for (const schema::TableEntry& table : schema::tables()) {
    if (isAmong(table.name, own)) continue;
    for (const schema::ColumnLine& column : schema::columnsOf(*schema::findDefinition(table.name)))
      if (isAmong(column.name, columns) && rowExists(table.name, column.name, key))
        return QString::fromUtf8(table.purpose.data(), qsizetype(table.purpose.size()));
  }
  return {};
}

std::optional<QString> refusalInUse(const QString& noun, const QString& key,
                                    std::initializer_list<std::string_view> columns,
                                    std::initializer_list<std::string_view> own) {
  const QString use = firstMention(key, columns, own);
  if (use.isEmpty()) return {};
  return u"该%1正在使用（%2），不能删除！"_qs.arg(noun, use);
}

}  // namespace jxc
