#include "masterdata/warehouses.h"

#include "core/clock.h"
#include "core/deletion.h"
#include "core/fillers.h"
#include "core/letter_search.h"
#include "core/log.h"
#include "core/mentions.h"
#include "core/numbers.h"
#include "core/pinyin.h"
#include "core/refusal.h"
#include "core/statements.h"
#include "core/text.h"
#include "core/warehouse_binding.h"

namespace jxc {
namespace warehouses_detail {

/// Stock lies there, or something ever moved.
bool holdsGoods(const QString& number) {
  return exists("select ck_sn from jxc_goodslist where ck_sn=?", number) ||
         exists("select id from jxc_kcsp where ck_sn=? and (kc_sl<>0 or kc_zsl<>0)", number);
}

std::optional<Hindrance> hindrance(const Row& row) {
  static constexpr KeyColumn ledger[] = {{"jxc_goodslist", "ck_sn"}};
  const QString number = row.text("ck_sn");
  if (number == QLatin1String("100001")) return Hindrance{u"该仓库为系统内置仓库，不能删除！"_qs, {}, orRename()};
  if (holdsGoods(number))
    return Hindrance{u"该仓库中有商品，或已发生过业务，不能删除！"_qs, firstMention(ledger, number), orRename()};
  // A document that waits would be out of sight, a bound partner out of every list.
  const QString holder =
      firstMentionAnywhere(number, {"ck_sn", "ck_out", "ck_in"}, {"jxc_ckxx", "jxc_kcsp", "jxc_kcjs"});
  if (holder.isEmpty()) return {};
  return Hindrance{u"该仓库正在使用，不能删除！"_qs, holder, u"请先在那里选择其他仓库，再删除。"_qs};
}

/// A name in use is refused, but a warehouse that bears one from older days may keep it.
bool isNameTaken(const WarehouseDraft& draft, const QString& name) {
  return exists("select id from jxc_ckxx where ck_name=? and id<>?", name, draft.id) &&
         !exists("select id from jxc_ckxx where ck_name=? and id=?", name, draft.id);
}

void renameInHistory(const QString& number, const QString& before, const QString& now) {
  for (const std::string_view table : {"jxc_goodslist", "jxc_khxx", "jxc_ghsxx", "jxc_user"})
    execSql(compose("update {} set ck_name=? where ck_sn=?", {table}), now, number);
  // The cash book knows no number: its row goes with its document, and by the name where no document lies in stock.
  execSql(
      "update jxc_xjyh set ck_name=? where ck_name=? and not exists "
      "(select b.id from jxc_goodslist b where b.gl_djh=jxc_xjyh.gl_djh and b.ck_sn<>?)",
      now, before, number);
}

}  // namespace warehouses_detail

WarehouseDraft readWarehouse(std::int64_t id) {
  const RowSet rows = openSelect("select * from jxc_ckxx where id=?", id);
  if (rows.isEmpty()) throw DbError(DbError::Kind::Other, QStringLiteral("该仓库已被其他操作员删除，请刷新列表！"));
  const Row row = rows.front();
  WarehouseDraft draft;
  draft.id = id;
  draft.name = row.text("ck_name");
  draft.inCharge = row.text("ck_fzr");
  draft.phone = row.text("ck_tele");
  draft.address = row.text("ck_address");
  draft.note = row.text("ck_note");
  draft.operatorKeys = bindingEntries(row.text("ck_asn"));
  draft.operatorNames = bindingEntries(row.text("ck_aname"));
  draft.isDefault = row.flag("ck_default");
  draft.isPos = row.flag("ck_pos");
  return draft;
}

std::optional<QString> saveWarehouse(const WarehouseDraft& draft, Prompt& prompt) {
  const QString name = sanitizeKeyword(draft.name.trimmed());
  if (refused({{name.isEmpty(), u"仓库名称必须填写！"_qs, Subject::Name},
               bindingRefusal(draft.operatorKeys, draft.operatorNames),
               {warehouses_detail::isNameTaken(draft, name), u"仓库名称“%1”已经存在，请使用其他名称！"_qs.arg(name),
                Subject::Name}},
              prompt))
    return {};

  Transaction transaction(accountDb());
  if (draft.isDefault) execSql("update jxc_ckxx set ck_default=0");
  if (draft.isPos) execSql("update jxc_ckxx set ck_pos=0");

  QString number;
  std::int64_t id = draft.id;
  const QString former = lookupValue("select ck_name from jxc_ckxx where id=?", id);
  if (id == 0) {
    id = insertRow("jxc_ckxx", {{"ck_name", name}});
    number = serialOfNewRow("jxc_ckxx", "ck_sn", id);
    updateRow("jxc_ckxx", id, {{"ck_sn", number}});
    // Its month row at once, so that the warehouse stands in this month's stock reports with zeros.
    execSql(R"(insert into jxc_kcjs (js_rq,js_sl,js_zje,ck_sn,js_xssl,js_xsje,js_cgsl,js_cgje,js_xslr,js_xscb)
      values (?,0,0,?,0,0,0,0,0,0))",
            clock::month(), number);
  } else {
    number = lookupValue("select ck_sn from jxc_ckxx where id=?", id);
    if (former != name) warehouses_detail::renameInHistory(number, former, name);
  }
  updateRow("jxc_ckxx", id,
            {{"ck_name", name},
             {"ck_jm", makeJm(name)},
             {"ck_fzr", sanitizeKeyword(draft.inCharge)},
             {"ck_aname", bindingList(draft.operatorNames)},
             {"ck_asn", bindingList(draft.operatorKeys)},
             {"ck_tele", sanitizeKeyword(draft.phone)},
             {"ck_address", sanitizeKeyword(draft.address)},
             {"ck_note", sanitizeKeyword(draft.note)},
             {"ck_default", draft.isDefault},
             {"ck_pos", draft.isPos}});
  logChange("jxc_ckxx", former, name);
  transaction.commit();
  return number;
}

bool deleteWarehouse(std::int64_t id, Prompt& prompt) {
  return deleteAsking({.table = "jxc_ckxx",
                       .question = QStringLiteral("您确定要删除该仓库信息吗！"),
                       .hindrance = warehouses_detail::hindrance,
                       .alsoDelete =
                           [](const Row& row) {
                             for (const std::string_view table : {"jxc_kcjs", "jxc_kcsp"})
                               execSql(compose("delete from {} where ck_sn=?", {table}), row.text("ck_sn"));
                             logChange("jxc_ckxx", row.text("ck_name"), {});
                           }},
                      id, prompt);
}

Sql warehouseListStatement(const QString& typed) {
  Filter filter;
  addWarehouseBinding(filter);
  addNameSearch(filter, "ck_sn", "ck_jm", "ck_name", typed);
  return Sql("select * from jxc_ckxx").where(filter).add(" order by id");
}

std::vector<BindableOperator> bindableOperators(const WarehouseDraft& draft) {
  std::vector<BindableOperator> operators;
  for (const Row row : openSelect("select a_sn,a_name,a_jyt from jxc_admin order by id")) {
    const QString key = row.text("a_sn");
    const bool isDisabled = row.flag("a_jyt");
    const bool isBound = draft.operatorKeys.contains(key);
    if (isDisabled && !isBound) continue;
    operators.push_back({key, row.text("a_name"), isDisabled, isBound || draft.id == 0});
  }
  return operators;
}

}  // namespace jxc
