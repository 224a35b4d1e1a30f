// What was bought and sold, summed: figures of a small month worked out by hand, and groupings that agree.
#include "statistics/trade_totals.h"

#include "core/data_module.h"
#include "maintenance/demo_shop.h"
#include "server/test_engine.h"
#include "statistics/purchase_sale_stock.h"
#include "stock/document_list.h"
#include "stock/line_columns.h"
#include "stock/shop.h"

#include <array>
#include <map>
#include <random>

namespace jxc::trade_totals_test {

/// A supplier and two customers, frames "A" and cases "B"; in May three purchases, four sales.
class TradeTotals : public test::ShopTest {
 protected:
  TradeTotals() {
    addGoods("A");
    addGoods("B");
    insertRow("jxc_goodsclass", {{"gc_sn", "1900"}, {"gc_name", "测试类"}});
    execSql("update jxc_goods set gc_sn='1900' where g_sn in ('A','B')");
    for (const char* each : {"K1", "K2"})
      insertRow("jxc_khxx", {{"kh_sn", each}, {"kh_name", each}, {"kt_name", ""}, {"z_name", ""}});
    for (const char* each : {"S1", "S2"})
      insertRow("jxc_ghsxx", {{"ghs_sn", each}, {"ghs_name", each}});
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
  void row(const char* flag, const char* date, const char* goods, const char* partner, const Trade& trade,
           const char* name = "镜架") {
    updateRow("jxc_goodslist", ledgerRow(flag, date, trade, goods),
              {{"g_name", name}, {"ghs_sn", partner}, {"ghs_name", partner}});
  }
  /// "key quantity net with-tax" of each sum; of sales with "cost profit margin".
  template <PartnerType Side, TradeBy By>
  static QStringList sums(const char* key, const Criteria& criteria = {}) {
    const RowSet rows = answer(tradeTotalsOf<Side, By>, criteria);
    if (Side == PartnerType::Supplier) return test::textsOf(rows, {key, "sl", "je", "zje"});
    return test::textsOf(rows, {key, "sl", "je", "zje", "zcb", "lr", "lrl"});
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

// What a receipt was rounded off by is a line without goods: it belongs to the supplier and the day, and to no class.
TEST_F(TradeTotals, ABalancingLineOfAReceiptCountsWhereNoClassIsAskedFor) {
  row("cj", "2021-05-20 18:00:00", "00000000", "S1", {0, -0.6});
  EXPECT_EQ(
      (sums<PartnerType::Supplier, TradeBy::PartnerGoodsDay>("rowkey", {.from = u"2021-05-20"_qs})),
      QStringList({"2021-06-02B/S2 1 7 7.91", "2021-05-2000000000/S1 0 -0.6 -0.6", "2021-05-20A/S1 -2 -20 -22.6"}));
  EXPECT_EQ((sums<PartnerType::Supplier, TradeBy::Partner>("ghs_sn")),
            QStringList({"S1 13 139.4 157.6", "S2 1 7 7.91"}));
  EXPECT_EQ((sums<PartnerType::Supplier, TradeBy::GoodsClass>("gc_sn", {.goodsClass = u"1900"_qs})),
            QStringList("1900 14 147 166.11"));
  EXPECT_EQ((sums<PartnerType::Supplier, TradeBy::Goods>("g_sn", {.kind = u"ct"_qs})), QStringList("A -2 -20 -22.6"));
}

TEST_F(TradeTotals, TheLatestDaysComeAheadOfTheRestAndStayAsTheyAre) {
  for (int i = 0; i < 320; ++i)  // two a day, until the 9th of June
    row("cj", (QDate(2022, 1, 1).addDays(i / 2).toString(Qt::ISODate) + (i % 2 == 0 ? "" : " 18:00:00")).toLatin1(),
        "A", "S1", {1, 10});
  const auto rows = [](TradeBy by, const Criteria& asked) {
    RowSet first;
    EnquiryReader reader(accountDb(), {}, [&](RowSet begun) { first = std::move(begun); });
    const RowSet all = latestFirst(PartnerType::Supplier, by, asked, Warehouses(asked))(reader);
    EXPECT_EQ(test::textsOf(first), test::textsOf(all).first(first.rowCount()));
    return std::pair(first.rowCount(), all.rowCount());
  };
  using enum TradeBy;
  EXPECT_EQ(rows(PartnerGoodsDay, {.from = u"2022-01-05"_qs, .to = u"2022-12-31"_qs}), std::pair(100, 156));
  EXPECT_EQ(rows(PartnerGoodsDay, {.to = u"2022-06-01"_qs}), std::pair(100, 155));
  EXPECT_EQ(rows(PartnerGoodsMonth, {.from = u"2022-01"_qs, .to = u"2022-12"_qs}), std::pair(4, 6));
  EXPECT_EQ(rows(PartnerGoodsMonth, {.from = u"2022-03-05"_qs}), std::pair(4, 4));  // no day before it in March
  EXPECT_EQ(rows(PartnerGoodsDay, {.from = u"2030-01-01"_qs}), std::pair(0, 0));
}

TEST_F(TradeTotals, SalesHaveProfitAndAMarginThatIsZeroWhereNothingWasTakenIn) {
  EXPECT_EQ((sums<PartnerType::Customer, TradeBy::PartnerGoodsMonth>("rowkey")),
            QStringList({"2021-0500000000/K2 0 -5 -5 0 -5 100", "2021-05A/K1 2 60 60 21.33 38.67 64.45",
                         "2021-05B/K1 4 0 0 2 -2 0"}));
  EXPECT_EQ((sums<PartnerType::Customer, TradeBy::Month>("tjrq")), QStringList({"2021-05 6 55 55 23.33 31.67 57.58"}));
  EXPECT_EQ((sums<PartnerType::Customer, TradeBy::Goods>("g_name", {.key = QStringLiteral("架b")})),
            QStringList({"镜架B 4 0 0 2 -2 0"}));
}

constexpr TradeBy kGroupings[] = {
    TradeBy::Goods,        TradeBy::GoodsClass,      TradeBy::GoodsSupplier,    TradeBy::Partner, TradeBy::PartnerClass,
    TradeBy::CustomerType, TradeBy::Region,          TradeBy::Employee,         TradeBy::Day,     TradeBy::Month,
    TradeBy::Year,         TradeBy::PartnerGoodsDay, TradeBy::PartnerGoodsMonth};

// Also where a class, a partner, an employee, the supplier of a goods are gone, and where goods and partners have none.
TEST_F(TradeTotals, EveryGroupingAddsUpToTheLinesAndEachRowToTheLinesItLeadsTo) {
  insertRow("jxc_user", {{"u_sn", "U1"}, {"u_name", "张三"}});
  execSql("update jxc_goods set ghs_sn='S1' where g_sn='A'");
  addGoods("C");
  execSql("update jxc_goods set gc_sn='1999',ghs_sn='S9' where g_sn='C'");
  execSql("update jxc_khxx set kt_name='零售',z_name='其他' where kh_sn='K1'");
  execSql("update jxc_khxx set z_name='城东' where kh_sn='K2'");
  insertRow("jxc_khxx", {{"kh_sn", "K3"}, {"kh_name", "丙"}, {"kt_name", ""}, {"z_name", ""}});
  std::mt19937 random(7);
  const auto below = [&](int end) { return static_cast<int>(random() % static_cast<unsigned>(end)); };
  const auto oneOf = [&](std::initializer_list<const char*> texts) {
    return QString::fromUtf8(texts.begin()[below(static_cast<int>(texts.size()))]);
  };
  for (int i = 0; i < 300; ++i) {
    const QString day = QDate(2020, 11, 1).addDays(below(400)).toString(Qt::ISODate);
    const bool sold = below(2) == 0;
    insertRow("jxc_goodslist", {{"gl_flag", sold ? oneOf({"xs", "xt"}) : oneOf({"cj", "ct"})},
                                {"gl_kdrq", day + oneOf({"", " 09:30:00"})},
                                {"g_sn", oneOf({"A", "B", "C", "00000000"})},
                                {"ck_sn", test::mainWarehouse},
                                {"ghs_sn", sold ? oneOf({"K1", "K2", "K3", "K9"}) : oneOf({"S1", "S2", "S9"})},
                                {"u_name", oneOf({"张三", "李四", ""})},
                                {"gl_sl", below(9) - 3},
                                {"gl_je", below(9000) / 100.0 - 20},
                                {"gl_taxje", below(7)},
                                {"gl_zje", below(50)},
                                {"gl_zcb", below(30)},
                                {"gl_lr", below(20)}});
  }
  for (const PartnerType side : {PartnerType::Supplier, PartnerType::Customer}) {
    const auto sum = [&](const Question& question, const std::string& column) {
      EnquiryReader reader(accountDb());
      return test::sumOf(answer(question, reader), column);
    };
    for (const TradeBy by : kGroupings) {
      SCOPED_TRACE(testing::Message() << static_cast<int>(side) << " grouping " << static_cast<int>(by));
      const bool ofCustomers = by == TradeBy::CustomerType || by == TradeBy::Region;
      if (ofCustomers && side == PartnerType::Supplier) continue;
      // The period begins and ends within a month.
      const Criteria asked{.from = u"2020-12-10"_qs, .to = u"2021-10-20"_qs};
      const Sql totals = tradeTotals(side, by, asked, Warehouses(asked));
      for (const std::string field : {"sl", "je", "taxje", "zje", "zcb", "lr"})
        EXPECT_NEAR(sum(totals, field), sum(tradeLines(side, asked, Warehouses(asked)), "gl_" + field), 1e-6) << field;
      const RowSet rows = openSelect(totals);
      EXPECT_GT(rows.rowCount(), 1);
      if (by == TradeBy::Region) {
        EXPECT_EQ(rows.rowCount(), 3);  // 城东, 无地区, and 其他 of who is gone
      }
      for (const Row row : rows) {
        Criteria narrowed = asked;
        narrowToSum(by, narrowed, row);
        const Sql lines = tradeLines(side, narrowed, Warehouses(narrowed));
        for (const std::string field : {"sl", "je", "lr"})
          EXPECT_NEAR(sum(lines, "gl_" + field), row.number(field), 1e-6) << rows.text(row.index(), 0).toStdString();
      }
    }
  }
}

// Bought by the supplier of the document, sold by the one that the goods name.
TEST_F(TradeTotals, SuppliersShowWhatWasBoughtFromThemBesideWhatTheirGoodsBrought) {
  execSql("update jxc_goods set ghs_sn='S1' where g_sn='A'");
  const auto figures = [](Sql (*source)(const Criteria&, const Warehouses&), const char* key,
                          const Criteria& criteria) {
    return test::textsOf(answer(source, criteria), {key, "jhsl", "jhje", "xssl", "xsje", "zcb", "lr", "lrl"});
  };
  EXPECT_EQ(figures(supplierTrade, "ghs_name", {}),
            QStringList({"普通供货商 0 0 0 -5 0 -5 100", "S1 13 158.2 2 60 21.33 38.67 64.45", "S2 1 7.91 0 0 0 0 0",
                         "其他 0 0 4 0 2 -2 0"}));
  insertRow("jxc_ghsxx", {{"ghs_sn", u"S3"}, {"ghs_name", u"S3"}});
  EXPECT_EQ(answer(supplierTrade, {.boxes = kEverySupplier}).rowCount(), 5);
  EXPECT_NEAR(answer(supplierTrade, {.partner = u"S1"_qs}).front().number("wcl"), 15.38, 1e-9);
  EXPECT_EQ(answer(supplierTrade, {.partner = u"其他"_qs}).front().number("wcl"), 0);
  EXPECT_EQ(figures(supplierGoods, "g_sn", {.partner = u"S1"_qs}), QStringList({"A 13 158.2 2 60 21.33 38.67 64.45"}));
  EXPECT_EQ(figures(supplierLines, "gl_kdrq", {.partner = u"其他"_qs}), QStringList({"2021-05-10 0 0 4 0 2 -2 0"}));
}

TEST_F(TradeTotals, LinesBesideAListOfDocumentsGoByItsCriteriaAndKeepTheWholeMargin) {
  execSql("update jxc_goodslist set gl_djh='XS0000000001',gl_chkrq='2021-06-09' where gl_kdrq='2021-05-10'");
  const auto margins = [](const Criteria& criteria) {
    QStringList all;
    for (const Row row : answer(documentSales, criteria))
      all << row.text("g_sn") + u' ' + QString::number(row.number("lrl"), 'f', 3);
    return all.join(u", "_qs);
  };
  EXPECT_EQ(margins({.descending = true}), "A 64.433, 00000000 100.000, B 0.000, A 64.444");
  EXPECT_EQ(margins({.kind = u"XT"_qs}), "A 64.433");
  EXPECT_EQ(margins({.document = u"s0000"_qs}), "B 0.000");
  EXPECT_EQ(margins({.key = u"k2"_qs}), "00000000 100.000");
  EXPECT_EQ(margins({.group = u"镜架b"_qs}), "B 0.000");
  EXPECT_EQ(margins({.from = u"2021-06-01"_qs, .to = u"2021-06-30"_qs, .order = u"chkrq"_qs}), "B 0.000");
  EXPECT_EQ(margins({.from = u"2030-01-01"_qs, .to = u"2030-01-01"_qs, .key = u"xs0000000001"_qs}), "B 0.000");
  EXPECT_EQ(margins({.boxes = kUnpaidOnly}), "");  // no document of these lines is unpaid
}

// What an operator may type, meet or be: an empty answer, never an error.
TEST_F(TradeTotals, WhatCannotBeFoundGivesNoRows) {
  using enum PartnerType;
  std::vector<Source> sources{tradeLinesOf<Customer>, goodsRanking,  stockTurn,     supplierTrade,
                              supplierGoods,          supplierLines, documentSales, stockMovements};
  sources.insert(sources.end(),
                 {tradeTotalsOf<Customer, TradeBy::Goods>, tradeTotalsOf<Supplier, TradeBy::GoodsClass>,
                  tradeTotalsOf<Customer, TradeBy::PartnerClass>, tradeTotalsOf<Customer, TradeBy::Region>,
                  tradeTotalsOf<Customer, TradeBy::Employee>, tradeTotalsOf<Supplier, TradeBy::Day>,
                  tradeTotalsOf<Customer, TradeBy::PartnerGoodsMonth>});
  const Criteria asked[] = {{.from = u"2021-06-30"_qs, .to = u"2021-05-01"_qs},
                            {.from = u"2021-06"_qs, .to = u"2021-05"_qs},
                            {.from = u"1999-01-01"_qs, .to = u"1999-12-31"_qs},
                            {.key = u"%_'*["_qs},
                            {.warehouse = u"gone"_qs}};
  for (std::size_t i = 0; i < sources.size(); ++i) {
    for (const Criteria& criteria : asked)
      EXPECT_TRUE(answer(sources[i], criteria).isEmpty()) << i << ' ' << &criteria - asked;
    EXPECT_FALSE(answer(sources[i], {}).isEmpty()) << i;
  }
  row("xs", "2021-05-01", "A", "K1", {1, 1e12, 0.01, 0, 0});
  EXPECT_EQ(answer(tradeTotalsOf<Customer, TradeBy::Goods>, {.goods = u"A"_qs}).front().number("zje"), 1e12 + 60.01);
  execSql("update jxc_xtcs set cs_cgyh=1");
  becomeOperator(QStringLiteral("店员"), QStringLiteral("100099"), QStringLiteral("100077"));  // of no warehouse
  for (std::size_t i = 0; i < sources.size(); ++i)
    EXPECT_TRUE(answer(sources[i], {}).isEmpty()) << i;
}

TEST_F(TradeTotals, ARankingByProfitIsForWhoSeesCost) {
  insertRow("jxc_kcsp", {{"g_sn", "A"}, {"ck_sn", test::mainWarehouse}, {"kc_sl", 7.0}});
  const auto ranking = [](const QString& order) {
    return test::textsOf(answer(goodsRanking, {.order = order}), {"g_sn", "kcsl"}).join(u", "_qs);
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
    return test::textsOf(answer(stockTurn, criteria), {"g_sn", "cgsl", "xssl", "kcsl", "zzbl"}).join(u", "_qs);
  };
  EXPECT_EQ(turn({}), "B 1 4 0 400, A 13 2 7 10");
  EXPECT_EQ(turn({.to = u"2021-05-31"_qs}), "A 13 2 7 10");
  EXPECT_EQ(turn({.to = u"2021-05-31"_qs, .boxes = kTurnOfAllGoods}), "A 13 2 7 10, B 0 4 0 0");
  EXPECT_EQ(turn({.order = u"cgsl"_qs}), "A 13 2 7 10, B 1 4 0 400");
}

/// Quantity, net and total.
using Figures = std::array<double, 3>;
using ByKey = std::map<QString, Figures>;

class TradeOfAShop : public test::AccountSetFixture {
 protected:
  TradeOfAShop() {
    dataModule().installAccountDb(test::openEmpty(test::Story::Long));
    buildDemoShop({.months = 1, .seed = 5, .goods = 60, .documentsADay = 10, .lastDay = QDate(2021, 8, 31)});
  }
  /// Adds up the lines of documents, and what a payment was rounded off by, by whatever `keyOf` makes of goods, day and
  /// partner.
  template <class KeyOf>
  static ByKey ofDocuments(PartnerType side, std::initializer_list<std::pair<const DocumentFamily*, double>> families,
                           KeyOf keyOf) {
    ByKey all;
    for (const Row row : openSelect("select k_ghskh,k_rq,k_yfje from jxc_ysyfk where k_type=? and k_note like "
                                    "'%抹零登记%'",
                                    side == PartnerType::Supplier ? u"ghs"_qs : u"kh"_qs)) {
      Figures& sum = all[keyOf(u"00000000"_qs, row.text("k_rq").left(10), row.text("k_ghskh"))];
      sum[1] += row.number("k_yfje");
      sum[2] += row.number("k_yfje");
    }
    for (const auto& [f, sign] : families) {
      const LineColumns& c = *f->line.columns;
      for (const Row row : openSelect(
               compose("select b.g_sn as goods,a.{} as day,a.{} as partner,b.{} as sl,b.{} as je,b.{} as zje from {} a,"
                       "{} b where a.{}=b.{} and a.{}=1",
                       {f->date, f->partner, c.quantity, c.net, c.total, f->head, f->lines, f->number, f->number,
                        f->status}))) {
        Figures& sum = all[keyOf(row.text("goods"), row.text("day").left(10), row.text("partner"))];
        for (const auto& [at, column] : {std::pair(0U, "sl"), {1U, "je"}, {2U, "zje"}})
          sum[at] += sign * row.number(column);
      }
    }
    return all;
  }
  static void expectSame(const ByKey& expected, PartnerType side, TradeBy by, const char* key) {
    const RowSet rows = openSelect(tradeTotals(side, by, {}, Warehouses({})));
    EXPECT_EQ(rows.rowCount(), static_cast<int>(expected.size()));
    for (const Row row : rows) {
      const auto found = expected.find(row.text(key));
      ASSERT_NE(found, expected.end()) << row.text(key).toStdString();
      EXPECT_NEAR(row.number("sl"), found->second[0], 1e-6) << row.text(key).toStdString();
      EXPECT_NEAR(row.number("je"), found->second[1], 1e-6) << row.text(key).toStdString();
      EXPECT_NEAR(row.number("zje"), found->second[2], 1e-6) << row.text(key).toStdString();
    }
  }
};

TEST_F(TradeOfAShop, IsWhatTheLinesOfItsDocumentsAddUpTo) {
  const std::map<QString, QString> classes = [] {
    std::map<QString, QString> of;
    for (const Row row : openSelect("select g_sn,gc_sn from jxc_goods where gc_sn in (select gc_sn from jxc_goodsclass "
                                    "where gc_sn<>'')"))
      of[row.text("g_sn")] = row.text("gc_sn");
    return of;
  }();
  const auto hold = [&](PartnerType side, std::initializer_list<std::pair<const DocumentFamily*, double>> families) {
    const auto agree = [&](TradeBy by, const char* key, const auto& keyOf) {
      SCOPED_TRACE(testing::Message() << static_cast<int>(side) << " by " << static_cast<int>(by));
      const ByKey all = ofDocuments(side, families, keyOf);
      EXPECT_GT(all.size(), by == TradeBy::Month ? 0U : 3U);
      expectSame(all, side, by, key);
    };
    agree(TradeBy::Goods, "g_sn", [](const QString& goods, const QString&, const QString&) { return goods; });
    agree(TradeBy::GoodsClass, "gc_sn", [&](const QString& goods, const QString&, const QString&) {
      return classes.contains(goods) ? classes.at(goods) : u"其他"_qs;
    });
    agree(TradeBy::Partner, "ghs_sn", [](const QString&, const QString&, const QString& partner) { return partner; });
    agree(TradeBy::Month, "tjrq", [](const QString&, const QString& day, const QString&) { return day.left(7); });
    agree(TradeBy::PartnerGoodsDay, "rowkey", [](const QString& goods, const QString& day, const QString& partner) {
      return day + goods + u'/' + partner;
    });
  };
  hold(PartnerType::Supplier, {{&families::purchaseReceipt, 1}, {&families::purchaseReturn, -1}});
  hold(PartnerType::Customer, {{&families::sale, 1}, {&families::saleReturn, -1}});
}

}  // namespace jxc::trade_totals_test
