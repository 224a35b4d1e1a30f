// Putaway and issue through their screens: scanned, picked, as a whole, audited, cancelled, and a rest that never
// comes.
#include "harness/invariants.h"
#include "harness/waiting_document.h"
#include "output/screens/print_outlet.h"
#include "output/templates.h"
#include "screens/harness/trading_test.h"
#include "stock/document.h"
#include "stock/screens/document_screen.h"
#include "ui/report/print.h"

namespace jxc::test::partial_screens_test {

using namespace families;  // NOLINT(google-build-using-namespace): inside this file's own namespace

constexpr QStringView kFrame = u"6900000000017", kCase = u"6900000000024";
const QString kSavePutaway = saveQuestion("入库单", "待审核\r\n\r\n入库单");

class PartialScreensTest : public TradingScreenTest {
 protected:
  PartialScreensTest() {
    bringTemplates();
    addGoods({.sn = u"10000001"_qs, .name = u"镜架"_qs, .barcode = kFrame.toString(), .cost = 40});
    addGoods({.sn = u"10000002"_qs, .name = u"镜盒"_qs, .barcode = kCase.toString(), .cost = 2});
    setParameter("cs_sprk", 1);
    setParameter("cs_spck", 1);
  }
  QString audited(const DocumentFamily& family, const std::vector<Field>& head, const std::vector<Pieces>& lines) {
    const QString number = waitingDocument(family, u"2021-05-03"_qs, head, lines);
    EXPECT_EQ(checkDj(family, number, prompt), AuditOutcome::Audited);
    return number;
  }
  static void show(ui::Screen& s, int panel) {
    s.findChild<QTabWidget*>()->setCurrentIndex(panel);
    settle();
  }
};

TEST_F(PartialScreensTest, APutawayFromScanListAndWholeReceipt) {
  const QString first = audited(purchaseReceipt, {}, {{"10000001", 10, 40}, {"10000002", 4, 2}});
  const QString second = audited(purchaseReceipt, {}, {{"10000001", 5, 40}});
  printOutlet().preview = [](const report::Pages& pages, QWidget*) { EXPECT_FALSE(pages.find(u"镜架"_qs).empty()); };
  open("F_Cgrk", [&](ui::Screen& s) {
    // Whoever scans chooses nothing: the goods tell from whom they are, and the oldest receipt comes first.
    s.field("tghs").setPicked({});
    scan(s, kFrame);
    ASSERT_EQ(s.grid("gridLines").rowCount(), 1);
    EXPECT_EQ(s.grid("gridLines").currentNumber("rk_sl"), 10);
    EXPECT_EQ(s.grid("gridLines").currentText("j_sn"), first);
    EXPECT_EQ(s.field("tghs").key(), "100001");
    EXPECT_TRUE(s.field("tghs").isReadOnly() && s.field("comCk").isReadOnly());
    expectNotice(u"没有找到与该条码匹配的商品，请检查！\r\n\r\n条码：9999999999999"_qs);
    scan(s, u"9999999999999");
    expectNotice(u"入库数量不能大于采购数量！"_qs);
    edit(s, "gridLines", 0, "rk_sl", u"11");
    edit(s, "gridLines", 0, "rk_sl", u"6");
    press(s, "F3", "F_Cgrk_Sele", [&](ui::Screen& line) {
      EXPECT_EQ(line.field("tsl").number(), 6);
      type(line, "tsl", u"12");
      press(line, "F5", u"入库数量不能大于采购数量！"_qs);
      type(line, "tsl", u"7");
      press(line, "F5");
    });
    press(s, "F2", "F_Cgrk_Add", [&](ui::Screen& pick) {
      pick.grid("gridGoods").waitLoaded();
      EXPECT_EQ(textsOf(pick.grid("gridGoods").rows(), {"djh", "g_sn", "opensl"}).join(u' '),
                first + " 10000001 10 " + first + " 10000002 4 " + second + " 10000001 5");
      picture(pick, u"cgrk-add"_qs);
      choose(pick, "comLb", second + u"　2021-05-03"_qs);
      pick.grid("gridGoods").waitLoaded();
      press(pick, "F6");  // all of this receipt
      EXPECT_EQ(pick.grid("gridStaging").currentNumber("ts_sl"), 5);
      press(pick, "F5");
    });
    EXPECT_EQ(rows("select j_sn,rk_sl from jxc_rksp order by id"), first + " 7 | " + second + " 5");
    press(s, "F8");
    save(s, kSavePutaway);
    EXPECT_FALSE(s.field("tghs").isReadOnly());

    show(s, 1);
    const QString number = s.grid("gridWaiting").currentText("gl_djh");
    EXPECT_EQ(s.grid("gridWaiting").currentNumber("rk_zsl"), 12);
    press(s, "F6", u"您的操作将审核单据："_qs + number + u"，确认吗？"_qs, Answer::Yes);
    EXPECT_EQ(rows("select kc_sl,kc_zsl from jxc_kcsp where g_sn='10000001'"), "12 15");

    // What still waits: the whole of it into a new document, or never.
    show(s, 2);
    ui::Grid& sources = s.grid("gridSources");
    EXPECT_EQ(textsOf(sources.rows(), {"djh", "openlines", "opensl"}).join(u' '), first + " 2 7");
    EXPECT_EQ(textsOf(s.grid("gridOpen").rows(), {"g_sn", "sl", "movedsl", "opensl"}).join(u' '),
              "10000001 10 7 3 10000002 4 0 4");
    picture(s, u"cgrk-open"_qs);
    press(s, "F8");  // the receipt on paper
    press(s, "F6");
    EXPECT_EQ(s.findChild<QTabWidget*>()->currentIndex(), 0);
    EXPECT_EQ(s.grid("gridLines").rowCount(), 2);
    picture(s, u"cgrk-draft"_qs);
    save(s, kSavePutaway);
    show(s, 2);
    expectQuestion(
        u"您的操作将取消当前单据所有未入库的商品，\r\n\r\n未入库的商品数量将不再入库，\r\n\r\n将会自动生成一个"
        u"新的采购退货单。\r\n\r\n退货金额 128.00 记入应付帐款，确认吗？"_qs,
        Answer::Yes);
    click(s, "btn_Qxck");
    EXPECT_TRUE(sources.isEmpty());
    EXPECT_TRUE(s.said().contains(rows("select gl_djh from jxc_thd")));
    // The document that waits for what was cancelled is refused, and can be deleted.
    show(s, 1);
    const QString late = s.grid("gridWaiting").currentText("gl_djh");
    expectQuestion(u"您的操作将审核单据："_qs + late + u"，确认吗？"_qs, Answer::Yes);
    press(s, "F6",
          u"采购进货单【"_qs + first +
              u"】的商品【10000001】\r\n\r\n已经完成入库或入库数量大于采购数量或已经取消入库，\r\n\r\n"
              u"不能重复入库，请检查！"_qs);
    press(s, "Ctrl+Del", u"您确定要删除“待审核”单据吗！"_qs, Answer::Yes);

    show(s, 3);
    ui::Screen& list = *static_cast<DocumentScreen&>(s).audited();
    list.grid("gridDj").waitLoaded();
    EXPECT_EQ(list.grid("gridDj").currentText("djh"), number);
    EXPECT_EQ(list.grid("gridDj").currentNumber("zsl"), 12);
    press(list, "F6",
          u"入库单："_qs + number + u"，至少有一种商品做了取消入库，\r\n\r\n请先取消审核退货单："_qs +
              rows("select gl_djh from jxc_thd") + u"，\r\n\r\n然后才能取消审核该入库单！"_qs);
    press(list, "Esc");
  });
  EXPECT_EQ(brokenInvariants(), QStringList());
}

TEST_F(PartialScreensTest, AnIssueByTheRightOfTheWaybillAndADraftThatComesBack) {
  setParameter("cs_kc", 1);
  const QString sold = audited(sale, {}, {{"10000001", 2, 99}});
  setRights(u"300001"_qs, "xsgl", u"00000000010000000000"_qs);  // packs parcels
  becomeOperator(u"小王"_qs, u"100009"_qs, u"300001"_qs);
  const QString customer = lookupValue("select top 1 kh_sn from jxc_khxx order by id");
  open("F_Spck", [&](ui::Screen& s) {
    show(s, 2);
    EXPECT_EQ(s.grid("gridSources").currentText("djh"), sold);
    expectQuestion(u"出库数量大于库存数量，出库后库存会出现负数，继续吗？"_qs, Answer::Yes);
    press(s, "F6");
    EXPECT_EQ(s.grid("gridLines").currentNumber("ck_sl"), 2);
    EXPECT_EQ(s.field("tkh").key(), customer);
    show(s, 2);
    click(s, "btn_Qxck", u"您没有取消出库的权限！"_qs);
    show(s, 0);
    s.hide();  // the program ends here
  });
  open("F_Spck", [&](ui::Screen& s) {
    EXPECT_EQ(s.grid("gridLines").rowCount(), 1);
    EXPECT_EQ(s.field("tkh").key(), customer);
    expectQuestion(u"该单据中至少一种商品库存不足，\r\n\r\n“10000001”：出库将会出现负库存，是否继续？"_qs, Answer::Yes);
    save(s, saveQuestion("出库单", "待审核\r\n\r\n出库单"));
    show(s, 1);
    expectNotice(u"您没有权限进行商品出库审核！"_qs);
    press(s, "F6");
    press(s, "Esc");
  });
  EXPECT_EQ(rows("select ck_zsl,ck_status from jxc_ckd"), "2 0");
}

TEST_F(PartialScreensTest, WhoOnlyAuditsMakesNone) {
  audited(purchaseReceipt, {}, {{"10000001", 2, 40}});
  setRights(u"300001"_qs, "cggl", u"000000001000000"_qs);
  becomeOperator(u"小王"_qs, u"100009"_qs, u"300001"_qs);
  open("F_Cgrk", [&](ui::Screen& s) {
    show(s, 2);
    press(s, "F6", u"您没有权限进行商品入库！"_qs);
    EXPECT_EQ(rows("select id from jxc_rksp"), "");
    press(s, "Esc");
  });
}

}  // namespace jxc::test::partial_screens_test
