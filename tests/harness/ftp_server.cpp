#include "harness/ftp_server.h"

#include "harness/files.h"

#include <QDir>
#include <QDirIterator>

#include <gtest/gtest.h>

namespace jxc::test {
namespace ftp_server_detail {

const char script[] = R"(
import os, sys, threading, time
from pyftpdlib.authorizers import DummyAuthorizer
from pyftpdlib.handlers import DTPHandler, FTPHandler, TLS_DTPHandler, TLS_FTPHandler
from pyftpdlib.log import logger
from pyftpdlib.servers import FTPServer

folder, encrypted = sys.argv[1], sys.argv[2] == 'tls'
threading.Thread(target=lambda: (sys.stdin.read(), os._exit(0)), daemon=True).start()

def mood():
    path = folder + '/mood'
    return open(path).read() if os.path.exists(path) else ''

class Files(DTPHandler):
    def handle_read_event(self):
        if mood() == 'held': return time.sleep(0.005)
        if not self.tot_bytes_received or mood() not in ('cut', 'quota'): return self.handle_read()
        if mood() == 'cut': return self.cmd_channel.close()
        self._resp = ('552 Exceeded storage allocation.', logger.warning)
        self.close()

class SecretFiles(TLS_DTPHandler):
    def readable(self):  # the handshake may come before the order that the line is for
        return self.receive or not self._initialized

class Orders(TLS_FTPHandler if encrypted else FTPHandler):
    auth_failed_timeout = 0
    def pre_process_command(self, line, cmd, arg):
        with open(folder + '/heard', 'a') as heard: heard.write(line + '\n')
        now = mood() if cmd in ('STOR', 'RETR', 'DELE') else ''
        if now == 'silent': return
        if now == 'denied': return self.respond('550 Permission denied.')
        if now == 'full' and cmd == 'STOR': return self.respond('452 Insufficient storage space.')
        if now == 'cut' and cmd == 'DELE': return self.close()
        super().pre_process_command(line, cmd, arg)
        if now == 'cut' and cmd == 'RETR': self.close()  # the first piece may have gone out
    def handle_auth_failed(self, msg, password):
        super().handle_auth_failed('"%s" is not the password.' % password, password)

users = DummyAuthorizer()
users.add_user('shop', 'geheim&9', folder + '/root', perm='elradfmw')
Orders.authorizer = users
if encrypted:
    Orders.certfile = folder + '/both.pem'
Orders.dtp_handler = SecretFiles if encrypted else Files
server = FTPServer(('127.0.0.1', 0), Orders)
print(server.socket.getsockname()[1], flush=True)
server.serve_forever()
)";

}  // namespace ftp_server_detail

bool FtpServer::canStart() {
  return QProcess::execute(u"/usr/bin/python3"_qs, {u"-c"_qs, u"import pyftpdlib.servers"_qs}) == 0;
}

FtpServer::FtpServer(Encryption encryption) : encryption_(encryption) {
  QDir().mkpath(root());
  if (encryption == Encryption::Offered) {
    const QString key = folder_.filePath(u"key.pem"_qs);
    EXPECT_EQ(
        QProcess::execute(u"openssl"_qs,
                          QStringList{u"req"_qs, u"-x509"_qs, u"-newkey"_qs, u"ec"_qs, u"-pkeyopt"_qs,
                                      u"ec_paramgen_curve:prime256v1"_qs, u"-nodes"_qs, u"-days"_qs, u"2"_qs,
                                      u"-subj"_qs, u"/CN=nas"_qs, u"-addext"_qs, u"subjectAltName=IP:127.0.0.1"_qs,
                                      u"-keyout"_qs, key, u"-out"_qs, certificate()}),
        0);
    writeBytes(folder_.filePath(u"both.pem"_qs), bytesOf(key) + bytesOf(certificate()));
  }
  comeBack();
}

void FtpServer::comeBack() {
  python_.start(u"/usr/bin/python3"_qs, {u"-c"_qs, QString::fromUtf8(ftp_server_detail::script), folder_.path(),
                                         encryption_ == Encryption::Offered ? u"tls"_qs : u"plain"_qs});
  while (!python_.canReadLine() && python_.waitForReadyRead(30000)) {
  }
  port_ = python_.readLine().trimmed().toInt();
  EXPECT_GT(port_, 0) << python_.readAllStandardError().toStdString();
}

FtpServer::~FtpServer() {
  goAway();
}

void FtpServer::goAway() {
  python_.kill();
  python_.waitForFinished();
}

void FtpServer::mood(const QByteArray& mood) const {
  writeBytes(folder_.filePath(u"mood"_qs), mood);
}

QStringList FtpServer::files() const {
  QStringList found;
  for (QDirIterator each(root(), QDir::Files, QDirIterator::Subdirectories); each.hasNext();)
    found << QDir(root()).relativeFilePath(each.next());
  found.sort();
  return found;
}

QByteArray FtpServer::heard() const {
  return bytesOf(folder_.filePath(u"heard"_qs));
}

}  // namespace jxc::test
