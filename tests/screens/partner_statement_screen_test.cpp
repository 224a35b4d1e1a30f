// 往来账务 as operators work with it, on both sides by the same steps.
#include "accounts/partner_statement.h"
#include "core/data_module.h"
#include "core/program_directory.h"
#include "core/text.h"
#include "harness/gui.h"
#include "maintenance/demo_shop.h"
#include "masterdata/partner_contacts.h"
#include "masterdata/partners.h"
#include "output/screens/print_outlet.h"
#include "output/templates.h"
#include "screens/harness/screen_test.h"
#include "server/test_engine.h"
#include "ui/display.h"
#include "ui/enquiry_screen.h"
#include "ui/file_dialogs.h"

#include <QDir>
#include <QLabel>
#include <QPushButton>

namespace jxc::test::partner_statement_screen_test {

class StatementScreen : public ScreenTest, public ::testing::WithParamInterface<PartnerType> {
 protected:
  StatementScreen() {
    dataModule().installAccountDb(openEmpty());
    buildDemoShop({.months = 1, .seed = 5, .goods = 40, .documentsADay = 6, .lastDay = QDate(2021, 8, 31)});
    setClock(QStringLiteral("2021-08-31 20:00:00"));
    becomeOperator(QStringLiteral("admin"), QStringLiteral("100001"), QStringLiteral("100001"));
    bringTemplates();
    printOutlet().preview = [this](const report::Pages& pages, QWidget*) { papers_.push_back(pages); };
  }
  static ui::EnquiryScreen& enquiry(ui::Screen& screen) { return dynamic_cast<ui::EnquiryScreen&>(screen); }
  void showList(ui::Screen& screen, std::string_view list) {
    enquiry(screen).showView(list);
    screen.grid(list).waitLoaded();
  }
  ui::Grid& partners(ui::Screen& screen) { return screen.grid(isCustomer() ? "gridKh" : "gridGhs"); }
  bool isCustomer() const { return side.isCustomer(); }

  const PartnerSide& side = partnerSide(GetParam());
  const char* const name = GetParam() == PartnerType::Customer ? "F_WlzwKh" : "F_WlzwGhs";
  std::vector<report::Pages> papers_;
};

TEST_P(StatementScreen, ADocumentIsSettledFromItsRowOnlyAndStandsOutAfterwards) {
  // The longest open document of the month.
  const Criteria open{.boxes = 1};
  const RowSet documents = openSelect(partner_books::statementDocuments(side, open, Warehouses(open)));
  ASSERT_FALSE(documents.isEmpty());
  const QString number = documents.front().text("djh"), partner = documents.front().text("ghs_sn");
  const double left = documents.front().number("wfje"), before = partner_books::statementBalance(side, partner, {});
  handOverPartner(side, partner);
  this->open(name, [&](ui::Screen& s) {
    partners(s).waitLoaded();
    EXPECT_EQ(partners(s).currentKey(), partner) << "the screen begins with the partner that it was opened for";
    handOverPartner(side, {});
    showList(s, "gridFy");
    press(s, "F6", isCustomer() ? QStringLiteral("收款只能在单据表进行！") : QStringLiteral("付款只能在单据表进行！"));
    showList(s, "gridDj");
    ui::Grid& list = s.grid("gridDj");
    check(s, "chkQk", true);
    list.waitLoaded();
    const int place = static_cast<int>(documents.front().index());
    list.selectRow(place);
    ASSERT_EQ(list.currentText("djh"), number);
    s.grid("gridDjMx").waitLoaded();
    EXPECT_GT(s.grid("gridDjMx").rowCount(), 0);
    EXPECT_TRUE(s.findChild<QLabel*>(QStringLiteral("way_gridDjMx"))->text().contains(number));
    expectScreen(isCustomer() ? "F_Yskgl_Sk" : "F_Yfkgl_Fk", [&](ui::Screen& form) {
      EXPECT_NEAR(form.field("tje").number(), left, 1e-6);
      press(form, "F5");
    });
    press(s, "F6");
    check(s, "chkQk", false);
    list.waitLoaded();
    for (const Row row : list.rows()) {
      if (row.text("djh") != number) continue;
      EXPECT_NEAR(row.number("hkje"), left, 1e-6);
      EXPECT_NEAR(row.number("wfje"), 0, 1e-6);
    }
  });
  EXPECT_NEAR(before,
              strIsTrue(session().cs_shdj) ? partner_books::statementBalance(side, partner, {}) + left
                                           : partner_books::statementBalance(side, partner, {}),
              1e-6);
}

TEST_P(StatementScreen, APartnerIsFoundWhileOneTypesAndHisPaperEndsAtHisBalance) {
  const RowSet found = partner_books::partnersOfStatements(side, {.from = u"2021-08-01"_qs, .to = u"2021-08-31"_qs});
  ASSERT_GT(found.rowCount(), 2);
  const Row one = found[1];
  open(name, [&](ui::Screen& s) {
    const auto paper = [&] {
      s.grid("gridDj").waitLoaded();
      papers_.clear();
      click(s, "btn_Prin");
      EXPECT_EQ(papers_.size(), 1u);
      return papers_.empty() ? QString() : papers_[0].lines(papers_[0].count() - 1).join(u' ');
    };
    const auto balance = [&](const QString& partner) {
      return QLocale(QLocale::English)
          .toString(partner_books::statementBalance(side, partner, u"2021-08-31"_qs), 'f', 2);
    };
    ui::Grid& list = partners(s);
    list.waitLoaded();
    EXPECT_TRUE(paper().contains(u"期末余额："_qs + balance({}))) << "of all";
    type(s, "tfind", one.text("name"));
    EXPECT_EQ(list.currentKey(), one.text("sn"));
    EXPECT_TRUE(paper().contains(u"期末余额："_qs + balance(one.text("sn"))));
    type(s, "tfind", u"%_'*[");
    EXPECT_EQ(list.rowCount(), 0);
    type(s, "tfind", u"");
    list.selectRow(0);

    // All of them as files.
    ui::setFileAnswer([&](const QString&, const QString&) { return programDirectory(); });
    const QString noun = words(side.noun);
    expectQuestion(u"将生成 %1 个%2的对账单，每个%2一个PDF文件，\r\n\r\n日期：2021-08-01 至 2021-08-31，确认吗？"_qs
                       .arg(found.rowCount())
                       .arg(noun),
                   Answer::Yes);
    press(s, "F7", u"生成了 %1 份对账单，保存在：\r\n\r\n%2"_qs.arg(found.rowCount()).arg(programDirectory()));
    EXPECT_EQ(QDir(programDirectory()).entryList({QStringLiteral("*.pdf")}).size(), found.rowCount());
  });
}

TEST_P(StatementScreen, FurtherConditionsNarrowWhatWasTradedAndSaySo) {
  open(name, [&](ui::Screen& s) {
    showList(s, "gridHz");
    ui::Grid& list = s.grid("gridHz");
    const QString goods = list.rows()[list.rows().rowCount() - 1].text("g_sn");  // not the discounts
    const int all = list.rowCount();
    const QString goodsClass = lookupValue("select gc_sn from jxc_goods where g_sn=?", goods);
    press(s, "F3", "F_WlzwKh_Cx", [&](ui::Screen& form) {
      type(form, "tgoods", goods);
      form.field("tsplb").setKey(goodsClass);
      press(form, "F5");
    });
    list.waitLoaded();
    EXPECT_EQ(list.rowCount(), 1);
    EXPECT_LT(1, all);
    EXPECT_EQ(list.currentText("g_sn"), goods);
    EXPECT_EQ(s.field("tkey2").text(), goods) << "the goods stand among the inputs";
    EXPECT_TRUE(s.command("btn_Cx2").text().contains(QStringLiteral("已限定")));
    EXPECT_FALSE(s.command("btn_Cx").text().contains(QStringLiteral("已限定"))) << "the documents are all there";
    press(s, "F3", "F_WlzwKh_Cx", [&](ui::Screen& form) {
      EXPECT_EQ(form.field("tsplb").key(), goodsClass);
      press(form, "F4");
    });
    list.waitLoaded();
    EXPECT_EQ(list.rowCount(), all);
  });
}

INSTANTIATE_TEST_SUITE_P(Sides, StatementScreen, ::testing::Values(PartnerType::Customer, PartnerType::Supplier));

}  // namespace jxc::test::partner_statement_screen_test
