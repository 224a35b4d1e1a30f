#include "inventory/opening_stock.h"

#include "core/clock.h"
#include "core/log.h"
#include "core/period_lock.h"
#include "core/posting.h"
#include "core/refusal.h"
#include "core/rounding.h"
#include "core/session.h"
#include "core/text.h"
#include "core/unusual.h"
#include "masterdata/goods_to_pick.h"
#include "stock/ledger.h"
#include "stock/opening_row.h"

namespace jxc::opening_stock {
namespace opening_stock_detail {

constexpr char16_t kKnown[] = u"该仓库已有该商品，可以修改其数量和成本价！";
constexpr char kGoods[] = "select g_sn,g_name,g_jm,dw_name,gg_name,color_name,g_bz,g_jj from jxc_goods";

/// The first of January sorts before all documents of the year; locked, the first day that is not.
QString openingDay() {
  return PeriodLock().openFrom(clock::today().left(4) + u"-01-01"_qs);
}

double valueOf(double quantity, double cost) {
  return roundTotal(quantity * cost);
}

bool knows(const QString& warehouse, const QString& goods) {
  return exists("select top 1 id from jxc_kcsp where g_sn=? and ck_sn=?", goods, warehouse);
}

/// The first document of any kind that holds the goods in this warehouse, whatever its state.
QString firstDocument(const QString& goods, const QString& warehouse) {
  for (const DocumentFamily& f : documentFamilies()) {
    if (f.sharesTables) continue;
    const std::string_view ofLine = f.line.warehouse;
    Sql held(compose("select top 1 a.{} from {} a,{} b where a.{}=b.{} and a.g_sn=? and (",
                     {f.number, f.lines, f.head, f.number, f.number}),
             goods);
    held.add(ofLine.empty() ? compose("b.{}=?", {f.warehouse}) : compose("a.{}=?", {ofLine}), warehouse);
    if (!f.into.empty()) held.add(compose(" or b.{}=?", {f.into}), warehouse);
    if (const QString number = lookupValue(held.add(") order by a.id")); !number.isEmpty()) return number;
    if (f.whole.goods.empty()) continue;
    const QString whole = lookupValue(compose("select top 1 {} from {} where {}=? and {}=? order by id",
                                              {f.number, f.head, f.whole.goods, f.warehouse}),
                                      goods, warehouse);
    if (!whole.isEmpty()) return whole;
  }
  return lookupValue("select top 1 gl_djh from jxc_goodslist where gl_flag<>'qc' and g_sn=? and ck_sn=? order by id",
                     goods, warehouse);
}

/// The one row of the ledger that entering wrote; 0 where there is none.
std::int64_t openingRow(const QString& goods, const QString& warehouse) {
  return lookupValue(
             "select top 1 id from jxc_goodslist where gl_flag='qc' and gl_djh='' and ghs_name=? and g_sn=? and "
             "ck_sn=? order by id",
             QStringView(openingName).toString(), goods, warehouse)
      .toLongLong();
}

/// What the books hold of a goods in this warehouse behind the lock stays.
Refusal rowsLocked(const QString& goods, const QString& warehouse) {
  const PeriodLock lock;
  const Ahead first = sendAhead("select min(gl_kdrq) from jxc_goodslist where g_sn=? and ck_sn=?", goods, warehouse);
  const QString day = first.rows().text(0, 0);
  return day.isEmpty() ? Refusal() : lock.against(day, OnDay::Booked);
}

QString refusalWords(const QString& goods, const QString& number, const QString& what) {
  return u"商品编号：%1 商品名称：%2  已发生过业务，单据号：%3 %4"_qs.arg(
      goods, lookupValue("select g_name from jxc_goods where g_sn=?", goods), number, what);
}

/// What stands against another figure: today's stock would become the opening one. Rows that a closing or a sync wrote
/// have no number and are named.
std::optional<QString> cannotChange(const QString& goods, const QString& warehouse) {
  if (const Refusal locked = rowsLocked(goods, warehouse)) return locked.text;
  QString number = firstDocument(goods, warehouse);
  if (number.isEmpty())
    number = lookupValue("select top 1 ghs_name from jxc_goodslist where g_sn=? and ck_sn=? and id<>? order by id",
                         goods, warehouse, openingRow(goods, warehouse));
  if (number.isEmpty()) return {};
  return refusalWords(goods, number, u"不能修改！"_qs);
}

bool isWrong(const Entry& entry, Prompt& prompt) {
  return refused({{entry.warehouse.isEmpty(), u"请选择仓库！"_qs, Subject::Warehouse},
                  warehouseGone(entry.warehouse),
                  {entry.quantity < 0, u"期初数量不能为负数！"_qs, Subject::Quantity},
                  {entry.cost < 0 || entry.cost >= kDearest, u"成本价不正确，请重新输入！"_qs, Subject::Cost}},
                 prompt) ||
         isTooMany(entry.quantity, prompt);
}

/// Opening stock is no document, and each entry is one by itself. Its day is always the same: only the clock is looked
/// at.
bool isMeant(double quantity, double cost, Prompt& prompt) {
  return confirmUnusual({.pieces = quantity,
                         .yuan = valueOf(quantity, cost),
                         .date = clock::today(),
                         .newest = {},
                         .lastEntry = lookupValue(lastLogEntry)},
                        prompt);
}

/// What an opening stock costs is what it was bought for.
void takeCost(const QString& goods, double quantity, double cost) {
  postSql("update jxc_goods set g_kc=g_kc+(?),g_jj=?,g_scjj=?,g_pjjj=? where g_sn=?", quantity, cost, cost, cost,
          goods);
}

/// Enters one after the other and writes the month's figures at the end. Inside the caller's transaction.
class Entering {
 public:
  explicit Entering(const QString& warehouse) : place_(warehouse, openingDay()) { ensureStockRows(clock::month()); }
  void add(const Row& goods, double quantity, double cost) {
    const double value = valueOf(quantity, cost);
    takeCost(goods.text("g_sn"), quantity, cost);
    beginStock(place_, goods, quantity, cost, value);
    quantity_ += quantity;
    value_ += value;
  }
  void finish() const { addToMonth(place_.warehouse, quantity_, value_); }

 private:
  OpeningPlace place_;
  double quantity_ = 0, value_ = 0;
};

class OpeningLines final : public ManyLines {
 public:
  LineDraft newLine(const QString& goods, const LinePlace& place, bool) const override {
    LineDraft line;
    line.goods = goods;
    line.warehouse = place.warehouse;
    line.amounts.setPrice(proposedCost(goods));
    return line;
  }
  QuantityRange quantities() const override { return {.zero = true}; }
  bool goodsStandOnce() const override { return true; }
  Sql goodsToPick(const LinePlace& place, const PickFilter& wanted) const override {
    return goodsToEnter(place.warehouse, wanted);
  }
  bool mayStage(const QString& goods, const LinePlace& place, Lines, PickingMemory& memory, Prompt&) const override {
    if (!knows(place.warehouse, goods)) return true;
    memory.passedOver << goods;
    return false;
  }
  bool stockAllows(const QString&, double quantity, const LinePlace&, Prompt& prompt, PickingMemory*) const override {
    return !isTooMany(quantity, prompt) && confirmUnusual({.pieces = quantity}, prompt);
  }
  SheetPrice takeSheetPrice(LineDraft& line, double yuan) const override {
    if (!session().canSeeCost) return {.warning = u"成本价未采用（没有查看成本的权限）"_qs};
    line.amounts.setPrice(yuan);
    return {};
  }
  std::optional<AddedLines> addLines(Lines, const LinePlace& place, std::span<const LineDraft> drafts,
                                     const LineProgress& progress) const override {
    AddedLines added{.number = place.number};
    Transaction transaction(accountDb());
    Entering entering(place.warehouse);
    for (std::size_t i = 0; i < drafts.size(); ++i) {
      if (!goesOn(progress, i + 1, drafts.size())) return std::nullopt;
      const LineDraft& line = drafts[i];
      const RowSet goods = openSelect(std::string(kGoods) + " where g_sn=?", line.goods);
      if (goods.isEmpty() || knows(place.warehouse, line.goods)) continue;  // another station was here
      entering.add(goods.front(), line.amounts.quantity(), line.amounts.price());
      ++added.lines;
    }
    entering.finish();
    transaction.commit();
    return added;
  }
};

/// False: something stands against it.
bool removeOne(const QString& warehouse, const QString& goods, QStringList& refusals) {
  if (const QString number = firstDocument(goods, warehouse); !number.isEmpty()) {
    refusals << refusalWords(goods, number, u"不能删除！"_qs);
    return false;
  }
  if (const Refusal locked = rowsLocked(goods, warehouse)) {
    refusals << locked.text;
    return false;
  }
  const RowSet balance = openSelect("select sum(kc_sl) as sl,sum(" + roundedExpression("kc_sl*kc_cbj", totalDigits()) +
                                        ") as zje,count(*) as gs from jxc_kcsp where g_sn=? and ck_sn=?",
                                    goods, warehouse);
  if (balance.isEmpty() || balance.front().integer("gs") == 0) return false;  // gone at another station
  const double quantity = balance.front().number("sl"), value = balance.front().number("zje");
  writeLog(u"删除期初建账商品数据商品编号：%1，商品名称：%2，操作员：%3，仓库编号：%4，库存数量：%5"_qs.arg(
      goods, lookupValue("select g_name from jxc_goods where g_sn=?", goods), session().a_name, warehouse,
      numberText(quantity)));
  postSql("delete from jxc_kcsp where g_sn=? and ck_sn=?", goods, warehouse);
  postSql(
      "update jxc_kcjs set js_sl=js_sl-(?),js_cgsl=js_cgsl-(?),js_zje=js_zje-(?),js_cgje=js_cgje-(?) where js_rq=? "
      "and ck_sn=?",
      quantity, quantity, value, value, clock::month(), warehouse);
  postSql("update jxc_goods set g_kc=g_kc-(?) where g_sn=?", quantity, goods);
  postSql("delete from jxc_goodslist where g_sn=? and ck_sn=?", goods, warehouse);
  return true;
}

}  // namespace opening_stock_detail

const LineImport sheet = {.title = "期初库存导入",
                          .templateFile = "期初库存模板.xlsx",
                          .hasNote = false,
                          .price = u"成本价",
                          .notOffered = u"该仓库已有该商品",
                          .repeated = u"商品重复"};

Sql balances(const QString& warehouse, const QString& typed, const QString& classNumber) {
  // Goods whose class is gone have stock all the same.
  Filter filter;
  addGoodsConditions(filter, {.key = typed, .classNumber = classNumber, .withDisabled = true});
  filter.add("a.g_sn<>'00000000'").add("k.ck_sn=?", warehouse);
  return Sql("select k.id,a.g_sn,a.g_name,a.g_qgd,a.g_sgd,c.gc_name,a.gg_name,a.color_name,a.dw_name,a.g_sptm,k.kc_sl,"
             "k.kc_cbj," +
             roundedExpression("k.kc_sl*k.kc_cbj", totalDigits()) +
             " as kczje from (jxc_kcsp k inner join jxc_goods a on k.g_sn=a.g_sn) left join jxc_goodsclass c on "
             "a.gc_sn=c.gc_sn")
      .where(filter)
      .add(" order by a.g_sn");
}

Sql goodsToEnter(const QString& warehouse, const PickFilter& wanted) {
  Filter filter;
  addGoodsConditions(filter, goodsFilterOf(wanted));
  filter.add("a.g_sn not in (select g_sn from jxc_kcsp where ck_sn=?)", warehouse);
  return Sql("select a.*,0 as kc_sl from jxc_goods a").where(filter).add(" order by a.g_sn");
}

double proposedCost(const QString& goods) {
  return lookupNumber("select g_jj from jxc_goods where g_sn=?", goods);
}

double costOfBalance(std::int64_t id) {
  return lookupNumber("select kc_cbj from jxc_kcsp where id=?", id);
}

bool enter(const Entry& entry, Prompt& prompt) {
  using namespace opening_stock_detail;
  const RowSet goods = openSelect(std::string(kGoods) + " where g_sn=? and g_sn<>'00000000'", entry.goods);
  const auto known = [&] { return knows(entry.warehouse, entry.goods); };
  if (refused({{goods.isEmpty(), u"请选择商品！"_qs, Subject::Goods}}, prompt) || isWrong(entry, prompt) ||
      refused({{known(), QStringView(kKnown).toString()}}, prompt) || !isMeant(entry.quantity, entry.cost, prompt))
    return false;
  Transaction transaction(accountDb());
  if (known()) throw DbError(DbError::Kind::Other, QStringView(kKnown).toString());
  Entering entering(entry.warehouse);
  entering.add(goods.front(), entry.quantity, entry.cost);
  entering.finish();
  transaction.commit();
  return true;
}

bool mayChange(const QString& goods, const QString& warehouse, Prompt& prompt) {
  return !isRefused(opening_stock_detail::cannotChange(goods, warehouse), prompt);
}

bool change(const Entry& entry, Prompt& prompt) {
  using namespace opening_stock_detail;
  if (isWrong(entry, prompt) || !mayChange(entry.goods, entry.warehouse, prompt) ||
      !isMeant(entry.quantity, entry.cost, prompt))
    return false;
  Transaction transaction(accountDb());
  if (const auto refusal = cannotChange(entry.goods, entry.warehouse)) throw DbError(DbError::Kind::Other, *refusal);
  const RowSet before = openSelect(
      "select sum(kc_sl) as sl,min(kc_cbj) as cbj,count(*) as gs from jxc_kcsp where "
      "g_sn=? and ck_sn=?",
      entry.goods, entry.warehouse);
  const RowSet goods = openSelect(std::string(kGoods) + " where g_sn=?", entry.goods);
  if (goods.isEmpty() || before.front().integer("gs") == 0)
    throw DbError(DbError::Kind::Other, u"该商品的期初数据已被删除！"_qs);
  const double old = before.front().number("sl"), value = valueOf(entry.quantity, entry.cost);
  addToMonth(entry.warehouse, entry.quantity - old, value - valueOf(old, before.front().number("cbj")));
  postSql("update jxc_kcsp set kc_cbj=?,kc_sl=?,kc_zsl=? where g_sn=? and ck_sn=?", entry.cost, entry.quantity,
          entry.quantity, entry.goods, entry.warehouse);
  takeCost(entry.goods, entry.quantity - old, entry.cost);
  if (const std::int64_t row = openingRow(entry.goods, entry.warehouse))
    updateRow("jxc_goodslist", row,
              {{"gl_dj", entry.cost},
               {"gl_sl", entry.quantity},
               {"gl_sysl", entry.quantity},
               {"gl_zje", value},
               {"gl_pjjj", entry.cost},
               {"gl_kc", entry.quantity},
               {"gl_taxdj", entry.cost},
               {"gl_kczje", value},
               {"gl_je", value}});
  else  // a document was here and taken back: the warehouse knows the goods, the ledger does not
    postOpeningRow({entry.warehouse, openingDay()}, goods.front(), entry.quantity, entry.cost, value);
  transaction.commit();
  return true;
}

std::optional<int> enterClass(const QString& warehouse, const QString& classNumber, double quantity, Prompt& prompt,
                              const LineProgress& progress) {
  using namespace opening_stock_detail;
  if (isWrong({.warehouse = warehouse, .quantity = quantity}, prompt) || !isMeant(quantity, 0, prompt)) return {};
  Transaction transaction(accountDb());
  const RowSet goods = openSelect(std::string(kGoods) +
                                      " where g_sn<>'00000000' and g_sn not in (select g_sn from jxc_kcsp where "
                                      "ck_sn=?) and gc_sn=? order by g_sn",
                                  warehouse, classNumber);
  Entering entering(warehouse);
  std::size_t done = 0;
  for (const Row row : goods) {
    if (!goesOn(progress, ++done, static_cast<std::size_t>(goods.rowCount()))) return {};
    entering.add(row, quantity, row.number("g_jj"));
  }
  entering.finish();
  transaction.commit();
  return goods.rowCount();
}

std::optional<Removed> remove(const QString& warehouse, const QStringList& goods, const LineProgress& progress) {
  using namespace opening_stock_detail;
  Removed removed;
  Transaction transaction(accountDb());
  for (qsizetype i = 0; i < goods.size(); ++i) {
    if (!goesOn(progress, static_cast<std::size_t>(i) + 1, static_cast<std::size_t>(goods.size()))) return {};
    if (removeOne(warehouse, goods[i], removed.refusals)) ++removed.goods;
  }
  transaction.commit();
  return removed;
}

const ManyLines& lines() {
  static const opening_stock_detail::OpeningLines all;
  return all;
}

}  // namespace jxc::opening_stock
