// Parameters that meet on documents within the house, two by two, through the screens; the figures were worked out by
// hand.
#include "harness/invariants.h"
#include "screens/harness/trading_test.h"

namespace jxc::test::inventory_pairs_test {

const QString kTransferAtOnce = saveAuditedQuestion("库存调拨查询");
const QString kLossAtOnce = u"单据保存后将直接审核，是否确认保存？\r\n\r\n保存后如果有问题可以取消审核！"_qs;

class InventoryPairsTest : public TradingScreenTest {
 protected:
  InventoryPairsTest() {
    execSql("insert into jxc_ckxx (ck_sn,ck_name,ck_asn) values ('100002','分店','100009')");
    setParameter("cs_shdj", 1);
  }
  /// Another goods for each case: its code, which is its barcode too.
  QString goods(double cost, double price, double stock) {
    const QString sn = QString::number(10000001 + made_++);
    addGoods({.sn = sn, .name = u"镜架"_qs, .barcode = sn, .cost = cost, .price = price, .stock = stock});
    return sn;
  }
  static QString balances(const QString& goods) {
    return rows("select ck_sn,kc_sl,kc_zsl,kc_cbj from jxc_kcsp where g_sn=? order by ck_sn", goods);
  }
  static QString posted(const QString& goods) {
    return rows("select gl_flag,ck_sn,gl_sl,gl_dj,gl_zje from jxc_goodslist where g_sn=? order by id", goods);
  }

 private:
  int made_ = 0;
};

// Three of two in stock. cs_kc decides whether a transfer may go below zero, and says nothing of what is broken;
// cs_shdj decides whether either is in the books at once.
TEST_F(InventoryPairsTest, AuditAtOnceAndStockBelowZero) {
  const struct {
    const char* screen;
    int audits, goesBelow;  // cs_shdj, cs_kc
    const char *balances, *posted;
  } cases[] = {
      {"F_Kcdb", 0, 0, "100001 2 2 5", ""},
      {"F_Kcdb", 1, 0, "100001 2 2 5", ""},
      {"F_Kcdb", 0, 1, "100001 2 2 5", ""},
      {"F_Kcdb", 1, 1, "100001 -1 -1 5 | 100002 3 3 5", "db 100002 3 5 15 | db 100001 -3 5 -15"},
      {"F_Bsby", 0, 0, "100001 2 2 5", ""},
      {"F_Bsby", 1, 0, "100001 -1 -1 5", "bs 100001 -3 5 -15"},
      {"F_Bsby", 0, 1, "100001 2 2 5", ""},
      {"F_Bsby", 1, 1, "100001 -1 -1 5", "bs 100001 -3 5 -15"},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(::testing::Message() << each.screen << each.audits << each.goesBelow);
    const bool isTransfer = each.screen == std::string_view("F_Kcdb");
    const char* const quantity = isTransfer ? "db_sl" : "bs_sl";
    setParameter("cs_shdj", each.audits);
    setParameter("cs_kc", each.goesBelow);
    const QString sn = goods(5, 8, 2);
    const QString gone = isTransfer ? u"出库"_qs : u"报损"_qs;
    open(each.screen, [&](ui::Screen& s) {
      scan(s, sn);
      if (isTransfer && !each.goesBelow) {
        expectNotice(u"调拨数量不能大于库存数量，重新输入！"_qs);
        edit(s, "gridLines", 0, quantity, u"3");
        EXPECT_EQ(s.grid("gridLines").currentNumber(quantity), 1);
        return leaveDraft(s);
      }
      expectQuestion(isTransfer ? u"调拨数量不能大于库存数量，调拨后将产生负库存，继续调拨吗?"_qs
                                : u"报损数量大于库存数量，报损后将产生负库存，继续报损吗?"_qs,
                     Answer::Yes);
      edit(s, "gridLines", 0, quantity, u"3");
      if (isTransfer) choose(s, "comCk2", u"分店"_qs);
      const QString isShort =
          u"该单据中至少一种商品库存不足，\r\n\r\n“%1”：%2将会出现负库存，是否继续？"_qs.arg(sn, gone);
      expectQuestion(isShort, Answer::Yes);
      save(s, isTransfer ? each.audits ? kTransferAtOnce : kSaveTransfer : each.audits ? kLossAtOnce : kSaveLoss);
      EXPECT_TRUE(s.grid("gridLines").isEmpty());
    });
    EXPECT_EQ(balances(sn), each.balances);
    EXPECT_EQ(posted(sn), each.posted);
  }
  EXPECT_EQ(rows("select fy_lx,fy_je from jxc_yyfy order by id"), "费用 -15 | 费用 -15");
}

// Three at 5.05 are 15.15 to the digits of money; totals with digits of their own have one, or none.
TEST_F(InventoryPairsTest, DigitsOfTotals) {
  const struct {
    const char *screen, *kind, *quantity, *pieces, *total;
  } documents[] = {
      {"F_Kcdb", "", "db_sl", "3", "select db_zje from jxc_dbsp"},
      {"F_Bsby", "报损单", "bs_sl", "3", "select bs_zje from jxc_bssp"},
      {"F_Bsby", "报溢单", "bs_sl", "3", "select by_zje from jxc_bysp"},
      {"F_Kcpd", "", "pd_sl", "12", "select pd_zje from jxc_kcpdsp"},
      {"F_Cfkb", "商品拆分", "cf_sl", "3", "select cf_zje from jxc_cfsp where cf_sl>0"},
      {"F_Cfkb", "商品捆绑", "cf_sl", "3", "select kb_zje from jxc_kbsp where kb_sl>0"},
  };
  const struct {
    int apart, digits;
    const char* total;
  } pairs[] = {{0, 0, "15.15"}, {0, 1, "15.15"}, {1, 0, "15"}, {1, 1, "15.2"}};
  for (const auto& pair : pairs) {
    setParameter("cs_zjews", pair.apart);
    setParameter("cs_jews", pair.digits);
    for (const auto& document : documents) {
      SCOPED_TRACE(::testing::Message() << document.screen << document.kind << pair.apart << pair.digits);
      const QString sn = goods(5.05, 8, 9), whole = goods(20, 40, 9);
      open(document.screen, [&](ui::Screen& s) {
        const QString kind = QString::fromUtf8(document.kind);
        if (s.hasField("comDjlx")) choose(s, "comDjlx", kind);
        if (s.hasField("comFx")) {
          if (s.field("comFx").text() != kind) choose(s, "comFx", kind);
          scan(s, whole);
          press(s, "F5");
        }
        scan(s, sn);
        if (kind == u"商品拆分") edit(s, "gridLines", 0, "cf_dj", u"5.05");
        edit(s, "gridLines", 0, document.quantity, QString::fromLatin1(document.pieces));
        EXPECT_EQ(rows(document.total), pair.total);
        leaveDraft(s);
      });
    }
  }
}

// Ten pieces; five more are bought and two sold, which wait for their shelf or lie on it as putaway and issue are in
// use. Seven are counted: that is the shelf, and the books move by what was missing there.
TEST_F(InventoryPairsTest, ACountWithPutawayAndIssue) {
  const struct {
    int putaway, issue;
    const char *before, *after, *posted;
  } cases[] = {{0, 0, "100001 13 13 5", "100001 7 7 5", "pd 100001 -6 5 -30"},
               {1, 0, "100001 8 13 5", "100001 7 12 5", "pd 100001 -1 5 -5"},
               {0, 1, "100001 15 13 5", "100001 7 5 5", "pd 100001 -8 5 -40"},
               {1, 1, "100001 10 13 5", "100001 7 10 5", "pd 100001 -3 5 -15"}};
  for (const auto& each : cases) {
    SCOPED_TRACE(::testing::Message() << each.putaway << each.issue);
    setParameter("cs_sprk", each.putaway);
    setParameter("cs_spck", each.issue);
    const QString sn = goods(5, 8, 10);
    const auto write = [&](const char* screen, const char* field, QStringView pieces, const QString& question) {
      open(screen, [&](ui::Screen& s) {
        scan(s, sn);
        edit(s, "gridLines", 0, field, pieces);
        save(s, question);
      });
    };
    write("F_Cgjh", "jh_sl", u"5", kSaveReceiptAudited);
    write("F_Spxs", "ls_sl", u"2", kSaveSaleAudited);
    EXPECT_EQ(balances(sn), each.before);
    write("F_Kcpd", "pd_sl", u"7", saveAuditedQuestion("库存盘点查询"));
    EXPECT_EQ(balances(sn), each.after);
    EXPECT_TRUE(posted(sn).endsWith(QString::fromLatin1(each.posted))) << posted(sn).toStdString();
  }
  EXPECT_EQ(rows("select fy_lx,fy_je from jxc_yyfy where fy_note like '%盘点%' order by id"),
            "费用 -30 | 费用 -5 | 费用 -40 | 费用 -15");
}

// With binding an operator works in his own warehouse, and sees waiting there what is his; an operator without a
// warehouse may do nothing.
TEST_F(InventoryPairsTest, OperatorsAreBoundToTheirWarehouses) {
  setParameter("cs_shdj", 0);
  const QString sn = goods(5, 8, 10);
  open("F_Bsby", [&](ui::Screen& s) {
    scan(s, sn);
    save(s, kSaveLoss);
  });
  setRights(u"100009"_qs, "kcgl", u"1111111111111111111111"_qs);
  becomeOperator(u"店员"_qs, u"100009"_qs, u"100009"_qs);
  for (const int binds : {0, 1}) {
    setParameter("cs_cgyh", binds);
    for (const char* screen : {"F_Kcdb", "F_Bsby", "F_Kcpd", "F_Cfkb"}) {
      SCOPED_TRACE(::testing::Message() << screen << binds);
      open(screen, [&](ui::Screen& s) {
        EXPECT_EQ(s.field("comCk").items().size(), binds ? 1u : 2u);
        showWaiting(s);
        EXPECT_EQ(s.grid("gridWaiting").rowCount(), QLatin1String(screen) == "F_Bsby" && !binds ? 1 : 0);
      });
    }
  }
}

}  // namespace jxc::test::inventory_pairs_test
