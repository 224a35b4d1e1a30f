// Attachments of contracts on a real FTP server: there and back, and whatever may go wrong on the way.
#include "accounts/attachment_server.h"

#include "accounts/contracts.h"
#include "core/data_module.h"
#include "core/login.h"
#include "core/program_directory.h"
#include "core/text.h"
#include "engine/server.h"
#include "harness/account_set_fixture.h"
#include "harness/files.h"
#include "harness/ftp_server.h"
#include "platform/net/ftp.h"
#include "server/server_proxy.h"
#include "server/test_engine.h"
#include "simulation/station_door.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QThread>

#include <optional>

namespace jxc::test::attachment_server_test {

using attachments::Keeper;
using Encryption = FtpServer::Encryption;
const QString kPassword = QStringLiteral("geheim&9");

/// The most memory that this process has held since it was last forgotten, in bytes.
qint64 mostMemory() {
  const QByteArray status = bytesOf(u"/proc/self/status"_qs);
  const QByteArray kilobytes = status.mid(status.indexOf("VmHWM:") + 6).trimmed();
  return kilobytes.left(kilobytes.indexOf(' ')).toLongLong() * 1024;
}
void forgetMostMemory() {
  writeBytes(u"/proc/self/clear_refs"_qs, "5");
}

class AttachmentServer : public AccountSetFixture {
 protected:
  void SetUp() override {
    if (!FtpServer::canStart()) GTEST_SKIP() << "python3-pyftpdlib is not installed";
  }
  ~AttachmentServer() override { attachments::setServerTerms(std::chrono::seconds(20), {}); }

  FtpServer& start(Encryption encryption) { return server_.emplace(encryption); }
  attachments::ServerSettings settings() {
    return {.host = u"127.0.0.1"_qs,
            .user = u"shop"_qs,
            .password = kPassword,
            .port = QString::number(server_->port()),
            .mayBePlain = true};
  }
  void use(const attachments::ServerSettings& settings) {
    ASSERT_TRUE(attachments::saveServerSettings(settings, prompt));
  }
  QString given(const QString& name, const QByteArray& content) {
    writeBytes(folder_.filePath(name), content);
    return folder_.filePath(name);
  }
  /// Without its blocks on the disk.
  QString sized(const QString& name, qint64 megabytes) {
    const QString path = given(name, "%PDF");
    EXPECT_TRUE(QFile::resize(path, megabytes << 20U));
    return path;
  }
  std::optional<QString> save(const QString& file, const attachments::Progress& progress = {},
                              Keeper keeper = Keeper::Server) {
    return contracts::saveContract(customerSide,
                                   {.name = u"供镜协议"_qs,
                                    .date = u"2021-05-03"_qs,
                                    .partner = u"100001"_qs,
                                    .employee = u"100001"_qs,
                                    .file = file,
                                    .keeper = keeper},
                                   prompt, progress);
  }
  /// Files in the folder of customers' contracts of this machine.
  static QStringList kept() { return QDir(programPath(u"khht"_qs)).entryList(QDir::Files); }
  QString contractsWritten() { return lookupValue("select count(*) from jxc_htgl"); }
  QString storedName(const QString& number) {
    return u"khht/"_qs + QString(lookupValue("select ht_fujian from jxc_htgl where ht_sn=?", number));
  }
  static QString notes() { return lookupValue("select count(*) from jxc_htwj"); }
  /// Whether all that was noted is removed in the end; `again` tries.
  static bool allGoes(const std::function<void()>& again = contracts::removeLeftFiles) {
    for (int waited = 0; waited < 5000 && notes() != "0"; waited += 20) {
      again();
      QThread::msleep(20);
    }
    return notes() == "0";
  }
  /// What is removed beside the window takes its moment.
  bool comesTo(const QStringList& files) {
    for (int waited = 0; waited < 5000 && server_->files() != files; waited += 20)
      QThread::msleep(20);
    return server_->files() == files;
  }

  std::optional<FtpServer> server_;
  QTemporaryDir folder_;
};

TEST_F(AttachmentServer, FilesGoThereComeBackAndGoWithTheirContractAndNothingElseDoes) {
  const FtpServer& server = start(Encryption::None);
  const QString folder = u"店铺 合同"_qs;
  QDir(server.root()).mkpath(folder);
  writeBytes(server.root() + u'/' + folder + u"/旧合同.doc"_qs, "old");
  auto settings = this->settings();
  settings.folder = folder + u'/';
  use(settings);
  // The same shown name on two contracts; the folder of the side is made.
  const auto first = save(given(u"协议.pdf"_qs, "first")), second = save(given(u"协议.pdf"_qs, "second"));
  ASSERT_TRUE(first && second) << prompt.lastNotice().toStdString();
  EXPECT_EQ(QString(lookupValue("select ht_path+ht_fjname from jxc_htgl where ht_sn=?", *first)),
            u"远程FTP服务器协议.pdf");
  EXPECT_EQ(server.files().size(), 3);
  for (const auto& [number, content] : {std::pair(*first, "first"), std::pair(*second, "second")}) {
    contracts::htLink(number, u"100001"_qs, u"XS2105031000"_qs + number.right(1));
    const auto copy = contracts::attachmentToOpen(number, prompt);
    ASSERT_TRUE(copy) << prompt.lastNotice().toStdString();
    EXPECT_EQ(bytesOf(*copy), content);
    EXPECT_EQ(QFileInfo(*copy).fileName(), u"协议.pdf");
    // The folder of copies, above that of this one, is shut to everybody else.
    EXPECT_EQ(QFileInfo(QFileInfo(QFileInfo(*copy).path()).path()).permissions() & 0x77, 0);
  }
  // A row of an older set shows the file by its given name, and leaves it.
  execSql("insert into jxc_htgl (ht_sn,ht_type,ht_path,ht_fujian,ht_fjname) values ('900001','kh',?,'','旧合同.doc')",
          words(attachments::kOnServer));
  QDir(server.root() + u'/' + folder).rename(u"旧合同.doc"_qs, u"khht/旧合同.doc"_qs);
  EXPECT_EQ(bytesOf(*contracts::attachmentToOpen(u"900001"_qs, prompt)), "old");

  const QString stays = folder + u'/' + storedName(*second);
  EXPECT_TRUE(contracts::deleteContract(*first, prompt.willSayYes()));
  EXPECT_TRUE(contracts::deleteContract(u"900001"_qs, prompt.willSayYes()));
  execSql("insert into jxc_htgl (ht_sn,ht_type,ht_path,ht_fujian) values ('900002','kh',?,'../../khht/x')",
          words(attachments::kOnServer));
  contracts::htDelete(u"900002"_qs);
  EXPECT_EQ(server.files().size(), 2) << "its own file went, and no other";
  EXPECT_TRUE(server.files().contains(stays));
  contracts::htDelete(*second);
  EXPECT_TRUE(comesTo({folder + u"/khht/旧合同.doc"_qs}));
  // One that somebody has taken away there is as good as removed.
  const auto third = save(given(u"协议.pdf"_qs, "third"));
  ASSERT_TRUE(third && allGoes());
  EXPECT_TRUE(QFile::remove(server.root() + u'/' + folder + u'/' + storedName(*third)));
  EXPECT_TRUE(contracts::deleteContract(*third, prompt.willSayYes()));
  EXPECT_EQ(prompt.notices, QStringList());
  EXPECT_EQ(notes(), "0");
}

/// Saving, opening and deleting alike: each names the fault, and none loses anything by it.
TEST_F(AttachmentServer, WhatFailsSaysWhyKeepsThePasswordAndWritesNothing) {
  const FtpServer& plain = start(Encryption::None);
  const QString file = given(u"协议.pdf"_qs, QByteArray(3000, 'x'));
  struct Case {
    QString words;
    net::Outcome outcome;
    net::Reason reason;
    QByteArray mood;
    std::function<void(attachments::ServerSettings&)> change = {};
  };
  using enum net::Outcome;
  const Case cases[] = {
      {u"不接受用户名或密码"_qs, Answered, net::Reason::Login, "", [](auto& s) { s.password = u"falsch-1"_qs; }},
      {u"找不到服务器 no-such-host.invalid"_qs, NotSent, net::Reason::UnknownName, "",
       [](auto& s) { s.host = u"no-such-host.invalid"_qs; }},
      {u"连接不上服务器"_qs, NotSent, net::Reason::Unreachable, "", [](auto& s) { s.port = u"1"_qs; }},
      {u"没有文件夹“没有的”"_qs, Answered, net::Reason::Folder, "", [](auto& s) { s.folder = u"没有的"_qs; }},
      {u"空间不足！\r\n\r\n服务器说：452 Insufficient"_qs, Answered, net::Reason::Refused, "full"},
      {u"空间不足！\r\n\r\n服务器说：552 Exceeded"_qs, Answered, net::Reason::Refused, "quota"},
      {u"拒绝了操作！\r\n\r\n服务器说：550 Permission"_qs, Answered, net::Reason::Refused, "denied"},
      {u"连接中断了"_qs, Unknown, net::Reason::Cut, "cut"},
      {u"超过 0.4 秒没有回应"_qs, Unknown, net::Reason::Silent, "silent"},
      {u"不支持加密传输，用户名和密码没有发出"_qs, NotSent, net::Reason::Unencrypted, "",
       [](auto& s) { s.mayBePlain = false; }},
      {u"不支持加密传输"_qs, NotSent, net::Reason::Unencrypted, "", [](auto& s) { s.trusted = QString(44, u'A'); }},
  };
  attachments::setServerTerms(std::chrono::milliseconds(400), {});
  for (const Case& each : cases) {
    SCOPED_TRACE(each.words.toStdString());
    plain.mood("");
    use(settings());
    const auto stands = save(file);
    ASSERT_TRUE(stands && allGoes()) << prompt.lastNotice().toStdString();
    auto settings = this->settings();
    if (each.change) each.change(settings);
    use(settings);
    const QByteArray before = plain.heard();
    const auto fails = [&](const auto& call) {
      prompt.forget();
      plain.mood(each.mood);
      call();
      EXPECT_TRUE(prompt.lastNotice().contains(each.words)) << prompt.lastNotice().toStdString();
      EXPECT_FALSE(prompt.lastNotice().contains(settings.password)) << "the server repeats a wrong one";
    };
    fails([&] { EXPECT_FALSE(save(file)); });
    EXPECT_EQ(contractsWritten(), "1");
    if (each.mood != "full" && each.mood != "quota") {
      fails([&] { EXPECT_FALSE(contracts::attachmentToOpen(*stands, prompt)); });
      fails([&] { EXPECT_TRUE(contracts::deleteContract(*stands, prompt.willSayYes())); });
      EXPECT_TRUE(exists("select id from jxc_htwj where ht_fjname='协议.pdf' and ht_rq=''")) << "to be tried again";
    }
    execSql("delete from jxc_htgl");
    const bool mayLogIn = each.reason != net::Reason::Unencrypted;
    EXPECT_TRUE(mayLogIn || !plain.heard().mid(before.size()).contains("USER"));
    plain.mood(each.mood);
    const auto call = net::storeFile({.host = settings.host,
                                      .port = settings.port.toInt(),
                                      .user = settings.user,
                                      .password = settings.password,
                                      .folder = settings.folder,
                                      .mayBePlain = settings.mayBePlain,
                                      .trusted = settings.trusted},
                                     file, {u"khht"_qs, u"x"_qs}, {.silence = std::chrono::milliseconds(400)});
    const net::Result result = call->wait();
    EXPECT_EQ(result.outcome, each.outcome);
    EXPECT_EQ(result.reason, each.reason);
    EXPECT_FALSE(result.accepted);
  }
  EXPECT_EQ(lookupValue("select count(*) from jxc_log where log_note like ?", QString(u'%' + kPassword + u'%')), "0");
}

TEST_F(AttachmentServer, WhatIsCutComesWholeTheSecondTimeAndWhatIsStoppedEndsAtOnce) {
  const FtpServer& server = start(Encryption::None);
  use(settings());
  const QString file = given(u"大.pdf"_qs, QByteArray(4000000, 'x'));
  server.mood("quota");
  EXPECT_FALSE(save(sized(u"更大.pdf"_qs, 20)));
  EXPECT_TRUE(prompt.lastNotice().contains(u"空间可能已满"_qs)) << prompt.lastNotice().toStdString();
  server.mood("cut");
  EXPECT_FALSE(save(file));
  EXPECT_TRUE(prompt.lastNotice().contains(u"连接中断了"_qs)) << prompt.lastNotice().toStdString();
  server.mood("");
  EXPECT_TRUE(allGoes());
  EXPECT_EQ(server.files(), QStringList()) << "the part that came is removed";
  ASSERT_TRUE(save(file));
  EXPECT_EQ(QFileInfo(server.root() + u'/' + storedName(u"100001"_qs)).size(), 4000000);
  prompt.forget();

  server.mood("held");
  QElapsedTimer stopped;
  int reports = 0, last = 0;
  EXPECT_FALSE(save(file, [&](int percent) {
    last = std::max(last, percent);
    if (++reports < 10) return true;
    stopped.start();
    return false;
  }));
  EXPECT_LT(stopped.elapsed(), 500);
  EXPECT_EQ(reports, 11) << "the window goes on meanwhile; the last one takes the bar away";
  EXPECT_GT(last, 0);
  EXPECT_EQ(prompt.notices, QStringList()) << "who stops needs no notice";
  EXPECT_EQ(contractsWritten(), "1");
  EXPECT_TRUE(comesTo({storedName(u"100001"_qs)}));

  // With a server that is away the note of the file stays, and the file goes when it is back.
  server.mood("");
  const auto second = save(file);
  ASSERT_TRUE(second) << prompt.lastNotice().toStdString();
  auto away = settings();
  away.port = u"1"_qs;
  use(away);
  contracts::htDelete(*second);
  use(settings());
  EXPECT_EQ(notes(), "1");
  EXPECT_TRUE(allGoes());
  EXPECT_EQ(server.files(), QStringList{storedName(u"100001"_qs)});

  server_->goAway();
  const QString left = storedName(u"100001"_qs);
  EXPECT_TRUE(contracts::deleteContract(u"100001"_qs, prompt.willSayYes()));
  EXPECT_EQ(contractsWritten(), "0");
  EXPECT_TRUE(prompt.lastNotice().startsWith(u"合同已删除，附件文件还没有删除："_qs + left));
  EXPECT_EQ(notes(), "1") << "to be tried again";
}

/// The server goes in the middle of a transfer and is away when the part of the file is to be removed: it goes with the
/// next login of whoever reaches the server again.
TEST_F(AttachmentServer, APartThatCannotBeRemovedAtOnceGoesWhenTheServerIsBack) {
  FtpServer& server = start(Encryption::None);
  use(settings());
  const QString file = sized(u"扫描.pdf"_qs, 20);
  server.mood("held");
  EXPECT_FALSE(save(file, [&](int) {
    if (!server.files().isEmpty()) server.goAway();  // it is on its way
    return true;
  }));
  EXPECT_TRUE(prompt.lastNotice().contains(u"连接中断了"_qs)) << prompt.lastNotice().toStdString();
  EXPECT_EQ(server.files().size(), 1);
  EXPECT_EQ(contractsWritten() + notes(), "01");
  server.mood({});
  server.comeBack();
  use(settings());
  EXPECT_TRUE(allGoes([] {
    for (const LoginHook& each : loginHooks())
      each();
  }));
  EXPECT_EQ(server.files(), QStringList());
}

/// Loses the books at the end of the next command: it was kept or not, and nobody can be asked for a while.
class LosesTheEnd : public DoorKeeper {
 public:
  enum class Truth : char { Kept, TakenBack };
  void loseNext(Truth truth) { next_ = truth; }
  void comeBack() { isAway_ = false; }

  Fate knock(std::string_view call, const std::string&, bool) override {
    if (isAway_) lose();
    if (call == "commit" && next_ == Truth::TakenBack) lose();
    return Fate::Done;
  }
  void kept() override {
    if (next_) lose();
  }
  void writing(bool) override {}
  void cut(Fate) override {}

 private:
  [[noreturn]] void lose() {
    next_.reset();
    isAway_ = true;
    throw ConnectionLost(u"不知道是否已经保存。"_qs, "commit", ConnectionLost::How::Unknown);
  }
  std::optional<Truth> next_;
  bool isAway_ = false;
};

/// Whatever becomes of the commit behind a file that was sent: a contract that stands has its file, and a file without
/// one goes.
TEST_F(AttachmentServer, TheFileFollowsACommitThatNobodyAnswered) {
  const FtpServer& server = start(Encryption::None);
  LosesTheEnd keeper;
  dataModule().closeAccountDb();
  dataModule().installAccountDb(std::make_unique<StationDoor>(openFresh(), keeper));
  use(settings());
  for (const Keeper kind : {Keeper::Server, Keeper::Folder})
    for (const auto truth : {LosesTheEnd::Truth::Kept, LosesTheEnd::Truth::TakenBack}) {
      const bool isKept = truth == LosesTheEnd::Truth::Kept;
      SCOPED_TRACE(isKept ? "kept" : "taken back");
      const auto files = [&] { return kind == Keeper::Server ? server.files() : kept(); };
      EXPECT_THROW(save(
                       given(u"协议.pdf"_qs, "text"),
                       [&](int) {
                         keeper.loseNext(truth);
                         return true;
                       },
                       kind),
                   ConnectionLost);
      keeper.comeBack();
      EXPECT_EQ(contractsWritten(), isKept ? "1" : "0");
      EXPECT_EQ(notes(), isKept ? "0" : "1");
      EXPECT_EQ(files().size(), 1) << "as long as it is not known";
      contracts::removeLeftFiles();
      EXPECT_EQ(notes(), isKept ? "0" : "1") << "another station may be sending it just now";
      if (kind == Keeper::Folder && !isKept) {  // as if the program had been killed in the middle of the copy
        const QString whole = programPath(u"khht/"_qs + files().constFirst());
        EXPECT_TRUE(QFile::rename(whole, whole + u".1.tmp"_qs));
      }
      setClock(u"2021-05-05"_qs);
      EXPECT_TRUE(allGoes());
      EXPECT_EQ(files().size(), isKept ? 1 : 0);
      execSql("delete from jxc_htgl");
      for (const QString& each : files())
        QFile::remove(kind == Keeper::Server ? server.root() + u'/' + each : programPath(u"khht/"_qs + each));
      setClock(u"2021-05-03"_qs);
    }
  const auto takenByAnother = [](int) {  // whose clock is a day ahead
    execSql("delete from jxc_htwj");
    return true;
  };
  EXPECT_THROW(save(given(u"协议.pdf"_qs, "text"), takenByAnother), DbError);
  EXPECT_EQ(contractsWritten(), "0") << "none that promises a file which is gone";
}

class AttachmentAtACut : public AttachmentServer {};

TEST_F(AttachmentAtACut, TheFileFollowsACommitWhoseConnectionBroke) {
  if (!onServer()) GTEST_SKIP() << "a file answers its commit";
  using Cut = ServerProxy::Cut;
  const FtpServer& server = start(Encryption::None);
  ServerProxy proxy(portOf(copyAddress()));
  dataModule().installAccountDb(openPostgres(QString::fromStdString(proxy.address(copyAddress()))));
  use(settings());
  const auto saveCut = [&](Cut when) {
    return save(given(u"协议.pdf"_qs, "text"), [&proxy, when](int) {
      proxy.cut(when);
      return true;
    });
  };
  const auto stands = saveCut(Cut::BeforeItsAnswer);
  ASSERT_TRUE(stands) << "it is found out that it was kept";
  EXPECT_THROW(saveCut(Cut::BeforeCommit), ConnectionLost);
  EXPECT_EQ(contractsWritten(), "1");
  EXPECT_TRUE(allGoes());
  EXPECT_EQ(server.files(), QStringList{storedName(*stands)});
}

TEST_F(AttachmentServer, LargeFilesGoPieceByPieceAndWhatChangesOnItsWayIsNotTaken) {
  const FtpServer& server = start(Encryption::None);
  use(settings());
  const QString scan = sized(u"扫描.pdf"_qs, 100);
  forgetMostMemory();
  const qint64 before = mostMemory();
  const auto number = save(scan);
  ASSERT_TRUE(number) << prompt.lastNotice().toStdString();
  const auto copy = contracts::attachmentToOpen(*number, prompt);
  ASSERT_TRUE(copy) << prompt.lastNotice().toStdString();
  EXPECT_LT(mostMemory() - before, 50 << 20) << "neither way it is held whole";
  EXPECT_EQ(QFileInfo(*copy).size(), QFileInfo(scan).size());
  QFile::remove(*copy);

  const QString stays = storedName(*number), written = sized(u"正在写.pdf"_qs, 20);
  const auto saveWhile = [&](const std::function<void()>& happens) {
    server.mood("held");
    return save(written, [&](int) {
      if (server.files().size() < 2) return true;  // not on its way yet
      happens();
      server.mood({});
      return true;
    });
  };
  for (const qint64 size : {21, 1}) {
    EXPECT_FALSE(saveWhile([&] { QFile::resize(written, size << 20U); }));
    EXPECT_EQ(prompt.lastNotice(), "附件没有能够保存到FTP服务器！\r\n\r\n文件在传输时被改动了，请重新保存！");
    EXPECT_EQ(contractsWritten(), "1");
    EXPECT_TRUE(comesTo({stays})) << "nothing half is left";
    EXPECT_TRUE(QFile::resize(written, 20 << 20U));
  }
  const auto second = saveWhile([&] { QFile::remove(written); });
  ASSERT_TRUE(second) << "taken away while it is sent, it is whole all the same";
  EXPECT_EQ(QFileInfo(server.root() + u'/' + storedName(*second)).size(), 20 << 20U);
  prompt.forget();
  EXPECT_FALSE(save(written));
  EXPECT_EQ(prompt.lastNotice(), u"附件文件不存在："_qs + written);
}

TEST_F(AttachmentServer, NoPasswordReachesACertificateThatNobodyVouchesForUntilTheOperatorTrustsIt) {
  FtpServer& server = start(Encryption::Offered);
  auto settings = this->settings();
  use(settings);
  const QString file = given(u"协议.pdf"_qs, "text");
  EXPECT_FALSE(save(file));
  EXPECT_TRUE(prompt.lastNotice().contains(u"证书不能核实，用户名和密码没有发出"_qs));
  EXPECT_FALSE(attachments::testServer(settings, prompt.willSayNo()));
  EXPECT_FALSE(server.heard().contains("USER")) << server.heard().toStdString();
  EXPECT_TRUE(prompt.questions.last().contains(u"证书：CN = nas"_qs)) << prompt.questions.last().toStdString();

  EXPECT_TRUE(attachments::testServer(settings, prompt.willSayYes())) << prompt.lastNotice().toStdString();
  QProcess openssl;
  openssl.start(u"openssl"_qs,
                {u"x509"_qs, u"-noout"_qs, u"-fingerprint"_qs, u"-sha256"_qs, u"-in"_qs, server.certificate()});
  openssl.waitForFinished();
  const QString shown = QString::fromLatin1(openssl.readAll()).section(u'=', 1).trimmed();
  EXPECT_TRUE(prompt.questions.last().contains(shown)) << "what the server's own page shows";
  EXPECT_EQ(server.files(), QStringList()) << "the test leaves nothing";
  use(settings);
  EXPECT_EQ(attachments::serverSettings()->trusted, settings.trusted);
  EXPECT_TRUE(save(file));
  EXPECT_TRUE(server.heard().contains("PROT P")) << "the file goes encrypted, too";

  // One that the machine vouches for needs no trust; another one under the same address gets nothing.
  attachments::setServerTerms(std::chrono::seconds(20), server.certificate());
  use(this->settings());
  EXPECT_TRUE(save(file)) << prompt.lastNotice().toStdString();
  const FtpServer other(Encryption::Offered);
  settings.port = QString::number(other.port());
  use(settings);
  EXPECT_FALSE(save(file));
  EXPECT_TRUE(prompt.lastNotice().contains(u"不是所信任的证书"_qs));
  EXPECT_FALSE(attachments::testServer(settings, prompt.willSayNo()));
  EXPECT_TRUE(prompt.questions.last().contains(u"不是原来信任的证书"_qs)) << "it may be somebody else's";
  EXPECT_FALSE(other.heard().contains("USER"));
}

}  // namespace jxc::test::attachment_server_test
