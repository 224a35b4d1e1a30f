// Print commands of the screens: preview, printer, automatic printing, choice of the form, and the templates' design.
#include "output/screens/prin_sele.h"
#include "output/screens/print_outlet.h"
#include "output/screens/template_designer.h"
#include "output/templates.h"
#include "sales/sale.h"
#include "screens/harness/trading_test.h"
#include "stock/document.h"
#include "stock/trading_document.h"

namespace jxc::test::printing_screens_test {

class PrintingScreens : public TradingScreenTest {
 protected:
  PrintingScreens() {
    bringTemplates();
    printOutlet() = {.preview = [this](const report::Pages& pages, QWidget*) { previewed.push_back(pages); },
                     .printAsking = [this](const report::Pages& pages, QWidget*) { asked.push_back(pages); },
                     .print =
                         [this](const report::Pages& pages) {
                           if (noPrinter) throw std::runtime_error("没有打印机。");
                           printed.push_back(pages);
                         }};
    for (const QString& sn : {u"A"_qs, u"B"_qs})
      addGoods({.sn = sn, .name = u"镜架"_qs + sn, .barcode = u"69"_qs + sn, .cost = 10, .price = 50, .stock = 100});
    execSql("update jxc_goods set gc_sn='1000'");  // the list of stock names the class
  }

  static QString text(const report::Pages& pages) { return pages.lines(0).join(u'\n'); }
  static void scan(ui::Screen& screen, const QString& code) {
    type(screen, "tSptm", code);
    pressIn(*screen.field("tSptm").widget(), "Return");
  }
  std::vector<report::Pages> previewed, asked, printed;
  bool noPrinter = false;
};

TEST_F(PrintingScreens, ASaleIsLookedAtSavedAndPrinted) {
  open("F_Spxs", [&](ui::Screen& s) {
    click(s, "btnPrin", QStringLiteral("单据中没有业务发生，不能打印！"));
    scan(s, "69A");
    scan(s, "69B");
    type(s, "tnote", u"它's 好");
    press(s, "Ctrl+P");
    ASSERT_EQ(previewed.size(), 1u);
    EXPECT_TRUE(text(previewed[0]).contains(u"镜架A") && text(previewed[0]).contains(u"备注：它's 好"))
        << text(previewed[0]).toStdString();
    // Looking at it has changed nothing: the draft stands, and is saved.
    EXPECT_EQ(s.grid("gridLines").rowCount(), 2);
    save(s, kSaveSale);
    EXPECT_TRUE(printed.empty());
    // What waits: looked at, printed with a choice of the printer.
    s.findChild<QTabWidget*>()->setCurrentIndex(1);
    click(s, "btn_ChaKan");
    click(s, "btn_Prin");
    ASSERT_EQ(previewed.size(), 2u);
    ASSERT_EQ(asked.size(), 1u);
    const QString number = s.grid("gridWaiting").currentText("gl_djh");
    EXPECT_TRUE(text(asked[0]).contains(u"单据编号："_qs + number) && text(asked[0]).contains(u"商品销售单"));
    EXPECT_FALSE(s.command("btnPrin").isVisible());  // the draft's command belongs to its panel
  });
}

TEST_F(PrintingScreens, SavingPrintsWhereThatIsWantedAndAMissingPrinterStopsNothing) {
  setParameter("cs_djzddy", 1);
  setParameter("cs_bcqdy", 1);
  open("F_Spxs", [&](ui::Screen& s) {
    EXPECT_FALSE(s.command("btnPrin").isVisible());  // nothing is printed before it is saved
    scan(s, "69A");
    save(s, kSaveSale);
    ASSERT_EQ(printed.size(), 1u);
    EXPECT_TRUE(text(printed[0]).contains(lookupValue("select gl_djh from jxc_lsxsd")));

    noPrinter = true;
    scan(s, "69B");
    expectQuestion(kSaveSale, Answer::Yes);
    press(s, "F5", QStringLiteral("没有打印机。"));
    EXPECT_EQ(lookupNumber("select count(*) from jxc_lsxsd"), 2);
    EXPECT_TRUE(s.grid("gridLines").isEmpty());  // the next one begins on a clean screen
  });
}

TEST_F(PrintingScreens, TheFormIsChosenBeforeThePrint) {
  setParameter("cs_cs010", 1);
  open("F_Spxs", [&](ui::Screen& s) {
    scan(s, "69A");
    click(s, "btnPrin", "F_PrinSele", [&](ui::Screen& choice) { press(choice, "Esc"); });
    EXPECT_TRUE(previewed.empty());
    click(s, "btnPrin", "F_PrinSele", [&](ui::Screen& choice) {
      EXPECT_TRUE(choice.field("rPrin1").isChecked());
      check(choice, "rPrin2", true);
      press(choice, "F5");
    });
    ASSERT_EQ(previewed.size(), 1u);
    EXPECT_FALSE(text(previewed[0]).contains(u"单价"));
    EXPECT_EQ(session().salesTemplate, u"spxs4.fr3");
    click(s, "btnPrin", "F_PrinSele", [&](ui::Screen& choice) {
      EXPECT_TRUE(choice.field("rPrin2").isChecked());  // it is remembered
      EXPECT_EQ(choice.focusWidget(), choice.field("rPrin2").widget());
      check(choice, "rPrin3", true);
      press(choice, "F5");
    });
    EXPECT_TRUE(text(previewed.at(1)).contains(u"零售价"));
    for (const Row row : s.grid("gridLines").rows())
      deleteDraftLine(families::sale, row.integer("id"));
  });
  EXPECT_TRUE(chooseForm(families::purchaseReceipt));  // purchases are not asked about
}

TEST_F(PrintingScreens, MoneyFormsAndLists) {
  open("F_Xjyh", [&](ui::Screen& s) {
    press(s, "F6", "F_Xjyh_Jk", [&](ui::Screen& form) {
      type(form, "tfyje", u"88.5");
      click(form, "btnPrin");
      expectQuestion(u"输入的内容还没有确定，放弃吗？"_qs, Answer::Yes);
      press(form, "Esc");
    });
    ASSERT_EQ(previewed.size(), 1u);
    EXPECT_TRUE(text(previewed[0]).contains(u"现金银行收款单") && text(previewed[0]).contains(u"捌拾捌元伍角"))
        << text(previewed[0]).toStdString();
  });
  open("F_Yskdj_Sele", [&](ui::Screen& form) { EXPECT_TRUE(form.field("chkPrin").isVisible()); });
  open("F_Yskgl", [&](ui::Screen& s) {
    click(s, "btn_Prin");
    check(s, "rHzb", true);
    click(s, "btn_Prin");
    ASSERT_EQ(previewed.size(), 3u);
    EXPECT_TRUE(text(previewed[1]).contains(u"应收款明细表") && text(previewed[2]).contains(u"应收款汇总表"));
  });
  open("F_Kccx", [&](ui::Screen& s) {
    click(s, "btn_Prin");
    ASSERT_EQ(previewed.size(), 4u);
    EXPECT_TRUE(text(previewed[3]).contains(u"当前库存表") && text(previewed[3]).contains(u"镜架A"));
    EXPECT_TRUE(text(previewed[3]).contains(u"2,000.00")) << text(previewed[3]).toStdString();  // 200 pieces of 10
  });
}

TEST_F(PrintingScreens, EveryTemplateHasAButtonThatOpensItsDesign) {
  open("F_Bbsj", [&](ui::Screen& s) {
    for (const KnownTemplate& each : knownTemplates())
      EXPECT_TRUE(s.command("btn_" + words(each.name).toStdString()).isEnabled()) << words(each.name).toStdString();
    click(s, "btn_kccx", "F_Bbsj_Edit", [&](ui::Screen& designer) {
      auto& window = dynamic_cast<TF_Bbsj_Edit&>(designer);
      EXPECT_EQ(window.designer().document().path(), templatePath(u"kccx"));
      press(designer, "Esc");
    });
  });
}

}  // namespace jxc::test::printing_screens_test
