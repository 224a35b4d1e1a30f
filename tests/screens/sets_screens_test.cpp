// The list of account sets with its dialogs, clearing by hand and by the guide, as an operator drives them.
#include "core/clock.h"
#include "core/program_directory.h"
#include "core/screens/main_form.h"
#include "core/startup.h"
#include "harness/files.h"
#include "harness/waiting_document.h"
#include "maintenance/prove.h"
#include "maintenance/reset.h"
#include "maintenance/restoring.h"
#include "screens/harness/trading_test.h"
#include "stock/document.h"
#include "ui/file_dialogs.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QMessageBox>

namespace jxc::test {

class SetsScreens : public TradingScreenTest {
 protected:
  ~SetsScreens() override { ui::setFileAnswer({}); }
  static void choose(ui::Screen& s, const char* action) { s.findChild<QAction*>(action)->trigger(); }
  static QString backupName() { return programPath(u"backup/晴川进销存(清理前)21_05_03_14_30_00.DAT"_qs); }
  static QString clearing(const QString& question, Clearing what) {
    return question + u"\r\n\r\n"_qs + clearingInWords(what);
  }
  bool meets(QDialog& dialog) override {
    const auto* box = qobject_cast<const QMessageBox*>(&dialog);
    if (!box || !box->text().contains(u"旁边有另一个文件留下的日志"_qs)) return false;
    ++remarks_;
    dialog.done(QDialog::Accepted);
    return true;
  }
  int remarks_ = 0;
  static bool isShown(ui::Screen& s, const char* command) { return s.command(command).isVisible(); }
};

TEST_F(SetsScreens, SetsAreKeptInAList) {
  session().dbName = u"jxc.mdb"_qs;
  open("F_Ztgl", [&](ui::Screen& s) {
    auto& list = s.grid("gridZt");
    EXPECT_EQ(list.rowCount(), 1);
    press(s, "F2", "F_Ztgl_Add", [&](ui::Screen& add) {
      press(add, "F5", u"帐套名称必须填写！"_qs);
      type(add, "tname", u"二店");
      type(add, "tnote", u"城东");
      check(add, "chkDefault", true);
      press(add, "F5");
    });
    EXPECT_EQ(list.currentText("zt_name"), u"二店"_qs);
    press(s, "Ctrl+D", u"默认帐套不能删除！"_qs);
    press(s, "F3", "F_Ztgl_Modi", [&](ui::Screen& modi) {
      EXPECT_EQ(modi.field("tnote").text(), u"城东"_qs);
      check(modi, "chkDefault", false);
      press(modi, "F5");
    });
    expectScreen("F_Ztgl_BackUp", [&](ui::Screen& copy) {
      press(copy, "F5", u"备份路径必须填写！"_qs);
      ui::setFileAnswer([](const QString&, const QString&) { return programDirectory(); });
      press(copy, "F4");
      press(copy, "F5", u"备份完成！"_qs);
    });
    choose(s, "btnBackUp");
    const QString copied = programPath(u"二店21_05_03_14_30_00.DAT"_qs);
    expectScreen("F_Ztgl_Restore", [&](ui::Screen& back) {
      press(back, "F5", u"恢复路径必须填写！"_qs);
      type(back, "tPath", copied);
      const QString holds = OpenedBackup::open(copied)->words().join(u"\r\n");
      const QString question =
          holds +
          u"\r\n\r\n恢复以后，帐套“二店”现在的数据由这份备份代替；现在的帐套先另存为“(恢复前)”。\r\n\r\n"
          "确定要恢复吗？"_qs;
      press(back, "F5", question, Answer::No);
      EXPECT_EQ(back.findChild<QLabel*>("lFacts")->text(), QString(holds).remove(u'\r'));
      expectQuestion(question, Answer::Yes);
      press(back, "F5", u"恢复完成！"_qs);
    });
    choose(s, "btnRestore");
    EXPECT_TRUE(QFileInfo::exists(programPath(u"backup/二店(恢复前)21_05_03_14_30_00.DAT"_qs)));
    list.selectRow(0);
    EXPECT_EQ(list.current()->integer("zt_default"), 1);
    press(s, "F3", "F_Ztgl_Modi", [&](ui::Screen& modi) { EXPECT_FALSE(modi.field("chkForbid").isEnabled()); });
    expectNotice(u"该帐套为当前正在使用帐套，请在软件“系统维护”窗口，\r\n\r\n打开“备份恢复数据”窗口进行恢复操作！"_qs);
    choose(s, "btnRestore");
    list.selectRow(1);
    press(s, "Ctrl+D", u"删除帐套后，该帐套所包含的数据也将一起被删除，\r\n\r\n确定要删除所选的帐套信息吗？"_qs,
          Answer::Yes);
    EXPECT_EQ(list.rowCount(), 1);
  });
}

// A catalogue that came back from a backup with the log of the other one beside it is told of like a set.
TEST_F(SetsScreens, WhatTheOpeningOfTheCatalogueFoundIsTold) {
  const QString file = programPath(u"data/codeinfo.dll"_qs), backup = programPath(u"codeinfo.DAT"_qs);
  ensureCatalogue();
  QByteArray log;
  {
    const auto catalogue = openSqlite(file);
    catalogue->backupTo(backup);
    catalogue->execute("update jxc_xtzt set zt_note='后来'");
    log = bytesOf(file + u"-wal"_qs);
  }
  writeBytes(file, bytesOf(backup));
  writeBytes(file + u"-wal"_qs, log);
  open("F_Ztgl", [](ui::Screen& s) { EXPECT_EQ(s.grid("gridZt").currentText("zt_note"), QString()); });
  EXPECT_EQ(remarks_, 1);
}

TEST_F(SetsScreens, ClearingByHandAsksForABackupAndEndsAtTheLogin) {
  insertRow("jxc_goods", {{"g_sn", u"10000001"}, {"g_kc", 5}});
  insertRow("jxc_goodslist", {{"g_sn", u"10000001"}, {"gl_flag", u"qc"}});
  const auto byHand = [&](const char* choice, const Steps& then) {
    open("F_Sjql", [&](ui::Screen& s) {
      EXPECT_TRUE(s.field("rSele12").isChecked());
      check(s, "rSele11", true);
      press(s, "F5");
      ASSERT_TRUE(isShown(s, "btnOK2"));
      check(s, choice, true);
      then(s);
      press(s, "F6");
    });
  };
  const QString backup = u"系统初始化之前建议先备份数据库，现在是否备份数据库？"_qs;
  byHand("rSele21", [&](ui::Screen&) {
    expectQuestion(backup, Answer::No);
    expectQuestion(u"没有备份，清理掉的数据就再也找不回来。\r\n\r\n确定不备份，继续清理吗？"_qs, Answer::Yes);
    expectQuestion(clearing(u"是否要删除所有营业数据？"_qs, Clearing::Business), Answer::No);
  });
  EXPECT_EQ(lookupNumber("select count(*) from jxc_goodslist"), 1);
  // Everything, by hand and by the guide, which goes on behind the login.
  TF_MainForm form;
  const auto logsIn = [this] { expectScreen("F_Login", [](ui::Screen& login) { press(login, "F5"); }); };
  logsIn();
  ASSERT_TRUE(form.formShow());
  const auto clears = [&](ui::Screen& s, const char* key, const QString& question) {
    expectNotice(u"备份成功！备份文件保存在"_qs + QDir::toNativeSeparators(backupName()));
    expectQuestion(clearing(question, Clearing::All), Answer::Yes);
    expectNotice(u"删除完成！"_qs);
    logsIn();
    press(s, key);
  };
  const auto run = [&] {
    form.Timer1.stop();
    form.run("btnClear");
    EXPECT_EQ(session().a_name, u"admin"_qs);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    EXPECT_TRUE(form.isVisible());
  };
  expectScreen("F_Sjql", [&](ui::Screen& s) {
    check(s, "rSele11", true);
    press(s, "F5");
    check(s, "rSele22", true);
    expectQuestion(backup, Answer::Yes);
    clears(s, "F6", u"是否要删除所有营业数据？"_qs);
  });
  run();
  EXPECT_EQ(lookupNumber("select count(*) from jxc_goods where g_sn='10000001'"), 0);
  ASSERT_TRUE(QDir(programPath(u"backup"_qs)).removeRecursively());  // names of the same second
  insertRow("jxc_goods", {{"g_sn", u"10000001"}});
  expectScreen("F_Sjql", [&](ui::Screen& s) {
    press(s, "F5", "F_Guide", [&](ui::Screen& guide) {
      press(guide, "F5");
      press(guide, "F5");
      check(guide, "rClear1", true);
      clears(guide, "F5", u"您确定要进行数据清理操做吗？"_qs);
      expectScreen("F_Guide", [](ui::Screen& anew) {
        EXPECT_EQ(anew.findChild<QLabel*>("step")->text(), u"第四步：基本信息"_qs);
        press(anew, "Esc");
      });
    });
  });
  run();
  EXPECT_EQ(lookupNumber("select count(*) from jxc_goods where g_sn='10000001'"), 0);
  EXPECT_TRUE(proof::proveAccount().isClean());
}

TEST_F(SetsScreens, TheGuideLeadsThroughTheFirstDay) {
  open("F_Sjql", [&](ui::Screen& s) {
    press(s, "F5", "F_Guide", [&](ui::Screen& guide) {
      const auto step = [&] { return guide.findChild<QLabel*>("step")->text(); };
      EXPECT_EQ(guide.findChild<QLabel*>("welcome")->text(), u"欢迎使用晴川进销存管理系统"_qs);
      EXPECT_EQ(guide.command("btnOK1").text(), u"下一步(F5)"_qs);
      check(guide, "rData", true);
      EXPECT_EQ(guide.command("btnOK1").text(), u"确定(F5)"_qs);
      check(guide, "rUse", true);
      press(guide, "F5");
      type(guide, "tname", u"大明眼镜");
      press(guide, "F5");
      EXPECT_EQ(lookupValue("select c_name from jxc_company"), u"大明眼镜"_qs);
      EXPECT_EQ(step(), u"第三步：清理数据"_qs);
      press(guide, "F5", u"您确定不清除任何数据，准备进行下一步吗？"_qs, Answer::No);
      // Over a shop that has traded; what is left proves.
      const auto clear = [&](const char* choice, const char* goods, int minute) {
        SCOPED_TRACE(choice);
        clock::setFixed(QDateTime(QDate(2021, 5, 3), QTime(14, minute)));
        addGoods({.sn = goods, .name = u"镜架"_qs});
        checkDj(families::purchaseReceipt,
                waitingDocument(families::purchaseReceipt, u"2021-04-01"_qs, {}, {{goods, 3, 20}}), prompt);
        check(guide, choice, true);
        expectNotice(u"备份成功！备份文件保存在"_qs +
                     QDir::toNativeSeparators(backupName().replace(u"14_30"_qs, u"14_%1"_qs.arg(minute))));
        expectQuestion(clearing(u"您确定要进行数据清理操做吗？"_qs, Clearing::Business), Answer::Yes);
        press(guide, "F5", u"删除完成！"_qs);
        EXPECT_EQ(step(), u"第四步：基本信息"_qs);
        EXPECT_EQ(lookupNumber("select count(*) from jxc_goodslist"), 0);
        EXPECT_TRUE(proof::proveAccount().isClean());
      };
      clear("rClear2", "10000001", 30);
      press(guide, "F4");
      clear("rClear3", "10000002", 31);
      press(guide, "5", "F_User", [](ui::Screen&) {});
      press(guide, "F5");
      check(guide, "rSele52", true);
      press(guide, "F5", "F_Cgjh", [](ui::Screen&) {});
    });
  });
}

}  // namespace jxc::test
