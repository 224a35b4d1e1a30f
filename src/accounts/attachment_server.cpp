#include "accounts/attachment_server.h"

#include "core/clock.h"
#include "core/file_names.h"
#include "core/log.h"
#include "core/refusal.h"
#include "core/statements.h"
#include "core/text.h"
#include "platform/net/ftp.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <map>
#include <memory>

namespace jxc::attachments {
namespace attachment_server_detail {

constexpr int kHighestPort = 65535;
constexpr int kNotThere = 550;
constexpr int kForGood = 500;                   // what a server says no to; below it: not now
constexpr std::chrono::seconds kLastChance{2};  // for files that are being removed when the program ends

net::Terms& terms() {
  static net::Terms given;
  return given;
}

net::FtpServer serverOf(const ServerSettings& settings) {
  return {.host = settings.host.trimmed(),
          .port = settings.port.trimmed().toInt(),
          .user = settings.user,
          .password = settings.password,
          .folder = settings.folder,
          .mayBePlain = settings.mayBePlain,
          .trusted = settings.trusted};
}
net::FtpServer theServer() {
  const auto settings = serverSettings();
  if (!settings) throw AttachmentError(u"没有设置FTP服务器，请先在“FTP参数”中设置！"_qs);
  return serverOf(*settings);
}

/// What the operator can do about it stands behind why.
QString explained(const net::Result& result, const net::FtpServer& server) {
  const QString why = net::wordsOf(result, server, terms());
  switch (result.reason) {
    case net::Reason::Unencrypted:
    case net::Reason::Unverified:
    case net::Reason::OtherKey:
      return why + u"\r\n\r\n请在“FTP参数”中测试连接。"_qs;
    default:
      return why;
  }
}

[[noreturn]] void fail(const QString& what, const net::Result& result, const net::FtpServer& server,
                       const QString& advice = {}) {
  const bool leavesPart = result.outcome == net::Outcome::Unknown || result.reason == net::Reason::Refused;
  if (result.reason == net::Reason::Stopped) throw AttachmentStopped(leavesPart);
  throw AttachmentError(what + u"\r\n\r\n"_qs + explained(result, server) + advice, leavesPart);
}

/// Calls that nobody waits for, by the file that they remove. They end with the application: libcurl would be gone
/// before what ends with the process.
std::map<QString, std::unique_ptr<net::Call>>& errands() {
  static std::map<QString, std::unique_ptr<net::Call>> calls = [] {
    qAddPostRoutine([] {
      const auto until = std::chrono::steady_clock::now() + kLastChance;
      for (const auto& [file, call] : errands())
        call->wait([until](int) { return std::chrono::steady_clock::now() < until; });
      errands().clear();
    });
    return std::map<QString, std::unique_ptr<net::Call>>();
  }();
  return calls;
}

/// Of this run of the program; its owner alone looks into it.
QTemporaryDir& copies() {
  static std::unique_ptr<QTemporaryDir> folder;
  if (!folder) {
    folder = std::make_unique<QTemporaryDir>(QDir::tempPath() + u"/jxc-附件-XXXXXX"_qs);
    qAddPostRoutine([] { folder.reset(); });
  }
  return *folder;
}
/// Each copy in a folder of its own, so that two of one name lie beside each other.
QString placeForCopy(const QString& shown) {
  static int number = 0;
  const QString folder = copies().filePath(QString::number(++number));
  if (!copies().isValid() || !QDir().mkpath(folder))
    throw AttachmentError(u"附件的临时文件夹不能建立："_qs + copies().errorString());
  return folder + u'/' + asFileName(shown);
}

Refusal cannotBe(const ServerSettings& settings) {
  bool isNumber = false;
  const int port = settings.port.trimmed().toInt(&isNumber);
  const QString host = settings.host.trimmed();
  for (const QChar each : host)
    if (each.isSpace() || each == u'/' || each == u'@')
      return {u"服务器地址只填写名称或IP地址，例如 192.168.1.8！"_qs, Subject::Setting, u"ftp_ip"_qs};
  if (host.isEmpty()) return {u"服务器地址必须填写！"_qs, Subject::Setting, u"ftp_ip"_qs};
  if (!isNumber || port < 1 || port > kHighestPort)
    return {u"端口必须是1到65535之间的整数！"_qs, Subject::Setting, u"ftp_port"_qs};
  return {};
}

QString trustQuestion(const QString& host, const net::Result& result) {
  const net::Certificate& certificate = result.certificate;
  const QString why =
      result.reason == net::Reason::OtherKey
          ? u"服务器 %1 出示的不是原来信任的证书：它换了证书，或者有人冒充它。"_qs
          : u"服务器 %1 的证书不能核实：它不是由公认的机构为这个名称签发的，或者已经过期。店内自己的存储服务器常常是这样。"_qs;
  return why.arg(host) +
         u"\r\n\r\n证书：%1\r\n有效期至：%2\r\nSHA-256指纹：%3\r\n\r\n"
         u"请与服务器管理页面上显示的指纹核对。一致时，要信任这张证书吗？信任前不会发送用户名和密码。"_qs.arg(
             certificate.subject, certificate.expires, certificate.fingerprint);
}

QString plainQuestion(const QString& host) {
  return u"服务器 %1 不支持加密传输：用户名、密码和文件会以明文经过网络，途中的任何人都能看到。"
         u"\r\n\r\n要允许不加密吗？"_qs.arg(host);
}

}  // namespace attachment_server_detail

void setServerTerms(std::chrono::milliseconds silence, const QString& authorities) {
  attachment_server_detail::terms() = {.silence = silence, .authorities = authorities};
}

std::optional<ServerSettings> serverSettings() {
  const RowSet rows = openSelect("select top 1 * from jxc_ftpcs order by id desc");
  if (rows.isEmpty() || rows.front().text("ftp_ip").trimmed().isEmpty()) return {};
  const Row row = rows.front();
  ServerSettings settings{.host = row.text("ftp_ip"),
                          .user = row.text("ftp_user"),
                          .password = row.text("ftp_pwd"),
                          .port = row.text("ftp_port"),
                          .folder = row.text("ftp_folder")};
  if (settings.port.trimmed().isEmpty()) settings.port = ServerSettings().port;
  // Another server at another address was not spoken about.
  const RowSet said =
      openSelect("select ftp_mw,ftp_zs from jxc_ftpaq where ftp_ip=? and ftp_port=?", settings.host, settings.port);
  for (const Row each : said) {
    settings.mayBePlain = strIsTrue(each.text("ftp_mw"));
    settings.trusted = each.text("ftp_zs");
  }
  return settings;
}

bool saveServerSettings(const ServerSettings& settings, Prompt& prompt) {
  namespace detail = attachment_server_detail;
  const QString host = settings.host.trimmed(), port = settings.port.trimmed();
  if (host.isEmpty()) {
    if (!prompt.ask(u"服务器地址为空：以后的附件保存在本机，服务器上已有的附件不能再打开。确定吗？"_qs)) return false;
  } else if (isRefused(detail::cannotBe(settings), prompt)) {
    return false;
  }
  Transaction transaction(accountDb());
  execSql("delete from jxc_ftpcs");
  execSql("delete from jxc_ftpaq");
  if (!host.isEmpty()) {
    insertRow("jxc_ftpcs", {{"ftp_ip", host},
                            {"ftp_user", settings.user},
                            {"ftp_pwd", settings.password},
                            {"ftp_port", port},
                            {"ftp_folder", settings.folder.trimmed()}});
    insertRow("jxc_ftpaq",
              {{"ftp_ip", host}, {"ftp_port", port}, {"ftp_mw", settings.mayBePlain}, {"ftp_zs", settings.trusted}});
  }
  writeLog(host.isEmpty() ? u"停用FTP服务器"_qs : u"修改FTP参数，服务器："_qs + host);
  transaction.commit();
  return true;
}

bool testServer(ServerSettings& settings, Prompt& prompt, const Progress& progress) {
  namespace detail = attachment_server_detail;
  if (isRefused(detail::cannotBe(settings), prompt)) return false;
  const QString name = u"jxc-"_qs + clock::now().toString(u"yyyyMMddHHmmsszzz"_qs) + u".txt"_qs;
  for (;;) {
    const net::FtpServer server = detail::serverOf(settings);
    const net::Result result = net::tryServer(server, name, detail::terms())->wait(progress);
    if (progress) progress(100);  // no bar lies over what follows
    if (result.accepted) {
      prompt.notice(u"连接成功，可以保存附件！"_qs);
      return true;
    }
    if (result.reason == net::Reason::Stopped) {
      prompt.say(u"测试已取消"_qs);
      return false;
    }
    if (!result.certificate.pin.isEmpty()) {
      if (!prompt.ask(detail::trustQuestion(server.host, result))) return false;
      settings.trusted = result.certificate.pin;
    } else if (result.reason == net::Reason::Unencrypted && server.trusted.isEmpty()) {
      if (!prompt.ask(detail::plainQuestion(server.host))) return false;
      settings.mayBePlain = true;
    } else {
      prompt.notice(u"连接失败！\r\n\r\n"_qs + net::wordsOf(result, server, detail::terms()));
      return false;
    }
  }
}

void storeOnServer(const QString& from, const QString& folder, const QString& name, const Progress& progress) {
  namespace detail = attachment_server_detail;
  const net::FtpServer server = detail::theServer();
  const net::Result result = net::storeFile(server, from, {folder, name}, detail::terms())->wait(progress);
  if (progress) progress(100);
  if (result.accepted) return;
  // Of a server that becomes full in the middle of a file often nothing is heard but that it hung up.
  const bool mayBeFull = result.outcome == net::Outcome::Unknown && result.reason == net::Reason::Cut;
  detail::fail(u"附件没有能够保存到FTP服务器！"_qs, result, server,
               mayBeFull ? u"如果总是传到中途就断开，服务器的空间可能已满。"_qs : QString());
}

QString fetchFromServer(const QString& folder, const QStringList& names, const QString& shown,
                        const Progress& progress) {
  namespace detail = attachment_server_detail;
  const net::FtpServer server = detail::theServer();
  const QString copy = detail::placeForCopy(shown);
  net::Result result;
  for (const QString& name : names) {
    const net::Result each = net::retrieveFile(server, {folder, name}, copy, detail::terms())->wait(progress);
    const bool isFound = each.code != detail::kNotThere;
    if (isFound || name == names.first()) result = each;  // why it was refused under its own name is what counts
    if (isFound) break;
  }
  if (progress) progress(100);
  if (!result.accepted) detail::fail(u"附件“%1”没有能够从FTP服务器取回！"_qs.arg(shown), result, server);
  QFile::setPermissions(copy, QFile::ReadOwner);  // what is changed in a copy would be lost
  return copy;
}

void removeFromServer(const QString& folder, const QString& name, const Progress& progress) {
  namespace detail = attachment_server_detail;
  const net::FtpServer server = detail::theServer();
  const net::Result result = net::removeFile(server, {folder, name}, detail::terms())->wait(progress);
  if (progress) progress(100);
  if (!result.accepted) throw AttachmentError(detail::explained(result, server));
}

Leaving removeFromServerBeside(const QString& folder, const QString& name) {
  namespace detail = attachment_server_detail;
  const QString file = folder + u'/' + name;
  auto& errands = detail::errands();
  if (const auto begun = errands.find(file); begun != errands.end()) {
    if (!begun->second->isOver()) return Leaving::Going;
    const net::Result result = begun->second->wait();
    errands.erase(begun);
    if (result.accepted) return Leaving::Gone;
    if (result.reason == net::Reason::Refused && result.code >= detail::kForGood) {
      writeLog(u"附件没有能够从FTP服务器删除：%1，服务器说：%2"_qs.arg(file, result.answer));
      return Leaving::Kept;
    }
  }
  if (const auto settings = serverSettings())
    errands.emplace(file, net::removeFile(detail::serverOf(*settings), {folder, name}, detail::terms()));
  return Leaving::Going;
}

}  // namespace jxc::attachments
