// What employees earn: two of them worked out by hand over real documents, and the working table's own statements, run
// one by one over random books, beside the rule that needs no table.
#include "statistics/commission.h"

#include "accounts/partner_documents.h"
#include "sales/sale.h"
#include "statistics/employee_totals.h"
#include "statistics/trade_totals.h"
#include "stock/shop.h"

#include <cmath>
#include <map>
#include <random>

namespace jxc::commission_test {

const QString kGift = QString::fromUtf16(sale::giftMark);

class Commission : public test::ShopTest {
 protected:
  static void addEmployee(const char* number, const char* name, int way, double percent, double threshold = 0) {
    insertRow(
        "jxc_user",
        {{"u_sn", number}, {"u_name", name}, {"u_tcfs", way}, {"u_tc", percent}, {"u_zdlr", threshold}, {"u_jy", 0}});
  }
  /// "number kind due received profit beyond commission threshold rate" of each row.
  static QString earned(const Criteria& criteria = {}) {
    QStringList all;
    for (const Row row : answer(commissions, criteria)) {
      QStringList one{row.text("g_sn"), row.text("hz_flag")};
      for (const char* field : {"hz_kc", "hz_kczje", "hz_rksl", "hz_rkzje", "hz_ckzje", "hz_glkc", "hz_glkczje"})
        one << numberText(row.number(field));
      all << one.join(u' ');
    }
    return all.join(u'\n');
  }
  /// What the lines add up to: "number commission" of each employee.
  static std::map<QString, double> linesOf(const Criteria& criteria) {
    std::map<QString, double> sums;
    for (const Row row : answer(commissionLines, criteria))
      sums[row.text("u_sn")] += row.number("xstc") + row.number("lrtc");
    return sums;
  }
};

/// A shop where frames "G" and "H" earn by the employee's rule and care products "C" by their own.
class TwoEmployees : public Commission {
 protected:
  struct Sold {
    const char* goods;
    double quantity, price, discount = 1;
    bool gift = false;
  };
  TwoEmployees() {
    addEmployee("200001", "甲", 0, 5);
    addEmployee("200002", "乙", 1, 10, 20);
    for (const auto& [goods, cost] : {std::pair("G", 40.0), std::pair("H", 60.0), std::pair("C", 10.0)})
      addGoods(goods, cost);
    execSql("update jxc_goods set g_tclb=0");
    execSql("update jxc_goods set g_tclb=1 where g_sn='C'");
    receive("2021-05-01", {{"G", 50, 40}, {"H", 50, 60}, {"C", 50, 10}});
  }
  void give(const char* employee, const DocumentFamily& family, const QString& number) {
    execSql(compose("update {} set u_sn=? where gl_djh=?", {family.head}), employee, number);
    ASSERT_EQ(audit(number), AuditOutcome::Audited);
  }
  /// A sale of the employee, audited; the rest of what is due stays on account.
  void sellBy(const char* employee, const QString& date, const std::vector<Sold>& lines, double paid) {
    std::vector<Line> plain;
    for (const Sold& line : lines)
      plain.push_back({line.goods, line.quantity, line.price});
    const QString number = waitingSale(date, plain, paid);
    for (const Sold& line : lines) {
      const double net = line.quantity * line.price * line.discount;
      execSql("update jxc_lsxssp set ls_dzl=?,ls_je=?,ls_zje=?,t_zp=? where gl_djh=? and g_sn=? and ls_dj=?",
              line.discount, net, net, line.gift ? kGift : QString(), number, line.goods, line.price);
    }
    execSql("update jxc_lsxsd set ls_yfje=(select sum(ls_zje) from jxc_lsxssp where gl_djh=?) where gl_djh=?", number,
            number);
    give(employee, families::sale, number);
  }
  void takeBackFor(const char* employee, const QString& date, const std::vector<Line>& lines, double paid) {
    give(employee, families::saleReturn, waitingReturn(families::saleReturn, date, lines, paid));
  }
  void collect(const char* employee, const QString& date, double amount) {
    test::WhileAsked meant({});  // also a day long ago
    const auto number = partner_books::saveDocument(
        customerSide, partner_books::Kind::Payment,
        {.partner = customer(), .date = date, .amount = amount, .account = u"现金"_qs, .employee = employee}, meant);
    ASSERT_TRUE(number);
    ASSERT_TRUE(partner_books::checkSkDj(*number));
  }
};

TEST_F(TwoEmployees, BySalesIsPaidOnWhatWasReceivedWithoutGoodsThatHaveTheirOwn) {
  sellBy("200001", "2021-05-03", {{"G", 2, 100}}, 80);  // 120 stay open
  sellBy("200001", "2021-05-04", {{"G", 1, 100}, {"C", 1, 50}, {"C", 1, 30, 1, true}}, 180);
  execSql("update jxc_lsxssp set t_zp=null where ls_dj=50");  // as older account sets hold it
  collect("200001", "2021-05-20", 60);                        // of the 120
  collect("200002", "2021-05-21", 10);                        // whoever collects earns
  takeBackFor("200001", "2021-05-31 18:30:00", {{"G", 1, 100}, {"C", 1, 50}}, 150);
  // Due 200 + 180 - 50 - 150 + 50, received 80 + 180 - 50 + 60 - 150 + 50; the gift stays in although it was dear.
  const QString may = "200001 1001 230 170 0 0 8.5 0 5\n200001 1002 0 -60 0 0 -3 0 5";
  EXPECT_EQ(earned({.from = u"2021-05-01"_qs, .to = u"2021-05-31"_qs}), may);
  EXPECT_EQ(earned({.from = u"2021-05"_qs, .to = u"2021-05"_qs, .employee = u"200001"_qs}), may);
  EXPECT_EQ(earned({.employee = u"200002"_qs}), "");
  // Nothing is left open of these days: no row tells of it.
  EXPECT_EQ(earned({.from = u"2021-05-04"_qs, .to = u"2021-05-04"_qs}), "200001 1001 130 130 0 0 6.5 0 5");
  execSql("update jxc_user set u_tc=0 where u_sn='200001'");
  EXPECT_EQ(earned(), "");
}

TEST_F(TwoEmployees, ByProfitIsPaidOnEachPieceBeyondTheThreshold) {
  sellBy("200002", "2021-05-03", {{"H", 2, 100}}, 0);               // 40 a piece: 20 beyond
  sellBy("200002", "2021-05-04", {{"H", 1, 75}, {"C", 1, 50}}, 0);  // 15 a piece; and goods with their own
  sellBy("200002", "2021-05-05", {{"H", 1, 90, 0.85}}, 0);          // 30 before the discount, 16.5 after it
  sellBy("200002", "2021-05-06", {{"H", 1, 95, 1, true}}, 0);       // a gift
  takeBackFor("200002", "2021-05-31 18:30:00", {{"H", 1, 100}}, 0);
  // Profit 80 + 16.5 - 40; beyond 40 - 3.5 - 20.
  EXPECT_EQ(earned({.to = u"2021-05-31"_qs}), "200002 2001 0 0 56.5 16.5 1.65 20 10");
  execSql("update jxc_user set u_zdlr=0 where u_sn='200002'");
  EXPECT_EQ(earned({.to = u"2021-05-31"_qs}), "200002 2001 0 0 71.5 71.5 7.15 0 10");
}

/// Books that no rule made, small round amounts, two warehouses, of which the operator "店员" is bound to one.
class RandomCommission : public Commission {
 protected:
  RandomCommission() : random_(20210930) {
    addEmployee("200001", "甲", 0, 5);
    addEmployee("200002", "乙", 0, 2.5);
    addEmployee("200003", "丙", 1, 10, 0);
    addEmployee("200004", "丁", 1, 8, 20);
    addEmployee("200005", "戊", 0, 0);
    for (const char* goods : {"G", "H", "C", "D"})
      addGoods(goods, 10);
    execSql("update jxc_goods set g_tclb=iif(g_sn='C',1,iif(g_sn='D',3,0))");
    insertRow("jxc_ckxx", {{"ck_sn", "100002"}, {"ck_name", "分店"}, {"ck_asn", "100001,"}});
    execSql("update jxc_ckxx set ck_asn='100001,100099,' where ck_sn='100001'");
  }
  int upTo(int n) { return static_cast<int>(random_() % static_cast<unsigned>(n)); }
  double money() { return upTo(800) * 0.25; }
  QString date() {
    const QString day = u"2021-05-%1"_qs.arg(25 + upTo(7));
    return upTo(2) ? day : day + u" %1:30:00"_qs.arg(10 + upTo(12));
  }

  void document(int serial) {
    const bool sold = upTo(4) != 0;
    const DocumentFamily& family = sold ? families::sale : families::saleReturn;
    const int sign = sold ? 1 : -1;
    const QString number = words(family.prefix) + QString::number(2105000000 + serial), day = date(),
                  warehouse = upTo(3) ? test::mainWarehouse : u"100002"_qs;
    const int who = upTo(5);
    const QString employee = QString::number(200001 + who), name = u"甲乙丙丁戊"_qs.mid(who, 1);
    const bool audited = upTo(6) != 0;
    insertRow(family.head, {{family.number, number},
                            {family.warehouse, warehouse},
                            {"u_sn", employee},
                            {family.status, audited},
                            {family.date, day}});
    double due = 0;
    for (int line = 1 + upTo(3); line > 0; --line) {
      const char* goods = std::array{"G", "H", "C", "D"}[static_cast<std::size_t>(upTo(4))];
      const bool gift = sold && upTo(5) == 0;
      const double price = money(), quantity = 1 + upTo(3), discount = upTo(2) ? 1 : 0.75, cost = money() / 4,
                   total = price * discount * quantity;
      due += total;
      const std::int64_t id = insertRow(family.lines, {{family.number, number},
                                                       {"g_sn", goods},
                                                       {family.line.columns->quantity, quantity},
                                                       {family.line.columns->total, total}});
      if (sold) updateRow(family.lines, id, {{"t_zp", gift ? Value(kGift) : upTo(3) ? Value(QString()) : Value()}});
      if (!audited) continue;
      execSql(
          "insert into jxc_goodslist (gl_flag,gl_djh,gl_kdrq,g_sn,g_name,u_name,ck_sn,gl_dj,gl_dzl,gl_cbj,gl_sl,gl_lr) "
          "values (?,?,?,?,?,?,?,?,?,?,?,?)",
          sold ? "xs" : "xt", number, day, goods, gift ? u"镜架"_qs + kGift : u"镜架"_qs, name, warehouse, price,
          discount, cost, sign * quantity, sign * (price * discount - cost) * quantity);
    }
    if (audited)
      ledgerLine(number, words(family.prefix), employee, day, sign * due, upTo(3) ? sign * due : sign * money());
  }
  static void ledgerLine(const QString& number, const QString& kind, const QString& employee, const QString& day,
                         double due, double received, const char* side = "kh") {
    execSql("insert into jxc_ysyfk (gl_djh,k_djlx,k_type,u_sn,k_rq,k_yfje,k_sfje) values (?,?,?,?,?,?,?)", number, kind,
            side, employee, day, due, received);
  }
  void fill() {
    for (const char* table : {"jxc_goodslist", "jxc_ysyfk", "jxc_lsxsd", "jxc_lsxssp", "jxc_xsthd", "jxc_xsthsp"})
      execSql("delete from " + std::string(table));
    const int documents = 10 + upTo(40);
    for (int i = 0; i < documents; ++i) {
      document(i);
      const QString employee = QString::number(200001 + upTo(5)), serial = QString::number(2105000000 + i);
      if (upTo(3) == 0) ledgerLine(u"SK"_qs + serial, u"SK"_qs, employee, date(), 0, money());
      if (upTo(6) == 0) ledgerLine(u"YS"_qs + serial, u"YS"_qs, employee, date(), money(), 0);
      if (upTo(6) == 0) ledgerLine(u"FK"_qs + serial, u"FK"_qs, employee, date(), 0, money(), "ghs");
    }
  }

  /// The statements of the working table, one behind the other. But for the mark of a gift, which is asked for as it is
  /// stored, and the end of the period they are as they always were.
  RowSet byWorkingTable(const Criteria& criteria, const QString& bound) {
    const auto period = [&](const char* column) {
      return u" and %1>='%2' and %1<='%3 23:59:59'"_qs.arg(QLatin1String(column), criteria.from, criteria.to);
    };
    const QString warehouse = bound.isEmpty() ? QString() : u" and z.ck_asn like '%"_qs + bound + u"%'"_qs;
    const auto who = [&](const char* column) {
      return criteria.employee.isEmpty() ? QString() : u" and %1='%2'"_qs.arg(QLatin1String(column), criteria.employee);
    };
    const auto run = [](const QString& text) { execSql(text.toStdString()); };
    const QString into =
        u"insert into jxc_jxchz (g_sn,hz_txt1,hz_txt2,hz_flag,hz_kc,hz_kczje,hz_rksl,hz_rkzje,hz_cksl,hz_ckzje,hz_glkc,"
        "hz_glkczje,a_name) "_qs;
    run(u"delete from jxc_jxchz where a_name='admin'"_qs);
    const auto contribute = [&](const QString& amounts, const QString& from) {
      run(into + u"select a.u_sn,a.u_name,'业务员按销售额提成','101',"_qs + amounts +
          u",0,0,0,b.sfje*a.u_tc*0.01,0,a.u_tc,'admin' from jxc_user a,("_qs + from +
          u") b where a.u_sn=b.u_sn and a.u_tcfs=0 and a.u_tc>0 order by a.u_sn "_qs);
    };
    for (const auto& [head, status] : {std::pair("jxc_lsxsd", "ls_status"), std::pair("jxc_xsthd", "th_status")})
      contribute(u"b.yfje,b.sfje"_qs,
                 u"select x.u_sn,sum(x.k_yfje) as yfje,sum(x.k_sfje) as sfje from jxc_ysyfk x,%1 y,jxc_ckxx z where "
                 "x.gl_djh=y.gl_djh and y.ck_sn=z.ck_sn and x.k_type='kh' and y.%2=1"_qs.arg(QLatin1String(head),
                                                                                             QLatin1String(status)) +
                     period("x.k_rq") + warehouse + who("x.u_sn") + u" group by x.u_sn"_qs);
    contribute(u"b.yfje,b.sfje"_qs,
               u"select x.u_sn,sum(k_yfje) as yfje,sum(k_sfje) as sfje from jxc_ysyfk x where k_type='kh' and "
               "(k_djlx='YS' or k_djlx='SK')"_qs +
                   period("k_rq") + who("x.u_sn") + u" group by x.u_sn"_qs);
    for (const auto& [lines, head, sum, status, more, day] :
         {std::tuple("jxc_lsxssp", "jxc_lsxsd", "-1*(sum(ls_zje))", "ls_status",
                     " and (x.t_zp is null or x.t_zp<>'(赠品)')", "v.ls_xsrq"),
          std::tuple("jxc_xsthsp", "jxc_xsthd", "(sum(th_zje))", "th_status", "", "v.th_xsrq")})
      contribute(u"b.sfje,b.sfje"_qs,
                 u"select v.u_sn,%1 as sfje from %2 x,jxc_user y,jxc_ckxx z,jxc_goods w,%3 v where v.u_sn=y.u_sn and "
                 "v.ck_sn=z.ck_sn and x.gl_djh=v.gl_djh and y.u_tcfs=0 and y.u_tc>0 and x.g_sn=w.g_sn and w.g_tclb<>0 "
                 "and v.%4=1%5"_qs.arg(QLatin1String(sum), QLatin1String(lines), QLatin1String(head),
                                       QLatin1String(status), QString::fromUtf8(more)) +
                     period(day) + warehouse + who("v.u_sn") + u" group by v.u_sn"_qs);
    const QString sums =
        u"(select g_sn,max(hz_glkczje) as tc,sum(hz_kc) as yfje,sum(hz_kczje) as sfje,sum(hz_ckzje) as tcje,"
        "-1*(sum(hz_kc-(hz_kczje))) as zje from jxc_jxchz where hz_flag='101' group by g_sn) b where a.u_sn=b.g_sn "
        "order by a.u_sn "_qs;
    run(into +
        u"select a.u_sn,a.u_name,'业务员按销售额提成','1001',b.yfje,b.sfje,0,0,0,b.tcje,0,tc,'admin' from "
        "jxc_user a,"_qs +
        sums);
    run(into +
        u"select a.u_sn,a.u_name,'业务员按销售额提成欠款','1002',0,b.zje,0,0,0,b.zje*tc*0.01,0,tc,'admin' from "
        "jxc_user a,"_qs +
        sums);
    for (const char* threshold : {"x.gl_dj-x.gl_cbj>y.u_zdlr and y.u_zdlr<>0", "y.u_zdlr=0"})
      for (const char* flag : {"xs", "xt"})
        run(into +
            u"select a.u_sn,a.u_name,'业务员按利润提成','201',0,0,b.zlr,b.tclr,0,0,a.u_zdlr,a.u_tc,'admin' from "
            "jxc_user a,(select y.u_sn,sum(x.gl_lr) as zlr,sum((x.gl_dj*x.gl_dzl-x.gl_cbj-y.u_zdlr)*x.gl_sl) "
            "as tclr from jxc_goodslist x,jxc_user y,jxc_ckxx z,jxc_goods w where x.u_name=y.u_name and "
            "x.ck_sn=z.ck_sn and y.u_tcfs=1 and y.u_tc>0 and x.g_sn=w.g_sn and w.g_tclb=0 and x.gl_flag='%1' "
            "and %2"_qs.arg(QLatin1String(flag), QLatin1String(threshold)) +
            period("x.gl_kdrq") + warehouse + who("y.u_sn") +
            u" and x.g_name not like '%(赠品)' group by y.u_sn) b where a.u_sn=b.u_sn order by a.u_sn "_qs);
    run(into +
        u"select a.u_sn,a.u_name,'业务员按利润提成','2001',0,0,b.yfje,b.sfje,0,b.sfje*tc*0.01,a.u_zdlr,tc,'admin' "
        "from jxc_user a,(select g_sn,max(hz_glkczje) as tc,sum(hz_rksl) as yfje,sum(hz_rkzje) as sfje from "
        "jxc_jxchz where hz_flag='201' group by g_sn) b where a.u_sn=b.g_sn order by a.u_sn "_qs);
    run(u"delete from jxc_jxchz where hz_flag='101' or hz_flag='201'"_qs);
    run(u"delete from jxc_jxchz where hz_flag='1002' and hz_ckzje=0"_qs);
    return openSelect("select * from jxc_jxchz where a_name='admin' order by g_sn,hz_flag");
  }
  /// The first cell that differs.
  static QString difference(const RowSet& table, const RowSet& mine) {
    if (table.rowCount() != mine.rowCount()) return u"%1 rows, not %2"_qs.arg(mine.rowCount()).arg(table.rowCount());
    for (int row = 0; row < table.rowCount(); ++row) {
      for (const char* field : {"g_sn", "hz_txt1", "hz_txt2", "hz_flag"})
        if (table[row].text(field) != mine[row].text(field)) return mine[row].text(field);
      for (const char* field :
           {"hz_kc", "hz_kczje", "hz_rksl", "hz_rkzje", "hz_cksl", "hz_ckzje", "hz_glkc", "hz_glkczje"})
        if (std::abs(table[row].number(field) - mine[row].number(field)) > 1e-6)
          return mine[row].text("g_sn") + u' ' + QLatin1String(field);
    }
    return {};
  }

  std::mt19937 random_;
};

TEST_F(RandomCommission, EqualsTheStatementsOfTheWorkingTableAndTheSumOfItsLines) {
  for (const char* group : {"tjgl", "qtcz"})
    setRights(u"100077"_qs, group, QString(60, u'1'));
  int rows = 0;
  for (int history = 0; history < 30; ++history) {
    Transaction transaction(accountDb());
    fill();
    const bool bound = upTo(2) == 0;
    const Criteria criteria{.from = u"2021-05-%1"_qs.arg(25 + upTo(3)),
                            .to = u"2021-05-%1"_qs.arg(28 + upTo(4)),
                            .employee = upTo(3) ? QString() : QString::number(200001 + upTo(5))};
    const RowSet table = byWorkingTable(criteria, bound ? u"100099"_qs : QString());
    execSql("update jxc_xtcs set cs_cgyh=?", bound ? 1 : 0);
    if (bound)
      becomeOperator(u"店员"_qs, u"100099"_qs, u"100077"_qs);
    else
      becomeOperator(u"admin"_qs, u"100001"_qs, u"100001"_qs);
    const RowSet mine = answer(commissions, criteria);
    ASSERT_EQ(difference(table, mine), QString()) << "history " << history;
    std::map<QString, double> lines = linesOf(criteria);
    for (const Row row : mine)
      if (row.text("hz_flag") != QStringView(kNotYetEarned)) {
        ASSERT_NEAR(lines[row.text("g_sn")], row.number("hz_ckzje"), 1e-6) << "history " << history;
      }
    rows += mine.rowCount();
  }
  EXPECT_GT(rows, 60);
}

TEST_F(RandomCommission, ReceiptsAndPurchasesByEmployeeAddUpToTheirLines) {
  fill();
  execSql(
      "update jxc_ysyfk set u_sn='299999' where k_djlx='SK' and id in (select min(id) from jxc_ysyfk where "
      "k_djlx='SK')");
  const Source sums(receiptsByEmployee, kReceiptsHaveNoWarehouse), lines(receipts, kReceiptsHaveNoWarehouse);
  const RowSet employees = answer(sums, {});
  EXPECT_NEAR(test::sumOf(employees, "sfje"), test::sumOf(answer(lines, {}), "k_sfje"), 1e-6);
  EXPECT_EQ(employees[employees.rowCount() - 1].text("u_name"), QStringView(kOthers));
  for (const Row row : employees) {
    Criteria of;
    narrowToSum(TradeBy::Employee, of, row);
    EXPECT_EQ(answer(lines, of).rowCount(), row.integer("bs")) << row.text("u_sn").toStdString();
  }

  receive("2021-05-02", {{"G", 10, 10}});
  receive("2021-05-03", {{"G", 5, 10}});
  ASSERT_EQ(audit(waitingReturn(families::purchaseReturn, "2021-05-04", {{"G", 2, 10}})), AuditOutcome::Audited);
  const RowSet bought = answer(purchasesByEmployee, {});
  ASSERT_EQ(bought.rowCount(), 1);
  EXPECT_EQ(bought.front().text("djs") + u' ' + bought.front().text("u_name"), "3 默认员工");
  EXPECT_EQ(bought.front().number("yfje"), 130);

  execSql("update jxc_jhd set u_sn=null where j_sn in (select min(j_sn) from jxc_jhd)");
  execSql("update jxc_thd set u_sn='299999'");
  const RowSet others = answer(purchasesByEmployee, {});
  ASSERT_EQ(others.rowCount(), 2);
  Criteria of;
  narrowToSum(TradeBy::Employee, of, others[1]);
  EXPECT_EQ(others[1].text("djs") + u' ' + others[1].text("u_name"), "2 其他");
  EXPECT_EQ(answer(DocumentSet<families::purchaseReceipt, families::purchaseReturn>::documents, of).rowCount(), 2);
}

}  // namespace jxc::commission_test
