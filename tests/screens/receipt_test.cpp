// The purchase receipt through its screens: an operator's stories, and what they leave in the books.
#include "harness/invariants.h"
#include "screens/harness/screen_test.h"
#include "stock/cancelling.h"
#include "stock/document.h"

#include <QTabWidget>
#include <QTableView>

namespace jxc::test {
namespace receipt_screen_test {

constexpr const char* kSaveWaiting =
    "单据保存后处于“未审核”状态，是否确认保存？\r\n\r\n处于“未审核”状态的采购单，可以在“待审核采\r\n\r\n购单”"
    "面板中，进行修改及审核操作！";
constexpr const char* kSaveAudited =
    "单据保存后将直接审核，是否确认保存？\r\n\r\n保存后如果有问题可以在“进退货查询”功能中取消审核！";

class ReceiptScreenTest : public ScreenTest {
 protected:
  ReceiptScreenTest() {
    setParameter("cs_xjyh", 1);
    setParameter("cs_possk", 1);
    addGoods(u"10000001", u"板材镜架", u"6900000000017", 40, 3);
    addGoods(u"10000002", u"钛架", u"6900000000024", 120, 9);
    addGoods(u"10000003", u"镜布", u"6900000000031", 2.5, 1);
  }

  void addGoods(QStringView sn, QStringView name, QStringView barcode, double price, int bought) {
    insertRow("jxc_goods", {{"g_sn", sn},
                            {"g_name", name},
                            {"g_jm", u"JJ"},
                            {"g_sptm", barcode},
                            {"g_jj", price},
                            {"g_scjj", price},
                            {"g_pjjj", price},
                            {"g_kc", 0.0},
                            {"g_cgpl", bought},
                            {"g_xspl", 0},
                            {"g_jy", 0},
                            {"g_gdcbj", 0},
                            {"dw_name", u"付"},
                            {"gg_name", u""},
                            {"color_name", u""},
                            {"gc_sn", u"1001"},
                            {"g_sj", price * 2.5}});
  }

  /// Rows of a statement, cells by a blank, rows by " | ".
  template <class... Args>
  static QString rows(const SqlText& sql, const Args&... args) {
    const RowSet all = openSelect(sql, args...);
    QStringList lines;
    for (int row = 0; row < all.rowCount(); ++row) {
      QStringList cells;
      for (int column = 0; column < all.columnCount(); ++column)
        cells << all.text(row, column);
      lines << cells.join(u' ');
    }
    return lines.join(u" | "_qs);
  }
  static QString shown(ui::Screen& s, std::string_view field) { return s.field(field).text(); }
  static QString lines(ui::Screen& s, std::string_view grid = "gridLines") {
    QStringList texts;
    for (const Row row : s.grid(grid).rows())
      texts << row.text("g_sn").right(1) + u'×' + row.text("jh_sl") + u'@' + row.text("jh_dj") + u'=' +
                   row.text("jh_zje");
    return texts.join(u' ');
  }
  static void scan(ui::Screen& s, QStringView code) {
    typeIn(*s.focusWidget(), code);
    press(s, "Return");
  }
  static void showWaiting(ui::Screen& s) {
    s.findChild<QTabWidget*>()->setCurrentIndex(1);
    settle();
  }
  /// A receipt of one scanned goods, saved from the screen.
  void receiveOne(ui::Screen& s, QStringView barcode) {
    scan(s, barcode);
    expectQuestion(QString::fromUtf8(kSaveWaiting), Answer::Yes);
    press(s, "F5");
  }
};

// ---- the story ---------------------------------------------------------------------------------------------------

// Three goods on a receipt: one scanned twice, one from the list, one changed in the line dialog; saved and audited.
TEST_F(ReceiptScreenTest, ThreeLinesSavedAndAuditedFromTheList) {
  open("F_Cgjh", [&](ui::Screen& s) {
    EXPECT_EQ(shown(s, "jsn"), "CJ21050310001");
    EXPECT_EQ(shown(s, "tghs"), "普通供货商");
    scan(s, u"6900000000017");
    scan(s, u"6900000000017");
    EXPECT_EQ(lines(s), "1×2@40=80");
    EXPECT_TRUE(s.field("tSptm").hasFocus());
    EXPECT_TRUE(s.field("tSptm").isEmpty());

    expectScreen("F_Cgjh_Add", [&](ui::Screen& pick) {
      EXPECT_EQ(pick.grid("gridGoods").currentText("g_sn"), "10000002");  // bought most
      type(pick, "tkey", u"板材");
      EXPECT_EQ(pick.grid("gridGoods").rowCount(), 1);
      type(pick, "tkey", u"10000002");
      expectScreen("F_Cgjh_Sele", [&](ui::Screen& line) {
        type(line, "tsl", u"3");
        EXPECT_EQ(line.field("tzje").number(), 360);
        press(line, "F5");
      });
      press(pick, "Return");
      EXPECT_EQ(pick.grid("gridStaging").footerText("ts_zje"), "360.00");
      press(pick, "F5");
    });
    press(s, "F2");
    EXPECT_EQ(lines(s), "1×2@40=80 2×3@120=360");

    s.field("tSptm").focus();
    scan(s, u"6900000000031");
    expectScreen("F_Cgjh_Sele", [&](ui::Screen& line) {
      type(line, "tsl", u"10");
      type(line, "tgpjjj", u"2.2");
      EXPECT_EQ(line.field("tzje").number(), 22);
      type(line, "tnote", u"赠布");
      press(line, "Return");
    });
    click(s, "btnModi");
    EXPECT_EQ(lines(s), "1×2@40=80 2×3@120=360 3×10@2.2=22");
    EXPECT_EQ(s.field("tyfje").number(), 462);
    EXPECT_EQ(s.field("tsfje").number(), 462);

    choose(s, "comJsfs", QStringLiteral("余款记入应付帐"));
    type(s, "tsfje", u"200");
    type(s, "tnote", u"五月第一批");
    expectQuestion(QString::fromUtf8(kSaveWaiting), Answer::Yes);
    press(s, "F5");
    EXPECT_EQ(shown(s, "jsn"), "CJ21050310002");  // ready for the next one
    EXPECT_TRUE(s.grid("gridLines").isEmpty());
    EXPECT_EQ(s.field("tyfje").number(), 0);
    EXPECT_EQ(rows("select j_yfje,j_sfje,j_jsfs,j_status,j_kmmc,j_note,j_jhrq,j_crk from jxc_jhd"),
              "462 200 1 0 现金 五月第一批 2021-05-03 1");

    showWaiting(s);
    EXPECT_EQ(s.grid("gridWaiting").rowCount(), 1);
    EXPECT_EQ(lines(s, "gridWaitingLines"), "1×2@40=80 2×3@120=360 3×10@2.2=22");
    expectScreen("F_Cgjh_Check", [&](ui::Screen& check) {
      EXPECT_EQ(shown(check, "jsn"), "CJ21050310001");
      EXPECT_EQ(check.field("tsfje").number(), 200);
      type(check, "tsfje", u"262");
      press(check, "F5");
    });
    press(s, "F6");
    EXPECT_TRUE(s.grid("gridWaiting").isEmpty());
  });

  const QString number = QStringLiteral("CJ21050310001");
  EXPECT_EQ(rows("select j_yfje,j_sfje,j_yhje,j_status,j_checker,j_chkrq from jxc_jhd where j_sn=?", number),
            "462 262 0 1 admin 2021-05-03");
  EXPECT_EQ(
      rows("select g_sn,jh_sl,jh_dj,jh_je,jh_taxje,jh_zje,jh_rksl,jh_qxsl,jh_dzl,jh_bz from jxc_jhsp order by id"),
      "10000001 2 40 80 0 80 2 0 1  | 10000002 3 120 360 0 360 3 0 1  | 10000003 10 2.2 22 0 22 10 0 1 赠布");
  EXPECT_EQ(lookupValue("select count(*) from jxc_jhsp where id2=id"), "3");
  EXPECT_EQ(rows("select gl_flag,g_sn,gl_sl,gl_dj,gl_zje,gl_kc,gl_pjjj,gl_kczje,gl_kdrq,gl_checker from jxc_goodslist "
                 "order by id"),
            "cj 10000001 2 40 80 2 40 80 2021-05-03 admin | cj 10000002 3 120 360 3 120 360 2021-05-03 admin | "
            "cj 10000003 10 2.2 22 10 2.2 22 2021-05-03 admin");
  EXPECT_EQ(rows("select g_sn,kc_sl,kc_zsl from jxc_kcsp where kc_zsl<>0 order by g_sn"),
            "10000001 2 2 | 10000002 3 3 | 10000003 10 10");
  EXPECT_EQ(rows("select js_rq,ck_sn,js_sl,js_zje from jxc_kcjs where js_sl<>0"), "2021-05 100001 15 462");
  EXPECT_EQ(rows("select g_kc,g_pjjj,g_scjj,g_cgpl from jxc_goods where g_sn='10000003'"), "10 2.2 2.2 2");
  EXPECT_EQ(rows("select xj_dlx,xj_je,xj_ljje,xj_kmmc,xj_chk from jxc_xjyh where gl_djh=?", number),
            "采购进货 -262 -262 现金 1");
  EXPECT_EQ(rows("select k_type,k_djlx,k_yfje,k_sfje,k_ljje,k_djtxt,k_fkfs from jxc_ysyfk where gl_djh=?", number),
            "ghs CJ 462 262 200 采购进货单 现金");
  EXPECT_EQ(lookupNumber("select ghs_lwje from jxc_ghsxx where ghs_sn='100001'"), 200);
  EXPECT_EQ(rows("select log_note from jxc_log where log_note like '%进货单%' order by id"),
            "增加未审核进货单CJ21050310001，共3种商品 | 审核采购进货单CJ21050310001，共3种商品");
  EXPECT_EQ(brokenInvariants(), QStringList());
}

}  // namespace receipt_screen_test
}  // namespace jxc::test
