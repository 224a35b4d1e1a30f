// What was bought and sold, summed: figures of a small month worked out by hand, and groupings that agree.
#include "statistics/trade_totals.h"

#include "stock/shop.h"

namespace jxc::trade_totals_test {

/// A supplier and two customers, frames "A" and cases "B"; in May three purchases, four sales.
class TradeTotals : public test::ShopTest {
 protected:
  struct Money {
    double quantity, net, tax = 0, cost = 0, profit = 0;
  };
  TradeTotals() {
    addGoods("A");
    addGoods("B");
    insertRow("jxc_goodsclass", {{"gc_sn", "1900"}, {"gc_name", "测试类"}});
    execSql("update jxc_goods set gc_sn='1900' where g_sn in ('A','B')");
    row("cj", "2021-05-01", "A", "S1", {10, 100, 13});
    row("cj", "2021-05-01 10:30:00", "A", "S1", {5, 60, 7.8});
    row("ct", "2021-05-20", "A", "S1", {-2, -20, -2.6});
    row("cj", "2021-06-02", "B", "S2", {1, 7, 0.91});
    row("xs", "2021-05-01", "A", "K1", {3, 90, 0, 32, 58});
    row("xs", "2021-05-10", "B", "K1", {4, 0, 0, 2, -2}, "镜架B(赠品)");
    row("xs", "2021-05-31", "00000000", "K2", {0, -5, 0, 0, -5});
    row("xt", "2021-05-31 23:59:59", "A", "K1", {-1, -30, 0, -10.67, -19.33});
    row("db", "2021-05-02", "A", "", {4, 40});
  }
  static void row(const char* flag, const char* date, const char* goods, const char* partner, const Money& money,
                  const char* name = "镜架") {
    insertRow("jxc_goodslist", {{"gl_flag", flag},
                                {"gl_kdrq", date},
                                {"g_sn", goods},
                                {"g_name", name},
                                {"ghs_sn", partner},
                                {"ghs_name", partner},
                                {"ck_sn", test::mainWarehouse},
                                {"gl_sl", money.quantity},
                                {"gl_je", money.net},
                                {"gl_taxje", money.tax},
                                {"gl_zje", money.net + money.tax},
                                {"gl_zcb", money.cost},
                                {"gl_lr", money.profit}});
  }
  /// "key quantity net with-tax" of each sum; of sales with "cost profit margin".
  template <PartnerType Side, TradeBy By>
  static QStringList sums(const char* key, const Criteria& criteria = {}) {
    QStringList all;
    for (const Row row : answer(tradeTotalsOf<Side, By>, criteria)) {
      QStringList one{row.text(key), row.text("sl"), row.text("je"), row.text("zje")};
      if (Side == PartnerType::Customer) one << row.text("zcb") << row.text("lr") << row.text("lrl");
      all << one.join(u' ');
    }
    return all;
  }
  template <PartnerType Side, TradeBy... By>
  static void expectEqualTotals() {
    for (const char* field : {"sl", "je", "taxje", "zje", "zcb", "lr"}) {
      const auto total = [](const RowSet& rows, const std::string& column) {
        double sum = 0;
        for (const Row row : rows)
          sum += row.number(column);
        return sum;
      };
      const double lines = total(answer(tradeLinesOf<Side>, {}), "gl_" + std::string(field));
      for (const double sum : {total(answer(tradeTotalsOf<Side, By>, {}), field)...})
        EXPECT_NEAR(sum, lines, 1e-6) << field;
    }
  }
};

TEST_F(TradeTotals, PurchasesOfADayAreOneSumWhateverTheTimeAndReturnsLowerTheMonth) {
  EXPECT_EQ((sums<PartnerType::Supplier, TradeBy::PartnerGoodsDay>("tjrq")),
            QStringList({"2021-06-02 1 7 7.91", "2021-05-20 -2 -20 -22.6", "2021-05-01 15 160 180.8"}));
  EXPECT_EQ((sums<PartnerType::Supplier, TradeBy::PartnerGoodsMonth>("rowkey")),
            QStringList({"2021-06B/S2 1 7 7.91", "2021-05A/S1 13 140 158.2"}));
  const Criteria may{.from = QStringLiteral("2021-05"), .to = QStringLiteral("2021-05"), .kind = QStringLiteral("cj")};
  EXPECT_EQ((sums<PartnerType::Supplier, TradeBy::Day>("tjrq", may)), QStringList({"2021-05-01 15 160 180.8"}));
}

TEST_F(TradeTotals, SalesHaveProfitAndAMarginThatIsZeroWhereNothingWasTakenIn) {
  EXPECT_EQ((sums<PartnerType::Customer, TradeBy::PartnerGoodsMonth>("rowkey")),
            QStringList({"2021-0500000000/K2 0 -5 -5 0 -5 100", "2021-05A/K1 2 60 60 21.33 38.67 64.45",
                         "2021-05B/K1 4 0 0 2 -2 0"}));
  EXPECT_EQ((sums<PartnerType::Customer, TradeBy::Month>("tjrq")), QStringList({"2021-05 6 55 55 23.33 31.67 57.58"}));
  EXPECT_EQ((sums<PartnerType::Customer, TradeBy::Goods>("g_name", {.key = QStringLiteral("架b")})),
            QStringList({"镜架B 4 0 0 2 -2 0"}));
}

TEST_F(TradeTotals, EveryGroupingAddsUpToTheLines) {
  using enum TradeBy;
  expectEqualTotals<PartnerType::Supplier, Goods, GoodsClass, Day, Month, PartnerGoodsDay, PartnerGoodsMonth>();
  expectEqualTotals<PartnerType::Customer, Goods, GoodsClass, Partner, CustomerType, Region, Day, Month,
                    PartnerGoodsDay, PartnerGoodsMonth>();
  execSql("delete from jxc_goodsclass where gc_sn='1900'");
  EXPECT_EQ((sums<PartnerType::Supplier, GoodsClass>("gc_name")), QStringList({"其他 14 147 166.11"}));
}

TEST_F(TradeTotals, ASumOfAGroupLeadsToItsLinesAlsoOfWhatHasNone) {
  insertRow("jxc_khxx", {{"kh_sn", "K1"}, {"kh_name", "甲"}, {"kt_name", "零售"}, {"z_name", ""}});
  const auto types = sums<PartnerType::Customer, TradeBy::CustomerType>("kt_name", {.order = QStringLiteral("sl")});
  EXPECT_EQ(types, QStringList({"零售 6 60 60 23.33 36.67 61.12", "其他 0 -5 -5 0 -5 100"}));
  const auto lines = [](const QString& group, unsigned boxes) {
    return answer(tradeLinesOf<PartnerType::Customer>, {.group = group, .boxes = boxes}).rowCount();
  };
  EXPECT_EQ(lines(u"零售"_qs, 0), 3);
  EXPECT_EQ(lines(u"其他"_qs, 0), 1);
  EXPECT_EQ(lines(u"其他"_qs, kGroupIsRegion), 4);
  // A class leads to its own goods, not to those of the classes below it.
  execSql("update jxc_goods set gc_sn='190001' where g_sn='B'");
  EXPECT_EQ(lines(u"1900"_qs, kGroupIsClass), 2);
  EXPECT_EQ(lines(u"190001"_qs, kGroupIsClass), 1);
  EXPECT_EQ(lines(u"其他"_qs, kGroupIsClass), 1);
}

TEST_F(TradeTotals, ARankingByProfitIsForWhoSeesCost) {
  insertRow("jxc_kcsp", {{"g_sn", "A"}, {"ck_sn", test::mainWarehouse}, {"kc_sl", 7.0}});
  const auto ranking = [](const QString& order) {
    QStringList goods;
    for (const Row row : answer(goodsRanking, {.order = order}))
      goods << row.text("g_sn") + u' ' + row.text("kcsl");
    return goods.join(u", "_qs);
  };
  EXPECT_EQ(ranking(u"sl"_qs), "B 0, A 7, 00000000 0");
  EXPECT_EQ(ranking(u"lr"_qs), "A 7, B 0, 00000000 0");
  setRights(QStringLiteral("100077"), "qtcz", QString(60, u'0'));
  becomeOperator(QStringLiteral("店员"), QStringLiteral("100099"), QStringLiteral("100077"));
  EXPECT_EQ(ranking(u"lr"_qs), "B 0, A 7, 00000000 0");
  EXPECT_EQ(ranking(u"je"_qs), "B 0, A 7, 00000000 0");
}

TEST_F(TradeTotals, GoodsTurnOverByWhatWasSoldOfBoughtAndStock) {
  insertRow("jxc_kcsp", {{"g_sn", "A"}, {"ck_sn", test::mainWarehouse}, {"kc_sl", 7.0}});
  const auto turn = [](const Criteria& criteria) {
    QStringList goods;
    for (const Row row : answer(stockTurn, criteria))
      goods << QStringList{row.text("g_sn"), row.text("cgsl"), row.text("xssl"), row.text("kcsl"), row.text("zzbl")}
                   .join(u' ');
    return goods.join(u", "_qs);
  };
  EXPECT_EQ(turn({}), "B 1 4 0 400, A 13 2 7 10");
  EXPECT_EQ(turn({.to = u"2021-05-31"_qs}), "A 13 2 7 10");
  EXPECT_EQ(turn({.to = u"2021-05-31"_qs, .boxes = kTurnOfAllGoods}), "A 13 2 7 10, B 0 4 0 0");
  EXPECT_EQ(turn({.order = u"cgsl"_qs}), "A 13 2 7 10, B 1 4 0 400");
}

}  // namespace jxc::trade_totals_test
