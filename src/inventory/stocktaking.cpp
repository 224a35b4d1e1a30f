#include "inventory/stocktaking.h"

#include "core/log.h"
#include "core/posting.h"
#include "core/refusal.h"
#include "core/session.h"
#include "core/statements.h"
#include "core/station_options.h"
#include "core/text.h"
#include "engine/number_text.h"
#include "inventory/inventory_lines.h"
#include "masterdata/goods.h"
#include "stock/stocktake.h"

#include <utility>
#include <vector>

namespace jxc::stocktaking {
namespace stocktaking_detail {

constexpr LineDescription kLines = {
    .family = &families::stocktake,
    .price = warehouseCost,
    .priceIsTyped = false,
    .rounding = {LineRounding::Scanned, LineRounding::Scanned, LineRounding::Scanned},
    .quantities = {.zero = true},
    .quantityRefusal = u"盘点数量不能为负数，重新输入！",
    .repeats = Repeats::Never,
};

constexpr int kMostPieces = 9999;  // before a barcode; more is a barcode typed there

/// "12*6901234567892" is twelve of them.
std::pair<int, QString> multipleOf(const QString& typed) {
  const qsizetype star = typed.indexOf(u'*');
  bool isNumber = false;
  const int times = typed.left(star).trimmed().toInt(&isNumber);
  if (star < 1 || !isNumber || times < 1 || times > kMostPieces) return {1, typed};
  return {times, typed.mid(star + 1)};
}

class StocktakeLines final : public InventoryLines {
 public:
  using InventoryLines::InventoryLines;

  bool hidesStock() const override { return stationOption(kBlind); }

  ScanResult enterBarcode(const LinePlace& place, const QString& code, bool oncePerGoods,
                          Prompt& prompt) const override {
    const auto [times, barcode] = multipleOf(code);
    Transaction transaction(accountDb());
    const ScanResult scanned = InventoryLines::enterBarcode(place, barcode, oncePerGoods, prompt);
    if (scanned.id != 0 && times > 1 && scanned.outcome != Scan::AlreadyThere) {
      const double counted = lookupNumber("select pd_sl from jxc_kcpdsp where id=?", scanned.id) + times - 1;
      setChange(numberText(counted), u"sl", Lines::Draft, scanned.id, prompt);
    }
    transaction.commit();
    return scanned;
  }
};

class StocktakeRules final : public RulesOver<DocumentDraft> {
 public:
  const DocumentFamily& family() const override { return families::stocktake; }
  const LineRules& lines() const override { return lines_; }

  SaveResult save(const DocumentDraft& draft, Prompt& prompt) const override {
    if (isIncomplete(draft, prompt) ||
        isRefused(stock_count::tooLateToSave(draft.number, draft.warehouse, draft.date), prompt))
      return {.number = draft.number};
    const auto writeHead = [&](const QString& number) {
      insertWaitingHead(family(), draft, number);
      refreshWaitingTotals(family(), number);
    };
    return saveDocument(family(), {.number = draft.number, .date = draft.date, .writeHead = writeHead}, prompt);
  }

 private:
  StocktakeLines lines_{kLines};
};

/// Goods `a` of these classes. Disabled ones, too: they lie there as others do.
Filter ofClasses(const QStringList& classes) {
  Filter filter;
  addGoodsConditions(filter, {.key = {}, .classNumber = {}, .withDisabled = true});
  Sql any;
  for (const QString& each : classes)
    any.add(any.isEmpty() ? "(a.gc_sn like ?" : " or a.gc_sn like ?", each + u'%');
  if (!any.isEmpty()) filter.add(any.add(")"));
  return filter;
}

/// " from jxc_kcsp b,jxc_goods a where …" of goods with stock that the document does not have yet.
Sql fromUncounted(const LinePlace& place, Lines where, const QStringList& classes) {
  Sql sql(" from jxc_kcsp b,jxc_goods a where a.g_sn=b.g_sn and b.ck_sn=? and b.kc_sl<>0 and b.g_sn<>'00000000'",
          place.warehouse);
  sql.andWhere(ofClasses(classes))
      .add(" and b.g_sn not in (select c.g_sn from jxc_kcpdsp c where c.gl_djh=?", place.number);
  if (where == Lines::Draft) sql.add(" and c.a_name=?", session().a_name);
  return sql.add(")");
}

bool isWaiting(const QString& number) {
  return lookupNumber("select count(*) from jxc_kcpd where gl_djh=? and pd_status=0", number) == 1 &&
         lookupNumber("select count(*) from jxc_kcpd where gl_djh=? and pd_status=1", number) == 0;
}

/// A goods that stands on two counts.
struct OnBoth {
  std::int64_t id = 0;  // its line on the one that stays
  QString goods, name;
  double here = 0, there = 0;
  double book = 0, cost = 0;
  bool operator==(const OnBoth&) const = default;
};
std::vector<OnBoth> onBoth(const QString& into, const QString& from) {
  std::vector<OnBoth> both;
  for (const Row row : openSelect("select a.id,a.g_sn,c.g_name,a.pd_sl,b.pd_sl as there,a.kc_sl,a.pd_dj from "
                                  "jxc_kcpdsp a,jxc_kcpdsp b,jxc_goods c where a.g_sn=b.g_sn and a.g_sn=c.g_sn and "
                                  "a.gl_djh=? and b.gl_djh=? order by a.id",
                                  into, from))
    both.push_back({.id = row.integer("id"),
                    .goods = row.text("g_sn"),
                    .name = row.text("g_name"),
                    .here = row.number("pd_sl"),
                    .there = row.number("there"),
                    .book = row.number("kc_sl"),
                    .cost = row.number("pd_dj")});
  return both;
}

QString joinQuestion(const QString& into, const QString& from, const std::vector<OnBoth>& both) {
  constexpr std::size_t shown = 15;
  QString text = u"您的操作将把盘点单 "_qs + from + u" 合并到 "_qs + into + u"，确认吗？"_qs;
  if (both.empty()) return text;
  text += u"\r\n\r\n两张单据中都有的商品，盘点数量相加：\r\n"_qs;
  for (std::size_t i = 0; i < std::min(shown, both.size()); ++i)
    text += u"\r\n"_qs + both[i].goods + u' ' + both[i].name + u"："_qs + numberText(both[i].here) + u'+' +
            numberText(both[i].there) + u'=' + numberText(both[i].here + both[i].there);
  if (both.size() > shown) text += u"\r\n等 %1 种商品"_qs.arg(both.size());
  return text;
}

void takeIn(const QString& into, const QString& from, const std::vector<OnBoth>& both) {
  for (const OnBoth& each : both) {
    const double counted = each.here + each.there;
    postSql("update jxc_kcpdsp set pd_sl=?,pd_zje=? where id=?", counted,
            stock_count::valueOf(counted - each.book, each.cost), each.id);
    postSql("delete from jxc_kcpdsp where gl_djh=? and g_sn=?", from, each.goods);
  }
  execSql("update jxc_kcpdsp set gl_djh=?,a_name=? where gl_djh=?", into, ownerOf(families::stocktake, into), from);
  execSql("delete from jxc_kcpd where gl_djh=?", from);
  refreshWaitingTotals(families::stocktake, into);
  writeLog(u"合并库存盘点单："_qs + from + u" 并入 "_qs + into);
}

}  // namespace stocktaking_detail

const RulesOver<DocumentDraft>& rules() {
  static const stocktaking_detail::StocktakeRules all;
  return all;
}

Sql uncounted(const LinePlace& place, Lines where, const QStringList& classes) {
  return Sql("select a.id,a.g_sn,a.g_name,a.g_sptm,a.gg_name,a.color_name,a.dw_name,b.kc_sl,b.kc_zsl,b.kc_cbj")
      .add(stocktaking_detail::fromUncounted(place, where, classes))
      .add(" order by a.g_sn");
}

CopyResult takeUncounted(const LinePlace& place, Lines where, const QStringList& classes, Uncounted as) {
  CopyResult result;
  result.number = place.number;
  Transaction transaction(accountDb());
  if (where == Lines::Waiting)
    result.closed = stocktaking_detail::isWaiting(place.number) ? linesLocked(families::stocktake, place.number)
                                                                : Refusal(changedMeanwhile(place.number));
  if (result.closed) return result;
  if (where == Lines::Draft) result.number = usableDraftNumber(families::stocktake, place.number, place.date);
  LinePlace here = place;
  here.number = result.number;
  const bool zero = as == Uncounted::Zero;
  Sql copy(zero ? "insert into jxc_kcpdsp (pd_sl,pd_zje,gl_djh,a_name,g_sn,kc_sl,kc_zsl,pd_dj) select 0," +
                      stock_count::valueExpression("-1*b.kc_sl", "b.kc_cbj") + ",?,?,b.g_sn,b.kc_sl,b.kc_zsl,b.kc_cbj"
                : "insert into jxc_kcpdsp (pd_sl,pd_zje,gl_djh,a_name,g_sn,kc_sl,kc_zsl,pd_dj) select b.kc_sl,0,?,?,"
                  "b.g_sn,b.kc_sl,b.kc_zsl,b.kc_cbj",
           here.number, where == Lines::Waiting ? ownerOf(families::stocktake, here.number) : session().a_name);
  copy.add(stocktaking_detail::fromUncounted(here, where, classes));
  if (!zero) copy.add(" and b.kc_sl>0");
  result.lines = static_cast<int>(execSql(copy.add(" order by a.g_sn")));
  if (where == Lines::Waiting) refreshWaitingTotals(families::stocktake, here.number);
  transaction.commit();
  return result;
}

RowSet countSheet(const QString& warehouse, const QStringList& classes) {
  return openSelect(Sql("select a.id,a.g_sn,a.g_name,a.g_sptm,a.gg_name,a.color_name,a.dw_name,c.gc_name,'' as pdsl "
                        "from (jxc_kcsp b inner join jxc_goods a on a.g_sn=b.g_sn) left outer join jxc_goodsclass c on "
                        "a.gc_sn=c.gc_sn where b.ck_sn=? and b.kc_sl<>0 and b.g_sn<>'00000000'",
                        warehouse)
                        .andWhere(stocktaking_detail::ofClasses(classes))
                        .add(" order by a.gc_sn,a.g_sn"));
}

RowSet joinable(const QString& number) {
  return openSelect(
      "select b.id,b.gl_djh,b.pd_rq,b.pd_sl,b.pd_note,b.a_name from jxc_kcpd a,jxc_kcpd b where a.gl_djh=? and "
      "a.pd_status=0 and b.pd_status=0 and b.gl_djh<>a.gl_djh and b.ck_sn=a.ck_sn and b.pd_rq=a.pd_rq order by b.id",
      number);
}

bool join(const QString& into, const QString& from, Prompt& prompt) {
  using namespace stocktaking_detail;
  const auto fits = [&] {
    for (const Row row : joinable(into))
      if (row.text("gl_djh") == from) return isWaiting(into) && isWaiting(from);
    return false;
  };
  const std::vector<OnBoth> both = onBoth(into, from);
  if (isRefused(linesLocked(families::stocktake, into), prompt)) return false;
  if (!fits() || !prompt.ask(joinQuestion(into, from, both))) return false;
  bool joined = false;
  Refusal locked;
  {
    Transaction transaction(accountDb());
    locked = linesLocked(families::stocktake, into);  // both are of one day
    joined = !locked && fits() && onBoth(into, from) == both;
    if (joined) {
      takeIn(into, from, both);
      transaction.commit();
    }
  }
  return !refused({locked, {!joined, u"单据已变动，请重新合并！"_qs}}, prompt);
}

}  // namespace jxc::stocktaking
