#include "platform/net/ftp.h"

#include "platform/net/certificate.h"
#include "platform/net/line.h"

#include <QBuffer>
#include <QFile>
#include <QUrl>

#include <algorithm>
#include <string_view>
#include <utility>

namespace jxc::net {
namespace ftp_detail {

constexpr std::string_view kStore = "STOR ", kRetrieve = "RETR ", kRemove = "DELE ", kMake = "MKD ";
constexpr int kNotThere = 550;  // or not to be touched
// The hash of no key: with it each handshake ends before the server is told anything.
constexpr const char* kNobodysPin = "sha256//AAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAA=";

/// A folder as a path of steps below the login, or from the root of the server where it begins with a slash.
QString folderOf(const FtpServer& server) {
  QString folder = server.folder.trimmed();
  folder.replace(u'\\', u'/');
  while (folder.size() > 1 && folder.endsWith(u'/'))
    folder.chop(1);
  return folder;
}
QString joined(const QString& folder, const QString& name) {
  if (folder.isEmpty() || name.isEmpty()) return folder + name;
  return folder.endsWith(u'/') ? folder + name : folder + u'/' + name;
}
/// An end of line would begin an order of its own.
QString printable(QString path) {
  path.removeIf([](QChar each) { return !each.isPrint(); });
  return path;
}
QString pathOf(const FtpServer& server, const FtpFile& file) {
  return printable(joined(joined(folderOf(server), file.folder), file.name));
}
/// A path to be gone into; an empty one is where the login leads.
QString inside(const QString& folder) {
  return folder.isEmpty() || folder.endsWith(u'/') ? folder : folder + u'/';
}

/// Address of a path; one that ends with a slash is a folder.
QByteArray addressOf(const FtpServer& server, const QString& path) {
  QByteArray host = server.host.trimmed().toUtf8();
  if (host.contains(':') && !host.startsWith('[')) host = '[' + host + ']';
  QByteArray steps = QUrl::toPercentEncoding(path, "/");
  if (steps.startsWith('/')) steps = "%2F" + steps.mid(1);  // else it would begin below the login
  return "ftp://" + host + ':' + QByteArray::number(server.port) + '/' + steps;
}

/// What goes up; read in the call's thread, as much of it as there was at the beginning.
struct Source {
  QIODevice& from;
  qint64 size;
  static std::size_t read(char* into, std::size_t size, std::size_t count, void* self) {
    Source& source = *static_cast<Source*>(self);
    const qint64 room = static_cast<qint64>(size) * static_cast<qint64>(count);
    const qint64 wanted = std::min(room, source.size - source.from.pos());
    const qint64 got = source.from.read(into, wanted);
    // What grows shorter while it is sent must not arrive as if it were whole.
    if (got < 0 || (got == 0 && wanted > 0)) return CURL_READFUNC_ABORT;
    return static_cast<std::size_t>(got);
  }
};

std::size_t passOver(char*, std::size_t size, std::size_t count, void*) {
  return size * count;
}

std::size_t writeDown(char* text, std::size_t size, std::size_t count, void* file) {
  const qint64 all = static_cast<qint64>(size) * static_cast<qint64>(count);
  return static_cast<QIODevice*>(file)->write(text, all) == all ? static_cast<std::size_t>(all) : 0;
}

Result fileFault() {
  return {.reason = Reason::File};
}

/// A session with a server: each step finds the connection of the one before.
class Session {
 public:
  Session(Line& line, const FtpServer& server)
      : line_(line), server_(server), user_(server.user.toUtf8()), password_(server.password.toUtf8()) {}

  Result store(QIODevice& from, const FtpFile& file) {
    Result result = send(from, file);
    if (result.reason != Reason::Folder || file.folder.isEmpty()) return result;
    // Looked for only when it is missed: each transfer would pay a round trip for it.
    result = enter(folderOf(server_));
    if (!result.accepted) return result;
    const Result made = order(kMake, folderOf(server_), file.folder);
    if (made.outcome != Outcome::Answered) return made;
    result = send(from, file);  // another station may have made it meanwhile
    return result.reason == Reason::Folder && !made.accepted ? made : result;
  }

  Result retrieve(const FtpFile& file, QIODevice& to) {
    prepare(pathOf(server_, file));
    set(CURLOPT_WRITEFUNCTION, &writeDown);
    set(CURLOPT_WRITEDATA, static_cast<void*>(&to));
    return line_.perform(kRetrieve, password_);
  }

  Result remove(const FtpFile& file) {
    Result result = order(kRemove, pathOf(server_, {file.folder, {}}), file.name);
    if (result.reason != Reason::Refused || result.code != kNotThere) return result;
    prepare(pathOf(server_, file));
    set(CURLOPT_NOBODY, 1L);  // no more than what there is to say of it
    set(CURLOPT_WRITEFUNCTION, &passOver);
    const Result look = line_.perform({}, password_);
    if (look.outcome != Outcome::Answered) return look;  // whether it is there nobody knows
    const bool isGone = look.reason == Reason::Refused && look.code == kNotThere;
    return isGone ? Result{.outcome = Outcome::Answered, .accepted = true} : result;
  }

  /// Only what the server shows before it is told anything.
  Certificate certificate() {
    prepare({});
    set(CURLOPT_USE_SSL, static_cast<long>(CURLUSESSL_ALL));
    set(CURLOPT_CERTINFO, 1L);
    trust(kNobodysPin);
    line_.perform({}, password_);
    curl_certinfo* shown = nullptr;
    if (curl_easy_getinfo(line_.handle(), CURLINFO_CERTINFO, &shown) != CURLE_OK || !shown || shown->num_of_certs < 1)
      return {};
    QByteArray pem, subject, expires;
    for (const curl_slist* each = shown->certinfo[0]; each; each = each->next) {
      const QByteArray line = each->data;
      if (line.startsWith("Cert:")) pem = line.mid(5);
      if (line.startsWith("Subject:")) subject = line.mid(8);
      if (line.startsWith("Expire date:")) expires = line.mid(12);
    }
    Certificate read = readCertificate(pem);
    read.subject = QString::fromUtf8(subject).simplified();
    read.expires = QString::fromUtf8(expires).simplified();
    return read;
  }

 private:
  template <class Value>
  void set(CURLoption option, Value value) {
    curl_easy_setopt(line_.handle(), option, value);
  }
  /// A certificate with this key counts, whoever issued it and for what name, and no other.
  void trust(const QByteArray& pin) {
    set(CURLOPT_PINNEDPUBLICKEY, pin.constData());
    set(CURLOPT_SSL_VERIFYPEER, 0L);
    set(CURLOPT_SSL_VERIFYHOST, 0L);
  }
  void prepare(const QString& path) {
    line_.begin();
    set(CURLOPT_PROTOCOLS_STR, "ftp");
    set(CURLOPT_URL, addressOf(server_, path).constData());
    if (!user_.isEmpty()) set(CURLOPT_USERNAME, user_.constData());
    set(CURLOPT_PASSWORD, password_.constData());
    // A server whose certificate was once seen and trusted offers encryption: who says it does not is another one.
    const bool isPlain = server_.mayBePlain && server_.trusted.isEmpty();
    set(CURLOPT_USE_SSL, static_cast<long>(isPlain ? CURLUSESSL_TRY : CURLUSESSL_ALL));
    set(CURLOPT_FTPSSLAUTH, static_cast<long>(CURLFTPAUTH_TLS));
    if (!server_.trusted.isEmpty()) trust("sha256//" + server_.trusted.toLatin1());
  }
  Result send(QIODevice& from, const FtpFile& file) {
    Source source{from, from.size()};
    if (!from.seek(0)) return fileFault();
    prepare(pathOf(server_, file));
    set(CURLOPT_UPLOAD, 1L);
    set(CURLOPT_READFUNCTION, &Source::read);
    set(CURLOPT_READDATA, static_cast<void*>(&source));
    set(CURLOPT_INFILESIZE_LARGE, static_cast<curl_off_t>(source.size));
    Result result = line_.perform(kStore, password_);
    // Somebody wrote into it meanwhile: the beginning of one and the end of another would be neither.
    if ((result.accepted || result.reason == Reason::File) && from.size() != source.size)
      result = {.outcome = Outcome::Unknown, .reason = Reason::Changed};
    return result;
  }
  /// Goes into a folder and does nothing there.
  Result enter(const QString& folder) {
    prepare(inside(folder));
    set(CURLOPT_NOBODY, 1L);
    return line_.perform({}, password_);
  }
  /// In a folder that is gone into first: a session stands wherever the step before left it.
  Result order(std::string_view word, const QString& folder, const QString& name) {
    prepare(inside(folder));
    set(CURLOPT_NOBODY, 1L);
    const QByteArray command = QByteArray(word.data(), static_cast<qsizetype>(word.size())) + printable(name).toUtf8();
    const std::unique_ptr<curl_slist, decltype(&curl_slist_free_all)> orders(
        curl_slist_append(nullptr, command.constData()), &curl_slist_free_all);
    set(CURLOPT_PREQUOTE, orders.get());
    return line_.perform(word, password_);
  }

  Line& line_;
  const FtpServer server_;
  const QByteArray user_, password_;
};

}  // namespace ftp_detail

std::unique_ptr<Call> storeFile(const FtpServer& server, const QString& from, const FtpFile& file, const Terms& terms) {
  return std::make_unique<Call>(terms, [server, from, file](Line& line) {
    QFile source(from);
    if (!source.open(QIODevice::ReadOnly)) return ftp_detail::fileFault();
    return ftp_detail::Session(line, server).store(source, file);
  });
}

std::unique_ptr<Call> retrieveFile(const FtpServer& server, const FtpFile& file, const QString& to,
                                   const Terms& terms) {
  return std::make_unique<Call>(terms, [server, file, to](Line& line) {
    QFile target(to);
    if (!target.open(QIODevice::WriteOnly | QIODevice::NewOnly, QFile::ReadOwner | QFile::WriteOwner))
      return ftp_detail::fileFault();
    Result result = ftp_detail::Session(line, server).retrieve(file, target);
    if (result.accepted && !target.flush()) result = ftp_detail::fileFault();
    if (!result.accepted) target.remove();
    return result;
  });
}

std::unique_ptr<Call> removeFile(const FtpServer& server, const FtpFile& file, const Terms& terms) {
  return std::make_unique<Call>(terms,
                                [server, file](Line& line) { return ftp_detail::Session(line, server).remove(file); });
}

std::unique_ptr<Call> tryServer(const FtpServer& server, const QString& name, const Terms& terms) {
  return std::make_unique<Call>(terms, [server, name](Line& line) {
    ftp_detail::Session session(line, server);
    QByteArray few("test");
    QBuffer source(&few);
    source.open(QIODevice::ReadOnly);
    Result result = session.store(source, {{}, name});
    if (result.accepted) result = session.remove({{}, name});
    if (result.reason == Reason::Unverified || result.reason == Reason::OtherKey)
      result.certificate = session.certificate();
    return result;
  });
}

}  // namespace jxc::net
