// How the kit leads an operator: into lists by a letter, to the input that was refused, past lists to the end, and out
// only when nothing is lost.
#include "core/habits.h"
#include "core/refusal.h"
#include "core/session.h"
#include "core/statements.h"
#include "screens/harness/screen_test.h"
#include "ui/display.h"
#include "ui/picker_screen.h"

#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QStatusBar>
#include <QTableView>
#include <QTimer>

namespace jxc::test {
namespace kit_guidance_test {

constexpr ui::FieldSpec kFields[] = {
    {"tkh", "客户：", ui::FieldKind::Picker},
    {"tname", "单据备注：", ui::FieldKind::Text},
    {"tsl", "数量：", ui::FieldKind::Quantity},
    {"tlxmc", "品牌名称：", ui::FieldKind::Text},
};
constexpr ui::ColumnSpec kColumns[] = {
    {"g_sn", "商品编号"},
    {"g_name", "商品名称"},
    {"g_qgd", "屈光度", ui::ColumnKind::Power},
    {"g_sgd", "散光度", ui::ColumnKind::Power},
};
constexpr ui::GridSpec kGrids[] = {{"gridGoods", "商品", kColumns}};
constexpr ui::CommandSpec kCommands[] = {{"btnOK", "确定", "F5"}, {"btnCancel", "取消", "Esc"}};
constexpr ui::ScreenSpec kSpec = {
    .name = "F_Guided", .title = "引导", .fields = kFields, .grids = kGrids, .commands = kCommands};
constexpr ui::ScreenSpec kPicker = {.name = "F_GuidedPicker", .title = "选择商品", .grids = kGrids};

class Guided : public ui::Screen {
 public:
  Guided() : Screen(kSpec) {
    panel().form({"tkh", "tname tsl"}).grid("gridGoods");
    auto pages = panel();
    pages.page("one", u"一"_qs).stretch();
    pages.page("two", u"二"_qs).form({"tlxmc"});
    panel().buttons("| btnOK btnCancel");
    field("tkh").onPick([this]() -> std::optional<ListItem> {
      const auto row = picker.pick();
      return row ? std::optional(ListItem{row->text("g_name"), row->text("g_sn")}) : std::nullopt;
    });
    on(command("btnOK"), [this] { isRefused(refusal, prompt()); });
  }
  ui::PickerScreen picker{{kPicker, [](const QString& typed) {
                             return Sql("select * from jxc_goods where g_jy=0 and g_name like ? order by g_sn",
                                        u'%' + typed + u'%');
                           }}};
  Refusal refusal;
};

/// Longer than a picker waits for a scanner, and a window for its display.
void pause() {
  QElapsedTimer passed;
  passed.start();
  while (passed.elapsed() < 150)
    QApplication::processEvents(QEventLoop::AllEvents, 20);
}

class KitGuidance : public ScreenTest {
 protected:
  KitGuidance() {
    insertRow("jxc_goods", {{"g_sn", "1"}, {"g_name", "x镜片"}, {"g_jy", 0}, {"g_qgd", "-3"}, {"g_sgd", "+0.75"}});
    insertRow("jxc_goods", {{"g_sn", "2"}, {"g_name", "y镜片"}, {"g_jy", 0}, {"g_qgd", "-12.25"}, {"g_sgd", "0"}});
  }
};

TEST_F(KitGuidance, ALetterOpensTheListAndTheFocusGoesOn) {
  Guided screen;
  const auto opens = [&](const char* key) {
    expectScreen("F_GuidedPicker", [&](ui::Screen& s) { press(s, "Return"); });
    screen.field("tkh").focus();
    pressIn(*screen.field("tkh").widget(), key);
    EXPECT_EQ(screen.field("tkh").text(), "x镜片") << key;
    EXPECT_TRUE(screen.field("tname").hasFocus()) << key;
  };
  open(screen, [&](ui::Screen&) {
    for (const char* key : {"F2", "F4", "Alt+Down"})
      opens(key);
    expectScreen("F_GuidedPicker", [&](ui::Screen& s) {
      EXPECT_EQ(s.field("tkey").text(), "y镜");
      press(s, "Return");
    });
    screen.field("tkh").focus();
    typeIn(*screen.field("tkh").widget(), u"y镜");
    pause();
    EXPECT_EQ(screen.field("tkh").key(), "2");
    EXPECT_TRUE(screen.field("tname").hasFocus());
    // What a scanner typed is taken back.
    screen.field("tkh").focus();
    typeIn(*screen.field("tkh").widget(), u"6900000000017");
    ui::dropTypedLetters();
    pause();
    press(screen, "Esc", u"输入的内容还没有确定，放弃吗？"_qs, Answer::Yes);
  });
}

TEST_F(KitGuidance, ARefusalLeadsToItsInputAndEnterToTheEnd) {
  Guided screen;
  const std::pair<Subject, const char*> led[] = {{Subject::Partner, "tkh"},
                                                 {Subject::Quantity, "tsl"},
                                                 {Subject::Brand, "tlxmc"},  // on the page behind
                                                 {Subject::None, "tname"},   // of no input
                                                 {Subject::Role, "tname"}};  // that this screen has not
  open(screen, [&](ui::Screen& s) {
    for (const auto& [about, input] : led) {
      s.field("tname").focus();
      screen.refusal = {u"不行！"_qs, about};
      press(s, "F5", u"不行！"_qs);
      EXPECT_TRUE(s.field(input).hasFocus()) << input;
    }
    s.grid("gridGoods").load("select * from jxc_goods where g_sn in ('1','2') order by g_sn");
    screen.refusal = {u"商品2不行！"_qs, Subject::Lines, u"2"_qs};
    press(s, "F5", u"商品2不行！"_qs);
    EXPECT_EQ(s.grid("gridGoods").currentText("g_sn"), "2");
    EXPECT_TRUE(s.grid("gridGoods").rowsHaveFocus());
    s.field("tname").focus();
    press(s, "Return");
    EXPECT_TRUE(s.field("tsl").hasFocus());
    press(s, "Return");  // past the list, to the page in sight
    EXPECT_TRUE(s.field("tlxmc").hasFocus());
    press(s, "Return");
    EXPECT_EQ(s.focusWidget(), &s.command("btnOK"));
  });
}

TEST_F(KitGuidance, NothingTypedIsLostWithoutAQuestion) {
  Guided screen;
  open(screen, [&](ui::Screen& s) {
    s.field("tname").setText(u"程序"_qs);  // by the program
    type(s, "tname", u"改");
    type(s, "tname", u"程序");  // and back
    press(s, "Esc");
    EXPECT_FALSE(s.isVisible());
  });
  open(screen, [&](ui::Screen& s) {
    type(s, "tname", u"改");
    press(s, "Esc", u"输入的内容还没有确定，放弃吗？"_qs, Answer::No);
    EXPECT_TRUE(s.isVisible());
    press(s, "Esc", u"输入的内容还没有确定，放弃吗？"_qs, Answer::Yes);
    EXPECT_FALSE(s.isVisible());
  });
}

TEST_F(KitGuidance, PowersHaveOneFormAndSortAsNumbers) {
  Guided screen;
  open(screen, [&](ui::Screen& s) {
    auto& list = s.grid("gridGoods");
    list.load("select * from jxc_goods where g_sn in ('1','2') order by g_sn");
    EXPECT_TRUE(list.isColumnVisible("g_qgd"));
    EXPECT_EQ(list.cellText(0, 2), "-3.00");
    EXPECT_EQ(list.cellText(0, 3), "+0.75");
    EXPECT_EQ(list.cellText(1, 3), "0.00");
    list.view()->sortByColumn(2, Qt::AscendingOrder);
    EXPECT_EQ(list.cellText(0, 2), "-12.25");
    list.load("select * from jxc_goods where g_sn='00000000'");
    EXPECT_FALSE(list.isColumnVisible("g_qgd"));  // no lens: no powers
  });
}

/// A name is cut only where that saves the list from scrolling to the side, and keeps its end: the powers of lenses.
TEST_F(KitGuidance, NamesAreWholeWhereTheListScrollsAnyway) {
  const QString name = u"依视路钻晶膜岩一点六七非球面防蓝光树脂镜片长名"_qs.repeated(2);
  for (const char* goods : {"1", "2"})
    execSql("update jxc_goods set g_name=? where g_sn=?", name + u"-3.0"_qs + goods, goods);
  Guided screen;
  open(screen, [&](ui::Screen& s) {
    auto& list = s.grid("gridGoods");
    auto* view = list.view();
    list.load("select * from jxc_goods where g_sn in ('1','2') order by g_sn");
    const int whole = view->fontMetrics().horizontalAdvance(name + u"-3.01"_qs);
    pause();  // a window manager gives it the size that it opens with
    s.resize(420, s.height());
    pause();
    EXPECT_LT(view->columnWidth(1), whole);
    EXPECT_LE(view->horizontalHeader()->length(), view->viewport()->width());
    view->clearSelection();
    const auto drawn = [&](int row) {
      return view->viewport()->grab(view->visualRect(view->model()->index(row, 1))).toImage();
    };
    EXPECT_NE(drawn(0), drawn(1)) << "two rows read the same";
    list.setCaption("g_qgd", QString(80, u'宽'));  // more than there is room for in any case
    list.load("select * from jxc_goods where g_sn='1' order by g_sn");
    s.resize(900, s.height());
    pause();
    EXPECT_GE(view->columnWidth(1), whole);
  });
}

TEST_F(KitGuidance, WhatWasDoneIsSaidAndAHabitAsksNoMore) {
  Guided screen;
  const QString operatorNumber = session().a_sn;
  open(screen, [&](ui::Screen& s) {
    s.prompt().say(u"已保存 XS2105030009"_qs);
    auto* line = s.findChild<QStatusBar*>(QStringLiteral("quietLine"));
    ASSERT_TRUE(line && line->isVisible());
    EXPECT_EQ(line->currentMessage(), "已保存 XS2105030009");
    const auto* heard = QAccessible::queryAccessibleInterface(line);
    EXPECT_EQ(heard->text(QAccessible::Name), line->currentMessage());

    expectQuestion(u"是否确认保存？"_qs, Answer::No);
    EXPECT_FALSE(s.prompt().askUnlessHabit(u"是否确认保存？"_qs, kSavesAtOnce));
    QTimer::singleShot(0, [] { QApplication::activeModalWidget()->findChild<QCheckBox*>(u"chkAlways"_qs)->click(); });
    expectQuestion(u"是否确认保存？"_qs, Answer::Yes);
    EXPECT_TRUE(s.prompt().askUnlessHabit(u"是否确认保存？"_qs, kSavesAtOnce));
    EXPECT_TRUE(s.prompt().askUnlessHabit(u"是否确认保存？"_qs, kSavesAtOnce));  // nobody is asked
    session().a_sn = QStringLiteral("100009");
    expectQuestion(u"是否确认保存？"_qs, Answer::No);  // another operator is
    EXPECT_FALSE(s.prompt().askUnlessHabit(u"是否确认保存？"_qs, kSavesAtOnce));
  });
  session().a_sn = operatorNumber;
  setHabit(kSavesAtOnce, false);  // the station remembers it longer than this test
}

}  // namespace kit_guidance_test
}  // namespace jxc::test
