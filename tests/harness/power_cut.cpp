#include "harness/power_cut.h"

#include "harness/files.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <cstring>
#include <mutex>
#include <optional>
#include <set>
#include <sqlite3.h>
#include <string>
#include <utility>
#include <vector>

namespace jxc::test {
namespace power_cut_detail {

constexpr sqlite3_int64 kSector = 512;

/// A write, or a new length.
struct Change {
  sqlite3_int64 at;
  QByteArray bytes;
  bool truncates = false;
};

struct File {
  bool exists = true;
  std::optional<QByteArray> durable;  // nothing: no such name is on the disk for sure
  std::vector<Change> pending;        // since then
  bool isNew = false;                 // its name is not on the disk yet; what stands there is the file before it
};

void apply(QByteArray& content, sqlite3_int64 at, const QByteArray& bytes) {
  if (content.size() < at + bytes.size()) content.resize(at + bytes.size(), '\0');
  std::memcpy(content.data() + at, bytes.constData(), static_cast<std::size_t>(bytes.size()));
}

void apply(QByteArray& content, const Change& change) {
  if (change.truncates)
    content.resize(change.at, '\0');
  else
    apply(content, change.at, change.bytes);
}

}  // namespace power_cut_detail

struct PowerCut::State {
  std::string folder;
  sqlite3_vfs own{};
  sqlite3_vfs* real = nullptr;
  mutable std::recursive_mutex mutex;
  std::map<std::string, power_cut_detail::File> files;
  std::function<void()> action;
};

namespace power_cut_detail {

PowerCut::State* disk = nullptr;  // one at a time: SQLite's calls know of no other

struct Handle {
  sqlite3_file base;
  File* file;  // null for one that is not watched
  sqlite3_file* real;
  bool syncsFolder;  // with its first sync, as SQLite does for journals and logs
};
sqlite3_file* realOf(sqlite3_file* file) {
  return reinterpret_cast<Handle*>(file)->real;
}

/// Notes what is done to a watched file, and lets somebody cut the power just behind it.
template <class Note>
void note(sqlite3_file* handle, Note note) {
  File* const file = reinterpret_cast<Handle*>(handle)->file;
  if (file == nullptr) return;
  const std::lock_guard guard(disk->mutex);
  note(*file);
  if (disk->action) disk->action();
}

int closeFile(sqlite3_file* file) {
  return realOf(file)->pMethods->xClose(realOf(file));
}
int read(sqlite3_file* file, void* to, int size, sqlite3_int64 at) {
  return realOf(file)->pMethods->xRead(realOf(file), to, size, at);
}
int write(sqlite3_file* file, const void* from, int size, sqlite3_int64 at) {
  note(file, [&](File& f) { f.pending.push_back({at, QByteArray(static_cast<const char*>(from), size)}); });
  return realOf(file)->pMethods->xWrite(realOf(file), from, size, at);
}
int truncate(sqlite3_file* file, sqlite3_int64 size) {
  note(file, [&](File& f) { f.pending.push_back({size, {}, true}); });
  return realOf(file)->pMethods->xTruncate(realOf(file), size);
}
int sync(sqlite3_file* file, int) {
  note(file, [file](File& f) {
    if (std::exchange(reinterpret_cast<Handle*>(file)->syncsFolder, false))
      for (auto& [name, other] : disk->files)
        if (!other.exists) other.durable.reset();
    QByteArray content = f.isNew ? QByteArray() : f.durable.value_or(QByteArray());
    for (const Change& change : f.pending)
      apply(content, change);
    f.pending.clear();
    f.durable = content;
    f.isNew = false;
  });
  return SQLITE_OK;
}
int size(sqlite3_file* file, sqlite3_int64* to) {
  return realOf(file)->pMethods->xFileSize(realOf(file), to);
}
int lock(sqlite3_file* file, int level) {
  return realOf(file)->pMethods->xLock(realOf(file), level);
}
int unlock(sqlite3_file* file, int level) {
  return realOf(file)->pMethods->xUnlock(realOf(file), level);
}
int reserved(sqlite3_file* file, int* to) {
  return realOf(file)->pMethods->xCheckReservedLock(realOf(file), to);
}
int control(sqlite3_file* file, int what, void* with) {
  return realOf(file)->pMethods->xFileControl(realOf(file), what, with);
}
int sectorSize(sqlite3_file* file) {
  return realOf(file)->pMethods->xSectorSize(realOf(file));
}
int characteristics(sqlite3_file* file) {
  return realOf(file)->pMethods->xDeviceCharacteristics(realOf(file));
}
int shmMap(sqlite3_file* file, int page, int size, int extend, void volatile** to) {
  return realOf(file)->pMethods->xShmMap(realOf(file), page, size, extend, to);
}
int shmLock(sqlite3_file* file, int offset, int count, int flags) {
  return realOf(file)->pMethods->xShmLock(realOf(file), offset, count, flags);
}
void shmBarrier(sqlite3_file* file) {
  realOf(file)->pMethods->xShmBarrier(realOf(file));
}
int shmUnmap(sqlite3_file* file, int remove) {
  return realOf(file)->pMethods->xShmUnmap(realOf(file), remove);
}
constexpr sqlite3_io_methods kMethods = {
    2,          closeFile,       read,   write,   truncate,   sync,     size,    lock,   unlock, reserved, control,
    sectorSize, characteristics, shmMap, shmLock, shmBarrier, shmUnmap, nullptr, nullptr};

/// The file of that name, when it is one of the folder.
File* watched(const char* path) {
  if (path == nullptr || !std::string_view(path).starts_with(disk->folder)) return nullptr;
  const std::string name = std::string(path).substr(disk->folder.size() + 1);
  const auto [found, isFirst] = disk->files.try_emplace(name);
  File& file = found->second;
  const QString real = QString::fromUtf8(path);
  if (isFirst) {
    file.isNew = !QFileInfo::exists(real);
    if (!file.isNew) file.durable = bytesOf(real);
  } else if (!file.exists) {
    file.exists = file.isNew = true;
    file.pending.clear();
  }
  return &file;
}

int open(sqlite3_vfs*, const char* path, sqlite3_file* to, int flags, int* given) {
  auto* const handle = reinterpret_cast<Handle*>(to);
  {
    const std::lock_guard guard(disk->mutex);
    handle->file = watched(path);
    constexpr int kJournals = SQLITE_OPEN_MAIN_JOURNAL | SQLITE_OPEN_SUPER_JOURNAL | SQLITE_OPEN_WAL;
    handle->syncsFolder = (flags & SQLITE_OPEN_CREATE) != 0 && (flags & kJournals) != 0;
  }
  handle->real = reinterpret_cast<sqlite3_file*>(handle + 1);
  const int code = disk->real->xOpen(disk->real, path, handle->real, flags, given);
  handle->base.pMethods = handle->real->pMethods != nullptr ? &kMethods : nullptr;
  return code;
}

int remove(sqlite3_vfs*, const char* path, int syncs) {
  const std::lock_guard guard(disk->mutex);
  if (File* const file = watched(path)) {
    file->exists = file->isNew = false;
    file->pending.clear();
    if (syncs != 0) file->durable.reset();
    if (disk->action) disk->action();
  }
  return disk->real->xDelete(disk->real, path, syncs);
}

/// What was not synced reaches the disk sector by sector: the writes of each up to some moment of its own.
QByteArray halfWritten(QByteArray content, const std::vector<Change>& pending, int percent, std::mt19937& random) {
  const auto happens = [&] { return static_cast<int>(random() % 100) < percent; };
  std::set<sqlite3_int64> frozen;
  for (const Change& change : pending) {
    if (change.truncates) {
      if (happens()) apply(content, change);
      continue;
    }
    for (sqlite3_int64 at = change.at, end = change.at + change.bytes.size(); at < end;) {
      const sqlite3_int64 sector = at / kSector, next = std::min((sector + 1) * kSector, end);
      if (!frozen.contains(sector)) {
        if (happens())
          apply(content, at, change.bytes.mid(at - change.at, next - at));
        else
          frozen.insert(sector);
      }
      at = next;
    }
  }
  return content;
}

}  // namespace power_cut_detail

PowerCut::PowerCut(const QString& folder) : state_(std::make_unique<State>()) {
  using namespace power_cut_detail;
  disk = state_.get();
  state_->folder = folder.toStdString();
  state_->real = sqlite3_vfs_find(nullptr);
  state_->own = *state_->real;
  state_->own.zName = "power-cut";
  state_->own.szOsFile = static_cast<int>(sizeof(Handle)) + state_->real->szOsFile;
  state_->own.xOpen = power_cut_detail::open;
  state_->own.xDelete = power_cut_detail::remove;
  sqlite3_vfs_register(&state_->own, 1);
}

PowerCut::~PowerCut() {
  sqlite3_vfs_unregister(&state_->own);
  sqlite3_vfs_register(state_->real, 1);
  power_cut_detail::disk = nullptr;
}

void PowerCut::onOperation(std::function<void()> action) {
  const std::lock_guard guard(state_->mutex);
  state_->action = std::move(action);
}

PowerCut::Disk PowerCut::cut(std::mt19937& random) const {
  const std::lock_guard guard(state_->mutex);
  constexpr int shares[] = {0, 30, 50, 90, 100};
  const int percent = shares[random() % std::size(shares)];
  Disk left;
  for (const auto& [name, file] : state_->files) {
    const bool hasName = !file.isNew || static_cast<int>(random() % 100) < percent;
    const bool isGone = !file.exists && static_cast<int>(random() % 100) < percent;
    if (isGone) continue;
    if (file.exists && hasName)
      left[name] = power_cut_detail::halfWritten(file.isNew ? QByteArray() : file.durable.value_or(QByteArray()),
                                                 file.pending, percent, random);
    else if (file.durable)
      left[name] = *file.durable;
  }
  return left;
}

void lay(const PowerCut::Disk& disk, const QString& folder) {
  for (const auto& [name, bytes] : disk)
    writeBytes(QDir(folder).filePath(QString::fromStdString(name)), bytes);
}

}  // namespace jxc::test
