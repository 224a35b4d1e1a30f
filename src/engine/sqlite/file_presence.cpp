#include "engine/presence_ends.h"
#include "engine/shared_folder.h"

#include <QFile>
#include <QFileInfo>
#include <QThread>

#include <algorithm>
#include <array>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace jxc::sqlite {
namespace file_presence_detail {

// The file is an array of places. The first is the gate: whoever comes holds it for a moment together with others,
// whoever wants the set for himself holds it alone. Each other one belongs to whoever holds its lock.
constexpr int placeBytes = 256;
constexpr int places = 200;
constexpr int gate = 0;
// Whoever comes or goes holds the gate for a moment; the others try again.
constexpr int attempts = 20, pause = 10;  // ms

/// Locks of the descriptor, not of the process: two programs in one process (a test) keep each other out as well.
bool lockPlace(int descriptor, int place, short kind) {
  struct flock lock {};
  lock.l_type = kind;
  lock.l_whence = SEEK_SET;
  lock.l_start = static_cast<off_t>(place) * placeBytes;
  lock.l_len = placeBytes;
  return ::fcntl(descriptor, F_OFD_SETLK, &lock) == 0;
}

bool isHeldByOther(int descriptor, int place) {
  struct flock lock {};
  lock.l_type = F_WRLCK;
  lock.l_whence = SEEK_SET;
  lock.l_start = static_cast<off_t>(place) * placeBytes;
  lock.l_len = placeBytes;
  return ::fcntl(descriptor, F_OFD_GETLK, &lock) == 0 && lock.l_type != F_UNLCK;
}

bool isStillThere(int descriptor, const QString& name) {
  struct stat open {};
  struct stat named {};
  return ::fstat(descriptor, &open) == 0 && ::stat(QFile::encodeName(name).constData(), &named) == 0 &&
         open.st_dev == named.st_dev && open.st_ino == named.st_ino;
}

using Place = std::array<char, placeBytes>;

/// "7\t100002\t张三"; a name that is too long is cut between two characters.
void write(int descriptor, int place, int work, const Station& station) {
  QByteArray text = QByteArray::number(work) + '\t' + QByteArray::number(static_cast<qlonglong>(station.number)) + '\t';
  QString name = station.name;
  while (text.size() + name.toUtf8().size() >= placeBytes)
    name.chop(1);
  text += name.toUtf8();
  Place bytes{};
  std::copy(text.cbegin(), text.cend(), bytes.begin());
  static_cast<void>(::pwrite(descriptor, bytes.data(), bytes.size(), static_cast<off_t>(place) * placeBytes));
}

Presence::Alone read(int descriptor, int place) {
  Place bytes{};
  static_cast<void>(::pread(descriptor, bytes.data(), bytes.size() - 1, static_cast<off_t>(place) * placeBytes));
  const QStringList parts = QString::fromUtf8(bytes.data()).split(u'\t');
  return {parts.value(0).toInt(), {parts.value(2), parts.value(1).toLongLong()}};
}

class FilePresence final : public Presence {
 public:
  explicit FilePresence(const QString& accountFile) : name_(accountFile + QStringLiteral(".stations")) {}
  ~FilePresence() override;
  FilePresence(const FilePresence&) = delete;
  FilePresence& operator=(const FilePresence&) = delete;
  bool enter(const Station& station) override;
  void leave() override;
  bool stay() override;
  std::vector<Station> others() override;
  bool takeAlone(int work) override;
  void giveBack() override;
  std::optional<Alone> aloneBy() override;

 private:
  enum class Make : bool { No, Yes };
  bool open(Make make);
  bool comeIn();
  void tidyAway();
  int freePlace();

  QString name_;
  int descriptor_ = -1;
  int place_ = 0;  // 0: not at work
  Station station_;
  bool wants_ = false;  // has come to work
  bool alone_ = false;
};

FilePresence::~FilePresence() {
  leave();
}

/// Whoever leaves last takes the file away, maybe one that somebody has just opened: he opens the next one. Not there,
/// or not to be written: false.
bool FilePresence::open(Make make) {
  for (int i = 0; i < attempts; ++i) {
    if (descriptor_ >= 0 && isStillThere(descriptor_, name_)) return true;
    if (descriptor_ >= 0) ::close(descriptor_);
    place_ = 0;
    alone_ = false;
    const QByteArray name = QFile::encodeName(name_);
    descriptor_ = ::open(name.constData(), O_RDWR | O_CLOEXEC | (make == Make::Yes ? O_CREAT : 0), 0600);
    if (descriptor_ < 0) return false;
    if (isSharedFolder(QFileInfo(name_).absolutePath())) static_cast<void>(::fchmod(descriptor_, 0660));
  }
  return false;
}

void FilePresence::tidyAway() {
  if (descriptor_ < 0) return;
  if (isStillThere(descriptor_, name_) && lockPlace(descriptor_, gate, F_WRLCK) && others().empty())
    QFile::remove(name_);
  ::close(std::exchange(descriptor_, -1));
}

int FilePresence::freePlace() {
  for (int place = gate + 1; place < places; ++place)
    if (lockPlace(descriptor_, place, F_WRLCK)) return place;
  return 0;
}

bool FilePresence::enter(const Station& station) {
  station_ = station;
  return wants_ = comeIn();
}

bool FilePresence::comeIn() {
  for (int i = 0; place_ == 0 && i < attempts; ++i) {
    if (!open(Make::Yes)) return true;  // where nothing can be written nobody can take anything for himself
    if (!lockPlace(descriptor_, gate, F_RDLCK)) {
      QThread::msleep(pause);
      continue;
    }
    // With the gate held it cannot be taken away any more, but it may have been a moment ago.
    const bool isIn = isStillThere(descriptor_, name_);
    if (isIn) place_ = freePlace();
    lockPlace(descriptor_, gate, F_UNLCK);
    if (isIn && place_ == 0) return true;  // more stations than a machine has: nobody is kept from his work by that
  }
  if (place_ == 0) return false;
  write(descriptor_, place_, 0, station_);
  return true;
}

void FilePresence::leave() {
  wants_ = false;
  place_ = 0;
  alone_ = false;
  tidyAway();
}

/// A foreign hand may have taken the file away.
bool FilePresence::stay() {
  if (!wants_ || (place_ != 0 && isStillThere(descriptor_, name_))) return true;
  place_ = 0;
  return comeIn();
}

std::vector<Station> FilePresence::others() {
  std::vector<Station> found;
  if (!open(Make::No)) return found;
  for (int place = gate + 1; place < places; ++place)
    if (place != place_ && isHeldByOther(descriptor_, place)) found.push_back(read(descriptor_, place).by);
  return found;
}

bool FilePresence::takeAlone(int work) {
  for (int i = 0; !alone_ && i < attempts; ++i) {
    if (!open(Make::Yes)) return true;
    alone_ = lockPlace(descriptor_, gate, F_WRLCK) && isStillThere(descriptor_, name_);
    if (!alone_) QThread::msleep(pause);
  }
  if (!alone_) return false;
  write(descriptor_, gate, work, station_);
  if (others().empty()) return true;
  giveBack();
  return false;
}

void FilePresence::giveBack() {
  if (std::exchange(alone_, false)) lockPlace(descriptor_, gate, F_UNLCK);
  if (place_ == 0) tidyAway();
}

std::optional<Presence::Alone> FilePresence::aloneBy() {
  if (alone_ || !open(Make::No)) return {};
  struct flock lock {};
  lock.l_type = F_RDLCK;
  lock.l_whence = SEEK_SET;
  lock.l_len = placeBytes;
  // Others who are just coming hold the gate as well, but for reading.
  if (::fcntl(descriptor_, F_OFD_GETLK, &lock) != 0 || lock.l_type == F_UNLCK) return {};
  return read(descriptor_, gate);
}

}  // namespace file_presence_detail

std::unique_ptr<Presence> presenceBeside(const QString& accountFile) {
  return std::make_unique<file_presence_detail::FilePresence>(accountFile);
}

}  // namespace jxc::sqlite
