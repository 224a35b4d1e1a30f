// Cancel of what the till sold to a member: points, grade, stored value and released gifts go back with it.
#include "stock/shop.h"

namespace jxc::till_cancel_test {

class TillCancel : public test::ShopTest {
 protected:
  TillCancel() {
    addGoods("A", 5);
    receive("2021-05-01", {{"A", 20, 5}});
    execSql("delete from jxc_hyfl");
    insertRow("jxc_hyfl", {{"hl_sn", u"100007"}, {"hl_name", u"银卡"}, {"hl_jfxx", 1.0}, {"hl_jfsx", 99.0}});
    insertRow("jxc_hyfl", {{"hl_sn", u"100008"}, {"hl_name", u"金卡"}, {"hl_jfxx", 100.0}, {"hl_jfsx", 999.0}});
    execSql(
        "insert into jxc_hyxx (hy_sn,hy_jf,hy_zjf,hy_zje,hy_zhje,hy_ye,hy_cs,hl_sn,hy_sj) values "
        "('100005',40,120,1230,260,0,7,'100008',0)");
    execSql("update jxc_jfsz set jf_mfje=50,jf_yelj=1");
    loadSession();
    setClock("2021-05-20");
  }
  void tillRow(const QString& number, const QString& date, double due, double points, double card, double back) {
    execSql(
        "insert into jxc_posxsd (gl_djh,hy_sn,pos_xsrq,pos_yfje,pos_bcjf,pos_czk,pos_jfye) values "
        "(?,'100005',?,?,?,?,?)",
        number, date, due, points, card, back);
    insertRow("jxc_posxssp", {{"gl_djh", number}, {"g_sn", u"A"}, {"pos_sl", 1.0}});
  }
  QString tillSale(const QString& date, const QString& member) {
    const QString number = sell(date, {{"A", 1, 90}}, 90);
    execSql("update jxc_lsxsd set ls_dhbz=1,hy_sn=? where gl_djh=?", member, number);
    tillRow(number, date + u" 10:30:00"_qs, 90, 30, 60, 4);
    return number;
  }
  QString member() {
    return row("select hy_jf,hy_zjf,hy_zje,hy_zhje,hy_cs,hy_ye,hl_sn from jxc_hyxx where hy_sn=?", u"100005"_qs);
  }
  void giveByMonth(int source, const QString& released) {
    execSql("insert into jxc_hyxf (hy_sn,hs_zsfs,xf_zsrq,hs_myje,hs_zsje,xf_je) values ('100005',?,?,20,100,500)",
            source, released);
    insertRow("jxc_hyxf",
              {{"hy_sn", u"100005"}, {"hs_zsfs", -source}, {"xf_zsrq", released}, {"xf_je", 20.0}, {"hs_zsje", 0.0}});
  }
  QString gifts() {
    return test::textsOf(openSelect("select hs_zsfs,xf_zsrq,hs_zsje from jxc_hyxf order by id")).join(u", "_qs);
  }
};

TEST_F(TillCancel, TheOnlySaleOfTheMonthTakesItsGiftAlong) {
  giveByMonth(2, "2021-05-12");
  const QString number = tillSale("2021-05-12", "100005");
  ASSERT_TRUE(cancelSale(number, prompt, CancelMode::Batch));
  // 30 points and 90 spent go, 60 come back onto the card and 4 of cash-back and the gift of 20 leave it; 90 points are
  // silver, and 1140 leave 40 behind the last whole 50.
  EXPECT_EQ(member(), "10 90 1140 296 6 40 100007");
  EXPECT_EQ(gifts(), "2 2021-04-20 120");  // the next sale of the month brings the gift again
  EXPECT_EQ(lookupNumber("select count(*) from jxc_posxsd"), 0);
  EXPECT_EQ(lookupNumber("select count(*) from jxc_posxssp"), 0);
  EXPECT_EQ(lookupNumber("select ls_dhbz from jxc_lsxsd where gl_djh=?", number), 0);
  EXPECT_EQ(test::brokenInvariants(), QStringList());
  // Audited anew at the desk and cancelled once more: no longer the till's, nothing to take back.
  EXPECT_EQ(audit(number), AuditOutcome::Audited);
  ASSERT_TRUE(cancelSale(number, prompt, CancelMode::Batch));
  EXPECT_EQ(member(), "10 90 1140 296 6 40 100007");
}

TEST_F(TillCancel, WithAnotherSaleTheGiftStaysAndOfAnEarlierDayItIsNotGivenAnew) {
  giveByMonth(2, "2021-05-12");
  giveByMonth(4, "2021-05-12");
  const QString number = tillSale("2021-05-12", "100005");
  tillRow("XS21051310001", "2021-05-13 09:00:00", 10, 0, 0, 0);
  ASSERT_TRUE(cancelSale(number, prompt, CancelMode::Batch));
  EXPECT_EQ(member(), "10 90 1140 296 6 40 100007");  // the gift of the day went, the one of the month stayed
  EXPECT_EQ(gifts(), "2 2021-05-12 100, -2 2021-05-12 0, 4 2021-05-12 100");
}

TEST_F(TillCancel, AReturnGivesThePointsBackAndAWalkInHasNone) {
  const QString back = audited(waitingReturn(families::saleReturn, "2021-05-13", {{"A", 1, 50}}, 50));
  execSql("update jxc_xsthd set hy_sn='100005' where gl_djh=?", back);
  tillRow(back, "2021-05-13 11:00:00", -50, -10, 0, -3);
  ASSERT_TRUE(cancelSaleReturn(back, prompt, CancelMode::Batch));
  EXPECT_EQ(member(), "50 130 1280 257 8 30 100008");
  EXPECT_EQ(lookupNumber("select count(*) from jxc_posxsd"), 0);

  const QString walkIn = tillSale("2021-05-14", {});
  ASSERT_TRUE(cancelSale(walkIn, prompt, CancelMode::Batch));
  EXPECT_EQ(member(), "50 130 1280 257 8 30 100008");
  EXPECT_EQ(lookupNumber("select count(*) from jxc_posxsd"), 0);
}

TEST_F(TillCancel, AReturnToASupplierWhoIsGoneFromTheListCanStillBeCancelled) {
  const QString number = audited(waitingReturn(families::purchaseReturn, "2021-05-13", {{"A", 2, 5}}, 10));
  execSql("update jxc_thd set ghs_sn='100077' where gl_djh=?", number);
  execSql("update jxc_ysyfk set k_ghskh='100077' where gl_djh=?", number);
  ASSERT_TRUE(cancelPurchaseReturn(number, prompt, CancelMode::Batch));
  EXPECT_EQ(balanceOf("A"), "20 20 5");
}

}  // namespace jxc::till_cancel_test
