#include "platform/terminal.h"

#include <QByteArray>
#include <QFile>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

namespace jxc {
namespace terminal_detail {

constexpr int kLongest = 1024;  // bytes of a line

/// The terminal as it was, whatever happens.
class WithoutEcho {
 public:
  explicit WithoutEcho(int terminal) : terminal_(terminal) {
    isSet_ = tcgetattr(terminal_, &before_) == 0;
    if (!isSet_) return;
    termios quiet = before_;
    quiet.c_lflag &= ~static_cast<tcflag_t>(ECHO);
    quiet.c_lflag |= ECHONL;
    tcsetattr(terminal_, TCSAFLUSH, &quiet);
  }
  ~WithoutEcho() {
    if (isSet_) tcsetattr(terminal_, TCSAFLUSH, &before_);
  }
  WithoutEcho(const WithoutEcho&) = delete;
  WithoutEcho& operator=(const WithoutEcho&) = delete;

 private:
  int terminal_;
  termios before_{};
  bool isSet_ = false;
};

}  // namespace terminal_detail

std::optional<QString> readLineFrom(int descriptor) {
  QByteArray line;
  line.reserve(terminal_detail::kLongest);  // one buffer, so that no copy of it stays behind
  while (line.size() < terminal_detail::kLongest) {
    char byte = 0;
    const ssize_t got = ::read(descriptor, &byte, 1);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) return std::nullopt;
    if (got == 0 || byte == '\n') break;
    line.append(byte);
  }
  if (line.endsWith('\r')) line.chop(1);
  QString text = QString::fromUtf8(line);
  explicit_bzero(line.data(), static_cast<std::size_t>(line.size()));
  return text;
}

std::optional<QString> askOnTerminal(const QString& question) {
  const int terminal = ::open("/dev/tty", O_RDWR | O_CLOEXEC);
  if (terminal < 0) return std::nullopt;
  const QByteArray words = question.toUtf8();
  std::optional<QString> typed;
  if (::write(terminal, words.constData(), static_cast<std::size_t>(words.size())) == words.size()) {
    const terminal_detail::WithoutEcho quiet(terminal);
    typed = readLineFrom(terminal);
  }
  ::close(terminal);
  return typed;
}

bool ownsFile(const QString& file) {
  struct stat found {};
  if (::stat(QFile::encodeName(file).constData(), &found) != 0) return false;
  return found.st_uid == ::geteuid() || ::geteuid() == 0;
}

}  // namespace jxc
