#include "harness/whole_books.h"

#include "core/schema/schema.h"
#include "core/statements.h"

namespace jxc::test {
namespace whole_books_detail {

QString stored(const RowSet& rows, int row, int column, Reading reading) {
  const QString text = rows.text(row, column);
  if (reading == Reading::ToTheLetter) return rows.isNull(row, column) ? QStringLiteral("null") : u'\'' + text;
  return text == u"0" ? QString() : text;
}

}  // namespace whole_books_detail

Books readBooks(Reading reading) {
  Books books;
  for (const schema::TableEntry& table : schema::tables()) {
    const std::string name(table.name);
    const RowSet rows = openSelect("select * from " + name + " order by id");
    for (int row = 0; row < rows.rowCount(); ++row) {
      QStringList texts;
      for (int column = 0; column < rows.columnCount(); ++column)
        texts << QString::fromStdString(rows.columns()[static_cast<std::size_t>(column)]) + u'=' +
                     whole_books_detail::stored(rows, row, column, reading);
      books[QString::fromStdString(name) + u'.' + rows[row].text("id")] = texts.join(u'|');
    }
  }
  return books;
}

std::set<QString> differences(const Books& before, const Books& after) {
  std::set<QString> found;
  const auto table = [](const QString& key) { return key.section(u'.', 0, 0); };
  for (const auto& [key, text] : before) {
    const auto now = after.find(key);
    if (now == after.end()) {
      found.insert(table(key) + u'-');
      continue;
    }
    const QStringList old = text.split(u'|'), fresh = now->second.split(u'|');
    for (int i = 0; i < old.size(); ++i)
      if (old[i] != fresh.value(i)) found.insert(table(key) + u'.' + old[i].section(u'=', 0, 0));
  }
  for (const auto& [key, text] : after)
    if (!before.contains(key)) found.insert(table(key) + u'+');
  return found;
}

}  // namespace jxc::test
