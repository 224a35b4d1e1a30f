// 备份/恢复数据库: its two pages, the short form, what the window does by itself, and the way back to the login.
#include "core/at_work.h"
#include "core/data_module.h"
#include "core/screens/main_form.h"
#include "core/statements.h"
#include "engine/presence.h"
#include "maintenance/backups.h"
#include "screens/harness/screen_test.h"
#include "ui/file_dialogs.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QMessageBox>
#include <QTabWidget>

#include <thread>

namespace jxc::test {

class BackupScreens : public ScreenTest {
 protected:
  BackupScreens() { QDir(file({})).mkdir(u"kept"_qs); }
  /// Questions whose words depend on the machine.
  bool meets(QDialog& dialog) override {
    auto* const box = qobject_cast<QMessageBox*>(&dialog);
    if (!box) return false;
    met << box->text();
    if (box->text().contains(u"确定要恢复吗"_qs)) {
      expectNotice(u"恢复完成！"_qs);
      expectScreen("F_Login", [](ui::Screen& login) { press(login, "F5"); });
    }
    const bool stays = box->text().contains(u"仍要退出吗"_qs);
    for (QAbstractButton* button : box->buttons())
      if (button->objectName() == (stays ? u"btnNo"_qs : u"btnYes"_qs)) return button->click(), true;
    return false;
  }
  QStringList met;
  QStringList kept() const { return QDir(file(u"kept"_qs)).entryList({u"*.DAT"_qs}, QDir::Files, QDir::Name); }
};

TEST_F(BackupScreens, SettingsAreKeptWithABackupAndTheShortFormLeavesTimerAndDays) {
  open("F_Backup", [&](ui::Screen& s) {
    EXPECT_FALSE(s.field("tsj").isEnabled());
    press(s, "F5", u"备份路径必须填写！"_qs);
    type(s, "tPath", file(u"nowhere"_qs));
    press(s, "F5", u"备份失败，文件夹不存在！"_qs);
    ui::setFileAnswer([&](const QString&, const QString&) { return file(u"kept"_qs); });
    press(s, "F3");
    ui::setFileAnswer({});
    EXPECT_EQ(s.field("tPath").text(), file(u"kept"_qs));
    check(s, "chkAuto", true);
    type(s, "tsj", u"3");
    choose(s, "comDays", u"7天的备份"_qs);
    press(s, "F5", u"备份完成！"_qs);
    EXPECT_TRUE(s.said().contains(u".DAT"_qs));
    press(s, "F1");
    press(s, "Esc");  // the help first
    EXPECT_TRUE(s.isVisible());
  });
  EXPECT_EQ(kept().size(), 1);
  EXPECT_EQ(session().back_auto, u"1"_qs);
  open("F_Backup2", [&](ui::Screen& s) {
    EXPECT_EQ(s.field("tPath").text(), file(u"kept"_qs));
    check(s, "chkExit", true);
    press(s, "F5", u"备份完成！"_qs);
  });
  const BackupSettings settings = backupSettings();
  EXPECT_TRUE(settings.automatic && settings.atExit);
  EXPECT_EQ(settings.hours, 3);
  EXPECT_EQ(settings.days, 7);
  EXPECT_EQ(kept().size(), 2);
}

TEST_F(BackupScreens, TheWindowBacksUpByItselfAndShowsHowTheBackupsStand) {
  TF_MainForm form;
  expectScreen("F_Login", [&](ui::Screen& s) { press(s, "F5"); });
  ASSERT_TRUE(form.formShow());
  form.Timer1.stop();
  auto& pane = *form.findChild<QPushButton*>(u"RzStatusPane_Backup"_qs);
  EXPECT_EQ(pane.text(), u"没有备份"_qs);
  EXPECT_TRUE(pane.property("alarming").toBool());
  BackupSettings settings{.automatic = true, .hours = 2, .folder = file(u"kept"_qs), .atExit = true};
  ASSERT_TRUE(saveBackupSettings(settings, prompt));
  form.formActivate();
  EXPECT_EQ(form.TimerBackUp.interval(), 2 * 3600000);
  const int left = form.TimerBackUp.remainingTime();
  form.formActivate();
  EXPECT_LE(form.TimerBackUp.remainingTime(), left) << "looking at the window does not put the backup off";
  mainFormHooks().backupDatabase();
  for (int i = 0; i < 500 && kept().isEmpty() && pane.text() != u"备份：05-03 14:30"_qs; ++i)
    settle();
  ASSERT_EQ(kept().size(), 1);
  for (int i = 0; i < 500 && pane.text() != u"备份：05-03 14:30"_qs; ++i) {
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
    settle();
  }
  EXPECT_EQ(pane.text(), u"备份：05-03 14:30"_qs);
  settings.automatic = false;
  ASSERT_TRUE(saveBackupSettings(settings, prompt));
  followBackupTimer();
  EXPECT_FALSE(form.TimerBackUp.isActive());
  // On the way out; a failure is told, and the operator may stay.
  ASSERT_TRUE(QDir(file(u"kept"_qs)).removeRecursively());
  expectQuestion(QStringLiteral("是否要退出系统？"), Answer::Yes);
  form.close();
  EXPECT_TRUE(form.isVisible());
  ASSERT_EQ(met.size(), 1);
  EXPECT_TRUE(met.first().startsWith(u"退出时的备份没有写成。"_qs)) << met.first().toStdString();
  QDir().mkdir(file(u"kept"_qs));
  expectQuestion(QStringLiteral("是否要退出系统？"), Answer::Yes);
  form.close();
  EXPECT_FALSE(form.isVisible());
  EXPECT_EQ(kept().size(), 1);
}

TEST_F(BackupScreens, ARestoreEndsAtTheLogin) {
  ASSERT_TRUE(saveBackupSettings({.folder = file(u"kept"_qs)}, prompt));
  const QString copy = backUpNow(backupSettings());
  execSql("update jxc_company set c_jc='后来'");
  TF_MainForm form;
  expectScreen("F_Login", [&](ui::Screen& s) { press(s, "F5"); });
  ASSERT_TRUE(form.formShow());
  form.Timer1.stop();
  expectScreen("F_Xtwh", [&](ui::Screen& maintenance) {
    expectScreen("F_Backup", [&](ui::Screen& s) {
      s.findChild<QTabWidget*>()->setCurrentIndex(1);
      press(s, "F5", u"恢复路径必须填写！"_qs);
      type(s, "tPath1", copy + u'x');
      press(s, "F5", u"这个文件不能用来恢复：文件不存在。"_qs);
      type(s, "tPath1", copy);
      press(s, "F5");
    });
    press(maintenance, "1");
  });
  form.run("btn_Menu6_Btn9");
  form.Timer1.stop();
  ASSERT_EQ(met.size(), 1);
  EXPECT_TRUE(met.first().contains(u"确定要恢复吗？"_qs)) << met.first().toStdString();
  EXPECT_NE(lookupValue("select c_jc from jxc_company"), u"后来"_qs);
  EXPECT_EQ(session().a_name, u"admin"_qs);
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
  EXPECT_TRUE(form.isVisible());
}

TEST_F(BackupScreens, WhoComesWhileSomebodyHasTheSetForHimselfReadsWhyAndWaits) {
  if (onServer()) GTEST_SKIP() << "a file's own: a server's is held by a connection";
  accountDb().backupTo(file(u"live.mdb"_qs));
  auto before = dataModule().installAccountDb(openSqlite(file(u"live.mdb"_qs)));
  const auto other = openPresence(accountDb());
  ASSERT_TRUE(other->enter({u"小王"_qs, 100002}) && other->takeAlone(static_cast<int>(AloneFor::Restore)));
  TF_MainForm form;
  expectScreen("F_Login", [&](ui::Screen& s) {
    const auto becomes = [&](bool isUsable) {
      for (int i = 0; i < 600 && s.command("btnOK").isEnabled() != isUsable; ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
        settle();
      }
      return s.findChild<QLabel*>("lMsg")->text();
    };
    press(s, "F5", u"小王正在恢复数据，请等它完成。"_qs);
    EXPECT_EQ(becomes(false), u"小王正在恢复数据，请等它完成。"_qs);
    other->giveBack();
    other->leave();
    EXPECT_FALSE(becomes(true).contains(u"正在"_qs));
    press(s, "F5");
  });
  EXPECT_TRUE(form.formShow());
  form.Timer1.stop();
  leaveWork();
  dataModule().installAccountDb(std::move(before));
}

}  // namespace jxc::test
