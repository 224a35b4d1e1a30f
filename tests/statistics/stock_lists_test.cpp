// All lists of stock over books as other programs may have left them: rows of unknown kinds, without a date, of the
// first and the last year, signs in names. No list fails, the figures stay those that were worked out by hand, and on a
// server each list is one question.
#include "core/data_module.h"
#include "core/text.h"
#include "engine/posting.h"
#include "server/test_engine.h"
#include "statistics/month_costs.h"
#include "statistics/purchase_sale_stock.h"
#include "stock/goods_situation.h"
#include "stock/shop.h"
#include "stock/stock_alerts.h"
#include "stock/stock_enquiry.h"
#include "stock/stock_sync.h"

namespace jxc::stock_lists_test {

struct List {
  const char* name;
  Source source;
  bool hasKey = true;
  int rights = 0;  // questions for the operator's rights, which count as they stand at the moment
};
const List kLists[] = {{"current", currentStockByPage},
                       {"history", stockAt},
                       {"situation", goodsSituation},
                       {"alerts", stockAlerts},
                       {"slow", slowSellers},
                       {"movements", stockMovements, true, 1},
                       {"differences", stockDifferences},
                       {"by warehouse", situationByWarehouse, false},
                       {"last prices", lastPrices, false},
                       {"waiting", waitingWithGoods, false, 1},
                       {"batches", batches, false},
                       {"months", monthCosts, false}};

class StockLists : public test::ShopTest {
 protected:
  StockLists() {
    addGoods("A", 5);
    addGoods("B", 3);
    execSql("update jxc_goods set g_name=? where g_sn='B'", sanitizeText(u"镜盒%_'\"[B]"));  // as it is stored
    execSql("update jxc_goods set g_zdkc=20");
    receive("2021-04-01", {{"A", 10, 5}, {"B", 4, 3}});
    sell("2021-05-02", {{"A", 2, 9}});
    waitingSale("2021-05-03", {{"B", 1, 9}}, 0);
    foreignRow("??", "2021-04-10", "A", 10, 5);
    foreignRow("", "2021-04-11", "A", 10, 5);
    foreignRow("xs", "", "B", 0, 0);
    execSql("update jxc_goodslist set gl_kdrq=null where id=?", foreignRow("cj", "", "B", 0, 0));
    foreignRow("qc", "0001-01-01", "A", 0, 0);
    foreignRow("qc", "9999-12-31", "A", 8, 5);
  }
  std::int64_t foreignRow(const char* flag, const char* date, const char* goods, double stock, double average) {
    const std::int64_t id = ledgerRow(flag, date, 3, 15, 5, goods);
    updateRow("jxc_goodslist", id, {{"gl_kc", stock}, {"gl_pjjj", average}, {"gl_kczje", stock * average}});
    return id;
  }
  static QStringList at(const char* day) {
    return test::textsOf(answer(stockAt, {.to = day}), {"g_sn", "kcsl", "cbjj", "kczje"});
  }
};

TEST_F(StockLists, FiguresStayRightWhateverStandsInTheLedger) {
  const QStringList today{"A 8 5 40", "B 4 3 12"};
  EXPECT_EQ(test::textsOf(answer(currentStock, {}), {"g_sn", "kcsl", "cbjj", "kczje"}), today);
  EXPECT_EQ(at("2021-04-01"), QStringList({"A 10 5 50", "B 4 3 12"}));
  EXPECT_EQ(at("2021-04-30"), QStringList({"A 10 5 50", "B 4 3 12"}));
  EXPECT_EQ(at("2021-05-03"), today);
  EXPECT_EQ(at("9999-12-31"), today);
  EXPECT_EQ(at("0001-01-01"), QStringList({"A 0 0 0", "B 0 0 0"}));
  EXPECT_TRUE(answer(stockDifferences, {}).isEmpty());
  // A sale of no day is none that was made in time.
  EXPECT_EQ(test::textsOf(answer(slowSellers, {.amount = 1}), {"g_sn", "kcsl", "ts"}), QStringList({"B 4 "}));
  EXPECT_EQ(test::textsOf(answer(stockMovements, {.from = "2021-01-01", .to = "2021-12-31"}), {"g_sn", "rksl", "cksl"}),
            QStringList({"A 10 0", "A 0 2", "B 4 0"}));
  const Criteria months{.from = u"2021-03"_qs, .to = u"2021-06"_qs};
  EXPECT_EQ(test::textsOf(answer(monthCosts, months), {"js_rq", "cgsl", "xssl"}),
            QStringList({"2021-04 14 0", "2021-05 0 2"}));
}

TEST_F(StockLists, NoKeyAndNoPeriodMakesAListFail) {
  const std::pair<QString, QString> periods[] = {
      {{}, {}}, {"0001-01-01", "9999-12-31"}, {"9999-12-31", "0001-01-01"}, {"0001-01", "9999-12"}, {"x", "'"}};
  execSql("update jxc_kcsp set kc_sl=kc_sl+1,kc_zsl=kc_zsl+1");  // something to compare
  for (const List& list : kLists) {
    SCOPED_TRACE(list.name);
    for (const auto& [from, to] : periods)
      EXPECT_NO_THROW(answer(list.source, {.from = from, .to = to, .goods = u"B'"_qs, .key = u"%_'\"[;--"_qs}));
    if (!list.hasKey) continue;
    for (const char* key : {"%", "_", "'", "\"", "[", "]", "%_'\"[b]"}) {
      const RowSet found = answer(list.source, {.key = QString::fromLatin1(key)});
      EXPECT_FALSE(found.isEmpty()) << key;
      if (*key == '_') continue;  // stands for any sign
      for (const Row row : found)
        EXPECT_EQ(row.text("g_sn"), "B") << key;
    }
    EXPECT_TRUE(answer(list.source, {.key = u"%%"_qs}).isEmpty());
  }
}

TEST_F(StockLists, EachIsOneQuestionToAServer) {
  const Posting* const server = accountDb().posting();
  if (!server) GTEST_SKIP() << "runs on a server, among pg.*";
  insertRow("jxc_ckxx", {{"ck_sn", "100002"}, {"ck_name", "二号库"}, {"ck_asn", "100009,"}});
  const auto expectOne = [&] {
    for (const List& list : kLists) {
      const std::int64_t before = server->roundTrips();
      answer(list.source, {.to = u"2021-05-03"_qs, .goods = list.hasKey ? u""_qs : u"A"_qs});
      EXPECT_EQ(server->roundTrips() - before, 1 + list.rights) << list.name;
    }
  };
  expectOne();
  setParameter("cs_cgyh", 1);
  becomeOperator(u"小王"_qs, u"100009"_qs, u"100002"_qs);
  expectOne();
}

}  // namespace jxc::stock_lists_test
