// Contracts with their attachments as an operator keeps them.
#include "accounts/attachments.h"
#include "accounts/contracts.h"
#include "core/program_directory.h"
#include "core/text.h"
#include "harness/files.h"
#include "harness/ftp_server.h"
#include "screens/harness/screen_test.h"
#include "ui/file_dialogs.h"

#include <QDir>
#include <QTabWidget>

namespace jxc::test::contract_screens_test {

class ContractScreens : public ScreenTest {
 protected:
  ~ContractScreens() override {
    ui::setFileAnswer({});
    ui::setViewerAnswer({});
  }
  QString given(const QString& name, const QByteArray& content = "合同正文") {
    const QString path = folder_.filePath(name);
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
    return path;
  }
  void chooses(const QString& path) {
    ui::setFileAnswer([path](const QString&, const QString&) { return path; });
  }
  /// Files in the folder of customers' contracts.
  static QStringList kept() { return QDir(programPath(u"khht"_qs)).entryList(QDir::Files); }

  QTemporaryDir folder_;
};

TEST_F(ContractScreens, ContractsAreKeptLookedAtChangedAndDeletedWithTheirFile) {
  const QString longName = QString(200, u'长') + u".pdf"_qs;
  open("F_Htgl", [&](ui::Screen& s) {
    s.findChild<QTabWidget*>()->setCurrentIndex(1);
    press(s, "F3", "F_Htgl_Sele", [&](ui::Screen& form) {
      press(form, "F5", QStringLiteral("合同名称必须填写！"));
      type(form, "tname", u"供镜协议");
      press(form, "F5", QStringLiteral("必须选择合同单位！"));
      form.field("tghs").setPicked({QStringLiteral("普通客户"), QStringLiteral("100001")});
      for (const QString& bad : {folder_.path(), folder_.filePath(u"没有"_qs), given(u"空.txt"_qs, {})}) {
        chooses(bad);
        press(form, "F6");
        const QString why = bad == folder_.path()        ? u"附件必须是一个文件，不能是文件夹："_qs
                            : bad.endsWith(u"空.txt"_qs) ? u"附件是空文件："_qs
                                                         : u"附件文件不存在："_qs;
        press(form, "F5", why + bad);
      }
      EXPECT_EQ(lookupValue("select count(*) from jxc_htgl"), "0") << "what was refused wrote nothing";
      chooses(given(u"协议.pdf"_qs));
      press(form, "F6");
      press(form, "F5");
    });
    ASSERT_EQ(s.grid("gridHt2").rowCount(), 1);
    EXPECT_EQ(s.grid("gridHt2").currentText("ht_fjname"), "协议.pdf");
    ASSERT_EQ(kept().size(), 1);
    EXPECT_NE(kept().first(), "协议.pdf") << "the program's own name";

    QString looked;
    ui::setViewerAnswer([&](const QString& file) {
      looked = file;
      return true;
    });
    press(s, "F8", "F_Htgl_Chakan", [&](ui::Screen& view) { press(view, "F6"); });
    EXPECT_EQ(QFileInfo(looked).fileName(), kept().first());

    // Another file takes the place of the first one; its shown name is cut to what fits.
    click(s, "btn_Modi2", "F_Htgl_Sele", [&](ui::Screen& form) {
      EXPECT_EQ(form.field("tfj").text(), "协议.pdf");
      chooses(given(longName.right(80)));
      press(form, "F6");
      press(form, "F5");
    });
    EXPECT_EQ(kept().size(), 1);
    EXPECT_EQ(s.grid("gridHt2").currentText("ht_fjname"), longName.right(80).left(60) + u".pdf"_qs);
    execSql("insert into jxc_lsxsd (gl_djh,ht_sn) values ('XS21050310001','100001')");
    click(s, "btn_Dele2", QStringLiteral("您确定要删除该合同信息吗！"), Answer::Yes);
    EXPECT_TRUE(s.grid("gridHt2").isEmpty());
  });
  EXPECT_EQ(kept(), QStringList());
  EXPECT_EQ(lookupValue("select ht_sn from jxc_lsxsd"), "") << "nothing points to what is gone";
}

/// Rows of older sets name the file as it was given; two contracts may show the same name.
TEST_F(ContractScreens, OldRowsOpenTheirFileAndLeaveItAndNothingElseIsRemoved) {
  QDir(programPath(QString())).mkpath(u"khht"_qs);
  const QString old = programPath(u"khht/旧合同.doc"_qs), outside = programPath(u"data.txt"_qs);
  for (const QString& each : {old, outside}) {
    QFile file(each);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("x");
  }
  for (const char* number : {"100001", "100002"})
    execSql("insert into jxc_htgl (ht_sn,ht_name,ht_type,ht_path,ht_fujian,ht_fjname) values (?,'旧','kh',?,'',?)",
            number, QStringLiteral("D:\\jxc\\khht\\"), QStringLiteral("旧合同.doc"));
  EXPECT_EQ(contracts::attachmentToOpen(u"100001"_qs, prompt), old);
  contracts::htDelete(u"100001"_qs);
  EXPECT_EQ(contracts::attachmentToOpen(u"100002"_qs, prompt), old) << "its file stays";
  for (const QString& stored : {u"../data.txt"_qs, u"..\\data.txt"_qs, u".."_qs})
    EXPECT_FALSE(attachments::remove({u"khht/"_qs, stored, {}}));
  EXPECT_FALSE(attachments::remove({programPath(QString()), u"data.txt"_qs, {}}));
  EXPECT_TRUE(QFileInfo::exists(outside)) << "nothing outside of the two folders";
  execSql("update jxc_htgl set ht_path=?", words(attachments::kOnServer));
  EXPECT_FALSE(contracts::attachmentToOpen(u"100002"_qs, prompt));
}

/// What goes wrong on a server is told with the form as it was; the operator tries again or keeps the file here.
TEST_F(ContractScreens, AttachmentsGoToTheServerThatTheSettingsNameAndComeBackToBeLookedAt) {
  if (!FtpServer::canStart()) GTEST_SKIP() << "python3-pyftpdlib is not installed";
  const FtpServer server;
  open("F_Htgl", [&](ui::Screen& s) {
    press(s, "F6", "F_Htgl_Ftp", [&](ui::Screen& ftp) {
      type(ftp, "ftp_ip", u"ftp://nas/");
      press(ftp, "F5", u"服务器地址只填写名称或IP地址，例如 192.168.1.8！"_qs);
      type(ftp, "ftp_ip", u"127.0.0.1");
      type(ftp, "ftp_port", QString::number(server.port()));
      type(ftp, "ftp_user", u"shop");
      type(ftp, "ftp_pwd", u"geheim&9");
      expectQuestion(
          u"服务器 127.0.0.1 不支持加密传输：用户名、密码和文件会以明文经过网络，途中的任何人都能看到。\r\n\r\n"
          u"要允许不加密吗？"_qs,
          Answer::Yes);
      press(ftp, "F6", u"连接成功，可以保存附件！"_qs);
      EXPECT_TRUE(ftp.field("chkPlain").isChecked());
      press(ftp, "F5");
    });
    s.findChild<QTabWidget*>()->setCurrentIndex(1);
    for (const QString& keep : {u"FTP服务器"_qs, u"本机"_qs})
      press(s, "F3", "F_Htgl_Sele", [&](ui::Screen& form) {
        type(form, "tname", u"供镜协议");
        form.field("tghs").setPicked({u"普通客户"_qs, u"100001"_qs});
        chooses(given(u"协议.pdf"_qs));
        press(form, "F6");
        EXPECT_EQ(form.field("comKeep").text(), "FTP服务器");
        choose(form, "comKeep", keep);
        if (keep != u"本机") {
          server.mood("full");
          press(form, "F5",
                u"附件没有能够保存到FTP服务器！\r\n\r\n服务器 127.0.0.1 的空间不足！\r\n\r\n"
                u"服务器说：452 Insufficient storage space."_qs);
          server.mood({});
          EXPECT_EQ(form.field("tname").text(), "供镜协议");
        }
        press(form, "F5");
      });
    ASSERT_EQ(s.grid("gridHt2").rowCount(), 2);
    EXPECT_EQ(kept().size(), 1);
    ASSERT_EQ(server.files().size(), 1);

    s.grid("gridHt2").selectRow(1);  // the older one
    QString looked;
    ui::setViewerAnswer([&](const QString& file) {
      looked = file;
      return true;
    });
    press(s, "F8", "F_Htgl_Chakan", [&](ui::Screen& view) { press(view, "F6"); });
    EXPECT_EQ(bytesOf(looked), "合同正文");
    EXPECT_TRUE(looked.endsWith(u"协议.pdf"_qs) && !looked.startsWith(programPath({}))) << looked.toStdString();
    click(s, "btn_Dele2", QStringLiteral("您确定要删除该合同信息吗！"), Answer::Yes);
  });
  EXPECT_EQ(server.files(), QStringList());
  EXPECT_EQ(kept().size(), 1);
}

}  // namespace jxc::test::contract_screens_test
