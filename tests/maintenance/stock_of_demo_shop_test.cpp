// The enquiries of stock over the demonstration shop, beside sums that know nothing of their statements: the ledger is
// read row by row and replayed in memory.
#include "core/data_module.h"
#include "harness/account_set_fixture.h"
#include "harness/row_texts.h"
#include "maintenance/demo_shop.h"
#include "maintenance/prove.h"
#include "server/test_engine.h"
#include "statistics/month_costs.h"
#include "stock/goods_situation.h"
#include "stock/ledger_flags.h"
#include "stock/running_stock.h"
#include "stock/stock_alerts.h"
#include "stock/stock_enquiry.h"
#include "stock/stock_sync.h"

#include <map>
#include <set>

namespace jxc::stock_of_demo_shop_test {

using Pair = std::pair<QString, QString>;  // warehouse, goods

class StockOfDemoShop : public test::AccountSetFixture {
 protected:
  StockOfDemoShop() {
    dataModule().installAccountDb(test::openEmpty(test::Story::Long));
    buildDemoShop(
        {.months = 3, .seed = 3, .goods = 60, .documentsADay = 3, .putaway = true, .lastDay = QDate(2021, 8, 31)});
    setClock(QStringLiteral("2021-08-31 20:00:00"));
    warehouses_ = test::textsOf(openSelect("select ck_sn from jxc_ckxx order by ck_sn"));
  }
  /// Every goods of a warehouse at the end of a day, replayed from its first row.
  static std::map<Pair, RunningStock> replayed(const QString& day) {
    std::map<Pair, RunningStock> all;
    const StockDigits digits;
    for (const Row row : openSelect("select g_sn,ck_sn,gl_flag,gl_kdrq,gl_sl,gl_je,gl_dj,gl_pjjj from jxc_goodslist "
                                    "where g_sn<>'00000000' order by gl_kdrq,id")) {
      if (row.text("gl_kdrq").left(10) > day) break;
      RunningStock begin;
      begin.average = row.number("gl_pjjj");  // what it cost before its first movement is told by that alone
      RunningStock& stock = all.try_emplace({row.text("ck_sn"), row.text("g_sn")}, begin).first->second;
      stock.advance(
          {findLedgerFlag(row.text("gl_flag")), row.number("gl_sl"), row.number("gl_je"), row.number("gl_dj")}, digits);
    }
    return all;
  }
  void monthsEndAsReplayed() const;
  void todaysListsAddUp() const;
  static void monthsAddUp();

  QStringList warehouses_;
};

void StockOfDemoShop::monthsEndAsReplayed() const {
  int looked = 0;
  for (const char* day : {"2021-05-31", "2021-06-30", "2021-07-31", "2021-08-31"}) {
    SCOPED_TRACE(day);
    const auto due = replayed(QString::fromLatin1(day));
    double pieces = 0, value = 0;
    for (const QString& warehouse : warehouses_)
      for (const Row row :
           answer(stockAt, {.to = QString::fromLatin1(day), .warehouse = warehouse, .boxes = kWithDisabledGoods})) {
        const auto found = due.find({warehouse, row.text("g_sn")});
        ASSERT_NE(found, due.end());
        EXPECT_NEAR(row.number("kcsl"), found->second.quantity, 1e-6) << row.text("g_sn").toStdString();
        EXPECT_NEAR(row.number("cbjj"), found->second.average, 1e-6) << row.text("g_sn").toStdString();
        EXPECT_NEAR(row.number("kczje"), found->second.value, 1e-6);
        pieces += row.number("kcsl");
        value += row.number("kczje");
        ++looked;
      }
    double duePieces = 0, dueValue = 0;
    for (const auto& [pair, stock] : due) {
      duePieces += stock.quantity;
      dueValue += stock.value;
    }
    EXPECT_NEAR(pieces, duePieces, 1e-4);
    EXPECT_NEAR(value, dueValue, 1e-4);
    const RowSet shop = answer(stockAt, {.to = QString::fromLatin1(day), .boxes = kWithDisabledGoods});
    EXPECT_NEAR(test::sumOf(shop, "kcsl"), duePieces, 1e-4);
    EXPECT_NEAR(test::sumOf(shop, "kczje"), dueValue, 1e-4);
  }
  EXPECT_GT(looked, 200);
}

void StockOfDemoShop::todaysListsAddUp() const {
  EXPECT_TRUE(answer(stockDifferences, {}).isEmpty());
  std::map<QString, double> shelf;
  std::map<QString, std::map<QString, double>> shelfIn;  // by warehouse
  for (const Row row : openSelect("select g_sn,ck_sn,kc_sl from jxc_kcsp where g_sn<>'00000000'")) {
    shelf[row.text("g_sn")] += row.number("kc_sl");
    shelfIn[row.text("ck_sn")][row.text("g_sn")] += row.number("kc_sl");
  }
  double pieces = 0;
  for (const auto& [goods, stock] : shelf)
    pieces += stock;
  EXPECT_NEAR(test::sumOf(answer(currentStock, {.boxes = kWithDisabledGoods}), "kcsl"), pieces, 1e-6);
  const RowSet situation = answer(goodsSituation, {});
  EXPECT_NEAR(test::sumOf(situation, "kcsl"), pieces, 1e-6);
  // Book and shelf differ by what was bought and not put away, and sold and not issued.
  EXPECT_NEAR(test::sumOf(situation, "kczsl"), pieces + test::sumOf(situation, "ztsl") - test::sumOf(situation, "dcsl"),
              1e-6);
  EXPECT_GT(test::sumOf(situation, "ztsl") + test::sumOf(situation, "dcsl"), 0);

  std::map<QString, QString> sold;  // the last day
  for (const Row row : openSelect("select g_sn,gl_kdrq from jxc_goodslist where gl_flag='xs' and gl_sl>0"))
    sold[row.text("g_sn")] = std::max(sold[row.text("g_sn")], row.text("gl_kdrq").left(10));
  QStringList alerts, slow;
  for (const Row row : openSelect("select g_sn,g_zdkc,g_jy,g_kc from jxc_goods where g_sn<>'00000000' order by g_sn")) {
    const QString goods = row.text("g_sn");
    if (!row.flag("g_jy") && row.number("g_kc") < row.number("g_zdkc")) alerts << goods;
    if (shelf[goods] > 0 && sold[goods] < u"2021-08-21") slow << goods;
  }
  const auto sorted = [](const RowSet& rows) {
    QStringList goods = test::textsOf(rows, {"g_sn"});
    goods.sort();
    return goods;
  };
  EXPECT_EQ(sorted(answer(stockAlerts, {})), alerts);
  EXPECT_EQ(sorted(answer(slowSellers, {.amount = 10})), slow);
  EXPECT_FALSE(alerts.isEmpty() || slow.isEmpty());
  for (const QString& warehouse : warehouses_)
    for (const Row row : answer(stockAlerts, {.warehouse = warehouse}))
      EXPECT_EQ(row.number("kc"), shelfIn[warehouse][row.text("g_sn")]);
}

void StockOfDemoShop::monthsAddUp() {
  struct Month {
    double bought = 0, sold = 0, profit = 0, stock = 0;
  };
  std::map<QString, Month> due;
  for (const Row row : openSelect("select gl_kdrq,gl_flag,gl_sl,gl_zje,gl_lr from jxc_goodslist")) {
    const QString flag = row.text("gl_flag");
    if (flag != u"cj" && flag != u"ct" && flag != u"xs" && flag != u"xt") continue;
    Month& month = due[row.text("gl_kdrq").left(7)];
    (flag.startsWith(u'c') ? month.bought : month.sold) += row.number("gl_zje");
    month.profit += row.number("gl_lr");
  }
  for (const Row row : openSelect("select js_rq,js_zje from jxc_kcjs"))
    due[row.text("js_rq")].stock += row.number("js_zje");
  const RowSet months = answer(monthCosts, {.from = u"2000-01"_qs, .to = u"9999-12"_qs});
  ASSERT_EQ(months.rowCount(), static_cast<int>(due.size()));
  EXPECT_GT(months.rowCount(), 2);
  for (const Row row : months) {
    const Month& month = due[row.text("js_rq")];
    EXPECT_NEAR(row.number("cgzje"), month.bought, 1e-4);
    EXPECT_NEAR(row.number("xszje"), month.sold, 1e-4);
    EXPECT_NEAR(row.number("lr"), month.profit, 1e-4);
    EXPECT_NEAR(row.number("zje"), month.stock, 0.005);
  }
}

TEST_F(StockOfDemoShop, ListsAreWhatTheLedgerAddsUpTo) {
  ASSERT_TRUE(proof::prove(accountDb()).isClean());
  monthsEndAsReplayed();
  todaysListsAddUp();
  monthsAddUp();
}

}  // namespace jxc::stock_of_demo_shop_test
