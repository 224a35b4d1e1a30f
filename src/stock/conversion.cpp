#include "stock/conversion.h"

#include "core/period_lock.h"
#include "core/refusal.h"
#include "core/rounding.h"
#include "core/session.h"
#include "core/small_lookups.h"
#include "core/statements.h"
#include "core/text.h"
#include "engine/number_text.h"
#include "stock/ledger.h"

#include <cmath>

namespace jxc {
namespace conversion_detail {

constexpr double kHalfFen = 0.005;

/// The whole of this operator's draft. Values: number, operator.
std::string wholeAmongLines(const DocumentFamily& f) {
  return compose(" from {} where {}=? and a_name=? and {}<0", {f.lines, f.number, f.line.columns->quantity});
}

double costIn(const QString& warehouse, const QString& goods) {
  return lookupNumber("select kc_cbj from jxc_kcsp where ck_sn=? and g_sn=?", warehouse, goods);
}

}  // namespace conversion_detail

double ConversionFigures::difference() const {
  const double more = toSixDecimals(parts - value);
  return std::fabs(more) < conversion_detail::kHalfFen ? 0 : more;
}

double unitCostOf(double parts, double quantity) {
  return toSixDecimals(quantity == 0 ? parts : parts / quantity);
}

QString wholeOf(const DocumentFamily& f, const QString& number) {
  const QString saved =
      lookupValue(compose("select top 1 {} from {} where {}=? order by id", {f.whole.goods, f.head, f.number}), number);
  if (!saved.isEmpty()) return saved;
  return lookupValue("select top 1 g_sn" + conversion_detail::wholeAmongLines(f), number, session().a_name);
}

ConversionDraft ConversionRules::fresh(const QString& lastDate) const {
  ConversionDraft draft;
  begin(draft, lastDate);
  draft.quantity = 1;
  return draft;
}

// ---- the whole among the lines -----------------------------------------------------------------------------------

QString ConversionRules::keepWhole(const ConversionDraft& draft) const {
  const DocumentFamily& f = family();
  const LineColumns& line = *f.line.columns;
  Transaction transaction(accountDb());
  const QString number = usableDraftNumber(f, draft.number, draft.date);
  execSql("delete" + conversion_detail::wholeAmongLines(f), number, session().a_name);
  // A quantity that was not typed yet: the goods is kept all the same.
  const double quantity = draft.quantity > 0 ? draft.quantity : 1;
  if (!draft.goods.isEmpty())
    insertRow(f.lines, {{f.number, number},
                        {"g_sn", draft.goods},
                        {line.price, 0.0},
                        {line.quantity, -quantity},
                        {line.total, 0.0},
                        {f.line.warehouse, draft.warehouse},
                        {"a_name", session().a_name}});
  transaction.commit();
  return number;
}

bool ConversionRules::recallWhole(ConversionDraft& draft) const {
  const RowSet kept =
      openSelect("select *" + conversion_detail::wholeAmongLines(family()), draft.number, session().a_name);
  if (kept.isEmpty()) return false;
  const Row row = kept.front();
  draft.goods = row.text("g_sn");
  draft.quantity = -row.number(family().line.columns->quantity);
  draft.warehouse = row.text(family().line.warehouse);
  return true;
}

// ---- the steps ---------------------------------------------------------------------------------------------------

std::int64_t ConversionRules::partCount(const QString& number) const {
  const DocumentFamily& f = family();
  return static_cast<std::int64_t>(lookupNumber(compose("select count(*) from {} where {}=? and a_name=? and {}>0",
                                                        {f.lines, f.number, f.line.columns->quantity}),
                                                number, session().a_name));
}

bool ConversionRules::isAmongItsParts(const ConversionDraft& draft) const {
  const DocumentFamily& f = family();
  return !lookupValue(compose("select top 1 id from {} where {}=? and a_name=? and g_sn=? and {}>0",
                              {f.lines, f.number, f.line.columns->quantity}),
                      draft.number, session().a_name, draft.goods)
              .isEmpty();
}

bool ConversionRules::hasWhole(const ConversionDraft& draft, Prompt& prompt) const {
  const bool beyondStock = takesApart() && isBeyondStock(draft.goods, draft.quantity, draft.warehouse);
  return !refused({{!exists("select top 1 ck_sn from jxc_ckxx"), u"请添加仓库信息！"_qs, Subject::Warehouse},
                   {draft.warehouse.isEmpty(), u"请选择仓库！"_qs, Subject::Warehouse},
                   {draft.goods.isEmpty(), words(direction_.noGoods), Subject::Goods},
                   {draft.quantity <= 0, words(direction_.noQuantity), Subject::Quantity},
                   {beyondStock, words(direction_.beyondStock), Subject::Quantity},
                   {isAmongItsParts(draft), words(direction_.intoItself), Subject::Lines, draft.goods}},
                  prompt);
}

bool ConversionRules::hasParts(const ConversionDraft& draft, Prompt& prompt) const {
  const DocumentFamily& f = family();
  const auto beyondStock = [&]() -> Refusal {
    const std::string_view quantity = f.line.columns->quantity;
    if (takesApart()) return {};
    const QString goods = lookupValue(
        Sql(compose("select top 1 a.g_sn from (select g_sn,{},sum({}) as sl from {} where {}=? and a_name=? "
                    "and {}>0 group by g_sn,{}) a where not exists (select b.id from jxc_kcsp b where "
                    "b.g_sn=a.g_sn and b.ck_sn=a.{} and a.sl<=b.kc_sl)",
                    {f.line.warehouse, quantity, f.lines, f.number, quantity, f.line.warehouse, f.line.warehouse}),
            draft.number, session().a_name));
    return {!goods.isEmpty(), words(direction_.beyondStock) + namedGoods(goods), Subject::Lines, goods};
  };
  return hasWhole(draft, prompt) &&
         !refused({{partCount(draft.number) == 0, words(direction_.noParts), Subject::Lines}, beyondStock()}, prompt);
}

// ---- figures and preview -----------------------------------------------------------------------------------------

ConversionFigures ConversionRules::figures(const ConversionDraft& draft) const {
  const DocumentFamily& f = family();
  const LineColumns& line = *f.line.columns;
  ConversionFigures all;
  all.stock = getStockQty(draft.goods, draft.warehouse).toDouble();
  all.parts = lookupNumber(compose("select sum({}) from {} where {}=? and a_name=? and {}>0",
                                   {line.total, f.lines, f.number, line.quantity}),
                           draft.number, session().a_name);
  if (takesApart()) {
    all.cost = conversion_detail::costIn(draft.warehouse, draft.goods);
    all.value = all.cost * draft.quantity;
  } else {
    all.cost = unitCostOf(all.parts, draft.quantity);
    all.value = all.parts;
  }
  return all;
}

RowSet ConversionRules::preview(const ConversionDraft& draft) const {
  const DocumentFamily& f = family();
  const LineColumns& line = *f.line.columns;
  const double value = figures(draft).value;
  RowSet shown(
      {"id", "g_sn", "g_name", "ck_name", "tmp_cksl", "tmp_ckje", "tmp_rksl", "tmp_rkje", "tmp_currkc", "tmp_kc"});
  std::int64_t id = 0;
  for (const Row row : openSelect(
           compose(
               "select a.g_sn,a.sl,a.je,b.g_name,c.ck_name,d.kc_sl from (((select g_sn,{} as ck_sn,iif({}<0,0,1) as "
               "behind,sum({}) as sl,sum({}) as je,min(id) as first from {} where {}=? and a_name=? group by g_sn,{},"
               "iif({}<0,0,1)) a inner join jxc_goods b on a.g_sn=b.g_sn) inner join jxc_ckxx c on a.ck_sn=c.ck_sn) "
               "left join jxc_kcsp d on a.g_sn=d.g_sn and a.ck_sn=d.ck_sn order by a.behind,a.first",
               {f.line.warehouse, line.quantity, line.quantity, line.total, f.lines, f.number, f.line.warehouse,
                line.quantity}),
           draft.number, session().a_name)) {
    const bool isWhole = row.number("sl") < 0;
    const bool leaves = isWhole == takesApart();
    const double quantity = std::fabs(row.number("sl"));
    const double amount = isWhole ? value : row.number("je");
    const double stock = row.number("kc_sl");
    shown.addInteger(++id);
    for (const char* column : {"g_sn", "g_name", "ck_name"})
      shown.addText(row.text(column).toStdString());
    for (const bool side : {true, false})
      for (const double figure : {quantity, amount}) {
        if (leaves == side)
          shown.addReal(figure);
        else
          shown.addNull();
      }
    shown.addReal(stock);
    shown.addReal(toSixDecimals(leaves ? stock - quantity : stock + quantity));
  }
  return shown;
}

// ---- save --------------------------------------------------------------------------------------------------------

QString ConversionRules::deletedWarehouse(const QString& number) const {
  const DocumentFamily& f = family();
  return lookupValue(
      compose("select top 1 {} from {} where {}=? and a_name=? and {} not in (select ck_sn from jxc_ckxx)",
              {f.line.warehouse, f.lines, f.number, f.line.warehouse}),
      number, session().a_name);
}

SaveResult ConversionRules::save(const ConversionDraft& typed, Prompt& prompt) const {
  const DocumentFamily& f = family();
  ConversionDraft draft = typed;
  draft.number = keepWhole(draft);
  const SaveResult refusedSave{.number = draft.number};
  const PeriodLock lock;
  if (refused({{partCount(draft.number) == 0, u"单据中没有业务发生，不能保存！"_qs, Subject::Lines},
               lock.against(draft.date),
               {draft.goods.isEmpty(), words(direction_.noGoods), Subject::Goods},
               {draft.quantity <= 0, words(direction_.noQuantity), Subject::Quantity},
               {isAmongItsParts(draft), words(direction_.intoItself), Subject::Lines, draft.goods},
               {draft.salesperson.isEmpty(), u"请选择经办人！"_qs, Subject::Employee},
               {draft.warehouse.isEmpty(), u"请选择仓库！"_qs, Subject::Warehouse},
               warehouseGone(draft.warehouse),
               warehouseDeleted(deletedWarehouse(draft.number), Subject::Lines)},
              prompt))
    return refusedSave;
  if (!mayGoShort(checkStockShort(draft.number, draft.warehouse, QStringView(f.prefix)), prompt)) return refusedSave;
  const double cost = figures(draft).cost;
  const auto writeHead = [&](const QString& number) {
    execSql("delete" + conversion_detail::wholeAmongLines(f), number, session().a_name);
    updateRow(f.head, insertWaitingHead(f, draft, number),
              {{f.whole.goods, draft.goods}, {f.whole.quantity, draft.quantity}, {f.whole.cost, cost}});
  };
  return saveDocument(
      f, {.number = draft.number, .date = draft.date, .warehouse = draft.warehouse, .writeHead = writeHead}, prompt);
}

}  // namespace jxc
