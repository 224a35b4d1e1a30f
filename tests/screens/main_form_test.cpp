// The way into the program, its pages, its commands and the way out.
#include "core/screens/main_form.h"

#include "core/screens/command_runner.h"
#include "core/screens/command_search.h"
#include "core/screens/command_tile.h"
#include "core/screens/login.h"
#include "core/start_reminders.h"
#include "screens/harness/screen_test.h"
#include "ui/display.h"
#include "ui/skin.h"

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QTextEdit>

#include <set>

namespace jxc::test {

class MainFormTest : public ScreenTest {};

TEST_F(MainFormTest, LoginTellsABlankPasswordRefusesAWrongOneAndBeginsOnPageOne) {
  execSql("update jxc_admin set a_pwd='abc' where a_name='admin'");
  insertRow("jxc_admin", {{"a_sn", u"100002"}, {"a_name", u"王芳"}, {"r_sn", u"100001"}, {"a_pwd", u""}, {"a_jyt", 0}});
  insertRow("jxc_admin", {{"a_sn", u"100003"}, {"a_name", u"离职"}, {"r_sn", u"100001"}, {"a_pwd", u""}, {"a_jyt", 1}});
  session() = Session{};
  TF_MainForm form;
  expectScreen("F_Login", [&](ui::Screen& s) {
    auto& login = static_cast<TF_Login&>(s);
    EXPECT_EQ(s.windowTitle(), QStringLiteral("晴川进销存管理系统 ---- 操作员登录"));
    EXPECT_EQ(login.comAdmin.items().size(), 2u);  // nobody who is disabled
    EXPECT_TRUE(login.tpwd.hasFocus());
    choose(s, "comAdmin", QStringLiteral("王芳"));
    EXPECT_EQ(login.lMsg->text(), QStringLiteral("初始密码为空"));
    choose(s, "comAdmin", QStringLiteral("admin"));
    EXPECT_EQ(login.lMsg->text(), QString());
    type(s, "tpwd", u"wrong");
    press(s, "F5", QStringLiteral("用户密码不正确，请重新输入！"));
    EXPECT_TRUE(s.isVisible());
    EXPECT_EQ(login.tpwd.text(), QString());
    enter(s, "tpwd", u"abc");
  });
  EXPECT_TRUE(form.formShow());
  form.Timer1.stop();
  EXPECT_TRUE(form.isVisible());
  EXPECT_EQ(form.currentPage(), ui::Page::Purchasing) << "the first with something to do";
  EXPECT_EQ(form.findChild<QLabel*>(QStringLiteral("RzStatusPane_Admin"))->text(), QStringLiteral("操作员：admin"));
  EXPECT_EQ(form.windowTitle(), QStringLiteral("晴川进销存管理系统 [晴川公司] 2021V2"));
  EXPECT_EQ(lookupNumber("select count(*) from jxc_log where log_note=?", u"登录系统"), 1);
  // The activation stored the opening stock of the month.
  EXPECT_GT(lookupNumber("select count(*) from jxc_kcjs where js_rq=?", u"2021-05"), 0);
}

TEST_F(MainFormTest, LeavingTheFirstLoginEndsAndLeavingAChangeReturns) {
  TF_MainForm form;
  expectScreen("F_Login", [&](ui::Screen& s) { press(s, "Esc"); });
  EXPECT_FALSE(form.formShow());
  insertRow("jxc_admin", {{"a_sn", u"100002"}, {"a_name", u"王芳"}, {"r_sn", u"100001"}, {"a_pwd", u""}, {"a_jyt", 0}});
  form.formActivate();
  expectScreen("F_Login", [&](ui::Screen& s) { press(s, "Esc"); });
  form.run("btn_Hbgl");
  EXPECT_EQ(session().a_name, QStringLiteral("admin"));
  setAllRights("100002", {});
  setRights("100002", "xsgl", u"1"_qs);
  execSql("update jxc_admin set r_sn='100002' where a_sn='100002'");
  expectScreen("F_Login", [&](ui::Screen& s) {
    choose(s, "comAdmin", QStringLiteral("王芳"));
    press(s, "F5");
  });
  form.run("btn_Hbgl");
  EXPECT_EQ(session().a_name, QStringLiteral("王芳"));
  EXPECT_EQ(form.currentPage(), ui::Page::Sales) << "she may sell";
  expectScreen("F_Login", [&](ui::Screen& s) {
    EXPECT_EQ(s.field("comAdmin").text(), u"王芳"_qs) << "who was here last";
    press(s, "Esc");
  });
  EXPECT_FALSE(TF_MainForm().formShow());
  EXPECT_EQ(form.findChild<QLabel*>(QStringLiteral("RzStatusPane_Admin"))->text(), QStringLiteral("操作员：王芳"));
}

TEST_F(MainFormTest, PagesFollowTheParameters) {
  TF_MainForm form;
  const auto isShown = [&](const char* name) { return !form.findChild<QWidget*>(QLatin1String(name))->isHidden(); };
  setParameter("cs_sprk", 0);
  form.formActivate();
  EXPECT_FALSE(isShown("btn_Menu1_Btn6"));
  EXPECT_EQ(form.visibleTiles().size(), 5u);
  setParameter("cs_sprk", 1);
  setParameter("cs_spck", 1);
  setParameter("cs_kddy", 1);
  setParameter("cs_kp", 0);
  form.formActivate();
  EXPECT_TRUE(isShown("btn_Menu1_Btn6"));
  EXPECT_TRUE(isShown("btn_Menu2_Btn3"));
  EXPECT_TRUE(isShown("btn_Menu2_Btn2"));
  EXPECT_FALSE(isShown("btn_Menu2_Btn7"));
  EXPECT_FALSE(isShown("btn_Menu8_Btn7"));
  setParameter("cs_kp", 1);
  form.formActivate();
  EXPECT_TRUE(isShown("btn_Menu8_Btn8"));
}

TEST_F(MainFormTest, AStationThatIsLeftAloneLocksItselfOverWhatIsOpen) {
  execSql("update jxc_admin set a_pwd='Abc' where a_name='admin'");
  session() = Session{};
  TF_MainForm form;
  constexpr qint64 minute = 60000;
  expectScreen("F_Login", [&](ui::Screen& s) {
    form.idle.look(60 * minute);
    EXPECT_EQ(QApplication::activeModalWidget(), &s) << "nobody is in yet";
    enter(s, "tpwd", u"Abc");
  });
  ASSERT_TRUE(form.formShow());
  form.Timer1.stop();
  const auto unlock = [&](ui::Screen& s) {
    type(s, "tpwd", u"Abc");
    press(s, "F5");
  };
  expectScreen("F_Admin", [&](ui::Screen& s) {
    press(s, "F2", "F_Admin_Add", [&](ui::Screen& add) {
      type(add, "tname", u"王芳");
      form.idle.look(15 * minute - 1);
      {
        Transaction working(accountDb());
        form.idle.look(16 * minute);  // not over a command that is at work
      }
      EXPECT_EQ(QApplication::activeModalWidget(), &add);
      expectScreen("F_Xtsd", unlock);
      form.idle.look(15 * minute);
      EXPECT_EQ(QApplication::activeModalWidget(), &add);
      EXPECT_EQ(add.field("tname").text(), u"王芳"_qs) << "the draft stayed";
      press(add, "Esc", u"输入的内容还没有确定，放弃吗？"_qs, Answer::Yes);
    });
    press(s, "Esc");
  });
  form.run("btn_Menu6_Btn3");
  keepIdleLockMinutes(0);
  form.idle.look(600 * minute);
  keepIdleLockMinutes(15);
}

TEST_F(MainFormTest, KeysMoveBetweenTilesPagesAndTheLock) {
  execSql("update jxc_admin set a_pwd='Abc' where a_name='admin'");
  TF_MainForm form;
  form.formActivate();
  QApplication::setActiveWindow(&form);
  pressIn(form, "Ctrl+7");
  EXPECT_EQ(form.currentPage(), ui::Page::Basic);
  ASSERT_EQ(form.focusWidget(), form.visibleTiles().front());
  pressIn(*form.focusWidget(), "Right");
  EXPECT_EQ(form.focusWidget()->objectName(), QStringLiteral("btn_Menu6_Btn2"));
  typeIn(*form.focusWidget(), u"c");  // 仓库设置, 操作员设置
  EXPECT_EQ(form.focusWidget()->objectName(), QStringLiteral("btn_Menu6_Btn5"));
  expectScreen("F_Xtwh", [&](ui::Screen& s) { press(s, "Esc"); });
  pressIn(*form.focusWidget(), "9");
  EXPECT_EQ(form.currentPage(), ui::Page::Basic) << "active again, where it was";
  EXPECT_EQ(form.focusWidget()->objectName(), QStringLiteral("btn_Menu6_Btn5"));
  pressIn(form, "Ctrl+K");
  expectScreen("F_Ckgl", [&](ui::Screen& s) { press(s, "Esc"); });
  typeIn(*form.focusWidget(), u"cksz");
  pressIn(*form.focusWidget(), "Return");
  EXPECT_EQ(form.focusWidget()->objectName(), u"btn_Menu6_Btn1"_qs) << "digits are for the page again";

  int mails = 0;
  mainFormHooks().sendMail = [&] { ++mails; };
  expectScreen("F_Xtsd", [&](ui::Screen& s) {
    EXPECT_EQ(s.field("tname").text(), QStringLiteral("admin"));
    press(s, "Esc");
    press(s, "Alt+F4");
    s.close();  // what the close box of a window manager does
    EXPECT_TRUE(s.isVisible());
    // Nothing comes up over the lock, and nothing below it takes a key.
    EXPECT_EQ(QApplication::activeModalWidget(), &s);
    form.Timer1.start(0);
    form.Timeremail.start(0);
    settle();
    settle();
    EXPECT_EQ(mails, 0);
    pressIn(form, "F2");
    pressIn(form, "1");
    pressIn(form, "Esc");
    EXPECT_EQ(QApplication::activeModalWidget(), &s);
    expectNotice(QStringLiteral("用户密码错误，请重新输入！"));
    type(s, "tpwd", u"Abcd");
    press(s, "F5");
    EXPECT_EQ(s.field("tpwd").text(), QString());
    type(s, "tpwd", u"Abc");
    press(s, "F5");
    EXPECT_FALSE(s.isVisible());
    expectScreen("F_Mryt", {});  // what waited comes once the operator is back
  });
  pressIn(form, "F2");
  settle();
  mainFormHooks() = {};
}

TEST_F(MainFormTest, CommandsAreFoundByNameAndInitials) {
  const auto first = [](const char16_t* typed) {
    const auto found = matchingCommands(QString::fromUtf16(typed));
    return found.empty() ? QString()
                         : QString::fromUtf8(found.front()->name.data(), qsizetype(found.front()->name.size()));
  };
  EXPECT_EQ(first(u"cgjh"), QStringLiteral("btn_Menu1_Btn1"));
  EXPECT_EQ(first(u"退货"), QStringLiteral("btn_Menu1_Btn2"));
  EXPECT_EQ(first(u"分店"), QStringLiteral("btnFd"));
  EXPECT_EQ(first(u"zzzz"), QString());
  // 行 and 调 have two readings: whichever is typed.
  EXPECT_EQ(first(u"xjyh"), QStringLiteral("btn_Menu5_Right2"));
  EXPECT_EQ(first(u"xjyx"), QStringLiteral("btn_Menu5_Right2"));
  EXPECT_EQ(first(u"kcdb"), first(u"库存调拨"));
  // A command that the parameters hide is not found either.
  setParameter("cs_sprk", 0);
  EXPECT_EQ(first(u"商品入库"), QString());
}

TEST_F(MainFormTest, TheLookIsTriedKeptAndComesBack) {
  insertRow("jxc_skin", {{"skin_name", u"iMaginary"}, {"a_name", u"王芳"}});
  open("F_Skin", [&](ui::Screen& s) { press(s, "F5"); });
  EXPECT_EQ(lookupValue("select skin_name from jxc_skin where a_name=?", u"admin"), QStringLiteral("iMaginary"));
  EXPECT_EQ(ui::currentSkin(), QStringLiteral("iMaginary"));
  EXPECT_FALSE(ui::applySkin(QStringLiteral("../data/jxc")));
  EXPECT_EQ(ui::currentSkin(), QStringLiteral("iMaginary"));
}

TEST_F(MainFormTest, TheWayOutAsks) {
  TF_MainForm form;
  expectScreen("F_Login", [&](ui::Screen& s) { press(s, "F5"); });
  ASSERT_TRUE(form.formShow());
  form.Timer1.stop();
  expectQuestion(QStringLiteral("是否要退出系统？"), Answer::No);
  pressIn(form, "Esc");
  EXPECT_TRUE(form.isVisible());
  int backups = 0;
  mainFormHooks().backupOnWayOut = [&] { return ++backups > 0; };
  session().back_exit = QStringLiteral("1");
  expectQuestion(QStringLiteral("是否要退出系统？"), Answer::Yes);
  form.run("btn_Tcxt");
  mainFormHooks() = {};
  EXPECT_FALSE(form.isVisible());
  EXPECT_EQ(backups, 1);
  EXPECT_EQ(lookupNumber("select count(*) from jxc_log where log_note=?", u"退出系统"), 1);
}

TEST_F(MainFormTest, RemindersAtStart) {
  const auto first = tipOfTheDay();
  EXPECT_FALSE(first.text.isEmpty());
  EXPECT_EQ(nextTip(previousTip(first.id).id).id, first.id);
  EXPECT_EQ(lookupNumber("select count(*) from jxc_mryt where mr_state='1'"), 1);
  // The same one all day, another each day, all sixteen in their turn.
  EXPECT_EQ(tipOfTheDay().id, first.id);
  std::set<QString> texts;
  for (int day = 4; day < 20; ++day) {
    setClock(QStringLiteral("2021-05-%1").arg(day, 2, 10, QChar(u'0')));
    const auto tip = tipOfTheDay();
    EXPECT_EQ(tipOfTheDay().id, tip.id) << day;
    texts.insert(tip.text);
  }
  EXPECT_EQ(texts.size(), 16u);
  EXPECT_EQ(tipOfTheDay().id, first.id) << "after sixteen days the first again";
  setClock(u"2021-05-03 14:30:00"_qs);
  open("F_Mryt", [&](ui::Screen& s) {
    check(s, "chkDisp", false);
    press(s, "Esc");
  });
  EXPECT_FALSE(showsDailyTip());

  // Monday 3 May 2021: weekday 2, day "03".
  EXPECT_FALSE(hasDueReminders());
  insertRow("jxc_tx", {{"tx_dx", u"admin"}, {"tx_sj", u"2021-05-03"}, {"tx_zt", u"0"}, {"tx_fs", 1}});
  EXPECT_TRUE(hasDueReminders());
  markDueReminders();
  EXPECT_FALSE(hasDueReminders());
  insertRow("jxc_tx", {{"tx_dx", u"全体人员"}, {"tx_sj", u"3,4,"}, {"tx_zt", u"0"}, {"tx_fs", 3}});
  EXPECT_FALSE(hasDueReminders());
  insertRow("jxc_tx", {{"tx_dx", u"全体人员"}, {"tx_sj", u"03"}, {"tx_zt", u"0"}, {"tx_fs", 4}});
  EXPECT_TRUE(hasDueReminders());
  markDueReminders();
  EXPECT_TRUE(hasDueReminders());  // every month again
  TF_MainForm form;
  expectScreen(ui::isScreenRegistered("F_Sjtx") ? "F_Sjtx" : "F_NotYet", [](ui::Screen& s) {
    EXPECT_EQ(s.windowTitle(), u"今日事件提醒"_qs);
    press(s, "Esc");
  });
  form.Timer1.start(0);
  settle();
  settle();
}

TEST_F(MainFormTest, TheNotePadKeepsItsFormat) {
  open("F_Bqjl", [&](ui::Screen& s) {
    auto* note = s.findChild<QTextEdit*>(u"bqNote"_qs);
    note->clear();
    press(s, "Ctrl+B");
    note->insertPlainText(u"周五盘点"_qs);
    press(s, "F9");
    type(s, "tword", u"盘点");
    press(s, "F5");
    EXPECT_EQ(note->textCursor().selectedText(), u"盘点"_qs);
    type(s, "tword", u"没有");
    press(s, "F5", u"没有找到“没有”！"_qs);
    press(s, "Esc");
  });
  open("F_Bqjl", [&](ui::Screen& s) {
    auto* note = s.findChild<QTextEdit*>(u"bqNote"_qs);
    EXPECT_EQ(note->toPlainText(), u"周五盘点2021-05-03 14:30"_qs);
    note->moveCursor(QTextCursor::Start);
    note->moveCursor(QTextCursor::NextCharacter);
    EXPECT_GT(note->fontWeight(), QFont::Normal);
    note->clear();
    press(s, "Esc");
  });
  EXPECT_EQ(readNotePad(), u"无内容"_qs);
}

}  // namespace jxc::test
