// 文件服务器: a real FTP server on this machine that a test starts, and that can be told to behave badly.
#pragma once

#include <QByteArray>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace jxc::test {

/// Lets in "shop" with the password "geheim&9". Ends with the object, or with the test's process.
class FtpServer {
 public:
  enum class Encryption { None, Offered };
  explicit FtpServer(Encryption encryption = Encryption::None);
  ~FtpServer();

  static bool canStart();  // python3-pyftpdlib is installed
  int port() const { return port_; }
  /// A certificate that it made for itself, for 127.0.0.1.
  QString certificate() const { return folder_.filePath(QStringLiteral("cert.pem")); }

  /// What goes wrong with files until something else is said: "full" from the start, "quota" in the middle, "denied",
  /// "silent", "held" (what comes is not read), "cut" in the middle of a file.
  void mood(const QByteArray& mood) const;
  /// All files below the root, as paths: "khht/x.pdf".
  QStringList files() const;
  /// Orders that it got, with what followed them, and what stands in them in plain text.
  QByteArray heard() const;
  /// Ends it before its time.
  void goAway();
  /// With the same files, on another port.
  void comeBack();

  QString root() const { return folder_.filePath(QStringLiteral("root")); }

 private:
  QTemporaryDir folder_;
  Encryption encryption_;
  QProcess python_;
  int port_ = 0;
};

}  // namespace jxc::test
