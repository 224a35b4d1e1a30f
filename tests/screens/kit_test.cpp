// The kit itself, on a screen of the test: keys, inputs, lists and what opens on top.
#include "core/statements.h"
#include "screens/harness/screen_test.h"
#include "ui/display.h"
#include "ui/picker_screen.h"
#include "ui/text_input.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QHelpEvent>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QTableView>
#include <QToolTip>

namespace jxc::test {
namespace kit_test {

constexpr ui::FieldSpec kFields[] = {
    {"tname", "备注名称：", ui::FieldKind::Text, "jxc_djbz.dj_name"},
    {"tje", "金额：", ui::FieldKind::Money, "", 0, ui::NoMinus},
    {"dateRq", "日期：", ui::FieldKind::Date},
    {"dateYxq", "有效期：", ui::FieldKind::Date, "", 0, ui::MayBeEmpty},
    {"comCk", "仓库：", ui::FieldKind::Combo},
    {"tnote", "说明：", ui::FieldKind::EditCombo, "jxc_djbz.dj_name"},
    {"chkOn", "启用", ui::FieldKind::Check},
    {"tmemo", "详细说明：", ui::FieldKind::Memo},
};
constexpr ui::ColumnSpec kColumns[] = {
    {"dj_name", "单位"},
    {.field = "dj_pl", .caption = "次数", .kind = ui::ColumnKind::Quantity, .use = {.sum = true, .editable = true}},
};
constexpr ui::GridSpec kGrids[] = {{"gridDj", "计量单位", kColumns, "按F2添加单位"}};
constexpr ui::CommandSpec kCommands[] = {{"btnAdd", "添加", "F2"},      {"btnDel", "删除", "Ctrl+D"},
                                         {"btnEnd", "结清", "Ctrl+E"},  {"btn_Dele", "删单", "Ctrl+Del"},
                                         {"btnCopy", "复制", "Ctrl+C"}, {"btnAll", "全部", "F4"},
                                         {"btnOK", "确定", "F5"},       {"btnCancel", "取消", "Esc"}};
constexpr ui::ScreenSpec kSpec = {
    .name = "F_KitTest", .title = "试验屏幕", .fields = kFields, .grids = kGrids, .commands = kCommands};

constexpr ui::ScreenSpec kPicker = {.name = "F_KitPicker", .title = "选择备注", .grids = kGrids};

class TF_KitTest : public ui::Screen {
 public:
  TF_KitTest() : Screen(kSpec) {
    on(btnAdd, [this] { ++added; });
    on(btnOK, [this] {
      if (tname.trimmed().isEmpty()) return prompt().notice(QStringLiteral("备注名称必须填写！"));
      accept();
    });
    for (const char* name : {"btnDel", "btnEnd", "btn_Dele", "btnCopy", "btnAll"})
      on(command(name), [this, name] { given << QLatin1StringView(name); });
    tje.onChanged([this] { ++changes; });
    gridDj.onChanged([this](const Row& row, std::string_view, const QString& text) {
      execSql("update jxc_djbz set dj_pl=? where id=?", text.toInt(), row.integer("id"));
      gridDj.reload();
    });
  }
  ui::Field& tname = field("tname");
  ui::Field& tje = field("tje");
  ui::Field& dateRq = field("dateRq");
  ui::Field& dateYxq = field("dateYxq");
  ui::Field& comCk = field("comCk");
  ui::Grid& gridDj = grid("gridDj");
  QPushButton& btnAdd = command("btnAdd");
  QPushButton& btnOK = command("btnOK");
  int added = 0;
  int changes = 0;
  QStringList given;  // the other commands, as they came

 protected:
  bool mayLeave() override { return tname.isEmpty() || prompt().ask(QStringLiteral("放弃输入吗？")); }
  void activate() override {
    execSql("delete from jxc_djbz");
    for (const auto& [name, uses] : {std::pair("副", 10), {"片", 9}, {"盒", 100}})
      insertRow("jxc_djbz", {{"dj_name", name}, {"dj_pl", uses}});
    comCk.setItems({{u"所有仓库"_qs, u"-1"_qs}, {u"主仓"_qs, u"100001"_qs}});
    gridDj.load("select * from jxc_djbz order by id");
  }
};

}  // namespace kit_test

TEST_F(ScreenTest, KeysMoveConfirmAndLeave) {
  kit_test::TF_KitTest screen;
  expectNotice(QStringLiteral("备注名称必须填写！"));
  expectQuestion(QStringLiteral("放弃输入吗？"), Answer::No);
  const bool accepted = open(screen, [&](ui::Screen& s) {
    EXPECT_TRUE(screen.tname.hasFocus());
    press(s, "F5");
    EXPECT_TRUE(s.isVisible());
    EXPECT_EQ(s.command("btnOK").text(), QStringLiteral("确定(F5)"));
    press(s, "F2");
    EXPECT_EQ(screen.added, 1);
    enter(s, "tname", u"二号仓");
    EXPECT_TRUE(screen.tje.hasFocus());
    for (const char* next : {"dateRq", "dateYxq", "comCk", "tnote", "chkOn"}) {
      press(s, "Return");
      EXPECT_TRUE(s.field(next).hasFocus()) << next;
    }
    press(s, "Esc");
    EXPECT_TRUE(s.isVisible());
    press(s, "F5");
    EXPECT_FALSE(s.isVisible());
  });
  EXPECT_TRUE(accepted);
  EXPECT_EQ(screen.tname.text(), QStringLiteral("二号仓"));
}

// Wherever the operator types, the key of a command is the command's, whatever the desktop makes of it in an input.
TEST_F(ScreenTest, CommandsHaveTheirKeysInEveryInput) {
  kit_test::TF_KitTest screen;
  const auto given = [&] { return std::exchange(screen.given, {}).join(u' '); };
  open(screen, [&](ui::Screen& s) {
    for (const char* input : {"tname", "tje", "dateRq", "comCk", "tnote", "tmemo"}) {
      auto& field = s.field(input);
      field.setText(u"2026-05-01"_qs);
      const QString before = field.text();
      field.focus();
      if (field.spec().kind != ui::FieldKind::Combo) press(s, "Home");
      for (const char* key : {"Ctrl+D", "Ctrl+E", "Ctrl+Del", "F4"})
        press(s, key);
      const bool hasCalendar = field.spec().kind == ui::FieldKind::Date;  // opens by F4
      EXPECT_EQ(given(), hasCalendar ? "btnDel btnEnd btn_Dele" : "btnDel btnEnd btn_Dele btnAll") << input;
      EXPECT_EQ(field.text(), before) << input;
      if (auto* calendar = QApplication::activePopupWidget()) calendar->close();
    }
    // What is typed in a cell counts before the command does.
    typeInCell(s, "gridDj", 0, "dj_pl", u"7");
    press(s, "Ctrl+D");
    EXPECT_EQ(given(), "btnDel");
    EXPECT_EQ(lookupValue("select dj_pl from jxc_djbz where dj_name='副'"), "7");

    // What is marked in a text is copied; a copy of nothing is the command's.
    auto* name = static_cast<QLineEdit*>(screen.tname.widget());
    screen.tname.setText(u"abc"_qs);
    screen.tname.focus();
    press(s, "Ctrl+C");
    EXPECT_EQ(given(), "");
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "abc");
    name->deselect();
    press(s, "Ctrl+C");
    EXPECT_EQ(given(), "btnCopy");

    // The key of a grey command does nothing, least of all to the text.
    s.command("btnDel").setEnabled(false);
    name->home(false);
    press(s, "Ctrl+D");
    EXPECT_EQ(screen.tname.text() + given(), "abc");
    s.command("btnDel").setEnabled(true);

    // While a word is composed, the keys are the input method's.
    QInputMethodEvent composing(u"zhong"_qs, {});
    QApplication::sendEvent(name, &composing);
    press(s, "F4");
    EXPECT_EQ(given(), "");
    QInputMethodEvent composed;
    composed.setCommitString(u"中"_qs);
    QApplication::sendEvent(name, &composed);
    press(s, "F4");
    EXPECT_EQ(given(), "btnAll");
    screen.tname.clear();
  });
}

TEST_F(ScreenTest, InputsHoldWhatTheirKindAllows) {
  kit_test::TF_KitTest screen;
  open(screen, [&](ui::Screen& s) {
    // Money: no letters, no minus here; seen plain while typed, with its symbol afterwards.
    type(s, "tje", u"-12x34.5");
    EXPECT_EQ(screen.tje.number(), 1234.5);
    EXPECT_GT(screen.changes, 0);
    press(s, "Return");
    EXPECT_EQ(static_cast<QLineEdit*>(screen.tje.widget())->text(), QStringLiteral("￥1,234.50"));
    EXPECT_EQ(screen.tje.text(), QStringLiteral("1234.5"));

    screen.dateRq.load(QStringLiteral("2021-05-03"));
    enter(s, "dateRq", u"2021-2-30");
    EXPECT_EQ(screen.dateRq.text(), QStringLiteral("2021-05-03"));
    enter(s, "dateRq", u"20210228");
    EXPECT_EQ(screen.dateRq.text(), QStringLiteral("2021-02-28"));
    EXPECT_TRUE(screen.dateRq.isDirty());
    screen.dateRq.cancel();
    EXPECT_EQ(screen.dateRq.text(), QStringLiteral("2021-05-03"));
    EXPECT_EQ(screen.dateYxq.text(), QString());

    // A name is as long as its column.
    type(s, "tname", QString(100, u'仓'));
    EXPECT_EQ(screen.tname.text().size(), 32);
    type(s, "tname", u"");

    choose(s, "comCk", QStringLiteral("主仓"));
    EXPECT_EQ(screen.comCk.key(), QStringLiteral("100001"));
    check(s, "chkOn", true);
    EXPECT_TRUE(s.field("chkOn").isChecked());
  });
}

TEST_F(ScreenTest, GridSortsSumsEditsAndKeepsItsRow) {
  kit_test::TF_KitTest screen;
  open(screen, [&](ui::Screen& s) {
    auto& grid = screen.gridDj;
    ASSERT_EQ(grid.rowCount(), 3);
    EXPECT_EQ(grid.footerText("dj_pl"), QStringLiteral("119.00"));
    grid.view()->sortByColumn(1, Qt::AscendingOrder);
    EXPECT_EQ(grid.cellText(0, 0), QStringLiteral("片"));
    EXPECT_EQ(grid.cellText(2, 0), QStringLiteral("盒"));
    edit(s, "gridDj", 2, "dj_pl", u"1");
    EXPECT_EQ(grid.footerText("dj_pl"), QStringLiteral("20.00"));
    EXPECT_EQ(grid.currentText("dj_name"), QStringLiteral("盒"));  // though it stands first now
    EXPECT_EQ(grid.cellText(0, 0), QStringLiteral("盒"));
    edit(s, "gridDj", 0, "dj_pl", u"");
    EXPECT_EQ(lookupNumber("select dj_pl from jxc_djbz where dj_name=?", "盒"), 0);
    EXPECT_TRUE(grid.tabSeparated(false).startsWith(QStringLiteral("单位\t次数\n盒\t0\n")));
    const auto told = [&] {  // under the mouse
      const QPoint at = grid.view()->visualRect(grid.view()->model()->index(0, 0)).center();
      QHelpEvent help(QEvent::ToolTip, at, grid.view()->viewport()->mapToGlobal(at));
      QApplication::sendEvent(grid.view()->viewport(), &help);
      return QToolTip::text();
    };
    EXPECT_EQ(told(), "");
    grid.view()->horizontalHeader()->setMinimumSectionSize(8);
    grid.view()->setColumnWidth(0, 8);
    EXPECT_EQ(told(), "盒");
    QToolTip::hideText();
    for (const auto& [stored, copied] :
         {std::pair{u"=1+1"_qs, u"'=1+1"_qs}, {u"@a"_qs, u"'@a"_qs}, {u"-3.00"_qs, u"-3.00"_qs}}) {
      RowSet rows({"id", "dj_name", "dj_pl"});
      rows.addInteger(1);
      rows.addText(stored.toStdString());
      rows.addInteger(-2);
      grid.setRows(std::move(rows));
      EXPECT_EQ(grid.tabSeparated(false), u"单位\t次数\n"_qs + copied + u"\t-2\n"_qs) << "a text is no formula";
    }
  });
}

TEST_F(ScreenTest, APickerSearchesWhileItIsTypedIn) {
  for (const auto* name : {u"现金结算", u"月底结清", u"月初结清"})
    insertRow("jxc_djbz", {{"dj_name", name}, {"dj_pl", 0}});
  ui::PickerScreen picker({kit_test::kPicker, [](const QString& typed) {
                             return Sql("select * from jxc_djbz where dj_name like ? order by id", u'%' + typed + u'%');
                           }});
  std::optional<Row> taken;
  const auto pick = [&](Steps steps) {
    expectScreen("F_KitPicker", std::move(steps));
    taken = picker.pick();
  };
  pick([&](ui::Screen& s) {
    EXPECT_EQ(picker.list.rowCount(), 3);
    type(s, "tkey", u"月");
    EXPECT_EQ(picker.list.rowCount(), 2);
    press(s, "Down");
    press(s, "Return");
  });
  ASSERT_TRUE(taken);
  EXPECT_EQ(taken->text("dj_name"), QStringLiteral("月初结清"));
  pick([&](ui::Screen& s) {
    EXPECT_EQ(picker.list.rowCount(), 3);  // it begins anew
    press(s, "Esc");
  });
  EXPECT_FALSE(taken);
  pick([&](ui::Screen& s) {
    enter(s, "tkey", u"没有");
    press(s, "F5");
    EXPECT_TRUE(s.isVisible());  // there is nothing to take
  });
  EXPECT_FALSE(taken);
}

TEST(KitDisplay, AnEmptyClipboardPastesNothing) {
  QApplication::clipboard()->setMimeData(new QMimeData);
  ui::MemoInput memo;
  ui::RichTextInput note;
  memo.setPlainText(u"备注"_qs);
  memo.paste();
  note.paste();
  EXPECT_EQ(memo.toPlainText() + note.toPlainText(), "备注");
}

TEST(KitDisplay, DatesAndNumbersAreReadAsTheyAreTyped) {
  EXPECT_EQ(ui::readDate(QStringLiteral("2026/5/3")), QStringLiteral("2026-05-03"));
  EXPECT_EQ(ui::readDate(QStringLiteral("２０２６年５月３日")), QStringLiteral("2026-05-03"));
  EXPECT_EQ(ui::readDate(QStringLiteral("2026-13-01")), std::nullopt);
  EXPECT_EQ(ui::readDate(QStringLiteral("abc")), std::nullopt);
  EXPECT_EQ(ui::readNumber(QStringLiteral("￥1,234.50")), 1234.5);
  EXPECT_EQ(ui::readNumber(QStringLiteral("－１２。５")), -12.5);
  EXPECT_EQ(ui::readNumber(QStringLiteral("1e5")), std::nullopt);
  EXPECT_EQ(ui::readNumber(QStringLiteral("1.2.3")), std::nullopt);
}

}  // namespace jxc::test
