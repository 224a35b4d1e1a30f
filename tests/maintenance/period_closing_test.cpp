// Period closing by hand: a small shop with a few documents of each kind, closed in the middle of a month.
#include "maintenance/period_closing.h"

#include "accounts/cash_accounts.h"
#include "accounts/cash_lines.h"
#include "accounts/invoices.h"
#include "accounts/partner_documents.h"
#include "core/log.h"
#include "core/period_lock.h"
#include "harness/findings.h"
#include "harness/row_texts.h"
#include "harness/whole_books.h"
#include "maintenance/period_locking.h"
#include "masterdata/partner_side.h"
#include "stock/shop.h"

namespace jxc::period_closing_test {

using namespace closing;
using test::foundWrong;
using test::mainWarehouse;
using test::readBooks;
using test::textsOf;

const QString branch = QStringLiteral("100002"), closingDay = QStringLiteral("2021-04-15");

class PeriodClosingTest : public test::ShopTest {
 protected:
  PeriodClosingTest() {
    addGoods(u"A"_qs, 6);
    addGoods(u"B"_qs, 5);
    execSql("insert into jxc_ckxx (ck_sn,ck_name) values ('100002','分店')");
    setParameter("cs_kc", 1);
    setParameter("cs_kp", 1);
  }

  QString within(const DocumentFamily& family, const QString& date, const std::vector<Field>& head,
                 const std::vector<Line>& lines) {
    return audited(test::waitingDocument(family, date, head, lines));
  }

  void liveUntilClosing() {
    using namespace families;
    receive(u"2021-04-01"_qs, {{u"A"_qs, 10, 6}, {u"B"_qs, 4, 5}});                         // A 10, B 4; we owe 80
    sell(u"2021-04-05"_qs, {{u"A"_qs, 3, 10}});                                             // A 7; customer owes 30
    audited(waitingReturn(saleReturn, u"2021-04-06"_qs, {{u"A"_qs, 1, 10}}));               // A 8; he owes 20
    audited(waitingReturn(families::purchaseReturn, u"2021-04-07"_qs, {{u"B"_qs, 1, 5}}));  // B 3; we owe 75
    within(loss, u"2021-04-08"_qs, {}, {{u"A"_qs, 1, 6}});                                  // A 7
    within(overflow, u"2021-04-08"_qs, {}, {{u"B"_qs, 2, 5}});                              // B 5
    within(transfer, u"2021-04-09"_qs, {{"ck_out", mainWarehouse}, {"ck_in", branch}}, {{u"A"_qs, 2, 6}});  // A 5 and 2
    const QString paid = *partner_books::saveDocument(customerSide, partner_books::Kind::Payment,
                                                      {.partner = customer(),
                                                       .date = u"2021-04-11"_qs,
                                                       .amount = 8,
                                                       .rounding = 1,
                                                       .account = u"现金"_qs,
                                                       .employee = u"100001"_qs},
                                                      prompt);  // he owes 11; 8 in the till
    EXPECT_TRUE(partner_books::auditDocument(customerSide, partner_books::Kind::Payment, paid));
    waitingOut = waitingSale(u"2021-04-12"_qs, {{u"A"_qs, 1, 10}}, 0);
    setParameter("cs_sprk", 1);
    unfinishedReceipt = receive(u"2021-04-13"_qs, {{u"B"_qs, 6, 7}});  // B 11 in the books, 5 on the shelf; we owe 117
    putaway = audited(test::waitingPart(partial::putaway, u"2021-04-14"_qs, unfinishedReceipt, {2}));
    setParameter("cs_sprk", 0);
    lent = within(loan, u"2021-04-14"_qs, {}, {{u"A"_qs, 1, 6, {{"jh_yj", 20.0}, {"jh_kmmc", u"现金"}}}});  // A 4
    waitingCash = *cash::saveLine({.movement = cash::Movement::In,
                                   .date = u"2021-04-15"_qs,
                                   .account = u"现金"_qs,
                                   .amount = 3,
                                   .employee = u"默认员工"_qs},
                                  prompt);
    soldLater = sell(u"2021-04-16"_qs, {{u"A"_qs, 1, 12}});  // A 3; he owes 23
  }

  QString all(const SqlText& sql) { return textsOf(openSelect(sql), u'|').join(u'|'); }

  QString waitingOut, unfinishedReceipt, putaway, lent, waitingCash, soldLater;
};

TEST_F(PeriodClosingTest, CarriesEveryBalanceAndKeepsWhatHasNotComeToItsEnd) {
  setClock(u"2021-04-10 09:00:00"_qs);
  writeLog(u"开始"_qs);
  setClock(u"2021-05-03 14:30:00"_qs);
  liveUntilClosing();
  ASSERT_EQ(foundWrong(), QStringList());
  const QString stock =
      all("select g_sn,ck_sn,kc_sl,kc_zsl,kc_cbj from jxc_kcsp where g_sn<>'00000000' order by "
          "ck_sn,g_sn");
  const auto sheet = closeBooks({closingDay}, u"D:/备份.DAT"_qs);
  ASSERT_TRUE(sheet);

  EXPECT_EQ(all("select nj_xm,nj_ds,nj_sl,nj_je from jxc_nj order by id"),
            u"采购进货单|1|14|80|采购退货单|1|1|5|商品销售单|1|3|30|顾客退货单|1|1|10|库存调拨单|1|2|0|"
            u"商品报损单|1|1|6|商品报溢单|1|2|10|费用及收入--费用|1|0|-6|费用及收入--收入|1|0|10"_qs);
  EXPECT_EQ(all("select gl_flag,g_sn,ck_sn,gl_kdrq,gl_sl,gl_dj,gl_je,gl_kc,gl_pjjj,gl_kczje,ghs_name from "
                "jxc_goodslist where gl_kdrq<='2021-04-15' order by ck_sn,g_sn"),
            u"qc|A|100001|2021-04-15|4|6|24|4|6|24|数据结算结转|qc|B|100001|2021-04-15|11|6.09|66.99|11|6.09|66.99|"
            u"数据结算结转|qc|A|100002|2021-04-15|2|6|12|2|6|12|数据结算结转"_qs);
  EXPECT_EQ(all("select gl_djh,gl_sqsl,gl_kc from jxc_goodslist where gl_kdrq>'2021-04-15'"), soldLater + u"|4|3"_qs);
  EXPECT_EQ(all("select g_sn,ck_sn,kc_sl,kc_zsl,kc_cbj from jxc_kcsp where g_sn<>'00000000' order by ck_sn,g_sn"),
            stock);
  // The partner's row keeps who looks after him, and is nothing that was sold or paid.
  EXPECT_EQ(all("select k_type,k_djlx,k_rq,k_yfje,k_sfje,k_qcje,k_ljje,gl_djh,gl_djh2,u_sn from jxc_ysyfk where "
                "k_rq<='2021-04-15' order by k_type"),
            u"ghs|JZ|2021-04-15|117|0|0|117|||100001|kh|JZ|2021-04-15|11|0|0|11|||100001"_qs);
  EXPECT_EQ(customerOwes(), 23);
  EXPECT_EQ(supplierOwed(), 117);
  EXPECT_EQ(all("select fp_type,fp_djlx,fp_yfje,fp_qcje,fp_ljje from jxc_fpdjb where fp_rq='2021-04-15' order by "
                "fp_type"),
            u"ghs|JZ|117|0|117|kh|JZ|20|0|20"_qs);
  // In a period around the closing day it is what stood before, and nothing that came.
  const Criteria april{.from = u"2021-04-01"_qs, .to = u"2021-04-30"_qs};
  using partner_books::invoiceLedger, partner_books::owedLedger;
  EXPECT_EQ(textsOf(openSelect(partner_books::overviewSummary(owedLedger, customerSide, april)),
                    {"qcje", "yfje", "sfje", "wfje"}),
            QStringList(u"11 12 0 23"_qs));
  EXPECT_EQ(textsOf(openSelect(partner_books::overviewDetail(owedLedger, customerSide, april)),
                    {"k_qcje", "k_yfje", "k_sfje", "k_ljje"}),
            (QStringList{u"11 0 0 11"_qs, u"0 12 0 23"_qs}));
  EXPECT_EQ(textsOf(openSelect(partner_books::overviewSummary(invoiceLedger, supplierSide, april)),
                    {"qcje", "yfje", "sfje", "wfje"}),
            QStringList(u"117 0 0 117"_qs));
  EXPECT_EQ(all("select xj_je,xj_ljje,xj_chk,xj_dlx from jxc_xjyh where xj_kmmc='现金' and xj_rq<='2021-04-15' order "
                "by id"),
            u"8|8|1|数据结算结转|3|0|0|现金银行收款"_qs);
  // What is not finished is there, with what proves it, and stands in no summary.
  EXPECT_EQ(all("select j_sn from jxc_jhd"), unfinishedReceipt);
  EXPECT_EQ(all("select gl_djh from jxc_rkd"), putaway);
  EXPECT_EQ(all("select gl_djh from jxc_lsxsd order by ls_xsrq"), waitingOut + u'|' + soldLater);
  EXPECT_EQ(all("select gl_djh from jxc_khjh"), lent);
  for (const char* lines : {"select count(*) from jxc_thsp", "select count(*) from jxc_xsthsp",
                            "select count(*) from jxc_dbsp", "select count(*) from jxc_ysyfk_dj"})
    EXPECT_EQ(lookupNumber(lines), 0) << lines;
  EXPECT_EQ(foundWrong(), QStringList());  // among others the chain of the log, whose first row is gone
  EXPECT_FALSE(exists("select id from jxc_log where log_note='开始'"));
  EXPECT_TRUE(exists("select id from jxc_log where log_note like '数据结算，取出日志%'"));
  setPeriodLock({});
  EXPECT_EQ(PeriodLock().day(), closingDay) << "what was closed is never open again";
  EXPECT_EQ(prompt.refused(period_locking::open(prompt)),
            u"数据结算已做到 %1，这些日期的账目不能解除锁定！"_qs.arg(closingDay));
  for (const QString& day : {closingDay, u"2021-04-10"_qs})
    EXPECT_EQ(closedAlready(day), closingDay);
  EXPECT_EQ(textsOf(openSelect(archives()), {"da_year", "da_file"}).join(u'|'), closingDay + u" D:/备份.DAT"_qs);

  // What goods and accounts began with is in what was carried.
  EXPECT_FALSE(cash::mayChangeOpening(u"现金"_qs, prompt));

  // The rest of the receipt is put away behind the closing, and what was lent comes back.
  audited(test::waitingPart(partial::putaway, u"2021-05-03"_qs, unfinishedReceipt));
  test::returnLoan(u"2021-05-03"_qs, lookupValue("select id from jxc_khjhsp").toLongLong(), 1, 0, 0);
  EXPECT_EQ(balanceOf(u"B"_qs), u"11 11 6.09"_qs);
  EXPECT_EQ(foundWrong(), QStringList());
  // The second closing finds the first one's rows as the last before its day.
  ASSERT_TRUE(closeBooks({u"2021-04-30"_qs}, {}));
  EXPECT_EQ(all("select g_sn,gl_kc,gl_pjjj from jxc_goodslist where gl_kdrq='2021-04-30' order by ck_sn,g_sn"),
            u"A|3|6|B|11|6.09|A|2|6"_qs);
  EXPECT_EQ(all("select gl_djh from jxc_khjh where jh_flag='jh'"), lent) << "its return could be taken back";
  EXPECT_EQ(foundWrong(), QStringList());
  // Whoever insists on a day before it opens nothing again.
  ASSERT_TRUE(closeBooks({u"2021-04-20"_qs}, {}));
  EXPECT_EQ(PeriodLock().day(), u"2021-04-30"_qs);
  EXPECT_EQ(foundWrong(), QStringList());
}

TEST_F(PeriodClosingTest, WithoutTheBoxOnlyWhatShelfAndBookNeedStays) {
  liveUntilClosing();
  const Request all{closingDay, false};
  const QStringList list = textsOf(whatGoes(all), {"xm", "ds", "cl"});
  const QString told = list.join(u'|');
  for (const QString& line : {u"采购进货单 1 删除"_qs, u"未审核的商品销售单 1 删除"_qs, u"待入库的采购进货单 1 保留"_qs,
                              u"未还清的客户借货单 1 删除"_qs, u"其中未退的押金 1 删除"_qs,
                              u"未审核的现金银行收付 1 删除"_qs, u"未结清的商品销售单 1 删除，余额结转"_qs})
    EXPECT_TRUE(told.contains(line)) << line.toStdString() << " in " << told.toStdString();
  ASSERT_TRUE(closeBooks(all, {}));
  EXPECT_EQ(this->all("select gl_djh from jxc_lsxsd"), soldLater);
  EXPECT_EQ(this->all("select gl_djh from jxc_khjh"), QString());
  EXPECT_EQ(this->all("select j_sn from jxc_jhd"), unfinishedReceipt);
  EXPECT_EQ(lookupNumber("select count(*) from jxc_xjyh where xj_chk='0'"), 0);
  EXPECT_EQ(foundWrong(), QStringList());
}

TEST_F(PeriodClosingTest, StoppedOrWithAnotherBalanceNothingHasHappened) {
  liveUntilClosing();
  const auto before = readBooks();
  int steps = 0;
  whatGoes({closingDay});
  EXPECT_EQ(readBooks(), before) << "looking changes nothing";
  ASSERT_FALSE(closeBooks({closingDay}, {}, [&](int percent, const QString&) { return ++steps > 0 && percent < 95; }));
  EXPECT_GT(steps, 20);
  for (int stop = 1; stop <= steps; stop += 3) {
    int at = 0;
    EXPECT_FALSE(closeBooks({closingDay}, {}, [&](int, const QString&) { return ++at < stop; }));
    EXPECT_EQ(readBooks(), before) << "stopped at step " << stop;
  }
  for (const auto& [statement, named] : std::initializer_list<std::pair<const char*, const char*>>{
           {"update jxc_goodslist set gl_pjjj=7 where g_sn='B' and gl_flag='qc'", "库存 B 仓库 100001：结算前 6.09"},
           {"update jxc_ysyfk set k_ljje=12 where k_type='kh' and k_djlx='JZ'", "往来 客户"},
           {"delete from jxc_ysyfk where k_type='ghs'", "往来 供货商 100001：结算前 117，结算后 0"},
           {"update jxc_xjyh set xj_ljje=xj_ljje+0.01 where xj_kmmc='现金'", "现金银行 现金：结算前 8"},
           {"update jxc_fpdjb set fp_ljje=1 where fp_type='kh'", "发票 客户"}}) {
    try {
      closeBooks({closingDay}, {}, [&statement = statement](int percent, const QString&) {
        if (percent == 90) execSql(statement);
        return true;
      });
      ADD_FAILURE() << statement;
    } catch (const ClosingDiffers& error) {
      EXPECT_NE(std::string(error.what()).find(named), std::string::npos) << error.what();
    }
    EXPECT_EQ(readBooks(), before) << statement;
  }
  // What somebody posts after the question, who is not kept out.
  const RowSet agreed = whatGoes({closingDay});
  EXPECT_EQ(changesBetween(agreed, whatGoes({closingDay})), QString());
  receive(u"2021-04-03"_qs, {{u"A"_qs, 1, 6}});
  const auto meanwhile = readBooks();
  EXPECT_THROW(closeBooks({closingDay}, {}, {}, agreed), ClosingDiffers);
  EXPECT_EQ(readBooks(), meanwhile);
  EXPECT_EQ(changesBetween(agreed, whatGoes({closingDay})).section(u"\r\n"_qs, 0, 0),
            u"采购进货单（删除）：1 张，数量 14，金额 80.00 → 2 张，数量 15，金额 86.00"_qs);
}

TEST_F(PeriodClosingTest, ADayThatCannotBeClosedIsRefused) {
  liveUntilClosing();
  EXPECT_EQ(dayRefusal(u"2021-02-30"_qs).text, u"请选择结算日期！"_qs);
  EXPECT_EQ(dayRefusal(u"2021-05-04"_qs).text, u"结算日期不能在今天以后！"_qs);
  EXPECT_EQ(dayRefusal(u"2021-03-31"_qs).text, u"2021-03-31 及以前没有数据，不需要结算！"_qs);
  EXPECT_FALSE(dayRefusal(u"2021-05-03"_qs));
  EXPECT_EQ(closedAlready(closingDay), QString());
}

/// Month rows hold the stock at the end of their month.
TEST_F(PeriodClosingTest, TheMonthOfTheDayKeepsItsRowUnlessItIsOver) {
  liveUntilClosing();
  for (const char* month : {"2021-02", "2021-03"})
    insertRow("jxc_kcjs", {{"js_rq", QString::fromLatin1(month)}, {"ck_sn", mainWarehouse}});
  const auto months = [this] { return all("select distinct js_rq from jxc_kcjs order by js_rq"); };
  const QString behind = months().section(u'|', 2);
  ASSERT_TRUE(closeBooks({u"2021-04-01"_qs}, {}));
  EXPECT_EQ(months(), behind);
  EXPECT_TRUE(behind.startsWith(u"2021-04"_qs)) << behind.toStdString();
  ASSERT_TRUE(closeBooks({u"2021-04-30"_qs}, {}));
  EXPECT_FALSE(months().contains(u"2021-04"_qs));
}

TEST_F(PeriodClosingTest, AnExcludedInvoiceWaitsBehindTheClosingOfItsDocument) {
  receive(u"2021-04-01"_qs, {{u"A"_qs, 3, 6}});
  const QString sold = sell(u"2021-04-02"_qs, {{u"A"_qs, 2, 10}});
  const invoices::Line line{lookupValue("select id from jxc_fpdjb where gl_djh=?", sold).toLongLong(), sold};
  ASSERT_TRUE(invoices::exclude(customerSide, line, prompt.willSayYes()));
  ASSERT_TRUE(closeBooks({closingDay}, {}));
  EXPECT_EQ(all("select gl_djh from jxc_fpdjb where fp_check=0"), sold);
  EXPECT_EQ(foundWrong(), QStringList());
}

/// Of three pieces for 1.33 one is left, worth 1 yuan without decimals of totals.
TEST_F(PeriodClosingTest, ACarriedRowReplaysToItsOwnCost) {
  setParameter("cs_zjews", 1);
  setParameter("cs_jews", 0);
  receive(u"2021-04-01"_qs, {{u"A"_qs, 3, 1.33}});
  sell(u"2021-04-02"_qs, {{u"A"_qs, 2, 5}});
  const QString before = lastFigures(u"A"_qs);
  ASSERT_EQ(before, u"1 1.33 1"_qs);
  ASSERT_TRUE(closeBooks({closingDay}, {}));
  EXPECT_EQ(row("select gl_sl,gl_dj,gl_je,gl_zje from jxc_goodslist where g_sn='A'"), u"1 1.33 1.33 1.33"_qs);
  replayLedger(lookupValue("select id from jxc_goodslist where g_sn='A'").toLongLong());
  EXPECT_EQ(lastFigures(u"A"_qs), before);
}

}  // namespace jxc::period_closing_test
