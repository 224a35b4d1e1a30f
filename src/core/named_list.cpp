#include "core/named_list.h"

#include "core/deletion.h"
#include "core/log.h"
#include "core/mentions.h"
#include "core/numbers.h"
#include "core/refusal.h"
#include "core/session.h"
#include "core/statements.h"
#include "core/text.h"

namespace jxc {
namespace named_list_detail {

std::optional<Hindrance> hindrance(const NamedList& list, const Row& row) {
  const QString number = row.text(list.sn);
  if (list.builtIn && number == QStringView(builtInSn))
    return Hindrance{QString::fromUtf16(list.builtIn), {}, orRename()};
  if (!list.inUse) return {};
  QString holder = firstMention(list.namedIn, row.text(list.name));
  if (holder.isEmpty()) holder = firstMention(list.numberedIn, number);
  if (holder.isEmpty()) return {};
  return Hindrance{QString::fromUtf16(list.inUse), holder, u"请先在那里选择其他的，再删除。"_qs};
}

}  // namespace named_list_detail

std::optional<QString> checkedName(const NamedList& list, std::int64_t id, const QString& typed, Prompt& prompt) {
  const QString name = sanitizeKeyword(typed.trimmed());
  const std::string sql = compose("select top 1 id from {} where {}=? and id<>?", {list.table, list.name});
  if (refused({{name.isEmpty(), QString::fromUtf16(list.needsName), Subject::Name},
               {!openSelect(sql, name, id).isEmpty(), QString::fromUtf16(list.nameTaken), Subject::Name}},
              prompt))
    return {};
  return name;
}

std::int64_t writeName(const NamedList& list, std::int64_t id, const QString& name) {
  Transaction transaction(accountDb());
  logChange(list.table, id == 0 ? QString() : nameOf(list, id), name);
  if (id == 0) {
    id = insertRow(list.table, {{list.sn, nextSerial(list.table, list.sn)}, {list.name, name}});
  } else {
    const QString before = nameOf(list, id);
    updateRow(list.table, id, {{list.name, name}});
    if (!before.isEmpty() && before != name) {
      for (const auto& [table, column] : list.namedIn)
        execSql(compose("update {} set {}=? where {}=?", {table, column, column}), name, before);
    }
  }
  transaction.commit();
  return id;
}

bool saveNamed(const NamedList& list, std::int64_t id, const QString& typed, Prompt& prompt) {
  const auto name = checkedName(list, id, typed, prompt);
  if (name) writeName(list, id, *name);
  return name.has_value();
}

bool deleteNamed(const NamedList& list, std::int64_t id, Prompt& prompt) {
  return deleteAsking({.table = list.table,
                       .question = QString::fromUtf16(list.deleteQuestion),
                       .hindrance = [&](const Row& row) { return named_list_detail::hindrance(list, row); },
                       .alsoDelete = [&](const Row& row) { logChange(list.table, row.text(list.name), {}); }},
                      id, prompt);
}

QString nameOf(const NamedList& list, std::int64_t id) {
  return lookupValue(compose("select {} from {} where id=?", {list.name, list.table}), id);
}

Sql namedListStatement(const NamedList& list) {
  return {compose("select * from {} order by id", {list.table})};
}

}  // namespace jxc
