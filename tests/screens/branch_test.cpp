// The branch's own name, and the file of goods, stock and sales that goes to the head office.
#include "maintenance/branch.h"

#include "core/data_module.h"
#include "engine/sheet_export.h"
#include "engine/waiting.h"
#include "harness/files.h"
#include "harness/sheets_by_python.h"
#include "platform/sheet/row_export.h"
#include "platform/sheet/sheet_reader.h"
#include "screens/harness/screen_test.h"
#include "server/test_engine.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QLabel>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QTimer>

#include <csignal>
#include <sys/resource.h>

namespace jxc::test {

class BranchTest : public ScreenTest {
 protected:
  BranchTest() { setSheetExporter(sheetFiles()); }
  ~BranchTest() override { setSheetExporter({}); }

  static void sell(const char16_t* number, const char16_t* moment, double price, bool isAudited) {
    insertRow("jxc_lsxsd", {{"gl_djh", number}, {"ls_xsrq", moment}, {"ls_status", isAudited ? 1 : 0}});
    insertRow("jxc_lsxssp",
              {{"gl_djh", number}, {"ls_dj", price}, {"ls_sl", 2}, {"a_name", u"admin"}, {"ls_zhje", price * 2}});
  }

  /// The rows of a statement as a foreign reader has to find them.
  static QJsonArray expected(const std::string& select) {
    const RowSet rows = openSelect(select);
    QJsonArray all, captions;
    for (const std::string& column : rows.columns())
      captions << u"s:"_qs + QString::fromStdString(column);
    all << captions;
    for (int row = 0; row < rows.rowCount(); ++row) {
      QJsonArray cells;
      for (int column = 0; column < rows.columnCount(); ++column) {
        const Value value = rows.value(row, column);
        if (value.isNull() || value.text().isEmpty())
          cells << QString();
        else if (value.kind() == Value::Kind::Text)
          cells << u"s:"_qs + value.text();
        else
          cells << u"n:"_qs + QString::number(value.number(), 'g', 15);
      }
      all << cells;
    }
    return all;
  }

  /// Without the empty cells at the end of a row, which no reader is bound to tell of.
  static QJsonArray trimmed(const QJsonArray& rows) {
    QJsonArray all;
    for (const auto& row : rows) {
      QJsonArray cells = row.toArray();
      while (!cells.isEmpty() && cells.last().toString().isEmpty())
        cells.removeLast();
      all << cells;
    }
    return all;
  }

  bool meets(QDialog& dialog) override {
    if (!losesServer_ || !qobject_cast<QMessageBox*>(&dialog)) return false;
    losesServer_ = false;
    dialog.done(QDialog::Accepted);
    return true;
  }

  QStringList files() const { return QDir(folder.path()).entryList(QDir::Files | QDir::Hidden); }
  static QString lastExport() { return lookupValue("select fd_dcrq from jxc_fd"); }

  bool losesServer_ = false;  // and is told so, in the words of the connection
  QTemporaryDir folder;
  const BranchExport may{.days = {QStringLiteral("2021-05-01"), QStringLiteral("2021-05-03")}, .folder = folder.path()};
};

TEST_F(BranchTest, TheCopyHasACodeAndAName) {
  open("F_Fdsz", [&](ui::Screen& s) {
    EXPECT_EQ(s.field("tname").text(), QStringLiteral("旗舰店"));
    type(s, "tsn", u"  ");
    press(s, "F5", QStringLiteral("分店编号不能为空，请重新输入！"));
    type(s, "tsn", u"1!\"%&',=?@[\\]^2");
    EXPECT_EQ(s.field("tsn").text(), QStringLiteral("12"));  // the marks were not taken
    type(s, "tname", u"");
    press(s, "F5", QStringLiteral("分店名称不能为空，请重新输入！"));
    type(s, "tname", u"城东(二)店");
    press(s, "F5", QStringLiteral("保存成功！"));
  });
  EXPECT_EQ(lookupValue("select fd_sn from jxc_fd"), QStringLiteral("12"));
  EXPECT_EQ(lookupValue("select fd_name from jxc_fd"), QStringLiteral("城东（二）店"));
  EXPECT_FALSE(saveBranch(u"1'2"_qs, u"x"_qs, prompt));  // pasted past the input
  execSql("delete from jxc_fd");

  EXPECT_TRUE(saveBranch(u"7"_qs, u"新店"_qs, prompt));
  EXPECT_EQ(thisBranch()->name, QStringLiteral("新店"));
}

TEST_F(BranchTest, AForeignReaderFindsEveryCellOfTheFiveSheets) {
  insertRow("jxc_goods", {{"g_sn", u"00100007"}, {"g_name", u"镜架<A>"}, {"g_sj", 199.995}});
  insertRow("jxc_kcsp", {{"g_sn", u"00100007"}, {"ck_sn", u"100001"}, {"kc_sl", 3}, {"kc_cbj", 80.25}});
  insertRow("jxc_kcsp", {{"g_sn", u"00100007"}, {"ck_sn", u"100002"}, {"kc_sl", -1.5}, {"kc_cbj", 0}});
  sell(u"XS1", u"2021-04-30 23:59:59", 10, true);
  sell(u"XS2", u"2021-05-01", 20, true);
  sell(u"XS3", u"2021-05-03 23:59:58", 30.5, false);  // late on the last day, not audited
  sell(u"XS4", u"2021-05-04", 40, true);
  insertRow("jxc_xsthd", {{"gl_djh", u"TH1"}, {"th_xsrq", u"2021-05-03 20:00:00"}});
  insertRow("jxc_xsthsp", {{"gl_djh", u"TH1"}, {"th_dj", 5}, {"th_sl", 1}, {"a_name", u"admin"}, {"th_zhje", 5}});
  open("F_FdExport", [&](ui::Screen& s) {
    EXPECT_EQ(s.windowTitle(), QStringLiteral("数据导出(分店编号:100001分店名称:旗舰店)"));
    type(s, "tpath", u"");
    press(s, "F5", QStringLiteral("导出路径不能为空，请重新输入！"));
    type(s, "tpath", folder.path());
    type(s, "tdate1", u"2021-05-01");
    press(s, "F5", QStringLiteral("备份完成！"));
  });
  ASSERT_EQ(files(), QStringList{QStringLiteral("系统数据库21_05_03_14_30_00.xls")});
  EXPECT_EQ(lastExport(), QStringLiteral("2021-05-03"));
  const QJsonObject book = readByPython(folder.filePath(files().front()));
  const std::array sheets{"select * from jxc_goods", "select g_sn,kc_sl,kc_cbj from jxc_kcsp",
                          "select a.gl_djh,a.ls_dj,a.ls_sl,a.a_name,a.ls_zhje,b.ls_xsrq from jxc_lsxssp a,jxc_lsxsd b "
                          "where a.gl_djh=b.gl_djh and a.gl_djh in ('XS2','XS3')",
                          "select a.gl_djh,a.th_dj,a.th_sl,a.a_name,a.th_zhje,b.th_xsrq from jxc_xsthsp a,jxc_xsthd b "
                          "where a.gl_djh=b.gl_djh",
                          "select fd_sn,fd_name from jxc_fd"};
  EXPECT_EQ(book.size(), 5);
  for (std::size_t i = 0; i < sheets.size(); ++i) {
    const QString name = QString::number(i + 1);
    EXPECT_EQ(trimmed(book[name].toObject()["rows"].toArray()), trimmed(expected(sheets[i]))) << sheets[i];
  }
  open("F_FdExport", [&](ui::Screen& s) {
    EXPECT_EQ(s.findChild<QLabel*>("Ldcrq")->text(), QStringLiteral("最后一次导出时间为：2021-05-03"));
  });
}

TEST_F(BranchTest, WhatFailsOrIsStoppedLeavesNoFileAndNoDate) {
  EXPECT_FALSE(exportBranch({may.days, folder.filePath(u"没有"_qs)}, {}, prompt));
  EXPECT_FALSE(exportBranch({{may.days.to, may.days.from}, folder.path()}, {}, prompt));
  EXPECT_FALSE(exportBranch({{u"昨天"_qs, may.days.to}, folder.path()}, {}, prompt));
  EXPECT_EQ(prompt.notices.size(), 3);
  for (const int stop : {20, 70})  // among the rows, and while the file is put together
    EXPECT_FALSE(exportBranch(
        may, [stop](int percent) { return percent < stop; }, prompt));
  EXPECT_EQ(prompt.notices.size(), 3);  // who stops it knows it
  // The disk takes no more at one moment after the other.
  rlimit usual{};
  ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &usual), 0);
  const auto handler = std::signal(SIGXFSZ, SIG_IGN);
  for (const rlim_t room : {rlim_t{0}, rlim_t{1500}, rlim_t{3000}}) {
    const rlimit full{.rlim_cur = room, .rlim_max = usual.rlim_max};
    setrlimit(RLIMIT_FSIZE, &full);
    const auto file = exportBranch(may, {}, prompt);
    setrlimit(RLIMIT_FSIZE, &usual);
    EXPECT_FALSE(file) << room;
    EXPECT_TRUE(prompt.lastNotice().startsWith(u"磁盘空间不足"_qs)) << prompt.lastNotice().toStdString();
  }
  std::signal(SIGXFSZ, handler);
  EXPECT_EQ(files(), QStringList());
  EXPECT_EQ(lastExport(), QString());
  execSql("delete from jxc_fd");
  expectNotice(QStringLiteral("分店信息不存在，不能导出！"));
  open("F_FdExport", [&](ui::Screen& s) { EXPECT_FALSE(s.command("btnOK2").isEnabled()); });
}

// The server goes at one moment after the other: where there is no file the day has not moved, and the same days can be
// tried again.
TEST_F(BranchTest, AServerThatGoesAwayLeavesNoHalfFile) {
  if (!onServer()) GTEST_SKIP() << "a server's own";
  dataModule().installAccountDb(openFresh(Story::Long));
  sell(u"XS2", u"2021-05-01", 20, true);
  const auto whole = exportBranch(may, {}, prompt);
  ASSERT_TRUE(whole);
  const QByteArray content = bytesOf(*whole);
  QFile::remove(*whole);
  int failed = 0;
  for (const int moment : {0, 14, 25, 50, 67, 70}) {
    execSql("update jxc_fd set fd_dcrq=''");
    bool isCut = false;
    try {
      exportBranch(
          may,
          [&](int percent) {
            if (percent >= moment && !std::exchange(isCut, true)) cutConnections();
            return true;
          },
          prompt);
    } catch (const DbError&) {
      ++failed;
      EXPECT_EQ(files(), QStringList()) << moment;
    }
    EXPECT_EQ(lastExport().isEmpty(), files().isEmpty()) << moment;
    for (const QString& name : files()) {
      EXPECT_EQ(bytesOf(folder.filePath(name)), content) << moment;
      QFile::remove(folder.filePath(name));
    }
  }
  EXPECT_GE(failed, 4);
  execSql("update jxc_fd set fd_dcrq=''");
  // The file is there, and its day cannot be written down: both are told.
  const LongWork shortly(std::chrono::seconds(1));
  const auto station = openAgain();
  std::optional<Transaction> posting;
  const auto told = exportBranch(
      may,
      [&](int percent) {
        if (percent < 70 || posting) return true;
        posting.emplace(*station);
        return station->execute("update jxc_fd set fd_name=fd_name") == 1;
      },
      prompt);
  EXPECT_TRUE(prompt.lastNotice().startsWith(u"备份完成！\r\n\r\n但是没有记下导出时间："_qs))
      << prompt.lastNotice().toStdString();
  posting.reset();
  ASSERT_TRUE(told);
  EXPECT_EQ(bytesOf(*told), content);
  EXPECT_EQ(lastExport(), QString());
  QFile::remove(*told);
  open("F_FdExport", [&](ui::Screen& s) {
    type(s, "tpath", folder.path());
    type(s, "tdate1", may.days.from);
    losesServer_ = true;
    QTimer::singleShot(0, qApp, [] { cutConnections(); });  // heard with the first step of the bar
    press(s, "F5");
    EXPECT_FALSE(losesServer_);
    EXPECT_EQ(files(), QStringList());
    press(s, "F5", u"备份完成！"_qs);
  });
  ASSERT_EQ(files().size(), 1);
  EXPECT_EQ(bytesOf(folder.filePath(files().front())), content);
}

// Two files of one second stand side by side, and what the older kind cannot hold goes into the newer one.
TEST_F(BranchTest, ManyRowsGoIntoTheNewerKindOfFile) {
  insertRow("jxc_kcsp", {{"g_sn", u"1"}, {"ck_sn", u"100001"}, {"kc_sl", 1}, {"kc_cbj", 2}});
  for (int rows = 1; rows < 65536; rows *= 2)
    execSql("insert into jxc_kcsp (g_sn,ck_sn,kc_sl,kc_cbj) select g_sn,ck_sn,kc_sl,kc_cbj from jxc_kcsp");
  int last = 0;
  const auto file = exportBranch(
      may,
      [&last](int percent) {
        EXPECT_GE(percent, last);
        last = percent;
        return true;
      },
      prompt);
  ASSERT_TRUE(file);
  EXPECT_TRUE(file->endsWith(u".xlsx"_qs));
  EXPECT_TRUE(prompt.notices.last().contains(u".xlsx"_qs));
  EXPECT_EQ(last, 100);
  EXPECT_EQ(openExcel(*file)->rows(1).rowCount(), 65536);
  execSql("delete from jxc_kcsp where id=1");
  EXPECT_TRUE(exportBranch(may, {}, prompt)->endsWith(u"00.xls"_qs));
  EXPECT_TRUE(exportBranch(may, {}, prompt)->endsWith(u"00_2.xls"_qs));
}

}  // namespace jxc::test
