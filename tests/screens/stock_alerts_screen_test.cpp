// 库存报警查询 through its window: movements below, the minimum, marked rows into a receipt, batches.
#include "screens/harness/trading_test.h"
#include "ui/enquiry_screen.h"

namespace jxc::test::stock_alerts_screen {

class StockAlertsScreen : public TradingScreenTest {
 protected:
  StockAlertsScreen() {
    addGoods({.sn = u"A"_qs, .name = u"镜架"_qs, .barcode = u"690"_qs, .cost = 5, .stock = 1});
    addGoods({.sn = u"B"_qs, .name = u"镜盒"_qs, .barcode = u"691"_qs, .cost = 2, .stock = 3});
    execSql("update jxc_goods set g_zdkc=5");
    execSql("insert into jxc_ckxx (ck_sn,ck_name) values ('100002','分店')");
    addGoods({.sn = u"C"_qs, .name = u"镜布"_qs, .barcode = u"692"_qs, .cost = 1, .stock = 9});
    execSql("update jxc_goods set g_zdkc=5 where g_sn='C'");
    execSql("insert into jxc_kcsp (g_sn,ck_sn,kc_sl,kc_zsl,kc_cbj,kc_xssl) values ('C','100002',2,2,1,0)");
  }
};

TEST_F(StockAlertsScreen, TheMinimumChangesAndWhatIsMarkedGoesIntoAReceipt) {
  open("F_Kcbj", [&](ui::Screen& screen) {
    ui::Grid& alerts = screen.grid("gridBj");
    alerts.waitLoaded();
    ASSERT_EQ(textsOf(alerts.shownRows(), {"g_sn", "qs"}), QStringList({"A 4", "B 2"}));
    press(screen, "F4", "F_Kccx_Pc", [](ui::Screen& batches) {
      EXPECT_EQ(batches.windowTitle(), u"商品批次信息(镜架)"_qs);
      batches.grid("gridPc").waitLoaded();
      EXPECT_TRUE(batches.grid("gridPc").isEmpty());
      press(batches, "Esc");
    });
    press(screen, "F3", "F_Kcbj_Modi", [&](ui::Screen& minimum) {
      EXPECT_EQ(minimum.field("tsl").text(), u"5");
      type(minimum, "tsl", u"3");
      press(minimum, "F5");
    });
    alerts.waitLoaded();
    EXPECT_EQ(textsOf(alerts.shownRows(), {"g_sn", "qs"}), QStringList({"A 2", "B 2"}));
    const auto receive = [&](const char* goods, const char16_t* warehouse) {
      pressIn(*alerts.view(), "Ctrl+A");
      press(screen, "F6", "F_Cgjh", [&](ui::Screen& receipt) {
        ui::Grid* lines = receipt.gridInSight();
        ASSERT_TRUE(lines);
        EXPECT_EQ(textsOf(lines->shownRows(), {"g_sn", "jh_sl"}).join(u' '), goods);
        EXPECT_EQ(receipt.field("comCk").text(), QString::fromUtf16(warehouse));
      });
    };
    receive("A 2 B 2", u"主仓库");
    // What is short in a branch is ordered for the branch, on the receipt that was begun.
    choose(screen, "comCk", u"分店"_qs);
    alerts.waitLoaded();
    receive("A 2 B 2 C 3", u"分店");
  });
}

}  // namespace jxc::test::stock_alerts_screen
