// Contracts with their attachments as an operator keeps them.
#include "accounts/attachments.h"
#include "accounts/contracts.h"
#include "core/login.h"
#include "core/program_directory.h"
#include "core/text.h"
#include "engine/error.h"
#include "harness/files.h"
#include "harness/ftp_server.h"
#include "masterdata/partners.h"
#include "screens/harness/trading_test.h"
#include "server/test_engine.h"
#include "stock/cancelling.h"
#include "stock/contract_ties.h"
#include "stock/document.h"
#include "ui/file_dialogs.h"

#include <QDir>
#include <QScopeGuard>
#include <QTabWidget>

#include <unistd.h>

namespace jxc::test::contract_screens_test {

class ContractScreens : public TradingScreenTest {
 protected:
  ContractScreens() {
    addGoods({.sn = u"10000001"_qs, .name = u"板材镜架"_qs, .barcode = u"6900000000017"_qs, .stock = 9});
    setParameter("cs_ht", 1);
  }
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

/// Stations that share their books on a server have folders of their own.
TEST_F(ContractScreens, AFileInTheFolderOfAnotherStationIsRemovedThere) {
  contracts::Draft draft{.name = u"供镜协议"_qs, .partner = u"100001"_qs, .employee = u"100001"_qs};
  draft.file = given(u"协议.pdf"_qs);
  const auto first = contracts::saveContract(customerSide, draft, prompt);
  const auto second = contracts::saveContract(customerSide, draft, prompt);
  ASSERT_TRUE(first && second);
  const auto logIn = [](const QString& station) {
    setProgramDirectory(station);
    for (const LoginHook& each : loginHooks())
      each();
    return rows("select count(*) from jxc_htwj");
  };
  const QString here = programDirectory();
  const auto back = qScopeGuard([&] { setProgramDirectory(here); });
  EXPECT_EQ(logIn(folder_.path()), "0");
  EXPECT_TRUE(contracts::deleteContract(*first, prompt.willSayYes()));
  EXPECT_EQ(
      prompt.lastNotice(),
      onServer() ? "合同已删除，附件文件还没有删除：“协议.pdf”不在本机，保存它的那台电脑在下次登录时删除它。" : "");
  if (!onServer()) return;  // books in a file have no other station
  contracts::htDelete(*second);
  EXPECT_EQ(logIn(folder_.path()), "2");
  EXPECT_EQ(logIn(here), "0");
  EXPECT_EQ(kept(), QStringList());
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

/// Each attachment that cannot be kept: refused in words, what was typed stays, nothing is left of it.
TEST_F(ContractScreens, AFileThatCannotBeTakenLeavesNothingHalf) {
  const auto sized = [&](const QString& name, qint64 megabytes) {
    const QString path = given(name);
    EXPECT_TRUE(QFile::resize(path, megabytes << 20U));  // without its blocks on the disk
    return path;
  };
  contracts::Draft draft;
  draft.name = u"供镜协议"_qs;
  draft.partner = u"100001"_qs;
  draft.employee = u"100001"_qs;
  const auto refusedWith = [&](const QString& file, const attachments::Progress& progress = {}) {
    draft.file = file;
    EXPECT_FALSE(contracts::saveContract(customerSide, draft, prompt, progress)) << file.toStdString();
    EXPECT_EQ(QDir(programPath(u"khht"_qs)).entryList(QDir::Files | QDir::Hidden), QStringList());
    EXPECT_EQ(lookupValue("select count(*) from jxc_htgl"), "0");
    return prompt.lastNotice();
  };
  const QString large = sized(u"大.pdf"_qs, 501), scan = sized(u"扫描.pdf"_qs, 300);
  EXPECT_EQ(refusedWith(large), u"附件不能超过 500 MB，请压缩或拆分后再添加："_qs + large);
  int told = 0;
  refusedWith(scan, [&](int percent) { return ++told < 30 && percent < 50; });
  EXPECT_EQ(told, 30) << "a megabyte at a time, and stopped at once";
  const QString written = sized(u"正在写.pdf"_qs, 4);
  EXPECT_EQ(refusedWith(written, [&](int) { return QFile::resize(written, 2 << 20U); }),
            u"附件文件在保存时被改动了，请重新保存："_qs + written);
  {
    const QString locked = given(u"锁.pdf"_qs);
    ASSERT_TRUE(QFile::setPermissions(locked, {}));
    QFile::setPermissions(folder_.path(), QFile::permissions(folder_.path()) | QFile::ReadGroup | QFile::ExeGroup);
    const bool isRoot = geteuid() == 0;
    const bool isOther = !isRoot || seteuid(65534) == 0;  // rights count for others than root
    const auto back = qScopeGuard([&] { EXPECT_TRUE(!isRoot || seteuid(0) == 0); });
    EXPECT_TRUE(isOther);
    draft.file = locked;
    EXPECT_FALSE(contracts::saveContract(customerSide, draft, prompt));
    EXPECT_TRUE(prompt.lastNotice().startsWith(u"附件文件不能读取："_qs)) << prompt.lastNotice().toStdString();
  }
  // What fails behind the copy takes it away again.
  draft.employee = u"100001100001"_qs;  // wider than its column
  draft.file = given(u"协议.pdf"_qs);
  EXPECT_THROW(contracts::saveContract(customerSide, draft, prompt), DbError);
  EXPECT_EQ(kept(), QStringList());
  draft.employee = u"100001"_qs;

  // Taken away while it is read, it is whole all the same; of a name from another system the end counts.
  const QString foreign = given(u"D:\\合同\\协议.pdf"_qs);
  draft.file = foreign;
  const auto first = contracts::saveContract(customerSide, draft, prompt, [&](int) {
    QFile::remove(foreign);
    return true;
  });
  draft.file = given(u"协议.pdf"_qs, "另一份");
  const auto second = contracts::saveContract(customerSide, draft, prompt);
  ASSERT_TRUE(first && second);
  EXPECT_EQ(rows("select ht_fjname from jxc_htgl"), "协议.pdf | 协议.pdf");
  // Two contracts show one name, and one goes: the other's file is its own.
  contracts::htDelete(*first);
  const auto left = contracts::attachmentToOpen(*second, prompt);
  ASSERT_TRUE(left);
  QFile file(*left);
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  EXPECT_EQ(file.readAll(), "另一份");
  // What another operator wrote since the form was opened is not overwritten.
  draft.number = *second;
  draft.shown = contracts::openContract(customerSide, *second, prompt)->shown;
  execSql("update jxc_htgl set ht_note='账期60天'");
  EXPECT_EQ(prompt.refused(contracts::saveContract(customerSide, draft, prompt).has_value()),
            "该合同刚刚被其他操作员修改，请取消后重新打开！");
  draft.shown = contracts::openContract(customerSide, *second, prompt)->shown;
  EXPECT_TRUE(contracts::saveContract(customerSide, draft, prompt));
  EXPECT_EQ(kept().size(), 1);
}

/// From the document's own screen: Ctrl+H, F3, and a file.
class DocumentContracts : public ContractScreens {
 protected:
  struct Side {
    const char* screen;
    const PartnerSide* partners;
    const DocumentFamily* family;
    QString question;
  };
  std::vector<Side> sides() const {
    return {{"F_Cgjh", &supplierSide, &families::purchaseReceipt, kSaveReceipt},
            {"F_Spxs", &customerSide, &families::sale, kSaveSale}};
  }
  static QStringList kept() {
    return QDir(programPath(u"khht"_qs)).entryList(QDir::Files) + QDir(programPath(u"ghsht"_qs)).entryList(QDir::Files);
  }
  static QString contracts() { return rows("select ht_sn,ghs_sn,gl_djh from jxc_htgl order by ht_sn"); }
  static QString goes(const QString& contract, const QString& doing) {
    return u"合同“%1”是为本单增加的，%2后将连同附件一起删除，确认%2吗？"_qs.arg(contract, doing);
  }
  void add(ui::Screen& s, const QString& name) {
    chooses(given(name + u".pdf"_qs));
    press(s, "Ctrl+H", "F_Htgl_Xz", [&](ui::Screen& list) {
      press(list, "F3", "F_Htgl_Sele", [&](ui::Screen& form) {
        EXPECT_TRUE(form.field("tghs").isReadOnly()) << "it is the document's partner";
        type(form, "tname", name);
        press(form, "F6");
        press(form, "F5");
      });
    });
  }
  void pick(ui::Screen& s, const char* key = "F5") {
    press(s, "Ctrl+H", "F_Htgl_Xz", [&](ui::Screen& list) { press(list, key); });
  }
  static QString stands(const PartnerSide& side, const QString& name) {
    contracts::Draft draft;
    draft.name = name;
    draft.date = u"2021-05-03"_qs;
    draft.partner = u"100001"_qs;
    draft.employee = u"100001"_qs;
    ScriptedPrompt quiet;
    return contracts::saveContract(side, draft, quiet).value_or(QString());
  }
};

TEST_F(DocumentContracts, WhatWasAddedGoesWithADraftThatIsLeftAndWhatWasPickedStays) {
  for (const Side& side : sides()) {
    SCOPED_TRACE(side.screen);
    execSql("delete from jxc_htgl");
    setParameter("cs_ht", 0);
    open(side.screen, [&](ui::Screen& s) {
      EXPECT_FALSE(s.command("btnHt").isVisible());
      EXPECT_FALSE(s.field("tht").isVisible());
    });
    setParameter("cs_ht", 1);
    open(side.screen, [&](ui::Screen& s) {
      add(s, u"供镜协议"_qs);
      EXPECT_EQ(s.field("tht").text(), "100001 供镜协议");
      EXPECT_EQ(kept().size(), 1);
      // Nothing but the contract would be lost: asked.
      press(s, "Esc", goes(u"100001 供镜协议"_qs, u"离开"_qs), Answer::No);
      EXPECT_TRUE(s.isVisible());
      scan(s, u"6900000000017");
    });  // as a power cut leaves it
    ui::dropScreens();
    open(side.screen, [&](ui::Screen& s) {
      EXPECT_EQ(s.field("tht").text(), "100001 供镜协议") << "it came back with the lines";
      leaveDraft(s);
    });
    EXPECT_EQ(contracts(), "");
    EXPECT_EQ(kept(), QStringList());

    stands(*side.partners, u"年度"_qs);
    open(side.screen, [&](ui::Screen& s) {
      pick(s);
      EXPECT_EQ(s.field("tht").text(), "100001 年度");
      scan(s, u"6900000000017");
      pick(s, "Ctrl+D");
      EXPECT_EQ(s.field("tht").text(), "");
      pick(s);
      leaveDraft(s);
    });
    EXPECT_EQ(contracts(), "100001 100001 ");
    // Picked for another document by a colleague, a contract is nobody's any more.
    open(side.screen, [&](ui::Screen& s) {
      add(s, u"团购"_qs);
      contract_ties::htLink(u"100002"_qs, u"100001"_qs, u"XX1"_qs);
      press(s, "Esc");
    });
    EXPECT_EQ(contracts(), "100001 100001  | 100002 100001 XX1");
    for (const QString& file : kept()) {
      QFile::remove(programPath(u"khht/"_qs + file));
      QFile::remove(programPath(u"ghsht/"_qs + file));
    }
    execSql("delete from jxc_htdj");
  }
}

TEST_F(DocumentContracts, TheyFollowTheWaitingDocumentFromBothEnds) {
  for (const Side& side : sides()) {
    SCOPED_TRACE(side.screen);
    const DocumentFamily& family = *side.family;
    execSql("delete from jxc_htgl");
    const std::string onHead = compose("select ht_sn from {} order by id", {family.head});
    const QString picked = stands(*side.partners, u"年度"_qs);
    QString withPicked, withAdded;
    open(side.screen, [&](ui::Screen& s) {
      withPicked = s.field("jsn").text();
      scan(s, u"6900000000017");
      pick(s);
      save(s, side.question);
      withAdded = s.field("jsn").text();
      EXPECT_EQ(s.field("tht").text(), "") << "the next document has none yet";
      scan(s, u"6900000000017");
      add(s, u"供镜协议"_qs);
      save(s, side.question);
    });
    EXPECT_EQ(rows(onHead), "100001 | 100002");
    EXPECT_EQ(contracts(), u"100001 100001 %1 | 100002 100001 %2"_qs.arg(withPicked, withAdded));

    // An audit and its cancel leave both as they are.
    for (const QString& number : {withPicked, withAdded}) {
      ASSERT_EQ(checkDj(family, number, prompt), AuditOutcome::Audited);
      EXPECT_TRUE(contract_ties::change(family, number, {}, {})) << "it waits no longer";
      ASSERT_TRUE(cancelDocument(number, prompt.willSayYes()));
    }
    EXPECT_EQ(rows(onHead), "100001 | 100002");

    open(side.screen, [&](ui::Screen& s) {
      showWaiting(s);
      EXPECT_EQ(s.grid("gridWaiting").currentText(family.number), withAdded);
      // Another one in its place: the added one would go, and stays when the operator says no.
      expectScreen("F_Htgl_Xz", [&](ui::Screen& list) {
        EXPECT_EQ(list.grid("gridHt").currentText("ht_sn"), "100002") << "it stands on the one that the document has";
        list.grid("gridHt").selectRow(1);
        press(list, "F5");
      });
      press(s, "Ctrl+H", goes(u"100002 供镜协议"_qs, u"换下"_qs), Answer::No);
      press(s, "Ctrl+Del", u"您确定要删除“待审核”单据吗！"_qs, Answer::Yes);
      EXPECT_EQ(kept(), QStringList());
      press(s, "Ctrl+Del", u"您确定要删除“待审核”单据吗！"_qs, Answer::Yes);
    });
    EXPECT_EQ(contracts(), "100001 100001 ");
    EXPECT_EQ(rows("select ht_sn from jxc_htdj") + rows("select ht_path from jxc_htwj"), "");

    // From the other end: the contract goes, the document loses it. A contract of a partner that is gone is still
    // listed.
    QString number;
    open(side.screen, [&](ui::Screen& s) {
      number = s.field("jsn").text();
      scan(s, u"6900000000017");
      add(s, u"供镜协议"_qs);
      save(s, side.question);
    });
    open("F_Htgl", [&](ui::Screen& s) {
      const bool isCustomer = side.partners->isCustomer();
      s.findChild<QTabWidget*>()->setCurrentIndex(isCustomer ? 1 : 0);
      execSql("update jxc_htgl set ghs_sn='100099',u_sn='' where ht_sn='100001'");
      press(s, "F2");
      ui::Grid& list = s.grid(isCustomer ? "gridHt2" : "gridHt1");
      list.waitLoaded();
      EXPECT_EQ(list.rowCount(), 2);
      EXPECT_EQ(list.currentText("gl_djh"), number);
      press(s, "Ctrl+D", u"您确定要删除该合同信息吗！"_qs, Answer::Yes);
    });
    EXPECT_EQ(rows(onHead), "");
    EXPECT_EQ(kept(), QStringList());
    EXPECT_TRUE(deleteWaitingDocument(family, number, prompt.willSayYes()));
    EXPECT_EQ(contracts(), "100001 100099 ");
  }
}

/// Another partner, a locked day, and what another operator did meanwhile.
TEST_F(DocumentContracts, AContractIsWithThePartnerOfItsDocument) {
  execSql("insert into jxc_khxx (kh_sn,kh_name,kh_jm,kh_forbid) values ('100002','第二中学','DEZX',0)");
  const QString picked = stands(customerSide, u"年度"_qs);
  execSql("insert into jxc_htdj (ht_sn,a_name) values (?,'小王')", picked);  // a colleague added it for what he makes
  QString number;
  open("F_Spxs", [&](ui::Screen& s) {
    number = s.field("jsn").text();
    scan(s, u"6900000000017");
    pick(s);
    s.field("tkh").setPicked({u"第二中学"_qs, u"100002"_qs});
    press(s, "F5", u"合同“年度”是与“普通客户”签订的，请重新选择合同！"_qs);
    s.field("tkh").setPicked({u"普通客户"_qs, u"100001"_qs});
    save(s, kSaveSale);
  });
  const auto tie = [] { return rows("select ht_sn,kh_sn from jxc_lsxsd") + u" / "_qs + contracts(); };
  EXPECT_EQ(tie(), u"100001 100001 / 100001 100001 "_qs + number);
  EXPECT_EQ(changeWaitingHead(families::sale, number, {.partner = "100002"}, prompt), number);
  EXPECT_EQ(tie(), " 100002 / 100001 100001 ");
  EXPECT_EQ(contract_ties::change(families::sale, number, {}, picked).text,
            "合同“年度”是与“普通客户”签订的，请重新选择合同！");
  contracts::Draft draft;
  draft.name = u"团购"_qs;
  draft.partner = u"100002"_qs;
  draft.employee = u"100001"_qs;
  draft.ofDocument = true;
  const QString added = contracts::saveContract(customerSide, draft, prompt).value_or(QString());
  EXPECT_TRUE(contract_ties::change(families::sale, number, picked, added)) << "it is not what the operator saw";
  EXPECT_FALSE(contract_ties::change(families::sale, number, {}, added));
  EXPECT_EQ(changeWaitingHead(families::sale, number, {.partner = "100001"}, prompt), number);
  EXPECT_EQ(tie(), u"100002 100001 / 100001 100001  | 100002 100001 "_qs + number) << "it was made for the document";
  execSql("insert into jxc_zmsd (sd_rq,sd_lsid) values ('2021-05-03',0)");
  EXPECT_TRUE(contract_ties::change(families::sale, number, added, {})) << "no field of a locked document";
  EXPECT_TRUE(deleteWaitingDocument(families::sale, number, prompt.willSayYes())) << "but whole it may go";
  EXPECT_EQ(contracts(), "100001 100001 ");

  for (const char* gone :
       {"update jxc_khxx set kh_forbid=1 where kh_sn='100002'", "delete from jxc_khxx where kh_sn='100002'"}) {
    execSql(gone);
    EXPECT_FALSE(contracts::saveContract(customerSide, draft, prompt));
    EXPECT_TRUE(prompt.lastNotice().contains(u"请重新选择")) << prompt.lastNotice().toStdString();
  }
  EXPECT_EQ(contracts(), "100001 100001 ");
}

}  // namespace jxc::test::contract_screens_test
