#include "accounts/fixed_assets.h"

#include "core/clock.h"
#include "core/log.h"
#include "core/refusal.h"
#include "core/session.h"
#include "core/statements.h"
#include "core/text.h"
#include "core/unusual.h"
#include "engine/number_text.h"

namespace jxc::assets {
namespace fixed_assets_detail {

Draft draftOf(const Row& row) {
  return {.id = row.integer("id"),
          .number = row.text("zc_bh"),
          .name = row.text("zc_mc"),
          .date = row.text("zc_rq").left(10),
          .kind = row.text("zc_lx"),
          .unit = row.text("zc_dw"),
          .amount = row.number("zc_je"),
          .department = row.text("zc_bm"),
          .supplier = row.text("zc_ghs"),
          .insideClass = row.text("zc_nbfl"),
          .model = row.text("zc_ggxh"),
          .months = row.text("zc_zjys").toInt(),
          .employee = row.text("u_name"),
          .note = row.text("zc_note")};
}

QString line(const QString& typed) {
  return sanitizeText(typed.trimmed()).left(32);
}

}  // namespace fixed_assets_detail

std::optional<Draft> openAsset(std::int64_t id) {
  const RowSet rows = openSelect("select * from jxc_gdzc where id=?", id);
  if (rows.isEmpty()) return {};
  return fixed_assets_detail::draftOf(rows.front());
}

std::optional<Draft> assetOfNumber(const QString& number) {
  if (number.trimmed().isEmpty()) return {};
  const RowSet rows = openSelect("select top 1 * from jxc_gdzc where zc_bh=? order by id", number.trimmed());
  if (rows.isEmpty()) return {};
  Draft draft = fixed_assets_detail::draftOf(rows.front());
  draft.id = 0;
  return draft;
}

bool saveAsset(const Draft& draft, Prompt& prompt) {
  using fixed_assets_detail::line;
  const QString number = sanitizeText(draft.number.trimmed()).left(16);
  const QString name = line(draft.name);
  if (refused({{toSixDecimals(draft.amount) == 0, u"金额不能为0！"_qs, Subject::Amount},
               {number.isEmpty(), u"资产编号不能为空！"_qs, Subject::Number},
               {name.isEmpty(), u"资产名称不能为空！"_qs, Subject::Name},
               {draft.employee.isEmpty(), u"请选择经办人！"_qs, Subject::Employee}},
              prompt))
    return false;
  // What was bought years ago is entered today: its day is no slip.
  if (!confirmUnusual({.yuan = draft.amount, .date = draft.date, .newest = {}, .lastEntry = lookupValue(lastLogEntry)},
                      prompt))
    return false;
  const std::initializer_list<Field> fields = {
      {"zc_bh", number},
      {"zc_mc", name},
      {"zc_rq", draft.date},
      {"zc_lx", line(draft.kind)},
      {"zc_dw", line(draft.unit)},
      {"zc_je", toSixDecimals(draft.amount)},
      {"zc_bm", line(draft.department)},
      {"zc_zjys", draft.months > 0 ? QString::number(draft.months) : QString()},
      {"zc_ghs", line(draft.supplier)},
      {"zc_nbfl", line(draft.insideClass)},
      {"zc_ggxh", line(draft.model)},
      {"zc_note", sanitizeText(draft.note.trimmed()).left(200)},
      {"u_name", draft.employee},
      {"a_name", session().a_name}};
  Refusal gone;
  {
    Transaction transaction(accountDb());
    if (draft.id == 0)
      insertRow("jxc_gdzc", fields);
    else if (openAsset(draft.id))
      updateRow("jxc_gdzc", draft.id, fields);
    else
      gone = {u"该固定资产刚刚被其他操作员删除！"_qs};
    if (!gone)
      writeLog((draft.id == 0 ? u"增加固定资产，编号："_qs : u"修改固定资产，编号："_qs) + number + u"，名称："_qs +
               name + u"，金额："_qs + numberText(draft.amount));
    transaction.commit();
  }
  return !isRefused(gone, prompt);
}

bool deleteAsset(std::int64_t id, Prompt& prompt) {
  if (!prompt.ask(QStringLiteral("您确定要删除当前固定资产信息吗！"))) return false;
  Transaction transaction(accountDb());
  const auto asset = openAsset(id);
  if (!asset) return true;  // another station was quicker: the list is read anew
  execSql("delete from jxc_gdzc where id=?", id);
  writeLog(u"删除固定资产，编号："_qs + asset->number + u"，名称："_qs + asset->name);
  transaction.commit();
  return true;
}

Sql assetList(const Criteria& criteria) {
  Filter filter;
  addPeriod(filter, criteria, "zc_rq");
  addChoice(filter, "zc_lx", criteria.kind);
  addKey(filter, criteria, {"zc_bh", "zc_mc", "zc_lx", "zc_ggxh", "zc_note"});
  // A month has gone by when its day has come again.
  const QString today = clock::today();
  return Sql("select a.*,iif(a.months=0,a.zc_je,iif(a.gone>=a.months,0,a.zc_je*(a.months-a.gone)/a.months)) as rest "
             "from (select m.*,iif(m.since<0,0,m.since) as gone from (select z.*,iif(z.zc_zjys is null,0,"
             "val(z.zc_zjys)) as months,datediff('m',left(z.zc_rq,10),?)-iif(mid(z.zc_rq,9,2)>?,1,0) as since from "
             "jxc_gdzc z",
             today, today.mid(8, 2))
      .where(filter)
      .add(") m) a order by a.zc_rq desc,a.id desc");
}

std::vector<ListItem> usedTexts(std::string_view column) {
  std::vector<ListItem> items;
  const RowSet rows =
      openSelect(compose("select distinct {} as used from jxc_gdzc where {}<>'' order by used", {column, column}));
  for (const Row row : rows)
    items.push_back({row.text("used"), row.text("used")});
  return items;
}

}  // namespace jxc::assets
