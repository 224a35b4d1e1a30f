#include "stock/what_if.h"

#include "core/rights.h"
#include "core/rounding.h"
#include "core/session.h"
#include "core/statements.h"
#include "core/text.h"
#include "core/warehouse_binding.h"
#include "engine/number_text.h"
#include "stock/document.h"
#include "stock/ledger.h"

#include <cmath>
#include <map>
#include <set>

namespace jxc {
namespace what_if_detail {

/// Says yes and remembers.
class Agreeing final : public Prompt {
 public:
  explicit Agreeing(WhatIf& preview) : preview_(preview) {}
  void notice(const QString& text) override { preview_.notices << text; }
  bool ask(const QString& text) override {
    preview_.questions << text;
    return true;
  }
  Answer askOrCancel(const QString& text) override {
    preview_.questions << text;
    return Answer::Yes;
  }

 private:
  WhatIf& preview_;
};

/// The session as it was, whatever the command does to it.
class SessionGuard {
 public:
  SessionGuard() : before_(session()) {}
  ~SessionGuard() { session() = std::move(before_); }
  SessionGuard(const SessionGuard&) = delete;
  SessionGuard& operator=(const SessionGuard&) = delete;

 private:
  Session before_;
};

// ---- what is looked at -------------------------------------------------------------------------------------------

using GoodsPlace = std::pair<QString, QString>;  // goods, warehouse

struct Stock {
  double shelf = 0, book = 0, cost = 0;
  bool exists = false;
};

/// A later row of the ledger in short.
struct Later {
  double leastStock = 0;
  QString shortDocument;  // of the first row below zero
  double staleProfit = 0;
};

struct Goods {
  double stock = 0, average = 0;
};

struct Money {
  std::map<QString, double> customers, suppliers, accounts;
};

Money readMoney() {
  Money money;
  for (const Row row : openSelect("select kh_sn,kh_name,kh_lwje from jxc_khxx"))
    money.customers[u"客户 "_qs + row.text("kh_sn") + u' ' + row.text("kh_name")] = row.number("kh_lwje");
  for (const Row row : openSelect("select ghs_sn,ghs_name,ghs_lwje from jxc_ghsxx"))
    money.suppliers[u"供货商 "_qs + row.text("ghs_sn") + u' ' + row.text("ghs_name")] = row.number("ghs_lwje");
  for (const Row row : openSelect("select distinct xj_kmmc from jxc_xjyh where xj_chk='1'")) {
    const QString account = row.text("xj_kmmc");
    money.accounts[account] = lookupNumber(
        "select top 1 xj_ljje from jxc_xjyh where xj_chk='1' and xj_kmmc=? order by xj_rq desc,id desc", account);
  }
  return money;
}

/// Goods of the document in its lines and in the ledger; what is no document is the goods itself.
std::set<QString> goodsOf(const QString& number) {
  std::set<QString> goods;
  const auto add = [&goods](const RowSet& rows) {
    for (int row = 0; row < rows.rowCount(); ++row)
      if (const QString sn = rows.text(row, 0); !sn.isEmpty() && sn != u"00000000") goods.insert(sn);
  };
  add(openSelect("select distinct g_sn from jxc_goodslist where gl_djh=?", number));
  if (const DocumentFamily* known = findFamily(number)) {
    const DocumentFamily& family = *known;
    add(openSelect(compose("select distinct g_sn from {} where {}=?", {family.lines, family.number}), number));
    if (!family.whole.goods.empty())
      add(openSelect(compose("select {} from {} where {}=?", {family.whole.goods, family.head, family.number}),
                     number));
  } else if (exists("select id from jxc_goods where g_sn=?", number)) {
    goods.insert(number);
  }
  return goods;
}

/// A sale whose profit no longer goes with the cost of its day.
struct Stale {
  QString document, date;
  double stored, due;
};

struct Books {
  std::map<GoodsPlace, Stock> stocks;
  std::map<QString, Goods> goods;
  std::map<GoodsPlace, Later> later;
  std::map<std::int64_t, std::pair<GoodsPlace, Stale>> stale;
  Money money;
};

void readLater(Books& books, const GoodsPlace& at, const QString& date) {
  Later& later = books.later[at];
  const auto& [goods, warehouse] = at;
  const RowSet shortest = openSelect(
      "select top 1 gl_djh,gl_kc from jxc_goodslist where g_sn=? and ck_sn=? and gl_kdrq>=? and gl_kc<0 "
      "order by gl_kdrq,id",
      goods, warehouse, date);
  if (!shortest.isEmpty()) {
    later.shortDocument = shortest.text(0, 0);
    later.leastStock = lookupNumber("select min(gl_kc) from jxc_goodslist where g_sn=? and ck_sn=? and gl_kdrq>=?",
                                    goods, warehouse, date);
  }
  // An outgoing row leaves the average alone: where its cost is the average, nothing needs a closer look.
  const RowSet candidates = openSelect(
      "select id,gl_djh,gl_kdrq,gl_sl,gl_zje,gl_lr,gl_cbj from jxc_goodslist where g_sn=? and ck_sn=? and gl_kdrq>=? "
      "and (gl_flag='xs' or gl_flag='xt') and gl_cbj<>gl_pjjj order by gl_kdrq,id",
      goods, warehouse, date);
  for (const Row row : candidates) {
    const std::int64_t id = row.integer("id");
    const double cost = getLedgerRowCost(goods, warehouse, row.text("gl_kdrq"), id);
    if (!differs(row.number("gl_cbj"), cost)) continue;
    books.stale[id] = {at,
                       {row.text("gl_djh"), row.text("gl_kdrq"), row.number("gl_lr"),
                        row.number("gl_zje") - row.number("gl_sl") * cost}};
  }
}

/// What the operator may see of the books, cost apart: an audit changes more than its operator may look up.
struct Sight {
  bool accounts = hasRight("rcgl", 8);
  bool customers = hasRight("wlzk", 3) || hasRight("xsgl", 3) || hasRight("rcgl", 2);
  bool suppliers = hasRight("wlzk", 6) || hasRight("cggl", 3) || hasRight("rcgl", 1);
  std::optional<QStringList> warehouses =
      isWarehouseBound() ? std::optional(warehousesOpenTo(session().a_sn)) : std::nullopt;
};

Books readBooks(const std::set<QString>& goods, const QString& date, const Sight& sight) {
  Books books;
  for (const QString& sn : goods) {
    for (const Row row : openSelect("select ck_sn,kc_sl,kc_zsl,kc_cbj from jxc_kcsp where g_sn=? order by id", sn)) {
      const GoodsPlace at{sn, row.text("ck_sn")};
      if (sight.warehouses && !sight.warehouses->contains(at.second)) continue;
      books.stocks[at] = {row.number("kc_sl"), row.number("kc_zsl"), row.number("kc_cbj"), true};
      if (!date.isEmpty()) readLater(books, at, date);
    }
    if (sight.warehouses) continue;  // what stands on the goods is of all warehouses
    const RowSet master = openSelect("select g_kc,g_pjjj from jxc_goods where g_sn=?", sn);
    if (!master.isEmpty()) books.goods[sn] = {master.number(0, 0), master.number(0, 1)};
  }
  books.money = readMoney();
  return books;
}

/// The day from which the ledger is replayed: that of the document's rows, or of its head.
QString dateOf(const QString& number) {
  const QString posted = lookupValue("select min(gl_kdrq) from jxc_goodslist where gl_djh=?", number);
  if (!posted.isEmpty()) return posted.left(10);
  const DocumentFamily* const family = findFamily(number);
  if (!family) return {};
  return lookupValue(compose("select {} from {} where {}=?", {family->date, family->head, family->number}), number)
      .left(10);
}

// ---- differences -------------------------------------------------------------------------------------------------

constexpr double kJump = 0.2;  // a cost that moves by a fifth is a slip of the finger more often than a market

bool jumps(double before, double after) {
  return before > 0 && after > 0 && std::fabs(after / before - 1) >= kJump;
}

QString signedText(double change) {
  return (change > 0 ? u"+"_qs : QString()) + numberText(roundMoney(change));
}

/// "现金 +36，工行 -10" of what changed, the first few by name; the others are counted.
QString changesIn(const std::map<QString, double>& before, const std::map<QString, double>& after) {
  constexpr int kNamed = 3;
  std::map<QString, double> changes = after;
  for (const auto& [name, amount] : before)
    changes[name] -= amount;
  QStringList named;
  int more = 0;
  for (const auto& [name, change] : changes) {
    if (!differs(change, 0)) continue;
    if (named.size() < kNamed)
      named << name + u' ' + signedText(change);
    else
      ++more;
  }
  return named.join(u'，') + (more > 0 ? u"，另有 %1 个"_qs.arg(more) : QString());
}

double profitOf(const QString& number) {
  return lookupNumber("select sum(gl_lr) from jxc_goodslist where gl_djh=? and (gl_flag='xs' or gl_flag='xt')", number);
}

class Report {
 public:
  Report(WhatIf& preview, const Sight& sight) : preview_(preview), sight_(sight) {}
  void stocks(const Books& before, const Books& after);
  void goods(const Books& before, const Books& after);
  void sales(const Books& before, const Books& after);
  void money(const Books& before, const Books& after);
  void crossed(const std::set<QString>& goods, const QString& number, const QString& date);
  void moved(const Books& before, const Books& after);
  /// The sum of it. Profits: of the document's own sales, before and after.
  void sumUp(const Books& before, const Books& after, double profitBefore, double profitAfter, bool seesMoney);

 private:
  void add(QStringView kind, const QString& place, double before, double after, bool warns = false) {
    if (differs(before, after))
      preview_.impacts.push_back({kind.toString(), place, numberText(before), numberText(after), warns});
  }
  /// What goods cost, and what lets it be worked out, is told to those who may see it.
  void addCost(QStringView kind, const QString& place, double before, double after, bool warns = false) {
    if (session().canSeeCost) add(kind, place, before, after, warns);
  }
  static QString nameOf(const QString& goods) {
    return u"商品 "_qs + goods + u' ' + lookupValue("select g_name from jxc_goods where g_sn=?", goods);
  }
  /// The warehouse in front: a long name of goods would hide it, and a transfer touches two of them.
  static QString nameOf(const GoodsPlace& at) { return nameOfWarehouse(at.second) + u' ' + nameOf(at.first); }
  static QString nameOfWarehouse(const QString& sn) {
    return u"仓库 "_qs + sn + u' ' + lookupValue("select ck_name from jxc_ckxx where ck_sn=?", sn);
  }
  WhatIf& preview_;
  const Sight& sight_;
};

void Report::stocks(const Books& before, const Books& after) {
  for (const auto& [at, now] : after.stocks) {
    const auto found = before.stocks.find(at);
    const Stock old = found == before.stocks.end() ? Stock{} : found->second;
    const QString place = nameOf(at);
    add(u"库存数量", place, old.shelf, now.shelf, now.shelf < 0 && old.shelf >= 0);
    if (differs(now.shelf, now.book) || differs(old.shelf, old.book))
      add(u"帐面库存", place, old.book, now.book, now.book < 0 && old.book >= 0);
    addCost(u"成本均价", place, old.cost, now.cost, jumps(old.cost, now.cost));
  }
  for (const auto& [at, now] : after.later) {
    const auto found = before.later.find(at);
    const Later old = found == before.later.end() ? Later{} : found->second;
    if (now.leastStock < 0 && differs(now.leastStock, old.leastStock) && now.leastStock < old.leastStock)
      preview_.impacts.push_back({u"负库存"_qs, u"从单据 "_qs + now.shortDocument + u" 起 "_qs + nameOf(at),
                                  numberText(old.leastStock), numberText(now.leastStock), true});
  }
}

void Report::goods(const Books& before, const Books& after) {
  for (const auto& [sn, now] : after.goods) {
    const auto found = before.goods.find(sn);
    if (found == before.goods.end()) continue;
    add(u"商品总库存", nameOf(sn), found->second.stock, now.stock, now.stock < 0 && found->second.stock >= 0);
    addCost(u"商品成本均价", nameOf(sn), found->second.average, now.average, jumps(found->second.average, now.average));
  }
}

/// What a transfer does to the value of the goods in each warehouse, and what its price makes or loses between them.
void Report::moved(const Books& before, const Books& after) {
  std::map<QString, std::pair<double, double>> values;  // warehouse: before, after
  for (const auto& [at, stock] : before.stocks)
    values[at.second].first += stock.book * stock.cost;
  for (const auto& [at, stock] : after.stocks)
    values[at.second].second += stock.book * stock.cost;
  double old = 0, now = 0;
  for (const auto& [warehouse, value] : values) {
    addCost(u"库存金额", nameOfWarehouse(warehouse), roundMoney(value.first), roundMoney(value.second));
    old += value.first;
    now += value.second;
  }
  addCost(u"调拨产生的价值", u"各仓库合计"_qs, roundMoney(old), roundMoney(now), true);
}

/// Who may see one half of a profit could work the other one out.
bool seesProfit() {
  return session().canSeeCost && hasRight(kSeesPrice);
}

/// Stored profits stay as they were sold; after the command they may no longer go with the cost of their day, or go
/// with it again.
void Report::sales(const Books& before, const Books& after) {
  const auto shown = [](double profit) { return seesProfit() ? numberText(roundMoney(profit)) : QString(); };
  for (const auto& [id, entry] : after.stale) {
    const auto& [at, sale] = entry;
    const bool isNew = !before.stale.contains(id);
    preview_.impacts.push_back({isNew ? u"销售毛利与成本不符"_qs : u"销售毛利与成本不符（原有）"_qs,
                                u"单据 "_qs + sale.document + u" 日期 "_qs + sale.date.left(10) + u' ' + nameOf(at),
                                shown(sale.stored), shown(sale.due), isNew});
  }
}

void Report::money(const Books& before, const Books& after) {
  const auto compare = [this](QStringView kind, const std::map<QString, double>& old,
                              const std::map<QString, double>& now) {
    std::set<QString> names;
    for (const auto* each : {&old, &now})
      for (const auto& entry : *each)
        names.insert(entry.first);
    for (const QString& name : names) {
      const auto was = old.find(name), is = now.find(name);
      const double from = was == old.end() ? 0 : was->second, to = is == now.end() ? 0 : is->second;
      add(kind, name, from, to, to < 0 && from >= 0);
    }
  };
  if (sight_.customers) compare(u"往来余额", before.money.customers, after.money.customers);
  if (sight_.suppliers) compare(u"往来余额", before.money.suppliers, after.money.suppliers);
  if (sight_.accounts) compare(u"现金银行余额", before.money.accounts, after.money.accounts);
}

void Report::sumUp(const Books& before, const Books& after, double profitBefore, double profitAfter, bool seesMoney) {
  std::set<QString> goods;
  double in = 0, out = 0;
  for (const auto& [at, now] : after.stocks) {
    const auto found = before.stocks.find(at);
    const double change = now.shelf - (found == before.stocks.end() ? 0 : found->second.shelf);
    if (!differs(change, 0)) continue;
    goods.insert(at.first);
    (change > 0 ? in : out) += std::fabs(change);
  }
  const auto tell = [this](QStringView what, const QString& text) {
    if (!text.isEmpty()) preview_.summary << what.toString() + text;
  };
  if (!goods.empty()) {
    QString text = u"%1 种商品"_qs.arg(goods.size());
    if (in > 0) text += u"，增加 "_qs + numberText(in);
    if (out > 0) text += u"，减少 "_qs + numberText(out);
    tell(u"库存：", text);
  }
  if (seesMoney) {
    tell(u"现金银行：", changesIn(before.money.accounts, after.money.accounts));
    tell(u"往来余额：", changesIn(before.money.customers, after.money.customers));
    tell(u"往来余额：", changesIn(before.money.suppliers, after.money.suppliers));
  }
  if (seesProfit() && differs(profitBefore, profitAfter)) tell(u"本单毛利：", signedText(profitAfter - profitBefore));
}

void Report::crossed(const std::set<QString>& goods, const QString& number, const QString& date) {
  std::set<QString> later;
  for (const QString& sn : goods)
    for (const Row row :
         openSelect("select distinct gl_djh from jxc_goodslist where g_sn=? and gl_kdrq>? and gl_djh<>?", sn,
                    date + u" 23:59:59"_qs, number))
      later.insert(row.text("gl_djh"));
  if (!later.empty())
    preview_.impacts.push_back({u"日期在前"_qs,
                                u"%1 之后已有 %2 张单据，它们的库存和成本将重新推算"_qs.arg(date).arg(later.size()),
                                {},
                                {},
                                true});
  std::set<QString> months, counts;
  for (const QString& sn : goods)
    for (const Row row :
         openSelect("select distinct left(gl_kdrq,7) as rq from jxc_goodslist where g_sn=? and gl_kdrq>?", sn,
                    date + u" 23:59:59"_qs))
      if (row.text("rq") > date.left(7)) months.insert(row.text("rq"));
  for (const QString& sn : goods)
    for (const Row row : openSelect(
             "select distinct gl_djh,gl_kdrq,ck_sn from jxc_goodslist where g_sn=? and gl_flag='pd' and gl_kdrq>? "
             "and gl_djh<>?",
             sn, date + u" 23:59:59"_qs, number))
      counts.insert(u"盘点单 "_qs + row.text("gl_djh") + u" 日期 "_qs + row.text("gl_kdrq").left(10) + u" 仓库 "_qs +
                    row.text("ck_sn"));
  for (const QString& month : months)
    preview_.impacts.push_back({u"重新推算的月份"_qs, month, {}, {}, true});
  for (const QString& count : counts)
    preview_.impacts.push_back({u"之后的盘点"_qs, count, {}, {}, true});
}

}  // namespace what_if_detail

RowSet WhatIf::rows() const {
  RowSet rows({"id", "kind", "place", "valuebefore", "valueafter", "warns"});
  std::int64_t id = 0;
  const auto add = [&](const QString& kind, const QString& place, const QString& before, const QString& after,
                       bool warns) {
    rows.addInteger(++id);
    for (const QString* text : {&kind, &place, &before, &after}) {
      if (text->isEmpty())
        rows.addNull();  // what has no figure shows none, not a zero
      else
        rows.addText(text->toStdString());
    }
    rows.addInteger(warns);
  };
  if (!failure.isEmpty()) add(u"执行失败"_qs, failure.simplified(), {}, {}, true);
  for (const QString& text : notices)
    add(done ? u"提示"_qs : u"不能执行"_qs, text.simplified(), {}, {}, true);
  for (const QString& text : questions)
    add(u"将会询问"_qs, text.simplified(), {}, {}, false);
  for (const Impact& impact : impacts)
    add(impact.kind, impact.place, impact.before, impact.after, impact.warns);
  return rows;
}

WhatIf whatIf(const QString& number, const std::function<bool(Prompt&)>& command) {
  using namespace what_if_detail;
  WhatIf preview;
  Agreeing prompt(preview);
  const SessionGuard session;
  Transaction trial(accountDb());  // never committed
  const std::set<QString> goods = goodsOf(number);
  const QString date = dateOf(number);
  const Sight sight;  // of the operator as he is now
  const Books before = readBooks(goods, date, sight);
  const double profitBefore = profitOf(number);
  try {
    preview.done = command(prompt);
  } catch (const std::exception& failure) {
    preview.failure = QString::fromUtf8(failure.what());
    return preview;
  }
  if (!preview.done) return preview;
  const Books after = readBooks(goods, date, sight);
  Report report(preview, sight);
  // The sum of it first, then the goods one by one.
  if (const DocumentFamily* family = findFamily(number); family && !family->into.empty()) report.moved(before, after);
  report.stocks(before, after);
  report.goods(before, after);
  report.sales(before, after);
  // What a partner is owed for it is what its goods are worth.
  const DocumentFamily* family = findFamily(number);
  const bool seesMoney = !family || seesAmounts(*family);
  if (seesMoney) report.money(before, after);
  if (!date.isEmpty()) report.crossed(goods, number, date);
  report.sumUp(before, after, profitBefore, profitOf(number), seesMoney);
  return preview;
}

}  // namespace jxc
