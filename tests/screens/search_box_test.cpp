// The search box of the main window finds records too, rights are seen before a command is pressed, and the page tabs
// turn however they are turned.
#include "core/pinyin.h"
#include "core/screens/command_runner.h"
#include "core/screens/command_search.h"
#include "core/screens/command_tile.h"
#include "core/screens/main_form.h"
#include "core/session.h"
#include "core/statements.h"
#include "masterdata/record_search.h"
#include "screens/harness/screen_test.h"

#include <QAccessible>
#include <QApplication>
#include <QListWidget>
#include <QPushButton>

namespace jxc::test {

class SearchBoxTest : public ScreenTest {
 protected:
  SearchBoxTest() {
    insertRow("jxc_goods", {{"g_sn", "K0001"}, {"g_name", "钛架"}, {"g_sptm", "6900000000017"}, {"g_jy", 0}});
    insertRow("jxc_goods", {{"g_sn", "L0001"}, {"g_name", "镜片-3.25"}, {"g_jy", 0}, {"g_qgd", "-3.25"}});
    insertRow("jxc_goods", {{"g_sn", "L0002"}, {"g_name", "镜片-3"}, {"g_jy", 0}, {"g_qgd", "-3"}});
    insertRow("jxc_khxx", {{"kh_sn", "100078"}, {"kh_name", "曾家和"}, {"kh_jm", makeJm(u"曾家和")}});
    insertRow("jxc_khxx", {{"kh_sn", "100077"}, {"kh_name", "钛美眼镜"}, {"kh_jm", "TMYJ"}});
    for (const char* number : {"XS21050310001", "XS21050310002"})
      insertRow("jxc_lsxsd", {{"gl_djh", number}, {"ls_status", 1}});
  }
  /// Shows the main window to this operator.
  void enter(TF_MainForm& form) {
    expectScreen("F_Login", [](ui::Screen& s) { press(s, "F5"); });
    ASSERT_TRUE(form.formShow());
    form.Timer1.stop();
    QApplication::setActiveWindow(&form);  // off-screen it becomes active late
  }
};

TEST_F(SearchBoxTest, GoodsPartnersAndDocumentsAreFoundByNumber) {
  const GoodsToFind goods(openSelect(GoodsToFind::statement()));
  const auto found = [&](const QString& typed) {
    QStringList numbers;
    for (const auto& record : findRecords(typed, goods))
      numbers << record.number;
    return numbers.join(u' ');
  };
  const std::pair<const char16_t*, const char*> cases[] = {{u"K00", "K0001"},
                                                           {u"6900000000017", "K0001"},
                                                           {u"钛", ""},
                                                           {u"钛架", "K0001"},
                                                           {u"tmyj", "100077"},
                                                           {u"1000771", ""},
                                                           {u"xs2105", "XS21050310002 XS21050310001"},
                                                           {u"XS21050310001", "XS21050310001"},
                                                           {u"XS", ""},
                                                           {u"没有%", ""},
                                                           {u"-3", "L0002"},  // as the catalogue searches
                                                           {u"zjh", "100078"},
                                                           {u"cjh", "100078"}};  // as it is spoken
  for (const auto& [typed, numbers] : cases)
    EXPECT_EQ(found(QString::fromUtf16(typed)), numbers) << QString::fromUtf16(typed).toStdString();

  TF_MainForm form;
  enter(form);
  auto* box = form.findChild<CommandSearch*>(QStringLiteral("commandSearch"));
  box->begin();
  typeIn(*box, u"K0001");
  expectScreen("F_Spxxgl", [](ui::Screen& s) {
    settle();
    EXPECT_EQ(s.field("tkey").text(), "K0001");
  });
  pressIn(*box, "Return");
}

TEST_F(SearchBoxTest, ACatalogueThatCannotBeReadIsNoEmptyOne) {
  TF_MainForm form;
  enter(form);
  execSql("drop table jxc_goods");
  auto* box = form.findChild<CommandSearch*>(QStringLiteral("commandSearch"));
  const auto* list = form.findChild<QListWidget*>(QStringLiteral("commandMatches"));
  box->begin();
  typeIn(*box, u"K0001");
  pressIn(*box, "Return");
  ASSERT_EQ(list->count(), 1);
  EXPECT_EQ(list->item(0)->text(), u"商品读取失败，请重新查找");
  // Partners are found nevertheless. Last: on a display the screen that opens takes the focus along.
  box->begin();
  typeIn(*box, u"tmyj");
  expectScreen("F_Khgl", [](ui::Screen& s) { EXPECT_EQ(s.field("tkey").text(), "100077"); });
  pressIn(*box, "Return");
}

TEST_F(SearchBoxTest, WithoutTheRightACommandIsGreyAndTellsWhy) {
  setAllRights("100001", u"0000000000000000000"_qs);
  TF_MainForm form;
  enter(form);
  form.showPage(ui::Page::Purchasing);  // it begins where there is something to do
  const QString refusal = u"您没有权限进行采购进货！"_qs;
  const auto* tile = form.findChild<CommandTile*>(QStringLiteral("btn_Menu1_Btn1"));
  EXPECT_TRUE(tile->property("noRight").toBool());
  EXPECT_TRUE(tile->isEnabled());
  EXPECT_EQ(tile->accessibleDescription(), refusal);
  EXPECT_EQ(tile->toolTip(), refusal);
  expectNotice(refusal);
  pressIn(form, "1");

  auto* box = form.findChild<CommandSearch*>(QStringLiteral("commandSearch"));
  box->begin();
  typeIn(*box, u"cgjh");
  const auto* list = form.findChild<QListWidget*>(QStringLiteral("commandMatches"));
  EXPECT_TRUE(list->item(0)->text().contains(u"没有权限"));
  EXPECT_EQ(list->item(0)->toolTip(), refusal);
  expectNotice(refusal);
  pressIn(*box, "Return");

  // Names of goods and partners are on screens that are closed to her.
  for (const char16_t* typed : {u"钛架", u"TMYJ", u"XS21050310001"}) {
    box->begin();
    typeIn(*box, typed);
    pressIn(*box, "Return");
    ASSERT_EQ(list->count(), 1);
    EXPECT_EQ(list->item(0)->text(), u"没有找到");
  }
}

TEST_F(SearchBoxTest, PageTabsTurnForKeysAndAssistiveTechnologyAlike) {
  TF_MainForm form;
  enter(form);
  auto* sales = form.findChild<QPushButton*>(QString::fromUtf8(ui::pages()[1].tab.data()));
  auto* interface = QAccessible::queryAccessibleInterface(sales);
  interface->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
  EXPECT_EQ(form.currentPage(), ui::Page::Sales);
  EXPECT_TRUE(interface->state().checked);
  form.findChild<QPushButton*>(QString::fromUtf8(ui::pages()[2].tab.data()))->click();
  EXPECT_EQ(form.currentPage(), ui::Page::Stock);
}

}  // namespace jxc::test
