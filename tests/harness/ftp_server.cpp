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
from pyftpdlib.handlers import FTPHandler, TLS_DTPHandler, TLS_FTPHandler, ThrottledDTPHandler
from pyftpdlib.servers import FTPServer

folder, encrypted = sys.argv[1], sys.argv[2] == 'tls'
threading.Thread(target=lambda: (sys.stdin.read(), os._exit(0)), daemon=True).start()

def mood(now=None):
    path = folder + '/mood'
    if now is not None: open(path, 'w').write(now)
    return open(path).read() if os.path.exists(path) else ''

class Files(ThrottledDTPHandler):
    def __init__(self, *args):
        super().__init__(*args)
        self.read_limit = 200000 if mood() == 'slow' else 0
    def handle_read_event(self):
        if mood() == 'held':
            time.sleep(0.005)
        elif mood() == 'cut' and self.tot_bytes_received > 100000:
            mood('')
            self.cmd_channel.close()
        else:
            super().handle_read_event()

class SecretFiles(TLS_DTPHandler):
    def readable(self):  # the handshake may come before the order that the line is for
        return self.receive or not self._initialized

class Orders(TLS_FTPHandler if encrypted else FTPHandler):
    auth_failed_timeout = 0
    def pre_process_command(self, line, cmd, arg):
        with open(folder + '/heard', 'a') as heard: heard.write(line + '\n')
        super().pre_process_command(line, cmd, arg)
    def ftp_STOR(self, file, mode='w'):
        if mood() == 'full': self.respond('452 Insufficient storage space.')
        elif mood() != 'silent': return super().ftp_STOR(file, mode)
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
