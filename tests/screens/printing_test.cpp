// Print commands of the screens: preview, printer, automatic printing, choice of the form, and the templates' design.
#include "output/screens/prin_sele.h"
#include "output/screens/print_outlet.h"
#include "output/screens/template_designer.h"
#include "output/templates.h"
#include "platform/report/template_file.h"
#include "sales/sale.h"
#include "screens/harness/trading_test.h"
#include "stock/document.h"
#include "stock/trading_document.h"
#include "ui/file_dialogs.h"
#include "ui/report/print.h"

#include <QApplication>
#include <QClipboard>

namespace jxc::test::printing_screens_test {

class PrintingScreens : public TradingScreenTest {
 protected:
  PrintingScreens() {
    bringTemplates();
    printOutlet() = {.preview = [this](const report::Pages& pages, QWidget*) { previewed.push_back(pages); },
                     .printAsking = [this](const report::Pages& pages, QWidget*) { asked.push_back(pages); },
                     .print =
                         [this](const report::Pages& pages) {
                           if (noPrinter) throw ui::PrintError(u"没有可用的打印机"_qs, u"请先安装打印机"_qs);
                           printed.push_back(pages);
                         }};
    for (const QString& sn : {u"A"_qs, u"B"_qs})
      addGoods({.sn = sn, .name = u"镜架"_qs + sn, .barcode = u"69"_qs + sn, .cost = 10, .price = 50, .stock = 100});
    execSql("update jxc_goods set gc_sn='1000'");  // the list of stock names the class
  }

  static QString text(const report::Pages& pages) { return pages.lines(0).join(u'\n'); }
  std::vector<report::Pages> previewed, asked, printed;
  bool noPrinter = false;
};

TEST_F(PrintingScreens, ASaleIsLookedAtSavedAndPrinted) {
  open("F_Spxs", [&](ui::Screen& s) {
    click(s, "btnPrin", QStringLiteral("单据中没有业务发生，不能打印！"));
    scan(s, u"69A");
    scan(s, u"69B");
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
    scan(s, u"69A");
    save(s, kSaveSale);
    ASSERT_EQ(printed.size(), 1u);
    EXPECT_TRUE(text(printed[0]).contains(lookupValue("select gl_djh from jxc_lsxsd")));

    noPrinter = true;
    scan(s, u"69B");
    expectQuestion(kSaveSale, Answer::Yes);
    const QString number = s.field("jsn").text();
    expectOffer(u"单据 %1 已保存。没有可用的打印机"_qs.arg(number), Answer::Yes);
    QString proposed;
    ui::setFileAnswer([&](const QString& name, const QString&) {
      proposed = name;
      return file(u"单"_qs);
    });
    press(s, "F5");
    ui::setFileAnswer({});
    EXPECT_EQ(proposed, u"商品销售单"_qs + number);
    EXPECT_TRUE(QFile::exists(file(u"单.pdf"_qs)));
    EXPECT_EQ(lookupNumber("select count(*) from jxc_lsxsd"), 2);
    EXPECT_TRUE(s.grid("gridLines").isEmpty());  // the next one begins on a clean screen
  });
}

TEST_F(PrintingScreens, NothingOfAnUnsavedDocumentLeavesTheProgramWhereThatIsForbidden) {
  setParameter("cs_bcqdy", 1);
  QApplication::clipboard()->setText(u"-"_qs);
  ui::setFileAnswer([](const QString& name, const QString&) {
    ADD_FAILURE() << name.toStdString();
    return QString();
  });
  const QString stays = u"单据保存之前不能打印、导出和复制！"_qs;
  for (const char* screen : {"F_Spxs", "F_Cgjh", "F_Kcdb"})
    open(screen, [&](ui::Screen& s) {
      scan(s, u"69A");
      for (const char* key : {"Ctrl+P", "F8", "Ctrl+S", "Ctrl+C", "Ctrl+Shift+C"}) {
        SCOPED_TRACE(key);
        expectNotice(stays);
        pressIn(*s.grid("gridLines").view(), key);
        EXPECT_EQ(expectationsLeft(), 0);
      }
      leaveDraft(s);
    });
  open("F_Spxs", [&](ui::Screen& s) {
    scan(s, u"69A");
    expectNotice(stays);
    s.findChild<QAction*>("btnInOutExport")->trigger();
    click(s, "btnAddOld", "F_Spxs_Add", [&](ui::Screen& pick) {
      pressIn(*pick.grid("gridGoods").view(), "Ctrl+C");  // goods of the catalogue are no document
      EXPECT_TRUE(QApplication::clipboard()->text().contains(u"镜架A"));
      pick.grid("gridGoods").selectRow(1);
      click(pick, "btnAdd");
      expectNotice(stays);
      pressIn(*pick.grid("gridStaging").view(), "Ctrl+C");
      press(pick, "F5");
    });
    save(s, kSaveSale);
    // What is saved is looked at, printed and copied as before.
    showWaiting(s);
    pressIn(*s.grid("gridWaitingLines").view(), "Ctrl+Shift+C");
    EXPECT_TRUE(QApplication::clipboard()->text().contains(u"镜架A"));
    press(s, "F8");
    press(s, "Ctrl+P");
    EXPECT_EQ(previewed.size() + asked.size(), 2u);
    EXPECT_EQ(previewed.at(0).name(), u"商品销售单"_qs + s.grid("gridWaiting").currentText("gl_djh"));
  });
  ui::setFileAnswer({});
}

TEST_F(PrintingScreens, TheFormIsChosenBeforeThePrint) {
  setParameter("cs_cs010", 1);
  open("F_Spxs", [&](ui::Screen& s) {
    scan(s, u"69A");
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
    // Designs of the shop's own are offered as well, those of forms that the role may see.
    for (const auto& [file, kind] : {std::pair("双联.fr3", "spxs"), {"不含价.fr3", "spxs4"}}) {
      report::Template own = report::loadTemplate(templatePath(QString::fromLatin1(kind)));
      own.kind = QString::fromLatin1(kind);
      own.bands.front().items.front().content = u"自家样式"_qs;
      report::saveTemplate(own, templatePath(QString::fromUtf8(file)), report::SaveMode::New);
    }
    click(s, "btnPrin", "F_PrinSele", [&](ui::Screen& choice) {
      choose(choice, "comOwn", u"双联"_qs);
      check(choice, "rPrin4", true);
      press(choice, "F5");
    });
    EXPECT_TRUE(text(previewed.at(2)).contains(u"自家样式"));
    session().canSeePrice = false;
    EXPECT_EQ(templateChoices(families::sale).size(), 2u);  // 不含售价, and the design of it
    session().canSeePrice = true;
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
      press(form, "Esc", u"输入的内容还没有确定，放弃吗？"_qs, Answer::Yes);
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
    // Found by name, first letters or file; what is not printed here is told apart.
    const auto found = [&] {
      QStringList names;
      for (const KnownTemplate& each : knownTemplates())
        if (s.command("btn_" + words(each.name).toStdString()).isVisible()) names << words(each.name);
      return names.join(u' ');
    };
    EXPECT_EQ(s.command("btn_spxs").text(), u"● 商品销售单"_qs);
    EXPECT_EQ(s.command("btn_posxp").text(), u"销售小票(80毫米)"_qs);
    for (const auto& [typed, names] :
         {std::pair(u"调拨", u"kcdbd kcdbd2 kcdbd3"_qs), {u"kcpdd", u"kcpdd kcpdd2"_qs}, {u"DQKC", u"kccx"_qs}}) {
      type(s, "tkey", typed);
      EXPECT_EQ(found(), names);
    }
    expectScreen("F_Bbsj_Edit", [&](ui::Screen& designer) { press(designer, "Esc"); });
    pressIn(*s.field("tkey").widget(), "Return");
    check(s, "chkInUse", true);
    type(s, "tkey", u"销售单");
    EXPECT_EQ(found(), u"spxs"_qs);
    check(s, "chkInUse", false);
    type(s, "tkey", u"");
    for (const KnownTemplate& each : knownTemplates())
      EXPECT_TRUE(s.command("btn_" + words(each.name).toStdString()).isEnabled()) << words(each.name).toStdString();
    click(s, "btn_kccx", "F_Bbsj_Edit", [&](ui::Screen& designer) {
      auto& window = dynamic_cast<TF_Bbsj_Edit&>(designer);
      EXPECT_EQ(window.designer().document().path(), templatePath(u"kccx"));
      press(designer, "Esc");
    });

    // Over a damaged one the delivered design is offered; what was damaged is kept.
    const QString path = templatePath(u"kccx");
    QFile damaged(path);
    ASSERT_TRUE(damaged.open(QIODevice::WriteOnly | QIODevice::Truncate));
    damaged.write("<?xml damaged");
    damaged.close();
    QString why;
    try {
      report::loadTemplate(path);
    } catch (const report::TemplateError& failure) {
      why = failure.message() + u"\r\n\r\n要恢复为随程序提供的样式吗？损坏的文件留作备份。"_qs;
    }
    click(s, "btn_kccx", why, Answer::No);
    EXPECT_THROW(report::loadTemplate(path), report::TemplateError);
    expectQuestion(why, Answer::Yes);
    click(s, "btn_kccx", "F_Bbsj_Edit", [](ui::Screen& designer) { press(designer, "Esc"); });
    EXPECT_NO_THROW(report::loadTemplate(path));
    EXPECT_EQ(report::backupsOf(path).size(), 1u);
  });
}

}  // namespace jxc::test::printing_screens_test
