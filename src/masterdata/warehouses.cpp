#include "masterdata/warehouses.h"

#include "core/clock.h"
#include "core/deletion.h"
#include "core/fillers.h"
#include "core/numbers.h"
#include "core/pinyin.h"
#include "core/statements.h"
#include "core/text.h"
#include "stock/document_family.h"

#include <algorithm>

namespace jxc {
namespace warehouses_detail {

/// "100001,100002,": every entry ends with its comma, so that a name can be found and replaced as "name,".
QString joined(const QStringList& parts) {
  QString text;
  for (const QString& part : parts)
    text += part + QLatin1Char(',');
  return text;
}

QStringList split(const QString& joinedText) {
  return joinedText.split(QLatin1Char(','), Qt::SkipEmptyParts);
}

bool hasLedgerRow(const QString& number) {
  return exists("select ck_sn from jxc_goodslist where ck_sn=?", number);
}

/// A document that waits would be out of sight, and lines whose warehouse is gone could not be saved.
bool hasOpenDocument(const QString& number) {
  return std::ranges::any_of(documentFamilies(), [&](const DocumentFamily& f) {
    const auto waits = [&](std::string_view column) {
      return !column.empty() &&
             exists(compose("select top 1 id from {} where {}=0 and {}=?", {f.head, f.status, column}), number);
    };
    const auto hasLine = [&] {
      return !f.line.warehouse.empty() &&
             exists(compose("select top 1 id from {} where {}=? and {} not in (select {} from {} where {}=1)",
                            {f.lines, f.line.warehouse, f.number, f.number, f.head, f.status}),
                    number);
    };
    return waits(f.warehouse) || waits(f.into) || hasLine();
  });
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
  draft.operatorKeys = warehouses_detail::split(row.text("ck_asn"));
  draft.operatorNames = warehouses_detail::split(row.text("ck_aname"));
  draft.isDefault = row.flag("ck_default");
  draft.isPos = row.flag("ck_pos");
  return draft;
}

std::optional<QString> saveWarehouse(const WarehouseDraft& draft, Prompt& prompt) {
  const QString name = sanitizeKeyword(draft.name.trimmed());
  if (name.isEmpty()) {
    prompt.notice(QStringLiteral("仓库名称必须填写！"));
    return {};
  }
  if (draft.operatorKeys.isEmpty()) {
    prompt.notice(QStringLiteral("必须选择操作员！"));
    return {};
  }

  Transaction transaction(accountDb());
  if (draft.isDefault) execSql("update jxc_ckxx set ck_default=0");
  if (draft.isPos) execSql("update jxc_ckxx set ck_pos=0");

  QString number;
  std::int64_t id = draft.id;
  if (id == 0) {
    number = nextSerial("jxc_ckxx", "ck_sn");
    id = insertRow("jxc_ckxx", {{"ck_sn", number}, {"ck_name", name}});
    // Its month row at once, so that the warehouse stands in this month's stock reports with zeros.
    execSql(R"(insert into jxc_kcjs (js_rq,js_sl,js_zje,ck_sn,js_xssl,js_xsje,js_cgsl,js_cgje,js_xslr,js_xscb)
      values (?,0,0,?,0,0,0,0,0,0))",
            clock::month(), number);
  } else {
    number = lookupValue("select ck_sn from jxc_ckxx where id=?", id);
    const QString before = lookupValue("select ck_name from jxc_ckxx where id=?", id);
    if (before != name) {
      execSql("update jxc_goodslist set ck_name=? where ck_name=?", name, before);
      execSql("update jxc_xjyh set ck_name=? where ck_name=?", name, before);
    }
  }
  updateRow("jxc_ckxx", id,
            {{"ck_name", name},
             {"ck_jm", makeJm(name)},
             {"ck_fzr", sanitizeKeyword(draft.inCharge)},
             {"ck_aname", warehouses_detail::joined(draft.operatorNames)},
             {"ck_asn", warehouses_detail::joined(draft.operatorKeys)},
             {"ck_tele", sanitizeKeyword(draft.phone)},
             {"ck_address", sanitizeKeyword(draft.address)},
             {"ck_note", sanitizeKeyword(draft.note)},
             {"ck_default", draft.isDefault},
             {"ck_pos", draft.isPos}});
  transaction.commit();
  return number;
}

bool deleteWarehouse(std::int64_t id, Prompt& prompt) {
  return deleteAsking({.table = "jxc_ckxx",
                       .question = QStringLiteral("您确定要删除该仓库信息吗！"),
                       .refusal = [](const Row& row) -> std::optional<QString> {
                         const QString number = row.text("ck_sn");
                         if (number == QLatin1String("100001"))
                           return QStringLiteral("该仓库为系统内置仓库，不能删除！");
                         if (warehouses_detail::hasLedgerRow(number))
                           return QStringLiteral("该仓库中有商品，或已发生过业务，不能删除！");
                         return warehouses_detail::hasOpenDocument(number)
                                    ? std::optional(QStringLiteral("该仓库有未完成的单据，不能删除！"))
                                    : std::nullopt;
                       }},
                      id, prompt);
}

Sql warehouseListStatement() {
  Filter filter;
  addWarehouseBinding(filter);
  return Sql("select * from jxc_ckxx").where(filter).add(" order by id");
}

RowSet selectBindableOperators() {
  return openSelect("select a_sn,a_name from jxc_admin where a_jyt=0 order by id");
}

}  // namespace jxc
