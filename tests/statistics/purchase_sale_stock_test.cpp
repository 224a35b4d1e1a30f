// 进销存统计: a month worked out by hand, and random ledgers beside the statements with which such shops have always
// made this list, run as they stand with their working tables. JXC_HISTORIES=200 runs as many instead of the few that
// the suite takes.
#include "statistics/purchase_sale_stock.h"

#include "core/data_module.h"
#include "server/test_engine.h"
#include "stock/shop.h"

#include <QDate>
#include <QFile>
#include <QTemporaryDir>

#include <cstdlib>
#include <functional>
#include <random>
#include <thread>

namespace jxc::purchase_sale_stock_test {

const std::vector<std::string> kSummed{"gl_kc", "gl_kczje", "rksl", "rkzje", "cksl", "ckzje", "glkc", "glkczje"};
const std::vector<std::string> kOfLines{"rkdj", "rksl", "rkje", "ckdj", "cksl", "ckje"};

/// The text of a row's cells, numbers to six decimals.
QString cells(const Row& row, const std::vector<std::string>& texts, const std::vector<std::string>& numbers) {
  QStringList all;
  for (const std::string& name : texts)
    all << row.text(name);
  for (const std::string& name : numbers)
    all << numberText(std::round(row.number(name) * 1e6) / 1e6 + 0.0);
  return all.join(u' ');
}
QStringList cellsOf(const RowSet& rows, const std::vector<std::string>& texts,
                    const std::vector<std::string>& numbers) {
  QStringList all;
  for (const Row row : rows)
    all << cells(row, texts, numbers);
  return all;
}
QStringList summaryOf(const Criteria& criteria) {
  return cellsOf(answer(stockSummary, criteria), {"g_sn"}, kSummed);
}

// ---- the statements as they always were ----

/// With two readings: a key is looked for in the catalogue, and the last day is whole.
class Classic {
 public:
  explicit Classic(const Criteria& criteria, bool isBound) : asked_(criteria) {
    period_ = " and gl_kdrq>='" + text(criteria.from) + "' and gl_kdrq<='" + text(criteria.to) + " 23:59:59' ";
    if (!criteria.key.isEmpty()) {
      const std::string how = criteria.exact ? "='" + text(criteria.key) + "'" : " like '%" + text(criteria.key) + "%'";
      for (const char* column : {"g_sn", "g_jm", "g_name", "gg_name"})
        key_ += (key_.empty() ? "" : " or ") + std::string(column) + how;
    }
    if (!criteria.warehouse.isEmpty()) place_ = " and a.ck_sn='" + text(criteria.warehouse) + "' ";
    if (isBound) place_ += " and m.ck_asn like '%100099%' ";
  }

  QStringList summary() const {
    const bool atCost = asked_.has(kAtCost);
    execSql("delete from jxc_jxchz where a_name='admin'");
    add("sum(0),sum(0),sum(0),sum(gl_je),sum(0),sum(0)", "g_sn='00000000' and gl_flag='cj'");
    add("sum(0),sum(0),sum(0),sum(0),sum(0),sum(gl_je)", "g_sn='00000000' and gl_flag='xs'");
    const std::string in = "sum(0),sum(0),sum(abs(gl_sl)),sum(abs(gl_je)),sum(0),sum(0)",
                      out = "sum(0),sum(0),sum(0),sum(0),sum(abs(gl_sl)),sum(abs(gl_je))",
                      goods = " and g_sn<>'00000000'";
    add(in, std::string("(gl_flag='cj'") + (atCost ? "" : " or gl_flag='xt'") +
                " or gl_flag='lt' or gl_flag='sc' or gl_flag='jg' or gl_flag='ws' or gl_flag='by' or gl_flag='db' and "
                "gl_sl>0 or gl_flag='cf' and gl_sl>0 or gl_flag='kb' and gl_sl>0" +
                (atCost ? "" : " or gl_flag='xs' and gl_sl<0") + " or gl_flag='hh')" + goods);
    add("sum(0),sum(0),sum(gl_sl),sum(gl_je),sum(0),sum(0)", "(gl_flag='pd' or gl_flag='qc')" + goods);
    add(out, std::string("(") + (atCost ? "" : "gl_flag='xs' and gl_sl>0 or ") +
                 "gl_flag='ct' or gl_flag='ly' or gl_flag='st' or gl_flag='pl' or gl_flag='wp' or gl_flag='bs' or "
                 "gl_flag='db' and gl_sl<0 or gl_flag='cf' and gl_sl<0 or gl_flag='kb' and gl_sl<0 or gl_flag='wt' or "
                 "gl_flag='dh' or gl_flag='bf' or gl_flag='jh')" +
                 goods);
    if (atCost) {
      add("sum(0),sum(0),sum(abs(gl_sl)),sum(abs(gl_zcb)),sum(0),sum(0)",
          "(gl_flag='xt' or gl_flag='xs' and gl_sl<0)" + goods);
      add("sum(0),sum(0),sum(0),sum(0),sum(abs(gl_sl)),sum(abs(gl_zcb))", "(gl_flag='xs' and gl_sl>0)" + goods);
    }
    addLast("0,0,0,0,0,0,gl_kc,gl_kczje", asked_.has(kMovedOnly) ? period_ : upTo());
    addLast(
        "gl_kc,gl_kczje,0,0,0,0,0,0",
        " and gl_kdrq<'" + text(asked_.from) + "' " +
            (asked_.has(kMovedOnly) ? "and g_sn in (select distinct g_sn from jxc_jxchz where a_name='admin') " : ""));
    return cellsOf(
        openSelect(
            "select k.*,c.gc_name,b.g_name,b.dw_name,b.gg_name,b.color_name from (select g_sn,sum(hz_kc) as gl_kc,"
            "sum(hz_kczje) as gl_kczje,sum(hz_rksl) as rksl,sum(hz_rkzje) as rkzje,sum(hz_cksl) as cksl,"
            "sum(hz_ckzje) as ckzje,sum(hz_glkc) as glkc,sum(hz_glkczje) as glkczje from jxc_jxchz where "
            "a_name='admin' group by g_sn) k,jxc_goods b,jxc_goodsclass c where k.g_sn=b.g_sn and b.gc_sn=c.gc_sn" +
            ofGoods("b") + " order by b.g_sn"),
        {"g_sn"}, kSummed);
  }

  QStringList lines() const {
    struct Branch {
      const char *note, *condition, *in, *out;
    };
    const bool atCost = asked_.has(kAtCost);
    const char *straight = "gl_dj,gl_sl,gl_zje", *turned = "gl_dj,-1*gl_sl,-1*gl_zje", *trade = "gl_dj,gl_sl,gl_je",
               *tradeTurned = "gl_dj,-1*gl_sl,-1*gl_je", *none = "0,0,0";
    const Branch branches[] = {
        {"期初数", "gl_flag='qc' and gl_sl<>0", straight, none},
        {"采购入库单", "gl_flag='cj'", trade, none},
        {"采购退货单", "gl_flag='ct'", none, tradeTurned},
        {"商品销售单", "gl_flag='xs' and gl_sl>=0", none, atCost ? "gl_cbj,gl_sl,gl_zcb" : trade},
        {"顾客退货单", "(gl_flag='xt' or gl_flag='xs' and gl_sl<0)",
         atCost ? "gl_cbj,-1*gl_sl,abs(gl_zcb)" : tradeTurned, none},
        {"库存盘点单", "gl_flag='pd'", straight, none},
        {"库存调拨入库", "gl_flag='db' and gl_sl>0", straight, none},
        {"库存调拨出库", "gl_flag='db' and gl_sl<0", none, turned},
        {"商品报损", "gl_flag='bs'", none, turned},
        {"商品报溢", "gl_flag='by'", straight, none},
        {"被拆分出库", "gl_flag='cf' and gl_sl<0", none, turned},
        {"拆分入库", "gl_flag='cf' and gl_sl>0", straight, none},
        {"被捆绑出库", "gl_flag='kb' and gl_sl<0", none, turned},
        {"捆绑入库", "gl_flag='kb' and gl_sl>0", straight, none},
        {"积分换赠品", "gl_flag='dh'", none, trade},
        {"生产入库单", "gl_flag='sc'", straight, none},
        {"次品返工单", "gl_flag='st'", none, turned},
        {"部门领用单", "gl_flag='ly'", none, straight},
        {"部门退回单", "gl_flag='lt'", turned, none},
        {"加工入库", "gl_flag='jg'", straight, none},
        {"配料出库", "gl_flag='pl'", none, turned},
        {"外发加工收货", "gl_flag='ws'", straight, none},
        {"外发配料消耗", "gl_flag='wp'", none, turned},
        {"外发配料调整", "gl_flag='wt'", none, turned},
        {"客户借货", "gl_flag='jh'", none, straight},
        {"客户还货", "gl_flag='hh'", straight, none}};
    EXPECT_EQ(std::size(branches), 26u);
    struct Line {
      QString warehouse, goods, date, text;
      std::int64_t id;
    };
    std::vector<Line> all;
    for (const Branch& each : branches)
      for (const Row row : openSelect(
               "select '" + std::string(each.note) + "' as dnote,x.id,m.ck_name,x.g_sn,x.gl_kdrq," +
               named(each.in, {"rkdj", "rksl", "rkje"}) + "," + named(each.out, {"ckdj", "cksl", "ckje"}) +
               " from jxc_goodslist x,jxc_goods y,jxc_goodsclass z,jxc_ckxx m where x.g_sn=y.g_sn and y.gc_sn=z.gc_sn "
               "and x.ck_sn=m.ck_sn and " +
               each.condition + period_ + place("x") + ofGoods("y")))
        all.push_back({row.text("ck_name"), row.text("g_sn"), row.text("gl_kdrq"),
                       cells(row, {"dnote", "id", "g_sn"}, kOfLines), row.integer("id")});
    std::ranges::sort(all, {}, [](const Line& line) {
      return std::tuple(line.warehouse.toUtf8(), line.goods.toUtf8(), line.date.toUtf8(), line.id);
    });
    QStringList texts;
    for (const Line& line : all)
      texts << line.text;
    return texts;
  }

 private:
  static std::string text(const QString& value) { return value.toStdString(); }
  std::string upTo() const { return " and gl_kdrq<='" + text(asked_.to) + " 23:59:59' "; }
  /// "gl_dj,-1*gl_sl,0" with the names of the columns.
  static std::string named(std::string list, const std::vector<std::string>& names) {
    std::string result;
    for (const std::string& name : names) {
      const std::size_t comma = list.find(',');
      result += (result.empty() ? "" : ",") + list.substr(0, comma) + " as " + name;
      list.erase(0, comma == std::string::npos ? comma : comma + 1);
    }
    return result;
  }
  std::string place(const std::string& alias) const {
    std::string result = place_;
    if (const auto at = result.find("a.ck_sn="); at != std::string::npos) result.replace(at, 1, alias);
    return result;
  }
  std::string ofGoods(const std::string& alias) const {
    std::string conditions;
    if (!key_.empty()) conditions = " and " + alias + ".g_sn in (select g_sn from jxc_goods where " + key_ + ")";
    if (!asked_.goodsClass.isEmpty()) conditions += " and " + alias + ".gc_sn like '" + text(asked_.goodsClass) + "%'";
    return conditions;
  }
  std::string keyed() const {
    return key_.empty() ? "" : " and g_sn in (select g_sn from jxc_goods where " + key_ + ")";
  }
  void add(const std::string& columns, const std::string& condition) const {
    execSql(
        "insert into jxc_jxchz (g_sn,hz_kc,hz_kczje,hz_rksl,hz_rkzje,hz_cksl,hz_ckzje,hz_glkc,hz_glkczje,a_name) "
        "select g_sn," +
        columns + ",sum(0),sum(0),'admin' from jxc_goodslist a,jxc_ckxx m where a.ck_sn=m.ck_sn and " + condition +
        period_ + place_ + keyed() + " group by g_sn");
  }
  void addLast(const std::string& columns, const std::string& dates) const {
    execSql("delete from jxc_tempspxf where a_name='admin'");
    execSql(
        "insert into jxc_tempspxf (rid,a_name) select max(x.id),'admin' from jxc_goodslist x,(select max(gl_kdrq) as "
        "kdrq,g_sn,a.ck_sn from jxc_goodslist a,jxc_ckxx m where a.ck_sn=m.ck_sn and g_sn<>'00000000' " +
        place_ + keyed() + dates +
        " group by g_sn,a.ck_sn) y where x.g_sn=y.g_sn and x.ck_sn=y.ck_sn and "
        "x.gl_kdrq=y.kdrq group by x.g_sn,x.ck_sn");
    execSql(
        "insert into jxc_jxchz (g_sn,hz_kc,hz_kczje,hz_rksl,hz_rkzje,hz_cksl,hz_ckzje,hz_glkc,hz_glkczje,a_name) "
        "select g_sn," +
        columns +
        ",'admin' from jxc_goodslist where id in (select rid from jxc_tempspxf where "
        "a_name='admin')");
  }

  Criteria asked_;
  std::string period_, key_, place_;
};

class PurchaseSaleStock : public test::ShopTest {
 protected:
  PurchaseSaleStock() {
    insertRow("jxc_goodsclass", {{"gc_sn", "1901"}, {"gc_name", "镜架类"}});
    insertRow("jxc_goodsclass", {{"gc_sn", "1902"}, {"gc_name", "镜片类"}});
  }
  static void warehouse(const char* sn, const char* name, const char* operators) {
    insertRow("jxc_ckxx", {{"ck_sn", sn}, {"ck_name", name}, {"ck_asn", operators}});
  }
  /// A ledger row as a document posts it, with the figures that follow; all rows of trade without tax.
  std::int64_t post(const char* flag, const char* date, double quantity, double price, double cost = 0,
                    const char* goods = "A", double money = 0) {
    const double amount = money != 0 ? money : quantity * price;
    const std::int64_t id = ledgerRow(flag, date, quantity, amount, price, goods);
    updateRow("jxc_goodslist", id,
              {{"g_name", "镜架(赠品)"}, {"gl_zje", amount}, {"gl_cbj", cost}, {"gl_zcb", cost * quantity}});
    if (!exists("select id from jxc_kcsp where g_sn=? and ck_sn=?", goods, test::mainWarehouse))
      insertRow("jxc_kcsp", {{"g_sn", goods}, {"ck_sn", test::mainWarehouse}, {"kc_sl", 0.0}, {"kc_zsl", 0.0}});
    if (std::string(goods) != "00000000") replayLedger(id);
    return id;
  }
};

TEST_F(PurchaseSaleStock, AMonthOfOneGoodsWorkedOutByHand) {
  addGoods("A", 8);
  addGoods("B", 5);
  execSql("update jxc_goods set gc_sn='1901' where g_sn in ('A','B')");
  post("qc", "2021-04-20", 10, 8);                // 10 pieces, 80.00
  post("qc", "2021-04-21", 6, 5, 0, "B");         // moves no more
  post("cj", "2021-05-02", 5, 11);                // 15 of 9.00
  post("xs", "2021-05-05", 3, 20, 9);             // 12
  post("xs", "2021-05-06", -1, 20, 9);            // 13, taken back on a sale
  post("pd", "2021-05-10", -2, 9);                // 11, and the average stays: (117 + 18) / (13 + 2)
  post("db", "2021-05-12", 4, 12);                // 15 of (99 + 48) / 15 = 9.80
  post("xs", "2021-05-31 14:30:00", 2, 20, 9.8);  // 13, 127.40; sold with its time on the last day
  post("xs", "2021-05-31", 0, 0, 0, "00000000", -5);
  post("cj", "2021-06-02", 7, 10);  // a later receipt
  Criteria may{.from = u"2021-05-01"_qs, .to = u"2021-05-31"_qs};
  EXPECT_EQ(summaryOf(may),
            QStringList({"00000000 0 0 0 0 0 -5 0 0", "A 10 80 8 105 5 100 13 127.4", "B 6 30 0 0 0 0 6 30"}));
  may.boxes = kAtCost;
  EXPECT_EQ(summaryOf(may)[1], "A 10 80 8 94 5 46.6 13 127.4");
  may.boxes = kMovedOnly;
  EXPECT_EQ(summaryOf(may), QStringList({"00000000 0 0 0 0 0 -5 0 0", "A 10 80 8 105 5 100 13 127.4"}));
  const auto lines = [](Criteria asked) { return cellsOf(answer(stockMovements, asked), {"dnote"}, kOfLines); };
  may = {.from = may.from, .to = may.to, .goods = u"A"_qs};
  EXPECT_EQ(lines(may),
            QStringList({"采购入库单 11 5 55 0 0 0", "商品销售单 0 0 0 20 3 60", "顾客退货单 20 1 20 0 0 0",
                         "库存盘点单 9 -2 -18 0 0 0", "库存调拨入库 12 4 48 0 0 0", "商品销售单 0 0 0 20 2 40"}));
  may.boxes = kAtCost;
  EXPECT_EQ(lines(may)[2], "顾客退货单 9 1 9 0 0 0");
  EXPECT_EQ(lines(may)[5], "商品销售单 0 0 0 9.8 2 19.6");
  may.goods = u"00000000"_qs;
  EXPECT_EQ(lines({.from = may.from, .to = may.to, .goods = u"00000000"_qs}), QStringList({"商品销售单 0 0 0 0 0 -5"}));
  EXPECT_EQ(cellsOf(answer(openingStock, {}), {"g_sn", "dnote"}, {"rkdj", "rksl", "rkje"}),
            QStringList({"A 期初数 8 10 80", "B 期初数 5 6 30"}));

  // Who must not see sale prices gets sales at cost, asked for or not.
  QString rights(60, u'1');
  rights[kSeesPrice.position - 1] = u'0';
  setRights(QStringLiteral("100077"), "qtcz", rights);
  becomeOperator(QStringLiteral("店员"), QStringLiteral("100099"), QStringLiteral("100077"));
  EXPECT_EQ(summaryOf({.from = may.from, .to = may.to, .goods = u"A"_qs})[0], "A 10 80 8 94 5 46.6 13 127.4");
}

TEST_F(PurchaseSaleStock, RandomLedgersAreSummedAndListedAsTheyAlwaysWere) {
  const char* const wanted = std::getenv("JXC_HISTORIES");
  const int histories = wanted ? std::atoi(wanted) : 40;
  for (const char* goods : {"A", "B", "a", "AB"})
    addGoods(goods, 5);
  execSql("update jxc_goods set gc_sn=iif(g_sn='A' or g_sn='AB','1901','1902'),gg_name='52□18'");
  insertRow("jxc_ckxx", {{"ck_sn", "100002"}, {"ck_name", "分店"}, {"ck_asn", "100099,"}});
  insertRow("jxc_ckxx", {{"ck_sn", "100003"}, {"ck_name", "仓库"}, {"ck_asn", "100099,100098,"}});
  setRights(QStringLiteral("100077"), "qtcz", QString(60, u'1'));
  const std::vector<const char*> goods{"A", "A", "B", "a", "AB", "00000000"},
      places{"100001", "100001", "100002", "100003", "100009"},  // of the last one nobody knows any more
      flags{"qc", "cj", "ct", "xs", "xs", "xt", "pd", "db", "bs", "by", "cf", "kb", "dh", "sc",
            "st", "ly", "lt", "jg", "pl", "ws", "wp", "wt", "jh", "hh", "bh", "bf", "zz"};
  std::mt19937 random(20210503);
  const auto upTo = [&](int most) { return std::uniform_int_distribution<>(0, most)(random); };
  const auto any = [&](const auto& list) {
    return list[static_cast<std::size_t>(upTo(static_cast<int>(list.size()) - 1))];
  };
  const auto day = [&] { return QDate(2021, 4, 1).addDays(upTo(60)).toString(Qt::ISODate); };
  for (int history = 0; history < histories; ++history) {
    SCOPED_TRACE(history);
    execSql("delete from jxc_goodslist");
    execSql("delete from jxc_kcsp");
    const auto number = [&](int most) { return (upTo(2 * most) - most) * (upTo(3) == 0 ? 0.1 : 1); };
    for (int row = 0, rows = 10 + upTo(60); row < rows; ++row)
      insertRow("jxc_goodslist",
                {{"gl_flag", any(flags)},
                 {"gl_kdrq", day() + (upTo(2) == 0 ? u" 14:30:0"_qs + QString::number(upTo(9)) : u""_qs)},
                 {"g_sn", any(goods)},
                 {"g_name", "镜架(赠品)"},
                 {"ck_sn", any(places)},
                 {"gl_sl", number(3)},
                 {"gl_dj", number(40)},
                 {"gl_je", number(90)},
                 {"gl_zje", number(100)},
                 {"gl_cbj", number(30)},
                 {"gl_zcb", number(80)},
                 {"gl_kc", number(50)},
                 {"gl_kczje", number(500)}});
    // Wherever goods moved they have a balance; some have one where they never did.
    execSql("insert into jxc_kcsp (g_sn,ck_sn) select distinct g_sn,ck_sn from jxc_goodslist");
    execSql("insert into jxc_kcsp (g_sn,ck_sn) values ('B','100003')");
    Criteria asked{.from = day(), .to = day()};
    if (asked.from > asked.to) std::swap(asked.from, asked.to);
    if (upTo(2) == 0) asked.warehouse = QString::fromLatin1(any(places));
    if (upTo(2) == 0) asked.goodsClass = any(std::vector{u"1901"_qs, u"19"_qs, u"1902"_qs});
    if (upTo(1) == 0)
      asked.key = any(std::vector{u"a"_qs, u"A"_qs, u"镜架A"_qs, u"52"_qs, u"JJ"_qs, u"优惠"_qs, u"赠品"_qs});
    asked.exact = upTo(3) == 0;
    asked.boxes = static_cast<unsigned>(upTo(3));
    const bool isBound = upTo(3) == 0;
    setParameter("cs_cgyh", isBound ? 1 : 0);
    becomeOperator(QStringLiteral("店员"), QStringLiteral("100099"), QStringLiteral("100077"));
    const Classic classic(asked, isBound);
    EXPECT_EQ(cellsOf(answer(stockMovements, asked), {"dnote", "id", "g_sn"}, kOfLines), classic.lines());
    const QStringList summed = summaryOf(asked);
    EXPECT_EQ(summed, classic.summary());
    // A balance that is missing where goods moved is noticed.
    asked = {.from = asked.from, .to = asked.to, .boxes = asked.boxes};
    setParameter("cs_cgyh", 0);
    if (exists("select id from jxc_goodslist where gl_kdrq>=? and gl_kdrq<=? and g_sn='A' and ck_sn='100001'",
               asked.from, asked.to + u" 23:59:59"_qs)) {
      execSql("delete from jxc_kcsp where g_sn='A'");
      EXPECT_EQ(summaryOf(asked), Classic(asked, false).summary());
    }
    if (HasFailure()) break;
  }
}

// What another station does while the summary is made: it posts, takes an article away, and closes the account set.
TEST_F(PurchaseSaleStock, IsOfOneMomentWhateverAnotherStationDoes) {
  QTemporaryDir folder;
  const QString file = folder.filePath(u"jxc.mdb"_qs);
  if (test::onServer()) {
    dataModule().installAccountDb(test::openFresh(test::Story::Long));
  } else {
    accountDb().backupTo(file);
    dataModule().installAccountDb(openSqlite(file));
  }
  loadSession();
  addGoods("A", 8);
  addGoods("B", 8);
  post("qc", "2021-04-20", 10, 8);
  post("cj", "2021-05-02", 5, 11);
  post("cj", "2021-05-02", 1, 11, 0, "B");
  const Criteria all{.from = u"2021-05-01"_qs, .to = u"2021-05-31"_qs};
  const Computation summary = stockSummary(all, Warehouses(all));
  /// The summary of a window, where the other station does this between the flows and the last rows.
  const auto whileOther = [&](const std::function<void(Database & other)>& does) {
    const std::unique_ptr<Database> window = accountDb().openReader();
    EnquiryReader asking(*window, [&, done = false](int percent) mutable {
      if (percent < 80 || done) return true;
      done = true;
      std::thread station([&] { does(*(test::onServer() ? test::openAgain() : openSqlite(file))); });
      station.join();
      return true;
    });
    asking.holdMoment();
    return cellsOf(summary(asking), {"g_sn"}, kSummed);
  };
  const QStringList before{"A 10 80 5 55 0 0 15 135", "B 0 0 1 11 0 0 1 11"};
  EXPECT_EQ(whileOther([](Database& other) {
              Transaction transaction(other);
              other.execute(
                  "insert into jxc_goodslist (gl_flag,gl_kdrq,g_sn,ck_sn,gl_sl,gl_je,gl_zje,gl_kc,gl_kczje) values "
                  "('xs','2021-05-03','A','100001',2,40,40,13,117)");
              other.execute("delete from jxc_goods where g_sn='B'");
              transaction.commit();
            }),
            before);
  const QStringList after{"A 10 80 5 55 2 40 13 117"};
  EXPECT_EQ(summaryOf(all), after);
  EXPECT_FALSE(exists("select id from jxc_jxchz") || exists("select id from jxc_tempspxf"));

  // The account set is closed over it: its connections are cut, or its file is taken away. That is said, nothing is
  // told by half, and the summary comes again once the account set is there.
  EXPECT_THROW(whileOther([&](Database&) {
                 if (test::onServer()) return test::cutConnections();
                 ASSERT_TRUE(QFile::rename(file, file + u'x'));
               }),
               DbError);
  ASSERT_TRUE(test::onServer() || QFile::rename(file + u'x', file));
  EXPECT_EQ(whileOther([](Database&) {}), after);
}

}  // namespace jxc::purchase_sale_stock_test
